// The language file; it may also name a message file.
#include "world.h"

#include "text/language.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::World& world = fuzz::World::start();
    std::filesystem::create_directory("tools");
    world.write("tools/language.ini", fuzz::as_text(data, size));
    load_language();
    if (slot_prefix.empty() || language < 1 || language > 2)
        std::abort();
    return 0;
}
