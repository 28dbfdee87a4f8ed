#include "vcckit/faults/silence.h"

#include "vcckit/faults/source_place.h"
#include "vcckit/text/lines.h"
#include "vcckit/text/nearest.h"

#include <algorithm>

namespace vcc::kit {

namespace {

constexpr std::string_view mark = "# vcckit: ignore", separators = " ,\t\r";

/// Calls a function with every word and its offset.
template <class Each>
void for_each_word(std::string_view text, Each each) {
    std::size_t at = 0;
    while ((at = text.find_first_not_of(separators, at)) != std::string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(separators, at), text.size());
        each(text.substr(at, end - at), at);
        at = end;
    }
}

} // namespace

Result<std::set<FaultCode>> codes_of(const std::vector<std::string>& words) {
    std::set<FaultCode> codes;
    std::string unknown;
    for (const std::string& list : words)
        for_each_word(list, [&](std::string_view word, std::size_t) {
            if (const FaultRow* const row = find_fault_row(word))
                codes.insert(row->code);
            else if (unknown.empty())
                unknown = "--ignore: " + no_such_fault(word);
        });
    return unknown.empty() ? Result(std::move(codes)) : Failure{unknown};
}

std::vector<Silence> silences_of(std::string_view text, Faults& faults) {
    std::vector<Silence> silences;
    if (text.find(mark) == std::string_view::npos)
        return silences;
    const std::vector<std::string_view> lines = lines_of(text);
    const auto report = [&](const Place& place, std::string problem, std::string nearest) {
        faults.push_back(source_fault(FaultCode::unknown_code, place, "", "", std::move(problem),
                                      "vcckit explain lists the codes", std::move(nearest)));
    };
    const auto is_heading = [&](std::size_t at) { return at < lines.size() && lines[at].starts_with('['); };
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t at = lines[i].find(mark), after = at + mark.size();
        if (at == std::string_view::npos ||
            (after < lines[i].size() && separators.find(lines[i][after]) == std::string_view::npos))
            continue;
        const int line = static_cast<int>(i) + 1;
        Silence silence{line, line, {}};
        if (lines[i].find_first_not_of(" \t\r") == at) { // on a line of its own
            silence.first_line = silence.last_line = line + 1;
            if (is_heading(i + 1)) {
                std::size_t next = i + 2;
                while (next < lines.size() && !is_heading(next))
                    ++next;
                silence.last_line = static_cast<int>(next);
            }
        }
        if (lines[i].substr(after).find_first_not_of(separators) == std::string_view::npos)
            report({line, static_cast<int>(at) + 1, static_cast<int>(mark.size())}, "the comment names no code", "");
        for_each_word(lines[i].substr(after), [&](std::string_view word, std::size_t offset) {
            if (const FaultRow* const row = find_fault_row(word))
                silence.codes.insert(row->code);
            else
                report({line, static_cast<int>(after + offset) + 1, static_cast<int>(word.size())},
                       "there is no fault " + std::string(word),
                       nearest_word(word, fault_rows, [](const FaultRow& known) { return code_text(known.code); }));
        });
        silences.push_back(silence);
    }
    return silences;
}

bool is_silenced(const Fault& fault, const std::vector<Silence>& silences) {
    return std::ranges::any_of(silences, [&](const Silence& silence) {
        return fault.line >= silence.first_line && fault.line <= silence.last_line &&
               silence.codes.contains(fault.code);
    });
}

} // namespace vcc::kit
