#include "vgui/controls/button_exchange.h"

#include "tests/controls/button_fixture.h"

#include <array>
#include <climits>
#include <memory>

using namespace support;

namespace
{

constexpr UINT kFirst = 601;
constexpr int kRadios = 4;

// A host with two groups: library, standard, (a push button,) library, standard; then one library radio
// button, and a check box of each kind.
class ButtonExchange : public HostTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.Open({300, 250}, WS_POPUP));
        Add(nullptr, BS_GROUPBOX | WS_GROUP, 600);
        Add(&library[0], BS_AUTORADIOBUTTON | WS_GROUP, kFirst);
        Add(nullptr, BS_AUTORADIOBUTTON, kFirst + 1);
        Add(nullptr, BS_PUSHBUTTON, 699);
        Add(&library[1], BS_AUTORADIOBUTTON, kFirst + 2);
        Add(nullptr, BS_AUTORADIOBUTTON, kFirst + 3);
        Add(&library[2], BS_AUTORADIOBUTTON | WS_GROUP, 650);
        Add(&box, BS_AUTOCHECKBOX | WS_GROUP, 651);
        Add(nullptr, BS_AUTO3STATE, 652);
    }
    void Add(CButton* button, DWORD type, UINT id)
    {
        const CRect place(10, 10 + 25 * added, 200, 32 + 25 * added);
        ++added;
        const HWND window = MakeStandard(host, type, id, L"x", place);
        if (button != nullptr) {
            ASSERT_TRUE(button->SubclassWindow(window));
        }
    }

    [[nodiscard]] int Save(UINT first = kFirst)
    {
        CDataExchange exchange(&host, TRUE);
        int value = 77;
        VGDDX_Radio(&exchange, static_cast<int>(first), value);
        return value;
    }
    void Load(int value)
    {
        CDataExchange exchange(&host, FALSE);
        VGDDX_Radio(&exchange, kFirst, value);
    }
    // What is checked, straight from the windows, one character for each radio button.
    [[nodiscard]] std::string Checked() const
    {
        std::string marks;
        for (UINT id = kFirst; id < kFirst + kRadios; ++id)
            marks += ::SendMessage(Item(id), BM_GETCHECK, 0, 0) == BST_CHECKED ? 'x' : '.';
        return marks;
    }
    [[nodiscard]] HWND Item(UINT id) const { return ::GetDlgItem(host.m_hWnd, static_cast<int>(id)); }

    std::array<VRadioBtn, 3> library;
    VCheckBox box;
    int added = 0;
};

} // namespace

TEST_F(ButtonExchange, MixedGroupIsLoadedAndSaved)
{
    library[2].SetCheck(1, TRUE);
    EXPECT_EQ(Save(), -1);
    for (const auto& [value, marks] :
         {std::pair{0, "x..."}, {1, ".x.."}, {2, "..x."}, {3, "...x"}, {-1, "...."}, {4, "...."}}) {
        Load(value);
        EXPECT_EQ(Checked(), marks);
        EXPECT_EQ(Save(), value < kRadios ? value : -1);
    }
    EXPECT_EQ(Save(650), 0); // the next group was left alone
    // The standard exchange sees the same.
    library[1].SetCheck(1, TRUE);
    CDataExchange exchange(&host, TRUE);
    int value = 0;
    DDX_Radio(&exchange, kFirst, value);
    EXPECT_EQ(value, 2);
}

TEST_F(ButtonExchange, ClicksUncheckAcrossTheKinds)
{
    library[2].SetCheck(1, TRUE);
    constexpr std::array clicks{std::pair{0, "x..."}, std::pair{2, "..x."}, std::pair{1, ".x.."},
                                std::pair{0, "x..."}, std::pair{3, "...x"}, std::pair{2, "..x."}};
    for (const auto& [index, marks] : clicks) {
        Click(Item(kFirst + index));
        EXPECT_EQ(Checked(), marks) << index;
    }
    // Once more on the checked one: nothing changes, the parent is told again.
    host.Clear();
    Click(Item(kFirst + 2));
    EXPECT_EQ(Checked(), "..x.");
    EXPECT_EQ(host.CommandCodes(kFirst + 2), std::vector<int>{BN_CLICKED});
    EXPECT_EQ(library[2].GetCheck(), 1);
}

// A host that checks standard buttons itself tells none of the others.
TEST_F(ButtonExchange, AStandardButtonThatIsCheckedWhenItTellsUnchecksTheOthers)
{
    Load(2);
    ::SendMessage(Item(kFirst + 3), BM_SETCHECK, BST_CHECKED, 0);
    EXPECT_EQ(Checked(), "..xx");
    for (const UINT teller : {699U, kFirst + 1, kFirst + 3}) {
        EXPECT_EQ(Checked(), "..xx") << teller;
        host.SendMessage(WM_COMMAND, MAKEWPARAM(teller, BN_CLICKED), reinterpret_cast<LPARAM>(Item(teller)));
    }
    EXPECT_EQ(Checked(), "...x");
}

