// Cutting a large photo takes little memory, however many pieces are made of it.
#include "sheets/jpeg_cutting.h"

#include <algorithm>
#include <fstream>
#include <string>

namespace veldara::test {

#ifdef __linux__

namespace {

// Megabytes of the process that are in memory now.
double residentMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmRSS:", 0) == 0) {
            return std::stod(line.substr(6)) / 1024;
        }
    }
    ADD_FAILURE() << "no VmRSS";
    return 0;
}

} // namespace

TEST(JpegMemory, ALargePhotoIsNeverWhole) {
    constexpr int side = 8000;
    JpegKind kind;
    kind.components = 1;
    Bytes samples(std::size_t{side} * side);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<std::uint8_t>(i / 64 % 256);
    }
    const Bytes file = makeJpeg(kind, samples, side, side);
    samples = {};
    const std::unique_ptr<JpegCutter> cutter = cutterOf(file);
    ASSERT_EQ(cutter->facts().coefficientBytes, std::uint64_t{2} * side * side);
    const double before = residentMegabytes();
    double most = 0;
    const std::vector<PixelRectangle> sheets = sheetsOf(side, side, 4, 20, 10);
    cutter->start(sheets, 2);
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        const JpegPiece piece = cutter->next();
        most = std::max(most, residentMegabytes() - before);
    }
#ifdef __SANITIZE_ADDRESS__
    constexpr double allowed = 80; // freed memory is kept for a while
#else
    constexpr double allowed = 40;
#endif
    EXPECT_LT(most, allowed) << "megabytes, where the coefficients are 122";
}

#endif

} // namespace veldara::test
