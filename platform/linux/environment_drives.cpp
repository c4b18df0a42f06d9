#include "platform/linux/environment_drives.h"

#include "platform/environment.h"

namespace fc {

Drives drivesFromEnvironment() {
    std::map<char, std::string> roots{{'c', "/"}};
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        const std::string name =
            std::string("FIRMCAST_DRIVE_") + static_cast<char>(letter - 'a' + 'A');
        if (hasEnvironmentVariable(name))
            roots[letter] = environmentVariable(name);
    }
    return Drives(roots);
}

}  // namespace fc
