#include "vgui/composite/combo_tree_list.h"

#include "vgui/composite/combo_tree.h"
#include "vgui/composite/combo_tree_paths.h"
#include "vgui/foundation/attached.h"
#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/gdi_scope.h"

#include <vector>

namespace
{

constexpr WCHAR kCheckBitmap[] = L"COMBOTREECHECKS";
constexpr WCHAR kNoCheckBitmap[] = L"Can't create tree check image list! Make sure bitmap with "
                                   L"\"COMBOTREECHECKS\" (note quotes) was added as "
                                   L"resource";
constexpr int kCheckWidth = 13;
constexpr COLORREF kCheckMask = RGB(255, 255, 255);

// Whether most of a label's upper edge has a colour; parts of letters may lie on it.
bool HasBackground(const CDC& dc, const CRect& label, COLORREF color)
{
    int count = 0;
    for (int x = label.left; x < label.right; ++x)
        count += dc.GetPixel(x, label.top + 1) == color ? 1 : 0;
    return 2 * count > label.Width();
}

} // namespace

IMPLEMENT_DYNAMIC(ComboTreeDropList, CTreeCtrl)

BEGIN_MESSAGE_MAP(ComboTreeDropList, CTreeCtrl)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_CLOSE()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_KEYDOWN()
    ON_WM_CHAR()
    ON_WM_ACTIVATEAPP()
    ON_WM_GETDLGCODE()
END_MESSAGE_MAP()

ComboTreeDropList::ComboTreeDropList() : m_labels(std::make_unique<ComboTreeLabels>(*this)) {}

// While the members that its messages need still exist.
ComboTreeDropList::~ComboTreeDropList()
{
    DestroyWindow();
}

int ComboTreeDropList::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    // A window whose creation fails need not see WM_DESTROY, without which a tree leaks.
    try {
        if (CTreeCtrl::OnCreate(lpCreateStruct) != -1 && m_pCombo != nullptr) {
            m_tip.Watch(*this);
            CComboPopupText::Instance().BelongTo(*this);
            if (!HasCheckBoxes() || LoadCheckImages())
                return 0;
        }
    } catch (...) {
        DestroyWindow();
        throw;
    }
    DestroyWindow();
    return -1;
}

BOOL ComboTreeDropList::DestroyWindow()
{
    if (m_hWnd != nullptr)
        CComboPopupText::Instance().Leave(*this);
    return CTreeCtrl::DestroyWindow();
}

bool ComboTreeDropList::HasCheckBoxes() const
{
    return m_pCombo != nullptr && m_pCombo->GetHasCheckboxes();
}

// The bitmap may be the host's: resources of the program are found before the library's own.
bool ComboTreeDropList::LoadCheckImages()
{
    if (!m_checkImages.Create(kCheckBitmap, kCheckWidth, 1, kCheckMask)) {
        AfxMessageBox(kNoCheckBitmap);
        return false;
    }
    SetImageList(&m_checkImages, TVSIL_STATE);
    return true;
}

void ComboTreeDropList::OnDestroy()
{
    if (m_pCombo != nullptr)
        m_pCombo->OnTreeDestroyed();
    CTreeCtrl::OnDestroy();
    m_checkImages.DeleteImageList();
}

// Alt+F4 reaches the tree while it is down. It is for the program, not for the popup.
void ComboTreeDropList::OnClose()
{
    if (m_pCombo != nullptr && m_pCombo->GetDroppedState())
        m_pCombo->OnCancel();
}

LRESULT ComboTreeDropList::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == TVM_GETNEXTITEM && wParam == TVGN_NEXT && lParam == 0)
        return CTreeCtrl::WindowProc(message, TVGN_ROOT, 0);
    if (!ComboTreeLabels::Concerns(message))
        return CTreeCtrl::WindowProc(message, wParam, lParam);
    ComboTreeLabels::Change change(*m_labels, message, lParam);
    const LRESULT result = CTreeCtrl::WindowProc(message, wParam, lParam);
    change.Done(result);
    return result;
}

bool ComboTreeDropList::IsChoosable(HTREEITEM item) const
{
    return m_hWnd != nullptr && item != nullptr &&
           (m_bSelectParent || HasCheckBoxes() || !ItemHasChildren(item));
}

