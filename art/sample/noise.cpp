#include "noise.h"

#include <array>

namespace veldara::sample {

namespace {

struct Direction {
    float x = 0;
    float z = 0;
};

constexpr std::size_t directionCount = 256;

std::array<Direction, directionCount> makeDirections() {
    std::array<Direction, directionCount> directions;
    for (std::size_t i = 0; i < directionCount; ++i) {
        const double angle = 2.0 * 3.14159265358979 * static_cast<double>(i) / directionCount;
        directions[i] = {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
    }
    return directions;
}

Direction directionAt(int x, int z, std::uint32_t seed) {
    static const std::array<Direction, directionCount> directions = makeDirections();
    return directions[latticeHash(x, z, seed) % directionCount];
}

struct Point {
    float x = 0;
    float z = 0;
};

// Octaves are turned against each other, or their lattices would show.
Point nextOctave(Point p) {
    return {1.6f * p.x + 1.2f * p.z, 1.6f * p.z - 1.2f * p.x};
}

} // namespace

NoiseValue gradientNoise(float x, float z, std::uint32_t seed) {
    const float floorX = std::floor(x);
    const float floorZ = std::floor(z);
    const int cellX = static_cast<int>(floorX);
    const int cellZ = static_cast<int>(floorZ);
    const float fx = x - floorX;
    const float fz = z - floorZ;
    const float ux = fx * fx * fx * (fx * (fx * 6.0f - 15.0f) + 10.0f);
    const float uz = fz * fz * fz * (fz * (fz * 6.0f - 15.0f) + 10.0f);
    const float slopeX = 30.0f * fx * fx * (fx * (fx - 2.0f) + 1.0f);
    const float slopeZ = 30.0f * fz * fz * (fz * (fz - 2.0f) + 1.0f);
    const Direction a = directionAt(cellX, cellZ, seed);
    const Direction b = directionAt(cellX + 1, cellZ, seed);
    const Direction c = directionAt(cellX, cellZ + 1, seed);
    const Direction d = directionAt(cellX + 1, cellZ + 1, seed);
    const float va = a.x * fx + a.z * fz;
    const float vb = b.x * (fx - 1.0f) + b.z * fz;
    const float vc = c.x * fx + c.z * (fz - 1.0f);
    const float vd = d.x * (fx - 1.0f) + d.z * (fz - 1.0f);
    const float cross = va - vb - vc + vd;
    constexpr float toUnit = 1.41421356f;
    NoiseValue n;
    n.value = toUnit * (va + ux * (vb - va) + uz * (vc - va) + ux * uz * cross);
    n.dx = toUnit * (a.x + ux * (b.x - a.x) + uz * (c.x - a.x) + ux * uz * (a.x - b.x - c.x + d.x) +
                     slopeX * (vb - va + uz * cross));
    n.dz = toUnit * (a.z + ux * (b.z - a.z) + uz * (c.z - a.z) + ux * uz * (a.z - b.z - c.z + d.z) +
                     slopeZ * (vc - va + ux * cross));
    return n;
}

float fractalNoise(float x, float z, int octaves, std::uint32_t seed) {
    Point p{x, z};
    float sum = 0;
    float height = 0.5f;
    for (int i = 0; i < octaves; ++i) {
        sum += height * gradientNoise(p.x, p.z, seed).value;
        height *= 0.5f;
        p = nextOctave(p);
    }
    return sum;
}

float ridgedNoise(float x, float z, int octaves, std::uint32_t seed) {
    Point p{x, z};
    float sum = 0;
    float height = 0.5f;
    float weight = 1;
    for (int i = 0; i < octaves; ++i) {
        float crest = 1.0f - std::fabs(gradientNoise(p.x, p.z, seed).value);
        crest *= crest * weight;
        weight = clamped(crest * 1.9f);
        sum += height * crest;
        height *= 0.5f;
        p = nextOctave(p);
    }
    return sum;
}

float erodedNoise(float x, float z, int octaves, std::uint32_t seed) {
    Point p{x, z};
    float sum = 0;
    float height = 0.5f;
    float dx = 0;
    float dz = 0;
    for (int i = 0; i < octaves; ++i) {
        const NoiseValue n = gradientNoise(p.x, p.z, seed);
        dx += n.dx * 0.6f;
        dz += n.dz * 0.6f;
        sum += height * n.value / (1.0f + dx * dx + dz * dz);
        height *= 0.5f;
        p = nextOctave(p);
    }
    return sum;
}

} // namespace veldara::sample
