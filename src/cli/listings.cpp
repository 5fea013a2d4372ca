#include "cli/listings.h"

#include "paper/paper_catalogue.h"
#include "platform/text/characters.h"

#include <algorithm>

namespace veldara {
namespace {

std::string padded(const std::string& text, std::size_t width) {
    const std::size_t length = characterCount(text);
    return text + std::string(width > length ? width - length : 0, ' ');
}

template <class Numbers>
std::string joined(const Numbers& numbers) {
    std::string text;
    for (const auto number : numbers) {
        text += (text.empty() ? "" : ",") + plainNumber(number);
    }
    return text;
}

std::string catalogueListing(const std::vector<PaperRecord>& papers, const std::string& title) {
    std::string text = title + "\n";
    for (const PaperRecord& paper : papers) {
        text += "  " + padded(paper.name, 20) +
                padded(plainNumber(paper.width) + " x " + plainNumber(paper.height), 12) +
                "margins " + joined(paper.defaultMargins) + "\n";
    }
    return text;
}

} // namespace

std::string paperListing() {
    const PaperTables tables = buildPaperTables();
    return catalogueListing(tables.inches, "--units in      name, width x height, margins "
                                           "top,right,bottom,left in inches") +
           "\n" +
           catalogueListing(tables.millimetres, "--units mm      name, width x height, margins "
                                                "top,right,bottom,left in millimetres");
}

std::string profileListing(const std::vector<EdgeProfile>& profiles) {
    std::size_t width = 0;
    for (const EdgeProfile& profile : profiles) {
        width = std::max(width, characterCount(profile.name));
    }
    std::string text;
    for (const EdgeProfile& profile : profiles) {
        text += padded(profile.name, width + 2) + "--clip " + joined(profile.clipCounts) + "\n";
    }
    return text;
}

} // namespace veldara
