// The full-screen preview: the poster as large as the screen allows, and a close button.
#pragma once

#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/window.h"
#include "layout/full_preview.h"
#include "platform/platform.h"

namespace veldara {

// What the preview window needs of the main window.
class PreviewOwner {
  public:
    virtual ~PreviewOwner() = default;

    // Width by height of the whole poster; 0 when the tile sizes are invalid.
    virtual double GetFinalImgWhRatio() const = 0;
    // Renders the cropped poster with its tile lines, as large as the box, into it. Serves
    // events meanwhile.
    virtual void FillPreview(Picture& box) = 0;
};

// The position and size of a control, in pixels of the window's inner area.
struct Place {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Place&) const = default;
};

class frmPreview : public Window {
  public:
    Picture picPreview{"picPreview"}; // placed and sized by this window
    Button cmdClose{"cmdClose"};

    frmPreview(Platform& platform, Screen& screen, PreviewOwner& owner);

    // The close button's place; its size is the view's to say, before the window is laid out.
    const Place& closePlace() const { return closePlace_; }
    void setCloseButtonSize(int width, int height);

    // Lays out the controls for the window's current size.
    void FitToNewSize();
    // The same, with the picture given the poster's ratio. Says so when there is none.
    void FitToNewSizeForPic();
    // Lays out and renders; for the main window after showing this one.
    void Fill();

    // The window's inner size in pixels has become another one: everything is laid out again, and
    // the poster rendered again.
    void userResize(int width, int height);

    void cmdClose_Click();

  protected:
    void unloadHandler() override;

  private:
    bool fitToRatio();
    void place(const PreviewWindowLayout& layout);
    void render();

    Platform& platform_;
    PreviewOwner& owner_;
    int width_ = 0; // of the window's inner area, in pixels
    int height_ = 0;
    Place closePlace_;
    bool filled_ = false;           // a new size is to be rendered, too
    bool filling_ = false;          // the poster is being rendered
    bool resizedMeanwhile_ = false; // and is to be rendered again
};

} // namespace veldara
