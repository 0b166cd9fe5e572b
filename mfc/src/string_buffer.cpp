// CSimpleStringT: shared storage, copied when a string that shares it is written to.
#include "afx.h"
#include "string_chars.h"

#include <algorithm>
#include <climits>
#include <functional>

namespace
{

// The characters of every empty string. Never counted, never written to; marked as shared so that writers
// take a buffer of their own.
struct NilString {
    CStringData data = {0, 0, 2};
    wchar_t terminator[2] = {0, 0};
};
NilString g_nil;

bool IsNil(const CStringData* data)
{
    return data == &g_nil.data;
}

template <typename BaseType>
CStringData* AllocateData(int capacity)
{
    // Rounded up, so that small additions find room. The header and a terminator must fit too.
    if (capacity < 0 || capacity > INT_MAX - 8)
        AfxThrowMemoryException();
    const int rounded = (capacity + 8) & ~7;
    auto* data = static_cast<CStringData*>(
        malloc(sizeof(CStringData) + static_cast<size_t>(rounded) * sizeof(BaseType)));
    if (data == nullptr)
        AfxThrowMemoryException();
    data->nAllocLength = rounded - 1;
    data->nDataLength = 0;
    data->nRefs = 1;
    return data;
}

void AddReference(CStringData* data)
{
    if (!IsNil(data))
        InterlockedIncrement(&data->nRefs);
}

void ReleaseReference(CStringData* data)
{
    if (!IsNil(data) && InterlockedDecrement(&data->nRefs) <= 0)
        free(data);
}

int CheckedLength(int length)
{
    if (length < 0)
        AfxThrowInvalidArgException();
    return length;
}

int Sum(int a, int b)
{
    if (a > INT_MAX - b)
        AfxThrowMemoryException();
    return a + b;
}

} // namespace

void AFXAPI AtlThrow(HRESULT hr)
{
    if (hr == E_OUTOFMEMORY)
        AfxThrowMemoryException();
    if (hr == E_INVALIDARG)
        AfxThrowInvalidArgException();
    AfxThrowResourceException();
}

template <typename BaseType>
CSimpleStringT<BaseType>::CSimpleStringT() throw()
{
    Attach(&g_nil.data);
}

template <typename BaseType>
CSimpleStringT<BaseType>::CSimpleStringT(const CSimpleStringT& strSrc) : CSimpleStringT()
{
    *this = strSrc;
}

template <typename BaseType>
CSimpleStringT<BaseType>::CSimpleStringT(PCXSTR pszSrc) : CSimpleStringT()
{
    SetString(pszSrc);
}

template <typename BaseType>
CSimpleStringT<BaseType>::CSimpleStringT(PCXSTR pchSrc, int nLength) : CSimpleStringT()
{
    SetString(pchSrc, nLength);
}

template <typename BaseType>
CSimpleStringT<BaseType>::~CSimpleStringT() throw()
{
    ReleaseReference(GetData());
}

template <typename BaseType>
CSimpleStringT<BaseType>& CSimpleStringT<BaseType>::operator=(const CSimpleStringT& strSrc)
{
    CStringData* const source = strSrc.GetData();
    CStringData* const own = GetData();
    if (source == own)
        return *this;
    if (own->IsLocked() || source->IsLocked()) {
        SetString(strSrc.m_pszData, source->nDataLength);
    } else {
        AddReference(source);
        Attach(source);
        ReleaseReference(own);
    }
    return *this;
}

template <typename BaseType>
CSimpleStringT<BaseType>& CSimpleStringT<BaseType>::operator=(PCXSTR pszSrc)
{
    SetString(pszSrc);
    return *this;
}

template <typename BaseType>
CSimpleStringT<BaseType>& CSimpleStringT<BaseType>::operator+=(const CSimpleStringT& strSrc)
{
    Append(strSrc);
    return *this;
}

template <typename BaseType>
CSimpleStringT<BaseType>& CSimpleStringT<BaseType>::operator+=(PCXSTR pszSrc)
{
    Append(pszSrc);
    return *this;
}

template <typename BaseType>
CSimpleStringT<BaseType>& CSimpleStringT<BaseType>::operator+=(XCHAR ch)
{
    AppendChar(ch);
    return *this;
}

