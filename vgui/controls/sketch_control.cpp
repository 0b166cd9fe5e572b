#include "vgui/controls/sketch_control.h"

#include <type_traits>

IMPLEMENT_DYNCREATE(CVOSlide4, CWnd)

namespace
{

// Stands for the control's own class identifier, whose one place is this.
constexpr CLSID kSketchClass = {0x20962AAA, 0xEE1F, 0x4877, {0xB9, 0x87, 0xD4, 0xFC, 0xF7, 0x6E, 0xEC, 0x7E}};

// The automation type of a C++ type: the one byte of its VTS_ constant.
template <class T>
constexpr BYTE TypeOf()
{
    if constexpr (std::is_same_v<T, short>)
        return *VTS_I2;
    else if constexpr (std::is_same_v<T, long>)
        return *VTS_I4;
    else if constexpr (std::is_same_v<T, float>)
        return *VTS_R4;
    else if constexpr (std::is_same_v<T, double>)
        return *VTS_R8;
    else if constexpr (std::is_same_v<T, LPCTSTR> || std::is_same_v<T, CString>)
        return *VTS_BSTR;
    else if constexpr (std::is_same_v<T, long*>)
        return *VTS_PI4;
    else if constexpr (std::is_same_v<T, BSTR*>)
        return *VTS_PBSTR;
    else if constexpr (std::is_same_v<T, COleVariant>)
        return *VTS_VARIANT;
    else
        static_assert(!sizeof(T), "no automation type");
}

// The address in a result. A value that the result itself owns is no record of the control.
const void* AddressIn(const VARIANT& result)
{
    switch (result.vt) {
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
        return reinterpret_cast<const void*>(static_cast<ULONG_PTR>(result.ulVal));
    case VT_I8:
    case VT_UI8:
    case VT_PTR:
    case VT_INT_PTR:
    case VT_UINT_PTR:
        return reinterpret_cast<const void*>(static_cast<ULONG_PTR>(result.ullVal));
    default:
        return (result.vt & VT_BYREF) != 0 ? result.byref : nullptr;
    }
}

} // namespace

template <class Result, class... Args>
Result CVOSlide4::Call(DISPID member, Args... args)
{
    static constexpr BYTE types[] = {TypeOf<Args>()..., 0};
    if constexpr (std::is_void_v<Result>) {
        InvokeHelper(member, DISPATCH_METHOD, VT_EMPTY, nullptr, types, args...);
    } else {
        Result result{};
        InvokeHelper(member, DISPATCH_METHOD, TypeOf<Result>(), &result, types, args...);
        return result;
    }
}

const CLSID& CVOSlide4::GetClsid()
{
    return kSketchClass;
}

BOOL CVOSlide4::Create(LPCTSTR, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                       UINT nID, CCreateContext*)
{
    return CreateControl(GetClsid(), lpszWindowName, dwStyle, rect, pParentWnd, nID);
}

BOOL CVOSlide4::Create(LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                       CFile* pPersist, BOOL bStorage)
{
    return CreateControl(GetClsid(), lpszWindowName, dwStyle, rect, pParentWnd, nID, pPersist, bStorage);
}

COLORREF CVOSlide4::GetForeColor()
{
    long color = 0;
    GetProperty(DISPID_FORECOLOR, VT_I4, &color);
    return static_cast<COLORREF>(color);
}

void CVOSlide4::SetForeColor(COLORREF newValue)
{
    SetProperty(DISPID_FORECOLOR, VT_I4, static_cast<long>(newValue));
}

const VOAttribute* CVOSlide4::GetAttribute(const CString& name)
{
    COleVariant result;
    GetAttribute(name, result);
    return static_cast<const VOAttribute*>(AddressIn(result));
}

CString CVOSlide4::GetAttributeValue(const CString& name)
{
    COleVariant result;
    GetAttributeValue(name, result);
    if (FAILED(::VariantChangeType(&result, &result, 0, VT_BSTR)))
        return {};
    return result.bstrVal;
}

