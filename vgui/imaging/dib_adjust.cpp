// Operations on the colours of the DIB object's image, each by itself: on the colour table where there is
// one.
#include "vgui/imaging/dib.h"
#include "vgui/imaging/dib_rows.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace
{

// The order of channels in pixels.
enum { Blue, Green, Red, ChannelCount };

// New intensities for the old ones.
using Curve = std::array<BYTE, 256>;
using Curves = std::array<Curve, ChannelCount>;

template <class Function>
Curve MakeCurve(Function intensity)
{
    Curve curve{};
    for (int i = 0; i < 256; ++i)
        curve[static_cast<size_t>(i)] = static_cast<BYTE>(std::clamp(intensity(i), 0, 255));
    return curve;
}

// What a function makes of a row of colours: recolor(colors, number of colours, bytes of each).
template <class Recolor>
VOwnedGlobal Recolored(const VDibView& source, const Recolor& recolor)
{
    VOwnedGlobal result = NewDibLike(source, source.Width(), source.Height());
    const VLockedDib target(result.Get());
    if (!target)
        return {};
    if (const DWORD colors = UsableColors(source); colors != 0) {
        std::array<RGBQUAD, kMaxDibColors> table;
        for (DWORD i = 0; i < colors; ++i)
            table[i] = source.Color(i);
        recolor(reinterpret_cast<BYTE*>(table.data()), colors, sizeof(RGBQUAD));
        for (DWORD i = 0; i < colors; ++i)
            target.SetColor(i, table[i]);
        std::memcpy(target.Bits(), source.Bits(), source.ImageBytes());
        return result;
    }
    VColorReader reader(source);
    std::vector<BYTE> row(reader.Length());
    for (LONG y = 0; y < source.Height(); ++y) {
        reader.Read(y, row.data());
        recolor(row.data(), static_cast<size_t>(source.Width()), reader.Channels());
        WriteColors(target, y, row.data());
    }
    return result;
}

VOwnedGlobal WithCurves(HGLOBAL hDib, const Curves& curves)
{
    return ProcessDib(hDib, [&curves](const VDibView& source) {
        return Recolored(source, [&curves](BYTE* colors, size_t count, size_t bytes) {
            for (const BYTE* const end = colors + count * bytes; colors != end; colors += bytes) {
                colors[Blue] = curves[Blue][colors[Blue]];
                colors[Green] = curves[Green][colors[Green]];
                colors[Red] = curves[Red][colors[Red]];
            }
        });
    });
}

// With the three channels equal: gray(colour) tells their intensity.
template <class Gray>
VOwnedGlobal InGray(HGLOBAL hDib, const Gray& gray)
{
    return ProcessDib(hDib, [&gray](const VDibView& source) {
        return Recolored(source, [&gray](BYTE* colors, size_t count, size_t bytes) {
            for (const BYTE* const end = colors + count * bytes; colors != end; colors += bytes) {
                const BYTE level = gray(colors);
                colors[Blue] = colors[Green] = colors[Red] = level;
            }
        });
    });
}

// The weighted mean. The weights, none of them negative, may have any sum but 0.
VOwnedGlobal InWeightedGray(HGLOBAL hDib, double red, double green, double blue)
{
    constexpr unsigned kOne = 1U << 16;
    const double sum = red + green + blue;
    const auto redPart = static_cast<unsigned>(std::lround(red / sum * kOne));
    const auto bluePart = std::min(kOne - redPart, static_cast<unsigned>(std::lround(blue / sum * kOne)));
    const unsigned greenPart = kOne - redPart - bluePart;
    return InGray(hDib, [=](const BYTE* color) {
        return static_cast<BYTE>(
            (color[Red] * redPart + color[Green] * greenPart + color[Blue] * bluePart + kOne / 2) / kOne);
    });
}

bool IsShift(int value)
{
    return value >= -255 && value <= 255;
}

bool AreWeights(double red, double green, double blue)
{
    const double sum = red + green + blue;
    return red >= 0 && green >= 0 && blue >= 0 && sum > 0 && std::isfinite(sum);
}

} // namespace

int CDib::AdjustBrightness(int value)
{
    return AdjustColor(0, 0, 0, value);
}

int CDib::AdjustContrast(int value)
{
    if (!IsShift(value))
        return FALSE;
    constexpr double kMiddle = 128;
    const double factor = 259.0 * (255 + value) / (255.0 * (259 - value));
    const Curve curve =
        MakeCurve([=](int i) { return static_cast<int>(std::lround(factor * (i - kMiddle) + kMiddle)); });
    return ReplaceDib(WithCurves(m_hDib, {curve, curve, curve}).Release());
}

int CDib::AdjustColor(int red, int green, int blue, int value)
{
    if (!IsShift(red) || !IsShift(green) || !IsShift(blue) || !IsShift(value))
        return FALSE;
    const auto shifted = [value](int shift) { return MakeCurve([=](int i) { return i + shift + value; }); };
    return ReplaceDib(WithCurves(m_hDib, {shifted(blue), shifted(green), shifted(red)}).Release());
}

int CDib::ChangeToGrayscale(int mode, double red, double green, double blue)
{
    switch (mode) {
    case GrayWeights:
        if (!AreWeights(red, green, blue))
            return FALSE;
        return ReplaceDib(InWeightedGray(m_hDib, red, green, blue).Release());
    case GrayBT601:
        return ReplaceDib(InWeightedGray(m_hDib, 0.299, 0.587, 0.114).Release());
    case GrayBT709:
        return ReplaceDib(InWeightedGray(m_hDib, 0.2126, 0.7152, 0.0722).Release());
    case GrayAverage:
        return ReplaceDib(InWeightedGray(m_hDib, 1, 1, 1).Release());
    case GrayLightness:
        return ReplaceDib(InGray(m_hDib, [](const BYTE* color) {
                              const auto [least, most] = std::minmax({color[Blue], color[Green], color[Red]});
                              return static_cast<BYTE>((least + most + 1) / 2);
                          }).Release());
    default:
        return FALSE;
    }
}

int CDib::FilteRGB(int channels)
{
    constexpr int kAll = ChannelRed | ChannelGreen | ChannelBlue;
    if ((channels & ~kAll) != 0)
        return FALSE;
    const auto kept = [channels](int channel) {
        const int factor = (channels & channel) != 0 ? 1 : 0;
        return MakeCurve([=](int i) { return i * factor; });
    };
    return ReplaceDib(
        WithCurves(m_hDib, {kept(ChannelBlue), kept(ChannelGreen), kept(ChannelRed)}).Release());
}

int CDib::SeparateRGB(int channel)
{
    if (channel != ChannelRed && channel != ChannelGreen && channel != ChannelBlue)
        return FALSE;
    const int place = channel == ChannelRed ? Red : channel == ChannelGreen ? Green : Blue;
    return ReplaceDib(InGray(m_hDib, [place](const BYTE* color) { return color[place]; }).Release());
}
