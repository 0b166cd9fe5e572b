#include "vgui/controls/combo_button.h"

#include "vgui/controls/control_frame.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

#include <algorithm>

namespace
{

constexpr int kFrameWidth = 2; // pixels
constexpr int kArrowWidth = 6;
constexpr int kArrowHeight = 3;
constexpr COLORREF kStripColor = RGB(255, 255, 255);

} // namespace

CRect ComboFaceRect(const CRect& frame)
{
    CRect face = frame;
    face.DeflateRect(kFrameWidth, kFrameWidth);
    face.left = face.right - std::min(VGM.Combo.nBtnWidth, ::GetSystemMetrics(SM_CXVSCROLL));
    return face;
}

CRect ComboStripRect(const CRect& frame)
{
    CRect strip = frame;
    strip.DeflateRect(1, 1);
    strip.left = strip.right - ::GetSystemMetrics(SM_CXVSCROLL) - 1;
    return strip;
}

CRect ComboArrowRect(const CRect& face)
{
    CRect inner = face;
    inner.DeflateRect(1, 1);
    const int left = inner.left + inner.Width() / 2 - kArrowWidth / 2 + 1;
    const int bottom = inner.bottom + 2 - inner.Height() / 2;
    return {left, bottom - kArrowHeight, left + kArrowWidth, bottom};
}

void DrawComboFace(CDC& dc, const CRect& frame, bool hot, COLORREF arrow)
{
    dc.FillSolidRect(ComboStripRect(frame), kStripColor);
    DrawControlFrame(dc, frame, VGM.Combo.clrFrame);

    const CRect face = ComboFaceRect(frame);
    CRect inner = face;
    inner.DeflateRect(1, 1);
    const COLORREF from = hot ? VGM.Combo.clrBtnTo : VGM.Combo.clrBtnFrom;
    const COLORREF to = hot ? VGM.Combo.clrBtnFrom : VGM.Combo.clrBtnTo;
    VGGradientFillRect(&dc, inner, from, to, 0);
    dc.Draw3dRect(face, VGM.Combo.clrBtnBorder, VGM.Combo.clrBtnBorder);
    VGDrawSmallSolidTriangle(&dc, ComboArrowRect(face), arrow, VGTriangleDown);
}

void DrawDisabledComboFace(CDC& dc, CWnd& control, const CRect& frame)
{
    dc.FillSolidRect(ComboStripRect(frame), VGGetParentBkColor(&control));
    DrawDisabledFrame(dc, control, frame);
}
