#include "cli/options.h"

#include "cli/help_text.h"
#include "cli/option_values.h"

#include <algorithm>

#include <CLI/CLI.hpp>

namespace veldara {
namespace {

// The texts of the options as they were given; empty: not given.
struct Texts {
    std::string wide, high, units, paperSize, margins, rotate, zoom, pan, clip, format, base;
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
    app.add_flag("--yes,-y", options.yes);
    app.add_flag("--plan", options.plan);
    app.add_flag("--quiet,-q", options.quiet);
    app.add_flag("--list-papers", options.listPapers);
    app.add_flag("--list-profiles", options.listProfiles);
    app.add_flag("--version");
    app.add_flag("--help,-h");
    app.allow_extras();
}

// Sorts the words of the command line into the declared options. Throws WrongOption.
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

// A word that is no option's value and not the photo.
void refuseLeftOver(const CLI::App& app) {
    bool namesOnly = false;
    for (const std::string& word : app.remaining()) {
        if (word == "--") {
            namesOnly = true; // as behind it everything is
            continue;
        }
        const bool isOption = word.rfind('-', 0) == 0 && !namesOnly;
        throw WrongOption(
            "\"" + word + "\": " +
            (isOption ? "there is no such option." : "this is a name too many; give one photo."));
    }
}

void readLayout(const CLI::App& app, const Texts& texts, Options& options) {
    if (given(app, "--wide")) {
        options.wide = wholeOption("--wide", texts.wide, 1, 25);
    }
    if (given(app, "--high")) {
        options.high = wholeOption("--high", texts.high, 1, 25);
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

void readPaper(const CLI::App& app, const Texts& texts, Options& options) {
    if (given(app, "--units")) {
        options.units = wordOption("--units", texts.units, {"in", "mm"}) == 0 ? Units::inches
                                                                              : Units::millimetres;
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
        constexpr std::array<FileType, 3> types{FileType::jpeg, FileType::tiff, FileType::bmp};
        options.format = types.at(wordOption("--format", texts.format, {"jpg", "tif", "bmp"}));
    }
    if (given(app, "--base")) {
        if (texts.base.find_first_of("/\\") != std::string::npos) {
            throw WrongOption("--base \"" + texts.base +
                              "\": give a name without / and \\; --out takes the folder.");
        }
        options.base = texts.base;
    }
    for (const char* option : {"--out", "--test-target"}) {
        if (given(app, option) && app[option]->as<std::string>().empty()) {
            throw WrongOption(std::string(option) + " \"\": give a name.");
        }
    }
}

void checkWhatToDo(const Options& options) {
    if (options.listPapers || options.listProfiles) {
        return;
    }
    if (!options.testTarget.empty()) {
        if (!options.photo.empty()) {
            throw WrongOption("--test-target makes a picture without a photo: leave out \"" +
                              options.photo + "\".");
        }
        if (options.plan) {
            throw WrongOption("--plan and --test-target: give one of them, not both.");
        }
        return;
    }
    if (options.photo.empty()) {
        throw WrongOption("Which photo?  Give its file name.");
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
    readPaper(app, texts, line.options);
    readEdges(app, texts, line.options);
    readFiles(app, texts, line.options);
    refuseLeftOver(app);
    checkWhatToDo(line.options);
    return line;
}

} // namespace veldara
