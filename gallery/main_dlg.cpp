#include "gallery/main_dlg.h"

#include <algorithm>

namespace
{

// In dialog units of the main template.
constexpr int kMargin = 8;
constexpr int kColumnWidth = 140;
constexpr int kButtonHeight = 15;
constexpr int kButtonWidth = 62;
constexpr int kDescriptionHeight = 64;
constexpr int kListTop = 20;
constexpr int kGap = 6;
constexpr int kMinWidth = 300;
constexpr int kMinHeight = 180;

} // namespace

IMPLEMENT_DYNAMIC(MainDlg, VGuiDlg)

BEGIN_MESSAGE_MAP(MainDlg, VGuiDlg)
    ON_BN_CLICKED(IDC_OPEN, &MainDlg::OnOpen)
    ON_LBN_DBLCLK(IDC_PAGES, &MainDlg::OnOpen)
    ON_LBN_SELCHANGE(IDC_PAGES, &MainDlg::OnSelectPage)
    ON_WM_SIZE()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

MainDlg::MainDlg() : VGuiDlg(IDD_MAIN), m_pages(GalleryPages().size()) {}

MainDlg::~MainDlg()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
}

BOOL MainDlg::OnInitDialog()
{
    VGuiDlg::OnInitDialog();
    CRect minimum(0, 0, kMinWidth, kMinHeight);
    MapDialogRect(minimum);
    SetMinimumSize(minimum.Width(), minimum.Height());
    m_canvas.CreateInPlaceOf(*this, IDC_CANVAS);
    FillPageList();
    AddToolTips(IDC_PAGES, L"双击打开示例页。 Double-click to open a page.");
    AddToolTips(IDC_OPEN, L"打开所选的示例页。 Opens the selected page.");
    AddToolTips(IDCANCEL, L"结束程序。 Ends the program.");
    LayOut();
    return TRUE;
}

void MainDlg::FillPageList()
{
    auto& list = *static_cast<CListBox*>(GetDlgItem(IDC_PAGES));
    list.ResetContent();
    for (const GalleryPage& page : GalleryPages())
        list.AddString(page.title);
    list.SetCurSel(0);
    OnSelectPage();
}

int MainDlg::SelectedPage() const
{
    const int selected = static_cast<const CListBox*>(GetDlgItem(IDC_PAGES))->GetCurSel();
    return selected >= 0 && selected < static_cast<int>(GalleryPages().size()) ? selected : -1;
}

PageDlg& MainDlg::Page(int index)
{
    std::unique_ptr<PageDlg>& page = m_pages[index];
    if (page == nullptr)
        page = GalleryPages()[index].create(m_host);
    return *page;
}

void MainDlg::OnSelectPage()
{
    const int selected = SelectedPage();
    SetDlgItemText(IDC_DESCRIPTION, selected < 0 ? L"" : GalleryPages()[selected].description);
}

void MainDlg::OnOpen()
{
    const int selected = SelectedPage();
    if (selected >= 0 && !Page(selected).Open())
        AfxMessageBox(L"无法打开该页。 The page cannot be opened.", MB_ICONSTOP);
}

// Enter opens the selected page also while the list has the focus.
void MainDlg::OnOK()
{
    OnOpen();
}

void MainDlg::OnCancel()
{
    if (m_canvas.IsPicking())
        m_canvas.CancelPick();
    else if (!IsPageModalRunning()) // which would go on without this window, and perhaps without any
        VGuiDlg::OnCancel();
}

void MainDlg::OnSize(UINT nType, int cx, int cy)
{
    VGuiDlg::OnSize(nType, cx, cy);
    if (nType != SIZE_MINIMIZED && m_canvas.m_hWnd != nullptr)
        LayOut();
}

void MainDlg::OnDestroy()
{
    m_canvas.CancelPick();
    std::fill(m_pages.begin(), m_pages.end(), nullptr);
    VGuiDlg::OnDestroy();
}

void MainDlg::LayOut()
{
    CRect client;
    GetClientRect(client);
    const auto width = [this](int units) {
        CRect rect(0, 0, units, 0);
        MapDialogRect(rect);
        return rect.right;
    };
    const auto height = [this](int units) {
        CRect rect(0, 0, 0, units);
        MapDialogRect(rect);
        return rect.bottom;
    };
    const auto move = [this](int id, const CRect& rect) { GetDlgItem(id)->MoveWindow(rect); };

    const int left = width(kMargin);
    const int columnRight = left + width(kColumnWidth);
    const int bottom = client.bottom - height(kMargin);
    const int buttonTop = bottom - height(kButtonHeight);
    const int descriptionTop = buttonTop - height(kGap + kDescriptionHeight);
    move(IDC_OPEN, {left, buttonTop, left + width(kButtonWidth), bottom});
    move(IDCANCEL, {columnRight - width(kButtonWidth), buttonTop, columnRight, bottom});
    move(IDC_DESCRIPTION, {left, descriptionTop, columnRight, buttonTop - height(kGap)});
    move(IDC_PAGES, {left, height(kListTop), columnRight, descriptionTop - height(kGap)});
    const int canvasLeft = columnRight + width(kMargin);
    move(IDC_CANVAS, {canvasLeft, height(kListTop), client.right - left, bottom});
    Invalidate();
}

void MainDlg::TakeShots(ShotWriter& shots)
{
    SetWindowPos(nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    shots.Take(*this, L"main-active");
    ShowWindow(SW_SHOWMAXIMIZED);
    shots.Take(*this, L"main-maximised");
    ShowWindow(SW_RESTORE);
    TakeHelpShot(shots);

    const std::vector<GalleryPage>& pages = GalleryPages();
    for (int i = 0; i < static_cast<int>(pages.size()); ++i) {
        if (!Page(i).Open()) {
            shots.Fail(pages[i].title);
            continue;
        }
        if (i == 0) {
            // Beside the main window, so that this one stands free while it is not the active one.
            CRect own;
            GetWindowRect(own);
            Page(i).SetWindowPos(nullptr, own.left, own.bottom, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
            shots.TakeAsItIs(*this, L"main-inactive");
        }
        pages[i].shoot(Page(i), m_host, shots);
        if (Page(i).m_hWnd != nullptr)
            Page(i).DestroyWindow();
    }
}

void MainDlg::TakeHelpShot(ShotWriter& shots)
{
    PromptHelp();
    CWnd* const help = GetForegroundWindow();
    if (help == nullptr || help == this)
        return shots.Fail(L"assist");
    shots.TakeAsItIs(*help, L"assist");
    help->SendMessage(WM_CLOSE);
}
