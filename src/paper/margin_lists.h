// The lists of margins to choose from, and how lengths of paper are written in both units.
#pragma once

#include "platform/measures.h"
#include "platform/text/number_text.h"

#include <string>
#include <vector>

namespace veldara {

// 0.00 to 2.00 inches by hundredths, or 0.0 to 50.0 millimetres by tenths.
std::vector<std::string> marginList(Units units, NumberStyle style = {});

// A length as it stands in a box or a label: two decimals in inches, one in millimetres.
std::string paperLengthText(double length, Units units, NumberStyle style = {});

// "8.50 x 11.00"
std::string paperSizeText(double width, double height, Units units, NumberStyle style = {});

// "8.50 x 11.00 Inches" or "210.0 x 297.0 mm"
std::string paperResultText(double width, double height, Units units, NumberStyle style = {});

constexpr const char* invalidPaperResult = "Invalid Paper size entered";
constexpr const char* invalidMarginResult = "Invalid margin size selected";

std::string marginUnitsText(Units units); // "(Margin sizes in INCHES)"
std::string paperUnitsText(Units units);  // of the dialog: "Inches" or "mm"
std::string mainUnitsText(Units units);   // of the main window: "Inches" or "Millimeters"

} // namespace veldara
