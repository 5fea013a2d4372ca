// The photo: loaded from the chosen file, turned, and copied to the size of the preview. All of
// this runs on a worker while window events are served, so any handler may run in the middle of it.
// Only one such piece of work runs at a time; requests that arrive in the middle are kept and done
// afterwards.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "app/photo_file.h"
#include "app/photo_turn.h"
#include "controls/scoped_flag.h"
#include "layout/preview_resize.h"
#include "platform/error.h"
#include "platform/image/resample.h"
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
        work_.requestLoad();
        workOnPhoto();
    }
}

void frmMain::cmbRotate_Click() {
    if (bImgSelected) {
        workOnPhoto();
    }
}

void frmMain::picCur_Resize() {
    tmrResize.setEnabled(false); // the pause starts again
    tmrResize.setEnabled(true);
}

void frmMain::tmrResize_Timer() {
    if (work_.running()) {
        return; // asked again at the next tick
    }
    tmrResize.setEnabled(false);
    work_.requestPreview();
    workOnPhoto();
}

void frmMain::workOnPhoto() {
    if (work_.running()) {
        return; // the running call serves the request
    }
    const ScopedFlag running = work_.start();
    while (workOnPhotoOnce()) {
    }
}

// Returns false when nothing is left to be done.
bool frmMain::workOnPhotoOnce() {
    if (ended_ || !loaded()) {
        return false;
    }
    if (work_.takeLoadRequest()) {
        loadSelectedPhoto();
        return true;
    }
    if (bImgSelected && rotationAngle(cmbRotate.listIndex()) != photo_.rotation) {
        turnPhoto();
        return true;
    }
    if (work_.takePreviewRequest() && bImgSelected) {
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
    const int generation = work_.listGeneration();
    std::optional<LoadFailure> failure;
    try {
        loadPhotoFile(name);
    } catch (const WorkStopped&) {
        // Nobody waits for this photo any more.
    } catch (const LoadFailure& reason) {
        failure = reason;
    } catch (const Error& error) {
        failure = LoadFailure{photoUnusable, photoUnreadableMessage(error.what())};
    } catch (const std::exception&) { // no memory, or no thread
        failure = LoadFailure{photoUnusable, photoMemoryMessage(name)};
    }
    loadError_ = failure ? failure->number : 0;
    if (isSuperseded() || generation != work_.listGeneration()) {
        return; // its result is no longer wanted
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
        throw LoadFailure{photoUnusable, hasPictureEnding(name) ? photoNotListedMessage(name)
                                                                : photoNameMessage(name)};
    }
    startLoadingAnimation();
    const int generation = work_.listGeneration();
    const std::string path = withSeparator(Dir1.path(), platform_.drives.separator()) + name;
    std::shared_ptr<const Image> photo;
    platform_.eventPump.runWhileServing(
        [&] { photo = std::make_shared<const Image>(loadPhoto_(textPath(path), work_.stop())); });
    const int angle = rotationAngle(cmbRotate.listIndex());
    if (angle != 0 && !isSuperseded() && generation == work_.listGeneration()) {
        platform_.eventPump.runWhileServing(
            [&] { photo = std::make_shared<const Image>(turnedBy(*photo, angle)); });
    }
    if (isSuperseded() || generation != work_.listGeneration()) {
        return;
    }
    photoName_ = name;
    takePhoto(std::move(photo), angle);
    if (!isPhotoLargeEnough(lImgWidth, lImgHeight)) {
        throw LoadFailure{photoTooSmall, photoTooSmallMessage()};
    }
    MakePreviewImage();
    if (bImgSelected) {
        rememberPhoto(path);
    }
}

void frmMain::takePhoto(std::shared_ptr<const Image> photo, int angle) {
    photo_.image = std::move(photo);
    lImgWidth = photo_.image->width();
    lImgHeight = photo_.image->height();
    photo_.rotation = angle;
}

void frmMain::turnPhoto() {
    SetPointer(Pointer::hourglass);
    std::optional<Message> failure;
    try {
        RotateImageTo(rotationAngle(cmbRotate.listIndex()));
        UpdateOutputSize();
    } catch (const Error& error) {
        failure = errorMessage(error.what());
    } catch (const std::exception&) { // no memory, or no thread
        failure = turnMemoryMessage();
    }
    SetPointer(Pointer::arrow);
    if (failure) {
        cmbRotate.setListIndex(rotationIndex(photo_.rotation)); // as the photo is turned
        platform_.dialogs.showMessage(*failure);
    }
}

// Always from the photo as it was turned before; the file is not read again.
void frmMain::RotateImageTo(int angle) {
    const int delta = rotationDelta(photo_.rotation, angle);
    if (delta == 0) {
        return;
    }
    const std::shared_ptr<const Image> photo = photo_.image;
    std::shared_ptr<const Image> result;
    ScaledPreview preview;
    bImgSelected = false; // no handler may work on a photo that is about to be another one
    UpdateActionButtons();
    try {
        platform_.eventPump.runWhileServing(
            [&] { result = std::make_shared<const Image>(turnedBy(*photo, delta)); });
        preview = scaledToBox(*result);
    } catch (...) {
        bImgSelected = photo_.image == photo;
        UpdateActionButtons();
        throw;
    }
    if (photo_.image == photo && !isSuperseded()) {
        takePhoto(std::move(result), angle);
        showPhoto(std::move(preview));
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
    const std::shared_ptr<const Image> photo = photo_.image;
    ScaledPreview preview = scaledToBox(*photo);
    if (photo_.image == photo && !isSuperseded()) {
        showPhoto(std::move(preview));
    }
}

// Serves events meanwhile. Throws Error, or what a lack of memory or threads throws.
frmMain::ScaledPreview frmMain::scaledToBox(const Image& photo) {
    const PreviewSize size =
        previewSize(photo.width(), photo.height(), std::max(picCur.width(), 1),
                    std::max(picCur.height(), 1)); // a box may have no size yet
    std::shared_ptr<const Image> image;
    platform_.eventPump.runWhileServing([&] {
        image = std::make_shared<const Image>(resampled(photo.view(), size.width, size.height));
    });
    return {std::move(image), size.scale};
}

// Makes the preview of photo_ the one that is shown; the photo counts as selected from now on.
void frmMain::showPhoto(ScaledPreview preview) {
    stopLoadingAnimation();
    if (bImgSelected) {
        // the same photo in another size: with the grid off nothing else would move the crop
        preview_.crop = rescaledCrop(preview_.crop, preview_.scale, preview.scale);
        preview_.drag.reset();
    }
    preview_.image = std::move(preview.image);
    preview_.scale = preview.scale;
    bImgSelected = true;
    picCur.setCaption(photoCaption(photoName_, lImgWidth, lImgHeight));
    ShowMainPreview();
    UpdateOutputSize();
    UpdatePlacementLabels();
    for (Control* control :
         std::initializer_list<Control*>{&cmdSaveNow, &cmdSheets, &mnuSavePdf, &mnuPrint}) {
        control->setEnabled(true);
    }
    cmdLargePreview.setEnabled(true);
}

void frmMain::forgetPhoto() {
    bImgSelected = false;
    bPreviewOn = false;
    preview_.drag.reset();
    if (arrowPad_.direction != arrowNone) {
        SetArrowState(arrowNone);
    }
    photo_.image = std::make_shared<const Image>();
    preview_.image.reset();
    photo_.rotation = 0;
    picCur.setCaption(noPhotoCaption);
    picCur.setOverlay({});
}

// Whether the running work was overtaken: by a click on another file, or by the end.
bool frmMain::isSuperseded() const {
    return work_.loadRequested() || ended_ || !loaded();
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
    const ScopedFlag flag(animationTickRuns_);
    picCur.setDrawing(storage_.loadingFrameAfter(picCur.drawing()).drawing());
    platform_.eventPump.doEvents();
}

} // namespace veldara
