#include "cli/help_text.h"

#include "platform/text/version_text.h"

namespace veldara {

std::string versionLine() {
    return "veldara-tiles " + programVersion() + "\n";
}

std::string helpText() {
    return R"(Turns one photo into a poster on several sheets of paper.

  veldara-tiles [OPTIONS] PHOTO

Writes one picture file a sheet, cut from the photo pixel by pixel and marked
with the resolution at which it prints at its size.  PHOTO is a JPEG, TIFF or
BMP file.

  veldara-tiles holiday.jpg
        2 x 2 sheets of 6 x 4 inch photo paper, in holiday_poster_images
  veldara-tiles --wide 3 --units mm --paper "A4 - 210 x 297" holiday.jpg
        3 x 2 sheets of A4 with its margins
  veldara-tiles --plan --wide 5 --zoom 50 --pan 0,100 holiday.jpg
        what would be written, as JSON, and nothing written

The sheets
  --wide N, --high N    sheets across and down, 1 to 25               [2 and 2]
  --units in|mm         inches or millimetres: the catalogue of papers, and the
                        units of the lengths given here                    [in]
  --paper NAME          a paper by its exact name in that catalogue [its first]
  --paper-size W,H      the size of paper that is in no catalogue
  --margins T,R,B,L     margins top, right, bottom, left          [the paper's]
  --list-papers         print both catalogues

How large the poster is, instead of --wide and --high
  --poster-width L      choose the sheets for at least this width, and ...
  --poster-height L     ... this height; one of them is enough
  --best-quality WORD   choose as many sheets as keep the quality: "Excellent",
                        "Very Good", "Good", "Fair", "Good from a distance" ...
  --any-paper           any paper of the units may be chosen    [--paper alone]
  --choices             list the choices, best first, and write nothing; with
                        --plan as JSON

The part of the photo
  --rotate none|cw|ccw|180
                        turn the photo                                   [none]
  --rotate-tiles        turn each sheet by a quarter
  --zoom N              enlarge: percent added to 100, 0 to 400             [0]
  --pan H,V             from 0 (left, top) to 200 (right, bottom)     [100,100]

Printers that clip the edges
  --clip T,R,B,L        quarters of the test image's stripes that are cut off
                        at each edge, 0 to 16: the sheets are made that much
                        larger
  --profile NAME        the same from a saved edge calibration profile
  --list-profiles       print the saved profiles
  --test-target FILE    write the edge calibration test image for this size of
                        sheet instead (.bmp, .tif or .jpg; no PHOTO)

The files
  --format jpg|tif|bmp  their type           [the photo's own, else jpg or tif]
  --out DIR             the folder that they go to
                        [beside the photo, named after it, with _poster_images]
  --base NAME           what their names begin with          [the photo's name]
  -y, --yes             write into a folder that exists, or over a test image
                        or a document, without asking

One document instead of tile files
  --pdf FILE            write all sheets as the pages of a PDF, at their size
  --overlap LENGTH      width of the strip of the next sheet's picture that it
                        is glued on, at most as wide as the margin          [0]
  --marks none|corners|lines
                        what to cut along                             [corners]
  --no-labels           leave out the sheet's position in its margin
  --no-guide            leave out the first page, which tells how to print and
                        put the sheets together
  --sheets 1-3,7        only these sheets                                 [all]

  --plan                print the plan as JSON and write nothing
  -q, --quiet           show no progress
  --version             print the version
  -h, --help            print this

Numbers have a decimal point on every system.  Ctrl-C stops between two files.
Status: 0 done, 1 failed, 2 wrong option, 130 stopped.
)";
}

} // namespace veldara
