#include "vgui/controls/buttons.h"

#include "tests/controls/button_fixture.h"
#include "tests/support/import_patch.h"

#include <optional>
#include <tuple>
#include <utility>

using namespace support;

namespace
{

constexpr COLORREF kUntouched = DibSurface::kBackground;
const COLORREF kWhite = RGB(255, 255, 255);

class OpenedCheck : public Opened<VCheckBox>
{
public:
    using VCheckBox::DrawOrange;
    using VCheckBox::DrawTick;
    using VCheckBox::hot;
};

class OpenedRadio : public Opened<VRadioBtn>
{
public:
    using VRadioBtn::hot;
    using VRadioBtn::radioChecked;
};

class OpenedLink : public VUrlEmailBtn
{
public:
    using VUrlEmailBtn::hot;
    using VUrlEmailBtn::underlineFont;
};

class Buttons : public HostTest
{
protected:
    void SetUp() override { ASSERT_TRUE(host.Open({300, 200}, WS_POPUP)); }

    void Subclass(CButton& button, DWORD type, LPCWSTR text = L"", UINT id = kButtonId, CRect place = kPlace)
    {
        ASSERT_TRUE(button.SubclassWindow(MakeStandard(host, type, id, text, place)));
        button.UpdateWindow();
    }
};

int g_trackings = 0;

BOOL WINAPI CountTracking(TRACKMOUSEEVENT* track)
{
    ++g_trackings;
    return ::TrackMouseEvent(track);
}

// The box of a check box or radio button of 100 by 30.
CRect BoxOf(int size)
{
    return {0, (30 - size) / 2, size, (30 - size) / 2 + size};
}

CRect Deflated(CRect rect, int by)
{
    rect.DeflateRect(by, by);
    return rect;
}

// The pixels of a one-unit frame whose upper left and lower right sides have the colours; the lower right
// ones reach through both corners.
COLORREF Frame(const CRect& r, int x, int y, COLORREF topLeft, COLORREF bottomRight)
{
    if (!r.PtInRect(CPoint(x, y)))
        return kUntouched;
    if (x == r.right - 1 || y == r.bottom - 1)
        return bottomRight;
    return x == r.left || y == r.top ? topLeft : kUntouched;
}

// Whether the frame's four sides, away from its corners, have the colour.
void ExpectSides(const DibSurface& drawn, const CRect& r, COLORREF color)
{
    const CPoint middle = r.CenterPoint();
    for (const CPoint& point : {CPoint(r.left, middle.y), CPoint(r.right - 1, middle.y),
                                CPoint(middle.x, r.top), CPoint(middle.x, r.bottom - 1)})
        EXPECT_EQ(drawn.Pixel(point), color) << point.x << ' ' << point.y;
}

} // namespace

TEST_F(Buttons, PushButtonHasItsFramesAndGradient)
{
    Opened<VButton> button;
    Subclass(button, BS_PUSHBUTTON);
    EXPECT_FALSE(button.drawBorder);
    const auto expectLook = [&](UINT state, BOOL hovered, int blue) {
        button.hovering = hovered;
        const DibSurface drawn = DrawnItem(button, state);
        ExpectSides(drawn, CRect(0, 0, 100, 30), VGM.Btn.clrFrame);
        // Left of the gradient lies what it leaves of the bevel.
        EXPECT_EQ(drawn.Pixel(1, 15),
                  hovered ? VGFadeColor(VGM.Common.clrHot, 25) : VGFadeColor(VGM.Btn.clrHotFrame, 30));
        EXPECT_EQ(drawn.Pixel(98, 15), hovered ? VGM.Common.clrHot : VGM.Btn.clrHotFrame);
        EXPECT_EQ(drawn.Pixel(0, 0), kUntouched);

        const int inset = VGM.Btn.nCornerSize / 2;
        DibSurface model(100, 30);
        const COLORREF from = VGFadeColor(VGM.Btn.clrFrom, 0, 0, blue);
        const COLORREF to = VGFadeColor(VGM.Btn.clrTo, 0, 0, blue);
        const CRect area(inset, inset - 1, 100 - inset, 30 - inset);
        VGGradientFillRect(&model.DC(), area, from, to, 0);
        EXPECT_TRUE(AreasEqual(drawn, area, model, area.TopLeft())) << state << hovered;
    };
    expectLook(0, FALSE, 0);
    expectLook(ODS_FOCUS, FALSE, 15);
    expectLook(0, TRUE, 20);
    expectLook(ODS_FOCUS, TRUE, 35);
}

