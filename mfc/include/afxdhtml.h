// Events of HTML pages: event maps, and the sinks that take the events to them.
//
// Of the framework's HTML dialogs only this part is there.
#pragma once

#include <afxdisp.h>
#include <mshtmdid.h>

#include <memory>
#include <vector>

struct IHTMLElement;
class CDHtmlEventSink;

namespace afx_subset
{
class PageSink;
}

namespace afxdhtml
{

// Calls a handler with the element that an event comes from (elements) or with the event's own parameters
// (controls).
typedef HRESULT (*Thunk)(CDHtmlEventSink* target, IHTMLElement* element, const DISPPARAMS* params);

// The automation type of a C++ parameter; 0 when there is none.
template <class T>
constexpr char TypeOf()
{
    for (char type = 1; type < 0x7F; ++type) {
        if (afxevent::Arg<T>::Fits(static_cast<unsigned char>(type)))
            return type;
    }
    return 0;
}

template <class Handler>
struct Call;

template <class Result, class Class, class... Args>
struct Call<Result (Class::*)(Args...)> {
    template <class Target>
    static HRESULT Control(Target* target, Result (Class::*handler)(Args...), const DISPPARAMS& params)
    {
        static constexpr char types[] = {TypeOf<Args>()..., 0};
        return afxevent::CallConverted<Args...>([=](Args... args) { (target->*handler)(args...); }, params,
                                                types, std::index_sequence_for<Args...>());
    }
};

// GetHandler is a stateless lambda that answers the member pointer.
template <class Target, class GetHandler>
constexpr Thunk BindElement(GetHandler)
{
    return [](CDHtmlEventSink* target, IHTMLElement* element, const DISPPARAMS*) -> HRESULT {
        return (static_cast<Target*>(target)->*GetHandler{}())(element);
    };
}

template <class Target, class GetHandler>
constexpr Thunk BindControl(GetHandler)
{
    return [](CDHtmlEventSink* target, IHTMLElement*, const DISPPARAMS* params) -> HRESULT {
        return Call<decltype(GetHandler{}())>::Control(static_cast<Target*>(target), GetHandler{}(), *params);
    };
}

} // namespace afxdhtml

enum DHtmlEventMapEntryType {
    DHTMLEVENTMAPENTRY_NAME,    // at the document, from the element with this id; null: from any
    DHTMLEVENTMAPENTRY_CLASS,   // at the document, from elements of this CSS class
    DHTMLEVENTMAPENTRY_TAG,     // at the document, from elements with this tag
    DHTMLEVENTMAPENTRY_ELEMENT, // at the element with this id itself
    DHTMLEVENTMAPENTRY_CONTROL, // from the ActiveX control with this id
    DHTMLEVENTMAPENTRY_END
};

struct DHtmlEventMapEntry {
    DHtmlEventMapEntryType nType;
    DISPID dispId;
    LPCTSTR szName;
    afxdhtml::Thunk pfnEventFunc;
};

// Takes the events of one page to the handlers that the event map of a derived class lists. A document's
// handler is HRESULT OnEvent(IHTMLElement* element), where the element, which is not counted for it, is the
// one that the event comes from; S_FALSE keeps the page from doing what it does by default. A control's
// handler has the parameters of the control's event.
class AFX_SUBSET_API CDHtmlEventSink
{
public:
    CDHtmlEventSink(const CDHtmlEventSink&) = delete;
    CDHtmlEventSink& operator=(const CDHtmlEventSink&) = delete;
    // Disconnects.
    virtual ~CDHtmlEventSink();

    // Ends with an entry of type DHTMLEVENTMAPENTRY_END; null for no events.
    virtual const DHtmlEventMapEntry* GetDHtmlEventMap();

    // Connects a loaded document's events, and those of its elements and controls that the map names; what
    // the page has not is left out. A failure when the document's own events cannot be had.
    HRESULT ConnectDHtmlEvents(IUnknown* punkDoc);
    // Ends the connections to the document and what is in it. Nothing for a document that is not connected.
    void DisconnectDHtmlEvents(IUnknown* punkDoc);

protected:
    CDHtmlEventSink();

private:
    HRESULT OnPageEvent(const afx_subset::PageSink& sink, DISPID dispid, const DISPPARAMS& params);
    void ConnectPart(IUnknown* document, const DHtmlEventMapEntry& entry);

