// The page of layouts: controls that follow the size of their dialog.
#include "gallery/pages.h"
#include "gallery/resource.h"

namespace
{

// Where a control is at first, in dialog units, and how its edges follow the dialog.
struct Anchored {
    LPCWSTR windowClass;
    LPCWSTR text;
    DWORD style;
    CRect place;
    UINT flags;
};

// Edges follow the change of the dialog's size by shares.
struct Shared {
    LPCWSTR text;
    CRect place;
    double left, right, top, bottom;
};

constexpr DWORD kFrame = BS_GROUPBOX;
constexpr DWORD kButton = BS_PUSHBUTTON | WS_TABSTOP;
constexpr DWORD kEdit = ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP;
constexpr DWORD kList = LBS_NOINTEGRALHEIGHT | WS_BORDER | WS_VSCROLL | WS_TABSTOP;
constexpr DWORD kCell = SS_CENTER | SS_CENTERIMAGE | WS_BORDER;

CRect At(int x, int y, int width, int height)
{
    return {CPoint(x, y), CSize(width, height)};
}

// Nine fields: the four corners keep their size, the four sides follow in one direction, the middle in both.
const std::vector<Anchored>& AnchoredControls()
{
    static const std::vector<Anchored> controls{
        {L"Button", L"左上 0x00", kFrame, At(8, 6, 90, 54), 0x00},
        {L"Edit", L"0x00", kEdit, At(14, 20, 78, 14), 0x00},
        {L"Button", L"0x00", kButton, At(14, 39, 78, 15), 0x00},

        {L"Button", L"上 0x02", kFrame, At(104, 6, 210, 54), 0x02},
        {L"Button", L"0x00", kButton, At(110, 20, 56, 15), 0x00},
        {L"Button", L"0x30", kButton, At(181, 20, 56, 15), 0x30},
        {L"Button", L"0x03", kButton, At(252, 20, 56, 15), 0x03},
        {L"Button", L"0x10", kButton, At(110, 39, 97, 15), 0x10},
        {L"Button", L"0x22", kButton, At(211, 39, 97, 15), 0x22},

        {L"Button", L"右上 0x03", kFrame, At(320, 6, 90, 54), 0x03},
        {L"Edit", L"0x03", kEdit, At(326, 20, 78, 14), 0x03},
        {L"Button", L"0x03", kButton, At(326, 39, 78, 15), 0x03},

        {L"Button", L"左 0x08", kFrame, At(8, 64, 90, 96), 0x08},
        {L"ListBox", L"0x08", kList, At(14, 77, 78, 56), 0x08},
        {L"Button", L"0x0C", kButton, At(14, 139, 78, 15), 0x0C},

        {L"Button", L"按比例 By shares", kFrame, At(104, 64, 210, 96), 0x0A},

        {L"Button", L"右 0x0B", kFrame, At(320, 64, 90, 96), 0x0B},
        {L"ListBox", L"0x0B", kList, At(326, 77, 78, 56), 0x0B},
        {L"Button", L"0x0F", kButton, At(326, 139, 78, 15), 0x0F},

        {L"Button", L"左下 0x0C", kFrame, At(8, 164, 90, 54), 0x0C},
        {L"Edit", L"0x0C", kEdit, At(14, 178, 78, 14), 0x0C},
        {L"Button", L"0x0C", kButton, At(14, 197, 78, 15), 0x0C},

        {L"Button", L"下 0x0E", kFrame, At(104, 164, 210, 54), 0x0E},
        {L"Button", L"0x0C", kButton, At(110, 178, 56, 15), 0x0C},
        {L"Button", L"0x3C", kButton, At(181, 178, 56, 15), 0x3C},
        {L"Button", L"0x0F", kButton, At(252, 178, 56, 15), 0x0F},
        {L"Button", L"0x1C", kButton, At(110, 197, 97, 15), 0x1C},
        {L"Button", L"0x2E", kButton, At(211, 197, 97, 15), 0x2E},

        {L"Button", L"右下 0x0F", kFrame, At(320, 164, 90, 54), 0x0F},
        {L"Edit", L"0x0F", kEdit, At(326, 178, 78, 14), 0x0F},
    };
    return controls;
}

const std::vector<Shared>& SharedControls()
{
    static const std::vector<Shared> controls{
        {L"1/2 × 1/2", At(110, 77, 62, 23), 0, 0.5, 0, 0.5},
        {L"1/4 × 1/2", At(178, 77, 62, 23), 0.5, 0.75, 0, 0.5},
        {L"1/4 × 1/2", At(246, 77, 62, 23), 0.75, 1, 0, 0.5},
        {L"1/2 × 1/4", At(110, 104, 62, 23), 0, 0.5, 0.5, 0.75},
        {L"1/4 × 1/4", At(178, 104, 62, 23), 0.5, 0.75, 0.5, 0.75},
        {L"1/4 × 1/4", At(246, 104, 62, 23), 0.75, 1, 0.5, 0.75},
        {L"1/2 × 1/4", At(110, 131, 62, 23), 0, 0.5, 0.75, 1},
        {L"1/4 × 1/4", At(178, 131, 62, 23), 0.5, 0.75, 0.75, 1},
        {L"1/4 × 1/4", At(246, 131, 62, 23), 0.75, 1, 0.75, 1},
    };
    return controls;
}

class LayoutDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit LayoutDlg(const PageHost& host) : PageDlg(IDD_LAYOUT, &host.window) { m_bHelpBtn = false; }

