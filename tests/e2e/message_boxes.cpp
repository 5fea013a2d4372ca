// Message boxes as the user meets them, where they are the program's own windows.
#include "e2e/driver.h"

#ifndef __WXMSW__

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/image.h>
#include <wx/statbmp.h>

namespace veldara::test {

namespace {

std::string buttonName(Answer answer) {
    switch (answer) {
    case Answer::yes:
        return "Yes";
    case Answer::no:
        return "No";
    case Answer::cancel:
        return "Cancel";
    case Answer::ok:
        break;
    }
    return "OK";
}

bool samePixels(const wxBitmap& one, const wxBitmap& other) {
    if (!one.IsOk() || !other.IsOk() || one.GetSize() != other.GetSize()) {
        return false;
    }
    const wxImage first = one.ConvertToImage();
    const wxImage second = other.ConvertToImage();
    return std::memcmp(first.GetData(), second.GetData(),
                       static_cast<std::size_t>(first.GetWidth()) *
                           static_cast<std::size_t>(first.GetHeight()) * 3) == 0;
}

// Which of the desktop's own pictures that is.
MessageIcon iconOf(const wxBitmap& picture) {
    const std::pair<wxArtID, MessageIcon> known[] = {{wxART_ERROR, MessageIcon::critical},
                                                     {wxART_QUESTION, MessageIcon::question},
                                                     {wxART_WARNING, MessageIcon::exclamation},
                                                     {wxART_INFORMATION, MessageIcon::information}};
    for (const auto& [art, icon] : known) {
        if (samePixels(picture, wxArtProvider::GetBitmap(art, wxART_MESSAGE_BOX))) {
            return icon;
        }
    }
    throw DriverError("The message box has a picture that is none of the desktop's.");
}

} // namespace

std::string Driver::waitForMessage() {
    waitForWindow("message");
    std::string words = text("message", "text");
    std::replace(words.begin(), words.end(), '\n', ' '); // it is wrapped at blanks
    return words;
}

std::string Driver::messageTitle() {
    return title("message");
}

MessageIcon Driver::messageIcon() {
    return onWindowThread([] {
        for (const wxWindow* part : window("message")->GetChildren()) {
            if (const auto* picture = dynamic_cast<const wxStaticBitmap*>(part)) {
                return picture->IsShownOnScreen() ? iconOf(picture->GetBitmap())
                                                  : MessageIcon::none;
            }
        }
        return MessageIcon::none;
    });
}

std::vector<std::string> Driver::messageButtons() {
    return onWindowThread([] {
        std::map<int, std::string> labels; // by their places
        for (const wxWindow* part : window("message")->GetChildren()) {
            if (dynamic_cast<const wxButton*>(part) != nullptr) {
                labels[part->GetPosition().x] = part->GetLabel().ToStdString();
            }
        }
        std::vector<std::string> row;
        row.reserve(labels.size());
        for (const auto& [place, label] : labels) {
            row.push_back(label);
        }
        return row;
    });
}

void Driver::answerByMouse(Answer answer) {
    click("message", buttonName(answer));
    waitForWindowToGo("message");
}

void Driver::answerByKey(Answer answer) {
    waitForWindow("message");
    key(buttonName(answer)[0], wxMOD_ALT);
    waitForWindowToGo("message");
}

} // namespace veldara::test

#endif
