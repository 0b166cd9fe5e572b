#include "tests/controls/button_fixture.h"

#include <climits>
#include <memory>
#include <optional>

using namespace support;

namespace
{

constexpr COLORREF kUntouched = DibSurface::kBackground;

class ImageButtonPaint : public ButtonTest<VButtonST>
{
protected:
    // The button without a caption and with six different colours.
    void OpenBare(DWORD type = BS_PUSHBUTTON)
    {
        Open(type, L"");
        for (BYTE index = 0; index < 6; ++index)
            button.SetColor(index, RGB(10 * index, 100, 7), FALSE);
    }
    [[nodiscard]] CRect Client() const
    {
        CRect client;
        button.GetClientRect(client);
        return client;
    }
};

bool OnEdge(const CRect& r, int x, int y)
{
    return x == r.left || y == r.top || x == r.right - 1 || y == r.bottom - 1;
}

// The raised frame, from its definition: later lines lie over earlier ones. Untouched where it has no line.
COLORREF RaisedFrame(const CRect& r, int x, int y)
{
    const int right = r.right, bottom = r.bottom;
    if (y == bottom - 2 && x >= r.left + 1 && x <= right - 2)
        return ::GetSysColor(COLOR_BTNSHADOW);
    if (x == right - 2 && y > r.top && y <= bottom - 2)
        return ::GetSysColor(COLOR_BTNSHADOW);
    if ((y == bottom - 1 && x >= r.left && x <= right - 1) ||
        (x == right - 1 && y >= r.top && y <= bottom - 1))
        return ::GetSysColor(COLOR_3DDKSHADOW);
    if ((x == r.left + 1 && y >= r.top + 1) || (y == r.top + 1 && x > r.left))
        return ::GetSysColor(COLOR_3DLIGHT);
    if (x == r.left || y == r.top)
        return ::GetSysColor(COLOR_BTNHIGHLIGHT);
    return kUntouched;
}

// A bitmap whose left half is green and whose right half is the transparent colour.
constexpr COLORREF kKey = RGB(255, 0, 255);
constexpr COLORREF kInk = RGB(0, 160, 20);

HBITMAP HalfBitmap(COLORREF ink = kInk)
{
    CClientDC screen(nullptr);
    CDC memory;
    memory.CreateCompatibleDC(&screen);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen.m_hDC, 8, 4);
    const HGDIOBJ old = ::SelectObject(memory.m_hDC, bitmap);
    memory.FillSolidRect(0, 0, 4, 4, ink);
    memory.FillSolidRect(4, 0, 4, 4, kKey);
    ::SelectObject(memory.m_hDC, old);
    return bitmap;
}

} // namespace

TEST_F(ImageButtonPaint, BackgroundShowsTheState)
{
    OpenBare();
    const auto middle = [&](UINT state) { return DrawnItem(button, state).Pixel(50, 15); };
    EXPECT_EQ(middle(0), button.colors[VButtonST::ColorBkOut]);
    EXPECT_EQ(middle(ODS_FOCUS), button.colors[VButtonST::ColorBkFocus]);
    EXPECT_EQ(middle(ODS_SELECTED), button.colors[VButtonST::ColorBkIn]);
    EXPECT_EQ(middle(ODS_SELECTED | ODS_FOCUS), button.colors[VButtonST::ColorBkIn]);
    button.hovering = TRUE;
    EXPECT_EQ(middle(ODS_FOCUS), button.colors[VButtonST::ColorBkIn]);
    DrawnItem(button, ODS_DISABLED | ODS_FOCUS);
    EXPECT_TRUE(button.disabled);
    EXPECT_TRUE(button.focused);
    EXPECT_FALSE(button.pressed);
}

