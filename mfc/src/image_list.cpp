#include <afxcmn.h>

#include "archive_stream.h"
#include "image_list_traits.h"

#include <memory>
#include <utility>

namespace
{

HIMAGELIST HandleOf(const CImageList* list)
{
    return list == nullptr ? nullptr : list->m_hImageList;
}

HBITMAP BitmapOf(const CBitmap* bitmap)
{
    return bitmap == nullptr ? nullptr : static_cast<HBITMAP>(bitmap->m_hObject);
}

HDC DCOf(const CDC* dc)
{
    return dc == nullptr ? nullptr : dc->m_hDC;
}

} // namespace

namespace afx_subset
{

CImageList* HandleTraits<CImageList>::Make(HIMAGELIST handle)
{
    auto* list = new CImageList;
    list->m_hImageList = handle;
    return list;
}

void HandleTraits<CImageList>::Drop(CImageList* object)
{
    object->m_hImageList = nullptr;
    delete object;
}

CImageList* NewImageList(HIMAGELIST handle)
{
    if (handle == nullptr)
        return nullptr;
    auto list = std::make_unique<CImageList>();
    list->Attach(handle);
    return list.release();
}

} // namespace afx_subset

IMPLEMENT_DYNCREATE(CImageList, CObject)

CImageList::~CImageList()
{
    DeleteImageList();
}

BOOL CImageList::Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow)
{
    return AdoptNew(ImageList_Create(cx, cy, nFlags, nInitial, nGrow));
}

BOOL CImageList::Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask)
{
    return Create(MAKEINTRESOURCE(nBitmapID), cx, nGrow, crMask);
}

BOOL CImageList::Create(CImageList& imagelist1, int nImage1, CImageList& imagelist2, int nImage2, int dx,
                        int dy)
{
    return AdoptNew(
        ImageList_Merge(imagelist1.m_hImageList, nImage1, imagelist2.m_hImageList, nImage2, dx, dy));
}

BOOL CImageList::Create(CImageList* pImageList)
{
    return AdoptNew(ImageList_Duplicate(HandleOf(pImageList)));
}

BOOL CImageList::DeleteImageList()
{
    return m_hImageList != nullptr && ImageList_Destroy(Detach());
}

CImageList* CImageList::FromHandle(HIMAGELIST hImageList)
{
    CImageList* const list = afx_subset::ImageListMap().FromHandle(hImageList);
    // A temporary object whose list was deleted or detached stands for whichever list got the same handle.
    if (list != nullptr)
        list->m_hImageList = hImageList;
    return list;
}

CImageList* CImageList::FromHandlePermanent(HIMAGELIST hImageList)
{
    return afx_subset::ImageListMap().Permanent(hImageList);
}

void CImageList::DeleteTempMap()
{
    afx_subset::ImageListMap().DropTemporaries();
}

int CImageList::GetImageCount() const
{
    return ImageList_GetImageCount(m_hImageList);
}

BOOL CImageList::SetImageCount(UINT uNewCount)
{
    return ImageList_SetImageCount(m_hImageList, uNewCount);
}

COLORREF CImageList::SetBkColor(COLORREF cr)
{
    return ImageList_SetBkColor(m_hImageList, cr);
}

COLORREF CImageList::GetBkColor() const
{
    return ImageList_GetBkColor(m_hImageList);
}

BOOL CImageList::GetImageInfo(int nImage, IMAGEINFO* pImageInfo) const
{
    return pImageInfo != nullptr && ImageList_GetImageInfo(m_hImageList, nImage, pImageInfo);
}

int CImageList::Add(CBitmap* pbmImage, CBitmap* pbmMask)
{
    return ImageList_Add(m_hImageList, BitmapOf(pbmImage), BitmapOf(pbmMask));
}

int CImageList::Add(CBitmap* pbmImage, COLORREF crMask)
{
    return ImageList_AddMasked(m_hImageList, BitmapOf(pbmImage), crMask);
}

int CImageList::Add(HICON hIcon)
{
    return ImageList_AddIcon(m_hImageList, hIcon);
}

BOOL CImageList::Remove(int nImage)
{
    return ImageList_Remove(m_hImageList, nImage);
}

BOOL CImageList::Replace(int nImage, CBitmap* pbmImage, CBitmap* pbmMask)
{
    return ImageList_Replace(m_hImageList, nImage, BitmapOf(pbmImage), BitmapOf(pbmMask));
}

int CImageList::Replace(int nImage, HICON hIcon)
{
    return ImageList_ReplaceIcon(m_hImageList, nImage, hIcon);
}

BOOL CImageList::Copy(int iDst, int iSrc, UINT uFlags)
{
    return ImageList_Copy(m_hImageList, iDst, m_hImageList, iSrc, uFlags);
}

BOOL CImageList::Copy(int iDst, CImageList* pSrc, int iSrc, UINT uFlags)
{
    return ImageList_Copy(m_hImageList, iDst, HandleOf(pSrc), iSrc, uFlags);
}

HICON CImageList::ExtractIcon(int nImage)
{
    return ImageList_GetIcon(m_hImageList, nImage, ILD_NORMAL);
}

BOOL CImageList::SetOverlayImage(int nImage, int nOverlay)
{
    return ImageList_SetOverlayImage(m_hImageList, nImage, nOverlay);
}

