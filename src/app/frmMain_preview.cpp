// The preview: the photo with the tile grid over it, where the crop stands, and how it is moved
// with the mouse and the arrow pad.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "layout/full_preview.h"
#include "layout/preview_grid.h"
#include "platform/error.h"
#include "platform/image/operations.h"

#include <exception>
#include <new>

namespace veldara {

namespace {

constexpr int blankSide = 500;     // pixels
constexpr int arrowInterval = 250; // milliseconds
constexpr int outOfSight = 10000;  // to the right of the pad's home

} // namespace

void frmMain::ClearPreview() {
    picCur.setPixels(std::make_shared<const Image>(Image::filled(blankSide, blankSide, 0, 0, 0)));
}

void frmMain::ShowMainPreview() {
    if (!bImgSelected) {
        return;
    }
    bPreviewOn = false;
    if (!chkPreviewTiles.checked()) {
        picCur.setPixels(imgPreview);
        return;
    }
    double width = 0.0;
    double height = 0.0;
    if (!CheckTileSizes(width, height)) {
        ShowTileSizeError();
        chkPreviewTiles.setChecked(false);
        return;
    }
    std::vector<TileRect> tiles;
    if (CalcTileCoord(tiles) < 1) {
        platform_.dialogs.showMessage(invalidTileConfigurationMessage());
        picCur.setPixels(imgPreview);
        return;
    }
    const PreviewGrid grid = previewGrid(tiles, GetNumTilesWide(), GetNumTilesHigh(), dPreviewScale,
                                         imgPreview->width(), imgPreview->height());
    crop_ = grid.crop;
    try {
        auto imgGrid = std::make_shared<Image>(Image::copyOf(imgPreview->view()));
        drawPreviewGrid(imgGrid->mutableView(), grid);
        picCur.setPixels(std::move(imgGrid));
        bPreviewOn = true;
    } catch (const std::exception&) {
        picCur.setPixels(imgPreview); // no memory for a second picture: better without the grid
    }
}

void frmMain::UpdatePlacementLabels() {
    if (!bImgSelected) {
        lblLrValue.setCaption(noPlacement);
        lblTbValue.setCaption(noPlacement);
        return;
    }
    const Placement place = placement(lImgWidth, lImgHeight, dPreviewScale, crop_, pan_);
    pan_ = place.pan;
    lblLrValue.setCaption(place.horizontal);
    lblTbValue.setCaption(place.vertical);
}

bool frmMain::IsInCropRect(int x, int y) const {
    return bImgSelected && crop_.contains(x, y);
}

void frmMain::SetPointer(int code) {
    setPointer(static_cast<Pointer>(code));
}

void frmMain::picCur_MouseDown(MouseButton button, int x, int y) {
    if (button == MouseButton::left && IsInCropRect(x, y)) {
        bDragging = true;
        dragStart_ = {x, y, pan_};
        SetPointer(2);
    }
}

void frmMain::picCur_MouseMove(int x, int y) {
    if (bDragging) {
        SetPointer(2);
        DragPanTo(x, y);
    } else if (pointer() != Pointer::hourglass) {
        SetPointer(IsInCropRect(x, y) ? 1 : 0);
    }
}

void frmMain::picCur_MouseUp(int x, int y) {
    if (bDragging) {
        SetPointer(IsInCropRect(x, y) ? 1 : 0);
        DragPanTo(x, y);
        bDragging = false;
    }
}

void frmMain::DragPanTo(int x, int y) {
    pan_ = dragPan(lImgWidth, lImgHeight, dPreviewScale, crop_, dragStart_, x, y);
    UpdatePlacementLabels();
    ShowMainPreview();
}

void frmMain::imgArrow_MouseDown(int x, int y) {
    if (!bImgSelected) {
        return;
    }
    iArrowRepeat = 0;
    const ArrowDirection direction = arrowDirectionAt(x, y, imgArrow.width(), imgArrow.height());
    if (direction != arrowNone) {
        SetArrowState(direction);
    }
}

void frmMain::imgArrow_MouseUp() {
    SetArrowState(arrowNone);
}

void frmMain::tmrImg_Timer() {
    StepPan();
    UpdatePlacementLabels();
    ShowMainPreview();
}

// The pads are arranged out of sight, so that no two of them are seen at once.
void frmMain::SetArrowState(int direction) {
    const std::array<Picture*, 5> pads{&imgArrow, &imgArrow_Up, &imgArrow_right, &imgArrow_down,
                                       &imgArrow_left};
    for (Picture* pad : pads) {
        pad->setVisible(false);
    }
    for (std::size_t i = 0; i < pads.size(); ++i) {
        const bool home = static_cast<int>(i) == direction;
        pads[i]->setPlace(home ? arrowHomeLeft_ : arrowHomeLeft_ + outOfSight, imgArrow.top());
    }
    iArrowDir = direction;
    tmrImg.setInterval(arrowInterval);
    tmrImg.setEnabled(direction != arrowNone);
    for (Picture* pad : pads) {
        pad->setVisible(true);
    }
}

void frmMain::StepPan() {
    const PanStepResult step = stepPan(iArrowDir, iArrowRepeat, pan_);
    if (!step.stepped) {
        return;
    }
    pan_ = step.pan;
    ShowMainPreview();
    ++iArrowRepeat;
}

void frmMain::FillPreview(Picture& box) {
    std::vector<TileRect> tiles;
    if (!bImgSelected || CalcTileCoord(tiles) < 1) {
        return;
    }
    const auto shown = fullPreview(tiles, box.width(), box.height());
    if (!shown) {
        return;
    }
    const int tilesWide = GetNumTilesWide();
    const int tilesHigh = GetNumTilesHigh();
    const std::shared_ptr<const Image> photo = img; // it may be replaced while events run
    std::shared_ptr<Image> poster;
    try {
        platform_.eventPump.runWhileServing([&] {
            const PixelView part =
                photo->view().cut(shown->left, shown->top, shown->width, shown->height);
            poster =
                std::make_shared<Image>(resampled(part, shown->shownWidth, shown->shownHeight));
            drawEvenGrid(poster->mutableView(), tilesWide, tilesHigh);
        });
        box.setPixels(std::move(poster));
    } catch (const Error& error) {
        platform_.dialogs.showMessage(errorMessage(error.what()));
    } catch (const std::bad_alloc&) {
        platform_.dialogs.showMessage(previewMemoryMessage());
    }
}

} // namespace veldara
