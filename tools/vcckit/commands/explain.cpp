// The command explain.
#include "vcckit/commands/commands.h"
#include "vcckit/faults/fault_codes.h"
#include "vcckit/text/lines.h"

#include <cstdio>

namespace vcc::kit {

namespace {

/// A cell of a Markdown table: one line, with bars escaped.
std::string cell(std::string_view text) {
    std::string out;
    for (const char c : text)
        out += c == '\n' ? std::string("<br>") : c == '|' ? std::string("\\|") : std::string(1, c);
    return out;
}

std::string code_cell(std::string_view text) {
    std::string out;
    for (const std::string_view line : lines_of(text))
        out += (out.empty() ? "`" : "<br>`") + cell(line) + "`";
    return out.empty() ? "an empty line" : out;
}

void print_markdown() {
    std::printf("| Code | Fault | What it means | Example |\n|---|---|---|---|\n");
    for (const FaultRow& row : fault_rows)
        std::printf("| %s | %s | %s | %s |\n", code_text(row.code).c_str(), cell(row.title).c_str(),
                    cell(row.explanation).c_str(), code_cell(row.example).c_str());
}

void print_row(const FaultRow& row) {
    std::printf("%s: %s\n\n%s\n\nExample:\n", code_text(row.code).c_str(), std::string(row.title).c_str(),
                std::string(row.explanation).c_str());
    for (const std::string_view line : lines_of(row.example))
        std::printf("    %s\n", std::string(line).c_str());
}

} // namespace

int run_explain(const std::vector<std::string>& codes, bool markdown) {
    if (markdown) {
        print_markdown();
        return exit_clean;
    }
    if (codes.empty())
        for (const FaultRow& row : fault_rows)
            std::printf("%s  %s\n", code_text(row.code).c_str(), std::string(row.title).c_str());
    int status = exit_clean;
    for (const std::string& code : codes)
        if (const FaultRow* const row = find_fault_row(code))
            print_row(*row);
        else
            status = complain(no_such_fault(code));
    return status;
}

} // namespace vcc::kit
