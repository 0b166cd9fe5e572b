#include "vgui/composite/combo_tree.h"

#include "vgui/foundation/attached.h"

#include <algorithm>
#include <climits>
#include <utility>

namespace
{

constexpr UINT kButtonId = 4317;
constexpr UINT kEditId = 4318;
constexpr UINT kTreeId = 4319;
constexpr int kMaxExtent = 0x7FFF; // pixels; windows cannot be larger
constexpr UINT kLastKeyMessage = 0x0109;

constexpr DWORD kPartStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
constexpr DWORD kTreeStyle =
    WS_CHILD | WS_BORDER | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_NOTOOLTIPS;

CRect ButtonRect(const CRect& client)
{
    CRect rect = client;
    rect.left = rect.right - ::GetSystemMetrics(SM_CXVSCROLL);
    return rect;
}

CRect EditRect(const CRect& client)
{
    CRect rect = client;
    rect.right = ButtonRect(client).left;
    return rect;
}

bool IsKeyMessage(UINT message)
{
    return message >= WM_KEYFIRST && message <= kLastKeyMessage;
}

bool IsMouseOn(const CWnd& window)
{
    CPoint cursor;
    CRect rect;
    return ::GetCursorPos(&cursor) && ::GetWindowRect(window.m_hWnd, rect) && rect.PtInRect(cursor);
}

void Repaint(CWnd& window)
{
    if (window.m_hWnd != nullptr)
        window.Invalidate();
}

} // namespace

IMPLEMENT_DYNAMIC(ComboTree, CWnd)

BEGIN_MESSAGE_MAP(ComboTree, CWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_WM_GETDLGCODE()
    ON_BN_CLICKED(kButtonId, &ComboTree::OnDropdownButton)
    ON_EN_KILLFOCUS(kEditId, &ComboTree::OnKillfocusEdit)
    ON_EN_SETFOCUS(kEditId, &ComboTree::OnSetfocusEdit)
END_MESSAGE_MAP()

ComboTree::ComboTree()
{
    m_tree.m_pCombo = this;
}

// While the parts still exist.
ComboTree::~ComboTree()
{
    DestroyWindow();
}

BOOL ComboTree::Create(const RECT& rect, int droppedWidth, int droppedHeight, CWnd* parent, UINT id)
{
    if (parent == nullptr || m_hWnd != nullptr)
        return FALSE;
    m_nDroppedWidth = droppedWidth;
    m_nDroppedHeight = droppedHeight;
    const LPCWSTR windowClass =
        AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursor(nullptr, IDC_ARROW),
                            static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    if (!CreateEx(WS_EX_CLIENTEDGE, windowClass, nullptr, WS_CHILD | WS_VISIBLE | WS_TABSTOP, rect, parent,
                  id))
        return FALSE;
    UpdateWindow();
    return TRUE;
}

BOOL ComboTree::SubclassDlgItem(UINT id, CWnd* parent)
{
    CWnd* const placeholder =
        parent != nullptr && m_hWnd == nullptr ? parent->GetDlgItem(static_cast<int>(id)) : nullptr;
    if (placeholder == nullptr)
        return FALSE;
    CRect dropped(0, 0, 0, 0);
    placeholder->SendMessage(CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped));
    CRect rect;
    placeholder->GetWindowRect(rect);
    parent->ScreenToClient(rect);
    const HWND before = ::GetWindow(placeholder->m_hWnd, GW_HWNDPREV);
    placeholder->DestroyWindow();
    if (!Create(rect, dropped.Width(), dropped.Height(), parent, id))
        return FALSE;
    ::SetWindowPos(m_hWnd, before != nullptr ? before : HWND_TOP, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return TRUE;
}

int ComboTree::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CWnd::OnCreate(lpCreateStruct) == -1)
        return -1;
    if (CreateTree() && CreateButton() && CreateEdit())
        return 0;
    m_tree.DestroyWindow(); // not our child, and WM_DESTROY need not come
    return -1;
}

