// The types of automation parameters, and event sink maps. Included by afxdisp.h; programs include that.
//
// A handler of an event sink map is checked against the listed parameter types when it is compiled.
#pragma once

#include <type_traits>
#include <utility>

// Each byte is a VT_ constant, with the bit 0x40 for a pointer to such a value.
#define VTS_NONE NULL
#define VTS_I2 "\x02"
#define VTS_I4 "\x03"
#define VTS_R4 "\x04"
#define VTS_R8 "\x05"
#define VTS_CY "\x06"
#define VTS_DATE "\x07"
#define VTS_BSTR "\x08"
#define VTS_WBSTR VTS_BSTR
#define VTS_DISPATCH "\x09"
#define VTS_SCODE "\x0A"
#define VTS_BOOL "\x0B"
#define VTS_VARIANT "\x0C"
#define VTS_UNKNOWN "\x0D"
#define VTS_UI1 "\x11"
#define VTS_I8 "\x14"
#define VTS_PI2 "\x42"
#define VTS_PI4 "\x43"
#define VTS_PR4 "\x44"
#define VTS_PR8 "\x45"
#define VTS_PCY "\x46"
#define VTS_PDATE "\x47"
#define VTS_PBSTR "\x48"
#define VTS_PDISPATCH "\x49"
#define VTS_PSCODE "\x4A"
#define VTS_PBOOL "\x4B"
#define VTS_PVARIANT "\x4C"
#define VTS_PUNKNOWN "\x4D"
#define VTS_PUI1 "\x51"
#define VTS_PI8 "\x54"
#define VTS_COLOR VTS_I4
#define VTS_PCOLOR VTS_PI4
#define VTS_FONT VTS_DISPATCH
#define VTS_PICTURE VTS_DISPATCH
#define VTS_HANDLE VTS_I4
#define VTS_TRISTATE VTS_I2
#define VTS_OPTEXCLUSIVE VTS_PBOOL
#define VTS_XPOS_PIXELS VTS_I4
#define VTS_YPOS_PIXELS VTS_I4
#define VTS_XSIZE_PIXELS VTS_I4
#define VTS_YSIZE_PIXELS VTS_I4
#define VTS_XPOS_HIMETRIC VTS_I4
#define VTS_YPOS_HIMETRIC VTS_I4
#define VTS_XSIZE_HIMETRIC VTS_I4
#define VTS_YSIZE_HIMETRIC VTS_I4

