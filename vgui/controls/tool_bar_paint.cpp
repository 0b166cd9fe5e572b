// The painting of the tool bar.
#include "vgui/controls/control_frame.h"
#include "vgui/controls/tool_bar.h"
#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/gui_manager.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr int kArrowWidth = 11; // of the part that drops down, where the control does not tell it
constexpr int kArrowSize = 3;   // rows
constexpr int kTextRoom = 64;   // characters, at first
constexpr int kGap = 2;         // between image and text
constexpr int kSeparatorMargin = 3;
constexpr int kPressedShade = -24; // what is added to a pressed button's colours
constexpr UINT kTextFormat = DT_SINGLELINE | DT_END_ELLIPSIS | DT_CENTER | DT_VCENTER;

// Nothing is drawn behind a button at rest: false.
bool DrawFace(CDC& dc, const CRect& rect, bool hot, bool pressed, bool checked)
{
    if (!hot && !pressed && !checked)
        return false;
    COLORREF from = VGM.Btn.clrFrom;
    COLORREF to = VGM.Btn.clrTo;
    if (pressed || checked)
        std::swap(from, to);
    if (pressed)
        from = VGFadeColor(from, kPressedShade);
    const COLORREF frame = hot && !pressed ? VGM.Common.clrHot : VGM.Common.clrFrame;
    VGGradientFillRect(&dc, rect, from, to, 0);
    DrawControlFrame(dc, rect, frame);
    return true;
}

} // namespace

BOOL VToolBar::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

void VToolBar::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    VBufferedDC buffer(dc, client);
    Draw(buffer);
}

LRESULT VToolBar::OnPrintClient(WPARAM wParam, LPARAM)
{
    if (CDC* const dc = CDC::FromHandle(reinterpret_cast<HDC>(wParam)))
        Draw(*dc);
    return 0;
}

void VToolBar::Draw(CDC& dc)
{
    const CFont* const font = GetFont();
    const VSelectScope selectedFont(dc.m_hDC, font != nullptr ? font->m_hObject : nullptr);
    const VBkModeScope transparent(dc.m_hDC, TRANSPARENT);
    DrawBackground(dc);
    const int count = GetButtonCount();
    for (int index = 0; index < count; ++index) {
        TBBUTTON button{};
        CRect rect;
        if (!GetButton(index, &button) || (button.fsState & TBSTATE_HIDDEN) != 0 || !GetItemRect(index, rect))
            continue;
        if ((button.fsStyle & BTNS_SEP) == 0)
            DrawButton(dc, index, button, rect);
        else if ((button.fsState & TBSTATE_WRAP) == 0) // no line where a row ends
            DrawSeparator(dc, rect);
    }
}

void VToolBar::DrawBackground(CDC& dc)
{
    CRect client;
    GetClientRect(client);
    if (m_bBkColorAsParent) {
        dc.FillSolidRect(client, VGGetParentBkColor(this));
        return;
    }
    VGGradientFillRect(&dc, client, VGM.Common.clrWhite, VGM.Common.clrLight, 0);
    dc.FillSolidRect(client.left, client.bottom - 1, client.Width(), 1, VGM.Group.clrLine);
}

void VToolBar::DrawSeparator(CDC& dc, const CRect& rect)
{
    const int x = rect.CenterPoint().x;
    const int height = std::max(rect.Height() - 2 * kSeparatorMargin, 0);
    dc.FillSolidRect(x, rect.top + kSeparatorMargin, 1, height, VGM.Group.clrLine);
    dc.FillSolidRect(x + 1, rect.top + kSeparatorMargin, 1, height, RGB(255, 255, 255));
}

bool VToolBar::IsEnabled(const TBBUTTON& button) const
{
    return IsWindowEnabled() && (button.fsState & TBSTATE_ENABLED) != 0;
}

CRect VToolBar::GetArrowRect(int index, const TBBUTTON& button, const CRect& rect) const
{
    CRect arrow = rect;
    arrow.left = arrow.right;
    if ((button.fsStyle & (BTNS_DROPDOWN | BTNS_WHOLEDROPDOWN)) == 0)
        return arrow;
    CRect told;
    const bool separate = (button.fsStyle & BTNS_WHOLEDROPDOWN) == 0;
    if (separate && SendMessage(TB_GETITEMDROPDOWNRECT, index, reinterpret_cast<LPARAM>(&told)) != 0 &&
        !told.IsRectEmpty() && told.left > rect.left)
        return told;
    arrow.left = std::max<int>(rect.left, rect.right - kArrowWidth);
    return arrow;
}

