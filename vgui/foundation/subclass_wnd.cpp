#include "vgui/foundation/subclass_wnd.h"

#include "vgui/foundation/hook_chain.h"

namespace
{

constexpr UINT kHashTableSize = 10;

} // namespace

IMPLEMENT_DYNAMIC(CSubclassWnd, CObject)

CSubclassWnd::~CSubclassWnd()
{
    Chain::Detach(*this);
}

BOOL CSubclassWnd::HookWindow(CWnd* pWnd)
{
    return HookWindow(pWnd != nullptr ? pWnd->m_hWnd : nullptr);
}

BOOL CSubclassWnd::HookWindow(HWND hWnd)
{
    if (hWnd != nullptr && !Chain::CanAttach(hWnd))
        return FALSE;
    Chain::Detach(*this);
    return hWnd == nullptr || Chain::Attach(*this, hWnd);
}

LRESULT CSubclassWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return Chain::PassOn(*this, message, wParam, lParam);
}

LRESULT CSubclassWnd::Default()
{
    const MSG current = AfxGetThreadState()->m_lastSentMsg;
    return CSubclassWnd::WindowProc(current.message, current.wParam, current.lParam);
}

CSubclassWnd* CSubclassWnd::FindHookInstance(HWND hWnd) const
{
    CSubclassWnd* hook = CSubclassWndMap::Instance().GetNewest(hWnd);
    while (hook != nullptr && hook->GetRuntimeClass() != GetRuntimeClass())
        hook = hook->m_pNext;
    return hook;
}

CSubclassWnd* CSubclassWnd::FindHookInstance(CWnd* pWnd) const
{
    return pWnd != nullptr ? nullptr : FindHookInstance(static_cast<HWND>(nullptr));
}

CSubclassWndMap::CSubclassWndMap()
{
    InitHashTable(kHashTableSize);
}

CSubclassWndMap& CSubclassWndMap::Instance()
{
    static CSubclassWndMap map;
    return map;
}

CSubclassWnd* CSubclassWndMap::GetNewest(HWND hWnd) const
{
    void* hook = nullptr;
    return Lookup(hWnd, hook) ? static_cast<CSubclassWnd*>(hook) : nullptr;
}

void CSubclassWndMap::SetNewest(HWND hWnd, CSubclassWnd* pHook)
{
    if (pHook != nullptr)
        SetAt(hWnd, pHook);
    else
        RemoveKey(hWnd);
}
