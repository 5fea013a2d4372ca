#include "output/frmSimpleMsg.h"

#include "output/save_messages.h"
#include "output/split_path_label.h"
#include "platform/error.h"

namespace veldara {

frmSimpleMsg::frmSimpleMsg(Platform& platform, Screen& screen)
    : Window("frmSimpleMsg", screen), platform_(platform) {
    setCaption("Veldara");
    lblTitle.setCaption(savedTitle);
    imgCheck.setDrawing(Drawing::checkMark);
    cmdOk.setCaption("OK");
    lnkFol.onClick = [this] { lnkFol_Click(); };
    cmdOk.onClick = [this] { cmdOk_Click(); };
}

void frmSimpleMsg::ShowSaveOkMsg(const std::string& sFolderName) {
    showResult(savedTitle, savedText, sFolderName);
}

void frmSimpleMsg::ShowDocumentOkMsg(const std::string& file, const std::string& notice) {
    showResult(documentTitle, documentText + (notice.empty() ? "" : "  " + notice), file);
}

void frmSimpleMsg::showResult(const std::string& title, const std::string& text,
                              const std::string& target) {
    lblTitle.setCaption(title);
    lblMsg.setCaption(text);
    show();
    lnkFol.setCaption(
        SplitPathLabel(target, resultLabelStart, pathLabelEnd, platform_.drives.separator()));
    lnkFol.setTarget(target);
}

void frmSimpleMsg::lnkFol_Click() {
    try {
        platform_.launcher.openTarget(lnkFol.target());
    } catch (const Error& error) {
        platform_.dialogs.showMessage(criticalMessage("Problem", error.what()));
    }
}

void frmSimpleMsg::cmdOk_Click() {
    unload();
}

} // namespace veldara
