// CString: a reference-counted, copy-on-write string of UTF-16 (CStringW, CString) or narrow (CStringA)
// characters.
//
// A string object is exactly one pointer to its null-terminated characters. Positions and lengths count
// characters (UTF-16 units or bytes). Any member that has to allocate throws CMemoryException*; an index or
// length that the documentation forbids throws CInvalidArgException*. Arguments may point into the string
// itself.
#pragma once

#include "afxver_.h"

#include <cstdarg>
#include <oaidl.h>
#include <oleauto.h>
#include <tchar.h>
#include <type_traits>
#include <utility>
#include <windows.h>

// Throws the framework's exception for a failure code: CMemoryException* for E_OUTOFMEMORY,
// CInvalidArgException* for E_INVALIDARG, CResourceException* for anything else.
[[noreturn]] AFX_SUBSET_API void AFXAPI AtlThrow(HRESULT hr);

// What stands in memory before the characters of a string.
struct CStringData {
    int nDataLength;  // characters, without the terminator
    int nAllocLength; // characters that fit, without the terminator
    long nRefs;       // strings that share the characters; -1 while locked by LockBuffer

    void* data() { return this + 1; }
    bool IsLocked() const { return nRefs < 0; }
    bool IsShared() const { return nRefs > 1; }
};

// The other of the two character types.
template <typename BaseType>
using AtlOtherChar = std::conditional_t<std::is_same_v<BaseType, wchar_t>, char, wchar_t>;

// Storage and buffer access.
template <typename BaseType>
class CSimpleStringT
{
public:
    typedef BaseType XCHAR;
    typedef BaseType* PXSTR;
    typedef const BaseType* PCXSTR;
    typedef AtlOtherChar<BaseType> YCHAR;
    typedef YCHAR* PYSTR;
    typedef const YCHAR* PCYSTR;

    CSimpleStringT() throw();
    CSimpleStringT(const CSimpleStringT& strSrc);
    CSimpleStringT(PCXSTR pszSrc);
    // Copies nLength characters, embedded nulls included.
    CSimpleStringT(PCXSTR pchSrc, int nLength);
    ~CSimpleStringT() throw();

    CSimpleStringT& operator=(const CSimpleStringT& strSrc);
    CSimpleStringT& operator=(PCXSTR pszSrc);
    CSimpleStringT& operator+=(const CSimpleStringT& strSrc);
    CSimpleStringT& operator+=(PCXSTR pszSrc);
    CSimpleStringT& operator+=(XCHAR ch);

    AFX_SUBSET_INLINE operator PCXSTR() const throw() { return m_pszData; }
    AFX_SUBSET_INLINE PCXSTR GetString() const throw() { return m_pszData; }
    AFX_SUBSET_INLINE int GetLength() const throw() { return GetData()->nDataLength; }
    AFX_SUBSET_INLINE bool IsEmpty() const throw() { return GetLength() == 0; }
    AFX_SUBSET_INLINE int GetAllocLength() const throw() { return GetData()->nAllocLength; }

    // The character at 0 <= iChar <= GetLength(); the terminator counts as readable.
    AFX_SUBSET_INLINE XCHAR GetAt(int iChar) const
    {
        if (iChar < 0 || iChar > GetLength())
            AtlThrow(E_INVALIDARG);
        return m_pszData[iChar];
    }
    AFX_SUBSET_INLINE XCHAR operator[](int iChar) const { return GetAt(iChar); }
    // Replaces the character at 0 <= iChar < GetLength().
    void SetAt(int iChar, XCHAR ch);

    void Append(PCXSTR pszSrc);
    void Append(PCXSTR pszSrc, int nLength);
    void Append(const CSimpleStringT& strSrc);
    void AppendChar(XCHAR ch);
    // Null counts as the empty string.
    void SetString(PCXSTR pszSrc);
    void SetString(PCXSTR pszSrc, int nLength);
    void Empty() throw();
    void FreeExtra();
    void Preallocate(int nLength);
    // Cuts the string to nNewLength characters; longer than the string is a bad argument.
    void Truncate(int nNewLength);

