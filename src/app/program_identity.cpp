#include "app/program_identity.h"

namespace veldara {

std::string programTitle() {
    return "Veldara";
}

std::string companyName() {
    return "Korvane Software, LLC";
}

std::string copyrightText(int year) {
    const std::string digits = std::to_string(year);
    return "Copyright \u00A9 " + std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') +
           digits + " " + companyName();
}

std::string programWebAddress() {
    return VELDARA_WEB_ADDRESS;
}

} // namespace veldara
