#include "tests/support/census.h"
#include "tests/support/input.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"

#include <afxcmn.h>

#include <gtest/gtest.h>
#include <string>

namespace
{

using support::HostWnd;

const CRect kTool{20, 30, 120, 90};
constexpr UINT_PTR kToolId = 7;

// Tells the tip that the pointer has moved to a client point of the window, where it must be already.
void RelayMove(CToolTipCtrl& tip, CWnd& window, CPoint point)
{
    MSG move = {};
    move.hwnd = window;
    move.message = WM_MOUSEMOVE;
    move.lParam = MAKELPARAM(point.x, point.y);
    move.pt = support::ClientToScreen(window, point);
    tip.RelayEvent(&move);
}

class ToolTip : public support::CensusTest
{
public:
    static void SetUpTestSuite()
    {
        ShowATip(); // the first time, the system makes brushes that it keeps
        CensusTest::SetUpTestSuite();
    }

protected:
    static void ShowATip()
    {
        HostWnd host;
        CToolTipCtrl tip;
        if (!host.Open() || !tip.Create(&host, TTS_ALWAYSTIP) || !tip.AddTool(&host, L"tip", kTool, kToolId))
            return;
        tip.SetDelayTime(TTDT_INITIAL, 1);
        support::MoveTo(support::ClientToScreen(host, kTool.CenterPoint()));
        RelayMove(tip, host, kTool.CenterPoint());
        EXPECT_TRUE(support::PumpUntil([&] { return tip.IsWindowVisible() != FALSE; }));
        support::PumpMessages();
    }

    void SetUp() override
    {
        ASSERT_TRUE(host.Open());
        ASSERT_TRUE(button.Create(L"button", WS_CHILD | WS_VISIBLE, CRect(200, 20, 300, 60), &host, 5));
        ASSERT_TRUE(tip.Create(&host, TTS_ALWAYSTIP | TTS_NOPREFIX));
    }

    CString TextOf(CWnd* window, UINT_PTR id = 0)
    {
        CString text = L"left over";
        tip.GetText(text, window, id);
        return text;
    }

