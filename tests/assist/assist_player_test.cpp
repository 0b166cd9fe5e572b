// The assist dialog with the library's own player.
#include "vgui/assist/assist_player.h"

#include "tests/assist/assist_host.h"
#include "tests/assist/page_input.h"
#include "tests/support/active_x_control.h"
#include "tests/support/census.h"
#include "tests/support/input.h"
#include "tests/support/modal.h"
#include "tests/support/pump.h"
#include "tests/support/rounds.h"
#include "vgui/assist/assist_system.h"
#include "vgui/assist/media.h"

#include <gtest/gtest.h>
#include <mshtml.h>
#include <optional>

using namespace support;

namespace
{

using Texts = std::vector<std::wstring>;

constexpr int kPlace = 1000; // of the player
constexpr int kFullScreenButton = 1008;
constexpr DISPID kNavigate = 104;
constexpr DISPID kFullScreen = 407;
constexpr wchar_t kCaption[] = L"帮助系统 - 影片 一";

CRect Place(HWND window)
{
    CRect rect;
    ::GetWindowRect(window, rect);
    return rect;
}

// A host with two topics of one video each, in a system with a browser that records.
class AssistPlayer : public CensusTest
{
protected:
    AssistPlayer()
    {
        AssistHost::Write(host.Videos() / L"一" / L"影片 a.swf", L"");
        AssistHost::Write(host.Videos() / L"二" / L"b.swf", L"");
        AssistHost::Write(host.Videos() / L"AssistSystem.ini",
                          L"[One]\r\nCaption=影片 一\r\nDirectory=一\r\n[Two]\r\nDirectory=二\r\n");
        engine.emplace(__uuidof(HTMLDocument));
    }
    ~AssistPlayer() override
    {
        if (CWnd* const dialog = Dialog())
            dialog->DestroyWindow();
        EXPECT_EQ(browser.controls, 0);
    }
    void TearDown() override { PumpMessages(); }

    static CAssistSystemDlg* Dialog()
    {
        return dynamic_cast<CAssistSystemDlg*>(CWnd::FindWindow(nullptr, kCaption));
    }
    // Where the browser has gone since the last call.
    Texts TakeAddresses()
    {
        Texts addresses;
        for (const ControlCall& call : browser.calls) {
            if (call.member == kNavigate)
                addresses.emplace_back(call.arguments.at(0).bstrVal);
        }
        browser.calls.clear();
        return addresses;
    }
    [[nodiscard]] bool IsMarkedFullScreen() const
    {
        const auto found = browser.properties.find(kFullScreen);
        return found != browser.properties.end() && found->second.boolVal == VARIANT_TRUE;
    }
    static bool Enter(const wchar_t* topic) { return EnterAssistSystem(topic, nullptr, nullptr); }

    AssistHost host;
    ActiveXControlClass browser{CLSID_WebBrowser};
    std::optional<ActiveXControlClass> engine; // empty: there is none
};

} // namespace

TEST_F(AssistPlayer, ShowsVideosInTheBrowser)
{
    ASSERT_TRUE(Enter(L"One"));
    EXPECT_EQ(browser.controls, 1);
    EXPECT_EQ(engine->controls, 0);
    EXPECT_EQ(TakeAddresses(), Texts{host.Videos() / L"一" / L"影片 a.swf"});
    const HWND dialog = Dialog()->m_hWnd;
    EXPECT_FALSE(::IsWindowVisible(::GetDlgItem(dialog, kPlace)));
    EXPECT_EQ(Place(browser.window), Place(::GetDlgItem(dialog, kPlace)));
    ::ShowWindow(dialog, SW_RESTORE);
    EXPECT_EQ(Place(browser.window), Place(::GetDlgItem(dialog, kPlace)));

    ASSERT_TRUE(Enter(L"Two"));
    EXPECT_EQ(browser.controls, 1);
    EXPECT_EQ(TakeAddresses(), Texts{host.Videos() / L"二" / L"b.swf"});
}

TEST_F(AssistPlayer, KeepsClicksAndEscapeFromTheBrowser)
{
    ASSERT_TRUE(Enter(L"One"));
    CAssistSystemDlg& dialog = *Dialog();
    ASSERT_TRUE(PumpUntil([&] { return ::GetForegroundWindow() == dialog.m_hWnd; }));
    const CRect windowed = Place(browser.window);
    const CRect screen(0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN));
    {
        const PageInput page(browser.window);
        Click(browser.window);
        Click(browser.window, MouseButton::Right);
        DoubleClick(CenterOf(browser.window));
        EXPECT_TRUE(dialog.IsFullScreen());
        EXPECT_TRUE(IsMarkedFullScreen());
        EXPECT_EQ(Place(browser.window), screen);
        ::SetFocus(browser.window);
        Key(VK_SPACE);
        EXPECT_EQ(page.CountKey(VK_SPACE), 2);
        Key(VK_ESCAPE);
        EXPECT_FALSE(dialog.IsFullScreen());
        EXPECT_FALSE(IsMarkedFullScreen());
        EXPECT_EQ(Place(browser.window), windowed);
        for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_RBUTTONDOWN})
            EXPECT_EQ(page.Count(message), 0) << message;
        EXPECT_EQ(page.CountKey(VK_ESCAPE), 0);
    }
    // A new topic is shown among the controls again.
    dialog.EnterFullScreen();
    ASSERT_TRUE(Enter(L"One"));
    EXPECT_FALSE(dialog.IsFullScreen());
    EXPECT_EQ(Place(browser.window), windowed);
    ::SetFocus(browser.window);
    Key(VK_ESCAPE);
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(AssistPlayer, SaysWhatIsMissing)
{
    const auto expectNotice = [this] {
        ASSERT_TRUE(Enter(L"One"));
        CAssistSystemDlg& dialog = *Dialog();
        EXPECT_EQ(browser.controls, 0);
        EXPECT_TRUE(dialog.GetDlgItem(kPlace)->IsWindowVisible());
        EXPECT_EQ(WindowText(dialog.GetDlgItem(kPlace)->m_hWnd),
                  L"系统中没有可用的 HTML 引擎，无法播放视频。");
        EXPECT_TRUE(dialog.GetDlgItem(kFullScreenButton)->IsWindowEnabled());
        dialog.EnterFullScreen();
        dialog.LeaveFullScreen();
        dialog.DestroyWindow();
    };
    browser.refuseActivation = true;
    expectNotice();
    browser.refuseActivation = false;
    engine.reset();
    if (!VGHasHtmlEngine()) // the system may have one of its own
        expectNotice();
}

TEST_F(AssistPlayer, RoundsLeaveNothing)
{
    ExpectRoundsLeaveNothing([] {
        ASSERT_TRUE(Enter(L"One"));
        ASSERT_TRUE(Enter(L"Two"));
        Dialog()->DestroyWindow();
    });
}
