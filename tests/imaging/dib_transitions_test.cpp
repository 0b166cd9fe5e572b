// Revealing and wiping the DIB object in steps.
#include "tests/imaging/dib_samples.h"
#include "tests/support/pixels.h"
#include "vgui/imaging/dib_effects.h"

#include <array>
#include <climits>
#include <set>

namespace
{

using samples::Bytes;
using samples::PackedDib;
using support::DibSurface;

const CPoint kAt(4, 3);
constexpr int kMargin = 12;
constexpr int kSteps[] = {1, 2, 3, 5, 40, 0, INT_MAX};
const CSize kSizes[] = {{13, 7}, {8, 6}, {1, 1}, {5, 16}};

// A blit of the table of effects: destination x, y, width, height, source x, y.
using Blit = std::array<int, 6>;

// The picture that a run of an effect has made so far, as source pixels; kNothing where nothing was drawn.
class Board
{
public:
    static constexpr int kNothing = -1;

    explicit Board(CSize size) : m_size(size), m_pixels(size.cx * size.cy, kNothing) {}
    bool operator==(const Board&) const = default;

    void Copy(const Blit& blit)
    {
        const auto [x, y, w, h, xSource, ySource] = blit;
        for (int row = 0; row < std::min<int>(h, m_size.cy); ++row)
            for (int column = 0; column < std::min<int>(w, m_size.cx); ++column)
                if (IsInside(x + column, y + row) && IsInside(xSource + column, ySource + row))
                    m_pixels[Index(x + column, y + row)] = Index(xSource + column, ySource + row);
    }

    [[nodiscard]] bool IsInside(int x, int y) const
    {
        return x >= 0 && y >= 0 && x < m_size.cx && y < m_size.cy;
    }
    [[nodiscard]] int At(int x, int y) const { return m_pixels[Index(x, y)]; }
    [[nodiscard]] CSize Size() const { return m_size; }

private:
    [[nodiscard]] int Index(int x, int y) const { return y * m_size.cx + x; }
    friend bool operator==(const CSize& a, const CSize& b) { return a.cx == b.cx && a.cy == b.cy; }

    CSize m_size;
    std::vector<int> m_pixels;
};

// Plays the table of reveal effects, one board for each frame.
std::vector<Board> PlayTable(int effect, CSize image, int step)
{
    const int W = image.cx;
    const int H = image.cy;
    const int s = std::clamp(step, 1, 100);
    const int limits[] = {0, H, H, W, W, H / 2, W / 2, H, H, W, W, H / 2, W / 2, H, W, H, W, s, s};
    int c = 0;
    bool isSwept = false;
    const auto advance = [&](int end) {
        c += s;
        isSwept = isSwept || c > end;
        c = std::min(c, end);
        return true;
    };
    std::vector<Board> frames;
    Board board(image);
    bool isLast = false;
    for (int n = 0; !isLast; n += effect <= 14 ? s : 1) {
        isLast = n > limits[effect];
        n = std::min(n, limits[effect]);
        const std::vector<Blit> blits[] = {
            {},
            {{0, n, W, s, 0, n}},
            {{0, H - n, W, s, 0, H - n}},
            {{n, 0, s, H, n, 0}},
            {{W - n, 0, s, H, W - n, 0}},
            {{0, n, W, s, 0, n}, {0, H - n, W, n, 0, H - n}},
            {{n, 0, s, H, n, 0}, {W - n, 0, s, H, W - n, 0}},
            {{0, 0, W, n + s, 0, H - n}},
            {{0, H - n, W, n, 0, 0}},
            {{0, 0, n + s, H, W - n, 0}},
            {{W - n, 0, n, H, 0, 0}},
            {{0, 0, W, n + s, 0, H / 2 - n}, {0, H - n, W, n, 0, H / 2}},
            {{0, 0, n + s, H, W / 2 - n, 0}, {W - n, 0, n, H, W / 2, 0}},
            {{0, 0, W / 2, n + s, 0, H - n}, {W / 2, H - n, W, n, W / 2, 0}},
            {{0, 0, n + s, H / 2, W - n, 0}, {W - n, H / 2, n, H / 2, 0, H / 2}},
        };
        if (effect <= 14)
            for (const Blit& blit : blits[effect])
                board.Copy(blit);
        while (effect == 15 && !isSwept) {
            board.Copy({c, 0, s, n + 1, c, H - n});
            advance(W);
            board.Copy({c, H - n, s, n, c, 0});
            advance(W);
        }
        while (effect == 16 && !isSwept) {
            board.Copy({0, c, n + 1, s, W - n, c});
            advance(H);
            board.Copy({W - n, c, n, s, 0, c});
            advance(H);
        }
        for (int i = n; effect == 17 && i < W; i += s)
            board.Copy({i, 0, 1, H, i, 0});
        for (int i = n; effect == 18 && i < H; i += s)
            board.Copy({0, i, W, 1, 0, i});
        frames.push_back(board);
    }
    return frames;
}

class DibTransitions : public samples::DibFixture
{
protected:
    void Fill(CSize size, WORD bitCount = 24)
    {
        DibFixture::Fill({.bitCount = bitCount, .width = size.cx, .height = size.cy});
    }

