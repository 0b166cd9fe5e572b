#include "vgui/assist/assist_system_dlg.h"

#include "vgui/assist/assist_player.h"
#include "vgui/assist/assist_topic.h"
#include "vgui/assist/resource_scope.h"
#include "vgui/foundation/attached.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/res/resource.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr int kMinWidth = 885; // pixels
constexpr int kMinHeight = 500;
constexpr int kMinColumn = 100;
constexpr int kDefaultColumn = 150;

// Full screen begins and ends with the focus, last of all: what activates the dialog tells the host, who may
// close it.
constexpr UINT kReframe = SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED;

constexpr UINT kPlaybackControls[] = {
    IDC_ASSIST_UNUSED_FIRST, IDC_ASSIST_UNUSED_FIRST + 1, IDC_ASSIST_UNUSED_LAST - 1,
    IDC_ASSIST_UNUSED_LAST,  IDC_ASSIST_FULL_SCREEN,      IDC_ASSIST_ZOOM_IN,
    IDC_ASSIST_ZOOM_OUT,     IDC_ASSIST_RESTORE,          IDC_ASSIST_POSITION};

// The edge that is dragged gives way, so that the window stays in its place.
void KeepMinimum(RECT& rect, UINT side)
{
    const bool left = side == WMSZ_LEFT || side == WMSZ_TOPLEFT || side == WMSZ_BOTTOMLEFT;
    const bool top = side == WMSZ_TOP || side == WMSZ_TOPLEFT || side == WMSZ_TOPRIGHT;
    const LONG wider = kMinWidth - (rect.right - rect.left);
    const LONG higher = kMinHeight - (rect.bottom - rect.top);
    if (wider > 0)
        (left ? rect.left : rect.right) += left ? -wider : wider;
    if (higher > 0)
        (top ? rect.top : rect.bottom) += top ? -higher : higher;
}

} // namespace

IMPLEMENT_DYNAMIC(CAssistSystemDlg, CDialog)

BEGIN_MESSAGE_MAP(CAssistSystemDlg, CDialog)
    ON_WM_SIZE()
    ON_WM_SIZING()
    ON_WM_TIMER()
    ON_NOTIFY(LVN_ITEMCHANGED, IDC_ASSIST_VIDEOS, &CAssistSystemDlg::OnVideoChanged)
    ON_BN_CLICKED(IDC_ASSIST_FULL_SCREEN, &CAssistSystemDlg::OnFullScreen)
    ON_COMMAND_RANGE(IDC_ASSIST_UNUSED_FIRST, IDC_ASSIST_UNUSED_LAST, &CAssistSystemDlg::OnUnusedButton)
    ON_COMMAND_RANGE(IDC_ASSIST_ZOOM_IN, IDC_ASSIST_RESTORE, &CAssistSystemDlg::OnUnusedButton)
    ON_NOTIFY(NM_RELEASEDCAPTURE, IDC_ASSIST_TRACK, &CAssistSystemDlg::OnTrackReleased)
    ON_MESSAGE(CAssistSystemDlg::kShowAgain, &CAssistSystemDlg::OnShowAgain)
    ON_MESSAGE(CAssistSystemDlg::kTellMissing, &CAssistSystemDlg::OnTellMissing)
    ON_WM_PAINT()
    ON_WM_QUERYDRAGICON()
END_MESSAGE_MAP()

CAssistSystemDlg::CAssistSystemDlg(CWnd* parent)
    : CDialog(IDD_ASSIST_SYSTEM, parent),
      m_hIcon(::LoadIconW(VGLibraryInstance(), MAKEINTRESOURCEW(IDI_ASSIST_SYSTEM)))
{
}

CAssistSystemDlg::~CAssistSystemDlg() = default;

bool CAssistSystemDlg::LoadTopic(LPCWSTR topic)
{
    const HWND window = m_hWnd;
    const std::optional<AssistTopic> found = LoadAssistTopic(topic, m_strCaption);
    const bool closed = window != nullptr && !VGIsAttached(this, window);
    if (!found || closed)
        return false;
    m_strFolder = found->folder;
    m_strCaption = found->caption;
    return true;
}

