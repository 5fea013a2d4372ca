// Documents that tests make of small photos, and what other programs say of them.
#pragma once

#include "image/files.h"
#include "sheets/poster_pdf.h"

#include <filesystem>
#include <string>

namespace veldara::testing {

// A folder of its own for one test; gone with it.
class Folder {
  public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::filesystem::path file(const std::string& name) const { return path_ / name; }
    std::size_t count() const; // of the files in it

  private:
    std::filesystem::path path_;
};

void writeFile(const std::filesystem::path& file, const test::Bytes& bytes);
test::Bytes readFile(const std::filesystem::path& file);

// Paper of 5 x 7 inches with margins of half an inch: at 100 dots per inch a sheet shows 400 x 600
// pixels, and with wide x high sheets a photo of sheetsWide * 400 x sheetsHigh * 600 fits exactly.
SheetJob smallJob(int sheetsWide, int sheetsHigh, bool tilesTurned = false);

// Writes the photo's bytes and the document beside it, which has to be sound; returns its path.
std::filesystem::path makeDocument(const Folder& folder, const test::Bytes& photo,
                                   const SheetJob& job, Turn rotation = Turn::none);

// The page at 100 dots per inch as that renderer draws it.
enum class Renderer { poppler, mupdf, ghostscript };
Image rendered(const std::filesystem::path& document, int page, Renderer renderer,
               const Folder& folder);

// The mean difference of two pictures of one size, the other shifted by so many pixels; compared
// where both are, without the outermost `border` pixels.
double meanDifference(const PixelView& one, const PixelView& other, int right = 0, int down = 0);

} // namespace veldara::testing