    [[nodiscard]] DibSurface Surface() const
    {
        return {static_cast<int>(m_dib.GetWidth()) + kMargin, static_cast<int>(m_dib.GetHeight()) + kMargin};
    }

    // What a surface shows on which the image was drawn at kAt like the board says, with the background where
    // it says nothing.
    [[nodiscard]] support::PixelModel Model(const Board& board) const
    {
        return [this, &board](int x, int y) {
            const CPoint point = CPoint(x, y) - kAt;
            const int source =
                board.IsInside(point.x, point.y) ? board.At(point.x, point.y) : Board::kNothing;
            if (source == Board::kNothing)
                return DibSurface::kBackground;
            return samples::ShownColor(m_dib.GetBitmap(), source % board.Size().cx, source / board.Size().cx);
        };
    }

    // The image's area in one colour, the background around it.
    [[nodiscard]] support::PixelModel Plain(COLORREF color) const
    {
        const CRect area(kAt, CSize(m_dib.GetWidth(), m_dib.GetHeight()));
        return [area, color](int x, int y) {
            return area.PtInRect(CPoint(x, y)) ? color : DibSurface::kBackground;
        };
    }
};

Board WholeImage(CSize size)
{
    Board board(size);
    board.Copy({0, 0, static_cast<int>(size.cx), static_cast<int>(size.cy), 0, 0});
    return board;
}

} // namespace

TEST_F(DibTransitions, RevealFramesAreThoseOfTheTable)
{
    for (const CSize size : kSizes) {
        Fill(size);
        for (int effect = kFirstEffect; effect <= kLastFrameEffect; ++effect) {
            for (const int step : kSteps) {
                SCOPED_TRACE(testing::Message() << "effect " << effect << ", step " << step << ", image "
                                                << size.cx << " x " << size.cy);
                const std::vector<Board> wanted = PlayTable(effect, size, step);
                VEffectFrames frames(VEffectFrames::Kind::Reveal, effect, size, step);
                std::vector<VEffectPart> parts;
                Board board(size);
                size_t count = 0;
                while (frames.Next(parts)) {
                    for (const VEffectPart& part : parts)
                        board.Copy({static_cast<int>(part.dest.left), static_cast<int>(part.dest.top),
                                    part.dest.Width(), part.dest.Height(), static_cast<int>(part.source.x),
                                    static_cast<int>(part.source.y)});
                    // A long step of a blind only adds frames without blits.
                    ASSERT_TRUE(board == wanted[std::min(count, wanted.size() - 1)]) << "frame " << count;
                    ++count;
                }
                EXPECT_TRUE(effect >= 17 || count == wanted.size()) << count;
                DibSurface surface = Surface();
                EXPECT_TRUE(m_dib.Display(effect, &surface.DC(), kAt.x, kAt.y, step, 0, SRCCOPY));
                EXPECT_TRUE(support::PixelsMatch(surface, Model(wanted.back())));
            }
        }
    }
}

TEST_F(DibTransitions, WipesCoverTheImageAndNothingElse)
{
    for (const CSize size : kSizes) {
        Fill(size, 8);
        for (int effect = kFirstEffect; effect <= kMosaicEffect; ++effect) {
            for (const int step : {1, 2, 3, 5, 40, INT_MAX}) {
                SCOPED_TRACE(testing::Message() << "effect " << effect << ", step " << step);
                DibSurface surface = Surface();
                EXPECT_TRUE(m_dib.Clear(effect, &surface.DC(), kAt.x, kAt.y, step, 0));
                EXPECT_TRUE(support::PixelsMatch(surface, Plain(::GetSysColor(COLOR_WINDOW))));
            }
        }
    }
}

TEST_F(DibTransitions, FirstWipeGrowsAsABandBelowItsFirstStep)
{
    VEffectFrames frames(VEffectFrames::Kind::Wipe, 1, {13, 7}, 2);
    std::vector<VEffectPart> parts;
    std::vector<CRect> bands;
    while (frames.Next(parts))
        bands.push_back(parts.empty() ? CRect() : parts[0].dest);
    EXPECT_EQ(bands, (std::vector<CRect>{{0, 0, 13, 2}, {}, {0, 2, 13, 4}, {0, 2, 13, 6}, {0, 2, 13, 7}}));
}