void ComboTreeDropList::OnPaint()
{
    CPaintDC target(this);
    CRect client;
    GetClientRect(client);
    VBufferedDC dc(target, client);
    DefWindowProc(WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.m_hDC), 0);
    DefWindowProc(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc.m_hDC), PRF_ERASEBKGND | PRF_CLIENT);
    HighlightSelection(dc, client);
}

// The buffered picture has its background already.
BOOL ComboTreeDropList::OnEraseBkgnd(CDC* /*pDC*/)
{
    return TRUE;
}

// Some versions of the tree control ask the system who has the focus and show the selection of others faintly
// or not at all. The label then gets the colours of the selection by way of a monochrome copy, which keeps
// its font.
void ComboTreeDropList::HighlightSelection(CDC& dc, const CRect& client)
{
    CRect label;
    if (!GetItemRect(GetSelectedItem(), label, TRUE) || !label.IntersectRect(label, client))
        return;
    COLORREF background = GetBkColor();
    if (background == CLR_INVALID) // the tree has no colour of its own
        background = ::GetSysColor(COLOR_WINDOW);
    if (!HasBackground(dc, label, background))
        background = ::GetSysColor(COLOR_BTNFACE);
    CDC memory;
    CBitmap copy;
    if (!HasBackground(dc, label, background) || !memory.CreateCompatibleDC(&dc) ||
        !copy.CreateBitmap(label.Width(), label.Height(), 1, 1, nullptr))
        return;
    const VSelectScope selected(memory, copy);
    {
        const VBkColorScope white(dc.m_hDC, background);
        memory.BitBlt(0, 0, label.Width(), label.Height(), &dc, label.left, label.top, SRCCOPY);
    }
    const VBkColorScope back(dc.m_hDC, ::GetSysColor(COLOR_HIGHLIGHT));
    const VTextColorScope text(dc.m_hDC, ::GetSysColor(COLOR_HIGHLIGHTTEXT));
    dc.BitBlt(label.left, label.top, label.Width(), label.Height(), &memory, 0, 0, SRCCOPY);
}

// ---- Mouse and keys

HTREEITEM ComboTreeDropList::ItemAt(CPoint point, UINT hitFlags) const
{
    UINT flags = 0;
    const HTREEITEM item = HitTest(point, &flags);
    return (flags & hitFlags) != 0 ? item : nullptr;
}

// Whether there is a check box.
bool ComboTreeDropList::ToggleBoxAt(CPoint point)
{
    const HTREEITEM item = ItemAt(point, TVHT_ONITEMSTATEICON);
    if (item != nullptr)
        SetCheckState(item, ComboTreeToggle);
    return item != nullptr;
}

void ComboTreeDropList::OnLButtonDown(UINT nFlags, CPoint point)
{
    if (ToggleBoxAt(point))
        return;
    const HWND window = m_hWnd;
    const HTREEITEM before = GetSelectedItem();
    const HTREEITEM item = ItemAt(point, TVHT_ONITEMICON | TVHT_ONITEMLABEL);
    const bool selects = item != nullptr && item != before;
    if (selects && m_pCombo != nullptr)
        m_pCombo->SendParentComboMessage(CBN_SELCHANGE);
    if (!VGIsAttached(this, window))
        return;
    CTreeCtrl::OnLButtonDown(nFlags, point);
    // A folder that closes around the selected item takes its place.
    if (!selects && VGIsAttached(this, window))
        TellIfMovedFrom(before);
}

// The second of two quick clicks on a check box is one more click on it, else it would choose an item on
// which nobody has clicked.
void ComboTreeDropList::OnLButtonDblClk(UINT nFlags, CPoint point)
{
    if (ToggleBoxAt(point))
        return;
    const HWND window = m_hWnd;
    const HTREEITEM before = GetSelectedItem();
    const HTREEITEM item = ItemAt(point, TVHT_ONITEM); // before the tree scrolls what it expands into view
    CTreeCtrl::OnLButtonDblClk(nFlags, point);
    if (!VGIsAttached(this, window))
        return;
    const bool chooses = IsChoosable(item);
    if (TellIfMovedFrom(before) && chooses && m_pCombo->SendParentComboMessage(CBN_DBLCLK))
        m_pCombo->OnSelection();
}

