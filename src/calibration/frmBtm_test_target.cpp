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
    if (const std::shared_ptr<const Image> image = testTarget(Announcement::shown)) {
        askAndSave(*image);
    }
}

void frmBtm::cmdPrintTest_Click() {
    if (working_) {
        return;
    }
    const ScopedFlag flag(working_);
    const std::shared_ptr<const Image> image = testTarget(Announcement::none);
    if (image != nullptr && owner_.printTestImage(image)) {
        askAndSave(*image);
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

std::shared_ptr<const Image> frmBtm::testTarget(Announcement announcement) {
    double height = 0;
    double width = 0;
    if (!owner_.CheckTileSizesNoTrim(width, height)) {
        platform_.dialogs.showMessage(invalidPrintDimensionsMessage(
            owner_.getConstMinTileSize(), owner_.getConstMaxTileSize(), owner_.tileSizeAreaName(),
            platform_.numberStyle));
        return nullptr;
    }
    if (announcement == Announcement::shown &&
        platform_.dialogs.showMessage(testTargetAnnouncement(
            height, width, unitsOf(owner_.getCurUnits()), platform_.numberStyle)) != Answer::ok) {
        return nullptr;
    }
    return makeTestTarget(height, width);
}

std::shared_ptr<const Image> frmBtm::makeTestTarget(double heightInches, double widthInches) {
    std::shared_ptr<const Image> image;
    std::string problem;
    setPointer(Pointer::hourglass);
    try {
        platform_.eventPump.runWhileServing([&] {
            image = std::make_shared<const Image>(hooks_.create(heightInches, widthInches));
        });
    } catch (const std::exception& error) {
        problem = error.what();
    }
    setPointer(Pointer::arrow);
    if (!problem.empty()) {
        platform_.dialogs.showMessage(testTargetFailedMessage(problem));
        return nullptr;
    }
    return image;
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