TEST_F(ImageButtonPaint, FlatBorderIsThinAndOnlyForAReason)
{
    OpenBare();
    const CRect client = Client();
    const COLORREF light = ::GetSysColor(COLOR_BTNHIGHLIGHT);
    const COLORREF shadow = ::GetSysColor(COLOR_BTNSHADOW);
    const auto expect = [&](UINT state, COLORREF edge, COLORREF inside) {
        const DibSurface drawn = DrawnItem(button, state);
        EXPECT_EQ(drawn.Pixel(0, 10), edge);
        EXPECT_EQ(drawn.Pixel(10, 0), edge);
        EXPECT_EQ(drawn.Count(inside, CRect(1, 1, client.right - 1, client.bottom - 1)), 98 * 28);
    };
    expect(0, button.colors[2], button.colors[2]);
    expect(ODS_SELECTED, shadow, button.colors[0]);
    button.hovering = TRUE;
    expect(0, light, button.colors[0]);
    EXPECT_EQ(DrawnItem(button).Pixel(99, 10), shadow);
    button.DrawBorder(FALSE, FALSE);
    expect(ODS_SELECTED, button.colors[0], button.colors[0]);
}

TEST_F(ImageButtonPaint, RaisedFrameIsAsItsLines)
{
    OpenBare();
    button.SetFlat(FALSE, FALSE);
    const auto expectFrame = [&](UINT state, CRect frame, COLORREF inside) {
        const DibSurface drawn = DrawnItem(button, state);
        ExpectPixels(drawn, [&](int x, int y) {
            if (!frame.PtInRect(CPoint(x, y)))
                return RGB(0, 0, 0);
            const COLORREF line = RaisedFrame(frame, x, y);
            return line == kUntouched ? inside : line;
        });
    };
    expectFrame(0, Client(), button.colors[2]);
    // The default button is framed and smaller.
    button.isDefault = TRUE;
    CRect inner = Client();
    inner.DeflateRect(1, 1);
    expectFrame(0, inner, button.colors[2]);

    button.isDefault = FALSE;
    ExpectPixels(DrawnItem(button, ODS_SELECTED), [&](int x, int y) {
        return OnEdge(Client(), x, y) ? ::GetSysColor(COLOR_BTNSHADOW) : button.colors[0];
    });
}

TEST_F(ImageButtonPaint, FocusRectangleLiesThreePixelsInside)
{
    OpenBare();
    const auto dots = [&](const CRect& ring) {
        const DibSurface drawn = DrawnItem(button, ODS_FOCUS);
        int count = 0;
        for (int y = ring.top; y < ring.bottom; ++y)
            for (int x = ring.left; x < ring.right; ++x)
                count += OnEdge(ring, x, y) && drawn.Pixel(x, y) != button.colors[VButtonST::ColorBkFocus];
        return count;
    };
    CRect ring = Client();
    ring.DeflateRect(3, 3);
    const int half = ring.Width() + ring.Height() - 2;
    EXPECT_EQ(dots(ring), 0);
    button.DrawFlatFocus(TRUE, FALSE);
    EXPECT_EQ(dots(ring), half);
    // A raised button has shrunk by its black frame.
    button.DrawFlatFocus(FALSE, FALSE);
    button.SetFlat(FALSE, FALSE);
    EXPECT_LT(dots(ring), half);
    ring.DeflateRect(1, 1);
    EXPECT_EQ(dots(ring), half - 4);
}

TEST_F(ImageButtonPaint, PicturesArePlaced)
{
    Open();
    struct Row {
        const char* what;
        BYTE align;
        BOOL title, pressed;
        DWORD width, height;
        CPoint image;
        CRect caption;
    };
    // In an item of 80 by 30 at (5, 2); the client area is 100 by 30.
    for (const Row& row : {
             Row{"left", 0, TRUE, FALSE, 16, 10, {8, 12}, {24, 2, 85, 32}},
             {"left, pressed", 0, TRUE, TRUE, 16, 10, {9, 13}, {24, 2, 85, 32}},
             {"left, no caption", 0, FALSE, FALSE, 16, 11, {37, 11}, {5, 2, 85, 32}},
             {"above", 1, TRUE, FALSE, 16, 10, {37, 3}, {5, 12, 85, 32}},
             {"above, no caption", 1, FALSE, TRUE, 16, 10, {38, 13}, {5, 2, 85, 32}},
             {"right", 2, TRUE, FALSE, 16, 10, {81, 12}, {3, 2, 61, 32}},
             {"right, no caption", 2, FALSE, FALSE, 16, 10, {37, 2}, {5, 2, 85, 32}},
             {"too high", 0, TRUE, FALSE, 16, 34, {8, LONG_MIN}, {24, 2, 85, 32}},
         }) {
        button.SetAlign(row.align, FALSE);
        CRect item(5, 2, 85, 32);
        CRect caption = item;
        CRect image;
        button.PrepareImageRect(row.title, &item, &caption, row.pressed, row.width, row.height, &image);
        EXPECT_EQ(image.left, row.image.x) << row.what;
        EXPECT_EQ(image.top, row.image.y) << row.what;
        EXPECT_EQ(caption, row.caption) << row.what;
    }
}

