#include "platform/running_system.h"

#include <limits>

namespace veldara::test {
namespace {

class TheRegistry : public OnTheRunningSystem {
  protected:
    static constexpr RegistryRoot root = RegistryRoot::localMachine;

    RegistryValue stored(const std::string& name) {
        RegistryValue value;
        code = registry.queryValue(root, key, name, value);
        return value;
    }

    Registry& registry = system.registry();
    std::string key = freshKey();
    long code = 0;
};

TEST_F(TheRegistry, HasNoKeyThatNobodyMade) {
    EXPECT_NE(registry.openKey(root, key), 0);
    EXPECT_EQ(stored("value").type, RegistryType::none);
    EXPECT_NE(code, 0);
}

TEST_F(TheRegistry, AlwaysHasTheKeyOfAllPrograms) {
    EXPECT_EQ(registry.openKey(root, "Software"), 0);
    EXPECT_EQ(registry.openKey(root, "SOFTWARE"), 0);
}

TEST_F(TheRegistry, CreatesAKeyWithTheOnesAboveAndOpensItAgain) {
    EXPECT_EQ(registry.createKey(root, key), 0);
    EXPECT_EQ(registry.openKey(root, key), 0);
    EXPECT_EQ(registry.openKey(root, key.substr(0, key.rfind('\\'))), 0);
    EXPECT_EQ(registry.createKey(root, key), 0);
    EXPECT_EQ(stored("value").type, RegistryType::none);
}

TEST_F(TheRegistry, KeepsTheValuesOfAKeyThatIsCreatedAgain) {
    EXPECT_EQ(registry.setString(root, key, "value", "text"), 0);
    EXPECT_EQ(registry.createKey(root, key), 0);
    EXPECT_EQ(stored("value").text, "text");
}

TEST_F(TheRegistry, ReadsWithFullAccessWhatFitsItsBuffer) {
    RegistryValue value;
    ASSERT_EQ(registry.setString(root, key, "fits", std::string(fullAccessBuffer - 1, 'x')), 0);
    EXPECT_EQ(registry.queryValueFullAccess(root, key, "fits", value), 0);
    EXPECT_EQ(value.text, std::string(fullAccessBuffer - 1, 'x'));
    ASSERT_EQ(registry.setString(root, key, "longer", std::string(fullAccessBuffer, 'x')), 0);
    EXPECT_EQ(registry.queryValueFullAccess(root, key, "longer", value), moreData);
    EXPECT_EQ(value.type, RegistryType::none);
    EXPECT_EQ(registry.queryValue(root, key, "longer", value), 0);
}

TEST_F(TheRegistry, StoresTextsAndMakesTheirKey) {
    for (const std::string& text :
         {std::string("w03h02"), std::string(), std::string(" blanks  kept "),
          std::string("Gr\xC3\xBC\xC3\x9F"
                      "e \xE7\x85\xA7\xE7\x89\x87"),
          std::string("quotes \" and \\ and 100% and [brackets] = here"), std::string(5000, 'x')}) {
        ASSERT_EQ(registry.setString(root, key, "value", text), 0);
        const RegistryValue value = stored("value");
        EXPECT_EQ(code, 0);
        EXPECT_EQ(value.type, RegistryType::string);
        EXPECT_EQ(value.text, text);
    }
}

TEST_F(TheRegistry, ReadsATextUpToItsFirstNul) {
    ASSERT_EQ(registry.setString(root, key, "value", std::string("ab\0cd", 5)), 0);
    EXPECT_EQ(stored("value").text, "ab");
}

TEST_F(TheRegistry, StoresNumbersOfThirtyTwoBitsWithTheirSign) {
    for (const std::int32_t number : {0, 1, -1, std::numeric_limits<std::int32_t>::max(),
                                      std::numeric_limits<std::int32_t>::min()}) {
        ASSERT_EQ(registry.setNumber(root, key, "value", number), 0);
        const RegistryValue value = stored("value");
        EXPECT_EQ(value.type, RegistryType::dword);
        EXPECT_EQ(value.number, number);
    }
}

TEST_F(TheRegistry, GivesAValueTheTypeOfItsLastWriting) {
    ASSERT_EQ(registry.setString(root, key, "value", "text"), 0);
    ASSERT_EQ(registry.setNumber(root, key, "value", 7), 0);
    EXPECT_EQ(stored("value").type, RegistryType::dword);
    ASSERT_EQ(registry.setString(root, key, "value", "7"), 0);
    EXPECT_EQ(stored("value").type, RegistryType::string);
}

TEST_F(TheRegistry, KeepsSeveralValuesApart) {
    ASSERT_EQ(registry.setString(root, key, "one", "1"), 0);
    ASSERT_EQ(registry.setNumber(root, key, "two", 2), 0);
    ASSERT_EQ(registry.setString(root, key + "\\below", "one", "other"), 0);
    EXPECT_EQ(stored("one").text, "1");
    EXPECT_EQ(stored("two").number, 2);
    EXPECT_EQ(stored("three").type, RegistryType::none);
}

TEST_F(TheRegistry, FindsNamesWhateverTheirCase) {
    ASSERT_EQ(registry.setString(root, key, "Prefs_Units", "mm"), 0);
    EXPECT_EQ(stored("prefs_uNITS").text, "mm");
    RegistryValue value;
    std::string shouted = key;
    for (char& c : shouted) {
        c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    }
    EXPECT_EQ(registry.queryValue(root, shouted, "prefs_units", value), 0);
    EXPECT_EQ(value.text, "mm");
    EXPECT_EQ(registry.openKey(root, shouted), 0);
}

TEST_F(TheRegistry, OutlivesTheProgram) {
    ASSERT_EQ(registry.setString(root, key, "value", "kept"), 0);
    SystemPlatform later;
    RegistryValue value;
    EXPECT_EQ(later.registry().queryValue(root, key, "value", value), 0);
    EXPECT_EQ(value.text, "kept");
}

TEST_F(TheRegistry, ReadsUnderFullAccessToo) {
    ASSERT_EQ(registry.setString(root, key, "PATH", "c:\\tool.exe"), 0);
    RegistryValue value;
    EXPECT_EQ(registry.queryValueFullAccess(root, key, "PATH", value), 0);
    EXPECT_EQ(value.text, "c:\\tool.exe");
    EXPECT_NE(registry.queryValueFullAccess(root, key, "missing", value), 0);
    EXPECT_EQ(value.type, RegistryType::none);
    EXPECT_NE(registry.queryValueFullAccess(root, key + "\\missing", "PATH", value), 0);
}

TEST_F(TheRegistry, GivesTheBytesOfAValueOfAnotherType) {
    storeOtherType(home, key, "value", {1, 0, 255});
    const RegistryValue value = stored("value");
    EXPECT_EQ(code, 0);
    EXPECT_EQ(value.type, RegistryType::other);
    EXPECT_EQ(value.bytes, (std::vector<std::uint8_t>{1, 0, 255}));
}

TEST_F(TheRegistry, ForgetsTheCallersOldValueWhenThereIsNone) {
    RegistryValue value;
    value.type = RegistryType::string;
    value.text = "old";
    EXPECT_NE(registry.queryValue(root, key, "missing", value), 0);
    EXPECT_EQ(value.type, RegistryType::none);
    EXPECT_EQ(value.text, "");
}

TEST_F(TheRegistry, GivesACodeForAKeyThatCannotBeMade) {
    const std::string impossible = key + "\\" + std::string(300, 'k');
    EXPECT_NE(registry.createKey(root, impossible), 0);
    EXPECT_NE(registry.openKey(root, impossible), 0);
    EXPECT_NE(registry.setString(root, impossible, "value", "text"), 0);
    EXPECT_NE(registry.setNumber(root, impossible, "value", 1), 0);
}

} // namespace
} // namespace veldara::test
