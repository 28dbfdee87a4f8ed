// The language file, which may also name a message file; and a message file.
#include "text/language.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    world().write("tools/language.ini", input);
    load_language();
    require(!slot_prefix.empty() && language >= 1 && language <= 2);
    world().write("a.eng", input);
    load_messages("a.eng");
    for (const int index : {-1, 0, 299, 300})
        message(index);
}
