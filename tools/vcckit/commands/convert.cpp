// The command convert: what each input becomes under which name, and reporting it.
#include "vcckit/media/convert.h"
#include "vcckit/check/installation.h"
#include "vcckit/commands/commands.h"
#include "vcckit/media/themes.h"

#include "platform/files.h"
#include "platform/latin1.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include <unistd.h>

namespace vcc::kit {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t listed_name_limit = 20; ///< characters of a file name in the sound set-up

struct TargetRow {
    MediaKind kind;
    const char* ending;
};
constexpr TargetRow targets[] = {{MediaKind::picture, ".pcx"}, {MediaKind::sound, ".wav"}, {MediaKind::film, ".avi"}};

struct Job {
    Media source;
    std::string target;
    MediaKind kind; ///< of the target
};

/// The name with another extension: "theme.ogg" becomes "theme.wav".
Result<Job> job_of(const std::string& source, const std::string& output) {
    const auto media = read_media(source);
    if (!media)
        return Failure{source + ": " + media.reason()};
    const fs::path to = platform::system_path(output);
    std::error_code error;
    const bool into_folder = fs::is_directory(to, error), is_named = !output.empty() && !into_folder;
    const TargetRow* const row = std::ranges::find_if(targets, [&](const TargetRow& each) {
        return is_named ? platform::same_but_for_case(platform::name_of(to.extension()), each.ending)
                        : each.kind == media->kind;
    });
    if (row == std::end(targets))
        return Failure{output + ": is not a folder, and does not end in .pcx, .wav or .avi"};
    Job job{*media, output, row->kind};
    if (!is_named) {
        const fs::path from = platform::system_path(source);
        job.target = platform::name_of((into_folder ? to : from.parent_path()) / from.stem()) + row->ending;
    }
    if (fs::equivalent(platform::system_path(source), platform::system_path(job.target), error))
        return Failure{source + ": would be replaced by its own conversion: give another name with -o"};
    if (job.kind == MediaKind::film && media->kind == MediaKind::picture)
        return Failure{source + ": is a picture, not a film"};
    return job;
}

/// Checks before the first conversion that all inputs are usable and no two become the same file; tells of each that is
/// not, and gives none then.
std::vector<Job> jobs_of(const std::vector<std::string>& sources, const std::string& output) {
    std::vector<Job> jobs;
    bool usable = true;
    const auto refuse = [&usable](const std::string& reason) {
        complain(reason);
        usable = false;
    };
    for (const std::string& source : sources) {
        Result<Job> job = job_of(source, output);
        if (!job) {
            refuse(job.reason());
            continue;
        }
        for (const Job& other : jobs)
            if (other.target == job->target)
                refuse(source + ": would become " + job->target + ", as " + other.source.path + " does");
        jobs.push_back(std::move(*job));
    }
    return usable ? jobs : std::vector<Job>{};
}

/// A progress line on a terminal; nothing elsewhere.
class ProgressLine {
public:
    ProgressLine(std::size_t number, std::size_t count, const std::string& name)
        : begin_("[" + std::to_string(number) + "/" + std::to_string(count) + "] " + name) {
        show(0);
    }
    ~ProgressLine() {
        if (wanted_)
            std::fputs("\r\x1b[K", stderr);
    }
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void show(double share) {
        const int percent = static_cast<int>(std::min(share, 1.0) * 100);
        if (!wanted_ || percent == shown_)
            return;
        shown_ = percent;
        std::fprintf(stderr, "\r\x1b[K%s %d %%", begin_.c_str(), percent);
        std::fflush(stderr);
    }

private:
    bool wanted_ = ::isatty(STDERR_FILENO) != 0;
    int shown_ = -1;
    std::string begin_;
};

Result<std::string> convert(const Job& job, NewFile& file, int bits, const Progress& progress) {
    if (job.kind == MediaKind::picture)
        return convert_picture(job.source, file, bits);
    if (job.kind == MediaKind::film)
        return convert_film(job.source, file, progress);
    return convert_sound(job.source, file, progress);
}

} // namespace

int run_convert(const std::vector<std::string>& sources, const ConvertRequest& request) {
    const InterruptionGuard guard;
    const Library library; // reads the sounds whose seam is checked
    std::error_code error;
    if (sources.size() > 1 && !request.output.empty() &&
        !fs::is_directory(platform::system_path(request.output), error))
        return complain(request.output + ": is not a folder, and one file cannot hold " +
                        std::to_string(sources.size()));
    const auto jobs = jobs_of(sources, request.output);
    if (jobs.empty())
        return exit_unusable;
    int status = exit_clean;
    for (std::size_t i = 0; i < jobs.size() && !interrupted(); ++i) {
        const Job& job = jobs[i];
        const bool sound = job.kind == MediaKind::sound;
        NewFile file(job.target);
        const auto made = [&] {
            ProgressLine line(i + 1, jobs.size(), job.source.path);
            return convert(job, file, request.bits, [&](double share) { line.show(share); });
        }();
        const std::string seam = made && sound && request.loop ? loop_fault(file.temporary_name()) : "";
        if (interrupted())
            break;
        if (!seam.empty()) {
            complain(job.source.path + ": " + seam + ": without --loop it is converted anyway");
            status = std::max(status, exit_faults);
            continue;
        }
        if (!made || !file.commit()) {
            status = complain(job.source.path + ": " + (made ? file.reason() : made.reason()));
            continue;
        }
        std::printf("%s: %s\n", job.target.c_str(), made->c_str());
        if (sound && platform::name_of(platform::system_path(job.target).filename()).size() > listed_name_limit)
            complain(job.target + ": tools/vcc.snd takes names of at most 20 characters");
    }
    return status;
}

} // namespace vcc::kit
