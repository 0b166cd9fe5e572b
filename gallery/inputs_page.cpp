// The page of edit fields, lists, combo boxes and group boxes.
#include "gallery/pages.h"
#include "gallery/resource.h"

namespace
{

constexpr LPCWSTR kKinds[] = {L"直线 Line", L"圆弧 Arc", L"多段线 Polyline", L"文字 Text", L"填充 Hatch"};

class InputsDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit InputsDlg(CWnd* owner) : PageDlg(IDD_INPUTS, owner) { m_bHelpBtn = false; }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        SetDlgItemText(IDC_INPUT_EDIT, L"图形 1");
        SetDlgItemText(IDC_INPUT_EDIT_OFF, L"图形 2");
        SetDlgItemText(IDC_INPUT_LINES, L"多行文字\r\nSeveral lines\r\n第三行\r\nThe fourth\r\n第五行");
        static_cast<VGroup*>(GetDlgItem(IDC_INPUT_LIST_GROUP))->SetUseTitle(TRUE);
        static_cast<VGroup*>(GetDlgItem(IDC_INPUT_LONG_GROUP))->SetUseTitle(TRUE);
        FillLists();
        FillTable();
        FillCombos();
        return TRUE;
    }

    afx_msg void OnRemember()
    {
        VComboBox& history = *static_cast<VComboBox*>(GetDlgItem(IDC_INPUT_HISTORY));
        CString text;
        history.GetWindowText(text);
        history.SetWindowTextEx(text, false);
        SetDlgItemText(IDC_INPUT_HISTORY_TEXT, history.SaveHistory());
    }

private:
    void FillLists()
    {
        for (const UINT id : {IDC_INPUT_LIST, IDC_INPUT_LIST_OFF}) {
            VListBox& list = *static_cast<VListBox*>(GetDlgItem(id));
            for (const LPCWSTR kind : kKinds)
                list.AddItem(kind, list.GetCount());
            list.SetCurSel(1);
        }
        static_cast<VListBox*>(GetDlgItem(IDC_INPUT_LIST))->EnableTips();
    }

    void FillTable()
    {
        m_table.SubclassDlgItem(IDC_INPUT_TABLE, this);
        m_table.SetExtendedStyle(LVS_EX_FULLROWSELECT);
        CRect client;
        m_table.GetClientRect(client);
        m_table.InsertColumn(0, L"图形 Figure", LVCFMT_LEFT, client.Width() * 2 / 3);
        m_table.InsertColumn(1, L"数量 Count", LVCFMT_RIGHT, client.Width() / 3);
        int row = 0;
        for (const LPCWSTR kind : {kKinds[0], kKinds[1]}) {
            CString count;
            count.Format(L"%d", 12 * row + 3);
            m_table.InsertItem(row, kind);
            m_table.SetItemText(row++, 1, count);
        }
    }

    void FillCombos()
    {
        for (const UINT id : {IDC_INPUT_CHOICE, IDC_INPUT_TIPPED, IDC_INPUT_CHOICE_OFF}) {
            VComboBox& combo = *static_cast<VComboBox*>(GetDlgItem(id));
            for (const LPCWSTR kind : kKinds)
                combo.AddString(kind);
            combo.SelectStringExact(-1, kKinds[0]);
        }
        static_cast<VComboBox*>(GetDlgItem(IDC_INPUT_TIPPED))
            ->SetTooltipText(L"图形的类型。 The figure's kind.", TRUE);
        static_cast<VComboBox*>(GetDlgItem(IDC_INPUT_HISTORY))->LoadHistory(L"1:100|1:50;1:100;1:500");
        OnRemember();
    }

    VListCtrl m_table;
};

BEGIN_MESSAGE_MAP(InputsDlg, PageDlg)
    ON_BN_CLICKED(IDC_INPUT_REMEMBER, &InputsDlg::OnRemember)
END_MESSAGE_MAP()

} // namespace

GalleryPage InputsPage()
{
    return {L"输入与列表 Inputs and lists",
            L"编辑框、列表、带历史的组合框与两种分组框。\n"
            L"Edit fields, lists, combo boxes with a history, group boxes in both looks.",
            [](const PageHost& host) -> std::unique_ptr<PageDlg> {
                return std::make_unique<InputsDlg>(&host.window);
            },
            [](PageDlg& page, const PageHost&, ShotWriter& shots) { shots.Take(page, L"inputs"); }};
}
