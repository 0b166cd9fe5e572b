#include "vgui/controls/image_button.h"

#include "tests/controls/button_fixture.h"
#include "tests/support/input_feeder.h"
#include "tests/support/modal.h"

using namespace support;

namespace
{

constexpr int kLibraryBitmap = 5016;

class ImageButton : public ButtonTest<VButtonST>
{
};

HICON MakeIcon()
{
    const BYTE bits[32] = {};
    return ::CreateIcon(nullptr, 16, 16, 1, 1, bits, bits);
}

bool IsIcon(HICON icon)
{
    ICONINFO info{};
    if (!::GetIconInfo(icon, &info))
        return false;
    ::DeleteObject(info.hbmMask);
    ::DeleteObject(info.hbmColor);
    return true;
}

HBITMAP MakeBitmap(int width = 4, int height = 3)
{
    CClientDC screen(nullptr);
    return ::CreateCompatibleBitmap(screen.m_hDC, width, height);
}

bool IsBitmap(HBITMAP bitmap)
{
    return ::GetObjectType(bitmap) == OBJ_BITMAP;
}

DWORD TypeOf(const CWnd& button)
{
    return button.GetStyle() & 31;
}

} // namespace

TEST_F(ImageButton, SubclassingReadsTheType)
{
    EXPECT_EQ(VButtonST::GetVersionI(), 34);
    EXPECT_STREQ(VButtonST::GetVersionC(), L"3.4");
    EXPECT_EQ(button.typeStyle, 31u);
    struct Row {
        DWORD type;
        BOOL toggle, isDefault;
        UINT kept;
    };
    for (const Row& row : {Row{BS_PUSHBUTTON, FALSE, FALSE, 0},
                           {BS_DEFPUSHBUTTON, FALSE, TRUE, 0},
                           {BS_CHECKBOX, TRUE, FALSE, 2},
                           {BS_AUTOCHECKBOX, TRUE, FALSE, 3},
                           {BS_RADIOBUTTON, FALSE, FALSE, 4},
                           {BS_3STATE, FALSE, FALSE, 5},
                           {BS_AUTO3STATE, TRUE, FALSE, 6},
                           {BS_GROUPBOX, TRUE, FALSE, 7},
                           {BS_AUTORADIOBUTTON, FALSE, FALSE, 9},
                           {BS_OWNERDRAW, TRUE, FALSE, 11}}) {
        ASSERT_TRUE(host.m_hWnd != nullptr || host.Open({300, 200}));
        Opened<VButtonST> one;
        ASSERT_TRUE(one.SubclassWindow(MakeStandard(host, row.type | WS_TABSTOP)));
        EXPECT_EQ(one.isToggle, row.toggle) << row.type;
        EXPECT_EQ(one.GetDefault(), row.isDefault) << row.type;
        EXPECT_EQ(one.typeStyle, row.kept) << row.type;
        EXPECT_EQ(TypeOf(one), DWORD{BS_OWNERDRAW}) << row.type;
    }
    // The type is also replaced before a button of our own is created.
    Opened<VButtonST> created;
    ASSERT_TRUE(created.Create(L"x", WS_CHILD | BS_AUTOCHECKBOX, kPlace, &host, kButtonId));
    EXPECT_TRUE(created.isToggle);
    EXPECT_EQ(TypeOf(created), DWORD{BS_OWNERDRAW});
}

TEST_F(ImageButton, SettersAnswerTheirCodes)
{
    for (BYTE align = 0; align < 6; ++align)
        EXPECT_EQ(button.SetAlign(align, TRUE), StResultOk);
    EXPECT_EQ(button.imageAlign, 2);
    EXPECT_EQ(button.textAlign, 2);
    EXPECT_EQ(button.SetAlign(6, TRUE), StResultBadAlign);
    EXPECT_EQ(button.SetAlign(255, TRUE), StResultBadAlign);
    EXPECT_EQ(button.imageAlign, 2);

    for (BYTE index = 0; index < 6; ++index) {
        COLORREF color = 0;
        EXPECT_EQ(button.GetColor(index, &color), StResultOk);
        EXPECT_EQ(color, ::GetSysColor(index % 2 == 0 ? COLOR_BTNFACE : COLOR_BTNTEXT)) << int{index};
        EXPECT_EQ(button.SetColor(index, RGB(1, 2, index), TRUE), StResultOk);
    }
    EXPECT_EQ(button.SetColor(6, 0, TRUE), StResultBadIndex);
    EXPECT_EQ(button.GetColor(6, nullptr), StResultBadIndex);
    EXPECT_EQ(button.GetColor(5, nullptr), StResultOk);
    EXPECT_EQ(button.colors[5], RGB(1, 2, 5));
    button.SetDefaultColors(TRUE);
    EXPECT_EQ(button.colors[5], ::GetSysColor(COLOR_BTNTEXT));

    EXPECT_EQ(button.SetMenu(kNoResource, nullptr, TRUE), StResultBadResource);
    EXPECT_EQ(button.SetMenu(0, nullptr, TRUE), StResultOk);
    EXPECT_EQ(button.SetBtnCursor(kNoResource, TRUE), StResultBadResource);
    EXPECT_EQ(button.SetIcon(kNoResource, 0), StResultBadResource);
    EXPECT_EQ(button.SetBitmaps(kNoResource, 0, 0, 0), StResultBadResource);
}