template <typename BaseType>
bool CSimpleStringT<BaseType>::OwnsPointer(PCXSTR psz) const throw()
{
    return !std::less<PCXSTR>()(psz, m_pszData) && !std::less<PCXSTR>()(m_pszData + GetAllocLength(), psz);
}

template <typename BaseType>
void CSimpleStringT<BaseType>::Reallocate(int nCapacity)
{
    CStringData* const old = GetData();
    CStringData* const data = AllocateData<BaseType>(nCapacity);
    data->nDataLength = std::min(old->nDataLength, data->nAllocLength);
    PCXSTR const text = m_pszData;
    Attach(data);
    CopyChars(m_pszData, text, data->nDataLength);
    m_pszData[data->nDataLength] = 0;
    if (old->IsLocked())
        free(old);
    else
        ReleaseReference(old);
}

template <typename BaseType>
typename CSimpleStringT<BaseType>::PXSTR CSimpleStringT<BaseType>::PrepareWrite(int nLength)
{
    CStringData* const data = GetData();
    if (nLength > data->nAllocLength) {
        // Half again as much, so that appending piece by piece stays linear.
        const int grown = data->nAllocLength > INT_MAX / 2 ? nLength : data->nAllocLength * 3 / 2;
        Reallocate(std::max(nLength, grown));
    } else if (data->IsShared()) {
        Reallocate(std::max(nLength, data->nDataLength));
    }
    return m_pszData;
}

template <typename BaseType>
void CSimpleStringT<BaseType>::SetLength(int nLength)
{
    if (IsNil(GetData()))
        return;
    GetData()->nDataLength = nLength;
    m_pszData[nLength] = 0;
}

template <typename BaseType>
void CSimpleStringT<BaseType>::SetAt(int iChar, XCHAR ch)
{
    if (iChar < 0 || iChar >= GetLength())
        AfxThrowInvalidArgException();
    PrepareWrite(GetLength())[iChar] = ch;
}

template <typename BaseType>
void CSimpleStringT<BaseType>::Append(PCXSTR pszSrc)
{
    Append(pszSrc, StringLength(pszSrc));
}

template <typename BaseType>
void CSimpleStringT<BaseType>::Append(PCXSTR pszSrc, int nLength)
{
    if (CheckedLength(nLength) == 0)
        return;
    if (pszSrc == nullptr)
        AfxThrowInvalidArgException();
    // A source within this string moves along with it when the buffer grows.
    const bool own = OwnsPointer(pszSrc);
    const auto offset = own ? pszSrc - m_pszData : 0;
    const int oldLength = GetLength();
    const int newLength = Sum(oldLength, nLength);
    PXSTR const buffer = PrepareWrite(newLength);
    CopyCharsOverlapped(buffer + oldLength, own ? buffer + offset : pszSrc, nLength);
    SetLength(newLength);
}

template <typename BaseType>
void CSimpleStringT<BaseType>::Append(const CSimpleStringT& strSrc)
{
    Append(strSrc.m_pszData, strSrc.GetLength());
}

template <typename BaseType>
void CSimpleStringT<BaseType>::AppendChar(XCHAR ch)
{
    Append(&ch, 1);
}

template <typename BaseType>
void CSimpleStringT<BaseType>::SetString(PCXSTR pszSrc)
{
    SetString(pszSrc, StringLength(pszSrc));
}

template <typename BaseType>
void CSimpleStringT<BaseType>::SetString(PCXSTR pszSrc, int nLength)
{
    if (CheckedLength(nLength) == 0) {
        Empty();
        return;
    }
    if (pszSrc == nullptr)
        AfxThrowInvalidArgException();
    if (OwnsPointer(pszSrc) && GetData()->IsShared()) {
        // The source is shared text, which writing would leave behind.
        CSimpleStringT copy;
        CopyChars(copy.PrepareWrite(nLength), pszSrc, nLength);
        copy.SetLength(nLength);
        Swap(copy);
        return;
    }
    const bool own = OwnsPointer(pszSrc);
    const auto offset = own ? pszSrc - m_pszData : 0;
    PXSTR const buffer = PrepareWrite(nLength);
    CopyCharsOverlapped(buffer, own ? buffer + offset : pszSrc, nLength);
    SetLength(nLength);
}

