#include "layout/frmPreview.h"

#include "controls/scoped_flag.h"
#include "layout/full_preview.h"
#include "platform/error.h"

namespace veldara {

namespace {

Message noPosterRatioMessage() {
    return criticalMessage("Invalid information",
                           "Invalid tile configuration.  Please valid tile print size values");
}

} // namespace

frmPreview::frmPreview(Platform& platform, Screen& screen, PreviewOwner& owner)
    : Window("frmPreview", screen), platform_(platform), owner_(owner) {
    setCaption("Poster Preview");
    cmdClose.setCaption("Close");
    cmdClose.onClick = [this] { cmdClose_Click(); };
}

void frmPreview::setCloseButtonSize(int width, int height) {
    closePlace_.width = width;
    closePlace_.height = height;
}

// The window's size is that of its inner area, so the title bar takes nothing off it.

void frmPreview::FitToNewSize() {
    place(fitToNewSize(width_, height_, closePlace_.width, closePlace_.height, 0));
}

void frmPreview::FitToNewSizeForPic() {
    if (!fitToRatio()) {
        platform_.dialogs.showMessage(noPosterRatioMessage());
    }
}

// False, and nothing is laid out, when the poster has no ratio.
bool frmPreview::fitToRatio() {
    double ratio = 0;
    try {
        ratio = owner_.GetFinalImgWhRatio();
    } catch (const Error&) {
        ratio = 0; // nothing is left of a tile
    }
    if (ratio <= 0) {
        return false;
    }
    place(fitToNewSizeForPic(width_, height_, closePlace_.width, closePlace_.height, ratio, 0));
    return true;
}

void frmPreview::place(const PreviewWindowLayout& layout) {
    picPreview.setPlace(layout.pictureLeft, layout.pictureTop);
    picPreview.setSize(layout.pictureWidth, layout.pictureHeight);
    closePlace_.left = layout.closeLeft;
    closePlace_.top = layout.closeTop;
    changed(Property::range);
}

void frmPreview::Fill() {
    FitToNewSizeForPic();
    filled_ = true;
    render();
}

// Events run while the poster is rendered: a new size is then rendered when this one is done.
void frmPreview::render() {
    resizedMeanwhile_ = true;
    if (filling_) {
        return;
    }
    const ScopedFlag flag(filling_);
    setPointer(Pointer::hourglass);
    while (resizedMeanwhile_ && loaded()) {
        resizedMeanwhile_ = false;
        owner_.FillPreview(picPreview); // shows its own failures
    }
    setPointer(Pointer::arrow);
    if (!loaded()) {
        picPreview.setPixels(nullptr);
    }
}

void frmPreview::userResize(int width, int height) {
    if (width == width_ && height == height_) {
        return;
    }
    width_ = width;
    height_ = height;
    if (!fitToRatio()) {
        FitToNewSize();
    }
    if (filled_) {
        render();
    }
}

void frmPreview::cmdClose_Click() {
    unload();
}

void frmPreview::unloadHandler() {
    filled_ = false;
    picPreview.setPixels(nullptr); // a screen full of pixels is not kept for nothing
}

} // namespace veldara