bool CAssistSystemDlg::Open()
{
    {
        const VResourceScope resources;
        m_opening = true;
        Create(IDD_ASSIST_SYSTEM, m_pParentWnd);
        m_opening = false;
    }
    if (m_hWnd != nullptr)
        return true;
    delete this;
    return false;
}

void CAssistSystemDlg::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, IDCANCEL, m_btnExit);
    DDX_Control(pDX, IDC_ASSIST_FULL_SCREEN, m_btnFullScreen);
    DDX_Control(pDX, IDC_ASSIST_INSTRUCTIONS, m_edtInstructions);
    DDX_Control(pDX, IDC_ASSIST_VIDEOS, m_lstVideos);
}

BOOL CAssistSystemDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    SetIcon(m_hIcon, TRUE);
    SetIcon(m_hIcon, FALSE);
    m_btnExit.SetFlat(FALSE);
    m_btnFullScreen.SetFlat(FALSE);
    MakePlayer();
    RegisterControls();
    FillVideoList();
    return TRUE;
}

void CAssistSystemDlg::RegisterControls()
{
    constexpr UINT followBottom = VDlgResizer::MoveTop | VDlgResizer::MoveBottom;
    m_resizer.Init(this);
    m_resizer.AddControl(IDC_ASSIST_GROUP, VDlgResizer::MoveBottom);
    m_resizer.AddControl(IDC_ASSIST_INSTRUCTIONS, VDlgResizer::MoveBottom);
    m_resizer.AddControl(IDC_ASSIST_PLAYER, VDlgResizer::MoveRight | VDlgResizer::MoveBottom);
    m_resizer.AddControl(IDC_ASSIST_TRACK, VDlgResizer::MoveRight | followBottom);
    m_resizer.AddControl(IDC_ASSIST_POSITION, VDlgResizer::MoveLeft | VDlgResizer::MoveRight | followBottom);
    for (const UINT id : kPlaybackControls) {
        if (id != IDC_ASSIST_POSITION)
            m_resizer.AddControl(id, followBottom);
    }
    m_resizer.AddControl(IDCANCEL, followBottom);
}

std::unique_ptr<VAssistPlayer> CAssistSystemDlg::CreatePlayer()
{
    return VGCreateAssistPlayer();
}

void CAssistSystemDlg::MakePlayer()
{
    CWnd& place = *GetDlgItem(IDC_ASSIST_PLAYER);
    CRect rect;
    place.GetWindowRect(rect);
    ScreenToClient(rect);
    m_player = CreatePlayer();
    if (m_player != nullptr && !m_player->Create(*this, rect))
        m_player.reset();
    if (m_player != nullptr)
        place.ShowWindow(SW_HIDE);
    else
        place.SetWindowText(L"系统中没有可用的 HTML 引擎，无法播放视频。");
}

CWnd& CAssistSystemDlg::PlayerWindow() const
{
    CWnd* const window = m_player != nullptr ? m_player->Window() : nullptr;
    return window != nullptr && window->m_hWnd != nullptr ? *window : *GetDlgItem(IDC_ASSIST_PLAYER);
}

// A player may consist of several windows.
bool CAssistSystemDlg::IsForPlayer(HWND window) const
{
    const HWND player = PlayerWindow().m_hWnd;
    return window == player || ::IsChild(player, window);
}

