#include "vgui/controls/bmp_static.h"

#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/gui_manager.h"
#include "vgui/imaging/dib.h"
#include "vgui/imaging/dib_block.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace
{

constexpr int kFenceLines = 2;
constexpr int kFadedOpacity = 160; // of the background over a disabled control's picture

// The image of a bitmap; null when it has none.
std::unique_ptr<CDib> DibOf(HBITMAP hBitmap)
{
    auto dib = std::make_unique<CDib>();
    if (hBitmap == nullptr || !dib->Create(hBitmap, static_cast<HPALETTE>(nullptr)))
        return nullptr;
    return dib;
}

HBITMAP HandleOf(const CDib& dib)
{
    return dib.GetBitmap() != nullptr ? static_cast<HBITMAP>(dib.GetBitmap()->m_hObject) : nullptr;
}

// The bytes of the pixels. The width is positive and the depth a known one.
uint64_t PixelBytes(const BITMAPINFOHEADER& header)
{
    if (header.biCompression == BI_RLE8 || header.biCompression == BI_RLE4)
        return header.biSizeImage;
    return uint64_t{DIBRowBytes(static_cast<ULONG>(header.biWidth), header.biBitCount)} *
           static_cast<uint64_t>(std::abs(int64_t{header.biHeight}));
}

// Whether a file is a BMP file with all of its pixels. Not every system looks before it reads.
bool IsWholeBmpFile(LPCWSTR fileName)
{
    CFile file;
    BITMAPFILEHEADER fileHeader = {};
    BITMAPINFOHEADER header = {}; // with which all kinds but the oldest one begin
    ULONGLONG length = 0;
    if (fileName == nullptr || !file.Open(fileName, CFile::modeRead | CFile::shareDenyNone))
        return false;
    TRY
    {
        file.Read(&fileHeader, sizeof fileHeader);
        file.Read(&header, sizeof header);
        length = file.GetLength();
    }
    CATCH_ALL(e)
    {
        return false;
    }
    END_CATCH_ALL
    return header.biSize >= sizeof header && header.biWidth > 0 && IsKnownDepth(header.biBitCount) &&
           fileHeader.bfOffBits <= length && PixelBytes(header) <= length - fileHeader.bfOffBits;
}

std::unique_ptr<CDib> ReadBmpFile(LPCWSTR fileName)
{
    if (!IsWholeBmpFile(fileName))
        return nullptr;
    const VOwnedBitmap bitmap(static_cast<HBITMAP>(
        ::LoadImage(nullptr, fileName, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)));
    return DibOf(bitmap.Get());
}

std::unique_ptr<CDib> ReadPictureFile(LPCWSTR fileName)
{
    if (std::unique_ptr<CDib> dib = ReadBmpFile(fileName))
        return dib;
    CDib picture;
    return picture.Load(CString(fileName)) ? DibOf(HandleOf(picture)) : nullptr;
}

} // namespace

IMPLEMENT_DYNAMIC(VBmpStatic, CStatic)

BEGIN_MESSAGE_MAP(VBmpStatic, CStatic)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_ENABLE()
    ON_WM_SIZE()
    ON_MESSAGE(WM_PRINTCLIENT, &VBmpStatic::OnPrintClient)
    ON_MESSAGE(WM_SETTEXT, &VBmpStatic::OnSetText)
END_MESSAGE_MAP()

VBmpStatic::VBmpStatic() = default;
VBmpStatic::~VBmpStatic() = default;

// ---- The picture

