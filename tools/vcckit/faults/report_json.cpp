// Apart from report.cpp, so that what packs screens needs no library for JSON.
#include "vcckit/faults/report.h"

#include "vcckit/text/latin1.h"

#include <utility>

#include <nlohmann/json.hpp>

namespace vcc::kit {

std::string json_of_faults(const Faults& faults, std::string_view key, const std::string& subject,
                           const std::optional<std::vector<std::string>>& written) {
    using Json = nlohmann::ordered_json;
    const auto texts = [](const std::vector<std::string>& names) {
        Json list = Json::array();
        for (const std::string& name : names)
            list.push_back(as_utf8(name));
        return list;
    };
    Json told{{std::string(key), as_utf8(subject)}, {"faults", Json::array()}};
    for (const Fault& fault : faults) {
        Json entry{{"code", code_text(fault.code)}, {"file", as_utf8(fault.file)}};
        const auto add = [&](const char* name, bool known, const Json& value) {
            if (known)
                entry[name] = value;
        };
        add("more_files", !fault.more_files.empty(), texts(fault.more_files));
        add("line", fault.line > 0, fault.line);
        add("column", fault.column > 0, fault.column);
        add("record", fault.record >= 0, fault.record);
        add("more_records", !fault.more_records.empty(), fault.more_records);
        add("where", !fault.where.empty(), as_utf8(fault.where));
        add("field", !fault.field.empty(), as_utf8(fault.field));
        add("problem", true, as_utf8(fault.problem));
        add("advice", true, as_utf8(fault.advice));
        add("nearest", !fault.nearest.empty(), as_utf8(fault.nearest));
        add("fatal", true, fault.fatal);
        told["faults"].push_back(std::move(entry));
    }
    if (written)
        told["written"] = texts(*written);
    return told.dump(2) + "\n";
}

} // namespace vcc::kit
