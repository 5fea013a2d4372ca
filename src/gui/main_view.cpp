// The main window, in the order a person works: the photo at the left, what it looks like as a
// poster in the middle, paper and tiles at the right, and the files at the bottom.
#include "app/frmMain.h"
#include "gui/copy_menu.h"
#include "gui/file_drop.h"
#include "gui/folder_watch.h"
#include "gui/inner_container.h"
#include "gui/layout.h"
#include "gui/views.h"
#include "layout/window_place.h"

#include <algorithm>
#include <optional>
#include <vector>

#include <wx/display.h>
#include <wx/frame.h>
#include <wx/menu.h>
#include <wx/panel.h>
#include <wx/scrolwin.h>
#include <wx/splitter.h>
#include <wx/statline.h>

namespace veldara {

namespace {

constexpr int browserWidth = 236; // at the first start
constexpr int narrowestBrowser = 200;
constexpr int arrowPadSide = 76;
constexpr int frameBorders = 12; // of a window, left and right
constexpr int frameHeads = 64;   // title, menus and the lower border

std::vector<ScreenRect> usableScreens() {
    std::vector<ScreenRect> screens;
    for (unsigned i = 0; i < wxDisplay::GetCount(); ++i) {
        const wxRect area = wxDisplay(i).GetClientArea();
        screens.push_back({area.x, area.y, area.width, area.height});
    }
    return screens;
}

class MainView : public View {
  public:
    MainView(frmMain& model, wxWindow* parent);
    ~MainView() override;
    MainView(const MainView&) = delete;
    MainView& operator=(const MainView&) = delete;

  private:
    void makeMenus();
    wxSizer* makeBrowser();
    wxSizer* makePrintInfo();
    wxSizer* makeTiles();
    wxSizer* makeFigures();
    void fitFigures();
    wxSizer* makePreviewBar();
    wxSizer* makePlacement();
    wxSizer* makeZoomRow(wxWindow* box);
    PictureBox* makeArrowPad(wxWindow* box);
    void panByKeys(PictureBox* box);
    void zoomByWheel();
    wxSizer* makeSaveRow();
    void split(wxSizer* browser, wxSizer* work);
    void keepRoomForBothSides();
    void fitSplitter();
    void setFirstSize();
    void bindShortcuts();
    void offerCopy();
    void notePlace();
    void addValueRow(wxFlexGridSizer& rows, wxWindow* box, Label& caption, Label& value,
                     const char* sample);

