// The check box and the radio button.
#include "vgui/controls/button_paint.h"
#include "vgui/controls/hot_tracking.h"
#include "vgui/controls/radio_group.h"
#include "vgui/foundation/attached.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/gui_manager.h"
#include "vgui/foundation/subclass_wnd.h"

#include <array>

namespace
{

constexpr int kHotPen = 2; // pixels
constexpr int kHotInset = 2;
constexpr int kDotInset = 4;
constexpr int kTickInset = 2;
constexpr int kRingWidth = 2;
constexpr int kRingFade = 10;

// The square for the mark: at the item's left edge, in the middle of its height if there is room for it.
CRect MarkBox(const CRect& item, int size)
{
    CRect box(item.left, item.top, item.left + size, item.bottom);
    if (size < item.Height()) {
        box.top = (item.Height() - size) / 2;
        box.bottom = box.top + size;
    }
    return box;
}

void DrawCaptionOf(const CWnd& control, CDC& dc, CRect place, COLORREF color)
{
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(color);
    dc.DrawText(TextOf(control), place, DT_SINGLELINE | DT_VCENTER);
}

void DrawDisabledCaptionOf(const CWnd& control, CDC& dc, int left, const CRect& item)
{
    const CString text = TextOf(control);
    const CSize size = dc.GetTextExtent(text);
    const int top = size.cy < item.Height() ? (item.Height() - size.cy) / 2 : item.top;
    dc.DrawState(CPoint(left, top), size, text, DSS_DISABLED, TRUE, 0, static_cast<HBRUSH>(nullptr));
}

void DrawCircle(CDC& dc, const CRect& rect, int penWidth, COLORREF penColor, HGDIOBJ brush)
{
    CPen pen(PS_SOLID, penWidth, penColor);
    const VSelectScope penScope(dc, pen);
    const VSelectScope brushScope(dc.m_hDC, brush);
    dc.Ellipse(rect);
}

void DrawDot(CDC& dc, CRect box, COLORREF color)
{
    CBrush brush(color);
    box.DeflateRect(kDotInset, kDotInset);
    DrawCircle(dc, box, 1, color, brush.m_hObject);
}

} // namespace

// ---- Check box

IMPLEMENT_DYNAMIC(VCheckBox, VButtonST)

BEGIN_MESSAGE_MAP(VCheckBox, VButtonST)
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
    ON_WM_GETDLGCODE()
END_MESSAGE_MAP()

void VCheckBox::PreSubclassWindow()
{
    // Whatever type the button had, it now has the bit that makes it a toggle.
    ModifyStyle(0, BS_OWNERDRAW);
    hot = FALSE; // it may have been on when the object's former window went
    VButtonST::PreSubclassWindow();
}

void VCheckBox::OnMouseMove(UINT nFlags, CPoint point)
{
    const HWND window = m_hWnd;
    VButtonST::OnMouseMove(nFlags, point);
    if (VGIsAttached(this, window))
        BeginHot(*this, hot, hovering);
}

void VCheckBox::OnMouseLeave()
{
    VButtonST::OnMouseLeave();
    EndHot(*this, hot);
}

UINT VCheckBox::OnGetDlgCode()
{
    return DLGC_BUTTON;
}

void VCheckBox::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    CDC& dc = *CDC::FromHandle(lpDrawItemStruct->hDC);
    const CRect item = lpDrawItemStruct->rcItem;
    const CRect box = MarkBox(item, VGM.Check.nBoxSize);
    CRect tick = box;
    tick.DeflateRect(kTickInset, kTickInset);
    const CRect text(box.right + VGM.Dlg.nFrameWidth, box.top, item.right, box.bottom);

    dc.FillSolidRect(box, VGGetParentBkColor(this));
    if ((lpDrawItemStruct->itemState & ODS_DISABLED) != 0) {
        dc.Draw3dRect(box, VGM.Common.clrGray, VGM.Common.clrGray);
        if (checked)
            DrawTick(&dc, tick, VGM.Common.clrGray);
        DrawDisabledCaptionOf(*this, dc, text.left, item);
        return;
    }
    {
        const VSelectScope pen(dc, VGM.Common.penFrame);
        const VSelectScope brush(dc.m_hDC, ::GetStockObject(WHITE_BRUSH));
        dc.Rectangle(box);
    }
    VGDraw3dCtrlFrame(&dc, box, VGM.Check.clrBox, VGM.Common.nCtrlFrameFade, 0);
    if (checked)
        DrawTick(&dc, tick, VGM.Check.clrMark);
    if (hot) {
        CRect ring = box;
        ring.DeflateRect(1, 1);
        DrawOrange(&dc, ring);
    }
    DrawCaptionOf(*this, dc, text, VGM.Check.clrText);
}

