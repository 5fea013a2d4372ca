// The edge calibration dialog: the test print, the profiles, and what is left of the print.
#include "calibration/frmBtm.h"
#include "gui/dialog_view.h"
#include "gui/views.h"

#include <wx/statline.h>

namespace veldara {

namespace {

constexpr int textWidth = 790;
constexpr int profileListHeight = 100;

class CalibrationView : public DialogView {
  public:
    CalibrationView(frmBtm& model, wxWindow* parent);

  private:
    wxStaticText* makeParagraph(Label& model);
    wxStaticText* makeStep(Label& model);
    wxSizer* makeTestPrint();
    wxSizer* makeProfiles();
    wxSizer* makeEdges();

    frmBtm& model_;
};

CalibrationView::CalibrationView(frmBtm& model, wxWindow* parent)
    : DialogView(model, parent), model_(model) {
    wxSizer* testPrint = makeTestPrint();
    wxStaticText* step2 = makeStep(model_.lblStep2);
    wxStaticText* words = makeParagraph(model_.lblStep2Desc);
    wxSizer* profiles = makeProfiles();
    wxSizer* edges = makeEdges();
    wxButton* close = bind().button(dialog(), model_.cmdOk, 'C');
    setDefault(close);

    const int gap = dialog()->FromDIP(spacing::group);
    auto* contents = new wxBoxSizer(wxVERTICAL);
    contents->Add(testPrint, wxSizerFlags().Expand());
    contents->Add(new wxStaticLine(dialog()),
                  wxSizerFlags().Expand().Border(wxTOP | wxBOTTOM, gap));
    contents->Add(step2, wxSizerFlags().Border(wxBOTTOM, dialog()->FromDIP(8)));
    contents->Add(words, wxSizerFlags().Border(wxBOTTOM, dialog()->FromDIP(8)));
    contents->Add(profiles, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
    contents->Add(edges, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
    contents->Add(buttonRow(*dialog(), {close}), wxSizerFlags().Expand());
    finish(contents);
}

wxStaticText* CalibrationView::makeStep(Label& model) {
    wxStaticText* heading = bind().label(dialog(), model);
    makeHeading(*heading);
    return heading;
}

wxStaticText* CalibrationView::makeParagraph(Label& model) {
    wxStaticText* paragraph = bind().label(dialog(), model);
    wrapText(*paragraph, textWidth);
    return paragraph;
}

wxSizer* CalibrationView::makeTestPrint() {
    auto* column = new wxBoxSizer(wxVERTICAL);
    const int gap = dialog()->FromDIP(8);
    column->Add(makeStep(model_.lblStep1), wxSizerFlags().Border(wxBOTTOM, gap));
    column->Add(makeParagraph(model_.lblStep1Desc), wxSizerFlags().Border(wxBOTTOM, gap));
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->Add(bind().button(dialog(), model_.cmdGenerateTest, 'T'),
                 wxSizerFlags().Border(wxRIGHT, dialog()->FromDIP(spacing::close)));
    buttons->Add(bind().button(dialog(), model_.cmdPrintTest, 'i'), wxSizerFlags());
    column->Add(buttons, wxSizerFlags());
    return column;
}

wxSizer* CalibrationView::makeProfiles() {
    wxStaticText* label = bind().labelForNext(dialog(), model_.lblConfigurations, 'P');
    wxListBox* list = bind().listBox(dialog(), model_.lstConfigurations,
                                     dialog()->FromDIP(wxSize(200, profileListHeight)));
    wxButton* add = bind().button(dialog(), model_.cmdNew, 'N');
    wxButton* rename = bind().button(dialog(), model_.cmdRename, 'R');
    wxButton* remove = bind().button(dialog(), model_.cmdDel, 'D');
    sameWidth({add, rename, remove});
    const int row = dialog()->FromDIP(spacing::close);
    auto* buttons = new wxBoxSizer(wxVERTICAL);
    buttons->Add(add, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    buttons->Add(rename, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    buttons->Add(remove, wxSizerFlags().Expand());
    auto* both = new wxBoxSizer(wxHORIZONTAL);
    both->Add(list, wxSizerFlags(1).Expand().Border(wxRIGHT, dialog()->FromDIP(spacing::column)));
    both->Add(buttons, wxSizerFlags());
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(label, wxSizerFlags().Border(wxBOTTOM, dialog()->FromDIP(spacing::close)));
    column->Add(both, wxSizerFlags(1).Expand());
    return column;
}

wxSizer* CalibrationView::makeEdges() {
    wxFlexGridSizer* rows = labelledRows(*dialog(), 3);
    rows->AddGrowableCol(2);
    const auto add = [&](Label& label, char letter, ComboBox& combo, Label& words) {
        rows->Add(bind().labelForNext(dialog(), label, letter), wxSizerFlags().CentreVertical());
        wxChoice* stripes = bind().choice(dialog(), combo);
        rows->Add(stripes, wxSizerFlags().CentreVertical().Expand());
        rows->Add(
            bind().liveLabel(dialog(), label, words, "Printer cuts off  15/64 inches of image"),
            wxSizerFlags(1).CentreVertical().Expand());
    };
    add(model_.lblTopEdge, 'o', model_.cmbTopEdge, model_.lblTopEdgeDesc);
    add(model_.lblRightEdge, 'g', model_.cmbRightEdge, model_.lblRightEdgeDesc);
    add(model_.lblBottomEdge, 'B', model_.cmbBottomEdge, model_.lblBottomEdgeDesc);
    add(model_.lblLeftEdge, 'L', model_.cmbLeftEdge, model_.lblLeftEdgeDesc);
    return rows;
}

} // namespace

std::unique_ptr<View> makeCalibrationView(Window& model, wxWindow* parent) {
    return std::make_unique<CalibrationView>(static_cast<frmBtm&>(model), parent);
}

} // namespace veldara
