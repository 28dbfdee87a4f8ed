#include "vcckit/files/run_program.h"

#include "platform/files.h"

#include <filesystem>
#include <memory>

#include <windows.h>

#include <shellapi.h>

namespace vcc::kit {

namespace {

struct HandleCloser {
    void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

/// A word as the C library of the program reads it.
std::wstring quoted(const std::wstring& word) {
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : word) {
        if (c == L'"')
            text.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        text += c;
    }
    return text.append(backslashes, L'\\') + L'"';
}

/// Never the working folder: what lies there may be anything.
std::wstring find_program(const std::string& name) {
    const std::wstring file = platform::system_path(name + ".exe");
    const std::filesystem::path own = platform::system_path(platform::program_path()).parent_path() / file;
    if (std::error_code error; std::filesystem::exists(own, error))
        return own;
    std::wstring path(32767, L'\0'), found(32767, L'\0');
    path.resize(GetEnvironmentVariableW(L"PATH", path.data(), 32767));
    found.resize(SearchPathW(path.c_str(), file.c_str(), nullptr, 32767, found.data(), nullptr));
    return found;
}

} // namespace

std::vector<std::string> command_line(int, const char* const*) {
    SetConsoleOutputCP(CP_UTF8);
    int count = 0;
    const std::unique_ptr<wchar_t*, HLOCAL(WINAPI*)(HLOCAL)> words(CommandLineToArgvW(GetCommandLineW(), &count),
                                                                   LocalFree);
    std::vector<std::string> names;
    for (int i = 1; words && i < count; ++i)
        names.push_back(platform::name_of(words.get()[i]));
    return names;
}

std::optional<int> run_program(const std::vector<std::string>& words, bool with_errors, const TakeOutput& take) {
    const std::wstring program = find_program(words.front());
    std::wstring line;
    for (const std::string& word : words)
        line += quoted(platform::system_path(word)) + L' ';
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE ends[2] = {nullptr, nullptr};
    if (program.empty() || CreatePipe(&ends[0], &ends[1], &inherited, 1 << 16) == 0)
        return std::nullopt;
    const Handle reading(ends[0]);
    Handle writing(ends[1]);
    SetHandleInformation(reading.get(), HANDLE_FLAG_INHERIT, 0);
    const Handle nothing(CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     &inherited, OPEN_EXISTING, 0, nullptr));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = nothing.get();
    start.hStdOutput = writing.get();
    start.hStdError = with_errors ? writing.get() : nothing.get();
    PROCESS_INFORMATION made{};
    if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr, nullptr, &start,
                       &made) == 0)
        return std::nullopt;
    const Handle process(made.hProcess), thread(made.hThread), job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{}; // it ends with this program
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    AssignProcessToJobObject(job.get(), process.get());
    writing.reset();
    std::string piece(1 << 16, '\0');
    DWORD count = 0, status = 1;
    while (ReadFile(reading.get(), piece.data(), 1 << 16, &count, nullptr) != 0) {
        if (count > 0 && !take(std::string_view(piece).substr(0, count))) {
            TerminateProcess(process.get(), 1);
            break;
        }
    }
    WaitForSingleObject(process.get(), INFINITE);
    GetExitCodeProcess(process.get(), &status);
    return static_cast<int>(status);
}

} // namespace vcc::kit
