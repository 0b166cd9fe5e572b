#include "tests/dialogs/gui_dlg_fixture.h"

#include <afxext.h>
#include <algorithm>
#include <iterator>

using namespace support;

namespace
{

constexpr UINT kTextResource = 4001; // in gui_dlg_tips.rc

class GuiDlgTips : public OpenDlgTest
{
protected:
    [[nodiscard]] CString TipOf(CWnd& tool) { return TipText(dlg.GetToolTipCtrl(), &tool); }
    // The tip of the caption's button.
    CString TipAt(LRESULT hit)
    {
        MoveTo(CapBtnCenter(dlg, hit));
        return TipOf(dlg);
    }
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

// A dialog that is asked for the texts of its tips.
class GuiDlgTipsTexts : public GuiDlgTest
{
protected:
    void SetUp() override
    {
        dlg.text = L"text";
        Open(dlg);
        info.hdr = {dlg.GetToolTipCtrl().m_hWnd, 5, TTN_NEEDTEXTW};
    }
    LRESULT Ask(CWnd& parent) { return parent.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info)); }
    BOOL AskDirectly(UINT_PTR id, UINT flags)
    {
        info.hdr.idFrom = id;
        info.uFlags = flags;
        return dlg.OnToolTipText(0, &info.hdr, &result);
    }

    TextDlg dlg;
    NMTTDISPINFOW info{};
    LRESULT result = 1;
};

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
    EXPECT_EQ(TipAt(HTCLOSE), L"关闭");
    EXPECT_EQ(TipAt(HTMAXBUTTON), L"最大化");
    EXPECT_EQ(TipAt(HTMINBUTTON), L"最小化");
    EXPECT_EQ(TipAt(HTHELP), L"点击进入视频帮助系统");
    dlg.ShowWindow(SW_SHOWMAXIMIZED);
    PumpMessages();
    EXPECT_EQ(TipAt(HTMAXBUTTON), L"还原");
    // The bare caption changes nothing.
    MoveTo(WindowRect(dlg).TopLeft() + CSize(60, 15));
    EXPECT_EQ(TipOf(dlg), L"还原");
}

TEST_F(GuiDlgTips, ControlsGetTipsAndBlueText)
{
    CWnd& edit = *dlg.GetDlgItem(kEditId);
    EXPECT_TRUE(dlg.AddToolTips(kEditId, L"的编辑框"));
    EXPECT_TRUE(dlg.AddToolTips(dlg.GetDlgItem(kStaticId), CString(L'x', 300)));
    EXPECT_EQ(TipOf(edit), L"的编辑框");
    COLORREF color = 0;
    EXPECT_TRUE(dlg.GetSetCtrlClr(kEditId, color));
    EXPECT_EQ(color, RGB(80, 80, 255));

    EXPECT_TRUE(dlg.AddToolTips(kEditId, L"another"));
    EXPECT_EQ(TipOf(edit), L"another");
    EXPECT_FALSE(dlg.AddToolTips(kMissingId, L"nobody"));
    EXPECT_FALSE(dlg.AddToolTips(static_cast<CWnd*>(nullptr), L"nobody"));
    CStatic loose;
    EXPECT_FALSE(dlg.AddToolTips(&loose, L"nobody"));
    EXPECT_EQ(dlg.GetToolTipCtrl().GetToolCount(), 3);
    dlg.DestroyWindow();
    EXPECT_FALSE(dlg.AddToolTips(kEditId, L"too late"));
}

TEST_F(GuiDlgTips, TipPopsUpOverCaptionButtonsOnly)
{
    const auto shown = [&] { return dlg.GetToolTipCtrl().IsWindowVisible() != FALSE; };
    const CPoint caption = WindowRect(dlg).TopLeft() + CSize(60, 15);
    const std::pair<LRESULT, CPoint> ways[] = {
        {HTCLOSE, caption}, {HTHELP, caption}, {HTCLOSE, CenterOf(dlg.m_hWnd)}};
    for (const auto& [hit, elsewhere] : ways) {
        MoveTo(CapBtnCenter(dlg, hit));
        EXPECT_TRUE(PumpUntil(shown)) << hit;
        MoveTo(elsewhere);
        EXPECT_TRUE(PumpUntil([&] { return !shown(); })) << hit;
    }
    // Nothing is left to be shown over the bare client area when a control's tip has been shown before.
    EXPECT_EQ(TipOf(dlg), L"");
}

