// What the control centre costs beyond what the library costs. Ends with 1 when a figure is above its limit.
#include "figure.h"
#include "world.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

namespace counter = vcc::bench::counter;

/// Shows the figures as a table, and remembers those above their limits.
class Judge : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.error_occurred)
                misses_.push_back(run.benchmark_name() + ": " + run.error_message);
            else if (const auto limit = run.counters.find(counter::limit); limit != run.counters.end())
                judge(run, limit->second);
        }
    }
    const std::vector<std::string>& misses() const { return misses_; }

private:
    void judge(const Run& run, double limit) {
        const bool is_ratio = run.counters.contains(counter::ratio);
        const double figure = run.counters.at(is_ratio ? counter::ratio : counter::us);
        if (figure <= limit)
            return;
        char text[200];
        std::snprintf(text, sizeof text, "%s: %.2f %s, at most %.2f wanted", run.benchmark_name().c_str(), figure,
                      is_ratio ? "times the bare work" : "microseconds", limit);
        misses_.emplace_back(text);
    }

    std::vector<std::string> misses_;
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    if (const char* reason = vcc::bench::enter_world()) {
        std::fprintf(stderr, "veldor_bench: %s\n", reason);
        vcc::bench::leave_world();
        return 2;
    }
    Judge judge;
    benchmark::RunSpecifiedBenchmarks(&judge);
    vcc::bench::leave_world();
    for (const std::string& miss : judge.misses())
        std::printf("MISSED %s\n", miss.c_str());
    return judge.misses().empty() ? 0 : 1;
}