TEST_F(Buttons, FlatButtonPaintsOnlyWhileHovered)
{
    Opened<VFlatButton> button;
    Subclass(button, BS_PUSHBUTTON);
    for (const UINT state : {0, ODS_SELECTED, ODS_FOCUS})
        EXPECT_EQ(DrawnItem(button, state).Count(kUntouched), 100 * 30) << state;
    const auto lit = [&](int x, int y) {
        const bool edge = x == 0 || y == 0 || x == 99 || y == 29;
        return edge ? RGB(10, 36, 106) : RGB(182, 189, 210);
    };
    button.hovering = TRUE;
    ExpectPixels(DrawnItem(button), lit);
    button.hovering = FALSE;

    // On the screen the parent's background comes back.
    MoveTo(CenterOf(button.m_hWnd));
    ExpectPixels(CaptureClient(button.m_hWnd), lit);
    MoveAside();
    EXPECT_TRUE(PumpUntil([&] { return !button.hovering; }));
    EXPECT_EQ(CaptureClient(button.m_hWnd).Count(HostWnd::kBackground), 100 * 30);
}

TEST_F(Buttons, CheckBoxDrawsBoxTickAndText)
{
    OpenedCheck button;
    Subclass(button, BS_AUTOCHECKBOX);
    EXPECT_EQ(button.typeStyle, UINT{BS_OWNERDRAW});
    const CRect box = BoxOf(VGM.Check.nBoxSize);
    const COLORREF shade = VGFadeColor(VGM.Check.clrBox, VGM.Common.nCtrlFrameFade);
    const PixelModel empty = [&](int x, int y) {
        if (!box.PtInRect(CPoint(x, y)))
            return kUntouched;
        const COLORREF outer = Frame(box, x, y, VGM.Check.clrBox, VGM.Check.clrBox);
        const COLORREF inner = Frame(Deflated(box, 1), x, y, kWhite, shade);
        return outer != kUntouched ? outer : inner != kUntouched ? inner : kWhite;
    };
    ExpectPixels(DrawnItem(button), empty);

    button.SetCheck(1, TRUE);
    const DibSurface ticked = DrawnItem(button);
    DibSurface tick(100, 30, kWhite);
    const CRect inside = Deflated(box, 2);
    button.DrawTick(&tick.DC(), inside, VGM.Check.clrMark);
    EXPECT_TRUE(AreasEqual(ticked, inside, tick, inside.TopLeft()));
    EXPECT_GT(tick.Count(VGM.Check.clrMark, inside), 15);

    const DibSurface off = DrawnItem(button, ODS_DISABLED);
    ExpectSides(off, box, VGM.Common.clrGray);
    EXPECT_EQ(off.Pixel(box.left + 1, box.top + 1), ::GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(off.Count(VGM.Common.clrGray, inside), ticked.Count(VGM.Check.clrMark, inside));
}

TEST_F(Buttons, TickIsThreeStrokes)
{
    OpenedCheck button;
    const CRect r(10, 20, 21, 31);
    DibSurface drawn(40, 40);
    button.DrawTick(&drawn.DC(), r, RGB(9, 9, 9));
    // r.Height() / 2 - 2 is 3; the last point of each stroke is left out.
    for (const CPoint& point :
         {CPoint(11, 26), CPoint(11, 25), CPoint(11, 24), CPoint(12, 29), CPoint(12, 28)})
        EXPECT_EQ(drawn.Pixel(point), RGB(9, 9, 9)) << point.x << ' ' << point.y;
    for (const CPoint& point :
         {CPoint(20, 22), CPoint(20, 21), CPoint(20, 20), CPoint(10, 26), CPoint(12, 30)})
        EXPECT_EQ(drawn.Pixel(point), kUntouched) << point.x << ' ' << point.y;
    EXPECT_EQ(drawn.Pixel(19, 21), RGB(9, 9, 9));
}

TEST_F(Buttons, HotCheckBoxHasARoundedRing)
{
    OpenedCheck button;
    const CRect ring(3, 3, 16, 16);
    DibSurface drawn(20, 20);
    button.DrawOrange(&drawn.DC(), ring);
    ExpectSides(drawn, ring, RGB(255, 203, 121));
    ExpectSides(drawn, Deflated(ring, 1), RGB(255, 204, 122));
    EXPECT_EQ(drawn.Pixel(ring.CenterPoint()), kUntouched);
    // Three pixels in each corner lie inside the frames.
    EXPECT_EQ(drawn.Count(kUntouched), 20 * 20 - (13 * 13 - 9 * 9) - 4 * 3);
    // Alike in all corners, in the listed colours, and rounder than a square.
    const std::vector<COLORREF> listed{::GetSysColor(COLOR_BTNHIGHLIGHT),
                                       RGB(255, 220, 185),
                                       RGB(254, 225, 158),
                                       RGB(255, 243, 217),
                                       RGB(254, 255, 255),
                                       RGB(254, 220, 139)};
    std::vector<int> used(listed.size());
    for (int y = ring.top; y < ring.bottom; ++y) {
        for (int x = ring.left; x < ring.right; ++x) {
            const COLORREF color = drawn.Pixel(x, y);
            EXPECT_EQ(color, drawn.Pixel(18 - x, y));
            EXPECT_EQ(color, drawn.Pixel(y, x));
            const auto found = std::find(listed.begin(), listed.end(), color);
            if (found != listed.end())
                ++used[found - listed.begin()];
        }
    }
    EXPECT_EQ(std::count(used.begin(), used.end(), 0), 0);
    EXPECT_EQ(drawn.Pixel(3, 3), listed[0]);
}

TEST_F(Buttons, CheckBoxesAndRadioButtonsFollowTheMouse)
{
    OpenedCheck check;
    OpenedRadio radio;
    Subclass(check, BS_AUTOCHECKBOX);
    Subclass(radio, BS_AUTORADIOBUTTON, L"", 502, CRect(20, 60, 120, 90));
    const ImportPatch counted(L"vgui.dll", "TrackMouseEvent", reinterpret_cast<void*>(CountTracking));
    ASSERT_TRUE(counted.IsInPlace());
    g_trackings = 0;
    MoveTo(CenterOf(check.m_hWnd));
    EXPECT_TRUE(check.hot);
    EXPECT_EQ(g_trackings, 1);
    const CRect ring = Deflated(BoxOf(VGM.Check.nBoxSize), 1);
    ExpectSides(CaptureClient(check.m_hWnd), ring, RGB(255, 203, 121));
    MoveTo(CenterOf(radio.m_hWnd));
    EXPECT_TRUE(radio.hot);
    EXPECT_EQ(g_trackings, 2);
    EXPECT_TRUE(PumpUntil([&] { return !check.hot; }));
    EXPECT_FALSE(check.hovering);
    const CRect box = BoxOf(VGM.Radio.nBoxSize);
    EXPECT_GT(CaptureClient(radio.m_hWnd).Count(VGM.Common.clrHot, box), 20);
    MoveAside();
    EXPECT_TRUE(PumpUntil([&] { return !radio.hot; }));
    EXPECT_EQ(CaptureClient(radio.m_hWnd).Count(VGM.Common.clrHot), 0);

    Click(check.m_hWnd);
    EXPECT_EQ(check.GetCheck(), 1);
    EXPECT_EQ(host.CommandCodes(kButtonId), std::vector<int>{BN_CLICKED});
}

TEST_F(Buttons, PaintingThatDestroysAPressedOneEndsItAtOnce)
{
    OpenedCheck check;
    OpenedRadio radio;
    OpenedLink link;
    const std::tuple<CButton&, BOOL&, DWORD> cases[] = {{check, check.hot, BS_AUTOCHECKBOX},
                                                        {radio, radio.hot, BS_AUTORADIOBUTTON},
                                                        {link, link.hot, BS_PUSHBUTTON}};
    for (const auto& [button, hot, type] : cases) {
        Subclass(button, type);
        button.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        host.SetAnswer([&window = button](UINT told, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (told == WM_DRAWITEM)
                ::DestroyWindow(window.m_hWnd);
            return {};
        });
        button.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5, -50));
        host.SetAnswer({});
        EXPECT_EQ(button.m_hWnd, nullptr) << type;
        EXPECT_FALSE(hot) << type; // the object was not touched any more
    }
}