void VCheckBox::DrawTick(CDC* pDC, const CRect& r, COLORREF clr)
{
    const int m = r.Height() / 2 - 2;
    const std::array<std::array<CPoint, 3>, 3> strokes{{
        {{{r.left + 1, r.top + 3 + m}, {r.left + 2, r.bottom - 2}, {r.right - 1, r.top + 2}}},
        {{{r.left + 1, r.top + 2 + m}, {r.left + 2, r.bottom - 2}, {r.right - 1, r.top + 1}}},
        {{{r.left + 1, r.top + 1 + m}, {r.left + 2, r.bottom - 3}, {r.right - 1, r.top}}},
    }};
    const VPen pen(pDC, clr);
    for (const auto& [start, low, end] : strokes) {
        pDC->MoveTo(start);
        pDC->LineTo(low);
        pDC->LineTo(end);
    }
}

void VCheckBox::DrawOrange(CDC* pDC, const CRect& rect)
{
    const COLORREF hotColor = VGM.Common.clrHot;
    CRect frame = rect;
    for (int i = 0; i < kRingWidth; ++i) {
        const COLORREF color = RGB(GetRValue(hotColor), (GetGValue(hotColor) + kRingFade + i) % 256,
                                   (GetBValue(hotColor) + kRingFade + i) % 256);
        pDC->Draw3dRect(frame, color, color);
        frame.DeflateRect(1, 1);
    }
    frame.InflateRect(kRingWidth, kRingWidth);

    // Steps across and down from a corner. The outermost pixels fade into the box, those where the ring's
    // inner edges meet are lit, so that the ring looks round.
    struct CornerPixel {
        int across;
        int down;
        COLORREF color;
    };
    const COLORREF light = ::GetSysColor(COLOR_BTNHIGHLIGHT);
    const std::array<CornerPixel, 15> corner{{
        {0, 0, light},
        {1, 0, RGB(254, 255, 255)},
        {0, 1, RGB(254, 255, 255)},
        {2, 0, RGB(255, 243, 217)},
        {0, 2, RGB(255, 243, 217)},
        {3, 0, RGB(255, 220, 185)},
        {0, 3, RGB(255, 220, 185)},
        {1, 1, RGB(255, 220, 185)},
        {2, 1, RGB(254, 225, 158)},
        {1, 2, RGB(254, 225, 158)},
        {3, 1, RGB(254, 220, 139)},
        {1, 3, RGB(254, 220, 139)},
        {2, 2, RGB(254, 225, 158)},
        {3, 2, RGB(255, 243, 217)},
        {2, 3, RGB(255, 243, 217)},
    }};
    for (const CornerPixel& p : corner) {
        for (const int x : {frame.left + p.across, frame.right - 1 - p.across}) {
            for (const int y : {frame.top + p.down, frame.bottom - 1 - p.down})
                pDC->SetPixel(x, y, p.color);
        }
    }
}

// ---- Radio button

namespace
{

bool InSameGroup(HWND a, HWND b)
{
    return ::GetParent(a) == ::GetParent(b) && PlaceInGroup(a).first == PlaceInGroup(b).first;
}

bool IsArrowKeyDown()
{
    for (const int key : {VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN}) {
        if (::GetKeyState(key) < 0)
            return true;
    }
    return false;
}

} // namespace

// Sees that a standard radio button of the group is clicked: the system unchecks only standard ones then.
class VRadioBtn::GroupWatch : public CSubclassWnd
{
public:
    explicit GroupWatch(VRadioBtn& radio) : m_radio(radio) { HookWindow(::GetParent(radio.m_hWnd)); }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED && m_radio.radioChecked)
            OnOtherClicked(reinterpret_cast<HWND>(lParam));
        return CSubclassWnd::WindowProc(message, wParam, lParam);
    }

private:
    void OnOtherClicked(HWND other)
    {
        if (other != nullptr && other != m_radio.m_hWnd && LibraryRadio(other) == nullptr && IsRadio(other) &&
            InSameGroup(other, m_radio.m_hWnd) && ::SendMessageW(other, BM_GETCHECK, 0, 0) != 0)
            m_radio.SetCheck(BST_UNCHECKED, TRUE);
    }

    VRadioBtn& m_radio;
};

IMPLEMENT_DYNAMIC(VRadioBtn, VButtonST)

BEGIN_MESSAGE_MAP(VRadioBtn, VButtonST)
    ON_WM_CREATE()
    ON_CONTROL_REFLECT_EX(BN_CLICKED, &VRadioBtn::OnClicked)
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
    ON_WM_GETDLGCODE()
    ON_WM_SETFOCUS()
    ON_MESSAGE(BM_GETCHECK, &VRadioBtn::OnGetCheckMessage)
    ON_MESSAGE(BM_SETCHECK, &VRadioBtn::OnSetCheckMessage)
END_MESSAGE_MAP()

VRadioBtn::VRadioBtn() : bkColor(VGM.Dlg.clrBk) {}

