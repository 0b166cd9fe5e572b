#include "tests/composite/combo_tree_fixture.h"
#include "tests/support/modal.h"

#include <algorithm>

using namespace support;

namespace
{

constexpr WCHAR kShort[] = L"short";
constexpr WCHAR kLong[] = L"a label that is longer than the tree is wide & that is cut off";
constexpr WCHAR kOther[] = L"another label that is longer than the tree is wide, by far";

class OpenTip : public CComboPopupText
{
public:
    static constexpr DWORD CComboPopupText::*kAlign = &OpenTip::m_dwAlign;
    static constexpr CFont CComboPopupText::*kFont = &OpenTip::m_font;
};

class ComboTreeTips : public ComboTreeTest
{
protected:
    void SetUp() override { OpenDropped({kShort, kLong, kOther}); }
    [[nodiscard]] bool IsShown() const { return tip.m_hWnd != nullptr && tip.IsWindowVisible(); }
    [[nodiscard]] std::wstring Text() const { return WindowText(tip.m_hWnd); }
    [[nodiscard]] CRect Place() const
    {
        CRect rect;
        tip.GetWindowRect(rect);
        return rect;
    }
    bool Appears() const
    {
        return PumpUntil([this] { return IsShown(); });
    }

    CComboPopupText& tip = CComboPopupText::Instance();
};

} // namespace

