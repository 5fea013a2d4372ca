// What the system itself shows of the program: message boxes, tool tips, pointers, the slider's
// steps, drives, and what a link opens.
#include "e2e/stage.h"
#include "e2e/test_photos.h"
#include "platform/text/path_text.h"

#include <algorithm>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/choice.h>
#include <wx/utils.h>

#ifdef __WXMSW__
#include <wx/msw/wrapwin.h>
#endif

namespace veldara::test {

namespace {

using testing::AnyOf;
using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

class NativeLayer : public testing::Test {
  protected:
    // With a photo whose crop fills its middle third.
    void openPhoto() {
        writeBitmap(stage.photos() / "wide.bmp", 1200, 400, smoothColour);
        stage.store("paperRegLine", letterLine);
        stage.store("prefs_numTiles", "w00h00");
        stage.start();
        stage.pickPhoto("wide.bmp");
    }

    void expectMessage(const std::string& title, MessageIcon icon, const std::string& words) {
        EXPECT_THAT(user.waitForMessage(), HasSubstr(words));
        EXPECT_EQ(user.messageTitle(), title);
        EXPECT_EQ(user.messageIcon(), icon) << title;
    }

    void expectPointer(const std::vector<std::string>& names) {
        std::string now = user.pointerName();
        for (int tries = 0; tries < 300 && !contains(names, now); ++tries) {
            user.pause(std::chrono::milliseconds(20));
            now = user.pointerName();
        }
        EXPECT_TRUE(contains(names, now)) << "\"" << now << "\" for " << names.front();
    }

    static bool contains(const std::vector<std::string>& names, const std::string& name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    }

    wxPoint middleOf(const std::string& window, const std::string& name) {
        const wxSize size = user.sizeOf(window, name);
        return {size.x / 2, size.y / 2};
    }

    void waitForTip(const std::string& window, const std::string& name, const std::string& words) {
        user.waitForToolTip(window, name, middleOf(window, name), words);
    }

    std::vector<std::string> entriesOf(const std::string& window, const std::string& name) {
        return user.onWindowThread([&] {
            const auto* list = dynamic_cast<const wxChoice*>(Driver::widget(window, name));
            std::vector<std::string> entries;
            for (unsigned i = 0; list != nullptr && i < list->GetCount(); ++i) {
                entries.push_back(list->GetString(i).ToStdString());
            }
            return entries;
        });
    }

    int zoom() {
        return stage.ask([](frmMain& main) { return main.scrZoom.value(); });
    }

