// libheif, loaded when the first HEIC or AVIF file is opened and not before: with its codecs it is
// larger than the program, and other photos need not wait for it.
#pragma once

#include <libheif/heif.h>

namespace veldara {

// The calls that are used, under the library's names without "heif_". All are in its interface
// since version 1.13; newer ones keep them.
struct HeifLibrary {
    decltype(&heif_init) init = nullptr;
    decltype(&heif_context_alloc) context_alloc = nullptr;
    decltype(&heif_context_free) context_free = nullptr;
    decltype(&heif_context_read_from_reader) context_read_from_reader = nullptr;
    decltype(&heif_context_get_primary_image_handle) context_get_primary_image_handle = nullptr;
    decltype(&heif_context_get_image_handle) context_get_image_handle = nullptr;
    decltype(&heif_image_handle_release) image_handle_release = nullptr;
    decltype(&heif_image_handle_get_width) image_handle_get_width = nullptr;
    decltype(&heif_image_handle_get_height) image_handle_get_height = nullptr;
    decltype(&heif_image_handle_has_alpha_channel) image_handle_has_alpha_channel = nullptr;
    decltype(&heif_image_handle_is_premultiplied_alpha) image_handle_is_premultiplied_alpha =
        nullptr;
    decltype(&heif_image_handle_get_luma_bits_per_pixel) image_handle_get_luma_bits_per_pixel =
        nullptr;
    decltype(&heif_image_handle_get_list_of_metadata_block_IDs)
        image_handle_get_list_of_metadata_block_IDs = nullptr;
    decltype(&heif_image_handle_get_metadata_size) image_handle_get_metadata_size = nullptr;
    decltype(&heif_image_handle_get_metadata) image_handle_get_metadata = nullptr;
    decltype(&heif_image_handle_get_color_profile_type) image_handle_get_color_profile_type =
        nullptr;
    decltype(&heif_image_handle_get_raw_color_profile_size)
        image_handle_get_raw_color_profile_size = nullptr;
    decltype(&heif_image_handle_get_raw_color_profile) image_handle_get_raw_color_profile = nullptr;
    decltype(&heif_image_handle_get_nclx_color_profile) image_handle_get_nclx_color_profile =
        nullptr;
    decltype(&heif_nclx_color_profile_free) nclx_color_profile_free = nullptr;
    decltype(&heif_decoding_options_alloc) decoding_options_alloc = nullptr;
    decltype(&heif_decoding_options_free) decoding_options_free = nullptr;
    decltype(&heif_decode_image) decode_image = nullptr;
    decltype(&heif_image_release) image_release = nullptr;
    decltype(&heif_image_get_width) image_get_width = nullptr;
    decltype(&heif_image_get_height) image_get_height = nullptr;
    decltype(&heif_image_get_plane_readonly) image_get_plane_readonly = nullptr;
    decltype(&heif_image_get_decoding_warnings) image_get_decoding_warnings = nullptr;
    decltype(&heif_have_decoder_for_format) have_decoder_for_format = nullptr;
};

// The library, loaded at the first call; null when this system has none that fits. On Windows only
// the folder of the program is searched.
const HeifLibrary* heifLibrary();

} // namespace veldara