bool ComboTree::CreateTree()
{
    const CWnd* const parent = GetParent();
    if (parent == nullptr ||
        !m_tree.CreateEx(WS_EX_TOOLWINDOW, kTreeStyle, CRect(0, 0, m_nDroppedWidth, m_nDroppedHeight),
                         GetDesktopWindow(), kTreeId))
        return false;
    m_hook.Prepare(this, parent->m_hWnd);
    return true;
}

bool ComboTree::CreateButton()
{
    CRect client;
    GetClientRect(client);
    return m_button.Create(L"", kPartStyle | BS_NOTIFY | BS_OWNERDRAW, ButtonRect(client), this, kButtonId) !=
           FALSE;
}

bool ComboTree::CreateEdit()
{
    CRect client;
    GetClientRect(client);
    if (m_button.m_hWnd == nullptr ||
        !m_edit.Create(kPartStyle | ES_AUTOHSCROLL, EditRect(client), this, kEditId))
        return false;
    m_edit.SetFont(GetParent()->GetFont());
    return true;
}

void ComboTree::OnDestroy()
{
    SetDroppedState(FALSE);
    m_bEnding = false;
    m_hook.HookWindow(nullptr);
    m_tree.DestroyWindow();
    CWnd::OnDestroy();
}

void ComboTree::OnTreeDestroyed()
{
    if (m_bDropped)
        HideTree();
}

void ComboTree::OnSize(UINT nType, int cx, int cy)
{
    CWnd::OnSize(nType, cx, cy);
    if (m_edit.m_hWnd == nullptr)
        return;
    const CRect client(0, 0, cx, cy);
    m_edit.MoveWindow(EditRect(client));
    m_button.MoveWindow(ButtonRect(client));
}

BOOL ComboTree::EnableWindow(BOOL enable)
{
    const HWND window = m_hWnd;
    for (CWnd* part :
         {static_cast<CWnd*>(&m_tree), static_cast<CWnd*>(&m_edit), static_cast<CWnd*>(&m_button)}) {
        if (!VGIsAttached(this, window))
            return FALSE; // the edit field has lost the focus, of which the parent is told
        if (part->m_hWnd != nullptr)
            part->EnableWindow(enable);
    }
    return VGIsAttached(this, window) && CWnd::EnableWindow(enable);
}

bool ComboTree::SendParentComboMessage(UINT code)
{
    const HWND window = m_hWnd;
    if (const HWND parent = ::GetParent(window))
        ::SendMessageW(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), code),
                       reinterpret_cast<LPARAM>(window));
    return VGIsAttached(this, window);
}

LRESULT ComboTree::SendTreeMessage(UINT msg, WPARAM wParam, LPARAM lParam) const
{
    return m_tree.m_hWnd != nullptr ? ::SendMessageW(m_tree.m_hWnd, msg, wParam, lParam) : 0;
}

void ComboTree::SetWindowText(LPCWSTR text)
{
    if (m_edit.m_hWnd == nullptr)
        return;
    m_edit.SetWindowText(text != nullptr ? text : L"");
    Repaint(*this);
}

CString ComboTree::GetWindowText() const
{
    CString text;
    if (m_edit.m_hWnd != nullptr)
        m_edit.GetWindowText(text);
    return text;
}

// ---- The drop-down

void ComboTree::CalculateDroppedRect(RECT* rect) const
{
    CRect control;
    GetWindowRect(control);
    const LONG width = std::clamp(m_nDroppedWidth, 0, kMaxExtent);
    const LONG height = std::clamp(m_nDroppedHeight, 0, kMaxExtent);
    CPoint corner(control.left, control.bottom);
    if (corner.y + height > ::GetSystemMetrics(SM_CYSCREEN))
        corner.y = control.top - height;
    if (corner.x + width > ::GetSystemMetrics(SM_CXSCREEN))
        corner.x = control.right - width;
    *rect = CRect(corner, CSize(width, height));
}

void ComboTree::GetDroppedControlRect(RECT* rect) const
{
    if (rect != nullptr && m_hWnd != nullptr)
        CalculateDroppedRect(rect);
}

