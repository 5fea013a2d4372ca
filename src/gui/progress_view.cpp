// The progress window: a message, below it a bar, below that a Cancel button; as high as what is
// visible of them.
#include "gui/dialog_view.h"
#include "gui/views.h"
#include "output/frmMsg.h"

namespace veldara {

namespace {

constexpr int width = 340;
constexpr int barHeight = 20;

class ProgressView : public DialogView {
  public:
    ProgressView(frmMsg& model, wxWindow* parent);

  private:
    void fit();
};

ProgressView::ProgressView(frmMsg& model, wxWindow* parent) : DialogView(model, parent) {
    wxStaticText* message = bind().valueLabel(dialog(), model.lblMsg, "M");
    PictureBox* bar =
        bind().picture(dialog(), model.picProgressBar, dialog()->FromDIP(wxSize(width, barHeight)),
                       PictureBox::Keyboard::ignored, PictureBox::Ground::trough);
    wxButton* cancel = bind().button(dialog(), model.cmdCancel, 'C');
    const int gap = dialog()->FromDIP(spacing::group);
    auto* contents = new wxBoxSizer(wxVERTICAL);
    contents->Add(message, wxSizerFlags().Expand());
    contents->AddSpacer(gap);
    contents->Add(bar, wxSizerFlags().Expand());
    contents->AddSpacer(gap);
    contents->Add(cancel, wxSizerFlags().Right());
    contents->SetMinSize(wxSize(textLength(*dialog(), width), -1));
    finish(contents);
    bind().onVisibilityChanged = [this] { fit(); };
    cancel->SetFocus();
}

void ProgressView::fit() {
    dialog()->SetMinSize(wxDefaultSize);
    fitAndCentre();
}

} // namespace

std::unique_ptr<View> makeProgressView(Window& model, wxWindow* parent) {
    return std::make_unique<ProgressView>(static_cast<frmMsg&>(model), parent);
}

} // namespace veldara