    Stage stage;
    Driver& user = stage.user();
};

TEST_F(NativeLayer, MessageBoxesHaveTheirIconTitleAndText) {
    std::ofstream(stage.photos() / "broken.bmp") << "this is no photo";
    std::ofstream(stage.photos() / "drawing.png") << "nor this";
    openPhoto();
    user.clickListEntry("frmMain", "lstFiles", "broken.bmp");
    expectMessage("Invalid Image File Selected", MessageIcon::critical, "broken.bmp");
    user.answerByKey(Answer::ok);

    user.click("frmMain", "chkPrinterClips");
    expectMessage("Edge Calibration Introduction", MessageIcon::information,
                  "your printer clips off");
    user.answerByKey(Answer::ok);

    stage.pickPhoto("wide.bmp");
    stage.home().addFolder("photos/wide_poster_images");
    user.click("frmMain", "cmdSaveNow");
    user.click("frmSaveTiles", "cmdSaveNow");
    expectMessage("Folder Exists", MessageIcon::none, "already exists.");
    user.answerByKey(Answer::cancel);
    user.waitForWindowToGo("frmSaveTiles");
}

TEST_F(NativeLayer, AQuestionAndAWarningHaveTheirIcons) {
    stage.start();
    for (const auto& [icon, buttons] :
         {std::pair(MessageIcon::question, MessageButtons::yesNo),
          std::pair(MessageIcon::exclamation, MessageButtons::okCancel)}) {
        // Shown as the program shows it, and answered meanwhile.
        auto answer = std::make_shared<std::promise<Answer>>();
        wxTheApp->CallAfter([answer, icon = icon, buttons = buttons] {
            WxDialogs dialogs([] { return Driver::window("frmMain"); });
            answer->set_value(dialogs.showMessage({"Shall it be?", "", icon, buttons}));
        });
        expectMessage("Veldara", icon, "Shall it be?");
        const bool asks = buttons == MessageButtons::yesNo;
        user.answerByKey(asks ? Answer::no : Answer::cancel);
        EXPECT_EQ(answer->get_future().get(), asks ? Answer::no : Answer::cancel);
    }
}

TEST_F(NativeLayer, ToolTipsComeUp) {
    openPhoto();
    waitForTip("frmMain", "picCur", "Currently selected image");
    waitForTip("frmMain", "scrZoom", "Zoom amount");
    waitForTip("frmMain", "cmbTilesWide", "Number of Tiles wide that poster will be");
    user.click("frmMain", "cmdEditPaperSize");
    user.waitForWindow("frmTileSize");
    waitForTip("frmTileSize", "chkLock", "Force the left/right and top/bottom margins to be equal");
    user.key(WXK_ESCAPE);
    user.waitForWindowToGo("frmTileSize");
}

TEST_F(NativeLayer, AValueThatIsCutIsWholeInItsToolTip) {
    stage.start();
    const std::string name(80, 'W');
    stage.ask([&](frmMain& main) {
        main.lblPaperName.setCaption(name);
        return 0;
    });
    EXPECT_EQ(user.onWindowThread([] {
        return Driver::widget("frmMain", "lblPaperName")->GetToolTipText().ToStdString();
    }),
              name);
}

TEST_F(NativeLayer, ARefusedLetterIsExplainedAtItsBox) {
    openPhoto();
    user.key('S', wxMOD_CONTROL);
    user.waitForWindow("frmSaveTiles");
    user.key('N', wxMOD_ALT);
    user.retype("po/ster");
    EXPECT_EQ(user.text("frmSaveTiles", "txtNewFolderName"), "poster");
    user.onWindowThread([] {
        wxWindow* box = Driver::widget("frmSaveTiles", "txtNewFolderName");
        const wxWindow* tip = wxWindow::FindWindowByName("refusal", box);
        ASSERT_NE(tip, nullptr);
        EXPECT_TRUE(tip->IsShownOnScreen());
        const wxStaticText* words =
            dynamic_cast<const wxStaticText*>(tip->GetChildren().GetFirst()->GetData());
        EXPECT_THAT(words->GetLabelText().ToStdString(), HasSubstr("/"));
        EXPECT_TRUE(tip->GetScreenRect().Intersects(
            wxRect(box->GetScreenRect()).Inflate(box->FromDIP(20))));
    });
    user.key(WXK_ESCAPE);
    user.waitForWindowToGo("frmSaveTiles");
}

TEST_F(NativeLayer, PointersAreTheSystemsOwn) {
    const std::vector<std::string> arrow{"default", "left_ptr", "arrow"};
    const std::vector<std::string> cross{"cross", "crosshair", "tcross"};
    openPhoto();
    const wxSize box = user.sizeOf("frmMain", "picCur");
    const wxPoint middle(box.x / 2, box.y / 2);
    user.pointAt("frmMain", "picCur", middle);
    expectPointer(cross);
    user.press("frmMain", "picCur", middle, [&] { expectPointer({"move"}); });
    expectPointer(cross);
    user.pointAt("frmMain", "picCur", {5, middle.y}); // beside the crop
    expectPointer(arrow);
    user.pointAt("frmMain", "picCur", middle);
    expectPointer(cross);
    user.pointAt("frmMain", "cmdSaveNow", {5, 5});
    expectPointer(arrow);

    // Where it is animated, the pictures that it consists of have no names; the other pointers do.
    const std::vector<std::string> hourglass{"wait", "watch", ""};
    stage.ask([](frmMain& main) {
        main.setPointer(Pointer::hourglass);
        return 0;
    });
    expectPointer(hourglass);
    user.pointAt("frmMain", "picCur", {5, middle.y});
    expectPointer(hourglass);
    stage.ask([](frmMain& main) {
        main.setPointer(Pointer::arrow);
        return 0;
    });
    expectPointer(arrow);
}

TEST_F(NativeLayer, TheSlidersOwnStepAndPage) {
    openPhoto();
    user.key('Z', wxMOD_ALT);
    user.key(WXK_RIGHT);
    EXPECT_EQ(zoom(), 1);
#ifdef __WXMSW__ // a click beside the thumb; on other desktops the thumb goes there
    const wxSize slider = user.sizeOf("frmMain", "scrZoom");
    user.clickAt("frmMain", "scrZoom", {slider.x * 3 / 4, slider.y / 2});
#else
    user.key(WXK_RIGHT, wxMOD_CONTROL);
#endif
    stage.waitFor("the zoom is a page larger",
                  [](frmMain& main) { return main.scrZoom.value() == 21; });
    user.key(WXK_END);
    EXPECT_EQ(zoom(), 400);
    user.key(WXK_HOME);
    EXPECT_EQ(zoom(), 0);
}

TEST_F(NativeLayer, DriveListsShowTheDrivesAndGoToThem) {
    openPhoto();
#ifdef __WXMSW__
    const std::string first = "C:";
    const std::string ours = user.text("frmMain", "Drive1");
    EXPECT_EQ(ours, stage.photos().string().substr(0, 2));
#else
    const std::string first = "/";
#endif
    const std::vector<std::string> drives = entriesOf("frmMain", "Drive1");
    EXPECT_THAT(drives, Contains(first));
    EXPECT_EQ(drives, stage.ask([](frmMain& main) {
        std::vector<std::string> names;
        for (std::string name : main.Drive1.items()) {
            names.push_back(
                name.size() == 1 && name != "/" ? std::string(1, char(name[0] & ~32)) + ":" : name);
        }
        return names;
    }));
    user.click("frmMain", "cmdSaveNow");
    user.waitForWindow("frmSaveTiles");
    EXPECT_EQ(entriesOf("frmSaveTiles", "drvTile"), drives);
    EXPECT_EQ(user.text("frmSaveTiles", "drvTile"), user.text("frmMain", "Drive1"));
    user.key(WXK_ESCAPE);
    user.waitForWindowToGo("frmSaveTiles");

    for (std::size_t i = 0; i < drives.size(); ++i) {
        if (drives[i] == first && drives[i] != user.text("frmMain", "Drive1")) {
            user.choose("frmMain", "Drive1", static_cast<int>(i));
            stage.waitFor("the drive's folders are listed", [&](frmMain& main) {
                return main.Dir1.path().substr(0, first.size()) == first;
            });
        }
    }
}

TEST_F(NativeLayer, UnitsAndBorderlessAreChosenByMouse) {
    stage.store("paperRegLine", letterLine);
    stage.start();
    user.click("frmMain", "cmdEditPaperSize");
    user.waitForWindow("frmTileSize");
    EXPECT_TRUE(user.isChecked("frmTileSize", "opbInches"));
    user.click("frmTileSize", "opbMm");
    EXPECT_TRUE(user.isChecked("frmTileSize", "opbMm"));
    EXPECT_FALSE(user.isChecked("frmTileSize", "opbInches"));
    EXPECT_EQ(user.text("frmTileSize", "lblMarginUnits"), "(Margin sizes in MILLIMETERS)");
    user.clickListEntry("frmTileSize", "lstPaperSize", "A4 - 210 x 297");
    EXPECT_EQ(user.text("frmTileSize", "lblSizeWithBorders"), "210.0 x 297.0 mm");
    user.click("frmTileSize", "cmdOk");
    user.waitForWindowToGo("frmTileSize");
    user.click("frmMain", "cmdEditPaperSize");
    user.waitForWindow("frmTileSize");
    EXPECT_TRUE(user.isChecked("frmTileSize", "opbMm")) << "opened again";
    user.click("frmTileSize", "opbInches");
    EXPECT_EQ(user.text("frmTileSize", "lblMarginUnits"), "(Margin sizes in INCHES)");
    user.clickListEntry("frmTileSize", "lstPaperSize", "Letter 8.5\" x 11\"");
    user.click("frmTileSize", "chkBorderless");
    EXPECT_TRUE(user.isChecked("frmTileSize", "chkBorderless"));
    EXPECT_EQ(user.text("frmTileSize", "lblSizeWithoutBorders"), "8.50 x 11.00 Inches");
    user.key(WXK_ESCAPE);
    user.waitForWindowToGo("frmTileSize");
}

#ifdef __WXMSW__
// The file manager's window for a folder; its window outlives the test unless it is closed.
HWND folderWindow(const std::string& folder) {
    struct Search {
        std::wstring words;
        HWND found = nullptr;
    } search{std::wstring(folder.begin(), folder.end()), nullptr};
    const auto look = [](HWND window, LPARAM data) -> BOOL {
        auto& wanted = *reinterpret_cast<Search*>(data);
        wchar_t title[512] = {};
        DWORD process = 0;
        GetWindowTextW(window, title, 512);
        GetWindowThreadProcessId(window, &process);
        if (process != GetCurrentProcessId() && IsWindowVisible(window) != 0 &&
            std::wstring(title).find(wanted.words) != std::wstring::npos) {
            wanted.found = window;
            return FALSE;
        }
        return TRUE;
    };
    EnumWindows(look, reinterpret_cast<LPARAM>(&search));
    return search.found;
}
#else
// Stands for a program of the desktop's: notes what it is given, or that it was started.
class NotedProgram {
  public:
    NotedProgram(const TempFolder& home, const std::string& name)
        : note_(home.path() / "opened"), path_(wxGetenv("PATH")) {
        const std::filesystem::path program = textPath(home.addFolder("bin")) / name;
        std::ofstream(program) << "#!/bin/sh\nprintf %s \"${1:-started}\" >\"" << note_.string()
                               << ".part\"\n"
                               << "mv \"" << note_.string() << ".part\" \"" << note_.string()
                               << "\"\n";
        std::filesystem::permissions(program, std::filesystem::perms(0755));
        wxSetEnv("PATH", wxString(program.parent_path().string()) + ":" + path_);
    }
    ~NotedProgram() { wxSetEnv("PATH", path_); }
    NotedProgram(const NotedProgram&) = delete;
    NotedProgram& operator=(const NotedProgram&) = delete;

