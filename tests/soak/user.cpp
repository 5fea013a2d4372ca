#include "soak/user.h"

#include <utility>

namespace veldara::test {

void RandomUser::choosePhoto() {
    main_->lstFiles.userClick(pick(main_->lstFiles.count()));
}

void RandomUser::actOnce() {
    if (modal_) { // the windows below take no events
        tickProgress();
        return;
    }
    switch (pick(8)) {
    case 0:
    case 1:
        useTiles();
        break;
    case 2:
        useDialogs();
        break;
    case 3:
        main_->picCur.userResize(100 + pick(500), 80 + pick(400));
        main_->tmrResize.tick();
        break;
    default:
        useMouse();
        break;
    }
}

void RandomUser::useTiles() {
    switch (pick(7)) {
    case 0:
        main_->cmbTilesWide.userSelect(pick(5));
        break;
    case 1:
        main_->cmbTilesHigh.userSelect(pick(5));
        break;
    case 2:
        main_->cmbRotate.userSelect(pick(4));
        break;
    case 3:
        main_->chkRotateTiles.userSetChecked(pick(2) == 0);
        break;
    case 4:
        main_->chkPreviewTiles.userSetChecked(pick(2) == 0);
        break;
    case 5:
        main_->chkPrinterClips.userSetChecked(pick(2) == 0);
        break;
    default:
        main_->scrZoom.userSetValue(pick(401));
        break;
    }
}

void RandomUser::useMouse() {
    main_->picCur.userMouseDown(MouseButton::left, pick(main_->picCur.width()),
                                pick(main_->picCur.height()));
    for (int moves = pick(4); moves > 0; --moves) {
        main_->picCur.userMouseMove(pick(main_->picCur.width()), pick(main_->picCur.height()));
    }
    main_->picCur.userMouseUp(MouseButton::left, 0, 0);
    main_->imgArrow.userMouseDown(MouseButton::left, pick(100), pick(100));
    main_->tmrImg.tick();
    main_->imgArrow.userMouseUp(MouseButton::left, 0, 0);
}

void RandomUser::useDialogs() {
    switch (pick(4)) {
    case 0:
        main_->cmdEditPaperSize.userClick();
        break;
    case 1:
        main_->cmdConfig.userClick();
        break;
    case 2:
        main_->cmdLargePreview.userClick();
        break;
    default:
        main_->cmdSaveNow.userClick();
        break;
    }
}

void RandomUser::tickProgress() {
    if (progress_ != nullptr && !ticking_) { // a tick lets events run, and with them this one
        ticking_ = true;
        progress_->tmrProgBar.tick();
        ticking_ = false;
    }
}

void RandomUser::show(Window& window) {
    if (auto* progress = dynamic_cast<frmMsg*>(&window)) {
        progress_ = progress;
    } else if (auto* preview = dynamic_cast<frmPreview*>(&window)) {
        preview->userResize(200 + pick(800), 150 + pick(600));
    }
}

void RandomUser::hide(Window& window) {
    if (&window == progress_) {
        progress_ = nullptr;
    }
}

void RandomUser::showModal(Window& window) {
    const bool below = std::exchange(modal_, true);
    if (auto* save = dynamic_cast<frmSaveTiles*>(&window)) {
        saveTiles(*save);
    } else if (auto* paper = dynamic_cast<frmTileSize*>(&window)) {
        changePaper(*paper);
    } else if (auto* calibration = dynamic_cast<frmBtm*>(&window)) {
        changeProfile(*calibration);
    }
    if (window.visible()) {
        window.userClose();
    }
    modal_ = below;
}

void RandomUser::saveTiles(frmSaveTiles& dialog) {
    dialog.txtNewFolderName.userSetText("tiles" + std::to_string(pick(3)));
    switch (pick(3)) {
    case 0:
        dialog.opbBmp.userSelect();
        break;
    case 1:
        dialog.opbTif.userSelect();
        break;
    default:
        dialog.opbJpg.userSelect();
        break;
    }
    ++saves_;
    dialog.cmdSaveNow.userClick();
}

void RandomUser::changePaper(frmTileSize& dialog) {
    if (pick(2) == 0) {
        dialog.opbInches.userSelect();
    } else {
        dialog.opbMm.userSelect();
    }
    dialog.lstPaperSize.userClick(pick(8));
    dialog.cmbMargins[static_cast<std::size_t>(pick(4))].userSelect(pick(30));
    dialog.cmdOk.userClick();
}

void RandomUser::changeProfile(frmBtm& dialog) {
    dialog.lstConfigurations.userClick(pick(dialog.lstConfigurations.count()));
    dialog.cmbTopEdge.userSelect(pick(17));
    dialog.cmbLeftEdge.userSelect(pick(17));
    dialog.cmdOk.userClick();
}

} // namespace veldara::test
