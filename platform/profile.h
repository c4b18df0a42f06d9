// The Windows profile calls over INI files on disk, by full path ("\" or
// "/" separators). They never fail loudly: a file that cannot be read reads
// as empty, and a write that cannot be made returns false.
#pragma once

#include <cstddef>
#include <string>

#include "platform/profile_buffer.h"

namespace fc {

// GetPrivateProfileStringA into a buffer of `size` characters; the length of
// the result is the call's result.
std::string getPrivateProfileString(const ProfileName& section, const ProfileName& key,
                                    const std::string& deflt, std::size_t size,
                                    const std::string& file);

// WritePrivateProfileStringA: a value sets the key, creating the file and the
// section as needed; a null value deletes the key; a null key deletes the
// whole section. A null section does nothing.
bool writePrivateProfileString(const ProfileName& section, const ProfileName& key,
                               const ProfileName& value, const std::string& file);

// GetPrivateProfileSectionA into a buffer of `size` characters.
std::string getPrivateProfileSection(const std::string& section, std::size_t size,
                                     const std::string& file);

}  // namespace fc
