// A browser view's window, and the members of the browser that it offers.
#include <afxhtml.h>

#include "ole_ptr.h"

#include <shlobj.h>

using namespace afx_subset;

IMPLEMENT_DYNCREATE(CHtmlView, CView)

BEGIN_MESSAGE_MAP(CHtmlView, CView)
    ON_WM_SIZE()
    ON_WM_PAINT()
    ON_WM_SETFOCUS()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

namespace
{

// Members of the browser, by the numbers that its type library gives them.
constexpr DISPID kGoBack = 100;
constexpr DISPID kGoForward = 101;
constexpr DISPID kGoHome = 102;
constexpr DISPID kNavigate = 104;
constexpr DISPID kStop = 106;
constexpr DISPID kDocument = 203;
constexpr DISPID kLocationName = 210;
constexpr DISPID kLocationUrl = 211;
constexpr DISPID kBusy = 212;
constexpr DISPID kFullScreen = 407;
constexpr DISPID kNavigate2 = 500;
constexpr DISPID kSilent = 551;

template <class... Args>
void Call(CWnd& browser, DISPID member, const char* types, Args... args)
{
    try {
        browser.InvokeHelper(member, DISPATCH_METHOD, VT_EMPTY, nullptr, reinterpret_cast<const BYTE*>(types),
                             args...);
    } catch (CException* e) {
        TRACE(_T("The browser refuses member %ld.\n"), member);
        e->Delete();
    }
}

template <class T>
T Get(const CWnd& browser, DISPID property, VARTYPE type, T value = T())
{
    try {
        browser.GetProperty(property, type, &value);
    } catch (CException* e) {
        e->Delete();
    }
    return value;
}

void Put(CWnd& browser, DISPID property, BOOL value)
{
    try {
        browser.SetProperty(property, VT_BOOL, value);
    } catch (CException* e) {
        e->Delete();
    }
}

// An optional parameter that is left out.
COleVariant Missing()
{
    return COleVariant(static_cast<long>(DISP_E_PARAMNOTFOUND), VT_ERROR);
}

COleVariant OptionalText(LPCTSTR text)
{
    return text != nullptr ? COleVariant(text) : Missing();
}

// An array of bytes, a copy.
COleVariant OptionalBytes(const void* data, size_t size)
{
    if (data == nullptr || size == 0 || size > ULONG_MAX)
        return Missing();
    COleVariant bytes;
    bytes.parray = ::SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(size));
    void* place = nullptr;
    if (bytes.parray == nullptr)
        AfxThrowMemoryException();
    bytes.vt = VT_ARRAY | VT_UI1;
    if (SUCCEEDED(::SafeArrayAccessData(bytes.parray, &place))) {
        std::memcpy(place, data, size);
        ::SafeArrayUnaccessData(bytes.parray);
    }
    return bytes;
}

void NavigateTo(CWnd& browser, COleVariant place, DWORD flags, COleVariant frame, COleVariant data,
                COleVariant headers)
{
    COleVariant flagBits(static_cast<long>(flags));
    Call(browser, kNavigate2, VTS_PVARIANT VTS_PVARIANT VTS_PVARIANT VTS_PVARIANT VTS_PVARIANT,
         static_cast<VARIANT*>(&place), static_cast<VARIANT*>(&flagBits), static_cast<VARIANT*>(&frame),
         static_cast<VARIANT*>(&data), static_cast<VARIANT*>(&headers));
}

} // namespace

CHtmlView::CHtmlView() = default;

CHtmlView::~CHtmlView()
{
    // There is one still when the window did not go by this object.
    ReleaseMember(m_pBrowserApp);
}

// ---- The window

BOOL CHtmlView::Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                       CWnd* pParentWnd, UINT nID, CCreateContext* pContext)
{
    if (!CView::Create(lpszClassName, lpszWindowName, dwStyle, rect, pParentWnd, nID, pContext))
        return FALSE;
    AfxEnableControlContainer();
    CRect client;
    GetClientRect(client);
    if (!m_wndBrowser.CreateControl(CLSID_WebBrowser, lpszWindowName, WS_VISIBLE | WS_CHILD, client, this,
                                    AFX_IDW_PANE_FIRST)) {
        DestroyWindow();
        return FALSE;
    }
    m_wndBrowser.GetControlUnknown()->QueryInterface(IID_IWebBrowser2,
                                                     reinterpret_cast<void**>(&m_pBrowserApp));
    return TRUE;
}

void CHtmlView::OnSize(UINT nType, int cx, int cy)
{
    CView::OnSize(nType, cx, cy);
    if (m_wndBrowser.m_hWnd != nullptr)
        m_wndBrowser.MoveWindow(0, 0, cx, cy);
}

void CHtmlView::OnPaint()
{
    // The browser paints itself.
    Default();
}

void CHtmlView::OnDraw(CDC*) {}

