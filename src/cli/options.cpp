#include "cli/options.h"

#include "cli/help_text.h"
#include "cli/option_values.h"
#include "layout/output_figures.h"
#include "layout/tile_grid.h"

#include <algorithm>

#include <CLI/CLI.hpp>

namespace veldara {
namespace {

// The texts of the options as they were given; empty: not given.
struct Texts {
    std::string wide, high, units, paperSize, margins, rotate, zoom, pan, clip, format, base,
        overlap, marks, posterWidth, posterHeight, bestQuality;
};

bool given(const CLI::App& app, const std::string& option) {
    return app.count(option) > 0;
}

void declare(CLI::App& app, Options& options, Texts& texts) {
    app.set_help_flag();
    app.allow_windows_style_options(false);
    app.add_option("PHOTO", options.photo);
    app.add_option("--wide", texts.wide);
    app.add_option("--high", texts.high);
    app.add_option("--poster-width", texts.posterWidth);
    app.add_option("--poster-height", texts.posterHeight);
    app.add_option("--best-quality", texts.bestQuality);
    app.add_flag("--any-paper", options.anyPaper);
    app.add_flag("--choices", options.choices);
    app.add_option("--units", texts.units);
    app.add_option("--paper", options.paper);
    app.add_option("--paper-size", texts.paperSize);
    app.add_option("--margins", texts.margins);
    app.add_option("--rotate", texts.rotate);
    app.add_flag("--rotate-tiles", options.rotateTiles);
    app.add_option("--zoom", texts.zoom);
    app.add_option("--pan", texts.pan);
    app.add_option("--clip", texts.clip);
    app.add_option("--profile", options.profile);
    app.add_option("--format", texts.format);
    app.add_option("--out", options.out);
    app.add_option("--base", texts.base);
    app.add_option("--test-target", options.testTarget);
    app.add_option("--pdf", options.pdf);
    app.add_option("--overlap", texts.overlap);
    app.add_option("--marks", texts.marks);
    app.add_flag("--no-labels", options.noLabels);
    app.add_flag("--no-guide", options.noGuide);
    app.add_option("--sheets", options.sheets);
    app.add_flag("--yes,-y", options.yes);
    app.add_flag("--plan", options.plan);
    app.add_flag("--quiet,-q", options.quiet);
    app.add_flag("--list-papers", options.listPapers);
    app.add_flag("--list-profiles", options.listProfiles);
    app.add_flag("--version");
    app.add_flag("--help,-h");
    app.allow_extras();
}

// Assigns the words of the command line to the declared options. Throws WrongOption.
void sortWords(CLI::App& app, const std::vector<std::string>& arguments) {
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ArgumentMismatch& error) {
        const std::string said = error.what(); // begins with the option's name and a colon
        throw WrongOption(said.substr(0, said.find(':')) + ": give it once, with one value.");
    } catch (const CLI::ParseError& error) {
        throw WrongOption(std::string(error.what()) + ".");
    }
}

// Refuses a word that is neither an option's value nor the photo.
void refuseLeftOver(const CLI::App& app) {
    bool namesOnly = false;
    for (const std::string& word : app.remaining()) {
        if (word == "--") {
            namesOnly = true; // everything after it is a name
            continue;
        }
        const bool isOption = word.rfind('-', 0) == 0 && !namesOnly;
        throw WrongOption("\"" + word + "\": " +
                          (isOption ? "there is no such option." : "only one photo, please."));
    }
}

void readLayout(const CLI::App& app, const Texts& texts, Options& options) {
    if (given(app, "--wide")) {
        options.wide = wholeOption("--wide", texts.wide, 1, maximumTilesPerSide);
    }
    if (given(app, "--high")) {
        options.high = wholeOption("--high", texts.high, 1, maximumTilesPerSide);
    }
    if (given(app, "--zoom")) {
        options.zoom = wholeOption("--zoom", texts.zoom, 0, 400);
    }
    if (given(app, "--pan")) {
        const std::vector<int> pan = wholeListOption("--pan", texts.pan, 2, 0, 200);
        options.horzPos = pan[0];
        options.vertPos = pan[1];
    }
    if (given(app, "--rotate")) {
        constexpr std::array<Turn, 4> turns{Turn::none, Turn::clockwise, Turn::counterClockwise,
                                            Turn::half};
        options.rotation =
            turns.at(wordOption("--rotate", texts.rotate, {"none", "cw", "ccw", "180"}));
    }
}

// What chooses the tile counts; it cannot stand beside the counts themselves.
void readPosterSize(const CLI::App& app, const Texts& texts, Options& options) {
    if (given(app, "--poster-width")) {
        options.posterWidth = lengthOption("--poster-width", texts.posterWidth);
    }
    if (given(app, "--poster-height")) {
        options.posterHeight = lengthOption("--poster-height", texts.posterHeight);
    }
    const bool bySize = options.posterWidth || options.posterHeight;
    if (given(app, "--best-quality")) {
        if (bySize) {
            throw WrongOption("--best-quality: give a quality to keep or a size, not both.");
        }
        const std::vector<std::string> words = qualityWords();
        options.bestQuality = words[wordOption("--best-quality", texts.bestQuality, words)];
    }
    if (bySize || !options.bestQuality.empty()) {
        for (const char* counts : {"--wide", "--high", "--rotate-tiles"}) {
            if (given(app, counts)) {
                throw WrongOption(std::string(counts) +
                                  ": the poster's size chooses it; give one of them, not both.");
            }
        }
    } else if (options.choices || options.anyPaper) {
        throw WrongOption(std::string(options.choices ? "--choices" : "--any-paper") +
                          ": give --poster-width, --poster-height or --best-quality too.");
    }
    for (const char* paper : {"--paper", "--paper-size", "--margins"}) {
        if (options.anyPaper && given(app, paper)) {
            throw WrongOption(std::string(paper) + " and --any-paper: give one of them, not both.");
        }
    }
}

void readPaper(const CLI::App& app, const Texts& texts, Options& options) {
    if (given(app, "--units")) {
        constexpr std::array<Units, 2> units{Units::inches, Units::millimetres};
        options.units = units.at(
            wordOption("--units", texts.units, {unitsWord(units[0]), unitsWord(units[1])}));
    }
    if (given(app, "--paper") && options.paper.empty()) {
        throw WrongOption("--paper \"\": give a paper's name; --list-papers prints them.");
    }
    if (given(app, "--paper-size")) {
        const std::vector<double> size =
            numberListOption("--paper-size", texts.paperSize, 2, "width,height in the units");
        options.paperSize = {size[0], size[1]};
    }
    if (given(app, "--margins")) {
        const std::vector<double> margins = numberListOption(
            "--margins", texts.margins, 4, "top,right,bottom,left in the units, 0 or more");
        options.margins.emplace();
        std::copy(margins.begin(), margins.end(), options.margins->begin());
    }
}

void readEdges(const CLI::App& app, const Texts& texts, Options& options) {
    if (given(app, "--clip") && given(app, "--profile")) {
        throw WrongOption("--clip and --profile: give one of them, not both.");
    }
    if (given(app, "--clip")) {
        const std::vector<int> counts =
            wholeListOption("--clip", texts.clip, 4, 0, largestClipCount);
        options.clip.emplace();
        std::copy(counts.begin(), counts.end(), options.clip->begin());
    }
    if (given(app, "--profile") && options.profile.empty()) {
        throw WrongOption("--profile \"\": give a profile's name; --list-profiles prints them.");
    }
}

void readFiles(const CLI::App& app, const Texts& texts, Options& options) {
    if (given(app, "--format")) {
        std::vector<TileFormat> formats;
        std::vector<std::string> words;
        for (auto row = tileFormats().rbegin(); row != tileFormats().rend(); ++row) {
            formats.push_back(row->format);
            words.emplace_back(row->ending.substr(1));
        }
        options.format = formats.at(wordOption("--format", texts.format, words));
    }
    if (given(app, "--base")) {
        if (texts.base.find_first_of("/\\") != std::string::npos) {
            throw WrongOption("--base \"" + texts.base +
                              "\": give a name without / and \\; --out takes the folder.");
        }
        options.base = texts.base;
    }
    for (const char* option : {"--out", "--test-target", "--pdf", "--sheets"}) {
        if (given(app, option) && app[option]->as<std::string>().empty()) {
            throw WrongOption(
                std::string(option) + " \"\": give " +
                (std::string(option) == "--sheets" ? "numbers such as 1-3,7." : "a name."));
        }
    }
}

// What belongs to a document, and what to tile files.
void readDocument(const CLI::App& app, const Texts& texts, Options& options) {
    if (!given(app, "--pdf")) {
        for (const char* option :
             {"--overlap", "--marks", "--no-labels", "--no-guide", "--sheets"}) {
            if (given(app, option)) {
                throw WrongOption(std::string(option) + ": it belongs to --pdf.");
            }
        }
        return;
    }
    for (const char* option : {"--format", "--out", "--base", "--test-target"}) {
        if (given(app, option)) {
            throw WrongOption("--pdf and " + std::string(option) + ": give one of them, not both.");
        }
    }
    if (given(app, "--overlap")) {
        options.overlap = lengthOption("--overlap", texts.overlap);
    }
    if (given(app, "--marks")) {
        constexpr std::array<SheetMarks, 3> marks{SheetMarks::none, SheetMarks::corners,
                                                  SheetMarks::lines};
        options.marks = marks.at(wordOption("--marks", texts.marks, {"none", "corners", "lines"}));
    }
}

void checkWhatToDo(const Options& options) {
    if (options.listPapers || options.listProfiles) {
        return;
    }
    if (!options.testTarget.empty()) {
        if (!options.photo.empty()) {
            throw WrongOption("--test-target takes no photo: leave out \"" + options.photo + "\".");
        }
        if (options.plan) {
            throw WrongOption("--plan and --test-target: give one of them, not both.");
        }
        return;
    }
    if (options.photo.empty()) {
        throw WrongOption("No photo given.");
    }
}

} // namespace

CommandLine readCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    Texts texts;
    CLI::App app;
    declare(app, line.options, texts);
    sortWords(app, arguments);
    if (given(app, "--help")) {
        line.text = helpText();
        return line;
    }
    if (given(app, "--version")) {
        line.text = versionLine();
        return line;
    }
    readLayout(app, texts, line.options);
    readPosterSize(app, texts, line.options);
    readPaper(app, texts, line.options);
    readEdges(app, texts, line.options);
    readFiles(app, texts, line.options);
    readDocument(app, texts, line.options);
    refuseLeftOver(app);
    checkWhatToDo(line.options);
    return line;
}

} // namespace veldara
