// The property list's rows: their texts, how they are drawn, and how they keep step with the list box.
#include "vgui/composite/property_list.h"

#include "vgui/foundation/attached.h"
#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/gui_manager.h"

#include <algorithm>

namespace
{

constexpr UINT kCellText = DT_VCENTER | DT_SINGLELINE;
constexpr int kCellMargin = 3;    // pixels from a cell's edge to its text
constexpr int kHeaderMargin = 4;  // the same for headers
constexpr int kHeaderFade = -20;  // from the palette's white to a header's band
constexpr int kGroupIndent = 15;  // of the names once there are headers
constexpr UINT kAskedHeight = 55; // the answer to a list box that measures its items, which ours does not

void DrawCell(CDC& dc, CRect cell, const CString& text)
{
    cell.left += kCellMargin;
    dc.DrawText(text, cell, kCellText);
}

} // namespace

IMPLEMENT_DYNAMIC(VPropertyList, VListBox)

BEGIN_MESSAGE_MAP(VPropertyList, VListBox)
    ON_CONTROL_REFLECT_EX(LBN_SELCHANGE, &VPropertyList::OnSelchange)
    ON_CBN_KILLFOCUS(VPropertyList::kComboId, &VPropertyList::OnKillfocusCmbBox)
    ON_EN_KILLFOCUS(VPropertyList::kEditId, &VPropertyList::OnKillfocusEditBox)
    ON_WM_CREATE()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

void VPropertyList::AddItem(const CString& name, const CString& value, const CString& choices, PIET kind)
{
    if (kind < PIET_COMBO || kind > PIET_GROUP)
        return;
    m_items.Add({name, value, choices, kind});
    if (m_hWnd != nullptr && AddString(L"") < 0)
        m_items.RemoveAt(m_items.GetUpperBound());
}

bool VPropertyList::IsValidIndex(int index) const
{
    return index >= 0 && index < m_items.GetCount();
}

CString VPropertyList::GetItemName(int index) const
{
    return IsValidIndex(index) ? m_items[index].name : CString();
}

CString VPropertyList::GetItemValue(int index) const
{
    return IsValidIndex(index) ? m_items[index].value : CString();
}

void VPropertyList::SetItemName(int index, const CString& name)
{
    SetItem(index, GetItemValue(index), name);
}

void VPropertyList::SetItemValue(int index, const CString& value)
{
    SetItem(index, value, GetItemName(index));
}

void VPropertyList::SetItem(int index, const CString& value, const CString& name)
{
    if (!IsValidIndex(index))
        return;
    m_items[index].value = value;
    m_items[index].name = name;
    Repaint();
}

CString VPropertyList::FindItemValue(const CString& name) const
{
    return GetItemValue(FindItemIndex(name));
}

int VPropertyList::FindItemIndex(const CString& name) const
{
    const PropertyItem* const first = m_items.GetData();
    const PropertyItem* const last = first + m_items.GetCount();
    const PropertyItem* const found =
        std::find_if(first, last, [&](const PropertyItem& item) { return item.name == name; });
    return found != last ? static_cast<int>(found - first) : -1;
}

void VPropertyList::SetPercent(int name, int value)
{
    m_nNamePercent = name;
    m_nValuePercent = value;
}

void VPropertyList::Repaint()
{
    if (m_hWnd != nullptr)
        Invalidate();
}

// A share of a row's width, truncated; bounded to what GDI can take.
int VPropertyList::ColumnWidth(int rowWidth, int percent)
{
    constexpr float kLimit = 1 << 24;
    const float width = static_cast<float>(rowWidth) * static_cast<float>(percent) / 100.0F;
    return static_cast<int>(std::clamp(width, -kLimit, kLimit));
}

VPropertyList::Cells VPropertyList::CellsOf(CRect row) const
{
    const int origin = row.left;
    // Neighbouring cells share their border lines.
    row.InflateRect(1, 1, 1, 0);
    Cells cells{row, row};
    const int nameEnd = origin + ColumnWidth(row.Width(), m_nNamePercent);
    cells.name.left += m_nNameIndent;
    cells.name.right = nameEnd;
    cells.value.left = nameEnd - 1;
    cells.value.right = cells.value.left + ColumnWidth(row.Width(), m_nValuePercent);
    return cells;
}