void ComboTreeDropList::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    const HTREEITEM before = GetSelectedItem();
    if (nChar == VK_SPACE) {
        SetCheckState(before, ComboTreeToggle);
        return;
    }
    CTreeCtrl::OnKeyDown(nChar, nRepCnt, nFlags);
    TellIfMovedFrom(before);
}

void ComboTreeDropList::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    const HTREEITEM before = GetSelectedItem();
    CTreeCtrl::OnChar(nChar, nRepCnt, nFlags);
    TellIfMovedFrom(before);
}

// False when there is nobody to tell, or the combo box's window is gone afterwards.
bool ComboTreeDropList::TellIfMovedFrom(HTREEITEM before)
{
    if (m_hWnd == nullptr || m_pCombo == nullptr)
        return false;
    return GetSelectedItem() == before || m_pCombo->SendParentComboMessage(CBN_SELCHANGE);
}

void ComboTreeDropList::OnActivateApp(BOOL bActive, DWORD dwThreadID)
{
    CTreeCtrl::OnActivateApp(bActive, dwThreadID);
    if (m_pCombo != nullptr && m_pCombo->GetDroppedState())
        m_pCombo->OnCancel();
}

UINT ComboTreeDropList::OnGetDlgCode()
{
    Default();
    return kDlgCode;
}

// ---- Paths

HTREEITEM ComboTreeDropList::FindPath(LPCWSTR path, HTREEITEM parent) const
{
    if (path == nullptr || m_hWnd == nullptr)
        return nullptr;
    return MatchTreePath(*m_labels, path, m_chDelimiter, parent).item;
}

HTREEITEM ComboTreeDropList::FindLabel(LPCWSTR label, HTREEITEM parent) const
{
    return m_hWnd != nullptr ? m_labels->FindChild(parent, label != nullptr ? label : L"") : nullptr;
}

HTREEITEM ComboTreeDropList::FindData(DWORD data, HTREEITEM parent) const
{
    if (m_hWnd == nullptr)
        return nullptr;
    HTREEITEM child = FirstChildOf(parent);
    while (child != nullptr && static_cast<DWORD>(GetItemData(child)) != data)
        child = LinkOf(child, TVGN_NEXT);
    return child;
}

HTREEITEM ComboTreeDropList::AddPath(LPCWSTR path)
{
    if (path == nullptr || *path == 0 || m_hWnd == nullptr)
        return nullptr;
    const ComboTreePathMatch match = MatchTreePath(*m_labels, path, m_chDelimiter, nullptr);
    if (match.item != nullptr)
        return nullptr;
    ComboTreePathParts left = match.left;
    HTREEITEM parent = match.parent;
    while (!left.rest.empty()) {
        parent = AddLabel(std::wstring(left.head), parent);
        if (parent == nullptr)
            return nullptr;
        left = SplitTreePath(left.rest, m_chDelimiter);
    }
    return AddLabel(std::wstring(left.head), parent);
}

HTREEITEM ComboTreeDropList::AddLabel(const std::wstring& label, HTREEITEM parent)
{
    const UINT mask = HasCheckBoxes() ? TVIF_TEXT | TVIF_STATE : TVIF_TEXT;
    return InsertItem(mask, label.c_str(), 0, 0, INDEXTOSTATEIMAGEMASK(ComboTreeUnchecked),
                      TVIS_STATEIMAGEMASK, 0, parent != nullptr ? parent : TVI_ROOT, TVI_LAST);
}

CString ComboTreeDropList::PathOf(HTREEITEM item) const
{
    if (m_hWnd == nullptr)
        return {};
    std::vector<CString> labels;
    for (; item != nullptr; item = GetParentItem(item))
        labels.push_back(GetItemText(item));
    std::wstring path;
    for (auto label = labels.rbegin(); label != labels.rend(); ++label) {
        if (label != labels.rbegin())
            path += m_chDelimiter;
        path += *label;
    }
    return {path.data(), static_cast<int>(path.size())};
}