TEST_F(ImageButton, IconsAreOwnedAndReplaced)
{
    HICON in = MakeIcon();
    HICON out = MakeIcon();
    EXPECT_EQ(button.SetIcon(in, out), StResultOk);
    EXPECT_EQ(button.icons[1].width, 16u);
    EXPECT_EQ(button.icons[1].height, 16u);

    // Bitmaps take their place.
    EXPECT_EQ(button.SetBitmaps(MakeBitmap(), 0, nullptr, 0), StResultOk);
    EXPECT_FALSE(IsIcon(in) || IsIcon(out));
    EXPECT_EQ(button.icons[0].handle, nullptr);
    EXPECT_EQ(button.bitmaps[0].width, 4u);
    EXPECT_EQ(button.bitmaps[0].height, 3u);
    HBITMAP bitmap = button.bitmaps[0].handle;
    HBITMAP mask = button.bitmaps[0].mask;
    EXPECT_TRUE(IsBitmap(mask));

    in = MakeIcon();
    EXPECT_EQ(button.SetIcon(in, in), StResultOk);
    EXPECT_FALSE(IsBitmap(bitmap) || IsBitmap(mask));

    // Without a hover icon there is none, and the other stays the caller's.
    out = MakeIcon();
    EXPECT_EQ(button.SetIcon(nullptr, out), StResultOk);
    EXPECT_FALSE(IsIcon(in));
    EXPECT_TRUE(IsIcon(out));
    EXPECT_EQ(button.icons[1].handle, nullptr);
    ::DestroyIcon(out);

    EXPECT_EQ(button.SetIcon(kTestIcon, kTestIcon), StResultOk);
    EXPECT_EQ(button.icons[1].width, 16u);
    EXPECT_EQ(button.SetBitmaps(kLibraryBitmap, 0, 0, 0), StResultOk);
    EXPECT_EQ(button.bitmaps[0].width, 20u);
}

TEST_F(ImageButton, FailedPicturesReleaseAll)
{
    const auto badIcon = reinterpret_cast<HICON>(UINT_PTR{0x7654});
    const auto badBitmap = reinterpret_cast<HBITMAP>(UINT_PTR{0x7654});
    HICON icon = MakeIcon();
    EXPECT_EQ(button.SetIcon(icon, badIcon), StResultBadResource);
    EXPECT_FALSE(IsIcon(icon));
    icon = MakeIcon();
    EXPECT_EQ(button.SetIcon(badIcon, icon), StResultBadResource);
    EXPECT_FALSE(IsIcon(icon));
    EXPECT_EQ(button.icons[0].handle, nullptr);

    HBITMAP bitmap = MakeBitmap();
    EXPECT_EQ(button.SetBitmaps(bitmap, 0, badBitmap, 0), StResultBadResource);
    EXPECT_FALSE(IsBitmap(bitmap));

    // A bitmap that a device context holds cannot be masked.
    CDC holder;
    holder.CreateCompatibleDC(nullptr);
    bitmap = MakeBitmap();
    const HGDIOBJ old = ::SelectObject(holder.m_hDC, bitmap);
    EXPECT_EQ(button.SetBitmaps(bitmap, 0, nullptr, 0), StResultMaskFailed);
    EXPECT_EQ(button.bitmaps[0].handle, nullptr);
    ::SelectObject(holder.m_hDC, old);
    ::DeleteObject(bitmap);

    // Nor does a missing second picture leave the first one.
    EXPECT_EQ(button.SetIcon(kTestIcon, kNoResource), StResultBadResource);
    EXPECT_EQ(button.icons[0].handle, nullptr);
}

