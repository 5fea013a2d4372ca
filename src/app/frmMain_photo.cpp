// The photo: loaded from the chosen file, turned, and copied to the size of the preview. All of
// this takes its time on a worker while window events run, so any handler may run in the middle of
// it. Only one piece of such work is under way at a time; what is asked for meanwhile is noted down
// and done afterwards.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "app/photo_file.h"
#include "app/photo_turn.h"
#include "controls/loading_mark.h"
#include "layout/preview_resize.h"
#include "platform/error.h"
#include "platform/image/operations.h"
#include "platform/text/path_text.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace veldara {

namespace {

constexpr int photoTooSmall = 402;
constexpr int photoUnusable = 1;

// Why a load failed.
struct LoadFailure {
    int number = photoUnusable;
    Message message;
};

} // namespace

void frmMain::lstFiles_Click() {
    if (lstFiles.listIndex() >= 0) {
        loadWanted_ = true;
        workOnPhoto();
    }
}

void frmMain::cmbRotate_Click() {
    if (bImgSelected) {
        workOnPhoto();
    }
}

void frmMain::picCur_Resize() {
    tmrResize.setEnabled(false); // the moment of rest starts anew
    tmrResize.setEnabled(true);
}

void frmMain::tmrResize_Timer() {
    if (photoBusy_) {
        return; // asked again at the next tick
    }
    tmrResize.setEnabled(false);
    previewWanted_ = true;
    workOnPhoto();
}

void frmMain::workOnPhoto() {
    if (photoBusy_) {
        return; // the run under way takes it up
    }
    const LoadingMark mark(photoBusy_);
    while (workOnPhotoOnce()) {
    }
}

// Returns false when nothing is left to be done.
bool frmMain::workOnPhotoOnce() {
    if (ended_ || !loaded()) {
        return false;
    }
    if (std::exchange(loadWanted_, false)) {
        loadSelectedPhoto();
        return true;
    }
    if (bImgSelected && rotationAngle(cmbRotate.listIndex()) != iCurRotation) {
        turnPhoto();
        return true;
    }
    if (std::exchange(previewWanted_, false) && bImgSelected) {
        rebuildPreview();
        return true;
    }
    return false;
}

void frmMain::loadSelectedPhoto() {
    forgetPhoto();
    UpdateOutputSize();
    UpdateActionButtons();
    UpdatePlacementLabels();
    const std::string name = lstFiles.selectedText();
    const int generation = listGeneration_;
    std::optional<LoadFailure> failure;
    try {
        loadPhotoFile(name);
    } catch (const LoadFailure& reason) {
        failure = reason;
    } catch (const Error& error) {
        failure = LoadFailure{photoUnusable, photoUnreadableMessage(error.what())};
    } catch (const std::exception&) { // no memory, or no thread
        failure = LoadFailure{photoUnusable, photoMemoryMessage(name)};
    }
    loadError_ = failure ? failure->number : 0;
    if (isSuperseded() || generation != listGeneration_) {
        return; // nobody waits for this photo any more
    }
    stopLoadingAnimation();
    if (failure) {
        forgetPhoto();
        picCur.setDrawing(storage_.picError.drawing());
        platform_.dialogs.showMessage(failure->message);
    }
}

void frmMain::loadPhotoFile(const std::string& name) {
    if (!isPhotoFile(name)) {
        throw LoadFailure{photoUnusable, photoNameMessage(name)};
    }
    startLoadingAnimation();
    const int generation = listGeneration_;
    const std::string path = withSeparator(Dir1.path(), platform_.drives.separator()) + name;
    std::shared_ptr<const Image> photo;
    platform_.eventPump.runWhileServing(
        [&] { photo = std::make_shared<const Image>(loadPhoto_(textPath(path))); });
    const int angle = rotationAngle(cmbRotate.listIndex());
    if (angle != 0 && !isSuperseded() && generation == listGeneration_) {
        platform_.eventPump.runWhileServing(
            [&] { photo = std::make_shared<const Image>(turnedBy(*photo, angle)); });
    }
    if (isSuperseded() || generation != listGeneration_) {
        return;
    }
    takePhoto(std::move(photo), angle);
    if (!isPhotoLargeEnough(lImgWidth, lImgHeight)) {
        throw LoadFailure{photoTooSmall, photoTooSmallMessage()};
    }
    MakePreviewImage();
}

