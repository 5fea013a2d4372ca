// The test print of the edge calibration, from its button to the file, through the system's own
// dialog for saving.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldara::test {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* dialogTitle = "Save Test Target";
constexpr int tileWidth = 6 * 128; // the tile of a Letter sheet, at the test print's resolution
constexpr int tileHeight = 9 * 128;

class Print {
  public:
    Print() {
        stage.store("paperRegLine", letterLine);
        stage.start();
        user.click("frmMain", "cmdConfig");
    }

    fs::path documents() const { return stage.home().path() / "Documents"; }

    // Up to the system's dialog, which proposes a name.
    void askForFile() {
        user.click("frmBtm", "cmdGenerateTest");
        EXPECT_THAT(user.waitForMessage(),
                    HasSubstr("A 9.00 inch high x 6.00 inch wide test image"));
        user.answerByMouse(Answer::ok);
        user.waitForSystemDialog(dialogTitle);
    }

    void saveAs(const std::string& name) {
        user.retype(name);
        user.key(WXK_RETURN);
    }

    void expectDone(const fs::path& file) {
        EXPECT_THAT(user.waitForMessage(), HasSubstr("Image successfully saved to disk."));
        user.answerByMouse(Answer::ok);
        EXPECT_TRUE(fs::exists(file)) << file;
    }

    // The calibration dialog has stayed open all the time.
    void close() {
        user.click("frmBtm", "cmdOk");
        user.waitForWindowToGo("frmBtm");
    }

    Stage stage;
    Driver& user = stage.user();
};

void expectColour(const ReadPicture& print, int x, int y, Colour expected, int tolerance) {
    const Colour found = print.at(x, y);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        EXPECT_LE(std::abs(expected[channel] - found[channel]), tolerance) << x << ", " << y;
    }
}

// The four stripes of eight pixels, met from the middle of each edge inwards, and the paper behind.
void expectTestPrint(const fs::path& file, int tolerance) {
    const ReadPicture print = readPicture(file);
    ASSERT_EQ(print.width, tileWidth);
    ASSERT_EQ(print.height, tileHeight);
    EXPECT_NEAR(print.dotsPerInch, 128, 0.1);
    const Colour stripes[] = {
        {180, 120, 0}, {0, 0, 255}, {0, 255, 0}, {255, 0, 0}, {255, 255, 255}};
    int inside = 4; // the middle of the first stripe
    for (const Colour& stripe : stripes) {
        expectColour(print, tileWidth / 2, inside, stripe, tolerance);
        expectColour(print, tileWidth - 1 - inside, tileHeight / 2, stripe, tolerance);
        expectColour(print, tileWidth / 2, tileHeight - 1 - inside, stripe, tolerance);
        expectColour(print, inside, tileHeight / 2, stripe, tolerance);
        inside += 8;
    }
}

TEST(CalibrationPrint, StartsInTheDocumentsFolderWithAProposedName) {
    Print print;
    print.askForFile();
    print.user.key(WXK_RETURN);
    const fs::path file = print.documents() / "Edge_Test_Image.bmp";
    print.expectDone(file);
    expectTestPrint(file, 0);
    print.close();
}

TEST(CalibrationPrint, StartsInTheHomeFolderWithoutADocumentsFolder) {
    Print print;
    fs::remove(print.documents());
    print.askForFile();
    print.user.key(WXK_RETURN);
    print.expectDone(print.stage.home().path() / "Edge_Test_Image.bmp");
    print.close();
}

TEST(CalibrationPrint, TheEndingOfTheNameChoosesTheType) {
    Print print;
    print.askForFile();
    print.saveAs("stripes.tif");
    print.expectDone(print.documents() / "stripes.tif");
    expectTestPrint(print.documents() / "stripes.tif", 0);
    print.askForFile();
    print.saveAs("stripes.jpg");
    print.expectDone(print.documents() / "stripes.jpg");
    expectTestPrint(print.documents() / "stripes.jpg", 8);
    print.close();
}

TEST(CalibrationPrint, AnotherEndingIsRefused) {
    Print print;
    print.askForFile();
    print.saveAs("stripes.png");
    EXPECT_EQ(print.user.waitForMessage(),
              "Invalid image filename.  Must save image as bmp, tif or jpg file");
    print.user.answerByMouse(Answer::ok);
    EXPECT_TRUE(fs::is_empty(print.documents()));
    print.close();
}

TEST(CalibrationPrint, AFileThatIsThereIsReplacedOnlyAfterAQuestion) {
    Print print;
    const fs::path file = print.documents() / "stripes.bmp";
    std::ofstream(file) << "an older print";
    print.askForFile();
    print.saveAs("stripes.bmp");
    print.user.waitForSystemDialog(""); // the question has no title
    print.user.key(WXK_ESCAPE);
    print.user.waitForSystemDialog(dialogTitle);
    std::ifstream older(file);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(older), {}), "an older print");

    print.user.key(WXK_RETURN);
    print.user.waitForSystemDialog("");
    print.user.key('R', wxMOD_ALT);
    print.expectDone(file);
    expectTestPrint(file, 0);
    print.close();
}

TEST(CalibrationPrint, ANameWithoutAnEndingGetsThatOfTheChosenType) {
    Print print;
    print.askForFile();
    for (int i = 0; i < 3; ++i) { // past the buttons, backwards
        print.user.key(WXK_TAB, wxMOD_SHIFT);
    }
    print.user.key(WXK_END); // the last type
    print.user.key(WXK_TAB);
    print.user.key(WXK_TAB);
    print.user.key(WXK_RETURN);
    const fs::path file = print.documents() / "Edge_Test_Image.jpg";
    print.expectDone(file);
    expectTestPrint(file, 8);
    print.close();
}

TEST(CalibrationPrint, AProposedNameThatIsTakenIsAskedForAgain) {
    Print print;
    const fs::path taken = print.documents() / "Edge_Test_Image.bmp";
    std::ofstream(taken) << "an older print";
    print.askForFile();
    print.user.key(WXK_RETURN);
    EXPECT_THAT(print.user.waitForMessage(),
                HasSubstr("already exists.  Do you want to replace it?"));
    print.user.answerByMouse(Answer::no);
    print.user.waitForSystemDialog(dialogTitle);
    print.saveAs("newer");
    print.expectDone(print.documents() / "newer.bmp");
    EXPECT_EQ(fs::file_size(taken), std::string("an older print").size());
    print.close();
}

TEST(CalibrationPrint, CancelWritesNothing) {
    Print print;
    print.askForFile();
    print.user.key(WXK_ESCAPE);
    EXPECT_EQ(print.user.waitForMessage(), "Test Target Creation canceled");
    print.user.answerByMouse(Answer::ok);
    EXPECT_TRUE(fs::is_empty(print.documents()));
    print.close();
}

} // namespace

} // namespace veldara::test
