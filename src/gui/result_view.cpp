// The result window: all tiles were written, and this is the way to their folder.
#include "gui/dialog_view.h"
#include "gui/views.h"
#include "output/frmSimpleMsg.h"

namespace veldara {

namespace {

constexpr int checkSide = 56;
constexpr int textWidth = 440;
constexpr int linkWidth = 520; // for the lines that the folder has been cut into

class ResultView : public DialogView {
  public:
    ResultView(frmSimpleMsg& model, wxWindow* parent);
};

ResultView::ResultView(frmSimpleMsg& model, wxWindow* parent) : DialogView(model, parent) {
    PictureBox* check =
        bind().picture(dialog(), model.imgCheck, dialog()->FromDIP(wxSize(checkSide, checkSide)),
                       PictureBox::Keyboard::ignored, PictureBox::Ground::window);
    wxStaticText* title = bind().label(dialog(), model.lblTitle);
    makeHeading(*title, 1.25F);
    wxStaticText* message = bind().label(dialog(), model.lblMsg);
    wrapText(*message, textWidth);
    LinkText* folder = bind().link(dialog(), model.lnkFol, linkWidth);
    wxButton* ok = bind().button(dialog(), model.cmdOk, 'O');
    setDefault(ok);
    ok->SetFocus();

    const int gap = dialog()->FromDIP(spacing::group);
    auto* words = new wxBoxSizer(wxVERTICAL);
    words->Add(title, wxSizerFlags().Border(wxBOTTOM, gap));
    words->Add(message, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
    words->Add(folder, wxSizerFlags());
    auto* top = new wxBoxSizer(wxHORIZONTAL);
    top->Add(check, wxSizerFlags().Top().Border(wxRIGHT, dialog()->FromDIP(spacing::windowEdge)));
    top->Add(words, wxSizerFlags(1));
    auto* contents = new wxBoxSizer(wxVERTICAL);
    contents->Add(top, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap));
    contents->Add(buttonRow(*dialog(), {ok}), wxSizerFlags().Expand());
    finish(contents);
    // The folder is named after the window has come up.
    bind().onLinkChanged = [this] { fitAndCentre(); };
}

} // namespace

std::unique_ptr<View> makeResultView(Window& model, wxWindow* parent) {
    return std::make_unique<ResultView>(static_cast<frmSimpleMsg&>(model), parent);
}

} // namespace veldara
