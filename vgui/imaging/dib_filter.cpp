// Filters over the surroundings of the DIB object's pixels.
#include "vgui/imaging/dib.h"
#include "vgui/imaging/dib_rows.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>

namespace
{

// ---- The rows around one row, with the image's border repeated outside

class RowWindow
{
public:
    // Reaches radius pixels to all sides. The image must outlive the window.
    RowWindow(const VDibView& source, LONG radius)
        : m_reader(source), m_height(source.Height()), m_radius(radius),
          m_margin(static_cast<size_t>(radius) * m_reader.Channels()),
          m_rowBytes(m_reader.Length() + 2 * m_margin),
          m_rows(m_rowBytes * static_cast<size_t>(2 * radius + 1))
    {
    }

    [[nodiscard]] size_t Channels() const { return m_reader.Channels(); }
    // Bytes of a row without its margins.
    [[nodiscard]] size_t Length() const { return m_reader.Length(); }

    // Goes to a row: 0 first, then each next one.
    void MoveTo(LONG y)
    {
        m_y = y;
        for (const LONG last = std::min(y + m_radius, m_height - 1); m_loaded <= last; ++m_loaded)
            Load(m_loaded);
    }

    // The row that lies dy, -radius to radius, below the present one; radius pixels go on to both sides.
    [[nodiscard]] const BYTE* Row(LONG dy) const
    {
        const LONG y = std::clamp(m_y + dy, 0L, m_height - 1);
        return m_rows.data() + Place(y) + m_margin;
    }

private:
    [[nodiscard]] size_t Place(LONG y) const
    {
        return static_cast<size_t>(y % (2 * m_radius + 1)) * m_rowBytes;
    }

    void Load(LONG y)
    {
        BYTE* const row = m_rows.data() + Place(y) + m_margin;
        m_reader.Read(y, row);
        const size_t channels = m_reader.Channels();
        BYTE* const end = row + m_reader.Length();
        for (LONG i = 0; i < m_radius; ++i) {
            std::memcpy(row - static_cast<size_t>(i + 1) * channels, row, channels);
            std::memcpy(end + static_cast<size_t>(i) * channels, end - channels, channels);
        }
    }

