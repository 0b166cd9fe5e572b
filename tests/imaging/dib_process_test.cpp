// What moves, resamples and recolours pixels, against plain models.
#include "tests/imaging/dib_picture.h"
#include "tests/support/census.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <string>

using namespace support;

namespace
{

class DibProcessTest : public CensusTest
{
};

using Color = Picture::Color;

// Odd widths leave padding at the end of rows; 31 to 33 lie around the width of a turned band.
constexpr std::array<int, 2> kSizes[] = {{1, 1}, {3, 2}, {5, 1}, {1, 7}, {8, 4}, {31, 3}, {33, 35}, {70, 9}};

// Calls check(picture, label) for noise of every depth and size.
void ForEachPicture(const std::function<void(const Picture&)>& check)
{
    for (const WORD bitCount : kDepths)
        for (const auto& [width, height] : kSizes) {
            SCOPED_TRACE(testing::Message() << bitCount << " bits, " << width << " x " << height);
            check(RandomPicture(bitCount, width, height));
        }
}

void ExpectSamePixels(const Picture& actual, const Picture& expected)
{
    EXPECT_EQ(actual.width, expected.width);
    EXPECT_EQ(actual.height, expected.height);
    EXPECT_EQ(actual.bitCount, expected.bitCount);
    EXPECT_EQ(actual.pixels, expected.pixels);
    EXPECT_TRUE(
        std::ranges::equal(actual.table, expected.table, [](const RGBQUAD& left, const RGBQUAD& right) {
            return memcmp(&left, &right, sizeof left) == 0;
        }));
}

// The largest difference between a picture's colours and model(x, y, channel). With 5 bits per channel it is
// given in steps of 1/31 instead, less the half step of rounding.
double LargestDifference(const Picture& picture, const std::function<double(int, int, size_t)>& model)
{
    double largest = 0;
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            for (size_t channel = 0; channel < (picture.bitCount == 32 ? 4U : 3U); ++channel) {
                double difference = std::abs(picture.ColorAt(x, y)[channel] - model(x, y, channel));
                if (picture.bitCount == 16)
                    difference = std::max(0.0, difference * 31 / 255 - 0.5);
                largest = std::max(largest, difference);
            }
    return largest;
}

// The place in the old picture that a new pixel comes from.
using Move = CPoint (*)(CPoint to, const Picture& old);

} // namespace

TEST_F(DibProcessTest, TurnsAndMirrors)
{
    const struct {
        const char* name;
        int (CDib::*operation)();
        bool sideways;
        Move from;
    } cases[] = {
        {"90", &CDib::Rotate90, true,
         [](CPoint p, const Picture& old) { return CPoint(p.y, old.height - 1 - p.x); }},
        {"180", &CDib::Rotate180, false,
         [](CPoint p, const Picture& old) { return CPoint(old.width - 1 - p.x, old.height - 1 - p.y); }},
        {"270", &CDib::Rotate270, true,
         [](CPoint p, const Picture& old) { return CPoint(old.width - 1 - p.y, p.x); }},
        {"across", &CDib::FlipHorz, false,
         [](CPoint p, const Picture& old) { return CPoint(old.width - 1 - p.x, p.y); }},
        {"down", &CDib::FlipVert, false,
         [](CPoint p, const Picture& old) { return CPoint(p.x, old.height - 1 - p.y); }},
    };
    ForEachPicture([&](const Picture& picture) {
        for (const auto& [name, operation, sideways, from] : cases) {
            SCOPED_TRACE(name);
            CDib dib;
            SetPicture(dib, picture);
            ASSERT_TRUE((dib.*operation)());
            Picture expected = picture;
            if (sideways)
                std::swap(expected.width, expected.height);
            for (int y = 0; y < expected.height; ++y)
                for (int x = 0; x < expected.width; ++x) {
                    const CPoint place = from({x, y}, picture);
                    expected.At(x, y) = picture.At(place.x, place.y);
                }
            ExpectSamePixels(GetPicture(dib), expected);
            EXPECT_TRUE(IsInStep(dib));
            const auto* const header = static_cast<const BITMAPINFOHEADER*>(::GlobalLock(dib.GetHandle()));
            EXPECT_EQ(header->biXPelsPerMeter, sideways ? 2222 : 1111);
            ::GlobalUnlock(dib.GetHandle());
        }
    });
}

