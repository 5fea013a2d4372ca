#include "gui/message_dialog.h"

#include "gui/layout.h"
#include "gui/native_text.h"

#include <utility>
#include <vector>

#include <wx/artprov.h>
#include <wx/bmpbuttn.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

namespace veldara {

namespace {

constexpr int textWidth = 380;

wxArtID artOf(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::critical:
        return wxART_ERROR;
    case MessageIcon::question:
        return wxART_QUESTION;
    case MessageIcon::exclamation:
        return wxART_WARNING;
    case MessageIcon::information:
        return wxART_INFORMATION;
    case MessageIcon::none:
        break;
    }
    return {};
}

} // namespace

MessageDialog::MessageDialog(wxWindow* parent, const Message& message)
    : wxDialog(parent, wxID_ANY, nativeText(message.title), wxDefaultPosition, wxDefaultSize,
               wxCAPTION | wxCLOSE_BOX | wxSYSTEM_MENU, "message") {
    auto* words = new wxBoxSizer(wxHORIZONTAL);
    if (message.icon != MessageIcon::none) {
        const wxBitmapBundle icon =
            wxArtProvider::GetBitmapBundle(artOf(message.icon), wxART_MESSAGE_BOX);
        words->Add(new wxStaticBitmap(this, wxID_ANY, icon),
                   wxSizerFlags().Border(wxRIGHT, FromDIP(spacing::windowEdge)));
    }
    auto* text = new wxStaticText(this, wxID_ANY, wxString());
    text->SetName("text");
    text->SetLabelText(nativeText(message.text));
    wrapText(*text, textWidth);
    words->Add(text, wxSizerFlags(1).CentreVertical());

    auto* contents = new wxBoxSizer(wxVERTICAL);
    contents->Add(words, wxSizerFlags(1).Expand().Border(wxBOTTOM, FromDIP(spacing::windowEdge)));
    contents->Add(buttonRow(message), wxSizerFlags().Expand());
    setContents(*this, contents);
    GetSizer()->SetSizeHints(this);
    CentreOnParent();

    SetEscapeId(wxID_NONE);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { EndModal(wxID_CANCEL); });
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        event.GetKeyCode() == WXK_ESCAPE ? EndModal(wxID_CANCEL) : event.Skip();
    });
}

Answer MessageDialog::ask() {
    ShowModal();
    return answer_;
}

wxSizer* MessageDialog::buttonRow(const Message& message) {
    const MessageButtons buttons = message.buttons;
    struct Choice {
        const char* label;
        const char* name;
        Answer answer;
    };
    std::vector<Choice> choices;
    if (buttons == MessageButtons::yesNo || buttons == MessageButtons::yesNoCancel) {
        choices.push_back({"&Yes", "Yes", Answer::yes});
        choices.push_back({"&No", "No", Answer::no});
    } else {
        choices.push_back({"&OK", "OK", Answer::ok});
    }
    if (buttons == MessageButtons::okCancel || buttons == MessageButtons::yesNoCancel) {
        choices.push_back({"&Cancel", "Cancel", Answer::cancel});
    }
    answer_ = choices.back().answer; // for Escape and the close box
    std::vector<wxWindow*> row;
    for (const Choice& choice : choices) {
        wxButton* button = addButton(choice.label, choice.name, choice.answer);
        row.push_back(button);
        if (choice.answer == message.defaultAnswer.value_or(choices.front().answer)) {
            button->SetDefault();
            button->SetFocus();
        }
    }
    return veldara::buttonRow(*this, row);
}

wxButton* MessageDialog::addButton(const wxString& label, const wxString& name, Answer answer) {
    auto* button = new wxButton(this, wxID_ANY, label);
    button->SetName(name);
    button->Bind(wxEVT_BUTTON, [this, answer](wxCommandEvent&) {
        answer_ = answer;
        EndModal(wxID_OK);
    });
    return button;
}

} // namespace veldara