    // A writable buffer of the string's own for at least nMinBufferLength characters and a terminator. The
    // text in it is kept. ReleaseBuffer must follow before the string is used again if the text changed.
    PXSTR GetBuffer();
    PXSTR GetBuffer(int nMinBufferLength);
    // As GetBuffer, with the string's length set to nLength already.
    PXSTR GetBufferSetLength(int nLength);
    // Ends the writing: nNewLength characters count, up to the first null when it is -1.
    void ReleaseBuffer(int nNewLength = -1);
    void ReleaseBufferSetLength(int nNewLength);
    // Gives the string characters of its own, which are not shared with copies until UnlockBuffer.
    PXSTR LockBuffer();
    void UnlockBuffer() throw();

    static void CopyChars(XCHAR* pchDest, const XCHAR* pchSrc, int nChars) throw();
    static void CopyChars(XCHAR* pchDest, size_t nDestLen, const XCHAR* pchSrc, int nChars) throw();
    static void CopyCharsOverlapped(XCHAR* pchDest, const XCHAR* pchSrc, int nChars) throw();
    // The length of a null-terminated string, 0 for null.
    static int StringLength(PCXSTR psz);

protected:
    AFX_SUBSET_INLINE CStringData* GetData() const throw()
    {
        return static_cast<CStringData*>(static_cast<void*>(m_pszData)) - 1;
    }
    // Makes the characters unshared and room for nLength of them; the text is kept as far as it fits.
    PXSTR PrepareWrite(int nLength);
    void SetLength(int nLength);
    // Trades contents; neither string may be locked.
    AFX_SUBSET_INLINE void Swap(CSimpleStringT& other) throw() { std::swap(m_pszData, other.m_pszData); }
    // Whether the pointer lies within the string's own characters (the terminator included).
    bool OwnsPointer(PCXSTR psz) const throw();

private:
    AFX_SUBSET_INLINE void Attach(CStringData* pData) throw()
    {
        m_pszData = static_cast<PXSTR>(pData->data());
    }
    void Reallocate(int nCapacity);

    PXSTR m_pszData;
};

template <typename BaseType>
class CStringT;

namespace afx_subset
{

// What is put on the argument list of a variadic call: a string's characters for a string object, since a
// class object itself cannot be passed there, and everything else as it is.
template <typename T>
inline T VariadicArgument(const T& value)
{
    return value;
}
template <typename BaseType>
inline const BaseType* VariadicArgument(const CStringT<BaseType>& text)
{
    return text.GetString();
}

} // namespace afx_subset

// Searching, editing, formatting, resources.
template <typename BaseType>
class CStringT : public CSimpleStringT<BaseType>
{
    typedef CSimpleStringT<BaseType> Base;

public:
    typedef typename Base::XCHAR XCHAR;
    typedef typename Base::PXSTR PXSTR;
    typedef typename Base::PCXSTR PCXSTR;
    typedef typename Base::YCHAR YCHAR;
    typedef typename Base::PYSTR PYSTR;
    typedef typename Base::PCYSTR PCYSTR;

    AFX_SUBSET_INLINE CStringT() throw() {}
    AFX_SUBSET_INLINE CStringT(const CStringT& strSrc) : Base(strSrc) {}
    AFX_SUBSET_INLINE CStringT(const Base& strSrc) : Base(strSrc) {}
    // A null-terminated string. MAKEINTRESOURCE(id) loads the string resource; an absent one leaves the
    // string empty. Text of the other character type is converted with the thread's ANSI code page.
    CStringT(PCXSTR pszSrc);
    CStringT(PCYSTR pszSrc);
    CStringT(const unsigned char* pszSrc);
    explicit CStringT(char ch, int nLength = 1);
    explicit CStringT(wchar_t ch, int nLength = 1);
    AFX_SUBSET_INLINE CStringT(PCXSTR pch, int nLength) : Base(pch, nLength) {}
    CStringT(PCYSTR pch, int nLength);

