#include "gui/wx_screen.h"

#include "gui/first_show.h"

#include <algorithm>
#include <utility>

#include <wx/dialog.h>

namespace veldara {

WxScreen::WxScreen(WxEventPump& pump) : pump_(pump) {
    // The main window handles input while it works; a dialog does not, unless the window with
    // the Cancel button is in front of it.
    pump_.wantsInput = [this] {
        const auto any = [this](auto&& test) {
            return std::any_of(shown_.begin(), shown_.end(), test);
        };
        return any([](const Shown& one) { return one.kind->blocksParent; }) ||
               !any([](const Shown& one) { return one.modal; });
    };
}

WxScreen::~WxScreen() {
    pump_.wantsInput = {};
    clear();
}

std::shared_ptr<View> WxScreen::bringUp(Window& window, bool modal) {
    const ViewKind& kind = viewKind(window.name());
    wxWindow* parent = frontWindow();
    if (kind.beforeMainWindow && !shown_.empty()) {
        parent = &shown_.front().view->native();
    }
    std::shared_ptr<View> view = kind.make(window, parent);
    view->onClose = [this, &window] { pump_.afterWork([&window] { window.userClose(); }); };
    prepareFirstShow(view->native());
    shown_.push_back({&window, &kind, view, modal});
    if (kind.blocksParent && parent != nullptr) {
        parent->Disable();
    }
    return view;
}

void WxScreen::show(Window& window) {
    const std::shared_ptr<View> view = bringUp(window, false);
    view->native().Show();
    view->shown();
}

void WxScreen::showModal(Window& window) {
    std::shared_ptr<View> view = bringUp(window, true);
    wxWindow* before = view->native().GetParent();
    view->shown();
    static_cast<wxDialog&>(view->native()).ShowModal();
    view.reset();
    // Some window managers lose the keyboard when a message box and its dialog close together.
    if (before != nullptr && before == frontWindow()) {
        before->Raise();
    }
}

void WxScreen::hide(Window& window) {
    const auto found = std::find_if(shown_.begin(), shown_.end(),
                                    [&](const Shown& one) { return one.window == &window; });
    if (found == shown_.end()) {
        return;
    }
    const bool mainWindow = found == shown_.begin();
    const Shown gone = std::move(*found);
    shown_.erase(found);
    takeDown(gone);
    if (mainWindow) {
        end();
    }
}

void WxScreen::takeDown(const Shown& gone) {
    wxTopLevelWindow& native = gone.view->native();
    if (gone.kind->blocksParent && native.GetParent() != nullptr) {
        native.GetParent()->Enable();
    }
    if (gone.modal) {
        static_cast<wxDialog&>(native).EndModal(wxID_OK);
    }
    gone.view->retire();
}

void WxScreen::endProgram() {
    end();
}

void WxScreen::end() {
    if (ended_) {
        return;
    }
    ended_ = true;
    clear();
    if (onEnd) {
        onEnd();
    }
}

void WxScreen::clear() {
    while (!shown_.empty()) { // last first: it is in front
        const Shown last = std::move(shown_.back());
        shown_.pop_back();
        takeDown(last);
    }
}

wxWindow* WxScreen::frontWindow() const {
    return shown_.empty() ? nullptr : &shown_.back().view->native();
}

wxWindow* WxScreen::dialogParent() const {
    const auto found = std::find_if(shown_.rbegin(), shown_.rend(),
                                    [](const Shown& one) { return !one.kind->blocksParent; });
    return found == shown_.rend() ? nullptr : &found->view->native();
}

wxTopLevelWindow* WxScreen::nativeOf(const Window& window) const {
    for (const Shown& one : shown_) {
        if (one.window == &window) {
            return &one.view->native();
        }
    }
    return nullptr;
}

} // namespace veldara
