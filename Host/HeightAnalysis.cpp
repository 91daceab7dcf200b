// SPDX-License-Identifier: MIT
#include "Host/HeightAnalysis.h"

#include <algorithm>
#include <cmath>

namespace HeightAnalysis {

namespace {

constexpr size_t FewestPoints = 16;
constexpr int Refinements = 4;
constexpr double UsualDeviation = 1.4826; ///< standard deviation of a normal distribution whose median one is 1
constexpr double Rejection = 3.0; ///< standard deviations
constexpr double DegreesPerRadian = 57.29577951308232;
constexpr double Finest = 0.002; ///< mm; no device tells closer heights apart

struct Point
{
    double x;
    double z;
};
using Points = std::vector<Point>;

Points pointsOf(const std::vector<float> &profile, double firstX, double pitchX)
{
    Points points;
    for (size_t i = 0; i < profile.size(); ++i) {
        if (std::isfinite(profile[i]))
            points.push_back({firstX + double(i) * pitchX, double(profile[i])});
    }
    return points;
}

/// Not of nothing.
template <class Number>
Number atShare(std::vector<Number> &numbers, double share)
{
    const auto place = numbers.begin() + std::ptrdiff_t(std::lround(share * double(numbers.size() - 1)));
    std::nth_element(numbers.begin(), place, numbers.end());
    return *place;
}

/// The middle one of the slopes between points that lie some way apart: steps and strays are few among them.
double middleSlope(const Points &points)
{
    const size_t way = std::max<size_t>(1, points.size() / 10);
    std::vector<double> slopes;
    for (size_t i = way; i < points.size(); ++i)
        slopes.push_back((points[i].z - points[i - way].z) / (points[i].x - points[i - way].x));
    return atShare(slopes, 0.5);
}

/// The middle of the narrowest span that holds a third of the numbers.
double densest(std::vector<double> numbers)
{
    std::sort(numbers.begin(), numbers.end());
    const size_t reach = numbers.size() / 3;
    size_t best = 0;
    for (size_t i = 1; i + reach < numbers.size(); ++i) {
        if (numbers[i + reach] - numbers[i] < numbers[best + reach] - numbers[best])
            best = i;
    }
    return numbers[best + reach / 2];
}

std::vector<double> residues(const Points &points, double slope, double level)
{
    std::vector<double> result;
    for (const Point &point : points)
        result.push_back(point.z - level - slope * point.x);
    return result;
}

Points pointsNear(const Points &points, double slope, double level)
{
    std::vector<double> ways = residues(points, slope, level);
    std::transform(ways.begin(), ways.end(), ways.begin(), [](double way) { return std::abs(way); });
    std::vector<double> ordered = ways;
    const double reach = std::max(Finest, Rejection * UsualDeviation * atShare(ordered, 1.0 / 6.0));
    Points near;
    for (size_t i = 0; i < points.size(); ++i) {
        if (ways[i] <= reach)
            near.push_back(points[i]);
    }
    return near;
}

Point centreOf(const Points &points)
{
    Point sum{0.0, 0.0};
    for (const Point &point : points)
        sum = {sum.x + point.x, sum.z + point.z};
    return {sum.x / double(points.size()), sum.z / double(points.size())};
}

/// The line with the least sum of squares.
Line leastSquares(const Points &points)
{
    const Point centre = centreOf(points);
    double moment = 0.0, square = 0.0;
    for (const Point &point : points) {
        moment += (point.x - centre.x) * (point.z - centre.z);
        square += (point.x - centre.x) * (point.x - centre.x);
    }
    return {square > 0.0 ? moment / square : 0.0, centre.z};
}

} // namespace

std::optional<Range> usualRange(const HeightFrame &frame, double leftOut)
{
    std::vector<float> heights;
    const auto end = frame.heights.begin() + std::ptrdiff_t(frame.lines) * frame.width;
    std::copy_if(frame.heights.begin(), end, std::back_inserter(heights), [](float z) { return std::isfinite(z); });
    if (heights.empty())
        return {};
    return Range{double(atShare(heights, leftOut)), double(atShare(heights, 1.0 - leftOut))};
}

std::optional<Line> mainLine(const std::vector<float> &profile, double firstX, double pitchX)
{
    const Points points = pointsOf(profile, firstX, pitchX);
    if (points.size() < FewestPoints || pitchX <= 0.0)
        return {};
    Line line{middleSlope(points), 0.0};
    double level = densest(residues(points, line.slope, 0.0));
    for (int i = 0; i < Refinements; ++i) {
        const Points near = pointsNear(points, line.slope, level);
        line = leastSquares(near);
        level = line.meanHeight - line.slope * centreOf(near).x;
    }
    return line;
}

double levellingTilt(double slope, const HeightCorrection &inForce)
{
    const double unmirrored = inForce.mirrored ? -slope : slope;
    return std::atan((unmirrored / inForce.scale + inForce.sine) / inForce.cosine) * DegreesPerRadian;
}

double trueScale(double meanHeight, double trueHeight, const HeightCorrection &inForce)
{
    return inForce.scale * trueHeight / (meanHeight - inForce.offset);
}

} // namespace HeightAnalysis
