#include "tests/support/input.h"

#include "tests/support/pump.h"
#include "tests/support/recorder.h"

#include <gtest/gtest-spi.h>

namespace
{

using support::HostWnd;
using support::MessageSpy;

class InputTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_host.Open({300, 200}, WS_OVERLAPPEDWINDOW)); }

    HWND AddEdit() const
    {
        const HWND edit = ::CreateWindow(L"Edit", L"", WS_CHILD | WS_VISIBLE, 10, 10, 200, 30, m_host.m_hWnd,
                                         nullptr, ::GetModuleHandle(nullptr), nullptr);
        ::SetFocus(edit);
        return edit;
    }

    HostWnd m_host;
};

CString TextOf(HWND window)
{
    wchar_t text[64] = L"";
    ::GetWindowText(window, text, 64);
    return text;
}

// Messages of the pointer's buttons, in the order in which the window got them.
std::vector<UINT> ButtonMessages(const MessageSpy& spy)
{
    std::vector<UINT> messages;
    for (const support::RecordedMessage& message : spy.Messages()) {
        if (message.message > WM_MOUSEMOVE && message.message <= WM_MBUTTONDBLCLK)
            messages.push_back(message.message);
    }
    return messages;
}

TEST_F(InputTest, PointerIsExactOnEveryKindOfCoordinate)
{
    const int right = ::GetSystemMetrics(SM_CXSCREEN) - 1;
    const int bottom = ::GetSystemMetrics(SM_CYSCREEN) - 1;
    for (const CPoint point : {CPoint(0, 0), CPoint(1, 1), CPoint(333, 777), CPoint(right, 0),
                               CPoint(1, bottom), CPoint(right, bottom)}) {
        support::MoveTo(point);
        CPoint found;
        ::GetCursorPos(&found);
        EXPECT_EQ(found, point);
    }
}

TEST_F(InputTest, KeysAndTextReachTheEditWithTheFocus)
{
    const HWND edit = AddEdit();
    support::Type(L"ab中文");
    support::Key(VK_LEFT);
    support::Key('X', {VK_SHIFT});
    EXPECT_EQ(TextOf(edit), L"ab中X文");
    support::Key(VK_HOME, {VK_SHIFT});
    support::Key(VK_DELETE);
    EXPECT_EQ(TextOf(edit), L"文");
}

TEST_F(InputTest, TwoClicksAtOneSpotAreNoDoubleClick)
{
    const CPoint spot = support::CenterOf(m_host.m_hWnd);
    support::MoveTo(spot);
    MessageSpy spy(m_host.m_hWnd);
    support::Click(spot);
    support::Click(spot);
    EXPECT_EQ(ButtonMessages(spy),
              (std::vector<UINT>{WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDOWN, WM_LBUTTONUP}));
    spy.Clear();
    support::DoubleClick(spot, support::MouseButton::Right);
    EXPECT_EQ(ButtonMessages(spy),
              (std::vector<UINT>{WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK, WM_RBUTTONUP}));
}

TEST_F(InputTest, WheelTurnsOneNotch)
{
    support::MoveTo(support::CenterOf(m_host.m_hWnd));
    MessageSpy spy(m_host.m_hWnd);
    support::Wheel(-WHEEL_DELTA);
    ASSERT_GE(spy.Count(WM_MOUSEWHEEL), 1);
    EXPECT_EQ(GET_WHEEL_DELTA_WPARAM(spy.Messages(WM_MOUSEWHEEL).front().wParam), -WHEEL_DELTA);
}

TEST_F(InputTest, DragMovesAndSizesAWindowInsideTheSystemsLoops)
{
    CRect before, after;
    m_host.GetWindowRect(&before);
    const CPoint caption(before.left + 100, before.top + 15);
    support::Drag({caption, caption + CSize(20, 5), caption + CSize(50, 30)});
    m_host.GetWindowRect(&after);
    EXPECT_EQ(after.TopLeft(), before.TopLeft() + CSize(50, 30));
    EXPECT_EQ(after.Size(), before.Size());

    const CPoint corner = after.BottomRight() - CSize(2, 2);
    support::Drag({corner, corner + CSize(10, 10), corner + CSize(40, 20)});
    CRect sized;
    m_host.GetWindowRect(&sized);
    EXPECT_EQ(sized.Size(), before.Size() + CSize(40, 20));
}

TEST_F(InputTest, DragThatIsNotTakenFailsAndLetsGo)
{
    constexpr DWORD kBusy = 200;
    constexpr DWORD kTimeout = 20;
    m_host.SetAnswer([](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_LBUTTONDOWN)
            ::Sleep(kBusy); // a handler that takes long is the case under test
        return std::nullopt;
    });
    const CPoint from = support::CenterOf(m_host.m_hWnd);
    EXPECT_NONFATAL_FAILURE(support::Drag({from, from + CSize(5, 5)}, support::MouseButton::Left, kTimeout),
                            "no message loop took");
    EXPECT_GE(::GetAsyncKeyState(VK_LBUTTON), 0);
}

TEST_F(InputTest, ReleaseAllLetsGoOfKeysButtonsAndCapture)
{
    support::MoveTo(support::CenterOf(m_host.m_hWnd));
    m_host.SetCapture();
    support::Press();
    support::KeyDown(VK_CONTROL);
    support::ReleaseAll();
    EXPECT_GE(::GetAsyncKeyState(VK_LBUTTON), 0);
    EXPECT_GE(::GetAsyncKeyState(VK_CONTROL), 0);
    EXPECT_EQ(::GetCapture(), nullptr);
}

} // namespace