    void Shoot(ShotWriter& shots)
    {
        struct Growth {
            LPCWSTR name;
            CSize by; // pixels
        };
        CRect own;
        GetWindowRect(own);
        for (const Growth& growth : {Growth{L"layout", {0, 0}}, Growth{L"layout-wider", {260, 0}},
                                     Growth{L"layout-higher", {0, 220}}, Growth{L"layout-larger", {401, 301}},
                                     Growth{L"layout-back", {0, 0}}}) {
            SetWindowPos(nullptr, 0, 0, own.Width() + growth.by.cx, own.Height() + growth.by.cy,
                         SWP_NOZORDER);
            shots.Take(*this, growth.name);
        }
    }

protected:
    BOOL OnInitDialog() override
    {
        // The dialog may be opened again: the resizers start anew.
        m_anchors = {};
        m_shares = {};
        m_anchors.Init(this);
        m_shares.Init(this);
        // Before the base class gives the standard controls its look.
        for (const Anchored& c : AnchoredControls())
            m_anchors.AddControl(NewControl(c.windowClass, c.text, c.style, c.place), c.flags);
        for (const Shared& c : SharedControls())
            m_shares.AddControl(NewControl(L"Static", c.text, kCell, c.place), c.left, c.right, c.top,
                                c.bottom);
        m_anchors.AddControl(IDCANCEL, VDlgResizer::MoveAll);
        PageDlg::OnInitDialog();
        CRect window;
        GetWindowRect(window);
        SetMinimumSize(window.Width(), window.Height());
        return TRUE;
    }
    afx_msg void OnSize(UINT nType, int cx, int cy)
    {
        PageDlg::OnSize(nType, cx, cy);
        m_anchors.ResizeAll(nType, cx, cy);
        m_shares.ResizeAll(nType, cx, cy);
    }

private:
    // A temporary object.
    CWnd* NewControl(LPCWSTR windowClass, LPCWSTR text, DWORD style, CRect place)
    {
        MapDialogRect(place);
        const HWND control =
            ::CreateWindow(windowClass, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                           place.Width(), place.Height(), m_hWnd, nullptr, AfxGetInstanceHandle(), nullptr);
        ::SendMessage(control, WM_SETFONT, reinterpret_cast<WPARAM>(GetFont()->GetSafeHandle()), FALSE);
        if (style == kList)
            ::SendMessage(control, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        return CWnd::FromHandle(control);
    }

    VDlgResizer m_anchors;
    VDlgResizerEx m_shares;
};

BEGIN_MESSAGE_MAP(LayoutDlg, PageDlg)
    ON_WM_SIZE()
END_MESSAGE_MAP()

} // namespace

GalleryPage LayoutPage()
{
    return {
        L"布局 Layout", L"控件随对话框大小移动或伸缩。\nControls that follow the size of their dialog.",
        [](const PageHost& host) -> std::unique_ptr<PageDlg> { return std::make_unique<LayoutDlg>(host); },
        [](PageDlg& page, const PageHost&, ShotWriter& shots) {
            static_cast<LayoutDlg&>(page).Shoot(shots);
        }};
}
