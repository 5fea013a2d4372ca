// The dialog that chooses the poster by its size: the wish, the sheets and the poster on its wall
// at the left, the choices with their pictures at the right.
#include "choice/frmPosterSize.h"
#include "gui/dialog_view.h"
#include "gui/views.h"

namespace veldara {

namespace {

constexpr int lengthWidth = 70;
// As long as an ordinary choice with the most to say.
constexpr const char* longChoice = "1.  2 x 2 sheets, on their side: 17.81 x 11.81 inches, Good "
                                   "from a distance, 93 % of the photo";
constexpr int resultWidth = 516;
constexpr int listEdges = 16; // what a list takes for itself at the left and the right
constexpr int listHeight = 160;
constexpr int galleryHeight = 230;
constexpr int roomWidth = 250;
constexpr int roomHeight = 170;

class PosterSizeView : public DialogView {
  public:
    PosterSizeView(frmPosterSize& model, wxWindow* parent);

  private:
    wxSizer* makeWish();
    wxSizer* makePaper();
    wxSizer* makeRoom();
    wxSizer* makeChoices();
    wxSizer* makeButtons();
    void addLength(wxFlexGridSizer& rows, wxWindow* box, OptionButton& option, char letter,
                   TextBox& length, Label& units, bool first);

    frmPosterSize& model_;
    wxListBox* list_ = nullptr;
};

PosterSizeView::PosterSizeView(frmPosterSize& model, wxWindow* parent)
    : DialogView(model, parent), model_(model) {
    const int gap = dialog()->FromDIP(spacing::group);
    auto* left = new wxBoxSizer(wxVERTICAL);
    left->Add(makeWish(), wxSizerFlags().Expand().Border(wxBOTTOM, gap));
    left->Add(makePaper(), wxSizerFlags().Expand().Border(wxBOTTOM, gap));
    left->Add(makeRoom(), wxSizerFlags(1).Expand());

    auto* columns = new wxBoxSizer(wxHORIZONTAL);
    columns->Add(left, wxSizerFlags().Expand().Border(wxRIGHT, gap));
    columns->Add(makeChoices(), wxSizerFlags(1).Expand());

    auto* contents = new wxBoxSizer(wxVERTICAL);
    contents->Add(columns, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap));
    contents->Add(makeButtons(), wxSizerFlags().Expand());
    narrow(*list_, contents);
    finish(contents);
}

void PosterSizeView::addLength(wxFlexGridSizer& rows, wxWindow* box, OptionButton& option,
                               char letter, TextBox& length, Label& units, bool first) {
    wxRadioButton* button = bind().option(box, option, letter, first);
    wxTextCtrl* field = bind().textBox(box, length);
    setFieldLength(*field, lengthWidth);
    auto* value = new wxBoxSizer(wxHORIZONTAL);
    value->Add(field,
               wxSizerFlags().CentreVertical().Border(wxRIGHT, dialog()->FromDIP(spacing::close)));
    // Inches stay that word; millimetres have their centimetres beside them.
    const char* sample = units.caption() == "inches" ? "inches" : "mm  = 1000.0 cm";
    value->Add(bind().valueLabel(box, units, sample), wxSizerFlags().CentreVertical());
    addRow(rows, button, value);
}

wxSizer* PosterSizeView::makeWish() {
    const GroupSizer group(bind().frame(dialog(), model_.fraWish), wxVERTICAL);
    wxStaticBox* box = group.box();
    wxFlexGridSizer* rows = labelledRows(*dialog());
    addLength(*rows, box, model_.opbWidth, 'W', model_.txtWidth, model_.lblWidthUnits, true);
    addLength(*rows, box, model_.opbHeight, 'H', model_.txtHeight, model_.lblHeightUnits, false);
    group.inner()->Add(rows,
                       wxSizerFlags().Expand().Border(wxBOTTOM, dialog()->FromDIP(spacing::row)));
    group.inner()->Add(bind().option(box, model_.opbQuality, 'l', false),
                       wxSizerFlags().Border(wxBOTTOM, dialog()->FromDIP(spacing::close)));
    wxChoice* quality = bind().choice(box, model_.cmbQuality);
    bind().mnemonic('q', *quality);
    group.inner()->Add(quality, wxSizerFlags().Expand());
    return group.outer();
}

wxSizer* PosterSizeView::makePaper() {
    const GroupSizer group(bind().frame(dialog(), model_.fraPaper), wxVERTICAL);
    wxStaticBox* box = group.box();
    const int row = dialog()->FromDIP(spacing::row);
    group.inner()->Add(bind().option(box, model_.opbThisPaper, 'T', true),
                       wxSizerFlags().Border(wxBOTTOM, row));
    group.inner()->Add(bind().option(box, model_.opbAnyPaper, 'A', false),
                       wxSizerFlags().Border(wxBOTTOM, row));
    group.inner()->Add(bind().checkBox(box, model_.chkOnTheirSide, 's'), wxSizerFlags());
    return group.outer();
}

wxSizer* PosterSizeView::makeRoom() {
    auto* row = new wxBoxSizer(wxVERTICAL);
    row->Add(bind().picture(dialog(), model_.picRoom,
                            dialog()->FromDIP(wxSize(roomWidth, roomHeight)),
                            PictureBox::Keyboard::ignored, PictureBox::Ground::window),
             wxSizerFlags(1).Expand());
    return row;
}

wxSizer* PosterSizeView::makeChoices() {
    const GroupSizer group(bind().frame(dialog(), model_.fraChoices), wxVERTICAL);
    wxStaticBox* box = group.box();
    const int row = dialog()->FromDIP(spacing::row);
    list_ =
        bind().listBox(box, model_.lstChoices,
                       wxSize(dialog()->GetTextExtent(longChoice).x + dialog()->FromDIP(listEdges),
                              textLength(*dialog(), listHeight)));
    bind().mnemonic('b', *list_);
    group.inner()->Add(list_, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    group.inner()->Add(bind().picture(box, model_.picChoices,
                                      dialog()->FromDIP(wxSize(resultWidth, galleryHeight)),
                                      PictureBox::Keyboard::ignored, PictureBox::Ground::list),
                       wxSizerFlags(1).Expand().Border(wxBOTTOM, row));
    group.inner()->Add(bind().paragraph(box, model_.lblResult, resultWidth, 2),
                       wxSizerFlags().Expand());
    return group.outer();
}

wxSizer* PosterSizeView::makeButtons() {
    wxButton* ok = bind().button(dialog(), model_.cmdOk, 'O');
    wxButton* cancel = bind().button(dialog(), model_.cmdCancel, 'C');
    setDefault(ok);
    return buttonRow(*dialog(), {ok, cancel});
}

} // namespace

std::unique_ptr<View> makePosterSizeView(Window& model, wxWindow* parent) {
    return std::make_unique<PosterSizeView>(static_cast<frmPosterSize&>(model), parent);
}

} // namespace veldara
