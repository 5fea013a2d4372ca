#include "platform/error.h"
#include "platform/linux/desktop_launcher.h"
#include "support/temp_folder.h"

#include <chrono>
#include <thread>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veldara::test {
namespace {

// An opener of the test's own stands first in the search path and writes down what it was given.
class TheLauncher : public ::testing::Test {
  protected:
    void install(const std::string& script) {
        folder.addFile("bin/xdg-open", "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(folder.path() / "bin/xdg-open", std::filesystem::perms(0755));
    }
    void installRecorder() {
        install("printf '%s|' \"$@\" > '" + folder.text() + "/part' && mv '" + folder.text() +
                "/part' '" + folder.text() + "/given'");
    }
    std::string given() {
        for (int i = 0; i < 1000 && !std::filesystem::exists(folder / "given"); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return folder.content("given");
    }
    TempFolder folder;
    DesktopLauncher launcher{[this](const std::string& name) {
        return name == "PATH" ? "relative::" + (folder / "bin") + ":/usr/bin:/bin" : std::string();
    }};
};

TEST_F(TheLauncher, GivesAFolderToTheDesktop) {
    installRecorder();
    const std::string name = folder.addFolder("a 'b' $(touch x); \"c\" & \xFF");
    launcher.openTarget(name);
    EXPECT_EQ(given(), name + "|");
}

TEST_F(TheLauncher, GivesAnAddressToTheDesktop) {
    installRecorder();
    launcher.openTarget("https://example.org/?a=b&c=d");
    EXPECT_EQ(given(), "https://example.org/?a=b&c=d|");
}

TEST_F(TheLauncher, GivesTheHelpPageToTheDesktop) {
    installRecorder();
    launcher.openHelp(folder.addFile("help/index.html"));
    EXPECT_EQ(given(), (folder / "help/index.html") + "|");
}

TEST_F(TheLauncher, GivesADocumentToTheDesktop) {
    installRecorder();
    const std::string document = folder.addFile("lake_poster.PDF");
    launcher.openTarget(document);
    EXPECT_EQ(given(), document + "|");
    EXPECT_THROW(launcher.openTarget(folder.addFolder("folder.pdf")), Error);
    EXPECT_THROW(launcher.openTarget(folder / "missing.pdf"), Error);
}

TEST_F(TheLauncher, OpensNoFileThatIsPassedOffAsAFolder) {
    installRecorder();
    EXPECT_THROW(launcher.openTarget(folder.addFile("run.desktop", "[Desktop Entry]")), Error);
    EXPECT_THROW(launcher.openTarget("file:///etc/passwd"), Error);
    EXPECT_THROW(launcher.openTarget("--help"), Error);
    EXPECT_THROW(launcher.openTarget(""), Error);
    EXPECT_FALSE(std::filesystem::exists(folder / "given"));
}

TEST_F(TheLauncher, SaysWhenThereIsNoOpener) {
    DesktopLauncher bare([](const std::string&) { return std::string("/nowhere"); });
    try {
        bare.openTarget(folder.text());
        ADD_FAILURE() << "nothing was there to open it";
    } catch (const Error& error) {
        EXPECT_NE(std::string(error.what()).find("xdg-open"), std::string::npos) << error.what();
    }
}

TEST_F(TheLauncher, SaysWhenTheOpenerFails) {
    install("exit 3");
    EXPECT_THROW(launcher.openTarget(folder.text()), Error);
}

TEST_F(TheLauncher, SaysWhenTheOpenerCannotBeStarted) {
    folder.addFile("bin/xdg-open", "#!/no/such/interpreter\n");
    std::filesystem::permissions(folder.path() / "bin/xdg-open", std::filesystem::perms(0755));
    EXPECT_THROW(launcher.openTarget(folder.text()), Error);
}

TEST_F(TheLauncher, DoesNotWaitForAProgramThatStaysOpen) {
    install("echo $$ > '" + folder.text() + "/part' && mv '" + folder.text() + "/part' '" +
            folder.text() + "/given'; exec sleep 600");
    launcher.openTarget(folder.text());
    const pid_t program = std::stoi(given());
    EXPECT_EQ(::kill(program, 0), 0) << "it was ended with the call";
    ::kill(program, SIGKILL);
}

TEST_F(TheLauncher, LeavesNoDeadProcessBehind) {
    installRecorder();
    launcher.openTarget(folder.text());
    given();
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(TheLauncher, StartsAProgramWithoutArguments) {
    folder.addFile("tool", "#!/bin/sh\necho \"$#\" > '" + folder.text() + "/part' && mv '" +
                               folder.text() + "/part' '" + folder.text() + "/given'\n");
    std::filesystem::permissions(folder.path() / "tool", std::filesystem::perms(0755));
    launcher.startProgram(folder / "tool");
    EXPECT_EQ(given(), "0\n");
}

TEST_F(TheLauncher, StartsNothingThatIsNoProgram) {
    const std::string text = folder.addFile("text", "#!/bin/sh\n");
    for (const std::string& path : {text, folder.text(), folder / "missing"}) {
        try {
            launcher.startProgram(path);
            ADD_FAILURE() << path;
        } catch (const Error& error) {
            EXPECT_EQ(error.what(), "\"" + path + "\" is not a program that can be started.");
        }
    }
}

TEST_F(TheLauncher, KeepsOurOpenFilesFromTheProgramsItStarts) {
    int ends[2] = {};
    ASSERT_EQ(::pipe(ends), 0); // inheritable, as a library may have opened it
    install("exec sleep 600 & echo $! > '" + folder.text() + "/part' && mv '" + folder.text() +
            "/part' '" + folder.text() + "/given'; wait");
    launcher.openTarget(folder.text());
    const pid_t program = std::stoi(given());
    ::close(ends[1]);
    char byte = 0;
    EXPECT_EQ(::read(ends[0], &byte, 1), 0) << "the other end is held open";
    ::close(ends[0]);
    ::kill(program, SIGKILL);
}

} // namespace
} // namespace veldara::test