TEST_F(ImageButton, DoubleClickIsTwoClicks)
{
    Open(BS_AUTOCHECKBOX);
    Click(button.m_hWnd);
    EXPECT_EQ(button.GetCheck(), 1);
    EXPECT_EQ(button.SendMessage(BM_GETCHECK), BST_CHECKED);
    DoubleClick(CenterOf(button.m_hWnd));
    EXPECT_EQ(button.GetCheck(), 1);
    EXPECT_EQ(Clicks(), 3);
    EXPECT_EQ(host.CommandCodes(kButtonId), std::vector<int>(3, BN_CLICKED));
    EXPECT_EQ(::GetCapture(), nullptr);

    button.SetCheck(BST_INDETERMINATE, TRUE);
    EXPECT_EQ(button.GetCheck(), 1);
    button.SendMessage(BM_SETCHECK, BST_UNCHECKED);
    EXPECT_EQ(button.GetCheck(), 0);
    button.SetFocus();
    Key(VK_SPACE);
    button.SendMessage(BM_CLICK);
    EXPECT_EQ(Clicks(), 5);
    EXPECT_EQ(button.GetCheck(), 0);
}

TEST_F(ImageButton, MenuDropsBelowAndTheButtonStaysPressed)
{
    for (const bool ownOwner : {true, false}) {
        Open();
        ASSERT_EQ(button.SetMenu(kTestMenu, ownOwner ? host.m_hWnd : nullptr, TRUE), StResultOk);
        {
            const MenuAnswer answer([&](HWND popup, const MenuAnswer::Feed& feed) {
                button.UpdateWindow();
                EXPECT_TRUE(button.menuShown);
                EXPECT_TRUE(button.pressed);
                CRect menu, place;
                ::GetWindowRect(popup, menu);
                button.GetWindowRect(place);
                EXPECT_EQ(menu.TopLeft(), CPoint(place.left, place.bottom));
                feed({KeyInput(VK_DOWN, true), KeyInput(VK_DOWN, false), KeyInput(VK_DOWN, true),
                      KeyInput(VK_DOWN, false), KeyInput(VK_RETURN, true), KeyInput(VK_RETURN, false)});
            });
            Click(button.m_hWnd);
            PumpMessages();
        }
        EXPECT_FALSE(button.menuShown);
        button.UpdateWindow();
        EXPECT_FALSE(button.pressed);
        EXPECT_EQ(Clicks(), 1);
        EXPECT_EQ(host.CommandCodes(kSecondCommand).size(), 1u);
        host.Clear();
        Close();
    }
}

TEST_F(ImageButton, MenuSurvivesTheButtonsEnd)
{
    ASSERT_TRUE(host.Open({300, 200}));
    auto doomed = std::make_unique<Opened<VButtonST>>();
    ASSERT_TRUE(doomed->SubclassWindow(MakeStandard(host, BS_PUSHBUTTON)));
    const HWND window = doomed->m_hWnd;
    doomed->SetMenu(kTestMenu, host.m_hWnd, FALSE);
    const MenuAnswer answer([&](HWND, const MenuAnswer::Feed& feed) {
        ::DestroyWindow(window);
        feed({KeyInput(VK_ESCAPE, true), KeyInput(VK_ESCAPE, false)});
    });
    Click(window);
    EXPECT_EQ(doomed->m_hWnd, nullptr);
    EXPECT_TRUE(doomed->menuShown); // the object was not touched any more
}

TEST_F(ImageButton, ParentThatGoesDuringAClickIsNotCalledAnyMore)
{
    static HWND closing = nullptr;
    const auto click = [&] {
        closing = host.m_hWnd;
        Click(button.m_hWnd);
        EXPECT_EQ(host.m_hWnd, nullptr);
        EXPECT_EQ(Clicks(), 0);
        host.Clear();
    };
    Open();
    button.SetMenu(kTestMenu, host.m_hWnd, FALSE);
    {
        const MenuAnswer answer([](HWND, const MenuAnswer::Feed&) { ::DestroyWindow(closing); });
        click();
    }
    Open();
    button.SetMenu(0, nullptr, FALSE);
    button.SetURL(L"http://host");
    const VGShellOpener former =
        VGSetShellOpener([](SHELLEXECUTEINFOW*) -> BOOL { return ::DestroyWindow(closing); });
    click();
    VGSetShellOpener(former);
}

