// For the installer's test: prints who may do what with a registry key, in the system's own
// notation.
//
//   show_access MACHINE\Software\...
#include <cstdio>

#include <windows.h>
// (after it, which they need)
#include <aclapi.h>
#include <sddl.h>

int main(int count, char** arguments) {
    PSECURITY_DESCRIPTOR access = nullptr;
    if (count != 2 ||
        GetNamedSecurityInfoA(arguments[1], SE_REGISTRY_KEY, DACL_SECURITY_INFORMATION, nullptr,
                              nullptr, nullptr, nullptr, &access) != 0) {
        return 1;
    }
    char* text = nullptr;
    if (ConvertSecurityDescriptorToStringSecurityDescriptorA(
            access, SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &text, nullptr) == 0) {
        return 1;
    }
    std::puts(text);
    return 0;
}
