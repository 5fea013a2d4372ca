#include "choice/choice_drawing.h"

#include "platform/image/resample.h"
#include "platform/image/text_drawing.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace veldara {
namespace {

struct Colour {
    std::uint8_t c0, c1, c2;
};

constexpr Colour grey{190, 190, 190};
constexpr Colour red{255, 0, 0};
constexpr Colour blue{38, 110, 190};
constexpr Colour darkInk{96, 102, 112};
constexpr Colour lightInk{200, 205, 212};
constexpr Colour wall{238, 235, 228};
constexpr Colour shadow{206, 202, 192};
constexpr Colour floorColour{201, 183, 158};
constexpr Colour person{96, 102, 112};
constexpr Colour sofa{126, 139, 120};
constexpr Colour sofaShade{104, 116, 99};

// Shapes are drawn this much larger and brought down by resampling, which smooths their edges.
constexpr int oversampling = 3;

void fill(Image& image, double left, double top, double right, double bottom, Colour colour) {
    const int x0 = std::clamp(static_cast<int>(std::lround(left)), 0, image.width());
    const int x1 = std::clamp(static_cast<int>(std::lround(right)), 0, image.width());
    const int y0 = std::clamp(static_cast<int>(std::lround(top)), 0, image.height());
    const int y1 = std::clamp(static_cast<int>(std::lround(bottom)), 0, image.height());
    for (int y = y0; y < y1; ++y) {
        std::uint8_t* row = image.row(y);
        for (int x = x0; x < x1; ++x) {
            row[3 * x] = colour.c0;
            row[3 * x + 1] = colour.c1;
            row[3 * x + 2] = colour.c2;
        }
    }
}

// A rectangle with round corners; a radius of half its side makes an ellipse's end.
void fillRounded(Image& image, double left, double top, double right, double bottom, double radius,
                 Colour colour) {
    radius = std::min({radius, (right - left) / 2, (bottom - top) / 2});
    for (int y = static_cast<int>(std::floor(top)); y < std::ceil(bottom); ++y) {
        const double middle = y + 0.5;
        const double beyond = std::max({top + radius - middle, middle - (bottom - radius), 0.0});
        if (beyond < radius || radius == 0) {
            const double inset = radius - std::sqrt(radius * radius - beyond * beyond);
            fill(image, left + inset, y, right - inset, y + 1, colour);
        }
    }
}

void paste(Image& image, const PixelView& pixels, int left, int top) {
    for (int y = 0; y < pixels.height(); ++y) {
        if (top + y < 0 || top + y >= image.height()) {
            continue;
        }
        const int first = std::max(0, -left);
        const int last = std::min(pixels.width(), image.width() - left);
        if (first < last) {
            std::copy(pixels.row(y) + 3 * first, pixels.row(y) + 3 * last,
                      image.row(top + y) + 3 * (left + first));
        }
    }
}

void frame(Image& image, int left, int top, int right, int bottom, int thickness, Colour colour) {
    fill(image, left, top, right, top + thickness, colour);
    fill(image, left, bottom - thickness, right, bottom, colour);
    fill(image, left, top, left + thickness, bottom, colour);
    fill(image, right - thickness, top, right, bottom, colour);
}

// Half way to white, so that the photo is still seen.
void dim(Image& image, int left, int top, int right, int bottom) {
    for (int y = top; y < bottom; ++y) {
        std::uint8_t* row = image.row(y);
        for (int i = 3 * left; i < 3 * right; ++i) {
            row[i] = static_cast<std::uint8_t>(255 - (255 - row[i]) / 4);
        }
    }
}

// Feet at (x, ground); lengths in pixels.
void drawPerson(Image& image, double x, double ground, double height) {
    const double head = height * 0.065;
    fillRounded(image, x - head, ground - height, x + head, ground - height + 2.4 * head, head,
                person);
    const double neck = height * 0.028;
    fill(image, x - neck, ground - 0.88 * height, x + neck, ground - 0.8 * height, person);
    const double chest = height * 0.085;
    fillRounded(image, x - chest, ground - 0.83 * height, x + chest, ground - 0.44 * height,
                chest * 0.5, person);
    const double arm = height * 0.025;
    const double leg = height * 0.042;
    for (const double side : {-1.0, 1.0}) {
        const double shoulder = x + side * (chest + arm * 0.7);
        fillRounded(image, shoulder - arm, ground - 0.82 * height, shoulder + arm,
                    ground - 0.42 * height, arm, person);
        const double middle = x + side * (chest - leg);
        fillRounded(image, middle - leg, ground - 0.52 * height, middle + leg, ground, leg * 0.5,
                    person);
    }
}

void drawSofa(Image& image, double left, double ground, double width, double scale) {
    const double back = 33 * scale; // inches of an ordinary sofa
    const double seat = 17 * scale;
    const double arm = 8 * scale;
    fillRounded(image, left + arm / 2, ground - back, left + width - arm / 2, ground - 3 * scale,
                4 * scale, sofa);
    fillRounded(image, left + arm, ground - seat, left + width - arm, ground - 3 * scale, 2 * scale,
                sofaShade);
    for (const double side : {left, left + width - arm}) {
        fillRounded(image, side, ground - 24 * scale, side + arm, ground - 2 * scale, 3 * scale,
                    sofaShade);
    }
}

} // namespace

