#include "tests/composite/combo_tree_fixture.h"
#include "tests/support/dialog_template.h"

using namespace support;

namespace
{

// What a key does.
enum class Deed { None, Opens, Takes, Cancels };

struct KeyCase {
    UINT message;
    WPARAM key;
    Deed deed;
};

// A dialog that counts how often it is ended, and told of a new text.
class EndingDlg : public CDialog
{
public:
    int ended = 0;
    int textChanges = 0;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        textChanges += wParam == MAKEWPARAM(kComboId, CBN_EDITCHANGE);
        return CDialog::OnCommand(wParam, lParam);
    }
    void OnOK() override { ++ended; }
    void OnCancel() override { ++ended; }
};

class ComboTreeKeys : public ComboTreeTest
{
protected:
    BOOL Translate(UINT message, WPARAM key, HWND window = nullptr)
    {
        MSG msg{window != nullptr ? window : combo.GetEdit().m_hWnd, message, key, 0, 0, {}};
        return combo.PreTranslateMessage(&msg);
    }
};

// The keys in a dialog, with a field before and after the combo box.
class ComboTreeKeysDialog : public ComboTreeKeys
{
protected:
    static constexpr UINT kBefore = 10;
    static constexpr UINT kAfter = 11;
    static constexpr UINT kLast = 12;

    void SetUp() override
    {
        DialogTemplate t(L"dialog", 160, 80);
        t.Edit(kBefore, 5, 5, 60, 12);
        t.Item(L"COMBOBOX", L"", kComboId, 5, 20, 80, 70, CBS_DROPDOWN | WS_TABSTOP);
        t.Edit(kAfter, 5, 40, 60, 12);
        t.Edit(kLast, 5, 55, 60, 12);
        ASSERT_TRUE(dialog.CreateIndirect(t.Get()));
        ASSERT_TRUE(combo.SubclassDlgItem(kComboId, &dialog));
        dialog.ShowWindow(SW_SHOW);
        dialog.SetForegroundWindow();
        Add({L"a", L"b"});
        PumpMessages();
    }
    void TearDown() override { dialog.DestroyWindow(); }
    [[nodiscard]] HWND Field(UINT id) const { return dialog.GetDlgItem(static_cast<int>(id))->m_hWnd; }

    EndingDlg dialog;
};

} // namespace

TEST_F(ComboTreeKeys, ClosedTable)
{
    Open();
    Add({L"a"});
    for (const KeyCase& pressed :
         {KeyCase{WM_SYSKEYDOWN, VK_DOWN, Deed::Opens}, KeyCase{WM_KEYDOWN, VK_F4, Deed::Opens},
          KeyCase{WM_KEYDOWN, VK_DOWN, Deed::None}, KeyCase{WM_SYSKEYDOWN, VK_UP, Deed::None},
          KeyCase{WM_KEYUP, VK_F4, Deed::None}, KeyCase{WM_SYSKEYDOWN, VK_F4, Deed::None},
          KeyCase{WM_KEYDOWN, VK_RETURN, Deed::None}, KeyCase{WM_KEYDOWN, VK_ESCAPE, Deed::None},
          KeyCase{WM_KEYUP, VK_TAB, Deed::None}, KeyCase{WM_CHAR, 'x', Deed::None}}) {
        EXPECT_EQ(combo.OnKeyDropdownInactive(pressed.message, pressed.key), pressed.deed != Deed::None)
            << pressed.message << " " << pressed.key;
        EXPECT_EQ(IsDown(), pressed.deed == Deed::Opens);
        EXPECT_EQ(Told(), IsDown() ? (Codes{CBN_SETFOCUS, CBN_DROPDOWN}) : Codes{});
        combo.HideTree();
        ::SetFocus(host.m_hWnd);
        host.Clear();
    }
}

