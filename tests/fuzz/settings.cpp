// The configuration file: read, saved, read again. What is in force is always in its range.
#include "world.h"

#include "settings/config_text.h"
#include "settings/rows.h"
#include "settings/settings.h"
#include "sound/sound.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::World& world = fuzz::World::start();
    std::filesystem::create_directories("data/configs");
    world.write("data/configs/vcc.cfg", fuzz::as_text(data, size));
    set_config_data("\n", 1);
    select_config_file();
    music_on = 0;
    load_settings();
    save_settings();
    flush_settings();
    load_settings();
    for (const SettingRow& row : setting_rows())
        if (int* const* const place = std::get_if<int*>(&row.place); place && row.has(KeyUse::load))
            if (row.kind == KeyKind::number && (**place < row.min || **place > row.max))
                std::abort();
    with_sections_apart(fuzz::as_text(data, size));
    return 0;
}
