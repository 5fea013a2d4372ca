// The main window, in the order a person works: the photo at the left, what it looks like as a
// poster in the middle, paper and tiles at the right, and the files at the bottom.
#include "app/frmMain.h"
#include "gui/file_drop.h"
#include "gui/layout.h"
#include "gui/views.h"

#include <algorithm>

#include <wx/display.h>
#include <wx/frame.h>
#include <wx/menu.h>
#include <wx/panel.h>
#include <wx/statline.h>

namespace veldara {

namespace {

constexpr int browserWidth = 236;
constexpr int arrowPadSide = 76;

class MainView : public View {
  public:
    MainView(frmMain& model, wxWindow* parent);

  private:
    void makeMenus();
    wxSizer* makeBrowser();
    wxSizer* makePrintInfo();
    wxSizer* makeTiles();
    wxSizer* makeFigures();
    wxSizer* makePreviewBar();
    wxSizer* makePlacement();
    wxSizer* makeZoomRow(wxWindow* box);
    PictureBox* makeArrowPad(wxWindow* box);
    void panByKeys(PictureBox* box);
    void zoomByWheel();
    wxSizer* makeSaveRow();
    void setFirstSize();
    void addValueRow(wxFlexGridSizer& rows, wxWindow* box, Label& caption, const char* captionName,
                     Label& value, const char* valueName);