VRadioBtn::~VRadioBtn() = default;

void VRadioBtn::PreSubclassWindow()
{
    hot = FALSE;
    VButtonST::PreSubclassWindow();
    WatchGroup();
}

// A window that is being created may not have its parent before this.
int VRadioBtn::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    const int result = VButtonST::OnCreate(lpCreateStruct);
    WatchGroup();
    return result;
}

void VRadioBtn::WatchGroup()
{
    m_groupWatch.reset();
    m_groupWatch = std::make_unique<GroupWatch>(*this);
}

DWORD VRadioBtn::SetCheck(int nCheck, BOOL bRepaint)
{
    const BOOL check = nCheck != 0;
    const bool changed = radioChecked != check;
    radioChecked = check;
    if (m_hWnd == nullptr)
        return VButtonST::SetCheck(nCheck, bRepaint);
    // As with standard radio buttons, Tab leads to the checked one of the group.
    if (changed)
        ModifyStyle(check ? 0 : WS_TABSTOP, check ? WS_TABSTOP : 0);
    if (changed && check && bRepaint) {
        // A sibling of the host's may destroy this one when it is unchecked.
        const HWND window = m_hWnd;
        UnCheckOthers();
        if (!VGIsAttached(this, window))
            return StResultOk;
    }
    if (bRepaint)
        Invalidate();
    return VButtonST::SetCheck(nCheck, bRepaint);
}

void VRadioBtn::UnCheckOthers()
{
    if (::GetParent(m_hWnd) == nullptr)
        return;
    RadioPlace place = PlaceInGroup(m_hWnd); // the exchange takes the index by reference
    ExchangeRadioGroup(false, place.first, place.index);
}

BOOL VRadioBtn::OnClicked()
{
    if (!radioChecked)
        SetCheck(BST_CHECKED, TRUE);
    return FALSE;
}

void VRadioBtn::OnMouseMove(UINT nFlags, CPoint point)
{
    const HWND window = m_hWnd;
    VButtonST::OnMouseMove(nFlags, point);
    if (VGIsAttached(this, window))
        BeginHot(*this, hot, hovering);
}

void VRadioBtn::OnMouseLeave()
{
    VButtonST::OnMouseLeave();
    EndHot(*this, hot);
}

UINT VRadioBtn::OnGetDlgCode()
{
    return DLGC_BUTTON | DLGC_RADIOBUTTON;
}

// The dialog manager only clicks buttons whose style says auto radio button.
void VRadioBtn::OnSetFocus(CWnd* pOldWnd)
{
    // The parent is told and may destroy the button, or the other window's object.
    const HWND window = m_hWnd;
    const HWND old = pOldWnd != nullptr ? pOldWnd->m_hWnd : nullptr;
    VButtonST::OnSetFocus(pOldWnd);
    if (!VGIsAttached(this, window))
        return;
    if (radioChecked || old == nullptr || !IsArrowKeyDown() || !IsRadio(old) || !InSameGroup(old, m_hWnd))
        return;
    ::SendMessageW(::GetParent(m_hWnd), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), BN_CLICKED),
                   reinterpret_cast<LPARAM>(m_hWnd));
}

LRESULT VRadioBtn::OnGetCheckMessage(WPARAM, LPARAM)
{
    return GetCheck();
}

LRESULT VRadioBtn::OnSetCheckMessage(WPARAM wParam, LPARAM)
{
    SetCheck(static_cast<int>(wParam), FALSE);
    Invalidate();
    return 0;
}

void VRadioBtn::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    CDC& dc = *CDC::FromHandle(lpDrawItemStruct->hDC);
    const CRect item = lpDrawItemStruct->rcItem;
    const CRect box = MarkBox(item, VGM.Radio.nBoxSize);
    const int inset = VGM.Dlg.nFrameWidth / 4;
    const CRect text(box.right + VGM.Dlg.nFrameWidth / 2, item.top + inset, item.right, item.bottom - inset);
    const HGDIOBJ white = ::GetStockObject(WHITE_BRUSH);

    dc.FillSolidRect(item, VGGetParentBkColor(this));
    if ((lpDrawItemStruct->itemState & ODS_DISABLED) != 0) {
        DrawCircle(dc, box, 1, VGM.Common.clrGray, white);
        if (radioChecked)
            DrawDot(dc, box, VGM.Common.clrGray);
        DrawDisabledCaptionOf(*this, dc, text.left, item);
        return;
    }
    DrawCircle(dc, box, 1, VGM.Radio.clrBox, white);
    if (hot) {
        CRect ring = box;
        ring.DeflateRect(kHotInset, kHotInset);
        DrawCircle(dc, ring, kHotPen, VGM.Common.clrHot, white);
    }
    if (radioChecked)
        DrawDot(dc, box, VGM.Radio.clrMark);
    DrawCaptionOf(*this, dc, text, VGM.Radio.clrText);
}