TEST_F(ImageButtonPaint, BitmapsFollowTheState)
{
    OpenBare();
    const COLORREF normalInk = RGB(200, 0, 0);
    button.SetBitmaps(HalfBitmap(), kKey, HalfBitmap(normalInk), kKey);
    // Centred: 8 by 4 in 100 by 30.
    const auto expect = [&](UINT state, COLORREF ink, CPoint at, COLORREF background) {
        const DibSurface drawn = DrawnItem(button, state);
        EXPECT_EQ(drawn.Count(ink), 4 * 4);
        EXPECT_EQ(drawn.Count(ink, CRect(at, CSize(4, 4))), 4 * 4) << state;
        EXPECT_EQ(drawn.Pixel(at + CSize(4, 0)), background) << state;
    };
    expect(0, normalInk, {46, 13}, button.colors[2]);
    expect(ODS_DISABLED, normalInk, {46, 13}, button.colors[2]);
    expect(ODS_SELECTED, kInk, {47, 14}, button.colors[0]);
    button.hovering = TRUE;
    expect(0, kInk, {46, 13}, button.colors[0]);
    // A toggle shows its check state and moves nothing.
    button.isToggle = TRUE;
    expect(0, normalInk, {46, 13}, button.colors[0]);
    button.SetCheck(1, FALSE);
    expect(0, kInk, {46, 13}, button.colors[0]);
    EXPECT_EQ(button.CreateBitmapMask(nullptr, 8, 4, kKey), nullptr);
    // Without a normal picture the other serves for all.
    button.SetBitmaps(HalfBitmap(), kKey, nullptr, 0);
    button.SetCheck(0, FALSE);
    button.hovering = FALSE;
    expect(0, kInk, {46, 13}, button.colors[2]);
}

TEST_F(ImageButtonPaint, IconsAreDrawnDisabledToo)
{
    OpenBare();
    button.SetIcon(kTestIcon, 0);
    const CRect place(42, 7, 58, 23);
    const COLORREF yellow = RGB(255, 209, 92);
    const DibSurface enabled = DrawnItem(button);
    EXPECT_GT(enabled.Count(yellow, place), 30);
    EXPECT_EQ(enabled.Count(yellow), enabled.Count(yellow, place));
    EXPECT_EQ(enabled.Count(button.colors[2]), 100 * 30 - (16 * 16 - enabled.Count(button.colors[2], place)));
    const DibSurface off = DrawnItem(button, ODS_DISABLED);
    EXPECT_EQ(off.Count(yellow), 0);
    EXPECT_GT(off.Count(::GetSysColor(COLOR_BTNSHADOW), place), 10);
}

TEST_F(ImageButtonPaint, CaptionsTakeTheirPlaceAndColour)
{
    Open(BS_PUSHBUTTON, L"H");
    button.SetColor(VButtonST::ColorFgOut, RGB(200, 0, 0), FALSE);
    button.SetColor(VButtonST::ColorFgIn, RGB(0, 0, 200), FALSE);
    const CRect centred = InkBox(DrawnItem(button), RGB(200, 0, 0));
    ASSERT_FALSE(centred.IsRectEmpty());
    EXPECT_NEAR(centred.CenterPoint().x, 50, 2);
    CRect moved = centred;
    moved.OffsetRect(1, 1);
    EXPECT_EQ(InkBox(DrawnItem(button, ODS_SELECTED), RGB(0, 0, 200)), moved);
    // Disabled: embossed, the dark text where the caption is, the light one below it to the right.
    const DibSurface off = DrawnItem(button, ODS_DISABLED);
    EXPECT_EQ(InkBox(off, ::GetSysColor(COLOR_3DSHADOW)), centred);
    EXPECT_EQ(InkBox(off, ::GetSysColor(COLOR_3DHILIGHT)).BottomRight(), moved.BottomRight());

    button.SetAlign(3, FALSE);
    const CRect left = InkBox(DrawnItem(button), RGB(200, 0, 0));
    button.SetAlign(5, FALSE);
    const CRect right = InkBox(DrawnItem(button), RGB(200, 0, 0));
    EXPECT_LE(left.left, 4);
    EXPECT_GE(right.right, 95);
    EXPECT_EQ(left.top, centred.top);

    // A checked toggle looks pressed, but nothing moves.
    button.SetAlign(4, FALSE);
    button.isToggle = TRUE;
    button.SetCheck(1, FALSE);
    EXPECT_EQ(InkBox(DrawnItem(button), RGB(0, 0, 200)), centred);
    EXPECT_TRUE(button.pressed);
}

