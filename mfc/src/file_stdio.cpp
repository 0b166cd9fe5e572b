// CStdioFile: files on the C run-time's streams, line by line.
#include "afx.h"

#include <cerrno>
#include <fcntl.h>
#include <io.h>

IMPLEMENT_DYNAMIC(CStdioFile, CFile)

CStdioFile::CStdioFile() : m_pStream(nullptr) {}

CStdioFile::CStdioFile(FILE* pOpenStream) : m_pStream(pOpenStream)
{
    if (pOpenStream == nullptr)
        AfxThrowInvalidArgException();
    m_hFile = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(pOpenStream)));
}

CStdioFile::CStdioFile(LPCTSTR lpszFileName, UINT nOpenFlags) : m_pStream(nullptr)
{
    if (lpszFileName == nullptr)
        AfxThrowInvalidArgException();
    CFileException error;
    if (!CStdioFile::Open(lpszFileName, nOpenFlags, &error))
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
}

CStdioFile::~CStdioFile()
{
    if (m_bCloseOnDelete)
        CStdioFile::Abort();
}

void CStdioFile::ThrowErrno() const
{
    CFileException::ThrowErrno(errno, m_strFileName);
}

BOOL CStdioFile::Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError)
{
    CStdioFile::Abort();
    if (!CFile::Open(lpszFileName, nOpenFlags & ~static_cast<UINT>(typeText | typeBinary | typeUnicode),
                     pError))
        return FALSE;
    if ((nOpenFlags & typeBinary) != 0)
        m_text = Text::Wide;
    else
        m_text = (nOpenFlags & typeUnicode) != 0 ? Text::WideTranslated : Text::Ansi;
    const bool crtTranslates = m_text == Text::Ansi;

    const UINT access = nOpenFlags & 3;
    const char* mode = "r";
    if (access == modeWrite)
        mode = "w";
    else if (access == modeReadWrite)
        mode = "r+";
    const int crtFlags = (access == modeRead ? _O_RDONLY : 0) | (crtTranslates ? _O_TEXT : _O_BINARY);
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(m_hFile), crtFlags);
    m_pStream =
        descriptor == -1 ? nullptr : _fdopen(descriptor, CStringA(mode) + (crtTranslates ? "t" : "b"));
    if (m_pStream != nullptr)
        return TRUE;

    if (pError != nullptr) {
        pError->m_cause = CFileException::tooManyOpenFiles;
        pError->m_lOsError = static_cast<LONG>(_doserrno);
        pError->m_strFileName = m_strFileName;
    }
    if (descriptor != -1) {
        _close(descriptor); // closes the handle too
        m_hFile = hFileNull;
        m_bCloseOnDelete = FALSE;
    }
    CFile::Abort();
    return FALSE;
}

void CStdioFile::WriteString(LPCTSTR lpsz)
{
    if (lpsz == nullptr)
        AfxThrowInvalidArgException();
    const CString text(lpsz, CString::StringLength(lpsz));
    if (m_text == Text::Ansi) {
        const CStringA narrow(text);
        Write(narrow, static_cast<UINT>(narrow.GetLength()));
        return;
    }
    CString wide = text;
    if (m_text == Text::WideTranslated)
        wide.Replace(_T("\n"), _T("\r\n"));
    Write(wide, static_cast<UINT>(wide.GetLength() * sizeof(TCHAR)));
}

bool CStdioFile::ReadChar(TCHAR& ch)
{
    if (m_pStream == nullptr)
        AfxThrowFileException(CFileException::invalidFile, -1, m_strFileName);
    if (m_chPending != 0) {
        ch = m_chPending;
        m_chPending = 0;
        return true;
    }
    if (m_text == Text::Ansi ? ReadAnsiChar(ch) : ReadWideChar(ch))
        return true;
    if (ferror(m_pStream)) {
        clearerr(m_pStream);
        ThrowErrno();
    }
    return false;
}

bool CStdioFile::ReadAnsiChar(TCHAR& ch)
{
    const int lead = getc(m_pStream);
    if (lead == EOF)
        return false;
    char bytes[4] = {static_cast<char>(lead)};
    int length = 1;
    int wanted = 1;
    if (GetACP() == CP_UTF8)
        wanted = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    else if (IsDBCSLeadByteEx(CP_ACP, static_cast<BYTE>(lead)))
        wanted = 2;
    for (int next = 0; length < wanted && (next = getc(m_pStream)) != EOF; ++length) {
        if (next == '\n') { // never part of a character
            ungetc(next, m_pStream);
            break;
        }
        bytes[length] = static_cast<char>(next);
    }
    const CString text(bytes, length);
    ch = text.IsEmpty() ? _T('?') : text[0];
    m_chPending = text.GetLength() > 1 ? text[1] : 0;
    return true;
}

