// veldor.exe of the installed program: starts the control centre in a folder of the player's own, %APPDATA%\Veldor. The
// control centre works in the folder that it lies in, and keeps its settings and logs there, so that folder holds
// copies of programs and settings, and links to the folders of data.
#include <windows.h>

#include <winioctl.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr const wchar_t* list_name = L"installed.txt"; ///< in the player's folder: what was copied into it

struct Places {
    fs::path system; ///< where the program is installed
    fs::path own;    ///< the player's folder
};

fs::path folder_of_this_program() {
    std::vector<wchar_t> name(32768); // the system's limit
    return fs::path(std::wstring(name.data(), GetModuleFileNameW(nullptr, name.data(), 32768))).parent_path();
}

bool is_link(const fs::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

/// Makes `link`, an empty folder, lead to `target`. Needs no rights, but a file system that has such links.
bool link_folder(const fs::path& link, const fs::path& target) {
    const std::wstring real = L"\\??\\" + target.native();
    const std::wstring& shown = target.native();
    struct Header { // followed by both names, each with its zero
        DWORD tag;
        WORD size, reserved, real_offset, real_size, shown_offset, shown_size;
    };
    const auto bytes_of = [](const std::wstring& text) { return static_cast<WORD>(text.size() * sizeof(wchar_t)); };
    constexpr WORD zero = sizeof(wchar_t);
    const auto names = static_cast<WORD>(bytes_of(real) + zero + bytes_of(shown) + zero);
    const Header header{IO_REPARSE_TAG_MOUNT_POINT,
                        static_cast<WORD>(names + 4 * sizeof(WORD)),
                        0,
                        0,
                        bytes_of(real),
                        static_cast<WORD>(bytes_of(real) + zero),
                        bytes_of(shown)};
    std::vector<char> data(sizeof header + names);
    std::copy_n(reinterpret_cast<const char*>(&header), sizeof header, data.data());
    std::copy_n(reinterpret_cast<const char*>(real.c_str()), bytes_of(real), data.data() + sizeof header);
    std::copy_n(reinterpret_cast<const char*>(shown.c_str()), bytes_of(shown),
                data.data() + sizeof header + bytes_of(real) + zero);

    const HANDLE folder = CreateFileW(link.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (folder == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const bool done = DeviceIoControl(folder, FSCTL_SET_REPARSE_POINT, data.data(), static_cast<DWORD>(data.size()),
                                      nullptr, 0, &written, nullptr) != 0;
    CloseHandle(folder);
    std::error_code error;
    return done && fs::exists(link / L".", error);
}

class Folder {
public:
    explicit Folder(Places places) : places_(std::move(places)) {
        std::ifstream list(places_.own / list_name);
        for (std::string line; std::getline(list, line);)
            before_.insert(line);
    }

    /// Copies the files of one folder, all but some; a file that is the same (by size and time) is left alone, and so
    /// is one that is in use.
    void copy_files(const fs::path& folder, const std::set<fs::path>& except = {}) {
        std::error_code error;
        fs::create_directories(places_.own / folder, error);
        for (const auto& entry : fs::directory_iterator(places_.system / folder, error))
            if (entry.is_regular_file(error) && !except.contains(entry.path().filename()))
                copy(folder / entry.path().filename());
    }

    void copy_tree(const fs::path& folder) {
        copy_files(folder);
        std::error_code error;
        for (const auto& entry : fs::directory_iterator(places_.system / folder, error))
            if (entry.is_directory(error))
                copy_tree(folder / entry.path().filename());
    }

    /// A link to a folder that is only read; where there are no links, a copy.
    void link(const fs::path& folder) {
        std::error_code error;
        const fs::path here = places_.own / folder;
        if (is_link(here))
            RemoveDirectoryW(here.c_str()); // the link alone; the program may have been moved
        fs::create_directories(here, error);
        if (!fs::is_empty(here, error) || !link_folder(here, places_.system / folder))
            copy_tree(folder);
    }

    /// What the player changes is copied once.
    void copy_once(const fs::path& file) {
        CopyFileW((places_.system / file).c_str(), (places_.own / file).c_str(), TRUE);
    }

    /// Removes copies of what an older version had, and notes the present ones.
    void finish() {
        std::ofstream list(places_.own / list_name);
        for (const std::string& file : now_)
            list << file << '\n';
        for (const std::string& file : before_)
            if (!now_.contains(file))
                DeleteFileW((places_.own / fs::path(std::u8string(file.begin(), file.end()))).c_str());
    }

private:
    void copy(const fs::path& file) {
        std::error_code error;
        const fs::path from = places_.system / file, to = places_.own / file;
        const std::u8string name = file.u8string();
        now_.emplace(name.begin(), name.end());
        if (fs::exists(to, error) && fs::file_size(from, error) == fs::file_size(to, error) &&
            fs::last_write_time(from, error) == fs::last_write_time(to, error))
            return;
        CopyFileW(from.c_str(), to.c_str(), FALSE);
    }

    Places places_;
    std::set<std::string> before_, now_; ///< in UTF-8, relative
};

void prepare(const Places& places) {
    std::error_code error;
    fs::create_directories(places.own / L"data" / L"logfiles", error);
    Folder folder(places);
    folder.copy_files(L"", {L"veldor.exe", L"uninstall.exe"});
    folder.copy_files(L"tools", {L"language.ini"});
    folder.copy_files(fs::path(L"data") / L"configs", {L"vcc.cfg"});
    folder.copy_files(L"data");
    for (const auto& entry : fs::directory_iterator(places.system, error))
        if (const fs::path name = entry.path().filename();
            entry.is_directory(error) && name != L"tools" && name != L"data")
            folder.link(name);
    for (const auto& entry : fs::directory_iterator(places.system / L"tools", error))
        if (entry.is_directory(error))
            folder.link(fs::path(L"tools") / entry.path().filename());
    folder.finish();

    folder.copy_once(fs::path(L"data") / L"configs" / L"vcc.cfg");
    const fs::path language = places.own / L"tools" / L"language.ini";
    if (PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_GERMAN && !fs::exists(language, error))
        std::ofstream(language) << "2\n";
    folder.copy_once(fs::path(L"tools") / L"language.ini");
}

/// What follows the program's own name in its command line.
std::wstring arguments() {
    const std::wstring line = GetCommandLineW();
    const std::size_t end = line.front() == L'"' ? line.find(L'"', 1) : line.find(L' ');
    return end == std::wstring::npos ? L"" : line.substr(end + 1);
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    const wchar_t* const roaming = _wgetenv(L"APPDATA");
    if (!roaming) {
        MessageBoxW(nullptr, L"There is no folder for your settings (APPDATA).", L"Veldor", MB_ICONERROR);
        return 1;
    }
    const Places places{folder_of_this_program(), fs::path(roaming) / L"Veldor"};
    prepare(places);

    const fs::path program = places.own / L"vcc.exe";
    std::wstring line = L'"' + program.native() + L"\" " + arguments();
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, places.own.c_str(), &start,
                        &process)) {
        MessageBoxW(nullptr, (L"Cannot start " + program.native()).c_str(), L"Veldor", MB_ICONERROR);
        return 1;
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 1;
    GetExitCodeProcess(process.hProcess, &status);
    return static_cast<int>(status);
}
