// Text compared without regard to case, as the system's file names and
// command lines are.
#pragma once

#include <filesystem>
#include <string>

namespace fc {

// `text` with its ASCII letters in lower case.
std::string lowerCase(std::string text);

// The name of the entry of `folder` called `name`: exactly, else the first
// whose name differs only in case; empty when there is none.
std::string entryIgnoringCase(const std::filesystem::path& folder, const std::string& name);

}  // namespace fc
