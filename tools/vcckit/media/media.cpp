#include "vcckit/media/convert.h"

#include "vcckit/files/new_file.h"

#include "core/handles.h"
#include "platform/files.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <string_view>

#include <nlohmann/json.hpp>

namespace vcc::kit {

namespace {

constexpr const char* no_ffmpeg =
    "cannot be read without FFmpeg: install the package ffmpeg; on Windows put ffmpeg.exe and ffprobe.exe beside "
    "vcckit.exe or on the path";

bool has(const nlohmann::json& stream, const char* disposition) {
    return stream.value(nlohmann::json::json_pointer("/disposition/" + std::string(disposition)), 0) != 0;
}

/// The stream of a kind that is shown or heard without a choice; null without any. The cover of a song is none.
const nlohmann::json* stream_of(const nlohmann::json& streams, const char* kind) {
    const nlohmann::json* found = nullptr;
    for (const nlohmann::json& stream : streams)
        if (stream.value("codec_type", "") == kind && !has(stream, "attached_pic") &&
            (found == nullptr || (has(stream, "default") && !has(*found, "default"))))
            found = &stream;
    return found;
}

Media media_of(const nlohmann::json& told) {
    Media media;
    const nlohmann::json streams = told.value("streams", nlohmann::json::array()),
                         file = told.value("format", nlohmann::json::object());
    const std::string format = file.value("format_name", "");
    if (format == "tty") // any text, which would be the film of a terminal
        return media;
    media.seconds = std::atof(file.value("duration", "0").c_str());
    if (const nlohmann::json* const stream = stream_of(streams, "audio")) {
        media.kind = MediaKind::sound;
        media.sound = stream->value("index", 0);
        media.rate = std::atoi(stream->value("sample_rate", "0").c_str());
        media.channels = stream->value("channels", 0);
    }
    if (const nlohmann::json* const stream = stream_of(streams, "video")) {
        media.kind = format == "image2" || format.ends_with("_pipe") ? MediaKind::picture : MediaKind::film;
        media.pictures = stream->value("index", 0);
        media.width = stream->value("width", 0);
        media.height = stream->value("height", 0);
    }
    return media;
}

} // namespace

Result<Media> read_media(const std::string& path) {
    std::error_code error;
    const auto file = platform::system_path(path);
    if (!std::filesystem::is_regular_file(file, error)) // opening a pipe would block
        return Failure{std::filesystem::exists(file, error) ? "is not a file" : "does not exist"};
    if (!FilePtr(platform::open_file(path, "rb")))
        return Failure{"must not be read"};
    std::string text;
    const auto status = run_program({"ffprobe", "-v", "quiet", "-protocol_whitelist", "file", "-of", "json",
                                     "-show_format", "-show_streams", "file:" + path},
                                    false, [&](std::string_view piece) {
                                        text += piece;
                                        return !interrupted();
                                    });
    const nlohmann::json told = nlohmann::json::parse(text, nullptr, false);
    Media media = status == 0 && told.is_object() ? media_of(told) : Media{};
    media.path = path;
    if (!status)
        return Failure{no_ffmpeg};
    if (media.kind == MediaKind::none)
        return Failure{"is not a picture, sound or film that FFmpeg knows"};
    return media;
}

std::string run_ffmpeg(const Media& media, int stream, const std::string& options, const std::string& target,
                       bool with_errors, const TakeOutput& take) {
    std::istringstream all("ffmpeg -nostdin -v error -xerror -err_detect explode+crccheck+bitstream+buffer "
                           "-protocol_whitelist file -i INPUT -map 0:" +
                           std::to_string(stream) + " " + options);
    std::vector<std::string> words{std::istream_iterator<std::string>(all), {}};
    std::ranges::replace(words, "INPUT", "file:" + media.path);
    words.push_back(target);
    const auto status =
        run_program(words, with_errors, [&](std::string_view piece) { return !interrupted() && take(piece); });
    return !status ? no_ffmpeg : *status != 0 ? "is damaged or truncated" : "";
}

} // namespace vcc::kit
