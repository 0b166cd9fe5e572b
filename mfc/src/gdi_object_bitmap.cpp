// CBitmap.
#include <afxwin.h>

IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)

CBitmap::CBitmap() = default;

CBitmap* PASCAL CBitmap::FromHandle(HBITMAP hBitmap)
{
    return static_cast<CBitmap*>(CGdiObject::FromHandle(hBitmap));
}

CBitmap::operator HBITMAP() const
{
    return static_cast<HBITMAP>(GetSafeHandle());
}

BOOL CBitmap::LoadBitmap(LPCTSTR lpszResourceName)
{
    return Attach(::LoadBitmap(AfxFindResourceHandle(lpszResourceName, RT_BITMAP), lpszResourceName));
}

BOOL CBitmap::LoadBitmap(UINT nIDResource)
{
    return LoadBitmap(MAKEINTRESOURCE(nIDResource));
}

BOOL CBitmap::LoadOEMBitmap(UINT nIDBitmap)
{
    return Attach(::LoadBitmap(nullptr, MAKEINTRESOURCE(nIDBitmap)));
}

BOOL CBitmap::LoadMappedBitmap(UINT nIDBitmap, UINT nFlags, LPCOLORMAP lpColorMap, int nMapSize)
{
    const HINSTANCE module = AfxFindResourceHandle(MAKEINTRESOURCE(nIDBitmap), RT_BITMAP);
    return Attach(::CreateMappedBitmap(module, nIDBitmap, nFlags, lpColorMap, nMapSize));
}

BOOL CBitmap::CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits)
{
    return Attach(::CreateBitmap(nWidth, nHeight, nPlanes, nBitcount, lpBits));
}

BOOL CBitmap::CreateBitmapIndirect(LPBITMAP lpBitmap)
{
    return lpBitmap != nullptr && Attach(::CreateBitmapIndirect(lpBitmap));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight)
{
    return pDC != nullptr && Attach(::CreateCompatibleBitmap(pDC->m_hDC, nWidth, nHeight));
}

BOOL CBitmap::CreateDiscardableBitmap(CDC* pDC, int nWidth, int nHeight)
{
    return pDC != nullptr && Attach(::CreateDiscardableBitmap(pDC->m_hDC, nWidth, nHeight));
}

int CBitmap::GetBitmap(BITMAP* pBitMap)
{
    return GetObject(sizeof(BITMAP), pBitMap);
}

DWORD CBitmap::SetBitmapBits(DWORD dwCount, const void* lpBits)
{
    return ::SetBitmapBits(*this, dwCount, lpBits);
}

DWORD CBitmap::GetBitmapBits(DWORD dwCount, LPVOID lpBits) const
{
    return ::GetBitmapBits(*this, dwCount, lpBits);
}

CSize CBitmap::SetBitmapDimension(int nWidth, int nHeight)
{
    CSize old;
    ::SetBitmapDimensionEx(*this, nWidth, nHeight, &old);
    return old;
}

CSize CBitmap::GetBitmapDimension() const
{
    CSize size;
    ::GetBitmapDimensionEx(*this, &size);
    return size;
}
