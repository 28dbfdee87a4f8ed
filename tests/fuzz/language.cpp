// The language file; it may also name a message file.
#include "text/language.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    World::write("tools/language.ini", input);
    load_language();
    require(!slot_prefix.empty() && language >= 1 && language <= 2);
}
