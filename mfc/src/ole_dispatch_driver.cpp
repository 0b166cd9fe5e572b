// Calls through IDispatch with a list of C++ parameters.
#include <afxdisp.h>

#include "ole_ptr.h"

#include <cstdarg>
#include <cstring>
#include <utility>
#include <vector>

using namespace afx_subset;

namespace
{

constexpr VARTYPE VariantType(BYTE type)
{
    const auto base = static_cast<VARTYPE>(type & ~afxevent::kByRef);
    return (type & afxevent::kByRef) != 0 ? static_cast<VARTYPE>(base | VT_BYREF) : base;
}

// The parameters of one call, in the reverse order that IDispatch wants. Owns the texts that it has made.
class Arguments
{
public:
    Arguments(const BYTE* types, va_list list)
        : m_values(types != nullptr ? std::strlen(reinterpret_cast<const char*>(types)) : 0),
          m_bools(m_values.size())
    {
        for (size_t i = m_values.size(); i-- > 0; ++types)
            Take(i, *types, list);
    }
    ~Arguments()
    {
        for (const BSTR text : m_texts)
            ::SysFreeString(text);
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    VARIANTARG* Values() { return m_values.empty() ? nullptr : m_values.data(); }
    UINT Count() const { return static_cast<UINT>(m_values.size()); }

    // Gives the caller's BOOLs what the call has put into their places.
    void WriteBack()
    {
        for (const Bool& place : m_bools) {
            if (place.caller != nullptr)
                *place.caller = place.value != VARIANT_FALSE;
        }
    }

private:
    // The caller's BOOL is wider than automation's.
    struct Bool {
        BOOL* caller = nullptr;
        VARIANT_BOOL value = VARIANT_FALSE;
    };

    // Arguments of a variable list come as int or double when they are shorter.
    void Take(size_t index, BYTE type, va_list& list)
    {
        VARIANTARG& value = m_values[index];
        value.vt = VariantType(type);
        switch (value.vt) {
        case VT_UI1:
            value.bVal = static_cast<BYTE>(va_arg(list, int));
            break;
        case VT_I2:
            value.iVal = static_cast<short>(va_arg(list, int));
            break;
        case VT_I4:
        case VT_ERROR:
            value.lVal = va_arg(list, long);
            break;
        case VT_I8:
            value.llVal = va_arg(list, LONGLONG);
            break;
        case VT_R4:
            value.fltVal = static_cast<float>(va_arg(list, double));
            break;
        case VT_R8:
        case VT_DATE:
            value.dblVal = va_arg(list, double);
            break;
        case VT_CY:
            value.cyVal = *va_arg(list, CY*);
            break;
        case VT_BSTR:
            value.bstrVal = ::SysAllocString(va_arg(list, LPCWSTR));
            m_texts.push_back(value.bstrVal);
            break;
        case VT_BOOL:
            value.boolVal = va_arg(list, BOOL) ? VARIANT_TRUE : VARIANT_FALSE;
            break;
        case VT_VARIANT:
            value = *va_arg(list, VARIANT*); // stays the caller's
            break;
        case VT_BOOL | VT_BYREF:
            value.pboolVal = PlaceFor(va_arg(list, BOOL*), m_bools[index]);
            break;
        default: // objects and references
            value.byref = va_arg(list, void*);
            break;
        }
    }

    // Null for null, which the call gets as it is.
    static VARIANT_BOOL* PlaceFor(BOOL* caller, Bool& place)
    {
        if (caller == nullptr)
            return nullptr;
        place = {caller, *caller ? VARIANT_TRUE : VARIANT_FALSE};
        return &place.value;
    }

    std::vector<VARIANTARG> m_values;
    std::vector<Bool> m_bools;
    std::vector<BSTR> m_texts; // made here
};

// Clears what the call has left in it.
struct ExceptionInfo : EXCEPINFO {
    ExceptionInfo() : EXCEPINFO{} {}
    ~ExceptionInfo()
    {
        ::SysFreeString(bstrSource);
        ::SysFreeString(bstrDescription);
        ::SysFreeString(bstrHelpFile);
    }
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;
};

[[noreturn]] void Throw(HRESULT result, ExceptionInfo& info)
{
    if (result != DISP_E_EXCEPTION)
        AfxThrowOleException(result);
    if (info.pfnDeferredFillIn != nullptr)
        info.pfnDeferredFillIn(&info);
    // An object gives one of the two codes.
    const auto code = static_cast<WORD>(info.wCode != 0 ? info.wCode : HRESULT_CODE(info.scode));
    auto* const e = new COleDispatchException(info.bstrDescription, info.dwHelpContext, code);
    e->m_strSource = info.bstrSource;
    e->m_strHelpFile = info.bstrHelpFile;
    throw e;
}

// Hands a converted result to the caller; object and variant results with their reference.
void Store(COleVariant& result, VARTYPE type, void* place)
{
    switch (type) {
    case VT_UI1:
    case VT_I1:
        *static_cast<BYTE*>(place) = result.bVal;
        break;
    case VT_I2:
    case VT_UI2:
        *static_cast<short*>(place) = result.iVal;
        break;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_DATE:
    case VT_CY:
        *static_cast<LONGLONG*>(place) = result.llVal;
        break;
    case VT_BSTR:
        *static_cast<CString*>(place) = result.bstrVal;
        break;
    case VT_BOOL:
        *static_cast<BOOL*>(place) = result.boolVal != VARIANT_FALSE;
        break;
    case VT_DISPATCH:
    case VT_UNKNOWN:
        *static_cast<LPUNKNOWN*>(place) = result.Detach().punkVal;
        break;
    case VT_VARIANT:
        *static_cast<VARIANT*>(place) = result.Detach();
        break;
    default: // the types of 32 bits
        *static_cast<LONG*>(place) = result.lVal;
        break;
    }
}

} // namespace

COleDispatchDriver::COleDispatchDriver(LPDISPATCH lpDispatch, BOOL bAutoRelease)
    : m_lpDispatch(lpDispatch), m_bAutoRelease(bAutoRelease)
{
}

COleDispatchDriver::COleDispatchDriver(const COleDispatchDriver& dispatchSrc)
    : m_lpDispatch(dispatchSrc.m_lpDispatch)
{
    if (m_lpDispatch != nullptr)
        m_lpDispatch->AddRef();
}

const COleDispatchDriver& COleDispatchDriver::operator=(const COleDispatchDriver& dispatchSrc)
{
    const LPDISPATCH other = dispatchSrc.m_lpDispatch;
    if (other != nullptr)
        other->AddRef();
    AttachDispatch(other);
    return *this;
}

COleDispatchDriver::~COleDispatchDriver()
{
    ReleaseDispatch();
}

BOOL COleDispatchDriver::CreateDispatch(REFCLSID clsid, COleException* pError)
{
    ASSERT(m_lpDispatch == nullptr);
    ComPtr<IUnknown> object;
    HRESULT result = ::CoCreateInstance(clsid, nullptr, CLSCTX_ALL, IID_IUnknown, object.ReceiveVoid());
    // A local server has to run before it answers for its other interfaces.
    if (SUCCEEDED(result))
        result = ::OleRun(object.Get());
    LPDISPATCH dispatch = nullptr;
    if (SUCCEEDED(result))
        result = object->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch));
    if (pError != nullptr)
        pError->m_sc = result;
    if (FAILED(result))
        return FALSE;
    AttachDispatch(dispatch);
    return TRUE;
}

