/* ctrl_c ARGUMENTS...: a console in which vcc.exe is started with these arguments. When a file "press" appears in the
   working folder, somebody presses Ctrl+C there. Ends with the status of vcc.exe. */
#include <windows.h>

#include <stdio.h>
#include <string.h>

static BOOL WINAPI survive(DWORD event) {
    (void)event;
    return TRUE;
}

int main(int argc, char** argv) {
    char command[1024] = "vcc.exe";
    for (int i = 1; i < argc; ++i) {
        strncat(command, " ", sizeof command - strlen(command) - 1);
        strncat(command, argv[i], sizeof command - strlen(command) - 1);
    }
    FreeConsole();
    if (!AllocConsole() || !SetConsoleCtrlHandler(survive, TRUE))
        return 100;
    STARTUPINFOA start = {.cb = sizeof start};
    PROCESS_INFORMATION program;
    if (!CreateProcessA(NULL, command, NULL, NULL, FALSE, 0, NULL, NULL, &start, &program))
        return 101;
    while (GetFileAttributesA("press") == INVALID_FILE_ATTRIBUTES)
        if (WaitForSingleObject(program.hProcess, 100) == WAIT_OBJECT_0)
            return 102;
    if (!GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0))
        return 103;
    DWORD status = 104;
    if (WaitForSingleObject(program.hProcess, 30000) == WAIT_OBJECT_0)
        GetExitCodeProcess(program.hProcess, &status);
    return (int)status;
}
