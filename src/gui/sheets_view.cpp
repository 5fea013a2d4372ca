// Sheets for printing: the page at the left, the poster beside it, the choices
// at the right.
#include "gui/accessibility.h"
#include "gui/dialog_view.h"
#include "gui/layout.h"
#include "gui/native_text.h"
#include "gui/views.h"
#include "sheets/frmSheets.h"

namespace veldara {

namespace {

constexpr int sheetWidth = 380;
constexpr int sheetHeight = 440;
constexpr int posterWidth = 280;
constexpr int posterHeight = 165;
constexpr int noteWidth = 270;
constexpr int noteLines = 5;
constexpr int fieldWidth = 90;

class SheetsView : public DialogView {
  public:
    SheetsView(frmSheets& model, wxWindow* parent);

  private:
    wxSizer* makeSheet();
    wxSizer* makePoster();
    wxSizer* makeChoices();

    frmSheets& model_;
};

SheetsView::SheetsView(frmSheets& model, wxWindow* parent)
    : DialogView(model, parent), model_(model) {
    const int gap = dialog()->FromDIP(spacing::group);
    wxSizer* sheet = makeSheet();
    wxSizer* poster = makePoster();
    wxSizer* choices = makeChoices();
    wxButton* print = bind().button(dialog(), model_.cmdPrint, 'r');
    wxButton* save = bind().button(dialog(), model_.cmdSavePdf, 'S');
    wxButton* close = bind().button(dialog(), model_.cmdClose, 'C');
    setDefault(save);

    auto* right = new wxBoxSizer(wxVERTICAL);
    right->Add(poster, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap));
    right->Add(choices, wxSizerFlags().Expand());
    auto* columns = new wxBoxSizer(wxHORIZONTAL);
    columns->Add(sheet, wxSizerFlags(3).Expand().Border(wxRIGHT, gap));
    columns->Add(right, wxSizerFlags(2).Expand());
    auto* contents = new wxBoxSizer(wxVERTICAL);
    contents->Add(columns, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap));
    contents->Add(buttonRow(*dialog(), {print, save, close}), wxSizerFlags().Expand());
    finish(contents);
}

wxSizer* SheetsView::makeSheet() {
    wxButton* previous = bind().button(dialog(), model_.cmdPrevious, '<');
    wxStaticText* label = bind().labelForNext(dialog(), model_.lblShown, 'P');
    wxChoice* shown = bind().choice(dialog(), model_.cmbShown);
    wxButton* next = bind().button(dialog(), model_.cmdNext, '>');
    setAccessibleName(*previous, nativeText(model_.cmdPrevious.toolTip()));
    setAccessibleName(*next, nativeText(model_.cmdNext.toolTip()));
    const wxSize narrow(dialog()->FromDIP(36), -1);
    previous->SetMinSize(narrow);
    next->SetMinSize(narrow);
    const int close = dialog()->FromDIP(spacing::close);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(label,
             wxSizerFlags().CentreVertical().Border(wxRIGHT, dialog()->FromDIP(spacing::column)));
    row->Add(previous, wxSizerFlags().CentreVertical().Border(wxRIGHT, close));
    row->Add(shown, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, close));
    row->Add(next, wxSizerFlags().CentreVertical());
    PictureBox* sheet = bind().picture(dialog(), model_.picSheet,
                                       dialog()->FromDIP(wxSize(sheetWidth, sheetHeight)),
                                       PictureBox::Keyboard::ignored, PictureBox::Ground::mat);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(row, wxSizerFlags().Expand().Border(wxBOTTOM, dialog()->FromDIP(spacing::row)));
    column->Add(sheet, wxSizerFlags(1).Expand());
    return column;
}

wxSizer* SheetsView::makePoster() {
    wxStaticText* label = bind().label(dialog(), model_.lblPoster);
    PictureBox* poster = bind().picture(dialog(), model_.picPoster,
                                        dialog()->FromDIP(wxSize(posterWidth, posterHeight)),
                                        PictureBox::Keyboard::ignored, PictureBox::Ground::mat);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(label, wxSizerFlags().Border(wxBOTTOM, dialog()->FromDIP(spacing::close)));
    column->Add(poster, wxSizerFlags(1).Expand());
    return column;
}

wxSizer* SheetsView::makeChoices() {
    const GroupSizer group(bind().frame(dialog(), model_.fraChoices), wxVERTICAL);
    wxWindow* box = group.box();
    const int row = dialog()->FromDIP(spacing::row);
    wxFlexGridSizer* rows = labelledRows(*dialog());
    wxStaticText* overlapLabel = bind().labelForNext(box, model_.lblOverlap, 'O');
    wxComboBox* overlap = bind().freeCombo(box, model_.cmbOverlap);
    setFieldLength(*overlap, fieldWidth);
    addRow(*rows, overlapLabel, overlap);
    wxStaticText* marksLabel = bind().labelForNext(box, model_.lblMarks, 'm');
    wxChoice* marks = bind().choice(box, model_.cmbMarks);
    addRow(*rows, marksLabel, marks);
    wxStaticText* sheetsLabel = bind().labelForNext(box, model_.lblSheets, 't');
    wxTextCtrl* sheets = bind().textBox(box, model_.txtSheets);
    setFieldLength(*sheets, fieldWidth);
    addRow(*rows, sheetsLabel, sheets);
    group.inner()->Add(rows, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    group.inner()->Add(bind().checkBox(box, model_.chkLabels, 'L'),
                       wxSizerFlags().Border(wxBOTTOM, row));
    group.inner()->Add(bind().checkBox(box, model_.chkGuide, 'g'),
                       wxSizerFlags().Border(wxBOTTOM, row));
    group.inner()->Add(bind().paragraph(box, model_.lblNote, noteWidth, noteLines),
                       wxSizerFlags().Expand());
    return group.outer();
}

} // namespace

std::unique_ptr<View> makeSheetsView(Window& model, wxWindow* parent) {
    return std::make_unique<SheetsView>(static_cast<frmSheets&>(model), parent);
}

} // namespace veldara