void VPropertyList::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    if (lpDrawItemStruct == nullptr || lpDrawItemStruct->itemID >= static_cast<UINT>(m_items.GetCount()))
        return;
    CDC* const dc = CDC::FromHandle(lpDrawItemStruct->hDC);
    // A row looks the same whether it is selected, has the focus or not.
    const UINT action = lpDrawItemStruct->itemAction;
    if (dc == nullptr || action == ODA_SELECT || action == ODA_FOCUS)
        return;
    const int index = static_cast<int>(lpDrawItemStruct->itemID);
    const VBkModeScope transparent(dc->m_hDC, TRANSPARENT);
    if ((lpDrawItemStruct->itemState & ODS_DISABLED) != 0)
        dc->SetTextColor(::GetSysColor(COLOR_GRAYTEXT));
    if (m_items[index].kind == PIET_GROUP)
        DrawHeader(*dc, m_items[index], lpDrawItemStruct->rcItem);
    else
        DrawRow(*dc, m_items[index], CellsOf(lpDrawItemStruct->rcItem), index == m_nEditIndex);
}

void VPropertyList::DrawRow(CDC& dc, const PropertyItem& item, const Cells& cells, bool edited)
{
    for (const CRect& cell : {cells.name, cells.value})
        dc.Draw3dRect(cell, VGM.PropList.clrGrid, VGM.PropList.clrGrid);
    if (edited) {
        CRect inside = cells.name;
        inside.DeflateRect(1, 1);
        dc.FillSolidRect(inside, VGM.PropList.clrSelBk);
        dc.SetTextColor(VGM.PropList.clrSelText);
    }
    DrawCell(dc, cells.name, item.name);
    DrawCell(dc, cells.value, item.value);
    dc.SetTextColor(RGB(0, 0, 0));
}

void VPropertyList::DrawHeader(CDC& dc, const PropertyItem& item, CRect row)
{
    row.InflateRect(1, 1, 1, -1);
    dc.FillSolidRect(row, VGFadeColor(VGM.Common.clrWhite, kHeaderFade));
    row.left += kHeaderMargin;
    dc.DrawText(item.name, row, kCellText);
    // From now on every name is indented, whatever group it belongs to.
    m_nNameIndent = kGroupIndent;
}

void VPropertyList::MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct)
{
    if (lpMeasureItemStruct != nullptr)
        lpMeasureItemStruct->itemHeight = kAskedHeight;
}

void VPropertyList::OnPaint()
{
    CPaintDC target(this);
    VBufferedDC dc(target, target.m_ps.rcPaint);
    const auto parameter = reinterpret_cast<WPARAM>(dc.m_hDC);
    DefWindowProc(WM_ERASEBKGND, parameter, 0);
    DefWindowProc(WM_PAINT, parameter, 0);
}

BOOL VPropertyList::OnEraseBkgnd(CDC* pDC)
{
    // A window's own background is painted together with the rows, so that nothing flickers.
    if (pDC != nullptr && ::WindowFromDC(pDC->m_hDC) != nullptr)
        return TRUE;
    return VListBox::OnEraseBkgnd(pDC);
}

// Keeps rows and editor in step with what a message has done to the list box.
LRESULT VPropertyList::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND self = m_hWnd;
    const LRESULT result = VListBox::WindowProc(message, wParam, lParam);
    if (!VGIsAttached(this, self))
        return result;
    switch (message) {
    case LB_RESETCONTENT:
        m_items.RemoveAll();
        CloseEditor();
        break;
    case LB_DELETESTRING:
        // Not for an item that had no record: SetText inserts the new one before it deletes the old one.
        if (GetCount() < m_items.GetCount() && IsValidIndex(static_cast<int>(wParam))) {
            m_items.RemoveAt(static_cast<int>(wParam));
            CloseEditor();
        }
        break;
    case WM_SETFONT:
        SetEditorFonts();
        break;
    case WM_SIZE:
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
    case WM_KEYDOWN: // these scroll to the row that they select
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case LB_SETCURSEL:
    case LB_SELECTSTRING:
    case LB_SETCARETINDEX:
    case LB_SETTOPINDEX:
    case LB_SETITEMHEIGHT:
        PlaceEditor(m_nEditIndex);
        break;
    case WM_DESTROY:
        m_nEditIndex = kNoRow;
        break;
    default:
        break;
    }
    return result;
}
