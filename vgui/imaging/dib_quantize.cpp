// Reduction of the DIB object's image to a few colours.
#include "vgui/imaging/dib.h"
#include "vgui/imaging/dib_rows.h"

#include <algorithm>
#include <climits>

namespace
{

constexpr size_t kMaxColors = 256;

BYTE ByteOf(DWORD color, unsigned i)
{
    return static_cast<BYTE>(color >> 8 * i);
}

constexpr int Square(int value)
{
    return value * value;
}

// ---- Few colours: they are taken as they are

// The different colours of an image, as long as there are not too many.
class ColorSet
{
public:
    explicit ColorSet(size_t most) : m_most(most) {}

    // False when there are too many, after which the set is of no use.
    bool Add(const BYTE* colors, size_t count, size_t bytes)
    {
        for (const BYTE* const end = colors + count * bytes; colors != end; colors += bytes) {
            const DWORD color = colors[0] | colors[1] << 8 | colors[2] << 16;
            if (color != m_last && !AddOne(color))
                return false;
            m_last = color;
        }
        return true;
    }

    [[nodiscard]] const std::vector<DWORD>& Colors() const { return m_colors; }

private:
    static constexpr DWORD kScatter = 2654435761; // spreads neighbours over all slots
    static constexpr unsigned kSlotBits = 10;
    static constexpr size_t kSlots = size_t{1} << kSlotBits; // never nearly full

    bool AddOne(DWORD color)
    {
        size_t slot = (color * kScatter) >> (32 - kSlotBits);
        while (m_slots[slot] != 0 && m_slots[slot] != color + 1)
            slot = (slot + 1) % kSlots;
        if (m_slots[slot] != 0)
            return true;
        if (m_colors.size() == m_most)
            return false;
        m_slots[slot] = color + 1;
        m_colors.push_back(color);
        return true;
    }

    size_t m_most;
    std::vector<DWORD> m_colors;
    std::array<DWORD, kSlots> m_slots{}; // colour + 1, 0 for none
    DWORD m_last = 0xFFFFFFFF;           // no colour
};

// ---- Many colours: median cut

constexpr unsigned kCellBits = 5;
constexpr unsigned kCellShift = 8 - kCellBits;
constexpr size_t kCellMask = (size_t{1} << kCellBits) - 1;
constexpr size_t kCells = size_t{1} << 3 * kCellBits;

// The cell of a colour.
size_t CellOf(const BYTE* color)
{
    return size_t{color[0]} >> kCellShift | size_t{color[1]} >> kCellShift << kCellBits |
           size_t{color[2]} >> kCellShift << 2 * kCellBits;
}

// The pixels whose channels have the same highest bits.
struct Cell {
    uint64_t count = 0;
    std::array<uint64_t, 3> sums{}; // blue, green, red

    [[nodiscard]] uint64_t Mean(size_t channel) const { return sums[channel] / count; }
};
using Cells = std::vector<Cell>;

void Count(Cells& cells, const BYTE* colors, size_t count, size_t bytes)
{
    for (const BYTE* const end = colors + count * bytes; colors != end; colors += bytes) {
        Cell& cell = cells[CellOf(colors)];
        ++cell.count;
        cell.sums[0] += colors[0];
        cell.sums[1] += colors[1];
        cell.sums[2] += colors[2];
    }
}

// Cells that become one colour.
struct Box {
    Cells::iterator begin;
    Cells::iterator end;
    uint64_t count;

    [[nodiscard]] bool CanSplit() const { return end - begin > 1; }
};

Box MakeBox(Cells::iterator begin, Cells::iterator end)
{
    uint64_t count = 0;
    for (auto cell = begin; cell != end; ++cell)
        count += cell->count;
    return {begin, end, count};
}

// The channel in which the cells differ most.
size_t LongestSide(const Box& box)
{
    size_t longest = 0;
    uint64_t most = 0;
    for (size_t channel = 0; channel < 3; ++channel) {
        const auto [low, high] = std::minmax_element(box.begin, box.end, [=](const Cell& a, const Cell& b) {
            return a.Mean(channel) < b.Mean(channel);
        });
        const uint64_t length = high->Mean(channel) - low->Mean(channel);
        if (length >= most) {
            most = length;
            longest = channel;
        }
    }
    return longest;
}

// Divides a box so that both halves have about as many pixels; the second one is returned.
Box SplitOff(Box& box)
{
    const size_t channel = LongestSide(box);
    std::sort(box.begin, box.end,
              [=](const Cell& a, const Cell& b) { return a.Mean(channel) < b.Mean(channel); });
    uint64_t below = box.begin->count;
    auto middle = box.begin + 1;
    for (; middle != box.end - 1 && below < box.count / 2; ++middle)
        below += middle->count;
    const Box upper = MakeBox(middle, box.end);
    box = MakeBox(box.begin, middle);
    return upper;
}

DWORD MeanColor(const Box& box)
{
    DWORD color = 0;
    for (size_t channel = 0; channel < 3; ++channel) {
        uint64_t sum = box.count / 2;
        for (auto cell = box.begin; cell != box.end; ++cell)
            sum += cell->sums[channel];
        color |= static_cast<DWORD>(sum / box.count) << 8 * channel;
    }
    return color;
}

std::vector<DWORD> MedianCut(Cells& cells, size_t colors)
{
    std::erase_if(cells, [](const Cell& cell) { return cell.count == 0; });
    std::vector<Box> boxes{MakeBox(cells.begin(), cells.end())};
    while (boxes.size() < colors) {
        const auto next = std::ranges::max_element(
            boxes, {}, [](const Box& box) { return box.CanSplit() ? box.count : uint64_t{0}; });
        if (!next->CanSplit())
            break;
        // Not in one expression: the new box may move the others.
        const Box upper = SplitOff(*next);
        boxes.push_back(upper);
    }
    std::vector<DWORD> palette;
    for (const Box& box : boxes)
        palette.push_back(MeanColor(box));
    return palette;
}

// ---- Both

// What a function of a row is given for each row, until it answers false. Whether it never did.
template <class Visit>
bool ForEachRow(const VDibView& source, Visit visit)
{
    VColorReader reader(source);
    std::vector<BYTE> row(reader.Length());
    for (LONG y = 0; y < source.Height(); ++y) {
        reader.Read(y, row.data());
        if (!visit(row.data(), static_cast<size_t>(source.Width()), reader.Channels()))
            return false;
    }
    return true;
}

// At most so many colours for the image, red in the highest byte of three.
std::vector<DWORD> ChooseColors(const VDibView& source, size_t colors)
{
    ColorSet few(colors);
    if (ForEachRow(source, [&few](auto... row) { return few.Add(row...); }))
        return few.Colors();
    Cells cells(kCells);
    ForEachRow(source, [&cells](auto... row) {
        Count(cells, row...);
        return true;
    });
    return MedianCut(cells, colors);
}

// Finds the palette's colour next to a given one. GDI's own matching looks at the highest bits only.
class NearestColor
{
public:
    explicit NearestColor(const std::vector<DWORD>& palette) : m_cells(kCells)
    {
        for (const DWORD color : palette)
            m_palette.push_back(
                {ByteOf(color, 0), ByteOf(color, 1), ByteOf(color, 2), static_cast<short>(m_palette.size())});
    }

