// Filters and the reduction of colours, against plain models.
#include "tests/imaging/dib_picture.h"
#include "tests/support/census.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <set>

using namespace support;

namespace
{

class DibFilterTest : public CensusTest
{
};

constexpr std::array<int, 2> kSizes[] = {{1, 1}, {2, 3}, {1, 9}, {17, 1}, {21, 12}};

using Model = std::function<double(const Picture&, int x, int y, size_t channel)>;

// Compares the operation with a model that gives results before rounding and cutting off.
void ExpectFilter(const std::function<int(CDib&)>& operation, const Model& model)
{
    for (const WORD bitCount : kDepths)
        for (const auto& [width, height] : kSizes) {
            const Picture picture = RandomPicture(bitCount, width, height);
            CDib dib;
            SetPicture(dib, picture);
            ASSERT_TRUE(operation(dib));
            const Picture result = GetPicture(dib);
            ASSERT_EQ(result.bitCount, bitCount > 8 ? bitCount : 24);
            ASSERT_EQ(result.pixels.size(), picture.pixels.size());
            const double tolerance = bitCount == 16 ? 255.0 / 31 / 2 + 0.52 : 0.52;
            double worst = 0;
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) {
                    const Picture::Color color = result.ColorAt(x, y);
                    for (size_t channel = 0; channel < 3; ++channel)
                        worst =
                            std::max(worst, std::abs(color[channel] -
                                                     std::clamp(model(picture, x, y, channel), 0.0, 255.0)));
                    EXPECT_EQ(color[3], picture.ColorAt(x, y)[3]);
                }
            EXPECT_LE(worst, tolerance) << bitCount << " bits, " << width << " x " << height;
            EXPECT_TRUE(IsInStep(dib));
        }
}

double Weighted(const Picture& picture, int x, int y, size_t channel, const std::array<int, 9>& weights)
{
    double sum = 0;
    for (int i = 0; i < 9; ++i)
        sum += weights[static_cast<size_t>(i)] * picture.ColorNear(x + i % 3 - 1, y + i / 3 - 1)[channel];
    return sum;
}

} // namespace

TEST_F(DibFilterTest, LinearFiltersWeighTheNeighbours)
{
    const struct {
        int (CDib::*operation)(int, int);
        int mode;
        std::array<int, 9> weights;
        int divisor;
    } cases[] = {
        {&CDib::HighPass, CDib::HighPassLaplace8, {-1, -1, -1, -1, 9, -1, -1, -1, -1}, 1},
        {&CDib::HighPass, CDib::HighPassLaplace4, {0, -1, 0, -1, 5, -1, 0, -1, 0}, 1},
        {&CDib::HighPass, CDib::HighPassMixed, {1, -2, 1, -2, 5, -2, 1, -2, 1}, 1},
        {&CDib::LowPass, CDib::LowPassBox, {1, 1, 1, 1, 1, 1, 1, 1, 1}, 9},
        {&CDib::LowPass, CDib::LowPassWeighted, {1, 1, 1, 1, 2, 1, 1, 1, 1}, 10},
        {&CDib::LowPass, CDib::LowPassGauss, {1, 2, 1, 2, 4, 2, 1, 2, 1}, 16},
    };
    for (const auto& row : cases)
        for (const int strength : {0, 37, 100}) {
            SCOPED_TRACE(testing::Message() << &row - cases << " at " << strength);
            ExpectFilter([&](CDib& dib) { return (dib.*row.operation)(strength, row.mode); },
                         [&](const Picture& picture, int x, int y, size_t channel) {
                             const double filtered =
                                 Weighted(picture, x, y, channel, row.weights) / row.divisor;
                             const double old = picture.ColorAt(x, y)[channel];
                             return old + (filtered - old) * strength / 100;
                         });
        }
}

TEST_F(DibFilterTest, EdgesAddTheGradient)
{
    for (const int mode : {CDib::EdgeVertical, CDib::EdgeHorizontal, CDib::EdgeBoth})
        for (const int strength : {0, 60, 100}) {
            SCOPED_TRACE(testing::Message() << mode << " at " << strength);
            ExpectFilter(
                [&](CDib& dib) { return dib.EdgeEnhance(strength, mode); },
                [&](const Picture& picture, int x, int y, size_t channel) {
                    const double across = Weighted(picture, x, y, channel, {-1, 0, 1, -2, 0, 2, -1, 0, 1});
                    const double down = Weighted(picture, x, y, channel, {-1, -2, -1, 0, 0, 0, 1, 2, 1});
                    const double amount = (mode != CDib::EdgeHorizontal ? std::abs(across) : 0) +
                                          (mode != CDib::EdgeVertical ? std::abs(down) : 0);
                    return picture.ColorAt(x, y)[channel] + amount / 4 * strength / 100;
                });
        }
}

