#include "platform/linux/stored_values.h"

#include <random>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

const RegistryValue* find(const StoredValues& values, const std::string& key,
                          const std::string& name) {
    const auto named = values.find(key);
    if (named == values.end()) {
        return nullptr;
    }
    const auto value = named->second.find(name);
    return value == named->second.end() ? nullptr : &value->second;
}

TEST(TheValueFile, ReadsEveryType) {
    const StoredValues values = parseStoredValues("[Software\\X]\n"
                                                  "string \"folder\" = \"/home/me\"\n"
                                                  "dword \"tiles\" = -3\n"
                                                  "other \"bytes\" = 01 ff 3C\n"
                                                  "other \"none\" =\n");
    ASSERT_NE(find(values, "Software\\X", "folder"), nullptr);
    EXPECT_EQ(find(values, "Software\\X", "folder")->text, "/home/me");
    EXPECT_EQ(find(values, "Software\\X", "tiles")->number, -3);
    EXPECT_EQ(find(values, "Software\\X", "bytes")->bytes, (std::vector<std::uint8_t>{1, 255, 60}));
    EXPECT_EQ(find(values, "Software\\X", "none")->type, RegistryType::other);
    EXPECT_TRUE(find(values, "Software\\X", "none")->bytes.empty());
}

TEST(TheValueFile, IsWrittenForAPersonToRead) {
    StoredValues values;
    RegistryValue text;
    text.type = RegistryType::string;
    text.text = "say \"a\\b\"\t\x1F\xC3\xA9";
    RegistryValue number;
    number.type = RegistryType::dword;
    number.number = 1;
    RegistryValue bytes;
    bytes.type = RegistryType::other;
    bytes.bytes = {0, 16};
    values["A"];
    values["A\\b"] = {{"one", number}, {"text", text}, {"x", bytes}};
    EXPECT_EQ(storedValuesText(values),
              "[A]\n"
              "\n[A\\b]\n"
              "dword \"one\" = 1\n"
              "string \"text\" = \"say \\\"a\\\\b\\\"\\x09\\x1f\xC3\xA9\"\n"
              "other \"x\" = 00 10\n");
}

TEST(TheValueFile, PassesOverLinesThatDoNotRead) {
    const StoredValues values = parseStoredValues("string \"early\" = \"before any key\"\n"
                                                  "[]\n[K]\n"
                                                  "string \"a\" = \"no end\n"
                                                  "string \"b\" = \"end\" behind\n"
                                                  "string \"c\" \"no equals\"\n"
                                                  "string \"d\" = \"bad \\n escape\"\n"
                                                  "string \"e\" = \"bad \\xG0 escape\"\n"
                                                  "string \"f\" = \"cut \\x\n"
                                                  "string g = \"h\"\n"
                                                  "dword \"h\" = 99999999999\n"
                                                  "dword \"i\" = 12x\n"
                                                  "dword \"j\" =\n"
                                                  "other \"k\" = 0\n"
                                                  "other \"l\" = zz\n"
                                                  "float \"m\" = 1.5\n"
                                                  "nothing\n"
                                                  "string \"good\" = \"kept\"\r\n");
    ASSERT_EQ(values.size(), 1U);
    EXPECT_EQ(values.at("K").size(), 1U);
    EXPECT_EQ(find(values, "K", "good")->text, "kept");
}

TEST(TheValueFile, TakesTheLastOfSeveralAndNamesWithoutTheirCase) {
    const StoredValues values = parseStoredValues("[K]\ndword \"n\" = 1\n[k]\ndword \"N\" = 2\n");
    EXPECT_EQ(values.size(), 1U);
    EXPECT_EQ(find(values, "K", "n")->number, 2);
}

TEST(TheValueFile, CutsATextAtItsFirstNul) {
    EXPECT_EQ(find(parseStoredValues("[K]\nstring \"n\" = \"ab\\x00cd\"\n"), "K", "n")->text, "ab");
}

TEST(TheValueFile, GivesEveryValueBackThatItWrites) {
    std::mt19937 random(3);
    const auto bytes = [&](std::size_t most, unsigned first) {
        std::string text;
        for (std::size_t i = random() % most; i > 0; --i) {
            text += static_cast<char>(first + random() % (256U - first));
        }
        return text;
    };
    for (int round = 0; round < 2000; ++round) {
        StoredValues values;
        for (int i = 0; i < 4; ++i) {
            RegistryValue value;
            value.type = static_cast<RegistryType>(1 + random() % 3);
            if (value.type == RegistryType::string) {
                value.text = bytes(20, 1);
            } else if (value.type == RegistryType::dword) {
                value.number = static_cast<std::int32_t>(random());
            } else {
                const std::string raw = bytes(9, 0);
                value.bytes.assign(raw.begin(), raw.end());
            }
            values["Key \\" + std::to_string(i % 2)][bytes(12, 1)] = value;
        }
        const std::string text = storedValuesText(values);
        EXPECT_EQ(storedValuesText(parseStoredValues(text)), text);
    }
}

TEST(TheValueFile, ReadsAnyBytesWithoutHarm) {
    std::mt19937 random(5);
    for (int round = 0; round < 3000; ++round) {
        std::string text = "[K]\nstring \"n\" = \"kept\"\n";
        for (std::size_t i = 1 + random() % 5; i > 0; --i) {
            text[random() % text.size()] = static_cast<char>(random());
        }
        const StoredValues values = parseStoredValues(text);
        EXPECT_LE(values.size(), 3U);
    }
}

} // namespace
} // namespace veldara::test
