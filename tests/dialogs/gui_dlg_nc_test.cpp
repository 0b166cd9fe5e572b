#include "tests/dialogs/gui_dlg_fixture.h"
#include "tests/support/environment.h"
#include "tests/support/pixels.h"

#include <algorithm>

using namespace support;

namespace
{

class GuiDlgNc : public OpenDlgTest
{
};

// A caption button's rectangle in window coordinates.
CRect CapBtnInWindow(TestDlg& dlg, LRESULT hit)
{
    const CRect window = WindowRect(dlg);
    CRect button = gui_dlg::CloseBtnRect(window, LiveMetrics());
    button.OffsetRect(CapBtnCenter(dlg, hit) - button.CenterPoint());
    button.OffsetRect(-window.left, -window.top);
    return button;
}

// The frame as it must look; the caption, the client area and what lies between the frame's bottom line and
// the client area are left open.
COLORREF FramePixel(CSize window, int x, int y)
{
    const int frame = VGM.Dlg.nFrameWidth;
    const int edge =
        std::min({x, y, static_cast<int>(window.cx) - 1 - x, static_cast<int>(window.cy) - 1 - y});
    if (edge == 0)
        return VGM.Dlg.clrFrameOuter;
    if (edge == 1)
        return VGM.Dlg.clrFrameInner;
    const bool inRing = x < frame || y < frame || x >= window.cx - frame || y == window.cy - 3;
    return frame > 2 && inRing ? VGM.Dlg.clrFrameFill : kAnyColor;
}

// The empty caption, drawn with the system's gradient alone.
DibSurface EmptyCaption(CSize window, COLORREF from, COLORREF to)
{
    DibSurface surface(window.cx, window.cy);
    const CRect rect = gui_dlg::CaptionRect({{0, 0}, window}, LiveMetrics());
    TRIVERTEX corners[2] = {
        {rect.left, rect.top, static_cast<COLOR16>(GetRValue(from) << 8),
         static_cast<COLOR16>(GetGValue(from) << 8), static_cast<COLOR16>(GetBValue(from) << 8), 0},
        {rect.right, rect.bottom, static_cast<COLOR16>(GetRValue(to) << 8),
         static_cast<COLOR16>(GetGValue(to) << 8), static_cast<COLOR16>(GetBValue(to) << 8), 0}};
    GRADIENT_RECT mesh{0, 1};
    ::GradientFill(surface.DC().m_hDC, corners, 2, &mesh, 1, GRADIENT_FILL_RECT_V);
    return surface;
}

// Between the text's first pixels and the frame, and between the text's end and the buttons.
void ExpectCaptionColours(TestDlg& dlg, COLORREF from, COLORREF to, COLORREF text)
{
    const DibSurface shown = CaptureWindow(dlg.m_hWnd);
    const CSize size = shown.Bounds().Size();
    const DibSurface empty = EmptyCaption(size, from, to);
    const CRect caption = gui_dlg::CaptionRect(shown.Bounds(), LiveMetrics());
    const CRect left(caption.left, caption.top, caption.left + 3, caption.bottom);
    EXPECT_TRUE(AreasEqual(shown, left, empty, left.TopLeft()));
    const int buttons = CapBtnInWindow(dlg, HTHELP).left;
    const CRect right(buttons - 20, caption.top, buttons, caption.bottom);
    EXPECT_TRUE(AreasEqual(shown, right, empty, right.TopLeft()));
    EXPECT_GT(shown.Count(text, caption), 10);
    ExpectPixels(shown, CRect(caption.left, caption.bottom, buttons, caption.bottom + 1),
                 [](int, int) { return VGM.Dlg.clrFrameFill; });
}

} // namespace

TEST_F(GuiDlgNc, CloseButtonCloses)
{
    Click(CapBtnCenter(dlg, HTCLOSE));
    EXPECT_EQ(dlg.closeCalls, 1);
    EXPECT_EQ(dlg.m_hWnd, nullptr);
}

