#include "layout/arrow_pad.h"

#include <algorithm>
#include <cmath>

namespace veldara {

ArrowDirection arrowDirectionAt(double x, double y, double width, double height) {
    if (std::fabs(0.5 - y / height) < 0.25) {
        return x / width < 0.5 ? arrowLeft : arrowRight;
    }
    if (std::fabs(0.5 - x / height) < 0.25) {
        return y / height < 0.5 ? arrowUp : arrowDown;
    }
    return arrowNone;
}

int panStep(int repeat) {
    if (repeat <= 0) {
        return 1;
    }
    if (repeat <= 4) {
        return 2;
    }
    if (repeat <= 15) {
        return 5;
    }
    if (repeat <= 25) {
        return 10;
    }
    return repeat <= 35 ? 20 : 0;
}

PanStepResult stepPan(int direction, int repeat, Pan pan) {
    const int step = panStep(repeat);
    const bool vertical = direction == arrowUp || direction == arrowDown;
    const bool growing = direction == arrowRight || direction == arrowDown;
    if (!vertical && direction != arrowLeft && direction != arrowRight) {
        return {pan, false};
    }
    int& pos = vertical ? pan.vertPos : pan.horzPos;
    if (pos == (growing ? 200 : 0)) {
        return {pan, false};
    }
    pos = growing ? std::min(pos + step, 200) : std::max(pos - step, 0);
    return {pan, true};
}

} // namespace veldara