    // Indices of a row of colours.
    void Find(const BYTE* colors, size_t count, size_t bytes, BYTE* indices)
    {
        for (const BYTE* const end = colors + count * bytes; colors != end; colors += bytes) {
            Candidates& cell = m_cells[CellOf(colors)];
            if (cell.count == 0)
                Collect(CellOf(colors), cell);
            *indices++ = Nearest(colors, cell);
        }
    }

private:
    // Blue, green, red, and the index in the palette.
    using Channels = std::array<short, 4>;

    // The colours that may be the nearest one of some colour of a cell.
    struct Candidates {
        size_t first = 0; // in m_candidates
        size_t count = 0; // 0: not collected yet
    };

    BYTE Nearest(const BYTE* color, const Candidates& cell) const
    {
        // The distance with the candidate's number below it: the least of these is found without branches.
        int least = INT_MAX;
        for (size_t i = 0; i < cell.count; ++i) {
            const Channels& candidate = m_candidates[cell.first + i];
            const int distance = Square(color[0] - candidate[0]) + Square(color[1] - candidate[1]) +
                                 Square(color[2] - candidate[2]);
            const int key = distance * 256 + candidate[3];
            least = key < least ? key : least;
        }
        return static_cast<BYTE>(least & 0xFF);
    }

    void Collect(size_t place, Candidates& cell)
    {
        constexpr int kLast = (1 << kCellShift) - 1; // of the intensities of a cell
        std::array<int, kMaxColors> closest{};       // distance of the cell's closest and farthest point
        int bound = INT_MAX;
        for (size_t i = 0; i < m_palette.size(); ++i) {
            int farthest = 0;
            for (size_t c = 0; c < 3; ++c) {
                const auto low = static_cast<int>((place >> c * kCellBits & kCellMask) << kCellShift);
                const int below = low - m_palette[i][c];
                const int above = m_palette[i][c] - (low + kLast);
                closest[i] += Square(std::max({below, above, 0}));
                farthest += Square(std::max(below, above) + kLast);
            }
            bound = std::min(bound, farthest);
        }
        cell.first = m_candidates.size();
        for (size_t i = 0; i < m_palette.size(); ++i)
            if (closest[i] <= bound)
                m_candidates.push_back(m_palette[i]);
        cell.count = m_candidates.size() - cell.first;
    }

    std::vector<Channels> m_palette;
    std::vector<Candidates> m_cells;
    std::vector<Channels> m_candidates;
};

VOwnedGlobal Quantized(const VDibView& source, size_t colors)
{
    const std::vector<DWORD> palette = ChooseColors(source, colors);
    BITMAPINFOHEADER header = source.Header();
    header.biBitCount = colors <= 16 ? 4 : 8;
    header.biClrUsed = 0;
    header.biClrImportant = 0;
    VOwnedGlobal result = NewDib(header);
    const VLockedDib target(result.Get());
    if (!target)
        return {};
    // The table has no other colours: what is left over repeats the last one.
    for (DWORD i = 0; i < UsableColors(target); ++i) {
        const DWORD color = palette[std::min<size_t>(i, palette.size() - 1)];
        target.SetColor(i, {ByteOf(color, 0), ByteOf(color, 1), ByteOf(color, 2), 0});
    }

    NearestColor nearest(palette);
    std::vector<BYTE> indices(static_cast<size_t>(source.Width()));
    LONG y = 0;
    ForEachRow(source, [&](const BYTE* row, size_t count, size_t bytes) {
        nearest.Find(row, count, bytes, indices.data());
        PackPixels(indices.data(), target.BitCount(), count, target.Row(y++));
        return true;
    });
    return result;
}

} // namespace

int CDib::ColorQuantize(int colors)
{
    if (colors < 2 || colors > static_cast<int>(kMaxColors))
        return FALSE;
    return ReplaceDib(ProcessDib(m_hDib, [colors](const VDibView& source) {
                          return Quantized(source, static_cast<size_t>(colors));
                      }).Release());
}
