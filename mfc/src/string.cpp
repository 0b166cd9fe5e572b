// CStringT: comparing, searching, extracting and editing.
#include "string_chars.h"
#include "string_format.h"

#include <algorithm>
#include <climits>

namespace
{

template <typename BaseType>
bool Contains(const BaseType* set, BaseType ch)
{
    for (; set != nullptr && *set != 0; ++set) {
        if (*set == ch)
            return true;
    }
    return false;
}

template <typename BaseType>
const BaseType* OrEmpty(const BaseType* psz)
{
    static const BaseType empty[1] = {0};
    return psz != nullptr ? psz : empty;
}

} // namespace

template <typename BaseType>
CStringT<BaseType>::CStringT(PCXSTR pszSrc)
{
    if (pszSrc != nullptr && IS_INTRESOURCE(pszSrc))
        LoadString(LOWORD(reinterpret_cast<ULONG_PTR>(pszSrc)));
    else
        Base::SetString(pszSrc);
}

template <typename BaseType>
CStringT<BaseType>::CStringT(PCYSTR pszSrc)
{
    if (pszSrc != nullptr && IS_INTRESOURCE(pszSrc))
        LoadString(LOWORD(reinterpret_cast<ULONG_PTR>(pszSrc)));
    else
        *this = CStringT(pszSrc, CSimpleStringT<YCHAR>::StringLength(pszSrc));
}

template <typename BaseType>
CStringT<BaseType>::CStringT(const unsigned char* pszSrc) : CStringT(reinterpret_cast<const char*>(pszSrc))
{
}

template <typename BaseType>
CStringT<BaseType>::CStringT(PCYSTR pch, int nLength)
{
    if (nLength < 0 || (nLength > 0 && pch == nullptr))
        AtlThrow(E_INVALIDARG);
    if (nLength == 0)
        return;
    const int count = afx_subset::Convert(pch, nLength, static_cast<PXSTR>(nullptr), 0);
    if (count <= 0)
        AtlThrow(E_INVALIDARG);
    afx_subset::Convert(pch, nLength, Base::GetBuffer(count), count);
    Base::ReleaseBufferSetLength(count);
}

template <typename BaseType>
CStringT<BaseType>::CStringT(char ch, int nLength)
{
    if (nLength <= 0)
        return;
    if constexpr (std::is_same_v<BaseType, char>) {
        std::fill_n(Base::GetBufferSetLength(nLength), nLength, ch);
    } else {
        const CStringT one(&ch, 1);
        std::fill_n(Base::GetBufferSetLength(nLength), nLength, one.GetAt(0));
    }
}

template <typename BaseType>
CStringT<BaseType>::CStringT(wchar_t ch, int nLength)
{
    if (nLength <= 0)
        return;
    if constexpr (std::is_same_v<BaseType, wchar_t>) {
        std::fill_n(Base::GetBufferSetLength(nLength), nLength, ch);
    } else {
        // One wide character may need several bytes.
        const CStringT one(&ch, 1);
        for (int i = 0; i < nLength; ++i)
            Base::Append(one);
    }
}

template <typename BaseType>
CStringT<BaseType> CStringT<BaseType>::Join(PCXSTR psz1, int nLength1, PCXSTR psz2, int nLength2)
{
    if (nLength1 > INT_MAX - nLength2)
        AtlThrow(E_OUTOFMEMORY);
    CStringT joined;
    PXSTR const buffer = joined.GetBufferSetLength(nLength1 + nLength2);
    Base::CopyChars(buffer, psz1, nLength1);
    Base::CopyChars(buffer + nLength1, psz2, nLength2);
    return joined;
}

// ---- Comparing
// ---------------------------------------------------------------------------------------------

template <typename BaseType>
int CStringT<BaseType>::Compare(PCXSTR psz) const
{
    return afx_subset::Compare(Base::GetString(), OrEmpty(psz));
}

template <typename BaseType>
int CStringT<BaseType>::CompareNoCase(PCXSTR psz) const
{
    return afx_subset::CompareNoCase(Base::GetString(), OrEmpty(psz));
}

template <typename BaseType>
int CStringT<BaseType>::Collate(PCXSTR psz) const throw()
{
    return afx_subset::Collate(Base::GetString(), OrEmpty(psz));
}

template <typename BaseType>
int CStringT<BaseType>::CollateNoCase(PCXSTR psz) const throw()
{
    return afx_subset::CollateNoCase(Base::GetString(), OrEmpty(psz));
}

// ---- Searching
// ---------------------------------------------------------------------------------------------

