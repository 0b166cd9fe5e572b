#include "tests/support/html_object.h"

#include <algorithm>
#include <mshtml.h>

namespace support
{

namespace
{

// The names that have been asked for; a member's number is its place.
std::vector<std::wstring>& Names()
{
    static std::vector<std::wstring> names{L""};
    return names;
}

} // namespace

COleVariant ObjectVariant(IDispatch* object)
{
    VARIANT value{};
    value.vt = VT_DISPATCH;
    value.pdispVal = object;
    return COleVariant(value); // a copy counts
}

COleVariant HtmlObject::Fire(DISPID event, HtmlObject* source)
{
    HtmlObject object;
    object.properties[L"srcElement"] = ObjectVariant(source);
    COleVariant result;
    FireWith(event, {ObjectVariant(&object)}, &result);
    return result;
}

HRESULT HtmlObject::FireWith(DISPID event, std::vector<COleVariant> arguments, VARIANT* result)
{
    IDispatch* const sink = m_sink;
    if (sink == nullptr)
        return S_FALSE;
    std::reverse(arguments.begin(), arguments.end());
    std::vector<VARIANTARG> values(arguments.begin(), arguments.end());
    DISPPARAMS params{values.data(), nullptr, static_cast<UINT>(values.size()), 0};
    sink->AddRef();
    const HRESULT handled = sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params,
                                         result, nullptr, nullptr);
    sink->Release();
    return handled;
}

STDMETHODIMP HtmlObject::QueryInterface(REFIID iid, void** object)
{
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDispatch || (isElement && iid == IID_IHTMLElement))
        *object = static_cast<IDispatch*>(this);
    else if (iid == IID_IConnectionPointContainer)
        *object = static_cast<IConnectionPointContainer*>(this);
    else if (iid == IID_IProvideClassInfo2)
        *object = static_cast<IProvideClassInfo2*>(this);
    if (*object == nullptr)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP HtmlObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids)
{
    std::vector<std::wstring>& known = Names();
    auto place = std::find(known.begin(), known.end(), names[0]);
    if (place == known.end())
        place = known.insert(place, names[0]);
    ids[0] = static_cast<DISPID>(place - known.begin());
    return S_OK;
}

STDMETHODIMP HtmlObject::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                EXCEPINFO*, UINT*)
{
    const std::wstring& name = Names().at(static_cast<size_t>(member));
    if (name == L"getElementById" && flags == DISPATCH_METHOD) {
        const auto found = elements.find(params->rgvarg[0].bstrVal);
        return ::VariantCopy(result, ObjectVariant(found != elements.end() ? found->second : nullptr));
    }
    const auto found = properties.find(name);
    return found != properties.end() ? ::VariantCopy(result, found->second) : DISP_E_MEMBERNOTFOUND;
}

STDMETHODIMP HtmlObject::FindConnectionPoint(REFIID iid, IConnectionPoint** point)
{
    *point = iid == m_events ? this : nullptr;
    if (*point == nullptr)
        return CONNECT_E_NOCONNECTION;
    AddRef();
    return S_OK;
}

STDMETHODIMP HtmlObject::Advise(IUnknown* sink, DWORD* cookie)
{
    if (m_sink != nullptr)
        return CONNECT_E_ADVISELIMIT;
    ++advised;
    *cookie = 1;
    return sink->QueryInterface(m_events, reinterpret_cast<void**>(&m_sink));
}

STDMETHODIMP HtmlObject::Unadvise(DWORD)
{
    if (IDispatch* const sink = std::exchange(m_sink, nullptr))
        sink->Release();
    return S_OK;
}

} // namespace support
