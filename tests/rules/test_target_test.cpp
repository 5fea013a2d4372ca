#include "calibration/test_target.h"
#include "platform/image/text_drawing.h"
#include "support/decimal_comma.h"

#include <algorithm>
#include <array>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using test::comma;
using Colour = std::array<int, 3>;

Colour at(const Image& image, int x, int y) {
    const std::uint8_t* pixel = image.row(y) + 3 * x;
    return {pixel[0], pixel[1], pixel[2]};
}

TEST(TestTarget, HasTheTilesSizeAt128DotsPerInch) {
    const Image image = createTestImage(10.5, 8.0);
    EXPECT_EQ(image.width(), 1024);
    EXPECT_EQ(image.height(), 1344);
    EXPECT_EQ(image.dotsPerInch, 128);
    EXPECT_EQ(createTestImage(0.75, 0.75).width(), 96);
}

TEST(TestTarget, RoundsAHalfPixelToEven) {
    EXPECT_EQ(createTestImage(1, 1 + 0.5 / 128).width(), 128);
    EXPECT_EQ(createTestImage(1, 1 + 1.5 / 128).width(), 130);
}

TEST(TestTarget, NestsItsFrames) {
    const Image image = createTestImage(2, 3);
    const int width = image.width();
    const int height = image.height();
    const std::array<Colour, 4> colours{Colour{180, 120, 0}, Colour{0, 0, 255}, Colour{0, 255, 0},
                                        Colour{255, 0, 0}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int d = std::min({x, y, width - 1 - x, height - 1 - y});
            if (d < 32) {
                ASSERT_EQ(at(image, x, y), colours[static_cast<std::size_t>(d / 8)])
                    << x << "," << y;
            }
        }
    }
}

TEST(TestTarget, HasWordsOnWhiteInTheMiddleOnly) {
    const Image image = createTestImage(4, 6);
    const Colour white{255, 255, 255};
    int dark = 0;
    for (int y = 32; y < image.height() - 32; ++y) {
        for (int x = 32; x < image.width() - 32; ++x) {
            const bool middle = x > image.width() / 8 && x < image.width() * 7 / 8 &&
                                y > image.height() / 4 && y < image.height() * 3 / 4;
            if (!middle) {
                ASSERT_EQ(at(image, x, y), white) << x << "," << y;
            } else if (at(image, x, y)[0] < 64) {
                ++dark;
            }
        }
    }
    EXPECT_GT(dark, 200);
}

TEST(TestTarget, LetsInnerFramesWinWhereTheyOverlap) {
    Image image = Image::filled(20, 200, 255, 255, 255);
    paintTestStripes(image.mutableView());
    // Column 13 is in the second frame from the left and the first from the right; column 17 in the
    // third from the left too.
    EXPECT_EQ(at(image, 13, 100), (Colour{0, 0, 255}));
    EXPECT_EQ(at(image, 17, 100), (Colour{0, 255, 0}));
    EXPECT_EQ(at(image, 10, 3), (Colour{180, 120, 0}));
    Image small = Image::filled(3, 2, 255, 255, 255);
    paintTestStripes(small.mutableView()); // smaller than a stripe: nothing but stripes
    EXPECT_NE(at(small, 1, 1), (Colour{255, 255, 255}));
}

TEST(TestTargetText, TakesTheFirstSizeThatDoesNotFit) {
    const int size = testTextSize(1024, 1344, 0.5);
    const TextSize before = measureText("Edge Test Print", size - 1);
    const TextSize chosen = measureText("Edge Test Print", size);
    EXPECT_LE(before.width, 512);
    EXPECT_LE(before.height, 672);
    EXPECT_TRUE(chosen.width > 512 || chosen.height > 672);
}

// The ink of the words: the box around all dark pixels, borders included.
struct Ink {
    int left = 1 << 20;
    int top = 1 << 20;
    int right = -1;
    int bottom = -1;
    int width() const { return right - left + 1; }
    int height() const { return bottom - top + 1; }
};

Ink inkOf(int width, int height) {
    Image image = Image::filled(width, height, 255, 255, 255);
    drawTestImageText(image.mutableView());
    Ink ink;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (at(image, x, y)[0] < 128) {
                ink.left = std::min(ink.left, x);
                ink.top = std::min(ink.top, y);
                ink.right = std::max(ink.right, x);
                ink.bottom = std::max(ink.bottom, y);
            }
        }
    }
    return ink;
}

// The blank beside a letter, and the room above and below the letters of a line, are a part of the
// line's height that depends on the font.
void expectCentred(int width, int height) {
    const Ink ink = inkOf(width, height);
    ASSERT_GT(ink.width(), 0);
    EXPECT_NEAR(ink.left, width - 1 - ink.right, ink.height() / 4.0) << width << " x " << height;
    EXPECT_NEAR(ink.top, height - 1 - ink.bottom, ink.height() / 2.0) << width << " x " << height;
}

TEST(TestTargetText, StandsInTheMiddle) {
    expectCentred(301, 208);
    expectCentred(640, 97);
    expectCentred(200, 900);
}

TEST(TestTargetText, IsAboutHalfAsWideAsThePicture) {
    EXPECT_NEAR(inkOf(1024, 1344).width(), 512, 25);
    EXPECT_NEAR(inkOf(400, 400).width(), 200, 25);
    EXPECT_LT(inkOf(2000, 80).height(), 45) << "where the height is what limits it";
}

