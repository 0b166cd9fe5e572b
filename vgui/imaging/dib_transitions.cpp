// Revealing and wiping the DIB object step by step.
#include "vgui/imaging/dib.h"

#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/within_memory.h"
#include "vgui/imaging/dib_draw.h"
#include "vgui/imaging/dib_effects.h"
#include "vgui/imaging/dib_pause.h"

namespace
{

// Whether an image of that size, not empty, can be drawn at a place of the DC.
bool CanPlay(const CDC* pDC, int x, int y, CSize image)
{
    return IsUsable(pDC) && AreGdiCoordinates({x, y}) && image.cx > 0 && image.cy > 0 &&
           image.cx <= kMaxGdiCoordinate && image.cy <= kMaxGdiCoordinate;
}

// What a reveal draws with: the image, copied part by part.
class Copier
{
public:
    Copier(CDC& dc, CPoint at, CBitmap* pBitmap, CPalette* pPalette, DWORD rop)
        : m_dc(dc), m_at(at), m_source(dc, BitmapHandle(pBitmap)),
          m_palette(dc.m_hDC, PaletteHandle(pPalette)), m_rop(rop)
    {
    }
    explicit operator bool() const { return static_cast<bool>(m_source); }
    void operator()(const CRect& part, CPoint from) const
    {
        ::BitBlt(m_dc.m_hDC, m_at.x + part.left, m_at.y + part.top, part.Width(), part.Height(),
                 m_source.Get(), from.x, from.y, m_rop);
    }

private:
    CDC& m_dc;
    CPoint m_at;
    VBitmapDC m_source;
    VPaletteScope m_palette;
    DWORD m_rop;
};

// What a wipe draws with: the window colour.
class Wiper
{
public:
    Wiper(CDC& dc, CPoint at) : m_dc(dc), m_at(at), m_brush(&dc, ::GetSysColor(COLOR_WINDOW)) {}
    // Not a Rectangle, which may leave out one of a single pixel.
    void operator()(const CRect& part) const
    {
        m_dc.PatBlt(m_at.x + part.left, m_at.y + part.top, part.Width(), part.Height(), PATCOPY);
    }

private:
    CDC& m_dc;
    CPoint m_at;
    VBrush m_brush;
};

// The loop of all effects that are made of frames. FALSE when memory for the parts of a frame is short.
template <class Draw>
int PlayFrames(VEffectFrames frames, DWORD delay, const Draw& draw)
{
    return VWithinMemory([&] {
        std::vector<VEffectPart> parts;
        while (frames.Next(parts)) {
            for (const VEffectPart& part : parts)
                draw(part);
            PauseTransition(delay);
        }
        return TRUE;
    });
}

template <class Draw>
int PlayMosaic(CSize image, int block, DWORD delay, const Draw& draw)
{
    VMosaicOrder order(image, block);
    if (!order)
        return FALSE;
    while (order.Left() > 0) {
        draw(order.Next(std::rand()));
        PauseTransition(delay);
    }
    return TRUE;
}

bool HasFrames(int effect)
{
    return effect >= kFirstEffect && effect <= kLastFrameEffect;
}

} // namespace

int CDib::Display(int effect, CDC* pDC, int x, int y, int step, DWORD delay, DWORD rop)
{
    const VFineTimerScope timer;
    if (effect == kMosaicEffect)
        return DisplayMosaicIn(pDC, x, y, step, delay, rop);
    if (effect == kFadeEffect)
        return DisplayFadeIn(pDC, x, y, step, delay);
    const CSize size(GetWidth(), GetHeight());
    if (!HasFrames(effect) || !CanPlay(pDC, x, y, size))
        return FALSE;
    const Copier copy(*pDC, CPoint(x, y), m_pBitmap, m_pPalette, rop);
    return copy && PlayFrames({VEffectFrames::Kind::Reveal, effect, size, step}, delay,
                              [&](const VEffectPart& part) { copy(part.dest, part.source); });
}

int CDib::Clear(int effect, CDC* pDC, int x, int y, int step, DWORD delay)
{
    const VFineTimerScope timer;
    if (effect == kMosaicEffect)
        return DisplayMosaicOut(pDC, x, y, step, delay);
    if (effect == kFadeEffect)
        return DisplayFadeOut(pDC, x, y, step, delay);
    const CSize size(GetWidth(), GetHeight());
    if (!HasFrames(effect) || !CanPlay(pDC, x, y, size))
        return FALSE;
    const Wiper wipe(*pDC, CPoint(x, y));
    return PlayFrames({VEffectFrames::Kind::Wipe, effect, size, step}, delay,
                      [&](const VEffectPart& part) { wipe(part.dest); });
}

int CDib::DisplayMosaicIn(CDC* pDC, int x, int y, int block, DWORD delay, DWORD rop)
{
    const CSize size(GetWidth(), GetHeight());
    if (block < 1 || !CanPlay(pDC, x, y, size))
        return FALSE;
    const Copier copy(*pDC, CPoint(x, y), m_pBitmap, m_pPalette, rop);
    return copy && PlayMosaic(size, block, delay, [&](const CRect& part) { copy(part, part.TopLeft()); });
}

int CDib::DisplayMosaicOut(CDC* pDC, int x, int y, int block, DWORD delay)
{
    const CSize size(GetWidth(), GetHeight());
    if (block < 1 || !CanPlay(pDC, x, y, size))
        return FALSE;
    return PlayMosaic(size, block, delay, Wiper(*pDC, CPoint(x, y)));
}
