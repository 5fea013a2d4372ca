// What only Windows has: the stored types of its registry, its scripting component, and files that
// may be written in a folder that may not.
#include "platform/error.h"
#include "platform/running_system.h"
#include "platform/text/wide_text.h"
#include "platform/windows/help_file.h"
#include "platform/windows/scripting_file_system.h"
#include "platform/windows/shell_launcher.h"
#include "platform/windows/text_files.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <thread>

#include <sddl.h>
#include <windows.h>

namespace veldara::test {
namespace {

constexpr const char* beyondAscii = "\xC3\x9C"
                                    "berblick \xE7\x85\xA7\xE7\x89\x87";

class OnWindows : public OnTheRunningSystem {};

struct Stored {
    DWORD type = REG_NONE;
    std::wstring text;
    DWORD size = 0;
};

Stored storedText(const std::string& key, const wchar_t* name) {
    HKEY opened = nullptr;
    Stored stored;
    std::wstring buffer(64, L'?');
    stored.size = static_cast<DWORD>(buffer.size() * sizeof(wchar_t));
    EXPECT_EQ(RegOpenKeyA(HKEY_LOCAL_MACHINE, key.c_str(), &opened), ERROR_SUCCESS);
    EXPECT_EQ(RegQueryValueExW(opened, name, nullptr, &stored.type,
                               reinterpret_cast<BYTE*>(buffer.data()), &stored.size),
              ERROR_SUCCESS);
    RegCloseKey(opened);
    stored.text = buffer.substr(0, stored.size / sizeof(wchar_t));
    return stored;
}

TEST_F(OnWindows, TheProcessSpeaksUtf8) {
    EXPECT_EQ(GetACP(), static_cast<UINT>(CP_UTF8));
}

TEST_F(OnWindows, ATextIsStoredWithItsClosingNul) {
    const std::string key = freshKey();
    ASSERT_EQ(system.registry().setString(RegistryRoot::localMachine, key, "text",
                                          "\xC3\x9C"
                                          "ber"),
              0);
    const Stored stored = storedText(key, L"text");
    EXPECT_EQ(stored.type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(stored.text, std::wstring(L"\u00DCber\0", 5));
    removeFreshKeys();
}

TEST_F(OnWindows, ANumberIsStoredAsADword) {
    const std::string key = freshKey();
    ASSERT_EQ(system.registry().setNumber(RegistryRoot::localMachine, key, "number", -2), 0);
    const Stored stored = storedText(key, L"number");
    EXPECT_EQ(stored.type, static_cast<DWORD>(REG_DWORD));
    EXPECT_EQ(stored.size, 4U);
    EXPECT_EQ(stored.text, std::wstring(L"\xFFFE\xFFFF"));
    removeFreshKeys();
}

TEST_F(OnWindows, ATextWithoutAClosingNulIsReadWhole) {
    const std::string key = freshKey();
    ASSERT_EQ(system.registry().createKey(RegistryRoot::localMachine, key), 0);
    HKEY opened = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_LOCAL_MACHINE, key.c_str(), &opened), ERROR_SUCCESS);
    const wchar_t text[] = {L'a', L'b', L'c'};
    EXPECT_EQ(RegSetValueExW(opened, L"bare", 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                             sizeof text),
              ERROR_SUCCESS);
    RegCloseKey(opened);
    RegistryValue value;
    EXPECT_EQ(system.registry().queryValue(RegistryRoot::localMachine, key, "bare", value), 0);
    EXPECT_EQ(value.type, RegistryType::string);
    EXPECT_EQ(value.text, "abc");
    removeFreshKeys();
}

TEST_F(OnWindows, AFullAccessQueryKeepsEveryNulButTheClosingOne) {
    const std::string key = freshKey();
    ASSERT_EQ(system.registry().createKey(RegistryRoot::localMachine, key), 0);
    HKEY opened = nullptr;
    ASSERT_EQ(RegOpenKeyW(HKEY_LOCAL_MACHINE, wideText(key).c_str(), &opened), ERROR_SUCCESS);
    const wchar_t text[] = {L'a', 0, L'b', 0, 0};
    EXPECT_EQ(RegSetValueExW(opened, L"nuls", 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                             sizeof text),
              ERROR_SUCCESS);
    RegCloseKey(opened);
    RegistryValue value;
    EXPECT_EQ(
        system.registry().queryValueFullAccess(RegistryRoot::localMachine, key, "nuls", value), 0);
    EXPECT_EQ(value.text, std::string("a\0b\0", 4));
    EXPECT_EQ(system.registry().queryValue(RegistryRoot::localMachine, key, "nuls", value), 0);
    EXPECT_EQ(value.text, "a");
    removeFreshKeys();
}

TEST_F(OnWindows, AMissingComponentIsReported) {
    try {
        ScriptingFileSystem("veldara.nosuchcomponent").create();
        ADD_FAILURE() << "a component that nobody has installed was made";
    } catch (const Error& error) {
        EXPECT_NE(std::string(error.what()).find("veldara.nosuchcomponent"), std::string::npos)
            << error.what();
    }
}

TEST_F(OnWindows, TheComponentSeesNamesOfEveryAlphabet) {
    const std::string name = std::string(beyondAscii) + ".jpg";
    folder.addFile(name);
    const std::string below = folder.addFolder(beyondAscii);
    const std::unique_ptr<FileSystemObject> object = system.fileSystem().create();
    EXPECT_EQ(object->files(folder.text()), std::vector<std::string>{name});
    EXPECT_TRUE(object->fileExists(folder / name));
    EXPECT_TRUE(object->folderExists(below));
    object->createFolder(below + "\\" + beyondAscii);
    EXPECT_TRUE(std::filesystem::is_directory(pathOf(below + "\\" + beyondAscii)));
}

// Folder in folder, until no path of the component's own length reaches the innermost. Made by the
// names that the system takes as they are, however long.
std::vector<std::string> nestedFolders(const std::string& outermost) {
    std::vector<std::string> made;
    std::wstring deep = L"\\\\?\\" + wideText(outermost);
    while (deep.size() < 420) {
        deep += L"\\" + std::wstring(9, L'd');
        EXPECT_NE(CreateDirectoryW(deep.c_str(), nullptr), FALSE) << GetLastError();
        made.push_back(narrowText(std::wstring_view(deep).substr(4)));
    }
    return made;
}

void removeNested(const std::vector<std::string>& folders) {
    for (auto one = folders.rbegin(); one != folders.rend(); ++one) {
        RemoveDirectoryW((L"\\\\?\\" + wideText(*one)).c_str());
    }
}

TEST_F(OnWindows, PathsThatAreTooLongForTheComponentWorkToo) {
    const std::vector<std::string> folders = nestedFolders(folder.text());
    const std::unique_ptr<FileSystemObject> object = system.fileSystem().create();
    for (const std::string& deep : folders) {
        EXPECT_EQ(object->files(deep), std::vector<std::string>{});
        EXPECT_TRUE(object->folderExists(deep));
        EXPECT_FALSE(object->fileExists(deep));
    }
    const std::string& deepest = folders.back();
    object->createFolder(deepest + "\\below");
    EXPECT_TRUE(object->folderExists(deepest + "\\below"));
    EXPECT_EQ(system.drives().subfolders(deepest), std::vector<std::string>{"below"});
    const std::unique_ptr<TextWriter> writer = object->createTextFile(deepest + "\\text");
    writer->writeLine("line");
    writer->close();
    EXPECT_EQ(object->openTextFile(deepest + "\\text")->readLine(), "line");
    EXPECT_EQ(object->files(deepest), std::vector<std::string>{"text"});
    DeleteFileW((L"\\\\?\\" + wideText(deepest) + L"\\text").c_str());
    RemoveDirectoryW((L"\\\\?\\" + wideText(deepest) + L"\\below").c_str());
    removeNested(folders);
}

TEST_F(OnWindows, BrowsingWorksWithoutTheComponent) {
    const std::string name = std::string(beyondAscii) + ".jpg";
    const std::string file = folder.addFile(name);
    ScriptingFileSystem without("veldara.nosuchcomponent");
    EXPECT_THROW(without.create(), Error) << "a save still reports it";
    const std::unique_ptr<FileSystemObject> object = without.createOrSubstitute();
    EXPECT_EQ(object->files(folder.text()), std::vector<std::string>{name});
    EXPECT_EQ(object->files(folder.text() + "\\"), std::vector<std::string>{name});
    EXPECT_TRUE(object->fileExists(file));
    EXPECT_FALSE(object->fileExists(folder.text()));
    EXPECT_FALSE(object->fileExists(""));
    EXPECT_TRUE(object->folderExists(folder.text()));
    EXPECT_FALSE(object->folderExists(file));
    EXPECT_THROW(object->files(folder / "missing"), Error);
    EXPECT_THROW(object->files(""), Error);
    object->createFolder(folder / "new");
    EXPECT_TRUE(object->folderExists(folder / "new"));
    EXPECT_THROW(object->createFolder(folder / "new"), Error);
    const std::string drive = system.drives().driveOf(folder.text());
    EXPECT_GT(object->freeSpace(drive), 0U);
    EXPECT_THROW(object->freeSpace(""), Error);
}

// Another program's open file, shared as it says.
class Holder {
  public:
    Holder(const std::string& file, DWORD access, DWORD sharing)
        : handle_(CreateFileW(wideText(file).c_str(), access, sharing, nullptr, OPEN_EXISTING, 0,
                              nullptr)) {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE) << GetLastError();
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    ~Holder() { CloseHandle(handle_); }