void CAssistSystemDlg::FillVideoList()
{
    if (m_hWnd == nullptr)
        return;
    SetWindowText(m_strCaption.IsEmpty() ? CString(L"帮助系统") : L"帮助系统 - " + m_strCaption);
    const std::vector<CString> titles = ListAssistVideos(m_strFolder);
    int longest = 0;
    for (const CString& title : titles)
        longest = std::max(longest, title.GetLength());
    m_lstVideos.DeleteAllItems();
    while (m_lstVideos.DeleteColumn(0))
        ;
    m_lstVideos.InsertColumn(0, L"视频名称", LVCFMT_LEFT, TitleWidth(longest));
    for (size_t i = 0; i < titles.size(); ++i)
        m_lstVideos.InsertItem(static_cast<int>(i), titles[i]);
    m_missing.Empty();
    if (titles.empty()) {
        m_edtInstructions.SetWindowText(L"");
        StopVideo();
        EnablePlayback(false);
        return;
    }
    m_lstVideos.EnsureVisible(0, FALSE);
    // Last, since it loads the video.
    m_lstVideos.SetItemState(0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

int CAssistSystemDlg::TitleWidth(int longest)
{
    CClientDC dc(this);
    const CFont* const font = GetFont();
    const VSelectScope selected(dc.m_hDC, font != nullptr ? font->m_hObject : nullptr);
    TEXTMETRIC metrics;
    dc.GetTextMetrics(&metrics);
    const int width = (metrics.tmAveCharWidth + 2) * longest;
    return width < 1 ? kDefaultColumn : std::max(width, kMinColumn);
}

void CAssistSystemDlg::EnablePlayback(bool enable)
{
    const HWND window = m_hWnd;
    const HWND focus = ::GetFocus();
    for (const UINT id : kPlaybackControls) {
        if (const HWND control = ::GetDlgItem(window, id))
            ::EnableWindow(control, enable);
    }
    // A button that is disabled passes on even a focus that it did not have.
    if (::GetFocus() != focus && ::IsChild(window, focus) && ::IsWindowEnabled(focus))
        ::SetFocus(focus);
}

void CAssistSystemDlg::OnVideoChanged(NMHDR* pNMHDR, LRESULT* pResult)
{
    *pResult = 0;
    // A change of the focus, say, must not start the video again.
    const NMLISTVIEW& change = *reinterpret_cast<const NMLISTVIEW*>(pNMHDR);
    if ((change.uChanged & LVIF_STATE) != 0 && ((change.uNewState ^ change.uOldState) & LVIS_SELECTED) != 0)
        LoadVideo();
}

void CAssistSystemDlg::LoadVideo()
{
    const int selected = m_lstVideos.GetNextItem(-1, LVNI_SELECTED);
    if (selected < 0) {
        if (m_lstVideos.GetItemCount() == 0)
            EnablePlayback(false);
        return;
    }
    const CString base = m_strFolder + m_lstVideos.GetItemText(selected, 0);
    m_edtInstructions.SetWindowText(ReadAssistInstructions(base + L".txt"));
    CString video = base + L".swf";
    const bool exists = AssistFileExists(video);
    m_missing = exists ? CString() : video;
    if (!exists) {
        StopVideo();
        // While a message box is up, the dialog may be destroyed, and the list is still in its notification.
        PostMessage(kTellMissing);
        EnablePlayback(false);
        return;
    }
    EnablePlayback(true);
    video.Replace(L"\\\\", L"\\");
    if (m_player != nullptr)
        m_player->Navigate(video);
}

LRESULT CAssistSystemDlg::OnTellMissing(WPARAM, LPARAM)
{
    // Another video may be selected by now.
    const CString missing = std::exchange(m_missing, CString());
    if (!missing.IsEmpty())
        AfxMessageBox(L"文件 " + missing + L" 不存在！"); // the dialog may be gone afterwards
    return 0;
}

// The last video must not go on under another one's instructions.
void CAssistSystemDlg::StopVideo()
{
    if (m_player != nullptr)
        m_player->Navigate(L"about:blank");
}

void CAssistSystemDlg::OnSize(UINT nType, int cx, int cy)
{
    CDialog::OnSize(nType, cx, cy);
    m_resizer.ResizeAll(nType, cx, cy);
    if (!m_bFullScreen && nType != SIZE_MINIMIZED)
        PlacePlayer();
}

void CAssistSystemDlg::PlacePlayer()
{
    const CWnd* const place = GetDlgItem(IDC_ASSIST_PLAYER);
    if (place == nullptr || m_player == nullptr)
        return;
    CRect rect;
    place->GetWindowRect(rect);
    ScreenToClient(rect);
    PlayerWindow().MoveWindow(rect);
}

void CAssistSystemDlg::OnSizing(UINT nSide, LPRECT lpRect)
{
    CDialog::OnSizing(nSide, lpRect);
    if (lpRect != nullptr)
        KeepMinimum(*lpRect, nSide);
}

void CAssistSystemDlg::OnTimer(UINT_PTR nIDEvent)
{
    CDialog::OnTimer(nIDEvent);
}

void CAssistSystemDlg::OnFullScreen()
{
    EnterFullScreen();
}

void CAssistSystemDlg::OnUnusedButton(UINT) {}

void CAssistSystemDlg::OnTrackReleased(NMHDR*, LRESULT* pResult)
{
    *pResult = 0;
}

LRESULT CAssistSystemDlg::OnShowAgain(WPARAM, LPARAM)
{
    if (IsWindowVisible())
        ShowWindow(SW_SHOW);
    return 1;
}

void CAssistSystemDlg::EnterFullScreen()
{
    if (m_bFullScreen || m_hWnd == nullptr)
        return;
    m_bFullScreen = true;
    if (m_player != nullptr)
        m_player->SetFullScreen(TRUE);
    PlayerWindow().GetWindowRect(m_rcPlayer);
    GetWindowRect(m_rcDialog);
    HideOtherControls();
    ModifyStyle(WS_CAPTION | WS_THICKFRAME, 0);
    const CClientDC dc(this);
    const CSize screen(dc.GetDeviceCaps(HORZRES), dc.GetDeviceCaps(VERTRES));
    SetWindowPos(nullptr, 0, 0, screen.cx, screen.cy, kReframe);
    PlayerWindow().SetWindowPos(&CWnd::wndTop, 0, 0, screen.cx, screen.cy, SWP_SHOWWINDOW);
    // Escape must have somewhere to go.
    PlayerWindow().SetFocus();
}

void CAssistSystemDlg::HideOtherControls()
{
    const HWND player = PlayerWindow().m_hWnd;
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (child == player || (::GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) == 0)
            continue;
        m_hidden.push_back(child);
    }
    for (const HWND control : m_hidden)
        ::ShowWindow(control, SW_HIDE);
}

void CAssistSystemDlg::LeaveFullScreen()
{
    if (!m_bFullScreen)
        return;
    if (m_player != nullptr)
        m_player->SetFullScreen(FALSE);
    for (const HWND control : m_hidden)
        ::ShowWindow(control, SW_SHOW);
    m_hidden.clear();
    ModifyStyle(0, WS_CAPTION | WS_THICKFRAME);
    SetWindowPos(nullptr, m_rcDialog.left, m_rcDialog.top, m_rcDialog.Width(), m_rcDialog.Height(), kReframe);
    CRect player = m_rcPlayer;
    ScreenToClient(player);
    PlayerWindow().MoveWindow(player);
    m_bFullScreen = false;
    m_lstVideos.SetFocus();
}

BOOL CAssistSystemDlg::PreTranslateMessage(MSG* pMsg)
{
    if (m_hWnd != nullptr && IsForPlayer(pMsg->hwnd)) {
        switch (pMsg->message) {
        case WM_LBUTTONDBLCLK:
            if (m_bFullScreen)
                LeaveFullScreen();
            else
                EnterFullScreen();
            return TRUE;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_RBUTTONDOWN:
            return TRUE;
        default:
            break;
        }
    }
    if (pMsg->message == WM_KEYDOWN && pMsg->wParam == VK_ESCAPE && m_bFullScreen) {
        LeaveFullScreen();
        return TRUE;
    }
    return CDialog::PreTranslateMessage(pMsg);
}

void CAssistSystemDlg::OnPaint()
{
    if (!IsIconic()) {
        CDialog::OnPaint();
        return;
    }
    const CPaintDC dc(this);
    SendMessage(WM_ICONERASEBKGND, reinterpret_cast<WPARAM>(dc.m_hDC));
    CRect client;
    GetClientRect(client);
    const CSize icon(::GetSystemMetrics(SM_CXICON), ::GetSystemMetrics(SM_CYICON));
    ::DrawIcon(dc.m_hDC, (client.Width() - icon.cx + 1) / 2, (client.Height() - icon.cy + 1) / 2, m_hIcon);
}

HCURSOR CAssistSystemDlg::OnQueryDragIcon()
{
    return m_hIcon;
}

void CAssistSystemDlg::OnOK() {}

void CAssistSystemDlg::OnCancel()
{
    DestroyWindow();
}

void CAssistSystemDlg::PostNcDestroy()
{
    CDialog::PostNcDestroy();
    // The framework still works on a dialog that ends while it is created.
    if (!m_opening)
        delete this;
}