TEST_F(ComboTreeKeys, OpenTable)
{
    Open();
    Add({L"f/a", L"b"});
    std::vector<KeyCase> cases{
        {WM_SYSKEYDOWN, VK_UP, Deed::Takes},    {WM_SYSKEYDOWN, VK_DOWN, Deed::None},
        {WM_SYSKEYDOWN, VK_RETURN, Deed::None}, {WM_SYSKEYDOWN, VK_ESCAPE, Deed::None},
        {WM_SYSKEYDOWN, VK_F4, Deed::None},     {WM_KEYDOWN, VK_F4, Deed::Takes},
        {WM_KEYUP, VK_F4, Deed::None},          {WM_KEYDOWN, VK_TAB, Deed::Takes},
        {WM_KEYUP, VK_TAB, Deed::None},         {WM_KEYDOWN, VK_DOWN, Deed::None},
        {WM_KEYDOWN, VK_SPACE, Deed::None},
    };
    // Enter and Escape count in every other form.
    for (const UINT message : {UINT{WM_KEYDOWN}, UINT{WM_KEYUP}, UINT{WM_CHAR}, UINT{WM_DEADCHAR},
                               UINT{WM_SYSKEYUP}, UINT{WM_SYSCHAR}, 0x109u}) {
        cases.push_back({message, VK_RETURN, Deed::Takes});
        cases.push_back({message, VK_ESCAPE, Deed::Cancels});
    }
    for (const KeyCase& pressed : cases) {
        tree.SelectItem(Find(L"f/a"));
        Drop();
        tree.SelectItem(Find(L"b"));
        combo.SetWindowText(L"typed");
        EXPECT_EQ(combo.OnKeyDropdownActive(pressed.message, pressed.key), pressed.deed != Deed::None)
            << pressed.message << " " << pressed.key;
        EXPECT_EQ(IsDown(), pressed.deed == Deed::None);
        EXPECT_EQ(combo.GetWindowText(), pressed.deed == Deed::Takes ? L"b" : L"typed");
        EXPECT_EQ(combo.GetCurSel(), Find(pressed.deed == Deed::Cancels ? L"f/a" : L"b"));
        const Codes told = Told();
        EXPECT_EQ(told.empty() ? 0 : told.front(), pressed.deed == Deed::Takes     ? CBN_SELENDOK
                                                   : pressed.deed == Deed::Cancels ? CBN_SELENDCANCEL
                                                                                   : 0);
        combo.HideTree();
    }
}

TEST_F(ComboTreeKeys, RoutesKeysOfItsOwnWindowsOnly)
{
    Open();
    Add({L"a", L"b"});
    EXPECT_FALSE(Translate(WM_KEYDOWN, VK_F4, combo.m_hWnd)); // acted on, and still dispatched
    EXPECT_TRUE(IsDown());
    tree.SelectItem(Find(L"a"));
    MessageSpy spy(tree.m_hWnd);
    EXPECT_FALSE(Translate(WM_KEYDOWN, VK_DOWN));
    EXPECT_EQ(spy.Count(WM_KEYDOWN), 1);
    EXPECT_EQ(combo.GetCurSel(), Find(L"b"));
    EXPECT_FALSE(Translate(WM_KEYDOWN, VK_UP, host.m_hWnd));
    EXPECT_FALSE(Translate(WM_MOUSEMOVE, VK_UP));
    EXPECT_FALSE(Translate(0x10A, VK_RETURN));
    EXPECT_EQ(combo.GetCurSel(), Find(L"b"));
    EXPECT_TRUE(IsDown());
    EXPECT_FALSE(Translate(WM_SYSKEYDOWN, VK_UP));
    EXPECT_FALSE(IsDown());
    spy.Clear();
    Translate(WM_KEYDOWN, VK_DOWN);
    EXPECT_EQ(spy.Count(WM_KEYDOWN), 0);
}