void frmMain::takePhoto(std::shared_ptr<const Image> photo, int angle) {
    img = std::move(photo);
    lImgWidth = img->width();
    lImgHeight = img->height();
    iCurRotation = angle;
}

void frmMain::turnPhoto() {
    SetPointer(3);
    std::optional<Message> failure;
    try {
        RotateImageTo(rotationAngle(cmbRotate.listIndex()));
        UpdateOutputSize();
    } catch (const Error& error) {
        failure = errorMessage(error.what());
    } catch (const std::exception&) { // no memory, or no thread
        failure = turnMemoryMessage();
    }
    SetPointer(0);
    if (failure) {
        cmbRotate.setListIndex(rotationIndex(iCurRotation)); // as the photo stands
        platform_.dialogs.showMessage(*failure);
    }
}

// Always from the photo as it was turned before; the file is not read again.
void frmMain::RotateImageTo(int angle) {
    const int delta = rotationDelta(iCurRotation, angle);
    if (delta == 0) {
        return;
    }
    const std::shared_ptr<const Image> photo = img;
    std::shared_ptr<const Image> result;
    bImgSelected = false; // no handler may work on a photo that is about to be another one
    UpdateActionButtons();
    try {
        platform_.eventPump.runWhileServing(
            [&] { result = std::make_shared<const Image>(turnedBy(*photo, delta)); });
    } catch (...) {
        bImgSelected = img == photo;
        UpdateActionButtons();
        throw;
    }
    if (img == photo && !isSuperseded()) {
        takePhoto(std::move(result), angle);
        MakePreviewImage();
    }
}

void frmMain::rebuildPreview() {
    try {
        MakePreviewImage();
    } catch (const std::exception&) {
        return; // the preview of the old size is still good to work with
    }
}

void frmMain::MakePreviewImage() {
    const std::shared_ptr<const Image> photo = img;
    const PreviewSize size =
        previewSize(photo->width(), photo->height(), std::max(picCur.width(), 1),
                    std::max(picCur.height(), 1)); // a box may have no size yet
    std::shared_ptr<const Image> preview;
    platform_.eventPump.runWhileServing([&] {
        preview = std::make_shared<const Image>(resampled(photo->view(), size.width, size.height));
    });
    if (img != photo || isSuperseded()) {
        return; // another photo is on its way
    }
    stopLoadingAnimation();
    if (bImgSelected) {
        // the same photo in another size: with the grid off nothing else would move the crop
        crop_ = rescaledCrop(crop_, dPreviewScale, size.scale);
        bDragging = false;
    }
    imgPreview = std::move(preview);
    dPreviewScale = size.scale;
    bImgSelected = true;
    ShowMainPreview();
    UpdateOutputSize();
    UpdatePlacementLabels();
    cmdSaveNow.setEnabled(true);
    cmdLargePreview.setEnabled(true);
}

void frmMain::forgetPhoto() {
    bImgSelected = false;
    bDragging = false;
    if (iArrowDir != arrowNone) {
        SetArrowState(arrowNone);
    }
    img = std::make_shared<const Image>();
    imgPreview.reset();
    iCurRotation = 0;
}

// Whether the work under way was overtaken: by a click on another file, or by the end.
bool frmMain::isSuperseded() const {
    return loadWanted_ || ended_ || !loaded();
}

void frmMain::startLoadingAnimation() {
    picCur.setDrawing(storage_.picLoadingImg1.drawing());
    tmrLoadingImg.setEnabled(true);
}

void frmMain::stopLoadingAnimation() {
    tmrLoadingImg.setEnabled(false);
}

void frmMain::tmrLoadingImg_Timer() {
    if (animationTickRuns_) {
        return;
    }
    const LoadingMark mark(animationTickRuns_);
    picCur.setDrawing(storage_.loadingFrameAfter(picCur.drawing()).drawing());
    platform_.eventPump.doEvents();
}

} // namespace veldara