BOOL VBmpStatic::SetBmp(UINT nResourceID)
{
    const LPCTSTR name = MAKEINTRESOURCE(nResourceID);
    const VOwnedBitmap bitmap(static_cast<HBITMAP>(
        ::LoadImage(AfxFindResourceHandle(name, RT_BITMAP), name, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    return Take(DibOf(bitmap.Get()));
}

BOOL VBmpStatic::SetBmp(LPCWSTR fileName)
{
    return Take(ReadPictureFile(fileName));
}

BOOL VBmpStatic::SetBmp(HBITMAP hBitmap)
{
    return Take(DibOf(hBitmap));
}

BOOL VBmpStatic::SetDib(const CDib* pDib)
{
    if (pDib == nullptr)
        return FALSE;
    if (pDib->IsEmpty())
        return Take(DibOf(HandleOf(*pDib)));
    auto copy = std::make_unique<CDib>();
    VOwnedGlobal block = DuplicateDib(pDib->GetHandle());
    const int isShown = copy->Attach(block.Get());
    // A block that cannot be shown has been taken as well.
    if (copy->GetHandle() == block.Get())
        static_cast<void>(block.Release());
    return Take(isShown ? std::move(copy) : nullptr);
}

BOOL VBmpStatic::LoadBitmapFromBMPFile(LPCWSTR fileName)
{
    return Take(ReadBmpFile(fileName));
}

void VBmpStatic::FreeResources()
{
    m_dib.reset();
    Refresh();
}

BOOL VBmpStatic::Take(std::unique_ptr<CDib> dib)
{
    if (dib == nullptr)
        return FALSE;
    m_dib = std::move(dib);
    Refresh();
    return TRUE;
}

// ---- How it is shown

void VBmpStatic::SetSelect(BOOL bSelect)
{
    m_bSelect = bSelect != FALSE;
    Refresh();
}

void VBmpStatic::SetScaling(Scaling scaling)
{
    m_scaling = scaling;
    Refresh();
}

void VBmpStatic::Refresh()
{
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
}

CRect VBmpStatic::PictureRect(const CRect& client, CSize picture, Scaling scaling)
{
    CSize size = picture;
    if (scaling == Scaling::Fit && picture.cx > 0 && picture.cy > 0) {
        const double ratio = std::min(static_cast<double>(client.Width()) / picture.cx,
                                      static_cast<double>(client.Height()) / picture.cy);
        size.cx = std::max(1, static_cast<int>(picture.cx * ratio + 0.5));
        size.cy = std::max(1, static_cast<int>(picture.cy * ratio + 0.5));
    }
    const CPoint corner(client.left + (client.Width() - size.cx) / 2,
                        client.top + (client.Height() - size.cy) / 2);
    return {corner, size};
}

void VBmpStatic::Draw(CDC& dc)
{
    CRect client;
    GetClientRect(client);
    const COLORREF background = VGGetParentBkColor(this);
    dc.FillSolidRect(client, background);
    if (m_dib != nullptr)
        DrawPicture(dc, client);
    if (!IsWindowEnabled())
        VGAlphaBlendColorToRect(&dc, client, kFadedOpacity, background, VGNoColor);
    if (m_bSelect)
        DrawOutFence(&dc, client);
}

void VBmpStatic::DrawPicture(CDC& dc, const CRect& client)
{
    // The fence does not hide the picture's edge.
    CRect area = client;
    area.DeflateRect(kFenceLines, kFenceLines);
    if (area.IsRectEmpty())
        return;
    const CSize size(m_dib->GetWidth(), m_dib->GetHeight());
    const CRect place = PictureRect(area, size, m_scaling);
    const int saved = dc.SaveDC();
    dc.IntersectClipRect(area);
    if (place.Size() == size) {
        m_dib->Display(&dc, place.left, place.top, SRCCOPY);
    } else {
        dc.SetStretchBltMode(HALFTONE);
        // This mode asks for it. Only a GDI that dithers here shows the difference, so no test does.
        dc.SetBrushOrg(0, 0);
        m_dib->Display(&dc, place, CRect(CPoint(0, 0), size), SRCCOPY);
    }
    dc.RestoreDC(saved);
}

void VBmpStatic::DrawOutFence(CDC* pDC, const CRect& client)
{
    const COLORREF color = IsWindowEnabled() ? VGM.Common.clrHot : VGM.Common.clrGray;
    CRect line = client;
    for (int i = 0; i < kFenceLines; ++i, line.DeflateRect(1, 1))
        pDC->Draw3dRect(line, color, color);
}

// ---- Messages

void VBmpStatic::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    VBufferedDC buffer(dc, client);
    Draw(buffer);
}

LRESULT VBmpStatic::OnPrintClient(WPARAM wParam, LPARAM)
{
    if (CDC* const dc = CDC::FromHandle(reinterpret_cast<HDC>(wParam)))
        Draw(*dc);
    return 0;
}

BOOL VBmpStatic::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

void VBmpStatic::OnEnable(BOOL bEnable)
{
    CStatic::OnEnable(bEnable);
    Refresh();
}

void VBmpStatic::OnSize(UINT nType, int cx, int cy)
{
    CStatic::OnSize(nType, cx, cy);
    Refresh();
}

// Keeps the text without the standard control, which would draw it at once.
LRESULT VBmpStatic::OnSetText(WPARAM wParam, LPARAM lParam)
{
    return ::DefWindowProc(m_hWnd, WM_SETTEXT, wParam, lParam);
}
