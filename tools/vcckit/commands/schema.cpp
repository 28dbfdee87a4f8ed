#include "vcckit/source/schema.h"

#include "vcckit/commands/commands.h"
#include "vcckit/record/fields.h"

#include <cstdio>

namespace vcc::kit {

int run_schema(bool fields) {
    std::fputs((fields ? field_table() : screen_schema()).c_str(), stdout);
    return exit_clean;
}

} // namespace vcc::kit
