// A fuzz build has no PDF writer, because its compiler does not take the library's headers. The
// program that is started here never writes a document.
#include "platform/error.h"
#include "sheets/pdf_document.h"

namespace veldara {

void writePdf(const PdfParts&, const std::function<void(std::span<const std::uint8_t>)>&) {
    throw Error("There is no PDF writer in a fuzz build.");
}

} // namespace veldara
