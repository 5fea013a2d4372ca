#include "sheets/guide_page.h"

#include "sheets/guide_drawings.h"
#include "sheets/page_font.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>
#include <utility>

namespace veldara {
namespace {

constexpr PageColour ink{40, 40, 40};
constexpr PageColour faint{112, 112, 112};
constexpr PageColour white{255, 255, 255};

// What no printer reaches, where the paper has smaller margins.
constexpr double leastBorder = 7 * pointsPerMillimetre;

// The page as it is filled from the top down. Lengths are for a page of A4's size and scaled.
class Guide {
  public:
    explicit Guide(const SheetJob& job) : job_(job) {
        const double border = std::min({leastBorder, job.paperWidth / 10, job.paperHeight / 10});
        box_ = {std::max(job.margins[edgeLeft], border), std::max(job.margins[edgeTop], border),
                job.paperWidth - std::max(job.margins[edgeRight], border),
                job.paperHeight - std::max(job.margins[edgeBottom], border)};
        constexpr double usualWidth = 520;
        constexpr double usualHeight = 760;
        scale_ =
            std::clamp(std::min(box_.width() / usualWidth, box_.height() / usualHeight), 0.05, 1.5);
        page_ = {job.paperWidth, job.paperHeight, 0, {}};
        y_ = box_.top;
    }

    SheetPage draw() {
        addTitle();
        const double stepsTop = box_.bottom - scaled(190);
        const double rulerTop = stepsTop - scaled(64);
        addPoster(rulerTop - scaled(14));
        y_ = rulerTop;
        addRuler();
        addSteps(stepsTop);
        return std::move(page_);
    }

  private:
    double scaled(double length) const { return length * scale_; }
    double width() const { return box_.width(); }

    void add(const std::vector<PageItem>& items) {
        page_.items.insert(page_.items.end(), items.begin(), items.end());
    }

    void addText(PagePoint start, double size, PageColour colour, const std::string& text) {
        page_.items.emplace_back(PageText{start, size, colour, text, TextDirection::across});
    }

    // Smaller where the line is too long for the page.
    void addLineOfText(double size, PageColour colour, const std::string& text) {
        const double wanted = scaled(size);
        const double fits = wanted * width() / std::max(pageTextWidth(text, wanted), 1e-9);
        y_ += wanted;
        addText({box_.left, y_}, std::min(wanted, fits), colour, text);
        y_ += wanted * 0.45;
    }

    void addTitle() {
        const int wide = job_.layout.tilesWide;
        const int high = job_.layout.tilesHigh;
        const std::string sheets =
            std::to_string(wide * high) + (wide * high == 1 ? " sheet" : " sheets") + ", " +
            std::to_string(wide) + " wide and " + std::to_string(high) + " high";
        addLineOfText(18, ink, shortenedText(job_.photoName, scaled(18), width()));
        addLineOfText(10, ink, "Poster: " + job_.posterSize + "     Paper: " + job_.paperName);
        addLineOfText(10, ink, "Sheets: " + sheets);
        y_ += scaled(2);
        addLineOfText(12, ink, "Print at 100 % (actual size), one side only");
        y_ += scaled(8);
    }

    void addPoster(double bottom) {
        const CropRect crop = cropRect(job_.layout);
        const double shape = posterRatio(job_.layout);
        double high = std::max(bottom - y_, scaled(20));
        double wide = high * shape;
        if (wide > width()) {
            wide = width();
            high = wide / shape;
        }
        const double left = box_.left + (width() - wide) / 2;
        const PageRect target{left, y_, left + wide, y_ + high};
        const double cropLeft = crop.left;
        const double cropTop = crop.top;
        page_.items.emplace_back(PagePhoto{
            {cropLeft, cropTop, cropLeft + crop.width, cropTop + crop.height}, target, false});
        addGrid(target);
    }