TEST_F(ImageButtonPaint, ParentsPatternGoesOnBelow)
{
    CBrush hatch(HS_DIAGCROSS, RGB(30, 90, 150));
    host.SetAnswer([&](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_ERASEBKGND)
            return {};
        CDC::FromHandle(reinterpret_cast<HDC>(wParam))->FillRect(CRect(0, 0, 300, 200), &hatch);
        return 1;
    });
    ASSERT_TRUE(host.Open({300, 200}, WS_POPUP | WS_CLIPCHILDREN));
    const CRect place(21, 19, 121, 49); // no multiples of the pattern's 8 pixels
    VFlatButton calm;
    ASSERT_TRUE(calm.SubclassWindow(MakeStandard(host, BS_PUSHBUTTON, kButtonId, L"", place)));
    DibSurface ground(300, 200);
    ground.DC().FillRect(ground.Bounds(), &hatch);
    const DibSurface shown = CaptureClient(calm.m_hWnd);
    EXPECT_TRUE(AreasEqual(shown, shown.Bounds(), ground, place.TopLeft()));
}

TEST_F(ImageButtonPaint, TransparentButtonShowsItsParentsPicture)
{
    for (const DWORD style : {DWORD{WS_POPUP}, DWORD{WS_POPUP | WS_CLIPCHILDREN}}) {
        COLORREF ground = RGB(30, 90, 150);
        host.SetAnswer([&](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            if (message != WM_ERASEBKGND)
                return {};
            CDC& dc = *CDC::FromHandle(reinterpret_cast<HDC>(wParam));
            dc.FillSolidRect(0, 0, 300, 25, RGB(250, 240, 3));
            dc.FillSolidRect(0, 25, 300, 200, ground);
            return 1;
        });
        ASSERT_TRUE(host.Open({300, 200}, style));
        ASSERT_TRUE(button.SubclassWindow(MakeStandard(host, BS_PUSHBUTTON, kButtonId, L"")));
        button.DrawTransparent(FALSE);
        const PixelModel model = [&](int, int y) { return y < 5 ? RGB(250, 240, 3) : ground; };
        ExpectPixels(CaptureClient(button.m_hWnd), model);

        // The picture is kept until it is asked for anew.
        const COLORREF old = ground;
        ground = RGB(1, 2, 3);
        host.Invalidate();
        host.UpdateWindow();
        button.Invalidate();
        EXPECT_EQ(CaptureClient(button.m_hWnd).Pixel(50, 20), old);
        button.DrawTransparent(TRUE);
        ExpectPixels(CaptureClient(button.m_hWnd), model);
        EXPECT_NE(button.bkDC.m_hDC, nullptr);
        button.SendMessage(WM_SYSCOLORCHANGE);
        EXPECT_EQ(button.bkDC.m_hDC, nullptr);
        host.SetAnswer({});
        host.DestroyWindow();
    }
}

// Guard pages show whether the freed object is used.
TEST_F(ImageButtonPaint, ParentMayFreeTheButtonThatHasItPaintItsPicture)
{
    ASSERT_TRUE(host.Open({300, 200}, WS_POPUP));
    auto freed = std::make_unique<VButtonST>();
    ASSERT_TRUE(freed->SubclassWindow(MakeStandard(host, BS_PUSHBUTTON)));
    host.SetAnswer([&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_ERASEBKGND)
            freed.reset();
        return {};
    });
    freed->DrawTransparent(TRUE);
    host.SetAnswer({});
    EXPECT_EQ(freed, nullptr);
}
