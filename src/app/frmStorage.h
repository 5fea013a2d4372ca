// A window that is never shown: it keeps the pictures that appear in the preview place while there
// is no preview.
#pragma once

#include "controls/picture.h"
#include "controls/window.h"

#include <array>

namespace veldara {

class frmStorage : public Window {
  public:
    explicit frmStorage(Screen& screen);

    Picture picLoadingImg1{"picLoadingImg1"};
    Picture picLoadingImg2{"picLoadingImg2"};
    Picture picLoadingImg3{"picLoadingImg3"};
    Picture picLoadingImg4{"picLoadingImg4"};
    Picture picError{"picError"};
    Picture picPickImage{"picPickImage"};
    Picture picPickFolder{"picPickFolder"};

    // The frame that follows the one shown; the first after the last and after anything else.
    const Picture& loadingFrameAfter(Drawing shown) const;
};

} // namespace veldara
