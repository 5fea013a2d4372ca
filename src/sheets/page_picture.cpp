#include "sheets/page_picture.h"

#include "platform/error.h"
#include "platform/image/text_drawing.h"
#include "platform/image/turn.h"
#include "sheets/page_font.h"
#include "sheets/photo_frame.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veldara {
namespace {

constexpr std::size_t channels = 3;
constexpr int samples = 4; // across and down a pixel, for smooth edges

void blend(std::uint8_t* pixel, const PageColour& colour, int covered, int all) {
    const std::array<int, 3> parts{colour.red, colour.green, colour.blue};
    for (std::size_t c = 0; c < channels; ++c) {
        pixel[c] =
            static_cast<std::uint8_t>((pixel[c] * (all - covered) + parts[c] * covered) / all);
    }
}

class Canvas {
  public:
    // The whole page, or a band of its rows.
    Canvas(const PhotoPicture& photo, double scale, int width, int firstRow, int rows)
        : image_(Image::filled(width, rows, 255, 255, 255)), firstRow_(firstRow), photo_(photo),
          scale_(scale) {}

    void add(const PagePhoto& item) {
        const int left = std::max(0, static_cast<int>(std::floor(item.target.left * scale_)));
        const int top = std::max(firstRow_, static_cast<int>(std::floor(item.target.top * scale_)));
        const int right =
            std::min(image_.width(), static_cast<int>(std::ceil(item.target.right * scale_)));
        const int bottom =
            std::min(rowsEnd(), static_cast<int>(std::ceil(item.target.bottom * scale_)));
        for (int y = top; y < bottom; ++y) {
            for (int x = left; x < right; ++x) {
                showPoint(item, x, y);
            }
        }
    }

    void add(const PageLine& line) {
        const double length = std::hypot(line.to.x - line.from.x, line.to.y - line.from.y);
        if (!(length > 0)) {
            return;
        }
        const PagePoint along{(line.to.x - line.from.x) / length,
                              (line.to.y - line.from.y) / length};
        // A hairline is drawn a pixel wide, or it would fade away.
        const double half = std::max(line.width, 0.7 / scale_) / 2;
        const double step = line.dash > 0 ? line.dash : length;
        const int dashes = static_cast<int>(std::ceil(length / (2 * step)));
        for (int i = 0; i < dashes; ++i) {
            const double start = 2 * step * i;
            const double end = std::min(start + step, length);
            const auto corner = [&](double at, double side) -> PagePoint {
                return {line.from.x + along.x * at - along.y * half * side,
                        line.from.y + along.y * at + along.x * half * side};
            };
            fill({corner(start, 1), corner(end, 1), corner(end, -1), corner(start, -1)},
                 line.colour);
        }
    }

    void add(const PageShape& shape) {
        if (shape.outline <= 0) {
            fill(shape.points, shape.colour);
            return;
        }
        for (std::size_t i = 0; i < shape.points.size(); ++i) {
            add(PageLine{shape.points[i], shape.points[(i + 1) % shape.points.size()],
                         shape.outline, shape.colour, 0});
        }
    }

    // Letters are whole pixels wide, so a line of small ones would be too long: it is drawn larger,
    // and shrunk.
    void add(const PageText& text) {
        const int finer = text.size * scale_ < smallText ? 4 : 1;
        const double fineScale = scale_ * finer;
        const int size = static_cast<int>(std::lround(text.size * fineScale));
        if (size < finer || text.text.empty()) {
            return;
        }
        const TextSize box = measureText(text.text, size);
        const bool across = text.direction == TextDirection::across;
        const auto ascent = static_cast<int>(std::lround(pageFontMetrics().ascent / 1000 * size));
        const int left =
            static_cast<int>(std::lround(text.start.x * fineScale)) - (across ? 0 : ascent);
        const int start = static_cast<int>(std::lround(text.start.y * fineScale));
        const int top = start - (across ? ascent : box.width);
        const int width = across ? box.width : box.height;
        const int height = across ? box.height : box.width;
        const int firstRow = std::max(firstRow_, top / finer);
        const int lastRow = std::min(rowsEnd() - 1, (top + height - 1) / finer);
        if (lastRow < firstRow) {
            return;
        }
        Image line = Image::filled(box.width, box.height, 255, 255, 255);
        drawText(line.mutableView(), 0, 0, text.text, size, 0, 0, 0, 100);
        if (!across) {
            line = turned(line.view(), Turn::counterClockwise);
        }
        for (int y = firstRow; y <= lastRow; ++y) {
            for (int x = std::max(0, left / finer);
                 x <= std::min(image_.width() - 1, (left + width - 1) / finer); ++x) {
                const int ink = inkIn(line, x * finer - left, y * finer - top, finer);
                if (ink > 0) {
                    blend(pixel(x, y), text.colour, ink, 255 * finer * finer);
                }
            }
        }
    }

    Image take() { return std::move(image_); }

  private:
    static constexpr double smallText = 24; // pixels

    // How dark a square of the line is, 0 to 255 for each of its pixels; white lies around the
    // line.
    static int inkIn(const Image& line, int left, int top, int side) {
        int ink = 0;
        for (int y = std::max(0, top); y < std::min(line.height(), top + side); ++y) {
            for (int x = std::max(0, left); x < std::min(line.width(), left + side); ++x) {
                ink += 255 - line.row(y)[channels * static_cast<std::size_t>(x)];
            }
        }
        return ink;
    }

