#include "view.h"

#include "sky.h"

#include <vector>

namespace veldara::sample {

namespace {

constexpr float cameraHeight = 0.016f; // on a low rock
constexpr float horizon = 0.575f;      // of the picture's height
constexpr float widest = 0.60f;        // tangent of half the angle of view
constexpr float nearest = 0.30f;
constexpr float farthest = 19.0f;
constexpr float stride = 1.00065f;

struct Camera {
    int width;
    int height;

    float tangentX(float x) const {
        const auto half = static_cast<float>(width) * 0.5f;
        return (x - half) / half * widest;
    }
    float tangentY(float y) const {
        const auto half = static_cast<float>(width) * 0.5f;
        return (horizon * static_cast<float>(height) - y) / half * widest;
    }
};

Vec3 landThroughAir(Vec3 point, float tree, Vec3 ray, const SunShadow& shadow) {
    return hazed(landColour(point, tree, point.z, shadow), point, point.z, ray);
}

// What one column of the picture shows, worked out from the horizon upwards: walks away from the
// eye and paints what rises above everything nearer. Pixels that meet the lake are left for later
// and counted. With the eye as far under the water as it is above, this is what the lake mirrors.
int paintColumn(Canvas& canvas, const Camera& camera, int x, float eyeHeight,
                const SunShadow& shadow) {
    const bool mirrored = eyeHeight < 0.0f;
    const float tx = camera.tangentX(static_cast<float>(x) + 0.5f);
    int y = canvas.height() - 1;
    int firstLand = canvas.height();
    float ty = camera.tangentY(static_cast<float>(y) + 0.5f);
    float lastHeight = 0;
    float lastZ = nearest;
    float z = nearest;
    while (z < farthest && y >= 0) {
        const Surface surface = surfaceAt(tx * z, z);
        const bool lake = surface.height <= 0.0f;
        const float top = std::max(surface.height, 0.0f);
        while (y >= 0 && !(lake && mirrored) && eyeHeight + ty * z < top) {
            if (lake) {
                firstLand = y;
            } else {
                const float before = eyeHeight + ty * lastZ - lastHeight;
                const float after = top - eyeHeight - ty * z;
                const float hitZ = mix(lastZ, z, clamped(before / std::max(before + after, 1e-6f)));
                const Vec3 point{tx * hitZ, std::max(0.0f, eyeHeight + ty * hitZ), hitZ};
                canvas.at(x, y) = landThroughAir(point, surface.tree, {tx, ty, 1.0f}, shadow);
            }
            --y;
            ty = camera.tangentY(static_cast<float>(y) + 0.5f);
        }
        lastHeight = top;
        lastZ = z;
        z *= stride;
    }
    for (; y >= 0; --y) {
        const Vec3 ray{tx, camera.tangentY(static_cast<float>(y) + 0.5f), 1.0f};
        canvas.at(x, y) = skyColour(ray, !mirrored);
    }
    return firstLand;
}

// The slope of the water's ripples at a place; they are calm far out and livelier at the shore.
NoiseValue ripple(float x, float z, float distance) {
    NoiseValue sum;
    float frequency = 22.0f;
    float strength = 1.0f;
    for (std::uint32_t i = 0; i < 5; ++i) {
        const NoiseValue n = gradientNoise(x * frequency, z * frequency * 1.6f, 121 + i);
        sum.dx += n.dx * strength;
        sum.dz += n.dz * strength;
        frequency *= 2.1f;
        strength *= 0.62f;
        // Waves finer than a pixel would only be noise.
        if (distance * 0.0011f * frequency > 1.0f)
            break;
    }
    const float breeze = smoothStep(-0.15f, 0.45f, fractalNoise(x * 0.9f, z * 1.7f, 3, 131));
    const float lively = 0.25f + 1.15f * breeze;
    return {0, sum.dx * lively, sum.dz * lively};
}

Vec3 waterColour(const Canvas& mirror, const Camera& camera, int x, int y) {
    const float tx = camera.tangentX(static_cast<float>(x) + 0.5f);
    const float ty = camera.tangentY(static_cast<float>(y) + 0.5f);
    const float z = cameraHeight / std::max(-ty, 1e-5f);
    const float wx = tx * z;
    const NoiseValue n = ripple(wx, z, z);
    const float unit = static_cast<float>(camera.height);
    const float down = -ty;
    const float shakeX = n.dx * 0.0022f * unit;
    const float shakeY = n.dz * 0.0075f * unit * clamped(0.25f + down * 3.0f);
    const float mirrorY = 2.0f * horizon * unit - (static_cast<float>(y) + 0.5f);
    Vec3 seen{};
    constexpr int taps = 5;
    for (int tap = 0; tap < taps; ++tap) {
        const float spread = (static_cast<float>(tap) / (taps - 1) - 0.5f) * 0.010f * unit *
                             clamped(0.1f + down * 2.2f);
        const float sampleY = std::min(mirrorY - std::fabs(shakeY) + spread, horizon * unit - 1.0f);
        seen = seen + mirror.between(static_cast<float>(x) + shakeX, sampleY);
    }
    seen = seen * (1.0f / taps);
    const float facing = down / std::sqrt(1.0f + tx * tx + ty * ty) + 0.010f * n.dz;
    const float fresnel = 0.03f + 0.97f * std::pow(clamped(1.0f - facing), 5.0f);
    const Vec3 deep{0.012f, 0.040f, 0.052f};
    Vec3 colour = mix(deep, seen * Vec3{0.90f, 0.93f, 0.96f}, fresnel);
    const Vec3 ray{tx, 0.02f, 1.0f};
    return hazed(colour, {wx, 0.0f, z}, std::min(z, 5.5f), ray);
}

} // namespace

Canvas paintView(int width, int height, const SunShadow& shadow) {
    const Camera camera{width, height};
    const int horizonRow = static_cast<int>(horizon * static_cast<float>(height));
    Canvas view(width, height);
    Canvas mirror(width, horizonRow + 1);
    std::vector<int> firstWaterRow(static_cast<std::size_t>(width));
    forEachParallel(width, [&](int x) {
        firstWaterRow[static_cast<std::size_t>(x)] =
            paintColumn(view, camera, x, cameraHeight, shadow);
        paintColumn(mirror, camera, x, -cameraHeight, shadow);
    });
    forEachParallel(width, [&](int x) {
        for (int y = firstWaterRow[static_cast<std::size_t>(x)]; y < height; ++y)
            view.at(x, y) = waterColour(mirror, camera, x, y);
    });
    return view;
}

} // namespace veldara::sample
