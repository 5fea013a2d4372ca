// Message boxes as the user meets them, where they are the program's own windows.
#include "e2e/driver.h"

#ifndef __WXMSW__

#include <algorithm>

#include <wx/defs.h>

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

} // namespace

std::string Driver::waitForMessage() {
    waitForWindow("message");
    std::string words = text("message", "text");
    std::replace(words.begin(), words.end(), '\n', ' '); // it is wrapped at blanks
    return words;
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
