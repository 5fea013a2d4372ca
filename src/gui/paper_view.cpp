// The paper and margins dialog: units, paper, margins, and the print size that results.
#include "gui/dialog_view.h"
#include "gui/views.h"
#include "paper/frmTileSize.h"

#include <array>
#include <string>

#include <wx/statline.h>

namespace veldara {

namespace {

constexpr int paperListWidth = 230;
constexpr int paperListHeight = 250;
constexpr int sizeBoxWidth = 90;

class PaperView : public DialogView {
  public:
    PaperView(frmTileSize& model, wxWindow* parent);

  private:
    wxSizer* makeUnits();
    wxSizer* makePaper();
    wxSizer* makePaperSize(wxWindow* box);
    wxSizer* makeMargins();
    wxSizer* makeMarginRows(wxWindow* box);
    wxSizer* makeResults();
    wxSizer* makeButtons();

    frmTileSize& model_;
};

PaperView::PaperView(frmTileSize& model, wxWindow* parent)
    : DialogView(model, parent), model_(model) {
    wxSizer* units = makeUnits();
    wxSizer* paper = makePaper();
    wxSizer* margins = makeMargins();
    wxSizer* results = makeResults();
    wxSizer* buttons = makeButtons();

    const int gap = dialog()->FromDIP(spacing::group);
    auto* left = new wxBoxSizer(wxVERTICAL);
    left->Add(units, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
    left->Add(paper, wxSizerFlags(1).Expand());
    auto* right = new wxBoxSizer(wxVERTICAL);
    right->Add(margins, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap));
    right->Add(results, wxSizerFlags().Expand());
    auto* columns = new wxBoxSizer(wxHORIZONTAL);
    columns->Add(left, wxSizerFlags(1).Expand().Border(wxRIGHT, gap));
    columns->Add(right, wxSizerFlags(1).Expand());
    auto* contents = new wxBoxSizer(wxVERTICAL);
    contents->Add(columns, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap));
    contents->Add(buttons, wxSizerFlags().Expand());
    finish(contents);
}

wxSizer* PaperView::makeUnits() {
    const GroupSizer group(bind().frame(dialog(), model_.fraUnits), wxHORIZONTAL);
    group.inner()->Add(bind().option(group.box(), model_.opbInches, 'I', true),
                       wxSizerFlags().Border(wxRIGHT, dialog()->FromDIP(spacing::windowEdge)));
    group.inner()->Add(bind().option(group.box(), model_.opbMm, 'M', false));
    return group.outer();
}

wxSizer* PaperView::makePaper() {
    const GroupSizer group(bind().frame(dialog(), model_.fraPaperSize), wxVERTICAL);
    wxListBox* papers = bind().listBox(group.box(), model_.lstPaperSize,
                                       dialog()->FromDIP(wxSize(paperListWidth, paperListHeight)));
    bind().mnemonic('P', *papers);
    papers->SetFocus();
    group.inner()->Add(
        papers, wxSizerFlags(1).Expand().Border(wxBOTTOM, dialog()->FromDIP(spacing::group)));
    group.inner()->Add(makePaperSize(group.box()), wxSizerFlags().Expand());
    return group.outer();
}

wxSizer* PaperView::makePaperSize(wxWindow* box) {
    wxFlexGridSizer* rows = labelledRows(*dialog(), 3);
    const auto add = [&](Label& label, char letter, TextBox& text, std::size_t unit) {
        rows->Add(bind().labelForNext(box, label, letter), wxSizerFlags().CentreVertical());
        wxTextCtrl* field = bind().textBox(box, text);
        setFieldLength(*field, sizeBoxWidth);
        rows->Add(field, wxSizerFlags().Expand());
        rows->Add(bind().valueLabel(box, model_.lblUnits[unit], "Inches"),
                  wxSizerFlags().CentreVertical());
    };
    add(model_.lblWidth, 'W', model_.txtWidth, 0);
    add(model_.lblHeight, 'H', model_.txtHeight, 1);
    return rows;
}

wxSizer* PaperView::makeMargins() {
    const GroupSizer group(bind().frame(dialog(), model_.fraMargins), wxVERTICAL);
    wxStaticBox* box = group.box();
    wxSizer* rows = makeMarginRows(box);
    wxCheckBox* lock = bind().checkBox(box, model_.chkLock, 'k');
    wxCheckBox* borderless = bind().checkBox(box, model_.chkBorderless, 'd');
    wxButton* borderlessNow = bind().button(box, model_.cmdBorderless, 'S');
    wxButton* reset = bind().button(box, model_.cmdReset, 'R');
    const int row = dialog()->FromDIP(spacing::row);
    const int group2 = dialog()->FromDIP(spacing::group);
    group.inner()->Add(
        bind().valueLabel(box, model_.lblMarginUnits, "(Margin sizes in MILLIMETERS)"),
        wxSizerFlags().Expand().Border(wxBOTTOM, row));
    group.inner()->Add(rows, wxSizerFlags().Expand().Border(wxBOTTOM, group2));
    group.inner()->Add(lock, wxSizerFlags().Border(wxBOTTOM, row));
    group.inner()->Add(borderless, wxSizerFlags().Border(wxBOTTOM, group2));
    group.inner()->AddStretchSpacer();
    group.inner()->Add(borderlessNow, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    group.inner()->Add(reset, wxSizerFlags().Expand());
    return group.outer();
}

wxSizer* PaperView::makeMarginRows(wxWindow* box) {
    constexpr std::array<char, 4> letters{'T', 'g', 'B', 'L'};
    wxFlexGridSizer* rows = labelledRows(*dialog());
    for (std::size_t edge = 0; edge < model_.cmbMargins.size(); ++edge) {
        wxStaticText* label = bind().labelForNext(box, model_.lblMargins[edge], letters[edge]);
        wxComboBox* margin = bind().freeCombo(box, model_.cmbMargins[edge]);
        setFieldLength(*margin, sizeBoxWidth);
        addRow(*rows, label, margin);
    }
    return rows;
}

wxSizer* PaperView::makeResults() {
    const GroupSizer group(bind().frame(dialog(), model_.fraResults), wxVERTICAL);
    wxStaticBox* box = group.box();
    const wxString sample = "Invalid margin size selected";
    const int close = dialog()->FromDIP(spacing::close);
    const auto add = [&](Label& caption, Label& value, int below) {
        group.inner()->Add(bind().label(box, caption), wxSizerFlags().Border(wxBOTTOM, close));
        wxStaticText* figure = bind().liveLabel(box, caption, value, sample);
        makeHeading(*figure);
        group.inner()->Add(figure, wxSizerFlags().Expand().Border(wxBOTTOM, below));
    };
    add(model_.lblSizeWithBordersCaption, model_.lblSizeWithBorders,
        dialog()->FromDIP(spacing::row));
    add(model_.lblSizeWithoutBordersCaption, model_.lblSizeWithoutBorders, 0);
    return group.outer();
}

wxSizer* PaperView::makeButtons() {
    wxButton* ok = bind().button(dialog(), model_.cmdOk, 'O');
    wxButton* apply = bind().button(dialog(), model_.cmdApply, 'A');
    wxButton* cancel = bind().button(dialog(), model_.cmdCancel, 'C');
    setDefault(ok);
    return buttonRow(*dialog(), {ok, apply, cancel});
}

} // namespace

std::unique_ptr<View> makePaperView(Window& model, wxWindow* parent) {
    return std::make_unique<PaperView>(static_cast<frmTileSize&>(model), parent);
}

} // namespace veldara
