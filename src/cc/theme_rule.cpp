#include "cc/theme_rule.h"

namespace vcc {

namespace {

int theme_after(int theme, int theme_count) {
    return theme < 0 || theme >= theme_count - 1 ? 0 : theme + 1;
}

} // namespace

Themes next_themes(const Themes& now, ThemeEvent event, bool loop_all, int theme_count) {
    switch (event) {
    case ThemeEvent::wanted:
        return {now.stored, now.stored, now.stored};
    case ThemeEvent::ended:
        return {loop_all ? theme_after(now.streaming, theme_count) : now.streaming, now.shown, now.stored};
    case ThemeEvent::looked:
        return loop_all ? Themes{now.streaming, now.streaming, now.streaming} : now;
    }
    return now;
}

} // namespace vcc
