#include "output/save_messages.h"
#include "output/split_path_label.h"
#include "output/tile_files.h"
#include "platform/image/tile_format.h"

#include <gtest/gtest.h>

namespace veldara {
namespace {

TEST(TileFiles, TakeTheirBaseFromThePhoto) {
    EXPECT_EQ(defaultBaseName("IMG_0001.JPG"), "IMG_0001");
    EXPECT_EQ(defaultBaseName("x.jpeg"), "x.");
    EXPECT_EQ(defaultBaseName("ä.jpg"), "ä");
    EXPECT_EQ(defaultBaseName("a.jp"), std::nullopt);
    EXPECT_EQ(defaultBaseName("ü.jp"), std::nullopt); // five bytes, but four characters
    EXPECT_EQ(defaultFolderName("IMG_0001"), "IMG_0001_poster_images");
}

TEST(TileFormat, IsToldByTheLastThreeCharactersOfAName) {
    EXPECT_EQ(tileFormatByName("IMG_0001.JPG"), TileFormat::jpeg);
    EXPECT_EQ(tileFormatByName("a.tif"), TileFormat::tiff);
    EXPECT_EQ(tileFormatByName("a.BmP"), TileFormat::bmp);
    EXPECT_EQ(tileFormatByName("x.jpeg"), std::nullopt);
    EXPECT_EQ(tileFormatByName("x.tiff"), std::nullopt);
    EXPECT_EQ(tileFormatByName("ajpg"), TileFormat::jpeg);
    EXPECT_EQ(tileFormatByName("jp"), std::nullopt);
    EXPECT_EQ(extensionOf(TileFormat::bmp), ".bmp");
    EXPECT_EQ(extensionOf(TileFormat::tiff), ".tif");
    EXPECT_EQ(extensionOf(TileFormat::jpeg), ".jpg");
}

TEST(TileFiles, AreNumberedInAtLeastThreeDigits) {
    for (int number = 1; number <= 9; ++number) {
        EXPECT_EQ(tileNumberText(number), "00" + std::to_string(number));
    }
    EXPECT_EQ(tileNumberText(10), "010");
    EXPECT_EQ(tileNumberText(99), "099");
    EXPECT_EQ(tileNumberText(100), "100");
    EXPECT_EQ(tileNumberText(999), "999");
    EXPECT_EQ(tileNumberText(1000), "1000");
}

std::string fileIn(const std::string& parent, const std::string& newFolder, int number,
                   char separator) {
    return getTileFileName(
               {tileFolderPrefix(parent, newFolder, separator), "img", TileFormat::jpeg}, number)
        .path;
}

TEST(TileFiles, GoIntoTheNewFolder) {
    EXPECT_EQ(fileIn("C:\\photos", "poster", 1, '\\'), "C:\\photos\\poster\\img001.jpg");
    EXPECT_EQ(fileIn("C:\\photos", "poster", 1000, '\\'), "C:\\photos\\poster\\img1000.jpg");
    EXPECT_EQ(tileFolderPath("C:\\photos", "poster", '\\'), "C:\\photos\\poster");
    EXPECT_EQ(tileFolderPrefix("C:\\photos", "poster", '\\'), "C:\\photos\\poster\\");
}

TEST(TileFiles, GoIntoTheParentWithoutANewFolder) {
    EXPECT_EQ(fileIn("/home/me", "", 2, '/'), "/home/me/img002.jpg");
    EXPECT_EQ(tileFolderPath("/home/me", "", '/'), "/home/me/");
    EXPECT_EQ(tileFolderPrefix("/home/me", "", '/'), "/home/me/");
}

TEST(TileFiles, NeedNoSecondSeparatorInARootFolder) {
    EXPECT_EQ(fileIn("C:\\", "", 1, '\\'), "C:\\img001.jpg");
    EXPECT_EQ(fileIn("/", "p", 1, '/'), "/p/img001.jpg");
}

// Also behind one that the user typed: only the parent folder may bring its own.
TEST(TileFiles, HaveASeparatorBehindTheNewFoldersName) {
    EXPECT_EQ(tileFolderPath("C:\\photos\\", "poster\\", '\\'), "C:\\photos\\poster\\");
    EXPECT_EQ(tileFolderPrefix("C:\\photos\\", "poster\\", '\\'), "C:\\photos\\poster\\\\");
    EXPECT_EQ(fileIn("C:\\photos", "poster\\", 1, '\\'), "C:\\photos\\poster\\\\img001.jpg");
}

TEST(TileFiles, HaveTheEndingOfTheirType) {
    EXPECT_EQ(getTileFileName({"/p/", "a", TileFormat::bmp}, 1).path, "/p/a001.bmp");
    EXPECT_EQ(getTileFileName({"/p/", "a", TileFormat::tiff}, 1).path, "/p/a001.tif");
}

TEST(TileFiles, SayWhatIsMissing) {
    EXPECT_EQ(getTileFileName({"/p/", "a", std::nullopt}, 1).problem,
              "File extension not selected");
    const std::string withoutPlace = tileFolderPrefix("", "p", '/');
    EXPECT_EQ(getTileFileName({withoutPlace, "a", TileFormat::bmp}, 1).problem,
              "You must select the location where the new poster tile image folder will be "
              "created");
    EXPECT_FALSE(getTileFileName({withoutPlace, "a", TileFormat::bmp}, 1).ok());
    EXPECT_TRUE(getTileFileName({"/p/", "a", TileFormat::bmp}, 1).ok());
}

TEST(SplitPathLabel, BreaksAtTheLimit) {
    const std::string path(120, 'x');
    EXPECT_EQ(SplitPathLabel(path, 78, 55, '\\'),
              std::string(55, 'x') + "\r\n" + std::string(55, 'x') + "\r\n" + std::string(10, 'x'));
}

TEST(SplitPathLabel, PrefersTheEndOfAFolder) {
    const std::string folder(36, 'a');
    EXPECT_EQ(SplitPathLabel(folder + "\\b", 35, 55, '\\'), folder + "\\\r\nb");
    EXPECT_EQ(SplitPathLabel(std::string(34, 'a') + "\\b", 35, 55, '\\'),
              std::string(34, 'a') + "\\b"); // 35 are not more than 35
    EXPECT_EQ(SplitPathLabel(std::string(35, 'a') + "\\b", 35, 55, '\\'),
              std::string(35, 'a') + "\\\r\nb");
}

TEST(SplitPathLabel, CountsAnewBehindASpace) {
    const std::string words = std::string(30, 'a') + " " + std::string(30, 'b') + "\\c";
    EXPECT_EQ(SplitPathLabel(words, 35, 55, '\\'), words);
}

TEST(SplitPathLabel, BreaksOnceWhereBothReasonsMeet) {
    EXPECT_EQ(SplitPathLabel(std::string(54, 'a') + "\\b", 35, 55, '\\'),
              std::string(54, 'a') + "\\\r\nb");
}

TEST(SplitPathLabel, CountsCharactersNotBytes) {
    std::string umlauts;
    for (int i = 0; i < 56; ++i) {
        umlauts += "ü";
    }
    EXPECT_EQ(SplitPathLabel(umlauts, 78, 55, '/'), umlauts.substr(0, 110) + "\r\n" + "ü");
    EXPECT_EQ(SplitPathLabel("", 78, 55, '/'), "");
}

TEST(SaveMessages, AskBeforeAFolderIsUsedAgain) {
    const Message question = folderExistsQuestion("C:\\p");
    EXPECT_EQ(question.title, "Folder Exists");
    EXPECT_EQ(question.buttons, MessageButtons::yesNoCancel);
    EXPECT_EQ(question.text, "The folder \"C:\\p\" already exists.  Some files could be "
                             "overwritten.  Do you want to continue?");
}

TEST(SaveMessages, AreWordedAsTheyAre) {
    const auto same = [](const Message& message, const char* title, const std::string& text) {
        EXPECT_EQ(message, (Message{text, title, MessageIcon::critical, MessageButtons::ok}));
    };
    same(invalidPhotoNameMessage(), "Problem", "Invalid file chosen.  Can not continue.");
    same(invalidPhotoTypeMessage(), "Error", "Unable to save - invalid image file type");
    same(tileTableFailedMessage(), "Error", "Error calculating tile coordinates");
    same(fileSystemObjectFailedMessage(), "Error",
         "Error creating FileSystemObject - Windows component missing");
    same(folderNotCreatedMessage("C:\\p"), "Error",
         "Could not create the folder \"C:\\p\" to save your poster tile images into.  Possible "
         "causes of this are that you do not have access rights to the drive that you selected, "
         "the disk drive is full, or that you provided an invalid folder name.  Can not continue.");
    same(imageObjectFailedMessage(), "Error", "Error creating imgX object");
    same(invalidTileSizesMessage(), "Error", "Can not continue - Invalid tile print sizes entered");
    same(tileNameProblemMessage("why"), "Error", "Problem: why");
    same(compensationFailedMessage(), "Error", "Error applying printer edge clipping compensation");
    same(outOfDiskSpaceMessage(), "Out of disk space",
         "Not enough disk space on selected drive.  Can not save images.");
    same(tileNotSavedMessage(), "Error",
         "Error saving tile image file to disk.  Possible cause is that the disk is full.  Can not "
         "continue.");
    same(canceledMessage(), "Canceled", "Canceled by user");
    same(invalidDriveMessage(), "Invalid Drive", "The drive you chose could not be accessed.");
    EXPECT_EQ(std::string(savedText),
              "You poster images were saved successfully and are now ready for you to print.  They "
              "are located in the following folder:");
}

} // namespace
} // namespace veldara