TEST_F(GuiDlgNc, MaximiseButtonMaximisesAndRestores)
{
    const CRect normal = WindowRect(dlg);
    Click(CapBtnCenter(dlg, HTMAXBUTTON));
    EXPECT_TRUE(dlg.IsZoomed());
    Click(CapBtnCenter(dlg, HTMAXBUTTON));
    EXPECT_FALSE(dlg.IsZoomed());
    EXPECT_EQ(WindowRect(dlg), normal);
}

TEST_F(GuiDlgNc, MinimiseButtonMinimisesButRestoresAMaximisedDialog)
{
    const CRect normal = WindowRect(dlg);
    dlg.ShowWindow(SW_SHOWMAXIMIZED);
    PumpMessages();
    Click(CapBtnCenter(dlg, HTMINBUTTON));
    EXPECT_FALSE(dlg.IsZoomed());
    EXPECT_FALSE(dlg.IsIconic());
    EXPECT_EQ(WindowRect(dlg), normal);
    Click(CapBtnCenter(dlg, HTMINBUTTON));
    EXPECT_TRUE(dlg.IsIconic());
}

TEST_F(GuiDlgNc, HelpButtonPromptsForHelp)
{
    Click(CapBtnCenter(dlg, HTHELP));
    EXPECT_EQ(dlg.helpCalls, 1);
    EXPECT_EQ(dlg.m_bNcBtnDown, 0);
}

TEST_F(GuiDlgNc, HelpMayDestroyTheDialog)
{
    auto* doomed = new TestDlg;
    doomed->deleteWithWindow = true;
    Open(*doomed);
    const HWND window = doomed->m_hWnd;
    doomed->onHelp = [doomed] { doomed->DestroyWindow(); };
    Click(CapBtnCenter(*doomed, HTHELP));
    EXPECT_FALSE(::IsWindow(window));
}

TEST_F(GuiDlgNc, PressOrReleaseOutsideDoesNothing)
{
    const CPoint close = CapBtnCenter(dlg, HTCLOSE);
    for (const CPoint& elsewhere : {CenterOf(dlg.m_hWnd), CPoint(WindowRect(dlg).left + 40, close.y),
                                    WindowRect(dlg).BottomRight() + CSize(60, 60)}) {
        MoveTo(close);
        Press();
        EXPECT_EQ(dlg.m_bNcBtnDown, 1);
        MoveTo(elsewhere);
        Release();
        EXPECT_TRUE(PumpUntil([&] { return dlg.m_bNcBtnDown == 0; }));
        EXPECT_EQ(dlg.closeCalls, 0);
        // And the way back over the button presses nothing either.
        MoveTo(close);
        EXPECT_EQ(dlg.closeCalls, 0);
    }
    MoveTo(CenterOf(dlg.m_hWnd));
    Press();
    MoveTo(close);
    Release();
    PumpMessages();
    EXPECT_EQ(dlg.closeCalls, 0);
    ASSERT_NE(dlg.m_hWnd, nullptr);
}

TEST_F(GuiDlgNc, ButtonsAreReportedOnlyWhilePressed)
{
    const auto hitAt = [&](CPoint p) { return dlg.SendMessage(WM_NCHITTEST, 0, MAKELPARAM(p.x, p.y)); };
    for (const LRESULT hit : {HTCLOSE, HTMAXBUTTON, HTMINBUTTON, HTHELP}) {
        const CPoint center = CapBtnCenter(dlg, hit);
        EXPECT_EQ(dlg.NcHitTest(center), hit);
        EXPECT_EQ(hitAt(center), HTCAPTION);
        dlg.m_bNcBtnDown = 1;
        EXPECT_EQ(hitAt(center), hit);
        dlg.m_bNcBtnDown = 0;
    }
    EXPECT_EQ(hitAt(CenterOf(dlg.m_hWnd)), HTCLIENT);
    EXPECT_EQ(hitAt(WindowRect(dlg).BottomRight() - CSize(1, 1)), HTBOTTOMRIGHT);
    dlg.m_bNcBtnDown = 1;
    EXPECT_EQ(hitAt(CenterOf(dlg.m_hWnd)), HTCLIENT);
}