    AFX_SUBSET_INLINE CStringT& operator=(const CStringT& strSrc)
    {
        Base::operator=(strSrc);
        return *this;
    }
    AFX_SUBSET_INLINE CStringT& operator=(const Base& strSrc)
    {
        Base::operator=(strSrc);
        return *this;
    }
    AFX_SUBSET_INLINE CStringT& operator=(PCXSTR pszSrc)
    {
        Base::operator=(pszSrc);
        return *this;
    }
    AFX_SUBSET_INLINE CStringT& operator=(PCYSTR pszSrc) { return *this = CStringT(pszSrc); }
    AFX_SUBSET_INLINE CStringT& operator=(const unsigned char* pszSrc) { return *this = CStringT(pszSrc); }
    AFX_SUBSET_INLINE CStringT& operator=(char ch) { return *this = CStringT(ch); }
    AFX_SUBSET_INLINE CStringT& operator=(wchar_t ch) { return *this = CStringT(ch); }

    AFX_SUBSET_INLINE CStringT& operator+=(const Base& str)
    {
        Base::Append(str);
        return *this;
    }
    AFX_SUBSET_INLINE CStringT& operator+=(PCXSTR pszSrc)
    {
        Base::Append(pszSrc);
        return *this;
    }
    AFX_SUBSET_INLINE CStringT& operator+=(PCYSTR pszSrc) { return *this += CStringT(pszSrc); }
    AFX_SUBSET_INLINE CStringT& operator+=(char ch) { return *this += CStringT(ch); }
    AFX_SUBSET_INLINE CStringT& operator+=(unsigned char ch)
    {
        return *this += CStringT(static_cast<char>(ch));
    }
    AFX_SUBSET_INLINE CStringT& operator+=(wchar_t ch) { return *this += CStringT(ch); }

    // Comparison: below 0, 0, above 0. Compare goes by character value, CompareNoCase without regard to case,
    // the Collate pair by the locale's order.
    int Compare(PCXSTR psz) const;
    int CompareNoCase(PCXSTR psz) const;
    int Collate(PCXSTR psz) const throw();
    int CollateNoCase(PCXSTR psz) const throw();

    // Searching answers the zero-based position, -1 when there is none (or iStart lies outside the string).
    int Find(PCXSTR pszSub, int iStart = 0) const throw();
    int Find(XCHAR ch, int iStart = 0) const throw();
    int FindOneOf(PCXSTR pszCharSet) const throw();
    int ReverseFind(XCHAR ch) const throw();

    // Extraction clips positions and counts to the string.
    CStringT Mid(int iFirst, int nCount) const;
    CStringT Mid(int iFirst) const;
    CStringT Left(int nCount) const;
    CStringT Right(int nCount) const;
    CStringT SpanIncluding(PCXSTR pszCharSet) const;
    CStringT SpanExcluding(PCXSTR pszCharSet) const;
    // The next token at or after iStart, with leading delimiters skipped; iStart moves behind it and its
    // delimiter, and becomes -1, with an empty result, when there is no further token.
    CStringT Tokenize(PCXSTR pszTokens, int& iStart) const;

    // Editing. Insert and Delete answer the new length, Replace and Remove the number of changes.
    int Delete(int iIndex, int nCount = 1);
    int Insert(int iIndex, XCHAR ch);
    int Insert(int iIndex, PCXSTR psz);
    int Replace(XCHAR chOld, XCHAR chNew);
    int Replace(PCXSTR pszOld, PCXSTR pszNew);
    int Remove(XCHAR chRemove);
    CStringT& MakeUpper();
    CStringT& MakeLower();
    CStringT& MakeReverse();
    CStringT& Trim();
    CStringT& Trim(XCHAR chTarget);
    CStringT& Trim(PCXSTR pszTargets);
    CStringT& TrimLeft();
    CStringT& TrimLeft(XCHAR chTarget);
    CStringT& TrimLeft(PCXSTR pszTargets);
    CStringT& TrimRight();
    CStringT& TrimRight(XCHAR chTarget);
    CStringT& TrimRight(PCXSTR pszTargets);

