// The property list's editors and the keyboard.
#include "vgui/composite/cell_editor.h"
#include "vgui/composite/property_list.h"
#include "vgui/foundation/attached.h"

#include <algorithm>

namespace
{

constexpr int kRowHeight = 20;  // pixels
constexpr int kDropHeight = 80; // of a combo box, pixels below its row
constexpr DWORD kComboStyle = WS_CHILD | WS_BORDER | WS_VSCROLL | CBS_AUTOHSCROLL;

} // namespace

void VPropertyList::PreSubclassWindow()
{
    VListBox::PreSubclassWindow();
    PrepareControl();
}

int VPropertyList::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    const int result = VListBox::OnCreate(lpCreateStruct);
    // A list box that has only begun to exist could not do everything before.
    if (result == 0)
        PrepareControl();
    return result;
}

// Makes what is missing: the editors, the height of the rows, rows that were added without a window.
void VPropertyList::PrepareControl()
{
    // Painting the rows leaves the editor alone.
    ModifyStyle(0, WS_CLIPCHILDREN);
    CreateEditors();
    SetItemHeight(0, kRowHeight);
    for (int row = GetCount(); row >= 0 && row < m_items.GetCount(); ++row)
        AddString(L"");
}

void VPropertyList::CreateEditors()
{
    for (CWnd* const editor : Editors()) {
        if (IsEditorElsewhere(*editor, m_hWnd)) {
            m_nEditIndex = kNoRow;
            editor->DestroyWindow();
        }
    }
    const CRect place(0, 0, 1, 1);
    if (m_edit.m_hWnd == nullptr)
        m_edit.Create(kCellEditStyle, place, this, kEditId);
    if (m_combo.m_hWnd == nullptr)
        m_combo.Create(kComboStyle | CBS_DROPDOWN, place, this, kComboId);
    if (m_dropList.m_hWnd == nullptr)
        m_dropList.Create(kComboStyle | CBS_DROPDOWNLIST, place, this, kComboId);
    SetEditorFonts();
}

void VPropertyList::SetEditorFonts()
{
    CFont* const font = GetFont();
    for (CWnd* const editor : Editors()) {
        if (editor->m_hWnd != nullptr)
            editor->SetFont(font);
    }
}

std::array<CWnd*, 3> VPropertyList::Editors()
{
    return {&m_combo, &m_dropList, &m_edit};
}

bool VPropertyList::HasVisibleEditor() const
{
    return IsEditorShown(m_combo) || IsEditorShown(m_dropList) || IsEditorShown(m_edit);
}

void VPropertyList::PlaceEditor(int index)
{
    CRect row;
    if (!IsValidIndex(index) || GetItemRect(index, row) == LB_ERR)
        return;
    CWnd& editor = *Editors()[m_items[index].kind];
    if (editor.m_hWnd == nullptr)
        return;
    CRect place = row;
    place.left += ColumnWidth(row.Width(), m_nNamePercent);
    place.right = std::max(place.left, place.left + ColumnWidth(row.Width(), m_nValuePercent));
    place.bottom += m_items[index].kind == PIET_EDIT ? -1 : kDropHeight;
    editor.MoveWindow(place);
}

void VPropertyList::StartEdit(int index)
{
    if (m_items.GetAt(index).kind == PIET_GROUP || m_hWnd == nullptr)
        return;
    const HWND self = m_hWnd;
    // Where the focus goes the parent is told, who may close the list or take rows away.
    EndEdit(true);
    if (!VGIsAttached(this, self) || !IsValidIndex(index) || m_items[index].kind == PIET_GROUP)
        return;
    CreateEditors();
    PlaceEditor(index);
    OpenEditor(m_items[index]);
    if (!VGIsAttached(this, self) || !HasVisibleEditor())
        return;
    TellParent(kEditStarted, index, m_nEditIndex);
    m_nEditIndex = index;
    Repaint();
}

void VPropertyList::TellParent(UINT message, int row, int detail)
{
    if (CWnd* const parent = GetParent())
        parent->PostMessage(message, row, detail);
}

