// The buttons of the calibration dialog that make the test image.
#include "calibration/frmBtm.h"
#include "controls/scoped_flag.h"
#include "platform/image/tile_format.h"
#include "platform/text/characters.h"
#include "platform/text/path_text.h"

#include <exception>
#include <optional>

namespace veldara {

void frmBtm::cmdGenerateTest_Click() {
    if (working_) {
        return;
    }
    const ScopedFlag flag(working_);
    double height = 0;
    double width = 0;
    Image image;
    if (!agreedToTestTarget(height, width) || !makeTestTarget(height, width, image)) {
        return;
    }
    askAndSave(image);
}

void frmBtm::cmdPrintTest_Click() {
    if (working_) {
        return;
    }
    const ScopedFlag flag(working_);
    double height = 0;
    double width = 0;
    Image image;
    if (!hasValidTestSize(height, width) || !makeTestTarget(height, width, image)) {
        return;
    }
    const auto made = std::make_shared<const Image>(std::move(image));
    if (owner_.printTestImage(made)) {
        askAndSave(*made);
    }
}

void frmBtm::askAndSave(const Image& image) {
    const std::string name = getSaveTestFileName("Edge_Test_Image");
    if (name.empty()) {
        platform_.dialogs.showMessage(testTargetCanceledMessage());
        return;
    }
    if (characterCount(name) < 4) {
        return;
    }
    const std::optional<TileFormat> type = tileFormatByName(name);
    if (!type) {
        platform_.dialogs.showMessage(testTargetFileTypeMessage());
        return;
    }
    saveTestTarget(image, name, *type);
}

bool frmBtm::hasValidTestSize(double& heightInches, double& widthInches) {
    if (!owner_.CheckTileSizesNoTrim(widthInches, heightInches)) {
        platform_.dialogs.showMessage(invalidPrintDimensionsMessage(
            owner_.getConstMinTileSize(), owner_.getConstMaxTileSize(), owner_.tileSizeAreaName(),
            platform_.numberStyle));
        return false;
    }
    return true;
}

bool frmBtm::agreedToTestTarget(double& heightInches, double& widthInches) {
    return hasValidTestSize(heightInches, widthInches) &&
           platform_.dialogs.showMessage(testTargetAnnouncement(
               heightInches, widthInches, unitsOf(owner_.getCurUnits()), platform_.numberStyle)) ==
               Answer::ok;
}

bool frmBtm::makeTestTarget(double heightInches, double widthInches, Image& image) {
    std::string problem;
    setPointer(Pointer::hourglass);
    try {
        platform_.eventPump.runWhileServing(
            [&] { image = hooks_.create(heightInches, widthInches); });
    } catch (const std::exception& error) {
        problem = error.what();
    }
    setPointer(Pointer::arrow);
    if (!problem.empty()) {
        platform_.dialogs.showMessage(testTargetFailedMessage(problem));
    }
    return problem.empty();
}

std::string frmBtm::getSaveTestFileName(const std::string& defaultName) {
    SaveFileRequest request = testTargetSaveRequest(defaultName);
    request.folder = platform_.specialFolders.path(specialFolderIdentifier(documentsKind));
    return platform_.dialogs.askSaveFile(request);
}

void frmBtm::saveTestTarget(const Image& image, const std::string& name, TileFormat type) {
    try {
        platform_.eventPump.runWhileServing([&] {
            hooks_.write(textPath(name), encodeImage(image.view(), type, testTargetDotsPerInch,
                                                     image.colourProfile));
        });
    } catch (const std::exception& error) {
        platform_.dialogs.showMessage(testTargetSaveFailedMessage(error.what()));
        return;
    }
    platform_.dialogs.showMessage(testTargetDoneMessage(name));
}

} // namespace veldara