    VColorReader m_reader;
    LONG m_height;
    LONG m_radius;
    size_t m_margin; // bytes
    size_t m_rowBytes;
    std::vector<BYTE> m_rows;
    LONG m_y = 0;
    LONG m_loaded = 0; // rows read so far
};

// The image of which filter(window, row) makes each row.
template <class Filter>
VOwnedGlobal Filtered(const VDibView& source, LONG radius, Filter filter)
{
    VOwnedGlobal result = NewColorDib(source, source.Width(), source.Height());
    const VLockedDib target(result.Get());
    if (!target)
        return {};
    RowWindow window(source, radius);
    std::vector<BYTE> row(window.Length());
    for (LONG y = 0; y < source.Height(); ++y) {
        window.MoveTo(y);
        filter(window, row.data());
        if (window.Channels() == 4)
            for (size_t i = 3; i < row.size(); i += 4)
                row[i] = window.Row(0)[i];
        WriteColors(target, y, row.data());
    }
    return result;
}

// ---- Linear filters

// Weights of the pixel and its eight neighbours, row by row. Sums of weighted intensities fit 16 bits.
using Kernel = std::array<short, 9>;

constexpr Kernel kHighPass[] = {
    {-1, -1, -1, -1, 9, -1, -1, -1, -1},
    {0, -1, 0, -1, 5, -1, 0, -1, 0},
    {1, -2, 1, -2, 5, -2, 1, -2, 1},
};
constexpr Kernel kLowPass[] = {
    {1, 1, 1, 1, 1, 1, 1, 1, 1},
    {1, 1, 1, 1, 2, 1, 1, 1, 1},
    {1, 2, 1, 2, 4, 2, 1, 2, 1},
};

// Shares are fixed-point numbers.
constexpr int kFractionBits = 16;
constexpr int kOne = 1 << kFractionBits;
constexpr int kPercent = 100;

// intensity + share * change, rounded and cut off.
inline BYTE Changed(BYTE intensity, short change, int share)
{
    const int result = intensity + ((change * share + kOne / 2) >> kFractionBits);
    return static_cast<BYTE>(result < 0 ? 0 : result > 255 ? 255 : result);
}

// Nothing in the loop depends on the channel, so the compiler can take many bytes at once.
void Convolve(const RowWindow& window, const Kernel& kernel, int share, short sum, BYTE* __restrict row)
{
    const size_t length = window.Length();
    const size_t step = window.Channels();
    const BYTE* const above = window.Row(-1) - step;
    const BYTE* const here = window.Row(0) - step;
    const BYTE* const below = window.Row(1) - step;
    const auto [a0, a1, a2, h0, h1, h2, b0, b1, b2] = kernel;
    for (size_t i = 0; i < length; ++i) {
        const BYTE old = here[i + step];
        const auto change =
            static_cast<short>(a0 * above[i] + a1 * above[i + step] + a2 * above[i + 2 * step] +
                               h0 * here[i] + (h1 - sum) * old + h2 * here[i + 2 * step] + b0 * below[i] +
                               b1 * below[i + step] + b2 * below[i + 2 * step]);
        row[i] = Changed(old, change, share);
    }
}

// The image mixed with what the kernel makes of it.
VOwnedGlobal Convolved(HGLOBAL hDib, const Kernel& kernel, int strength)
{
    const auto sum = std::accumulate(kernel.begin(), kernel.end(), short{0});
    const auto share = static_cast<int>(std::lround(1.0 * strength * kOne / (sum * kPercent)));
    return ProcessDib(hDib, [&](const VDibView& source) {
        return Filtered(source, 1, [&](const RowWindow& window, BYTE* row) {
            Convolve(window, kernel, share, sum, row);
        });
    });
}

// ---- Edges

// The directions in which the gradient counts: all bits set, or none.
struct Directions {
    short across;
    short down;
};

inline short Amount(int value)
{
    return static_cast<short>(value < 0 ? -value : value);
}

void AddGradient(const RowWindow& window, Directions directions, int share, BYTE* __restrict row)
{
    const size_t length = window.Length();
    const size_t step = window.Channels();
    const BYTE* const above = window.Row(-1) - step;
    const BYTE* const here = window.Row(0) - step;
    const BYTE* const below = window.Row(1) - step;
    const auto [across, down] = directions;
    for (size_t i = 0; i < length; ++i) {
        const int falling = below[i + 2 * step] - above[i];
        const int rising = above[i + 2 * step] - below[i];
        const short x = Amount(falling + rising + 2 * (here[i + 2 * step] - here[i]));
        const short y = Amount(falling - rising + 2 * (below[i + step] - above[i + step]));
        row[i] = Changed(here[i + step], static_cast<short>((x & across) + (y & down)), share);
    }
}

// ---- Median

constexpr int kMaxMedian = 31;

// The smaller one to a, the greater one to b.
inline void Order(BYTE& a, BYTE& b)
{
    const BYTE least = a < b ? a : b;
    b = a < b ? b : a;
    a = least;
}

inline void Order(BYTE& a, BYTE& b, BYTE& c)
{
    Order(a, b);
    Order(b, c);
    Order(a, b);
}

// Of three times three pixels: with the columns ordered, the median is that of the greatest of the least, the
// middle one of the middle ones and the least of the greatest. No step depends on the pixels, so the compiler
// can take many bytes at once. columns: three rows with a pixel more at both ends.
void Median3(const RowWindow& window, BYTE* __restrict columns, BYTE* __restrict row)
{
    const size_t length = window.Length();
    const size_t step = window.Channels();
    const size_t span = length + 2 * step;
    const BYTE* const above = window.Row(-1) - step;
    const BYTE* const here = window.Row(0) - step;
    const BYTE* const below = window.Row(1) - step;
    BYTE* const least = columns;
    BYTE* const middle = columns + span;
    BYTE* const most = columns + 2 * span;
    for (size_t i = 0; i < span; ++i) {
        BYTE a = above[i];
        BYTE b = here[i];
        BYTE c = below[i];
        Order(a, b, c);
        least[i] = a;
        middle[i] = b;
        most[i] = c;
    }
    for (size_t i = 0; i < length; ++i) {
        BYTE low1 = least[i];
        BYTE low2 = least[i + step];
        BYTE low3 = least[i + 2 * step];
        BYTE middle1 = middle[i];
        BYTE middle2 = middle[i + step];
        BYTE middle3 = middle[i + 2 * step];
        BYTE high1 = most[i];
        BYTE high2 = most[i + step];
        BYTE high3 = most[i + 2 * step];
        Order(low1, low2, low3);
        Order(middle1, middle2, middle3);
        Order(high1, high2, high3);
        Order(low3, middle2, high1);
        row[i] = middle2;
    }
}

// How often each intensity occurs in a square that slides along a row, and its median.
class MedianCounter
{
public:
    explicit MedianCounter(int size) : m_half(size * size / 2) {}

