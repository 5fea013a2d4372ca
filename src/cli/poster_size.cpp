#include "cli/poster_size.h"

#include "cli/job_plan.h"
#include "platform/error.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace veldara {
namespace {

std::optional<double> inchesOf(const std::optional<double>& length, Units units) {
    return length && units == Units::millimetres ? *length / millimetresPerInch : length;
}

// The papers that may be used: the chosen one, or all of the units.
std::vector<PaperRecord> papersFor(const Options& options) {
    if (!options.anyPaper) {
        return {chosenPaper(options)};
    }
    std::vector<PaperRecord> papers = buildPaperTables().catalogue(options.units);
    papers.pop_back(); // the custom paper is whatever --paper-size says
    return papers;
}

} // namespace

bool choosesBySize(const Options& options) {
    return options.posterWidth || options.posterHeight || !options.bestQuality.empty();
}

SizeChoices chooseBySize(const Options& options, const ImageHeader& header,
                         const std::optional<ClipCounts>& clip) {
    SizeChoices choices;
    choices.wish.width = inchesOf(options.posterWidth, options.units);
    choices.wish.height = inchesOf(options.posterHeight, options.units);
    if (!options.bestQuality.empty()) {
        choices.wish.quality = options.bestQuality;
    }
    choices.limits.photoWidth = header.width;
    choices.limits.photoHeight = header.height;
    if (exchangesSides(options.rotation)) {
        std::swap(choices.limits.photoWidth, choices.limits.photoHeight);
    }
    choices.limits.zoom = options.zoom;
    choices.records = papersFor(options);
    std::optional<EdgeTrims> trims;
    if (clip) {
        trims = edgeTrims(*clip);
    }
    choices.papers = offeredPapers(choices.records, options.units, trims);
    choices.found = choosePoster(choices.wish, choices.limits, choices.papers);
    if (choices.found.best.empty()) {
        throw Error(choiceProblemText(choices.found, choices.wish, choices.limits, choices.papers,
                                      options.units));
    }
    return choices;
}

Options withChoice(const Options& options, const SizeChoices& choices) {
    const PosterChoice& best = choices.found.best.front();
    Options chosen = options;
    chosen.wide = best.tilesWide;
    chosen.high = best.tilesHigh;
    chosen.rotateTiles = best.tilesTurned;
    if (options.anyPaper) {
        chosen.paper = choices.records[static_cast<std::size_t>(best.paper)].name;
    }
    return chosen;
}

std::string choicesText(const Options& options, const SizeChoices& choices) {
    return choiceTable(choices.found.best, choices.limits, choices.papers, options.units);
}

std::string choicesJson(const Options& options, const SizeChoices& choices) {
    using Json = nlohmann::ordered_json;
    const double factor = options.units == Units::inches ? 1 : millimetresPerInch;
    Json list = Json::array();
    for (const PosterChoice& choice : choices.found.best) {
        list.push_back(Json{{"paper", choices.papers[static_cast<std::size_t>(choice.paper)].name},
                            {"wide", choice.tilesWide},
                            {"high", choice.tilesHigh},
                            {"rotate_tiles", choice.tilesTurned},
                            {"sheets", choice.sheets},
                            {"width", choice.width * factor},
                            {"height", choice.height * factor},
                            {"dpi", choice.dotsPerInch},
                            {"quality", choice.quality},
                            {"photo_kept", choice.photoShare},
                            {"paper_cut_away", choice.paperCutAway}});
    }
    const Json all{{"units", options.units == Units::inches ? "in" : "mm"}, {"choices", list}};
    return all.dump(2) + "\n";
}

} // namespace veldara