// The control's members: identifier, parameters and result.
// clang-format off
void CVOSlide4::SetInit()                                         { Call(1); }
void CVOSlide4::SetAutoCad(long autoCad)                          { Call(2, autoCad); }
void CVOSlide4::SetGAJJTK(LPCTSTR name)                           { Call(3, name); }
void CVOSlide4::SetGAJJTName(LPCTSTR name)                        { Call(4, name); }
void CVOSlide4::SetAxisColor(long color)                          { Call(5, color); }
void CVOSlide4::SetAxialCoord(float x, float y)                   { Call(6, x, y); }
void CVOSlide4::SetRotatePoint(float x, float y)                  { Call(7, x, y); }
void CVOSlide4::SetRotateAngle(float angle)                       { Call(8, angle); }
void CVOSlide4::GetEntityArray(long* entities)                    { Call(9, entities); }
void CVOSlide4::SetEntityArray(long* entities, long* attributes)  { Call(10, entities, attributes); }
void CVOSlide4::SetBkColor(long color)                            { Call(11, color); }
long CVOSlide4::GetBkColor()                                      { return Call<long>(12); }
void CVOSlide4::SetEditAttr(long edit)                            { Call(13, edit); }
void CVOSlide4::SetShowMenu(long show)                            { Call(14, show); }
void CVOSlide4::SetShowDlg(long show)                             { Call(15, show); }
void CVOSlide4::GetAttribute(LPCTSTR name, COleVariant& result)   { result = Call<COleVariant>(16, name); }
void CVOSlide4::GetAttributeValue(LPCTSTR name, COleVariant& result)
                                                                  { result = Call<COleVariant>(17, name); }
long CVOSlide4::SetAttributeValue(LPCTSTR name, LPCTSTR value)    { return Call<long>(18, name, value); }
long CVOSlide4::HighlightAttribute(LPCTSTR name)                  { return Call<long>(19, name); }
void CVOSlide4::SubscribeAttChangeNotify(long* callback)          { Call(20, callback); }
void CVOSlide4::SubscribeAttSelectNotify(long* callback)          { Call(21, callback); }
void CVOSlide4::UnSubscribeAttChangeNotify(long* callback)        { Call(22, callback); }
void CVOSlide4::UnSubscribeAttSelectNotify(long* callback)        { Call(23, callback); }
void CVOSlide4::GetAttributeArray(long* attributes)               { Call(24, attributes); }
void CVOSlide4::SetHighlightFlashTime(long time)                  { Call(25, time); }
void CVOSlide4::ResetAllAttribute()                               { Call(26); }
void CVOSlide4::SetDrawAxis(long draw)                            { Call(27, draw); }
void CVOSlide4::SetDrawBorder(long draw)                          { Call(28, draw); }
void CVOSlide4::SetBorderColor(long color)                        { Call(29, color); }
void CVOSlide4::GetBmpSketch(long* bitmap, long arg2, long arg3, long arg4, long arg5, long arg6)
                                                                  { Call(30, bitmap, arg2, arg3, arg4, arg5, arg6); }
void CVOSlide4::SetTextHigh(short height)                         { Call(31, height); }
void CVOSlide4::UpdateEdit()                                      { Call(32); }
void CVOSlide4::FitSize()                                         { Call(33); }
long CVOSlide4::GetEntityCount()                                  { return Call<long>(34); }
long CVOSlide4::SubscribeAttChangeNotifyEx(long* callback)        { return Call<long>(35, callback); }
long CVOSlide4::UnSubscribeAttChangeNotifyEx(long* callback)      { return Call<long>(36, callback); }
long CVOSlide4::GetEntityInfoByIndex(long index, BSTR* name, BSTR* info)
                                                                  { return Call<long>(37, index, name, info); }
CString CVOSlide4::GetEntityInfoByName(LPCTSTR name)              { return Call<CString>(38, name); }
long CVOSlide4::SetEntityInfoByIndex(long index, LPCTSTR info)    { return Call<long>(39, index, info); }
long CVOSlide4::SetEntityInfoByName(LPCTSTR name, LPCTSTR info)   { return Call<long>(40, name, info); }
void CVOSlide4::StartFirstEditAttr()                              { Call(41); }
void CVOSlide4::SortEntsByName(LPCTSTR name)                      { Call(42, name); }
long CVOSlide4::SetEntityColor(LPCTSTR name, long color)          { return Call<long>(43, name, color); }
long CVOSlide4::SetGAJJTStream(long* stream, long size)           { return Call<long>(44, stream, size); }
long CVOSlide4::SetTextValue(LPCTSTR name, LPCTSTR value)         { return Call<long>(45, name, value); }
void CVOSlide4::CreateEntity()                                    { Call(46); }
void CVOSlide4::SetExcursionEntity(short entity, double excursion){ Call(47, entity, excursion); }
void CVOSlide4::SetDeleteEntData(long data)                       { Call(48, data); }
void CVOSlide4::AboutBox()                                        { Call(DISPID_ABOUTBOX); }
// clang-format on
