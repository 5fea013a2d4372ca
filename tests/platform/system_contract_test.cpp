#include "platform/error.h"
#include "platform/running_system.h"
#include "platform/special_folders.h"
#include "support/fake_print_system.h"

#include <chrono>
#include <ctime>
#include <vector>

namespace veldara::test {
namespace {

class TheSystem : public OnTheRunningSystem {};

TEST_F(TheSystem, HasSpecialFoldersThatExistOrNone) {
    for (const int identifier : {0, 5, 16}) {
        const std::string path = system.specialFolders().path(identifier);
        EXPECT_TRUE(path.empty() || std::filesystem::is_directory(pathOf(path)))
            << identifier << ": " << path;
    }
}

TEST(SpecialFolders, HaveTheSystemsIdentifiers) {
    const std::vector<int> identifiers = {0, 1, 5, 2, 33};
    for (std::size_t kind = 0; kind < identifiers.size(); ++kind) {
        EXPECT_EQ(specialFolderIdentifier(static_cast<int>(kind)), identifiers[kind]) << kind;
    }
    for (const int kind : {-1, 5, 6, 99}) {
        EXPECT_EQ(specialFolderIdentifier(kind), 16) << kind;
    }
}

TEST_F(TheSystem, HasNoSpecialFolderOfAnUnknownKind) {
    EXPECT_EQ(system.specialFolders().path(9999), "");
    EXPECT_EQ(system.specialFolders().path(-1), "");
}

TEST_F(TheSystem, HasAClockThatGoesForward) {
    const double first = system.clock().seconds();
    const auto wait = std::chrono::steady_clock::now() + std::chrono::milliseconds(30);
    while (std::chrono::steady_clock::now() < wait) {
    }
    EXPECT_GT(system.clock().seconds(), first);
}

TEST_F(TheSystem, CountsItsClockInSecondsOfDateNumbers) {
    constexpr double daysBefore1970 = 25569;
    const double expected = static_cast<double>(std::time(nullptr)) + daysBefore1970 * 86400;
    EXPECT_NEAR(system.clock().seconds(), expected, 86400); // up to the time zone
}

TEST_F(TheSystem, KnowsTheYear) {
    const std::time_t now = std::time(nullptr);
    EXPECT_EQ(system.clock().year(), std::localtime(&now)->tm_year + 1900);
}

TEST_F(TheSystem, KnowsWhereTheProgramsFilesAre) {
    EXPECT_TRUE(pathOf(system.profileFolder()).is_absolute()) << system.profileFolder();
    EXPECT_TRUE(pathOf(system.helpFolder()).is_absolute()) << system.helpFolder();
    EXPECT_FALSE(system.helpFileName().empty());
}

TEST_F(TheSystem, KnowsADecimalSeparatorThatIsNoDigitAndNoBlank) {
    const char separator = system.numberStyle().decimalSeparator;
    EXPECT_TRUE(separator == '.' || separator == ',') << separator;
}

TEST_F(TheSystem, RefusesToOpenWhatIsNotThere) {
    Launcher& launcher = system.launcher();
    EXPECT_THROW(launcher.openHelp(folder / "missing"), Error);
    EXPECT_THROW(launcher.openTarget(folder / "missing"), Error);
    EXPECT_THROW(launcher.startProgram(folder / "missing"), Error);
    EXPECT_THROW(launcher.startProgram(""), Error);
}

TEST_F(TheSystem, RefusesToStartWhatIsNoProgram) {
    EXPECT_THROW(system.launcher().startProgram(folder.addFile("notes.txt", "text")), Error);
    EXPECT_THROW(system.launcher().startProgram(folder.text()), Error);
}

TEST_F(TheSystem, BundlesItsAdaptorsForTheWindows) {
    ScriptedDialogs dialogs;
    ImmediateEventPump pump;
    FakePrintSystem printing;
    const Platform platform = system.with(dialogs, pump, printing);
    EXPECT_EQ(&platform.registry, &system.registry());
    EXPECT_EQ(&platform.fileSystem, &system.fileSystem());
    EXPECT_EQ(&platform.specialFolders, &system.specialFolders());
    EXPECT_EQ(&platform.drives, &system.drives());
    EXPECT_EQ(&platform.launcher, &system.launcher());
    EXPECT_EQ(&platform.clock, &system.clock());
    EXPECT_EQ(&platform.dialogs, &dialogs);
    EXPECT_EQ(&platform.eventPump, &pump);
    EXPECT_EQ(&platform.printing, &printing);
    EXPECT_EQ(platform.profileFolder, system.profileFolder());
    EXPECT_EQ(platform.helpFolder, system.helpFolder());
    EXPECT_EQ(platform.helpFileName, system.helpFileName());
}

} // namespace
} // namespace veldara::test