TEST_F(GuiDlgNc, MissingButtonsLeaveNoGapOnTheScreen)
{
    const DWORD boxes[] = {0, WS_MAXIMIZEBOX, WS_MINIMIZEBOX, kBothBoxes};
    for (const DWORD box : boxes) {
        OpenAgain(PlainTemplate(kCaptionStyle | box));
        const DibSurface shown = CaptureWindow(dlg.m_hWnd);
        for (const LRESULT hit : {HTCLOSE, HTMAXBUTTON, HTMINBUTTON, HTHELP}) {
            if (CapBtnCenter(dlg, hit) == CPoint(-1, -1))
                continue;
            const CRect button = CapBtnInWindow(dlg, hit);
            if (hit != HTHELP) {
                EXPECT_EQ(shown.Pixel(button.left, button.CenterPoint().y), VGM.Dlg.clrCapBtnBorder) << hit;
            }
        }
        const int step = CapBtnInWindow(dlg, HTCLOSE).Width();
        const int count = 1 + ((box & WS_MAXIMIZEBOX) != 0) + ((box & WS_MINIMIZEBOX) != 0);
        EXPECT_EQ(CapBtnInWindow(dlg, HTHELP).left, CapBtnInWindow(dlg, HTCLOSE).left - count * step);
    }
}

TEST_F(GuiDlgNc, MovesByTheCaption)
{
    const CRect before = WindowRect(dlg);
    const CPoint grip(before.left + 60, before.top + VGM.Dlg.nFrameWidth + 5);
    Drag({grip, grip + CSize(20, 10), grip + CSize(50, 30)});
    PumpMessages();
    EXPECT_EQ(WindowRect(dlg), before + CSize(50, 30));
}

TEST_F(GuiDlgNc, FrameIsDrawnRingByRing)
{
    const DibSurface shown = CaptureWindow(dlg.m_hWnd);
    const CSize size = shown.Bounds().Size();
    ExpectPixels(shown, [&](int x, int y) { return FramePixel(size, x, y); });
}

TEST_F(GuiDlgNc, CaptionColoursFollowTheActivation)
{
    const auto& look = VGM.Dlg;
    ExpectCaptionColours(dlg, look.clrCapActiveFrom, look.clrCapActiveTo, look.clrCapActiveText);
    ::SetForegroundWindow(AnchorWindow());
    PumpMessages();
    ExpectCaptionColours(dlg, look.clrCapInactiveFrom, look.clrCapInactiveTo, look.clrCapInactiveText);
    dlg.SetForegroundWindow();
    PumpMessages();
    ExpectCaptionColours(dlg, look.clrCapActiveFrom, look.clrCapActiveTo, look.clrCapActiveText);
}

TEST_F(GuiDlgNc, NewCaptionTextIsShownAtOnce)
{
    const CRect caption = gui_dlg::CaptionRect(WindowRect(dlg) - WindowRect(dlg).TopLeft(), LiveMetrics());
    dlg.SetWindowText(L"");
    EXPECT_EQ(CaptureWindow(dlg.m_hWnd).Count(VGM.Dlg.clrCapActiveText, caption), 0);
    dlg.SetWindowText(L"标题");
    EXPECT_GT(CaptureWindow(dlg.m_hWnd).Count(VGM.Dlg.clrCapActiveText, caption), 10);
    // A text longer than the caption ends at the buttons.
    dlg.SetWindowText(CString(L'W', 500));
    const CRect close = CapBtnInWindow(dlg, HTCLOSE);
    EXPECT_EQ(
        CaptureWindow(dlg.m_hWnd)
            .Count(VGM.Dlg.clrCapActiveText, CRect(close.right, caption.top, caption.right, caption.bottom)),
        0);
}

