// The save dialog: where the tiles go, what they are called, of which type they are.
#include "gui/dialog_view.h"
#include "gui/views.h"
#include "output/frmSaveTiles.h"

namespace veldara {

namespace {

constexpr int fieldWidth = 300;
constexpr int folderListHeight = 190;
constexpr int pathWidth = 520;
constexpr int pathLines = 4;

class SaveTilesView : public DialogView {
  public:
    SaveTilesView(frmSaveTiles& model, wxWindow* parent);

  private:
    wxSizer* makeLocation(wxWindow* box);
    wxSizer* makeNames(wxWindow* box);
    wxSizer* makeFileType(wxWindow* box);
    wxSizer* makeSaveInfo();
    wxSizer* makePath();

    frmSaveTiles& model_;
};

SaveTilesView::SaveTilesView(frmSaveTiles& model, wxWindow* parent)
    : DialogView(model, parent), model_(model) {
    wxStaticText* step1 = bind().label(dialog(), model_.lblStep1);
    makeHeading(*step1);
    wxSizer* info = makeSaveInfo();
    wxStaticText* step2 = bind().label(dialog(), model_.lblStep2);
    makeHeading(*step2);
    wxSizer* path = makePath();
    wxButton* save = bind().button(dialog(), model_.cmdSaveNow, 'S');
    wxButton* close = bind().button(dialog(), model_.cmdClose, 'C');
    setDefault(save);

    const int gap = dialog()->FromDIP(spacing::group);
    auto* contents = new wxBoxSizer(wxVERTICAL);
    contents->Add(step1, wxSizerFlags().Border(wxBOTTOM, dialog()->FromDIP(8)));
    contents->Add(info, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap));
    contents->Add(step2, wxSizerFlags().Border(wxBOTTOM, dialog()->FromDIP(8)));
    contents->Add(path, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
    contents->Add(buttonRow(*dialog(), {save, close}), wxSizerFlags().Expand());
    finish(contents);
}

wxSizer* SaveTilesView::makeSaveInfo() {
    const GroupSizer group(bind().frame(dialog(), model_.fraSaveInfo), wxHORIZONTAL);
    wxSizer* location = makeLocation(group.box());
    wxSizer* names = makeNames(group.box());
    wxSizer* type = makeFileType(group.box());
    auto* right = new wxBoxSizer(wxVERTICAL);
    right->Add(names, wxSizerFlags().Expand().Border(wxBOTTOM, dialog()->FromDIP(spacing::group)));
    right->AddStretchSpacer();
    right->Add(type, wxSizerFlags().Expand());
    group.inner()->Add(
        location, wxSizerFlags(1).Expand().Border(wxRIGHT, dialog()->FromDIP(spacing::windowEdge)));
    group.inner()->Add(right, wxSizerFlags().Expand());
    return group.outer();
}

wxSizer* SaveTilesView::makeLocation(wxWindow* box) {
    wxChoice* drive = bind().driveList(box, model_.drvTile);
    bind().mnemonic('D', *drive);
    wxStaticText* label = bind().labelForNext(box, model_.lblLocation, 'L');
    FolderListBox* folders = bind().folderList(
        box, model_.dirTile, dialog()->FromDIP(wxSize(fieldWidth, folderListHeight)));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(label, wxSizerFlags().Border(wxBOTTOM, dialog()->FromDIP(spacing::close)));
    column->Add(drive, wxSizerFlags().Expand().Border(wxBOTTOM, dialog()->FromDIP(spacing::row)));
    column->Add(folders, wxSizerFlags(1).Expand());
    return column;
}

wxSizer* SaveTilesView::makeNames(wxWindow* box) {
    wxStaticText* folderLabel = bind().labelForNext(box, model_.lblNewFolderName, 'N');
    wxTextCtrl* folder = bind().textBox(box, model_.txtNewFolderName);
    wxStaticText* baseLabel = bind().labelForNext(box, model_.lblBaseFileName, 'a');
    wxTextCtrl* base = bind().textBox(box, model_.txtBaseFileName);
    setFieldLength(*folder, fieldWidth);
    setFieldLength(*base, fieldWidth);
    const int close = dialog()->FromDIP(spacing::close);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(folderLabel, wxSizerFlags().Border(wxBOTTOM, close));
    column->Add(folder,
                wxSizerFlags().Expand().Border(wxBOTTOM, dialog()->FromDIP(spacing::group)));
    column->Add(baseLabel, wxSizerFlags().Border(wxBOTTOM, close));
    column->Add(base, wxSizerFlags().Expand());
    return column;
}

wxSizer* SaveTilesView::makeFileType(wxWindow* box) {
    const GroupSizer group(bind().frame(box, model_.fraFileFormat), wxVERTICAL);
    wxRadioButton* bmp = bind().option(group.box(), model_.opbBmp, 'B', true);
    wxRadioButton* tif = bind().option(group.box(), model_.opbTif, 'T', false);
    wxRadioButton* jpg = bind().option(group.box(), model_.opbJpg, 'J', false);
    const int row = dialog()->FromDIP(spacing::row);
    group.inner()->Add(bmp, wxSizerFlags().Border(wxBOTTOM, row));
    group.inner()->Add(tif, wxSizerFlags().Border(wxBOTTOM, row));
    group.inner()->Add(jpg, wxSizerFlags());
    return group.outer();
}

// The path has room for as many lines as a long one takes, so that the dialog keeps its size then.
wxSizer* SaveTilesView::makePath() {
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(bind().label(dialog(), model_.lblPathCaption),
                wxSizerFlags().Border(wxBOTTOM, dialog()->FromDIP(spacing::close)));
    column->Add(bind().paragraph(dialog(), model_.lblPath, pathWidth, pathLines),
                wxSizerFlags().Expand());
    return column;
}

} // namespace

std::unique_ptr<View> makeSaveTilesView(Window& model, wxWindow* parent) {
    return std::make_unique<SaveTilesView>(static_cast<frmSaveTiles&>(model), parent);
}

} // namespace veldara