    frmMain& model_;
    wxPanel* panel_;
    PictureBox* photo_ = nullptr;
};

MainView::MainView(frmMain& model, wxWindow* parent)
    : View(model, new wxFrame(parent, wxID_ANY, wxString())), model_(model),
      panel_(new wxPanel(&native())) {
    makeMenus();
    // Made in the order in which Tab goes through them.
    wxSizer* browser = makeBrowser();
    wxSizer* printInfo = makePrintInfo();
    wxSizer* tiles = makeTiles();
    wxSizer* previewBar = makePreviewBar();
    photo_ = bind().picture(panel_, model_.picCur, "picCur", panel_->FromDIP(wxSize(360, 240)),
                            PictureBox::Keyboard::taken, PictureBox::Ground::mat);
    panByKeys(photo_);
    zoomByWheel();
    wxSizer* placement = makePlacement();
    wxSizer* figures = makeFigures();
    wxSizer* save = makeSaveRow();

    const int gap = panel_->FromDIP(spacing::group);
    auto* middle = new wxBoxSizer(wxVERTICAL);
    middle->Add(previewBar, wxSizerFlags().Expand().Border(wxBOTTOM, panel_->FromDIP(8)));
    middle->Add(photo_, wxSizerFlags(1).Expand().Border(wxBOTTOM, panel_->FromDIP(8)));
    middle->Add(placement, wxSizerFlags().Expand());

    auto* right = new wxBoxSizer(wxVERTICAL);
    right->Add(printInfo, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
    right->Add(tiles, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
    right->Add(figures, wxSizerFlags().Expand());
    right->AddStretchSpacer();

    auto* columns = new wxBoxSizer(wxHORIZONTAL);
    columns->Add(browser, wxSizerFlags().Expand().Border(wxRIGHT, gap));
    columns->Add(middle, wxSizerFlags(1).Expand().Border(wxRIGHT, gap));
    columns->Add(right, wxSizerFlags().Expand());

    auto* all = new wxBoxSizer(wxVERTICAL);
    all->Add(columns, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap));
    all->Add(new wxStaticLine(panel_), wxSizerFlags().Expand().Border(wxBOTTOM, gap));
    all->Add(save, wxSizerFlags().Expand());
    setContents(*panel_, all);

    bind().timer(model_.tmrImg);
    bind().timer(model_.tmrLoadingImg);
    bind().timer(model_.tmrAppEnd);
    bind().timer(model_.tmrResize);
    takeDroppedFiles(*panel_, [this](const std::string& path) { model_.openPath(path); });
    setFirstSize();
}

void MainView::makeMenus() {
    auto* bar = new wxMenuBar;
    static_cast<wxFrame&>(native()).SetMenuBar(bar); // a bar of no window takes no menu's state
    auto* file = new wxMenu;
    bind().menuItem(*file, model_.mnuExit, "mnuExit", "Ctrl+Q");
    auto* tools = new wxMenu;
    bind().menuItem(*tools, model_.mnuPaperSize, "mnuPaperSize");
    bind().menuItem(*tools, model_.mnuEdgeClip, "mnuEdgeClip");
    auto* help = new wxMenu;
    bind().menuItem(*help, model_.mnuContent, "mnuContent", "F1");
    bind().menuItem(*help, model_.mnuAbout, "mnuAbout");
    bind().menu(*bar, file, model_.mnuFile);
    bind().menu(*bar, tools, model_.mnuTools);
    bind().menu(*bar, help, model_.mnuHelp);
}

wxSizer* MainView::makeBrowser() {
    wxButton* desktop = bind().button(panel_, model_.cmdDesktop, "cmdDesktop", 'D');
    wxButton* documents = bind().button(panel_, model_.cmdMyDoc, "cmdMyDoc", 'M');
    wxChoice* drive = bind().driveList(panel_, model_.Drive1, "Drive1");
    FolderListBox* folders =
        bind().folderList(panel_, model_.Dir1, "Dir1", panel_->FromDIP(wxSize(browserWidth, 120)));
    wxChoice* filter = bind().choice(panel_, model_.cmbFileType, "cmbFileType");
    wxListBox* files = bind().listBox(panel_, model_.lstFiles, "lstFiles",
                                      panel_->FromDIP(wxSize(browserWidth, 120)));
    wxStaticText* heading = bind().labelFor(*files, panel_, model_.lblStep1, "lblStep1", 'c');
    makeHeading(*heading);
    drive->SetMinSize(wxSize(panel_->FromDIP(browserWidth), -1));
    filter->SetMinSize(wxSize(panel_->FromDIP(browserWidth), -1));

    const int row = panel_->FromDIP(spacing::row);
    auto* places = new wxBoxSizer(wxHORIZONTAL);
    places->Add(desktop, wxSizerFlags(1).Border(wxRIGHT, row));
    places->Add(documents, wxSizerFlags(1));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(heading, wxSizerFlags().Expand().Border(wxBOTTOM, panel_->FromDIP(8)));
    column->Add(places, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    column->Add(drive, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    column->Add(folders->framed(), wxSizerFlags(2).Expand().Border(wxBOTTOM, row));
    column->Add(filter, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    column->Add(files, wxSizerFlags(3).Expand());
    return column;
}

void MainView::addValueRow(wxFlexGridSizer& rows, wxWindow* box, Label& caption,
                           const char* captionName, Label& value, const char* valueName) {
    addRow(rows, bind().label(box, caption, captionName),
           bind().valueLabel(box, value, valueName, "000.00 x 000.00 Inches"));
}

wxSizer* MainView::makePrintInfo() {
    wxStaticText* heading = bind().label(panel_, model_.lblStep2, "lblStep2");
    makeHeading(*heading);
    const GroupSizer group(bind().frame(panel_, model_.fraPrintInfo, "fraPrintInfo"), wxVERTICAL);
    wxStaticBox* box = group.box();
    wxFlexGridSizer* rows = labelledRows(*panel_);
    addValueRow(*rows, box, model_.lblPaperNameCaption, "lblPaperNameCaption", model_.lblPaperName,
                "lblPaperName");
    addValueRow(*rows, box, model_.lblPaperSizeCaption, "lblPaperSizeCaption", model_.lblPaperSize,
                "lblPaperSize");
    addValueRow(*rows, box, model_.lblTileSizeCaption, "lblTileSizeCaption", model_.lblTileSize,
                "lblTileSize");
    addValueRow(*rows, box, model_.lblUnitsCaption, "lblUnitsCaption", model_.lblUnits, "lblUnits");
    wxButton* editPaper = bind().button(box, model_.cmdEditPaperSize, "cmdEditPaperSize", 'E');
    wxCheckBox* clips = bind().checkBox(box, model_.chkPrinterClips, "chkPrinterClips", 'A');
    wxChoice* profile = bind().choice(box, model_.cmbCurBtm, "cmbCurBtm");
    profile->SetMinSize(wxSize(panel_->FromDIP(140), -1));
    wxButton* editProfiles = bind().button(box, model_.cmdConfig, "cmdConfig", 'i');

    const int row = panel_->FromDIP(spacing::row);
    auto* paper = new wxBoxSizer(wxHORIZONTAL);
    paper->Add(rows, wxSizerFlags(1));
    paper->Add(editPaper, wxSizerFlags().Bottom());
    auto* calibration = new wxBoxSizer(wxHORIZONTAL);
    calibration->Add(profile, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, row));
    calibration->Add(editProfiles, wxSizerFlags().CentreVertical());
    group.inner()->Add(paper, wxSizerFlags().Expand());
    group.inner()->Add(new wxStaticLine(box),
                       wxSizerFlags().Expand().Border(wxTOP | wxBOTTOM, row));
    group.inner()->Add(clips, wxSizerFlags().Border(wxBOTTOM, row));
    group.inner()->Add(calibration, wxSizerFlags().Expand());

    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(heading, wxSizerFlags().Border(wxBOTTOM, panel_->FromDIP(8)));
    column->Add(group.outer(), wxSizerFlags().Expand());
    return column;
}

wxSizer* MainView::makeTiles() {
    const GroupSizer group(bind().frame(panel_, model_.fraNumberTiles, "fraNumberTiles"),
                           wxVERTICAL);
    wxStaticBox* box = group.box();
    wxChoice* wide = bind().choice(box, model_.cmbTilesWide, "cmbTilesWide");
    wxStaticText* wideLabel = bind().labelFor(*wide, box, model_.lblTilesWide, "lblTilesWide", 'W');
    wxChoice* high = bind().choice(box, model_.cmbTilesHigh, "cmbTilesHigh");
    wxStaticText* highLabel = bind().labelFor(*high, box, model_.lblTilesHigh, "lblTilesHigh", 'g');
    wxCheckBox* lock = bind().checkBox(box, model_.chkLockWh, "chkLockWh", 'L');
    wxCheckBox* turn = bind().checkBox(box, model_.chkRotateTiles, "chkRotateTiles", 'R');
    wxStaticText* heading = bind().labelFor(*wide, panel_, model_.lblStep3, "lblStep3", 'j');
    makeHeading(*heading);

    sameWidth({wide, high});
    const int row = panel_->FromDIP(spacing::row);
    const int column = panel_->FromDIP(spacing::column);
    auto* counts = new wxBoxSizer(wxHORIZONTAL);
    counts->Add(wideLabel, wxSizerFlags().CentreVertical().Border(wxRIGHT, column));
    counts->Add(wide, wxSizerFlags().CentreVertical().Border(wxRIGHT, 2 * column));
    counts->Add(highLabel, wxSizerFlags().CentreVertical().Border(wxRIGHT, column));
    counts->Add(high, wxSizerFlags().CentreVertical());
    group.inner()->Add(counts, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    group.inner()->Add(lock, wxSizerFlags().Border(wxBOTTOM, row));
    group.inner()->Add(turn, wxSizerFlags());

    auto* all = new wxBoxSizer(wxVERTICAL);
    all->Add(heading, wxSizerFlags().Border(wxBOTTOM, panel_->FromDIP(8)));
    all->Add(group.outer(), wxSizerFlags().Expand());
    return all;
}

wxSizer* MainView::makeFigures() {
    const GroupSizer group(bind().frame(panel_, model_.fraPosterSize, "fraPosterSize"), wxVERTICAL);
    wxStaticBox* box = group.box();
    wxFlexGridSizer* rows = labelledRows(*panel_);
    addValueRow(*rows, box, model_.lblFinalSizeCaption, "lblFinalSizeCaption", model_.lblFinalSize,
                "lblFinalSize");
    addValueRow(*rows, box, model_.lblMPixCaption, "lblMPixCaption", model_.lblMPixVal,
                "lblMPixVal");
    addValueRow(*rows, box, model_.lblResolutionCaption, "lblResolutionCaption",
                model_.lblResolution, "lblResolution");
    addValueRow(*rows, box, model_.lblQualityCaption, "lblQualityCaption", model_.lblQuality,
                "lblQuality");
    group.inner()->Add(rows, wxSizerFlags().Expand());
    return group.outer();
}

wxSizer* MainView::makePreviewBar() {
    wxChoice* rotate = bind().choice(panel_, model_.cmbRotate, "cmbRotate");
    wxCheckBox* showTiles = bind().checkBox(panel_, model_.chkPreviewTiles, "chkPreviewTiles", 'o');
    wxButton* preview = bind().button(panel_, model_.cmdLargePreview, "cmdLargePreview", 'P');
    const int column = panel_->FromDIP(spacing::group);
    auto* bar = new wxBoxSizer(wxHORIZONTAL);
    bar->Add(rotate, wxSizerFlags().CentreVertical().Border(wxRIGHT, column));
    bar->Add(showTiles, wxSizerFlags().CentreVertical());
    bar->AddStretchSpacer();
    bar->Add(preview, wxSizerFlags().CentreVertical());
    return bar;
}

wxSizer* MainView::makePlacement() {
    const GroupSizer group(bind().frame(panel_, model_.fraTilePlacement, "fraTilePlacement"),
                           wxHORIZONTAL);
    wxStaticBox* box = group.box();
    wxSizer* zoom = makeZoomRow(box);
    PictureBox* pad = makeArrowPad(box);
    const int column = panel_->FromDIP(spacing::column);
    auto* labels = new wxBoxSizer(wxHORIZONTAL);
    labels->Add(bind().labelFor(*photo_, box, model_.lblLrCaption, "lblLrCaption", 'n'),
                wxSizerFlags().Border(wxRIGHT, column));
    labels->Add(bind().valueLabel(box, model_.lblLrValue, "lblLrValue", "(right 100%)"),
                wxSizerFlags(1).Border(wxRIGHT, column));
    labels->Add(bind().labelFor(*photo_, box, model_.lblTbCaption, "lblTbCaption", 'V'),
                wxSizerFlags().Border(wxRIGHT, column));
    labels->Add(bind().valueLabel(box, model_.lblTbValue, "lblTbValue", "(down 100%)"),
                wxSizerFlags(1));
    auto* rows = new wxBoxSizer(wxVERTICAL);
    rows->AddStretchSpacer();
    rows->Add(zoom, wxSizerFlags().Expand().Border(wxBOTTOM, panel_->FromDIP(spacing::row)));
    rows->Add(labels, wxSizerFlags().Expand());
    rows->AddStretchSpacer();
    group.inner()->Add(
        pad, wxSizerFlags().CentreVertical().Border(wxRIGHT, panel_->FromDIP(spacing::group)));
    group.inner()->Add(rows, wxSizerFlags(1).Expand());
    return group.outer();
}

wxSizer* MainView::makeZoomRow(wxWindow* box) {
    wxSlider* zoom = bind().slider(box, model_.scrZoom, "scrZoom");
    const int column = panel_->FromDIP(spacing::column);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(bind().labelFor(*zoom, box, model_.lblZoom, "lblZoom", 'Z'),
             wxSizerFlags().CentreVertical().Border(wxRIGHT, column));
    row->Add(zoom, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, column));
    row->Add(bind().label(box, model_.lbl4x, "lbl4x"),
             wxSizerFlags().CentreVertical().Border(wxRIGHT, column));
    row->Add(bind().valueLabel(box, model_.lblZoomAmount, "lblZoomAmount", "(400%)"),
             wxSizerFlags().CentreVertical());
    return row;
}

PictureBox* MainView::makeArrowPad(wxWindow* box) {
    PictureBox* pad =
        bind().pictureStack(box,
                            {&model_.imgArrow, &model_.imgArrow_Up, &model_.imgArrow_right,
                             &model_.imgArrow_down, &model_.imgArrow_left},
                            "imgArrow", panel_->FromDIP(wxSize(arrowPadSide, arrowPadSide)),
                            PictureBox::Keyboard::taken);
    panByKeys(pad);
    return pad;
}

// An arrow key is a press on the pad's arm of that direction; one short press is one step.
void MainView::panByKeys(PictureBox* box) {
    box->onArrowDown = [this](int key) {
        const int middle = model_.imgArrow.width() / 2;
        const int edge = model_.imgArrow.height() / 10;
        const int opposite = model_.imgArrow.height() - edge;
        const int x = key == WXK_LEFT ? edge : key == WXK_RIGHT ? opposite : middle;
        const int y = key == WXK_UP ? edge : key == WXK_DOWN ? opposite : middle;
        model_.imgArrow.userMouseDown(MouseButton::left, x, y);
        model_.tmrImg.tick();
    };
    box->onArrowUp = [this] { model_.imgArrow.userMouseUp(MouseButton::left, 0, 0); };
}

// A notch of the wheel over the photo is a page of the zoom bar; finer wheels give parts of it.
void MainView::zoomByWheel() {
    photo_->Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
        if (event.GetWheelAxis() != wxMOUSE_WHEEL_VERTICAL || photo_->HasCapture()) {
            return;
        }
        const double notches = 1.0 * event.GetWheelRotation() / event.GetWheelDelta();
        ScrollBar& zoom = model_.scrZoom;
        zoom.userSetValue(zoom.value() + wxRound(notches * zoom.largeChange()));
    });
}

wxSizer* MainView::makeSaveRow() {
    wxStaticText* heading = bind().label(panel_, model_.lblStep4, "lblStep4");
    makeHeading(*heading);
    wxButton* save = bind().button(panel_, model_.cmdSaveNow, "cmdSaveNow", 'S');
    wxButton* quit = bind().button(panel_, model_.cmdQuit, "cmdQuit", 'x');
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(quit, wxSizerFlags().CentreVertical());
    row->AddStretchSpacer();
    row->Add(heading,
             wxSizerFlags().CentreVertical().Border(wxRIGHT, panel_->FromDIP(spacing::group)));
    row->Add(save, wxSizerFlags().CentreVertical());
    return row;
}

// As large as is comfortable on this screen; the photo takes whatever is left over.
void MainView::setFirstSize() {
    wxTopLevelWindow& frame = native();
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(panel_, wxSizerFlags(1).Expand());
    frame.SetSizer(sizer);
    sizer->SetSizeHints(&frame);
    const wxSize smallest = frame.GetMinSize();
    const wxSize room = wxDisplay(&frame).GetClientArea().GetSize();
    const wxSize wanted = frame.FromDIP(wxSize(1180, 780));
    frame.SetSize(std::max(smallest.x, std::min(wanted.x, room.x * 95 / 100)),
                  std::max(smallest.y, std::min(wanted.y, room.y * 92 / 100)));
    frame.Centre();
}

} // namespace

std::unique_ptr<View> makeMainView(Window& model, wxWindow* parent) {
    return std::make_unique<MainView>(static_cast<frmMain&>(model), parent);
}

} // namespace veldara
