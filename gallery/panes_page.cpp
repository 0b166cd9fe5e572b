// The page of panes: three of them, with two bars that divide the room.
#include "gallery/pages.h"
#include "gallery/resource.h"

#include <algorithm>

namespace
{

constexpr int kBarSize = 7; // pixels; an odd width shows the line's colour
constexpr int kMargin = 8;
constexpr int kMinimumPane = 60;
constexpr UINT kBarId = 1;

// Two panes and the bar between them. The first pane keeps its size when the view changes its own.
class SplitView : public CWnd
{
    DECLARE_MESSAGE_MAP()

public:
    bool Create(CWnd& parent, UINT id, BOOL horizontal)
    {
        m_horizontal = horizontal;
        return CWnd::Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 0, 0), &parent, id) &&
               m_bar.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, kBarSize, kBarSize), this, kBarId, horizontal);
    }
    // Both are children of the view, which does not own them. size: the first one's, pixels.
    void SetPanes(CWnd& first, CWnd& second, int size)
    {
        m_first = &first;
        m_second = &second;
        m_bar.SetPanesMiniSize(kMinimumPane, kMinimumPane);
        LayOut(size);
    }
    CSplitterBar& Bar() { return m_bar; }

protected:
    afx_msg void OnSize(UINT nType, int cx, int cy)
    {
        CWnd::OnSize(nType, cx, cy);
        if (m_first == nullptr)
            return;
        CRect first;
        m_first->GetWindowRect(first);
        LayOut(m_horizontal ? first.Height() : first.Width());
    }
    afx_msg BOOL OnEraseBkgnd(CDC* pDC)
    {
        CRect client;
        GetClientRect(client);
        pDC->FillSolidRect(client, VGM.Dlg.clrBk);
        return TRUE;
    }

private:
    void LayOut(int size)
    {
        CRect first, second;
        GetClientRect(first);
        second = first;
        const int room = (m_horizontal ? first.Height() : first.Width()) - kBarSize;
        size = std::max(0, std::min(std::max(size, kMinimumPane), room - kMinimumPane));
        if (m_horizontal) {
            first.bottom = size;
            second.top = size + kBarSize;
        } else {
            first.right = size;
            second.left = size + kBarSize;
        }
        m_first->MoveWindow(first);
        m_second->MoveWindow(second);
        m_bar.SetPanes(m_first, m_second);
    }

    BOOL m_horizontal = FALSE;
    CWnd* m_first = nullptr;
    CWnd* m_second = nullptr;
    CSplitterBar m_bar;
};

BEGIN_MESSAGE_MAP(SplitView, CWnd)
    ON_WM_SIZE()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

class PanesDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit PanesDlg(const PageHost& host) : PageDlg(IDD_PANES, &host.window) { m_bHelpBtn = false; }
    PanesDlg(const PanesDlg&) = delete;
    PanesDlg& operator=(const PanesDlg&) = delete;
    ~PanesDlg() override
    {
        if (m_hWnd != nullptr)
            DestroyWindow();
    }

    void Shoot(ShotWriter& shots)
    {
        shots.Take(*this, L"panes");
        Drag(m_view.Bar(), {90, 0});
        Drag(m_right.Bar(), {0, 60});
        shots.Take(*this, L"panes-moved");
    }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        constexpr DWORD kPane = WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP;
        const CRect none(0, 0, 0, 0);
        m_view.Create(*this, IDC_PANES, FALSE);
        m_tree.Create(kPane | TVS_HASLINES | TVS_LINESATROOT | TVS_HASBUTTONS | TVS_SHOWSELALWAYS, none,
                      &m_view, IDC_PANE_TREE);
        m_right.Create(m_view, IDC_PANES_RIGHT, TRUE);
        m_notes.Create(kPane | ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN, none, &m_right, IDC_PANE_NOTES);
        m_points.Create(kPane | LVS_REPORT | LVS_SHOWSELALWAYS, none, &m_right, IDC_PANE_POINTS);
        for (CWnd* const pane :
             {static_cast<CWnd*>(&m_tree), static_cast<CWnd*>(&m_notes), static_cast<CWnd*>(&m_points)})
            pane->SetFont(GetFont());
        FillTree();
        m_notes.SetWindowText(L"拖动分隔条以改变窗格大小。\r\nDrag a bar to divide the room anew.");
        FillPoints();

        PlaceView();
        CRect room;
        m_view.GetClientRect(room);
        m_view.SetPanes(m_tree, m_right, room.Width() / 3);
        m_right.SetPanes(m_notes, m_points, room.Height() / 2);
        CRect window;
        GetWindowRect(window);
        SetMinimumSize(window.Width() / 2, window.Height() / 2);
        return TRUE;
    }
    afx_msg void OnSize(UINT nType, int cx, int cy)
    {
        PageDlg::OnSize(nType, cx, cy);
        if (m_view.m_hWnd != nullptr && nType != SIZE_MINIMIZED)
            PlaceView();
    }

private:
    void PlaceView()
    {
        CRect room;
        GetClientRect(room);
        room.DeflateRect(kMargin, kMargin);
        m_view.MoveWindow(room);
    }
    void FillTree()
    {
        const HTREEITEM layers = m_tree.InsertItem(L"图层 Layers", TVI_ROOT, TVI_LAST);
        for (const LPCWSTR layer : {L"墙体 Walls", L"门窗 Doors and windows", L"尺寸 Dimensions"})
            m_tree.InsertItem(layer, layers, TVI_LAST);
        const HTREEITEM figures = m_tree.InsertItem(L"图形 Figures", TVI_ROOT, TVI_LAST);
        for (const LPCWSTR figure : {L"直线 Line", L"圆弧 Arc", L"文字 Text"})
            m_tree.InsertItem(figure, figures, TVI_LAST);
        m_tree.Expand(layers, TVE_EXPAND);
        m_tree.Expand(figures, TVE_EXPAND);
        m_tree.SelectItem(m_tree.GetChildItem(figures));
    }
    void FillPoints()
    {
        constexpr int kColumnWidth = 70;
        int column = 0;
        for (const LPCWSTR title : {L"点 Point", L"X", L"Y"})
            m_points.InsertColumn(column++, title, LVCFMT_LEFT, kColumnWidth);
        for (int point = 0; point < 8; ++point) {
            CString text;
            text.Format(L"P%d", point + 1);
            const int item = m_points.InsertItem(point, text);
            text.Format(L"%d", 25 * point);
            m_points.SetItemText(item, 1, text);
            text.Format(L"%d", 10 + point * point);
            m_points.SetItemText(item, 2, text);
        }
    }
    static void Drag(CSplitterBar& bar, CPoint to)
    {
        bar.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(0, 0));
        bar.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to.x, to.y));
        bar.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(to.x, to.y));
    }

    // Children are declared after their parents: the innermost goes first.
    SplitView m_view;
    CTreeCtrl m_tree;
    SplitView m_right;
    CEdit m_notes;
    CListCtrl m_points;
};

BEGIN_MESSAGE_MAP(PanesDlg, PageDlg)
    ON_WM_SIZE()
END_MESSAGE_MAP()

} // namespace

GalleryPage PanesPage()
{
    return {
        L"窗格 Panes", L"两条分隔条划分三个窗格。\nThree panes, divided by two bars.",
        [](const PageHost& host) -> std::unique_ptr<PageDlg> { return std::make_unique<PanesDlg>(host); },
        [](PageDlg& page, const PageHost&, ShotWriter& shots) { static_cast<PanesDlg&>(page).Shoot(shots); }};
}
