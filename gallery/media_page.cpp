// The page of the media player and the media view: both where pages can be shown, else what is missing.
#include "gallery/pages.h"
#include "gallery/resource.h"

namespace
{

constexpr LPCWSTR kFirstPage =
    L"about:<body style='background:#eef2fa;font-family:SimSun'><h3>播放器 Player</h3>"
    L"<p>输入网址或文件，按“转到”。<br>Enter an address or a file and press Go.</p></body>";
constexpr LPCWSTR kKeysPage =
    L"about:<body style='background:#faf6ee;font-family:SimSun'><h3>视图 View</h3>"
    L"<p>功能键、Ctrl+N、Ctrl+P、Ctrl+D、Alt+←、Alt+→ 和右键在此不起作用；Esc 关闭对话框。<br>"
    L"Function keys, Ctrl+N, Ctrl+P, Ctrl+D, Alt+Left, Alt+Right and the right button do nothing here; "
    L"Esc closes the dialog.</p></body>";

// Tells the page what the browser reports.
class Player : public CMediaCtrl
{
public:
    void OnBeforeNavigate2(LPCTSTR url, DWORD, LPCTSTR, CByteArray&, LPCTSTR, BOOL*) override
    {
        Report(L"BeforeNavigate2", url);
    }
    void OnNavigateComplete2(LPCTSTR url) override { Report(L"NavigateComplete2", url); }
    void OnDocumentComplete(LPCTSTR url) override { Report(L"DocumentComplete", url); }
    void OnNavigateError(LPCTSTR url, LPCTSTR, DWORD, BOOL*) override { Report(L"NavigateError", url); }

private:
    void Report(LPCWSTR event, LPCWSTR url)
    {
        // A page that is written into its address is no reading.
        constexpr LPCWSTR kWritten = L"about:<";
        const CString address(url);
        GetParent()->SetDlgItemText(IDC_MEDIA_EVENT,
                                    CString(event) + L": " +
                                        (address.Find(kWritten) == 0 ? address.Left(6) + L"…" : address));
    }
};

class MediaDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit MediaDlg(CWnd* owner) : PageDlg(IDD_MEDIA, owner) { m_bHelpBtn = false; }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        m_player.SubclassDlgItem(IDC_MEDIA_PLAYER, this);
        AddView();
        SetDlgItemText(IDC_MEDIA_ADDRESS, L"about:blank");
        m_player.Navigate(kFirstPage);
        if (!VGHasHtmlEngine()) {
            for (const int area : {IDC_MEDIA_PLAYER, IDC_MEDIA_PANE})
                GetDlgItem(area)->ShowWindow(SW_HIDE);
            GetDlgItem(IDC_MEDIA_NOTICE)->ShowWindow(SW_SHOW);
        }
        return TRUE;
    }

    afx_msg void OnGo()
    {
        CString address;
        GetDlgItemText(IDC_MEDIA_ADDRESS, address);
        m_player.Navigate(address);
    }
    afx_msg void OnPlay() { m_player.Play(TRUE); }
    afx_msg void OnStop() { m_player.Play(FALSE); }
    afx_msg void OnFullScreen()
    {
        m_player.SetFullScreen(IsDlgButtonChecked(IDC_MEDIA_FULL_SCREEN) == BST_CHECKED);
    }

private:
    // The view's own keys go to the parent of its parent: the pane is between it and this dialog.
    void AddView()
    {
        CWnd* const pane = GetDlgItem(IDC_MEDIA_PANE);
        CRect client;
        pane->GetClientRect(client);
        // Its constructor is for the framework: views delete themselves.
        auto* const view = static_cast<CMediaView*>(RUNTIME_CLASS(CMediaView)->CreateObject());
        if (view->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE | WS_TABSTOP, client, pane, IDC_MEDIA_VIEW))
            view->Navigate(kKeysPage);
    }

    Player m_player;
};

BEGIN_MESSAGE_MAP(MediaDlg, PageDlg)
    ON_BN_CLICKED(IDC_MEDIA_GO, &MediaDlg::OnGo)
    ON_BN_CLICKED(IDC_MEDIA_PLAY, &MediaDlg::OnPlay)
    ON_BN_CLICKED(IDC_MEDIA_STOP, &MediaDlg::OnStop)
    ON_BN_CLICKED(IDC_MEDIA_FULL_SCREEN, &MediaDlg::OnFullScreen)
END_MESSAGE_MAP()

} // namespace

GalleryPage MediaPage()
{
    return {L"媒体视图 Media view",
            L"浏览器控件作播放器，和不让页面收到程序按键的视图。\n"
            L"The browser control as a player, and in a view that keeps the program's keys from its page.",
            [](const PageHost& host) -> std::unique_ptr<PageDlg> {
                return std::make_unique<MediaDlg>(&host.window);
            },
            [](PageDlg& page, const PageHost&, ShotWriter& shots) { shots.Take(page, L"media-view"); }};
}
