#include "controls/picture.h"

#include <utility>

namespace veldara {

void Picture::setPixels(std::shared_ptr<const Image> pixels) {
    drawing_ = Drawing::none;
    pixels_ = std::move(pixels);
    changed(Property::picture);
}

void Picture::setDrawing(Drawing drawing) {
    if (drawing == drawing_ && !pixels_) {
        return;
    }
    pixels_.reset();
    drawing_ = drawing;
    changed(Property::picture);
}

void Picture::setSize(int width, int height) {
    if (width == width_ && height == height_) {
        return;
    }
    width_ = width;
    height_ = height;
    changed(Property::range);
    raise(onResize);
}

void Picture::setPlace(int left, int top) {
    if (left == left_ && top == top_) {
        return;
    }
    left_ = left;
    top_ = top;
    changed(Property::range);
}

void Picture::userMouseDown(MouseButton button, int x, int y) {
    if (reachable() && onMouseDown) {
        onMouseDown(button, x, y);
    }
}

void Picture::userDoubleClick() {
    if (reachable()) {
        raise(onDoubleClick);
    }
}

void Picture::userMouseMove(int x, int y) {
    if (reachable() && onMouseMove) {
        onMouseMove(x, y);
    }
}

void Picture::userSetGround(const GroundColour& ground) {
    if (ground != ground_) {
        ground_ = ground;
        raise(onGroundChange);
    }
}

void Picture::userMouseUp(MouseButton button, int x, int y) {
    // A release belongs to an earlier press, so it arrives whatever has happened since.
    if (onMouseUp) {
        onMouseUp(button, x, y);
    }
}

} // namespace veldara