TEST_F(ImageButton, OpensItsLinkOnly)
{
    const OpenedLinks links;
    Open();
    button.SetURL(L"http://host/path");
    Click(button.m_hWnd);
    ASSERT_EQ(OpenedLinks::Requests().size(), 1u);
    EXPECT_EQ(OpenedLinks::Requests()[0].verb, L"open");
    EXPECT_EQ(OpenedLinks::Requests()[0].file, L"http://host/path");
    EXPECT_EQ(OpenedLinks::Requests()[0].show, SW_SHOWMAXIMIZED);
    EXPECT_EQ(OpenedLinks::Requests()[0].mask, ULONG{SEE_MASK_FLAG_NO_UI});
    EXPECT_EQ(Clicks(), 1);

    button.SetURL(std::wstring(300, L'x').c_str());
    EXPECT_EQ(button.url[259], L'x');
    Click(button.m_hWnd);
    EXPECT_EQ(OpenedLinks::Requests()[1].file, std::wstring(260, L'x'));

    button.SetURL(nullptr);
    Click(button.m_hWnd);
    EXPECT_EQ(OpenedLinks::Requests().size(), 2u);
    EXPECT_EQ(Clicks(), 3);

    Close();
    Open(BS_AUTOCHECKBOX);
    button.SetURL(L"http://host/path");
    Click(button.m_hWnd);
    EXPECT_EQ(OpenedLinks::Requests().size(), 2u);
}

TEST_F(ImageButton, HoversWhileFlatAndTheApplicationIsActive)
{
    Open();
    const CPoint over = CenterOf(button.m_hWnd);
    const CPoint beside = ClientToScreen(host.m_hWnd, {200, 150});
    const auto leave = [&] {
        MoveTo(beside);
        return PumpUntil([&] { return !button.hovering; });
    };
    MoveTo(over);
    EXPECT_TRUE(button.hovering);
    EXPECT_TRUE(leave());

    MoveTo(over);
    EXPECT_TRUE(button.hovering);
    button.SetFlat(FALSE, TRUE);
    EXPECT_FALSE(button.hovering);
    MoveTo(over + CSize(1, 0));
    EXPECT_FALSE(button.hovering);
    EXPECT_TRUE(leave());
    button.SetFlat(TRUE, TRUE);

    // Pressed outside and dragged over.
    MoveTo(beside);
    Press();
    MoveTo(over);
    EXPECT_FALSE(button.hovering);
    Release();
    MoveTo(over + CSize(1, 0));
    EXPECT_TRUE(button.hovering);
    EXPECT_TRUE(leave());

    ::SetActiveWindow(nullptr);
    ASSERT_EQ(::GetActiveWindow(), nullptr);
    MoveTo(over);
    EXPECT_FALSE(button.hovering);
    button.SetAlwaysTrack(TRUE);
    MoveTo(over + CSize(1, 0));
    EXPECT_TRUE(button.hovering);
}

TEST_F(ImageButton, HoverEndsWithModeFocusAndActivity)
{
    Open();
    button.SetFocus();
    const auto hover = [&](int shift) {
        MoveTo(CenterOf(button.m_hWnd) + CSize(shift, 0));
        EXPECT_TRUE(button.hovering) << shift;
    };
    hover(0);
    button.SendMessage(WM_CANCELMODE);
    EXPECT_FALSE(button.hovering);
    hover(1);
    host.SetFocus();
    EXPECT_FALSE(button.hovering);
    hover(2);
    button.SendMessage(WM_ACTIVATE, WA_INACTIVE);
    EXPECT_FALSE(button.hovering);
    hover(3);
    button.SendMessage(WM_ACTIVATE, WA_ACTIVE);
    EXPECT_TRUE(button.hovering);
    button.EnableWindow(FALSE);
    EXPECT_FALSE(button.hovering);
}

TEST_F(ImageButton, DisablingHandsTheFocusOn)
{
    Open();
    const HWND next = MakeStandard(host, WS_TABSTOP, 502, L"next", CRect(20, 60, 120, 90));
    button.SetFocus();
    button.EnableWindow(FALSE);
    EXPECT_EQ(::GetFocus(), next);
    ::DestroyWindow(next);
    button.EnableWindow(TRUE);
    button.SetFocus();
    button.EnableWindow(FALSE);
    EXPECT_EQ(::GetFocus(), host.m_hWnd);
}

