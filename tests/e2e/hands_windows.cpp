// On Windows the toolkit's own simulator does it: it sends to the system's input queue and returns.
#include "e2e/hands.h"

#ifdef __WXMSW__

#include "gui/native_text.h"

#include <utility>

#include <wx/msw/wrapwin.h>
#include <wx/uiaction.h>

namespace veldara::test {

struct Hands::Connection {
    wxUIActionSimulator input;
};

Hands::Hands() : connection_(std::make_unique<Connection>()) {}

Hands::~Hands() = default;

void Hands::moveTo(wxPoint at) {
    connection_->input.MouseMove(at);
}

void Hands::press() {
    connection_->input.MouseDown();
}

void Hands::release() {
    connection_->input.MouseUp();
}

void Hands::click() {
    connection_->input.MouseClick();
}

void Hands::doubleClick() {
    connection_->input.MouseDblClick();
}

void Hands::rightClick() {
    connection_->input.MouseClick(wxMOUSE_BTN_RIGHT);
}

void Hands::turnWheel(int notches) {
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = MOUSEEVENTF_WHEEL;
    input.mi.mouseData = static_cast<DWORD>(notches * WHEEL_DELTA);
    SendInput(1, &input, sizeof input);
}

std::string Hands::pointerName() const {
    CURSORINFO info = {};
    info.cbSize = sizeof info;
    GetCursorInfo(&info);
    const std::pair<LPWSTR, const char*> known[] = {
        {IDC_ARROW, "default"}, {IDC_CROSS, "cross"}, {IDC_SIZEALL, "move"}, {IDC_WAIT, "wait"}};
    for (const auto& [identifier, name] : known) {
        if (info.hCursor == LoadCursorW(nullptr, identifier)) {
            return name;
        }
    }
    return {};
}

void Hands::key(int keyCode, int modifiers) {
    connection_->input.Char(keyCode, modifiers);
}

void Hands::type(const std::string& ascii) {
    connection_->input.Text(ascii.c_str());
}

std::string Hands::activeTitle() const {
    wchar_t title[256] = {};
    GetWindowTextW(GetForegroundWindow(), title, 256);
    return portableText(wxString(title));
}

bool Hands::seesOpenList() const {
    const auto isUp = [](const wchar_t* kind) {
        const HWND found = FindWindowW(kind, nullptr);
        return found != nullptr && IsWindowVisible(found) != 0;
    };
    return isUp(L"#32768") || isUp(L"ComboLBox"); // the system's menu, and its list
}

} // namespace veldara::test

#endif
