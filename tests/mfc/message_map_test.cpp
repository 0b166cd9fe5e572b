// Dispatch: inheritance of message maps, commands, notifications, reflection and its order.
#include "tests/support/census.h"
#include "tests/support/pump.h"

#include <afxcmn.h>
#include <afxwin.h>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

using Log = std::vector<std::string>;
Log g_log;
UINT g_registered = 0;
constexpr UINT kPrivate = WM_USER + 7;
constexpr UINT kControl = 31;
constexpr UINT kCommand = 0x9001;

class BaseWnd : public CWnd
{
public:
    BOOL Open()
    {
        return CWnd::CreateEx(0, AfxRegisterWndClass(0), nullptr, WS_POPUP, CRect(0, 0, 100, 100), nullptr,
                              0);
    }
    bool commandEnabled = true;

protected:
    virtual LRESULT OnPrivate(WPARAM wParam, LPARAM lParam)
    {
        g_log.push_back("base private");
        return static_cast<LRESULT>(wParam) + lParam;
    }
    afx_msg LRESULT OnRegistered(WPARAM, LPARAM)
    {
        g_log.push_back("registered");
        return 77;
    }
    afx_msg void OnCommandItem() { g_log.push_back("command"); }
    afx_msg void OnUpdateItem(CCmdUI* item) { item->Enable(commandEnabled); }
    afx_msg void OnSize(UINT type, int cx, int cy)
    {
        g_log.push_back("size " + std::to_string(type) + " " + std::to_string(cx) + " " + std::to_string(cy));
        // The base class handles the message as it came, whatever it is given.
        CWnd::OnSize(99, 1, 1);
    }
    afx_msg void OnMouseMove(UINT flags, CPoint point)
    {
        g_log.push_back("move " + std::to_string(flags) + " " + std::to_string(point.x) + " " +
                        std::to_string(point.y));
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(BaseWnd, CWnd)
    ON_MESSAGE(kPrivate, &BaseWnd::OnPrivate)
    ON_REGISTERED_MESSAGE(g_registered, &BaseWnd::OnRegistered)
    ON_COMMAND(kCommand, &BaseWnd::OnCommandItem)
    ON_UPDATE_COMMAND_UI(kCommand, &BaseWnd::OnUpdateItem)
    ON_WM_SIZE()
    ON_WM_MOUSEMOVE()
END_MESSAGE_MAP()

class DerivedWnd : public BaseWnd
{
public:
    bool exHandles = false;
    bool keepColor = false;
    using CWnd::DefWindowProc;

protected:
    LRESULT OnPrivate(WPARAM wParam, LPARAM lParam) override
    {
        g_log.push_back("derived private");
        return BaseWnd::OnPrivate(wParam, lParam) * 2;
    }
    afx_msg void OnClickedControl() { g_log.push_back("parent clicked"); }
    afx_msg void OnAnyControl(UINT id) { g_log.push_back("parent range " + std::to_string(id)); }
    afx_msg void OnReleased(NMHDR* header, LRESULT* result)
    {
        g_log.push_back("parent notify " + std::to_string(header->idFrom));
        *result = 5;
    }
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT type)
    {
        g_log.push_back("parent color " + std::to_string(type));
        if (keepColor)
            return static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH));
        return BaseWnd::OnCtlColor(dc, control, type);
    }
    afx_msg BOOL OnCommandFirst(UINT id)
    {
        g_log.push_back("ex " + std::to_string(id));
        return exHandles;
    }
    DECLARE_MESSAGE_MAP()
};

constexpr UINT kExCommand = 0x9002;

BEGIN_MESSAGE_MAP(DerivedWnd, BaseWnd)
    ON_BN_CLICKED(kControl, &DerivedWnd::OnClickedControl)
    ON_CONTROL_RANGE(BN_SETFOCUS, kControl, kControl + 5, &DerivedWnd::OnAnyControl)
    ON_NOTIFY(NM_RELEASEDCAPTURE, kControl, &DerivedWnd::OnReleased)
    ON_COMMAND_EX(kExCommand, &DerivedWnd::OnCommandFirst)
    ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

// A control that looks at what it tells its parent.
class ReflectingButton : public CButton
{
public:
    BOOL keepClick = FALSE;
    bool keepNotify = false;

protected:
    afx_msg BOOL OnReflectedClick()
    {
        g_log.push_back("control clicked");
        return keepClick;
    }
    afx_msg BOOL OnReflectedRelease(NMHDR*, LRESULT* result)
    {
        g_log.push_back("control notify");
        *result = 9;
        return keepNotify;
    }
    afx_msg HBRUSH CtlColor(CDC*, UINT)
    {
        g_log.push_back("control color");
        return static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH));
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ReflectingButton, CButton)
    ON_CONTROL_REFLECT_EX(BN_CLICKED, &ReflectingButton::OnReflectedClick)
    ON_NOTIFY_REFLECT_EX(NM_RELEASEDCAPTURE, &ReflectingButton::OnReflectedRelease)
    ON_WM_CTLCOLOR_REFLECT()
