// Filters over the surroundings of the DIB object's pixels.
#include "vgui/imaging/dib.h"
#include "vgui/imaging/dib_rows.h"

#include <algorithm>
#include <cmath>
#include <cstring>

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

// Weights of the pixel and its eight neighbours, row by row.
using Kernel = std::array<int, 9>;

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

// Weights and results of the inner loops are fixed-point numbers.
constexpr int kFractionBits = 16;
constexpr int kOne = 1 << kFractionBits;
constexpr int kPercent = 100;

BYTE ToByte(int fixed)
{
    return static_cast<BYTE>(std::clamp((fixed + kOne / 2) >> kFractionBits, 0, 255));
}

// The kernel mixed with "nothing happens", as fixed-point weights with the sum 1, so that areas of one colour
// stay as they are.
Kernel Weakened(const Kernel& kernel, int strength)
{
    int sum = 0;
    for (const int weight : kernel)
        sum += weight;
    Kernel weights;
    int others = 0;
    for (size_t i = 0; i < weights.size(); ++i) {
        weights[i] = static_cast<int>(
            std::lround(static_cast<double>(kernel[i]) * strength * kOne / (sum * kPercent)));
        others += weights[i];
    }
    weights[4] += kOne - others;
    return weights;
}

// channels: bytes from a pixel to the next. The pixels are summed row by row, whole rows at a time, so that
// the compiler can take many at once.
void Convolve(const RowWindow& window, const Kernel& weights, int* sums, BYTE* row)
{
    const size_t length = window.Length();
    const size_t step = window.Channels();
    std::fill_n(sums, length, 0);
    for (size_t line = 0; line < 3; ++line) {
        const BYTE* const here = window.Row(static_cast<LONG>(line) - 1);
        const BYTE* const left = here - step;
        const BYTE* const right = here + step;
        const int* const w = weights.data() + 3 * line;
        for (size_t i = 0; i < length; ++i)
            sums[i] += w[0] * left[i] + w[1] * here[i] + w[2] * right[i];
    }
    for (size_t i = 0; i < length; ++i)
        row[i] = ToByte(sums[i]);
}

VOwnedGlobal Convolved(HGLOBAL hDib, const Kernel& kernel, int strength)
{
    return ProcessDib(hDib, [&](const VDibView& source) {
        const Kernel weights = Weakened(kernel, strength);
        std::vector<int> sums(static_cast<size_t>(source.Width()) * ColorChannels(source.BitCount()));
        return Filtered(source, 1, [&](const RowWindow& window, BYTE* row) {
            Convolve(window, weights, sums.data(), row);
        });
    });
}

// ---- Edges

// across, down: fixed-point shares of the two gradients.
void AddGradient(const RowWindow& window, int across, int down, BYTE* row)
{
    const size_t step = window.Channels();
    const BYTE* const above = window.Row(-1);
    const BYTE* const here = window.Row(0);
    const BYTE* const below = window.Row(1);
    const BYTE* const aboveLeft = above - step;
    const BYTE* const aboveRight = above + step;
    const BYTE* const belowLeft = below - step;
    const BYTE* const belowRight = below + step;
    for (size_t i = 0; i < window.Length(); ++i) {
        const int diagonal1 = belowRight[i] - aboveLeft[i];
        const int diagonal2 = aboveRight[i] - belowLeft[i];
        const int x = diagonal1 + diagonal2 + 2 * (here[i + step] - (here - step)[i]);
        const int y = diagonal1 - diagonal2 + 2 * (below[i] - above[i]);
        row[i] = ToByte(here[i] * kOne + std::abs(x) * across + std::abs(y) * down);
    }
}

// ---- Median

constexpr int kMaxMedian = 31;

// The smaller one to a, the greater one to b.
inline void Order(BYTE& a, BYTE& b)
{
    const BYTE least = std::min(a, b);
    b = std::max(a, b);
    a = least;
}

// Of three times three pixels: ordered by columns, the median is that of the greatest of the least, the
// middle one of the middle ones and the least of the greatest.
void Median3(const RowWindow& window, BYTE* row)
{
    const size_t step = window.Channels();
    const BYTE* const above = window.Row(-1) - step;
    const BYTE* const here = window.Row(0) - step;
    const BYTE* const below = window.Row(1) - step;
    for (size_t i = 0; i < window.Length(); ++i) {
        BYTE least[3];
        BYTE middle[3];
        BYTE most[3];
        for (size_t k = 0; k < 3; ++k) {
            BYTE a = above[i + k * step];
            BYTE b = here[i + k * step];
            BYTE c = below[i + k * step];
            Order(a, b);
            Order(b, c);
            Order(a, b);
            least[k] = a;
            middle[k] = b;
            most[k] = c;
        }
        Order(middle[0], middle[1]);
        Order(middle[1], middle[2]);
        Order(middle[0], middle[1]);
        BYTE low = std::max({least[0], least[1], least[2]});
        BYTE high = std::min({most[0], most[1], most[2]});
        Order(low, high);
        row[i] = std::max(low, std::min(middle[1], high));
    }
}

// How often each intensity occurs in a square that slides along a row, and its median.
class MedianCounter
{
public:
    explicit MedianCounter(int size) : m_half(size * size / 2) {}

    void Add(BYTE value)
    {
        ++m_counts[value];
        m_below += value < m_median;
    }
    void Remove(BYTE value)
    {
        --m_counts[value];
        m_below -= value < m_median;
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
    std::array<int, 256> m_counts{};
    int m_half;
    int m_below = 0; // how many are smaller than the median
    size_t m_median = 0;
};

void MedianAlong(const RowWindow& window, int size, size_t channel, BYTE* row)
{
    const LONG radius = size / 2;
    const size_t step = window.Channels();
    const size_t reach = static_cast<size_t>(radius) * step;
    const BYTE* lines[kMaxMedian];
    for (LONG dy = -radius; dy <= radius; ++dy)
        lines[dy + radius] = window.Row(dy) - reach + channel;

    MedianCounter counter(size);
    for (int line = 0; line < size; ++line)
        for (size_t i = 0; i < 2 * reach; i += step)
            counter.Add(lines[line][i]);
    for (size_t i = channel; i < window.Length(); i += step) {
        const size_t left = i - channel;
        for (int line = 0; line < size; ++line)
            counter.Add(lines[line][left + 2 * reach]);
        row[i] = counter.Median();
        for (int line = 0; line < size; ++line)
            counter.Remove(lines[line][left]);
    }
}

void MedianOf(const RowWindow& window, int size, BYTE* row)
{
    for (size_t channel = 0; channel < 3; ++channel)
        MedianAlong(window, size, channel, row);
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
    const int share = strength * kOne / (4 * kPercent);
    const int across = mode == EdgeHorizontal ? 0 : share;
    const int down = mode == EdgeVertical ? 0 : share;
    return ReplaceDib(ProcessDib(m_hDib, [=](const VDibView& source) {
                          return Filtered(source, 1, [=](const RowWindow& window, BYTE* row) {
                              AddGradient(window, across, down, row);
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
                          return Filtered(source, size / 2, [size](const RowWindow& window, BYTE* row) {
                              if (size == 3)
                                  Median3(window, row);
                              else
                                  MedianOf(window, size, row);
                          });
                      }).Release());
}
