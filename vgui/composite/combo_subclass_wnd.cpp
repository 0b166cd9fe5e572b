#include "vgui/composite/combo_subclass_wnd.h"

#include "vgui/foundation/hook_chain.h"

CComboSubclassWnd::~CComboSubclassWnd()
{
    Chain::Detach(*this);
}

BOOL CComboSubclassWnd::HookWindow(HWND hWnd)
{
    if (hWnd != nullptr && !Chain::CanAttach(hWnd))
        return FALSE;
    Chain::Detach(*this);
    return hWnd == nullptr || Chain::Attach(*this, hWnd);
}

LRESULT CComboSubclassWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return Chain::PassOn(*this, message, wParam, lParam);
}

CComboSubclassWndMap& CComboSubclassWndMap::Instance()
{
    static CComboSubclassWndMap map;
    return map;
}

CComboSubclassWnd* CComboSubclassWndMap::GetNewest(HWND hWnd) const
{
    void* hook = nullptr;
    return Lookup(hWnd, hook) ? static_cast<CComboSubclassWnd*>(hook) : nullptr;
}

void CComboSubclassWndMap::SetNewest(HWND hWnd, CComboSubclassWnd* pHook)
{
    if (pHook != nullptr)
        SetAt(hWnd, pHook);
    else
        RemoveKey(hWnd);
}