int ComboTree::SetDroppedWidth(UINT width)
{
    m_nDroppedWidth = static_cast<int>(std::min<UINT>(width, INT_MAX));
    if (m_bDropped)
        PlaceTree(SWP_NOACTIVATE);
    return 0;
}

int ComboTree::SetDroppedHeight(UINT height)
{
    m_nDroppedHeight = static_cast<int>(std::min<UINT>(height, INT_MAX));
    if (m_bDropped)
        PlaceTree(SWP_NOACTIVATE);
    return 0;
}

void ComboTree::PlaceTree(UINT flags)
{
    CRect rect;
    CalculateDroppedRect(rect);
    m_tree.SetWindowPos(&wndTopMost, rect.left, rect.top, rect.Width(), rect.Height(), flags);
}

void ComboTree::DisplayTree()
{
    const HWND window = m_hWnd;
    PlaceTree(SWP_SHOWWINDOW);
    if (!VGIsAttached(this, window) || m_tree.m_hWnd == nullptr)
        return; // somebody whom it deactivated has destroyed it
    m_strSavedPath = GetCurrentTreePath();
    SetDroppedState(TRUE);
    // The keyboard stays with the edit field; the tree is to look as if it had the focus.
    m_tree.PostMessage(WM_SETFOCUS);
    m_tree.SetActiveWindow();
    if (VGIsAttached(this, window) && m_bDropped)
        m_tree.SetForegroundWindow();
}

void ComboTree::ShowDropDown(BOOL show)
{
    if (show && !m_bDropped)
        ShowTree();
    else if (!show && m_bDropped)
        HideTree();
}

void ComboTree::ShowTree()
{
    const HWND window = m_hWnd;
    if (window == nullptr || m_tree.m_hWnd == nullptr)
        return;
    m_edit.SetFocus(); // tells the parent
    if (!VGIsAttached(this, window) || m_tree.m_hWnd == nullptr)
        return;
    DisplayTree();
    if (!VGIsAttached(this, window) || !m_bDropped || !SendParentComboMessage(CBN_DROPDOWN) || !m_bDropped)
        return;
    m_hook.Hook();
    RepaintParts();
}

void ComboTree::HideTree()
{
    const HWND window = m_hWnd;
    SetDroppedState(FALSE);
    if (m_tree.m_hWnd != nullptr)
        m_tree.ShowWindow(SW_HIDE); // somebody becomes active
    if (!VGIsAttached(this, window))
        return;
    m_hook.HookWindow(nullptr);
    RepaintParts();
}

void ComboTree::RepaintParts()
{
    Repaint(m_edit);
    Repaint(m_button);
    Repaint(*this);
}

// What the parent does about the notification must not end the drop-down once more: it may move itself, or
// open a box, which the tree must not cover.
bool ComboTree::SendEnding(UINT code)
{
    m_bEnding = m_hWnd != nullptr;
    if (!SendParentComboMessage(code))
        return false;
    m_bEnding = false;
    return true;
}

void ComboTree::OnSelection()
{
    if (m_bEnding) {
        HideTree();
        return;
    }
    const HTREEITEM item = GetCurSel();
    if (m_tree.IsChoosable(item)) {
        m_edit.SetWindowText(m_tree.GetItemText(item));
        if (!SendEnding(CBN_SELENDOK))
            return;
    }
    HideTree();
}

void ComboTree::OnCancel()
{
    if (m_bEnding) {
        HideTree();
        return;
    }
    SelectString(m_strSavedPath, nullptr);
    if (SendEnding(CBN_SELENDCANCEL))
        HideTree();
}

void ComboTree::OnDropdownButton()
{
    if (m_bDropped)
        OnSelection();
    else
        ShowTree();
}

// ---- Keyboard and focus

