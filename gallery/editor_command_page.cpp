// The page of the editor command: a dialog that steps aside while a point is picked in the main window.
#include "gallery/pages.h"
#include "gallery/point_canvas.h"
#include "gallery/resource.h"

namespace
{

class EditorCommandDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit EditorCommandDlg(const PageHost& host) : PageDlg(IDD_EDITOR_COMMAND, &host.window), m_host(host)
    {
        m_bHelpBtn = false;
    }
    EditorCommandDlg(const EditorCommandDlg&) = delete;
    EditorCommandDlg& operator=(const EditorCommandDlg&) = delete;
    ~EditorCommandDlg() override { EndPick(); }

    // The dialog is hidden from here until the drawing area is clicked or the pick is cancelled.
    afx_msg void OnPick()
    {
        // Beginning cancels an open pick, whose dialog then comes back before this one steps aside.
        m_host.canvas.BeginPick([this](std::optional<CPoint> point) { PickDone(point); });
        m_command = std::make_unique<VEditorCommand>(this);
    }

protected:
    // The modal form of the same dialog. This one hides meanwhile, so that there is one to answer.
    afx_msg void OnPickModal()
    {
        const VoWindowShow hidden(this, SW_HIDE);
        EditorCommandDlg modal(m_host);
        modal.m_offersModal = false;
        RunPageModal(modal);
    }

    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        GetDlgItem(IDC_PICK_MODAL)->EnableWindow(m_offersModal);
        AddToolTips(IDC_PICKED, L"绘图区坐标，像素。 In pixels of the drawing area.");
        return TRUE;
    }
    afx_msg void OnDestroy()
    {
        EndPick();
        PageDlg::OnDestroy();
    }

private:
    void EndPick()
    {
        if (m_command != nullptr)
            m_host.canvas.CancelPick();
    }

    void PickDone(std::optional<CPoint> point)
    {
        if (point && m_hWnd != nullptr) {
            CString text;
            text.Format(L"X = %d, Y = %d", point->x, point->y);
            SetDlgItemText(IDC_PICKED, text);
        }
        m_command = nullptr;
    }

    PageHost m_host;
    std::unique_ptr<VEditorCommand> m_command; // while a point is being picked
    bool m_offersModal = true;
};

BEGIN_MESSAGE_MAP(EditorCommandDlg, PageDlg)
    ON_BN_CLICKED(IDC_PICK, &EditorCommandDlg::OnPick)
    ON_BN_CLICKED(IDC_PICK_MODAL, &EditorCommandDlg::OnPickModal)
    ON_WM_DESTROY()
END_MESSAGE_MAP()

void Shoot(EditorCommandDlg& page, const PageHost& host, ShotWriter& shots)
{
    shots.Take(page, L"editor-command");
    page.OnPick();
    if (page.IsWindowVisible())
        shots.Fail(L"editor-command-picking");
    else
        shots.Take(host.window, L"editor-command-picking");

    CRect area;
    host.canvas.GetClientRect(area);
    const CPoint point = area.CenterPoint();
    host.canvas.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(point.x, point.y));
    host.canvas.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(point.x, point.y));
    if (page.IsWindowVisible())
        shots.Take(page, L"editor-command-picked");
    else
        shots.Fail(L"editor-command-picked");
}

} // namespace

GalleryPage EditorCommandPage()
{
    return {L"编辑器命令 Editor command",
            L"对话框让开，在主窗口中拾取一点后返回。\n"
            L"The dialog steps aside while a point is picked in the main window.",
            [](const PageHost& host) -> std::unique_ptr<PageDlg> {
                return std::make_unique<EditorCommandDlg>(host);
            },
            [](PageDlg& page, const PageHost& host, ShotWriter& shots) {
                Shoot(static_cast<EditorCommandDlg&>(page), host, shots);
            }};
}
