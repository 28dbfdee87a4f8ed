// Packing and unpacking: screen sources to slot and toggle files, and back.
#include "commands.h"

#include "screen_source.h"
#include "unpack.h"

#include "core/files.h"
#include "platform/files.h"
#include "platform/letter_case.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>

namespace vcc::kit {

namespace {

namespace fs = std::filesystem;

void complain(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
}

Result<std::string> read_bytes(const std::string& path) {
    auto bytes = read_file(path);
    if (!bytes)
        complain("vcckit: cannot read " + path);
    return bytes;
}

/// A file that cannot be written whole stays as it was. Where the name exists in other letter case, that file is meant.
bool write_bytes(const std::string& name, const std::string& bytes) {
    const std::string path = platform::resolve_path(name), temporary = path + ".new";
    std::error_code error;
    if (const fs::path folder = fs::path(path).parent_path(); !folder.empty())
        fs::create_directories(folder, error);
    std::ofstream out(temporary, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (out && !fs::is_directory(path, error) && platform::replace_file(temporary, path))
        return true;
    fs::remove(temporary, error);
    complain("vcckit: cannot write " + path);
    return false;
}

bool write_screen(const Screen& screen, const std::string& installation) {
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const ScreenRecords& records = screen.records[i];
        const std::string stem = installation + "/tools/language/" + std::string(languages[i].folder) + "/" +
                                 std::string(languages[i].prefix) + screen.name;
        if (!write_bytes(stem + ".slt", slot_file_bytes(records.slots)))
            return false;
        const std::string toggles = stem + ".tgl";
        std::error_code ignored;
        if (!records.has_toggle_file)
            fs::remove(platform::resolve_path(toggles), ignored);
        else if (!write_bytes(toggles, slot_file_bytes(records.toggles)))
            return false;
    }
    return true;
}

bool read_records(const std::string& path, std::vector<Slot>& records) {
    const auto bytes = read_bytes(path);
    if (!bytes)
        return false;
    Result<std::vector<Slot>> read = read_slot_file(*bytes);
    const std::string fault = fault_of_slot_file(*bytes, read);
    records = std::move(read).value_or({});
    if (!fault.empty())
        complain(path + ": not a slot file: " + fault);
    return fault.empty();
}

/// Empty when a source cannot say it.
std::string screen_name(const std::string& slot_file) {
    std::string name = fs::path(slot_file).stem().string();
    for (const LanguageRow& language : languages)
        if (platform::same_but_for_case(name.substr(0, language.prefix.size()), language.prefix)) {
            name.erase(0, language.prefix.size());
            break;
        }
    return is_screen_name(name) ? name : "";
}

} // namespace

int run_pack(const std::vector<std::string>& sources, const std::string& installation) {
    int status = exit_clean;
    for (const std::string& source : sources) {
        const auto text = read_bytes(source);
        if (!text)
            return exit_unusable;
        ScreenSource read = read_screen_source(*text);
        for (const SourceFault& fault : read.faults)
            complain(source + ":" + std::to_string(fault.line) + ": " + fault.text);
        if (!read.faults.empty()) {
            status = exit_faults;
            continue;
        }
        if (read.screen.name.empty())
            read.screen.name = fs::path(source).stem().string();
        if (!write_screen(read.screen, installation))
            return exit_unusable;
    }
    return status;
}

/// One file stands for both languages.
int run_unpack(const std::vector<std::string>& files, const std::string& output) {
    Screen screen;
    screen.name = screen_name(files.front());
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const std::string& slots = files[std::min(i, files.size() - 1)];
        const std::string toggles = fs::path(slots).replace_extension(".tgl").string();
        ScreenRecords& records = screen.records[i];
        records.has_toggle_file = platform::file_exists(toggles);
        if (!read_records(slots, records.slots) || (records.has_toggle_file && !read_records(toggles, records.toggles)))
            return exit_unusable;
    }
    if (const std::string difference = difference_of_structure(screen); !difference.empty()) {
        complain("vcckit: " + difference + ": unpack each file by itself");
        return exit_unusable;
    }
    const std::string source = write_screen_source(screen);
    if (output.empty())
        return std::fwrite(source.data(), 1, source.size(), stdout) == source.size() ? exit_clean : exit_unusable;
    return write_bytes(output, source) ? exit_clean : exit_unusable;
}

} // namespace vcc::kit
