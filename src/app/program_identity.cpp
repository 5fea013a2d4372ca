#include "app/program_identity.h"

namespace veldara {

std::string programTitle() {
    return "Veldara";
}

std::string versionText(int major, int minor, int revision) {
    return std::to_string(major) + "." + std::to_string(minor) + std::to_string(revision);
}

std::string programVersion() {
    return versionText(VELDARA_VERSION_MAJOR, VELDARA_VERSION_MINOR, VELDARA_VERSION_REVISION);
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