BOOL CImageList::Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle)
{
    return ImageList_Draw(m_hImageList, nImage, DCOf(pDC), pt.x, pt.y, nStyle);
}

BOOL CImageList::DrawEx(CDC* pDC, int nImage, POINT pt, SIZE sz, COLORREF clrBk, COLORREF clrFg, UINT nStyle)
{
    return ImageList_DrawEx(m_hImageList, nImage, DCOf(pDC), pt.x, pt.y, sz.cx, sz.cy, clrBk, clrFg, nStyle);
}

BOOL CImageList::BeginDrag(int nImage, CPoint ptHotSpot)
{
    return ImageList_BeginDrag(m_hImageList, nImage, ptHotSpot.x, ptHotSpot.y);
}

void CImageList::EndDrag()
{
    ImageList_EndDrag();
}

BOOL CImageList::DragMove(CPoint pt)
{
    return ImageList_DragMove(pt.x, pt.y);
}

BOOL CImageList::SetDragCursorImage(int nDrag, CPoint ptHotSpot)
{
    return ImageList_SetDragCursorImage(m_hImageList, nDrag, ptHotSpot.x, ptHotSpot.y);
}

BOOL CImageList::DragShowNolock(BOOL bShow)
{
    return ImageList_DragShowNolock(bShow);
}

CImageList* CImageList::GetDragImage(LPPOINT lpPoint, LPPOINT lpPointHotSpot)
{
    return FromHandle(ImageList_GetDragImage(lpPoint, lpPointHotSpot));
}

BOOL CImageList::DragEnter(CWnd* pWndLock, CPoint point)
{
    return ImageList_DragEnter(pWndLock == nullptr ? nullptr : pWndLock->m_hWnd, point.x, point.y);
}

BOOL CImageList::DragLeave(CWnd* pWndLock)
{
    return ImageList_DragLeave(pWndLock == nullptr ? nullptr : pWndLock->m_hWnd);
}

BOOL CImageList::Create(LPCTSTR lpszBitmapID, int cx, int nGrow, COLORREF crMask)
{
    const HINSTANCE module = AfxFindResourceHandle(lpszBitmapID, RT_BITMAP);
    return AdoptNew(ImageList_LoadBitmap(module, lpszBitmapID, cx, nGrow, crMask));
}

BOOL CImageList::AdoptNew(HIMAGELIST created)
{
    if (Attach(created))
        return TRUE;
    if (created != nullptr)
        ImageList_Destroy(created);
    return FALSE;
}

BOOL CImageList::Attach(HIMAGELIST hImageList)
{
    if (hImageList == nullptr || m_hImageList != nullptr)
        return FALSE;
    m_hImageList = hImageList;
    afx_subset::ImageListMap().SetPermanent(hImageList, this);
    return TRUE;
}

HIMAGELIST CImageList::Detach()
{
    if (m_hImageList != nullptr)
        afx_subset::ImageListMap().RemoveHandle(m_hImageList);
    return std::exchange(m_hImageList, nullptr);
}

HIMAGELIST CImageList::GetSafeHandle() const
{
    return HandleOf(this);
}

CImageList::operator HIMAGELIST() const
{
    return HandleOf(this);
}

BOOL CImageList::DrawIndirect(IMAGELISTDRAWPARAMS* pimldp)
{
    if (pimldp == nullptr)
        return FALSE;
    pimldp->cbSize = sizeof(*pimldp);
    pimldp->himl = m_hImageList;
    return ImageList_DrawIndirect(pimldp);
}

BOOL CImageList::DrawIndirect(CDC* pDC, int nImage, POINT pt, SIZE sz, POINT ptOrigin, UINT fStyle,
                              DWORD dwRop, COLORREF rgbBack, COLORREF rgbFore, DWORD fState, DWORD Frame,
                              COLORREF crEffect)
{
    IMAGELISTDRAWPARAMS parameters = {};
    parameters.i = nImage;
    parameters.hdcDst = DCOf(pDC);
    parameters.x = pt.x;
    parameters.y = pt.y;
    parameters.cx = sz.cx;
    parameters.cy = sz.cy;
    parameters.xBitmap = ptOrigin.x;
    parameters.yBitmap = ptOrigin.y;
    parameters.rgbBk = rgbBack;
    parameters.rgbFg = rgbFore;
    parameters.fStyle = fStyle;
    parameters.dwRop = dwRop;
    parameters.fState = fState;
    parameters.Frame = Frame;
    parameters.crEffect = crEffect;
    return DrawIndirect(&parameters);
}

BOOL CImageList::Read(CArchive* pArchive)
{
    if (pArchive == nullptr || m_hImageList != nullptr)
        return FALSE;
    afx_subset::ArchiveStream stream(*pArchive);
    const HIMAGELIST list = ImageList_Read(&stream);
    if (!stream.Failed())
        return AdoptNew(list);
    if (list != nullptr)
        ImageList_Destroy(list);
    return FALSE;
}

BOOL CImageList::Write(CArchive* pArchive)
{
    if (pArchive == nullptr || m_hImageList == nullptr)
        return FALSE;
    afx_subset::ArchiveStream stream(*pArchive);
    return ImageList_Write(m_hImageList, &stream) && !stream.Failed();
}