    void addGrid(const PageRect& poster) {
        const int across = job_.layout.tilesWide;
        const int down = job_.layout.tilesHigh;
        const double cellWidth = poster.width() / across;
        const double cellHeight = poster.height() / down;
        for (const bool halo : {true, false}) {
            const double lineWidth = halo ? 1.2 : 0.5;
            const PageColour colour = halo ? white : ink;
            for (int i = 0; i <= across; ++i) {
                const double x = poster.left + cellWidth * i;
                page_.items.emplace_back(
                    PageLine{{x, poster.top}, {x, poster.bottom}, lineWidth, colour, 0});
            }
            for (int j = 0; j <= down; ++j) {
                const double y = poster.top + cellHeight * j;
                page_.items.emplace_back(
                    PageLine{{poster.left, y}, {poster.right, y}, lineWidth, colour, 0});
            }
        }
        const std::string longest = std::to_string(across * down);
        const double size = std::min(
            {scaled(16), cellHeight * 0.5, cellWidth * 0.6 / (pageTextWidth(longest, 1.0) + 0.2)});
        for (int number = 1; number <= across * down; ++number) {
            const SheetCell cell = sheetCell(number, across);
            addNumber({poster.left + cellWidth * (cell.column + 0.5),
                       poster.top + cellHeight * (cell.row + 0.5)},
                      size, std::to_string(number));
        }
    }

    void addNumber(PagePoint middle, double size, const std::string& text) {
        const double half = pageTextWidth(text, size) / 2;
        const double side = half + size * 0.25;
        const double high = size * 0.6;
        page_.items.emplace_back(PageShape{{{middle.x - side, middle.y - high},
                                            {middle.x + side, middle.y - high},
                                            {middle.x + side, middle.y + high},
                                            {middle.x - side, middle.y + high}},
                                           white,
                                           0});
        addText({middle.x - half, middle.y + size * 0.36}, size, ink, text);
    }

    void addRuler() {
        const Ruler ruler = guideRuler(width(), job_.units);
        const double bottom = y_ + scaled(22);
        const double tall = scaled(14);
        page_.items.emplace_back(
            PageLine{{box_.left, bottom}, {box_.left + ruler.length, bottom}, 0.5, ink, 0});
        const int group = job_.units == Units::inches ? 4 : 5;
        for (int i = 0; i <= ruler.divisions; ++i) {
            const double x = box_.left + ruler.length * i / ruler.divisions;
            const bool tallest = i == 0 || i == ruler.divisions;
            const double height = tallest ? tall : i % group == 0 ? tall * 0.75 : tall * 0.5;
            page_.items.emplace_back(PageLine{{x, bottom}, {x, bottom - height}, 0.5, ink, 0});
        }
        y_ = bottom + scaled(4);
        addLineOfText(9, ink,
                      "This ruler must measure exactly " + ruler.words +
                          ". If it does not, the sheets were scaled: print them again at 100 %.");
    }

    void addSteps(double top) {
        const Joining joining = joiningOf(job_);
        const std::vector<std::string> steps = assemblySteps(job_);
        const double gap = scaled(14);
        const double each = (width() - 3 * gap) / 4;
        const double square = std::min(each, scaled(100));
        for (std::size_t i = 0; i < steps.size(); ++i) {
            const double left = box_.left + static_cast<double>(i) * (each + gap);
            const double start = left + (each - square) / 2;
            const PageRect box{start, top, start + square, top + square};
            switch (i) {
            case 0:
                add(measureDrawing(box));
                break;
            case 1:
                add(cutDrawing(box, joining));
                break;
            case 2:
                add(glueDrawing(box, joining));
                break;
            default:
                add(rowsDrawing(box));
                break;
            }
            addStepText({left, top + square + scaled(6)}, each,
                        std::to_string(i + 1) + ". " + steps[i]);
        }
    }

    // Words wrapped at the column's width.
    void addStepText(PagePoint corner, double column, const std::string& text) {
        const double size = std::min(scaled(8.5), column / 13);
        std::istringstream words(text);
        std::string line;
        double y = corner.y + size;
        const auto flush = [&] {
            addText({corner.x, y}, size, faint, line);
            y += size * 1.25;
        };
        for (std::string word; words >> word;) {
            std::string longer = line;
            longer.append(line.empty() ? "" : " ").append(word);
            if (!line.empty() && pageTextWidth(longer, size) > column) {
                flush();
                line = word;
            } else {
                line = longer;
            }
        }
        flush();
    }

