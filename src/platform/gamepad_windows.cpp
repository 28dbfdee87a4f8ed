#include "platform/gamepad.h"

#include <windows.h>

#include <cstdint>
#include <vector>

namespace vcc::platform {

// The library finds them by itself, but is slow even if there are none.
std::string gamepads() {
    constexpr USHORT desktop_page = 1, joystick = 4, gamepad = 5;
    constexpr UINT failed = static_cast<UINT>(-1);
    UINT count = 0;
    GetRawInputDeviceList(nullptr, &count, sizeof(RAWINPUTDEVICELIST));
    std::vector<RAWINPUTDEVICELIST> devices(count);
    count = GetRawInputDeviceList(devices.data(), &count, sizeof(RAWINPUTDEVICELIST));
    devices.resize(count == failed ? 0 : count);
    std::string names;
    for (const RAWINPUTDEVICELIST& device : devices) {
        RID_DEVICE_INFO info{};
        UINT size = info.cbSize = sizeof info;
        if (device.dwType != RIM_TYPEHID ||
            GetRawInputDeviceInfoW(device.hDevice, RIDI_DEVICEINFO, &info, &size) == failed ||
            info.hid.usUsagePage != desktop_page || (info.hid.usUsage != joystick && info.hid.usUsage != gamepad))
            continue;
        names += "# " + std::to_string(reinterpret_cast<std::uintptr_t>(device.hDevice)) + '\n';
    }
    return names;
}

} // namespace vcc::platform
