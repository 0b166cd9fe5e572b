// The ready-made collections' class information, and the element helpers that are not templates.
#include "afxcoll.h"

#include <string_view>

IMPLEMENT_SERIAL(CByteArray, CObject, 0)
IMPLEMENT_SERIAL(CWordArray, CObject, 0)
IMPLEMENT_SERIAL(CDWordArray, CObject, 0)
IMPLEMENT_DYNAMIC(CUIntArray, CObject)
IMPLEMENT_DYNAMIC(CPtrArray, CObject)
IMPLEMENT_SERIAL(CObArray, CObject, 0)
IMPLEMENT_SERIAL(CStringArray, CObject, 0)
IMPLEMENT_DYNAMIC(CPtrList, CObject)
IMPLEMENT_SERIAL(CObList, CObject, 0)
IMPLEMENT_SERIAL(CStringList, CObject, 0)
IMPLEMENT_DYNAMIC(CMapPtrToPtr, CObject)
IMPLEMENT_DYNAMIC(CMapPtrToWord, CObject)
IMPLEMENT_DYNAMIC(CMapWordToPtr, CObject)
IMPLEMENT_SERIAL(CMapWordToOb, CObject, 0)
IMPLEMENT_DYNAMIC(CMapStringToPtr, CObject)
IMPLEMENT_SERIAL(CMapStringToOb, CObject, 0)
IMPLEMENT_SERIAL(CMapStringToString, CObject, 0)

namespace
{

template <typename TYPE>
void TransferEach(CArchive& ar, TYPE* elements, INT_PTR count)
{
    for (INT_PTR i = 0; i < count; ++i) {
        if (ar.IsStoring())
            ar << elements[i];
        else
            ar >> elements[i];
    }
}

template <typename Char>
UINT HashText(const Char* text)
{
    if (text == nullptr)
        AfxThrowInvalidArgException();
    return static_cast<UINT>(std::hash<std::basic_string_view<Char>>()(text));
}

} // namespace

template <>
void AFXAPI SerializeElements<CStringW>(CArchive& ar, CStringW* pElements, INT_PTR nCount)
{
    TransferEach(ar, pElements, nCount);
}

template <>
void AFXAPI SerializeElements<CStringA>(CArchive& ar, CStringA* pElements, INT_PTR nCount)
{
    TransferEach(ar, pElements, nCount);
}

template <>
void AFXAPI SerializeElements<CObject*>(CArchive& ar, CObject** pElements, INT_PTR nCount)
{
    TransferEach(ar, pElements, nCount);
}

template <>
UINT AFXAPI HashKey<LPCWSTR>(LPCWSTR key)
{
    return HashText(key);
}

template <>
UINT AFXAPI HashKey<LPCSTR>(LPCSTR key)
{
    return HashText(key);
}
