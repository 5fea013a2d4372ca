// The manual holds together: every link and picture is there, the pages follow each other, and the
// compiled help file has all of them.
#include "help/help_pages.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>

#include <gtest/gtest.h>

namespace veldara {
namespace {

namespace fs = std::filesystem;

void expectTarget(const std::string& page, const std::string& target) {
    const std::size_t mark = target.find('#');
    const std::string name = mark == 0 ? page : target.substr(0, mark);
    ASSERT_TRUE(fs::is_regular_file(fs::path(HELP_FOLDER) / name)) << page << " -> " << target;
    if (mark == std::string::npos)
        return;
    const std::string anchor = "<a name=\"" + target.substr(mark + 1) + "\"";
    EXPECT_NE(pageText(name).find(anchor), std::string::npos) << page << " -> " << target;
}

// The pages in the order of the project file.
std::vector<std::string> projectPages() {
    std::vector<std::string> pages;
    std::ifstream project(fs::path(HELP_FOLDER) / "veldara.hhp");
    for (std::string line; std::getline(project, line);)
        if (line.ends_with(".html") && line.find('=') == std::string::npos)
            pages.push_back(line);
    return pages;
}

TEST(HelpPages, LinksAndPicturesAreThere) {
    ASSERT_GT(pageNames().size(), 10U);
    std::size_t links = 0;
    for (const std::string& page : pageNames()) {
        const std::string html = pageText(page);
        for (const std::string start : {"href=", "src="})
            for (const std::string& target : quotedAfter(html, start)) {
                expectTarget(page, target);
                ++links;
            }
    }
    EXPECT_GT(links, 150U);
}

TEST(HelpPages, PicturesSayWhatTheyShow) {
    for (const std::string& page : pageNames()) {
        const std::string html = pageText(page);
        EXPECT_EQ(quotedAfter(html, " src=").size(), quotedAfter(html, " alt=").size()) << page;
        for (const std::string& text : quotedAfter(html, " alt="))
            EXPECT_GT(text.size(), 10U) << page;
    }
}

TEST(HelpPages, EveryPictureIsUsed) {
    std::string all;
    for (const std::string& page : pageNames())
        all += pageText(page);
    for (const auto& entry : fs::directory_iterator(fs::path(HELP_FOLDER) / "img"))
        EXPECT_NE(all.find("img/" + entry.path().filename().string()), std::string::npos)
            << entry.path();
}

TEST(HelpPages, UseOnlyCharactersThatEveryViewerShows) {
    for (const std::string& page : pageNames()) {
        const std::string html = pageText(page);
        EXPECT_TRUE(std::all_of(html.begin(), html.end(), [](char c) {
            return c == '\n' || (c >= ' ' && c <= '~');
        })) << page;
    }
}

TEST(HelpPages, EachLeadsToTheNextAndBack) {
    const std::vector<std::string> order = projectPages();
    ASSERT_FALSE(order.empty());
    EXPECT_EQ(order.front(), "index.html");
    for (std::size_t i = 0; i < order.size(); ++i) {
        const std::string html = pageText(order[i]);
        const std::vector<std::string> next = quotedAfter(html, "rel=\"next\" href=");
        const std::vector<std::string> previous = quotedAfter(html, "rel=\"prev\" href=");
        EXPECT_EQ(next,
                  i + 1 < order.size() ? std::vector{order[i + 1]} : std::vector<std::string>())
            << order[i];
        EXPECT_EQ(previous, i > 0 ? std::vector{order[i - 1]} : std::vector<std::string>())
            << order[i];
    }
}

TEST(HelpPages, ProjectListsEveryPageAndPicture) {
    std::vector<std::string> listed = projectPages();
    std::sort(listed.begin(), listed.end());
    EXPECT_EQ(listed, pageNames());
    const std::string project = pageText("veldara.hhp");
    for (const auto& entry : fs::directory_iterator(fs::path(HELP_FOLDER) / "img"))
        EXPECT_NE(project.find("img/" + entry.path().filename().string() + "\n"), std::string::npos)
            << entry.path();
}

TEST(HelpPages, ContentsListsEveryPageOnTheFirstPageAndInTheViewer) {
    const std::string first = pageText("index.html");
    const std::vector<std::string> viewer =
        quotedAfter(pageText("veldara.hhc"), "name=\"Local\" value=");
    EXPECT_EQ(viewer, projectPages());
    for (const std::string& page : pageNames()) {
        if (page != "index.html") {
            EXPECT_NE(first.find("<li><a href=\"" + page + "\">"), std::string::npos) << page;
        }
    }
}

TEST(HelpPages, IndexIsTheSameOnItsPageAndInTheViewer) {
    const std::string html = pageText("word_index.html");
    const std::vector<std::string> words =
        quotedAfter(pageText("veldara.hhk"), "name=\"Name\" value=");
    const std::vector<std::string> targets =
        quotedAfter(pageText("veldara.hhk"), "name=\"Local\" value=");
    ASSERT_EQ(words.size(), targets.size());
    ASSERT_GT(words.size(), 40U);
    for (std::size_t i = 0; i < words.size(); ++i) {
        expectTarget("veldara.hhk", targets[i]);
        EXPECT_NE(html.find("<a href=\"" + targets[i] + "\">" + words[i] + "</a>"),
                  std::string::npos)
            << words[i];
    }
}

#ifdef CHM_FILE
std::string outputOf(const std::string& command) {
    std::string text;
    std::FILE* pipe = ::popen(command.c_str(), "r");
    std::array<char, 4096> buffer{};
    for (std::size_t n = 1; n > 0;) {
        n = std::fread(buffer.data(), 1, buffer.size(), pipe);
        text.append(buffer.data(), n);
    }
    EXPECT_EQ(::pclose(pipe), 0) << command;
    return text;
}

TEST(HelpFile, HoldsEveryPageAndPicture) {
    const std::string listing =
        outputOf("'" CHMLS "' --no-page --name-only list '" CHM_FILE "' 2>/dev/null");
    for (const std::string& page : pageNames())
        EXPECT_NE(listing.find("/" + page + "\n"), std::string::npos) << page;
    for (const auto& entry : fs::directory_iterator(fs::path(HELP_FOLDER) / "img"))
        EXPECT_NE(listing.find("/img/" + entry.path().filename().string() + "\n"),
                  std::string::npos)
            << entry.path();
    EXPECT_NE(listing.find("$FIftiMain"), std::string::npos) << "full-text search";
}

TEST(HelpFile, KeepsThePagesAsTheyAre) {
    const fs::path copy = fs::path(testing::TempDir()) / "veldara_help_messages.html";
    outputOf("'" CHMLS "' extract '" CHM_FILE "' /messages.html '" + copy.string() +
             "' >/dev/null 2>&1");
    EXPECT_EQ(fileText(copy), pageText("messages.html"));
    fs::remove(copy);
}
#endif

} // namespace
} // namespace veldara