TEST_F(ImageButton, FocusThatDestroysTheButtonEndsItAtOnce)
{
    ASSERT_TRUE(host.Open({300, 200}));
    const HWND next = MakeStandard(host, WS_TABSTOP | BS_NOTIFY, 502, L"next", CRect(20, 60, 120, 90));
    const struct {
        int code;
        CWnd& focused;
        std::function<void()> moveFocus;
    } cases[] = {{BN_SETFOCUS, host, [&] { button.SendMessage(WM_ENABLE, FALSE); }},
                 {BN_KILLFOCUS, button, [&] { ::SetFocus(next); }}};
    for (const auto& c : cases) {
        Open(BS_PUSHBUTTON | BS_NOTIFY);
        c.focused.SetFocus();
        button.hovering = TRUE;
        host.SetAnswer([&](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_COMMAND && HIWORD(wParam) == c.code)
                ::DestroyWindow(button.m_hWnd);
            return {};
        });
        c.moveFocus();
        host.SetAnswer({});
        EXPECT_EQ(button.m_hWnd, nullptr) << c.code;
        EXPECT_TRUE(button.hovering) << c.code; // the object was not touched any more
    }
}

TEST_F(ImageButton, PaintingThatDestroysAPressedButtonEndsItAtOnce)
{
    for (const UINT message : {WM_MOUSEMOVE, WM_CANCELMODE}) {
        Open();
        button.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        host.SetAnswer([&](UINT told, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (told == WM_DRAWITEM && ::DestroyWindow(button.m_hWnd))
                button.hovering = TRUE;
            return {};
        });
        button.SendMessage(message, MK_LBUTTON, MAKELPARAM(150, 5));
        host.SetAnswer({});
        EXPECT_EQ(button.m_hWnd, nullptr) << message;
        EXPECT_TRUE(button.hovering) << message; // the object was not touched any more
    }
}

TEST_F(ImageButton, DialogManagerCanMakeItTheDefault)
{
    Open();
    const auto code = [&] { return button.SendMessage(WM_GETDLGCODE); };
    EXPECT_EQ(code(), DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON);
    button.SendMessage(BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    EXPECT_TRUE(button.GetDefault());
    EXPECT_EQ(code(), DLGC_BUTTON | DLGC_DEFPUSHBUTTON);
    EXPECT_EQ(TypeOf(button), DWORD{BS_OWNERDRAW});
    button.SendMessage(BM_SETSTYLE, BS_CHECKBOX, TRUE);
    EXPECT_TRUE(button.GetDefault());
    button.SendMessage(BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
    EXPECT_FALSE(button.GetDefault());
    EXPECT_EQ(TypeOf(button), DWORD{BS_OWNERDRAW});
}

TEST_F(ImageButton, ShowsItsTooltip)
{
    Open();
    const auto text = [&] { return TipText(button.toolTip, &button); };
    const auto visible = [&] { return button.toolTip.IsWindowVisible() != FALSE; };
    EXPECT_EQ(button.toolTip.GetMaxTipWidth(), 400);
    button.ActivateTooltip(TRUE);
    button.SetTooltipText(static_cast<LPCWSTR>(nullptr), TRUE);
    button.SetTooltipText(kNoResource, TRUE);
    EXPECT_EQ(button.toolTip.GetToolCount(), 0);

    button.SetTooltipText(kTestString, TRUE);
    EXPECT_EQ(text(), L"tip from a resource");
    button.SetTooltipText(L"another", TRUE);
    EXPECT_EQ(button.toolTip.GetToolCount(), 1);
    EXPECT_EQ(text(), L"another");
    MoveTo(CenterOf(button.m_hWnd));
    EXPECT_TRUE(PumpUntil(visible));
    button.ActivateTooltip(FALSE);
    EXPECT_TRUE(PumpUntil([&] { return !visible(); }));
    const HWND tip = button.toolTip.m_hWnd;
    Close();
    EXPECT_FALSE(::IsWindow(tip));
    EXPECT_FALSE(button.PreTranslateMessage(nullptr));
}

TEST_F(ImageButton, ShowsItsCursor)
{
    Open();
    MoveTo(CenterOf(button.m_hWnd));
    const HCURSOR usual = ::GetCursor();
    EXPECT_EQ(button.SetBtnCursor(kFrameworkCursor, TRUE), StResultOk);
    ASSERT_NE(button.cursor, nullptr);
    MoveTo(CenterOf(button.m_hWnd) + CSize(1, 0));
    EXPECT_EQ(::GetCursor(), button.cursor);
    EXPECT_EQ(button.SetBtnCursor(0, TRUE), StResultOk);
    MoveTo(CenterOf(button.m_hWnd));
    EXPECT_EQ(::GetCursor(), usual);
}
