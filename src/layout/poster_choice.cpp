#include "layout/poster_choice.h"

#include "layout/output_figures.h"
#include "layout/tile_size.h"
#include "platform/error.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace veldara {
namespace {

// Lengths that agree to a thousandth of an inch are one length to a person, and differ in the last
// bits of a double when they come from different papers.
long long thousandths(double inches) {
    return std::llround(inches * 1000);
}

// What orders two posters before anything is known of their words; smaller is better.
struct Candidate {
    long long distance = 0;  // thousandths of an inch beyond the wish, or minus the area
    long long lostShare = 0; // millionths of the photo
    int sheets = 0;
    bool turned = false;
    int paper = 0;
    int wide = 0;
    int high = 0;

    auto key() const { return std::tie(distance, lostShare, sheets, turned, paper, wide, high); }
    bool operator<(const Candidate& other) const { return key() < other.key(); }
};

// One paper lying one way, with what all its posters share.
struct Sheet {
    int paper = 0;
    bool turned = false;
    double width = 0; // of a tile as it lies, inches
    double height = 0;
};

std::vector<Sheet> sheetsOf(const std::vector<ChoicePaper>& papers, bool sheetsTurn) {
    std::vector<Sheet> sheets;
    for (std::size_t i = 0; i < papers.size(); ++i) {
        const ChoicePaper& paper = papers[i];
        if (paper.tileWidth <= 0 || paper.tileHeight <= 0) {
            continue; // the trims leave nothing of it
        }
        sheets.push_back({static_cast<int>(i), false, paper.tileWidth, paper.tileHeight});
        if (sheetsTurn && paper.tileWidth != paper.tileHeight) {
            sheets.push_back({static_cast<int>(i), true, paper.tileHeight, paper.tileWidth});
        }
    }
    return sheets;
}

// The part of the photo that a poster of that size in inches shows, in pixels, unrounded.
struct Crop {
    double width = 0;
    double height = 0;
};

Crop cropOf(double posterWidth, double posterHeight, const ChoiceLimits& limits) {
    const double ratio = posterWidth / posterHeight;
    const double factor = zoomFactor(limits.zoom);
    const double photo = static_cast<double>(limits.photoWidth) / limits.photoHeight;
    if (photo < ratio) {
        return {limits.photoWidth * factor, limits.photoWidth / ratio * factor};
    }
    return {ratio * limits.photoHeight * factor, limits.photoHeight * factor};
}

double shareOf(const Crop& crop, const ChoiceLimits& limits) {
    return crop.width * crop.height / (static_cast<double>(limits.photoWidth) * limits.photoHeight);
}

bool hasPixels(const Crop& crop, int wide, int high) {
    return crop.width >= minimumTilePixels * wide && crop.height >= minimumTilePixels * high;
}

PosterChoice described(const Candidate& candidate, const ChoiceLimits& limits,
                       const std::vector<ChoicePaper>& papers) {
    PosterChoice choice;
    choice.paper = candidate.paper;
    choice.tilesWide = candidate.wide;
    choice.tilesHigh = candidate.high;
    choice.tilesTurned = candidate.turned;
    choice.sheets = candidate.sheets;
    const ChoicePaper& paper = papers[static_cast<std::size_t>(candidate.paper)];
    choice.width = candidate.wide * (candidate.turned ? paper.tileHeight : paper.tileWidth);
    choice.height = candidate.high * (candidate.turned ? paper.tileWidth : paper.tileHeight);
    const Crop crop = cropOf(choice.width, choice.height, limits);
    choice.photoShare = shareOf(crop, limits);
    choice.dotsPerInch = posterDotsPerInch(layoutOf(choice, limits, papers));
    choice.quality = qualityWord(choice.dotsPerInch);
    choice.paperCutAway =
        1 - paper.tileWidth * paper.tileHeight / (paper.paperWidth * paper.paperHeight);
    return choice;
}

constexpr std::size_t mostOfOneKind = 3;

// Keeps the list in order and short: a better candidate pushes the last one out.
void keepBest(std::vector<Candidate>& best, const Candidate& candidate) {
    if (best.size() == mostOfOneKind && !(candidate < best.back())) {
        return;
    }
    if (best.size() == mostOfOneKind) {
        best.pop_back();
    }
    best.insert(std::upper_bound(best.begin(), best.end(), candidate), candidate);
}

// Goes through every poster, and keeps those that fit the wish.
class Search {
  public:
    Search(const PosterWish& wish, const ChoiceLimits& limits) : wish_(wish), limits_(limits) {
        if (wish.quality) {
            leastDotsPerInch_ = qualityLimit(*wish.quality);
        }
    }

    void tryAll(const std::vector<Sheet>& sheets) {
        for (const Sheet& sheet : sheets) {
            std::vector<Candidate> best; // of this paper lying this way
            for (int wide = 1; wide <= maximumTilesPerSide; ++wide) {
                for (int high = 1; high <= maximumTilesPerSide; ++high) {
                    tryOne(sheet, wide, high, best);
                }
            }
            found.insert(found.end(), best.begin(), best.end());
        }
    }

