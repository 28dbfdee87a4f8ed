#include "vcckit/media/convert.h"

#include "core/log.h"
#include "media/avi_header.h"
#include "platform/files.h"

#include <array>
#include <cstdlib>

namespace vcc::kit {

namespace {

constexpr long avi_size_limit = 2147483647; ///< bytes of an AVI file without extensions

/// At most 60 frames per second, 25 if there are fewer than one; at most the size of the display, with square pixels.
/// Half of the coder's blocks of colour are two pixels wide and high.
constexpr const char* film_options =
    "-vf setpts=PTS-STARTPTS,"
    "fps='if(between(source_fps,1,60),source_fps,if(gt(source_fps,60),60,25))',"
    "scale='max(2,2*round(iw*sar*min(1,min(800/(iw*sar),600/ih))/2))'"
    ":'max(2,2*round(ih*min(1,min(800/(iw*sar),600/ih))/2))':flags=bicubic,setsar=1 "
    "-c:v mpeg4 -vtag XVID -q:v 2 -g 12 -pix_fmt yuv420p -threads 1 -flags +bitexact -fflags +bitexact "
    "-progress pipe:1 -stats_period 0.1 -f avi -y -fs ";

platform::AviHeader header_of(const std::string& film) {
    std::array<char, 4096> bytes{};
    const FilePtr file(platform::open_file(film, "rb"));
    return platform::read_avi_header({bytes.data(), file ? std::fread(bytes.data(), 1, bytes.size(), file.get()) : 0});
}

/// What FFmpeg could not do with its output: "av_interleaved_write_frame(): No space left on device".
std::string reason_of(std::string_view told) {
    for (const std::string_view act : {"write_frame(): ", "writing trailer of ", "write header "}) {
        const std::size_t begin = told.find(act);
        const std::string_view line =
            begin == std::string_view::npos ? "" : told.substr(begin, told.find('\n', begin) - begin);
        if (const std::size_t colon = line.rfind(": "); colon != std::string_view::npos)
            return std::string(line.substr(colon));
    }
    return {};
}

} // namespace

Result<std::string> convert_film(const Media& media, NewFile& file, const Progress& progress) {
    if (media.pictures < 0)
        return Failure{"has no picture"};
    if (!file.stream())
        return Failure{file.reason()};
    std::string told; // progress, and errors
    std::string fault = run_ffmpeg(media, media.pictures, film_options + std::to_string(avi_size_limit),
                                   "file:" + file.temporary_name(), true, [&](std::string_view piece) {
                                       told += piece;
                                       constexpr std::string_view key = "out_time_us=";
                                       const std::size_t at = told.rfind(key);
                                       if (at != std::string::npos && media.seconds > 0)
                                           progress(std::atof(told.c_str() + at + key.size()) / 1e6 / media.seconds);
                                       return true;
                                   });
    const platform::AviHeader header = header_of(file.temporary_name());
    if (const std::string reason = reason_of(told); !reason.empty())
        fault = "cannot write " + file.name() + reason;
    else if (fault.empty() && header.length == 0)
        fault = "has no picture";
    else if (fault.empty() && std::fseek(file.stream(), 0, SEEK_END) == 0 &&
             std::ftell(file.stream()) >= avi_size_limit)
        fault = "is too long for an AVI file";
    if (!fault.empty())
        return Failure{std::move(fault)};
    const double rate = static_cast<double>(header.rate) / header.scale;
    std::string what = format_text("%.1f s of %d x %d pixels, %.4g frames per second", header.length / rate,
                                   header.width, header.height, rate);
    if (media.sound >= 0)
        what += "; without its sound: vcckit convert " + media.path + " -o NAME.wav";
    return what;
}

} // namespace vcc::kit
