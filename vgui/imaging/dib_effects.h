// The frames of the transition effects: which parts of an image are shown or wiped, and in what order. Plain
// arithmetic: no device context. Coordinates are relative to the image's top left corner.
#pragma once

#include <afxwin.h>
#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

inline constexpr int kFirstEffect = 1;
inline constexpr int kLastFrameEffect = 18; // the effects up to here are made of VEffectFrames
inline constexpr int kMosaicEffect = 19;
inline constexpr int kFadeEffect = 20;

// What one step of a frame does: the pixels of the image from source on go to dest; a wipe paints dest.
struct VEffectPart {
    CRect dest;
    CPoint source;
};

// The frames of one run of an effect from kFirstEffect to kLastFrameEffect.
class VEffectFrames
{
public:
    enum class Kind { Reveal, Wipe };

    // The image's sides must be from 1 to kMaxGdiCoordinate. A step below 1 counts as 1.
    VEffectFrames(Kind kind, int effect, CSize image, int step)
        : m_isWipe(kind == Kind::Wipe), m_effect(effect), m_image(image)
    {
        // A longer step than this makes no difference to what is seen.
        m_step = std::clamp<LONG>(step, 1, std::max(image.cx, image.cy) + 1);
    }

    // Puts the next frame into parts, in the order of drawing; false after the last frame. A wipe's parts lie
    // within the image; those of a reveal may reach beyond it, where there are no pixels to copy.
    bool Next(std::vector<VEffectPart>& parts)
    {
        if (m_isEnded)
            return false;
        parts.clear();
        if (m_progress > Limit()) {
            m_progress = Limit();
            m_isEnded = true;
        }
        MakeFrame(m_progress, parts);
        if (m_isWipe)
            Confine(parts);
        m_progress += m_effect <= 14 ? m_step : 1;
        return true;
    }

private:
    using Parts = std::vector<VEffectPart>;

    [[nodiscard]] LONG Limit() const
    {
        switch (m_effect) {
        case 5:
        case 11:
            return m_image.cy / 2;
        case 6:
        case 12:
            return m_image.cx / 2;
        case 3:
        case 4:
        case 9:
        case 10:
        case 14:
        case 16:
            return m_image.cx;
        case 17:
        case 18:
            return m_step;
        default:
            return m_image.cy;
        }
    }

    static void Add(Parts& parts, LONG x, LONG y, LONG width, LONG height, LONG xSource, LONG ySource)
    {
        parts.push_back({CRect(x, y, x + width, y + height), CPoint(xSource, ySource)});
    }

    // n: how far the effect has come.
    void MakeFrame(LONG n, Parts& parts)
    {
        const LONG w = m_image.cx;
        const LONG h = m_image.cy;
        const LONG s = m_step;
        switch (m_effect) {
        case 1: // bands from the top
            if (m_isWipe)
                parts.push_back({CRect(0, std::min(n, s), w, std::max(n, s)), CPoint(0, 0)});
            else
                Add(parts, 0, n, w, s, 0, n);
            break;
        case 2: // bands from the bottom
            Add(parts, 0, h - n, w, s, 0, h - n);
            break;
        case 3: // bands from the left
            Add(parts, n, 0, s, h, n, 0);
            break;
        case 4: // bands from the right
            Add(parts, w - n, 0, s, h, w - n, 0);
            break;
        case 5: // top and bottom towards the middle
            Add(parts, 0, n, w, s, 0, n);
            Add(parts, 0, h - n, w, n, 0, h - n);
            break;
        case 6: // both sides towards the middle
            Add(parts, n, 0, s, h, n, 0);
            Add(parts, w - n, 0, s, h, w - n, 0);
            break;
        case 7: // slides down from the top edge
            Add(parts, 0, 0, w, n + s, 0, h - n);
            break;
        case 8: // slides up from the bottom edge
            Add(parts, 0, h - n, w, n, 0, 0);
            break;
        case 9: // slides in from the left
            Add(parts, 0, 0, n + s, h, w - n, 0);
            break;
        case 10: // slides in from the right
            Add(parts, w - n, 0, n, h, 0, 0);
            break;
        case 11: // the halves slide in from top and bottom
            Add(parts, 0, 0, w, n + s, 0, h / 2 - n);
            Add(parts, 0, h - n, w, n, 0, h / 2);
            break;
        case 12: // the halves slide in from left and right
            Add(parts, 0, 0, n + s, h, w / 2 - n, 0);
            Add(parts, w - n, 0, n, h, w / 2, 0);
            break;
        case 13: // the left half from the top, the right half from the bottom; the latter is w wide on
                 // purpose
            Add(parts, 0, 0, w / 2, n + s, 0, h - n);
            Add(parts, w / 2, h - n, w, n, w / 2, 0);
            break;
        case 14: // the top half from the left, the bottom half from the right
            Add(parts, 0, 0, n + s, h / 2, w - n, 0);
            // A wipe leaves no row out; a reveal of an odd height does.
            Add(parts, w - n, h / 2, n, m_isWipe ? h - h / 2 : h / 2, 0, h / 2);
            break;
        case 15: // alternate columns from the top and from the bottom
            BeginSweep();
            while (!m_isSweepEnded) {
                Add(parts, m_sweep, 0, s, n + 1, m_sweep, h - n);
                Sweep(w);
                Add(parts, m_sweep, h - n, s, n, m_sweep, 0);
                Sweep(w);
            }
            break;
        case 16: // alternate rows from the left and from the right
            BeginSweep();
            while (!m_isSweepEnded) {
                Add(parts, 0, m_sweep, n + 1, s, w - n, m_sweep);
                Sweep(h);
                Add(parts, w - n, m_sweep, n, s, 0, m_sweep);
                Sweep(h);
            }
            break;
        case 17: // venetian blind of columns
            for (LONG c = n; c < w; c += s)
                Add(parts, c, 0, 1, h, c, 0);
            break;
        case 18: // venetian blind of rows
            for (LONG r = n; r < h; r += s)
                Add(parts, 0, r, w, 1, 0, r);
            break;
        default:
            break;
        }
    }

