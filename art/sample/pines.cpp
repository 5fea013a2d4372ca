#include "pines.h"

#include <array>

namespace veldara::sample {

namespace {

// How much of each pixel the trees hide.
class Mask {
  public:
    Mask(int width, int height)
        : width_(width), height_(height),
          cover_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

    float at(int x, int y) const { return cover_[index(x, y)]; }

    // A straight stroke that tapers from one width to another; all in pixels.
    void stroke(float x0, float y0, float x1, float y1, float thickFrom, float thickTo) {
        const float reach = std::max(thickFrom, thickTo) * 0.5f + 1.0f;
        const int left = std::max(0, static_cast<int>(std::min(x0, x1) - reach));
        const int right = std::min(width_ - 1, static_cast<int>(std::max(x0, x1) + reach));
        const int top = std::max(0, static_cast<int>(std::min(y0, y1) - reach));
        const int bottom = std::min(height_ - 1, static_cast<int>(std::max(y0, y1) + reach));
        const float dx = x1 - x0;
        const float dy = y1 - y0;
        const float length2 = std::max(dx * dx + dy * dy, 1e-6f);
        for (int y = top; y <= bottom; ++y)
            for (int x = left; x <= right; ++x) {
                const float px = static_cast<float>(x) - x0;
                const float py = static_cast<float>(y) - y0;
                const float along = clamped((px * dx + py * dy) / length2);
                const float ax = px - along * dx;
                const float ay = py - along * dy;
                const float half = 0.5f * mix(thickFrom, thickTo, along);
                // A stroke thinner than a pixel hides only its share of it.
                const float strength = std::min(1.0f, 2.0f * half);
                const float edge = std::max(half, 0.5f) + 0.5f - std::sqrt(ax * ax + ay * ay);
                float& cover = cover_[index(x, y)];
                cover = 1.0f - (1.0f - cover) * (1.0f - strength * clamped(edge));
            }
    }

    void fillBelow(int x, float y) {
        for (int row = std::max(0, static_cast<int>(y)); row < height_; ++row)
            cover_[index(x, row)] =
                std::max(cover_[index(x, row)], clamped(static_cast<float>(row) + 1.0f - y));
    }

  private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_;
    int height_;
    std::vector<float> cover_;
};

// Numbers in a fixed order.
class Dice {
  public:
    explicit Dice(std::uint32_t seed) : seed_(seed) {}
    float between(float from, float to) { return mix(from, to, latticeRandom(++count_, 7, seed_)); }

