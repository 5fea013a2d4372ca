// What the system's accessibility interface has of the controls, on Windows.
#include "e2e/stage.h"

#ifdef __WXMSW__

#include "e2e/test_photos.h"
#include "gui/folder_list_box.h"
#include "gui/native_text.h"

#include <gtest/gtest.h>
#include <oleacc.h>
#include <wx/msw/wrapwin.h>

namespace veldara::test {

namespace {

VARIANT childId(long number) {
    VARIANT which{};
    which.vt = VT_I4;
    which.lVal = number;
    return which;
}

// What the system's interface for screen readers has of a widget; for the window thread only.
class AccessibleObject {
  public:
    explicit AccessibleObject(const wxWindow& widget) {
        void* found = nullptr;
        if (FAILED(AccessibleObjectFromWindow(static_cast<HWND>(widget.GetHWND()),
                                              static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                              &found))) {
            throw DriverError("The system has no accessible object for \"" +
                              portableText(widget.GetName()) + "\".");
        }
        object_ = static_cast<IAccessible*>(found);
    }
    ~AccessibleObject() { object_->Release(); }
    AccessibleObject(const AccessibleObject&) = delete;
    AccessibleObject& operator=(const AccessibleObject&) = delete;

    std::string name(long number = CHILDID_SELF) const {
        BSTR text = nullptr;
        object_->get_accName(childId(number), &text);
        const std::string name = text == nullptr ? std::string() : portableText(wxString(text));
        SysFreeString(text);
        return name;
    }
    long role(long number = CHILDID_SELF) const {
        VARIANT role{};
        object_->get_accRole(childId(number), &role);
        return role.vt == VT_I4 ? role.lVal : 0;
    }
    long childCount() const {
        long count = 0;
        object_->get_accChildCount(&count);
        return count;
    }

  private:
    IAccessible* object_;
};

using Names = std::vector<std::pair<const char*, const char*>>;

class AccessibleNames : public testing::Test {
  protected:
    AccessibleNames() {
        stage.home().addFolder("photos/summer");
        writeBitmap(stage.photos() / "wide.bmp", 300, 200, smoothColour);
        stage.start();
        stage.pickPhoto("wide.bmp");
    }
    void expectNames(const std::string& window, const Names& names) {
        user.waitForWindow(window);
        user.onWindowThread([&] {
            for (const auto& [widget, name] : names) {
                const wxWindow* found = Driver::widget(window, widget);
                ASSERT_NE(found, nullptr) << widget;
                EXPECT_EQ(AccessibleObject(*found).name(), name) << window << ", " << widget;
            }
        });
    }

    Stage stage;
    Driver& user = stage.user();
};

TEST_F(AccessibleNames, OfTheMainWindow) {
    expectNames("frmMain", {{"Drive1", "Drive"},
                            {"Dir1", "Folders"},
                            {"cmbFileType", "File type"},
                            {"lstFiles", "Image files"},
                            {"cmbCurBtm", "Edge calibration profile"},
                            {"cmbTilesWide", "Wide"},
                            {"cmbTilesHigh", "High"},
                            {"cmbRotate", "Rotation"},
                            {"picCur", "wide.bmp, 300 x 200 pixels"},
                            {"scrZoom", "Zoom"},
                            {"imgArrow", "Move the tiles over the photo"}});
    user.onWindowThread([] {
        EXPECT_EQ(AccessibleObject(*Driver::widget("frmMain", "picCur")).role(),
                  ROLE_SYSTEM_GRAPHIC);
    });
}

TEST_F(AccessibleNames, OfTheDialogs) {
    user.key('E', wxMOD_ALT);
    expectNames("frmTileSize", {{"lstPaperSize", "Paper sizes"},
                                {"cmbMargins0", "Top Margin"},
                                {"cmbMargins1", "Right Margin"},
                                {"cmbMargins2", "Bottom Margin"},
                                {"cmbMargins3", "Left Margin"}});
    user.leaveByEscape("frmTileSize");
    user.key('I', wxMOD_ALT);
    expectNames("frmBtm", {{"lstConfigurations", "Edge Calibration Profiles"},
                           {"cmbTopEdge", "Top Edge"},
                           {"cmbRightEdge", "Right Edge"},
                           {"cmbBottomEdge", "Bottom Edge"},
                           {"cmbLeftEdge", "Left Edge"}});
    user.leaveByEscape("frmBtm");
    user.key('S', wxMOD_ALT);
    expectNames("frmSaveTiles", {{"drvTile", "Drive"},
                                 {"dirTile", "New Folder  Location"},
                                 {"txtNewFolderName", "New Folder Name"},
                                 {"txtBaseFileName", "Base Filename"}});
    user.leaveByEscape("frmSaveTiles");
}

TEST_F(AccessibleNames, OfTheFoldersInTheirList) {
    user.onWindowThread([] {
        auto& list = dynamic_cast<FolderListBox&>(*Driver::widget("frmMain", "Dir1"));
        const AccessibleObject folders(list);
        const auto rows = static_cast<long>(list.entries().size());
        EXPECT_EQ(folders.role(), ROLE_SYSTEM_LIST);
        ASSERT_EQ(folders.childCount(), rows);
        EXPECT_EQ(folders.name(rows), "summer");
        EXPECT_EQ(folders.role(rows), ROLE_SYSTEM_LISTITEM);
        for (long row = 1; row <= rows; ++row) {
            EXPECT_EQ(folders.name(row), list.entries()[static_cast<std::size_t>(row - 1)].name);
        }
    });
}

} // namespace

} // namespace veldara::test

#endif
