// The PDF library computes a document's number with GnuTLS. Linked in the usual way, GnuTLS and the
// libraries that it needs would be loaded and prepared whenever a program starts, which took nearly
// half of the time of `veldara-tiles --plan`. So the functions that the PDF library's archive asks
// for are here, and find the real ones when they are called. Nothing outside of the program sees
// them.
#include "platform/function_address.h"

#include <type_traits>

#include <dlfcn.h>
#include <gnutls/crypto.h>
#include <gnutls/gnutls.h>

namespace {

void* addressOf(const char* name) {
    static void* const library = dlopen("libgnutls.so.30", RTLD_NOW | RTLD_LOCAL);
    return library == nullptr ? nullptr : dlsym(library, name);
}

// Null: the library is not there.
template <typename Function>
Function* found(Function* /*declared*/, const char* name) {
    return veldara::functionAt<Function*>(addressOf(name));
}

// The PDF library throws an error with gnutls_strerror's text when it gets the error.
template <typename... Parameters>
int call(int (*declared)(Parameters...), const char* name,
         std::type_identity_t<Parameters>... arguments) {
    const auto function = found(declared, name);
    return function == nullptr ? GNUTLS_E_UNIMPLEMENTED_FEATURE : function(arguments...);
}

} // namespace

extern "C" {

int gnutls_hash_init(gnutls_hash_hd_t* handle, gnutls_digest_algorithm_t algorithm) {
    return call(gnutls_hash_init, "gnutls_hash_init", handle, algorithm);
}

int gnutls_hash(gnutls_hash_hd_t handle, const void* bytes, size_t size) {
    return call(gnutls_hash, "gnutls_hash", handle, bytes, size);
}

void gnutls_hash_deinit(gnutls_hash_hd_t handle, void* digest) {
    if (const auto function = found(gnutls_hash_deinit, "gnutls_hash_deinit")) {
        function(handle, digest);
    }
}

int gnutls_cipher_init(gnutls_cipher_hd_t* handle, gnutls_cipher_algorithm_t cipher,
                       const gnutls_datum_t* key, const gnutls_datum_t* vector) {
    return call(gnutls_cipher_init, "gnutls_cipher_init", handle, cipher, key, vector);
}

int gnutls_cipher_encrypt2(gnutls_cipher_hd_t handle, const void* plain, size_t plainSize,
                           void* coded, size_t codedSize) {
    return call(gnutls_cipher_encrypt2, "gnutls_cipher_encrypt2", handle, plain, plainSize, coded,
                codedSize);
}

int gnutls_cipher_decrypt2(gnutls_cipher_hd_t handle, const void* coded, size_t codedSize,
                           void* plain, size_t plainSize) {
    return call(gnutls_cipher_decrypt2, "gnutls_cipher_decrypt2", handle, coded, codedSize, plain,
                plainSize);
}

void gnutls_cipher_deinit(gnutls_cipher_hd_t handle) {
    if (const auto function = found(gnutls_cipher_deinit, "gnutls_cipher_deinit")) {
        function(handle);
    }
}

size_t gnutls_cipher_get_key_size(gnutls_cipher_algorithm_t algorithm) {
    const auto function = found(gnutls_cipher_get_key_size, "gnutls_cipher_get_key_size");
    return function == nullptr ? 0 : function(algorithm);
}

int gnutls_rnd(gnutls_rnd_level_t level, void* bytes, size_t size) {
    return call(gnutls_rnd, "gnutls_rnd", level, bytes, size);
}

const char* gnutls_strerror(int error) {
    const auto function = found(gnutls_strerror, "gnutls_strerror");
    return function == nullptr ? "the library GnuTLS is missing" : function(error);
}

} // extern "C"