// Guard pages show whether the freed object is used.
TEST_F(ButtonExchange, SiblingMayFreeTheOneThatUnchecksIt)
{
    class Sibling : public VRadioBtn
    {
    public:
        explicit Sibling(std::unique_ptr<VRadioBtn>& other) : m_other(other) {}
        DWORD SetCheck(int nCheck, BOOL bRepaint) override
        {
            m_other.reset();
            return VRadioBtn::SetCheck(nCheck, bRepaint);
        }

    private:
        std::unique_ptr<VRadioBtn>& m_other;
    };
    auto clicked = std::make_unique<VRadioBtn>();
    Sibling sibling(clicked);
    Add(clicked.get(), BS_AUTORADIOBUTTON | WS_GROUP, 660);
    Add(&sibling, BS_AUTORADIOBUTTON, 661);
    Click(Item(660));
    EXPECT_EQ(clicked, nullptr);
    EXPECT_EQ(Item(660), nullptr);
}

TEST_F(ButtonExchange, CheckingWithoutRepaintingLeavesTheOthers)
{
    Load(3);
    library[0].SetCheck(1, FALSE);
    EXPECT_EQ(Checked(), "x..x");
    // It was not a change any more.
    library[0].SetCheck(1, TRUE);
    EXPECT_EQ(Checked(), "x..x");
    library[1].SetCheck(1, TRUE);
    EXPECT_EQ(Checked(), "..x.");
    library[1].SetCheck(0, TRUE);
    EXPECT_EQ(Checked(), "....");
}

TEST_F(ButtonExchange, SharedIdsDoNotMixGroupsUp)
{
    Load(1);
    ::SetWindowLongPtr(library[2].m_hWnd, GWLP_ID, kFirst);
    library[2].SetCheck(1, TRUE);
    EXPECT_EQ(Checked(), ".x..");
    EXPECT_EQ(library[2].GetCheck(), 1);
}

TEST_F(ButtonExchange, CreatedRadioButtonBelongsToItsGroup)
{
    VRadioBtn created;
    created.SetCheck(1, TRUE);
    ASSERT_TRUE(created.Create(L"x", WS_CHILD | WS_VISIBLE | BS_AUTORADIOBUTTON | WS_GROUP,
                               CRect(210, 10, 290, 32), &host, 660));
    EXPECT_EQ(Save(660), 0);
    created.SetCheck(0, TRUE);
    Add(nullptr, BS_AUTORADIOBUTTON, 661);
    Click(Item(660));
    EXPECT_EQ(created.GetCheck(), 1);
    Click(Item(661));
    EXPECT_EQ(created.GetCheck(), 0);
    Click(Item(660));
    EXPECT_EQ(::SendMessage(Item(661), BM_GETCHECK, 0, 0), BST_UNCHECKED);
}

TEST_F(ButtonExchange, GroupWithoutAMarkedBeginningIsAGroup)
{
    // Whether the group begins with another control or with the first child of all.
    for (const bool withGroupBox : {true, false}) {
        ::SetWindowLongPtr(Item(kFirst), GWL_STYLE,
                           ::GetWindowLongPtr(Item(kFirst), GWL_STYLE) & ~static_cast<LONG_PTR>(WS_GROUP));
        if (!withGroupBox)
            ::DestroyWindow(Item(600));
        for (const UINT index : {2, 0}) {
            Click(Item(kFirst + index));
            EXPECT_EQ(Checked(), index == 0 ? "x..." : "..x.") << withGroupBox;
        }
    }
}

TEST_F(ButtonExchange, CheckBoxesOfBothKinds)
{
    struct Row {
        UINT id;
        int set, got;
    };
    for (const Row& row : {Row{651, 1, 1}, {651, 0, 0}, {651, 2, 1}, {652, 2, 2}, {652, 0, 0}}) {
        int value = row.set;
        CDataExchange load(&host, FALSE);
        VGDDX_Check(&load, static_cast<int>(row.id), value);
        CDataExchange save(&host, TRUE);
        VGDDX_Check(&save, static_cast<int>(row.id), value);
        EXPECT_EQ(value, row.got) << row.id << ' ' << row.set;
    }
}

TEST_F(ButtonExchange, FindsAndSetsByIdRange)
{
    EXPECT_EQ(VGGetCRB(&host, 0, UINT_MAX), 0);
    Load(1);
    EXPECT_EQ(VGGetCRB(&host, 0, UINT_MAX), 0); // a standard one
    VGCheckRB(&host, kFirst, kFirst + 3, kFirst + 2);
    EXPECT_EQ(Checked(), "..x.");
    EXPECT_EQ(VGGetCRB(&host, kFirst, kFirst + 3), static_cast<int>(kFirst + 2));
    library[2].SetCheck(1, TRUE);
    EXPECT_EQ(VGGetCRB(&host, 0, UINT_MAX), static_cast<int>(kFirst + 2));
    EXPECT_EQ(VGGetCRB(&host, kFirst + 3, 650), 650);
    EXPECT_EQ(VGGetCRB(&host, 650, kFirst), 0);

    VGCheckRB(&host, kFirst, kFirst + 1, kFirst + 2);
    VGCheckRB(&host, kFirst, kFirst + 3, kFirst + 3); // a standard one
    VGCheckRB(&host, 0, UINT_MAX, 12345);
    EXPECT_EQ(Checked(), "..x.");
    VGCheckRB(nullptr, 0, 9, 5);
    EXPECT_EQ(VGGetCRB(nullptr, 0, 9), 0);
}