    frmMain& model_;
    wxScrolledWindow* all_; // scrolls where the window is smaller than its contents
    wxSplitterWindow* splitter_;
    wxPanel* browser_;
    wxPanel* panel_; // of everything right of the splitter
    wxFlexGridSizer* figures_ = nullptr;
    PictureBox* photo_ = nullptr;
    FolderWatch folderWatch_;
    WindowPlace place_; // as the user left it
};

MainView::MainView(frmMain& model, wxWindow* parent)
    : View(model, new wxFrame(parent, wxID_ANY, wxString())), model_(model),
      all_(new InnerContainer<wxScrolledWindow>(&native())),
      splitter_(new InnerContainer<wxSplitterWindow>(all_, wxID_ANY, wxDefaultPosition,
                                                     wxDefaultSize, wxSP_LIVE_UPDATE)),
      browser_(new InnerContainer<wxPanel>(splitter_)),
      panel_(new InnerContainer<wxPanel>(splitter_)) {
    makeMenus();
    // Made in the order in which Tab goes through them.
    wxSizer* browser = makeBrowser();
    wxSizer* printInfo = makePrintInfo();
    wxSizer* tiles = makeTiles();
    wxSizer* previewBar = makePreviewBar();
    photo_ = bind().picture(panel_, model_.picCur, panel_->FromDIP(wxSize(240, 120)),
                            PictureBox::Keyboard::taken, PictureBox::Ground::mat);
    photo_->dimOutside(model_.mnuDimOutside.checked());
    panByKeys(photo_);
    zoomByWheel();
    wxSizer* placement = makePlacement();
    wxSizer* figures = makeFigures();
    wxSizer* save = makeSaveRow();

    const int gap = panel_->FromDIP(spacing::group);
    const int row = panel_->FromDIP(spacing::row);
    auto* middle = new wxBoxSizer(wxVERTICAL);
    middle->Add(previewBar, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    middle->Add(photo_, wxSizerFlags(1).Expand().Border(wxBOTTOM, row));
    middle->Add(placement, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    middle->Add(figures, wxSizerFlags().Expand());

    auto* right = new wxBoxSizer(wxVERTICAL);
    right->Add(printInfo, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
    right->Add(tiles, wxSizerFlags().Expand());
    right->AddStretchSpacer();

    auto* columns = new wxBoxSizer(wxHORIZONTAL);
    columns->Add(middle, wxSizerFlags(1).Expand().Border(wxRIGHT, gap));
    columns->Add(right, wxSizerFlags().Expand());
    split(browser, columns);

    auto* rows = new wxBoxSizer(wxVERTICAL);
    rows->Add(splitter_, wxSizerFlags(1).Expand().Border(wxBOTTOM, row));
    rows->Add(new wxStaticLine(all_), wxSizerFlags().Expand().Border(wxBOTTOM, row));
    rows->Add(save, wxSizerFlags().Expand());
    setContents(*all_, rows);
    fitFigures();

    for (Timer* timer : model_.timers()) {
        bind().timer(*timer);
    }
    bindShortcuts();
    offerCopy();
    folderWatch_.onChanged = [this] { model_.RefreshFolder(); };
    model_.onFilesListed = [this] { folderWatch_.watch(model_.Dir1.path()); };
    folderWatch_.watch(model_.Dir1.path());
    takeDroppedFiles(*all_, [this](const std::string& path) { model_.openPath(path); });
    setFirstSize();
}

MainView::~MainView() {
    model_.onFilesListed = {};
    model_.storeWindowPlace(windowPlaceText(place_));
}

void MainView::makeMenus() {
    auto* bar = new wxMenuBar;
    static_cast<wxFrame&>(native()).SetMenuBar(
        bar); // menu entries need a bar that belongs to a window
    auto* file = new wxMenu;
    bind().menuItem(*file, model_.mnuOpenPhoto, "Ctrl+O");
    bind().listMenu(*file, model_.mnuOpenRecent);
    file->AppendSeparator();
    bind().menuItem(*file, model_.mnuSavePdf, "Ctrl+Shift+S");
    bind().menuItem(*file, model_.mnuPrint, "Ctrl+P");
    file->AppendSeparator();
    bind().menuItem(*file, model_.mnuExit, "Ctrl+Q");
    auto* tools = new wxMenu;
    bind().menuItem(*tools, model_.mnuPaperSize);
    bind().menuItem(*tools, model_.mnuEdgeClip);
    bind().menuItem(*tools, model_.mnuPosterSize);
    auto* view = new wxMenu;
    bind().checkItem(*view, model_.mnuDimOutside, [this](bool dim) {
        if (photo_ != nullptr) {
            photo_->dimOutside(dim);
        }
    });
    auto* help = new wxMenu;
    bind().menuItem(*help, model_.mnuContent, "F1");
    bind().menuItem(*help, model_.mnuAbout);
    bind().menu(*bar, file, model_.mnuFile);
    bind().menu(*bar, tools, model_.mnuTools);
    bind().menu(*bar, view, model_.mnuView);
    bind().menu(*bar, help, model_.mnuHelp);
}

wxSizer* MainView::makeBrowser() {
    wxStaticText* heading = bind().label(browser_, model_.lblStep1, 'c');
    makeHeading(*heading);
    wxButton* desktop = bind().button(browser_, model_.cmdDesktop, 'D');
    wxButton* documents = bind().button(browser_, model_.cmdMyDoc, 'M');
    wxChoice* drive = bind().driveList(browser_, model_.Drive1);
    FolderListBox* folders =
        bind().folderList(browser_, model_.Dir1, browser_->FromDIP(wxSize(narrowestBrowser, 80)));
    wxChoice* filter = bind().choice(browser_, model_.cmbFileType);
    wxListBox* files =
        bind().listBox(browser_, model_.lstFiles, browser_->FromDIP(wxSize(narrowestBrowser, 80)));
    bind().mnemonic('k', *drive);
    bind().mnemonic('b', *folders);
    bind().mnemonic('y', *filter);
    bind().mnemonic('c', *files);
    drive->SetMinSize(wxSize(browser_->FromDIP(narrowestBrowser), -1));

    const int row = browser_->FromDIP(spacing::row);
    auto* places = new wxBoxSizer(wxHORIZONTAL);
    places->Add(desktop, wxSizerFlags(2).Border(wxRIGHT, row));
    places->Add(documents, wxSizerFlags(3)); // the longer word
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(heading, wxSizerFlags().Expand().Border(wxBOTTOM, browser_->FromDIP(8)));
    column->Add(places, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    column->Add(drive, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    column->Add(folders, wxSizerFlags(2).Expand().Border(wxBOTTOM, row));
    column->Add(filter, wxSizerFlags().Expand().Border(wxBOTTOM, row));
    column->Add(files, wxSizerFlags(3).Expand());
    return column;
}

void MainView::addValueRow(wxFlexGridSizer& rows, wxWindow* box, Label& caption, Label& value,
                           const char* sample) {
    wxStaticText* label = bind().label(box, caption);
    addRow(rows, label, bind().liveLabel(box, caption, value, sample));
}

wxSizer* MainView::makePrintInfo() {
    wxStaticText* heading = bind().label(panel_, model_.lblStep2);
    makeHeading(*heading);
    const GroupSizer group(bind().frame(panel_, model_.fraPrintInfo), wxVERTICAL);
    wxStaticBox* box = group.box();
    constexpr const char* paperSample = "0000.0 x 0000.0";
    wxFlexGridSizer* rows = labelledRows(*panel_);
    addValueRow(*rows, box, model_.lblPaperNameCaption, model_.lblPaperName, paperSample);
    addValueRow(*rows, box, model_.lblPaperSizeCaption, model_.lblPaperSize, paperSample);
    addValueRow(*rows, box, model_.lblTileSizeCaption, model_.lblTileSize, paperSample);
    addValueRow(*rows, box, model_.lblUnitsCaption, model_.lblUnits, paperSample);
    wxButton* editPaper = bind().button(box, model_.cmdEditPaperSize, 'E');
    wxCheckBox* clips = bind().checkBox(box, model_.chkPrinterClips, 'j');
    wxChoice* profile = bind().choice(box, model_.cmbCurBtm);
    bind().mnemonic('u', *profile);
    profile->SetMinSize(wxSize(panel_->FromDIP(140), -1));
    wxButton* editProfiles = bind().button(box, model_.cmdConfig, 'i');
    makeNarrow({editPaper, editProfiles});

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
    wxStaticText* heading = bind().label(panel_, model_.lblStep3);
    makeHeading(*heading);
    const GroupSizer group(bind().frame(panel_, model_.fraNumberTiles), wxVERTICAL);
    wxStaticBox* box = group.box();
    wxStaticText* wideLabel = bind().labelForNext(box, model_.lblTilesWide, 'W');
    wxChoice* wide = bind().choice(box, model_.cmbTilesWide);
    wxStaticText* highLabel = bind().labelForNext(box, model_.lblTilesHigh, 'g');
    wxChoice* high = bind().choice(box, model_.cmbTilesHigh);
    wxCheckBox* lock = bind().checkBox(box, model_.chkLockWh, 'L');
    wxCheckBox* turn = bind().checkBox(box, model_.chkRotateTiles, 'R');
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
    const GroupSizer group(bind().frame(panel_, model_.fraPosterSize), wxVERTICAL);
    wxStaticBox* box = group.box();
    figures_ = labelledRows(*panel_, 4);
    addValueRow(*figures_, box, model_.lblFinalSizeCaption, model_.lblFinalSize,
                "000 x 000 inches");
    addValueRow(*figures_, box, model_.lblResolutionCaption, model_.lblResolution, "0000.0 dpi");
    addValueRow(*figures_, box, model_.lblMPixCaption, model_.lblMPixVal, "0000.00");
    addValueRow(*figures_, box, model_.lblQualityCaption, model_.lblQuality,
                "Fair from a distance");
    group.inner()->Add(figures_, wxSizerFlags().Expand());
    return group.outer();
}

// Two beside each other where the screen is wide enough for the window then; with large text on a
// small screen all stand below each other.
void MainView::fitFigures() {
    const int room = wxDisplay(&native()).GetClientArea().width - native().FromDIP(frameBorders);
    if (all_->GetSizer()->GetMinSize().x > room) {
        figures_->SetCols(2);
        keepRoomForBothSides();
    }
}

wxSizer* MainView::makePreviewBar() {
    wxChoice* rotate = bind().choice(panel_, model_.cmbRotate);
    bind().mnemonic('q', *rotate);
    wxCheckBox* showTiles = bind().checkBox(panel_, model_.chkPreviewTiles, 'o');
    wxButton* preview = bind().button(panel_, model_.cmdLargePreview, 'P');
    const int column = panel_->FromDIP(spacing::group);
    auto* bar = new wxBoxSizer(wxHORIZONTAL);
    bar->Add(rotate, wxSizerFlags().CentreVertical().Border(wxRIGHT, column));
    bar->Add(showTiles, wxSizerFlags().CentreVertical());
    bar->AddStretchSpacer();
    bar->Add(preview, wxSizerFlags().CentreVertical());
    return bar;
}

wxSizer* MainView::makePlacement() {
    const GroupSizer group(bind().frame(panel_, model_.fraTilePlacement), wxHORIZONTAL);
    wxStaticBox* box = group.box();
    wxSizer* zoom = makeZoomRow(box);
    PictureBox* pad = makeArrowPad(box);
    bind().mnemonic('a', *photo_);
    wxFlexGridSizer* labels = labelledRows(*panel_);
    const auto add = [&](Label& caption, char letter, Label& value, const char* sample) {
        wxStaticText* label = bind().label(box, caption, letter);
        addRow(*labels, label, bind().liveLabel(box, caption, value, sample));
    };
    add(model_.lblLrCaption, 'a', model_.lblLrValue, "(right 100%)");
    add(model_.lblTbCaption, 0, model_.lblTbValue, "(full height)");
    auto* rows = new wxBoxSizer(wxVERTICAL);
    rows->Add(zoom, wxSizerFlags().Expand().Border(wxBOTTOM, panel_->FromDIP(spacing::close)));
    rows->Add(labels, wxSizerFlags().Expand());
    group.inner()->Add(
        pad, wxSizerFlags().CentreVertical().Border(wxRIGHT, panel_->FromDIP(spacing::group)));
    group.inner()->Add(rows, wxSizerFlags(1).CentreVertical());
    return group.outer();
}

wxSizer* MainView::makeZoomRow(wxWindow* box) {
    wxStaticText* label = bind().labelForNext(box, model_.lblZoom, 'Z');
    wxSlider* zoom = bind().slider(box, model_.scrZoom);
    const int column = panel_->FromDIP(spacing::column);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(label, wxSizerFlags().CentreVertical().Border(wxRIGHT, column));
    row->Add(zoom, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, column));
    row->Add(bind().label(box, model_.lbl4x),
             wxSizerFlags().CentreVertical().Border(wxRIGHT, column));
    row->Add(bind().liveLabel(box, model_.lblZoom, model_.lblZoomAmount, "(400%)"),
             wxSizerFlags().CentreVertical());
    return row;
}

PictureBox* MainView::makeArrowPad(wxWindow* box) {
    PictureBox* pad = bind().pictureStack(
        box,
        {&model_.imgArrow, &model_.imgArrow_Up, &model_.imgArrow_right, &model_.imgArrow_down,
         &model_.imgArrow_left},
        panel_->FromDIP(wxSize(arrowPadSide, arrowPadSide)), PictureBox::Keyboard::taken);
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
    wxStaticText* heading = bind().label(all_, model_.lblStep4);
    makeHeading(*heading);
    wxButton* save = bind().button(all_, model_.cmdSaveNow, 'S');
    wxButton* sheets = bind().button(all_, model_.cmdSheets, 'n');
    wxButton* quit = bind().button(all_, model_.cmdQuit, 'x');
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(quit, wxSizerFlags().CentreVertical().Border(wxRIGHT, all_->FromDIP(spacing::row)));
    row->Add(sheets, wxSizerFlags().CentreVertical());
    row->AddStretchSpacer();
    row->Add(heading,
             wxSizerFlags().CentreVertical().Border(wxRIGHT, all_->FromDIP(spacing::group)));
    row->Add(save, wxSizerFlags().CentreVertical());
    return row;
}

void MainView::bindShortcuts() {
    bind().shortcut(wxMOD_CONTROL, 'S', [this] { model_.cmdSaveNow.userClick(); });
    for (const int zero : {int{'0'}, int{WXK_NUMPAD0}}) {
        bind().shortcut(wxMOD_CONTROL, zero, [this] { model_.ResetZoomAndPan(); });
    }
    bind().shortcut(wxMOD_NONE, WXK_F5, [this] { model_.RefreshFolder(); });
    // A list that has the keyboard would take the menu's key for one of its own.
    bind().shortcut(wxMOD_CONTROL, 'P', [this] { model_.mnuPrint.userClick(); });
}

void MainView::offerCopy() {
    offerCopyOf(*panel_, {model_.fraPosterSize.name(), model_.fraTilePlacement.name()},
                [this] { return model_.FiguresText(); });
}

// The splitter has room around it on both sides, as other parts have.
void MainView::split(wxSizer* browser, wxSizer* work) {
    const int edge = panel_->FromDIP(spacing::row);
    auto* left = new wxBoxSizer(wxVERTICAL);
    left->Add(browser, wxSizerFlags(1).Expand().Border(wxRIGHT, edge));
    browser_->SetSizer(left);
    auto* right = new wxBoxSizer(wxVERTICAL);
    right->Add(work, wxSizerFlags(1).Expand().Border(wxLEFT, edge));
    panel_->SetSizer(right);
    keepRoomForBothSides();
    splitter_->SetSashGravity(0);
    splitter_->SplitVertically(browser_, panel_, browser_->FromDIP(browserWidth));
    splitter_->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        fitSplitter();
    });
    // Only what the user does is remembered.
    splitter_->Bind(wxEVT_SPLITTER_SASH_POS_CHANGING, [this](wxSplitterEvent& event) {
        const int most =
            splitter_->GetClientSize().x - panel_->GetBestSize().x - splitter_->GetSashSize();
        event.SetSashPosition(
            std::max(browser_->GetBestSize().x, std::min(event.GetSashPosition(), most)));
        place_.splitter = event.GetSashPosition();
    });
}

void MainView::keepRoomForBothSides() {
    panel_->InvalidateBestSize();
    const wxSize left = browser_->GetBestSize();
    const wxSize right = panel_->GetBestSize();
    splitter_->SetMinimumPaneSize(left.x);
    splitter_->SetMinSize(
        wxSize(left.x + right.x + splitter_->GetSashSize(), std::max(left.y, right.y)));
}

// The right part keeps the width that its contents need, as long as the left one can give it.
void MainView::fitSplitter() {
    const int most =
        splitter_->GetClientSize().x - panel_->GetBestSize().x - splitter_->GetSashSize();
    const int sash = std::max(browser_->GetBestSize().x, std::min(place_.splitter, most));
    if (sash != splitter_->GetSashPosition()) {
        splitter_->SetSashPosition(sash);
    }
}

// As the user left it; the first time as large as is comfortable on this screen. The photo takes
// whatever is left over.
void MainView::setFirstSize() {
    wxTopLevelWindow& frame = native();
    all_->SetScrollRate(frame.FromDIP(8), frame.FromDIP(8));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(all_, wxSizerFlags(1).Expand());
    frame.SetSizer(sizer);
    frame.SetMinSize(frame.FromDIP(wxSize(400, 300)));

    const std::optional<WindowPlace> stored = readWindowPlace(model_.storedWindowPlace());
    if (stored) {
        place_ = *stored;
    } else {
        const wxRect room = wxDisplay(&frame).GetClientArea();
        const wxSize wanted = frame.FromDIP(wxSize(1180, 780));
        const wxSize size(std::min(wanted.x, room.width * 95 / 100),
                          std::min(wanted.y, room.height * 92 / 100));
        // Some systems tell what surrounds the contents only when the window is there.
        wxSize around = frame.GetSize() - frame.GetClientSize();
        around.IncTo(frame.FromDIP(wxSize(frameBorders, frameHeads)));
        const wxSize contents = all_->GetSizer()->GetMinSize() + around;
        place_.normal.width = std::min(std::max(size.x, contents.x), room.width);
        place_.normal.height = std::min(std::max(size.y, contents.y), room.height);
        place_.normal.left = room.x + (room.width - place_.normal.width) / 2;
        place_.normal.top = room.y + (room.height - place_.normal.height) / 2;
        place_.splitter = frame.FromDIP(browserWidth);
    }
    const ScreenRect place = placeOnScreen(place_.normal, usableScreens());
    frame.SetSize(place.left, place.top, place.width, place.height);
    if (place_.maximized) {
        static_cast<wxFrame&>(frame).Maximize();
    }
    frame.Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        notePlace();
    });
    frame.Bind(wxEVT_MOVE, [this](wxMoveEvent& event) {
        event.Skip();
        notePlace();
    });
}

void MainView::notePlace() {
    const wxTopLevelWindow& frame = native();
    if (!frame.IsShown() || frame.IsIconized()) {
        return;
    }
    place_.maximized = frame.IsMaximized();
    if (!place_.maximized) {
        const wxRect now = frame.GetRect();
        place_.normal = {now.x, now.y, now.width, now.height};
    }
}

} // namespace

std::unique_ptr<View> makeMainView(Window& model, wxWindow* parent) {
    return std::make_unique<MainView>(static_cast<frmMain&>(model), parent);
}

} // namespace veldara
