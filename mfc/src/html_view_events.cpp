// The browser's events in a browser view.
#include <afxhtml.h>

namespace
{

// The value behind any number of references.
const VARIANT& Referenced(const VARIANT* value)
{
    while (value->vt == (VT_VARIANT | VT_BYREF) && value->pvarVal != nullptr)
        value = value->pvarVal;
    return *value;
}

// Empty for what has no text.
CString TextOf(const VARIANT* value)
{
    COleVariant text;
    if (value == nullptr ||
        FAILED(::VariantChangeType(&text, const_cast<VARIANT*>(&Referenced(value)), 0, VT_BSTR)))
        return CString();
    return CString(text.bstrVal);
}

DWORD NumberOf(const VARIANT* value)
{
    COleVariant number;
    if (value == nullptr ||
        FAILED(::VariantChangeType(&number, const_cast<VARIANT*>(&Referenced(value)), 0, VT_I4)))
        return 0;
    return static_cast<DWORD>(number.lVal);
}

void TakeBytes(const VARIANT* value, CByteArray& bytes)
{
    if (value == nullptr)
        return;
    const VARIANT& array = Referenced(value);
    if ((array.vt & ~VT_BYREF) != (VT_ARRAY | VT_UI1))
        return;
    SAFEARRAY* const source = (array.vt & VT_BYREF) != 0 ? *array.pparray : array.parray;
    void* data = nullptr;
    if (source == nullptr || ::SafeArrayGetDim(source) != 1 || FAILED(::SafeArrayAccessData(source, &data)))
        return;
    bytes.SetSize(static_cast<INT_PTR>(source->rgsabound[0].cElements));
    std::memcpy(bytes.GetData(), data, static_cast<size_t>(bytes.GetSize()));
    ::SafeArrayUnaccessData(source);
}

// Null for an empty text: no frame is named.
LPCTSTR FrameName(const CString& frame)
{
    return frame.IsEmpty() ? nullptr : frame.GetString();
}

// A flag of an event as its handler sees it, written back at the end.
class Flag
{
public:
    explicit Flag(VARIANT_BOOL* event) : m_event(event), m_value(event != nullptr && *event != VARIANT_FALSE)
    {
    }
    ~Flag()
    {
        if (m_event != nullptr)
            *m_event = m_value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;
    operator BOOL*() { return &m_value; }

private:
    VARIANT_BOOL* m_event;
    BOOL m_value;
};

} // namespace

#define ON_BROWSER(dispid, handler, types) ON_EVENT(CHtmlView, AFX_IDW_PANE_FIRST, dispid, handler, types)
BEGIN_EVENTSINK_MAP(CHtmlView, CView)
ON_BROWSER(DISPID_BEFORENAVIGATE2, &CHtmlView::BeforeNavigate2,
           VTS_DISPATCH VTS_PVARIANT VTS_PVARIANT VTS_PVARIANT VTS_PVARIANT VTS_PVARIANT VTS_PBOOL)
ON_BROWSER(DISPID_NAVIGATECOMPLETE2, &CHtmlView::NavigateComplete2, VTS_DISPATCH VTS_PVARIANT)
ON_BROWSER(DISPID_DOCUMENTCOMPLETE, &CHtmlView::DocumentComplete, VTS_DISPATCH VTS_PVARIANT)
ON_BROWSER(DISPID_NAVIGATEERROR, &CHtmlView::NavigateError,
           VTS_DISPATCH VTS_PVARIANT VTS_PVARIANT VTS_PVARIANT VTS_PBOOL)
ON_BROWSER(DISPID_NEWWINDOW2, &CHtmlView::NewWindow2, VTS_PDISPATCH VTS_PBOOL)
ON_BROWSER(DISPID_DOWNLOADBEGIN, &CHtmlView::OnDownloadBegin, VTS_NONE)
ON_BROWSER(DISPID_DOWNLOADCOMPLETE, &CHtmlView::OnDownloadComplete, VTS_NONE)
ON_BROWSER(DISPID_PROGRESSCHANGE, &CHtmlView::OnProgressChange, VTS_I4 VTS_I4)
ON_BROWSER(DISPID_COMMANDSTATECHANGE, &CHtmlView::OnCommandStateChange, VTS_I4 VTS_BOOL)
ON_BROWSER(DISPID_PROPERTYCHANGE, &CHtmlView::OnPropertyChange, VTS_BSTR)
ON_BROWSER(DISPID_STATUSTEXTCHANGE, &CHtmlView::OnStatusTextChange, VTS_BSTR)
ON_BROWSER(DISPID_TITLECHANGE, &CHtmlView::OnTitleChange, VTS_BSTR)
ON_BROWSER(DISPID_ONFULLSCREEN, &CHtmlView::OnFullScreen, VTS_BOOL)
ON_BROWSER(DISPID_ONTHEATERMODE, &CHtmlView::OnTheaterMode, VTS_BOOL)
ON_BROWSER(DISPID_ONVISIBLE, &CHtmlView::OnVisible, VTS_BOOL)
ON_BROWSER(DISPID_ONTOOLBAR, &CHtmlView::OnToolBar, VTS_BOOL)
ON_BROWSER(DISPID_ONMENUBAR, &CHtmlView::OnMenuBar, VTS_BOOL)
ON_BROWSER(DISPID_ONSTATUSBAR, &CHtmlView::OnStatusBar, VTS_BOOL)
ON_BROWSER(DISPID_ONQUIT, &CHtmlView::OnQuit, VTS_NONE)
END_EVENTSINK_MAP()

void CHtmlView::BeforeNavigate2(LPDISPATCH, VARIANT* URL, VARIANT* Flags, VARIANT* TargetFrameName,
                                VARIANT* PostData, VARIANT* Headers, VARIANT_BOOL* Cancel)
{
    CByteArray data;
    TakeBytes(PostData, data);
    Flag cancel(Cancel);
    OnBeforeNavigate2(TextOf(URL), NumberOf(Flags), FrameName(TextOf(TargetFrameName)), data, TextOf(Headers),
                      cancel);
}

void CHtmlView::NavigateComplete2(LPDISPATCH, VARIANT* URL)
{
    OnNavigateComplete2(TextOf(URL));
}

void CHtmlView::DocumentComplete(LPDISPATCH, VARIANT* URL)
{
    OnDocumentComplete(TextOf(URL));
}

void CHtmlView::NavigateError(LPDISPATCH, VARIANT* URL, VARIANT* Frame, VARIANT* StatusCode,
                              VARIANT_BOOL* Cancel)
{
    Flag cancel(Cancel);
    OnNavigateError(TextOf(URL), FrameName(TextOf(Frame)), NumberOf(StatusCode), cancel);
}

void CHtmlView::NewWindow2(LPDISPATCH* ppDisp, VARIANT_BOOL* Cancel)
{
    Flag cancel(Cancel);
    OnNewWindow2(ppDisp, cancel);
}

// ---- What a view does by itself: nothing

void CHtmlView::OnBeforeNavigate2(LPCTSTR, DWORD, LPCTSTR, CByteArray&, LPCTSTR, BOOL*) {}

void CHtmlView::OnNavigateComplete2(LPCTSTR) {}

void CHtmlView::OnDocumentComplete(LPCTSTR) {}

void CHtmlView::OnNavigateError(LPCTSTR, LPCTSTR, DWORD, BOOL*) {}

void CHtmlView::OnNewWindow2(LPDISPATCH*, BOOL*) {}

void CHtmlView::OnDownloadBegin() {}

void CHtmlView::OnDownloadComplete() {}

void CHtmlView::OnProgressChange(long, long) {}

void CHtmlView::OnCommandStateChange(long, BOOL) {}

void CHtmlView::OnPropertyChange(LPCTSTR) {}

void CHtmlView::OnStatusTextChange(LPCTSTR) {}

void CHtmlView::OnTitleChange(LPCTSTR) {}

void CHtmlView::OnFullScreen(BOOL) {}

void CHtmlView::OnTheaterMode(BOOL) {}

void CHtmlView::OnVisible(BOOL) {}

void CHtmlView::OnToolBar(BOOL) {}

void CHtmlView::OnMenuBar(BOOL) {}

void CHtmlView::OnStatusBar(BOOL) {}

void CHtmlView::OnQuit() {}
