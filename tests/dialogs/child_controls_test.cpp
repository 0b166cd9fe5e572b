#include "tests/dialogs/gui_dlg_fixture.h"
#include "tests/support/pixels.h"
#include "vgui/controls/button_exchange.h"
#include "vgui/controls/buttons.h"

#include <string>

using namespace support;

namespace
{

constexpr UINT kPush = 1101;
constexpr UINT kBox = 1102;
constexpr UINT kThreeState = 1103;
constexpr UINT kRadio = 1104; // and the two ids after it
constexpr UINT kHeld = 1107;

class ButtonDlg : public TestDlg
{
public:
    CButton held; // attached before the dialog looks at its children
    std::vector<UINT> commands;

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        TestDlg::DoDataExchange(pDX);
        DDX_Control(pDX, kHeld, held);
        CheckDlgButton(kBox, BST_CHECKED);
        CheckDlgButton(kRadio + 1, BST_CHECKED);
    }
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        if (HIWORD(wParam) == BN_CLICKED)
            commands.push_back(LOWORD(wParam));
        return TestDlg::OnCommand(wParam, lParam);
    }
    void OnOK() override {}
};

DialogTemplate ButtonTemplate()
{
    DialogTemplate t(L"Buttons", 200, 160, kCaptionStyle);
    t.Button(IDOK, L"OK", 10, 10, 50, 14, BS_DEFPUSHBUTTON | WS_TABSTOP);
    t.Button(kPush, L"&Push", 70, 10, 50, 14);
    t.Button(kBox, L"&Box", 10, 30, 60, 12, BS_AUTOCHECKBOX | WS_TABSTOP);
    t.Button(kThreeState, L"Three", 80, 30, 60, 12, BS_AUTO3STATE | WS_TABSTOP);
    t.Button(kRadio, L"&One", 10, 50, 60, 12, BS_AUTORADIOBUTTON | WS_TABSTOP | WS_GROUP);
    t.Button(kRadio + 1, L"&Two", 10, 65, 60, 12, BS_AUTORADIOBUTTON | WS_TABSTOP);
    t.Button(kRadio + 2, L"T&hree", 10, 80, 60, 12, BS_AUTORADIOBUTTON);
    t.Button(kHeld, L"Held", 10, 95, 60, 12, BS_AUTORADIOBUTTON);
    t.Edit(kEditId, 10, 115, 60, 12, WS_TABSTOP | WS_GROUP | WS_BORDER);
    return t;
}

class ChildControls : public GuiDlgTest
{
protected:
    void SetUp() override { Open(dlg, ButtonTemplate()); }

    [[nodiscard]] HWND Item(UINT id) const { return ::GetDlgItem(dlg.m_hWnd, static_cast<int>(id)); }
    template <class Control>
    [[nodiscard]] Control* Library(UINT id) const
    {
        return DYNAMIC_DOWNCAST(Control, CWnd::FromHandlePermanent(Item(id)));
    }
    void Focus(UINT id)
    {
        dlg.GotoDlgCtrl(dlg.GetDlgItem(static_cast<int>(id)));
        PumpMessages();
    }
    [[nodiscard]] UINT Focused() const { return static_cast<UINT>(::GetDlgCtrlID(::GetFocus())); }
    // What is checked of the radio buttons, one character each, asked as stock code would.
    [[nodiscard]] std::string Radios() const
    {
        std::string marks;
        for (const UINT id : {kRadio, kRadio + 1, kRadio + 2, kHeld})
            marks += ::SendMessage(Item(id), BM_GETCHECK, 0, 0) == BST_CHECKED ? 'x' : '.';
        return marks;
    }
    [[nodiscard]] std::vector<UINT> TakeCommands() { return std::exchange(dlg.commands, {}); }

    ButtonDlg dlg;
};

} // namespace

TEST_F(ChildControls, StandardButtonsAreReplacedByTheTable)
{
    EXPECT_NE(Library<VButton>(IDOK), nullptr);
    EXPECT_NE(Library<VButton>(kPush), nullptr);
    EXPECT_NE(Library<VCheckBox>(kBox), nullptr);
    EXPECT_NE(Library<VRadioBtn>(kRadio), nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(Item(kThreeState)), nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(Item(kHeld)), &dlg.held);
    EXPECT_EQ(::GetWindowLongPtr(Item(kThreeState), GWL_STYLE) & 31, BS_AUTO3STATE);

    EXPECT_TRUE(Library<VButton>(IDOK)->GetDefault());
    EXPECT_FALSE(Library<VButton>(kPush)->GetDefault());
    // State, text, font and window class stay.
    EXPECT_EQ(dlg.IsDlgButtonChecked(kBox), BST_CHECKED);
    EXPECT_EQ(Radios(), ".x..");
    wchar_t name[16]{};
    ::GetClassName(Item(kRadio), name, 16);
    EXPECT_STREQ(name, L"Button");
    CString text;
    dlg.GetDlgItemText(kBox, text);
    EXPECT_EQ(text, L"&Box");
    EXPECT_EQ(::SendMessage(Item(kBox), WM_GETFONT, 0, 0), ::SendMessage(Item(kEditId), WM_GETFONT, 0, 0));
}