    std::vector<Candidate> found;   // the best few of each paper lying each way
    std::optional<Candidate> limit; // the nearest that was seen of all that have enough pixels
    bool reached = false;           // some poster is large enough, whatever its pixels

  private:
    void tryOne(const Sheet& sheet, int wide, int high, std::vector<Candidate>& best) {
        const double width = wide * sheet.width;
        const double height = high * sheet.height;
        const bool large = (!wish_.width || !isBelow(width, *wish_.width)) &&
                           (!wish_.height || !isBelow(height, *wish_.height));
        reached = reached || large;

        const Crop crop = cropOf(width, height, limits_);
        if (!hasPixels(crop, wide, high)) {
            return;
        }
        const double dotsPerInch = crop.width / width;
        Candidate candidate{0, 0, wide * high, sheet.turned, sheet.paper, wide, high};
        const auto lostShare = [&] { return std::llround((1 - shareOf(crop, limits_)) * 1e6); };
        candidate.distance = -limitReached(candidate, width, height, dotsPerInch);
        if (!limit || candidate.distance <= limit->distance) {
            candidate.lostShare = lostShare();
            limit = limit ? std::min(*limit, candidate) : candidate;
        }
        if (wish_.quality ? dotsPerInch > leastDotsPerInch_
                          : large && isNear(sheet, width, height)) {
            candidate.distance = distanceTo(width, height);
            if (best.size() < mostOfOneKind || candidate.distance <= best.back().distance) {
                candidate.lostShare = lostShare();
                keepBest(best, candidate);
            }
        }
    }

    // Thousandths of an inch beyond the wish; for a quality word minus those of the area.
    long long distanceTo(double width, double height) const {
        if (wish_.quality) {
            return -thousandths(width * height);
        }
        return thousandths((wish_.width ? width - *wish_.width : 0) +
                           (wish_.height ? height - *wish_.height : 0));
    }

    bool isNear(const Sheet& sheet, double width, double height) const {
        return (!wish_.width || isBelow(width, *wish_.width + sheet.width)) &&
               (!wish_.height || isBelow(height, *wish_.height + sheet.height));
    }

    // What the poster has of that of which the wish may want too much.
    long long limitReached(const Candidate& candidate, double width, double height,
                           double dotsPerInch) const {
        if (wish_.quality) {
            return candidate.sheets == 1 ? thousandths(dotsPerInch) : 0;
        }
        if (wish_.width && wish_.height) {
            // How much of both sides is reached at once.
            return thousandths(std::min(width / *wish_.width, height / *wish_.height));
        }
        return thousandths(wish_.width ? width : height);
    }

    const PosterWish& wish_;
    const ChoiceLimits& limits_;
    double leastDotsPerInch_ = 0;
};

ChoiceProblem problemOf(const PosterWish& wish, bool reached) {
    if (wish.quality) {
        return ChoiceProblem::noQuality;
    }
    return reached ? ChoiceProblem::tooManySheets : ChoiceProblem::tooLarge;
}

bool isTooSmall(const PosterWish& wish) {
    return (wish.width && isBelow(*wish.width, minTileInches)) ||
           (wish.height && isBelow(*wish.height, minTileInches));
}

} // namespace

PosterChoices choosePoster(const PosterWish& wish, const ChoiceLimits& limits,
                           const std::vector<ChoicePaper>& papers, std::size_t most) {
    if (limits.photoWidth <= 0 || limits.photoHeight <= 0) {
        throw Error("The photo has no pixels.");
    }
    PosterChoices choices;
    if (isTooSmall(wish)) {
        choices.problem = ChoiceProblem::tooSmall;
        return choices;
    }
    Search search(wish, limits);
    search.tryAll(sheetsOf(papers, limits.sheetsTurn));
    if (search.limit) {
        choices.limit = described(*search.limit, limits, papers);
    }
    if (search.found.empty()) {
        choices.problem = problemOf(wish, search.reached);
    }
    std::sort(search.found.begin(), search.found.end());
    search.found.resize(std::min(search.found.size(), most));
    for (const Candidate& candidate : search.found) {
        choices.best.push_back(described(candidate, limits, papers));
    }
    return choices;
}

PosterLayout layoutOf(const PosterChoice& choice, const ChoiceLimits& limits,
                      const std::vector<ChoicePaper>& papers) {
    const ChoicePaper& paper = papers.at(static_cast<std::size_t>(choice.paper));
    PosterLayout layout;
    layout.photoWidth = limits.photoWidth;
    layout.photoHeight = limits.photoHeight;
    layout.tilesWide = choice.tilesWide;
    layout.tilesHigh = choice.tilesHigh;
    layout.tileWidthInches = paper.tileWidth;
    layout.tileHeightInches = paper.tileHeight;
    layout.tilesTurned = choice.tilesTurned;
    layout.zoom = limits.zoom;
    return layout;
}

} // namespace veldara