  private:
    std::uint32_t seed_;
    int count_ = 0;
};

struct Pine {
    float x;      // of the foot; all in heights of the picture
    float y;      // of the foot
    float tall;   // to the tip
    float spread; // half the width of the lowest branches over the height
    float lean;
};

constexpr std::array<Pine, 13> pines{{
    {-0.015f, 1.02f, 1.00f, 0.155f, 0.006f},
    {0.075f, 1.03f, 0.86f, 0.150f, -0.004f},
    {0.165f, 1.02f, 0.52f, 0.165f, 0.004f},
    {0.122f, 1.02f, 0.38f, 0.180f, 0.0f},
    {0.215f, 1.02f, 0.30f, 0.190f, -0.003f},
    {0.265f, 1.02f, 0.17f, 0.210f, 0.003f},
    {0.305f, 1.02f, 0.105f, 0.220f, 0.0f},
    {1.475f, 1.03f, 0.62f, 0.160f, -0.006f},
    {1.405f, 1.03f, 0.36f, 0.180f, 0.004f},
    {1.520f, 1.03f, 0.46f, 0.180f, 0.0f},
    {1.355f, 1.03f, 0.20f, 0.200f, -0.003f},
    {1.315f, 1.03f, 0.115f, 0.220f, 0.0f},
    {1.440f, 1.03f, 0.22f, 0.200f, 0.0f},
}};

struct Branch {
    float x;
    float y;
    float side; // -1 left, 1 right
    float length;
    float slope; // positive hangs down
};

// A branch with its twigs; they hang, thicker on the older wood.
void drawBranch(Mask& mask, Dice& dice, const Branch& branch, float unit) {
    const float upturn = dice.between(0.10f, 0.30f);
    const float twigLength =
        0.0035f * unit * std::min(1.0f, branch.length / (0.03f * unit)) + 0.22f * branch.length;
    const float wood = 0.0008f * unit + 0.008f * branch.length;
    const int pieces = std::clamp(static_cast<int>(branch.length / unit * 260.0f), 5, 34);
    float px = branch.x;
    float py = branch.y;
    for (int i = 1; i <= pieces; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(pieces);
        const float nx = branch.x + branch.side * branch.length * t;
        const float ny = branch.y + branch.length * (branch.slope * t - upturn * t * t);
        mask.stroke(px, py, nx, ny, wood * (1.1f - t), wood * (1.0f - t) + 0.0004f * unit);
        for (int n = 0; n < 8; ++n) {
            const float s = dice.between(0.0f, 1.0f);
            const float fromX = mix(px, nx, s);
            const float fromY = mix(py, ny, s);
            const float twig = twigLength * dice.between(0.35f, 1.0f) * (1.1f - 0.8f * t);
            const float angle = dice.between(-0.1f, 1.5f);
            mask.stroke(fromX, fromY, fromX + branch.side * twig * std::cos(angle),
                        fromY + twig * std::sin(angle), unit * 0.0011f, unit * 0.0004f);
        }
        px = nx;
        py = ny;
    }
}

void drawPine(Mask& mask, const Pine& pine, std::uint32_t seed, float unit) {
    Dice dice(seed);
    const float footX = pine.x * unit;
    const float footY = pine.y * unit;
    const float tall = pine.tall * unit;
    const float tipX = footX + pine.lean * unit;
    mask.stroke(tipX, footY - tall, footX, footY, unit * 0.0008f, tall * 0.017f);
    float t = 0.006f;
    while (t < 0.98f) {
        const float crown = std::pow(t, 0.9f) * (1.0f - 0.3f * t * t * t);
        const float x = mix(tipX, footX, t);
        const float y = footY - tall * (1.0f - t);
        for (const float side : {-1.0f, 1.0f}) {
            // Now and then a branch has been broken by snow.
            const float whole = dice.between(0.0f, 1.0f) < 0.12f ? 0.4f : 1.0f;
            const float length = tall * pine.spread * crown * dice.between(0.4f, 1.15f) * whole;
            const float slope = mix(-0.35f, 0.62f, std::pow(t, 0.6f)) + dice.between(-0.12f, 0.2f);
            drawBranch(mask, dice, {x, y, side, length, slope}, unit);
        }
        t += dice.between(0.004f, 0.0105f) / (0.45f + 0.8f * pine.tall);
    }
}

void drawBank(Mask& mask, float unit, int width) {
    for (int x = 0; x < width; ++x) {
        const float u = static_cast<float>(x) / unit;
        const float left = smoothStep(0.44f, 0.0f, u) * 0.085f;
        const float right = smoothStep(1.22f, 1.5f, u) * 0.060f;
        const float rough = 0.012f * fractalNoise(u * 9.0f, 0.3f, 5, 111);
        mask.fillBelow(x, unit * (1.012f - left - right - rough));
    }
}

void drawGrass(Mask& mask, float unit) {
    Dice dice(501);
    for (int i = 0; i < 1500; ++i) {
        const bool atLeft = i % 5 < 3;
        const float u = atLeft ? dice.between(0.0f, 0.47f) : dice.between(1.21f, 1.5f);
        const float inner =
            atLeft ? smoothStep(0.44f, 0.0f, u) * 0.085f : smoothStep(1.22f, 1.5f, u) * 0.060f;
        const float foot = 1.015f - inner;
        const float tall = dice.between(0.008f, 0.034f);
        const float bend = dice.between(-0.6f, 0.75f) * tall;
        const float midX = (u + bend * 0.3f) * unit;
        const float midY = (foot - tall * 0.6f) * unit;
        mask.stroke(u * unit, foot * unit, midX, midY, unit * 0.0011f, unit * 0.0008f);
        mask.stroke(midX, midY, (u + bend) * unit, (foot - tall) * unit, unit * 0.0008f,
                    unit * 0.0003f);
    }
}

} // namespace

void paintPines(Canvas& canvas) {
    Mask mask(canvas.width(), canvas.height());
    const auto unit = static_cast<float>(canvas.height());
    std::uint32_t seed = 301;
    for (const Pine& pine : pines)
        drawPine(mask, pine, seed++, unit);
    drawBank(mask, unit, canvas.width());
    drawGrass(mask, unit);
    for (int y = 0; y < canvas.height(); ++y)
        for (int x = 0; x < canvas.width(); ++x) {
            const float rise = 1.0f - static_cast<float>(y) / unit;
            const Vec3 dark = mix(Vec3{0.010f, 0.013f, 0.016f}, Vec3{0.020f, 0.026f, 0.034f}, rise);
            canvas.at(x, y) = mix(canvas.at(x, y), dark, mask.at(x, y));
        }
}

} // namespace veldara::sample
