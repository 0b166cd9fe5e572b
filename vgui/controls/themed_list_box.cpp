#include "vgui/controls/control_frame.h"
#include "vgui/controls/themed_controls.h"
#include "vgui/foundation/attached.h"
#include "vgui/foundation/gui_manager.h"
#include "vgui/foundation/skin_host.h"

namespace
{

// Item data as it is stored for a long, whose sign is kept.
DWORD_PTR ToItemData(long data)
{
    return static_cast<DWORD_PTR>(static_cast<LONG_PTR>(data));
}

// What the user sees of one item's state, to be put back when the item has been replaced.
class ItemState
{
public:
    ItemState(CListBox& list, int index)
        : m_list(list), m_index(index), m_top(list.GetTopIndex()),
          m_multiple((list.GetStyle() & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0),
          m_selected(m_multiple ? list.GetSel(index) > 0 : list.GetCurSel() == index),
          m_caret(list.GetCaretIndex())
    {
    }

    void Restore() const
    {
        if (m_multiple) {
            m_list.SetSel(m_index, m_selected);
            m_list.SetCaretIndex(m_caret);
        } else if (m_selected) {
            m_list.SetCurSel(m_index);
        }
        m_list.SetTopIndex(m_top);
    }

private:
    CListBox& m_list;
    int m_index;
    int m_top;
    bool m_multiple;
    bool m_selected;
    int m_caret;
};

} // namespace

IMPLEMENT_DYNAMIC(VListBox, CListBox)

BEGIN_MESSAGE_MAP(VListBox, CListBox)
    ON_WM_MOUSEMOVE()
    ON_WM_DESTROY()
    ON_WM_NCPAINT()
    ON_WM_ENABLE()
    ON_MESSAGE(LB_ADDSTRING, &VListBox::OnItemsChange)
    ON_MESSAGE(LB_INSERTSTRING, &VListBox::OnItemsChange)
    ON_MESSAGE(LB_DELETESTRING, &VListBox::OnItemsChange)
    ON_MESSAGE(LB_RESETCONTENT, &VListBox::OnItemsChange)
END_MESSAGE_MAP()

// The object may have left its former window without that one's end.
void VListBox::PreSubclassWindow()
{
    m_pToolTip = nullptr;
    m_nTipItem = -1;
    CListBox::PreSubclassWindow();
}

// Gives the item its data, unless its index says that there is none.
int VListBox::AddWithData(int index, DWORD_PTR data)
{
    if (index >= 0)
        SetItemData(index, data);
    return index;
}

int VListBox::AddItem(const wchar_t* text, long data)
{
    return AddWithData(AddString(CString(text)), ToItemData(data));
}

int VListBox::InsertItem(int index, const wchar_t* text, ULONG_PTR data)
{
    return AddWithData(InsertString(index, CString(text)), data);
}

void VListBox::GetItem(int index, CString& text) const
{
    text.Empty();
    if (index >= 0 && index < GetCount())
        GetText(index, text);
}

int VListBox::FindItemByItemData(long data)
{
    const int count = GetCount();
    for (int index = 0; index < count; ++index) {
        if (GetItemData(index) == ToItemData(data))
            return index;
    }
    return -1;
}

void VListBox::SetText(int index, const wchar_t* text)
{
    if (index < 0 || index >= GetCount())
        return;
    const ItemState state(*this, index);
    const DWORD_PTR data = GetItemData(index);
    // The new item comes first, so that nothing is lost when there is no memory for it.
    if (InsertString(index, CString(text)) != index)
        return;
    SetItemData(index, data);
    // Without data the old item goes silently: the owner must not free what the new one has.
    SetItemData(index + 1, 0);
    DeleteString(index + 1);
    state.Restore();
}

int VListBox::SelectStringExact(int start, const wchar_t* text)
{
    const int found = FindStringExact(start >= 0 && start < GetCount() ? start : -1, CString(text));
    return found >= 0 ? SetCurSel(found) : -1;
}

int VListBox::EnableTips()
{
    constexpr int kDone = 1;
    VSkinHost* const host = VSkinHost::Of(this);
    if (m_pToolTip != nullptr || host == nullptr)
        return kDone;
    CToolTipCtrl& tip = host->GetToolTipCtrl();
    if (!::IsWindow(tip.m_hWnd))
        return kDone;
    tip.Activate(FALSE);
    if (tip.AddTool(this, L""))
        m_pToolTip = &tip;
    return kDone;
}

bool VListBox::HasTips() const
{
    return m_pToolTip != nullptr && ::IsWindow(m_pToolTip->m_hWnd);
}

int VListBox::ItemAt(CPoint point) const
{
    BOOL outside = FALSE;
    const UINT answer = ItemFromPoint(point, outside);
    // The list answers the lower 16 bits of an index; what it shows is not that far from its top.
    const UINT top = static_cast<UINT>(GetTopIndex());
    const int item = static_cast<int>(top + ((answer - top) & 0xFFFF));
    // Below the last item the list answers that one.
    CRect rect;
    return !outside && GetItemRect(item, rect) != LB_ERR && rect.PtInRect(point) ? item : -1;
}

BOOL VListBox::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg != nullptr && HasTips())
        RelayToTip(*pMsg);
    return CListBox::PreTranslateMessage(pMsg);
}

void VListBox::RelayToTip(MSG& message)
{
    CPoint point = message.pt;
    ScreenToClient(&point);
    CRect client;
    GetClientRect(client);
    const bool inside = client.PtInRect(point) != FALSE;
    if (inside) {
        const int item = ItemAt(point);
        if (item >= 0 && item != m_nTipItem) {
            m_nTipItem = item;
            CString text;
            GetItem(item, text);
            m_pToolTip->UpdateTipText(text, this);
        }
        m_pToolTip->RelayEvent(&message);
    }
    m_pToolTip->Activate(inside);
}

void VListBox::OnMouseMove(UINT nFlags, CPoint point)
{
    const HWND window = m_hWnd;
    CListBox::OnMouseMove(nFlags, point);
    // The tip does not stay when the mouse goes on to where there is no item. The parent may have destroyed
    // the list when the mouse selected an item on its way.
    if (VGIsAttached(this, window) && m_nTipItem >= 0 && ItemAt(point) < 0)
        ForgetTip();
}

// The mouse's next move asks for a text anew.
void VListBox::ForgetTip()
{
    m_nTipItem = -1;
    if (HasTips())
        m_pToolTip->UpdateTipText(L"", this);
}

// What comes or goes above the tip's item moves it away.
LRESULT VListBox::OnItemsChange(WPARAM wParam, LPARAM)
{
    const HWND window = m_hWnd;
    const UINT message = GetCurrentMessage()->message;
    const LRESULT result = Default();
    // The owner is told of deleted items and may destroy the list.
    if (!VGIsAttached(this, window))
        return result;
    LRESULT first = 0;
    if (message == LB_DELETESTRING)
        first = static_cast<LRESULT>(wParam);
    else if (message != LB_RESETCONTENT)
        first = result;
    if (first >= 0 && first <= m_nTipItem)
        ForgetTip();
    return result;
}

void VListBox::OnDestroy()
{
    if (HasTips())
        m_pToolTip->DelTool(this);
    m_pToolTip = nullptr;
    m_nTipItem = -1;
    CListBox::OnDestroy();
}

void VListBox::OnNcPaint()
{
    CListBox::OnNcPaint();
    PaintControlFrame(*this, VGM.List.clrFrame, IsWindowEnabled() != FALSE);
}

void VListBox::OnEnable(BOOL bEnable)
{
    CListBox::OnEnable(bEnable);
    InvalidateFrame(*this);
}
