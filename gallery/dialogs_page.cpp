// The page of dialogs: modal and modeless ones, frames, and limits of sizing.
#include "gallery/pages.h"
#include "gallery/resource.h"

#include <functional>
#include <memory>

namespace
{

constexpr UINT kMinimumWidth = 320; // pixels
constexpr UINT kMinimumHeight = 160;
constexpr UINT kShotMessage = WM_APP + 1;

// A dialog with every kind of caption button.
class ModelessDlg : public PageDlg
{
public:
    explicit ModelessDlg(CWnd* owner) : PageDlg(IDD_MODELESS, owner) {}

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        for (const LPCWSTR kind : {L"直线 Line", L"圆弧 Arc", L"文字 Text"})
            static_cast<CComboBox*>(GetDlgItem(IDC_KIND))->AddString(kind);
        static_cast<CComboBox*>(GetDlgItem(IDC_KIND))->SetCurSel(0);
        SetDlgItemText(IDC_NAME, L"图形 1");
        CheckDlgButton(IDC_VISIBLE, BST_CHECKED);
        AddToolTips(IDC_NAME, L"图形的名称。 The name of the figure.");
        return TRUE;
    }
};

class ModalDlg : public VGuiDlg
{
public:
    explicit ModalDlg(CWnd* owner) : VGuiDlg(IDD_MODAL, owner) {}

    // Called once the dialog stands; the dialog then ends with IDCANCEL.
    std::function<void(CWnd&)> m_whenShown;

protected:
    BOOL OnInitDialog() override
    {
        VGuiDlg::OnInitDialog();
        CheckDlgButton(IDC_VISIBLE, BST_CHECKED);
        if (m_whenShown)
            PostMessage(kShotMessage);
        return TRUE;
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != kShotMessage)
            return VGuiDlg::WindowProc(message, wParam, lParam);
        m_whenShown(*this);
        EndDialog(IDCANCEL);
        return 0;
    }
};

// A dialog whose frame follows one rule while it is dragged.
class SizingDlg : public PageDlg
{
public:
    struct Rule {
        LPCWSTR caption;
        LPCWSTR text;
        bool allowHeight;
        bool allowWidth;
        UINT minWidth; // pixels, 0 for none
        UINT minHeight;
    };

    SizingDlg(CWnd* owner, const Rule& rule) : PageDlg(IDD_SIZING, owner), m_rule(rule)
    {
        m_bHelpBtn = false;
    }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        SetWindowText(m_rule.caption);
        SetDlgItemText(IDC_RULE, m_rule.text);
        SetAllowResize(m_rule.allowHeight, m_rule.allowWidth);
        SetMinimumSize(m_rule.minWidth, m_rule.minHeight);
        return TRUE;
    }

private:
    Rule m_rule;
};

const SizingDlg::Rule kLockedWidth{
    L"宽度锁定 Width locked", L"只能改变高度。\nOnly the height can be changed.", true, false, 0, 0};
const SizingDlg::Rule kLockedHeight{
    L"高度锁定 Height locked", L"只能改变宽度。\nOnly the width can be changed.", false, true, 0, 0};
const SizingDlg::Rule kMinimum{L"最小尺寸 Minimum size",
                               L"不能小于 320 × 160 像素。\nNot smaller than 320 × 160 pixels.",
                               true,
                               true,
                               kMinimumWidth,
                               kMinimumHeight};

// Without a caption the dialog draws no frame of its own; this one draws a line.
class NoCaptionDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit NoCaptionDlg(CWnd* owner) : PageDlg(IDD_NO_CAPTION, owner) {}

protected:
    afx_msg void OnPaint()
    {
        CPaintDC dc(this);
        CRect edge;
        GetClientRect(edge);
        edge.DeflateRect(0, 0, 1, 1);
        const VPen pen(&dc, VGM.Dlg.clrFrameOuter);
        VGDrawBorder(&dc, edge);
    }
};

BEGIN_MESSAGE_MAP(NoCaptionDlg, PageDlg)
    ON_WM_PAINT()
END_MESSAGE_MAP()

