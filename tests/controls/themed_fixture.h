// What the tests of the themed standard controls share.
#pragma once

#include "tests/controls/skinned_host.h"
#include "tests/support/host_test.h"
#include "vgui/controls/themed_controls.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

namespace themed
{

inline constexpr UINT kId = 500;
inline constexpr UINT kOtherId = 501;
inline const CRect kPlace(20, 20, 180, 120);
inline constexpr DWORD kChild = WS_CHILD | WS_VISIBLE;
inline constexpr COLORREF kWhite = RGB(255, 255, 255);

class OpenComboBox : public VComboBox
{
public:
    using VComboBox::m_bHover;
    using VComboBox::m_rcFace;
    using VComboBox::m_toolTip;
};

class Fixture : public support::HostTest
{
protected:
    void SetUp() override { ASSERT_TRUE(host.Open()); }

    void CreateList(VListBox& list, DWORD style = 0)
    {
        ASSERT_TRUE(list.CreateEx(WS_EX_CLIENTEDGE, L"LISTBOX", L"", kChild | style | LBS_NOINTEGRALHEIGHT,
                                  kPlace, &host, kId));
        support::PumpMessages();
    }
    void CreateCombo(VComboBox& combo, DWORD style = CBS_DROPDOWN)
    {
        ASSERT_TRUE(combo.Create(kChild | WS_VSCROLL | CBS_AUTOHSCROLL | style, kPlace, &host, kId));
        support::PumpMessages();
    }
};

// The colour of a pixel in the outer two rings of a frame; those further in may have any.
inline COLORREF RingColor(const CRect& frame, int x, int y, COLORREF outer, COLORREF innerTopLeft,
                          COLORREF innerBottomRight)
{
    if (x == frame.left || y == frame.top || x == frame.right - 1 || y == frame.bottom - 1)
        return outer;
    if (x == frame.right - 2 || y == frame.bottom - 2)
        return innerBottomRight;
    return x == frame.left + 1 || y == frame.top + 1 ? innerTopLeft : support::kAnyColor;
}

inline void ExpectFrame(const CWnd& control, COLORREF outer, COLORREF innerTopLeft, COLORREF innerBottomRight)
{
    support::PumpMessages();
    const support::DibSurface shown = support::CaptureWindow(control.m_hWnd);
    support::ExpectPixels(shown, [&](int x, int y) {
        return RingColor(shown.Bounds(), x, y, outer, innerTopLeft, innerBottomRight);
    });
}

inline void ExpectEnabledFrame(const CWnd& control, COLORREF color)
{
    ExpectFrame(control, color, kWhite, VGFadeColor(color, VGM.Common.nCtrlFrameFade));
}

inline void ExpectDisabledFrame(const CWnd& control, COLORREF background)
{
    ExpectFrame(control, VGM.Common.clrGray, background, background);
}

// What a combo box of this size shows in its frame and on its button strip.
inline support::DibSurface ComboModel(CSize size, bool hot, COLORREF arrow)
{
    support::DibSurface model(size.cx, size.cy, support::kAnyColor & 0xFFFFFF);
    CDC& dc = model.DC();
    const int scrollWidth = ::GetSystemMetrics(SM_CXVSCROLL);
    const CRect client = model.Bounds();
    dc.FillSolidRect(client.right - 2 - scrollWidth, 1, scrollWidth + 1, client.bottom - 2, kWhite);
    dc.Draw3dRect(client, VGM.Combo.clrFrame, VGM.Combo.clrFrame);
    dc.Draw3dRect(1, 1, client.right - 2, client.bottom - 2, kWhite, VGFadeColor(VGM.Combo.clrFrame, 128));
    const int width = std::min(VGM.Combo.nBtnWidth, scrollWidth);
    const CRect face(client.right - 2 - width, 2, client.right - 2, client.bottom - 2);
    CRect inner = face;
    inner.DeflateRect(1, 1);
    VGGradientFillRect(&dc, inner, hot ? VGM.Combo.clrBtnTo : VGM.Combo.clrBtnFrom,
                       hot ? VGM.Combo.clrBtnFrom : VGM.Combo.clrBtnTo, 0);
    dc.Draw3dRect(face, VGM.Combo.clrBtnBorder, VGM.Combo.clrBtnBorder);
    const int middle = inner.left + inner.Width() / 2;
    const int bottom = inner.bottom + 2 - inner.Height() / 2;
    for (int row = 0; row < 3; ++row)
        dc.FillSolidRect(middle - 2 + row, bottom - 3 + row, 6 - 2 * row, 1, arrow);
    return model;
}

inline void ExpectComboFace(const CWnd& combo, bool hot, COLORREF arrow)
{
    support::PumpMessages();
    const support::DibSurface shown = support::CaptureClient(combo.m_hWnd);
    const support::DibSurface model = ComboModel(shown.Bounds().Size(), hot, arrow);
    const int strip = shown.Width() - ::GetSystemMetrics(SM_CXVSCROLL) - 2;
    support::ExpectPixels(shown, [&](int x, int y) {
        const bool ring = x < 2 || y < 2 || x >= shown.Width() - 2 || y >= shown.Height() - 2;
        return ring || x >= strip ? model.Pixel(x, y) : support::kAnyColor;
    });
}

} // namespace themed
