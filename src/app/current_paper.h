// The paper that one tile is printed on, as the paper dialog handed it over.
#pragma once

#include <string>

namespace veldara {

// Lengths in the units that were handed over with them (frmMain::iCurUnits).
struct CurrentPaper {
    std::string name;
    double width = 0.0;
    double height = 0.0;
    double tileWidth = 0.0; // without the margins
    double tileHeight = 0.0;
    std::string preferenceLine; // how the preferences store it
    int marginsLocked = 0;      // 1: the dialog keeps all four margins equal
};

} // namespace veldara
