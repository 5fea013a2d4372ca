#include "paper/frmTileSize.h"

#include "controls/scoped_flag.h"
#include "paper/margin_lists.h"
#include "paper/paper_line.h"

#include <algorithm>

namespace veldara {

frmTileSize::frmTileSize(Platform& platform, Screen& screen, PaperOwner& owner)
    : Window("frmTileSize", screen), platform_(platform), owner_(owner) {
    fillTexts();
    bindHandlers();
    initPaperSizes();
}

// Opening and closing

void frmTileSize::OpenWith(const std::string& sRegLine, bool marginsLocked) {
    unload();
    load();
    setMarginLock(marginsLocked);
    setPrefFromRegLine(sRegLine);
    showModal();
}

void frmTileSize::ApplyPaper(const std::string& sRegLine, bool marginsLocked, int paper) {
    unload();
    load();
    setMarginLock(marginsLocked);
    setPrefFromRegLine(sRegLine);
    lstPaperSize.userClick(paper);
    cmdOk_Click();
}

void frmTileSize::initPaperSizes() {
    applied_ = buildPaperTables();
    current_ = applied_;
    showAll();
}

void frmTileSize::setPrefFromRegLine(const std::string& sRegLine) {
    veldara::setPrefFromRegLine(applied_, sRegLine, owner_.getConstMinTileSize(),
                                owner_.getConstMaxTileSize(), platform_.numberStyle);
    current_ = applied_;
    showAll();
}

void frmTileSize::getWhuValues(double& dGetTileWidth, double& dGetTileHeight,
                               double& dGetPaperWidth, double& dGetPaperHeight, int& iGetUnits,
                               std::string& sGetPaperName) const {
    const PaperRecord& paper = current_.current();
    dGetTileWidth = paper.tileWidth();
    dGetTileHeight = paper.tileHeight();
    dGetPaperWidth = paper.width;
    dGetPaperHeight = paper.height;
    iGetUnits = static_cast<int>(current_.units);
    sGetPaperName = paper.name;
}

void frmTileSize::setMarginLock(bool locked) {
    const ScopedFlag flag(loading_);
    chkLock.setChecked(locked);
}

void frmTileSize::loadHandler() {
    current_ = applied_;
    showAll();
}

// The dialog is only hidden; what was entered but not applied is discarded.
void frmTileSize::close() {
    current_ = applied_;
    hide();
}

void frmTileSize::closeBox() {
    close();
}

// Showing

void frmTileSize::showAll() {
    const ScopedFlag flag(loading_);
    (current_.units == Units::inches ? opbInches : opbMm).setSelected(true);
    showMarginLists();
    showPapers();
    showEntries();
    showResults();
}

void frmTileSize::showMarginLists() {
    lblMarginUnits.setCaption(marginUnitsText(current_.units));
    for (Label& label : lblUnits) {
        label.setCaption(paperUnitsText(current_.units));
    }
    if (listedUnits_ == current_.units) {
        return;
    }
    listedUnits_ = current_.units;
    const std::vector<std::string> margins = marginList(current_.units, platform_.numberStyle);
    for (ComboBox& box : cmbMargins) {
        box.setItems(margins);
    }
}

void frmTileSize::showPapers() {
    const std::vector<PaperRecord>& papers = current_.catalogue(current_.units);
    std::vector<std::string> names;
    std::transform(papers.begin(), papers.end(), std::back_inserter(names),
                   [](const PaperRecord& paper) { return paper.name; });
    if (names != lstPaperSize.items()) {
        lstPaperSize.setItems(std::move(names));
    }
    lstPaperSize.setListIndex(current_.index(current_.units));
}

void frmTileSize::showEntries() {
    const PaperRecord& paper = current_.current();
    const bool custom = current_.isCustom(current_.units, current_.index(current_.units));
    txtWidth.setText(paperLengthText(paper.width, current_.units, platform_.numberStyle));
    txtHeight.setText(paperLengthText(paper.height, current_.units, platform_.numberStyle));
    txtWidth.setEnabled(custom);
    txtHeight.setEnabled(custom);
    setMarginTexts(paper.margins);
}

void frmTileSize::setMarginTexts(const Margins& margins) {
    const ScopedFlag flag(loading_);
    for (std::size_t edge = 0; edge < margins.size(); ++edge) {
        cmbMargins[edge].setText(
            paperLengthText(margins[edge], current_.units, platform_.numberStyle));
    }
}

void frmTileSize::showResults() {
    const PaperEntries entries = readEntries();
    const PaperCheck checked = check(entries, current_.units);
    std::string paper = invalidPaperResult;
    std::string tile = "-";
    if (checked.fault != PaperFault::paper) {
        paper =
            paperResultText(*entries.width, *entries.height, current_.units, platform_.numberStyle);
        tile = invalidMarginResult;
    }
    if (checked.ok()) {
        tile = paperResultText(entries.tileWidth(), entries.tileHeight(), current_.units,
                               platform_.numberStyle);
    }
    lblSizeWithBorders.setCaption(paper);
    lblSizeWithoutBorders.setCaption(tile);
    showBorderless(entries);
}

void frmTileSize::showBorderless(const PaperEntries& entries) {
    const ScopedFlag flag(loading_);
    chkBorderless.setChecked(
        std::all_of(entries.margins.begin(), entries.margins.end(),
                    [](const std::optional<double>& margin) { return margin == 0.0; }));
}

// Entries and their checks

PaperEntries frmTileSize::readEntries() const {
    std::array<std::string, 4> texts;
    std::transform(cmbMargins.begin(), cmbMargins.end(), texts.begin(),
                   [](const ComboBox& box) { return box.text(); });
    PaperEntries entries =
        readPaperEntries(txtWidth.text(), txtHeight.text(), texts, platform_.numberStyle);
    const PaperRecord& paper = current_.current();
    const auto keepStored = [this](std::optional<double>& entry, const std::string& text,
                                   double stored) {
        if (text == paperLengthText(stored, current_.units, platform_.numberStyle)) {
            entry = stored;
        }
    };
    keepStored(entries.width, txtWidth.text(), paper.width);
    keepStored(entries.height, txtHeight.text(), paper.height);
    for (std::size_t edge = 0; edge < texts.size(); ++edge) {
        keepStored(entries.margins[edge], texts[edge], paper.margins[edge]);
    }
    return entries;
}

PaperCheck frmTileSize::check(const PaperEntries& entries, Units units) const {
    return checkPaper(entries, units, owner_.getConstMinTileSize(), owner_.getConstMaxTileSize(),
                      platform_.numberStyle);
}

bool frmTileSize::isUsable(const PaperRecord& paper, Units units) {
    const PaperCheck checked = check(entriesOf(paper), units);
    if (!checked.ok()) {
        platform_.dialogs.showMessage(invalidPaperMessage(checked));
    }
    return checked.ok();
}

void frmTileSize::entriesChanged() {
    const PaperEntries entries = readEntries();
    if (check(entries, current_.units).ok()) {
        store(entries);
    }
    showResults();
}

// The entries must have passed the check.
void frmTileSize::store(const PaperEntries& entries) {
    PaperRecord& paper = current_.current();
    if (current_.isCustom(current_.units, current_.index(current_.units))) {
        paper.width = *entries.width;
        paper.height = *entries.height;
    }
    for (std::size_t edge = 0; edge < paper.margins.size(); ++edge) {
        paper.margins[edge] = *entries.margins[edge];
    }
}

// Events

void frmTileSize::opbInches_Click() {
    chooseUnits(Units::inches);
}

void frmTileSize::opbMm_Click() {
    chooseUnits(Units::millimetres);
}

void frmTileSize::chooseUnits(Units units) {
    if (loading_ || units == current_.units) {
        return;
    }
    const PaperRecord& paper =
        current_.catalogue(units)[static_cast<std::size_t>(current_.index(units))];
    if (isUsable(paper, units)) {
        current_.units = units;
        showAll();
        return;
    }
    const ScopedFlag flag(loading_);
    (current_.units == Units::inches ? opbInches : opbMm).setSelected(true);
}

void frmTileSize::lstPaperSize_Click() {
    const int chosen = lstPaperSize.listIndex();
    int& current = current_.index(current_.units);
    if (loading_ || chosen < 0 || chosen == current) {
        return;
    }
    const PaperRecord& paper = current_.catalogue(current_.units)[static_cast<std::size_t>(chosen)];
    if (isUsable(paper, current_.units)) {
        current = chosen;
        showAll();
        return;
    }
    const ScopedFlag flag(loading_);
    lstPaperSize.setListIndex(current);
}

void frmTileSize::txtWidth_Change() {
    if (!loading_) {
        entriesChanged();
    }
}

void frmTileSize::txtHeight_Change() {
    if (!loading_) {
        entriesChanged();
    }
}

void frmTileSize::cmbMargins_Change(int Index) {
    if (loading_) {
        return;
    }
    if (chkLock.checked()) {
        const ScopedFlag flag(loading_);
        const auto edge = static_cast<std::size_t>(Index);
        cmbMargins[(edge + 2) % 4].setText(cmbMargins[edge].text()); // the opposite edge
    }
    entriesChanged();
}

void frmTileSize::chkLock_Click() {
    if (loading_ || !chkLock.checked()) {
        return;
    }
    {
        const ScopedFlag flag(loading_);
        cmbMargins[edgeBottom].setText(cmbMargins[edgeTop].text());
        cmbMargins[edgeRight].setText(cmbMargins[edgeLeft].text());
    }
    entriesChanged();
}

// Unchecking restores the paper's default margins. A paper without any stays borderless.
void frmTileSize::chkBorderless_Click() {
    if (loading_) {
        return;
    }
    if (chkBorderless.checked()) {
        cmdBorderless_Click();
    } else {
        cmdReset_Click();
    }
}

void frmTileSize::cmdBorderless_Click() {
    setMarginTexts({});
    entriesChanged();
}

void frmTileSize::cmdReset_Click() {
    setMarginTexts(current_.current().defaultMargins);
    entriesChanged();
}

void frmTileSize::cmdOk_Click() {
    if (apply()) {
        close();
    }
}

void frmTileSize::cmdApply_Click() {
    apply();
}

void frmTileSize::cmdCancel_Click() {
    close();
}

bool frmTileSize::apply() {
    const PaperEntries entries = readEntries();
    const PaperCheck checked = check(entries, current_.units);
    if (!checked.ok()) {
        platform_.dialogs.showMessage(invalidPaperMessage(checked));
        return false;
    }
    store(entries);
    applied_.units = current_.units;
    applied_.inchIndex = current_.inchIndex;
    applied_.millimetreIndex = current_.millimetreIndex;
    applied_.current() = current_.current();

    const PaperRecord& paper = applied_.current();
    int accepted = 0;
    owner_.setNewTileVals(paper.name, static_cast<int>(applied_.units), paper.tileWidth(),
                          paper.tileHeight(), paper.width, paper.height,
                          makePaperRegLine(applied_, platform_.numberStyle), accepted);
    owner_.setWhMarginLockedVal(chkLock.value());
    return true;
}

} // namespace veldara
