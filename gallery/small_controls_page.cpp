// The page of progress bars, spin buttons, date and time controls and the tool bar.
#include "gallery/pages.h"
#include "gallery/resource.h"

#include <array>

namespace
{

constexpr int kPercent = 62;
constexpr int kUprightPercent = 45;
constexpr int kImageSize = 16; // pixels
constexpr COLORREF kMask = RGB(255, 0, 255);

struct Tool {
    LPCWSTR text; // null for a separator
    LPCWSTR tip;
    BYTE style;
    void (*draw)(CDC& dc);
};

constexpr COLORREF kInk = RGB(47, 95, 179);
constexpr COLORREF kFill = RGB(255, 193, 111);

const Tool kTools[] = {
    {L"直线 Line", L"画直线。 Draws a line.", BTNS_BUTTON,
     [](CDC& dc) {
         dc.MoveTo(2, 13);
         dc.LineTo(14, 1);
     }},
    {L"矩形 Box", L"画矩形。 Draws a box.", BTNS_BUTTON, [](CDC& dc) { dc.Rectangle(2, 4, 14, 12); }},
    {nullptr, nullptr, BTNS_SEP, nullptr},
    {L"捕捉 Snap", L"捕捉端点。 Snaps to end points.", BTNS_CHECK,
     [](CDC& dc) {
         dc.Rectangle(3, 3, 13, 13);
         dc.FillSolidRect(7, 0, 2, 16, kInk);
         dc.FillSolidRect(0, 7, 16, 2, kInk);
     }},
    {L"圆 Circle", L"画圆。 Draws a circle.", BTNS_DROPDOWN, [](CDC& dc) { dc.Ellipse(2, 2, 14, 14); }},
    {L"填充 Fill", L"填充区域。 Fills an area.", BTNS_BUTTON,
     [](CDC& dc) { dc.RoundRect(1, 1, 15, 15, 6, 6); }},
};

class SmallControlsDlg : public PageDlg
{
public:
    explicit SmallControlsDlg(CWnd* owner) : PageDlg(IDD_SMALL_CONTROLS, owner) { m_bHelpBtn = false; }

    void Shoot(ShotWriter& shots)
    {
        m_tools.SetBkColorAsParent(FALSE);
        m_tools.SetHotItem(1);
        shots.Take(*this, L"small-controls");
        m_tools.SetHotItem(-1);
        m_tools.SetBkColorAsParent(TRUE);
    }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        FillTools();
        StartProgress();
        for (size_t i = 0; i < m_spins.size(); ++i) {
            VSpinButtonCtrl& spin = m_spins[i];
            spin.SubclassDlgItem(IDC_SMALL_SPIN + static_cast<UINT>(i), this);
            spin.SetRange32(0, 100);
            spin.SetPos32(12);
        }
        for (size_t i = 0; i < m_dates.size(); ++i)
            m_dates[i].SubclassDlgItem(IDC_SMALL_DATE + static_cast<UINT>(i), this);
        const CTime moment(2024, 5, 17, 8, 30, 0);
        for (VDateTimeCtrl& date : m_dates)
            date.SetTime(&moment);
        return TRUE;
    }

private:
    void FillTools()
    {
        MakeImages();
        m_tools.DlgCreate(this, IDC_SMALL_TOOLS);
        m_tools.SetImageList(&m_images);
        int image = 0;
        for (const Tool& tool : kTools) {
            const int index = m_tools.GetBtnCount();
            m_tools.SetButton(index, IDC_SMALL_TOOL_FIRST + index, tool.draw != nullptr ? image++ : 0,
                              tool.style, tool.text, tool.tip);
        }
        m_tools.CheckButton(IDC_SMALL_TOOL_FIRST + 3);
        m_tools.EnableButton(IDC_SMALL_TOOL_FIRST + 5, FALSE);
    }

    void MakeImages()
    {
        m_images.DeleteImageList();
        m_images.Create(kImageSize, kImageSize, ILC_COLOR24 | ILC_MASK, static_cast<int>(std::size(kTools)),
                        1);
        CClientDC screen(this);
        CDC dc;
        dc.CreateCompatibleDC(&screen);
        for (const Tool& tool : kTools) {
            if (tool.draw == nullptr)
                continue;
            CBitmap picture;
            picture.CreateCompatibleBitmap(&screen, kImageSize, kImageSize);
            CBitmap* const old = dc.SelectObject(&picture);
            dc.FillSolidRect(0, 0, kImageSize, kImageSize, kMask);
            {
                const VPen pen(&dc, kInk);
                const VBrush brush(&dc, kFill);
                tool.draw(dc);
            }
            dc.SelectObject(old);
            m_images.Add(&picture, kMask);
        }
    }

    void StartProgress()
    {
        for (size_t i = 0; i < m_bars.size(); ++i) {
            m_bars[i].SubclassDlgItem(IDC_SMALL_BLOCKS + static_cast<UINT>(i), this);
            m_bars[i].SetPos(i + IDC_SMALL_BLOCKS == IDC_SMALL_UPRIGHT ? kUprightPercent : kPercent);
        }
        m_bars[IDC_SMALL_MARQUEE - IDC_SMALL_BLOCKS].SetMarquee(TRUE, 0);
    }

    VToolBar m_tools;
    CImageList m_images;
    std::array<VProgressCtrl, 5> m_bars;
    std::array<VSpinButtonCtrl, 3> m_spins;
    std::array<VDateTimeCtrl, 4> m_dates;
};

} // namespace

GalleryPage SmallControlsPage()
{
    return {L"进度条等 Progress and more",
            L"进度条、微调按钮、日期时间控件与工具条。\n"
            L"Progress bars, spin buttons, date and time controls, a tool bar.",
            [](const PageHost& host) -> std::unique_ptr<PageDlg> {
                return std::make_unique<SmallControlsDlg>(&host.window);
            },
            [](PageDlg& page, const PageHost&, ShotWriter& shots) {
                static_cast<SmallControlsDlg&>(page).Shoot(shots);
            }};
}