TEST(TestTargetText, DoesNotGrowBeyondItsLargestSize) {
    ASSERT_EQ(testTextSize(4000, 800, 0.5), 201);
    expectCentred(4000, 800);
    const Ink large = inkOf(4000, 800);
    const Ink larger = inkOf(6000, 1200);
    EXPECT_EQ(large.width(), larger.width());
    EXPECT_EQ(large.height(), larger.height());
    EXPECT_LT(large.width(), 2000);
}

TEST(TestTargetText, HasItsLimits) {
    EXPECT_EQ(testTextSize(10, 10, 0.5), 6);
    EXPECT_EQ(testTextSize(100000, 100000, 0.5), 201);
}

TEST(TestTargetFile, IsAskedForWithItsFilters) {
    const SaveFileRequest request = testTargetSaveRequest("Edge_Test_Image");
    EXPECT_EQ(request.title, "Save Test Target");
    EXPECT_EQ(request.filters, (std::vector<FileFilter>{{"Bitmap (*.bmp)", "*.bmp"},
                                                        {"Tiff (*.tif)", "*.tif"},
                                                        {"Jpeg (*.jpg)", "*.jpg"}}));
    EXPECT_EQ(request.defaultName, "Edge_Test_Image");
    EXPECT_EQ(testTargetSaveRequest("").defaultName, "edge_clipping_test");
}

TEST(TestTargetTexts, AnnounceTheSizeInTheUnits) {
    const Message inches = testTargetAnnouncement(10.5, 8, Units::inches);
    EXPECT_EQ(
        inches.text,
        "A 10.50 inch high x 8.00 inch wide test image will now be created.  The target will have "
        "4 colored stripes printed around each edge.  Each stripe is 1/16 inch wide.\r\n\r\nIn "
        "order to to test how much your printer clips off of each edge, please do the following: "
        "\r\n\r\n(1) When prompted, save the image to your hard drive\r\n\r\n(2) Print the image "
        "on your printer\r\n\r\n(3) Count how many of the 4 colored stripes are visible on each "
        "edge of your print and input that information in the dialog box below here.\r\n\r\nClick "
        "OK to continue or cancel to quit");
    EXPECT_EQ(inches.title, "Create Test Target");
    EXPECT_EQ(inches.buttons, MessageButtons::okCancel);
    const std::string metric = testTargetAnnouncement(10, 8, Units::millimetres).text;
    EXPECT_EQ(metric.rfind("A 254.0 mm high x 203.2 mm wide", 0), 0U);
    EXPECT_NE(metric.find("Each stripe is 1.6 mm wide."), std::string::npos);
    EXPECT_EQ(testTargetAnnouncement(10, 8, Units::millimetres, comma)
                  .text.rfind("A 254,0 mm high x 203,2 mm wide", 0),
              0U);
}

TEST(TestTargetTexts, TellOfFailures) {
    const Message invalid = invalidPrintDimensionsMessage(0.75, 50, "Print Size Per Tile");
    EXPECT_EQ(invalid.title, "Invalid print dimensions");
    EXPECT_EQ(invalid.icon, MessageIcon::critical);
    EXPECT_EQ(invalid.text,
              "The custom print size that you currently have entered in not valid.  The height and "
              "width must both be between 0.75 and 50.00 inches long.  Please enter valid values "
              "in the \"Print Size Per Tile\" section of the main dialog.");
    EXPECT_EQ(testTargetFailedMessage("why").text,
              "Error occurred while creating test image - why");
    EXPECT_EQ(testTargetFailedMessage("why").title, "Error");
    EXPECT_EQ(testTargetCanceledMessage().title, "canceled");
    EXPECT_EQ(testTargetCanceledMessage().text, "Test Target Creation canceled");
    EXPECT_EQ(testTargetFileTypeMessage().title, "Invalid file type");
    EXPECT_EQ(testTargetFileTypeMessage().text,
              "Invalid image filename.  Must save image as bmp, tif or jpg file");
    EXPECT_EQ(testTargetSaveFailedMessage("full"),
              (Message{"Error occurred while saving image to disk - full", "", MessageIcon::none,
                       MessageButtons::ok}));
}

TEST(TestTargetTexts, SayWhatComesNext) {
    const Message done = testTargetDoneMessage("t.bmp");
    EXPECT_EQ(done.title, "Test Image Creation Completed");
    EXPECT_EQ(done.icon, MessageIcon::information);
    EXPECT_EQ(
        done.text,
        "Image successfully saved to disk.\r\n\r\nNext you need to:\r\n\r\n(1) Print this "
        "image (t.bmp) using the same printer, paper and printer settings that you will use "
        "when printing your poster images.\r\n\r\n(2) Count the number of visible stripes "
        "along each edge of the resulting test print.\r\n\r\n(3) Make sure that you currently "
        "have selected the Edge Calibration Profile which you would like to modify.\r\n\r\n(4) "
        "Using the four dropdown controls located below here, indicate how many stripes are "
        "visible at each edge of your print (this tells the software how much your printer "
        "clips off of each edge of your prints).");
}

} // namespace
} // namespace veldara
