#include "app/frmStorage.h"

namespace veldara {

frmStorage::frmStorage(Screen& screen) : Window("frmStorage", screen) {
    picLoadingImg1.setDrawing(Drawing::loading1);
    picLoadingImg2.setDrawing(Drawing::loading2);
    picLoadingImg3.setDrawing(Drawing::loading3);
    picLoadingImg4.setDrawing(Drawing::loading4);
    picError.setDrawing(Drawing::error);
    picPickImage.setDrawing(Drawing::pickImage);
    picPickFolder.setDrawing(Drawing::pickFolder);
}

const Picture& frmStorage::loadingFrameAfter(Drawing shown) const {
    if (shown == picLoadingImg1.drawing()) {
        return picLoadingImg2;
    }
    if (shown == picLoadingImg2.drawing()) {
        return picLoadingImg3;
    }
    if (shown == picLoadingImg3.drawing()) {
        return picLoadingImg4;
    }
    return picLoadingImg1;
}

} // namespace veldara
