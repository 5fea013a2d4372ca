// Where a window opens, and how wide lines are on a display: sums without any window.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veldara {

// A rectangle of the desktop, in the toolkit's units.
struct ScreenRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const ScreenRect&) const = default;
};

// How the main window stood: its normal place, whether it was maximized, and the width of the part
// left of its splitter.
struct WindowPlace {
    ScreenRect normal;
    bool maximized = false;
    int splitter = 0;
    bool operator==(const WindowPlace&) const = default;
};

// "10 20 1180 780 0 250": left, top, width, height, 1 for maximized, splitter.
std::string windowPlaceText(const WindowPlace& place);

// Nothing where the text is not such a place, or the window would have no area.
std::optional<WindowPlace> readWindowPlace(std::string_view text);

// The place moved, and where needed shrunk, onto the screen that shows most of it; onto the first
// screen where none shows any. screens: their usable areas, at least one.
ScreenRect placeOnScreen(const ScreenRect& wanted, const std::vector<ScreenRect>& screens);

// Pixels that a line of one pixel at 100 % takes at a display's scale (1 is 100 %): at least one.
int lineWidth(double scale);

// Where a line of that width begins that covers a pixel and stays between two others, which it may
// cover.
int lineStart(int pixel, int width, int first, int last);

} // namespace veldara