  private:
    HANDLE handle_;
};

// Taken for missing, the file would be replaced by what the program begins with.
TEST_F(OnWindows, ATextFileIsReadWhileAnotherProgramWritesIt) {
    const std::string file = folder.addFile("profiles", "first\r\n");
    const Holder writer(file, GENERIC_WRITE, FILE_SHARE_READ);
    EXPECT_EQ(openTextFileToRead(file)->readLine(), "first");
}

TEST_F(OnWindows, ATextFileIsReadAfterAProgramThatSharesNothing) {
    const std::string file = folder.addFile("profiles", "first\r\n");
    auto holder = std::make_unique<Holder>(file, GENERIC_READ, 0);
    std::jthread program([held = std::move(holder)]() mutable {
        Sleep(300);
        held.reset();
    });
    EXPECT_EQ(openTextFileToRead(file)->readLine(), "first");
    program.join();
}

TEST_F(OnWindows, AReplacedTextFileIsNeitherLostNorLeftBesideItsName) {
    const std::string file = folder.addFile("profiles", "old\r\n");
    const std::unique_ptr<TextWriter> writer = createTextFileToWrite(file);
    writer->writeLine("new");
    {
        const Holder holder(file, GENERIC_READ, FILE_SHARE_READ);
        EXPECT_THROW(writer->close(), Error);
    }
    EXPECT_EQ(folder.content("profiles"), "old\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
    const std::unique_ptr<TextWriter> again = createTextFileToWrite(file);
    again->writeLine("new");
    again->close();
    EXPECT_EQ(folder.content("profiles"), "new\r\n");
}

// What happens in a folder where the user may write the file but make no other beside it.
TEST_F(OnWindows, AFileIsRewrittenWhereItLies) {
    const std::string file = folder.addFile(beyondAscii, "an older and longer text\r\n");
    const std::unique_ptr<TextWriter> writer = rewriteTextFile(file);
    writer->writeLine("new");
    EXPECT_EQ(folder.content(beyondAscii), "an older and longer text\r\n");
    writer->close();
    EXPECT_EQ(folder.content(beyondAscii), "new\r\n");
    EXPECT_THROW(rewriteTextFile(folder / "missing"), Error);
}

// Wine has no drive without a disk that could ask.
TEST_F(OnWindows, AnEmptyDriveIsNoQuestionOfTheSystem) {
    EXPECT_NE(GetErrorMode() & SEM_FAILCRITICALERRORS, 0U);
}

TEST_F(OnWindows, TheHelpViewerIsThere) {
    const HMODULE library = LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    ASSERT_NE(library, nullptr);
    EXPECT_NE(GetProcAddress(library, "HtmlHelpW"), nullptr);
    FreeLibrary(library);
}

TEST_F(OnWindows, AManualOfAnotherUserIsNotOpened) {
    const auto trusts = [](const wchar_t* owner) {
        PSID identifier = nullptr;
        EXPECT_NE(ConvertStringSidToSidW(owner, &identifier), FALSE);
        const bool result = ownerMayBeTrusted(identifier);
        LocalFree(identifier);
        return result;
    };
    EXPECT_TRUE(trusts(L"S-1-5-18")) << "the system";
    EXPECT_TRUE(trusts(L"S-1-5-32-544")) << "the administrators";
    EXPECT_FALSE(trusts(L"S-1-5-32-545")) << "all users";
    EXPECT_FALSE(trusts(L"S-1-1-0")) << "everybody";
    EXPECT_FALSE(trusts(L"S-1-5-21-1-2-3-1001")) << "a user";
    EXPECT_TRUE(ownerMayBeTrusted(wideText(folder.addFile("omra.chm")))) << "our own";
    EXPECT_FALSE(ownerMayBeTrusted(wideText(folder / "missing")));
}

TEST_F(OnWindows, TheHelpViewerGetsAPathThatItTakes) {
    const std::wstring plain = wideText(folder.addFile("omra.chm", "manual"));
    EXPECT_EQ(pathForViewer(plain), plain);
    for (const std::string& name : {std::string("C# and %20"), std::string(beyondAscii)}) {
        const std::wstring file = wideText(folder.addFile(name + "/omra.chm", "manual"));
        const std::wstring path = pathForViewer(file);
        EXPECT_TRUE(viewerTakes(path)) << narrowText(path);
        std::ifstream content{std::filesystem::path(path)};
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(content), {}), "manual");
    }
}

