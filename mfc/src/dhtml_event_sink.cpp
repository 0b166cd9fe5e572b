#include <afxdhtml.h>

#include "ole_object.h"
#include "ole_ptr.h"

#include <algorithm>
#include <mshtml.h>

using namespace afx_subset;

namespace
{

bool IsSame(IUnknown* one, IUnknown* other)
{
    ComPtr<IUnknown> first;
    ComPtr<IUnknown> second;
    return SUCCEEDED(first.From(one)) && SUCCEEDED(second.From(other)) && first.Get() == second.Get();
}

// A property of a page's object, or what a method answers for one argument; empty when it has none such.
COleVariant Ask(IUnknown* object, LPCOLESTR name, const VARIANT* argument = nullptr)
{
    ComPtr<IDispatch> dispatch;
    DISPID member = DISPID_UNKNOWN;
    COleVariant result;
    auto* text = const_cast<LPOLESTR>(name);
    if (FAILED(dispatch.From(object)) ||
        FAILED(dispatch->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &member)))
        return result;
    DISPPARAMS params{const_cast<VARIANT*>(argument), nullptr, argument != nullptr ? 1u : 0u, 0};
    const WORD flags = argument != nullptr ? DISPATCH_METHOD : DISPATCH_PROPERTYGET;
    dispatch->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, &result, nullptr, nullptr);
    return result;
}

// The object in a variant, null for none; the variant keeps it.
IUnknown* ObjectOf(const VARIANT& value)
{
    return value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN ? value.punkVal : nullptr;
}

bool HasText(IUnknown* element, LPCOLESTR property, LPCTSTR text)
{
    const COleVariant value = Ask(element, property);
    return text != nullptr && value.vt == VT_BSTR && value.bstrVal != nullptr &&
           ::_wcsicmp(value.bstrVal, text) == 0;
}

bool IsFrom(IUnknown* element, const DHtmlEventMapEntry& entry)
{
    switch (entry.nType) {
    case DHTMLEVENTMAPENTRY_NAME:
        return entry.szName == nullptr || HasText(element, L"id", entry.szName);
    case DHTMLEVENTMAPENTRY_CLASS:
        return HasText(element, L"className", entry.szName);
    case DHTMLEVENTMAPENTRY_TAG:
        return HasText(element, L"tagName", entry.szName);
    default:
        return false;
    }
}

} // namespace

// Receives the events of a document, an element or a control. The page may hold it longer than its owner
// lives.
class afx_subset::PageSink final : public Counted<IDispatch>
{
public:
    // kind: the type of the entries that the events are for, DHTMLEVENTMAPENTRY_NAME for all of a document.
    PageSink(CDHtmlEventSink& owner, IUnknown* document, DHtmlEventMapEntryType kind, LPCTSTR name)
        : m_owner(&owner), m_document(document), m_kind(kind), m_name(name)
    {
    }

    HRESULT Connect(IUnknown* source, REFIID events)
    {
        ComPtr<IConnectionPointContainer> container;
        HRESULT result = container.From(source);
        if (SUCCEEDED(result))
            result = container->FindConnectionPoint(events, m_point.Receive());
        m_events = events;
        return SUCCEEDED(result) ? m_point->Advise(this, &m_cookie) : result;
    }
    void Disconnect()
    {
        m_owner = nullptr;
        if (m_point)
            m_point->Unadvise(m_cookie);
        m_point.Release();
        m_document.Release();
    }

    IUnknown* Document() const { return m_document.Get(); }
    DHtmlEventMapEntryType Kind() const { return m_kind; }
    bool IsFor(DHtmlEventMapEntryType kind, LPCTSTR name) const { return m_kind == kind && m_name == name; }
    bool Takes(const DHtmlEventMapEntry& entry, IUnknown* element) const
    {
        return m_kind == DHTMLEVENTMAPENTRY_NAME ? IsFrom(element, entry) : IsFor(entry.nType, entry.szName);
    }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == m_events;
        return Answer(known ? this : nullptr, object);
    }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result, EXCEPINFO*,
                        UINT*) override
    {
        if (m_owner == nullptr || params == nullptr)
            return E_UNEXPECTED;
        const ComPtr<PageSink> keepAlive(this); // the handler may disconnect
        const HRESULT handled =
            WithoutExceptions([&] { return m_owner->OnPageEvent(*this, dispid, *params); });
        if (handled == S_FALSE && result != nullptr) {
            result->vt = VT_BOOL;
            result->boolVal = VARIANT_FALSE;
        }
        return FAILED(handled) ? handled : S_OK;
    }

