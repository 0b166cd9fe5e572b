// The page of tips over a picture: every style, at a point and for a hot rectangle.
#include "gallery/pages.h"
#include "gallery/resource.h"

#include <array>

namespace
{

constexpr UINT kDelay = 400; // milliseconds
constexpr UINT kDuration = 8000;
constexpr int kBodyTab = 60; // pixels
constexpr COLORREF kSky = RGB(120, 175, 235);
constexpr COLORREF kHorizon = RGB(255, 240, 205);
constexpr COLORREF kGround = RGB(92, 150, 84);
constexpr COLORREF kPaper = RGB(255, 255, 225);
constexpr COLORREF kInk = RGB(40, 30, 10);
constexpr COLORREF kSun = RGB(255, 200, 60);

// A small landscape for the shadows to fall on.
void DrawLandscape(CDC& dc, const CRect& rect)
{
    CRect sky = rect;
    sky.bottom = rect.top + rect.Height() * 2 / 3;
    CRect ground = rect;
    ground.top = sky.bottom;
    VGGradientFillRect(&dc, sky, kSky, kHorizon, 0);
    VGGradientFillRect(&dc, ground, kGround, VGFadeColor(kGround, -50), 0);
    const VBrush sun(&dc, kSun);
    const VPen edge(&dc, kSun);
    const int radius = rect.Height() / 8;
    const CPoint center(rect.left + rect.Width() * 3 / 4, rect.top + rect.Height() / 4);
    dc.Ellipse(center.x - radius, center.y - radius, center.x + radius, center.y + radius);
}

class TipDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit TipDlg(const PageHost& host) : PageDlg(IDD_TIPS, &host.window) { m_bHelpBtn = false; }

    void Shoot(ShotWriter& shots)
    {
        struct Style {
            LPCWSTR name;
            DWORD bits;
        };
        static constexpr std::array kStyles{
            Style{L"tip-plain", 0},
            Style{L"tip-double", VGTipDoubleBorder},
            Style{L"tip-dithered", VGTipShadow},
            Style{L"tip-graded", VGTipShadow | VGTipGradedShadow},
            Style{L"tip-double-graded", VGTipDoubleBorder | VGTipShadow | VGTipGradedShadow},
        };
        shots.Take(*this, L"tips");
        for (const Style& style : kStyles) {
            m_tip.HideTipWindow();
            HandlePendingMessages();
            if (m_tip.ShowTipWindow(PicturePoint(), style.bits))
                shots.TakeAsItIs(m_tip, style.name);
            else
                shots.Fail(style.name);
        }
        m_tip.HideTipWindow();
    }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        m_tip.Create(this);
        m_tip.SetTipColors(kPaper, kInk);
        m_tip.SetMargins(CSize(6, 4));
        m_tip.SetLineSpace(3);
        m_tip.SetTextTabStopPositions(m_tabs.data(), static_cast<int>(m_tabs.size()));
        m_tip.SetTipText(L"孔 Hole", L"直径\t12 mm\nDepth\t30 mm\n公差\tH7", FALSE);
        CheckDlgButton(IDC_TIP_SHADOW, BST_CHECKED);
        CheckDlgButton(IDC_TIP_GRADED, BST_CHECKED);
        return TRUE;
    }

    afx_msg void OnPaint()
    {
        CPaintDC dc(this);
        DrawLandscape(dc, PictureRect());
    }
    afx_msg void OnMouseMove(UINT nFlags, CPoint point)
    {
        PageDlg::OnMouseMove(nFlags, point);
        const CRect picture = PictureRect();
        // Each movement starts the delay anew, so that the tip waits for the mouse to rest.
        if (picture.PtInRect(point) && !m_tip.IsWindowVisible())
            m_tip.ShowTipWindow(picture, point, Style(), kDelay, kDuration, Centred(), TRUE);
    }
    afx_msg void OnShow()
    {
        m_tip.HideTipWindow();
        m_tip.ShowTipWindow(PicturePoint(), Style(), 0, kDuration, Centred());
    }

private:
    [[nodiscard]] CRect PictureRect() const
    {
        CRect rect;
        GetDlgItem(IDC_TIP_PICTURE)->GetWindowRect(rect);
        ScreenToClient(rect);
        return rect;
    }
    // A place on the picture, in screen coordinates.
    [[nodiscard]] CPoint PicturePoint() const
    {
        CPoint point = PictureRect().CenterPoint();
        ClientToScreen(&point);
        return point;
    }
    [[nodiscard]] BOOL Centred() const { return IsDlgButtonChecked(IDC_TIP_CENTER) == BST_CHECKED; }
    [[nodiscard]] DWORD Style() const
    {
        DWORD style = 0;
        style |= IsDlgButtonChecked(IDC_TIP_DOUBLE) == BST_CHECKED ? VGTipDoubleBorder : 0;
        style |= IsDlgButtonChecked(IDC_TIP_SHADOW) == BST_CHECKED ? VGTipShadow : 0;
        style |= IsDlgButtonChecked(IDC_TIP_GRADED) == BST_CHECKED ? VGTipGradedShadow : 0;
        return style;
    }

    std::array<int, 1> m_tabs{kBodyTab};
    CXTTipWindow m_tip;
};

BEGIN_MESSAGE_MAP(TipDlg, PageDlg)
    ON_WM_PAINT()
    ON_WM_MOUSEMOVE()
    ON_BN_CLICKED(IDC_TIP_SHOW, &TipDlg::OnShow)
END_MESSAGE_MAP()

} // namespace

GalleryPage TipPage()
{
    return {
        L"提示窗口 Tips",
        L"带标题、制表位与各种阴影的提示。\nTips with a title, tab stops and every kind of shadow.",
        [](const PageHost& host) -> std::unique_ptr<PageDlg> { return std::make_unique<TipDlg>(host); },
        [](PageDlg& page, const PageHost&, ShotWriter& shots) { static_cast<TipDlg&>(page).Shoot(shots); }};
}
