// The button that makes the test print: every message and every way it can end.
#include "calibration_support.h"
#include "platform/image/codec.h"
#include "support/temp_folder.h"

#include <cmath>

namespace veldara::test {
namespace {

Message announcement(const std::string& height, const std::string& width,
                     const std::string& stripe) {
    return {"A " + height + " high x " + width +
                " wide test image will now be created.  The target will have 4 colored stripes "
                "printed around each edge.  Each stripe is " +
                stripe +
                " wide.\r\n\r\nIn order to to test how much your printer clips off of each edge, "
                "please do the following: \r\n\r\n(1) When prompted, save the image to your hard "
                "drive\r\n\r\n(2) Print the image on your printer\r\n\r\n(3) Count how many of the "
                "4 colored stripes are visible on each edge of your print and input that "
                "information in the dialog box below here.\r\n\r\nClick OK to continue or cancel "
                "to quit",
            "Create Test Target", MessageIcon::none, MessageButtons::okCancel};
}

class TestTarget : public ::testing::Test {
  protected:
    void press(const std::string& saveAs) {
        if (!saveAs.empty()) {
            window.fakes.dialogs.saveFilePaths = {saveAs};
        }
        window.open([&] { window.dialog.cmdGenerateTest.userClick(); });
    }
    const std::vector<Message>& messages() const { return window.fakes.dialogs.messages; }

