#include "paper/margin_lists.h"

namespace veldara {

std::vector<std::string> marginList(Units units, NumberStyle style) {
    const bool inches = units == Units::inches;
    const int last = inches ? 200 : 500;
    const double stepsPerUnit = inches ? 100 : 10;
    std::vector<std::string> entries;
    entries.reserve(static_cast<std::size_t>(last) + 1);
    // Divided, not summed: rounding errors of a sum add up.
    for (int step = 0; step <= last; ++step) {
        entries.push_back(
            formatNumber(step / stepsPerUnit, inches ? "####0.00" : "####0.0", style));
    }
    return entries;
}

std::string paperLengthText(double length, Units units, NumberStyle style) {
    return formatNumber(length, units == Units::inches ? "#####0.00" : "#####0.0", style);
}

std::string paperSizeText(double width, double height, Units units, NumberStyle style) {
    return paperLengthText(width, units, style) + " x " + paperLengthText(height, units, style);
}

std::string paperResultText(double width, double height, Units units, NumberStyle style) {
    return paperSizeText(width, height, units, style) +
           (units == Units::inches ? " Inches" : " mm");
}

std::string marginUnitsText(Units units) {
    return units == Units::inches ? "(Margin sizes in INCHES)" : "(Margin sizes in MILLIMETERS)";
}

std::string paperUnitsText(Units units) {
    return units == Units::inches ? "Inches" : "mm";
}

std::string mainUnitsText(Units units) {
    return units == Units::inches ? "Inches" : "Millimeters";
}

} // namespace veldara