TEST_F(OnWindows, OnlyDrivesOfThisMachineAreFixed) {
    Drives& drives = system.drives();
    EXPECT_TRUE(drives.isOnFixedDrive("C:\\Program Files\\Veldara"));
    EXPECT_TRUE(drives.isOnFixedDrive("c:/x"));
    for (const char* path : {"", "C:", "C:x", "\\\\server\\share", "//server/share", "\\x", "x",
                             R"(\\?\UNC\server\share)", R"(\\.\C:\)", "?:\\x"}) {
        EXPECT_FALSE(drives.isOnFixedDrive(path)) << path;
    }
    EXPECT_TRUE(drives.answersSoon("C:\\"));
}

// Started by the shell, it leaves a trace and does nothing else.
const bool startedByShell = [] {
    wchar_t trace[MAX_PATH] = {};
    if (GetEnvironmentVariableW(L"VELDARA_TEST_TRACE", trace, MAX_PATH) != 0) {
        wchar_t program[MAX_PATH] = {};
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        if (std::wstring_view(program).find(L"Holiday_poster") != std::wstring_view::npos) {
            std::ofstream(std::filesystem::path(trace)) << "ran";
            ExitProcess(0);
        }
    }
    return false;
}();

// Opens the target beside a program whose name is the target's and ".exe". Returns what opening it
// was refused with: without a display nothing can be shown.
std::string openBesideProgram(const TempFolder& folder, const std::string& target) {
    wchar_t own[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    EXPECT_NE(CopyFileW(own, wideText(target + ".exe").c_str(), TRUE), FALSE);
    SetEnvironmentVariableW(L"VELDARA_TEST_TRACE", wideText(folder / "wrong").c_str());
    std::string refusal;
    try {
        ShellLauncher().openTarget(target);
    } catch (const Error& error) {
        refusal = error.what();
    }
    // The program beside it would have been started by now: one that is started later has run.
    SetEnvironmentVariableW(L"VELDARA_TEST_TRACE", wideText(folder / "right").c_str());
    ShellLauncher().startProgram(target + ".exe");
    for (int i = 0; i < 1200 && !std::filesystem::exists(pathOf(folder / "right")); ++i) {
        Sleep(100);
    }
    SetEnvironmentVariableW(L"VELDARA_TEST_TRACE", nullptr);
    EXPECT_TRUE(std::filesystem::exists(pathOf(folder / "right")));
    EXPECT_FALSE(std::filesystem::exists(pathOf(folder / "wrong")));
    return refusal;
}

// Wine shows the folder even when it is named without the separator; Windows then starts the
// program. docs/windows-check.md has the case.
TEST_F(OnWindows, AFolderIsShownAndNoProgramOfItsNameIsStarted) {
    openBesideProgram(folder, folder.addFolder("Holiday_poster_images"));
}

TEST_F(OnWindows, ADocumentIsOpenedAndNoProgramOfItsNameIsStarted) {
    const std::string document = folder.addFile("Holiday_poster.pdf", "%PDF-1.4");
    const std::string refusal = openBesideProgram(folder, document);
    EXPECT_EQ(refusal.find("is not there"), std::string::npos) << refusal;
    EXPECT_THROW(ShellLauncher().openTarget(folder.addFile("notes.txt", "text")), Error);
    EXPECT_THROW(ShellLauncher().openTarget(folder.addFolder("folder.pdf")), Error);
}

TEST_F(OnWindows, VariablesInTheNameOfAProgramAreReplaced) {
    EXPECT_NO_THROW(ShellLauncher().startProgram("%SystemRoot%\\system32\\hostname.exe"));
    EXPECT_THROW(ShellLauncher().startProgram("%SystemRoot%\\system32\\nosuch.exe"), Error);
    EXPECT_THROW(ShellLauncher().startProgram("hostname.exe"), Error);
}

} // namespace
} // namespace veldara::test
