// What the command line asks for.
#pragma once

#include "calibration/edge_profile.h"
#include "paper/paper_catalogue.h"
#include "platform/image/codec.h"
#include "platform/image/turn.h"
#include "platform/measures.h"
#include "sheets/sheet_layout.h"

#include <array>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace veldara {

// An invalid command line; what() names the option and its allowed values.
class WrongOption : public std::runtime_error {
  public:
    explicit WrongOption(const std::string& sentence) : std::runtime_error(sentence) {}
};

struct Options {
    std::string photo;
    int wide = 2;
    int high = 2;
    Units units = Units::inches;
    std::string paper; // empty: the catalogue's first
    std::optional<std::array<double, 2>> paperSize;
    std::optional<Margins> margins;
    Turn rotation = Turn::none;
    bool rotateTiles = false;
    int zoom = 0;
    int horzPos = 100;
    int vertPos = 100;
    std::optional<ClipCounts> clip;
    std::string profile;
    std::optional<TileFormat> format;
    std::string out;
    std::optional<std::string> base;
    std::string testTarget;
    // The poster's size, which chooses the tile counts instead of --wide and --high; in the units.
    std::optional<double> posterWidth;
    std::optional<double> posterHeight;
    std::string bestQuality; // a quality word to keep, as large as that allows
    bool anyPaper = false;   // any of the units' papers may be chosen
    bool choices = false;    // list the choices only
    std::string pdf;         // a document instead of tile files; the five below belong to it
    double overlap = 0;
    SheetMarks marks = SheetMarks::corners;
    bool noLabels = false;
    bool noGuide = false;
    std::string sheets; // empty: all
    bool yes = false;
    bool plan = false;
    bool quiet = false;
    bool listPapers = false;
    bool listProfiles = false;
};

// Either options, or a text to print instead of any work (the help, the version).
struct CommandLine {
    Options options;
    std::string text;
};

// arguments: without the program's name. Throws WrongOption.
CommandLine readCommandLine(const std::vector<std::string>& arguments);

} // namespace veldara