BOOL ComboTree::PreTranslateMessage(MSG* pMsg)
{
    if (!IsKeyMessage(pMsg->message) || (pMsg->hwnd != m_hWnd && !::IsChild(m_hWnd, pMsg->hwnd)))
        return CWnd::PreTranslateMessage(pMsg);
    // Tab, Enter and Escape also come as characters, of the same value. Those are no input for the edit
    // field.
    const WPARAM taken = std::exchange(m_takenKey, 0);
    if (taken != 0 && pMsg->message == WM_CHAR && pMsg->wParam == taken)
        return TRUE;
    const HWND window = m_hWnd;
    const bool dropped = m_bDropped != FALSE;
    if (dropped ? OnKeyDropdownActive(pMsg->message, pMsg->wParam)
                : OnKeyDropdownInactive(pMsg->message, pMsg->wParam)) {
        if (VGIsAttached(this, window))
            m_takenKey = pMsg->wParam;
        return FALSE; // what the key did is done; it still arrives at its window
    }
    if (dropped && SendTreeMessage(pMsg->message, pMsg->wParam, pMsg->lParam) == 0)
        return FALSE;
    return VGIsAttached(this, window) && CWnd::PreTranslateMessage(pMsg);
}

bool ComboTree::OnKeyDropdownInactive(UINT msg, WPARAM key)
{
    if ((msg == WM_SYSKEYDOWN && key == VK_DOWN) || (msg == WM_KEYDOWN && key == VK_F4))
        ShowTree();
    else if (msg == WM_KEYDOWN && key == VK_TAB)
        MoveFocusToNextControl();
    else
        return false;
    return true;
}

bool ComboTree::OnKeyDropdownActive(UINT msg, WPARAM key)
{
    if (msg == WM_SYSKEYDOWN && key != VK_UP)
        return false;
    if (msg == WM_SYSKEYDOWN || key == VK_RETURN || (msg == WM_KEYDOWN && key == VK_F4)) {
        OnSelection();
    } else if (key == VK_ESCAPE) {
        OnCancel();
    } else if (msg == WM_KEYDOWN && key == VK_TAB) {
        const HWND window = m_hWnd;
        OnSelection();
        if (VGIsAttached(this, window))
            MoveFocusToNextControl();
    } else {
        return false;
    }
    return true;
}

void ComboTree::MoveFocusToNextControl()
{
    CWnd* const parent = m_hWnd != nullptr ? GetParent() : nullptr;
    if (parent == nullptr)
        return;
    if (CWnd* const next = parent->GetNextDlgTabItem(this, ::GetKeyState(VK_SHIFT) < 0))
        next->SetFocus();
}

bool ComboTree::IsMouseOnButton() const
{
    return IsMouseOn(m_button);
}

bool ComboTree::IsMouseOnEdit() const
{
    return IsMouseOn(m_edit);
}

bool ComboTree::IsEditHighlightOn() const
{
    const HWND focus = ::GetFocus();
    return focus != nullptr && (focus == m_hWnd || focus == m_edit.m_hWnd || focus == m_button.m_hWnd);
}

BOOL ComboTree::OnCommand(WPARAM wParam, LPARAM lParam)
{
    if (HIWORD(wParam) == BN_KILLFOCUS)
        Repaint(m_edit);
    return CWnd::OnCommand(wParam, lParam);
}

void ComboTree::OnSetFocus(CWnd* pOldWnd)
{
    CWnd::OnSetFocus(pOldWnd);
    if (m_edit.m_hWnd == nullptr || ::GetFocus() == m_button.m_hWnd)
        return;
    Repaint(m_edit);
    m_edit.SetFocus();
}

void ComboTree::OnKillFocus(CWnd* /*pNewWnd*/)
{
    Default();
    Repaint(m_edit);
}

UINT ComboTree::OnGetDlgCode()
{
    return static_cast<UINT>(Default()) | ComboTreeDropList::kDlgCode;
}

void ComboTree::OnSetfocusEdit()
{
    SendParentComboMessage(CBN_SETFOCUS);
}

void ComboTree::OnKillfocusEdit()
{
    if (!m_bDropped)
        SendParentComboMessage(CBN_KILLFOCUS);
}
