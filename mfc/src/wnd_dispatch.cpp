// From a window message to its handler: commands, notifications, reflection, message maps.
#include <afxwin.h>

#include "dispatch.h"
#include "gdi_handle_traits.h"

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
    ON_WM_DESTROY()
    ON_WM_NCDESTROY()
    ON_WM_COMPAREITEM()
    ON_WM_CTLCOLOR()
    ON_WM_DELETEITEM()
    ON_WM_DRAWITEM()
    ON_WM_MEASUREITEM()
    ON_WM_CHARTOITEM()
    ON_WM_VKEYTOITEM()
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
    ON_WM_PARENTNOTIFY()
    ON_WM_ENTERIDLE()
    ON_WM_SETTINGCHANGE()
END_MESSAGE_MAP()

CWnd* afxsig::WndW::Get(Dispatch& d)
{
    return CWnd::FromHandle(reinterpret_cast<HWND>(d.wParam));
}

CWnd* afxsig::WndL::Get(Dispatch& d)
{
    return CWnd::FromHandle(reinterpret_cast<HWND>(d.lParam));
}

CListBox* afxsig::ListBoxL::Get(Dispatch& d)
{
    return static_cast<CListBox*>(WndL::Get(d));
}

CScrollBar* afxsig::ScrollBarL::Get(Dispatch& d)
{
    return static_cast<CScrollBar*>(WndL::Get(d));
}

CDC* afxsig::DcW::Get(Dispatch& d)
{
    return CDC::FromHandle(reinterpret_cast<HDC>(d.wParam));
}

CMenu* afxsig::MenuW::Get(Dispatch& d)
{
    return CMenu::FromHandle(reinterpret_cast<HMENU>(d.wParam));
}

CMenu* afxsig::MenuL::Get(Dispatch& d)
{
    return CMenu::FromHandle(reinterpret_cast<HMENU>(d.lParam));
}

CDC* afxsig::CtlColorDc::Get(Dispatch& d)
{
    return CDC::FromHandle(reinterpret_cast<AFX_CTLCOLOR*>(d.lParam)->hDC);
}

CWnd* afxsig::CtlColorWnd::Get(Dispatch& d)
{
    return CWnd::FromHandle(reinterpret_cast<AFX_CTLCOLOR*>(d.lParam)->hWnd);
}

namespace
{

bool IsControlColor(UINT message)
{
    return message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC;
}

// The handles are taken from the original parameters, the kind of control from the message.
AFX_CTLCOLOR ControlColor(UINT message, WPARAM wParam, LPARAM lParam)
{
    return {reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam), message - WM_CTLCOLORMSGBOX};
}

} // namespace

BOOL CWnd::DispatchToMap(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    AFX_MSG_DISPATCH dispatch{};
    dispatch.message = message;
    dispatch.wParam = wParam;
    dispatch.lParam = lParam;
    for (const AFX_MSGMAP* map = GetMessageMap(); map != nullptr; map = afx_subset::BaseMap(map)) {
        const AFX_MSGMAP_ENTRY* const entry = afx_subset::FindMessage(map->lpEntries, message);
        if (entry == nullptr)
            continue;
        if (!entry->pfn(this, dispatch))
            return FALSE;
        if (pResult != nullptr)
            *pResult = dispatch.result;
        return TRUE;
    }
    return FALSE;
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message == WM_COMMAND) {
        if (!OnCommand(wParam, lParam))
            return FALSE;
        if (pResult != nullptr)
            *pResult = 1;
        return TRUE;
    }
    if (message == WM_NOTIFY) {
        LRESULT result = 0;
        if (reinterpret_cast<NMHDR*>(lParam)->hwndFrom == nullptr || !OnNotify(wParam, lParam, &result))
            return FALSE;
        if (pResult != nullptr)
            *pResult = result;
        return TRUE;
    }
    if (IsControlColor(message)) {
        AFX_CTLCOLOR color = ControlColor(message, wParam, lParam);
        return DispatchToMap(WM_CTLCOLOR, 0, reinterpret_cast<LPARAM>(&color), pResult);
    }
    return DispatchToMap(message, wParam, lParam, pResult);
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const UINT id = LOWORD(wParam);
    const HWND control = reinterpret_cast<HWND>(lParam);
    int code = HIWORD(wParam);
    if (id == 0 && control == nullptr)
        return FALSE;
    if (control == nullptr) {
        // From a menu or an accelerator: a command that is disabled now must not run, whatever the menu
        // shows.
        class EnabledTest : public CCmdUI
        {
        public:
            BOOL enabled = TRUE;
            void Enable(BOOL bOn) override { enabled = bOn; }
            void SetCheck(int) override {}
            void SetRadio(BOOL) override {}
            void SetText(LPCTSTR) override {}
        } test;
        test.m_nID = id;
        OnCmdMsg(id, static_cast<int>(CN_UPDATE_COMMAND_UI), &test, nullptr);
        if (!test.enabled)
            return TRUE;
        code = CN_COMMAND;
    } else if (ReflectLastMsg(control)) {
        return TRUE;
    }
    return OnCmdMsg(id, code, nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM, LPARAM lParam, LRESULT* pResult)
{
    auto* const header = reinterpret_cast<NMHDR*>(lParam);
    if (ReflectLastMsg(header->hwndFrom, pResult))
        return TRUE;
    AFX_NOTIFY notify{pResult, header};
    return OnCmdMsg(static_cast<UINT>(::GetDlgCtrlID(header->hwndFrom) & 0xFFFF),
                    MAKELONG(header->code, WM_NOTIFY), &notify, nullptr);
}

