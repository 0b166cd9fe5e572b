// The page of drawing functions: a grid of samples with their parameters below them.
#include "gallery/drawing_samples.h"
#include "gallery/pages.h"
#include "gallery/resource.h"

#include <algorithm>

namespace
{

// Pixels.
constexpr int kColumns = 8;
constexpr int kMargin = 14;
constexpr int kCellWidth = 136;
constexpr int kCellGap = 16;
constexpr int kSampleHeight = 56;
constexpr int kLineHeight = 16;
constexpr int kTitleHeight = 24;
constexpr int kLabelTop = kSampleHeight + 4;
constexpr int kCellHeight = kLabelTop + 2 * kLineHeight;
constexpr int kSectionHeight = kTitleHeight + kCellHeight + 10;
constexpr COLORREF kLabelText = RGB(40, 40, 40);
constexpr COLORREF kTitleText = RGB(20, 60, 140);

CSize PageSize()
{
    const int sections = static_cast<int>(DrawingSections().size());
    return {2 * kMargin + kColumns * (kCellWidth + kCellGap) - kCellGap, kMargin + sections * kSectionHeight};
}

CPoint CellOrigin(int section, int column)
{
    return {kMargin + column * (kCellWidth + kCellGap), kMargin + section * kSectionHeight + kTitleHeight};
}

void DrawLine(CDC& dc, LPCWSTR text, int x, int y, int width)
{
    CRect place(x, y, x + width, y + kLineHeight);
    dc.DrawText(text, -1, place, DT_SINGLELINE | DT_NOPREFIX | DT_VCENTER);
}

// Each sample sees itself at the origin and cannot draw beyond its cell.
void DrawSample(CDC& dc, const DrawingSample& sample, CPoint origin)
{
    const int saved = dc.SaveDC();
    dc.SetViewportOrg(origin);
    const CRect place(0, 0, kCellWidth, kSampleHeight);
    dc.IntersectClipRect(place);
    sample.draw(dc, place);
    dc.RestoreDC(saved);
    DrawLine(dc, sample.name, origin.x, origin.y + kLabelTop, kCellWidth);
    DrawLine(dc, sample.parameters, origin.x, origin.y + kLabelTop + kLineHeight, kCellWidth);
}

void DrawSections(CDC& dc)
{
    int row = 0;
    for (const DrawingSection& section : DrawingSections()) {
        const CPoint origin = CellOrigin(row, 0);
        dc.SetTextColor(kTitleText);
        DrawLine(dc, section.title, origin.x, origin.y - kTitleHeight + 2, PageSize().cx - 2 * kMargin);
        dc.SetTextColor(kLabelText);
        for (int column = 0; column < static_cast<int>(section.samples.size()); ++column)
            DrawSample(dc, section.samples[column], CellOrigin(row, column));
        ++row;
    }
}

class DrawingDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit DrawingDlg(CWnd* owner) : PageDlg(IDD_DRAWING, owner) { m_bHelpBtn = false; }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        CRect window;
        CRect client;
        GetWindowRect(window);
        GetClientRect(client);
        const CSize frame = window.Size() - client.Size();
        const CSize size = PageSize() + frame;
        SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        CenterWindow(CWnd::GetDesktopWindow());
        return TRUE;
    }

    afx_msg BOOL OnEraseBkgnd(CDC*) { return TRUE; }

    afx_msg void OnPaint()
    {
        CPaintDC target(this);
        CRect client;
        GetClientRect(client);
        VBufferedDC dc(target, client);
        dc.FillSolidRect(client, GetBkClr());
        dc.SelectObject(GetFont());
        dc.SetBkMode(TRANSPARENT);
        DrawSections(dc);
    }
};

BEGIN_MESSAGE_MAP(DrawingDlg, PageDlg)
    ON_WM_ERASEBKGND()
    ON_WM_PAINT()
END_MESSAGE_MAP()

} // namespace

GalleryPage DrawingPage()
{
    return {L"绘图函数 Drawing functions",
            L"每个绘图函数及其参数。\nEvery drawing function with its parameters.",
            [](const PageHost& host) -> std::unique_ptr<PageDlg> {
                return std::make_unique<DrawingDlg>(&host.window);
            },
            [](PageDlg& page, const PageHost&, ShotWriter& shots) { shots.Take(page, L"drawing"); }};
}
