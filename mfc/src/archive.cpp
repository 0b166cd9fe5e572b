// CArchive: the buffer, plain values, text lines and strings.
#include "archive_maps.h"

#include <algorithm>
#include <exception>

namespace
{

constexpr int kLeastBuffer = 128;

// The length of a stored string: one byte, or this and two, or those and four. A wide string has a mark
// before.
constexpr BYTE kLongLength = 0xFF;
constexpr WORD kWideMark = 0xFFFE;
constexpr WORD kVeryLongLength = 0xFFFF;
constexpr DWORD kHugeLength = 0xFFFFFFFF;

void StoreLength(CArchive& ar, int length)
{
    if (length < kLongLength)
        ar << static_cast<BYTE>(length);
    else if (length < kWideMark)
        ar << kLongLength << static_cast<WORD>(length);
    else
        ar << kLongLength << kVeryLongLength << static_cast<DWORD>(length);
}

// The length of the string that follows, and whether it is wide.
int LoadLength(CArchive& ar, bool& wide)
{
    BYTE byteLength = 0;
    WORD wordLength = 0;
    DWORD length = 0;
    wide = false;
    ar >> byteLength;
    if (byteLength < kLongLength)
        return byteLength;
    ar >> wordLength;
    if (wordLength == kWideMark) {
        wide = true;
        ar >> byteLength;
        if (byteLength < kLongLength)
            return byteLength;
        ar >> wordLength;
    }
    if (wordLength < kVeryLongLength)
        return wordLength;
    ar >> length;
    if (length == kHugeLength || length > static_cast<DWORD>(INT_MAX))
        AfxThrowArchiveException(CArchiveException::badIndex, ar.m_strFileName);
    return static_cast<int>(length);
}

// Reads that many characters. The string grows as they arrive, for the length is not trusted.
template <typename Char>
CStringT<Char> LoadText(CArchive& ar, int length)
{
    constexpr int kPiece = 16384;
    CStringT<Char> text;
    Char piece[kPiece / sizeof(Char)];
    for (int left = length; left > 0;) {
        const int count = std::min(left, static_cast<int>(std::size(piece)));
        const UINT bytes = static_cast<UINT>(count) * sizeof(Char);
        if (ar.Read(piece, bytes) != bytes)
            AfxThrowArchiveException(CArchiveException::endOfFile, ar.m_strFileName);
        text.Append(piece, count);
        left -= count;
    }
    return text;
}

template <typename Char>
CStringT<Char> LoadString(CArchive& ar)
{
    bool wide = false;
    const int length = LoadLength(ar, wide);
    if (wide) {
        const CStringW text = LoadText<wchar_t>(ar, length);
        return CStringT<Char>(text.GetString(), text.GetLength());
    }
    const CStringA text = LoadText<char>(ar, length);
    return CStringT<Char>(text.GetString(), text.GetLength());
}

} // namespace

CArchive::CArchive(CFile* pFile, UINT nMode, int nBufSize, void* lpBuf)
    : m_pDocument(nullptr), m_bForceFlat(TRUE), m_nMode(nMode), m_pFile(pFile), m_lpBufStart(nullptr),
      m_lpBufCur(nullptr), m_lpBufMax(nullptr), m_nBufSize(nBufSize), m_bOwnBuffer(false),
      m_nObjectSchema(static_cast<UINT>(-1)), m_pMaps(nullptr)
{
    if (pFile == nullptr)
        AfxThrowInvalidArgException();
    m_strFileName = pFile->GetFilePath();
    if (lpBuf != nullptr && nBufSize > 0) {
        m_lpBufStart = static_cast<BYTE*>(lpBuf);
    } else {
        m_nBufSize = std::max(nBufSize, kLeastBuffer);
        m_lpBufStart = new (std::nothrow) BYTE[static_cast<size_t>(m_nBufSize)];
        if (m_lpBufStart == nullptr)
            AfxThrowMemoryException();
        m_bOwnBuffer = true;
    }
    // Loading starts with nothing read, storing with all of the buffer free.
    m_lpBufCur = m_lpBufStart;
    m_lpBufMax = IsLoading() ? m_lpBufStart : m_lpBufStart + m_nBufSize;
}

