#include "tests/controls/themed_fixture.h"
#include "tests/support/modal.h"

#include <vector>

using namespace support;
using namespace themed;

namespace
{

constexpr int kTestString = 5103; // in image_button_test.rc

class ThemedComboBox : public Fixture
{
};

std::vector<CString> Items(const CComboBox& combo)
{
    std::vector<CString> items(combo.GetCount());
    for (int i = 0; i < combo.GetCount(); ++i)
        combo.GetLBText(i, items[i]);
    return items;
}

} // namespace

TEST_F(ThemedComboBox, HistoryIsLoaded)
{
    VComboBox combo;
    CreateCombo(combo);
    const struct {
        LPCWSTR history;
        std::vector<CString> items;
        int selected;
    } cases[] = {
        {L"b|a;b;c", {L"a", L"b", L"c"}, 1},
        {L"b|a;;b;", {L"a", L"b"}, 1},
        {L"A|ab;abc", {L"ab", L"abc"}, 1}, // case-insensitive prefix, the first item last
        {L"ab|ab;x", {L"ab", L"x"}, 0},
        {L"none|a;b", {L"a", L"b"}, -1},
        {L"x|a|b;x", {L"a|b", L"x"}, 1},
        {L"|;;;", {}, -1},
        {L"|", {}, -1},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(combo.LoadHistory(c.history)) << c.history;
        EXPECT_EQ(Items(combo), c.items) << c.history;
        EXPECT_EQ(combo.GetCurSel(), c.selected) << c.history;
    }
    combo.LoadHistory(L"b|a;b");
    EXPECT_FALSE(combo.LoadHistory(L"a;b;c"));
    EXPECT_FALSE(combo.LoadHistory(CString()));
    EXPECT_EQ(Items(combo), (std::vector<CString>{L"a", L"b"}));
    EXPECT_EQ(combo.GetCurSel(), 1);
}

TEST_F(ThemedComboBox, HistoryIsSaved)
{
    VComboBox combo;
    CreateCombo(combo);
    EXPECT_EQ(combo.SaveHistory(), L"|");
    combo.SetWindowText(L"typed;");
    EXPECT_EQ(combo.SaveHistory(), L"typed;|");
    combo.AddString(L"a");
    combo.AddString(nullptr);
    combo.AddString(L"b");
    combo.AddString(L"");
    EXPECT_EQ(combo.SaveHistory(), L"typed;|a;;b");
    combo.SetCurSel(2);
    EXPECT_EQ(combo.SaveHistory(), L"b|a;;b");
    combo.SetCurSel(1);
    combo.SetWindowText(L"typed");
    EXPECT_EQ(combo.SaveHistory(), L"typed|a;;b");
}

TEST_F(ThemedComboBox, SetWindowTextExSelectsOrAdds)
{
    VComboBox combo;
    CreateCombo(combo);
    const struct {
        LPCWSTR text;
        bool selectFirst;
        int result;
        int count;
    } cases[] = {{nullptr, true, -1, 0}, {L"", false, -1, 0}, {L"abc", false, 0, 1},   {L"ab", true, 1, 2},
                 {L"ABC", true, 0, 2},   {L"", false, -1, 2}, {nullptr, false, -1, 2}, {nullptr, true, 0, 2}};
    for (const auto& c : cases) {
        EXPECT_EQ(combo.SetWindowTextEx(c.text, c.selectFirst), c.result);
        EXPECT_EQ(combo.GetCount(), c.count);
    }
    EXPECT_EQ(WindowText(combo.m_hWnd), L"abc");
}

TEST_F(ThemedComboBox, FaceIsDrawnAndTurnsUnderTheMouse)
{
    for (const DWORD style : {DWORD{CBS_DROPDOWN}, DWORD{CBS_DROPDOWNLIST}}) {
        OpenComboBox combo;
        CreateCombo(combo, style);
        ExpectComboFace(combo, false, VGM.Combo.clrGlyph);
        const CPoint button = ClientToScreen(combo.m_hWnd, combo.m_rcFace.CenterPoint());
        MoveTo(button);
        EXPECT_EQ(combo.m_bHover, 1);
        ExpectComboFace(combo, true, VGM.Combo.clrGlyph);
        MoveTo(ClientToScreen(combo.m_hWnd, {combo.m_rcFace.left - 1, combo.m_rcFace.top + 3}));
        EXPECT_EQ(combo.m_bHover, 0);
        ExpectComboFace(combo, false, VGM.Combo.clrGlyph);
        MoveTo(button);
        MoveAside();
        EXPECT_TRUE(PumpUntil([&] { return combo.m_bHover == 0; }));
        combo.EnableWindow(FALSE);
        ExpectDisabledFrame(combo, ::GetSysColor(COLOR_BTNFACE));
        EXPECT_EQ(ClientPixel(combo.m_hWnd, combo.m_rcFace.TopLeft()), ::GetSysColor(COLOR_BTNFACE));
    }
}

TEST_F(ThemedComboBox, DropsDownByMouseAndKeys)
{
    OpenComboBox combo;
    CreateCombo(combo, CBS_DROPDOWNLIST);
    combo.AddString(L"a");
    combo.AddString(L"b");
    combo.SetFocus();
    PumpMessages();
    Click(ClientToScreen(combo.m_hWnd, combo.m_rcFace.CenterPoint()));
    EXPECT_TRUE(combo.GetDroppedState());
    Key(VK_DOWN);
    Key(VK_DOWN);
    Key(VK_RETURN);
    EXPECT_FALSE(combo.GetDroppedState());
    EXPECT_EQ(combo.GetCurSel(), 1);
    MoveAside();
    EXPECT_TRUE(PumpUntil([&] { return combo.m_bHover == 0; }));
    ExpectComboFace(combo, false, VGM.Combo.clrGlyph);
}

TEST_F(ThemedComboBox, KeepsATipOfItsOwn)
{
    OpenComboBox combo;
    CreateCombo(combo);
    combo.ActivateTooltip(TRUE); // none yet
    combo.InitToolTip();
    EXPECT_EQ(combo.m_toolTip.GetMaxTipWidth(), 400);
    combo.SetTooltipText(L"first", TRUE);
    combo.SetTooltipText(L"second", TRUE);
    combo.SetTooltipText(0x7FFF, TRUE); // no such string
    EXPECT_EQ(combo.m_toolTip.GetToolCount(), 1);
    EXPECT_EQ(TipText(combo.m_toolTip, &combo), L"second");
    combo.SetTooltipText(kTestString, TRUE);
    EXPECT_EQ(TipText(combo.m_toolTip, &combo), L"tip from a resource");
    MoveTo(ClientToScreen(combo.m_hWnd, combo.m_rcFace.CenterPoint()));
    EXPECT_TRUE(PumpUntil([&] { return combo.m_toolTip.IsWindowVisible() != FALSE; }));
    combo.ActivateTooltip(FALSE);
    EXPECT_FALSE(combo.m_toolTip.IsWindowVisible());

    const HWND tip = combo.m_toolTip.m_hWnd;
    combo.DestroyWindow();
    EXPECT_FALSE(::IsWindow(tip));
    combo.InitToolTip();
    combo.SetTooltipText(L"nowhere", TRUE);
    EXPECT_EQ(combo.m_toolTip.m_hWnd, nullptr);
    EXPECT_FALSE(combo.PreTranslateMessage(nullptr));
}
