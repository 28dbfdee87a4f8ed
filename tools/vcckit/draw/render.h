// The pictures that the program shows, drawn by the program itself, without a display.
#pragma once

#include "vcckit/draw/rgb_picture.h"

#include "core/handles.h"
#include "core/result.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vcc::kit {

enum class RenderedScreen { menu, options, help, message };

struct RenderRequest {
    RenderedScreen screen = RenderedScreen::menu;
    std::size_t language = 0;     ///< index of `languages`
    std::optional<int> row{};     ///< options: the option whose values are shown
    std::optional<int> module{};  ///< options: the module whose sound is shown, 0 to 3
    std::optional<int> hover{};   ///< slot under the pointer; help: the slot that the help is about
    std::optional<int> pressed{}; ///< menu, options: slot whose pressed look is shown
    int depth = 32;               ///< bits: 15, 16, 24 or 32
};

RgbPicture rgb_of(BITMAP& bitmap);

/// A slot that a player can choose.
struct SeenSlot {
    int number = 0;
    int x = 0, y = 0; ///< a place in it, pixels
    int action = 0, help_number = 0;
    std::string name; ///< its text, or its name in the source; Windows Latin-1
};

/// What a player sees.
struct SeenScreen {
    RgbPicture picture;
    std::vector<SeenSlot> slots;
};

/// Draws pictures of the installation in the working folder. Fonts, pictures and sounds, which take time, are loaded
/// with the first picture and kept; everything else is read again for each one, so that no picture affects another. One
/// object at a time in a process; the graphics library must be running in the depth of the requests.
class Renderer {
public:
    Renderer();
    ~Renderer();
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    /// The picture of 800 x 600.
    Result<BitmapPtr> draw(const RenderRequest& request);

    /// The picture, and the slots that can be chosen in it: those of the menu, or of the options screen with the values
    /// of the request's row.
    Result<SeenScreen> see(const RenderRequest& request);

    /// A graphic buffer as it was loaded; null when it is empty, and before the first picture.
    BITMAP* buffer(int number) const;

    /// Loads everything again for the next picture, after a kept file has changed.
    void forget();

private:
    struct Kept;

    std::string load(const RenderRequest& request);
    std::string load_pictures_once();
    void load_sounds_once();

    std::unique_ptr<Kept> kept_;
};

} // namespace vcc::kit
