// A view: the native window of one window model, made when the model is shown and gone when it is
// hidden. It makes widgets, lays them out and binds them; it takes no decision.
#pragma once

#include "controls/window.h"
#include "gui/bindings.h"

#include <functional>
#include <memory>

#include <wx/toplevel.h>

namespace veldara {

class View {
  public:
    virtual ~View();
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    wxTopLevelWindow& native() { return *native_; }

    // Called by the screen when the native window has come up.
    virtual void shown() {}

    // Takes the native window from the screen and lets go of the model.
    void retire();

    // The user's close box, or Escape in a window that Escape closes.
    std::function<void()> onClose;

  protected:
    // Takes the native window over: it is destroyed with the view.
    View(Window& model, wxTopLevelWindow* native);

    Bindings& bind() { return bindings_; }
    void closeOnEscape();
    // Sizes the window to its contents, which is also its smallest size, and centres it.
    void fitAndCentre();

  private:
    wxTopLevelWindow* native_;
    Bindings bindings_;
};

// How the view of a window is made, and in front of which other window.
struct ViewKind {
    std::function<std::unique_ptr<View>(Window&, wxWindow* parent)> make;
    // The main window is its parent, because it outlives the dialog that it is shown from; the
    // parent of the others is the topmost window.
    bool beforeMainWindow = false;
    // Disables its parent window without being modal to the program.
    bool blocksParent = false;
};

// Throws Error when no window is called so.
const ViewKind& viewKind(const std::string& windowName);

} // namespace veldara
