#include "sheets/guide_drawings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace veldara {
namespace {

constexpr PageColour ink{60, 60, 60};
constexpr PageColour picture{178, 205, 226};
constexpr PageColour strip{222, 234, 243};
constexpr PageColour paper{255, 255, 255};
constexpr PageColour accent{196, 64, 40};

// A drawing's own co-ordinates: 0 to 100 both ways, put into a box of the page.
class Sketch {
  public:
    explicit Sketch(const PageRect& box)
        : left_(box.left), top_(box.top), scale_(std::min(box.width(), box.height()) / 100) {}

    void fill(double left, double top, double right, double bottom, PageColour colour) {
        shape({{left, top}, {right, top}, {right, bottom}, {left, bottom}}, colour, 0);
    }
    void frame(double left, double top, double right, double bottom) {
        shape({{left, top}, {right, top}, {right, bottom}, {left, bottom}}, ink, 1.2);
    }
    void line(PagePoint from, PagePoint to, PageColour colour, double width = 1.2,
              double dash = 0) {
        items_.emplace_back(PageLine{at(from), at(to), width * scale_, colour, dash * scale_});
    }
    void shape(std::vector<PagePoint> points, PageColour colour, double outline) {
        std::transform(points.begin(), points.end(), points.begin(),
                       [&](PagePoint point) { return at(point); });
        items_.emplace_back(PageShape{std::move(points), colour, outline * scale_});
    }
    void ring(PagePoint middle, double radius, double outline) {
        std::vector<PagePoint> points;
        constexpr int corners = 20;
        for (int i = 0; i < corners; ++i) {
            const double angle = 2 * std::numbers::pi * i / corners;
            points.push_back(
                {middle.x + radius * std::cos(angle), middle.y + radius * std::sin(angle)});
        }
        shape(std::move(points), ink, outline);
    }
    // An arrow with a filled head.
    void arrow(PagePoint from, PagePoint to) {
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        const double x = (to.x - from.x) / length;
        const double y = (to.y - from.y) / length;
        constexpr double head = 9;
        const PagePoint neck{to.x - head * x, to.y - head * y};
        line(from, neck, accent, 2.5);
        shape({to,
               {neck.x - head / 2 * y, neck.y + head / 2 * x},
               {neck.x + head / 2 * y, neck.y - head / 2 * x}},
              accent, 0);
    }
    // Open scissors whose blades point upward, the cut being at `tip`.
    void scissors(PagePoint tip) {
        line({tip.x - 4, tip.y}, {tip.x + 5, tip.y + 20}, ink, 1.8);
        line({tip.x + 4, tip.y}, {tip.x - 5, tip.y + 20}, ink, 1.8);
        ring({tip.x + 6.5, tip.y + 24}, 4, 1.6);
        ring({tip.x - 6.5, tip.y + 24}, 4, 1.6);
    }
    std::vector<PageItem> take() { return std::move(items_); }

  private:
    PagePoint at(PagePoint point) const {
        return {left_ + point.x * scale_, top_ + point.y * scale_};
    }

    double left_;
    double top_;
    double scale_;
    std::vector<PageItem> items_;
};

} // namespace

std::vector<PageItem> measureDrawing(const PageRect& box) {
    Sketch sketch(box);
    sketch.fill(18, 6, 82, 94, paper);
    sketch.frame(18, 6, 82, 94);
    sketch.fill(26, 14, 74, 52, picture);
    sketch.frame(26, 14, 74, 52);
    sketch.line({26, 70}, {74, 70}, ink, 1.5);
    for (int i = 0; i <= 8; ++i) {
        const double x = 26 + 6.0 * i;
        sketch.line({x, 70}, {x, i % 4 == 0 ? 62.0 : 66.0}, ink, 1);
    }
    sketch.fill(10, 74, 90, 88, {250, 222, 140});
    sketch.frame(10, 74, 90, 88);
    for (int i = 0; i <= 12; ++i) {
        const double x = 14 + 6.0 * i;
        sketch.line({x, 74}, {x, i % 4 == 3 ? 82.0 : 79.0}, ink, 1);
    }
    return sketch.take();
}

std::vector<PageItem> cutDrawing(const PageRect& box, Joining joining) {
    Sketch sketch(box);
    if (joining == Joining::edgeToEdge) {
        for (const double left : {6.0, 54.0}) {
            sketch.fill(left, 20, left + 40, 76, picture);
            sketch.frame(left, 20, left + 40, 76);
        }
        sketch.arrow({92, 88}, {52, 88});
        return sketch.take();
    }
    sketch.fill(16, 6, 88, 90, paper);
    if (joining == Joining::onStrips) {
        sketch.fill(28, 18, 88, 90, strip);
    }
    sketch.fill(28, 18, 76, 78, picture);
    sketch.frame(16, 6, 88, 90);
    sketch.line({28, 2}, {28, 96}, accent, 2, 4);
    sketch.line({10, 18}, {94, 18}, accent, 2, 4);
    sketch.scissors({28, 64});
    return sketch.take();
}

std::vector<PageItem> glueDrawing(const PageRect& box, Joining joining) {
    Sketch sketch(box);
    if (joining == Joining::edgeToEdge) {
        for (const double left : {8.0, 50.0}) {
            sketch.fill(left, 16, left + 42, 76, picture);
            sketch.frame(left, 16, left + 42, 76);
        }
        for (const double y : {26.0, 54.0}) {
            sketch.fill(40, y, 60, y + 10, {250, 222, 140});
            sketch.frame(40, y, 60, y + 10);
        }
        return sketch.take();
    }
    sketch.fill(4, 16, 56, 84, paper);
    if (joining == Joining::onStrips) {
        sketch.fill(44, 22, 56, 78, strip);
    }
    sketch.fill(8, 22, 44, 78, picture);
    sketch.frame(4, 16, 56, 84);
    sketch.shape({{60, 16}, {98, 10}, {98, 66}, {60, 72}}, picture, 0);
    sketch.shape({{60, 16}, {98, 10}, {98, 66}, {60, 72}}, ink, 1.2);
    sketch.arrow({76, 84}, {47, 84});
    return sketch.take();
}

std::vector<PageItem> rowsDrawing(const PageRect& box) {
    Sketch sketch(box);
    sketch.fill(8, 16, 92, 84, picture);
    sketch.frame(8, 16, 92, 84);
    for (const double x : {36.0, 64.0}) {
        sketch.line({x, 16}, {x, 84}, ink);
    }
    sketch.line({8, 50}, {92, 50}, ink);
    sketch.arrow({16, 33}, {86, 33});
    sketch.arrow({16, 67}, {86, 67});
    return sketch.take();
}

} // namespace veldara
