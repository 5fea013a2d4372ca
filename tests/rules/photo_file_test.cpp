// Which files are offered as photos, and the arithmetic of turning one.
#include "app/photo_file.h"
#include "app/photo_turn.h"

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

TEST(PhotoFile, ListedByTheLastThreeCharacters) {
    EXPECT_TRUE(isListedFile("abc.JPG", filterImages));
    EXPECT_TRUE(isListedFile("abcjpg", filterJpeg));
    EXPECT_FALSE(isListedFile("abc.jpeg", filterImages));
    EXPECT_FALSE(isListedFile("abc.tiff", filterTiff));
    EXPECT_TRUE(isListedFile("abc.jpeg", filterAll));
    EXPECT_FALSE(isListedFile("abc.tif", filterJpeg));
    EXPECT_FALSE(isListedFile("abc.jpg", filterTiff));
    EXPECT_FALSE(isListedFile("abc.jpg", filterBitmap));
    EXPECT_TRUE(isListedFile("abc.bMp", filterBitmap));
}

TEST(PhotoFile, ListedNamesHaveMoreThanFourCharacters) {
    EXPECT_FALSE(isListedFile("jpg", filterAll));
    EXPECT_FALSE(isListedFile(".jpg", filterAll));
    EXPECT_TRUE(isListedFile("a.jpg", filterAll));
    EXPECT_FALSE(isListedFile("", filterAll));
    EXPECT_FALSE(isListedFile("äjpg", filterAll)) << "four characters in five bytes";
}

TEST(PhotoFile, UnknownFilterListsNothing) {
    EXPECT_FALSE(isListedFile("abc.jpg", -1));
    EXPECT_FALSE(isListedFile("abc.jpg", 5));
}

TEST(PhotoFile, LoadableNamesHaveFourCharacters) {
    EXPECT_TRUE(isPhotoFile(".jpg"));
    EXPECT_TRUE(isPhotoFile("a.Tif"));
    EXPECT_FALSE(isPhotoFile("jpg"));
    EXPECT_FALSE(isPhotoFile(""));
    EXPECT_FALSE(isPhotoFile("a.jpeg"));
    EXPECT_FALSE(isPhotoFile("a.png"));
}

TEST(PhotoFile, BothSidesMustHaveTwentyFivePixels) {
    EXPECT_TRUE(isPhotoLargeEnough(25, 25));
    EXPECT_FALSE(isPhotoLargeEnough(24, 500));
    EXPECT_FALSE(isPhotoLargeEnough(500, 24));
}

TEST(PhotoRotation, ThirdEntryIsTheLongQuarterTurn) {
    EXPECT_EQ(rotationAngle(0), 0);
    EXPECT_EQ(rotationAngle(1), 90);
    EXPECT_EQ(rotationAngle(2), 270);
    EXPECT_EQ(rotationAngle(3), 180);
    EXPECT_EQ(rotationAngle(-1), 0);
    EXPECT_EQ(rotationAngle(4), 0);
}

TEST(PhotoRotation, EntriesAndAnglesAreEachOthersReverse) {
    for (int index = 0; index < 4; ++index) {
        EXPECT_EQ(rotationIndex(rotationAngle(index)), index);
    }
    EXPECT_EQ(rotationIndex(45), 0);
}

TEST(PhotoRotation, WhatIsLeftToTurnIsNeverNegative) {
    EXPECT_EQ(rotationDelta(0, 90), 90);
    EXPECT_EQ(rotationDelta(90, 0), 270);
    EXPECT_EQ(rotationDelta(270, 180), 270);
    EXPECT_EQ(rotationDelta(180, 270), 90);
    EXPECT_EQ(rotationDelta(270, 270), 0);
}

TEST(PhotoRotation, TurnsComeBackToThePhotoTheyStartedFrom) {
    Image photo = Image::filled(3, 2, 10, 20, 30);
    photo.row(0)[0] = 99;
    photo.dotsPerInch = 240;
    photo.colourProfile = {7};
    for (int first : {0, 90, 180, 270}) {
        const Image once = turnedBy(photo, first);
        EXPECT_EQ(once.width(), first % 180 == 0 ? 3 : 2);
        const Image back = turnedBy(once, rotationDelta(first, 0));
        EXPECT_EQ(back.width(), 3);
        EXPECT_EQ(back.row(0)[0], 99);
        EXPECT_EQ(back.dotsPerInch, 240);
        EXPECT_EQ(back.colourProfile, (ColourProfile{7}));
    }
}

} // namespace
} // namespace veldara::test
