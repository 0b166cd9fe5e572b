// The page of tree combo boxes: with and without check boxes, and what they tell their parent.
#include "gallery/pages.h"
#include "gallery/resource.h"

#include <array>

namespace
{

constexpr int kDroppedWidth = 200; // pixels
constexpr int kDroppedHeight = 160;
constexpr WCHAR kLongPath[] = L"标准件 Standard parts/垫圈 Washers, flat and sprung, of every size";

CString NameOf(UINT code)
{
    struct Name {
        UINT code;
        LPCWSTR text;
    };
    static constexpr std::array kNames{
        Name{CBN_SELCHANGE, L"CBN_SELCHANGE"},     Name{CBN_DBLCLK, L"CBN_DBLCLK"},
        Name{CBN_SETFOCUS, L"CBN_SETFOCUS"},       Name{CBN_KILLFOCUS, L"CBN_KILLFOCUS"},
        Name{CBN_EDITCHANGE, L"CBN_EDITCHANGE"},   Name{CBN_DROPDOWN, L"CBN_DROPDOWN"},
        Name{CBN_SELENDOK, L"CBN_SELENDOK"},       Name{CBN_SELENDCANCEL, L"CBN_SELENDCANCEL"},
        Name{CBN_CHECKCHANGE, L"CBN_CHECKCHANGE"},
    };
    for (const Name& name : kNames)
        if (name.code == code)
            return name.text;
    return {};
}

void Fill(ComboTree& combo)
{
    for (const LPCWSTR path :
         {L"标准件 Standard parts/螺栓 Bolts/M6 x 20", L"标准件 Standard parts/螺栓 Bolts/M8 x 30",
          L"标准件 Standard parts/螺母 Nuts/M6", kLongPath, L"型材 Profiles/槽钢 Channels",
          L"型材 Profiles/角钢 Angles", L"板材 Sheets"})
        combo.AddString(path);
    combo.ExpandBranch(combo.FindString(L"标准件 Standard parts", nullptr));
}

class ComboTreeDlg : public PageDlg
{
public:
    explicit ComboTreeDlg(const PageHost& host) : PageDlg(IDD_COMBO_TREES, &host.window)
    {
        m_bHelpBtn = false;
    }

    void Shoot(ShotWriter& shots)
    {
        m_checks.SetCheck(m_checks.FindString(L"标准件 Standard parts/螺栓 Bolts/M8 x 30", nullptr), TRUE);
        m_checks.SetCheck(m_checks.FindString(L"型材 Profiles", nullptr), TRUE);
        ShootDropped(shots, m_checks, L"combo-tree-checks");
        m_plain.SelectString(L"标准件 Standard parts/螺母 Nuts/M6", nullptr);
        ShootDropped(shots, m_plain, L"combo-tree-plain");
        ShootTip(shots);
        shots.Take(*this, L"combo-tree");
    }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        m_checks.SetHasCheckboxes(TRUE);
        m_checks.SubclassDlgItem(IDC_COMBO_TREE_CHECKS, this);
        m_checks.SetDroppedWidth(kDroppedWidth);

        CWnd* const placeholder = GetDlgItem(IDC_COMBO_TREE_PLACE);
        CRect place;
        placeholder->GetWindowRect(place);
        ScreenToClient(place);
        m_plain.Create(place, kDroppedWidth, kDroppedHeight, this, IDC_COMBO_TREE_PLAIN);
        // The tab order.
        m_plain.SetWindowPos(placeholder, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        m_plain.SetEnableSelectParent(FALSE);
        for (ComboTree* combo : {&m_checks, &m_plain})
            Fill(*combo);
        m_plain.SetWindowText(L"M6 x 20");
        m_off.SubclassDlgItem(IDC_COMBO_TREE_OFF, this);
        m_off.SetWindowText(L"停用 Disabled");
        m_off.EnableWindow(FALSE);
        return TRUE;
    }

    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        const UINT id = LOWORD(wParam);
        if (id == IDC_COMBO_TREE_CHECKS || id == IDC_COMBO_TREE_PLAIN)
            Log(id == IDC_COMBO_TREE_PLAIN ? m_plain : m_checks, HIWORD(wParam));
        return PageDlg::OnCommand(wParam, lParam);
    }

private:
    void Log(ComboTree& combo, UINT code)
    {
        auto* const log = static_cast<CListBox*>(GetDlgItem(IDC_COMBO_TREE_LOG));
        if (log == nullptr)
            return;
        const CString line = NameOf(code) + L"  " + combo.GetCurrentTreePath();
        log->SetTopIndex(log->AddString(line));
    }

    void ShootDropped(ShotWriter& shots, ComboTree& combo, LPCWSTR name)
    {
        combo.ShowDropDown(TRUE);
        HandlePendingMessages();
        shots.TakeAsItIs(combo.GetTree(), name);
        combo.ShowDropDown(FALSE);
    }

    // The tip comes after a delay, which need not be waited for.
    void ShootTip(ShotWriter& shots)
    {
        m_plain.ShowDropDown(TRUE);
        ComboTreeDropList& tree = m_plain.GetTree();
        CRect label;
        tree.GetItemRect(m_plain.FindString(kLongPath, nullptr), label, TRUE);
        CPoint before;
        ::GetCursorPos(&before);
        CPoint onLabel = label.TopLeft() + CSize(4, 4);
        tree.ClientToScreen(&onLabel);
        ::SetCursorPos(onLabel.x, onLabel.y);
        HandlePendingMessages();
        CComboPopupText& tip = CComboPopupText::Instance();
        tip.Show(0);
        HandlePendingMessages();
        shots.TakeAsItIs(tip, L"combo-tree-tip");
        ::SetCursorPos(before.x, before.y);
        m_plain.ShowDropDown(FALSE);
    }

    ComboTree m_checks;
    ComboTree m_plain;
    ComboTree m_off;
};

} // namespace

GalleryPage ComboTreePage()
{
    return {
        L"树形组合框 Tree combo boxes",
        L"带与不带复选框的树形组合框、禁用的，及其通知。\n"
        L"Combo boxes that drop down a tree, with and without check boxes, disabled, and what they tell.",
        [](const PageHost& host) -> std::unique_ptr<PageDlg> { return std::make_unique<ComboTreeDlg>(host); },
        [](PageDlg& page, const PageHost&, ShotWriter& shots) {
            static_cast<ComboTreeDlg&>(page).Shoot(shots);
        }};
}