TEST_F(ComboTreeTips, ComeOverCutOffLabelsAfterADelay)
{
    constexpr UINT kDelay = 200;
    constexpr UINT kTimerGrain = 20; // by which a timer may be early
    ASSERT_TRUE(tip.BelongTo(tree));
    MessageSpy spy(tip.m_hWnd);
    const auto delaysEnded = [&] {
        const RecordedMessages timers = spy.Messages(WM_TIMER);
        return std::count_if(timers.begin(), timers.end(),
                             [](const auto& timer) { return timer.wParam == 1; });
    };
    MoveTo(On(kShort));
    const ULONGLONG start = ::GetTickCount64();
    MoveTo(On(kLong));
    ASSERT_TRUE(Appears());
    EXPECT_GE(::GetTickCount64() - start, kDelay - kTimerGrain);
    EXPECT_EQ(delaysEnded(), 1);
    EXPECT_EQ(Text(), kLong);
    CRect label;
    tree.GetItemRect(Find(kLong), label, TRUE);
    CRect full(0, 0, 0, 0);
    CClientDC dc(&tree);
    const CFont* const font = tree.GetFont();
    CFont* const old = font != nullptr ? dc.SelectObject(const_cast<CFont*>(font)) : nullptr;
    dc.DrawText(kLong, full, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    dc.SelectObject(old);
    tree.ClientToScreen(label);
    EXPECT_EQ(Place().TopLeft(), label.TopLeft() - CSize(3, 0));
    EXPECT_EQ(Place().Width(), std::max<int>(full.Width(), label.Width()) + 6);
    EXPECT_EQ(Place().Height(), label.Height());
    EXPECT_EQ(::GetFocus(), combo.GetEdit().m_hWnd);
    EXPECT_TRUE(IsDown());
    const DWORD style = tip.GetStyle();
    EXPECT_EQ(style & (WS_POPUP | WS_BORDER), DWORD{WS_POPUP | WS_BORDER});
    EXPECT_EQ(tip.GetExStyle() & (WS_EX_TOOLWINDOW | WS_EX_TOPMOST), DWORD{WS_EX_TOOLWINDOW | WS_EX_TOPMOST});

    // It paints its text on the tooltip's colours.
    tip.UpdateWindow();
    const DibSurface shown = CaptureClient(tip.m_hWnd);
    EXPECT_EQ(shown.Pixel(0, 0), ::GetSysColor(COLOR_INFOBK));
    EXPECT_GT(shown.Count(::GetSysColor(COLOR_INFOTEXT)), 50);

    // Another label has its own delay.
    MoveTo(On(kOther));
    EXPECT_EQ(Text(), kOther);
    ASSERT_TRUE(Appears());
    EXPECT_EQ(delaysEnded(), 2);
    MoveTo(On(kShort));
    EXPECT_FALSE(IsShown());
}

TEST_F(ComboTreeTips, GoWhenTheMouseLeavesAndComeAgain)
{
    MoveTo(On(kLong));
    ASSERT_TRUE(Appears());
    MoveTo(ClientToScreen(host.m_hWnd, {2, 2}));
    ASSERT_TRUE(PumpUntil([this] { return !IsShown(); }));
    EXPECT_TRUE(tip.HasMouseLeft());
    MoveTo(On(kLong));
    EXPECT_FALSE(tip.HasMouseLeft());
    ASSERT_TRUE(Appears());
    // With the mouse on the tip it stays: several polls go by.
    MoveTo(Place().CenterPoint());
    int polls = 0;
    MessageSpy spy(tip.m_hWnd);
    EXPECT_TRUE(PumpUntil([&] {
        polls = spy.Count(WM_TIMER);
        return polls >= 3;
    }));
    EXPECT_TRUE(IsShown());
    EXPECT_EQ(tip.SendMessage(WM_MOUSEACTIVATE), MA_NOACTIVATE);
    Click(Place().CenterPoint());
    EXPECT_FALSE(IsShown());
    EXPECT_TRUE(IsDown());
}

TEST_F(ComboTreeTips, GoWithClicksDeletionAndTheTree)
{
    const auto show = [this](LPCWSTR path) {
        MoveTo(On(kShort));
        MoveTo(On(path));
        ASSERT_TRUE(Appears());
    };
    show(kLong);
    Press();
    EXPECT_FALSE(IsShown());
    Release();
    for (const UINT message : {WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MBUTTONDOWN}) {
        show(kLong);
        tip.SendMessage(message);
        EXPECT_FALSE(IsShown());
    }
    for (const UINT message : {WM_MOUSEWHEEL, WM_VSCROLL, WM_HSCROLL, WM_KEYDOWN}) {
        show(kLong);
        tree.SendMessage(message);
        EXPECT_FALSE(IsShown());
        MoveTo(On(kLong, 4)); // what the mouse is over now is not what it was over
        EXPECT_TRUE(Appears()) << message;
    }
    tip.Hide();
    tip.SendMessage(WM_TIMER, 1); // of the stopped delay, too late
    EXPECT_FALSE(IsShown());
    show(kOther);
    combo.DeleteString(Find(kOther));
    EXPECT_FALSE(IsShown());
    show(kLong);
    combo.HideTree();
    EXPECT_FALSE(IsShown());
    MoveTo(ClientToScreen(host.m_hWnd, {2, 2}));
    Drop();
    MoveTo(On(kLong));
    EXPECT_TRUE(Appears());
}

TEST_F(ComboTreeTips, ServeEveryTree)
{
    OpenCombo second;
    ASSERT_TRUE(second.Create(CRect(120, 150, 280, 174), kDropped.cx, 60, &host, kComboId + 1));
    second.AddString(kOther);
    MoveTo(On(kLong));
    ASSERT_TRUE(Appears());
    combo.HideTree();
    second.ShowTree();
    PumpMessages();
    CRect label;
    second.GetTree().GetItemRect(second.GetTree().GetRootItem(), label, TRUE);
    MoveTo(ClientToScreen(second.GetTree().m_hWnd, label.TopLeft() + CSize(4, 4)));
    ASSERT_TRUE(Appears());
    EXPECT_EQ(tip.GetTree(), second.GetTree().m_hWnd);
    MessageSpy spy(tip.m_hWnd);
    EXPECT_TRUE(PumpUntil([&] { return spy.Count(WM_TIMER) >= 2; }));
    EXPECT_TRUE(IsShown());
    second.DestroyWindow();
    EXPECT_TRUE(::IsWindow(tip.m_hWnd));
    EXPECT_FALSE(IsShown());
    Drop();
    MoveTo(On(kLong));
    EXPECT_TRUE(Appears());
}

TEST_F(ComboTreeTips, FitTheirText)
{
    ASSERT_TRUE(tip.BelongTo(tree));
    CRect text(0, 0, 0, 0);
    {
        CClientDC dc(&tip);
        CFont* const old = dc.SelectObject(&(tip.*OpenTip::kFont));
        dc.DrawText(L"some text", text, DT_CALCRECT | DT_SINGLELINE);
        dc.SelectObject(old);
    }
    tip.SetWindowPos(nullptr, 50, 60, 10, 10, SWP_NOZORDER | SWP_NOACTIVATE);
    tip.SetWindowText(L"some text");
    EXPECT_EQ(Place(), CRect(CPoint(50, 60), text.Size() + CSize(8, 8)));
    EXPECT_FALSE(IsShown());
    tip.*OpenTip::kAlign = CComboPopupText::kGrowLeft;
    const LONG right = Place().right;
    tip.SetWindowText(L"s");
    EXPECT_EQ(Place().right, right);
    EXPECT_LT(Place().Width(), text.Width());
    tip.*OpenTip::kAlign = 0;
}

TEST_F(ComboTreeTips, NeedATree)
{
    CString text;
    ComboTreeTip watcher;
    watcher.OnHoverMove({1, 1});
    EXPECT_EQ(watcher.HitTestLabel({1, 1}, nullptr, text), nullptr);
    CPoint point = On(kShort);
    tree.ScreenToClient(&point);
    ASSERT_TRUE(watcher.Watch(tree));
    EXPECT_EQ(watcher.HitTestLabel(point, nullptr, text), Find(kShort));
    EXPECT_EQ(text, kShort);
}