bool CStdioFile::ReadWideChar(TCHAR& ch)
{
    if (fread(&ch, sizeof(ch), 1, m_pStream) != 1)
        return false;
    TCHAR next = 0;
    if (m_text == Text::WideTranslated && ch == _T('\r') && fread(&next, sizeof(next), 1, m_pStream) == 1) {
        if (next == _T('\n'))
            ch = next;
        else
            m_chPending = next;
    }
    return true;
}

LPTSTR CStdioFile::ReadString(LPTSTR lpsz, UINT nMax)
{
    if (lpsz == nullptr || nMax == 0)
        AfxThrowInvalidArgException();
    UINT length = 0;
    TCHAR ch = 0;
    while (length < nMax - 1 && ch != _T('\n') && ReadChar(ch))
        lpsz[length++] = ch;
    lpsz[length] = 0;
    return length > 0 || nMax == 1 ? lpsz : nullptr;
}

BOOL CStdioFile::ReadString(CString& rString)
{
    CString line;
    TCHAR ch = 0;
    bool any = false;
    while (ReadChar(ch)) {
        any = true;
        if (ch == _T('\n'))
            break;
        line.AppendChar(ch);
    }
    rString = line;
    return any;
}

UINT CStdioFile::Read(void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return 0;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    if (m_pStream == nullptr)
        AfxThrowFileException(CFileException::invalidFile, -1, m_strFileName);
    const size_t count = fread(lpBuf, 1, nCount, m_pStream);
    if (count == 0 && ferror(m_pStream)) {
        clearerr(m_pStream);
        ThrowErrno();
    }
    return static_cast<UINT>(count);
}

void CStdioFile::Write(const void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    if (m_pStream == nullptr)
        AfxThrowFileException(CFileException::invalidFile, -1, m_strFileName);
    if (fwrite(lpBuf, 1, nCount, m_pStream) != nCount) {
        clearerr(m_pStream);
        ThrowErrno();
    }
}

ULONGLONG CStdioFile::Seek(LONGLONG lOff, UINT nFrom)
{
    if (nFrom > CFile::end)
        AfxThrowInvalidArgException();
    if (m_pStream == nullptr)
        AfxThrowFileException(CFileException::invalidFile, -1, m_strFileName);
    m_chPending = 0;
    if (_fseeki64(m_pStream, lOff, static_cast<int>(nFrom)) != 0)
        AfxThrowFileException(CFileException::badSeek, static_cast<LONG>(_doserrno), m_strFileName);
    return GetPosition();
}

ULONGLONG CStdioFile::GetPosition() const
{
    const LONGLONG position = m_pStream != nullptr ? _ftelli64(m_pStream) : -1;
    if (position < 0)
        AfxThrowFileException(CFileException::invalidFile, static_cast<LONG>(_doserrno), m_strFileName);
    return static_cast<ULONGLONG>(position);
}

ULONGLONG CStdioFile::GetLength() const
{
    if (m_pStream == nullptr)
        AfxThrowFileException(CFileException::invalidFile, -1, m_strFileName);
    fflush(m_pStream);
    const LONGLONG length = _filelengthi64(_fileno(m_pStream));
    if (length < 0)
        ThrowErrno();
    return static_cast<ULONGLONG>(length);
}

void CStdioFile::SetLength(ULONGLONG dwNewLen)
{
    Flush();
    CFile::SetLength(dwNewLen);
    Seek(static_cast<LONGLONG>(dwNewLen), CFile::begin);
}

void CStdioFile::Flush()
{
    if (m_pStream != nullptr && fflush(m_pStream) != 0)
        ThrowErrno();
}

void CStdioFile::Close()
{
    FILE* const stream = m_pStream;
    const CString path = m_strFileName;
    m_pStream = nullptr;
    m_chPending = 0;
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
    if (stream != nullptr && fclose(stream) != 0)
        CFileException::ThrowErrno(errno, path);
}

void CStdioFile::Abort()
{
    if (m_pStream == nullptr)
        return;
    fclose(m_pStream);
    m_pStream = nullptr;
    m_chPending = 0;
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
}

CFile* CStdioFile::Duplicate() const
{
    AfxThrowNotSupportedException();
}

void CStdioFile::LockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}

void CStdioFile::UnlockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}
