// The fixed texts of the paper dialog and its handlers' bindings.
#include "paper/frmTileSize.h"

namespace veldara {

void frmTileSize::fillTexts() {
    setCaption("Determine Tile Print Size");
    fraUnits.setCaption("(1) Select Units");
    opbInches.setCaption("Inches");
    opbMm.setCaption("Millimeters");

    fraPaperSize.setCaption("(2) Select Paper Size");
    lstPaperSize.setCaption("Paper sizes");
    lstPaperSize.setToolTip("Choose paper size (or select Custom Size)");
    lblWidth.setCaption("Width:");
    txtWidth.setToolTip("Full paper width (including margins)");
    lblHeight.setCaption("Height:");
    txtHeight.setToolTip("Full paper height (including margins)");

    fraMargins.setCaption("(3) Select Margin Size For Prints");
    const char* const edges[] = {"Top", "Right", "Bottom", "Left"};
    const char* const lowerEdges[] = {"top", "right", "bottom", "left"};
    for (std::size_t edge = 0; edge < cmbMargins.size(); ++edge) {
        lblMargins[edge].setCaption(std::string(edges[edge]) + " Margin:");
        cmbMargins[edge].setToolTip(std::string("Select or type ") + lowerEdges[edge] +
                                    " margin size");
    }
    chkLock.setCaption("Lock Left=Right, Top=Bottom");
    chkLock.setToolTip("Force the left/right and top/bottom margins to be equal");
    cmdBorderless.setCaption("Set to borderless (no margins)");
    cmdBorderless.setToolTip("Set all border sizes to zero (use this for borderless prints)");
    cmdReset.setCaption("Reset to default margins");
    cmdReset.setToolTip("Reset margin sizes to default values for selected paper size");
    chkBorderless.setCaption("Borderless");
    chkBorderless.setToolTip("Set all border sizes to zero (use this for borderless prints)");

    fraResults.setCaption("(4) Results:");
    lblSizeWithBordersCaption.setCaption("Size BEFORE borders trimmed:");
    lblSizeWithBorders.setToolTip("This is the full paper size, including margins");
    lblSizeWithoutBordersCaption.setCaption("Size AFTER borders trimmed:");
    lblSizeWithoutBorders.setToolTip(
        "This is the poster tile size (the print size AFTER margins trimmed off)");

    cmdOk.setCaption("OK");
    cmdOk.setToolTip("Accept current print/margin values and return to main window");
    cmdApply.setCaption("Apply");
    cmdApply.setToolTip("Accept current print/margin values");
    cmdCancel.setCaption("Cancel");
    cmdCancel.setToolTip("Do not accept current print/margin values");
}

void frmTileSize::bindHandlers() {
    OptionButton::join({&opbInches, &opbMm});
    opbInches.onClick = [this] { opbInches_Click(); };
    opbMm.onClick = [this] { opbMm_Click(); };
    lstPaperSize.onClick = [this] { lstPaperSize_Click(); };
    txtWidth.onChange = [this] { txtWidth_Change(); };
    txtHeight.onChange = [this] { txtHeight_Change(); };
    for (int index = 0; index < 4; ++index) {
        cmbMargins[static_cast<std::size_t>(index)].onChange = [this, index] {
            cmbMargins_Change(index);
        };
    }
    chkLock.onClick = [this] { chkLock_Click(); };
    chkBorderless.onClick = [this] { chkBorderless_Click(); };
    cmdBorderless.onClick = [this] { cmdBorderless_Click(); };
    cmdReset.onClick = [this] { cmdReset_Click(); };
    cmdOk.onClick = [this] { cmdOk_Click(); };
    cmdApply.onClick = [this] { cmdApply_Click(); };
    cmdCancel.onClick = [this] { cmdCancel_Click(); };
}

} // namespace veldara
