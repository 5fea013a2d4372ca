#include "platform/text/version_text.h"

namespace veldara {

std::string versionText(int major, int minor, int revision) {
    return std::to_string(major) + "." + std::to_string(minor) + std::to_string(revision);
}

std::string programVersion() {
    return versionText(VELDARA_VERSION_MAJOR, VELDARA_VERSION_MINOR, VELDARA_VERSION_REVISION);
}

} // namespace veldara
