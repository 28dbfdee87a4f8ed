#include "edit/journal.h"

#include "edit/operation.h"
#include "file_set.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>

namespace vcc::kit::edit {

namespace {

constexpr std::string_view magic = "Veldor editor's journal 1\n";
constexpr std::size_t entry_limit = 4 * document_limit;
enum class Entry : char { base = 'B', change = 'C', saving = 'S' };

/// FNV-1a.
std::uint64_t digest(std::string_view bytes) {
    std::uint64_t sum = 14695981039346656037U;
    for (const char byte : bytes)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    return sum;
}

void put(std::string& out, std::uint64_t number) {
    for (unsigned shift = 0; shift < 64; shift += 8)
        out += static_cast<char>(static_cast<unsigned char>(number >> shift));
}

void put(std::string& out, std::string_view text) {
    put(out, std::uint64_t{text.size()});
    out += text;
}

/// Takes numbers and texts off the front; nothing when there are not so many bytes.
class Taker {
public:
    explicit Taker(std::string_view bytes) : rest_(bytes) {}

    std::optional<std::uint64_t> number() {
        if (rest_.size() < 8)
            return std::nullopt;
        std::uint64_t number = 0;
        for (unsigned i = 0; i < 8; ++i)
            number |= std::uint64_t{static_cast<unsigned char>(rest_[i])} << (8 * i);
        rest_.remove_prefix(8);
        return number;
    }

    std::optional<std::string_view> text() {
        const auto size = number();
        return size ? bytes(*size) : std::nullopt;
    }

    std::optional<std::string_view> bytes(std::uint64_t size) {
        if (size > rest_.size() || size > entry_limit)
            return std::nullopt;
        const std::string_view taken = rest_.substr(0, static_cast<std::size_t>(size));
        rest_.remove_prefix(taken.size());
        return taken;
    }

private:
    std::string_view rest_;
};

/// An entry in its frame: size, content, checksum.
std::string framed(const std::string& content) {
    std::string out;
    put(out, std::string_view(content));
    put(out, digest(content));
    return out;
}

std::string base_entry(const std::string& name, const JournalDocument& document) {
    std::string content(1, static_cast<char>(Entry::base));
    for (const std::string_view part :
         {std::string_view(name), std::string_view(document.file), std::string_view(document.base)})
        put(content, part);
    return framed(content);
}

std::string change_entry(const std::string& name, const Change& change) {
    std::string content(1, static_cast<char>(Entry::change));
    put(content, std::string_view(name));
    put(content, std::uint64_t{change.at});
    put(content, std::uint64_t{change.before.size()});
    put(content, std::string_view(change.after));
    return framed(content);
}

std::string saving_entry(const std::string& name) {
    std::string content(1, static_cast<char>(Entry::saving));
    put(content, std::string_view(name));
    return framed(content);
}

/// False when the entry means nothing after those before it.
bool take_entry(std::string_view content, JournalContents& out) {
    if (content.empty())
        return false;
    Taker taker(content.substr(1));
    const auto name = taker.text();
    if (!name)
        return false;
    if (content.front() == static_cast<char>(Entry::base)) {
        const auto file = taker.text(), base = taker.text();
        if (!file || !base)
            return false;
        out[std::string(*name)] = {std::string(*file), std::string(*base), std::string(*base), false};
        return true;
    }
    const auto document = out.find(std::string(*name));
    if (document == out.end())
        return false;
    if (content.front() == static_cast<char>(Entry::saving))
        return document->second.saving = true;
    const auto at = taker.number(), removed = taker.number();
    const auto added = taker.text();
    std::string& text = document->second.text;
    if (content.front() != static_cast<char>(Entry::change) || !at || !removed || !added || *at > text.size() ||
        *removed > text.size() - *at)
        return false;
    text.replace(static_cast<std::size_t>(*at), static_cast<std::size_t>(*removed), *added);
    return text.size() <= document_limit;
}

} // namespace

JournalContents read_journal(std::string_view bytes) {
    JournalContents contents;
    if (!bytes.starts_with(magic))
        return contents;
    Taker taker(bytes.substr(magic.size()));
    for (;;) {
        const auto content = taker.text();
        const auto sum = taker.number();
        if (!content || !sum || *sum != digest(*content) || !take_entry(*content, contents))
            return contents;
    }
}

std::string state_folder(const std::string& screens) {
    const char* const state = std::getenv("XDG_STATE_HOME");
    const char* const home = std::getenv("HOME");
    std::filesystem::path folder;
    if (state && *state == '/')
        folder = state;
    else if (home && *home == '/')
        folder = std::filesystem::path(home) / ".local/state";
    else
        return {};
    constexpr std::string_view digits = "0123456789abcdef";
    std::string name;
    for (std::uint64_t sum = digest(screens), i = 0; i < 16; ++i, sum >>= 4U)
        name += digits[sum & 15U];
    return (folder / "veldor/edit" / name).string();
}

std::string Journal::begin(const std::string& name, const std::string& file, const std::string& text) {
    return begun_.emplace(name, true).second ? base_entry(name, {file, text, text, false}) : "";
}

void Journal::note(const std::string& name, const std::string& file, const std::string& before,
                   const std::string& after) {
    std::string entries = begin(name, file, before);
    append(entries += change_entry(name, change_between(before, after)));
}

void Journal::note_saving(const std::string& name, const std::string& file, const std::string& text) {
    std::string entries = begin(name, file, text);
    append(entries += saving_entry(name));
}

void Journal::append(const std::string& entries) {
    if (path_.empty())
        return;
    if (!file_) {
        std::error_code error;
        std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), error);
        file_.reset(std::fopen(path_.c_str(), "abe"));
        if (file_ && size_ == 0 && std::fwrite(magic.data(), 1, magic.size(), file_.get()) == magic.size())
            size_ = magic.size();
    }
    if (file_ && std::fwrite(entries.data(), 1, entries.size(), file_.get()) == entries.size() &&
        std::fflush(file_.get()) == 0) {
        size_ += entries.size();
        return;
    }
    trouble_ = "cannot write " + path_ + ": " + std::strerror(errno);
}

void Journal::replace(const JournalContents& contents) {
    file_.reset();
    begun_.clear();
    size_ = 0;
    trouble_ = path_.empty() ? "there is neither XDG_STATE_HOME nor HOME to keep unsaved changes in" : "";
    if (path_.empty())
        return;
    if (contents.empty()) {
        std::error_code error;
        std::filesystem::remove(path_, error);
        if (error)
            trouble_ = "cannot remove " + path_ + ": " + error.message();
        return;
    }
    std::string bytes(magic);
    for (const auto& [name, document] : contents) {
        bytes += base_entry(name, document);
        if (document.text != document.base)
            bytes += change_entry(name, change_between(document.base, document.text));
        if (document.saving)
            bytes += saving_entry(name);
        begun_[name] = true;
    }
    trouble_ = write_whole_file(path_, bytes);
    size_ = bytes.size();
}

} // namespace vcc::kit::edit