TEST_F(DibFilterTest, MedianIsTheMiddleOfTheSquare)
{
    for (const int size : {3, 5, 31}) {
        SCOPED_TRACE(size);
        ExpectFilter([&](CDib& dib) { return dib.MedianFilter(size); },
                     [&](const Picture& picture, int x, int y, size_t channel) {
                         std::vector<int> values;
                         for (int dy = -size / 2; dy <= size / 2; ++dy)
                             for (int dx = -size / 2; dx <= size / 2; ++dx)
                                 values.push_back(picture.ColorNear(x + dx, y + dy)[channel]);
                         std::ranges::sort(values);
                         return values[values.size() / 2];
                     });
    }
}

TEST_F(DibFilterTest, QuantizingFewColorsKeepsThem)
{
    for (const WORD bitCount : kDepths)
        for (const int colors : {16, 256}) {
            // As many colours as are asked for, in every direction and at every distance.
            Picture picture = RandomPicture(bitCount, colors / 2, 6);
            if (bitCount > 8)
                for (size_t i = 0; i < picture.pixels.size(); ++i)
                    picture.pixels[i] = picture.pixels[i % static_cast<size_t>(colors)];
            else if (bitCount == 8 && colors == 16)
                for (DWORD& pixel : picture.pixels)
                    pixel %= 16;
            CDib dib;
            SetPicture(dib, picture);
            ASSERT_TRUE(dib.ColorQuantize(colors));
            const Picture result = GetPicture(dib);
            EXPECT_EQ(result.bitCount, colors == 16 ? 4 : 8);
            int wrong = 0;
            for (int y = 0; y < picture.height; ++y)
                for (int x = 0; x < picture.width; ++x) {
                    Picture::Color old = picture.ColorAt(x, y);
                    old[3] = 0;
                    wrong += result.ColorAt(x, y) != old;
                }
            EXPECT_EQ(wrong, 0) << bitCount << " bits, " << colors << " colours";
            EXPECT_TRUE(IsInStep(dib));
        }
}

TEST_F(DibFilterTest, QuantizingManyColorsTakesTheNearest)
{
    // Smooth, with a small spot of another colour that must not be lost among many colours.
    Picture picture = RandomPicture(24, 96, 64);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            picture.At(x, y) = static_cast<DWORD>(x * 2 | y * 4 << 8 | (x + y) << 16);
    for (int x = 0; x < 6; ++x)
        picture.At(x, 60) = 0xFF00FF;
    const struct {
        int colors;
        double largestMean; // of the distances
    } cases[] = {{2, 90}, {3, 80}, {16, 30}, {17, 30}, {200, 10}, {256, 9}};
    for (const auto& [colors, largestMean] : cases) {
        SCOPED_TRACE(colors);
        CDib dib;
        SetPicture(dib, picture);
        ASSERT_TRUE(dib.ColorQuantize(colors));
        const Picture result = GetPicture(dib);
        std::set<std::array<int, 4>> used;
        double sum = 0;
        int notNearest = 0;
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x) {
                const auto distance = [old = picture.ColorAt(x, y)](int blue, int green, int red) {
                    return (old[0] - blue) * (old[0] - blue) + (old[1] - green) * (old[1] - green) +
                           (old[2] - red) * (old[2] - red);
                };
                const Picture::Color color = result.ColorAt(x, y);
                used.insert(color);
                const int own = distance(color[0], color[1], color[2]);
                sum += std::sqrt(own);
                notNearest += std::ranges::any_of(result.table, [&](const RGBQUAD& other) {
                    return distance(other.rgbBlue, other.rgbGreen, other.rgbRed) < own;
                });
            }
        EXPECT_LE(used.size(), static_cast<size_t>(colors));
        EXPECT_GE(used.size(), static_cast<size_t>(colors * 3 / 4));
        EXPECT_EQ(notNearest, 0);
        EXPECT_LE(sum / static_cast<double>(picture.pixels.size()), largestMean);
    }
}