    // A reveal sweeps over the image once, in its first frame; that the later frames go on from there and do
    // not begin anew is intended. A wipe has to reach everything.
    void BeginSweep()
    {
        if (m_isWipe) {
            m_sweep = 0;
            m_isSweepEnded = false;
        }
    }
    void Sweep(LONG length)
    {
        m_sweep += m_step;
        if (m_sweep > length) {
            m_sweep = length;
            m_isSweepEnded = true;
        }
    }

    void Confine(Parts& parts) const
    {
        const CRect image(CPoint(0, 0), m_image);
        std::erase_if(parts, [&](VEffectPart& part) { return !part.dest.IntersectRect(part.dest, image); });
    }

    bool m_isWipe;
    int m_effect;
    CSize m_image;
    LONG m_step = 1;
    LONG m_progress = 0;
    bool m_isEnded = false;
    LONG m_sweep = 0;
    bool m_isSweepEnded = false;
};

// The blocks of a mosaic in random order.
class VMosaicOrder
{
public:
    // block: the side of a block, at least 1. The image is covered with blocks row by row; those at the right
    // and bottom edge may be smaller. Empty when memory is short.
    VMosaicOrder(CSize image, LONG block)
        : m_image(image), m_block(std::min(block, std::max(image.cx, image.cy))), m_columns(Blocks(image.cx))
    {
        const size_t count = m_columns * Blocks(image.cy);
        // One entry more: see Next.
        if (count < static_cast<DWORD>(-1))
            m_blocks.reset(new (std::nothrow) DWORD[count + 1]);
        if (m_blocks == nullptr)
            return;
        m_count = count;
        for (size_t i = 0; i < count; ++i)
            m_blocks[i] = static_cast<DWORD>(i);
    }

    explicit operator bool() const { return m_blocks != nullptr; }
    [[nodiscard]] size_t Left() const { return m_count; }

    // Which of count entries a random number from 0 to 32767 chooses. The largest number gives count, one
    // past the last entry; this is intended.
    static size_t Position(size_t count, int random)
    {
        return static_cast<size_t>(static_cast<double>(count) * (random / 32767.0));
    }

    // Takes a block out. There must be one left.
    CRect Next(int random)
    {
        // The entry past the last one repeats it, so whichever is chosen, no block is lost.
        m_blocks[m_count] = m_blocks[m_count - 1];
        const size_t chosen = std::min(Position(m_count, random), m_count);
        --m_count;
        return RectOf(std::exchange(m_blocks[chosen], m_blocks[m_count]));
    }

private:
    [[nodiscard]] size_t Blocks(LONG length) const
    {
        return static_cast<size_t>(length / m_block + (length % m_block != 0 ? 1 : 0));
    }

    [[nodiscard]] CRect RectOf(DWORD index) const
    {
        const LONG x = static_cast<LONG>(index % m_columns) * m_block;
        const LONG y = static_cast<LONG>(index / m_columns) * m_block;
        return {x, y, x + std::min(m_block, m_image.cx - x), y + std::min(m_block, m_image.cy - y)};
    }

    CSize m_image;
    LONG m_block;
    size_t m_columns;
    size_t m_count = 0;
    std::unique_ptr<DWORD[]> m_blocks; // indices, counted row by row; those that are left come first
};
