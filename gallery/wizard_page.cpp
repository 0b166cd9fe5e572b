// The page of the wizard: pages in a fixed order, with a title band in place of tabs.
#include "gallery/pages.h"
#include "gallery/resource.h"
#include "vgui/res/resource.h"

namespace
{

constexpr int kFirst = 0;
constexpr int kLast = 2;

// A page that does not let go without both sizes.
class SizePage : public VTabPage
{
public:
    SizePage() : VTabPage(IDD_WIZARD_SIZE) {}

    CString GetSizeText() const
    {
        CString width, height;
        GetDlgItemText(IDC_FIGURE_WIDTH, width);
        GetDlgItemText(IDC_FIGURE_HEIGHT, height);
        return width + L" × " + height;
    }
    int OnDeactive() override
    {
        const bool complete = GetDlgItemInt(IDC_FIGURE_WIDTH) > 0 && GetDlgItemInt(IDC_FIGURE_HEIGHT) > 0;
        SetDlgItemText(IDC_SIZE_HINT, complete ? L"" : L"请输入大于零的数。 Numbers above zero, please.");
        return complete ? 1 : 0;
    }

protected:
    BOOL OnInitDialog() override
    {
        VTabPage::OnInitDialog();
        SetDlgItemInt(IDC_FIGURE_WIDTH, 120);
        SetDlgItemInt(IDC_FIGURE_HEIGHT, 80);
        return TRUE;
    }
};

class WizardDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit WizardDlg(const PageHost& host) : PageDlg(IDD_WIZARD, &host.window) { m_bHelpBtn = false; }
    WizardDlg(const WizardDlg&) = delete;
    WizardDlg& operator=(const WizardDlg&) = delete;
    ~WizardDlg() override
    {
        if (m_hWnd != nullptr)
            DestroyWindow();
    }

    void Shoot(ShotWriter& shots)
    {
        shots.Take(*this, L"wizard-first");
        OnNext();
        m_size.SetDlgItemText(IDC_FIGURE_HEIGHT, L"");
        OnNext();
        shots.Take(*this, L"wizard-refused");
        m_size.SetDlgItemText(IDC_FIGURE_HEIGHT, L"80");
        OnNext();
        shots.Take(*this, L"wizard-last");
    }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        m_pages.SubclassDlgItem(IDC_TAB_PAGES, this);
        m_pages.SetOutDrivenMode(1);
        m_pages.AddPage(L"选择图形 Choose a figure", &m_figure, 1, IDB_HELP_GLYPH, 1);
        m_pages.AddPage(L"输入尺寸 Enter the size", &m_size, 1, 0, 0);
        m_pages.AddPage(L"完成 Summary", &m_summary, 1, 0, 0);
        m_figure.CheckDlgButton(IDC_FIGURE_RECT, BST_CHECKED);
        Show(kFirst);
        return FALSE; // the focus is set
    }
    // Enter goes on, from the last page it finishes.
    void OnOK() override
    {
        if (m_pages.GetActive() == kLast)
            PageDlg::OnOK();
        else
            OnNext();
    }

    afx_msg void OnBack() { Show(m_pages.GetActive() - 1); }
    afx_msg void OnNext() { Show(m_pages.GetActive() + 1); }

private:
    void Show(int page)
    {
        m_pages.SetActive(page);
        if (m_pages.GetActive() != page)
            return; // the page before holds on
        GetDlgItem(IDC_BACK)->EnableWindow(page > kFirst);
        GetDlgItem(IDC_NEXT)->EnableWindow(page < kLast);
        GetDlgItem(IDOK)->EnableWindow(page == kLast);
        if (page == kLast)
            Summarise();
        GotoDlgCtrl(GetDlgItem(page == kLast ? IDOK : IDC_NEXT));
    }
    void Summarise()
    {
        const bool rectangle = m_figure.IsDlgButtonChecked(IDC_FIGURE_RECT) == BST_CHECKED;
        const CString figure = rectangle ? L"矩形 Rectangle" : L"椭圆 Ellipse";
        m_summary.SetDlgItemText(IDC_SUMMARY, figure + L"\n" + m_size.GetSizeText());
    }

    VTabPage m_figure{IDD_WIZARD_FIGURE};
    SizePage m_size;
    VTabPage m_summary{IDD_WIZARD_SUMMARY};
    VTabDlgCtrl m_pages;
};

BEGIN_MESSAGE_MAP(WizardDlg, PageDlg)
    ON_BN_CLICKED(IDC_BACK, &WizardDlg::OnBack)
    ON_BN_CLICKED(IDC_NEXT, &WizardDlg::OnNext)
END_MESSAGE_MAP()

} // namespace

GalleryPage WizardPage()
{
    return {
        L"向导 Wizard",
        L"由“上一步”“下一步”切换的页面与标题带。\nPages turned by buttons, with a title band.",
        [](const PageHost& host) -> std::unique_ptr<PageDlg> { return std::make_unique<WizardDlg>(host); },
        [](PageDlg& page, const PageHost&, ShotWriter& shots) {
            static_cast<WizardDlg&>(page).Shoot(shots);
        }};
}
