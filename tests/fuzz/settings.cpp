// The configuration file: read, saved, read again. What is in force is always in its range.
#include "settings/settings.h"
#include "settings/config_file.h"
#include "settings/config_text.h"
#include "sound/sound.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    world().write("data/configs/vcc.cfg", input);
    set_config_data("\n", 1);
    select_config_file();
    music_on = 0;
    load_settings();
    save_settings();
    flush_settings();
    load_settings();
    for (const SettingRow& row : rows::all)
        if (int* const* const place = std::get_if<int*>(&row.place);
            place && row.has(rows::loaded) && row.outside != Outside::kept)
            require(row.kind != SettingKind::number || (**place >= row.min && **place <= row.max));
    with_sections_apart(input);
}
