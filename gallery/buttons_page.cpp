// The page of buttons: pictures, captions, looks and what a click does.
#include "gallery/hovered_shot.h"
#include "gallery/pages.h"
#include "gallery/resource.h"

namespace
{

constexpr COLORREF kKey = RGB(255, 0, 255); // the transparent colour of the bitmaps
constexpr COLORREF kSkyTop = RGB(64, 126, 201);
constexpr COLORREF kSkyBottom = RGB(214, 235, 255);
constexpr COLORREF kHill = RGB(104, 168, 84);

// A button that is only a text, bold in colour while the mouse is over it.
class TrackingBtn : public VHotTrackBtn
{
public:
    void DrawItem(LPDRAWITEMSTRUCT item) override
    {
        CDC& dc = *CDC::FromHandle(item->hDC);
        CRect place = item->rcItem;
        CString text;
        GetWindowText(text);
        dc.FillSolidRect(place, hot ? VGM.Common.clrLight : VGGetParentBkColor(this));
        dc.SetBkMode(TRANSPARENT);
        dc.SetTextColor(hot ? VGM.Common.clrFrame : VGM.Dlg.clrText);
        dc.DrawText(text, place, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
    }
};

class ButtonsDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit ButtonsDlg(CWnd* owner) : PageDlg(IDD_BUTTONS, owner) { m_bHelpBtn = false; }

    void Shoot(ShotWriter& shots)
    {
        shots.Take(*this, L"buttons");
        TakeHovered(shots, *this, IDC_IMAGE_LEFT, L"buttons-hover-flat");
        TakeHovered(shots, *this, IDC_SKIN_NORMAL, L"buttons-hover-skinned");
        TakeHovered(shots, *this, IDC_SKIN_WEB, L"buttons-hover-link");
    }

protected:
    // The controls are taken here, before the base would replace them.
    void DoDataExchange(CDataExchange* pDX) override
    {
        PageDlg::DoDataExchange(pDX);
        struct Row {
            int id;
            CWnd& control;
        };
        for (const Row& row : {
                 Row{IDC_IMAGE_LEFT, m_imageLeft},
                 {IDC_IMAGE_ABOVE, m_imageAbove},
                 {IDC_IMAGE_RIGHT, m_imageRight},
                 {IDC_IMAGE_ONLY, m_imageOnly},
                 {IDC_IMAGE_BITMAP, m_imageBitmap},
                 {IDC_IMAGE_DISABLED, m_imageDisabled},
                 {IDC_TEXT_LEFT, m_textLeft},
                 {IDC_TEXT_CENTER, m_textCenter},
                 {IDC_TEXT_RIGHT, m_textRight},
                 {IDC_TEXT_LINES, m_textLines},
                 {IDC_LOOK_FLAT, m_lookFlat},
                 {IDC_LOOK_RAISED, m_lookRaised},
                 {IDC_LOOK_TOGGLE, m_lookToggle},
                 {IDC_LOOK_DISABLED, m_lookDisabled},
                 {IDC_LOOK_COLORS, m_lookColors},
                 {IDC_DROP_MENU, m_dropMenu},
                 {IDC_OPEN_LINK, m_openLink},
                 {IDC_OWN_CURSOR, m_ownCursor},
                 {IDC_WITH_TIP, m_withTip},
                 {IDC_OVER_PICTURE, m_overPicture},
                 {IDC_OVER_PICTURE_TEXT, m_overPictureText},
                 {IDC_SKIN_FLAT, m_skinFlat},
                 {IDC_SKIN_TRACK, m_skinTrack},
                 {IDC_SKIN_WEB, m_skinWeb},
                 {IDC_SKIN_MAIL, m_skinMail},
             })
            DDX_Control(pDX, row.id, row.control);
    }

    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        SetUpPictures();
        SetUpLooks();
        SetUpActions();
        return TRUE;
    }

    afx_msg BOOL OnEraseBkgnd(CDC* pDC)
    {
        PageDlg::OnEraseBkgnd(pDC);
        CRect place;
        GetDlgItem(IDC_PICTURE)->GetWindowRect(place);
        ScreenToClient(place);
        DrawLandscape(*pDC, place);
        return TRUE;
    }