private:
    ~PageSink() override = default;

    CDHtmlEventSink* m_owner;
    ComPtr<IUnknown> m_document;
    DHtmlEventMapEntryType m_kind;
    CString m_name;
    IID m_events{};
    ComPtr<IConnectionPoint> m_point;
    DWORD m_cookie = 0;
};

CDHtmlEventSink::CDHtmlEventSink() = default;

CDHtmlEventSink::~CDHtmlEventSink()
{
    while (!m_sinks.empty())
        DisconnectDHtmlEvents(m_sinks.back()->Document());
}

const DHtmlEventMapEntry* CDHtmlEventSink::GetDHtmlEventMap()
{
    return nullptr;
}

// ---- Connections

HRESULT CDHtmlEventSink::ConnectDHtmlEvents(IUnknown* punkDoc)
{
    if (punkDoc == nullptr)
        return E_POINTER;
    DisconnectDHtmlEvents(punkDoc);
    const DHtmlEventMapEntry* const map = GetDHtmlEventMap();
    if (map == nullptr)
        return S_OK;
    auto* const sink = new PageSink(*this, punkDoc, DHTMLEVENTMAPENTRY_NAME, nullptr);
    const HRESULT result = sink->Connect(punkDoc, __uuidof(HTMLDocumentEvents2));
    if (FAILED(result)) {
        sink->Disconnect();
        sink->Release();
        return result;
    }
    m_sinks.push_back(sink);
    for (const DHtmlEventMapEntry* entry = map; entry->nType != DHTMLEVENTMAPENTRY_END; ++entry)
        ConnectPart(punkDoc, *entry);
    return S_OK;
}

void CDHtmlEventSink::ConnectPart(IUnknown* document, const DHtmlEventMapEntry& entry)
{
    const bool control = entry.nType == DHTMLEVENTMAPENTRY_CONTROL;
    if (entry.szName == nullptr || (!control && entry.nType != DHTMLEVENTMAPENTRY_ELEMENT))
        return;
    const bool connected = std::any_of(m_sinks.begin(), m_sinks.end(), [&](const PageSink* sink) {
        return sink->IsFor(entry.nType, entry.szName) && IsSame(sink->Document(), document);
    });
    if (connected)
        return;
    const COleVariant name(entry.szName);
    const COleVariant element = Ask(document, L"getElementById", &name);
    IUnknown* source = ObjectOf(element);
    IID events = __uuidof(HTMLElementEvents2);
    COleVariant object;
    if (control && source != nullptr) {
        object = Ask(source, L"object");
        source = ObjectOf(object);
        ComPtr<IProvideClassInfo2> classInfo;
        if (FAILED(classInfo.From(source)) ||
            FAILED(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events)))
            return;
    }
    auto* const sink = new PageSink(*this, document, entry.nType, entry.szName);
    if (SUCCEEDED(sink->Connect(source, events))) {
        m_sinks.push_back(sink);
    } else {
        sink->Disconnect();
        sink->Release();
    }
}

void CDHtmlEventSink::DisconnectDHtmlEvents(IUnknown* punkDoc)
{
    if (punkDoc == nullptr)
        return;
    const ComPtr<IUnknown> document(punkDoc); // which a sink of ours may be the last to hold
    const auto gone = std::stable_partition(m_sinks.begin(), m_sinks.end(), [punkDoc](const PageSink* sink) {
        return !IsSame(sink->Document(), punkDoc);
    });
    const std::vector<PageSink*> ending(gone, m_sinks.end());
    m_sinks.erase(gone, m_sinks.end());
    for (PageSink* const sink : ending) {
        sink->Disconnect();
        sink->Release();
    }
}

// ---- Events

HRESULT CDHtmlEventSink::OnPageEvent(const PageSink& sink, DISPID dispid, const DISPPARAMS& params)
{
    const bool control = sink.Kind() == DHTMLEVENTMAPENTRY_CONTROL;
    // A page's events have one parameter: the event, which knows where it comes from.
    COleVariant source;
    ComPtr<IHTMLElement> element;
    if (!control && params.cArgs > 0) {
        source = Ask(ObjectOf(params.rgvarg[params.cArgs - 1]), L"srcElement");
        element.From(ObjectOf(source));
    }
    for (const DHtmlEventMapEntry* entry = GetDHtmlEventMap();
         entry != nullptr && entry->nType != DHTMLEVENTMAPENTRY_END; ++entry) {
        if (entry->dispId == dispid && sink.Takes(*entry, element.Get()))
            return entry->pfnEventFunc(this, element.Get(), control ? &params : nullptr);
    }
    return S_OK;
}
