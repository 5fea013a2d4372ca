// A file being replaced while other programs hold it, as virus scanners and synchronising services
// do.
#include "platform/files/file_error.h"
#include "platform/files/whole_file.h"
#include "platform/files/windows_paths.h"
#include "support/temp_folder.h"

#include <chrono>
#include <filesystem>
#include <thread>

#include <gtest/gtest.h>
#include <windows.h>

namespace veldara::test {
namespace {

namespace fs = std::filesystem;

void write(const fs::path& file, const std::string& text) {
    WholeFile writer(file);
    writer.write(text);
    writer.commit();
}

// Another program's open file.
class Holder {
  public:
    Holder(const fs::path& file, DWORD sharing)
        : handle_(CreateFileW(file.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0,
                              nullptr)) {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE) << GetLastError();
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    ~Holder() { CloseHandle(handle_); }

  private:
    HANDLE handle_;
};

class AWholeFileOnWindows : public ::testing::Test {
  protected:
    std::size_t files() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), {}));
    }

    TempFolder folder;
    fs::path file = folder.path() / "file";
};

TEST_F(AWholeFileOnWindows, WaitsForAProgramThatHoldsTheOldOne) {
    write(file, "old");
    std::jthread program;
    {
        WholeFile writer(file);
        writer.write("new");
        auto holder = std::make_unique<Holder>(file, FILE_SHARE_READ | FILE_SHARE_WRITE);
        program = std::jthread([held = std::move(holder)]() mutable {
            Sleep(300);
            held.reset();
        });
        EXPECT_NO_THROW(writer.commit());
    }
    program.join();
    EXPECT_EQ(folder.content("file"), "new");
    EXPECT_EQ(files(), 1U);
}

TEST_F(AWholeFileOnWindows, NamesTheProgramThatDoesNotLetGo) {
    write(file, "old");
    const Holder holder(file, FILE_SHARE_READ | FILE_SHARE_WRITE);
    try {
        write(file, "new");
        ADD_FAILURE() << "replaced while it was held";
    } catch (const FileError& error) {
        EXPECT_NE(std::string(error.what()).find("another program"), std::string::npos)
            << error.what();
    }
    EXPECT_EQ(folder.content("file"), "old");
    EXPECT_EQ(files(), 1U) << "nothing else is left";
}

TEST_F(AWholeFileOnWindows, CannotBeOpenedByAScannerBeforeItHasItsName) {
    WholeFile writer(file);
    const fs::path temporary = fs::directory_iterator(folder.path())->path();
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    EXPECT_EQ(
        CreateFileW(temporary.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING, 0, nullptr),
        INVALID_HANDLE_VALUE);
    writer.write("x");
    writer.commit();
    EXPECT_EQ(folder.content("file"), "x");
}

TEST_F(AWholeFileOnWindows, IsRefusedWhereTheOldOneIsReadOnly) {
    write(file, "old");
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_THROW(write(file, "new"), FileError);
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(folder.content("file"), "old");
}

TEST_F(AWholeFileOnWindows, MayHaveAPathOfAnyLength) {
    std::wstring deep = extendedPath(folder.path());
    while (deep.size() < 400) {
        deep += LR"(\a folder with a long name)";
        ASSERT_NE(CreateDirectoryW(deep.c_str(), nullptr), FALSE) << GetLastError();
    }
    const fs::path plain = deep.substr(4) + L"\\file";
    EXPECT_NO_THROW(write(plain, "deep"));
    EXPECT_NE(GetFileAttributesW((deep + L"\\file").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(TheExtendedPath, IsAbsoluteAndLeavesDevicesAlone) {
    EXPECT_EQ(extendedPath(L"C:\\a\\..\\b/c. "), LR"(\\?\C:\b\c)");
    EXPECT_EQ(extendedPath(L"\\\\server\\share\\x"), LR"(\\?\UNC\server\share\x)");
    EXPECT_EQ(extendedPath(LR"(\\?\C:\x)"), LR"(\\?\C:\x)");
    EXPECT_EQ(extendedPath(L"C:\\folder\\CON"), LR"(\\.\CON)");
    EXPECT_EQ(extendedPath(L"C:\\dropped. . \\.hidden\\x.y"), LR"(\\?\C:\dropped\.hidden\x.y)");
}

} // namespace
} // namespace veldara::test