template <typename BaseType>
void CSimpleStringT<BaseType>::Empty() throw()
{
    CStringData* const data = GetData();
    if (data->IsLocked()) {
        SetLength(0);
        return;
    }
    Attach(&g_nil.data);
    ReleaseReference(data);
}

template <typename BaseType>
void CSimpleStringT<BaseType>::FreeExtra()
{
    CStringData* const data = GetData();
    if (data->IsLocked() || data->nDataLength == data->nAllocLength)
        return;
    if (data->nDataLength == 0)
        Empty();
    else
        Reallocate(data->nDataLength);
}

template <typename BaseType>
void CSimpleStringT<BaseType>::Preallocate(int nLength)
{
    PrepareWrite(CheckedLength(nLength));
}

template <typename BaseType>
void CSimpleStringT<BaseType>::Truncate(int nNewLength)
{
    if (nNewLength < 0 || nNewLength > GetLength())
        AfxThrowInvalidArgException();
    PrepareWrite(nNewLength);
    SetLength(nNewLength);
}

template <typename BaseType>
typename CSimpleStringT<BaseType>::PXSTR CSimpleStringT<BaseType>::GetBuffer()
{
    return GetBuffer(GetLength());
}

template <typename BaseType>
typename CSimpleStringT<BaseType>::PXSTR CSimpleStringT<BaseType>::GetBuffer(int nMinBufferLength)
{
    return PrepareWrite(CheckedLength(nMinBufferLength));
}

template <typename BaseType>
typename CSimpleStringT<BaseType>::PXSTR CSimpleStringT<BaseType>::GetBufferSetLength(int nLength)
{
    PXSTR const buffer = GetBuffer(nLength);
    SetLength(nLength);
    return buffer;
}

template <typename BaseType>
void CSimpleStringT<BaseType>::ReleaseBuffer(int nNewLength)
{
    if (nNewLength == -1) {
        // A text that fills the buffer without a terminator ends with the buffer.
        PCXSTR const end = m_pszData + GetAllocLength();
        nNewLength = static_cast<int>(std::find(static_cast<PCXSTR>(m_pszData), end, XCHAR(0)) - m_pszData);
    }
    ReleaseBufferSetLength(nNewLength);
}

template <typename BaseType>
void CSimpleStringT<BaseType>::ReleaseBufferSetLength(int nNewLength)
{
    if (nNewLength < 0 || nNewLength > GetAllocLength())
        AfxThrowInvalidArgException();
    SetLength(nNewLength);
}

template <typename BaseType>
typename CSimpleStringT<BaseType>::PXSTR CSimpleStringT<BaseType>::LockBuffer()
{
    if (!GetData()->IsLocked()) {
        if (GetData()->IsShared())
            Reallocate(GetLength());
        GetData()->nRefs = -1;
    }
    return m_pszData;
}

template <typename BaseType>
void CSimpleStringT<BaseType>::UnlockBuffer() throw()
{
    if (GetData()->IsLocked())
        GetData()->nRefs = 1;
}

template <typename BaseType>
void CSimpleStringT<BaseType>::CopyChars(XCHAR* pchDest, const XCHAR* pchSrc, int nChars) throw()
{
    if (nChars > 0)
        memcpy(pchDest, pchSrc, static_cast<size_t>(nChars) * sizeof(XCHAR));
}

template <typename BaseType>
void CSimpleStringT<BaseType>::CopyChars(XCHAR* pchDest, size_t nDestLen, const XCHAR* pchSrc,
                                         int nChars) throw()
{
    if (nChars > 0 && static_cast<size_t>(nChars) <= nDestLen)
        CopyChars(pchDest, pchSrc, nChars);
}

template <typename BaseType>
void CSimpleStringT<BaseType>::CopyCharsOverlapped(XCHAR* pchDest, const XCHAR* pchSrc, int nChars) throw()
{
    if (nChars > 0)
        memmove(pchDest, pchSrc, static_cast<size_t>(nChars) * sizeof(XCHAR));
}

template <typename BaseType>
int CSimpleStringT<BaseType>::StringLength(PCXSTR psz)
{
    if (psz == nullptr)
        return 0;
    const size_t length = afx_subset::Length(psz);
    if (length > INT_MAX)
        AfxThrowMemoryException();
    return static_cast<int>(length);
}

template class CSimpleStringT<wchar_t>;
template class CSimpleStringT<char>;
