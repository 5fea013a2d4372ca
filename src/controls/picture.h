// A picture box: pixels or one of the program's own drawings, and mouse events in picture pixels.
#pragma once

#include "controls/control.h"
#include "platform/image/image.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace veldara {

// The program's own drawings; the view knows what they look like.
enum class Drawing {
    none,
    loading1,
    loading2,
    loading3,
    loading4,
    error,
    pickImage,
    pickFolder,
    arrowPad,
    arrowPadUp,
    arrowPadRight,
    arrowPadDown,
    arrowPadLeft,
    checkMark,
};

// What a view points out on the pixels without changing them: the part that counts, and lines
// within it. In pixels of the picture; the right and the bottom edge belong to the part.
struct PictureOverlay {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    std::vector<int> columns;
    std::vector<int> rows;
    bool operator==(const PictureOverlay&) const = default;
};

enum class MouseButton { left, middle, right };

using GroundColour = std::array<std::uint8_t, 3>; // red, green, blue

class Picture : public Control {
  public:
    using Control::Control;
    std::function<void(MouseButton, int, int)> onMouseDown;
    std::function<void(int, int)> onMouseMove;
    std::function<void(MouseButton, int, int)> onMouseUp;
    Handler onDoubleClick; // of the left button; comes in place of the second press
    Handler onResize;
    Handler onGroundChange;

    // What is shown: pixels (placed at the top-left corner, or centred by the view), or a drawing.
    const std::shared_ptr<const Image>& pixels() const { return pixels_; }
    Drawing drawing() const { return drawing_; }
    void setPixels(std::shared_ptr<const Image> pixels);
    void setDrawing(Drawing drawing);

    const std::optional<PictureOverlay>& overlay() const { return overlay_; }
    void setOverlay(const std::optional<PictureOverlay>& overlay) {
        assign(overlay_, overlay, Property::overlay);
    }

    // The picture box's inner size in pixels of the screen, and its position in its window.
    int width() const { return width_; }
    int height() const { return height_; }
    int left() const { return left_; }
    int top() const { return top_; }
    void setSize(int width, int height); // raises onResize for a new one
    void setPlace(int left, int top);

    // What stands beside the things in a picture, in the colour of the desktop's lists.
    const GroundColour& ground() const { return ground_; }

    void userMouseDown(MouseButton button, int x, int y);
    void userDoubleClick();
    void userMouseMove(int x, int y);
    void userMouseUp(MouseButton button, int x, int y);
    void userResize(int width, int height) { setSize(width, height); }
    void userSetGround(const GroundColour& ground);

  private:
    std::shared_ptr<const Image> pixels_;
    Drawing drawing_ = Drawing::none;
    std::optional<PictureOverlay> overlay_;
    GroundColour ground_{255, 255, 255};
    int width_ = 0;
    int height_ = 0;
    int left_ = 0;
    int top_ = 0;
};

} // namespace veldara
