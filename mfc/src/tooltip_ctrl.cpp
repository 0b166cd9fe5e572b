#include <afxcmn.h>

#include "common_control_classes.h"
#include "control_message.h"

#include <cwchar>
#include <iterator>
#include <vector>

using afx_subset::Send;
using afx_subset::WindowOf;

IMPLEMENT_DYNAMIC(CToolTipCtrl, CWnd)

CToolTipCtrl::~CToolTipCtrl()
{
    DestroyWindow();
}

BOOL CToolTipCtrl::Create(CWnd* pParentWnd, DWORD dwStyle)
{
    return CreateEx(pParentWnd, dwStyle, 0);
}

void CToolTipCtrl::SetToolInfo(LPTOOLINFO lpToolInfo)
{
    Send(this, TTM_SETTOOLINFO, 0, lpToolInfo);
}

int CToolTipCtrl::GetToolCount() const
{
    return Send<int>(this, TTM_GETTOOLCOUNT);
}

int CToolTipCtrl::GetDelayTime(DWORD dwDuration) const
{
    return Send<int>(this, TTM_GETDELAYTIME, dwDuration);
}

void CToolTipCtrl::SetDelayTime(DWORD dwDuration, int iTime)
{
    Send(this, TTM_SETDELAYTIME, dwDuration, MAKELPARAM(iTime, 0));
}

void CToolTipCtrl::SetDelayTime(UINT nDelay)
{
    Send(this, TTM_SETDELAYTIME, TTDT_AUTOMATIC, MAKELPARAM(nDelay, 0));
}

COLORREF CToolTipCtrl::GetTipBkColor() const
{
    return Send<COLORREF>(this, TTM_GETTIPBKCOLOR);
}

COLORREF CToolTipCtrl::GetTipTextColor() const
{
    return Send<COLORREF>(this, TTM_GETTIPTEXTCOLOR);
}

void CToolTipCtrl::SetTipBkColor(COLORREF clr)
{
    Send(this, TTM_SETTIPBKCOLOR, clr);
}

void CToolTipCtrl::SetTipTextColor(COLORREF clr)
{
    Send(this, TTM_SETTIPTEXTCOLOR, clr);
}

int CToolTipCtrl::GetMaxTipWidth() const
{
    return Send<int>(this, TTM_GETMAXTIPWIDTH);
}

int CToolTipCtrl::SetMaxTipWidth(int iWidth)
{
    return Send<int>(this, TTM_SETMAXTIPWIDTH, 0, iWidth);
}

void CToolTipCtrl::GetMargin(LPRECT lprc) const
{
    Send(this, TTM_GETMARGIN, 0, lprc);
}

void CToolTipCtrl::SetMargin(LPRECT lprc)
{
    Send(this, TTM_SETMARGIN, 0, lprc);
}

BOOL CToolTipCtrl::GetCurrentTool(LPTOOLINFO lpToolInfo) const
{
    return Send<BOOL>(this, TTM_GETCURRENTTOOL, 0, lpToolInfo);
}

BOOL CToolTipCtrl::SetTitle(UINT uIcon, LPCTSTR lpstrTitle)
{
    return Send<BOOL>(this, TTM_SETTITLE, uIcon, lpstrTitle);
}

void CToolTipCtrl::GetTitle(PTTGETTITLE pttgt) const
{
    Send(this, TTM_GETTITLE, 0, pttgt);
}

BOOL CToolTipCtrl::AdjustRect(LPRECT lprc, BOOL bLarger)
{
    return Send<BOOL>(this, TTM_ADJUSTRECT, bLarger, lprc);
}

void CToolTipCtrl::Activate(BOOL bActivate)
{
    Send(this, TTM_ACTIVATE, bActivate);
}

void CToolTipCtrl::RelayEvent(LPMSG lpMsg)
{
    Send(this, TTM_RELAYEVENT, 0, lpMsg);
}

void CToolTipCtrl::Update()
{
    Send(this, TTM_UPDATE);
}

void CToolTipCtrl::Pop()
{
    Send(this, TTM_POP);
}

void CToolTipCtrl::Popup()
{
    Send(this, TTM_POPUP);
}

HRESULT CToolTipCtrl::SetWindowTheme(LPCWSTR pszSubAppName)
{
    return Send<HRESULT>(this, TTM_SETWINDOWTHEME, 0, pszSubAppName);
}

namespace
{

// Names a tool in the way of both AddTool forms: a rectangle of pWnd by its number, or the whole of pWnd by
// its handle, with pWnd's parent as the window that is told.
TOOLINFO ToolOf(const CWnd* window, UINT_PTR id)
{
    TOOLINFO tool = {};
    // Version 5 of the common controls refuses the present size of the structure.
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    const HWND handle = WindowOf(window);
    if (id != 0) {
        tool.hwnd = handle;
        tool.uId = id;
    } else {
        tool.uFlags = TTF_IDISHWND;
        tool.hwnd = ::GetParent(handle);
        tool.uId = reinterpret_cast<UINT_PTR>(handle);
    }
    return tool;
}

// Room for any text a tool may have: TTM_GETTEXT and TTM_GETTOOLINFO are not told the size of the buffer by
// every version of the common controls.
constexpr size_t kLongestToolText = 32768;

} // namespace

