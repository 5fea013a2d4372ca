// The preview: the photo with the tile grid over it, the position of the crop, and how the mouse
// and the arrow pad move it.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "layout/full_preview.h"
#include "layout/preview_grid.h"
#include "platform/error.h"
#include "platform/image/resample.h"

#include <exception>

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
        markCrop();
        picCur.setPixels(preview_.image);
        return;
    }
    picCur.setOverlay({});
    if (!hasValidTileSize()) {
        ShowTileSizeError();
        chkPreviewTiles.setChecked(false);
        return;
    }
    std::vector<TileRect> tiles;
    if (CalcTileCoord(tiles) < 1) {
        platform_.dialogs.showMessage(invalidTileConfigurationMessage());
        picCur.setPixels(preview_.image);
        return;
    }
    const PreviewGrid grid =
        previewGrid(tiles, GetNumTilesWide(), GetNumTilesHigh(), preview_.scale,
                    preview_.image->width(), preview_.image->height());
    preview_.crop = grid.crop;
    try {
        auto imgGrid = std::make_shared<Image>(Image::copyOf(preview_.image->view()));
        drawPreviewGrid(imgGrid->mutableView(), grid);
        picCur.setPixels(std::move(imgGrid));
        picCur.setOverlay(PictureOverlay{grid.crop.left, grid.crop.top, grid.crop.right,
                                         grid.crop.bottom, grid.columns, grid.rows});
        bPreviewOn = true;
    } catch (const std::exception&) {
        picCur.setPixels(preview_.image); // no memory for a second picture: better without the grid
    }
}

// Without the grid the crop is only pointed out: the hit test keeps to the one last drawn.
void frmMain::markCrop() {
    std::vector<TileRect> tiles;
    if (!hasValidTileSize() || CalcTileCoord(tiles) < 1) {
        picCur.setOverlay({});
        return;
    }
    const PreviewCrop crop =
        previewGrid(tiles, GetNumTilesWide(), GetNumTilesHigh(), preview_.scale,
                    preview_.image->width(), preview_.image->height())
            .crop;
    picCur.setOverlay(PictureOverlay{crop.left, crop.top, crop.right, crop.bottom, {}, {}});
}

void frmMain::UpdatePlacementLabels() {
    if (!bImgSelected) {
        lblLrValue.setCaption(noPlacement);
        lblTbValue.setCaption(noPlacement);
        return;
    }
    const Placement place =
        placement(lImgWidth, lImgHeight, preview_.scale, preview_.crop, preview_.pan);
    preview_.pan = place.pan;
    lblLrValue.setCaption(place.horizontal);
    lblTbValue.setCaption(place.vertical);
}

bool frmMain::IsInCropRect(int x, int y) const {
    return bImgSelected && preview_.crop.contains(x, y);
}

Pointer frmMain::pointerAt(int x, int y) const {
    return IsInCropRect(x, y) ? Pointer::crossHair : Pointer::arrow;
}

void frmMain::SetPointer(Pointer pointer) {
    setPointer(pointer);
}

void frmMain::picCur_MouseDown(MouseButton button, int x, int y) {
    if (button == MouseButton::left && IsInCropRect(x, y)) {
        preview_.drag = DragStart{x, y, preview_.pan};
        SetPointer(Pointer::move);
    }
}

void frmMain::picCur_MouseMove(int x, int y) {
    if (preview_.drag) {
        SetPointer(Pointer::move);
        DragPanTo(x, y);
    } else if (pointer() != Pointer::hourglass) {
        SetPointer(pointerAt(x, y));
    }
}

void frmMain::picCur_MouseUp(int x, int y) {
    if (preview_.drag) {
        SetPointer(pointerAt(x, y));
        DragPanTo(x, y);
        preview_.drag.reset();
    }
}

void frmMain::DragPanTo(int x, int y) {
    preview_.pan =
        dragPan(lImgWidth, lImgHeight, preview_.scale, preview_.crop, *preview_.drag, x, y);
    UpdatePlacementLabels();
    ShowMainPreview();
}

void frmMain::picCur_DoubleClick() {
    if (bImgSelected) {
        preview_.drag.reset();
        centreCrop();
    }
}

void frmMain::centreCrop() {
    preview_.pan = Pan{};
    UpdatePlacementLabels();
    ShowMainPreview();
}

void frmMain::ResetZoomAndPan() {
    if (!bImgSelected) {
        return;
    }
    preview_.drag.reset();
    scrZoom.setValue(scrZoom.minimum());
    centreCrop();
}

void frmMain::imgArrow_MouseDown(int x, int y) {
    if (!bImgSelected) {
        return;
    }
    arrowPad_.repeat = 0;
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

// The pads are hidden while they are rearranged, so that no two of them are seen at once.
void frmMain::SetArrowState(int direction) {
    const std::array<Picture*, 5> pads{&imgArrow, &imgArrow_Up, &imgArrow_right, &imgArrow_down,
                                       &imgArrow_left};
    for (Picture* pad : pads) {
        pad->setVisible(false);
    }
    for (std::size_t i = 0; i < pads.size(); ++i) {
        const bool home = static_cast<int>(i) == direction;
        pads[i]->setPlace(home ? arrowPad_.homeLeft : arrowPad_.homeLeft + outOfSight,
                          imgArrow.top());
    }
    arrowPad_.direction = direction;
    tmrImg.setInterval(arrowInterval);
    tmrImg.setEnabled(direction != arrowNone);
    for (Picture* pad : pads) {
        pad->setVisible(true);
    }
}

void frmMain::StepPan() {
    const PanStepResult step = stepPan(arrowPad_.direction, arrowPad_.repeat, preview_.pan);
    if (!step.stepped) {
        return;
    }
    preview_.pan = step.pan;
    ShowMainPreview();
    ++arrowPad_.repeat;
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
    const std::shared_ptr<const Image> photo = photo_.image; // it may be replaced while events run
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
    } catch (const std::exception&) { // out of memory, or no thread
        platform_.dialogs.showMessage(previewMemoryMessage());
    }
}

} // namespace veldara
