// A photo that the file list does not take, dropped or opened from the menu: the offer of a copy.
#include "main_fixture.h"
#include "platform/image/input_format.h"

namespace veldara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* offer =
    "IMG_1.HEIC is not a file that can be cut into tiles as it is. Make a "
    "copy of it as IMG_1.tif and open that?";

class OfferedCopy : public MainWindowTest {
  protected:
    // Three steps, the last of which makes the file.
    class FakeCopy : public CopySteps {
      public:
        explicit FakeCopy(std::function<void(int)> onStep) : onStep_(std::move(onStep)) {}
        bool done() const override { return steps_ == 3; }
        double fraction() const override { return steps_ / 3.0; }
        void step() override { onStep_(++steps_); }

      private:
        std::function<void(int)> onStep_;
        int steps_ = 0;
    };

    void SetUp() override {
        platform.emplace(fakes.platform());
        PhotoCopyHooks hooks;
        hooks.readHeader = [this](const std::filesystem::path& photo) {
            if (broken) {
                throw Error("Could not read \"" + pathText(photo) + "\": the file is empty.");
            }
            ImageHeader header;
            header.format = &inputFormat(kind);
            return header;
        };
        hooks.mayWriteIn = [this](const std::filesystem::path&) { return writable; };
        hooks.begin = [this](const std::filesystem::path& photo,
                             const std::filesystem::path& target, const StopFlag& stop) {
            if (whileBeginning) {
                whileBeginning();
            }
            stop.check();
            copied.push_back(pathText(photo) + " > " + pathText(target));
            return std::make_unique<FakeCopy>([this, target](int step) {
                if (atStep) {
                    atStep(step);
                }
                if (step == 3) {
                    fakes.tree.addFile(pathText(target));
                    sizes[pathText(target.filename())] = {400, 300};
                }
            });
        };
        window = std::make_unique<frmMain>(
            *platform, fakes.screen,
            [this](const auto& path, const StopFlag& stop) { return loadFake(path, stop); }, hooks);
        window->picCur.setSize(300, 200);
        window->imgArrow.setSize(100, 100);
        window->load();
        fakes.tree.addFile("/far/IMG_1.HEIC");
    }

    const char* kind = "HEIC";
    bool broken = false;
    bool writable = true;
    std::function<void()> whileBeginning;
    std::function<void(int)> atStep;
    std::vector<std::string> copied;
};