BOOL COleDispatchDriver::CreateDispatch(LPCTSTR lpszProgID, COleException* pError)
{
    CLSID clsid{};
    const HRESULT result = ::CLSIDFromProgID(lpszProgID, &clsid);
    if (SUCCEEDED(result))
        return CreateDispatch(clsid, pError);
    if (pError != nullptr)
        pError->m_sc = result;
    return FALSE;
}

void COleDispatchDriver::AttachDispatch(LPDISPATCH lpDispatch, BOOL bAutoRelease)
{
    ReleaseDispatch();
    m_lpDispatch = lpDispatch;
    m_bAutoRelease = bAutoRelease;
}

LPDISPATCH COleDispatchDriver::DetachDispatch()
{
    return std::exchange(m_lpDispatch, nullptr);
}

void COleDispatchDriver::ReleaseDispatch()
{
    const LPDISPATCH dispatch = DetachDispatch();
    if (dispatch != nullptr && m_bAutoRelease)
        dispatch->Release();
}

void COleDispatchDriver::InvokeHelperV(DISPID dwDispID, WORD wFlags, VARTYPE vtRet, void* pvRet,
                                       const BYTE* pbParamInfo, va_list argList)
{
    if (m_lpDispatch == nullptr) {
        TRACE(_T("Automation member %d is invoked on no object.\n"), static_cast<int>(dwDispID));
        return;
    }
    Arguments arguments(pbParamInfo, argList);
    DISPPARAMS params{arguments.Values(), nullptr, arguments.Count(), 0};
    DISPID putName = DISPID_PROPERTYPUT;
    if ((wFlags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
        params.rgdispidNamedArgs = &putName;
        params.cNamedArgs = 1;
    }

    COleVariant returned;
    ExceptionInfo info;
    UINT wrong = 0;
    // The call may end this driver's owner, and this driver with it.
    const ComPtr<IDispatch> dispatch(m_lpDispatch);
    HRESULT result = dispatch->Invoke(dwDispID, IID_NULL, LOCALE_USER_DEFAULT, wFlags, &params,
                                      vtRet != VT_EMPTY ? &returned : nullptr, &info, &wrong);
    if (SUCCEEDED(result))
        arguments.WriteBack();
    if (SUCCEEDED(result) && vtRet != VT_EMPTY && vtRet != VT_VARIANT)
        result = ::VariantChangeType(&returned, &returned, 0, vtRet);
    if (FAILED(result))
        Throw(result, info);
    if (vtRet != VT_EMPTY && pvRet != nullptr)
        Store(returned, vtRet, pvRet);
}

void AFX_CDECL COleDispatchDriver::InvokeHelper(DISPID dwDispID, WORD wFlags, VARTYPE vtRet, void* pvRet,
                                                const BYTE* pbParamInfo, ...)
{
    va_list list;
    va_start(list, pbParamInfo);
    InvokeHelperV(dwDispID, wFlags, vtRet, pvRet, pbParamInfo, list);
    va_end(list);
}

void COleDispatchDriver::GetProperty(DISPID dwDispID, VARTYPE vtProp, void* pvProp) const
{
    const_cast<COleDispatchDriver*>(this)->InvokeHelper(dwDispID, DISPATCH_PROPERTYGET, vtProp, pvProp,
                                                        nullptr);
}

void COleDispatchDriver::SetPropertyV(DISPID dwDispID, VARTYPE vtProp, va_list argList)
{
    const BYTE byRef = (vtProp & VT_BYREF) != 0 ? afxevent::kByRef : BYTE{0};
    const BYTE types[] = {static_cast<BYTE>(static_cast<BYTE>(vtProp) | byRef), 0};
    const bool object = vtProp == VT_DISPATCH || vtProp == VT_UNKNOWN;
    const WORD flags = object ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
    InvokeHelperV(dwDispID, flags, VT_EMPTY, nullptr, types, argList);
}

void AFX_CDECL COleDispatchDriver::SetProperty(DISPID dwDispID, VARTYPE vtProp, ...)
{
    va_list list;
    va_start(list, vtProp);
    SetPropertyV(dwDispID, vtProp, list);
    va_end(list);
}
