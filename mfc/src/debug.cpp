// Assertions, traces, address checks and the dump context.
#include "afx.h"

CDumpContext afxDump;

namespace
{

void Output(const CStringW& text)
{
    OutputDebugStringW(text);
    // A narrow stream: one that was used narrow once refuses wide output.
    fputs(CStringA(text), stderr);
    fflush(stderr);
}

// Whether the pages of the range are committed with one of the given protections.
bool RangeHas(const void* start, UINT_PTR count, DWORD protections)
{
    const BYTE* at = static_cast<const BYTE*>(start);
    if (at == nullptr || reinterpret_cast<UINT_PTR>(at) + count < count)
        return false;
    const BYTE* const end = at + (count > 0 ? count : 1);
    while (at < end) {
        MEMORY_BASIC_INFORMATION info;
        if (VirtualQuery(at, &info, sizeof(info)) == 0 || info.State != MEM_COMMIT)
            return false;
        if ((info.Protect & (PAGE_GUARD | PAGE_NOACCESS)) != 0 || (info.Protect & protections) == 0)
            return false;
        at = static_cast<const BYTE*>(info.BaseAddress) + info.RegionSize;
    }
    return true;
}

constexpr DWORD kWritable = PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
constexpr DWORD kReadable = kWritable | PAGE_READONLY | PAGE_EXECUTE_READ;

template <typename Char>
BOOL IsValidText(const Char* text, int length)
{
    if (length >= 0)
        return AfxIsValidAddress(text, static_cast<UINT_PTR>(length) * sizeof(Char), FALSE);
    // Character by character up to the terminator, asking once a page.
    constexpr UINT_PTR kPage = 4096;
    for (const Char* at = text;; ++at) {
        const bool newPage = reinterpret_cast<UINT_PTR>(at) % kPage < sizeof(Char);
        if ((at == text || newPage) && !AfxIsValidAddress(at, sizeof(Char), FALSE))
            return FALSE;
        if (*at == 0)
            return TRUE;
    }
}

} // namespace

BOOL AFXAPI AfxAssertFailedLine(LPCSTR lpszFileName, int nLine)
{
    CStringW text;
    text.Format(L"Assertion failed: file %S, line %d\n", lpszFileName, nLine);
    Output(text);
    return TRUE;
}

void AFX_CDECL AfxTrace(LPCWSTR lpszFormat, ...)
{
    va_list args;
    va_start(args, lpszFormat);
    try {
        CStringW text;
        text.FormatV(lpszFormat, args);
        Output(text);
    } catch (CException* e) {
        e->Delete(); // a trace never disturbs the program
    }
    va_end(args);
}

void AFX_CDECL AfxTrace(LPCSTR lpszFormat, ...)
{
    va_list args;
    va_start(args, lpszFormat);
    try {
        CStringA text;
        text.FormatV(lpszFormat, args);
        Output(CStringW(text));
    } catch (CException* e) {
        e->Delete();
    }
    va_end(args);
}

void AFXAPI AfxAssertValidObject(const CObject* pOb, LPCSTR lpszFileName, int nLine)
{
    if (pOb != nullptr && AfxIsValidAddress(pOb, sizeof(CObject), FALSE))
        pOb->AssertValid();
    else if (AfxAssertFailedLine(lpszFileName, nLine))
        AfxDebugBreak();
}

BOOL AFXAPI AfxIsValidAddress(const void* lp, UINT_PTR nBytes, BOOL bReadWrite)
{
    return RangeHas(lp, nBytes, bReadWrite ? kWritable : kReadable);
}

BOOL AFXAPI AfxIsValidString(LPCWSTR lpsz, int nLength)
{
    return IsValidText(lpsz, nLength);
}

BOOL AFXAPI AfxIsValidString(LPCSTR lpsz, int nLength)
{
    return IsValidText(lpsz, nLength);
}

void AFX_CDECL AfxDebugBreak()
{
    DebugBreak();
}

void AFXAPI AfxAbort()
{
    abort();
}

// ---- CDumpContext
// ------------------------------------------------------------------------------------------

CDumpContext::CDumpContext(CFile* pFile) : m_pFile(pFile) {}

CDumpContext& CDumpContext::operator<<(LPCWSTR lpsz)
{
    const CStringW text(lpsz != nullptr ? lpsz : L"NULL");
    if (m_pFile == nullptr) {
        OutputDebugStringW(text);
    } else {
        const CStringA narrow(text);
        m_pFile->Write(narrow, static_cast<UINT>(narrow.GetLength()));
    }
    return *this;
}

CDumpContext& CDumpContext::operator<<(LPCSTR lpsz)
{
    return *this << static_cast<LPCWSTR>(CStringW(lpsz != nullptr ? lpsz : "NULL"));
}

CDumpContext& CDumpContext::operator<<(const void* lp)
{
    CStringW text;
    text.Format(L"$%p", lp);
    return *this << text.GetString();
}

CDumpContext& CDumpContext::operator<<(const CObject* pOb)
{
    if (pOb == nullptr)
        return *this << L"NULL";
    return *this << *pOb;
}

CDumpContext& CDumpContext::operator<<(const CObject& ob)
{
    ob.Dump(*this);
    return *this;
}

CDumpContext& CDumpContext::operator<<(BYTE by)
{
    return *this << static_cast<ULONGLONG>(by);
}

CDumpContext& CDumpContext::operator<<(WORD w)
{
    return *this << static_cast<ULONGLONG>(w);
}

CDumpContext& CDumpContext::operator<<(int n)
{
    return *this << static_cast<LONGLONG>(n);
}

CDumpContext& CDumpContext::operator<<(UINT u)
{
    return *this << static_cast<ULONGLONG>(u);
}

CDumpContext& CDumpContext::operator<<(LONG l)
{
    return *this << static_cast<LONGLONG>(l);
}

CDumpContext& CDumpContext::operator<<(DWORD dw)
{
    return *this << static_cast<ULONGLONG>(dw);
}

CDumpContext& CDumpContext::operator<<(LONGLONG n)
{
    CStringW text;
    text.Format(L"%I64d", n);
    return *this << text.GetString();
}

CDumpContext& CDumpContext::operator<<(ULONGLONG n)
{
    CStringW text;
    text.Format(L"%I64u", n);
    return *this << text.GetString();
}

CDumpContext& CDumpContext::operator<<(double d)
{
    CStringW text;
    text.Format(L"%g", d);
    return *this << text.GetString();
}

void CDumpContext::Flush()
{
    if (m_pFile != nullptr)
        m_pFile->Flush();
}