void VToolBar::DrawButton(CDC& dc, int index, const TBBUTTON& button, CRect rect)
{
    const bool enabled = IsEnabled(button);
    const bool hot = enabled && (GetHotItem() == index || (button.fsState & TBSTATE_MARKED) != 0);
    const bool pressed = enabled && (button.fsState & TBSTATE_PRESSED) != 0;
    const bool checked = (button.fsState & (TBSTATE_CHECKED | TBSTATE_INDETERMINATE)) != 0;
    const CRect arrow = GetArrowRect(index, button, rect);
    const bool raised = DrawFace(dc, rect, hot, pressed, checked);
    const COLORREF ink = enabled ? VGM.Combo.clrGlyph : VGM.Common.clrGray;
    if (!arrow.IsRectEmpty()) {
        if (raised && (button.fsStyle & BTNS_WHOLEDROPDOWN) == 0)
            dc.FillSolidRect(arrow.left, rect.top, 1, rect.Height(),
                             hot && !pressed ? VGM.Common.clrHot : VGM.Common.clrFrame);
        const CPoint tip(arrow.CenterPoint().x, arrow.CenterPoint().y + 1);
        VGDrawSmallSolidTriangle(&dc, tip, kArrowSize, ink, VGTriangleDown);
    }
    rect.right = arrow.left;
    rect.DeflateRect(1, 1);
    if (pressed)
        rect.OffsetRect(1, 1);
    const VTextColorScope color(dc.m_hDC, enabled ? VGM.Dlg.clrText : VGM.Common.clrGray);
    DrawContent(dc, index, button, rect, hot);
}

CSize VToolBar::GetImageSize() const
{
    int width = 0;
    int height = 0;
    const auto images = reinterpret_cast<HIMAGELIST>(SendMessage(TB_GETIMAGELIST));
    if (images != nullptr)
        ::ImageList_GetIconSize(images, &width, &height);
    return {width, height};
}

// By the index, since buttons may share a command.
CString VToolBar::GetTextAt(int index) const
{
    CString text;
    for (int room = kTextRoom;; room *= 2) {
        TBBUTTONINFOW info{};
        info.cbSize = sizeof info;
        info.dwMask = TBIF_BYINDEX | TBIF_TEXT;
        info.pszText = text.GetBufferSetLength(room);
        info.pszText[0] = L'\0';
        info.cchText = room;
        SendMessage(TB_GETBUTTONINFOW, index, reinterpret_cast<LPARAM>(&info));
        text.ReleaseBuffer();
        if (text.GetLength() < room - 1) // not cut
            return text;
    }
}

// Image and text, one above the other or side by side.
void VToolBar::DrawContent(CDC& dc, int index, const TBBUTTON& button, const CRect& rect, bool hot)
{
    const CString text = GetTextAt(index);
    const CSize image = button.iBitmap >= 0 ? GetImageSize() : CSize(0, 0);
    const bool beside = (GetStyle() & TBSTYLE_LIST) != 0;
    CRect measured(0, 0, 0, 0);
    if (!text.IsEmpty())
        ::DrawText(dc.m_hDC, text, -1, measured, DT_SINGLELINE | DT_CALCRECT);
    const int gap = text.IsEmpty() || image.cx == 0 ? 0 : kGap;

    const CPoint middle = rect.CenterPoint();
    CPoint origin(middle.x - image.cx / 2, middle.y - (image.cy + gap + measured.Height()) / 2);
    CRect room(rect.left, origin.y + image.cy + gap, rect.right,
               origin.y + image.cy + gap + measured.Height());
    if (beside) {
        const int width = image.cx + gap + measured.Width();
        origin = {std::max<int>(rect.left, middle.x - width / 2), middle.y - image.cy / 2};
        room.SetRect(origin.x + image.cx + gap, rect.top, rect.right, rect.bottom);
        room.right = std::min<int>(room.right, room.left + measured.Width() + kGap);
    }
    if (image.cx > 0)
        DrawImage(dc, button, origin, hot);
    if (!text.IsEmpty())
        ::DrawText(dc.m_hDC, text, -1, room, kTextFormat);
}

void VToolBar::DrawImage(CDC& dc, const TBBUTTON& button, CPoint origin, bool hot)
{
    const bool enabled = IsEnabled(button);
    const auto listOf = [this](UINT message) { return reinterpret_cast<HIMAGELIST>(SendMessage(message)); };
    const HIMAGELIST plain = listOf(TB_GETIMAGELIST);
    const HIMAGELIST special = !enabled ? listOf(TB_GETDISABLEDIMAGELIST)
                               : hot    ? listOf(TB_GETHOTIMAGELIST)
                                        : nullptr;
    if (enabled || special != nullptr) {
        ::ImageList_Draw(special != nullptr ? special : plain, button.iBitmap, dc.m_hDC, origin.x, origin.y,
                         ILD_TRANSPARENT);
        return;
    }
    const VOwnedIcon icon(::ImageList_GetIcon(plain, button.iBitmap, ILD_TRANSPARENT));
    ::DrawStateW(dc.m_hDC, nullptr, nullptr, reinterpret_cast<LPARAM>(icon.Get()), 0, origin.x, origin.y, 0,
                 0, DST_ICON | DSS_DISABLED);
}
