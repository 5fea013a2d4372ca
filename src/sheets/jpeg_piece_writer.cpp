#include "sheets/jpeg_piece_writer.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <span>

namespace veldara {

namespace {

constexpr std::uint8_t markerStart = 0xFF;
constexpr std::size_t firstRoom = std::size_t{64} << 10;
constexpr int largestValue = 1023;  // of a coefficient of 8-bit samples, either sign
constexpr int mostBlocksInMcu = 10; // that scans of several components may have

JpegOutput& outputOf(j_compress_ptr library) {
    return *reinterpret_cast<JpegOutput*>(library->dest);
}

bool grow(JpegOutput& output) noexcept {
    try {
        output.bytes.resize(std::max(firstRoom, 2 * output.bytes.size()));
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void giveRoom(JpegOutput& output) {
    output.manager.next_output_byte = output.bytes.data() + output.used;
    output.manager.free_in_buffer = output.bytes.size() - output.used;
}

// What the library wrote: markers up to the scan's, coded data, end marker.
struct FileParts {
    std::span<std::uint8_t> header;
    std::span<std::uint8_t> data;
};

// The library wrote it, so its segments are whole. The height is put into the frame's segment.
FileParts partsOf(std::span<std::uint8_t> file, int height) {
    constexpr std::uint8_t scan = 0xDA;
    constexpr std::uint8_t firstFrame = 0xC0;
    constexpr std::uint8_t secondFrame = 0xC1;
    std::size_t at = 2;
    for (;;) {
        const std::uint8_t marker = file[at + 1];
        const std::size_t length = std::size_t{file[at + 2]} << 8U | file[at + 3];
        if (marker == firstFrame || marker == secondFrame) {
            file[at + 5] = static_cast<std::uint8_t>(height >> 8);
            file[at + 6] = static_cast<std::uint8_t>(height & 255);
        }
        at += 2 + length;
        if (marker == scan) {
            return {file.first(at), file.subspan(at, file.size() - at - 2)};
        }
    }
}

std::uint8_t restartMarker(int number) {
    return static_cast<std::uint8_t>(JPEG_RST0 + number % 8);
}

// The library numbers the restart markers of each part from 0.
void renumber(std::span<std::uint8_t> data, int first) {
    std::uint8_t* at = data.data();
    std::uint8_t* const end = at + data.size();
    while ((at = static_cast<std::uint8_t*>(
                std::memchr(at, markerStart, static_cast<std::size_t>(end - at)))) != nullptr &&
           at + 1 < end) {
        ++at;
        if (*at >= JPEG_RST0 && *at <= JPEG_RST0 + 7) {
            *at = restartMarker(first++);
        }
    }
}

bool everyValueFits(JBLOCKROW blocks, std::size_t count) {
    const JCOEF* values = blocks[0];
    JCOEF least = 0;
    JCOEF most = 0;
    for (std::size_t i = 0; i < count * DCTSIZE2; ++i) {
        least = std::min(least, values[i]);
        most = std::max(most, values[i]);
    }
    return least >= -largestValue - 1 && most <= largestValue;
}

// The same for the first value of each block alone.
bool everyBrightnessFits(JBLOCKROW blocks, std::size_t count) {
    bool fit = true;
    for (std::size_t i = 0; i < count; ++i) {
        const JCOEF value = blocks[i][0];
        fit = fit && value >= -largestValue - 1 && value <= largestValue;
    }
    return fit;
}

// A file of several scans may use one table's place for one table after the other. Each component
// kept its own; here it gets a place of its own, too.
void separateQuantTables(JpegFile& photo) {
    jpeg_decompress_struct& state = photo.state();
    std::array<JQUANT_TBL, NUM_QUANT_TBLS> tables{};
    bool shared = false;
    for (int i = 0; i < state.num_components; ++i) {
        const jpeg_component_info& component = state.comp_info[i];
        const JQUANT_TBL* last = state.quant_tbl_ptrs[component.quant_tbl_no];
        tables[static_cast<std::size_t>(i)] = *component.quant_table;
        shared = shared || last == nullptr ||
                 !std::equal(std::begin(last->quantval), std::end(last->quantval),
                             std::begin(component.quant_table->quantval));
    }
    for (int i = 0; shared && i < state.num_components; ++i) {
        JQUANT_TBL*& place = state.quant_tbl_ptrs[i];
        if (place == nullptr) {
            photo.errors().guard(
                [&] { place = jpeg_alloc_quant_table(reinterpret_cast<j_common_ptr>(&state)); });
        }
        *place = tables[static_cast<std::size_t>(i)];
        state.comp_info[i].quant_tbl_no = i;
    }
}

} // namespace

JpegCompressor::JpegCompressor() {
    state.err = &errors.manager;
    errors.guard([this] { jpeg_create_compress(&state); });
}

JpegCompressor::~JpegCompressor() {
    jpeg_destroy_compress(&state);
}

JpegOutput::JpegOutput() {
    manager.init_destination = [](j_compress_ptr library) {
        JpegOutput& output = outputOf(library);
        output.used = 0;
        if (output.bytes.empty() && !grow(output)) {
            reinterpret_cast<JpegErrors*>(library->err)->fail("there is not enough memory");
        }
        giveRoom(output);
    };
    manager.empty_output_buffer = [](j_compress_ptr library) -> boolean {
        JpegOutput& output = outputOf(library);
        output.used = output.bytes.size();
        if (!grow(output)) {
            reinterpret_cast<JpegErrors*>(library->err)->fail("there is not enough memory");
        }
        giveRoom(output);
        return TRUE;
    };
    manager.term_destination = [](j_compress_ptr library) {
        JpegOutput& output = outputOf(library);
        output.used = output.bytes.size() - output.manager.free_in_buffer;
    };
}

JpegPieceWriter::JpegPieceWriter(JpegFile& photo) : inParts_(photo.hasOneScan()) {
    library_.state.dest = &output_.manager;
    setUp(photo);
    const auto components = static_cast<std::size_t>(photo.state().num_components);
    rows_.resize(components);
    widths_.resize(components);
    for (std::vector<JBLOCKROW>& rows : rows_) {
        arrays_.push_back(reinterpret_cast<jvirt_barray_ptr>(&rows));
    }
}

void JpegPieceWriter::setUp(JpegFile& photo) {
    jpeg_compress_struct& state = library_.state;
    if (!inParts_) {
        separateQuantTables(photo);
    }
    library_.errors.guard([&] {
        jpeg_copy_critical_parameters(&photo.state(), &state);
        if (state.jpeg_color_space == JCS_CMYK) { // without it, samples count ink
            state.write_Adobe_marker = photo.state().saw_Adobe_marker;
        }
    });
    tables_.checkEveryValue = true; // before the best tables are made for them
    if (inParts_) {
        tables_ = chooseHuffmanTables(photo.state(), library_.errors, state);
        state.restart_in_rows = 1;
    }
    state.mem->access_virt_barray = accessArray;
    if (!inParts_) {
        setUpWhole(photo.state());
    }
}

void JpegPieceWriter::setUpWhole(const jpeg_decompress_struct& photo) {
    jpeg_compress_struct& state = library_.state;
    int blocksInMcu = 0;
    for (int i = 0; i < photo.num_components; ++i) {
        blocksInMcu += photo.comp_info[i].h_samp_factor * photo.comp_info[i].v_samp_factor;
    }
    state.optimize_coding = TRUE;
    if (photo.num_components > 1 && blocksInMcu > mostBlocksInMcu) {
        for (int i = 0; i < photo.num_components; ++i) {
            scans_.push_back({1, {i, 0, 0, 0}, 0, DCTSIZE2 - 1, 0, 0});
        }
        state.scan_info = scans_.data();
        state.num_scans = photo.num_components;
    } else if (photo.progressive_mode) {
        library_.errors.guard([&] { jpeg_simple_progression(&state); });
    }
}

std::vector<std::uint8_t> JpegPieceWriter::write(const JpegCoefficients& coefficients,
                                                 const McuGrid& grid, const PixelRectangle& piece,
                                                 const McuRows& rows) {
    jpeg_compress_struct& state = library_.state;
    state.image_width = static_cast<JDIMENSION>(piece.width);
    const int bottom = std::min(rows.end * grid.mcuHeight, piece.bottom());
    state.image_height = static_cast<JDIMENSION>(bottom - rows.first * grid.mcuHeight);
    pointToRows(coefficients, grid, piece, rows);
    checkBlocks();
    compress();

    const std::span<std::uint8_t> file(output_.bytes.data(), output_.used);
    const FileParts parts = partsOf(file, piece.height);
    const McuRows all = mcuRowsOf(grid, piece);
    const bool first = rows.first == all.first;
    if (first && rows.end == all.end) {
        return {file.begin(), file.end()};
    }
    const int before = codedRows(rows.first - all.first);
    renumber(parts.data, before);
    std::vector<std::uint8_t> part;
    part.reserve(file.size());
    if (first) {
        part.assign(parts.header.begin(), parts.header.end());
    } else {
        part = {markerStart, restartMarker(before - 1)};
    }
    part.insert(part.end(), parts.data.begin(), parts.data.end());
    if (rows.end == all.end) {
        part.insert(part.end(), {markerStart, JPEG_EOI});
    }
    return part;
}

void JpegPieceWriter::pointToRows(const JpegCoefficients& coefficients, const McuGrid& grid,
                                  const PixelRectangle& piece, const McuRows& rows) {
    const int firstColumn = piece.left / grid.mcuWidth;
    const int columns = (piece.width + grid.mcuWidth - 1) / grid.mcuWidth;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const jpeg_component_info& component = library_.state.comp_info[i];
        widths_[i] =
            static_cast<std::size_t>(columns) * static_cast<std::size_t>(component.h_samp_factor);
        rows_[i].clear();
        for (int row = rows.first * component.v_samp_factor;
             row < rows.end * component.v_samp_factor; ++row) {
            rows_[i].push_back(coefficients.blocks(static_cast<int>(i), row) +
                               std::ptrdiff_t{firstColumn} * component.h_samp_factor);
        }
    }
}

void JpegPieceWriter::checkBlocks() const {
    // The library trusts them: it looks their codes up without asking whether there are any.
    bool sound = true;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        for (const JBLOCKROW row : rows_[i]) {
            sound = sound && (tables_.checkEveryValue ? everyValueFits(row, widths_[i])
                                                      : everyBrightnessFits(row, widths_[i]));
            if (inParts_ && !tables_.lastCoefficients[i].holdEverything()) {
                for (std::size_t block = 0; block < widths_[i]; ++block) {
                    sound = sound && tables_.lastCoefficients[i].hold(row[block]);
                }
            }
        }
    }
    if (!sound) {
        throw Error("its picture data is damaged or incomplete");
    }
}

void JpegPieceWriter::compress() {
    try {
        library_.errors.guard([this] {
            jpeg_write_coefficients(&library_.state, arrays_.data());
            jpeg_finish_compress(&library_.state);
        });
    } catch (const Error&) {
        jpeg_abort_compress(&library_.state);
        throw;
    }
}

int JpegPieceWriter::codedRows(int mcuRows) const {
    // A scan of a single component codes its rows of blocks one by one.
    return rows_.size() == 1 ? mcuRows * library_.state.comp_info[0].v_samp_factor : mcuRows;
}

JBLOCKARRAY JpegPieceWriter::accessArray(j_common_ptr, jvirt_barray_ptr array, JDIMENSION first,
                                         JDIMENSION, boolean) {
    return reinterpret_cast<std::vector<JBLOCKROW>*>(array)->data() + first;
}

} // namespace veldara