CArchive::~CArchive() noexcept(false)
{
    if (m_pFile == nullptr || (m_nMode & bNoFlushOnDelete) != 0) {
        Abort();
        return;
    }
    try {
        Close();
    } catch (CException* e) {
        Abort();
        if (std::uncaught_exceptions() == 0)
            throw;
        e->Delete(); // the exception that is under way already counts
    }
}

void CArchive::Abort()
{
    m_pFile = nullptr;
    if (m_bOwnBuffer)
        delete[] m_lpBufStart;
    m_lpBufStart = m_lpBufCur = m_lpBufMax = nullptr;
    m_bOwnBuffer = false;
    delete m_pMaps;
    m_pMaps = nullptr;
}

void CArchive::Close()
{
    if (m_pFile == nullptr)
        return;
    Flush();
    Abort();
}

void CArchive::RequireLoading() const
{
    if (!IsLoading())
        AfxThrowArchiveException(CArchiveException::writeOnly, m_strFileName);
    if (m_pFile == nullptr)
        AfxThrowArchiveException(CArchiveException::genericException, m_strFileName);
}

void CArchive::RequireStoring() const
{
    if (!IsStoring())
        AfxThrowArchiveException(CArchiveException::readOnly, m_strFileName);
    if (m_pFile == nullptr)
        AfxThrowArchiveException(CArchiveException::genericException, m_strFileName);
}

void CArchive::Flush()
{
    if (m_pFile == nullptr)
        return;
    if (IsLoading()) {
        if (m_lpBufCur < m_lpBufMax)
            m_pFile->Seek(-(m_lpBufMax - m_lpBufCur), CFile::current);
        m_lpBufCur = m_lpBufMax = m_lpBufStart;
    } else if (m_lpBufCur > m_lpBufStart) {
        m_pFile->Write(m_lpBufStart, static_cast<UINT>(m_lpBufCur - m_lpBufStart));
        m_lpBufCur = m_lpBufStart;
    }
}

UINT CArchive::ReadFromFile(BYTE* target, UINT count)
{
    // A file may hand out less at a time than there is.
    UINT total = 0;
    while (total < count) {
        const UINT read = m_pFile->Read(target + total, count - total);
        if (read == 0)
            break;
        total += read;
    }
    return total;
}

void CArchive::FillBuffer()
{
    m_lpBufCur = m_lpBufMax = m_lpBufStart;
    m_lpBufMax = m_lpBufStart + m_pFile->Read(m_lpBufStart, static_cast<UINT>(m_nBufSize));
}

UINT CArchive::Read(void* lpBuf, UINT nMax)
{
    RequireLoading();
    if (nMax == 0)
        return 0;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    BYTE* target = static_cast<BYTE*>(lpBuf);
    UINT left = nMax;
    while (left > 0) {
        const UINT buffered = static_cast<UINT>(m_lpBufMax - m_lpBufCur);
        const UINT piece = std::min(left, buffered);
        if (piece > 0) {
            memcpy(target, m_lpBufCur, piece);
            m_lpBufCur += piece;
            target += piece;
            left -= piece;
        } else if (left >= static_cast<UINT>(m_nBufSize)) {
            left -= ReadFromFile(target, left);
            break;
        } else {
            FillBuffer();
            if (m_lpBufCur == m_lpBufMax)
                break;
        }
    }
    return nMax - left;
}

void CArchive::ReadExactly(void* lpBuf, UINT nMax)
{
    if (Read(lpBuf, nMax) != nMax)
        AfxThrowArchiveException(CArchiveException::endOfFile, m_strFileName);
}

void CArchive::Write(const void* lpBuf, UINT nMax)
{
    RequireStoring();
    if (nMax == 0)
        return;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    if (nMax > static_cast<UINT>(m_lpBufMax - m_lpBufCur))
        Flush();
    if (nMax >= static_cast<UINT>(m_nBufSize)) {
        m_pFile->Write(lpBuf, nMax);
        return;
    }
    memcpy(m_lpBufCur, lpBuf, nMax);
    m_lpBufCur += nMax;
}

CArchive& CArchive::operator>>(bool& b)
{
    BYTE value = 0;
    *this >> value;
    b = value != 0;
    return *this;
}