    std::vector<afx_subset::PageSink*> m_sinks; // counted

    friend class afx_subset::PageSink;
};

#define DECLARE_DHTML_EVENT_MAP() virtual const DHtmlEventMapEntry* GetDHtmlEventMap() override;
#define BEGIN_DHTML_EVENT_MAP(className)                                                                     \
    const DHtmlEventMapEntry* className::GetDHtmlEventMap()                                                  \
    {                                                                                                        \
        AFX_DHTML_MAP_(className)
#define BEGIN_DHTML_EVENT_MAP_INLINE(className)                                                              \
    virtual const DHtmlEventMapEntry* GetDHtmlEventMap() override                                            \
    {                                                                                                        \
        AFX_DHTML_MAP_(className)
#define AFX_DHTML_MAP_(className)                                                                            \
    typedef className DHtmlMapClass;                                                                         \
    static const DHtmlEventMapEntry _dhtmlEntries[] = {
#define END_DHTML_EVENT_MAP()                                                                                \
    {                                                                                                        \
        DHTMLEVENTMAPENTRY_END, 0, nullptr, nullptr                                                          \
    }                                                                                                        \
    }                                                                                                        \
    ;                                                                                                        \
    return &_dhtmlEntries[0];                                                                                \
    }
#define END_DHTML_EVENT_MAP_INLINE() END_DHTML_EVENT_MAP()

#define AFX_DHTML_EVENT_(kind, dispid, elemName, memberFxn)                                                  \
    {DHTMLEVENTMAPENTRY_##kind, (DISPID)(dispid), elemName,                                                  \
     afxdhtml::BindElement<DHtmlMapClass>([] { return &DHtmlMapClass::memberFxn; })},
#define DHTML_EVENT(dispid, elemName, memberFxn) AFX_DHTML_EVENT_(NAME, dispid, elemName, memberFxn)
#define DHTML_EVENT_CLASS(dispid, elemName, memberFxn) AFX_DHTML_EVENT_(CLASS, dispid, elemName, memberFxn)
#define DHTML_EVENT_TAG(dispid, elemName, memberFxn) AFX_DHTML_EVENT_(TAG, dispid, elemName, memberFxn)
#define DHTML_EVENT_ELEMENT(dispid, elemName, memberFxn)                                                     \
    AFX_DHTML_EVENT_(ELEMENT, dispid, elemName, memberFxn)
#define DHTML_EVENT_AXCONTROL(dispid, controlName, memberFxn)                                                \
    {DHTMLEVENTMAPENTRY_CONTROL, (DISPID)(dispid), controlName,                                              \
     afxdhtml::BindControl<DHtmlMapClass>([] { return &DHtmlMapClass::memberFxn; })},

#define DHTML_EVENT_ONAFTERUPDATE(elemName, memberFxn)                                                       \
    DHTML_EVENT(DISPID_EVMETH_ONAFTERUPDATE, elemName, memberFxn)
#define DHTML_EVENT_ONBEFOREUPDATE(elemName, memberFxn)                                                      \
    DHTML_EVENT(DISPID_EVMETH_ONBEFOREUPDATE, elemName, memberFxn)
#define DHTML_EVENT_ONBLUR(elemName, memberFxn) DHTML_EVENT_ELEMENT(DISPID_EVMETH_ONBLUR, elemName, memberFxn)
#define DHTML_EVENT_ONCHANGE(elemName, memberFxn)                                                            \
    DHTML_EVENT_ELEMENT(DISPID_EVMETH_ONCHANGE, elemName, memberFxn)
#define DHTML_EVENT_ONCLICK(elemName, memberFxn) DHTML_EVENT(DISPID_EVMETH_ONCLICK, elemName, memberFxn)
#define DHTML_EVENT_ONDATAAVAILABLE(elemName, memberFxn)                                                     \
    DHTML_EVENT(DISPID_EVMETH_ONDATAAVAILABLE, elemName, memberFxn)
#define DHTML_EVENT_ONDATASETCHANGED(elemName, memberFxn)                                                    \
    DHTML_EVENT(DISPID_EVMETH_ONDATASETCHANGED, elemName, memberFxn)
#define DHTML_EVENT_ONDATASETCOMPLETE(elemName, memberFxn)                                                   \
    DHTML_EVENT(DISPID_EVMETH_ONDATASETCOMPLETE, elemName, memberFxn)
#define DHTML_EVENT_ONDBLCLICK(elemName, memberFxn) DHTML_EVENT(DISPID_EVMETH_ONDBLCLICK, elemName, memberFxn)
#define DHTML_EVENT_ONDRAGSTART(elemName, memberFxn)                                                         \
    DHTML_EVENT(DISPID_EVMETH_ONDRAGSTART, elemName, memberFxn)
#define DHTML_EVENT_ONERRORUPDATE(elemName, memberFxn)                                                       \
    DHTML_EVENT(DISPID_EVMETH_ONERRORUPDATE, elemName, memberFxn)
#define DHTML_EVENT_ONFILTERCHANGE(elemName, memberFxn)                                                      \
    DHTML_EVENT(DISPID_EVMETH_ONFILTER, elemName, memberFxn)
#define DHTML_EVENT_ONFOCUS(elemName, memberFxn)                                                             \
    DHTML_EVENT_ELEMENT(DISPID_EVMETH_ONFOCUS, elemName, memberFxn)
#define DHTML_EVENT_ONHELP(elemName, memberFxn) DHTML_EVENT(DISPID_EVMETH_ONHELP, elemName, memberFxn)
#define DHTML_EVENT_ONKEYDOWN(elemName, memberFxn) DHTML_EVENT(DISPID_EVMETH_ONKEYDOWN, elemName, memberFxn)
#define DHTML_EVENT_ONKEYPRESS(elemName, memberFxn) DHTML_EVENT(DISPID_EVMETH_ONKEYPRESS, elemName, memberFxn)
#define DHTML_EVENT_ONKEYUP(elemName, memberFxn) DHTML_EVENT(DISPID_EVMETH_ONKEYUP, elemName, memberFxn)
#define DHTML_EVENT_ONMOUSEDOWN(elemName, memberFxn)                                                         \
    DHTML_EVENT(DISPID_EVMETH_ONMOUSEDOWN, elemName, memberFxn)
#define DHTML_EVENT_ONMOUSEMOVE(elemName, memberFxn)                                                         \
    DHTML_EVENT(DISPID_EVMETH_ONMOUSEMOVE, elemName, memberFxn)
#define DHTML_EVENT_ONMOUSEOUT(elemName, memberFxn) DHTML_EVENT(DISPID_EVMETH_ONMOUSEOUT, elemName, memberFxn)
#define DHTML_EVENT_ONMOUSEOVER(elemName, memberFxn)                                                         \
    DHTML_EVENT(DISPID_EVMETH_ONMOUSEOVER, elemName, memberFxn)
#define DHTML_EVENT_ONMOUSEUP(elemName, memberFxn) DHTML_EVENT(DISPID_EVMETH_ONMOUSEUP, elemName, memberFxn)
#define DHTML_EVENT_ONRESIZE(elemName, memberFxn)                                                            \
    DHTML_EVENT_ELEMENT(DISPID_EVMETH_ONRESIZE, elemName, memberFxn)
#define DHTML_EVENT_ONROWENTER(elemName, memberFxn) DHTML_EVENT(DISPID_EVMETH_ONROWENTER, elemName, memberFxn)
#define DHTML_EVENT_ONROWEXIT(elemName, memberFxn) DHTML_EVENT(DISPID_EVMETH_ONROWEXIT, elemName, memberFxn)
#define DHTML_EVENT_ONSELECTSTART(elemName, memberFxn)                                                       \
    DHTML_EVENT(DISPID_EVMETH_ONSELECTSTART, elemName, memberFxn)