    // printf formatting with the C run-time's conventions: in a wide format %s stands for wide text and %S
    // for narrow text. String objects may be passed for %s. An absent format resource throws.
    template <typename... Args>
    void Format(PCXSTR pszFormat, Args... args)
    {
        FormatArguments(pszFormat, afx_subset::VariadicArgument(args)...);
    }
    template <typename... Args>
    void Format(UINT nFormatID, Args... args)
    {
        Format(FormatResource(nFormatID).GetString(), args...);
    }
    template <typename... Args>
    void AppendFormat(PCXSTR pszFormat, Args... args)
    {
        CStringT text;
        text.Format(pszFormat, args...);
        Base::Append(text);
    }
    template <typename... Args>
    void AppendFormat(UINT nFormatID, Args... args)
    {
        AppendFormat(FormatResource(nFormatID).GetString(), args...);
    }
    void FormatV(PCXSTR pszFormat, va_list args);

    // Formatting with numbered inserts (%1, %2!d! …) by the system's FormatMessage.
    template <typename... Args>
    void FormatMessage(PCXSTR pszFormat, Args... args)
    {
        FormatMessageArguments(pszFormat, afx_subset::VariadicArgument(args)...);
    }
    template <typename... Args>
    void FormatMessage(UINT nFormatID, Args... args)
    {
        FormatMessage(FormatResource(nFormatID).GetString(), args...);
    }
    void FormatMessageV(PCXSTR pszFormat, va_list* pArgList);

    // Loads a string resource: from the module given, or from the one that the framework's search finds.
    // FALSE, and the string unchanged, when there is none.
    BOOL LoadString(UINT nID);
    BOOL LoadString(HINSTANCE hInstance, UINT nID);
    BOOL LoadString(HINSTANCE hInstance, UINT nID, WORD wLanguageID);
    // FALSE, and the string empty, when the variable does not exist.
    BOOL GetEnvironmentVariable(PCXSTR pszVar);

    // A new BSTR, freed by the caller.
    BSTR AllocSysString() const;
    // Reallocates *pbstr, which is freed as the caller's own later.
    BSTR SetSysString(BSTR* pbstr) const;

    friend CStringT operator+(const CStringT& str1, const CStringT& str2)
    {
        return Join(str1, str1.GetLength(), str2, str2.GetLength());
    }
    friend CStringT operator+(const CStringT& str1, PCXSTR psz2)
    {
        return Join(str1, str1.GetLength(), psz2, Base::StringLength(psz2));
    }
    friend CStringT operator+(PCXSTR psz1, const CStringT& str2)
    {
        return Join(psz1, Base::StringLength(psz1), str2, str2.GetLength());
    }
    friend CStringT operator+(const CStringT& str1, char ch2) { return str1 + CStringT(ch2); }
    friend CStringT operator+(char ch1, const CStringT& str2) { return CStringT(ch1) + str2; }
    friend CStringT operator+(const CStringT& str1, wchar_t ch2) { return str1 + CStringT(ch2); }
    friend CStringT operator+(wchar_t ch1, const CStringT& str2) { return CStringT(ch1) + str2; }

