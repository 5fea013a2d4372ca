#include "e2e/driver.h"

#include "gui/folder_list_box.h"
#include "gui/layout.h"
#include "gui/native_text.h"

#include <thread>

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/clipbrd.h>
#include <wx/combobox.h>
#include <wx/control.h>
#include <wx/dataobj.h>
#include <wx/frame.h>
#include <wx/listbox.h>
#include <wx/menu.h>
#include <wx/radiobut.h>
#include <wx/slider.h>
#include <wx/textctrl.h>

#ifdef __WXMSW__
#include <wx/msw/wrapwin.h>
#endif

namespace veldara::test {

namespace {

using Clock = std::chrono::steady_clock;

// Two clicks at one place within this time are a double click to the system.
constexpr std::chrono::milliseconds doubleClickTime{550};

// So long that a machine with much else to do comes to it.
constexpr std::chrono::seconds longestWait{60};

template <typename T>
T& as(wxWindow* window, const std::string& name) {
    auto* found = dynamic_cast<T*>(window);
    if (found == nullptr) {
        throw DriverError("There is no widget \"" + name + "\" of that kind.");
    }
    return *found;
}

wxString valueOf(wxWindow& widget) {
    if (const auto* field = dynamic_cast<const wxTextCtrl*>(&widget)) {
        return field->GetValue();
    }
    if (const auto* combo = dynamic_cast<const wxComboBox*>(&widget)) {
        return combo->GetValue();
    }
    if (const auto* list = dynamic_cast<const wxItemContainerImmutable*>(&widget)) {
        return list->GetStringSelection();
    }
    const auto* control = dynamic_cast<const wxControl*>(&widget);
    return control == nullptr ? widget.GetLabel() : control->GetLabelText();
}

} // namespace

void Driver::waitUntil(const std::string& what, const std::function<bool()>& test) {
    const Clock::time_point end = Clock::now() + longestWait;
    while (!onWindowThread(test)) {
        if (Clock::now() > end) {
            throw DriverError("Timed out waiting until " + what + ".");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

void Driver::pause(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

// Lets what was put in at the display come back to the program as events, however busy the machine
// is: the program is asked whether any is left. On Windows it is asked twice, for a key makes a
// character behind it. Where message boxes are the system's own, the window thread may not answer
// while one is up.
void Driver::settle() {
#ifdef __WXMSW__
    pause(std::chrono::milliseconds(90));
    const Clock::time_point end = Clock::now() + std::chrono::seconds(2);
    for (int empty = 0; empty < 2 && Clock::now() < end;) {
        auto left = std::make_shared<std::promise<bool>>();
        wxTheApp->CallAfter([left] { left->set_value(HIWORD(GetQueueStatus(QS_INPUT)) != 0); });
        std::future<bool> answer = left->get_future();
        if (answer.wait_until(end) == std::future_status::ready) {
            empty = answer.get() ? 0 : empty + 1;
        }
    }
#else
    pause(std::chrono::milliseconds(40));
    waitUntil("the program has met all input", [] { return !Hands::hasMoreForProgram(); });
#endif
}

wxTopLevelWindow* Driver::window(const std::string& name) {
    for (wxWindow* one : wxTopLevelWindows) {
        if (one->GetName() == name && one->IsShown()) {
            return static_cast<wxTopLevelWindow*>(one);
        }
    }
    return nullptr;
}

wxWindow* Driver::widget(const std::string& windowName, const std::string& name) {
    wxTopLevelWindow* top = window(windowName);
    return top == nullptr ? nullptr : wxWindow::FindWindowByName(nativeText(name), top);
}

bool Driver::isShown(const std::string& name) {
    return onWindowThread([&] { return window(name) != nullptr; });
}

bool Driver::isEnabled(const std::string& windowName, const std::string& name) {
    return onWindowThread([&] {
        const wxWindow* found = widget(windowName, name);
        return found != nullptr && found->IsEnabled();
    });
}

bool Driver::hasFocus(const std::string& windowName, const std::string& name) {
    return onWindowThread([&] {
        const wxWindow* found = widget(windowName, name);
        return found != nullptr && found->HasFocus();
    });
}

std::string Driver::focused() {
    return onWindowThread([] {
        const wxWindow* found = wxWindow::FindFocus();
        const bool isList = found == nullptr || dynamic_cast<const wxChoice*>(found) != nullptr;
        return isList ? std::string("(list)") : portableText(found->GetName());
    });
}

// The window manager first places a window and then gives it the keyboard.
void Driver::waitForWindow(const std::string& name) {
    waitUntil("the window \"" + name + "\" is up and has the keyboard", [&] {
        wxTopLevelWindow* found = window(name);
        return found != nullptr && found->IsActive();
    });
    settle();
}

void Driver::waitForWindowToGo(const std::string& name) {
    waitUntil("the window \"" + name + "\" is gone", [&] { return window(name) == nullptr; });
    settle();
}

void Driver::leaveByEscape(const std::string& name, const std::string& behind) {
    key(WXK_ESCAPE);
    waitForWindowToGo(name);
    waitForWindow(behind);
}

std::string Driver::text(const std::string& windowName, const std::string& name) {
    return onWindowThread(
        [&] { return portableText(valueOf(as<wxWindow>(widget(windowName, name), name))); });
}

std::string Driver::title(const std::string& windowName) {
    return onWindowThread([&] {
        wxTopLevelWindow* top = window(windowName);
        return top == nullptr ? std::string() : portableText(top->GetTitle());
    });
}

bool Driver::isChecked(const std::string& windowName, const std::string& name) {
    return onWindowThread([&] {
        wxWindow* found = widget(windowName, name);
        if (const auto* option = dynamic_cast<wxRadioButton*>(found)) {
            return option->GetValue();
        }
        return as<wxCheckBox>(found, name).GetValue();
    });
}

wxSize Driver::sizeOf(const std::string& windowName, const std::string& name) {
    return onWindowThread(
        [&] { return as<wxWindow>(widget(windowName, name), name).GetClientSize(); });
}

wxPoint Driver::screenPoint(const std::string& windowName, const std::string& name,
                            wxPoint inWidget) {
    waitUntil("\"" + name + "\" of \"" + windowName + "\" can be used", [&] {
        const wxWindow* found = widget(windowName, name);
        return found != nullptr && found->IsShownOnScreen() && found->IsEnabled();
    });
    return onWindowThread([&] { return screenPointNow(windowName, name, inWidget); });
}

wxPoint Driver::screenPointNow(const std::string& windowName, const std::string& name,
                               wxPoint inWidget) {
    const auto& found = as<wxWindow>(widget(windowName, name), name);
    return found.ClientToScreen(inWidget) * pixelsPerUnit(found);
}

void Driver::click(const std::string& windowName, const std::string& name) {
    waitForWindow(windowName);
    const wxSize size = sizeOf(windowName, name);
    clickAt(windowName, name, {size.x / 2, size.y / 2});
}

// The window manager may still be moving a window that has just come up or changed its size.
void Driver::clickAt(const std::string& windowName, const std::string& name, wxPoint inWidget) {
    wxPoint at = screenPoint(windowName, name, inWidget);
    for (wxPoint before(-1, -1); before != at;) {
        before = at;
        hands_.moveTo(at);
        settle();
        at = screenPoint(windowName, name, inWidget);
    }
    clickScreen(at);
}

void Driver::clickScreen(wxPoint at) {
    if (at == lastClick_ && Clock::now() - lastClickTime_ < doubleClickTime) {
        pause(doubleClickTime);
    }
    hands_.moveTo(at);
    settle();
    hands_.click();
    lastClick_ = at;
    lastClickTime_ = Clock::now();
    settle();
}

void Driver::doubleClickAt(const std::string& windowName, const std::string& name,
                           wxPoint inWidget) {
    hands_.moveTo(screenPoint(windowName, name, inWidget));
    settle();
    pause(doubleClickTime); // an earlier click must not count
    hands_.doubleClick();
    settle();
}

void Driver::rightClick(const std::string& windowName, const std::string& name) {
    const wxSize size = sizeOf(windowName, name);
    hands_.moveTo(screenPoint(windowName, name, {size.x / 2, size.y / 2}));
    settle();
    hands_.rightClick();
    waitForList(true);
}

void Driver::pointAt(const std::string& windowName, const std::string& name, wxPoint inWidget) {
    hands_.moveTo(screenPoint(windowName, name, inWidget));
    settle();
}

void Driver::drag(const std::string& windowName, const std::string& name, wxPoint from,
                  wxPoint to) {
    dragScreen(screenPoint(windowName, name, from), screenPoint(windowName, name, to));
}

void Driver::dragInto(wxPoint from, const std::string& windowName, const std::string& name) {
    const wxSize size = sizeOf(windowName, name);
    dragScreen(from, onWindowThread([&] {
                   return screenPointNow(windowName, name, {size.x / 2, size.y / 2});
               }));
}

void Driver::dragScreen(wxPoint start, wxPoint end) {
    hands_.moveTo(start);
    settle();
    hands_.press();
    settle();
    constexpr int steps = 4;
    for (int i = 1; i <= steps; ++i) {
        hands_.moveTo(start + (end - start) * i / steps);
        settle();
    }
    hands_.release();
    settle();
}

void Driver::press(const std::string& windowName, const std::string& name, wxPoint inWidget,
                   const std::function<void()>& meanwhile) {
    const wxPoint at = screenPoint(windowName, name, inWidget);
    hands_.moveTo(at);
    settle();
    hands_.press();
    meanwhile();
    hands_.release();
    settle();
}

// The toolkit's simulator has no wheel, so its event is sent to the widget under the pointer.
void Driver::turnWheel(const std::string& windowName, const std::string& name, int notches) {
    const wxSize size = sizeOf(windowName, name);
    hands_.moveTo(screenPoint(windowName, name, {size.x / 2, size.y / 2}));
    settle();
    hands_.turnWheel(notches);
    settle();
}

// A menu lies outside of what the toolkit can be asked about, so it is opened by the key of its
// bar and gone through with the arrow keys.
void Driver::goToMenuEntry(const std::string& windowName, int menu, int entry) {
    waitForWindow(windowName);
    const int letter = onWindowThread([&] {
        auto& frame = as<wxFrame>(window(windowName), windowName);
        const wxString label = frame.GetMenuBar()->GetMenuLabel(static_cast<std::size_t>(menu));
        return static_cast<int>(label.AfterFirst('&').Upper()[0].GetValue());
    });
    key(letter, wxMOD_ALT);
    waitForList(true);
    for (int i = 0; i < entry; ++i) {
        key(WXK_DOWN);
    }
}

// What only the display can be asked about.
void Driver::waitForDisplay(const std::string& what, const std::function<bool()>& test) {
    const Clock::time_point end = Clock::now() + longestWait;
    while (!test()) {
        if (Clock::now() > end) {
            throw DriverError("Timed out waiting until " + what + ".");
        }
        pause(std::chrono::milliseconds(10));
    }
    settle();
}

// Keys that come before the list would do something else.
void Driver::waitForList(bool open) {
    waitForDisplay(open ? "a list is open" : "the list is closed",
                   [&] { return hands_.seesOpenList() == open; });
}

void Driver::waitForSystemDialog(const std::string& title) {
    waitForDisplay("the dialog \"" + title + "\" has the keyboard",
                   [&] { return hands_.activeTitle() == title; });
}

void Driver::clickMenu(const std::string& windowName, int menu, int entry) {
    goToMenuEntry(windowName, menu, entry);
    key(WXK_RETURN);
}

bool Driver::menuEntryIsEnabled(const std::string& windowName, int menu, int entry) {
    return onWindowThread([&] {
        const auto& frame = as<wxFrame>(window(windowName), windowName);
        return frame.GetMenuBar()
            ->GetMenu(static_cast<std::size_t>(menu))
            ->FindItemByPosition(static_cast<std::size_t>(entry))
            ->IsEnabled();
    });
}

void Driver::clickListEntry(const std::string& windowName, const std::string& name,
                            const std::string& entry) {
    wxPoint at;
    waitUntil("\"" + name + "\" shows \"" + entry + "\"", [&] {
        auto* list = dynamic_cast<wxListBox*>(widget(windowName, name));
        const int index = list == nullptr ? wxNOT_FOUND : list->FindString(nativeText(entry), true);
        if (index == wxNOT_FOUND) {
            return false;
        }
        list->EnsureVisible(index);
        for (int y = 1; y < list->GetClientSize().y; y += 3) {
            if (list->HitTest(wxPoint(12, y)) == index) {
                at = wxPoint(12, y + 5);
                return true;
            }
        }
        return false; // filled, but not yet laid out
    });
    clickAt(windowName, name, at);
}

void Driver::openFolderEntry(const std::string& windowName, const std::string& name,
                             const std::string& folder) {
    const wxPoint at = onWindowThread([&] {
        auto& list = as<FolderListBox>(widget(windowName, name), name);
        const int index = list.indexOf(folder);
        if (index < 0) {
            throw DriverError("There is no folder \"" + folder + "\" in the list.");
        }
        list.bringIntoSight(index);
        const wxRect place = list.placeOf(index);
        return wxPoint(place.x + place.width / 2, place.y + place.height / 2);
    });
    const wxPoint onScreen = screenPoint(windowName, name, at);
    hands_.moveTo(onScreen);
    pause(doubleClickTime); // a click just before would make a triple click of it
    hands_.doubleClick();
    lastClick_ = onScreen;
    lastClickTime_ = Clock::now();
    settle();
}

void Driver::choose(const std::string& windowName, const std::string& name, int entry) {
    click(windowName, name);
    waitForList(true);
    const int now =
        onWindowThread([&] { return as<wxChoice>(widget(windowName, name), name).GetSelection(); });
    for (int i = now; i < entry; ++i) {
        key(WXK_DOWN);
    }
    for (int i = now; i > entry; --i) {
        key(WXK_UP);
    }
    key(WXK_RETURN);
    waitForList(false);
    waitUntil("the entry is chosen in \"" + name + "\"", [&] {
        const auto* list = dynamic_cast<wxChoice*>(widget(windowName, name));
        return list != nullptr && list->GetSelection() == entry;
    });
}

void Driver::dragSlider(const std::string& windowName, const std::string& name, int value) {
    const auto placeOf = [&](double fraction) {
        return onWindowThread([&] {
            auto& slider = as<wxSlider>(widget(windowName, name), name);
            const int thumb = slider.FromDIP(16);
            const wxSize size = slider.GetClientSize();
            return wxPoint(thumb / 2 + wxRound((size.x - thumb) * fraction), size.y / 2);
        });
    };
    const double now = onWindowThread([&] {
        auto& slider = as<wxSlider>(widget(windowName, name), name);
        return double(slider.GetValue() - slider.GetMin()) / (slider.GetMax() - slider.GetMin());
    });
    const double wanted = onWindowThread([&] {
        auto& slider = as<wxSlider>(widget(windowName, name), name);
        return double(value - slider.GetMin()) / (slider.GetMax() - slider.GetMin());
    });
    drag(windowName, name, placeOf(now), placeOf(wanted));
}

void Driver::closeByCloseBox(const std::string& windowName) {
    // The close box belongs to the window manager; this is what it sends.
    onWindowThread([&] {
        if (wxTopLevelWindow* top = window(windowName)) {
            top->Close();
        }
    });
    settle();
}

void Driver::key(int keyCode, int modifiers) {
    hands_.key(keyCode, modifiers);
    settle();
}

void Driver::keys(int keyCode, int times) {
    for (int i = 0; i < times; ++i) {
        hands_.key(keyCode, wxMOD_NONE);
    }
    settle();
}

std::string Driver::clipboard() {
    return onWindowThread([] {
        wxTextDataObject text;
        if (wxTheClipboard->Open()) {
            wxTheClipboard->GetData(text);
            wxTheClipboard->Close();
        }
        return portableText(text.GetText());
    });
}

void Driver::type(const std::string& text) {
    hands_.type(text);
    settle();
}

void Driver::retype(const std::string& text) {
    key('A', wxMOD_CONTROL);
    type(text);
}

void Driver::copy(const std::string& text) {
    onWindowThread([&] {
        const wxClipboardLocker clipboard;
        if (!clipboard || !wxTheClipboard->SetData(new wxTextDataObject(nativeText(text)))) {
            throw DriverError("The clipboard takes no text.");
        }
    });
}

double Driver::timeToOpenByClick(const std::string& windowName, const std::string& button) {
    const wxSize size = sizeOf("frmMain", button);
    const wxPoint at = screenPoint("frmMain", button, {size.x / 2, size.y / 2});
    hands_.moveTo(at);
    pause(doubleClickTime);
    const double time = timeToOpen(windowName, [this] { hands_.click(); });
    lastClick_ = at;
    lastClickTime_ = Clock::now();
    return time;
}

double Driver::timeToOpenByMenu(const std::string& windowName, int menu, int entry) {
    goToMenuEntry("frmMain", menu, entry);
    return timeToOpen(windowName, [this] { hands_.key(WXK_RETURN, wxMOD_NONE); });
}

double Driver::timeToOpen(const std::string& windowName, const std::function<void()>& act) {
    const Clock::time_point start = Clock::now();
    act();
    while (!isShown(windowName)) {
        if (Clock::now() > start + longestWait) {
            throw DriverError("The window \"" + windowName + "\" does not come up.");
        }
    }
    const double time = Milliseconds(Clock::now() - start).count();
    waitForWindow(windowName);
    return time;
}

} // namespace veldara::test
