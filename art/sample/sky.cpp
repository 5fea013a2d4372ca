#include "sky.h"

#include "landscape.h"

#include <algorithm>

namespace veldara::sample {

namespace {

Vec3 clearSky(Vec3 d) {
    const float up = std::max(d.y, 0.0f);
    const Vec3 zenith{0.030f, 0.085f, 0.235f};
    const Vec3 blue{0.105f, 0.235f, 0.445f};
    const Vec3 rose{0.70f, 0.400f, 0.390f};
    const Vec3 shadowBand{0.33f, 0.335f, 0.46f};
    Vec3 colour = mix(rose, blue, smoothStep(0.05f, 0.34f, up));
    colour = mix(colour, zenith, smoothStep(0.22f, 0.72f, up));
    colour = mix(shadowBand, colour, smoothStep(-0.03f, 0.11f, up));
    const Vec3 sun = sunDirection();
    const float towards = clamped(0.5f + 0.5f * (d.x * sun.x + d.z * sun.z));
    const float glow = std::pow(towards, 2.2f) * std::exp(-up * 4.2f);
    return colour + Vec3{1.15f, 0.52f, 0.20f} * glow;
}

Vec3 withClouds(Vec3 colour, Vec3 d) {
    if (d.y < 0.02f)
        return colour;
    // Clouds lie on a flat layer, so that they crowd towards the horizon.
    const float x = d.x / (d.y + 0.06f);
    const float z = d.z / (d.y + 0.06f);
    const float bend = fractalNoise(x * 0.5f, z * 0.8f, 4, 81);
    const float sweep = fractalNoise(x * 0.42f + 1.3f * bend + 2.6f, z * 1.5f + 0.9f * bend, 7, 82);
    const float wisps = fractalNoise(x * 1.3f + 2.0f * bend, z * 5.5f + 1.5f * sweep, 6, 83);
    const float field = fractalNoise(x * 0.22f + 9.0f, z * 0.35f, 3, 84);
    float cover = smoothStep(0.02f, 0.62f, sweep + 0.55f * wisps + 0.55f * field);
    cover *= smoothStep(0.02f, 0.12f, d.y) * 0.85f;
    const float low = std::exp(-d.y * 2.6f);
    const float left = clamped(0.62f - 0.55f * d.x);
    const Vec3 lit =
        mix(Vec3{0.62f, 0.42f, 0.50f}, Vec3{1.65f, 0.80f, 0.55f}, low * (0.35f + left));
    const Vec3 shade{0.24f, 0.25f, 0.38f};
    const float thick = smoothStep(0.35f, 1.0f, cover + 0.35f * wisps);
    return mix(colour, mix(lit, shade, 0.45f * thick), cover);
}

float starLight(Vec3 d) {
    if (d.y < 0.25f)
        return 0;
    const float scale = 95.0f;
    const float x = d.x / d.z * scale;
    const float y = d.y / d.z * scale;
    const int cellX = static_cast<int>(std::floor(x));
    const int cellY = static_cast<int>(std::floor(y));
    const float chance = latticeRandom(cellX, cellY, 91);
    if (chance > 0.05f)
        return 0;
    const float starX = static_cast<float>(cellX) + 0.2f + 0.6f * latticeRandom(cellX, cellY, 92);
    const float starY = static_cast<float>(cellY) + 0.2f + 0.6f * latticeRandom(cellX, cellY, 93);
    const float away = (x - starX) * (x - starX) + (y - starY) * (y - starY);
    const float magnitude = latticeRandom(cellX, cellY, 94);
    const float size = 0.0006f + 0.0022f * magnitude * magnitude;
    return std::exp(-away / size) * (0.15f + 0.85f * magnitude * magnitude) *
           smoothStep(0.25f, 0.5f, d.y);
}

} // namespace

Vec3 skyColour(Vec3 direction, bool withStars) {
    const Vec3 d = normalised(direction);
    Vec3 colour = clearSky(d);
    if (withStars)
        colour = colour + Vec3{0.85f, 0.9f, 1.0f} * (0.55f * starLight(d));
    return withClouds(colour, d);
}

Vec3 hazed(Vec3 colour, Vec3 point, float distance, Vec3 direction) {
    Vec3 level = normalised(direction);
    level.y = 0.05f;
    const Vec3 air = mix(clearSky(level), Vec3{0.30f, 0.36f, 0.52f}, 0.45f);
    const float height = std::max(point.y, 0.0f);
    const float through = distance * 0.034f * std::exp(-height * 0.42f);
    colour = mix(colour, air, 1.0f - std::exp(-through));
    // Mist lies on the far end of the lake and in the valley mouths, torn by the morning air.
    const float torn = fractalNoise(point.x * 1.5f + 4.0f, point.z * 1.5f + point.y * 5.0f, 5, 95);
    const float lake = smoothStep(2.2f, 4.6f, distance) * (0.62f + 0.95f * torn);
    const float veil = 0.88f * std::max(lake, 0.0f) * std::exp(-height / 0.085f);
    const Vec3 mist = mix(air, Vec3{0.80f, 0.66f, 0.66f}, 0.5f);
    return mix(colour, mist, clamped(veil));
}

} // namespace veldara::sample