TEST_F(GuiDlgTipsTexts, WideQuestionIsAnsweredAndCut)
{
    EXPECT_TRUE(AskDirectly(5, 0));
    EXPECT_EQ(result, 0);
    EXPECT_STREQ(info.szText, L"<text#5");
    dlg.text = CString(L'字', 200);
    EXPECT_EQ(Ask(dlg), 0);
    EXPECT_EQ(std::wcslen(info.szText), 79u);
}

TEST_F(GuiDlgTipsTexts, NarrowQuestionIsConvertedWithoutHalfCharacters)
{
    NMTTDISPINFOA narrow{};
    narrow.hdr = {dlg.GetToolTipCtrl().m_hWnd, 7, TTN_NEEDTEXTA};
    const auto answer = [&](const CString& text) {
        dlg.text = text;
        std::fill(std::begin(narrow.szText), std::end(narrow.szText), '?');
        EXPECT_TRUE(dlg.OnToolTipText(0, &narrow.hdr, nullptr));
        return CString(narrow.szText);
    };
    EXPECT_EQ(answer(L"abc"), L"<abc");
    EXPECT_EQ(answer(L""), L"<");
    EXPECT_EQ(answer(CString(L'a', 200)), L"<" + CString(L'a', 78));
    const CString chinese = answer(CString(L'字', 200));
    ASSERT_GT(chinese.GetLength(), 1);
    // The same character to the end, whatever number of bytes it takes in the code page.
    EXPECT_EQ(chinese, L"<" + CString(chinese[1], chinese.GetLength() - 1));
}

TEST_F(GuiDlgTipsTexts, QuestionsWithoutAnAnswer)
{
    EXPECT_FALSE(AskDirectly(0, 0));
    EXPECT_FALSE(AskDirectly(reinterpret_cast<UINT_PTR>(::GetDlgItem(dlg.m_hWnd, kEditId)), TTF_IDISHWND));
    EXPECT_FALSE(AskDirectly(0x7FFFFFFF, TTF_IDISHWND));
    EXPECT_FALSE(dlg.OnToolTipText(0, nullptr, &result));
}

TEST_F(GuiDlgTipsTexts, ControlBarIsKnownByItsId)
{
    class Bar : public CControlBar
    {
    } bar;
    ASSERT_TRUE(bar.CWnd::Create(L"STATIC", L"", WS_CHILD, CRect(0, 0, 5, 5), &dlg, 5));
    EXPECT_TRUE(AskDirectly(reinterpret_cast<UINT_PTR>(bar.m_hWnd), TTF_IDISHWND));
    EXPECT_STREQ(info.szText, L"<text#5");
}

TEST_F(GuiDlgTipsTexts, QuestionRoutedByAFrameIsTheFrames)
{
    auto* frame = new FrameThatRoutes; // deletes itself
    ASSERT_TRUE(frame->Create(nullptr, L"frame", WS_OVERLAPPEDWINDOW, CRect(100, 100, 300, 200)));
    frame->target = &dlg;
    Ask(dlg);
    EXPECT_STREQ(info.szText, L"<text#5");
    info.szText[0] = L'\0';
    Ask(*frame);
    EXPECT_STREQ(info.szText, L"");
    frame->target = nullptr;
    frame->DestroyWindow();
}

TEST_F(GuiDlgTips, TextComesFromTheStringResource)
{
    NMTTDISPINFOW info{};
    info.hdr = {dlg.GetToolTipCtrl().m_hWnd, kTextResource, TTN_NEEDTEXTW};
    dlg.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_STREQ(info.szText, L"提示文字");

    CString text = L"before";
    EXPECT_FALSE(dlg.LoadStringW(text, 64999));
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_FALSE(dlg.LoadStringW(text, static_cast<UINT_PTR>(-1)));
}