class CloseOnlyDlg : public PageDlg
{
public:
    explicit CloseOnlyDlg(CWnd* owner) : PageDlg(IDD_CLOSE_ONLY, owner) { m_bHelpBtn = false; }
};

class DialogsDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit DialogsDlg(const PageHost& host)
        : PageDlg(IDD_DIALOGS, &host.window), m_host(host), m_modeless(&host.window),
          m_lockedWidth(&host.window, kLockedWidth), m_lockedHeight(&host.window, kLockedHeight),
          m_minimum(&host.window, kMinimum), m_noCaption(&host.window), m_closeOnly(&host.window)
    {
        m_bHelpBtn = false;
    }

    void Shoot(ShotWriter& shots)
    {
        shots.Take(*this, L"dialogs");
        ShootOne(shots, m_modeless, L"dialog-modeless");
        ShootOne(shots, m_lockedWidth, L"dialog-width-locked");
        ShootOne(shots, m_lockedHeight, L"dialog-height-locked");
        ShootOne(shots, m_minimum, L"dialog-minimum-size");
        ShootOne(shots, m_noCaption, L"dialog-no-caption");
        ShootOne(shots, m_closeOnly, L"dialog-close-only");

        ModalDlg modal(&m_host.window);
        bool shown = false;
        modal.m_whenShown = [&](CWnd& window) {
            shown = true;
            shots.Take(window, L"dialog-modal");
        };
        RunPageModal(modal);
        if (!shown)
            shots.Fail(L"dialog-modal");
    }

protected:
    afx_msg void OnShowModeless() { m_modeless.Open(); }
    afx_msg void OnShowModal()
    {
        ModalDlg modal(this);
        RunPageModal(modal);
    }
    afx_msg void OnLockWidth() { m_lockedWidth.Open(); }
    afx_msg void OnLockHeight() { m_lockedHeight.Open(); }
    afx_msg void OnMinimum() { m_minimum.Open(); }
    afx_msg void OnShowNoCaption() { m_noCaption.Open(); }
    afx_msg void OnShowCloseOnly() { m_closeOnly.Open(); }

private:
    static void ShootOne(ShotWriter& shots, PageDlg& dialog, LPCWSTR name)
    {
        dialog.Open();
        shots.Take(dialog, name);
        if (dialog.m_hWnd != nullptr)
            dialog.DestroyWindow();
    }

    PageHost m_host;
    ModelessDlg m_modeless;
    SizingDlg m_lockedWidth;
    SizingDlg m_lockedHeight;
    SizingDlg m_minimum;
    NoCaptionDlg m_noCaption;
    CloseOnlyDlg m_closeOnly;
};

BEGIN_MESSAGE_MAP(DialogsDlg, PageDlg)
    ON_BN_CLICKED(IDC_SHOW_MODELESS, &DialogsDlg::OnShowModeless)
    ON_BN_CLICKED(IDC_SHOW_MODAL, &DialogsDlg::OnShowModal)
    ON_BN_CLICKED(IDC_LOCK_WIDTH, &DialogsDlg::OnLockWidth)
    ON_BN_CLICKED(IDC_LOCK_HEIGHT, &DialogsDlg::OnLockHeight)
    ON_BN_CLICKED(IDC_MINIMUM, &DialogsDlg::OnMinimum)
    ON_BN_CLICKED(IDC_SHOW_NO_CAPTION, &DialogsDlg::OnShowNoCaption)
    ON_BN_CLICKED(IDC_SHOW_CLOSE_ONLY, &DialogsDlg::OnShowCloseOnly)
END_MESSAGE_MAP()

} // namespace

GalleryPage DialogsPage()
{
    return {
        L"对话框 Dialogs",
        L"模式、非模式、锁定方向、最小尺寸与无标题栏的对话框。\n"
        L"Modal and modeless dialogs, locked directions, minimum sizes, no caption.",
        [](const PageHost& host) -> std::unique_ptr<PageDlg> { return std::make_unique<DialogsDlg>(host); },
        [](PageDlg& page, const PageHost&, ShotWriter& shots) {
            static_cast<DialogsDlg&>(page).Shoot(shots);
        }};
}
