#include "tests/controls/themed_fixture.h"

#include <random>
#include <vector>

using namespace support;
using namespace themed;

namespace
{

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

CString TextOf(const CWnd& window)
{
    CString text;
    window.GetWindowText(text);
    return text;
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

TEST_F(ThemedComboBox, HistorySurvivesARoundTrip)
{
    VComboBox combo;
    CreateCombo(combo, CBS_DROPDOWNLIST);
    std::mt19937 random(20240517);
    const auto upTo = [&](int limit) { return std::uniform_int_distribution<int>(0, limit)(random); };
    for (int round = 0; round < 60; ++round) {
        combo.ResetContent();
        std::vector<CString> items(upTo(12));
        for (size_t i = 0; i < items.size(); ++i) {
            items[i].Format(L"%c%d", wchar_t(L'甲' + upTo(40)), static_cast<int>(i) + 10); // no one's prefix
            for (int extra = upTo(30); extra > 0; --extra)
                items[i] += L"a |%&\t"[upTo(5)];
            combo.AddString(items[i]);
        }
        const int selected = items.empty() ? -1 : upTo(static_cast<int>(items.size()) - 1);
        combo.SetCurSel(selected);
        CString history = combo.SaveHistory();
        CString current;
        if (selected >= 0)
            combo.GetLBText(selected, current);
        const bool textIsWhole = current.Find(L'|') < 0;
        combo.ResetContent();
        if (!textIsWhole)
            continue; // such a text ends at its own bar
        ASSERT_TRUE(combo.LoadHistory(history));
        ASSERT_EQ(Items(combo), items) << history.GetString();
        ASSERT_EQ(combo.GetCurSel(), selected) << history.GetString();
        ASSERT_EQ(combo.SaveHistory(), history);
    }
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
    EXPECT_EQ(TextOf(combo), L"abc");
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
        MoveTo(ClientToScreen(host.m_hWnd, {5, 5}));
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
    MoveTo(ClientToScreen(host.m_hWnd, {5, 5}));
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
    CString text;
    combo.m_toolTip.GetText(text, &combo);
    EXPECT_EQ(text, L"second");
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
