#include "vgui/composite/combo_tree_list.h"

#include "vgui/composite/combo_tree.h"
#include "vgui/composite/combo_tree_paths.h"
#include "vgui/foundation/attached.h"
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
constexpr UINT kDlgCode = DLGC_WANTARROWS | DLGC_WANTALLKEYS | DLGC_WANTCHARS;

} // namespace

IMPLEMENT_DYNAMIC(ComboTreeDropList, CTreeCtrl)

BEGIN_MESSAGE_MAP(ComboTreeDropList, CTreeCtrl)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_CLOSE()
    ON_WM_PAINT()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_KEYDOWN()
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
    if (CTreeCtrl::OnCreate(lpCreateStruct) == -1 || m_pCombo == nullptr)
        return -1;
    m_tip.Watch(*this);
    CComboPopupText::Instance().BelongTo(*this);
    if (!m_pCombo->GetHasCheckboxes() || LoadCheckImages())
        return 0;
    DestroyWindow(); // a window whose creation fails need not see WM_DESTROY, without which a tree leaks
    return -1;
}

BOOL ComboTreeDropList::DestroyWindow()
{
    if (m_hWnd != nullptr)
        CComboPopupText::Instance().Leave(*this);
    return CTreeCtrl::DestroyWindow();
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
    return m_bSelectParent || !ItemHasChildren(item) || (m_pCombo != nullptr && m_pCombo->GetHasCheckboxes());
}

// Some versions of the tree control ask the system who has the focus and show the selection of others faintly
// or not at all.
void ComboTreeDropList::OnPaint()
{
    CRect label;
    const bool hasSelection = GetItemRect(GetSelectedItem(), label, TRUE) != FALSE;
    if (hasSelection)
        InvalidateRect(label, FALSE);
    Default();
    if (hasSelection)
        HighlightSelection(label);
}

// Gives a label that the tree has painted the colours of the selection, unless it has them. The picture is
// recoloured by way of a monochrome copy, which keeps the label's font.
void ComboTreeDropList::HighlightSelection(CRect label)
{
    CRect client;
    GetClientRect(client);
    label.IntersectRect(label, client);
    CClientDC dc(this);
    const COLORREF highlight = ::GetSysColor(COLOR_HIGHLIGHT);
    const COLORREF background = dc.GetPixel(label.left + 1, label.top + 1);
    CDC memory;
    CBitmap copy;
    if (background == highlight || background == CLR_INVALID || !memory.CreateCompatibleDC(&dc) ||
        !copy.CreateBitmap(label.Width(), label.Height(), 1, 1, nullptr))
        return;
    const VSelectScope selected(memory, copy);
    {
        const VBkColorScope white(dc.m_hDC, background);
        memory.BitBlt(0, 0, label.Width(), label.Height(), &dc, label.left, label.top, SRCCOPY);
    }
    const VBkColorScope back(dc.m_hDC, highlight);
    const VTextColorScope text(dc.m_hDC, ::GetSysColor(COLOR_HIGHLIGHTTEXT));
    dc.BitBlt(label.left, label.top, label.Width(), label.Height(), &memory, 0, 0, SRCCOPY);
}

// Mouse and keys --------------------------------------------------------------------------------------------

HTREEITEM ComboTreeDropList::ItemAt(CPoint point, UINT hitFlags) const
{
    UINT flags = 0;
    const HTREEITEM item = HitTest(point, &flags);
    return (flags & hitFlags) != 0 ? item : nullptr;
}

void ComboTreeDropList::OnLButtonDown(UINT nFlags, CPoint point)
{
    const HWND window = m_hWnd;
    if (const HTREEITEM item = ItemAt(point, TVHT_ONITEMSTATEICON)) {
        SetCheckState(item, ComboTreeToggle);
        return;
    }
    const HTREEITEM item = ItemAt(point, TVHT_ONITEMICON | TVHT_ONITEMLABEL);
    if (item != nullptr && item != GetSelectedItem() && m_pCombo != nullptr)
        m_pCombo->SendParentComboMessage(CBN_SELCHANGE);
    if (VGIsAttached(this, window))
        CTreeCtrl::OnLButtonDown(nFlags, point);
}

void ComboTreeDropList::OnLButtonDblClk(UINT nFlags, CPoint point)
{
    const HWND window = m_hWnd;
    CTreeCtrl::OnLButtonDblClk(nFlags, point);
    if (!VGIsAttached(this, window) || m_pCombo == nullptr)
        return;
    const HTREEITEM item = ItemAt(point, TVHT_ONITEM);
    if (item != nullptr && IsChoosable(item) && m_pCombo->SendParentComboMessage(CBN_DBLCLK))
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
    if (m_hWnd != nullptr && m_pCombo != nullptr && GetSelectedItem() != before)
        m_pCombo->SendParentComboMessage(CBN_SELCHANGE);
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

// Paths -----------------------------------------------------------------------------------------------------

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
    HTREEITEM child = parent != nullptr ? GetChildItem(parent) : GetRootItem();
    while (child != nullptr && static_cast<DWORD>(GetItemData(child)) != data)
        child = GetNextSiblingItem(child);
    return child;
}

HTREEITEM ComboTreeDropList::AddPath(LPCWSTR path, bool checkBoxes)
{
    if (path == nullptr || *path == 0 || m_hWnd == nullptr)
        return nullptr;
    const ComboTreePathMatch match = MatchTreePath(*m_labels, path, m_chDelimiter, nullptr);
    if (match.item != nullptr)
        return nullptr;
    ComboTreePathParts left = match.left;
    HTREEITEM parent = match.parent;
    while (!left.rest.empty()) {
        parent = AddLabel(std::wstring(left.head), parent, checkBoxes);
        if (parent == nullptr)
            return nullptr;
        left = SplitTreePath(left.rest, m_chDelimiter);
    }
    return AddLabel(std::wstring(left.head), parent, checkBoxes);
}

HTREEITEM ComboTreeDropList::AddLabel(const std::wstring& label, HTREEITEM parent, bool checkBoxes)
{
    const UINT mask = checkBoxes ? TVIF_TEXT | TVIF_STATE : TVIF_TEXT;
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
