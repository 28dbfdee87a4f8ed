#include "platform/gamepad.h"

#include <sys/stat.h>

#include <unistd.h>

namespace vcc::platform {

// Left alone, the library would stop at the first missing number, and open whatever it can read. The node's number
// tells a replugged pad from the one before.
std::string gamepads() {
    constexpr int numbers = 8;
    std::string devices;
    int count = 0;
    const auto add = [&](const std::string& name) {
        devices += "joystick_device_" + std::to_string(count++) + " = " + name + '\n';
    };
    for (int number = 0; number < numbers; ++number) {
        const std::string name = "/dev/input/js" + std::to_string(number);
        struct stat node {};
        if (::stat(name.c_str(), &node) != 0 || ::access(name.c_str(), R_OK) != 0)
            continue;
        add(name);
        devices += "# " + std::to_string(node.st_ino) + '\n';
    }
    if (count == 0)
        return {};
    add("/dev/input/no_further"); // ends its search
    return "[joystick]\n" + devices;
}

} // namespace vcc::platform