TEST_F(DibProcessTest, CanvasHasNinePlaces)
{
    ForEachPicture([](const Picture& picture) {
        CDib dib;
        for (const auto& [cx, cy] : {std::array{picture.width + 5, picture.height + 2},
                                     {picture.width, std::max(1, picture.height - 3)},
                                     {1, picture.height + 4}})
            for (int position = 0; position < 9; ++position) {
                SetPicture(dib, picture);
                ASSERT_TRUE(dib.ChangeCanvasSize(cx, cy, position));
                Picture expected{cx, cy, picture.bitCount, {}, picture.table};
                DWORD white = picture.bitCount == 16   ? 0x7FFF
                              : picture.bitCount == 24 ? 0xFFFFFF
                                                       : 0xFFFFFFFF;
                if (picture.bitCount <= 8) {
                    int best = INT_MAX;
                    for (DWORD i = 0; i < picture.table.size(); ++i) {
                        const RGBQUAD c = picture.table[i];
                        const int b = 255 - c.rgbBlue;
                        const int g = 255 - c.rgbGreen;
                        const int r = 255 - c.rgbRed;
                        if (b * b + g * g + r * r < best) {
                            best = b * b + g * g + r * r;
                            white = i;
                        }
                    }
                }
                expected.pixels.assign(static_cast<size_t>(cx * cy), white);
                const int left[] = {0, (cx - picture.width) / 2, cx - picture.width};
                const int top[] = {0, (cy - picture.height) / 2, cy - picture.height};
                for (int y = 0; y < cy; ++y)
                    for (int x = 0; x < cx; ++x) {
                        const int oldX = x - left[position % 3];
                        const int oldY = y - top[position / 3];
                        if (oldX >= 0 && oldX < picture.width && oldY >= 0 && oldY < picture.height)
                            expected.At(x, y) = picture.At(oldX, oldY);
                    }
                SCOPED_TRACE(testing::Message() << cx << " x " << cy << " at " << position);
                ExpectSamePixels(GetPicture(dib), expected);
            }
    });
}

TEST_F(DibProcessTest, ResamplesByTriangles)
{
    // The share of an old pixel in a new one, before they are made to sum up to 1.
    const auto share = [](int from, int to, int i, int k) {
        const double scale = static_cast<double>(from) / to;
        return std::max(0.0, std::max(scale, 1.0) - std::abs((i + 0.5) * scale - 0.5 - k));
    };
    ForEachPicture([&](const Picture& picture) {
        for (const auto& [cx, cy] : {std::array{1, 1}, {13, 4}, {40, 50}}) {
            if (cx == picture.width && cy == picture.height)
                continue;
            CDib dib;
            SetPicture(dib, picture);
            ASSERT_TRUE(dib.ChangeImageSize(cx, cy));
            const Picture result = GetPicture(dib);
            ASSERT_EQ(result.width, cx);
            ASSERT_EQ(result.height, cy);
            EXPECT_EQ(result.bitCount, std::max<WORD>(picture.bitCount, picture.bitCount > 8 ? 16 : 24));
            const double worst = LargestDifference(result, [&](int x, int y, size_t channel) {
                double sum = 0;
                double shares = 0;
                for (int v = 0; v < picture.height; ++v)
                    for (int u = 0; u < picture.width; ++u) {
                        const double s = share(picture.width, cx, x, u) * share(picture.height, cy, y, v);
                        shares += s;
                        if (s > 0)
                            sum += s * picture.ColorAt(u, v)[channel];
                    }
                return sum / shares;
            });
            EXPECT_LE(worst, 0.51) << cx << " x " << cy;
        }
    });
}

TEST_F(DibProcessTest, ZoomRoundsAndKeepsAPixel)
{
    const struct {
        double x;
        double y;
        int cx; // 0: refused
        int cy;
    } cases[] = {
        {2, 0.5, 14, 2},    {1e-9, 1, 1, 3},  {1, 1, 7, 3},   {1.07, 1.17, 7, 4},
        {0, 1, 0, 0},       {1, -1, 0, 0},    {NAN, 1, 0, 0}, {1, INFINITY, 0, 0},
        {DBL_MAX, 1, 0, 0}, {1e9, 1e9, 0, 0}, {1, 2e9, 0, 0},
    };
    for (const auto& [x, y, cx, cy] : cases) {
        CDib dib;
        SetPicture(dib, RandomPicture(4, 7, 3));
        EXPECT_EQ(dib.Zoom(x, y), cx != 0) << x << ' ' << y;
        EXPECT_EQ(dib.GetWidth(), cx != 0 ? cx : 7) << x << ' ' << y;
        EXPECT_EQ(dib.GetHeight(), cx != 0 ? cy : 3) << x << ' ' << y;
    }
}

