#include "tests/dialogs/gui_dlg_fixture.h"

#include <afxext.h>
#include <algorithm>
#include <iterator>

using namespace support;

namespace
{

constexpr UINT kTextResource = 4001; // in gui_dlg_tips.rc

class GuiDlgTips : public GuiDlgTest
{
};

// Has texts for some ids, in place of string resources.
class TextDlg : public TestDlg
{
public:
    CString text;

protected:
    bool LoadStringW(CString& loaded, UINT_PTR nID) const override
    {
        loaded = text;
        loaded += nID == 5 ? L"#5" : L"";
        return true;
    }
    CString GetFormatString(const CString& loaded) override { return L"<" + loaded; }
};

CString CaptionTip(TestDlg& dlg)
{
    CString text;
    dlg.GetToolTipCtrl().GetText(text, &dlg);
    return text;
}

CString TipAt(TestDlg& dlg, LRESULT hit)
{
    MoveTo(CapBtnCenter(dlg, hit));
    return CaptionTip(dlg);
}

class FrameThatRoutes : public CFrameWnd
{
public:
    CWnd* target = nullptr;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override
    {
        return (target != nullptr && target->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo)) ||
               CFrameWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
    }
};

} // namespace

TEST_F(GuiDlgTips, ControlIsSetUp)
{
    TestDlg dlg;
    Open(dlg);
    CToolTipCtrl& tips = dlg.GetToolTipCtrl();
    EXPECT_NE(tips.GetStyle() & TTS_ALWAYSTIP, 0u);
    EXPECT_EQ(tips.GetDelayTime(TTDT_INITIAL), 1000);
    EXPECT_EQ(tips.GetMaxTipWidth(), 400);
    EXPECT_EQ(tips.GetToolCount(), 1);
    CRect margin;
    tips.GetMargin(margin);
    EXPECT_EQ(margin, CRect(1, 1, 1, 1));
}

TEST_F(GuiDlgTips, CaptionButtonsHaveTheirTexts)
{
    TestDlg dlg;
    Open(dlg);
    EXPECT_EQ(TipAt(dlg, HTCLOSE), L"关闭");
    EXPECT_EQ(TipAt(dlg, HTMAXBUTTON), L"最大化");
    EXPECT_EQ(TipAt(dlg, HTMINBUTTON), L"最小化");
    EXPECT_EQ(TipAt(dlg, HTHELP), L"点击进入视频帮助系统");
    dlg.ShowWindow(SW_SHOWMAXIMIZED);
    PumpMessages();
    EXPECT_EQ(TipAt(dlg, HTMAXBUTTON), L"还原");
    // The bare caption changes nothing.
    MoveTo(WindowRect(dlg).TopLeft() + CSize(60, 15));
    EXPECT_EQ(CaptionTip(dlg), L"还原");
}

TEST_F(GuiDlgTips, ControlsGetTipsAndBlueText)
{
    TestDlg dlg;
    EXPECT_FALSE(dlg.AddToolTips(kEditId, L"too early"));
    Open(dlg);
    EXPECT_TRUE(dlg.AddToolTips(kEditId, L"的编辑框"));
    EXPECT_TRUE(dlg.AddToolTips(dlg.GetDlgItem(kStaticId), CString(L'x', 300)));
    CString text;
    dlg.GetToolTipCtrl().GetText(text, dlg.GetDlgItem(kEditId));
    EXPECT_EQ(text, L"的编辑框");
    COLORREF color = 0;
    EXPECT_TRUE(dlg.GetSetCtrlClr(kEditId, color));
    EXPECT_EQ(color, RGB(80, 80, 255));
    EXPECT_EQ(dlg.GetToolTipCtrl().GetToolCount(), 3);

    const int tools = dlg.GetToolTipCtrl().GetToolCount();
    EXPECT_TRUE(dlg.AddToolTips(kEditId, L"another"));
    EXPECT_EQ(dlg.GetToolTipCtrl().GetToolCount(), tools);
    dlg.GetToolTipCtrl().GetText(text, dlg.GetDlgItem(kEditId));
    EXPECT_EQ(text, L"another");
    EXPECT_FALSE(dlg.AddToolTips(kMissingId, L"nobody"));
    EXPECT_FALSE(dlg.AddToolTips(static_cast<CWnd*>(nullptr), L"nobody"));
    CStatic loose;
    EXPECT_FALSE(dlg.AddToolTips(&loose, L"nobody"));
    EXPECT_EQ(dlg.GetToolTipCtrl().GetToolCount(), 3);
}

TEST_F(GuiDlgTips, TipPopsUpOverItsControlOnly)
{
    TestDlg dlg;
    Open(dlg);
    dlg.AddToolTips(kEditId, L"tip");
    MoveTo(CenterOf(::GetDlgItem(dlg.m_hWnd, kEditId)));
    EXPECT_TRUE(PumpUntil([&] { return dlg.GetToolTipCtrl().IsWindowVisible() != FALSE; }));
    MoveTo(CenterOf(::GetDlgItem(dlg.m_hWnd, kCheckId)));
    EXPECT_TRUE(PumpUntil([&] { return dlg.GetToolTipCtrl().IsWindowVisible() == FALSE; }));
}

