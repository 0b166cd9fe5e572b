#include "vgui/dialogs/gui_dlg.h"

#include "vgui/assist/assist_system.h"
#include "vgui/assist/host_paths.h"
#include "vgui/dialogs/child_controls.h"
#include "vgui/dialogs/gui_dlg_geometry.h"
#include "vgui/foundation/attached.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"
#include "vgui/foundation/library_instance.h"
#include "vgui/foundation/window_helpers.h"
#include "vgui/res/resource.h"

#include <memory>
#include <utility>

namespace
{

constexpr int kMaxHelpFile = 256; // characters, with the terminating zero
constexpr wchar_t kHelpCaption[] = L"温馨提示";

bool IsStaticLike(UINT nCtlColor)
{
    return nCtlColor == CTLCOLOR_STATIC || nCtlColor == CTLCOLOR_BTN || nCtlColor == CTLCOLOR_SCROLLBAR;
}

// Has the host's program show its help file. 1 when it could, else a message box has said why not.
int OpenHostHelp(CWnd& dialog)
{
    using HostHelp = int(__cdecl*)(LPCWSTR file, LPCWSTR topic, int command);

    const CString helpFile =
        VGReadIniValue(VGHostSysFile(L"product.ini"), L"产品信息", L"帮助文件", L"", kMaxHelpFile);
    const HMODULE host = ::GetModuleHandleW(nullptr);
    if (host == nullptr) {
        dialog.MessageBox(L"未知异常:", kHelpCaption);
        return 0;
    }
    // By way of void*, since the compiler warns of a plain cast.
    const auto show = reinterpret_cast<HostHelp>(reinterpret_cast<void*>(::GetProcAddress(host, "acedHelp")));
    if (show == nullptr) {
        dialog.MessageBox(L"acedHelp失败:", kHelpCaption);
        return 0;
    }
    show(helpFile, L"", 0);
    return 1;
}

} // namespace

IMPLEMENT_DYNAMIC(VGuiDlg, CDialog)

BEGIN_MESSAGE_MAP(VGuiDlg, CDialog)
    ON_WM_NCCALCSIZE()
    ON_WM_CTLCOLOR()
    ON_WM_NCLBUTTONUP()
    ON_WM_NCLBUTTONDOWN()
    ON_WM_NCACTIVATE()
    ON_WM_DESTROY()
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_NCHITTEST()
    ON_WM_NCLBUTTONDBLCLK()
    ON_WM_NCMOUSEMOVE()
    ON_WM_SIZING()
    ON_WM_HELPINFO()
    ON_NOTIFY_EX_RANGE(TTN_NEEDTEXTW, 0, 0xFFFF, &VGuiDlg::OnToolTipText)
    ON_NOTIFY_EX_RANGE(TTN_NEEDTEXTA, 0, 0xFFFF, &VGuiDlg::OnToolTipText)
    ON_WM_NCMOUSELEAVE()
    ON_WM_GETMINMAXINFO()
END_MESSAGE_MAP()

VGuiDlg::VGuiDlg(UINT nIDTemplate, CWnd* pParent)
    : CDialog(nIDTemplate, pParent), m_clrText(VGM.Dlg.clrText), m_clrBk(VGM.Dlg.clrBk)
{
}

VGuiDlg::~VGuiDlg()
{
    // Here and not in the base's destructor, so that OnDestroy still finds the members.
    if (m_hWnd != nullptr)
        DestroyWindow();
}

BOOL VGuiDlg::ShowWindow(int nCmdShow)
{
    return m_hWnd != nullptr && CDialog::ShowWindow(nCmdShow);
}

void VGuiDlg::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
}

int VGuiDlg::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CDialog::OnCreate(lpCreateStruct) == -1)
        return -1;
    m_bSkinNc = (GetStyle() & WS_CAPTION) != 0;
    m_bActive = 1;
    m_bNcBtnDown = 0;
    // The frame changes now and not at the next sizing: the client area must have its place before the
    // controls are created.
    if (m_bSkinNc)
        ModifyStyle(WS_CAPTION, 0, SWP_FRAMECHANGED);
    m_bmpHelp.DeleteObject();
    m_bmpHelp.Attach(::LoadBitmapW(VGLibraryInstance(), MAKEINTRESOURCEW(IDB_HELP_GLYPH)));
    return 0;
}

BOOL VGuiDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    CalWndRgn();
    if (m_bHelpBtn)
        ModifyStyleEx(0, WS_EX_CONTEXTHELP);
    m_brBk.DeleteObject();
    m_brBk.CreateSolidBrush(m_clrBk);
    ReplaceStandardControls(*this, m_arrSubclassed);
    CreateToolTips();
    DrawMenuBar();
    return TRUE;
}

void VGuiDlg::OnDestroy()
{
    DropReplacedControls();
    m_mapCtrlFormat.clear();
    m_nEditorState = 0;
    m_strCaptionState.Empty();
    m_bmpCaption.DeleteObject();
    CDialog::OnDestroy();
}

