// SPDX-License-Identifier: MIT
#include "Simulation/StructuredLightScene.h"

#include <algorithm>
#include <cmath>

namespace StructuredLightScene {

namespace {

struct Block
{
    double left, back, right, front;
    double lowest, highest; ///< its left and right end
    int steps; ///< 1: flat on top; 0: a ramp
    float reflectance;

    bool covers(double x, double y) const { return x >= left && x < right && y >= back && y < front; }
    double height(double x) const
    {
        const double along = (x - left) / (right - left);
        const double level = steps == 0 ? along : std::floor(along * steps) / std::max(1, steps - 1);
        return lowest + (highest - lowest) * level;
    }
};

struct Disc
{
    double x, y, radius;
    double height;
    bool isDome;
    float reflectance;
    float gloss;
};

constexpr Block Blocks[] = {
    {-50, -36, -18, -14, 12, 12, 1, 0.85f},
    {12, -38, 52, -20, 4, 16, 4, 0.70f},
    {22, 20, 54, 36, 1, 13, 0, 0.75f},
};

constexpr Disc Discs[] = {
    {-34, 16, 15, 14, true, 0.55f, 0.9f}, // dome
    {0, 22, 9, 18, false, 0.075f, 0.0f}, // dark
    {-2, -20, 3, 28, false, 0.70f, 0.0f}, // post
    {32, 0, 8, 2, false, 0.35f, 1.0f}, // coin
    {-8, 39, 5, -10, false, 0.30f, 0.0f}, // hole
};

double heightOf(const Disc &disc, double distance)
{
    if (!disc.isDome)
        return disc.height;
    const double share = distance / disc.radius;
    return disc.height * std::sqrt(std::max(0.0, 1.0 - share * share));
}

/// Two tones in squares, so that images have something to show beside the objects.
float plateReflectance(double x, double y)
{
    const bool isDark = (int(std::floor(x / 16.0)) + int(std::floor(y / 16.0))) % 2 != 0;
    return isDark ? 0.42f : 0.55f;
}

} // namespace

Surface at(double x, double y)
{
    for (const Disc &disc : Discs) {
        const double distance = std::hypot(x - disc.x, y - disc.y);
        if (distance < disc.radius)
            return {float(heightOf(disc, distance)), disc.reflectance, disc.gloss};
    }
    for (const Block &block : Blocks) {
        if (block.covers(x, y))
            return {float(block.height(x)), block.reflectance, 0.0f};
    }
    return {0.0f, plateReflectance(x, y), 0.05f};
}

} // namespace StructuredLightScene
