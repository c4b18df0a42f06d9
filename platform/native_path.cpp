#include "platform/native_path.h"

#include <algorithm>

namespace fc {

std::string nativePath(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

}  // namespace fc
