// INI files, named by full path, through the profile calls. The calls'
// results are not examined: a file that cannot be read or written behaves as
// an empty one, silently.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace fc {

struct CommonModule;

// The buffers the calls fill.
constexpr std::size_t kBufferClave = 255;
constexpr std::size_t kBufferSeccion = 32767;

// The key's value, at most 254 characters; `defecto` when nothing came back,
// which an empty value also gives.
std::string LeeClaveIni(CommonModule& c, const std::string& fichero, const std::string& seccion,
                        const std::string& clave, const std::string& defecto);

void EscribeClaveIni(CommonModule& c, const std::string& fichero, const std::string& seccion,
                     const std::string& clave, const std::string& valor);

// Deletes the key; with an empty `clave`, the whole section.
void BorraClaveIni(CommonModule& c, const std::string& fichero, const std::string& seccion,
                   const std::string& clave);

// The section as key, value, key, value, in file order; nothing (nullopt)
// when it is missing or empty.
std::optional<std::vector<std::string>> LeeSeccionIni(CommonModule& c, const std::string& fichero,
                                                      const std::string& seccion);

}  // namespace fc