TEST_F(GuiDlgTips, TipPopsUpOverCaptionButtonsOnly)
{
    TestDlg dlg;
    Open(dlg);
    const auto shown = [&] { return dlg.GetToolTipCtrl().IsWindowVisible() != FALSE; };
    for (const LRESULT hit : {HTCLOSE, HTHELP}) {
        MoveTo(CapBtnCenter(dlg, hit));
        EXPECT_TRUE(PumpUntil(shown)) << hit;
        MoveTo(WindowRect(dlg).TopLeft() + CSize(60, 15));
        EXPECT_TRUE(PumpUntil([&] { return !shown(); })) << hit;
    }
    MoveTo(CapBtnCenter(dlg, HTCLOSE));
    EXPECT_TRUE(PumpUntil(shown));
    MoveTo(CenterOf(dlg.m_hWnd));
    EXPECT_TRUE(PumpUntil([&] { return !shown(); }));
    // Nothing is left to be shown over the bare client area when a control's tip has been shown before.
    EXPECT_EQ(CaptionTip(dlg), L"");
}

TEST_F(GuiDlgTips, WideQuestionIsAnsweredAndCut)
{
    TextDlg dlg;
    dlg.text = L"text";
    Open(dlg);
    NMTTDISPINFOW info{};
    info.hdr = {dlg.GetToolTipCtrl().m_hWnd, 5, TTN_NEEDTEXTW};
    LRESULT result = 1;
    EXPECT_TRUE(dlg.OnToolTipText(0, &info.hdr, &result));
    EXPECT_EQ(result, 0);
    EXPECT_STREQ(info.szText, L"<text#5");

    dlg.text = CString(L'字', 200);
    EXPECT_TRUE(dlg.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info)) == 0);
    EXPECT_EQ(std::wcslen(info.szText), 79u);
}

TEST_F(GuiDlgTips, NarrowQuestionIsConvertedWithoutHalfCharacters)
{
    TextDlg dlg;
    Open(dlg);
    NMTTDISPINFOA info{};
    info.hdr = {dlg.GetToolTipCtrl().m_hWnd, 7, TTN_NEEDTEXTA};
    const auto answer = [&](const CString& text) {
        dlg.text = text;
        std::fill(std::begin(info.szText), std::end(info.szText), '?');
        EXPECT_TRUE(dlg.OnToolTipText(0, &info.hdr, nullptr));
        return CString(info.szText);
    };
    EXPECT_EQ(answer(L"abc"), L"<abc");
    EXPECT_EQ(answer(L""), L"<");
    EXPECT_EQ(answer(CString(L'a', 200)), L"<" + CString(L'a', 78));
    const CString chinese = answer(CString(L'字', 200));
    ASSERT_GT(chinese.GetLength(), 1);
    // The same character to the end, whatever number of bytes it takes in the code page.
    EXPECT_EQ(chinese, L"<" + CString(chinese[1], chinese.GetLength() - 1));
}

TEST_F(GuiDlgTips, QuestionsWithoutAnAnswer)
{
    TextDlg dlg;
    Open(dlg);
    LRESULT result = 0;
    NMTTDISPINFOW info{};
    info.hdr = {dlg.GetToolTipCtrl().m_hWnd, 0, TTN_NEEDTEXTW};
    EXPECT_FALSE(dlg.OnToolTipText(0, &info.hdr, &result));
    info.uFlags = TTF_IDISHWND;
    info.hdr.idFrom = reinterpret_cast<UINT_PTR>(::GetDlgItem(dlg.m_hWnd, kEditId));
    EXPECT_FALSE(dlg.OnToolTipText(0, &info.hdr, &result));
    info.hdr.idFrom = 0x7FFFFFFF;
    EXPECT_FALSE(dlg.OnToolTipText(0, &info.hdr, &result));
    EXPECT_FALSE(dlg.OnToolTipText(0, nullptr, &result));
}

TEST_F(GuiDlgTips, ControlBarIsKnownByItsId)
{
    class Bar : public CControlBar
    {
    };
    TextDlg dlg;
    Open(dlg);
    Bar bar;
    ASSERT_TRUE(bar.CWnd::Create(L"STATIC", L"", WS_CHILD, CRect(0, 0, 5, 5), &dlg, 5));
    NMTTDISPINFOW info{};
    info.hdr = {dlg.GetToolTipCtrl().m_hWnd, reinterpret_cast<UINT_PTR>(bar.m_hWnd), TTN_NEEDTEXTW};
    info.uFlags = TTF_IDISHWND;
    LRESULT result = 0;
    EXPECT_TRUE(dlg.OnToolTipText(0, &info.hdr, &result));
    EXPECT_STREQ(info.szText, L"<#5");
}

TEST_F(GuiDlgTips, QuestionRoutedByAFrameIsTheFrames)
{
    auto* frame = new FrameThatRoutes; // deletes itself
    ASSERT_TRUE(frame->Create(nullptr, L"frame", WS_OVERLAPPEDWINDOW, CRect(100, 100, 300, 200)));
    TextDlg dlg;
    dlg.text = L"text";
    Open(dlg);
    frame->target = &dlg;
    NMTTDISPINFOW info{};
    info.hdr = {dlg.GetToolTipCtrl().m_hWnd, 5, TTN_NEEDTEXTW};
    dlg.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_STREQ(info.szText, L"<text#5");
    info.szText[0] = L'\0';
    frame->SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_STREQ(info.szText, L"");
    frame->target = nullptr;
    frame->DestroyWindow();
}

TEST_F(GuiDlgTips, TextComesFromTheStringResource)
{
    TestDlg dlg;
    Open(dlg);
    NMTTDISPINFOW info{};
    info.hdr = {dlg.GetToolTipCtrl().m_hWnd, kTextResource, TTN_NEEDTEXTW};
    dlg.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_STREQ(info.szText, L"提示文字");
}

TEST_F(GuiDlgTips, MissingStringResourceIsNoText)
{
    TestDlg dlg;
    CString text = L"before";
    EXPECT_FALSE(dlg.LoadStringW(text, 64999));
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_FALSE(dlg.LoadStringW(text, static_cast<UINT_PTR>(-1)));
}
