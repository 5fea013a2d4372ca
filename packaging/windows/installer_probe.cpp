// What the installer's tests ask of the system and no shell can.
//
//   installer_probe access KEY         who may do what with a key of the machine: "allow MASK SID"
//   lines installer_probe link KEY TARGET    makes KEY a link to TARGET, both keys of the machine
//   installer_probe run PROGRAM ...    runs it and waits for it and every process that it starts
#include <cstdio>
#include <string>
#include <string_view>

#include <windows.h>
// (after it, which they need)
#include <aclapi.h>
#include <sddl.h>
#include <shellapi.h>

namespace {

int showAccess(const std::wstring& key) {
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    std::wstring name = L"MACHINE\\" + key;
    if (GetNamedSecurityInfoW(name.data(), SE_REGISTRY_KEY, DACL_SECURITY_INFORMATION, nullptr,
                              nullptr, &list, nullptr, &descriptor) != ERROR_SUCCESS) {
        return 1;
    }
    for (DWORD i = 0; list != nullptr && i < list->AceCount; ++i) {
        void* entry = nullptr;
        GetAce(list, i, &entry);
        const auto* allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
        wchar_t* user = nullptr;
        ConvertSidToStringSidW(const_cast<DWORD*>(&allowed->SidStart), &user);
        const bool allows = allowed->Header.AceType == ACCESS_ALLOWED_ACE_TYPE;
        std::printf("%s 0x%lx %ls\n", allows ? "allow" : "deny", allowed->Mask, user);
        LocalFree(user);
    }
    LocalFree(descriptor);
    return 0;
}

int makeLink(const std::wstring& key, const std::wstring& target) {
    HKEY link = nullptr;
    const std::wstring full = L"\\Registry\\Machine\\" + target;
    const LONG created =
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, REG_OPTION_CREATE_LINK,
                        KEY_SET_VALUE | KEY_CREATE_LINK, nullptr, &link, nullptr);
    if (created != ERROR_SUCCESS) {
        return 1;
    }
    const LONG set = RegSetValueExW(link, L"SymbolicLinkValue", 0, REG_LINK,
                                    reinterpret_cast<const BYTE*>(full.c_str()),
                                    static_cast<DWORD>(full.size() * sizeof(wchar_t)));
    RegCloseKey(link);
    return set == ERROR_SUCCESS ? 0 : 1;
}

// An uninstaller copies itself aside and ends; the copy does the work.
int runToTheEnd(std::wstring commandLine) {
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    const HANDLE port = CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 1);
    JOBOBJECT_ASSOCIATE_COMPLETION_PORT association{job, port};
    SetInformationJobObject(job, JobObjectAssociateCompletionPortInformation, &association,
                            sizeof association);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, CREATE_SUSPENDED,
                        nullptr, nullptr, &start, &process) ||
        !AssignProcessToJobObject(job, process.hProcess)) {
        return 127;
    }
    ResumeThread(process.hThread);
    constexpr DWORD patience = 5 * 60 * 1000;
    DWORD message = 0;
    ULONG_PTR key = 0;
    OVERLAPPED* data = nullptr;
    while (GetQueuedCompletionStatus(port, &message, &key, &data, patience) &&
           message != JOB_OBJECT_MSG_ACTIVE_PROCESS_ZERO) {
    }
    DWORD status = 1;
    GetExitCodeProcess(process.hProcess, &status);
    return message == JOB_OBJECT_MSG_ACTIVE_PROCESS_ZERO ? static_cast<int>(status) : 124;
}

// The words behind "installer_probe run", as a command line again.
std::wstring commandBehindRun() {
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::wstring line;
    for (int i = 2; i < count; ++i) {
        const std::wstring word = words[i];
        const bool quoted = word.find(L' ') != std::wstring::npos;
        line += (line.empty() ? L"" : L" ") + (quoted ? L'"' + word + L'"' : word);
    }
    LocalFree(words);
    return line;
}

} // namespace

int main(int count, char** arguments) {
    const std::string_view act = count > 1 ? arguments[1] : "";
    const auto wide = [&](int i) {
        const std::string_view text = arguments[i];
        return std::wstring(text.begin(), text.end()); // names of keys, all ASCII
    };
    if (act == "access" && count == 3) {
        return showAccess(wide(2));
    }
    if (act == "link" && count == 4) {
        return makeLink(wide(2), wide(3));
    }
    if (act == "run" && count > 2) {
        return runToTheEnd(commandBehindRun());
    }
    std::fputs("usage: installer_probe access KEY | link KEY TARGET | run PROGRAM ...\n", stderr);
    return 2;
}
