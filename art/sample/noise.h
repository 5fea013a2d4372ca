// Smooth gradient noise in the plane, with its slope, and the small vectors that the scene is
// computed with. Everything is a pure function of its arguments, so that every run renders the
// same picture.
#pragma once

#include <cmath>
#include <cstdint>

namespace veldara::sample {

struct Vec3 {
    float x = 0;
    float y = 0;
    float z = 0;
};

inline Vec3 operator+(Vec3 a, Vec3 b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec3 operator-(Vec3 a, Vec3 b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec3 operator*(Vec3 a, Vec3 b) {
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}
inline Vec3 operator*(Vec3 a, float s) {
    return {a.x * s, a.y * s, a.z * s};
}
inline float dot(Vec3 a, Vec3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec3 normalised(Vec3 a) {
    return a * (1.0f / std::sqrt(dot(a, a)));
}
inline Vec3 mix(Vec3 a, Vec3 b, float t) {
    return a * (1.0f - t) + b * t;
}
inline float mix(float a, float b, float t) {
    return a + (b - a) * t;
}
inline float clamped(float v) {
    return v < 0.0f ? 0.0f : v > 1.0f ? 1.0f : v;
}

inline float smoothStep(float from, float to, float v) {
    const float t = clamped((v - from) / (to - from));
    return t * t * (3.0f - 2.0f * t);
}

// A well mixed number for a lattice point.
inline std::uint32_t latticeHash(int x, int z, std::uint32_t seed) {
    std::uint32_t h = static_cast<std::uint32_t>(x) * 0x8da6b343U +
                      static_cast<std::uint32_t>(z) * 0xd8163841U + seed * 0xcb1ab31fU;
    h ^= h >> 15U;
    h *= 0x2c1b3c6dU;
    h ^= h >> 12U;
    h *= 0x297a2d39U;
    h ^= h >> 15U;
    return h;
}

// 0 <= result < 1.
inline float latticeRandom(int x, int z, std::uint32_t seed) {
    return static_cast<float>(latticeHash(x, z, seed) >> 8U) * (1.0f / 16777216.0f);
}

struct NoiseValue {
    float value = 0; // about -1 to 1
    float dx = 0;    // slopes
    float dz = 0;
};

// Gradient noise with a quintic fade, one wave per unit.
NoiseValue gradientNoise(float x, float z, std::uint32_t seed);

// Octaves of the same, each half as high and twice as fine as the one before.
float fractalNoise(float x, float z, int octaves, std::uint32_t seed);

// Octaves with sharp crests, finer ones standing only where coarser ones stand high; 0 to 1.
float ridgedNoise(float x, float z, int octaves, std::uint32_t seed);

// Octaves that fade out on slopes, as weather smooths hillsides and leaves crests rough.
float erodedNoise(float x, float z, int octaves, std::uint32_t seed);

} // namespace veldara::sample