    // Only before the median is asked for.
    void Add(BYTE value) { ++m_counts[value]; }
    // Of those counted, one becomes another.
    void Replace(BYTE out, BYTE in)
    {
        --m_counts[out];
        ++m_counts[in];
        m_below += (in < m_median ? 1 : 0) - (out < m_median ? 1 : 0);
    }
    // The intensity that as many are below as above.
    BYTE Median()
    {
        while (m_below > m_half)
            m_below -= m_counts[--m_median];
        while (m_below + m_counts[m_median] <= m_half)
            m_below += m_counts[m_median++];
        return static_cast<BYTE>(m_median);
    }

private:
    std::array<uint16_t, 256> m_counts{};
    int m_half;
    int m_below = 0; // how many are smaller than the median
    unsigned m_median = 0;
};

// The channels side by side: the processor need not wait for one's count before the next one's.
void LargeMedianOf(const RowWindow& window, int size, BYTE* row)
{
    constexpr size_t kChannels = 3;
    const LONG radius = size / 2;
    const size_t step = window.Channels();
    const size_t reach = static_cast<size_t>(radius) * step;
    const BYTE* lines[kMaxMedian];
    for (LONG dy = -radius; dy <= radius; ++dy)
        lines[dy + radius] = window.Row(dy) - reach;

    MedianCounter counters[kChannels] = {MedianCounter(size), MedianCounter(size), MedianCounter(size)};
    for (int line = 0; line < size; ++line)
        for (size_t i = 0; i <= 2 * reach; i += step)
            for (size_t channel = 0; channel < kChannels; ++channel)
                counters[channel].Add(lines[line][i + channel]);
    for (size_t i = 0; i < window.Length(); i += step) {
        for (int line = 0; line < size && i != 0; ++line) {
            const BYTE* const out = lines[line] + i - step;
            const BYTE* const in = lines[line] + i + 2 * reach;
            for (size_t channel = 0; channel < kChannels; ++channel)
                counters[channel].Replace(out[channel], in[channel]);
        }
        for (size_t channel = 0; channel < kChannels; ++channel)
            row[i + channel] = counters[channel].Median();
    }
}

VOwnedGlobal SmallMedian(const VDibView& source)
{
    const size_t pixels = static_cast<size_t>(source.Width()) + 2;
    std::vector<BYTE> columns(3 * pixels * ColorChannels(source.BitCount()));
    return Filtered(source, 1,
                    [&columns](const RowWindow& window, BYTE* row) { Median3(window, columns.data(), row); });
}

VOwnedGlobal LargeMedian(const VDibView& source, int size)
{
    return Filtered(source, size / 2,
                    [size](const RowWindow& window, BYTE* row) { LargeMedianOf(window, size, row); });
}

bool IsPercent(int strength)
{
    return strength >= 0 && strength <= kPercent;
}

} // namespace

int CDib::EdgeEnhance(int strength, int mode)
{
    if (!IsPercent(strength) || mode < EdgeVertical || mode > EdgeBoth)
        return FALSE;
    const auto share = static_cast<int>(std::lround(strength * kOne / (4.0 * kPercent)));
    const Directions directions{static_cast<short>(mode == EdgeHorizontal ? 0 : -1),
                                static_cast<short>(mode == EdgeVertical ? 0 : -1)};
    return ReplaceDib(ProcessDib(m_hDib, [=](const VDibView& source) {
                          return Filtered(source, 1, [=](const RowWindow& window, BYTE* row) {
                              AddGradient(window, directions, share, row);
                          });
                      }).Release());
}

int CDib::HighPass(int strength, int mode)
{
    if (!IsPercent(strength) || mode < HighPassLaplace8 || mode > HighPassMixed)
        return FALSE;
    return ReplaceDib(Convolved(m_hDib, kHighPass[mode], strength).Release());
}

int CDib::LowPass(int strength, int mode)
{
    if (!IsPercent(strength) || mode < LowPassBox || mode > LowPassGauss)
        return FALSE;
    return ReplaceDib(Convolved(m_hDib, kLowPass[mode], strength).Release());
}

int CDib::MedianFilter(int size)
{
    if (size < 3 || size > kMaxMedian || size % 2 == 0)
        return FALSE;
    return ReplaceDib(ProcessDib(m_hDib, [size](const VDibView& source) {
                          return size == 3 ? SmallMedian(source) : LargeMedian(source, size);
                      }).Release());
}