template <typename BaseType>
int CStringT<BaseType>::Find(PCXSTR pszSub, int iStart) const throw()
{
    const int length = Base::GetLength();
    if (pszSub == nullptr || iStart < 0 || iStart > length)
        return -1;
    PCXSTR const text = Base::GetString();
    PCXSTR const found =
        std::search(text + iStart, text + length, pszSub, pszSub + afx_subset::Length(pszSub));
    return found == text + length && *pszSub != 0 ? -1 : static_cast<int>(found - text);
}

template <typename BaseType>
int CStringT<BaseType>::Find(XCHAR ch, int iStart) const throw()
{
    const int length = Base::GetLength();
    if (iStart < 0 || iStart >= length)
        return -1;
    PCXSTR const text = Base::GetString();
    PCXSTR const found = std::find(text + iStart, text + length, ch);
    return found == text + length ? -1 : static_cast<int>(found - text);
}

template <typename BaseType>
int CStringT<BaseType>::FindOneOf(PCXSTR pszCharSet) const throw()
{
    for (int i = 0; i < Base::GetLength(); ++i) {
        if (Contains(pszCharSet, Base::GetString()[i]))
            return i;
    }
    return -1;
}

template <typename BaseType>
int CStringT<BaseType>::ReverseFind(XCHAR ch) const throw()
{
    int i = Base::GetLength() - 1;
    while (i >= 0 && Base::GetString()[i] != ch)
        --i;
    return i;
}

// ---- Extracting
// --------------------------------------------------------------------------------------------

template <typename BaseType>
CStringT<BaseType> CStringT<BaseType>::Mid(int iFirst, int nCount) const
{
    const int length = Base::GetLength();
    iFirst = std::clamp(iFirst, 0, length);
    nCount = std::clamp(nCount, 0, length - iFirst);
    if (nCount == length)
        return *this;
    return CStringT(Base::GetString() + iFirst, nCount);
}

template <typename BaseType>
CStringT<BaseType> CStringT<BaseType>::Mid(int iFirst) const
{
    return Mid(iFirst, INT_MAX);
}

template <typename BaseType>
CStringT<BaseType> CStringT<BaseType>::Left(int nCount) const
{
    return Mid(0, nCount);
}

template <typename BaseType>
CStringT<BaseType> CStringT<BaseType>::Right(int nCount) const
{
    return Mid(Base::GetLength() - std::clamp(nCount, 0, Base::GetLength()));
}

template <typename BaseType>
CStringT<BaseType> CStringT<BaseType>::SpanIncluding(PCXSTR pszCharSet) const
{
    int end = 0;
    while (end < Base::GetLength() && Contains(pszCharSet, Base::GetString()[end]))
        ++end;
    return Left(end);
}

template <typename BaseType>
CStringT<BaseType> CStringT<BaseType>::SpanExcluding(PCXSTR pszCharSet) const
{
    const int end = FindOneOf(pszCharSet);
    return end < 0 ? *this : Left(end);
}

template <typename BaseType>
CStringT<BaseType> CStringT<BaseType>::Tokenize(PCXSTR pszTokens, int& iStart) const
{
    PCXSTR const text = Base::GetString();
    const int length = Base::GetLength();
    int first = iStart;
    while (first >= 0 && first < length && Contains(pszTokens, text[first]))
        ++first;
    if (first < 0 || first >= length) {
        iStart = -1;
        return CStringT();
    }
    int end = first;
    while (end < length && !Contains(pszTokens, text[end]))
        ++end;
    iStart = end < INT_MAX ? end + 1 : end;
    return Mid(first, end - first);
}

// ---- Editing
// -----------------------------------------------------------------------------------------------

template <typename BaseType>
int CStringT<BaseType>::Delete(int iIndex, int nCount)
{
    const int length = Base::GetLength();
    iIndex = std::clamp(iIndex, 0, length);
    nCount = std::clamp(nCount, 0, length - iIndex);
    if (nCount == 0)
        return length;
    PXSTR const buffer = Base::PrepareWrite(length);
    Base::CopyCharsOverlapped(buffer + iIndex, buffer + iIndex + nCount, length - iIndex - nCount);
    Base::SetLength(length - nCount);
    return length - nCount;
}

template <typename BaseType>
int CStringT<BaseType>::Insert(int iIndex, XCHAR ch)
{
    const XCHAR text[2] = {ch, 0};
    if (ch != 0)
        return Insert(iIndex, text);
    // A null character is inserted like any other.
    const int index = std::clamp(iIndex, 0, Base::GetLength());
    *this = Left(index) + CStringT(text, 1) + Mid(index);
    return Base::GetLength();
}

