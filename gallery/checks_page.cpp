// The page of check boxes and radio buttons, in groups of their own and mixed with standard ones.
#include "gallery/hovered_shot.h"
#include "gallery/pages.h"
#include "gallery/resource.h"

namespace
{

class ChecksDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit ChecksDlg(CWnd* owner) : PageDlg(IDD_CHECKS, owner) { m_bHelpBtn = false; }

protected:
    BOOL OnInitDialog() override
    {
        // A control with an object of its own stays a standard one.
        m_standardTwo.SubclassDlgItem(IDC_MIXED_TWO, this);
        m_standardFour.SubclassDlgItem(IDC_MIXED_FOUR, this);
        PageDlg::OnInitDialog();
        CheckDlgButton(IDC_BOX_OFF_CHECKED, BST_CHECKED);
        CheckDlgButton(IDC_RADIO_OFF_CHECKED, BST_CHECKED);
        UpdateData(FALSE);
        return TRUE;
    }

    // Before the base has replaced the controls these are standard ones, which the exchange knows as well.
    void DoDataExchange(CDataExchange* pDX) override
    {
        PageDlg::DoDataExchange(pDX);
        VGDDX_Check(pDX, IDC_BOX_ONE, m_snap);
        VGDDX_Check(pDX, IDC_BOX_TWO, m_ortho);
        VGDDX_Radio(pDX, IDC_RADIO_ONE, m_unit);
        VGDDX_Radio(pDX, IDC_MIXED_ONE, m_mixed);
    }

    afx_msg void OnSave()
    {
        UpdateData();
        CString text;
        text.Format(L"%d %d | %d | %d", m_snap, m_ortho, m_unit, m_mixed);
        SetDlgItemText(IDC_EXCHANGED, text);
    }
    afx_msg void OnLoad() { UpdateData(FALSE); }

private:
    int m_snap = 1;
    int m_ortho = 0;
    int m_unit = 1;
    int m_mixed = 2;
    CButton m_standardTwo;
    CButton m_standardFour;
};

BEGIN_MESSAGE_MAP(ChecksDlg, PageDlg)
    ON_BN_CLICKED(IDC_SAVE_CHECKS, &ChecksDlg::OnSave)
    ON_BN_CLICKED(IDC_LOAD_CHECKS, &ChecksDlg::OnLoad)
END_MESSAGE_MAP()

} // namespace

GalleryPage ChecksPage()
{
    return {L"复选框与单选按钮 Checks, radios",
            L"成组的复选框与单选按钮；保存后显示其值。\n"
            L"In groups, also mixed with standard ones; Save shows their values.",
            [](const PageHost& host) -> std::unique_ptr<PageDlg> {
                return std::make_unique<ChecksDlg>(&host.window);
            },
            [](PageDlg& page, const PageHost&, ShotWriter& shots) {
                shots.Take(page, L"checks");
                TakeHovered(shots, page, IDC_BOX_ONE, L"checks-hover-box");
                TakeHovered(shots, page, IDC_RADIO_TWO, L"checks-hover-radio");
            }};
}
