// What only Windows has: the stored types of its registry, its scripting component, and files that
// may be written in a folder that may not.
#include "platform/error.h"
#include "platform/running_system.h"
#include "platform/windows/scripting_file_system.h"
#include "platform/windows/shell_launcher.h"
#include "platform/windows/text_files.h"
#include "platform/windows/wide_text.h"

#include <filesystem>
#include <fstream>
#include <iterator>

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

TEST_F(OnWindows, APathThatIsTooLongForTheComponentIsAnError) {
    const std::vector<std::string> folders = nestedFolders(folder.text());
    const std::unique_ptr<FileSystemObject> object = system.fileSystem().create();
    std::size_t listed = 0;
    for (const std::string& deep : folders) {
        try {
            EXPECT_EQ(object->files(deep), std::vector<std::string>{});
            EXPECT_TRUE(object->folderExists(deep));
            EXPECT_FALSE(object->fileExists(deep));
            ++listed;
        } catch (const Error& error) {
            EXPECT_NE(std::string(error.what()).find("too long"), std::string::npos)
                << deep.size() << ": " << error.what();
        }
    }
    EXPECT_GT(listed, 0U);
    EXPECT_LT(listed, folders.size());
    const std::string& deepest = folders.back();
    EXPECT_THROW(object->files(deepest), Error);
    EXPECT_THROW(object->fileExists(deepest), Error);
    EXPECT_THROW(object->folderExists(deepest), Error);
    EXPECT_THROW(object->createFolder(deepest + "\\below"), Error);
    removeNested(folders);
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

TEST_F(OnWindows, TheHelpViewerIsThere) {
    const HMODULE library = LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    ASSERT_NE(library, nullptr);
    EXPECT_NE(GetProcAddress(library, "HtmlHelpA"), nullptr);
    FreeLibrary(library);
}

TEST_F(OnWindows, VariablesInTheNameOfAProgramAreReplaced) {
    EXPECT_NO_THROW(ShellLauncher().startProgram("%SystemRoot%\\system32\\hostname.exe"));
    EXPECT_THROW(ShellLauncher().startProgram("%SystemRoot%\\system32\\nosuch.exe"), Error);
}

} // namespace
} // namespace veldara::test
