#include "vgui/controls/combo_button.h"
#include "vgui/controls/control_tool_tip.h"
#include "vgui/controls/hot_tracking.h"
#include "vgui/controls/themed_controls.h"
#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/gui_manager.h"
#include "vgui/foundation/skin_host.h"

namespace
{

constexpr wchar_t kTextEnd = L'|'; // in a history: between the current text and the items
constexpr wchar_t kItemEnd = L';';
// The arrow of a control whose text colour the dialog sets is marked by this colour.
constexpr COLORREF kMarkedArrow = RGB(255, 0, 0);

} // namespace

IMPLEMENT_DYNAMIC(VComboBox, CComboBox)

BEGIN_MESSAGE_MAP(VComboBox, CComboBox)
    ON_WM_DESTROY()
    ON_WM_PAINT()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
    ON_MESSAGE(WM_PRINTCLIENT, &VComboBox::OnPrintClient)
END_MESSAGE_MAP()

void VComboBox::PreSubclassWindow()
{
    m_bHover = FALSE; // it may have been on when the object's former window went
    // The object may have left that window without its end, and the tip knows that one only.
    DestroyControlTip(m_toolTip);
    CComboBox::PreSubclassWindow();
}

int VComboBox::AddString(const wchar_t* text)
{
    return CComboBox::AddString(CString(text));
}

int VComboBox::SelectStringExact(int start, const wchar_t* text)
{
    const int found = FindStringExact(start >= 0 && start < GetCount() ? start : -1, CString(text));
    return found >= 0 ? SetCurSel(found) : -1;
}

int VComboBox::SetWindowTextEx(const wchar_t* text, bool selectFirst)
{
    const CString wanted(text);
    int index = FindStringExact(-1, wanted);
    if (index < 0 && !wanted.IsEmpty())
        index = AddString(wanted);
    else if (index < 0 && selectFirst)
        index = 0;
    // Selecting -1 would take away the selection.
    return index >= 0 ? SetCurSel(index) : -1;
}

bool VComboBox::LoadHistory(const CString& history)
{
    const int textEnd = history.Find(kTextEnd);
    if (textEnd < 0)
        return false;
    const CString current = history.Left(textEnd);
    ResetContent();
    for (int begin = textEnd + 1; begin < history.GetLength();) {
        int end = history.Find(kItemEnd, begin);
        if (end < 0)
            end = history.GetLength();
        if (end > begin)
            AddString(history.Mid(begin, end - begin));
        begin = end + 1;
    }
    // The prefix search that begins behind the first item is intended.
    const int found = FindString(0, current);
    if (found >= 0)
        SetCurSel(found);
    return true;
}

CString VComboBox::SaveHistory() const
{
    CString history;
    const int selected = GetCurSel();
    if (selected >= 0)
        GetLBText(selected, history);
    if (history.IsEmpty())
        GetWindowText(history);
    history += kTextEnd;
    const int count = GetCount();
    for (int index = 0; index < count; ++index) {
        CString item;
        GetLBText(index, item);
        history += item + kItemEnd;
    }
    history.TrimRight(kItemEnd);
    return history;
}

void VComboBox::InitToolTip()
{
    CreateControlTip(m_toolTip, *this);
}

void VComboBox::SetTooltipText(const wchar_t* text, int activate)
{
    if (VSkinHost* const host = VSkinHost::Of(this))
        host->AddToolTips(this, text);
    else
        SetControlTip(m_toolTip, *this, CString(text), activate);
}

void VComboBox::SetTooltipText(int stringId, int activate)
{
    CString text;
    if (text.LoadString(stringId))
        SetTooltipText(static_cast<LPCWSTR>(text), activate);
}

void VComboBox::ActivateTooltip(int activate)
{
    ActivateControlTip(m_toolTip, activate);
}

BOOL VComboBox::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg == nullptr)
        return FALSE;
    RelayToControlTip(m_toolTip, *this, *pMsg);
    return CComboBox::PreTranslateMessage(pMsg);
}

void VComboBox::OnDestroy()
{
    DestroyControlTip(m_toolTip);
    CComboBox::OnDestroy();
}

// The stock control paints first; the picture is shown when the face is on it, too.
void VComboBox::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    VBufferedDC buffer(dc, client, VBufferedDC::Start::Target);
    DefWindowProc(WM_PAINT, reinterpret_cast<WPARAM>(buffer.m_hDC), 0);
    DrawFace(buffer);
}

LRESULT VComboBox::OnPrintClient(WPARAM wParam, LPARAM)
{
    const LRESULT result = Default();
    if (CDC* const dc = CDC::FromHandle(reinterpret_cast<HDC>(wParam)))
        DrawFace(*dc);
    return result;
}

void VComboBox::DrawFace(CDC& dc)
{
    constexpr DWORD kTypeMask = CBS_SIMPLE | CBS_DROPDOWN | CBS_DROPDOWNLIST;
    if ((GetStyle() & kTypeMask) == CBS_SIMPLE)
        return;
    CRect client;
    GetClientRect(client);
    m_rcFace = ComboFaceRect(client);
    if (!IsWindowEnabled()) {
        DrawDisabledComboFace(dc, *this, client);
        return;
    }
    COLORREF color = 0;
    VSkinHost* const host = VSkinHost::Of(this);
    const bool marked = host != nullptr && host->GetSetCtrlClr(GetDlgCtrlID(), color);
    DrawComboFace(dc, client, m_bHover != 0, marked ? kMarkedArrow : VGM.Combo.clrGlyph);
}

void VComboBox::OnMouseMove(UINT nFlags, CPoint point)
{
    CComboBox::OnMouseMove(nFlags, point);
    SetHot(*this, m_bHover, m_rcFace.PtInRect(point) != FALSE);
}

void VComboBox::OnMouseLeave()
{
    EndHot(*this, m_bHover);
    CComboBox::OnMouseLeave();
}
