// The page of tabbed pages: a property dialog, and tabs in several rows with pictures.
#include "gallery/pages.h"
#include "gallery/resource.h"

#include <functional>

namespace
{

constexpr int kImageSize = 12; // pixels
constexpr LPCWSTR kHint = L"回车应用，Esc 关闭。 Enter applies, Esc closes.";
constexpr COLORREF kImageColors[] = {RGB(200, 60, 60), RGB(60, 150, 60), RGB(60, 90, 200)};

// A page that is left only when its box is ticked.
class ReadPage : public VTabPage
{
public:
    ReadPage() : VTabPage(IDD_TAB_READ) {}

    std::function<void()> m_whenRefused;

    int OnDeactive() override
    {
        const bool read = IsDlgButtonChecked(IDC_READ) == BST_CHECKED;
        if (!read && m_whenRefused)
            m_whenRefused();
        return read ? 1 : 0;
    }
};

// A page with a box that enables another page.
class SwitchPage : public VTabPage
{
    DECLARE_MESSAGE_MAP()

public:
    SwitchPage() : VTabPage(IDD_TAB_SWITCH) {}

    std::function<void(bool on)> m_whenSwitched;

protected:
    afx_msg void OnSwitch() { m_whenSwitched(IsDlgButtonChecked(IDC_ENABLE_PAGE) == BST_CHECKED); }
};

BEGIN_MESSAGE_MAP(SwitchPage, VTabPage)
    ON_BN_CLICKED(IDC_ENABLE_PAGE, &SwitchPage::OnSwitch)
END_MESSAGE_MAP()

// A page that says when its window was created and how often it was shown.
class CreatedPage : public VTabPage
{
public:
    explicit CreatedPage(const int& changes) : VTabPage(IDD_TAB_CREATED), m_changes(changes) {}

    void OnActivate() override
    {
        ++m_shown;
        CString text;
        text.Format(L"创建前已换页 %d 次，已显示 %d 次。\nPage changes before it was created: %d; shown: %d.",
                    m_createdAfter, m_shown, m_createdAfter, m_shown);
        SetDlgItemText(IDC_CREATED, text);
    }

protected:
    BOOL OnInitDialog() override
    {
        VTabPage::OnInitDialog();
        m_createdAfter = m_changes;
        m_shown = 0;
        return TRUE;
    }

private:
    const int& m_changes;
    int m_createdAfter = 0;
    int m_shown = 0;
};

class TabsDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit TabsDlg(const PageHost& host) : PageDlg(IDD_TABS, &host.window) { m_bHelpBtn = false; }
    TabsDlg(const TabsDlg&) = delete;
    TabsDlg& operator=(const TabsDlg&) = delete;
    ~TabsDlg() override
    {
        if (m_hWnd != nullptr)
            DestroyWindow();
    }

    void Shoot(ShotWriter& shots)
    {
        shots.Take(*this, L"tabs");
        ClickTab(m_pages, 1);
        shots.Take(*this, L"tabs-refused");

        m_read.CheckDlgButton(IDC_READ, BST_CHECKED);
        ClickTab(m_pages, 1);
        m_switch.CheckDlgButton(IDC_ENABLE_PAGE, BST_CHECKED);
        m_switch.SendMessage(WM_COMMAND, MAKEWPARAM(IDC_ENABLE_PAGE, BN_CLICKED));
        CheckDlgButton(IDC_FLAT, BST_CHECKED);
        OnStyle();
        ClickTab(m_pages, 2);
        ClickTab(m_rows, 1);
        m_advanced.SendMessage(WM_COMMAND, IDOK); // as Enter does
        shots.Take(*this, L"tabs-flat");

        ClickTab(m_pages, 3);
        m_pages.SetFocus();
        CheckDlgButton(IDC_DISABLE, BST_CHECKED);
        OnDisable();
        shots.Take(*this, L"tabs-disabled");
    }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        m_changes = 0;
        m_active = kReadMe;
        m_read.m_whenRefused = [this] { Tell(L"请先勾选。 Tick the box first."); };
        m_switch.m_whenSwitched = [this](bool on) { m_pages.EnablePage(kAdvanced, on ? 1 : 0); };
        m_pages.SubclassDlgItem(IDC_TAB_PAGES, this);
        m_pages.AddPage(L"须知 Read me", &m_read, 1, 0, 0);
        m_pages.AddPage(L"开关 Switch", &m_switch, 1, 0, 0);
        m_pages.AddPage(L"高级 Advanced", &m_advanced, 0, 0, 0);
        m_pages.AddPage(L"按需 On demand", &m_created, 1, 0, 0);
        m_pages.SetActive(0);
        FillRows();
        Tell(kHint);
        return TRUE;
    }
    // Also reached by Enter on a page; Escape gets to OnCancel in the same way.
    void OnOK() override { Tell(L"已应用。 Applied."); }

    afx_msg void OnPageChanged(NMHDR*, LRESULT* pResult)
    {
        *pResult = 0;
        const int active = m_pages.GetActive();
        if (active != m_active) {
            ++m_changes;
            Tell(kHint);
        }
        m_active = active;
        // After a refusal the clicked tab stays selected: it could not be clicked again.
        if (active == kReadMe)
            m_pages.SetCurSel(kReadMe);
    }
    afx_msg void OnStyle()
    {
        const int style = IsDlgButtonChecked(IDC_FLAT) == BST_CHECKED ? VGTabFlat : VGTabGradient;
        m_pages.SetDrawingStyle(style);
        m_rows.SetDrawingStyle(style);
    }
    afx_msg void OnDisable() { m_rows.EnableWindow(IsDlgButtonChecked(IDC_DISABLE) != BST_CHECKED); }

