// The arrow pad beside the main preview: which arm was pressed, and how far a held arm moves the
// crop.
#pragma once

#include "layout/preview_geometry.h"

namespace veldara {

// The numbers are those that the main window keeps.
enum ArrowDirection { arrowNone = 0, arrowUp = 1, arrowRight = 2, arrowDown = 3, arrowLeft = 4 };

// The direction pressed on a pad of that size; arrowNone in a corner. Both bands are measured
// against the height, as the pad is square.
ArrowDirection arrowDirectionAt(double x, double y, double width, double height);

// How far the pan goes at one step of a press, by the steps made before it. It comes to a stop
// after 36 steps until the pad is pressed again.
int panStep(int repeat);

struct PanStepResult {
    Pan pan;
    bool stepped = false; // false: the crop already stood at that edge and nothing is to be redrawn
};

PanStepResult stepPan(int direction, int repeat, Pan pan);

// What the main window remembers of the pad.
struct ArrowPad {
    int direction = arrowNone; // of the arm that is held
    int repeat = 0;            // steps made since it was pressed
    int homeLeft = 0;          // where the pad that is seen stands
};

} // namespace veldara
