// Faults of sources and installations, and reporting them.
#pragma once

#include "vcckit/faults/fault_codes.h"

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vcc::kit {

struct Fault {
    FaultCode code{};
    std::string file;  ///< relative to the installation; of a source, as given
    int line = 0;      ///< of a text file, from 1; 0 none
    int record = -1;   ///< of a slot or toggle file; -1 none
    std::string field; ///< of the record, or the key of a line; may be empty
    std::string problem;
    std::string advice;
    bool fatal = false; ///< the program would end before its menu

    int column = 0;                        ///< of the line, in characters from 1; 0 none
    int width = 1;                         ///< characters that the fault covers
    std::string where{};                   ///< of a source: the record or style, "slot 3"
    std::string nearest{};                 ///< the correct word nearest to a wrong one; may be empty
    std::vector<int> more_records{};       ///< of the same file, with the same fault, ascending
    std::vector<std::string> more_files{}; ///< with the same fault in the same place
};

using Faults = std::vector<Fault>;

/// Reports faults of one file, or of a line or record of it.
struct Reporter {
    Faults& faults;
    std::string file;
    int line = 0, record = -1;

    void operator()(FaultCode code, std::string field, std::string problem, std::string advice, bool fatal = false,
                    std::string nearest = {}) const {
        faults.push_back({code, file, line, record, std::move(field), std::move(problem), std::move(advice), fatal});
        faults.back().nearest = std::move(nearest);
    }
};

/// A path as reported, with slashes.
std::string with_slashes(std::string_view path);

/// "file: slot 3: VK103 dest_x: problem - advice". With `colours`, place and problem are highlighted for a terminal.
std::string text_of_fault(const Fault& fault, bool colours);

/// The lines below a fault of a source: the line itself, carets under the fault, the advice. `source` is UTF-8.
std::string excerpt_of_fault(const Fault& fault, std::string_view source, bool colours);

/// Whether somebody reads what is written there, on a terminal that understands more than lines.
bool is_terminal(std::FILE* stream);

/// Whether a stream's text may have colours: NO_COLOR in the environment refuses them.
bool wants_colours(std::FILE* stream);

/// Merges faults with one cause: those that differ only in their record or their file's language, and duplicates. Keeps
/// the order.
Faults merged(Faults faults);

/// "1 fault", "3 faults", "clean"
std::string sum_of(const Faults& faults);

/// A JSON object with the faults, in UTF-8, and what was checked (`subject`, under `key`). With `written` it also lists
/// the files written.
std::string json_of_faults(const Faults& faults, std::string_view key, const std::string& subject,
                           const std::optional<std::vector<std::string>>& written = {});

} // namespace vcc::kit
