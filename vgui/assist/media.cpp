#include "vgui/assist/media.h"

#include "vgui/assist/ole_scope.h"

#include <mshtml.h>
#include <utility>

bool VGHasHtmlEngine()
{
    const OleScope ole;
    IUnknown* document = nullptr;
    if (FAILED(::CoCreateInstance(__uuidof(HTMLDocument), nullptr, CLSCTX_INPROC_SERVER,
                                  IID_PPV_ARGS(&document))))
        return false;
    document->Release();
    return true;
}

// ---- CMediaCtrl

IMPLEMENT_DYNCREATE(CMediaCtrl, CHtmlView)

BEGIN_MESSAGE_MAP(CMediaCtrl, CHtmlView)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_MOUSEACTIVATE()
END_MESSAGE_MAP()

CMediaCtrl::CMediaCtrl() = default;

CMediaCtrl::~CMediaCtrl() = default;

BOOL CMediaCtrl::PreCreateWindow(CREATESTRUCT& cs)
{
    m_creating = true;
    return CHtmlView::PreCreateWindow(cs);
}

void CMediaCtrl::PreSubclassWindow()
{
    CHtmlView::PreSubclassWindow();
    // A window that is being created is none yet; it is ready in OnCreate.
    if (!m_creating)
        InitComent();
}

int CMediaCtrl::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CHtmlView::OnCreate(lpCreateStruct) == -1 || !InitComent())
        return -1;
    m_creating = false;
    return 0;
}

BOOL CMediaCtrl::InitComent()
{
    // The window's own background must not show through while the browser paints.
    ModifyStyle(0, WS_CLIPCHILDREN);
    AfxEnableControlContainer();
    if (m_creating)
        return TRUE;
    CRect client;
    GetClientRect(client);
    if (!m_wndBrowser.CreateControl(CLSID_WebBrowser, nullptr, WS_VISIBLE | WS_CHILD, client, this,
                                    AFX_IDW_PANE_FIRST))
        return FALSE;
    m_wndBrowser.GetControlUnknown()->QueryInterface(IID_IWebBrowser2,
                                                     reinterpret_cast<void**>(&m_pBrowserApp));
    return TRUE;
}

bool CMediaCtrl::HasBrowser() const
{
    return m_wndBrowser.m_hWnd != nullptr;
}

void CMediaCtrl::PostNcDestroy()
{
    m_creating = false;
}

void CMediaCtrl::OnSize(UINT nType, int cx, int cy)
{
    CHtmlView::OnSize(nType, cx, cy);
    // A view in a frame leaves its edges to the frame; here the browser has the whole client area.
    if (!HasBrowser())
        return;
    CRect place;
    m_wndBrowser.GetWindowRect(place);
    ScreenToClient(place);
    if (place != CRect(0, 0, cx, cy))
        m_wndBrowser.MoveWindow(0, 0, cx, cy);
}

int CMediaCtrl::OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message)
{
    // There is no frame to make this its active view.
    return CWnd::OnMouseActivate(pDesktopWnd, nHitTest, message);
}

void CMediaCtrl::Navigate(LPCWSTR url, DWORD flags, LPCWSTR target, LPCWSTR headers, LPVOID postData,
                          DWORD postLen)
{
    if (HasBrowser() && url != nullptr)
        CHtmlView::Navigate(url, flags, target, headers, postData, postLen);
}

void CMediaCtrl::Navigate2(LPITEMIDLIST idList, DWORD flags, LPCWSTR target)
{
    if (HasBrowser() && idList != nullptr)
        CHtmlView::Navigate2(idList, flags, target);
}

void CMediaCtrl::Navigate2(LPCWSTR url, DWORD flags, CByteArray& postData, LPCWSTR target, LPCWSTR headers)
{
    if (HasBrowser() && url != nullptr)
        CHtmlView::Navigate2(url, flags, postData, target, headers);
}

void CMediaCtrl::Navigate2(LPCWSTR url, DWORD flags, LPCWSTR target, LPCWSTR headers, LPVOID postData,
                           DWORD postLen)
{
    if (HasBrowser() && url != nullptr)
        CHtmlView::Navigate2(url, flags, target, headers, postData, postLen);
}

void CMediaCtrl::Play(int play)
{
    if (!HasBrowser())
        return;
    if (play != 0)
        Refresh();
    else
        Stop();
}

BOOL CMediaCtrl::GetFullScreen()
{
    return HasBrowser() && CHtmlView::GetFullScreen();
}

void CMediaCtrl::SetFullScreen(int fullScreen)
{
    if (HasBrowser())
        CHtmlView::SetFullScreen(fullScreen != 0);
}

// ---- CDHtmlSpecEventSink

CDHtmlSpecEventSink::CDHtmlSpecEventSink() = default;

