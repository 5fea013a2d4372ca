// Every message that the program can show is explained in the manual, in the same words. The texts
// are taken from the program's sources.
#include "help/help_pages.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace veldara {
namespace {

namespace fs = std::filesystem;

// The string literal that begins at the quote, with its escapes resolved; at is left behind it.
std::string literalAt(const std::string& source, std::size_t& at) {
    std::string text;
    for (++at; at < source.size() && source[at] != '"'; ++at) {
        if (source[at] != '\\') {
            text += source[at];
            continue;
        }
        ++at;
        text += source[at] == 'n' || source[at] == 'r' ? ' ' : source[at];
    }
    ++at;
    return text;
}

// The texts of a piece of source, neighboring literals joined.
std::vector<std::string> literalsOf(const std::string& source) {
    std::vector<std::string> found;
    bool joined = false;
    for (std::size_t at = 0; at < source.size();) {
        if (source[at] == '"') {
            const std::string text = literalAt(source, at);
            if (joined)
                found.back() += text;
            else
                found.push_back(text);
            joined = true;
        } else if (source.compare(at, 2, "//") == 0) {
            at = std::min(source.find('\n', at), source.size());
        } else {
            joined = joined && std::isspace(static_cast<unsigned char>(source[at])) != 0;
            ++at;
        }
    }
    return found;
}

std::string withoutIncludes(const std::string& source) {
    const std::size_t from = source.find("namespace veldara");
    return from == std::string::npos ? std::string() : source.substr(from);
}

// What stands in the brackets of each call of showMessage.
std::string messageCalls(const std::string& source) {
    static const std::string call = "showMessage(";
    std::string calls;
    for (std::size_t at = source.find(call); at != std::string::npos; at = source.find(call, at)) {
        const std::size_t from = at + call.size();
        int depth = 1;
        for (at = from; at < source.size() && depth > 0; ++at) {
            if (source[at] == '"') {
                literalAt(source, at);
                --at;
            } else {
                depth += source[at] == '(' ? 1 : source[at] == ')' ? -1 : 0;
            }
        }
        calls += source.substr(from, at - from) + ";";
    }
    return calls;
}

bool holdsMessagesOnly(const std::string& name) {
    return name.ends_with("_messages.cpp") || name == "paper_check.cpp";
}

std::vector<std::string> shownTexts() {
    std::vector<std::string> texts;
    for (const auto& entry : fs::recursive_directory_iterator(SOURCE_FOLDER)) {
        const std::string name = entry.path().filename().string();
        if (!name.ends_with(".cpp"))
            continue;
        const std::string source = withoutIncludes(fileText(entry.path()));
        const std::string part = holdsMessagesOnly(name) ? source : messageCalls(source);
        for (const std::string& text : literalsOf(part))
            if (text.size() >= 12)
                texts.push_back(withSingleBlanks(text));
    }
    return texts;
}

std::string trimmedBlanks(const std::string& text) {
    const std::size_t from = text.find_first_not_of(' ');
    return from == std::string::npos ? ""
                                     : text.substr(from, text.find_last_not_of(' ') - from + 1);
}

TEST(HelpMessages, EveryMessageOfTheProgramIsExplained) {
    const std::string page = plainText(pageText("messages.html"));
    const std::vector<std::string> texts = shownTexts();
    EXPECT_GT(texts.size(), 30U);
    for (const std::string& text : texts)
        EXPECT_NE(page.find(trimmedBlanks(text)), std::string::npos) << text;
}

TEST(HelpMessages, AMessageThatIsNotExplainedWouldBeFound) {
    const std::vector<std::string> found =
        literalsOf(messageCalls("x(\"never shown at all\"); d.showMessage({\"One \\\"text\\\" \" "
                                "\"in two\", \"Title\"}); y"));
    EXPECT_EQ(found, (std::vector<std::string>{"One \"text\" in two", "Title"}));
    EXPECT_EQ(plainText(pageText("messages.html")).find("Printer on fire"), std::string::npos);
}

} // namespace
} // namespace veldara
