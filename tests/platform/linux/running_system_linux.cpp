#include "platform/running_system.h"

#include <cstdlib>

namespace veldara::test {

void moveUserInto(const TempFolder& home) {
    ::setenv("HOME", home.text().c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (home / "config").c_str(), 1);
    ::setenv("XDG_DATA_HOME", (home / "data").c_str(), 1);
    ::unsetenv("XDG_DESKTOP_DIR");
    ::unsetenv("XDG_DOCUMENTS_DIR");
}

// The whole registry lies in the test's own home folder, and goes with it.
std::string freshKey() {
    return "Software\\VeldaraTest\\adaptors";
}

void removeFreshKeys() {}

void storeOtherType(const TempFolder& home, const std::string& key, const std::string& name,
                    const std::vector<std::uint8_t>& bytes) {
    constexpr const char* digits = "0123456789abcdef";
    std::string text = "[" + key + "]\nother \"" + name + "\" =";
    for (const std::uint8_t byte : bytes) {
        text += std::string(" ") + digits[byte / 16] + digits[byte % 16];
    }
    home.addFile("config/veldara/values", text + "\n");
}

} // namespace veldara::test
