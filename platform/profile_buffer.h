// How the Windows profile calls fill the caller's fixed-size character buffer.
// Each function returns the characters the call reports: as many as its
// result counts, NUL separators included, the final NUL left out.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace fc {

class ProfileText;

// A section or key name, or a null pointer (nullopt).
using ProfileName = std::optional<std::string>;

// GetPrivateProfileStringA. With a section and a key: the key's value, one
// pair of matching quotes ('' or "") around it removed, else the default
// without its trailing blanks; at most size - 1 characters, cut at a NUL.
// With a null key: the section's key names; with a null section: the
// section names; each ended by NUL, at most size - 2 characters in all.
std::string profileString(const ProfileText& text, const ProfileName& section,
                          const ProfileName& key, const std::string& deflt, std::size_t size);

// GetPrivateProfileSectionA: "key=value" entries, each ended by NUL, at
// most size - 2 characters in all. Values come as written, quotes included.
std::string profileSection(const ProfileText& text, const std::string& section, std::size_t size);

// A list of texts as the calls put one into a buffer: each text ended by
// NUL; when the whole does not fit, cut to size - 2 characters.
std::string listIntoBuffer(const std::vector<std::string>& items, std::size_t size);

}  // namespace fc