TEST_F(DibProcessTest, RecolorsEachColorByItself)
{
    const auto cut = [](double value) { return std::clamp(std::floor(value + 0.5), 0.0, 255.0); };
    const auto added = [](std::array<int, 3> shifts) {
        return [shifts](const Color& c, size_t i) { return static_cast<double>(c[i] + shifts[i]); };
    };
    const auto weighted = [](double red, double green, double blue) {
        return [=](const Color& c, size_t) {
            return (c[2] * red + c[1] * green + c[0] * blue) / (red + green + blue);
        };
    };
    const auto contrast = [](int value) {
        return [=](const Color& c, size_t i) {
            return 259.0 * (255 + value) / (255.0 * (259 - value)) * (c[i] - 128) + 128;
        };
    };
    const auto only = [](int channels) {
        return [=](const Color& c, size_t i) { return (channels >> (2 - i) & 1) != 0 ? c[i] : 0.0; };
    };
    const auto single = [](size_t channel) {
        return [=](const Color& c, size_t) { return static_cast<double>(c[channel]); };
    };
    const struct {
        std::string name;
        std::function<int(CDib&)> operation;
        std::function<double(const Color&, size_t channel)> model;
    } cases[] = {
        {"darker", [](CDib& dib) { return dib.AdjustBrightness(-255); }, added({-255, -255, -255})},
        {"brighter", [](CDib& dib) { return dib.AdjustBrightness(40); }, added({40, 40, 40})},
        {"all grey", [](CDib& dib) { return dib.AdjustContrast(-255); }, contrast(-255)},
        {"flat", [](CDib& dib) { return dib.AdjustContrast(-80); }, contrast(-80)},
        {"harsh", [](CDib& dib) { return dib.AdjustContrast(255); }, contrast(255)},
        {"colour", [](CDib& dib) { return dib.AdjustColor(-20, 60, 255, 5); }, added({260, 65, -15})},
        {"weights", [](CDib& dib) { return dib.ChangeToGrayscale(CDib::GrayWeights, 5, 0, 3); },
         weighted(5, 0, 3)},
        {"601", [](CDib& dib) { return dib.ChangeToGrayscale(CDib::GrayBT601, -1, NAN, 0); },
         weighted(.299, .587, .114)},
        {"709", [](CDib& dib) { return dib.ChangeToGrayscale(CDib::GrayBT709, 0, 0, 0); },
         weighted(.2126, .7152, .0722)},
        {"mean", [](CDib& dib) { return dib.ChangeToGrayscale(CDib::GrayAverage, 0, 0, 0); },
         weighted(1, 1, 1)},
        {"lightness", [](CDib& dib) { return dib.ChangeToGrayscale(CDib::GrayLightness, 0, 0, 0); },
         [](const Color& c, size_t) {
             return (std::min({c[0], c[1], c[2]}) + std::max({c[0], c[1], c[2]})) / 2.0;
         }},
        {"red and blue", [](CDib& dib) { return dib.FilteRGB(CDib::ChannelRed | CDib::ChannelBlue); },
         only(5)},
        {"nothing", [](CDib& dib) { return dib.FilteRGB(0); }, only(0)},
        {"red", [](CDib& dib) { return dib.SeparateRGB(CDib::ChannelRed); }, single(2)},
        {"green", [](CDib& dib) { return dib.SeparateRGB(CDib::ChannelGreen); }, single(1)},
        {"blue", [](CDib& dib) { return dib.SeparateRGB(CDib::ChannelBlue); }, single(0)},
    };
    ForEachPicture([&](const Picture& picture) {
        for (const auto& [name, operation, model] : cases) {
            SCOPED_TRACE(name);
            CDib dib;
            SetPicture(dib, picture);
            ASSERT_TRUE(operation(dib));
            const Picture result = GetPicture(dib);
            ASSERT_EQ(result.bitCount, picture.bitCount);
            if (picture.bitCount <= 8) {
                EXPECT_EQ(result.pixels, picture.pixels);
            }
            // Weights are kept to 16 bits: close to the half they may round the other way.
            EXPECT_LE(LargestDifference(result,
                                        [&](int x, int y, size_t channel) {
                                            const Color old = picture.ColorAt(x, y);
                                            return channel == 3 ? old[3] : cut(model(old, channel) - 0.01);
                                        }),
                      picture.bitCount == 16 ? 0.51 : 1.0);
            EXPECT_TRUE(IsInStep(dib));
        }
    });
}