TEST_F(Buttons, RadioButtonDrawsCircleAndDot)
{
    OpenedRadio button;
    Subclass(button, BS_AUTORADIOBUTTON);
    const CRect box = BoxOf(VGM.Radio.nBoxSize);
    const CPoint middle = box.CenterPoint();
    const auto expectLook = [&](UINT state, COLORREF circle, COLORREF center) {
        const DibSurface drawn = DrawnItem(button, state);
        ExpectSides(drawn, box, circle);
        EXPECT_EQ(drawn.Pixel(middle), center);
        EXPECT_EQ(drawn.Count(kUntouched), 0);
        EXPECT_EQ(drawn.Pixel(60, 2), ::GetSysColor(COLOR_BTNFACE));
    };
    expectLook(0, VGM.Radio.clrBox, kWhite);
    button.SetCheck(5, TRUE);
    EXPECT_EQ(button.GetCheck(), 1);
    expectLook(0, VGM.Radio.clrBox, VGM.Radio.clrMark);
    expectLook(ODS_DISABLED, VGM.Common.clrGray, VGM.Common.clrGray);
    button.SetCheck(0, TRUE);
    expectLook(ODS_DISABLED, VGM.Common.clrGray, kWhite);
}

TEST_F(Buttons, CaptionsOfCheckBoxesAndRadioButtonsHaveTheirPlace)
{
    // An ink that nothing else of the picture has.
    const COLORREF ink = RGB(1, 2, 3);
    const COLORREF checkText = std::exchange(VGM.Check.clrText, ink);
    const COLORREF radioText = std::exchange(VGM.Radio.clrText, ink);
    // Where the letter's ink lies when its cell is in the corner, and how high the cell is.
    DibSurface letter(100, 30);
    letter.DC().SetTextColor(ink);
    letter.DC().SetBkMode(TRANSPARENT);
    letter.DC().TextOut(0, 0, L"H");
    const CRect glyph = InkBox(letter, ink);
    const int top = (30 - letter.DC().GetTextExtent(L"H").cy) / 2;

    const auto expectCaption = [&](CButton& button, int left) {
        CRect wanted = glyph;
        wanted.OffsetRect(left, top);
        const DibSurface on = DrawnItem(button);
        const CRect got = InkBox(on, ink);
        EXPECT_EQ(got.left, wanted.left);
        EXPECT_NEAR(got.top, wanted.top, 1); // how halves are rounded is the system's
        EXPECT_EQ(got.Size(), wanted.Size());
        EXPECT_EQ(on.Count(ink), letter.Count(ink));
        const DibSurface off = DrawnItem(button, ODS_DISABLED);
        EXPECT_EQ(off.Count(ink), 0);
        EXPECT_EQ(InkBox(off, ::GetSysColor(COLOR_3DSHADOW)), wanted);
        EXPECT_EQ(off.Count(::GetSysColor(COLOR_3DSHADOW)), letter.Count(ink));
    };
    OpenedCheck check;
    OpenedRadio radio;
    Subclass(check, BS_AUTOCHECKBOX, L"H");
    Subclass(radio, BS_AUTORADIOBUTTON, L"H", 502, CRect(20, 60, 120, 90));
    expectCaption(check, VGM.Check.nBoxSize + VGM.Dlg.nFrameWidth);
    expectCaption(radio, VGM.Radio.nBoxSize + VGM.Dlg.nFrameWidth / 2);
    VGM.Check.clrText = checkText;
    VGM.Radio.clrText = radioText;
}