template <typename BaseType>
int CStringT<BaseType>::Insert(int iIndex, PCXSTR psz)
{
    const int length = Base::GetLength();
    const int count = Base::StringLength(psz);
    if (count == 0)
        return length;
    if (length > INT_MAX - count)
        AtlThrow(E_OUTOFMEMORY);
    const CStringT inserted(psz, count); // psz may lie within this string
    iIndex = std::clamp(iIndex, 0, length);
    PXSTR const buffer = Base::PrepareWrite(length + count);
    Base::CopyCharsOverlapped(buffer + iIndex + count, buffer + iIndex, length - iIndex);
    Base::CopyChars(buffer + iIndex, inserted, count);
    Base::SetLength(length + count);
    return length + count;
}

template <typename BaseType>
int CStringT<BaseType>::Replace(XCHAR chOld, XCHAR chNew)
{
    const int length = Base::GetLength();
    PCXSTR const text = Base::GetString();
    const int count = static_cast<int>(std::count(text, text + length, chOld));
    if (chOld == chNew || count == 0)
        return 0;
    PXSTR const buffer = Base::PrepareWrite(length);
    std::replace(buffer, buffer + length, chOld, chNew);
    return count;
}

template <typename BaseType>
int CStringT<BaseType>::Replace(PCXSTR pszOld, PCXSTR pszNew)
{
    const int oldLength = Base::StringLength(pszOld);
    const int newLength = Base::StringLength(pszNew);
    if (oldLength == 0)
        return 0;
    CStringT result;
    int count = 0;
    int copied = 0;
    for (int found = Find(pszOld); found >= 0; found = Find(pszOld, copied)) {
        result.Append(Base::GetString() + copied, found - copied);
        result.Append(pszNew, newLength);
        copied = found + oldLength;
        ++count;
    }
    if (count == 0)
        return 0;
    result.Append(Base::GetString() + copied, Base::GetLength() - copied);
    Base::operator=(result);
    return count;
}

template <typename BaseType>
int CStringT<BaseType>::Remove(XCHAR chRemove)
{
    const int length = Base::GetLength();
    if (Find(chRemove) < 0)
        return 0;
    PXSTR const buffer = Base::PrepareWrite(length);
    const int kept = static_cast<int>(std::remove(buffer, buffer + length, chRemove) - buffer);
    Base::SetLength(kept);
    return length - kept;
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::MakeUpper()
{
    afx_subset::ToUpper(Base::GetBuffer(), Base::GetLength());
    return *this;
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::MakeLower()
{
    afx_subset::ToLower(Base::GetBuffer(), Base::GetLength());
    return *this;
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::MakeReverse()
{
    PXSTR const buffer = Base::GetBuffer();
    std::reverse(buffer, buffer + Base::GetLength());
    return *this;
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::KeepRange(int iFirst, int iEnd)
{
    if (iFirst == 0 && iEnd == Base::GetLength())
        return *this;
    PXSTR const buffer = Base::PrepareWrite(Base::GetLength());
    Base::CopyCharsOverlapped(buffer, buffer + iFirst, iEnd - iFirst);
    Base::SetLength(iEnd - iFirst);
    return *this;
}

template <typename BaseType>
template <typename IsTarget>
CStringT<BaseType>& CStringT<BaseType>::TrimWhere(IsTarget isTarget, bool left, bool right)
{
    PCXSTR const text = Base::GetString();
    int first = 0;
    int end = Base::GetLength();
    while (left && first < end && isTarget(text[first]))
        ++first;
    while (right && end > first && isTarget(text[end - 1]))
        --end;
    return KeepRange(first, end);
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::Trim()
{
    return TrimWhere([](XCHAR ch) { return afx_subset::IsSpace(ch); }, true, true);
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::Trim(XCHAR chTarget)
{
    return TrimWhere([chTarget](XCHAR ch) { return ch == chTarget; }, true, true);
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::Trim(PCXSTR pszTargets)
{
    return TrimWhere([pszTargets](XCHAR ch) { return Contains(pszTargets, ch); }, true, true);
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::TrimLeft()
{
    return TrimWhere([](XCHAR ch) { return afx_subset::IsSpace(ch); }, true, false);
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::TrimLeft(XCHAR chTarget)
{
    return TrimWhere([chTarget](XCHAR ch) { return ch == chTarget; }, true, false);
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::TrimLeft(PCXSTR pszTargets)
{
    return TrimWhere([pszTargets](XCHAR ch) { return Contains(pszTargets, ch); }, true, false);
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::TrimRight()
{
    return TrimWhere([](XCHAR ch) { return afx_subset::IsSpace(ch); }, false, true);
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::TrimRight(XCHAR chTarget)
{
    return TrimWhere([chTarget](XCHAR ch) { return ch == chTarget; }, false, true);
}

template <typename BaseType>
CStringT<BaseType>& CStringT<BaseType>::TrimRight(PCXSTR pszTargets)
{
    return TrimWhere([pszTargets](XCHAR ch) { return Contains(pszTargets, ch); }, false, true);
}

template class CStringT<wchar_t>;
template class CStringT<char>;
