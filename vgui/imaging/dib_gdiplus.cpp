// The DIB object's pictures of other formats, through GDI+.
#include "vgui/imaging/dib.h"

#include "vgui/foundation/gdi_scope.h"

#include <algorithm>
// GDI+ asks for these by their bare names.
using std::max;
using std::min;
#include <gdiplus.h>
#include <utility>

namespace
{

constexpr Gdiplus::ARGB kOpaqueBlack = 0xFF000000;

VOwnedBitmap GdiBitmap(Gdiplus::GpBitmap* picture)
{
    HBITMAP hBitmap = nullptr;
    Gdiplus::DllExports::GdipCreateHBITMAPFromBitmap(picture, &hBitmap, kOpaqueBlack);
    return VOwnedBitmap(hBitmap);
}

CSize PictureSize(Gdiplus::GpBitmap* picture)
{
    Gdiplus::REAL width = 0;
    Gdiplus::REAL height = 0;
    Gdiplus::DllExports::GdipGetImageDimension(picture, &width, &height);
    return {static_cast<int>(width), static_cast<int>(height)};
}

// A bitmap of that size with the source's depth, onto which the whole source is drawn.
VOwnedBitmap StretchedCopy(HBITMAP hSource, CSize size)
{
    BITMAP source = {};
    if (::GetObject(hSource, sizeof source, &source) == 0)
        return {};
    VOwnedBitmap copy(::CreateBitmap(size.cx, size.cy, source.bmPlanes, source.bmBitsPixel, nullptr));
    const VOwnedMemoryDC sourceDC(::CreateCompatibleDC(nullptr));
    const VOwnedMemoryDC copyDC(::CreateCompatibleDC(nullptr));
    const VSelectScope sourceBitmap(sourceDC.Get(), hSource);
    const VSelectScope copyBitmap(copyDC.Get(), copy.Get());
    if (!::StretchBlt(copyDC.Get(), 0, 0, size.cx, size.cy, sourceDC.Get(), 0, 0, source.bmWidth,
                      source.bmHeight, SRCCOPY))
        return {};
    return copy;
}

bool FileOpens(const CString& fileName)
{
    CFile file;
    return !fileName.IsEmpty() && file.Open(fileName, CFile::modeRead | CFile::shareDenyNone);
}

} // namespace

bool CDib::Load(const CString& fileName)
{
    if (!FileOpens(fileName))
        return false;
    Gdiplus::GpBitmap* picture = nullptr;
    Gdiplus::DllExports::GdipCreateBitmapFromFile(fileName, &picture);
    return TakeGdiPlusBitmap(picture);
}

bool CDib::Load(UINT resourceId)
{
    Gdiplus::GpBitmap* picture = nullptr;
    Gdiplus::DllExports::GdipCreateBitmapFromResource(AfxGetResourceHandle(), MAKEINTRESOURCEW(resourceId),
                                                      &picture);
    return TakeGdiPlusBitmap(picture);
}

bool CDib::TakeGdiPlusBitmap(void* gdiPlusBitmap)
{
    delete std::exchange(m_pBitmap, nullptr);
    // The deleted object held the DIB section.
    m_hBitmap = nullptr;
    auto* const picture = static_cast<Gdiplus::GpBitmap*>(gdiPlusBitmap);
    if (picture == nullptr)
        return false;
    VOwnedBitmap copy = StretchedCopy(GdiBitmap(picture).Get(), PictureSize(picture));
    Gdiplus::DllExports::GdipDisposeImage(picture);
    if (!copy)
        return false;
    m_pBitmap = new CBitmap;
    return m_pBitmap->Attach(copy.Release()) != FALSE;
}
