// Resampling of the DIB object's image.
#include "vgui/imaging/dib.h"
#include "vgui/imaging/dib_rows.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace
{

// For each pixel of a resized line, which pixels of the old one make it and with what weights.
struct Taps {
    struct Pixel {
        size_t first; // of the old line
        size_t count; // old pixels, at least 1
        size_t firstWeight;
    };
    std::vector<Pixel> pixels;
    std::vector<float> weights; // those of one pixel have the sum 1
};

// A triangle over the two nearest pixels when the line grows (bilinear interpolation), widened to all that a
// new pixel covers when it shrinks. Beyond its ends the line counts for nothing.
Taps MakeTaps(LONG from, LONG to)
{
    Taps taps;
    taps.pixels.reserve(static_cast<size_t>(to));
    const double scale = static_cast<double>(from) / to;
    const double reach = std::max(scale, 1.0);
    for (LONG i = 0; i < to; ++i) {
        const double center = (i + 0.5) * scale - 0.5;
        const LONG first = std::max(0L, static_cast<LONG>(std::floor(center - reach)) + 1);
        const LONG last = std::min(from - 1, static_cast<LONG>(std::ceil(center + reach)) - 1);
        const size_t firstWeight = taps.weights.size();
        double sum = 0;
        for (LONG k = first; k <= last; ++k)
            sum += reach - std::abs(k - center);
        for (LONG k = first; k <= last; ++k)
            taps.weights.push_back(static_cast<float>((reach - std::abs(k - center)) / sum));
        taps.pixels.push_back(
            {static_cast<size_t>(first), static_cast<size_t>(last - first + 1), firstWeight});
    }
    return taps;
}

// sums += weight * row.
void AddRow(const BYTE* row, float weight, float* sums, size_t length)
{
    for (size_t i = 0; i < length; ++i)
        sums[i] += weight * row[i];
}

template <size_t Channels>
void ResampleRow(const float* row, const Taps& taps, BYTE* colors)
{
    for (const Taps::Pixel& pixel : taps.pixels) {
        const float* from = row + pixel.first * Channels;
        const float* const weights = taps.weights.data() + pixel.firstWeight;
        float sums[Channels] = {};
        for (size_t i = 0; i < pixel.count; ++i, from += Channels)
            for (size_t c = 0; c < Channels; ++c)
                sums[c] += weights[i] * from[c];
        for (size_t c = 0; c < Channels; ++c)
            *colors++ = static_cast<BYTE>(static_cast<int>(sums[c] + 0.5F));
    }
}

VOwnedGlobal Resampled(const VDibView& source, LONG cx, LONG cy)
{
    VOwnedGlobal result = NewColorDib(source, cx, cy);
    const VLockedDib target(result.Get());
    if (!target)
        return {};
    const Taps across = MakeTaps(source.Width(), cx);
    const Taps down = MakeTaps(source.Height(), cy);
    VColorReader reader(source);
    std::vector<BYTE> row(reader.Length());
    std::vector<float> sums(reader.Length());
    std::vector<BYTE> line(static_cast<size_t>(cx) * reader.Channels());
    for (LONG y = 0; y < cy; ++y) {
        const Taps::Pixel& pixel = down.pixels[static_cast<size_t>(y)];
        std::ranges::fill(sums, 0.0F);
        for (size_t i = 0; i < pixel.count; ++i) {
            reader.Read(static_cast<LONG>(pixel.first + i), row.data());
            AddRow(row.data(), down.weights[pixel.firstWeight + i], sums.data(), sums.size());
        }
        if (reader.Channels() == 4)
            ResampleRow<4>(sums.data(), across, line.data());
        else
            ResampleRow<3>(sums.data(), across, line.data());
        WriteColors(target, y, line.data());
    }
    return result;
}

// The length times the ratio, at least 1; 0 for what is no length.
int ZoomedLength(LONG length, double ratio)
{
    const double zoomed = std::round(length * ratio);
    if (!(ratio > 0) || !(zoomed <= INT_MAX))
        return 0;
    return std::max(1, static_cast<int>(zoomed));
}

} // namespace

int CDib::Zoom(double ratioX, double ratioY)
{
    return ChangeImageSize(ZoomedLength(GetWidth(), ratioX), ZoomedLength(GetHeight(), ratioY));
}

int CDib::ChangeImageSize(int cx, int cy)
{
    if (cx <= 0 || cy <= 0)
        return FALSE;
    if (cx == GetWidth() && cy == GetHeight())
        return TRUE;
    return ReplaceDib(
        ProcessDib(m_hDib, [=](const VDibView& source) { return Resampled(source, cx, cy); }).Release());
}