// Fills the editor of a row, if there is one, and shows it.
void VPropertyList::OpenEditor(const PropertyItem& item)
{
    CWnd& editor = *Editors()[item.kind];
    if (editor.m_hWnd == nullptr)
        return;
    if (item.kind != PIET_EDIT) {
        CComboBox& combo = static_cast<CComboBox&>(editor);
        combo.ResetContent();
        AddStrToComboList(&combo, item.choices);
    }
    if (item.kind == PIET_DROPLIST)
        m_dropList.SelectString(-1, item.value);
    else
        editor.SetWindowText(item.value);
    editor.ShowWindow(SW_SHOW);
    if (item.kind == PIET_EDIT)
        m_edit.SetSel(0, -1);
    else if (item.kind == PIET_COMBO)
        m_combo.SetEditSel(0, -1);
    editor.SetFocus();
}

void VPropertyList::EndEdit(bool notify)
{
    if (m_nEditIndex == kNoRow || !HasVisibleEditor())
        return;
    if (IsValidIndex(m_nEditIndex)) {
        ReadEditor(m_items[m_nEditIndex]);
        if (notify)
            TellParent(kValueStored, m_nEditIndex, 0);
    }
    CloseEditor();
}

void VPropertyList::ReadEditor(PropertyItem& item)
{
    if (item.kind != PIET_DROPLIST)
        Editors()[item.kind]->GetWindowText(item.value);
    else if (m_dropList.GetCurSel() != CB_ERR)
        m_dropList.GetLBText(m_dropList.GetCurSel(), item.value);
}

// Closes the editor, if there is one, whatever is in it. The list may not exist any more afterwards.
void VPropertyList::CloseEditor()
{
    const HWND self = m_hWnd;
    m_nEditIndex = kNoRow;
    Repaint();
    for (CWnd* const editor : Editors()) {
        if (IsEditorShown(*editor))
            editor->ShowWindow(SW_HIDE);
        if (!VGIsAttached(this, self))
            return;
    }
}

void VPropertyList::AddStrToComboList(CComboBox* combo, const CString& choices)
{
    if (combo == nullptr)
        return;
    int start = 0;
    for (int end = 0; end >= 0; start = end + 1) {
        end = choices.Find(L'|', start);
        combo->AddString(end >= 0 ? choices.Mid(start, end - start) : choices.Mid(start));
    }
}

void VPropertyList::EnsureVisible(int index)
{
    if (!IsValidIndex(index))
        return;
    CRect client;
    GetClientRect(client);
    // Of a long way most lines are skipped.
    const int page = client.Height() / std::max(GetItemHeight(0), 1) + 1;
    if (const int lines = index - GetTopIndex(); lines > 2 * page || lines < -page)
        SetTopIndex(index + (lines < 0 ? page : -2 * page));
    const auto scrollWhile = [&](UINT direction, auto isHidden) {
        CRect row;
        int top = -1;
        while (top != GetTopIndex() && GetItemRect(index, row) != LB_ERR && isHidden(row)) {
            top = GetTopIndex();
            SendMessage(WM_VSCROLL, direction);
        }
    };
    scrollWhile(SB_LINEDOWN, [&](const CRect& row) { return row.bottom > client.bottom; });
    scrollWhile(SB_LINEUP, [&](const CRect& row) { return row.top < client.top; });
}

BOOL VPropertyList::OnSelchange()
{
    const int selected = GetCurSel();
    if (selected != m_nEditIndex && IsValidIndex(selected))
        StartEdit(selected);
    return FALSE;
}

void VPropertyList::OnKillfocusCmbBox() {}

void VPropertyList::OnKillfocusEditBox() {}

BOOL VPropertyList::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg == nullptr || pMsg->message != WM_KEYDOWN)
        return VListBox::PreTranslateMessage(pMsg);
    switch (pMsg->wParam) {
    case VK_RETURN:
    case VK_TAB:
        if (!EditRow(m_nEditIndex + 1))
            LeaveList();
        return TRUE;
    case VK_DOWN:
        EditRow(m_nEditIndex + 1);
        return TRUE;
    case VK_UP:
        EditRow(m_nEditIndex - 1);
        return TRUE;
    default:
        return VListBox::PreTranslateMessage(pMsg);
    }
}

// Goes to a row; false when there is no such row.
bool VPropertyList::EditRow(int index)
{
    if (!IsValidIndex(index))
        return false;
    EnsureVisible(index);
    StartEdit(index);
    return true;
}

void VPropertyList::LeaveList()
{
    CWnd* const parent = GetParent();
    CWnd* const next = parent != nullptr ? parent->GetNextDlgTabItem(this) : nullptr;
    if (next != nullptr)
        next->SetFocus();
}
