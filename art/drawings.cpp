#include "art/drawings.h"

#include "picture_texts.h"

namespace veldara {

std::string_view drawingSvg(Drawing drawing) {
    switch (drawing) {
    case Drawing::none:
        return {};
    case Drawing::loading1:
        return texts::loading1Text;
    case Drawing::loading2:
        return texts::loading2Text;
    case Drawing::loading3:
        return texts::loading3Text;
    case Drawing::loading4:
        return texts::loading4Text;
    case Drawing::error:
        return texts::errorText;
    case Drawing::pickImage:
        return texts::pick_imageText;
    case Drawing::pickFolder:
        return texts::pick_folderText;
    case Drawing::arrowPad:
        return texts::arrow_padText;
    case Drawing::arrowPadUp:
        return texts::arrow_pad_upText;
    case Drawing::arrowPadRight:
        return texts::arrow_pad_rightText;
    case Drawing::arrowPadDown:
        return texts::arrow_pad_downText;
    case Drawing::arrowPadLeft:
        return texts::arrow_pad_leftText;
    case Drawing::checkMark:
        return texts::check_markText;
    }
    return {};
}

std::string_view iconSvg(int pixelsPerSide) {
    return pixelsPerSide <= 24 ? texts::icon_smallText : texts::iconText;
}

} // namespace veldara