TEST_F(ComboTreeKeys, RealKeysMoveInTheTreeWhileTheEditHasTheFocus)
{
    Open(true);
    Add({L"a", L"b", L"f/g"});
    Click(combo.GetEdit().m_hWnd);
    Key(VK_DOWN, {VK_MENU});
    ASSERT_TRUE(IsDown());
    EXPECT_EQ(Told(), (Codes{CBN_SETFOCUS, CBN_DROPDOWN}));
    tree.SelectItem(Find(L"a"));
    struct Move {
        UINT key;
        LPCWSTR to;
    };
    for (const Move& move : {Move{VK_DOWN, L"b"}, Move{VK_END, L"f/g"}, Move{VK_LEFT, L"f"},
                             Move{VK_HOME, L"a"}, Move{VK_NEXT, L"f/g"}, Move{VK_PRIOR, L"a"}}) {
        Key(move.key);
        EXPECT_EQ(combo.GetCurrentTreePath(), move.to);
        EXPECT_EQ(Told(), (Codes{CBN_SELCHANGE}));
        EXPECT_EQ(::GetFocus(), combo.GetEdit().m_hWnd);
    }
    Key(VK_UP); // nowhere to go
    EXPECT_EQ(Told(), Codes{});
    Key(VK_SPACE);
    EXPECT_EQ(tree.GetCheckState(Find(L"a")), ComboTreeChecked);
    EXPECT_EQ(Told().front(), static_cast<int>(CBN_CHECKCHANGE));
    Type(L"b"); // the tree looks for a label that begins so
    EXPECT_EQ(combo.GetCurrentTreePath(), L"b");
    EXPECT_EQ(Told(), (Codes{CBN_SELCHANGE, CBN_EDITCHANGE}));
    tree.SelectItem(Find(L"a"));
    combo.SetWindowText(L"");
    Key(VK_F4);
    EXPECT_FALSE(IsDown());
    EXPECT_EQ(Told(), (Codes{CBN_SELENDOK}));
    Key(VK_DOWN, {VK_MENU});
    Key(VK_UP, {VK_MENU});
    EXPECT_FALSE(IsDown());
    EXPECT_EQ(combo.GetWindowText(), L"a");
}

TEST_F(ComboTreeKeysDialog, TabMovesOnce)
{
    ::SetFocus(Field(kBefore));
    Key(VK_TAB);
    EXPECT_EQ(::GetFocus(), combo.GetEdit().m_hWnd);
    Key(VK_TAB);
    EXPECT_EQ(::GetFocus(), Field(kAfter));
    Key(VK_TAB, {VK_SHIFT});
    EXPECT_EQ(::GetFocus(), combo.GetEdit().m_hWnd);
    Key(VK_TAB, {VK_SHIFT});
    EXPECT_EQ(::GetFocus(), Field(kBefore));

    for (const bool back : {false, true}) {
        combo.ShowTree();
        tree.SelectItem(Find(L"b"));
        Key(VK_TAB, back ? std::vector<UINT>{VK_SHIFT} : std::vector<UINT>{});
        EXPECT_FALSE(IsDown());
        EXPECT_EQ(combo.GetWindowText(), L"b");
        EXPECT_EQ(::GetFocus(), Field(back ? kBefore : kAfter));
    }
    // Nor is the button a trap.
    combo.GetDropDownButton().SetFocus();
    Key(VK_TAB);
    EXPECT_EQ(::GetFocus(), Field(kAfter));
    EXPECT_EQ(dialog.textChanges, 0);
    combo.ShowTree();
    Key(VK_F4); // has no character that could be taken for the next one
    Type(L"x");
    EXPECT_EQ(dialog.textChanges, 1);
}

TEST_F(ComboTreeKeysDialog, EscapeAndEnterCloseTheTreeFirst)
{
    for (const UINT key : {UINT{VK_ESCAPE}, UINT{VK_RETURN}}) {
        dialog.ended = 0;
        combo.ShowTree();
        Key(key);
        EXPECT_FALSE(IsDown());
        EXPECT_EQ(dialog.ended, 0);
        EXPECT_EQ(dialog.textChanges, 0);
        Key(key);
        EXPECT_EQ(dialog.ended, 1);
    }
}