// ---- Reflection

BOOL PASCAL CWnd::ReflectLastMsg(HWND hWndChild, LRESULT* pResult)
{
    CWnd* const child = FromHandlePermanent(hWndChild);
    return child != nullptr && child->SendChildNotifyLastMsg(pResult);
}

BOOL CWnd::SendChildNotifyLastMsg(LRESULT* pResult)
{
    const MSG current = AfxGetThreadState()->m_lastSentMsg;
    return OnChildNotify(current.message, current.wParam, current.lParam, pResult);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return ReflectChildNotify(message, wParam, lParam, pResult);
}

BOOL CWnd::ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    switch (message) {
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_PARENTNOTIFY:
    case WM_DRAWITEM:
    case WM_MEASUREITEM:
    case WM_DELETEITEM:
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM:
    case WM_COMPAREITEM:
        return OnWndMsg(WM_REFLECT_BASE + message, wParam, lParam, pResult);
    case WM_COMMAND:
        if (!OnCmdMsg(0, MAKELONG(HIWORD(wParam), WM_REFLECT_BASE + WM_COMMAND), nullptr, nullptr))
            return FALSE;
        if (pResult != nullptr)
            *pResult = 1;
        return TRUE;
    case WM_NOTIFY: {
        auto* const header = reinterpret_cast<NMHDR*>(lParam);
        LRESULT ignored = 0;
        AFX_NOTIFY notify{pResult != nullptr ? pResult : &ignored, header};
        return OnCmdMsg(0, MAKELONG(header->code, WM_REFLECT_BASE + WM_NOTIFY), &notify, nullptr);
    }
    default:
        if (!IsControlColor(message))
            return FALSE;
        AFX_CTLCOLOR color = ControlColor(message, wParam, lParam);
        return OnWndMsg(WM_REFLECT_BASE + WM_CTLCOLOR, 0, reinterpret_cast<LPARAM>(&color), pResult);
    }
}

int CWnd::OnCompareItem(int, LPCOMPAREITEMSTRUCT lpCompareItemStruct)
{
    LRESULT result = 0;
    if (ReflectLastMsg(lpCompareItemStruct->hwndItem, &result))
        return static_cast<int>(result);
    return static_cast<int>(Default());
}

void CWnd::OnDeleteItem(int, LPDELETEITEMSTRUCT lpDeleteItemStruct)
{
    if (!ReflectLastMsg(lpDeleteItemStruct->hwndItem))
        Default();
}

void CWnd::OnDrawItem(int, LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    if (lpDrawItemStruct->CtlType != ODT_MENU) {
        if (!ReflectLastMsg(lpDrawItemStruct->hwndItem))
            Default();
        return;
    }
    CMenu* const menu = afx_subset::MenuMap().Permanent(reinterpret_cast<HMENU>(lpDrawItemStruct->hwndItem));
    if (menu != nullptr)
        menu->DrawItem(lpDrawItemStruct);
    else
        Default();
}

void CWnd::OnMeasureItem(int, LPMEASUREITEMSTRUCT lpMeasureItemStruct)
{
    if (lpMeasureItemStruct->CtlType == ODT_MENU) {
        Default();
        return;
    }
    // A control that measures while it is being created is still waiting for its object, which would miss the
    // message; asking its handle by id finds it once it is attached.
    CWnd* const control = GetDescendantWindow(static_cast<int>(lpMeasureItemStruct->CtlID), TRUE);
    if (control == nullptr || !control->SendChildNotifyLastMsg(nullptr))
        Default();
}

HBRUSH CWnd::OnCtlColor(CDC*, CWnd* pWnd, UINT)
{
    LRESULT result = 0;
    if (ReflectLastMsg(pWnd->GetSafeHwnd(), &result) && result != 0)
        return reinterpret_cast<HBRUSH>(result);
    return reinterpret_cast<HBRUSH>(Default());
}

int CWnd::OnCharToItem(UINT, CListBox* pListBox, UINT)
{
    LRESULT result = 0;
    if (ReflectLastMsg(reinterpret_cast<CWnd*>(pListBox)->GetSafeHwnd(), &result))
        return static_cast<int>(result);
    return static_cast<int>(Default());
}

int CWnd::OnVKeyToItem(UINT, CListBox* pListBox, UINT)
{
    LRESULT result = 0;
    if (ReflectLastMsg(reinterpret_cast<CWnd*>(pListBox)->GetSafeHwnd(), &result))
        return static_cast<int>(result);
    return static_cast<int>(Default());
}

void CWnd::OnHScroll(UINT, UINT, CScrollBar* pScrollBar)
{
    if (pScrollBar == nullptr || !ReflectLastMsg(reinterpret_cast<CWnd*>(pScrollBar)->GetSafeHwnd()))
        Default();
}

void CWnd::OnVScroll(UINT, UINT, CScrollBar* pScrollBar)
{
    if (pScrollBar == nullptr || !ReflectLastMsg(reinterpret_cast<CWnd*>(pScrollBar)->GetSafeHwnd()))
        Default();
}

void CWnd::OnParentNotify(UINT message, LPARAM lParam)
{
    const bool fromChild = message == WM_CREATE || message == WM_DESTROY;
    if (!fromChild || !ReflectLastMsg(reinterpret_cast<HWND>(lParam)))
        Default();
}
