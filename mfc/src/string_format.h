// CStringT: formatting, resources, the environment and BSTRs. Included by the source that instantiates the
// class.
#pragma once

#include "afx.h"
#include "string_chars.h"

// The module whose string table has the id, by the framework's search.
AFX_SUBSET_API HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID);

namespace afx_subset
{

// The text of a string resource, not terminated; length 0 when there is none. A table holds 16 strings, each
// with its length before it.
struct ResourceText {
    const wchar_t* text = nullptr;
    int length = 0;
};

inline ResourceText FindStringInTable(HINSTANCE module, UINT id, WORD language)
{
    const HRSRC found =
        FindResourceExW(module, RT_STRING, MAKEINTRESOURCEW(((id >> 4) + 1) & 0xFFFF), language);
    const HGLOBAL loaded = found != nullptr ? LoadResource(module, found) : nullptr;
    const auto* at = static_cast<const wchar_t*>(loaded != nullptr ? LockResource(loaded) : nullptr);
    if (at == nullptr)
        return {};
    const wchar_t* const end = at + SizeofResource(module, found) / sizeof(wchar_t);
    for (UINT skip = id & 15; at < end && skip > 0; --skip)
        at += *at + 1;
    if (at >= end || *at > end - at - 1)
        return {};
    return {at + 1, *at};
}

} // namespace afx_subset

template <typename BaseType>
void CStringT<BaseType>::FormatV(PCXSTR pszFormat, va_list args)
{
    if (pszFormat == nullptr)
        AtlThrow(E_INVALIDARG);
    va_list again;
    va_copy(again, args);
    const int length = afx_subset::FormattedLength(pszFormat, args);
    // The result is built apart, for the arguments may be this string's own text.
    CStringT result;
    if (length > 0)
        afx_subset::FormatInto(result.GetBuffer(length), static_cast<size_t>(length) + 1, pszFormat, again);
    va_end(again);
    if (length < 0)
        AtlThrow(E_INVALIDARG);
    result.ReleaseBufferSetLength(length);
    Base::operator=(result);
}

template <typename BaseType>
void __cdecl CStringT<BaseType>::FormatArguments(PCXSTR pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    try {
        FormatV(pszFormat, args);
    } catch (...) {
        va_end(args);
        throw;
    }
    va_end(args);
}

template <typename BaseType>
void CStringT<BaseType>::FormatMessageV(PCXSTR pszFormat, va_list* pArgList)
{
    if (pszFormat == nullptr)
        AtlThrow(E_INVALIDARG);
    PXSTR block = nullptr;
    const DWORD length = afx_subset::FormatSystem(pszFormat, &block, pArgList);
    if (block == nullptr) {
        if (GetLastError() == ERROR_NOT_ENOUGH_MEMORY)
            AtlThrow(E_OUTOFMEMORY);
        Base::Empty();
        return;
    }
    try {
        Base::SetString(block, static_cast<int>(length));
    } catch (...) {
        LocalFree(block);
        throw;
    }
    LocalFree(block);
}

template <typename BaseType>
void __cdecl CStringT<BaseType>::FormatMessageArguments(PCXSTR pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    try {
        FormatMessageV(pszFormat, &args);
    } catch (...) {
        va_end(args);
        throw;
    }
    va_end(args);
}

template <typename BaseType>
CStringT<BaseType> CStringT<BaseType>::FormatResource(UINT nFormatID)
{
    CStringT format;
    if (!format.LoadString(nFormatID))
        AtlThrow(E_FAIL);
    return format;
}

template <typename BaseType>
BOOL CStringT<BaseType>::LoadString(UINT nID)
{
    const HINSTANCE module = AfxFindStringResourceHandle(nID);
    return module != nullptr && LoadString(module, nID);
}

template <typename BaseType>
BOOL CStringT<BaseType>::LoadString(HINSTANCE hInstance, UINT nID)
{
    // Asked for 0 characters, the system answers where the text stands.
    const wchar_t* text = nullptr;
    const int length = ::LoadStringW(hInstance, nID, reinterpret_cast<LPWSTR>(&text), 0);
    if (length <= 0 || text == nullptr)
        return FALSE;
    *this = CStringT(text, length);
    return TRUE;
}

template <typename BaseType>
BOOL CStringT<BaseType>::LoadString(HINSTANCE hInstance, UINT nID, WORD wLanguageID)
{
    const afx_subset::ResourceText found = afx_subset::FindStringInTable(hInstance, nID, wLanguageID);
    if (found.length == 0)
        return FALSE;
    *this = CStringT(found.text, found.length);
    return TRUE;
}

template <typename BaseType>
BOOL CStringT<BaseType>::GetEnvironmentVariable(PCXSTR pszVar)
{
    CStringT value;
    BOOL exists = FALSE;
    // The variable may grow between the two questions.
    for (DWORD room = 0; pszVar != nullptr;) {
        SetLastError(ERROR_SUCCESS);
        const DWORD length = afx_subset::Environment(pszVar, value.GetBuffer(static_cast<int>(room)), room);
        if (length > room) {
            room = length;
            continue;
        }
        exists = length > 0 || GetLastError() != ERROR_ENVVAR_NOT_FOUND;
        value.ReleaseBufferSetLength(exists ? static_cast<int>(length) : 0);
        break;
    }
    Base::operator=(value);
    return exists;
}

template <typename BaseType>
BSTR CStringT<BaseType>::AllocSysString() const
{
    const CStringW wide(Base::GetString(), Base::GetLength());
    const BSTR text = SysAllocStringLen(wide, static_cast<UINT>(wide.GetLength()));
    if (text == nullptr)
        AtlThrow(E_OUTOFMEMORY);
    return text;
}

template <typename BaseType>
BSTR CStringT<BaseType>::SetSysString(BSTR* pbstr) const
{
    if (pbstr == nullptr)
        AtlThrow(E_INVALIDARG);
    const CStringW wide(Base::GetString(), Base::GetLength());
    if (!SysReAllocStringLen(pbstr, wide, static_cast<UINT>(wide.GetLength())))
        AtlThrow(E_OUTOFMEMORY);
    return *pbstr;
}
