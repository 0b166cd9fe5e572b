// The objects of an HTML page for tests: documents, elements, controls and events, scripted by name.
#pragma once

#include <afxdisp.h>

#include <map>
#include <string>
#include <vector>

namespace support
{

// An object, null for none, as a parameter or a property.
[[nodiscard]] COleVariant ObjectVariant(IDispatch* object);

// Belongs to the test, whoever holds references to it.
class HtmlObject final : public IDispatch,
                         public IConnectionPointContainer,
                         public IConnectionPoint,
                         public IProvideClassInfo2
{
public:
    // events: the interface of the events that it sends.
    explicit HtmlObject(REFIID events = IID_NULL) : m_events(events) {}

    std::map<std::wstring, COleVariant> properties;
    std::map<std::wstring, HtmlObject*> elements; // what getElementById finds; not counted
    LONG references = 0;                          // that others hold
    int advised = 0;                              // how often a sink has been connected
    bool isElement = false;                       // stands for an IHTMLElement; only IDispatch of it is there

    [[nodiscard]] IDispatch* Dispatch() { return this; }
    [[nodiscard]] bool IsConnected() const { return m_sink != nullptr; }
    // Sends an event of a page, which knows its source element, and answers its result.
    COleVariant Fire(DISPID event, HtmlObject* source);
    // Sends an event with these parameters.
    HRESULT FireWith(DISPID event, std::vector<COleVariant> arguments, VARIANT* result = nullptr);

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--references); }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                        EXCEPINFO*, UINT*) override;
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;
    STDMETHODIMP GetConnectionInterface(IID* iid) override { return *iid = m_events, S_OK; }
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer**) override { return E_NOTIMPL; }
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD) override;
    STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }
    STDMETHODIMP GetClassInfo(ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetGUID(DWORD, GUID* guid) override { return *guid = m_events, S_OK; }

private:
    IID m_events;
    IDispatch* m_sink = nullptr;
};

} // namespace support
