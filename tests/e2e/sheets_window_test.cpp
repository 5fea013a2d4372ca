// The window "Sheets for Printing", opened from the button and by its key, up to the document,
// through the system's own dialog for saving.
#include "e2e/stage.h"
#include "e2e/test_photos.h"
#include "support/sound_pdf.h"

#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/choice.h>

namespace veldara::test {
namespace {

using testing::HasSubstr;

// A poster of three sheets by two on Letter paper, with the window open.
class OpenSheets {
  public:
    OpenSheets() {
        writeBitmap(stage.photos() / "square.bmp", 600, 600, smoothColour);
        stage.store("paperRegLine", letterLine);
        stage.store("prefs_numTiles", "w02h01");
        stage.start();
        stage.pickPhoto("square.bmp");
        user.waitForWindow("frmMain");
        user.key('S', wxMOD_CONTROL | wxMOD_SHIFT);
        user.waitForWindow("frmSheets");
    }

    // Up to the system's dialog, which proposes a name.
    void askForFile() {
        user.click("frmSheets", "cmdSavePdf");
        user.waitForSystemDialog("Save Poster as PDF");
    }

    // The bytes of the document; nothing where there is none.
    std::string document(const std::string& name) {
        std::ifstream file(stage.photos() / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static std::size_t pagesOf(const std::string& document) {
        std::size_t pages = 0;
        for (std::size_t at = 0; (at = document.find("/Type /Page ", at)) != std::string::npos;
             ++at) {
            ++pages;
        }
        return pages;
    }

    void expectDone(const std::string& name, std::size_t pages) {
        user.waitForWindow("frmSimpleMsg");
        EXPECT_THAT(user.text("frmSimpleMsg", "lnkFol"), HasSubstr(name));
        user.click("frmSimpleMsg", "cmdOk");
        user.waitForWindowToGo("frmSimpleMsg");
        const std::string bytes = document(name);
        EXPECT_EQ(bytes.substr(0, 7), "%PDF-1.");
        expectSoundPdf(stage.photos() / name);
        EXPECT_EQ(pagesOf(bytes), pages);
    }

    Stage stage;
    Driver& user = stage.user();
};

TEST(SheetsSaving, ProposesANameBesideThePhotoAndSaysWhereTheDocumentIs) {
    OpenSheets sheets;
    sheets.askForFile();
    sheets.user.key(WXK_RETURN);
    sheets.expectDone("square_poster.pdf", 7);
    EXPECT_TRUE(sheets.user.isShown("frmSheets")) << "for another look, or another document";
    sheets.user.click("frmSheets", "cmdClose");
    sheets.user.waitForWindowToGo("frmSheets");
}

TEST(SheetsSaving, WritesTheChosenSheetsByKeyboard) {
    OpenSheets sheets;
    sheets.user.key('T', wxMOD_ALT);
    sheets.user.retype("2-3,6");
    sheets.user.key('G', wxMOD_ALT); // no guide
    sheets.user.key('S', wxMOD_ALT);
    sheets.user.waitForSystemDialog("Save Poster as PDF");
    sheets.user.retype("three.pdf");
    sheets.user.key(WXK_RETURN);
    sheets.expectDone("three.pdf", 3);
    sheets.user.waitForWindow("frmSheets");
    sheets.user.key(WXK_ESCAPE);
    sheets.user.waitForWindowToGo("frmSheets");
}

TEST(SheetsSaving, CancelInTheSystemsDialogWritesNothing) {
    OpenSheets sheets;
    sheets.askForFile();
    sheets.user.key(WXK_ESCAPE);
    sheets.user.waitForWindow("frmSheets");
    EXPECT_EQ(sheets.document("square_poster.pdf"), "");
    sheets.user.click("frmSheets", "cmdClose");
    sheets.user.waitForWindowToGo("frmSheets");
}

TEST(SheetsWindow, OpensForAPhotoAndRemembersTheChoices) {
    Stage stage;
    Driver& user = stage.user();
    writeBitmap(stage.photos() / "square.bmp", 600, 600, smoothColour);
    stage.store("paperRegLine", letterLine);
    stage.store("prefs_numTiles", "w02h01");
    stage.start();
    EXPECT_FALSE(user.isEnabled("frmMain", "cmdSheets"));
    stage.pickPhoto("square.bmp");
    user.click("frmMain", "cmdSheets");
    user.waitForWindow("frmSheets");
    EXPECT_EQ(user.title("frmSheets"), "Sheets for Printing");
    EXPECT_EQ(user.text("frmSheets", "cmbShown"), "Guide");
    user.click("frmSheets", "cmdNext");
    user.waitUntil("the first sheet is shown", [] {
        const auto* shown = dynamic_cast<wxChoice*>(Driver::widget("frmSheets", "cmbShown"));
        return shown != nullptr && shown->GetStringSelection() == "Sheet 1: row 1, column 1";
    });
    user.click("frmSheets", "chkLabels");
    EXPECT_FALSE(user.isChecked("frmSheets", "chkLabels"));
    user.click("frmSheets", "cmdClose");
    user.waitForWindowToGo("frmSheets");
    EXPECT_EQ(stage.stored("sheet_labels"), "0");
}

} // namespace
} // namespace veldara::test
