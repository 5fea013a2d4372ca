// What counts as a photo, how it is turned, and the small texts of the program about itself.
#include "app/photo_file.h"
#include "app/photo_turn.h"
#include "app/program_identity.h"
#include "app/registry_text.h"
#include "output/progress_picture.h"
#include "platform/text/version_text.h"

#include <gtest/gtest.h>

namespace veldara {
namespace {

TEST(TheFileList, ShowsNamesOfMoreThanFourCharacters) {
    EXPECT_FALSE(isListedFile("jpg", filterAll));
    EXPECT_FALSE(isListedFile(".jpg", filterAll));
    EXPECT_TRUE(isListedFile("a.jpg", filterAll));
    EXPECT_FALSE(isListedFile("\xC3\xA9.bm", filterAll)); // five bytes, four characters
}

TEST(TheFileList, LooksAtTheLastThreeCharactersOnly) {
    for (const char* name : {"abc.JPG", "abc.jPg", "abcjpg"}) {
        EXPECT_TRUE(isListedFile(name, filterImages)) << name;
        EXPECT_TRUE(isListedFile(name, filterJpeg)) << name;
        EXPECT_FALSE(isListedFile(name, filterTiff)) << name;
        EXPECT_FALSE(isListedFile(name, filterBitmap)) << name;
    }
    EXPECT_TRUE(isListedFile("abc.tif", filterImages));
    EXPECT_TRUE(isListedFile("abc.tif", filterTiff));
    EXPECT_TRUE(isListedFile("abc.bmp", filterImages));
    EXPECT_TRUE(isListedFile("abc.bmp", filterBitmap));
    for (const char* name : {"abc.jpeg", "abc.tiff", "abc.txt"}) {
        EXPECT_FALSE(isListedFile(name, filterImages)) << name;
        EXPECT_TRUE(isListedFile(name, filterAll)) << name;
    }
    EXPECT_FALSE(isListedFile("abc.jpg", -1));
    EXPECT_FALSE(isListedFile("abc.jpg", 5));
}

TEST(TheOpenDialog, OffersEveryKind) {
    const FileFilter filter = openPhotoFilter();
    EXPECT_EQ(filter.label, "Photos (JPEG, TIFF, BMP, PNG, WebP, HEIC, AVIF)");
    EXPECT_EQ(filter.pattern.rfind("*.jpg;*.JPG;*.jpeg;*.JPEG;", 0), 0U);
    EXPECT_NE(filter.pattern.find(";*.heic;*.HEIC;"), std::string::npos);
    EXPECT_NE(filter.pattern.find(";*.avif;*.AVIF"), std::string::npos);
}

TEST(APhotosName, HasFourCharactersAndAnEnding) {
    EXPECT_FALSE(isPhotoFile("jpg"));
    EXPECT_TRUE(isPhotoFile(".jpg"));
    EXPECT_TRUE(isPhotoFile("a.TIF"));
    EXPECT_TRUE(isPhotoFile("a.bmp"));
    EXPECT_FALSE(isPhotoFile("a.jpeg"));
    EXPECT_FALSE(isPhotoFile("a.txt"));
    EXPECT_FALSE(isPhotoFile(""));
}

TEST(APhoto, HasTwentyFivePixelsOnBothSides) {
    EXPECT_TRUE(isPhotoLargeEnough(25, 25));
    EXPECT_FALSE(isPhotoLargeEnough(24, 500));
    EXPECT_FALSE(isPhotoLargeEnough(500, 24));
}

TEST(TheRotationList, StandsForAngles) {
    const int angles[] = {0, 90, 270, 180};
    for (int index = 0; index < 4; ++index) {
        EXPECT_EQ(rotationAngle(index), angles[index]);
        EXPECT_EQ(rotationIndex(angles[index]), index);
    }
    EXPECT_EQ(rotationAngle(-1), 0);
    EXPECT_EQ(rotationAngle(4), 0);
    EXPECT_EQ(rotationIndex(45), 0);
    EXPECT_EQ(rotationDelta(0, 90), 90);
    EXPECT_EQ(rotationDelta(90, 0), 270);
    EXPECT_EQ(rotationDelta(90, 270), 180);
    EXPECT_EQ(rotationDelta(270, 90), 180);
    EXPECT_EQ(rotationDelta(270, 0), 90);
    EXPECT_EQ(rotationDelta(90, 90), 0);
}

// One row: red, green.
Image redAndGreen() {
    Image image = Image::filled(2, 1, 255, 0, 0);
    image.row(0)[3] = 0;
    image.row(0)[4] = 255;
    image.dotsPerInch = 240;
    image.colourProfile = {1, 2, 3};
    return image;
}

bool isRed(const Image& image, int x, int y) {
    return image.row(y)[3 * x] == 255;
}

TEST(ATurnedPhoto, HasItsCornersWhereTheyBelong) {
    const Image photo = redAndGreen();
    const Image clockwise = turnedBy(photo, 90);
    ASSERT_EQ(clockwise.height(), 2);
    EXPECT_TRUE(isRed(clockwise, 0, 0));
    EXPECT_FALSE(isRed(clockwise, 0, 1));
    const Image counter = turnedBy(photo, 270);
    ASSERT_EQ(counter.height(), 2);
    EXPECT_FALSE(isRed(counter, 0, 0));
    EXPECT_TRUE(isRed(counter, 0, 1));
    const Image half = turnedBy(photo, 180);
    ASSERT_EQ(half.width(), 2);
    EXPECT_FALSE(isRed(half, 0, 0));
    EXPECT_TRUE(isRed(half, 1, 0));
    EXPECT_TRUE(isRed(turnedBy(photo, 0), 0, 0));
}

TEST(ATurnedPhoto, KeepsItsResolutionAndProfileAndTurnsBack) {
    for (const int angle : {0, 90, 180, 270}) {
        const Image turned = turnedBy(redAndGreen(), angle);
        EXPECT_EQ(turned.dotsPerInch, 240);
        EXPECT_EQ(turned.colourProfile, (ColourProfile{1, 2, 3}));
        const Image back = turnedBy(turned, rotationDelta(angle, 0));
        ASSERT_EQ(back.width(), 2);
        EXPECT_TRUE(isRed(back, 0, 0));
        EXPECT_FALSE(isRed(back, 1, 0));
    }
}

RegistryValue valueOf(RegistryType type, const std::string& text, std::int32_t number = 0) {
    RegistryValue value;
    value.type = type;
    value.number = number;
    (type == RegistryType::other ? value.bytes.assign(text.begin(), text.end())
                                 : static_cast<void>(value.text = text));
    return value;
}

TEST(ARegistryValuesText, IsThatOfItsType) {
    EXPECT_EQ(registryValueText(valueOf(RegistryType::string, "c:\\tool.exe")), "c:\\tool.exe");
    EXPECT_EQ(registryValueText(valueOf(RegistryType::string, std::string("ab\0", 3))), "ab");
    EXPECT_EQ(registryValueText(valueOf(RegistryType::string, std::string("a\0\0", 3))),
              std::string("a\0", 2));
    EXPECT_EQ(registryValueText(valueOf(RegistryType::other, std::string("xy\0", 3))), "xy");
    EXPECT_EQ(registryValueText(valueOf(RegistryType::dword, "", 0x12AB00EF)), "&h12AB00EF");
    EXPECT_EQ(registryValueText(valueOf(RegistryType::dword, "", -1)), "&hFFFFFFFF");
    EXPECT_EQ(registryValueText(valueOf(RegistryType::dword, "", 0)), "&h00000000");
    EXPECT_EQ(registryValueText(valueOf(RegistryType::none, "text")), "");
    EXPECT_EQ(registryValueText(valueOf(RegistryType::string, "")), "");
}

TEST(TheProgram, NamesItsVersionAndItsMaker) {
    EXPECT_EQ(versionText(1, 2, 0), "1.20");
    EXPECT_EQ(versionText(10, 3, 14), "10.314");
    EXPECT_EQ(programVersion(), VELDARA_VERSION);
    EXPECT_EQ(programTitle(), "Veldara");
    EXPECT_EQ(copyrightText(2026), "Copyright \u00A9 2026 Korvane Software, LLC");
    EXPECT_EQ(copyrightText(987), "Copyright \u00A9 0987 Korvane Software, LLC");
}

int bluePixels(const Image& bar) {
    int count = 0;
    for (int y = 0; y < bar.height(); ++y) {
        for (int x = 0; x < bar.width(); ++x) {
            const std::uint8_t* pixel = bar.row(y) + 3 * x;
            count += pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 255;
        }
    }
    return count;
}

TEST(TheProgressBar, IsBlueAsFarAsTheWorkIsDone) {
    EXPECT_EQ(bluePixels(progressPicture(200, 3, 0.0)), 0);
    EXPECT_EQ(bluePixels(progressPicture(200, 3, 0.5)), 300);
    EXPECT_EQ(bluePixels(progressPicture(200, 3, 1.0)), 600);
    EXPECT_EQ(bluePixels(progressPicture(200, 3, -0.2)), 0);
    EXPECT_EQ(bluePixels(progressPicture(200, 3, 1.5)), 600);
    const Image half = progressPicture(10, 1, 0.5);
    EXPECT_EQ(half.row(0)[3 * 4], 0);
    EXPECT_EQ(half.row(0)[3 * 5], 255);
}

} // namespace
} // namespace veldara
