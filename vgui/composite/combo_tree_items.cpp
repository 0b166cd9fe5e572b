// The tree combo box's items: what it hands on to its tree.
#include "vgui/composite/combo_tree.h"

BOOL ComboTree::SetHasCheckboxes(BOOL has)
{
    if ((has != FALSE) == (m_bHasCheckboxes != FALSE))
        return TRUE;
    if (m_tree.m_hWnd != nullptr)
        return FALSE;
    m_bHasCheckboxes = has;
    return TRUE;
}

void ComboTree::SetEnableSelectParent(BOOL enable)
{
    m_tree.m_bSelectParent = enable;
}

wchar_t ComboTree::GetPathDelimiter() const
{
    return m_tree.m_chDelimiter;
}

void ComboTree::SetPathDelimiter(wchar_t delimiter)
{
    m_tree.m_chDelimiter = delimiter;
}

HTREEITEM ComboTree::AddString(LPCWSTR path)
{
    return m_tree.AddPath(path);
}

HTREEITEM ComboTree::FindString(LPCWSTR path, HTREEITEM parent)
{
    return m_tree.FindPath(path, parent);
}

HTREEITEM ComboTree::SelectString(LPCWSTR path, HTREEITEM parent)
{
    const HTREEITEM item = FindString(path, parent);
    if (item != nullptr)
        m_tree.SelectItem(item);
    return item;
}

HTREEITEM ComboTree::FindChildItem(LPCWSTR label, HTREEITEM parent)
{
    return m_tree.FindLabel(label, parent);
}

HTREEITEM ComboTree::FindChildItemData(DWORD data, HTREEITEM parent)
{
    return m_tree.FindData(data, parent);
}

int ComboTree::DeleteString(HTREEITEM item)
{
    const HTREEITEM selected = GetCurSel();
    if (item == nullptr || !SendTreeMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(item)))
        return -1;
    if (item != selected)
        return 0;
    const HTREEITEM next = GetCurSel();
    m_edit.SetWindowText(next != nullptr ? m_tree.GetItemText(next) : CString());
    if (next != nullptr)
        SendParentComboMessage(CBN_SELCHANGE);
    return 0;
}

void ComboTree::ResetContent()
{
    SendTreeMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
}

HTREEITEM ComboTree::GetCurSel() const
{
    return reinterpret_cast<HTREEITEM>(SendTreeMessage(TVM_GETNEXTITEM, TVGN_CARET, 0));
}

int ComboTree::GetLBText(HTREEITEM item, CString& text) const
{
    text = item != nullptr && m_tree.m_hWnd != nullptr ? m_tree.GetItemText(item) : CString();
    return text.IsEmpty() ? -1 : 0;
}

int ComboTree::SetItemData(HTREEITEM item, DWORD_PTR data)
{
    return item != nullptr && m_tree.m_hWnd != nullptr && m_tree.SetItemData(item, data) ? 0 : -1;
}

DWORD_PTR ComboTree::GetItemData(HTREEITEM item) const
{
    return item != nullptr && m_tree.m_hWnd != nullptr ? m_tree.GetItemData(item) : 0;
}

CString ComboTree::GetTreePath(HTREEITEM item) const
{
    return m_tree.PathOf(item);
}

CString ComboTree::GetCurrentTreePath() const
{
    return GetTreePath(GetCurSel());
}

CString ComboTree::GetCurrentTreeItem() const
{
    CString text;
    GetLBText(GetCurSel(), text);
    return text;
}

// ---- Check states

BOOL ComboTree::SetCheck(HTREEITEM item, BOOL check)
{
    int state = ComboTreeNoCheck;
    if (!m_bHasCheckboxes || !m_tree.ReadState(item, state))
        return FALSE;
    const bool agrees = (state == ComboTreeChecked) == (check != FALSE);
    m_tree.ChangeState(item, state, agrees ? ComboTreeReapply : check ? ComboTreeCheck : ComboTreeUncheck);
    return TRUE;
}

BOOL ComboTree::IsItemChecked(HTREEITEM item) const
{
    return m_bHasCheckboxes && m_tree.GetCheckState(item) == ComboTreeChecked;
}

HTREEITEM ComboTree::GetFirstCheckedItem() const
{
    return m_bHasCheckboxes && m_tree.m_hWnd != nullptr ? m_tree.FirstCheckedFrom(m_tree.GetRootItem())
                                                        : nullptr;
}

HTREEITEM ComboTree::GetNextCheckedItem(HTREEITEM item) const
{
    return m_bHasCheckboxes ? m_tree.FirstCheckedFrom(GetNextItem(item)) : nullptr;
}

HTREEITEM ComboTree::GetPrevCheckedItem(HTREEITEM item) const
{
    return m_bHasCheckboxes ? m_tree.PreviousChecked(item) : nullptr;
}

// ---- Walks

HTREEITEM ComboTree::GetNextItem(HTREEITEM item) const
{
    return m_tree.NextInTree(item);
}

HTREEITEM ComboTree::GetPrevItem(HTREEITEM item) const
{
    return m_tree.PreviousInTree(item);
}

HTREEITEM ComboTree::GetLastItem(HTREEITEM item) const
{
    return m_tree.LastInTree(item);
}

// The tree answers its first item for the next sibling of a null item, so that asking again always ends.
HTREEITEM ComboTree::GetLastSibling(HTREEITEM item) const
{
    const auto next = [this](HTREEITEM of) {
        return reinterpret_cast<HTREEITEM>(
            SendTreeMessage(TVM_GETNEXTITEM, TVGN_NEXT, reinterpret_cast<LPARAM>(of)));
    };
    const HTREEITEM sibling = next(item);
    return sibling != nullptr ? sibling : next(nullptr);
}

void ComboTree::ExpandBranch(HTREEITEM item)
{
    if (item == nullptr || SendTreeMessage(TVM_GETNEXTITEM, TVGN_CHILD, reinterpret_cast<LPARAM>(item)) == 0)
        return;
    m_tree.ExpandOrCollapseBranch(item, TVE_EXPAND);
    SendTreeMessage(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(GetCurSel()));
}

void ComboTree::CollapseBranch(HTREEITEM item)
{
    m_tree.ExpandOrCollapseBranch(item, TVE_COLLAPSE);
}

void ComboTree::CollapseAllSiblings(HTREEITEM item)
{
    if (item == nullptr || m_tree.m_hWnd == nullptr)
        return;
    for (HTREEITEM next = m_tree.GetNextSiblingItem(item); next != nullptr;
         next = m_tree.GetNextSiblingItem(next))
        m_tree.Expand(next, TVE_COLLAPSE);
    for (HTREEITEM prev = m_tree.GetPrevSiblingItem(item); prev != nullptr;
         prev = m_tree.GetPrevSiblingItem(prev))
        m_tree.Expand(prev, TVE_COLLAPSE);
}
