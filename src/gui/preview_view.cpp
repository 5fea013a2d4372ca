// The full-screen preview. The window model itself says where its two controls stand.
#include "gui/layout.h"
#include "gui/views.h"
#include "layout/frmPreview.h"

#include <wx/display.h>
#include <wx/frame.h>

namespace veldara {

namespace {

class PreviewView : public View {
  public:
    PreviewView(frmPreview& model, wxWindow* parent);
    void shown() override;

  private:
    void tellSize();
    void place();
    int inPixels(int units) const;
    int inUnits(int pixels) const;

    frmPreview& model_;
    PictureBox* picture_ = nullptr;
    wxButton* close_ = nullptr;
};

PreviewView::PreviewView(frmPreview& model, wxWindow* parent)
    : View(model, new wxFrame(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                              wxDEFAULT_FRAME_STYLE | wxFRAME_NO_TASKBAR)),
      model_(model) {
    native().SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
    picture_ = bind().placedPicture(&native(), model_.picPreview);
    close_ = bind().button(&native(), model_.cmdClose, 'C');
    closeOnEscape();
    const wxRect area = wxDisplay(parent).GetClientArea();
    native().SetSize(area);
    static_cast<wxFrame&>(native()).Maximize();
    const wxSize button = close_->GetBestSize();
    model_.setCloseButtonSize(inPixels(button.x), inPixels(button.y));
    bind().onLayoutChanged = [this] { place(); };
    native().Bind(wxEVT_SIZE, [this](wxSizeEvent&) { tellSize(); });
}

void PreviewView::shown() {
    close_->SetFocus();
    tellSize();
}

void PreviewView::tellSize() {
    const wxSize size = native().GetClientSize();
    model_.userResize(inPixels(size.x), inPixels(size.y));
    place();
}

void PreviewView::place() {
    const Picture& picture = model_.picPreview;
    picture_->SetSize(inUnits(picture.left()), inUnits(picture.top()), inUnits(picture.width()),
                      inUnits(picture.height()));
    const Place& close = model_.closePlace();
    close_->SetSize(inUnits(close.left), inUnits(close.top), inUnits(close.width),
                    inUnits(close.height));
}

int PreviewView::inPixels(int units) const {
    return wxRound(units * pixelsPerUnit(*picture_));
}

int PreviewView::inUnits(int pixels) const {
    return wxRound(pixels / pixelsPerUnit(*picture_));
}

} // namespace

std::unique_ptr<View> makePreviewView(Window& model, wxWindow* parent) {
    return std::make_unique<PreviewView>(static_cast<frmPreview&>(model), parent);
}

} // namespace veldara
