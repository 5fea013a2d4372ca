#include "platform/running_system.h"

#include <windows.h>

namespace veldara::test {

namespace {

constexpr const char* testKeys = "Software\\VeldaraTest";

} // namespace

// The registry and the special folders belong to the machine; the tests use a key of their own.
void moveUserInto(const TempFolder&) {}

std::string freshKey() {
    return std::string(testKeys) + "\\adaptors";
}

void removeFreshKeys() {
    RegDeleteTreeA(HKEY_LOCAL_MACHINE, testKeys);
    RegDeleteKeyA(HKEY_LOCAL_MACHINE, testKeys);
}

void storeOtherType(const TempFolder&, const std::string& key, const std::string& name,
                    const std::vector<std::uint8_t>& bytes) {
    HKEY opened = nullptr;
    ASSERT_EQ(RegCreateKeyA(HKEY_LOCAL_MACHINE, key.c_str(), &opened), ERROR_SUCCESS);
    EXPECT_EQ(RegSetValueExA(opened, name.c_str(), 0, REG_BINARY, bytes.data(),
                             static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
    RegCloseKey(opened);
}

} // namespace veldara::test