    const SheetJob& job_;
    PageRect box_;
    double scale_ = 1;
    SheetPage page_;
    double y_ = 0;
};

// How a sheet is joined to the next one at the right or at the bottom of the poster.
struct Joint {
    bool needed = false; // there is a next one
    double strip = 0;    // points; narrower than the overlap where the margin is
    double margin = 0;
};

struct Joints {
    Joint right;
    Joint bottom;
};

Joints jointsOf(const SheetJob& job) {
    const SheetPlace first = sheetPlace(job, 1); // which has every neighbour that there is
    Joints joints;
    for (const Edge edge : {edgeTop, edgeRight, edgeBottom, edgeLeft}) {
        const Edge side = posterEdge(edge, first.turned);
        if (side == edgeRight || side == edgeBottom) {
            Joint& joint = side == edgeRight ? joints.right : joints.bottom;
            joint = {first.neighbour[edge], first.strips[edge], job.margins[edge]};
        }
    }
    return joints;
}

// A strip's width as a person reads it on a ruler.
std::string widthText(const SheetJob& job, double strip) {
    const bool inches = job.units == Units::inches;
    const double unit = inches ? pointsPerInch : pointsPerMillimetre;
    return plainNumber(std::round(strip / unit * 100) / 100) + (inches ? " inch" : " mm");
}

// The steps of cutting and gluing where at least one joint has a strip.
std::pair<std::string, std::string> stripSteps(const SheetJob& job) {
    const auto [right, bottom] = jointsOf(job);
    const bool both = right.strip > 0 && bottom.strip > 0;
    const std::string one = right.strip > 0 ? "right" : "bottom";
    const std::string cut = "Cut off the left and the top margin where another sheet joins. Leave ";
    const std::string widths = both && right.strip != bottom.strip
                                   ? widthText(job, right.strip) + " at the right, " +
                                         widthText(job, bottom.strip) + " at the bottom"
                                   : widthText(job, std::max(right.strip, bottom.strip));
    const bool bare = (right.needed && right.strip <= 0) || (bottom.needed && bottom.strip <= 0);
    return {
        cut + (both ? "the strips at the right and the bottom." : "the strip at the " + one + "."),
        "Put glue on the strip (" + widths +
            "). Lay the next sheet on it so that the picture goes on." +
            (bare ? " Where there is none, tape the edges from the back." : "")};
}

} // namespace

Joining joiningOf(const SheetJob& job) {
    const auto [right, bottom] = jointsOf(job);
    if (right.strip > 0 || bottom.strip > 0) {
        return Joining::onStrips;
    }
    constexpr double leastGlued = 2 * pointsPerMillimetre;
    for (const Joint& joint : {right, bottom}) {
        if (joint.needed && joint.margin < leastGlued) {
            return Joining::edgeToEdge;
        }
    }
    return Joining::onMargins;
}

std::vector<std::string> assemblySteps(const SheetJob& job) {
    const std::string measure = "Print all pages at 100 %. Check the ruler above.";
    const std::string rows = "Join the sheets of each row from left to right, then the rows from "
                             "top to bottom.";
    switch (joiningOf(job)) {
    case Joining::onStrips: {
        const auto [cut, glue] = stripSteps(job);
        return {measure, cut, glue, rows};
    }
    case Joining::onMargins:
        return {measure,
                "Cut off the left and the top margin where another sheet joins. Leave the other "
                "margins.",
                "Put glue on the white margin. Lay the next sheet on it, edge to edge with the "
                "picture.",
                rows};
    case Joining::edgeToEdge:
        break;
    }
    return {measure, "Cut off what is white where sheets meet. Lay the sheets side by side.",
            "Push the edges together. Tape them from the back.", rows};
}

Ruler guideRuler(double room, Units units) {
    if (units == Units::inches) {
        for (const int inches : {4, 3, 2, 1}) {
            if (inches * pointsPerInch <= room) {
                return {inches * pointsPerInch, inches * 4,
                        std::to_string(inches) + (inches == 1 ? " inch" : " inches")};
            }
        }
        return {pointsPerInch / 2, 2, "1/2 inch"};
    }
    for (const int centimetres : {10, 8, 5, 3, 2}) {
        if (centimetres * 10 * pointsPerMillimetre <= room) {
            return {centimetres * 10 * pointsPerMillimetre, centimetres,
                    std::to_string(centimetres * 10) + " mm"};
        }
    }
    return {10 * pointsPerMillimetre, 1, "10 mm"};
}

SheetPage guidePage(const SheetJob& job) {
    return Guide(job).draw();
}

} // namespace veldara