CDHtmlSpecEventSink::~CDHtmlSpecEventSink()
{
    SetDocument(nullptr);
}

void CDHtmlSpecEventSink::SetDocument(LPDISPATCH document)
{
    if (document != nullptr)
        document->AddRef();
    if (const LPDISPATCH former = std::exchange(m_document, document)) {
        DisconnectDHtmlEvents(former);
        former->Release();
    }
    if (document != nullptr)
        ConnectDHtmlEvents(document);
}

// ---- CMediaView

IMPLEMENT_DYNCREATE(CMediaView, CHtmlView)

BEGIN_MESSAGE_MAP(CMediaView, CHtmlView)
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CMediaView::CMediaView() = default;

CMediaView::~CMediaView() = default;

BOOL CMediaView::PreCreateWindow(CREATESTRUCT& cs)
{
    cs.style |= WS_CLIPCHILDREN;
    return CHtmlView::PreCreateWindow(cs);
}

namespace
{

// A key that does nothing while another one is down.
struct BlockedKey {
    WPARAM key;
    int modifier;
    LPCWSTR debugText;
};

constexpr BlockedKey kBlockedKeys[] = {
    {'N', VK_CONTROL, L"Ctrl-N ignored\r\n"},      {'P', VK_CONTROL, L"Ctrl-P ignored\r\n"},
    {'D', VK_CONTROL, L"Ctrl-D ignored\r\n"},      {VK_LEFT, VK_MENU, L"Atl-Left ignored\r\n"}, // spelt so
    {VK_RIGHT, VK_MENU, L"Atl-Right ignored\r\n"},
};

bool IsKeyMessage(UINT message)
{
    return message == WM_KEYDOWN || message == WM_KEYUP || message == WM_SYSKEYDOWN || message == WM_SYSKEYUP;
}

bool IsProgramKey(WPARAM key)
{
    return (key >= VK_F1 && key <= VK_F12) || key == VK_HELP || key == VK_ESCAPE;
}

const BlockedKey* FindBlockedKey(WPARAM key)
{
    for (const BlockedKey& blocked : kBlockedKeys) {
        if (blocked.key == key && ::GetAsyncKeyState(blocked.modifier) < 0)
            return &blocked;
    }
    return nullptr;
}

bool IsSameObject(IUnknown* one, IUnknown* other)
{
    IUnknown* identities[2] = {};
    for (int i = 0; i < 2; ++i) {
        IUnknown* const object = i == 0 ? one : other;
        // Only the pointer counts, which the object keeps for as long as it lives.
        if (object != nullptr && SUCCEEDED(object->QueryInterface(IID_PPV_ARGS(&identities[i]))))
            identities[i]->Release();
    }
    return identities[0] == identities[1];
}

// Lets a window handle a key as if it had the focus: in the copy the page's window is not named, so that
// nothing can bring the key back to the page.
void HandOver(CWnd* window, const MSG& key)
{
    if (window == nullptr)
        return;
    MSG own = key;
    own.hwnd = window->m_hWnd;
    if (!window->PreTranslateMessage(&own))
        ::SendMessage(own.hwnd, own.message, own.wParam, own.lParam);
}

} // namespace

BOOL CMediaView::PreTranslateMessage(MSG* pMsg)
{
    if (IsKeyMessage(pMsg->message)) {
        if (IsProgramKey(pMsg->wParam)) {
            ::OutputDebugString(L"Function key ignored\r\n");
            CWnd* const parent = GetParent();
            // The handler may destroy this view: nothing of it is touched any more.
            HandOver(parent != nullptr ? parent->GetParent() : nullptr, *pMsg);
            return TRUE;
        }
        if (const BlockedKey* const blocked = FindBlockedKey(pMsg->wParam)) {
            ::OutputDebugString(blocked->debugText);
            return TRUE;
        }
    }
    if (pMsg->message == WM_RBUTTONDOWN || pMsg->message == WM_RBUTTONDBLCLK)
        return TRUE;
    return CHtmlView::PreTranslateMessage(pMsg);
}

void CMediaView::OnDocumentComplete(LPCTSTR lpszURL)
{
    CHtmlView::OnDocumentComplete(lpszURL);
    const LPDISPATCH document = GetHtmlDocument();
    SetDocument(document);
    if (document != nullptr)
        document->Release();
}

void CMediaView::OnNavigateComplete2(LPCTSTR strURL)
{
    CHtmlView::OnNavigateComplete2(strURL);
    const LPDISPATCH document = GetHtmlDocument();
    if (!IsSameObject(document, GetSinkDocument()))
        SetDocument(nullptr);
    if (document != nullptr)
        document->Release();
}

void CMediaView::OnDestroy()
{
    SetDocument(nullptr);
    CHtmlView::OnDestroy();
}
