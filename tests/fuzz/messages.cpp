// Message files.
#include "text/language.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    World::write("a.eng", input);
    load_messages("a.eng");
    for (const int index : {-1, 0, 299, 300})
        message(index);
}