END_MESSAGE_MAP()

class MessageMap : public support::CensusTest
{
protected:
    void SetUp() override
    {
        g_registered = ::RegisterWindowMessage(_T("vgui message map test"));
        ASSERT_TRUE(parent.Open());
        ASSERT_TRUE(button.Create(_T("b"), WS_CHILD | BS_PUSHBUTTON, CRect(0, 0, 20, 20), &parent, kControl));
        g_log.clear();
    }
    LRESULT Notify()
    {
        NMHDR header{button.m_hWnd, kControl, static_cast<UINT>(NM_RELEASEDCAPTURE)};
        return parent.SendMessage(WM_NOTIFY, kControl, reinterpret_cast<LPARAM>(&header));
    }
    LRESULT Click(UINT code = BN_CLICKED)
    {
        return parent.SendMessage(WM_COMMAND, MAKEWPARAM(kControl, code),
                                  reinterpret_cast<LPARAM>(button.m_hWnd));
    }
    DerivedWnd parent;
    ReflectingButton button;
};

} // namespace

TEST_F(MessageMap, DerivedMapsComeFirstAndInheritTheRest)
{
    EXPECT_EQ(parent.SendMessage(kPrivate, 3, 4), 14);
    EXPECT_EQ(g_log, (Log{"derived private", "base private"})) << "a virtual handler is called as such";
    g_log.clear();
    EXPECT_EQ(parent.SendMessage(g_registered), 77);
    parent.SendMessage(WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(640, 480));
    parent.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-3, -40));
    EXPECT_EQ(g_log, (Log{"registered", "size 2 640 480", "move 1 -3 -40"}));
}

TEST_F(MessageMap, DisabledCommandsDoNotRun)
{
    EXPECT_EQ(parent.SendMessage(WM_COMMAND, kCommand), 1);
    parent.commandEnabled = false;
    EXPECT_EQ(parent.SendMessage(WM_COMMAND, kCommand), 1);
    EXPECT_EQ(g_log, (Log{"command"}));
}

TEST_F(MessageMap, AnExHandlerSaysWhetherItHasHandled)
{
    EXPECT_FALSE(parent.OnCmdMsg(kExCommand, CN_COMMAND, nullptr, nullptr));
    parent.exHandles = true;
    EXPECT_TRUE(parent.OnCmdMsg(kExCommand, CN_COMMAND, nullptr, nullptr));
    AFX_CMDHANDLERINFO info{};
    g_log.clear();
    EXPECT_TRUE(parent.OnCmdMsg(kExCommand, CN_COMMAND, nullptr, &info));
    EXPECT_EQ(info.pTarget, &parent);
    EXPECT_TRUE(g_log.empty()) << "looking a handler up does not call it";
    EXPECT_FALSE(parent.OnCmdMsg(0x9999, CN_COMMAND, nullptr, nullptr));
}

TEST_F(MessageMap, CommandsOfControlsAreReflectedFirst)
{
    EXPECT_EQ(Click(), 1);
    EXPECT_EQ(g_log, (Log{"control clicked", "parent clicked"}));
    g_log.clear();
    button.keepClick = TRUE;
    EXPECT_EQ(Click(), 1);
    EXPECT_EQ(g_log, (Log{"control clicked"}));
    g_log.clear();
    Click(BN_SETFOCUS);
    EXPECT_EQ(g_log, (Log{"parent range 31"}));
}

TEST_F(MessageMap, NotificationsAreReflectedFirst)
{
    EXPECT_EQ(Notify(), 5);
    EXPECT_EQ(g_log, (Log{"control notify", "parent notify 31"}));
    g_log.clear();
    button.keepNotify = true;
    EXPECT_EQ(Notify(), 9);
    EXPECT_EQ(g_log, (Log{"control notify"}));
}

TEST_F(MessageMap, OtherMessagesAreReflectedByTheParentsBase)
{
    CClientDC dc(&button);
    const auto ask = [&] {
        return parent.SendMessage(WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(dc.m_hDC),
                                  reinterpret_cast<LPARAM>(button.m_hWnd));
    };
    EXPECT_EQ(ask(), reinterpret_cast<LRESULT>(::GetStockObject(GRAY_BRUSH)));
    const std::string asParent = "parent color " + std::to_string(CTLCOLOR_BTN);
    EXPECT_EQ(g_log, (Log{asParent, "control color"}));
    g_log.clear();
    parent.keepColor = true;
    EXPECT_EQ(ask(), reinterpret_cast<LRESULT>(::GetStockObject(BLACK_BRUSH)));
    EXPECT_EQ(g_log, (Log{asParent}));
}