    std::string noted() const {
        std::ifstream note(note_);
        return {std::istreambuf_iterator<char>(note), {}};
    }

  private:
    std::filesystem::path note_;
    wxString path_;
};
#endif

TEST_F(NativeLayer, TheResultsLinkOpensTheFolder) {
#ifndef __WXMSW__
    const NotedProgram opener(stage.home(), "xdg-open");
#endif
    openPhoto();
    user.click("frmMain", "cmdSaveNow");
    user.click("frmSaveTiles", "cmdSaveNow");
    user.waitForWindow("frmSimpleMsg");
    user.click("frmSimpleMsg", "lnkFol");
#ifdef __WXMSW__
    HWND opened = nullptr;
    for (int tries = 0; tries < 600 && opened == nullptr; ++tries) {
        user.pause(std::chrono::milliseconds(50));
        opened = folderWindow("wide_poster_images");
    }
    ASSERT_NE(opened, nullptr);
    PostMessageW(opened, WM_CLOSE, 0, 0);
    while (IsWindow(opened) != 0) {
        user.pause(std::chrono::milliseconds(50));
    }
#else
    user.waitUntil("the folder is opened", [&] { return !opener.noted().empty(); });
    EXPECT_EQ(opener.noted(), (stage.photos() / "wide_poster_images").string());
#endif
    user.click("frmSimpleMsg", "cmdOk");
    user.waitForWindowToGo("frmSimpleMsg");
}

#ifndef __WXMSW__
TEST_F(NativeLayer, AboutStartsTheDesktopsSystemInformation) {
    const NotedProgram information(stage.home(), "kinfocenter");
    stage.start();
    user.clickMenu("frmMain", 3, 1);
    user.click("frmAbout", "cmdSysInfo");
    user.waitUntil("the program is started", [&] { return information.noted() == "started"; });
    user.waitForWindow("frmAbout");
    user.key(WXK_ESCAPE);
    user.waitForWindowToGo("frmAbout");
}
#endif

} // namespace

} // namespace veldara::test
