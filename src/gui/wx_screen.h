// The real screen: brings native windows up for window models and takes them down again.
#pragma once

#include "controls/window.h"
#include "gui/view.h"
#include "gui/wx_event_pump.h"

#include <functional>
#include <memory>
#include <vector>

namespace veldara {

class WxScreen : public Screen {
  public:
    explicit WxScreen(WxEventPump& pump);
    ~WxScreen() override;

    void show(Window& window) override;
    void showModal(Window& window) override;
    void hide(Window& window) override;
    void endProgram() override;

    // Closes all windows without notifying their models, which may be destroyed afterwards.
    void clear();

    // The parent of a dialog of the system; null when there is none. A progress
    // window is none of them: it may go while the dialog is still open.
    wxWindow* dialogParent() const;
    // The native window of a shown model, null when it is not shown.
    wxTopLevelWindow* nativeOf(const Window& window) const;

    // The main window has gone, or the program was ended: called once.
    std::function<void()> onEnd;

  private:
    struct Shown {
        Window* window = nullptr;
        const ViewKind* kind = nullptr;
        std::shared_ptr<View> view; // a modal one lives until its event loop has ended
        bool modal = false;
    };

    std::shared_ptr<View> bringUp(Window& window, bool modal);
    wxWindow* frontWindow() const;
    static void takeDown(const Shown& gone);
    void end();

    WxEventPump& pump_;
    std::vector<Shown> shown_; // in the order they came up; the first is the main window
    bool ended_ = false;
};

} // namespace veldara