    HostWnd host;
    CButton button;
    CToolTipCtrl tip;
};

TEST_F(ToolTip, TextsOfAnyLengthComeBackWhole)
{
    const CString texts[] = {L"tip", L"a\ttab\nand a line", CString(L'长', 79), CString(L'y', 900)};
    ASSERT_TRUE(tip.AddTool(&button, L""));
    for (const CString& text : texts) {
        tip.UpdateTipText(text, &button);
        EXPECT_STREQ(TextOf(&button), text);
    }
    EXPECT_STREQ(TextOf(&host), L""); // no tool
    EXPECT_EQ(tip.GetToolCount(), 1);
}

TEST_F(ToolTip, WindowsAndRectanglesAreToolsOfTheirOwn)
{
    ASSERT_TRUE(tip.AddTool(&button, L"whole window"));
    ASSERT_TRUE(tip.AddTool(&host, L"rectangle", kTool, kToolId));
    // A rectangle needs a number and a number needs a rectangle.
    EXPECT_FALSE(tip.AddTool(&host, L"rectangle", kTool));
    EXPECT_FALSE(tip.AddTool(&host, L"rectangle", nullptr, kToolId));
    EXPECT_FALSE(tip.AddTool(nullptr, L"no window"));
    EXPECT_EQ(tip.GetToolCount(), 2);
    EXPECT_STREQ(TextOf(&button), L"whole window");
    EXPECT_STREQ(TextOf(&host, kToolId), L"rectangle");

    TOOLINFO hit = {};
    EXPECT_TRUE(tip.HitTest(&host, kTool.TopLeft(), &hit));
    EXPECT_EQ(hit.uId, kToolId);
    EXPECT_FALSE(tip.HitTest(&host, kTool.BottomRight(), &hit));
    tip.SetToolRect(&host, kToolId, CRect(0, 0, 5, 5));
    EXPECT_FALSE(tip.HitTest(&host, kTool.TopLeft(), &hit));
    EXPECT_TRUE(tip.HitTest(&host, CPoint(2, 2), &hit));

    tip.DelTool(&host, kToolId);
    EXPECT_EQ(tip.GetToolCount(), 1);
    tip.DelTool(&button);
    EXPECT_EQ(tip.GetToolCount(), 0);
}

TEST_F(ToolTip, ToolInfoCutsTheTextToItsBuffer)
{
    ASSERT_TRUE(tip.AddTool(&host, CString(L'z', 900), kTool, kToolId));
    CToolInfo info;
    ASSERT_TRUE(tip.GetToolInfo(info, &host, kToolId));
    EXPECT_EQ(std::wstring(info.lpszText), std::wstring(255, L'z'));
    EXPECT_EQ(info.lpszText, info.szText);
    EXPECT_EQ(CRect(info.rect), kTool);
    EXPECT_EQ(info.hwnd, host.m_hWnd);
    EXPECT_FALSE(tip.GetToolInfo(info, &button));

    ASSERT_TRUE(tip.AddTool(&button));
    ASSERT_TRUE(tip.GetToolInfo(info, &button));
    EXPECT_EQ(info.lpszText, LPSTR_TEXTCALLBACK);
    EXPECT_EQ(info.uFlags & TTF_IDISHWND, static_cast<UINT>(TTF_IDISHWND));
    EXPECT_EQ(info.uId, reinterpret_cast<UINT_PTR>(button.m_hWnd));
}

TEST_F(ToolTip, CallbackAsksTheParentForTheText)
{
    host.SetAnswer([&](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        auto* const request = reinterpret_cast<NMTTDISPINFO*>(lParam);
        if (message != WM_NOTIFY || request->hdr.code != TTN_NEEDTEXT)
            return std::nullopt;
        EXPECT_EQ(request->hdr.idFrom, reinterpret_cast<UINT_PTR>(button.m_hWnd));
        request->lpszText = const_cast<LPWSTR>(L"from the parent");
        return 0;
    });
    ASSERT_TRUE(tip.AddTool(&button));
    EXPECT_STREQ(TextOf(&button), L"from the parent");
}

TEST_F(ToolTip, TextComesFromAStringResource)
{
    // Any module with strings will do.
    const HINSTANCE before = AfxGetResourceHandle();
    const HINSTANCE module = ::GetModuleHandle(L"user32.dll");
    UINT id = 0;
    TCHAR expected[256] = {};
    while (++id < 0x4000 && ::LoadString(module, id, expected, 256) == 0) {
    }
    if (expected[0] == 0)
        GTEST_SKIP() << "the module has no strings";
    AfxSetResourceHandle(module);
    EXPECT_TRUE(tip.AddTool(&button, id));
    EXPECT_STREQ(TextOf(&button), expected);
    tip.UpdateTipText(L"other", &button);
    tip.UpdateTipText(id, &button);
    EXPECT_STREQ(TextOf(&button), expected);
    AfxSetResourceHandle(before);

    constexpr UINT kNoSuchString = 65000;
    EXPECT_FALSE(tip.AddTool(&host, kNoSuchString, kTool, kToolId));
    tip.UpdateTipText(kNoSuchString, &button);
    EXPECT_STREQ(TextOf(&button), expected);
}

TEST_F(ToolTip, PointerOverAToolBringsUpTheTip)
{
    ASSERT_TRUE(tip.AddTool(&host, L"tip text", kTool, kToolId));
    tip.SetDelayTime(TTDT_INITIAL, 1);
    EXPECT_EQ(tip.GetDelayTime(TTDT_INITIAL), 1);
    tip.SetTipBkColor(RGB(1, 2, 3));
    EXPECT_EQ(tip.GetTipBkColor(), RGB(1, 2, 3));
    CRect margin(1, 2, 3, 4);
    tip.SetMargin(&margin);
    CRect answer;
    tip.GetMargin(&answer);
    EXPECT_EQ(answer, margin);
    tip.SetMaxTipWidth(80);
    EXPECT_EQ(tip.GetMaxTipWidth(), 80);

    const CPoint point = kTool.CenterPoint();
    support::MoveTo(support::ClientToScreen(host, point));
    tip.Activate(FALSE);
    RelayMove(tip, host, point);
    EXPECT_FALSE(tip.IsWindowVisible());
    tip.Activate(TRUE);
    RelayMove(tip, host, point);
    EXPECT_TRUE(support::PumpUntil([&] { return tip.IsWindowVisible() != FALSE; }));
    TOOLINFO shown = {};
    shown.cbSize = TTTOOLINFOW_V2_SIZE;
    EXPECT_TRUE(tip.GetCurrentTool(&shown));
    EXPECT_EQ(shown.uId, kToolId);
    tip.Pop();
    EXPECT_FALSE(tip.IsWindowVisible());
}

} // namespace