namespace afxevent
{

inline constexpr unsigned char kByRef = 0x40;

// How one C++ parameter is taken out of a VARIANT of the listed type. Fits says which types it accepts.
template <class T>
struct Arg;

#define AFX_EVENT_ARG_(T, fits, member)                                                                      \
    template <>                                                                                              \
    struct Arg<T> {                                                                                          \
        static constexpr bool Fits(unsigned char type) { return fits; }                                      \
        static T Get(VARIANT& value) { return (T)value.member; }                                             \
    };
#define AFX_EVENT_REF_(T, vt, member) AFX_EVENT_ARG_(T*, type == (kByRef | (vt)), member)
AFX_EVENT_ARG_(BYTE, type == VT_UI1, bVal)
AFX_EVENT_ARG_(short, type == VT_I2, iVal)
AFX_EVENT_ARG_(long, type == VT_I4 || type == VT_ERROR, lVal)
AFX_EVENT_ARG_(unsigned long, type == VT_I4, lVal)
AFX_EVENT_ARG_(LONGLONG, type == VT_I8, llVal)
AFX_EVENT_ARG_(float, type == VT_R4, fltVal)
AFX_EVENT_ARG_(double, type == VT_R8 || type == VT_DATE, dblVal)
AFX_EVENT_ARG_(const CY&, type == VT_CY, cyVal)
AFX_EVENT_ARG_(BOOL, type == VT_BOOL, boolVal != VARIANT_FALSE)
AFX_EVENT_ARG_(LPDISPATCH, type == VT_DISPATCH, pdispVal)
AFX_EVENT_ARG_(LPUNKNOWN, type == VT_UNKNOWN, punkVal)
AFX_EVENT_REF_(BYTE, VT_UI1, pbVal)
AFX_EVENT_ARG_(short*, type == (kByRef | VT_I2) || type == (kByRef | VT_BOOL), piVal)
AFX_EVENT_ARG_(long*, type == (kByRef | VT_I4) || type == (kByRef | VT_ERROR), plVal)
AFX_EVENT_REF_(LONGLONG, VT_I8, pllVal)
AFX_EVENT_REF_(float, VT_R4, pfltVal)
AFX_EVENT_ARG_(double*, type == (kByRef | VT_R8) || type == (kByRef | VT_DATE), pdblVal)
AFX_EVENT_REF_(CY, VT_CY, pcyVal)
AFX_EVENT_REF_(BSTR, VT_BSTR, pbstrVal)
AFX_EVENT_REF_(LPDISPATCH, VT_DISPATCH, ppdispVal)
AFX_EVENT_REF_(LPUNKNOWN, VT_UNKNOWN, ppunkVal)
#undef AFX_EVENT_REF_
#undef AFX_EVENT_ARG_

template <>
struct Arg<LPCWSTR> {
    static constexpr bool Fits(unsigned char type) { return type == VT_BSTR; }
    // A null BSTR is an empty text.
    static LPCWSTR Get(VARIANT& value) { return value.bstrVal != nullptr ? value.bstrVal : L""; }
};
template <>
struct Arg<VARIANT*> {
    static constexpr bool Fits(unsigned char type) { return type == (kByRef | VT_VARIANT); }
    static VARIANT* Get(VARIANT& value) { return value.pvarVal; }
};
template <>
struct Arg<const VARIANT&> {
    static constexpr bool Fits(unsigned char type) { return type == VT_VARIANT; }
    static const VARIANT& Get(VARIANT& value) { return value; }
};

// The parameters of one event, converted to the listed types and in their order; cleared at the end.
class AFX_SUBSET_API Parameters
{
public:
    static constexpr UINT kMost = 16;

    Parameters(const DISPPARAMS& given, const char* types, UINT count);
    ~Parameters();
    Parameters(const Parameters&) = delete;
    Parameters& operator=(const Parameters&) = delete;
    // S_OK, DISP_E_BADPARAMCOUNT or DISP_E_TYPEMISMATCH.
    HRESULT Status() const { return m_status; }
    VARIANT& operator[](size_t index) { return m_values[index]; }

private:
    VARIANT m_values[kMost];
    UINT m_count = 0;
    HRESULT m_status = S_OK;
};

constexpr size_t Count(const char* types)
{
    size_t count = 0;
    while (types != nullptr && types[count] != 0)
        ++count;
    return count;
}

// Calls a handler: S_OK when it has handled the event, S_FALSE when not, else why it could not be called.
typedef HRESULT (*Thunk)(CCmdTarget* target, UINT idCtrl, const DISPPARAMS& params);

template <class... Args, class Function, size_t... I>
HRESULT CallConverted(Function function, const DISPPARAMS& params, const char* types,
                      std::index_sequence<I...>)
{
    static_assert(sizeof...(Args) <= Parameters::kMost);
    Parameters values(params, types, sizeof...(Args));
    if (values.Status() != S_OK)
        return values.Status();
    if constexpr (std::is_void_v<decltype(function(Arg<Args>::Get(values[I])...))>) {
        function(Arg<Args>::Get(values[I])...);
        return S_OK;
    } else {
        return function(Arg<Args>::Get(values[I])...) ? S_OK : S_FALSE;
    }
}

template <class Handler>
struct Signature;

template <class Result, class Class, class... Args>
struct Signature<Result (Class::*)(Args...)> {
    static constexpr bool Fits(const char* types)
    {
        if (Count(types) != sizeof...(Args))
            return false;
        [[maybe_unused]] size_t index = 0;
        return (Arg<Args>::Fits(static_cast<unsigned char>(types[index++])) && ...);
    }