private:
    static constexpr int kReadMe = 0;
    static constexpr int kAdvanced = 2;

    static void ClickTab(VTabCtrl& tabs, int item)
    {
        CRect rect;
        tabs.GetItemRect(item, rect);
        const CPoint at = rect.CenterPoint();
        tabs.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
        tabs.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    }

    void Tell(LPCWSTR text) { SetDlgItemText(IDC_TOLD, text); }

    // More tabs than fit beside each other, each with a picture.
    void FillRows()
    {
        m_rows.SubclassDlgItem(IDC_TAB_ROWS, this);
        m_images.DeleteImageList();
        m_images.Create(kImageSize, kImageSize, ILC_COLOR32, static_cast<int>(std::size(kImageColors)), 1);
        for (const COLORREF color : kImageColors)
            AddImage(color);
        m_rows.SetImageList(&m_images);
        for (const LPCWSTR caption :
             {L"图层 Layers", L"线型 Line types", L"文字 Text", L"标注 Dimensions", L"填充 Hatches",
              L"块 Blocks", L"视口 Viewports", L"打印 Plot", L"单位 Units", L"坐标系 Coordinates"}) {
            const int item = m_rows.GetItemCount();
            m_rows.InsertItem(item, caption, item % static_cast<int>(std::size(kImageColors)));
        }
    }
    void AddImage(COLORREF color)
    {
        CClientDC screen(this);
        CDC memory;
        CBitmap picture;
        memory.CreateCompatibleDC(&screen);
        picture.CreateCompatibleBitmap(&screen, kImageSize, kImageSize);
        CBitmap* const old = memory.SelectObject(&picture);
        memory.FillSolidRect(0, 0, kImageSize, kImageSize, color);
        memory.Draw3dRect(0, 0, kImageSize, kImageSize, VGM.Tab.clrFrame, VGM.Tab.clrFrame);
        memory.SelectObject(old);
        m_images.Add(&picture, static_cast<CBitmap*>(nullptr));
    }

    int m_changes = 0;
    int m_active = kReadMe; // the page shown before a change
    ReadPage m_read;
    SwitchPage m_switch;
    VTabPage m_advanced{IDD_TAB_ADVANCED};
    CreatedPage m_created{m_changes};
    VTabDlgCtrl m_pages;
    VTabCtrl m_rows;
    CImageList m_images;
};

BEGIN_MESSAGE_MAP(TabsDlg, PageDlg)
    ON_NOTIFY(TCN_SELCHANGE, IDC_TAB_PAGES, &TabsDlg::OnPageChanged)
    ON_BN_CLICKED(IDC_FLAT, &TabsDlg::OnStyle)
    ON_BN_CLICKED(IDC_DISABLE, &TabsDlg::OnDisable)
END_MESSAGE_MAP()

} // namespace

GalleryPage TabsPage()
{
    return {
        L"标签页 Tabbed pages",
        L"属性对话框、多行标签、图像列表与绘制样式。\nA property dialog, rows of tabs, images and drawing "
        L"styles.",
        [](const PageHost& host) -> std::unique_ptr<PageDlg> { return std::make_unique<TabsDlg>(host); },
        [](PageDlg& page, const PageHost&, ShotWriter& shots) { static_cast<TabsDlg&>(page).Shoot(shots); }};
}