    friend bool operator==(const CStringT& str1, const CStringT& str2) throw()
    {
        return str1.GetLength() == str2.GetLength() && str1.Compare(str2) == 0;
    }
    friend bool operator==(const CStringT& str1, PCXSTR psz2) { return str1.Compare(psz2) == 0; }
    friend bool operator==(PCXSTR psz1, const CStringT& str2) { return str2.Compare(psz1) == 0; }
    friend bool operator==(const CStringT& str1, PCYSTR psz2) { return str1 == CStringT(psz2); }
    friend bool operator==(PCYSTR psz1, const CStringT& str2) { return CStringT(psz1) == str2; }
    friend bool operator==(const CStringT& str1, XCHAR ch2) throw() { return str1.IsOne(ch2); }
    friend bool operator==(XCHAR ch1, const CStringT& str2) throw() { return str2.IsOne(ch1); }

    friend bool operator!=(const CStringT& str1, const CStringT& str2) throw() { return !(str1 == str2); }
    friend bool operator!=(const CStringT& str1, PCXSTR psz2) { return !(str1 == psz2); }
    friend bool operator!=(PCXSTR psz1, const CStringT& str2) { return !(psz1 == str2); }
    friend bool operator!=(const CStringT& str1, PCYSTR psz2) { return !(str1 == psz2); }
    friend bool operator!=(PCYSTR psz1, const CStringT& str2) { return !(psz1 == str2); }
    friend bool operator!=(const CStringT& str1, XCHAR ch2) throw() { return !(str1 == ch2); }
    friend bool operator!=(XCHAR ch1, const CStringT& str2) throw() { return !(ch1 == str2); }

    friend bool operator<(const CStringT& str1, const CStringT& str2) { return str1.Compare(str2) < 0; }
    friend bool operator<(const CStringT& str1, PCXSTR psz2) { return str1.Compare(psz2) < 0; }
    friend bool operator<(PCXSTR psz1, const CStringT& str2) { return str2.Compare(psz1) > 0; }
    friend bool operator>(const CStringT& str1, const CStringT& str2) { return str1.Compare(str2) > 0; }
    friend bool operator>(const CStringT& str1, PCXSTR psz2) { return str1.Compare(psz2) > 0; }
    friend bool operator>(PCXSTR psz1, const CStringT& str2) { return str2.Compare(psz1) < 0; }
    friend bool operator<=(const CStringT& str1, const CStringT& str2) { return str1.Compare(str2) <= 0; }
    friend bool operator<=(const CStringT& str1, PCXSTR psz2) { return str1.Compare(psz2) <= 0; }
    friend bool operator<=(PCXSTR psz1, const CStringT& str2) { return str2.Compare(psz1) >= 0; }
    friend bool operator>=(const CStringT& str1, const CStringT& str2) { return str1.Compare(str2) >= 0; }
    friend bool operator>=(const CStringT& str1, PCXSTR psz2) { return str1.Compare(psz2) >= 0; }
    friend bool operator>=(PCXSTR psz1, const CStringT& str2) { return str2.Compare(psz1) <= 0; }

private:
    static CStringT Join(PCXSTR psz1, int nLength1, PCXSTR psz2, int nLength2);
    static CStringT FormatResource(UINT nFormatID);
    void __cdecl FormatArguments(PCXSTR pszFormat, ...);
    void __cdecl FormatMessageArguments(PCXSTR pszFormat, ...);
    AFX_SUBSET_INLINE bool IsOne(XCHAR ch) const throw()
    {
        return Base::GetLength() == 1 && Base::GetString()[0] == ch;
    }
    // Keeps the characters from iFirst up to iEnd.
    CStringT& KeepRange(int iFirst, int iEnd);
    template <typename IsTarget>
    CStringT& TrimWhere(IsTarget isTarget, bool left, bool right);
};

extern template class AFX_SUBSET_API CSimpleStringT<wchar_t>;
extern template class AFX_SUBSET_API CSimpleStringT<char>;
extern template class AFX_SUBSET_API CStringT<wchar_t>;
extern template class AFX_SUBSET_API CStringT<char>;

typedef CStringT<wchar_t> CStringW;
typedef CStringT<char> CStringA;
typedef CStringT<TCHAR> CString;

static_assert(sizeof(CString) == sizeof(LPTSTR), "a string is one pointer");
