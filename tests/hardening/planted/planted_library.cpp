// A library that somebody has put beside the program: leaves a file behind when it is loaded.
// Nothing but calls of kernel32, since the loader's lock is held meanwhile.
#include <array>

#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        std::array<wchar_t, 4 * MAX_PATH> path{};
        GetModuleFileNameW(library, path.data(), MAX_PATH);
        lstrcatW(path.data(), L".loaded");
        CloseHandle(CreateFileW(path.data(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    }
    return TRUE;
}
