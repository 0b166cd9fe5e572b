// CDC: the handles, their ownership and their state as a whole. CClientDC, CWindowDC, CPaintDC.
#include <afxwin.h>

#include "dc_both.h"
#include "gdi_handle_traits.h"

using afx_subset::DCMap;
using afx_subset::HasOwnOutput;
using afx_subset::OutputOf;

IMPLEMENT_DYNCREATE(CDC, CObject)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CWindowDC, CDC)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)

namespace afx_subset
{

CDC* HandleTraits<CDC>::Make(HDC handle)
{
    CDC* dc = new CDC;
    dc->m_hDC = handle;
    dc->m_hAttribDC = handle;
    return dc;
}

void HandleTraits<CDC>::Drop(CDC* dc)
{
    dc->m_hDC = nullptr;
    dc->m_hAttribDC = nullptr;
    delete dc;
}

} // namespace afx_subset

CDC::CDC() : m_hDC(nullptr), m_hAttribDC(nullptr) {}

CDC::~CDC()
{
    if (m_attached)
        DeleteDC();
}

CDC::operator HDC() const
{
    return GetSafeHdc();
}

HDC CDC::GetSafeHdc() const
{
    return this == nullptr ? nullptr : m_hDC;
}

CDC* PASCAL CDC::FromHandle(HDC hDC)
{
    CDC* dc = DCMap().FromHandle(hDC);
    // A temporary object that was detached stands again for the same value, which the system uses anew.
    if (dc != nullptr && dc->m_hDC == nullptr) {
        dc->m_hDC = hDC;
        dc->m_hAttribDC = hDC;
    }
    return dc;
}

void PASCAL CDC::DeleteTempMap()
{
    DCMap().DropTemporaries();
}

BOOL CDC::Attach(HDC hDC)
{
    ASSERT(m_hDC == nullptr);
    if (hDC == nullptr)
        return FALSE;
    // Only a program error gets here with another handle still held; that one goes on living without us.
    Detach();
    m_hDC = hDC;
    m_attached = true;
    DCMap().SetPermanent(hDC, this);
    SetAttribDC(hDC);
    return TRUE;
}

HDC CDC::Detach()
{
    const HDC handle = m_hDC;
    if (handle != nullptr && DCMap().Permanent(handle) == this)
        DCMap().RemoveHandle(handle);
    ReleaseAttribDC();
    m_hDC = nullptr;
    m_attached = false;
    m_abortProc = nullptr;
    return handle;
}

void CDC::SetAttribDC(HDC hDC)
{
    m_hAttribDC = hDC;
}

void CDC::SetOutputDC(HDC hDC)
{
    ASSERT(!m_attached);
    if (!m_attached)
        m_hDC = hDC;
}

void CDC::ReleaseAttribDC()
{
    m_hAttribDC = nullptr;
}

void CDC::ReleaseOutputDC()
{
    ASSERT(!m_attached);
    if (!m_attached)
        m_hDC = nullptr;
}

CWnd* CDC::GetWindow() const
{
    return CWnd::FromHandle(::WindowFromDC(m_hDC));
}

BOOL CDC::IsPrinting() const
{
    return m_hDC != nullptr && ::GetDeviceCaps(m_hDC, TECHNOLOGY) == DT_RASPRINTER;
}

BOOL CDC::CreateDC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData)
{
    const auto* mode = static_cast<const DEVMODE*>(lpInitData);
    return Attach(::CreateDC(lpszDriverName, lpszDeviceName, lpszOutput, mode));
}

BOOL CDC::CreateIC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData)
{
    const auto* mode = static_cast<const DEVMODE*>(lpInitData);
    return Attach(::CreateIC(lpszDriverName, lpszDeviceName, lpszOutput, mode));
}

BOOL CDC::CreateCompatibleDC(CDC* pDC)
{
    return Attach(::CreateCompatibleDC(OutputOf(pDC)));
}

BOOL CDC::DeleteDC()
{
    return m_hDC != nullptr && ::DeleteDC(Detach());
}

int CDC::SaveDC()
{
    if (!HasOwnOutput(*this))
        return m_hAttribDC == nullptr ? 0 : ::SaveDC(m_hAttribDC);
    const int output = ::SaveDC(m_hDC);
    if (m_hAttribDC == nullptr)
        return output;
    const int attributes = ::SaveDC(m_hAttribDC);
    if (output == 0 || attributes == 0)
        return 0;
    // Where the two have been saved a different number of times, only "the newest" names both states.
    return output == attributes ? output : -1;
}

BOOL CDC::RestoreDC(int nSavedDC)
{
    BOOL restored = TRUE;
    if (HasOwnOutput(*this))
        restored = ::RestoreDC(m_hDC, nSavedDC);
    if (m_hAttribDC != nullptr)
        restored = ::RestoreDC(m_hAttribDC, nSavedDC) && restored;
    return restored && (m_hDC != nullptr || m_hAttribDC != nullptr);
}

BOOL CDC::ResetDC(const DEVMODE* lpDevMode)
{
    return ::ResetDC(m_hAttribDC, lpDevMode) != nullptr;
}

int CDC::GetDeviceCaps(int nIndex) const
{
    return ::GetDeviceCaps(m_hAttribDC, nIndex);
}

DWORD CDC::GetLayout() const
{
    return ::GetLayout(m_hDC);
}

DWORD CDC::SetLayout(DWORD dwLayout)
{
    return ::SetLayout(m_hDC, dwLayout);
}

// ---- Device contexts of windows

CClientDC::CClientDC(CWnd* pWnd) : m_hWnd(pWnd->GetSafeHwnd())
{
    if (!Attach(::GetDC(m_hWnd)))
        AfxThrowResourceException();
}

CClientDC::~CClientDC()
{
    if (m_hDC != nullptr)
        ::ReleaseDC(m_hWnd, Detach());
}

CWindowDC::CWindowDC(CWnd* pWnd) : m_hWnd(pWnd->GetSafeHwnd())
{
    if (!Attach(::GetWindowDC(m_hWnd)))
        AfxThrowResourceException();
}

CWindowDC::~CWindowDC()
{
    if (m_hDC != nullptr)
        ::ReleaseDC(m_hWnd, Detach());
}

CPaintDC::CPaintDC(CWnd* pWnd) : m_ps{}, m_hWnd(pWnd->GetSafeHwnd())
{
    if (!Attach(::BeginPaint(m_hWnd, &m_ps)))
        AfxThrowResourceException();
}

CPaintDC::~CPaintDC()
{
    if (m_ps.hdc != nullptr)
        ::EndPaint(m_hWnd, &m_ps);
    // EndPaint has released it.
    Detach();
}