TEST_F(OfferedCopy, YesMakesItBesideThePhotoAndOpensIt) {
    window->openPath("/far/IMG_1.HEIC");
    EXPECT_EQ(fakes.dialogs.onlyMessage().text, offer);
    EXPECT_EQ(fakes.dialogs.onlyMessage().buttons, MessageButtons::yesNo);
    EXPECT_THAT(copied, ElementsAre("/far/IMG_1.HEIC > /far/IMG_1.tif"));
    EXPECT_THAT(loaded, ElementsAre("/far/IMG_1.tif"));
    EXPECT_EQ(window->lstFiles.selectedText(), "IMG_1.tif");
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(OfferedCopy, NoLeavesEverythingAsItWas) {
    fakes.dialogs.answers = {Answer::no};
    window->openPath("/far/IMG_1.HEIC");
    EXPECT_THAT(copied, IsEmpty());
    EXPECT_THAT(loaded, IsEmpty());
    EXPECT_EQ(window->Dir1.path(), "/photos");
}

TEST_F(OfferedCopy, JpegWithAnotherEndingBecomesJpg) {
    kind = "JPEG";
    fakes.tree.addFile("/far/lake.jpeg");
    window->openPath("/far/lake.jpeg");
    EXPECT_THAT(copied, ElementsAre("/far/lake.jpeg > /far/lake.jpg"));
}

TEST_F(OfferedCopy, NameOfAFileThatExistsIsNotTaken) {
    fakes.tree.addFile("/far/IMG_1.tif");
    window->openPath("/far/IMG_1.HEIC");
    EXPECT_THAT(fakes.dialogs.onlyMessage().text, HasSubstr("as IMG_1 (2).tif and"));
    EXPECT_THAT(copied, ElementsAre("/far/IMG_1.HEIC > /far/IMG_1 (2).tif"));
}

TEST_F(OfferedCopy, GoesWhereThePersonChoosesWhenTheFolderTakesNone) {
    writable = false;
    fakes.dialogs.saveFilePaths = {"/photos/mine.tif"};
    window->openPath("/far/IMG_1.HEIC");
    ASSERT_EQ(fakes.dialogs.saveRequests.size(), 1U);
    EXPECT_EQ(fakes.dialogs.saveRequests[0].folder, "/home/documents");
    EXPECT_EQ(fakes.dialogs.saveRequests[0].defaultName, "IMG_1");
    EXPECT_EQ(fakes.dialogs.saveRequests[0].filters.at(0).pattern, "*.tif");
    EXPECT_THAT(copied, ElementsAre("/far/IMG_1.HEIC > /photos/mine.tif"));
    EXPECT_THAT(loaded, ElementsAre("/photos/mine.tif"));
}

TEST_F(OfferedCopy, IsNotMadeWhenNoPlaceIsChosen) {
    writable = false;
    window->openPath("/far/IMG_1.HEIC");
    EXPECT_THAT(copied, IsEmpty());
}

TEST_F(OfferedCopy, EndOfTheProgramStopsIt) {
    std::vector<int> steps;
    atStep = [&](int step) {
        steps.push_back(step);
        window->EndNow();
    };
    window->openPath("/far/IMG_1.HEIC");
    EXPECT_THAT(steps, ElementsAre(1));
    EXPECT_THAT(loaded, IsEmpty());
}

TEST_F(OfferedCopy, EndsWithinItsBeginningWhenNobodyWaitsForIt) {
    whileBeginning = [this] {
        dynamic_cast<frmMsg&>(*fakes.screen.lastShown).cmdCancel.userClick();
    };
    window->openPath("/far/IMG_1.HEIC");
    whileBeginning = [this] { window->unload(); };
    window->openPath("/far/IMG_1.HEIC");
    EXPECT_THAT(copied, IsEmpty());
    EXPECT_THAT(loaded, IsEmpty());
    EXPECT_EQ(fakes.dialogs.messages.size(), 2U); // the offers
}

TEST_F(OfferedCopy, FailureIsReportedAndNothingIsOpened) {
    atStep = [](int step) {
        if (step == 2) {
            throw Error("Could not write \"/far/IMG_1.tif\": no space left.");
        }
    };
    window->openPath("/far/IMG_1.HEIC");
    ASSERT_EQ(fakes.dialogs.messages.size(), 2U);
    EXPECT_EQ(fakes.dialogs.messages[1].text, "Could not write \"/far/IMG_1.tif\": no space left.");
    EXPECT_THAT(loaded, IsEmpty());
    window->openPath("/far/IMG_1.HEIC"); // and can be tried again
    EXPECT_EQ(copied.size(), 2U);
}

TEST_F(OfferedCopy, OtherPhotosOpenedMeanwhileAreLeftOut) {
    fakes.tree.addFile("/far/IMG_2.HEIC");
    atStep = [this](int step) {
        if (step == 1) {
            window->openPath("/far/IMG_2.HEIC");
        }
    };
    window->openPath("/far/IMG_1.HEIC");
    EXPECT_THAT(copied, ElementsAre("/far/IMG_1.HEIC > /far/IMG_1.tif"));
}

TEST_F(OfferedCopy, PhotoThatCannotBeReadIsReportedWithTheReason) {
    broken = true;
    window->openPath("/far/IMG_1.HEIC");
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Invalid Image File Selected",
                       "Could not read \"/far/IMG_1.HEIC\": the file is empty."));
}

TEST_F(OfferedCopy, IsNotOfferedByTheFileListWhichSaysWhatCanTakeIt) {
    fakes.tree.addFile("/photos/IMG_1.HEIC");
    window->cmbFileType.userSelect(4);
    clickFile("IMG_1.HEIC");
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Invalid Image File Selected",
                       "The file \"IMG_1.HEIC\" can not be used: the names of image files end in "
                       ".jpg, .tif or .bmp.  \"Open Photo...\" in the File menu can take it."));
    EXPECT_THAT(copied, IsEmpty());
}

} // namespace
} // namespace veldara::test