TEST_F(Buttons, HotButtonAndLinkShowIt)
{
    OpenedLink link;
    LOGFONTW font{};
    Subclass(link, BS_PUSHBUTTON, L"MMM");
    ASSERT_NE(link.underlineFont.GetLogFont(&font), 0);
    EXPECT_TRUE(font.lfUnderline);
    const auto ink = [&](COLORREF color) { return CaptureClient(link.m_hWnd).Count(color); };
    const int calm = ink(VGM.Common.clrLink);
    EXPECT_GT(calm, 20);

    MoveTo(CenterOf(link.m_hWnd));
    EXPECT_TRUE(link.hot);
    EXPECT_EQ(ink(VGM.Common.clrLink), 0);
    EXPECT_GT(ink(VGM.Common.clrLinkHot), calm); // underlined
    MoveTo(CenterOf(link.m_hWnd) + CSize(1, 0));
    EXPECT_EQ(::GetCursor(), ::LoadCursor(nullptr, IDC_HAND));
    MoveAside();
    EXPECT_TRUE(PumpUntil([&] { return !link.hot; }));
    EXPECT_EQ(ink(VGM.Common.clrLink), calm);
    EXPECT_EQ(ink(VGM.Common.clrLinkHot), 0);
    link.SendMessage(WM_SETCURSOR, reinterpret_cast<WPARAM>(link.m_hWnd), MAKELPARAM(HTCLIENT, 0));
    EXPECT_EQ(::GetCursor(), ::LoadCursor(nullptr, IDC_ARROW));

    CFont larger;
    larger.CreatePointFont(200, L"Arial");
    link.SetFont(&larger);
    LOGFONTW wanted{};
    larger.GetLogFont(&wanted);
    link.underlineFont.GetLogFont(&font);
    EXPECT_EQ(font.lfHeight, wanted.lfHeight);
    EXPECT_TRUE(font.lfUnderline);
    link.DestroyWindow();
    EXPECT_EQ(link.underlineFont.m_hObject, nullptr);
}

TEST_F(Buttons, LinksOpenTheirTargets)
{
    const OpenedLinks links;
    OpenedLink link;
    Subclass(link, BS_PUSHBUTTON, L"caption");
    struct Row {
        int type;
        LPCWSTR link;
        LPCWSTR target;
    };
    for (const Row& row : {Row{0, L"", L"http:\\\\caption"},
                           {0, L"host", L"http:\\\\host"},
                           {1, L"me@host", L"mailto:me@host"},
                           {1, L"", L"mailto:caption"},
                           {2, L"C:\\file", L"C:\\file"},
                           {-1, L"", L"caption"}}) {
        OpenedLinks::Requests().clear();
        link.SetType(row.type);
        link.SetLink(row.link);
        Click(link.m_hWnd);
        ASSERT_EQ(OpenedLinks::Requests().size(), 1u);
        EXPECT_EQ(OpenedLinks::Requests()[0].file, row.target);
        EXPECT_EQ(OpenedLinks::Requests()[0].verb, L"");
        EXPECT_EQ(OpenedLinks::Requests()[0].show, SW_HIDE);
    }
    for (const RecordedMessage& message : host.Messages(WM_COMMAND))
        EXPECT_FALSE(message.reachedParent && message.Code() == BN_CLICKED);
}
