#include "landscape.h"

#include <algorithm>
#include <array>

namespace veldara::sample {

namespace {

struct Peak {
    float x;
    float z;
    float height;
    float radius;
};

constexpr std::array<Peak, 8> peaks{{
    {0.95f, 9.6f, 3.0f, 4.2f},
    {-0.35f, 10.6f, 2.25f, 2.9f},
    {-3.6f, 8.6f, 1.95f, 2.9f},
    {4.4f, 9.2f, 2.05f, 3.1f},
    {-6.4f, 10.0f, 2.5f, 3.2f},
    {2.7f, 14.0f, 2.5f, 4.0f},
    {-2.0f, 15.5f, 2.7f, 4.5f},
    {7.4f, 11.0f, 2.4f, 3.4f},
}};

// How far inland a point lies; negative in the lake.
float inland(float x, float z) {
    const float wander = 0.42f * fractalNoise(x * 0.75f, z * 0.75f, 5, 11);
    const float middle = 0.25f * std::sin(z * 0.9f + 0.4f);
    const float half = 1.05f + 0.42f * z - 0.055f * z * z;
    const float sides = std::fabs(x - middle) - half;
    const float end = z - 4.3f;
    return std::max(sides, end) + wander;
}

float mountainHeight(float x, float z) {
    const float warpX = x + 0.55f * fractalNoise(x * 0.55f + 3.1f, z * 0.55f, 4, 21);
    const float warpZ = z + 0.55f * fractalNoise(x * 0.55f, z * 0.55f + 7.7f, 4, 22);
    float top = 0;
    for (const Peak& peak : peaks) {
        const float dx = warpX - peak.x;
        const float dz = warpZ - peak.z;
        const float away = std::sqrt(dx * dx + dz * dz) / peak.radius;
        if (away < 1.0f)
            top = std::max(top, peak.height * std::pow(1.0f - away, 1.12f));
    }
    return top;
}

constexpr float treeCell = 0.0135f;

// The tree of one cell: a cone, where it stands.
float treeOfCell(int cellX, int cellZ, float x, float z) {
    const float jitterX = latticeRandom(cellX, cellZ, 31);
    const float jitterZ = latticeRandom(cellX, cellZ, 32);
    const float centreX = (static_cast<float>(cellX) + jitterX) * treeCell;
    const float centreZ = (static_cast<float>(cellZ) + jitterZ) * treeCell;
    const float tall = 0.016f + 0.022f * latticeRandom(cellX, cellZ, 33);
    const float dx = x - centreX;
    const float dz = z - centreZ;
    const float away = std::sqrt(dx * dx + dz * dz) / (tall * 0.26f);
    return away < 1.0f ? tall * (1.0f - away) : 0.0f;
}

float treeTop(float x, float z) {
    const int cellX = static_cast<int>(std::floor(x / treeCell));
    const int cellZ = static_cast<int>(std::floor(z / treeCell));
    float top = 0;
    for (int dz = -1; dz <= 1; ++dz)
        for (int dx = -1; dx <= 1; ++dx)
            top = std::max(top, treeOfCell(cellX + dx, cellZ + dz, x, z));
    return top;
}

// Trees thin out towards the tree line and on the shore.
float forestCover(float x, float z, float ground) {
    if (ground < 0.004f || ground > 1.05f)
        return 0;
    const float patches = fractalNoise(x * 2.3f, z * 2.3f, 4, 41);
    const float line = 0.62f + 0.55f * patches;
    return smoothStep(line + 0.16f, line - 0.16f, ground) * smoothStep(0.003f, 0.012f, ground);
}

constexpr int shadowColumns = 900;
constexpr int shadowRows = 900;
constexpr float shadowLeft = -9.0f;
constexpr float shadowNear = 0.0f;
constexpr float shadowCell = 0.02f;

float shadowHeightAt(float x, float z) {
    const Vec3 sun = sunDirection();
    const float across = std::sqrt(sun.x * sun.x + sun.z * sun.z);
    const float rise = sun.y / across;
    float highest = -1;
    float away = 0.04f;
    while (away < 9.0f) {
        const float h = groundHeight(x + sun.x / across * away, z + sun.z / across * away, 3);
        highest = std::max(highest, h - rise * away);
        away *= 1.09f;
    }
    return highest;
}

struct Ground {
    Vec3 normal;
    float flatness = 0;
};

Ground groundAt(Vec3 point, float distance) {
    const float reach = std::max(0.0015f, distance * 0.00033f);
    constexpr int detail = 9;
    const float h = groundHeight(point.x, point.z, detail);
    const float hx = groundHeight(point.x + reach, point.z, detail);
    const float hz = groundHeight(point.x, point.z + reach, detail);
    const Vec3 normal = normalised({(h - hx) / reach, 1.0f, (h - hz) / reach});
    return {normal, normal.y};
}

Vec3 bareColour(Vec3 point, const Ground& ground) {
    const float strata = fractalNoise(point.x * 3.0f, point.y * 22.0f + point.z * 2.0f, 4, 51);
    const float grain = fractalNoise(point.x * 60.0f, point.z * 60.0f, 4, 52);
    Vec3 rock = mix({0.115f, 0.105f, 0.105f}, {0.21f, 0.185f, 0.165f}, clamped(0.5f + strata));
    const float cracks = ridgedNoise(point.x * 45.0f, point.z * 45.0f + point.y * 30.0f, 4, 54);
    rock = rock * ((1.0f + 0.7f * grain) * (0.55f + 0.8f * cracks));
    const float patches = fractalNoise(point.x * 5.0f, point.z * 5.0f, 4, 53);
    const Vec3 meadow =
        mix({0.075f, 0.085f, 0.035f}, {0.13f, 0.11f, 0.05f}, clamped(0.5f + patches));
    const float green = smoothStep(0.62f, 0.8f, ground.flatness) *
                        smoothStep(1.35f, 0.85f, point.y + 0.3f * patches);
    const float snowLine = 1.18f + 0.45f * patches + 0.12f * grain;
    const float snow = smoothStep(snowLine - 0.12f, snowLine + 0.22f, point.y) *
                       smoothStep(0.36f, 0.60f, ground.flatness + 0.10f * grain);
    return mix(mix(rock, meadow, green), {0.78f, 0.80f, 0.84f}, snow);
}

} // namespace

float groundHeight(float x, float z, int detail) {
    const float shore = inland(x, z);
    if (shore < 0.0f)
        return -0.03f + std::max(-0.03f, shore * 0.2f);
    const float mountain = mountainHeight(x, z);
    const float lift = smoothStep(0.0f, 1.6f, shore);
    const float crests = ridgedNoise(x * 0.62f, z * 0.62f, detail, 61);
    const float hills = erodedNoise(x * 0.9f + 5.0f, z * 0.9f, detail, 62);
    const float rough = 0.12f + 0.50f * std::min(mountain, 1.55f);
    float h = mountain * 0.70f + rough * (crests * 1.15f - 0.12f) + 0.16f * hills;
    h = h * lift + 0.05f * smoothStep(0.0f, 0.25f, shore);
    return std::max(h, -0.01f + 0.05f * std::min(shore, 0.5f));
}

Surface surfaceAt(float x, float z) {
    const float ground = groundHeight(x, z, 6);
    const float cover = forestCover(x, z, ground);
    if (cover <= 0.02f)
        return {ground, 0};
    const int cellX = static_cast<int>(std::floor(x / treeCell * 0.5f));
    const int cellZ = static_cast<int>(std::floor(z / treeCell * 0.5f));
    if (latticeRandom(cellX, cellZ, 34) > cover * 1.15f)
        return {ground, 0};
    const float top = treeTop(x, z);
    return {ground + top, top / 0.038f};
}

Vec3 sunDirection() {
    return normalised({-0.93f, 0.235f, -0.22f});
}

SunShadow::SunShadow() {
    shadowHeights_.resize(static_cast<std::size_t>(shadowColumns) * shadowRows);
    for (int row = 0; row < shadowRows; ++row)
        for (int column = 0; column < shadowColumns; ++column)
            shadowHeights_[static_cast<std::size_t>(row) * shadowColumns +
                           static_cast<std::size_t>(column)] =
                shadowHeightAt(shadowLeft + static_cast<float>(column) * shadowCell,
                               shadowNear + static_cast<float>(row) * shadowCell);
}

float SunShadow::lightAt(Vec3 point) const {
    const float column =
        std::clamp((point.x - shadowLeft) / shadowCell, 0.0f, shadowColumns - 2.0f);
    const float row = std::clamp((point.z - shadowNear) / shadowCell, 0.0f, shadowRows - 2.0f);
    const auto c = static_cast<std::size_t>(column);
    const auto r = static_cast<std::size_t>(row);
    const float fc = column - static_cast<float>(c);
    const float fr = row - static_cast<float>(r);
    const float* p = shadowHeights_.data() + r * shadowColumns + c;
    const float limit =
        mix(mix(p[0], p[1], fc), mix(p[shadowColumns], p[shadowColumns + 1], fc), fr);
    return smoothStep(-0.035f, 0.05f, point.y - limit);
}

Vec3 landColour(Vec3 point, float tree, float distance, const SunShadow& shadow) {
    const Vec3 sun = sunDirection();
    const Vec3 sunLight{4.1f, 1.42f, 0.60f};
    const Vec3 skyLight{0.34f, 0.44f, 0.66f};
    const Ground ground = groundAt(point, distance);
    const float lit = shadow.lightAt(point);
    const float facing = clamped(dot(ground.normal, sun));
    if (tree > 0.0f) {
        const float leaf =
            fractalNoise(point.x * 420.0f, point.y * 420.0f + point.z * 300.0f, 2, 71);
        const float kind = latticeRandom(static_cast<int>(std::floor(point.x * 70.0f)),
                                         static_cast<int>(std::floor(point.z * 70.0f)), 72);
        Vec3 green = mix({0.012f, 0.026f, 0.020f}, {0.035f, 0.045f, 0.018f}, kind);
        green = green * (0.55f + 0.9f * clamped(tree)) * (1.0f + 0.8f * leaf);
        const float side = 0.35f + 0.65f * facing;
        return green * (skyLight * 1.1f + sunLight * (lit * side * 0.8f));
    }
    const Vec3 colour = bareColour(point, ground);
    const float open = 0.55f + 0.45f * ground.normal.y;
    const float bounce = clamped(0.5f + 0.5f * (ground.normal.x * 0.6f));
    const Vec3 ambient = skyLight * (open * 0.8f) + Vec3{0.16f, 0.10f, 0.09f} * bounce;
    return colour * (ambient + sunLight * (lit * facing));
}

} // namespace veldara::sample