TEST_F(ChildControls, DialogAndStockCodeAgreeAboutTheState)
{
    EXPECT_NE(dlg.CheckDlgButton(kBox, BST_UNCHECKED), 0);
    EXPECT_EQ(::IsDlgButtonChecked(dlg.m_hWnd, kBox), UINT{BST_UNCHECKED});
    ::CheckDlgButton(dlg.m_hWnd, kBox, BST_INDETERMINATE);
    EXPECT_EQ(dlg.IsDlgButtonChecked(kBox), 1);

    dlg.CheckDlgButton(kRadio, BST_CHECKED);
    EXPECT_EQ(Radios(), "x...");
    ::CheckRadioButton(dlg.m_hWnd, kRadio, kRadio + 2, kRadio + 2);
    EXPECT_EQ(Radios(), "..x.");
    EXPECT_EQ(VGGetCRB(&dlg, kRadio, kHeld), static_cast<int>(kRadio + 2));
}

TEST_F(ChildControls, TabStopsAtPushButtonsBoxesAndTheCheckedRadioButton)
{
    Focus(IDOK);
    for (const UINT next : {kPush, kBox, kThreeState}) {
        Key(VK_TAB);
        EXPECT_EQ(Focused(), next);
    }
    Click(Item(kRadio + 2));
    EXPECT_EQ(Radios(), "..x.");
    Focus(kThreeState);
    ::SetWindowLongPtr(Item(kRadio), GWL_STYLE, ::GetWindowLongPtr(Item(kRadio), GWL_STYLE) & ~WS_TABSTOP);
    Key(VK_TAB);
    EXPECT_EQ(Focused(), kRadio + 2);
    Key(VK_TAB);
    EXPECT_EQ(Focused(), kEditId);
    Key(VK_TAB, {VK_SHIFT});
    EXPECT_EQ(Focused(), kRadio + 2);
}

TEST_F(ChildControls, EnterPressesTheFocusedPushButtonElseTheDefault)
{
    Focus(kPush);
    EXPECT_TRUE(Library<VButton>(kPush)->GetDefault());
    EXPECT_FALSE(Library<VButton>(IDOK)->GetDefault());
    Key(VK_RETURN);
    EXPECT_EQ(TakeCommands(), std::vector<UINT>{kPush});
    // Boxes, radio buttons and edits are no push buttons: Enter stays the default button's.
    for (const UINT id : {kEditId, kBox, kRadio + 1}) {
        Focus(id);
        EXPECT_TRUE(Library<VButton>(IDOK)->GetDefault()) << id;
        (void)TakeCommands();
        Key(VK_RETURN);
        EXPECT_EQ(TakeCommands(), std::vector<UINT>{IDOK}) << id;
    }
    EXPECT_EQ(dlg.IsDlgButtonChecked(kBox), 1);

    dlg.SetDefID(kPush);
    EXPECT_TRUE(Library<VButton>(kPush)->GetDefault());
    EXPECT_FALSE(Library<VButton>(IDOK)->GetDefault());
    EXPECT_EQ(dlg.GetDefID(), MAKELONG(kPush, DC_HASDEFID));
}

TEST_F(ChildControls, SpaceAndMnemonicsClick)
{
    Focus(kBox);
    Key(VK_SPACE);
    EXPECT_EQ(dlg.IsDlgButtonChecked(kBox), 0);
    EXPECT_EQ(TakeCommands(), std::vector<UINT>{kBox});
    Focus(IDOK);
    for (const auto& [key, id] : {std::pair{'B', kBox}, {'P', kPush}, {'H', kRadio + 2}}) {
        Key(static_cast<UINT>(key), {VK_MENU});
        EXPECT_EQ(TakeCommands(), std::vector<UINT>{id}) << char(key);
        EXPECT_EQ(Focused(), id);
    }
    EXPECT_EQ(dlg.IsDlgButtonChecked(kBox), 1);
    EXPECT_EQ(Radios(), "..x.");
}

TEST_F(ChildControls, ArrowKeysMoveTheCheckInAMixedGroup)
{
    Focus(kRadio + 1);
    (void)TakeCommands();
    struct Step {
        UINT key, focus;
        const char* marks;
    };
    for (const Step& step : {Step{VK_DOWN, kRadio + 2, "..x."},
                             {VK_RIGHT, kHeld, "...x"},
                             {VK_DOWN, kRadio, "x..."},
                             {VK_UP, kHeld, "...x"},
                             {VK_LEFT, kRadio + 2, "..x."},
                             {VK_UP, kRadio + 1, ".x.."}}) {
        Key(step.key);
        EXPECT_EQ(Focused(), step.focus);
        EXPECT_EQ(Radios(), step.marks);
        EXPECT_EQ(TakeCommands(), std::vector<UINT>{step.focus});
    }
    // Focus that comes another way checks nothing.
    ::SetFocus(Item(kRadio));
    EXPECT_EQ(Radios(), ".x..");
    EXPECT_TRUE(TakeCommands().empty());
}

TEST_F(ChildControls, TipsAndColoursAreTheDialogs)
{
    VButton& button = *Library<VButton>(kPush);
    button.SetTooltipText(L"tip", FALSE);
    EXPECT_EQ(TipText(dlg.GetToolTipCtrl(), &button), L"tip");
    EXPECT_EQ(dlg.GetToolTipCtrl().GetToolCount(), 2);
    // The caption takes the colour of controls with a tip, also while hovered.
    EXPECT_GT(CaptureClient(button.m_hWnd).Count(RGB(80, 80, 255)), 10);
    MoveTo(CenterOf(button.m_hWnd));
    EXPECT_GT(CaptureClient(button.m_hWnd).Count(RGB(80, 80, 255)), 10);
    // Outside the rounded frame and the box lies the dialog's colour.
    EXPECT_EQ(CaptureClient(button.m_hWnd).Pixel(0, 0), VGM.Dlg.clrBk);
    const DibSurface radio = CaptureClient(Item(kRadio));
    EXPECT_EQ(radio.Pixel(radio.Width() - 1, 0), VGM.Dlg.clrBk);
}
