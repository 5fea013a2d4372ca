#include "choice/frmPosterSize.h"

#include "choice/choice_drawing.h"
#include "controls/scoped_flag.h"
#include "layout/output_figures.h"
#include "platform/text/characters.h"

#include <algorithm>

namespace veldara {
namespace {

constexpr std::size_t mostChoices =
    std::size_t{frmPosterSize::galleryColumns} * frmPosterSize::galleryRows;
constexpr int smallestCell = 24;   // pixels; there is nothing to be seen in less
constexpr int thumbnailSide = 480; // pixels; enough for a cell on a screen of small pixels

double perUnit(Units units) {
    return units == Units::inches ? 1 : millimetresPerInch;
}

} // namespace

frmPosterSize::frmPosterSize(Platform& platform, Screen& screen, PosterSizeOwner& owner)
    : Window("frmPosterSize", screen), platform_(platform), owner_(owner) {
    fillTexts();
    bindHandlers();
}

void frmPosterSize::fillTexts() {
    setCaption("Choose by Poster Size");
    fraWish.setCaption("How large shall it be?");
    opbWidth.setCaption("Width:");
    opbHeight.setCaption("Height:");
    opbQuality.setCaption("As large as it stays:");
    txtWidth.setCaption("Width");
    txtHeight.setCaption("Height");
    cmbQuality.setCaption("Quality");
    lstChoices.setCaption("Choices");
    txtWidth.setToolTip("Width of the poster on the wall; its height follows the photo");
    txtHeight.setToolTip("Height of the poster on the wall; its width follows the photo");
    cmbQuality.setToolTip("Quality that the poster must keep");
    cmbQuality.setItems(qualityWords());
    fraPaper.setCaption("Sheets");
    opbAnyPaper.setCaption("Any paper");
    opbAnyPaper.setToolTip("Try all papers of the current units, each with its margins");
    chkOnTheirSide.setCaption("May lie on their side");
    chkOnTheirSide.setToolTip("Try sheets turned by 90 degrees too");
    fraChoices.setCaption("Choices, best first");
    lstChoices.setToolTip("Posters that come nearest to the wish");
    picChoices.setToolTip("The sheets on your photo; what is cut off is dimmed");
    picRoom.setToolTip("The poster beside a person of 1.75 m and a sofa of 2 m");
    cmdOk.setCaption("OK");
    cmdCancel.setCaption("Cancel");
}

void frmPosterSize::bindHandlers() {
    OptionButton::join({&opbWidth, &opbHeight, &opbQuality});
    OptionButton::join({&opbThisPaper, &opbAnyPaper});
    for (OptionButton* option : {&opbWidth, &opbHeight, &opbQuality}) {
        option->onClick = [this] { opbWish_Click(); };
    }
    txtWidth.onChange = [this] { txtWidth_Change(); };
    txtHeight.onChange = [this] { txtHeight_Change(); };
    cmbQuality.onClick = [this] { cmbQuality_Click(); };
    opbThisPaper.onClick = [this] { papers_Click(); };
    opbAnyPaper.onClick = [this] { papers_Click(); };
    chkOnTheirSide.onClick = [this] { papers_Click(); };
    lstChoices.onClick = [this] { lstChoices_Click(); };
    picChoices.onResize = [this] { drawPictures(); };
    picChoices.onGroundChange = [this] { drawGalleryPicture(); };
    picRoom.onResize = [this] { drawPictures(); };
    picChoices.onMouseDown = [this](MouseButton, int x, int y) { picChoices_MouseDown(x, y); };
    cmdOk.onClick = [this] { cmdOk_Click(); };
    cmdCancel.onClick = [this] { cmdCancel_Click(); };
}

void frmPosterSize::Open() {
    std::optional<PosterState> state = owner_.posterState();
    if (!state) {
        return;
    }
    unload();
    state_ = std::move(*state);
    thumbnail_ = choiceThumbnail(state_.photo ? state_.photo->view() : PixelView{}, thumbnailSide,
                                 thumbnailSide);
    showState();
    showModal();
    state_.photo.reset(); // it is held only while the dialog is open
}

void frmPosterSize::showState() {
    {
        const ScopedFlag filling(filling_);
        opbThisPaper.setCaption("This paper (" +
                                state_.papers[static_cast<std::size_t>(state_.paper)].name + ")");
        opbThisPaper.setSelected(true);
        chkOnTheirSide.setChecked(true);
        opbWidth.setSelected(true);
        cmbQuality.setListIndex(2); // "Good", which most posters should be
        txtWidth.setText(lengthNumber(state_.width, state_.units, platform_.numberStyle));
    }
    txtWidth_Change();
}

// The events

void frmPosterSize::opbWish_Click() {
    if (!filling_) {
        update();
    }
}

void frmPosterSize::follow(const TextBox& entered, TextBox& other, double ratio) {
    const ScopedFlag filling(filling_);
    const std::optional<double> length = readNumber(entered.text(), platform_.numberStyle);
    other.setText(length && *length > 0 ? lengthNumber(*length / perUnit(state_.units) * ratio,
                                                       state_.units, platform_.numberStyle)
                                        : "");
}

void frmPosterSize::txtWidth_Change() {
    if (filling_) {
        return;
    }
    follow(txtWidth, txtHeight,
           static_cast<double>(state_.limits.photoHeight) / state_.limits.photoWidth);
    {
        const ScopedFlag filling(filling_);
        opbWidth.setSelected(true);
    }
    update();
}

void frmPosterSize::txtHeight_Change() {
    if (filling_) {
        return;
    }
    follow(txtHeight, txtWidth,
           static_cast<double>(state_.limits.photoWidth) / state_.limits.photoHeight);
    {
        const ScopedFlag filling(filling_);
        opbHeight.setSelected(true);
    }
    update();
}

void frmPosterSize::cmbQuality_Click() {
    if (filling_) {
        return;
    }
    {
        const ScopedFlag filling(filling_);
        opbQuality.setSelected(true);
    }
    update();
}

void frmPosterSize::papers_Click() {
    if (!filling_) {
        update();
    }
}

void frmPosterSize::lstChoices_Click() {
    if (!filling_) {
        showResult();
    }
}

void frmPosterSize::picChoices_MouseDown(int x, int y) {
    const int index =
        galleryIndexAt(x, y, lstChoices.count(), galleryColumns, cellWidth(), cellHeight());
    if (index >= 0) {
        lstChoices.setListIndex(index);
    }
}

void frmPosterSize::cmdOk_Click() {
    const PosterChoice* choice = chosen();
    if (choice == nullptr) {
        return;
    }
    const int paper = opbAnyPaper.selected() ? choice->paper : state_.paper;
    hide();
    owner_.applyPosterChoice(paper, choice->tilesWide, choice->tilesHigh, choice->tilesTurned);
}

void frmPosterSize::cmdCancel_Click() {
    hide();
}

// From the wish to what is shown

PosterWish frmPosterSize::wish() const {
    PosterWish wish;
    if (opbQuality.selected()) {
        wish.quality = cmbQuality.text();
        return wish;
    }
    const TextBox& entered = opbWidth.selected() ? txtWidth : txtHeight;
    const std::optional<double> length = readNumber(entered.text(), platform_.numberStyle);
    (opbWidth.selected() ? wish.width : wish.height) = length.value_or(0) / perUnit(state_.units);
    return wish;
}

void frmPosterSize::update() {
    showUnits();
    std::vector<PaperRecord> records = state_.papers;
    if (!opbAnyPaper.selected()) {
        records = {state_.papers[static_cast<std::size_t>(state_.paper)]};
    } else if (state_.paper + 1 < static_cast<int>(records.size())) {
        records.pop_back(); // the custom paper exists only while it is the current one
    }
    papers_ = offeredPapers(records, state_.units, state_.trims);
    state_.limits.sheetsTurn = chkOnTheirSide.checked();
    choices_ = choosePoster(wish(), state_.limits, papers_, mostChoices);
    showChoices();
    showResult();
}

void frmPosterSize::showUnits() {
    const auto unitsText = [this](const TextBox& box) -> std::string {
        if (state_.units == Units::inches) {
            return "inches";
        }
        const std::optional<double> length = readNumber(box.text(), platform_.numberStyle);
        return length
                   ? "mm  = " + formatNumber(*length / 10, "##0.0", platform_.numberStyle) + " cm"
                   : "mm";
    };
    lblWidthUnits.setCaption(unitsText(txtWidth));
    lblHeightUnits.setCaption(unitsText(txtHeight));
}

void frmPosterSize::showChoices() {
    const ScopedFlag filling(filling_);
    std::vector<std::string> lines;
    for (const PosterChoice& choice : choices_.best) {
        lines.push_back(
            std::to_string(lines.size() + 1) + ".  " +
            choiceRow(choice, state_.limits, papers_, state_.units, platform_.numberStyle));
    }
    if (lines != lstChoices.items()) {
        lstChoices.setItems(std::move(lines));
    }
    if (lstChoices.count() > 0) {
        lstChoices.setListIndex(0);
    }
}

const PosterChoice* frmPosterSize::chosen() const {
    const int index = lstChoices.listIndex();
    return index < 0 ? nullptr : &choices_.best[static_cast<std::size_t>(index)];
}

void frmPosterSize::showResult() {
    const PosterChoice* choice = chosen();
    cmdOk.setEnabled(choice != nullptr);
    lblResult.setCaption(
        choice == nullptr
            ? choiceProblemText(choices_, wish(), state_.limits, papers_, state_.units,
                                platform_.numberStyle)
            : std::to_string(choice->sheets) + (choice->sheets == 1 ? " sheet, " : " sheets, ") +
                  resolutionText(choice->dotsPerInch, state_.units, platform_.numberStyle) + "; " +
                  shareText(choice->paperCutAway) + " of the paper is cut away");
    drawPictures();
}

void frmPosterSize::drawPictures() {
    drawGalleryPicture();
    drawRoomPicture();
}

void frmPosterSize::drawGalleryPicture() {
    if (thumbnail_.empty() || cellWidth() < smallestCell || cellHeight() < smallestCell) {
        return;
    }
    const Image photo = choiceThumbnail(thumbnail_.view(), cellWidth() - cellWidth() / 10,
                                        cellHeight() - cellHeight() / 4);
    std::vector<Image> pictures;
    for (const PosterChoice& choice : choices_.best) {
        pictures.push_back(drawSheets(photo.view(), layoutOf(choice, state_.limits, papers_)));
    }
    picChoices.setPixels(
        std::make_shared<Image>(drawGallery(pictures, lstChoices.listIndex(), galleryColumns,
                                            cellWidth(), cellHeight(), picChoices.ground())));
}

void frmPosterSize::drawRoomPicture() {
    const PosterChoice* choice = chosen();
    if (choice == nullptr) {
        picRoom.setPixels(nullptr);
        return;
    }
    if (picRoom.width() < smallestCell || picRoom.height() < smallestCell) {
        return;
    }
    PosterLayout small = layoutOf(*choice, state_.limits, papers_);
    small.photoWidth = thumbnail_.width();
    small.photoHeight = thumbnail_.height();
    const CropRect crop = cropRect(small);
    picRoom.setPixels(std::make_shared<Image>(
        drawRoom(thumbnail_.view().cut(crop.left, crop.top, std::max(1, crop.width),
                                       std::max(1, crop.height)),
                 choice->width, choice->height, picRoom.width(), picRoom.height())));
}

} // namespace veldara
