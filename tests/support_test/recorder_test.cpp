#include "tests/support/recorder.h"

#include "tests/support/input.h"
#include "tests/support/pump.h"

#include <gtest/gtest.h>
#include <sstream>

namespace
{

using support::HostWnd;
using support::MessageSpy;

constexpr UINT kEditId = 12;

// Keeps its change notification away from the parent.
class KeepingEdit : public CEdit
{
    afx_msg void OnChange() {}
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(KeepingEdit, CEdit)
    ON_CONTROL_REFLECT(EN_CHANGE, &KeepingEdit::OnChange)
END_MESSAGE_MAP()

TEST(RecorderTest, CommandsAreRecordedInOrder)
{
    HostWnd host;
    ASSERT_TRUE(host.Open());
    CEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE, {0, 0, 100, 30}, &host, kEditId));
    edit.SetFocus();
    support::Type(L"a");
    EXPECT_EQ(host.CommandCodes(kEditId), (std::vector<int>{EN_SETFOCUS, EN_UPDATE, EN_CHANGE}));
    EXPECT_TRUE(host.Messages().back().reachedParent);
}

TEST(RecorderTest, ReflectedNotificationDoesNotReachTheParent)
{
    HostWnd host;
    ASSERT_TRUE(host.Open());
    KeepingEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE, {0, 0, 100, 30}, &host, kEditId));
    host.Clear();
    edit.ReplaceSel(L"x");
    std::ostringstream text;
    for (const support::RecordedMessage& message : host.Messages()) {
        EXPECT_EQ(message.reachedParent, message.Code() != EN_CHANGE) << message;
        text << message;
    }
    EXPECT_EQ(host.CommandCodes(kEditId).back(), EN_CHANGE);
}

TEST(RecorderTest, NotificationsKeepACopyOfTheHeaderAndCanBeAnswered)
{
    HostWnd host;
    ASSERT_TRUE(host.Open());
    host.SetAnswer([](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        return message == WM_NOTIFY ? std::optional<LRESULT>(77) : std::nullopt;
    });
    {
        NMHDR header{host.m_hWnd, 9, static_cast<UINT>(-5)};
        EXPECT_EQ(host.SendMessage(WM_NOTIFY, 9, reinterpret_cast<LPARAM>(&header)), 77);
        header.code = 0;
    }
    EXPECT_EQ(host.NotifyCodes(9), std::vector<int>{-5});
    EXPECT_EQ(host.CountNotify(9, -5), 1);
}

TEST(RecorderTest, SpySeesSentAndPostedMessagesOfItsWindowOnly)
{
    HostWnd host, other;
    ASSERT_TRUE(host.Open());
    ASSERT_TRUE(other.Open());
    MessageSpy spy(host.m_hWnd);
    host.SendMessage(WM_APP + 1, 5, 6);
    other.SendMessage(WM_APP + 1);
    host.PostMessage(WM_APP + 2);
    EXPECT_EQ(spy.Count(WM_APP + 2), 0);
    support::PumpMessages();
    EXPECT_EQ(spy.Count(WM_APP + 1), 1);
    EXPECT_EQ(spy.Messages(WM_APP + 1).front().lParam, 6);
    EXPECT_EQ(spy.Count(WM_APP + 2), 1);
}

} // namespace
