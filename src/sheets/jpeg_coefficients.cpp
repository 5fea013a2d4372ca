#include "sheets/jpeg_coefficients.h"

#include <cstring>

namespace veldara {

namespace {

constexpr std::size_t alignment = 64; // what the library gives to blocks, and a little more

std::uint8_t* aligned(std::uint8_t* bytes) {
    return bytes + (alignment - reinterpret_cast<std::uintptr_t>(bytes) % alignment) % alignment;
}

std::size_t paddedWidth(const jpeg_component_info& component) {
    const auto factor = static_cast<std::size_t>(component.h_samp_factor);
    return (component.width_in_blocks + factor - 1) / factor * factor;
}

} // namespace

std::uint64_t JpegCoefficients::rowBytes(const jpeg_decompress_struct& state) {
    std::uint64_t blocks = 0;
    for (int i = 0; i < state.num_components; ++i) {
        const jpeg_component_info& component = state.comp_info[i];
        blocks += std::uint64_t{paddedWidth(component)} *
                  static_cast<std::uint64_t>(component.v_samp_factor);
    }
    return blocks * sizeof(JBLOCK);
}

JpegCoefficients::JpegCoefficients(JpegFile& photo, int mcuRows)
    : photo_(photo), ring_(photo.hasOneScan()),
      memory_(takePixelMemory(rowBytes(photo.state()) * static_cast<std::size_t>(mcuRows) +
                              alignment)) {
    jpeg_decompress_struct& state = photo.state();
    auto* free = reinterpret_cast<JBLOCKROW>(aligned(memory_.get()));
    for (int i = 0; i < state.num_components; ++i) {
        const jpeg_component_info& component = state.comp_info[i];
        planes_.push_back({free, paddedWidth(component), mcuRows * component.v_samp_factor, {}});
        free += planes_.back().width * static_cast<std::size_t>(planes_.back().rows);
    }
    if (!ring_) {
        std::memset(planes_.front().first, 0, rowBytes(state) * static_cast<std::size_t>(mcuRows));
    }
    // The library asks its memory manager for arrays as large as the photo, and for their rows from
    // the top down; both are public methods, made to be replaced.
    state.client_data = this;
    state.mem->request_virt_barray = requestArray;
    state.mem->access_virt_barray = accessArray;
    progress_.progress_monitor = hearProgress;
    state.progress = &progress_;
}

bool JpegCoefficients::read(const RowHook& hook) {
    hook_ = &hook;
    try {
        photo_.errors().guard([this] { jpeg_read_coefficients(&photo_.state()); });
    } catch (const Error&) {
        if (thrown_) {
            std::rethrow_exception(thrown_);
        }
        if (!ended_) {
            throw;
        }
        return false;
    }
    if (!ring_) {
        photo_.checkAllScansCame();
    }
    return true;
}

JBLOCKROW JpegCoefficients::blocks(int component, int row) const {
    const Plane& plane = planes_[static_cast<std::size_t>(component)];
    return plane.first + plane.width * static_cast<std::size_t>(row % plane.rows);
}

jvirt_barray_ptr JpegCoefficients::requestArray(j_common_ptr library, int, boolean,
                                                JDIMENSION width, JDIMENSION, JDIMENSION) {
    auto& self = *static_cast<JpegCoefficients*>(library->client_data);
    // One for each component, in their order.
    if (self.requested_ == self.planes_.size() || self.planes_[self.requested_].width != width) {
        self.photo_.errors().fail("the JPEG library asks for unknown arrays");
    }
    return reinterpret_cast<jvirt_barray_ptr>(&self.planes_[self.requested_++]);
}

JBLOCKARRAY JpegCoefficients::accessArray(j_common_ptr library, jvirt_barray_ptr array,
                                          JDIMENSION first, JDIMENSION count, boolean) {
    const auto& self = *static_cast<JpegCoefficients*>(library->client_data);
    Plane& plane = *reinterpret_cast<Plane*>(array);
    for (JDIMENSION i = 0; i < count; ++i) {
        const auto row = (first + i) % static_cast<JDIMENSION>(plane.rows);
        plane.accessed[i] = plane.first + plane.width * row;
        if (self.ring_) {
            std::memset(plane.accessed[i], 0, plane.width * sizeof(JBLOCK));
        }
    }
    return plane.accessed.data();
}

bool JpegCoefficients::mayGoOn() noexcept {
    try {
        const bool whole = !ring_;
        return (*hook_)(whole ? -1 : static_cast<int>(photo_.state().input_iMCU_row));
    } catch (...) {
        thrown_ = std::current_exception();
        return false;
    }
}

void JpegCoefficients::hearProgress(j_common_ptr library) {
    auto& self = *static_cast<JpegCoefficients*>(library->client_data);
    JpegFile::countScans(library);
    if (!self.mayGoOn()) {
        self.ended_ = true;
        self.photo_.errors().fail("stopped");
    }
}

} // namespace veldara
