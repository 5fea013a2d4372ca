#include "agreement.h"
#include "app/preference_text.h"
#include "app/registry_text.h"
#include "platform/registry.h"

namespace veldara::fuzz {
namespace {

void checkIndices(const std::string& text) {
    for (const int entries : {0, 1, 2, 25, 199}) {
        const TileCountPreference counts = readTileCounts(text, entries);
        for (const int index : {counts.wideIndex, counts.highIndex}) {
            require(index == 1 || (index >= 0 && index < entries), "a tile count is in its list");
        }
        require(readTileCounts(tileCountText(counts), entries) == counts,
                "tile counts that are written read as the same");
        const EdgeAdjustPreference adjust = readEdgeAdjust(text, entries);
        require(adjust.checked == 0 || adjust.checked == 1, "edges are adjusted or not");
        require(adjust.profileIndex == 0 ||
                    (adjust.profileIndex > 0 && adjust.profileIndex < entries),
                "a profile is in its list");
        require(readEdgeAdjust(edgeAdjustText(adjust), entries) == adjust,
                "an edge adjustment that is written reads as the same");
    }
    for (const int otherwise : {0, 1}) {
        const int value = readSwitch(text, otherwise);
        require(value == 0 || value == 1, "a switch is on or off");
        require(readSwitch(std::to_string(value), 1 - otherwise) == value,
                "a switch that is written reads as the same");
    }
    readPrintSize(text);
}

void checkStorage(const std::string& text, NumberStyle style) {
    const StoredPreference stored = storedPreference(text, style);
    if (stored.number) {
        require(storedPreference(std::to_string(*stored.number), style).number == stored.number,
                "a stored number is stored as the same again");
    } else {
        require(storedPreference(stored.text, style).text == stored.text,
                "a stored text is stored as the same again");
    }
    RegistryValue value;
    value.type = RegistryType::string;
    value.text = text;
    require(registryValueText(value).size() <= text.size(), "a text is shown as it is");
    value.type = RegistryType::other;
    value.bytes.assign(text.begin(), text.end());
    require(registryValueText(value).size() <= text.size(), "bytes are shown as they are");
}

} // namespace
} // namespace veldara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [style, text] = veldara::fuzz::styledText(data, size);
    veldara::fuzz::checkIndices(text);
    veldara::fuzz::checkStorage(text, style);
    return 0;
}
