/* Stands as ddraw.dll beside the program for Windows, which loads it with the graphics library. DirectDraw is the
 * system's; the program's list of devices, and the joysticks of the graphics library's driver for systems on which
 * DirectInput has none, are those in the folder "pads" (see gamepad.py). A pad that has gone cannot be read. */
#include <windows.h>

#include <mmsystem.h>
#include <stdio.h>
#include <string.h>

enum { most_pads = 2, hat_x = 6, hat_y = 7 };

struct state { /* as gamepad.py writes it */
    unsigned char axes, buttons;
    short axis[8], button[12];
};

static int read_state(UINT_PTR number, struct state* state) {
    char name[32];
    snprintf(name, sizeof name, "pads/js%u", (unsigned)number);
    FILE* file = fopen(name, "rb");
    const int read = file && fread(state, sizeof *state, 1, file) == 1;
    if (file)
        fclose(file);
    return read;
}

static UINT WINAPI list_devices(RAWINPUTDEVICELIST* list, UINT* count, UINT size) {
    struct state state;
    UINT found = 0;
    (void)size;
    for (unsigned number = 0; number < most_pads; ++number) {
        if (!read_state(number, &state))
            continue;
        if (list && found < *count)
            list[found] = (RAWINPUTDEVICELIST){(HANDLE)(UINT_PTR)(number + 1), RIM_TYPEHID};
        ++found;
    }
    if (list)
        return found;
    *count = found;
    return 0;
}

static UINT WINAPI describe_device(HANDLE device, UINT what, void* answer, UINT* size) {
    RID_DEVICE_INFO* info = answer;
    (void)device, (void)what;
    info->dwType = RIM_TYPEHID;
    info->hid.usUsagePage = 1;
    info->hid.usUsage = 5;
    return *size;
}

static UINT WINAPI count_joysticks(void) {
    return 16; /* whatever is plugged in */
}

static MMRESULT WINAPI describe_joystick(UINT_PTR number, JOYCAPSA* caps, UINT size) {
    struct state state;
    if (!read_state(number, &state))
        return JOYERR_PARMS;
    memset(caps, 0, size);
    caps->wXmax = caps->wYmax = caps->wZmax = caps->wRmax = caps->wUmax = 65535;
    caps->wNumAxes = 5;
    caps->wNumButtons = state.buttons;
    caps->wCaps = JOYCAPS_HASZ | JOYCAPS_HASR | JOYCAPS_HASU | JOYCAPS_HASPOV | JOYCAPS_POV4DIR;
    return JOYERR_NOERROR;
}

static MMRESULT WINAPI read_joystick(UINT number, JOYINFOEX* info) {
    struct state state;
    if (!read_state(number, &state))
        return JOYERR_UNPLUGGED;
    DWORD* const places[] = {&info->dwXpos, &info->dwYpos, &info->dwZpos, &info->dwRpos, &info->dwUpos};
    for (int i = 0; i < 5; ++i)
        *places[i] = (DWORD)(state.axis[i] + 32768);
    info->dwButtons = 0;
    for (int i = 0; i < state.buttons; ++i)
        info->dwButtons |= (DWORD)state.button[i] << i;
    const short x = state.axis[hat_x], y = state.axis[hat_y];
    info->dwPOV = y < 0 ? JOY_POVFORWARD : y > 0 ? JOY_POVBACKWARD : x < 0 ? JOY_POVLEFT : x > 0 ? JOY_POVRIGHT
                                                                                        : JOY_POVCENTERED;
    return JOYERR_NOERROR;
}

/* Has a module call ours. */
static void take_over(const char* module, const char* name, void* ours) {
    BYTE* const base = (BYTE*)GetModuleHandleA(module);
    const IMAGE_NT_HEADERS* headers = (IMAGE_NT_HEADERS*)(base + ((IMAGE_DOS_HEADER*)base)->e_lfanew);
    const IMAGE_DATA_DIRECTORY place = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (IMAGE_IMPORT_DESCRIPTOR* from = (void*)(base + place.VirtualAddress); from->Name; ++from) {
        const IMAGE_THUNK_DATA* names = (void*)(base + from->OriginalFirstThunk);
        for (IMAGE_THUNK_DATA* called = (void*)(base + from->FirstThunk); names->u1.AddressOfData; ++names, ++called) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal) ||
                strcmp(((IMAGE_IMPORT_BY_NAME*)(base + names->u1.AddressOfData))->Name, name) != 0)
                continue;
            DWORD before;
            VirtualProtect(called, sizeof *called, PAGE_READWRITE, &before);
            called->u1.Function = (ULONG_PTR)ours;
            VirtualProtect(called, sizeof *called, before, &before);
            return;
        }
    }
    MessageBoxA(NULL, name, "Nothing calls this function", MB_OK);
}

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void* reserved) {
    (void)library, (void)reserved;
    if (reason != DLL_PROCESS_ATTACH)
        return TRUE;
    take_over(NULL, "GetRawInputDeviceList", (void*)list_devices);
    take_over(NULL, "GetRawInputDeviceInfoW", (void*)describe_device);
    take_over("alleg44.dll", "joyGetNumDevs", (void*)count_joysticks);
    take_over("alleg44.dll", "joyGetDevCapsA", (void*)describe_joystick);
    take_over("alleg44.dll", "joyGetPosEx", (void*)read_joystick);
    return TRUE;
}

__declspec(dllexport) HRESULT WINAPI DirectDrawCreate(GUID* driver, void** object, void* outer) {
    typedef HRESULT(WINAPI * Create)(GUID*, void**, void*);
    const HMODULE real = LoadLibraryA("C:\\windows\\system32\\ddraw.dll");
    return ((Create)(void*)GetProcAddress(real, "DirectDrawCreate"))(driver, object, outer);
}