TEST_F(DibTransitions, MosaicCoversTheImageWithPartialBlocks)
{
    Fill({13, 7});
    for (const int block : {1, 4, 7, 100, INT_MAX}) {
        DibSurface surface = Surface();
        EXPECT_TRUE(m_dib.Display(kMosaicEffect, &surface.DC(), kAt.x, kAt.y, block, 0, SRCCOPY));
        EXPECT_TRUE(support::PixelsMatch(surface, Model(WholeImage({13, 7})))) << block;
    }
}

TEST_F(DibTransitions, MosaicLosesNoBlockWhateverTheRandomNumbers)
{
    EXPECT_EQ(VMosaicOrder::Position(10, 0), 0U);
    EXPECT_EQ(VMosaicOrder::Position(10, 3276), 0U);
    EXPECT_EQ(VMosaicOrder::Position(10, 3277), 1U);
    EXPECT_EQ(VMosaicOrder::Position(10, 32766), 9U);
    EXPECT_EQ(VMosaicOrder::Position(10, 32767), 10U);
    constexpr int kNumbers[][4] = {
        {0, 0, 0, 0}, {32767, 32767, 32767, 32767}, {0, 32767, 20000, 32767}, {32767, 5, 32766, 9000}};
    for (const auto& numbers : kNumbers) {
        VMosaicOrder order({13, 7}, 4);
        ASSERT_TRUE(order);
        EXPECT_EQ(order.Left(), 8U);
        std::set<std::pair<LONG, LONG>> corners;
        int area = 0;
        for (size_t i = 0; order.Left() > 0; ++i) {
            const CRect block = order.Next(numbers[i % 4]);
            corners.insert({block.left, block.top});
            area += block.Width() * block.Height();
        }
        EXPECT_EQ(corners.size(), 8U);
        EXPECT_EQ(area, 13 * 7);
    }
}

TEST_F(DibTransitions, RevealsUseTheRasterOperation)
{
    Fill({13, 7});
    for (const int effect : {3, 8, 17, kMosaicEffect}) {
        DibSurface surface = Surface();
        EXPECT_TRUE(m_dib.Display(effect, &surface.DC(), kAt.x, kAt.y, 4, 0, NOTSRCCOPY));
        const COLORREF shown = samples::ShownColor(m_dib.GetBitmap(), 2, 5);
        EXPECT_EQ(surface.Pixel(kAt + CSize(2, 5)), ~shown & 0xFFFFFF) << effect;
    }
}

TEST_F(DibTransitions, NothingIsDrawnForWhatCannotBePlayed)
{
    DibSurface surface(40, 40);
    const auto isRefused = [&](int effect, CDC* pDC, int x, int step) {
        return !m_dib.Display(effect, pDC, x, 0, step, 0, SRCCOPY) &&
               !m_dib.Clear(effect, pDC, x, 0, step, 0);
    };
    for (int effect = kFirstEffect; effect <= kFadeEffect; ++effect)
        EXPECT_TRUE(isRefused(effect, &surface.DC(), 0, 1)) << "empty object, effect " << effect;
    Fill({13, 7});
    CDC noDC;
    for (int effect = kFirstEffect; effect <= kFadeEffect; ++effect) {
        EXPECT_TRUE(isRefused(effect, nullptr, 0, 1)) << effect;
        EXPECT_TRUE(isRefused(effect, &noDC, 0, 1)) << effect;
    }
    for (const int effect : {INT_MIN, -1, 0, 21, INT_MAX})
        EXPECT_TRUE(isRefused(effect, &surface.DC(), 0, 1)) << effect;
    EXPECT_TRUE(isRefused(1, &surface.DC(), INT_MAX, 1));
    EXPECT_TRUE(isRefused(kMosaicEffect, &surface.DC(), 0, 0));
    EXPECT_TRUE(isRefused(kMosaicEffect, &surface.DC(), 0, INT_MIN));
    EXPECT_EQ(surface.Count(DibSurface::kBackground), 40 * 40);
}

TEST_F(DibTransitions, TheDeviceContextStaysAsItWas)
{
    Fill({13, 7}, 8);
    DibSurface surface = Surface();
    const HDC hDC = surface.DC().m_hDC;
    const auto selected = [hDC] {
        std::vector<HGDIOBJ> objects;
        for (const UINT type : {OBJ_PEN, OBJ_BRUSH, OBJ_PAL, OBJ_BITMAP})
            objects.push_back(::GetCurrentObject(hDC, type));
        return objects;
    };
    const std::vector<HGDIOBJ> before = selected();
    for (const int effect : {1, 15, 17, kMosaicEffect, kFadeEffect}) {
        EXPECT_TRUE(m_dib.Display(effect, &surface.DC(), 0, 0, 3, 0, SRCCOPY));
        EXPECT_TRUE(m_dib.Clear(effect, &surface.DC(), 0, 0, 3, 0));
        EXPECT_EQ(selected(), before) << effect;
    }
}