void CArchive::WriteCount(DWORD_PTR dwCount)
{
    if (dwCount < 0xFFFF)
        *this << static_cast<WORD>(dwCount);
    else if (dwCount < 0xFFFFFFFF)
        *this << static_cast<WORD>(0xFFFF) << static_cast<DWORD>(dwCount);
    else
        *this << static_cast<WORD>(0xFFFF) << static_cast<DWORD>(0xFFFFFFFF)
              << static_cast<ULONGLONG>(dwCount);
}

DWORD_PTR CArchive::ReadCount()
{
    WORD small = 0;
    *this >> small;
    if (small != 0xFFFF)
        return small;
    DWORD medium = 0;
    *this >> medium;
    if (medium != 0xFFFFFFFF)
        return medium;
    ULONGLONG large = 0;
    *this >> large;
    return static_cast<DWORD_PTR>(large);
}

// ---- Lines of text
// -----------------------------------------------------------------------------------------

void CArchive::WriteString(LPCTSTR lpsz)
{
    if (lpsz == nullptr)
        AfxThrowInvalidArgException();
    Write(lpsz, static_cast<UINT>(CString::StringLength(lpsz)) * sizeof(TCHAR));
}

bool CArchive::ReadLineChar(TCHAR& ch)
{
    return Read(&ch, sizeof(ch)) == sizeof(ch);
}

LPTSTR CArchive::ReadString(LPTSTR lpsz, UINT nMax)
{
    if (lpsz == nullptr || nMax == 0)
        AfxThrowInvalidArgException();
    UINT length = 0;
    bool any = false;
    TCHAR ch = 0;
    while (length < nMax - 1 && ReadLineChar(ch)) {
        any = true;
        if (ch == _T('\n')) {
            if (length > 0 && lpsz[length - 1] == _T('\r'))
                --length;
            break;
        }
        lpsz[length++] = ch;
    }
    lpsz[length] = 0;
    return any || nMax == 1 ? lpsz : nullptr;
}

BOOL CArchive::ReadString(CString& rString)
{
    CString line;
    bool any = false;
    TCHAR ch = 0;
    while (ReadLineChar(ch)) {
        any = true;
        if (ch == _T('\n')) {
            if (!line.IsEmpty() && line[line.GetLength() - 1] == _T('\r'))
                line.Truncate(line.GetLength() - 1);
            break;
        }
        line.AppendChar(ch);
    }
    rString = line;
    return any;
}

// ---- Values that are not plain numbers
// ---------------------------------------------------------------------

CArchive& AFXAPI operator<<(CArchive& ar, const CStringW& str)
{
    ar << kLongLength << kWideMark;
    StoreLength(ar, str.GetLength());
    ar.Write(str.GetString(), static_cast<UINT>(str.GetLength()) * sizeof(wchar_t));
    return ar;
}

CArchive& AFXAPI operator<<(CArchive& ar, const CStringA& str)
{
    StoreLength(ar, str.GetLength());
    ar.Write(str.GetString(), static_cast<UINT>(str.GetLength()));
    return ar;
}

CArchive& AFXAPI operator>>(CArchive& ar, CStringW& str)
{
    str = LoadString<wchar_t>(ar);
    return ar;
}

CArchive& AFXAPI operator>>(CArchive& ar, CStringA& str)
{
    str = LoadString<char>(ar);
    return ar;
}

CArchive& AFXAPI operator<<(CArchive& ar, const RECT& rect)
{
    return ar << rect.left << rect.top << rect.right << rect.bottom;
}

CArchive& AFXAPI operator<<(CArchive& ar, POINT point)
{
    return ar << point.x << point.y;
}

CArchive& AFXAPI operator<<(CArchive& ar, SIZE size)
{
    return ar << size.cx << size.cy;
}

CArchive& AFXAPI operator>>(CArchive& ar, RECT& rect)
{
    return ar >> rect.left >> rect.top >> rect.right >> rect.bottom;
}

CArchive& AFXAPI operator>>(CArchive& ar, POINT& point)
{
    return ar >> point.x >> point.y;
}

CArchive& AFXAPI operator>>(CArchive& ar, SIZE& size)
{
    return ar >> size.cx >> size.cy;
}

CArchive& AFXAPI operator<<(CArchive& ar, CTime time)
{
    return ar << static_cast<LONGLONG>(time.GetTime());
}

CArchive& AFXAPI operator>>(CArchive& ar, CTime& time)
{
    LONGLONG seconds = 0;
    ar >> seconds;
    time = CTime(seconds);
    return ar;
}