    afx_msg void OnFormat(UINT id)
    {
        constexpr LPCWSTR names[] = {L"SVG", L"PNG", L"PDF"};
        SetDlgItemText(IDC_LAST_ACTION, names[id - IDC_DROP_FORMAT_FIRST]);
    }
    afx_msg void OnToggle()
    {
        SetDlgItemText(IDC_LAST_ACTION, m_lookToggle.GetCheck() ? L"开 on" : L"关 off");
    }

private:
    void SetUpPictures()
    {
        for (VButtonST* button : {&m_imageLeft, &m_imageAbove, &m_imageRight, &m_imageOnly, &m_imageDisabled,
                                  &m_overPicture, &m_overPictureText})
            button->SetIcon(IDI_FOLDER_HOT, IDI_FOLDER_CALM);
        m_skinFlat.SetIcon(IDI_FOLDER_HOT);
        m_imageBitmap.SetBitmaps(IDB_TICK_HOT, kKey, IDB_TICK_CALM, kKey);
        m_imageAbove.SetAlign(1);
        m_imageRight.SetAlign(2);
        for (VButtonST* button : {&m_overPicture, &m_overPictureText})
            button->DrawTransparent();
        for (VButtonST* button :
             {&m_imageLeft, &m_imageAbove, &m_imageRight, &m_imageOnly, &m_imageBitmap, &m_imageDisabled,
              &m_textLeft, &m_textCenter, &m_textRight, &m_textLines, &m_lookFlat, &m_lookDisabled,
              &m_dropMenu, &m_openLink, &m_ownCursor, &m_withTip})
            for (const BYTE index : {VButtonST::ColorBkOut, VButtonST::ColorBkFocus})
                button->SetColor(index, GetBkClr());
    }

    void SetUpLooks()
    {
        m_textLeft.SetAlign(3);
        m_textCenter.SetAlign(4);
        m_textRight.SetAlign(5);
        for (VButtonST* button : {&m_textLeft, &m_textCenter, &m_textRight, &m_textLines, &m_lookRaised,
                                  &m_lookToggle, &m_imageDisabled})
            button->SetFlat(FALSE);
        m_lookToggle.SetCheck(BST_CHECKED);
        m_lookColors.SetColor(VButtonST::ColorBkOut, VGM.Common.clrLight);
        m_lookColors.SetColor(VButtonST::ColorFgOut, VGM.Common.clrFrame);
        m_lookColors.SetColor(VButtonST::ColorBkIn, VGM.Common.clrFrame);
        m_lookColors.SetColor(VButtonST::ColorFgIn, VGM.Common.clrWhite);
        m_lookFlat.DrawFlatFocus(TRUE);
        m_imageOnly.SetTooltipText(L"打开文件夹。 Opens a folder.");
    }

    void SetUpActions()
    {
        for (VButtonST* button : {&m_dropMenu, &m_openLink, &m_ownCursor, &m_withTip})
            button->SetFlat(FALSE);
        m_dropMenu.SetMenu(IDR_FORMATS, m_hWnd);
        m_openLink.SetURL(L"https://example.com/");
        m_ownCursor.SetBtnCursor(IDC_PENCIL);
        m_withTip.SetTooltipText(L"有提示的按钮，文字为蓝色。 A button with a tip has a blue caption.");
        m_skinMail.SetType(1);
    }

    static void DrawLandscape(CDC& dc, const CRect& place)
    {
        VGGradientFillRect(&dc, place, kSkyTop, kSkyBottom, 0);
        const int saved = dc.SaveDC();
        dc.IntersectClipRect(place);
        const VPen pen(&dc, kHill);
        const VBrush brush(&dc, kHill);
        dc.Ellipse(place.left - place.Width() / 4, place.bottom - place.Height() / 3,
                   place.right + place.Width() / 3, place.bottom + place.Height());
        dc.RestoreDC(saved);
    }

    VButtonST m_imageLeft, m_imageAbove, m_imageRight, m_imageOnly, m_imageBitmap, m_imageDisabled;
    VButtonST m_textLeft, m_textCenter, m_textRight, m_textLines;
    VButtonST m_lookFlat, m_lookRaised, m_lookToggle, m_lookDisabled, m_lookColors;
    VButtonST m_dropMenu, m_openLink, m_ownCursor, m_withTip;
    VButtonST m_overPicture, m_overPictureText;
    VFlatButton m_skinFlat;
    TrackingBtn m_skinTrack;
    VUrlEmailBtn m_skinWeb, m_skinMail;
};

BEGIN_MESSAGE_MAP(ButtonsDlg, PageDlg)
    ON_WM_ERASEBKGND()
    ON_COMMAND_RANGE(IDC_DROP_FORMAT_FIRST, IDC_DROP_FORMAT_LAST, &ButtonsDlg::OnFormat)
    ON_BN_CLICKED(IDC_LOOK_TOGGLE, &ButtonsDlg::OnToggle)
END_MESSAGE_MAP()

} // namespace

GalleryPage ButtonsPage()
{
    return {L"按钮 Buttons",
            L"图像、文字、外观、动作与库的按钮。\n"
            L"Pictures, captions, looks, actions, and the library's own buttons.",
            [](const PageHost& host) -> std::unique_ptr<PageDlg> {
                return std::make_unique<ButtonsDlg>(&host.window);
            },
            [](PageDlg& page, const PageHost&, ShotWriter& shots) {
                static_cast<ButtonsDlg&>(page).Shoot(shots);
            }};
}
