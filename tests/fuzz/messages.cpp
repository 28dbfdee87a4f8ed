// Message files.
#include "world.h"

#include "text/language.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::World::start().write("a.eng", fuzz::as_text(data, size));
    language = 1;
    load_messages("a.eng");
    for (const int index : {-1, 0, 299, 300})
        message(index);
    return 0;
}
