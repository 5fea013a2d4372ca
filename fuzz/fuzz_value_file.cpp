#include "agreement.h"
#include "platform/linux/stored_values.h"

namespace veldara::fuzz {
namespace {

bool same(const RegistryValue& one, const RegistryValue& other) {
    return one.type == other.type && one.text == other.text && one.number == other.number &&
           one.bytes == other.bytes;
}

bool same(const StoredValues& one, const StoredValues& other) {
    if (one.size() != other.size()) {
        return false;
    }
    for (const auto& [key, values] : one) {
        const auto found = other.find(key);
        if (found == other.end() || found->first != key || found->second.size() != values.size()) {
            return false;
        }
        for (const auto& [name, value] : values) {
            const auto match = found->second.find(name);
            if (match == found->second.end() || match->first != name ||
                !same(match->second, value)) {
                return false;
            }
        }
    }
    return true;
}

} // namespace
} // namespace veldara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldara;
    const StoredValues values = parseStoredValues(fuzz::asText(data, size));
    for (const auto& [key, named] : values) {
        for (const auto& [name, value] : named) {
            fuzz::require(value.type != RegistryType::none, "every value has a type");
        }
    }
    const std::string written = storedValuesText(values);
    const StoredValues again = parseStoredValues(written);
    fuzz::require(fuzz::same(values, again), "a file that is written gives the same values");
    fuzz::require(storedValuesText(again) == written, "writing it again changes nothing");
    return 0;
}
