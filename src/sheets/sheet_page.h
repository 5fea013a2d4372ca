// A page as a value: what is drawn on it, in points (1/72 inch) from its top left corner, x to the
// right and y down. The PDF writer, the picture in the window and the printer all draw this
// description, in the order of its items, and decide nothing of the layout themselves.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace veldara {

constexpr double pointsPerInch = 72.0;
constexpr double pointsPerMillimetre = pointsPerInch / 25.4;

struct PagePoint {
    double x = 0;
    double y = 0;
    bool operator==(const PagePoint&) const = default;
};

struct PageRect {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    double width() const { return right - left; }
    double height() const { return bottom - top; }
    bool operator==(const PageRect&) const = default;
};

// A part of the photo as the user has turned it: edges in pixels, real numbers; pixel column n
// reaches from n to n + 1.
struct PhotoRect {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    double width() const { return right - left; }
    double height() const { return bottom - top; }
    bool operator==(const PhotoRect&) const = default;
};

struct PageColour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    bool operator==(const PageColour&) const = default;
};

// That part of the photo fills the target. Turned: a quarter counter-clockwise, as turned tiles
// are, so that the right edge of the source lies along the top edge of the target.
struct PagePhoto {
    PhotoRect source;
    PageRect target;
    bool turned = false;
};

struct PageLine {
    PagePoint from;
    PagePoint to;
    double width = 0.25;
    PageColour colour;
    double dash = 0; // length of a dash and of a gap; 0: a solid line
};

// A filled or outlined polygon; its last point is joined with its first.
struct PageShape {
    std::vector<PagePoint> points;
    PageColour colour;
    double outline = 0; // width of the line around it; 0: filled
};

enum class TextDirection { across, up }; // up: a line that is read from the bottom to the top

struct PageText {
    PagePoint start; // where the base line begins
    double size = 8; // of an em
    PageColour colour;
    std::string text; // UTF-8
    TextDirection direction = TextDirection::across;
};

using PageItem = std::variant<PagePhoto, PageLine, PageShape, PageText>;

struct SheetPage {
    double width = 0;
    double height = 0;
    int sheet = 0; // counted from 1 as tiles are; 0: the assembly guide
    std::vector<PageItem> items;
    std::string label() const { return sheet == 0 ? "Guide" : std::to_string(sheet); }
};

} // namespace veldara
