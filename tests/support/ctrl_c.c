/* A console in which "vcc.exe /N" is started. When a file "press" appears in the working folder, somebody presses
 * Ctrl+C there. Ends with the status of vcc.exe. */
#include <windows.h>

#include <process.h>

static BOOL WINAPI survive(DWORD event) {
    (void)event;
    return TRUE;
}

int main(void) {
    FreeConsole();
    if (!AllocConsole() || !SetConsoleCtrlHandler(survive, TRUE))
        return 100;
    const HANDLE program = (HANDLE)_spawnl(_P_NOWAIT, "vcc.exe", "vcc.exe", "/N", NULL);
    while (GetFileAttributesA("press") == INVALID_FILE_ATTRIBUTES)
        if (WaitForSingleObject(program, 100) != WAIT_TIMEOUT)
            return 102;
    if (!GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0))
        return 103;
    DWORD status = 104;
    if (WaitForSingleObject(program, 30000) == WAIT_OBJECT_0)
        GetExitCodeProcess(program, &status);
    return (int)status;
}
