// A picture of linear light while it is being painted, and the worker threads that paint it.
#pragma once

#include "noise.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <thread>
#include <vector>

namespace veldara::sample {

class Canvas {
  public:
    Canvas(int width, int height)
        : width_(width), height_(height),
          pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

    int width() const { return width_; }
    int height() const { return height_; }
    Vec3& at(int x, int y) { return pixels_[index(x, y)]; }
    const Vec3& at(int x, int y) const { return pixels_[index(x, y)]; }

    // Between the pixels, the border repeated.
    Vec3 between(float x, float y) const {
        const float cx = std::clamp(x, 0.0f, static_cast<float>(width_ - 1));
        const float cy = std::clamp(y, 0.0f, static_cast<float>(height_ - 1));
        const int left = std::min(static_cast<int>(cx), width_ - 2);
        const int top = std::min(static_cast<int>(cy), height_ - 2);
        const float fx = cx - static_cast<float>(left);
        const float fy = cy - static_cast<float>(top);
        return mix(mix(at(left, top), at(left + 1, top), fx),
                   mix(at(left, top + 1), at(left + 1, top + 1), fx), fy);
    }

  private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_;
    int height_;
    std::vector<Vec3> pixels_;
};

// Calls work(0) ... work(count - 1), each once, on all cores.
template <typename Work>
void forEachParallel(int count, const Work& work) {
    std::atomic<int> next{0};
    const auto loop = [&] {
        for (int i = next++; i < count; i = next++)
            work(i);
    };
    std::vector<std::jthread> threads;
    for (unsigned i = 1; i < std::max(1U, std::thread::hardware_concurrency()); ++i)
        threads.emplace_back(loop);
    loop();
}

} // namespace veldara::sample