TEST_F(GuiDlgNc, ButtonFacesAndGlyphs)
{
    const DibSurface shown = CaptureWindow(dlg.m_hWnd);
    const CRect close = CapBtnInWindow(dlg, HTCLOSE);
    EXPECT_EQ(shown.Pixel(close.left + 1, close.CenterPoint().y), RGB(255, 255, 255));
    EXPECT_EQ(shown.Pixel(close.left + 2, close.top + 2), RGB(255, 0, 0));
    EXPECT_EQ(shown.Pixel(close.CenterPoint()), RGB(255, 255, 255));

    const CRect maximize = CapBtnInWindow(dlg, HTMAXBUTTON);
    CRect glyph(maximize.left + 4, maximize.top + 4, maximize.right - 5, maximize.bottom - 5);
    EXPECT_EQ(shown.Pixel(maximize.left + 2, maximize.top + 2), VGM.Dlg.clrCapActiveTo);
    for (const CPoint& p : {glyph.TopLeft(), CPoint(glyph.CenterPoint().x, glyph.top + 1),
                            glyph.BottomRight(), CPoint(glyph.left, glyph.CenterPoint().y)})
        EXPECT_EQ(shown.Pixel(p), VGM.Dlg.clrCapBtnGlyph) << p.x << "," << p.y;
    EXPECT_NE(shown.Pixel(glyph.CenterPoint()), VGM.Dlg.clrCapBtnGlyph);

    const CRect minimize = CapBtnInWindow(dlg, HTMINBUTTON);
    glyph = CRect(minimize.left + 4, minimize.top + 4, minimize.right - 5, minimize.bottom - 5);
    EXPECT_EQ(shown.Pixel(glyph.CenterPoint().x, glyph.bottom), VGM.Dlg.clrCapBtnGlyph);
    EXPECT_EQ(shown.Pixel(glyph.CenterPoint().x, glyph.bottom - 1), VGM.Dlg.clrCapBtnGlyph);
    EXPECT_NE(shown.Pixel(glyph.CenterPoint()), VGM.Dlg.clrCapBtnGlyph);
}

TEST_F(GuiDlgNc, HelpGlyphIsTheLibrarysBitmap)
{
    const DibSurface shown = CaptureWindow(dlg.m_hWnd);
    const CRect help = CapBtnInWindow(dlg, HTHELP);
    BITMAP size{};
    ASSERT_NE(dlg.m_bmpHelp.GetBitmap(&size), 0);
    DibSurface wanted(help.Width(), help.Height());
    CDC source;
    source.CreateCompatibleDC(&wanted.DC());
    CBitmap* old = source.SelectObject(&dlg.m_bmpHelp);
    wanted.DC().StretchBlt(0, 0, help.Width(), help.Height(), &source, 0, 0, size.bmWidth, size.bmHeight,
                           SRCCOPY);
    source.SelectObject(old);
    // The rows above the caption belong to the frame.
    const int hidden = std::max(0, VGM.Dlg.nFrameWidth - static_cast<int>(help.top));
    CRect seen = help;
    seen.top += hidden;
    EXPECT_TRUE(AreasEqual(shown, seen, wanted, {0, hidden}));
}

TEST_F(GuiDlgNc, TinyAndHiddenWindowsAreSafe)
{
    OpenAgain(PlainTemplate(WS_POPUP | WS_CAPTION | DS_SETFONT));
    for (const CSize size : {CSize(0, 0), CSize(1, 1), CSize(5, 300), CSize(300, 5)}) {
        dlg.SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        dlg.DrawNcArea();
        PumpMessages();
    }
    dlg.ShowWindow(SW_HIDE);
    dlg.DrawNcArea();
    dlg.DestroyWindow();
    dlg.DrawNcArea();
}
