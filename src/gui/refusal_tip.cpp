#include "gui/refusal_tip.h"

#include <wx/settings.h>
#include <wx/sizer.h>

namespace veldara {

namespace {

constexpr int showTime = 4000; // milliseconds
constexpr int edge = 6;

} // namespace

RefusalTip::RefusalTip(wxWindow& field)
    : wxPopupWindow(&field, wxBORDER_SIMPLE), text_(new wxStaticText(this, wxID_ANY, wxString())) {
    SetName("refusal");
    SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW));
    text_->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(text_, wxSizerFlags().Border(wxALL, FromDIP(edge)));
    SetSizer(sizer);
    hide_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Hide(); });
}

void RefusalTip::show(wxWindow& field, const wxString& why) {
    RefusalTip* tip = nullptr;
    for (wxWindow* child : field.GetChildren()) {
        if (auto* found = dynamic_cast<RefusalTip*>(child)) {
            tip = found;
        }
    }
    if (tip == nullptr) {
        tip = new RefusalTip(field);
    }
    tip->text_->SetLabelText(why);
    tip->GetSizer()->Fit(tip);
    tip->SetPosition(field.ClientToScreen(wxPoint(0, field.GetSize().y)));
    tip->Show();
    tip->hide_.StartOnce(showTime);
}

} // namespace veldara