    CalibrationWindow window;
};

TEST_F(TestTarget, InvalidSizesAreRefused) {
    window.owner.sizesOk = false;
    press("x.bmp");
    EXPECT_EQ(window.fakes.dialogs.onlyMessage(),
              critical("Invalid print dimensions",
                       "The custom print size that you currently have entered in not valid.  The "
                       "height and width must both be between 0.75 and 50.00 inches long.  Please "
                       "enter valid values in the \"Print Size Per Tile\" section of the main "
                       "dialog."));
    EXPECT_TRUE(window.fakes.dialogs.saveRequests.empty());
}

TEST_F(TestTarget, IsPrintedWithoutAFile) {
    window.open([&] { window.dialog.cmdPrintTest.userClick(); });
    ASSERT_TRUE(window.owner.printed);
    EXPECT_EQ(window.owner.printed->width(),
              std::lround(window.owner.widthInches * testTargetDotsPerInch));
    EXPECT_EQ(window.owner.printed->height(),
              std::lround(window.owner.heightInches * testTargetDotsPerInch));
    EXPECT_TRUE(window.fakes.dialogs.quiet());
}

TEST_F(TestTarget, OfAnInvalidSizeIsNotPrinted) {
    window.owner.sizesOk = false;
    window.open([&] { window.dialog.cmdPrintTest.userClick(); });
    EXPECT_FALSE(window.owner.printed);
    EXPECT_EQ(window.fakes.dialogs.onlyMessage().title, "Invalid print dimensions");
}

TEST_F(TestTarget, WithoutAPrinterItIsSavedInstead) {
    window.owner.wantsFile = true;
    window.fakes.dialogs.saveFilePaths = {R"(c:\stripes.bmp)"};
    window.open([&] { window.dialog.cmdPrintTest.userClick(); });
    ASSERT_EQ(window.fakes.dialogs.saveRequests.size(), 1U);
    EXPECT_EQ(window.fakes.dialogs.onlyMessage(), testTargetDoneMessage(R"(c:\stripes.bmp)"));
}

TEST_F(TestTarget, AnnouncesItselfInInches) {
    window.owner.widthInches = 8;
    window.owner.heightInches = 10.5;
    window.fakes.dialogs.answers = {Answer::cancel};
    press("x.bmp");
    EXPECT_EQ(window.fakes.dialogs.onlyMessage(),
              announcement("10.50 inch", "8.00 inch", "1/16 inch"));
}

TEST_F(TestTarget, AnnouncesItselfInMillimetres) {
    window.owner.widthInches = 8;
    window.owner.heightInches = 10;
    window.owner.units = 1;
    window.fakes.dialogs.answers = {Answer::cancel};
    press("x.bmp");
    EXPECT_EQ(window.fakes.dialogs.onlyMessage(), announcement("254.0 mm", "203.2 mm", "1.6 mm"));
}

TEST_F(TestTarget, CancelStopsSilently) {
    window.fakes.dialogs.answers = {Answer::cancel};
    press("x.bmp");
    EXPECT_EQ(messages().size(), 1U);
    EXPECT_TRUE(window.fakes.dialogs.saveRequests.empty());
    EXPECT_EQ(window.fakes.eventPump.works, 0);
}

TEST_F(TestTarget, PointerShowsTheWaitWhileItIsCreated) {
    std::vector<Pointer> seen;
    window.fakes.eventPump.whileServing = [&] { seen.push_back(window.dialog.pointer()); };
    press("c:\\x.bmp");
    EXPECT_EQ(seen.at(0), Pointer::hourglass);
    EXPECT_EQ(window.dialog.pointer(), Pointer::arrow);
}

TEST_F(TestTarget, AFailedCreationIsReported) {
    window.createFails = true;
    press("c:\\x.bmp");
    ASSERT_EQ(messages().size(), 2U);
    EXPECT_EQ(messages()[1], critical("Error", "Error occurred while creating test image - There "
                                               "is not enough memory."));
    EXPECT_TRUE(window.fakes.dialogs.saveRequests.empty());
    EXPECT_EQ(window.dialog.pointer(), Pointer::arrow);
}

TEST_F(TestTarget, AsksWhereToSave) {
    press("c:\\x.bmp");
    const SaveFileRequest& request = window.fakes.dialogs.saveRequests.at(0);
    EXPECT_EQ(request.title, "Save Test Target");
    EXPECT_EQ(request.filters, (std::vector<FileFilter>{{"Bitmap (*.bmp)", "*.bmp"},
                                                        {"Tiff (*.tif)", "*.tif"},
                                                        {"Jpeg (*.jpg)", "*.jpg"}}));
    EXPECT_EQ(request.defaultName, "Edge_Test_Image");
    EXPECT_EQ(request.folder, "c:\\users\\documents");
}

TEST_F(TestTarget, NoNameIsACancel) {
    press("");
    ASSERT_EQ(messages().size(), 2U);
    EXPECT_EQ(messages()[1], critical("canceled", "Test Target Creation canceled"));
    EXPECT_TRUE(window.written.empty());
}

TEST_F(TestTarget, AVeryShortNameStopsSilently) {
    press("bmp");
    EXPECT_EQ(messages().size(), 1U);
    EXPECT_TRUE(window.written.empty());
}

TEST_F(TestTarget, FourCharactersAreEnough) {
    press(".bmp");
    ASSERT_EQ(window.written.size(), 1U);
    EXPECT_EQ(window.written[0].first, ".bmp");
}

TEST_F(TestTarget, AnotherFileTypeIsRefused) {
    for (const std::string name : {"c:\\x.jpeg", "c:\\x.png", "c:\\name"}) {
        CalibrationWindow fresh;
        fresh.fakes.dialogs.saveFilePaths = {name};
        fresh.open([&] { fresh.dialog.cmdGenerateTest.userClick(); });
        ASSERT_EQ(fresh.fakes.dialogs.messages.size(), 2U);
        EXPECT_EQ(fresh.fakes.dialogs.messages[1],
                  critical("Invalid file type",
                           "Invalid image filename.  Must save image as bmp, tif or jpg file"));
        EXPECT_TRUE(fresh.written.empty());
    }
}

TEST_F(TestTarget, AFailedSaveIsReportedInAPlainBox) {
    window.writeFails = true;
    press("c:\\x.bmp");
    ASSERT_EQ(messages().size(), 2U);
    EXPECT_EQ(messages()[1], (Message{"Error occurred while saving image to disk - The disk is "
                                      "full.",
                                      "", MessageIcon::none, MessageButtons::ok}));
}

TEST_F(TestTarget, SuccessTellsWhatToDoNext) {
    press("c:\\here\\x.bmp");
    ASSERT_EQ(messages().size(), 2U);
    EXPECT_EQ(
        messages()[1],
        (Message{"Image successfully saved to disk.\r\n\r\nNext you need to:\r\n\r\n(1) Print "
                 "this image (c:\\here\\x.bmp) using the same printer, paper and printer settings "
                 "that you will use when printing your poster images.\r\n\r\n(2) Count the number "
                 "of visible stripes along each edge of the resulting test print.\r\n\r\n(3) Make "
                 "sure that you currently have selected the Edge Calibration Profile which you "
                 "would like to modify.\r\n\r\n(4) Using the four dropdown controls located below "
                 "here, indicate how many stripes are visible at each edge of your print (this "
                 "tells the software how much your printer clips off of each edge of your "
                 "prints).",
                 "Test Image Creation Completed", MessageIcon::information, MessageButtons::ok}));
    ASSERT_EQ(window.written.size(), 1U);
    EXPECT_EQ(window.written[0].first, "c:\\here\\x.bmp");
}

TEST_F(TestTarget, AnEndingInCapitalsIsAccepted) {
    press("c:\\x.JPG");
    ASSERT_EQ(window.written.size(), 1U);
    EXPECT_EQ(window.written[0].second.at(0), 0xff);
    EXPECT_EQ(window.written[0].second.at(1), 0xd8);
}

TEST_F(TestTarget, TheFileHasTheTilesSizeAtItsResolution) {
    const TempFolder temp;
    const std::string names[] = {"a.bmp", "a.tif", "a.jpg"};
    for (const std::string& name : names) {
        TestPlatform fakes;
        FakeCalibrationOwner owner;
        owner.widthInches = 0.8;
        owner.heightInches = 1.05;
        Platform platform = fakes.platform();
        frmBtm dialog(platform, fakes.screen, owner);
        fakes.dialogs.saveFilePaths = {temp / name};
        dialog.cmdGenerateTest_Click();
        const Image image = loadImage(temp.path() / name);
        EXPECT_EQ(image.width(), 102);  // 102.4
        EXPECT_EQ(image.height(), 134); // 134.4
        EXPECT_EQ(image.dotsPerInch, 128);
    }
}

TEST_F(TestTarget, TheDialogStaysWhileItIsMade) {
    window.fakes.eventPump.whileServing = [&] {
        window.dialog.userClose();
        window.dialog.cmdOk.userClick();
        window.dialog.cmdGenerateTest.userClick();
        EXPECT_TRUE(window.dialog.visible());
    };
    press("c:\\x.bmp");
    EXPECT_EQ(messages().size(), 2U);
    EXPECT_EQ(window.written.size(), 1U);
    EXPECT_FALSE(window.dialog.visible());
}

} // namespace
} // namespace veldara::test
