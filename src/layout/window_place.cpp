#include "layout/window_place.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace veldara {

namespace {

long long sharedArea(const ScreenRect& a, const ScreenRect& b) {
    const int width = std::min(a.left + a.width, b.left + b.width) - std::max(a.left, b.left);
    const int height = std::min(a.top + a.height, b.top + b.height) - std::max(a.top, b.top);
    return width > 0 && height > 0 ? static_cast<long long>(width) * height : 0;
}

} // namespace

std::string windowPlaceText(const WindowPlace& place) {
    std::string text;
    for (const int number : {place.normal.left, place.normal.top, place.normal.width,
                             place.normal.height, place.maximized ? 1 : 0, place.splitter}) {
        text += (text.empty() ? "" : " ") + std::to_string(number);
    }
    return text;
}

std::optional<WindowPlace> readWindowPlace(std::string_view text) {
    constexpr int limit = 100'000; // no desktop is larger
    std::array<int, 6> numbers{};
    const char* next = text.data();
    const char* const end = text.data() + text.size();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0 && (next == end || *next++ != ' ')) {
            return std::nullopt;
        }
        const auto [stop, error] = std::from_chars(next, end, numbers[i]);
        if (error != std::errc{} || std::abs(numbers[i]) > limit) {
            return std::nullopt;
        }
        next = stop;
    }
    const WindowPlace place{
        {numbers[0], numbers[1], numbers[2], numbers[3]}, numbers[4] == 1, numbers[5]};
    const bool valid =
        next == end && place.normal.width > 0 && place.normal.height > 0 && place.splitter >= 0;
    return valid ? std::optional(place) : std::nullopt;
}

ScreenRect placeOnScreen(const ScreenRect& wanted, const std::vector<ScreenRect>& screens) {
    const ScreenRect& screen = *std::max_element(
        screens.begin(), screens.end(), [&](const ScreenRect& one, const ScreenRect& other) {
            return sharedArea(wanted, one) < sharedArea(wanted, other);
        });
    ScreenRect place = wanted;
    place.width = std::min(place.width, screen.width);
    place.height = std::min(place.height, screen.height);
    place.left = std::clamp(place.left, screen.left, screen.left + screen.width - place.width);
    place.top = std::clamp(place.top, screen.top, screen.top + screen.height - place.height);
    return place;
}

int lineWidth(double scale) {
    return std::max(1, static_cast<int>(std::lround(scale)));
}

int lineStart(int pixel, int width, int first, int last) {
    return std::clamp(pixel - width / 2, first, std::max(first, last + 1 - width));
}

} // namespace veldara