BOOL CToolTipCtrl::CreateEx(CWnd* pParentWnd, DWORD dwStyle, DWORD dwStyleEx)
{
    return afx_subset::InitControlClasses(ICC_BAR_CLASSES) &&
           CWnd::CreateEx(dwStyleEx, TOOLTIPS_CLASS, nullptr, WS_POPUP | dwStyle, CW_USEDEFAULT,
                          CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, WindowOf(pParentWnd), nullptr);
}

void CToolTipCtrl::GetText(CString& str, CWnd* pWnd, UINT_PTR nIDTool) const
{
    std::vector<TCHAR> text(kLongestToolText);
    TOOLINFO tool = ToolOf(pWnd, nIDTool);
    tool.lpszText = text.data();
    Send(this, TTM_GETTEXT, text.size(), &tool);
    str = text.data();
}

BOOL CToolTipCtrl::GetToolInfo(CToolInfo& ToolInfo, CWnd* pWnd, UINT_PTR nIDTool) const
{
    std::vector<TCHAR> text(kLongestToolText);
    TOOLINFO tool = ToolOf(pWnd, nIDTool);
    tool.lpszText = text.data();
    const BOOL found = Send<BOOL>(this, TTM_GETTOOLINFO, 0, &tool);
    // A callback and a resource number come back in place of the buffer's address.
    const bool textCopied = tool.lpszText == text.data();
    std::wcsncpy(ToolInfo.szText, text.data(), std::size(ToolInfo.szText) - 1);
    ToolInfo.szText[std::size(ToolInfo.szText) - 1] = _T('\0');
    if (textCopied)
        tool.lpszText = ToolInfo.szText;
    static_cast<TOOLINFO&>(ToolInfo) = tool;
    return found;
}

void CToolTipCtrl::SetToolRect(CWnd* pWnd, UINT_PTR nIDTool, LPCRECT lpRect)
{
    TOOLINFO tool = ToolOf(pWnd, nIDTool);
    if (lpRect != nullptr)
        tool.rect = *lpRect;
    Send(this, TTM_NEWTOOLRECT, 0, &tool);
}

CSize CToolTipCtrl::GetBubbleSize(LPTOOLINFO lpToolInfo) const
{
    const auto packed = Send<DWORD>(this, TTM_GETBUBBLESIZE, 0, lpToolInfo);
    return CSize(LOWORD(packed), HIWORD(packed));
}

BOOL CToolTipCtrl::AddTool(CWnd* pWnd, UINT nIDText, LPCRECT lpRectTool, UINT_PTR nIDTool)
{
    CString text;
    return text.LoadString(nIDText) && AddTool(pWnd, text, lpRectTool, nIDTool);
}

BOOL CToolTipCtrl::AddTool(CWnd* pWnd, LPCTSTR lpszText, LPCRECT lpRectTool, UINT_PTR nIDTool)
{
    if (WindowOf(pWnd) == nullptr || (lpRectTool != nullptr) != (nIDTool != 0))
        return FALSE;
    TOOLINFO tool = ToolOf(pWnd, nIDTool);
    if (lpRectTool != nullptr)
        tool.rect = *lpRectTool;
    tool.lpszText = const_cast<LPTSTR>(lpszText);
    return Send<BOOL>(this, TTM_ADDTOOL, 0, &tool);
}

void CToolTipCtrl::DelTool(CWnd* pWnd, UINT_PTR nIDTool)
{
    TOOLINFO tool = ToolOf(pWnd, nIDTool);
    Send(this, TTM_DELTOOL, 0, &tool);
}

BOOL CToolTipCtrl::HitTest(CWnd* pWnd, CPoint pt, LPTOOLINFO lpToolInfo) const
{
    TTHITTESTINFO test = {};
    test.hwnd = WindowOf(pWnd);
    test.pt = pt;
    test.ti.cbSize = TTTOOLINFOW_V2_SIZE;
    if (!Send<BOOL>(this, TTM_HITTEST, 0, &test))
        return FALSE;
    if (lpToolInfo != nullptr)
        *lpToolInfo = test.ti;
    return TRUE;
}

void CToolTipCtrl::UpdateTipText(LPCTSTR lpszText, CWnd* pWnd, UINT_PTR nIDTool)
{
    TOOLINFO tool = ToolOf(pWnd, nIDTool);
    tool.lpszText = const_cast<LPTSTR>(lpszText);
    Send(this, TTM_UPDATETIPTEXT, 0, &tool);
}

void CToolTipCtrl::UpdateTipText(UINT nIDText, CWnd* pWnd, UINT_PTR nIDTool)
{
    CString text;
    if (text.LoadString(nIDText))
        UpdateTipText(text, pWnd, nIDTool);
}