    int rowsEnd() const { return firstRow_ + image_.height(); }

    std::uint8_t* pixel(int x, int y) {
        return image_.row(y - firstRow_) + channels * static_cast<std::size_t>(x);
    }

    void showPoint(const PagePhoto& item, int x, int y) {
        if (!photo_.pixels || photo_.pixels->empty()) {
            std::fill_n(pixel(x, y), channels, std::uint8_t{200});
            return;
        }
        const PageRect& target = item.target;
        double across = ((x + 0.5) / scale_ - target.left) / target.width();
        double down = ((y + 0.5) / scale_ - target.top) / target.height();
        if (item.turned) {
            const double up = 1 - down;
            down = across;
            across = up;
        }
        const Between columns = between(item.source.left + across * item.source.width(),
                                        photo_.width, photo_.pixels->width());
        const Between rows = between(item.source.top + down * item.source.height(), photo_.height,
                                     photo_.pixels->height());
        const std::uint8_t* upper = photo_.pixels->row(rows.first);
        const std::uint8_t* lower = photo_.pixels->row(rows.second);
        const std::size_t left = channels * static_cast<std::size_t>(columns.first);
        const std::size_t right = channels * static_cast<std::size_t>(columns.second);
        std::uint8_t* out = pixel(x, y);
        for (std::size_t c = 0; c < channels; ++c) {
            const double above =
                upper[left + c] + columns.share * (upper[right + c] - upper[left + c]);
            const double below =
                lower[left + c] + columns.share * (lower[right + c] - lower[left + c]);
            // Never negative; std::lround would be a call for every sample.
            // NOLINTNEXTLINE(bugprone-incorrect-roundings)
            out[c] = static_cast<std::uint8_t>(above + rows.share * (below - above) + 0.5);
        }
    }

    // Two neighbouring pixels, and how near to the second of their middles a place lies.
    struct Between {
        int first;
        int second;
        double share;
    };
    static Between between(double position, int size, int pixels) {
        const double place = std::clamp(position / size * pixels - 0.5, 0.0, pixels - 1.0);
        const int first = static_cast<int>(place);
        return {first, std::min(first + 1, pixels - 1), place - first};
    }

    // A polygon of a few corners, by asking for each sample whether it lies
    // inside.
    void fill(const std::vector<PagePoint>& points, const PageColour& colour) {
        PageRect box{1e9, 1e9, -1e9, -1e9};
        for (const PagePoint& point : points) {
            box = {std::min(box.left, point.x), std::min(box.top, point.y),
                   std::max(box.right, point.x), std::max(box.bottom, point.y)};
        }
        const int left = std::max(0, static_cast<int>(std::floor(box.left * scale_)));
        const int top = std::max(firstRow_, static_cast<int>(std::floor(box.top * scale_)));
        const int right =
            std::min(image_.width() - 1, static_cast<int>(std::floor(box.right * scale_)));
        const int bottom =
            std::min(rowsEnd() - 1, static_cast<int>(std::floor(box.bottom * scale_)));
        for (int y = top; y <= bottom; ++y) {
            for (int x = left; x <= right; ++x) {
                const int covered = coverage(points, x, y);
                if (covered > 0) {
                    blend(pixel(x, y), colour, covered, samples * samples);
                }
            }
        }
    }

    int coverage(const std::vector<PagePoint>& points, int x, int y) const {
        int covered = 0;
        for (int i = 0; i < samples * samples; ++i) {
            const int column = i % samples;
            const int row = i / samples;
            const PagePoint sample{(x + (column + 0.5) / samples) / scale_,
                                   (y + (row + 0.5) / samples) / scale_};
            covered += contains(points, sample) ? 1 : 0;
        }
        return covered;
    }

    static bool contains(const std::vector<PagePoint>& points, const PagePoint& at) {
        bool inside = false;
        for (std::size_t i = 0, j = points.size() - 1; i < points.size(); j = i++) {
            const PagePoint& one = points[i];
            const PagePoint& other = points[j];
            if ((one.y > at.y) != (other.y > at.y) &&
                at.x < (other.x - one.x) * (at.y - one.y) / (other.y - one.y) + one.x) {
                inside = !inside;
            }
        }
        return inside;
    }

    Image image_;
    int firstRow_; // of the page's rows in the picture
    const PhotoPicture& photo_;
    double scale_;
};

Image drawRows(const SheetPage& page, const PhotoPicture& photo, double scale, int firstRow,
               int rows) {
    Canvas canvas(photo, scale, std::max(1, static_cast<int>(std::lround(page.width * scale))),
                  firstRow, rows);
    for (const PageItem& item : page.items) {
        std::visit([&](const auto& kind) { canvas.add(kind); }, item);
    }
    return canvas.take();
}

} // namespace

Image drawPage(const SheetPage& page, const PhotoPicture& photo, int boxWidth, int boxHeight) {
    if (boxWidth < 1 || boxHeight < 1) {
        throw Error("There is no room to show the sheet.");
    }
    const double scale = std::min(boxWidth / page.width, boxHeight / page.height);
    return drawRows(page, photo, scale, 0,
                    std::max(1, static_cast<int>(std::lround(page.height * scale))));
}

Image drawPageBand(const SheetPage& page, const PhotoPicture& photo, double dotsPerInch,
                   int firstRow, int rows) {
    return drawRows(page, photo, dotsPerInch / pointsPerInch, firstRow, rows);
}

} // namespace veldara