// The windows go while their objects still exist, each by its own procedure again, so that no late message
// reaches a deleted object.
void VGuiDlg::DropReplacedControls()
{
    for (INT_PTR i = 0; i < m_arrSubclassed.GetSize(); ++i) {
        const std::unique_ptr<CWnd> control(std::exchange(m_arrSubclassed[i], nullptr));
        if (control == nullptr || control->m_hWnd == nullptr)
            continue;
        if (const HWND window = control->UnsubclassWindow())
            ::DestroyWindow(window);
    }
    m_arrSubclassed.RemoveAll();
}

HBRUSH VGuiDlg::OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor)
{
    const HBRUSH brush = CDialog::OnCtlColor(pDC, pWnd, nCtlColor);
    if (nCtlColor == CTLCOLOR_STATIC) {
        pDC->SetTextColor(m_clrText);
        pDC->SetBkColor(m_clrBk);
    }
    COLORREF color = VGNoColor;
    if (IsStaticLike(nCtlColor) && pWnd != nullptr && !ChoosesOwnTextColor(*pWnd) &&
        GetSetCtrlClr(pWnd->GetDlgCtrlID(), color))
        pDC->SetTextColor(color);
    const bool ownBackground = IsStaticLike(nCtlColor) || nCtlColor == CTLCOLOR_DLG;
    const HBRUSH ours = static_cast<HBRUSH>(m_brBk.GetSafeHandle());
    return ownBackground && ours != nullptr ? ours : brush;
}

void VGuiDlg::SetStaticCtrlFormat(UINT nID, COLORREF clrText, UINT, const wchar_t*, int)
{
    CWnd* control = m_hWnd == nullptr ? nullptr : GetDlgItem(nID);
    if (control == nullptr)
        return;
    CtrlFormat& format = m_mapCtrlFormat[nID];
    format.pFont.reset();
    format.clrText = clrText;
    control->Invalidate();
}

bool VGuiDlg::GetSetCtrlClr(UINT nID, COLORREF& clr)
{
    const auto found = m_mapCtrlFormat.find(nID);
    if (found == m_mapCtrlFormat.end() || found->second.clrText == VGNoColor)
        return false;
    clr = found->second.clrText;
    return true;
}

int VGuiDlg::IsDlgButtonChecked(UINT nID) const
{
    CWnd* control = m_hWnd == nullptr ? nullptr : GetDlgItem(nID);
    if (control == nullptr)
        return 0;
    int state = 0;
    return GetReplacedCheck(*control, state) ? state : static_cast<int>(CDialog::IsDlgButtonChecked(nID));
}

int VGuiDlg::CheckDlgButton(UINT nID, int nCheck)
{
    CWnd* control = m_hWnd == nullptr ? nullptr : GetDlgItem(nID);
    if (control == nullptr)
        return 0;
    if (!SetReplacedCheck(*control, nCheck))
        CDialog::CheckDlgButton(nID, nCheck);
    return 1;
}

void VGuiDlg::SetAllowResize(bool bHeight, bool bWidth)
{
    m_bAllowResizeY = bHeight;
    m_bAllowResizeX = bWidth;
}

void VGuiDlg::SetMinimumSize(UINT cx, UINT cy)
{
    m_nMinWidth = cx;
    m_nMinHeight = cy;
}

bool VGuiDlg::MoveWindowAndCheck(const CRect& rect)
{
    if (m_hWnd == nullptr || !IsValideWndPos(rect))
        return false;
    MoveWindow(rect, TRUE);
    return true;
}

void VGuiDlg::OnSizing(UINT nSide, LPRECT lpRect)
{
    if (lpRect != nullptr) {
        CRect current;
        GetWindowRect(current);
        gui_dlg::LimitSizing(*lpRect, current, {m_bAllowResizeX, m_bAllowResizeY, m_nMinWidth, m_nMinHeight});
    }
    CDialog::OnSizing(nSide, lpRect);
}

void VGuiDlg::OnSize(UINT nType, int cx, int cy)
{
    CDialog::OnSize(nType, cx, cy);
    CalWndRgn();
}

void VGuiDlg::OnGetMinMaxInfo(MINMAXINFO* lpMMI)
{
    CDialog::OnGetMinMaxInfo(lpMMI);
    if (lpMMI != nullptr)
        lpMMI->ptMaxSize = {::GetSystemMetrics(SM_CXMAXIMIZED), ::GetSystemMetrics(SM_CYMAXIMIZED)};
}

CString VGuiDlg::GetAssistantDirName()
{
    return CString(GetRuntimeClass()->m_lpszClassName);
}

void VGuiDlg::PromptHelp()
{
    EnterAssistSystem(GetAssistantDirName(), nullptr, this);
}

int VGuiDlg::OnHtmlHelp()
{
    if (VGReadIniValue(VGHostSysFile(L"AssistSystem.ini"), GetAssistantDirName(), L"HtmlFile").IsEmpty())
        return OpenHostHelp(*this);
    PromptHelp();
    return 0;
}

BOOL VGuiDlg::OnHelpInfo(HELPINFO* pHelpInfo)
{
    const HWND window = m_hWnd;
    const bool settled = OnHtmlHelp() != 0;
    // The host's help may have closed the dialog.
    return settled || !VGIsAttached(this, window) ? TRUE : CDialog::OnHelpInfo(pHelpInfo);
}