Image choiceThumbnail(const PixelView& photo, int width, int height) {
    if (photo.empty()) {
        const int side = std::min(width / 3, height / 2);
        return Image::filled(std::max(1, 3 * side), std::max(1, 2 * side), grey.c0, grey.c1,
                             grey.c2);
    }
    const double scale = std::min({static_cast<double>(width) / photo.width(),
                                   static_cast<double>(height) / photo.height(), 1.0});
    return resampled(photo, std::max(1, static_cast<int>(std::lround(photo.width() * scale))),
                     std::max(1, static_cast<int>(std::lround(photo.height() * scale))));
}

Image drawSheets(const PixelView& thumbnail, const PosterLayout& layout) {
    Image image = Image::copyOf(thumbnail);
    const CropRect crop = cropRect(layout);
    const double scale = static_cast<double>(image.width()) / layout.photoWidth;
    const auto at = [&](double pixels, int most) {
        return std::clamp(static_cast<int>(std::lround(pixels * scale)), 0, most);
    };
    const int left = at(crop.left, image.width());
    const int top = at(crop.top, image.height());
    const int right = at(crop.left + crop.width, image.width());
    const int bottom = at(crop.top + crop.height, image.height());
    dim(image, 0, 0, image.width(), top);
    dim(image, 0, bottom, image.width(), image.height());
    dim(image, 0, top, left, bottom);
    dim(image, right, top, image.width(), bottom);
    const int line = 1 + image.width() / 200; // as wide on a screen of small pixels
    for (int i = 1; i < layout.tilesWide; ++i) {
        const int x = left + (right - left) * i / layout.tilesWide;
        fill(image, x, top, x + line, bottom, red);
    }
    for (int j = 1; j < layout.tilesHigh; ++j) {
        const int y = top + (bottom - top) * j / layout.tilesHigh;
        fill(image, left, y, right, y + line, red);
    }
    frame(image, left, top, right, bottom, line, red);
    return image;
}

Image drawGallery(const std::vector<Image>& pictures, int chosen, int columns, int cellWidth,
                  int cellHeight, const std::array<std::uint8_t, 3>& ground) {
    const int count = static_cast<int>(pictures.size());
    const int rows = std::max(1, (count + columns - 1) / columns);
    Image gallery =
        Image::filled(columns * cellWidth, rows * cellHeight, ground[0], ground[1], ground[2]);
    const Colour& ink = ground[0] + ground[1] + ground[2] < 3 * 128 ? lightInk : darkInk;
    const int numberSize = std::max(9, cellHeight / 10);
    for (int i = 0; i < count; ++i) {
        const int left = i % columns * cellWidth;
        const int top = i / columns * cellHeight;
        const Image& picture = pictures[static_cast<std::size_t>(i)];
        paste(gallery, picture.view(), left + (cellWidth - picture.width()) / 2,
              top + numberSize + (cellHeight - numberSize - picture.height()) / 2);
        drawText(gallery.mutableView(), left + 5, top + 3, std::to_string(i + 1), numberSize,
                 ink.c0, ink.c1, ink.c2, 100);
        if (i == chosen) {
            frame(gallery, left, top, left + cellWidth, top + cellHeight, 1 + cellHeight / 80,
                  blue);
        }
    }
    return gallery;
}

int galleryIndexAt(int x, int y, int count, int columns, int cellWidth, int cellHeight) {
    if (x < 0 || y < 0 || x >= columns * cellWidth) {
        return -1;
    }
    const int index = y / cellHeight * columns + x / cellWidth;
    return index < count ? index : -1;
}

Image drawRoom(const PixelView& poster, double posterWidth, double posterHeight, int width,
               int height) {
    constexpr double sofaWidth = 79; // 2 m
    constexpr double sofaHeight = 33;
    constexpr double gap = 12; // between things, inches
    const double wide = std::max(posterWidth, sofaWidth) + 3 * gap + personInches * 0.3;
    const double high = std::max(sofaHeight + gap / 2 + posterHeight, personInches) + 2 * gap;
    const int w = width * oversampling;
    const int h = height * oversampling;
    const double scale = std::min(w / wide, h / high);

    Image room = Image::filled(w, h, wall.c0, wall.c1, wall.c2);
    const double ground = h - gap * scale / 2;
    fill(room, 0, h - gap * scale, w, h, floorColour);
    const double left = (w - wide * scale) / 2 + gap * scale;
    const double column = std::max(posterWidth, sofaWidth) * scale;
    const int posterPixelsWide = std::max(1, static_cast<int>(std::lround(posterWidth * scale)));
    const int posterPixelsHigh = std::max(1, static_cast<int>(std::lround(posterHeight * scale)));
    const auto posterLeft = static_cast<int>(std::lround(left + (column - posterPixelsWide) / 2));
    const auto posterTop =
        static_cast<int>(std::lround(ground - (sofaHeight + gap / 2) * scale - posterPixelsHigh));
    fill(room, posterLeft + oversampling, posterTop + oversampling,
         posterLeft + posterPixelsWide + oversampling, posterTop + posterPixelsHigh + oversampling,
         shadow);
    paste(room, resampled(poster, posterPixelsWide, posterPixelsHigh).view(), posterLeft,
          posterTop);
    drawSofa(room, left + (column - sofaWidth * scale) / 2, ground, sofaWidth * scale, scale);
    drawPerson(room, left + column + gap * scale + personInches * 0.15 * scale, ground,
               personInches * scale);
    return resampled(room.view(), width, height);
}

} // namespace veldara
