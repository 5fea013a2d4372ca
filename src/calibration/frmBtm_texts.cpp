// The fixed texts of the calibration dialog and its handlers' bindings.
#include "calibration/frmBtm.h"

namespace veldara {

void frmBtm::fillTexts() {
    setCaption("Edge Calibration");
    lblStep1.setCaption("Step (1) Create and print test image");
    cmdGenerateTest.setCaption("Create Edge Calibration Test Image");
    cmdPrintTest.setCaption("Print Test Image...");
    cmdPrintTest.setToolTip("Print the test image on a printer of this computer");

    lblConfigurations.setCaption("Edge Calibration Profiles");
    cmdNew.setCaption("New");
    cmdNew.setToolTip("Create a new Edge Calibration Profile");
    cmdRename.setCaption("Rename");
    cmdRename.setToolTip("Rename the currently selected Edge Calibration Profile");
    cmdDel.setCaption("Delete");
    cmdDel.setToolTip("Delete the currently selected Edge Calibration Profile");

    lblStep2.setCaption("Step (2) Input how much the printer trims from each image edge");
    lblStep2Desc.setCaption(
        "Select how many of the 4 test image lines are visible at each edge of your test print.  "
        "This tells the software how much of the image the printer trims (and loses) from each "
        "edge of images that it prints.");

    Label* const captions[] = {&lblTopEdge, &lblRightEdge, &lblBottomEdge, &lblLeftEdge};
    const char* const names[] = {"Top Edge:", "Right Edge:", "Bottom Edge:", "Left Edge:"};
    const char* const edges[] = {"TOP", "RIGHT", "BOTTOM", "LEFT"};
    const std::array<ComboBox*, 4> lists = edgeLists();
    for (std::size_t edge = 0; edge < lists.size(); ++edge) {
        captions[edge]->setCaption(names[edge]);
        lists[edge]->setItems(stripeChoices());
        lists[edge]->setToolTip(std::string("For the selected Edge Calibration Profile, indicates "
                                            "how many of the four test lines are visible on the ") +
                                edges[edge] + " edge of your test print");
    }
    cmdOk.setCaption("Close");
}

void frmBtm::SetStep1DescUnits() {
    lblStep1Desc.setCaption(
        "The test image is exactly as large as one of your poster tiles and has 4 colored "
        "stripes, each " +
        stripeWidthText(unitsOf(owner_.getCurUnits())) +
        " wide, around every edge.  Save it, then print it with the printer, paper and printer "
        "settings that you will use for your poster.");
}

void frmBtm::bindHandlers() {
    lstConfigurations.onClick = [this] { lstConfigurations_Click(); };
    for (ComboBox* list : edgeLists()) {
        list->onClick = [this] { ProcessFormChange(); };
    }
    cmdNew.onClick = [this] { cmdNew_Click(); };
    cmdRename.onClick = [this] { cmdRename_Click(); };
    cmdDel.onClick = [this] { cmdDel_Click(); };
    cmdGenerateTest.onClick = [this] { cmdGenerateTest_Click(); };
    cmdPrintTest.onClick = [this] { cmdPrintTest_Click(); };
    cmdOk.onClick = [this] { cmdOk_Click(); };
}

} // namespace veldara
