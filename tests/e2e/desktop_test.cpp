// The main window as a part of the desktop: its place and splitter, its menus, small screens, and
// the system's own dialog that opens a photo.
#include "e2e/stage.h"
#include "e2e/test_photos.h"
#include "layout/window_place.h"

#include <gtest/gtest.h>
#include <wx/display.h>
#include <wx/scrolwin.h>
#include <wx/splitter.h>

namespace veldara::test {

namespace {

// The only splitter and the only scrolled area of the main window.
template <typename Kind>
Kind& partOf(wxWindow& parent) {
    std::vector<wxWindow*> open{&parent};
    while (!open.empty()) {
        wxWindow* one = open.back();
        open.pop_back();
        open.insert(open.end(), one->GetChildren().begin(), one->GetChildren().end());
        if (auto* found = dynamic_cast<Kind*>(one)) {
            return *found;
        }
    }
    throw DriverError("The main window has no such part.");
}

class Desk {
  public:
    Desk() { writeBitmap(stage.photos() / "wide.bmp", 1200, 600, smoothColour); }

    // For the window thread only.
    static wxRect frameNow() { return Driver::window("frmMain")->GetRect(); }
    static int sashNow() {
        return partOf<wxSplitterWindow>(*Driver::window("frmMain")).GetSashPosition();
    }
    static bool inSightNow(const std::string& name) {
        const wxRect area = partOf<wxScrolledWindow>(*Driver::window("frmMain")).GetScreenRect();
        return area.Contains(Driver::widget("frmMain", name)->GetScreenRect());
    }

    wxRect frame() { return user.onWindowThread(frameNow); }
    int sash() { return user.onWindowThread(sashNow); }
    bool inSight(const std::string& name) {
        return user.onWindowThread([&] { return inSightNow(name); });
    }
    // Where the splitter can be taken, on the screen.
    wxPoint sashOnScreen() {
        return user.onWindowThread([] {
            auto& splitter = partOf<wxSplitterWindow>(*Driver::window("frmMain"));
            const int middle = splitter.GetSashPosition() + splitter.GetSashSize() / 2;
            return splitter.ClientToScreen({middle, splitter.GetClientSize().y / 2});
        });
    }
    void close() {
        user.closeByCloseBox("frmMain");
        stage.waitForEnd();
        stage.stop();
    }

