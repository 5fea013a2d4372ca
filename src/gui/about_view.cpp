// The About box.
#include "app/frmAbout.h"
#include "gui/dialog_view.h"
#include "gui/drawings.h"
#include "gui/views.h"

#include <wx/statbmp.h>

namespace veldara {

namespace {

constexpr int iconSide = 64;
constexpr int linkWidth = 440;

class AboutView : public DialogView {
  public:
    AboutView(frmAbout& model, wxWindow* parent);

  private:
    wxSizer* makeWords(frmAbout& model);
};

AboutView::AboutView(frmAbout& model, wxWindow* parent) : DialogView(model, parent) {
    const int gap = dialog()->FromDIP(spacing::windowEdge);
    auto* top = new wxBoxSizer(wxHORIZONTAL);
    top->Add(new wxStaticBitmap(dialog(), wxID_ANY, iconBundle(iconSide)),
             wxSizerFlags().Top().Border(wxRIGHT, gap));
    top->Add(makeWords(model), wxSizerFlags(1).Expand());

    wxButton* information = bind().button(dialog(), model.cmdSysInfo, 'S');
    wxButton* ok = bind().button(dialog(), model.cmdOk, 'O');
    setDefault(ok);
    ok->SetFocus();
    auto* contents = new wxBoxSizer(wxVERTICAL);
    contents->Add(top, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap + gap / 2));
    contents->Add(buttonRow(*dialog(), {ok, information}), wxSizerFlags().Expand());
    finish(contents);
}

wxSizer* AboutView::makeWords(frmAbout& model) {
    const int row = dialog()->FromDIP(spacing::row);
    wxStaticText* title = bind().label(dialog(), model.lblTitle);
    makeHeading(*title, 1.5F);
    auto* link = new wxBoxSizer(wxHORIZONTAL);
    link->Add(bind().label(dialog(), model.lblDisclaimer),
              wxSizerFlags().CentreVertical().Border(wxRIGHT, row));
    link->Add(bind().link(dialog(), model.lnkWeb, linkWidth), wxSizerFlags().CentreVertical());
    auto* words = new wxBoxSizer(wxVERTICAL);
    words->Add(title, wxSizerFlags().Border(wxBOTTOM, row));
    words->Add(bind().label(dialog(), model.lblVersion), wxSizerFlags().Border(wxBOTTOM, row));
    words->Add(bind().label(dialog(), model.lblCopyright), wxSizerFlags().Border(wxBOTTOM, row));
    words->Add(link, wxSizerFlags());
    return words;
}

} // namespace

std::unique_ptr<View> makeAboutView(Window& model, wxWindow* parent) {
    return std::make_unique<AboutView>(static_cast<frmAbout&>(model), parent);
}

} // namespace veldara