    template <class Target>
    static HRESULT Invoke(Target* target, Result (Class::*handler)(Args...), UINT, const DISPPARAMS& params,
                          const char* types)
    {
        return CallConverted<Args...>([=](Args... args) { return (target->*handler)(args...); }, params,
                                      types, std::index_sequence_for<Args...>());
    }
};

// The same with the control's id as the first parameter, which the list of types names too.
template <class Handler>
struct RangeSignature;

template <class Result, class Class, class... Args>
struct RangeSignature<Result (Class::*)(UINT, Args...)> {
    static constexpr bool Fits(const char* types)
    {
        return Count(types) == sizeof...(Args) + 1 && types[0] == VT_I4 &&
               Signature<Result (Class::*)(Args...)>::Fits(types + 1);
    }

    template <class Target>
    static HRESULT Invoke(Target* target, Result (Class::*handler)(UINT, Args...), UINT idCtrl,
                          const DISPPARAMS& params, const char* types)
    {
        return CallConverted<Args...>([=](Args... args) { return (target->*handler)(idCtrl, args...); },
                                      params, types + 1, std::index_sequence_for<Args...>());
    }
};

// GetHandler and GetTypes are stateless lambdas that answer the member pointer and the VTS_ list.
template <class Target, template <class> class Kind, class GetHandler, class GetTypes>
constexpr Thunk Bind(GetHandler, GetTypes)
{
    using Call = Kind<decltype(GetHandler{}())>;
    static_assert(Call::Fits(GetTypes{}()), "the handler's parameters differ from the VTS_ list");
    return [](CCmdTarget* target, UINT idCtrl, const DISPPARAMS& params) {
        return Call::Invoke(static_cast<Target*>(target), GetHandler{}(), idCtrl, params, GetTypes{}());
    };
}

} // namespace afxevent

struct AFX_EVENTSINKMAP_ENTRY {
    DISPID dispid;
    UINT nCtrlIDFirst;
    UINT nCtrlIDLast;
    BOOL bReflect; // an event of the control that the object itself stands for
    afxevent::Thunk pfn;
};

struct AFX_EVENTSINKMAP {
    const AFX_EVENTSINKMAP*(PASCAL* pfnGetBaseMap)();
    const AFX_EVENTSINKMAP_ENTRY* lpEntries;
    UINT nEntryCount;
};

#define BEGIN_EVENTSINK_MAP(theClass, baseClass)                                                             \
    const AFX_EVENTSINKMAP* theClass::GetEventSinkMap() const                                                \
    {                                                                                                        \
        return GetThisEventSinkMap();                                                                        \
    }                                                                                                        \
    const AFX_EVENTSINKMAP* PASCAL theClass::GetThisEventSinkMap()                                           \
    {                                                                                                        \
        typedef baseClass TheBaseClass;                                                                      \
        static const AFX_EVENTSINKMAP_ENTRY _eventsinkEntries[] = {

#define END_EVENTSINK_MAP()                                                                                  \
    {                                                                                                        \
        0, 0, 0, FALSE, nullptr                                                                              \
    }                                                                                                        \
    }                                                                                                        \
    ;                                                                                                        \
    static const AFX_EVENTSINKMAP eventsinkMap = {&TheBaseClass::GetThisEventSinkMap, &_eventsinkEntries[0], \
                                                  (UINT)(_countof(_eventsinkEntries) - 1)};                  \
    return &eventsinkMap;                                                                                    \
    }

#define AFX_EVENT_THUNK_(theClass, Kind, fn, types)                                                          \
    afxevent::Bind<theClass, afxevent::Kind>([] { return fn; },                                              \
                                             [] { return static_cast<const char*>(types); })
#define ON_EVENT(theClass, id, dispid, pfnHandler, vtsParams)                                                \
    {dispid, (UINT)(id), (UINT)(id), FALSE, AFX_EVENT_THUNK_(theClass, Signature, pfnHandler, vtsParams)},
#define ON_EVENT_RANGE(theClass, idFirst, idLast, dispid, pfnHandler, vtsParams)                             \
    {dispid, (UINT)(idFirst), (UINT)(idLast), FALSE,                                                         \
     AFX_EVENT_THUNK_(theClass, RangeSignature, pfnHandler, vtsParams)},
#define ON_EVENT_REFLECT(theClass, dispid, pfnHandler, vtsParams)                                            \
    {dispid, 0, 0, TRUE, AFX_EVENT_THUNK_(theClass, Signature, pfnHandler, vtsParams)},