TEST_F(DibProcessTest, BadParametersLeaveTheImageAlone)
{
    const std::function<int(CDib&)> refused[] = {
        [](CDib& dib) { return dib.ChangeImageSize(0, 1); },
        [](CDib& dib) { return dib.ChangeImageSize(INT_MAX, INT_MAX); },
        [](CDib& dib) { return dib.ChangeCanvasSize(0, 4, 0); },
        [](CDib& dib) { return dib.ChangeCanvasSize(INT_MAX, INT_MAX, 8); },
        [](CDib& dib) { return dib.ChangeCanvasSize(4, 4, 9); },
        [](CDib& dib) { return dib.ChangeCanvasSize(4, 4, -1); },
        [](CDib& dib) { return dib.AdjustBrightness(256); },
        [](CDib& dib) { return dib.AdjustContrast(-256); },
        [](CDib& dib) { return dib.AdjustContrast(259); },
        [](CDib& dib) { return dib.AdjustColor(256, 0, 0, 0); },
        [](CDib& dib) { return dib.ChangeToGrayscale(5, 1, 1, 1); },
        [](CDib& dib) { return dib.ChangeToGrayscale(-1, 1, 1, 1); },
        [](CDib& dib) { return dib.ChangeToGrayscale(CDib::GrayWeights, 0, 0, 0); },
        [](CDib& dib) { return dib.ChangeToGrayscale(CDib::GrayWeights, 2, -1, 0); },
        [](CDib& dib) { return dib.ChangeToGrayscale(CDib::GrayWeights, NAN, 1, 1); },
        [](CDib& dib) { return dib.ChangeToGrayscale(CDib::GrayWeights, DBL_MAX, DBL_MAX, 0); },
        [](CDib& dib) { return dib.ColorQuantize(1); },
        [](CDib& dib) { return dib.ColorQuantize(257); },
        [](CDib& dib) { return dib.EdgeEnhance(101, 0); },
        [](CDib& dib) { return dib.EdgeEnhance(50, 3); },
        [](CDib& dib) { return dib.HighPass(-1, 0); },
        [](CDib& dib) { return dib.HighPass(50, -1); },
        [](CDib& dib) { return dib.LowPass(50, 3); },
        [](CDib& dib) { return dib.MedianFilter(4); },
        [](CDib& dib) { return dib.MedianFilter(33); },
        [](CDib& dib) { return dib.FilteRGB(8); },
        [](CDib& dib) { return dib.FilteRGB(-1); },
        [](CDib& dib) { return dib.SeparateRGB(3); },
    };
    const Picture picture = RandomPicture(8, 5, 3);
    CDib dib;
    SetPicture(dib, picture);
    const HGLOBAL block = dib.GetHandle();
    const CPalette* const palette = dib.GetPalette();
    const CBitmap* const bitmap = dib.GetBitmap();
    int number = 0;
    for (const auto& operation : refused) {
        EXPECT_FALSE(operation(dib)) << number;
        EXPECT_EQ(dib.GetHandle(), block) << number;
        EXPECT_EQ(dib.GetPalette(), palette) << number;
        EXPECT_EQ(dib.GetBitmap(), bitmap) << number;
        ++number;
    }
    ExpectSamePixels(GetPicture(dib), picture);
}

TEST_F(DibProcessTest, WithoutPixelsNothingWorks)
{
    const std::function<int(CDib&)> operations[] = {
        [](CDib& dib) { return dib.Rotate90(); },
        [](CDib& dib) { return dib.Rotate180(); },
        [](CDib& dib) { return dib.Rotate270(); },
        [](CDib& dib) { return dib.FlipHorz(); },
        [](CDib& dib) { return dib.FlipVert(); },
        [](CDib& dib) { return dib.Zoom(2, 2); },
        [](CDib& dib) { return dib.ChangeImageSize(3, 3); },
        [](CDib& dib) { return dib.ChangeCanvasSize(3, 3, 0); },
        [](CDib& dib) { return dib.AdjustBrightness(1); },
        [](CDib& dib) { return dib.AdjustContrast(1); },
        [](CDib& dib) { return dib.AdjustColor(1, 1, 1, 1); },
        [](CDib& dib) { return dib.ChangeToGrayscale(1, 1, 1, 1); },
        [](CDib& dib) { return dib.ColorQuantize(16); },
        [](CDib& dib) { return dib.EdgeEnhance(50, 0); },
        [](CDib& dib) { return dib.HighPass(50, 0); },
        [](CDib& dib) { return dib.LowPass(50, 0); },
        [](CDib& dib) { return dib.MedianFilter(3); },
        [](CDib& dib) { return dib.FilteRGB(7); },
        [](CDib& dib) { return dib.SeparateRGB(1); },
    };
    // An image of two run-length coded pixels: there are bytes, but no rows.
    BITMAPINFOHEADER header{sizeof header, 2, 1, 1, 8, BI_RLE8, 4, 0, 0, 1, 0};
    std::vector<BYTE> coded(reinterpret_cast<BYTE*>(&header), reinterpret_cast<BYTE*>(&header + 1));
    for (const BYTE byte : {0, 0, 0, 0, 2, 0, 0, 1})
        coded.push_back(byte);
    int number = 0;
    for (const auto& operation : operations) {
        CDib empty;
        EXPECT_FALSE(operation(empty)) << number;
        CDib compressed;
        compressed.Create(coded.data());
        const HGLOBAL block = compressed.GetHandle();
        ASSERT_NE(block, nullptr);
        EXPECT_FALSE(operation(compressed)) << number;
        EXPECT_EQ(compressed.GetHandle(), block) << number;
        ++number;
    }
}
