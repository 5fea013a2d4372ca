#include "platform/image/heif_library.h"

#include "platform/function_address.h"

#include <optional>
#include <type_traits>

#ifdef _WIN32
#include <string>

#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace veldara {

namespace {

#ifdef _WIN32

using Module = HMODULE;

// From beside the program and nowhere else; what it needs itself, from there or from the system.
Module loadModule() {
    std::wstring path(MAX_PATH, L'\0');
    while (GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())) ==
           path.size()) {
        path.resize(path.size() * 2); // it was cut
    }
    path.erase(path.find_last_of(L'\\') + 1);
    return LoadLibraryExW((path + L"libheif.dll").c_str(), nullptr,
                          LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
}

FARPROC addressIn(Module module, const char* name) {
    return GetProcAddress(module, name);
}

#else

using Module = void*;

Module loadModule() {
    return dlopen("libheif.so.1", RTLD_NOW | RTLD_LOCAL);
}

void* addressIn(Module module, const char* name) {
    return dlsym(module, name);
}

#endif

bool findAll(Module module, HeifLibrary& library) {
    const auto find = [module](auto& call, const char* name) {
        call = functionAt<std::remove_reference_t<decltype(call)>>(addressIn(module, name));
        return call != nullptr;
    };
    return find(library.init, "heif_init") && find(library.context_alloc, "heif_context_alloc") &&
           find(library.context_free, "heif_context_free") &&
           find(library.context_read_from_reader, "heif_context_read_from_reader") &&
           find(library.context_get_primary_image_handle,
                "heif_context_get_primary_image_handle") &&
           find(library.context_get_image_handle, "heif_context_get_image_handle") &&
           find(library.image_handle_release, "heif_image_handle_release") &&
           find(library.image_handle_get_width, "heif_image_handle_get_width") &&
           find(library.image_handle_get_height, "heif_image_handle_get_height") &&
           find(library.image_handle_has_alpha_channel, "heif_image_handle_has_alpha_channel") &&
           find(library.image_handle_is_premultiplied_alpha,
                "heif_image_handle_is_premultiplied_alpha") &&
           find(library.image_handle_get_luma_bits_per_pixel,
                "heif_image_handle_get_luma_bits_per_pixel") &&
           find(library.image_handle_get_list_of_metadata_block_IDs,
                "heif_image_handle_get_list_of_metadata_block_IDs") &&
           find(library.image_handle_get_metadata_size, "heif_image_handle_get_metadata_size") &&
           find(library.image_handle_get_metadata, "heif_image_handle_get_metadata") &&
           find(library.image_handle_get_color_profile_type,
                "heif_image_handle_get_color_profile_type") &&
           find(library.image_handle_get_raw_color_profile_size,
                "heif_image_handle_get_raw_color_profile_size") &&
           find(library.image_handle_get_raw_color_profile,
                "heif_image_handle_get_raw_color_profile") &&
           find(library.image_handle_get_nclx_color_profile,
                "heif_image_handle_get_nclx_color_profile") &&
           find(library.nclx_color_profile_free, "heif_nclx_color_profile_free") &&
           find(library.decoding_options_alloc, "heif_decoding_options_alloc") &&
           find(library.decoding_options_free, "heif_decoding_options_free") &&
           find(library.decode_image, "heif_decode_image") &&
           find(library.image_release, "heif_image_release") &&
           find(library.image_get_width, "heif_image_get_width") &&
           find(library.image_get_height, "heif_image_get_height") &&
           find(library.image_get_plane_readonly, "heif_image_get_plane_readonly") &&
           find(library.image_get_decoding_warnings, "heif_image_get_decoding_warnings") &&
           find(library.have_decoder_for_format, "heif_have_decoder_for_format");
}

// It stays loaded to the end: its codecs keep threads and tables.
std::optional<HeifLibrary> load() {
    const Module module = loadModule();
    HeifLibrary library;
    if (module == nullptr || !findAll(module, library) ||
        library.init(nullptr).code != heif_error_Ok) {
        return std::nullopt;
    }
    return library;
}

} // namespace

const HeifLibrary* heifLibrary() {
    static const std::optional<HeifLibrary> library = load();
    return library ? &*library : nullptr;
}

} // namespace veldara
