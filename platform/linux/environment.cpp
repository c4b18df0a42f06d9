#include "platform/environment.h"

#include <cstdlib>

namespace fc {

std::string environmentVariable(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value ? value : "";
}

bool hasEnvironmentVariable(const std::string& name) {
    return std::getenv(name.c_str()) != nullptr;
}

}  // namespace fc