    Stage stage;
    Driver& user = stage.user();
};

TEST(Desktop, PlaceSizeAndSplitterAreBack) {
    Desk desk;
    desk.stage.start();
    const wxRect wanted(60, 40, 1100, 760);
    desk.user.onWindowThread([&] { Driver::window("frmMain")->SetSize(wanted); });
    // The display says where the contents are; the window knows its place before it is there.
    desk.user.waitUntil("the window has its new place", [&] {
        const wxPoint contents = Driver::window("frmMain")->ClientToScreen(wxPoint());
        const wxRect place(wanted.GetPosition(), wxSize(40, 100));
        return Desk::frameNow().GetSize() == wanted.GetSize() && place.Contains(contents);
    });
    const int first = desk.sash();
    desk.user.dragScreen(desk.sashOnScreen(), desk.sashOnScreen() + wxPoint(50, 0));
    desk.user.waitUntil("the splitter is dragged", [&] { return Desk::sashNow() > first + 30; });
    const int dragged = desk.sash();
    const wxRect left = desk.frame();
    desk.close();

    desk.stage.start();
    desk.user.waitUntil("the window is as it was left", [&] {
        return Desk::frameNow().GetSize() == left.GetSize() && Desk::sashNow() == dragged;
    });
    EXPECT_NEAR(desk.frame().x, left.x, 2);
    EXPECT_NEAR(desk.frame().y, left.y, 2);
}

TEST(Desktop, AWindowLeftOnAScreenThatIsGoneOpensOnThisOne) {
    Desk desk;
    WindowPlace gone;
    gone.normal = {9000, 7000, 1100, 760};
    gone.splitter = 260;
    desk.stage.store("window_place", windowPlaceText(gone));
    desk.stage.start();
    desk.user.waitUntil("all of the window is on the screen",
                        [] { return wxDisplay(0u).GetGeometry().Contains(Desk::frameNow()); });
    EXPECT_EQ(desk.frame().GetSize(), wxSize(1100, 760));
}

TEST(Desktop, DimmingIsTurnedOffInTheMenuAndStaysOff) {
    Desk desk;
    desk.stage.start();
    const auto dims = [](frmMain& main) { return main.mnuDimOutside.checked(); };
    EXPECT_TRUE(desk.stage.ask(dims));
    desk.user.clickMenu("frmMain", 2, 0);
    desk.stage.waitFor("nothing is dimmed", [&](frmMain& main) { return !dims(main); });
    desk.close();
    desk.stage.start();
    EXPECT_FALSE(desk.stage.ask(dims));
}

TEST(Desktop, ASmallWindowScrollsToWhatHasTheKeyboard) {
    Desk desk;
    desk.stage.start();
    desk.stage.pickPhoto("wide.bmp");
    desk.user.onWindowThread([] { Driver::window("frmMain")->SetSize(0, 0, 640, 480); });
    desk.user.waitUntil("the window is small",
                        [] { return Desk::frameNow().GetSize() == wxSize(640, 480); });
    EXPECT_FALSE(desk.inSight("cmdSaveNow"));
    for (int i = 0; i < 40 && desk.user.focused() != "cmdSaveNow"; ++i) {
        desk.user.key(WXK_TAB);
    }
    ASSERT_EQ(desk.user.focused(), "cmdSaveNow");
    desk.user.waitUntil("the button has scrolled into sight",
                        [] { return Desk::inSightNow("cmdSaveNow"); });
    desk.user.key(WXK_SPACE);
    desk.user.waitForWindow("frmSaveTiles");
    desk.user.key(WXK_ESCAPE);
    desk.user.waitForWindowToGo("frmSaveTiles");
}

TEST(Desktop, MenuEntriesAreEnabledWithAPhoto) {
    Desk desk;
    desk.stage.start();
    constexpr int file = 0;
    constexpr int recent = 1;
    constexpr int pdf = 3;
    constexpr int print = 4;
    for (const int entry : {recent, pdf, print}) {
        EXPECT_FALSE(desk.user.menuEntryIsEnabled("frmMain", file, entry)) << entry;
    }
    desk.stage.pickPhoto("wide.bmp");
    desk.user.waitForWindow("frmMain");
    for (const int entry : {recent, pdf, print}) {
        EXPECT_TRUE(desk.user.menuEntryIsEnabled("frmMain", file, entry)) << entry;
    }
}

TEST(Desktop, F5ListsTheFolderAgain) {
    Desk desk;
    desk.stage.start();
    desk.stage.pickPhoto("wide.bmp");
    writeBitmap(desk.stage.photos() / "another.bmp", 60, 40, smoothColour);
    desk.user.key(WXK_F5);
    desk.stage.waitFor("both photos are listed, the same one is chosen", [](frmMain& main) {
        return main.lstFiles.count() == 2 && main.lstFiles.selectedText() == "wide.bmp" &&
               main.bImgSelected;
    });
}

#ifndef __WXMSW__
// The test knows the dialog of this system.
TEST(Desktop, ControlOOpensAPhotoOfAnotherFolder) {
    Desk desk;
    desk.stage.home().addFolder("photos/summer");
    writeBitmap(desk.stage.photos() / "summer" / "lake.bmp", 90, 40, smoothColour);
    desk.stage.start();
    desk.user.key('O', wxMOD_CONTROL);
    desk.user.waitForSystemDialog("Open Photo");
    desk.user.type((desk.stage.photos() / "summer" / "lake.bmp").string());
    desk.user.key(WXK_RETURN);
    desk.stage.waitFor("the photo is shown", [](frmMain& main) {
        return main.bImgSelected && main.lstFiles.selectedText() == "lake.bmp";
    });
    desk.stage.waitForFolder("summer");
}
#endif

} // namespace

} // namespace veldara::test
