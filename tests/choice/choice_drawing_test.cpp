#include "choice/choice_drawing.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using Pixel = std::array<int, 3>;

Pixel at(const Image& image, int x, int y) {
    const std::uint8_t* pixel = image.row(y) + 3 * x;
    return {pixel[0], pixel[1], pixel[2]};
}

constexpr Pixel red{255, 0, 0};
constexpr Pixel black{0, 0, 0};

PosterLayout layoutOfSheets(int wide, int high) {
    PosterLayout layout;
    layout.photoWidth = 1000;
    layout.photoHeight = 500;
    layout.tilesWide = wide;
    layout.tilesHigh = high;
    layout.tileWidthInches = layout.tileHeightInches = 8;
    return layout;
}

TEST(ChoiceDrawing, KeepsTheShapeOfThePhoto) {
    const Image photo = Image::filled(1000, 500, 0, 0, 0);
    const Image small = choiceThumbnail(photo.view(), 100, 100);
    EXPECT_EQ(small.width(), 100);
    EXPECT_EQ(small.height(), 50);
    EXPECT_EQ(choiceThumbnail(Image::filled(200, 101, 0, 0, 0).view(), 100, 100).height(), 51);
    const Image none = choiceThumbnail({}, 90, 90);
    EXPECT_EQ(none.width(), 90);
    EXPECT_EQ(none.height(), 60);
}

TEST(ChoiceDrawing, DrawsTheSheetsAndDimsWhatIsCutOff) {
    const Image photo = Image::filled(100, 50, 0, 0, 0);
    const Image drawn = drawSheets(photo.view(), layoutOfSheets(1, 1)); // a square in the middle
    EXPECT_EQ(at(drawn, 10, 25), (Pixel{192, 192, 192}));
    EXPECT_EQ(at(drawn, 90, 25), (Pixel{192, 192, 192}));
    EXPECT_EQ(at(drawn, 25, 25), red);
    EXPECT_EQ(at(drawn, 74, 25), red);
    EXPECT_EQ(at(drawn, 50, 25), black);
    const Image two = drawSheets(photo.view(), layoutOfSheets(2, 1)); // the whole photo
    EXPECT_EQ(at(two, 50, 25), red);
    EXPECT_EQ(at(two, 10, 25), black);
    EXPECT_EQ(at(two, 0, 25), red) << "it begins at the photo's edge";
}

TEST(ChoiceDrawing, FramesTheChosenPictureAndFindsIt) {
    std::vector<Image> pictures(3);
    for (Image& picture : pictures) {
        picture = Image::filled(20, 20, 0, 0, 0);
    }
    const Image gallery = drawGallery(pictures, 2, 2, 50, 40, {255, 255, 255});
    EXPECT_EQ(gallery.width(), 100);
    EXPECT_EQ(gallery.height(), 80);
    EXPECT_EQ(at(gallery, 25, 26), black);              // the first picture
    EXPECT_NE(at(gallery, 0, 79), at(gallery, 99, 79)); // a frame round the third alone
    EXPECT_EQ(galleryIndexAt(10, 10, 3, 2, 50, 40), 0);
    EXPECT_EQ(galleryIndexAt(60, 10, 3, 2, 50, 40), 1);
    EXPECT_EQ(galleryIndexAt(10, 50, 3, 2, 50, 40), 2);
    EXPECT_EQ(galleryIndexAt(60, 50, 3, 2, 50, 40), -1);
    EXPECT_EQ(galleryIndexAt(100, 10, 3, 2, 50, 40), -1);
    EXPECT_EQ(galleryIndexAt(-1, 10, 3, 2, 50, 40), -1);
}

TEST(ChoiceDrawing, TheGalleryHasItsGroundAndNumbersThatStandOut) {
    std::vector<Image> pictures;
    pictures.push_back(Image::filled(20, 20, 255, 0, 0));
    const auto numberStandsOut = [&](std::uint8_t grey) {
        const Image gallery = drawGallery(pictures, -1, 1, 60, 80, {grey, grey, grey});
        EXPECT_EQ(at(gallery, 59, 79), (Pixel{grey, grey, grey}));
        int most = 0;
        for (int y = 0; y < 14; ++y) {
            for (int x = 0; x < 20; ++x) {
                most = std::max(most, std::abs(at(gallery, x, y)[0] - grey));
            }
        }
        return most > 100;
    };
    EXPECT_TRUE(numberStandsOut(255));
    EXPECT_TRUE(numberStandsOut(30));
}

int columnsOf(const Image& image, const Pixel& colour) {
    int columns = 0;
    for (int x = 0; x < image.width(); ++x) {
        bool found = false;
        for (int y = 0; y < image.height(); ++y) {
            found = found || at(image, x, y) == colour;
        }
        columns += found ? 1 : 0;
    }
    return columns;
}

int rowsOf(const Image& image, const Pixel& colour) {
    int rows = 0;
    for (int y = 0; y < image.height(); ++y) {
        bool found = false;
        for (int x = 0; x < image.width(); ++x) {
            found = found || at(image, x, y) == colour;
        }
        rows += found ? 1 : 0;
    }
    return rows;
}

TEST(ChoiceDrawing, KeepsThePosterAndThePersonToOneScale) {
    const Image poster = Image::filled(30, 30, 0, 0, 255);
    const Pixel blue{0, 0, 255};
    const Pixel person{96, 102, 112};
    for (const double side : {20.0, 60.0, 200.0}) {
        const Image room = drawRoom(poster.view(), side, side, 400, 300);
        const double perInch = rowsOf(room, person) / personInches;
        // Smoothed edges are not the pure colour; the person loses more of them.
        EXPECT_NEAR(columnsOf(room, blue), side * perInch, 3 + 0.06 * side * perInch) << side;
        EXPECT_NEAR(rowsOf(room, blue), columnsOf(room, blue), 2) << side;
        for (int x = 0; x < room.width(); ++x) {
            EXPECT_NE(at(room, x, room.height() - 5), person) << "the floor goes on in front";
        }
    }
}

} // namespace
} // namespace veldara