void CHtmlView::OnSetFocus(CWnd* pOldWnd)
{
    CView::OnSetFocus(pOldWnd);
    if (m_wndBrowser.m_hWnd != nullptr)
        m_wndBrowser.SetFocus();
}

void CHtmlView::OnDestroy()
{
    ReleaseMember(m_pBrowserApp);
    CView::OnDestroy();
}

BOOL CHtmlView::PreTranslateMessage(MSG* pMsg)
{
    return CView::PreTranslateMessage(pMsg) || m_wndBrowser.TranslateKey(pMsg);
}

// ---- Methods

void CHtmlView::Navigate(LPCTSTR URL, DWORD dwFlags, LPCTSTR lpszTargetFrameName, LPCTSTR lpszHeaders,
                         LPVOID lpvPostData, DWORD dwPostDataLen)
{
    if (URL == nullptr)
        return;
    COleVariant flags(static_cast<long>(dwFlags));
    COleVariant frame = OptionalText(lpszTargetFrameName);
    COleVariant data = OptionalBytes(lpvPostData, dwPostDataLen);
    COleVariant headers = OptionalText(lpszHeaders);
    Call(m_wndBrowser, kNavigate, VTS_BSTR VTS_PVARIANT VTS_PVARIANT VTS_PVARIANT VTS_PVARIANT, URL,
         static_cast<VARIANT*>(&flags), static_cast<VARIANT*>(&frame), static_cast<VARIANT*>(&data),
         static_cast<VARIANT*>(&headers));
}

void CHtmlView::Navigate2(LPITEMIDLIST pIDL, DWORD dwFlags, LPCTSTR lpszTargetFrameName)
{
    if (pIDL != nullptr)
        NavigateTo(m_wndBrowser, OptionalBytes(pIDL, ::ILGetSize(pIDL)), dwFlags,
                   OptionalText(lpszTargetFrameName), Missing(), Missing());
}

void CHtmlView::Navigate2(LPCTSTR lpszURL, DWORD dwFlags, LPCTSTR lpszTargetFrameName, LPCTSTR lpszHeaders,
                          LPVOID lpvPostData, DWORD dwPostDataLen)
{
    if (lpszURL != nullptr)
        NavigateTo(m_wndBrowser, lpszURL, dwFlags, OptionalText(lpszTargetFrameName),
                   OptionalBytes(lpvPostData, dwPostDataLen), OptionalText(lpszHeaders));
}

void CHtmlView::Navigate2(LPCTSTR lpszURL, DWORD dwFlags, CByteArray& baPostedData,
                          LPCTSTR lpszTargetFrameName, LPCTSTR lpszHeader)
{
    Navigate2(lpszURL, dwFlags, lpszTargetFrameName, lpszHeader, baPostedData.GetData(),
              static_cast<DWORD>(baPostedData.GetSize()));
}

void CHtmlView::GoBack()
{
    Call(m_wndBrowser, kGoBack, VTS_NONE);
}

void CHtmlView::GoForward()
{
    Call(m_wndBrowser, kGoForward, VTS_NONE);
}

void CHtmlView::GoHome()
{
    Call(m_wndBrowser, kGoHome, VTS_NONE);
}

void CHtmlView::Refresh()
{
    Call(m_wndBrowser, DISPID_REFRESH, VTS_NONE);
}

void CHtmlView::Stop()
{
    Call(m_wndBrowser, kStop, VTS_NONE);
}

// ---- Properties

CString CHtmlView::GetLocationName() const
{
    return Get<CString>(m_wndBrowser, kLocationName, VT_BSTR);
}

CString CHtmlView::GetLocationURL() const
{
    return Get<CString>(m_wndBrowser, kLocationUrl, VT_BSTR);
}

LPDISPATCH CHtmlView::GetHtmlDocument() const
{
    return Get<LPDISPATCH>(m_wndBrowser, kDocument, VT_DISPATCH);
}

BOOL CHtmlView::GetBusy() const
{
    return Get<BOOL>(m_wndBrowser, kBusy, VT_BOOL);
}

READYSTATE CHtmlView::GetReadyState() const
{
    return static_cast<READYSTATE>(Get<long>(m_wndBrowser, DISPID_READYSTATE, VT_I4));
}

BOOL CHtmlView::GetFullScreen() const
{
    return Get<BOOL>(m_wndBrowser, kFullScreen, VT_BOOL);
}

void CHtmlView::SetFullScreen(BOOL bNewValue)
{
    Put(m_wndBrowser, kFullScreen, bNewValue);
}

BOOL CHtmlView::GetSilent() const
{
    return Get<BOOL>(m_wndBrowser, kSilent, VT_BOOL);
}

void CHtmlView::SetSilent(BOOL bNewValue)
{
    Put(m_wndBrowser, kSilent, bNewValue);
}
