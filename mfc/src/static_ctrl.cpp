#include "control_message.h"

using afx_subset::Send;

IMPLEMENT_DYNAMIC(CStatic, CWnd)

CStatic::~CStatic()
{
    DestroyWindow();
}

BOOL CStatic::Create(LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create(WC_STATIC, lpszText, dwStyle, rect, pParentWnd, nID);
}

HICON CStatic::SetIcon(HICON hIcon)
{
    return Send<HICON>(this, STM_SETICON, hIcon);
}

HICON CStatic::GetIcon() const
{
    return Send<HICON>(this, STM_GETICON);
}

HBITMAP CStatic::SetBitmap(HBITMAP hBitmap)
{
    return Send<HBITMAP>(this, STM_SETIMAGE, IMAGE_BITMAP, hBitmap);
}

HBITMAP CStatic::GetBitmap() const
{
    return Send<HBITMAP>(this, STM_GETIMAGE, IMAGE_BITMAP);
}

HCURSOR CStatic::SetCursor(HCURSOR hCursor)
{
    return Send<HCURSOR>(this, STM_SETIMAGE, IMAGE_CURSOR, hCursor);
}

HCURSOR CStatic::GetCursor()
{
    return Send<HCURSOR>(this, STM_GETIMAGE, IMAGE_CURSOR);
}

HENHMETAFILE CStatic::SetEnhMetaFile(HENHMETAFILE hMetaFile)
{
    return Send<HENHMETAFILE>(this, STM_SETIMAGE, IMAGE_ENHMETAFILE, hMetaFile);
}

HENHMETAFILE CStatic::GetEnhMetaFile() const
{
    return Send<HENHMETAFILE>(this, STM_GETIMAGE, IMAGE_ENHMETAFILE);
}

void CStatic::DrawItem(LPDRAWITEMSTRUCT /*lpDrawItemStruct*/) {}

BOOL CStatic::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}
