// The DIB object's rectangles, composition and change of depth.
#include "vgui/imaging/dib.h"

#include "vgui/imaging/dib_block.h"

#include <afxext.h>

namespace
{

// Draws on a copy of a block through a DIB section. draw gets the section and answers whether it succeeded;
// then the copy holds the drawing. Empty on failure.
template <class Draw>
VOwnedGlobal DrawOnCopy(HGLOBAL hDib, Draw draw)
{
    const VLockedDib original(hDib);
    VOwnedGlobal copy = DuplicateDib(hDib);
    const VLockedDib dib(copy.Get());
    if (!original || !dib)
        return {};
    const VDibSection section(dib);
    if (!section || !draw(section))
        return {};
    section.CopyTo(dib);
    dib.RestoreMasks(original);
    return copy;
}

// A copy of a block with another one drawn on it.
VOwnedGlobal Merged(HGLOBAL hDib, HGLOBAL hOther, CPoint at)
{
    const VLockedDib other(hOther);
    if (!other)
        return {};
    const VDibSection source(other);
    const CRect all(0, 0, other.Width(), other.Height());
    return DrawOnCopy(hDib, [&](const VDibSection& section) { return section.Draw(at, source, all); });
}

bool PaintWhite(const VDibSection& section, const CRect& rect)
{
    const VOwnedMemoryDC dc(::CreateCompatibleDC(nullptr));
    const VSelectScope bitmap(dc.Get(), section.Bitmap());
    const VSelectScope brush(dc.Get(), ::GetStockObject(WHITE_BRUSH));
    const VSelectScope pen(dc.Get(), ::GetStockObject(WHITE_PEN));
    return ::Rectangle(dc.Get(), rect.left, rect.top, rect.right, rect.bottom) != FALSE;
}

} // namespace

HGLOBAL CDib::CopyRect(CRect rect) const
{
    const CWaitCursor wait;
    const VLockedDib dib(m_hDib);
    const LONGLONG width = LONGLONG{rect.right} - rect.left;
    const LONGLONG height = LONGLONG{rect.bottom} - rect.top;
    if (!dib || width <= 0 || height <= 0 || width > LONG_MAX || height > LONG_MAX)
        return nullptr;
    VOwnedGlobal block = NewDibLike(dib, rect.Width(), rect.Height());
    const VLockedDib target(block.Get());
    if (!target)
        return nullptr;
    const VDibSection section(target);
    if (!section.Draw({0, 0}, VDibSection(dib), rect))
        return nullptr;
    section.CopyTo(target);
    target.UpdateSizeImage();
    return block.Release();
}

int CDib::Crop(CRect rect)
{
    return ReplaceDib(CopyRect(rect));
}

int CDib::CutRect(CRect rect)
{
    const CWaitCursor wait;
    return ReplaceDib(DrawOnCopy(m_hDib, [&rect](const VDibSection& section) {
                          return PaintWhite(section, rect);
                      }).Release());
}

int CDib::MergeDib(HGLOBAL hOther, CPoint at)
{
    const CWaitCursor wait;
    return ReplaceDib(Merged(m_hDib, hOther, at).Release());
}

int CDib::ConvertFormat(WORD bitCount)
{
    if (IsEmpty())
        return FALSE;
    return GetBitCount() == bitCount ? TRUE : ReplaceDib(ConvertDIBFormat(m_hDib, bitCount).Release());
}
