// CFile: unbuffered files of the system.
#include "afx.h"

#include <algorithm>
#include <commdlg.h>
#include <memory>

IMPLEMENT_DYNAMIC(CFile, CObject)

const HANDLE CFile::hFileNull = INVALID_HANDLE_VALUE;

namespace
{

constexpr UINT kAccessMask = 0x000F;
constexpr UINT kShareMask = 0x0070;

// The absolute path; the name itself when the system cannot say.
CString FullPath(LPCTSTR name)
{
    const DWORD room = ::GetFullPathName(name, 0, nullptr, nullptr);
    CString path;
    if (room > 0) {
        const DWORD length = ::GetFullPathName(name, room, path.GetBuffer(static_cast<int>(room)), nullptr);
        path.ReleaseBufferSetLength(length < room ? static_cast<int>(length) : 0);
    }
    return path.IsEmpty() ? CString(name) : path;
}

DWORD ShareMode(UINT flags)
{
    switch (flags & kShareMask) {
    case CFile::shareDenyWrite:
        return FILE_SHARE_READ;
    case CFile::shareDenyRead:
        return FILE_SHARE_WRITE;
    case CFile::shareDenyNone:
        return FILE_SHARE_READ | FILE_SHARE_WRITE;
    default:
        return 0;
    }
}

DWORD AccessMode(UINT flags)
{
    switch (flags & kAccessMask) {
    case CFile::modeWrite:
        return GENERIC_WRITE;
    case CFile::modeReadWrite:
        return GENERIC_READ | GENERIC_WRITE;
    default:
        return GENERIC_READ;
    }
}

DWORD Creation(UINT flags)
{
    if ((flags & CFile::modeCreate) == 0)
        return OPEN_EXISTING;
    return (flags & CFile::modeNoTruncate) != 0 ? OPEN_ALWAYS : CREATE_ALWAYS;
}

DWORD Caching(UINT flags)
{
    DWORD attributes = FILE_ATTRIBUTE_NORMAL;
    if ((flags & CFile::osNoBuffer) != 0)
        attributes |= FILE_FLAG_NO_BUFFERING;
    if ((flags & CFile::osWriteThrough) != 0)
        attributes |= FILE_FLAG_WRITE_THROUGH;
    if ((flags & CFile::osRandomAccess) != 0)
        attributes |= FILE_FLAG_RANDOM_ACCESS;
    if ((flags & CFile::osSequentialScan) != 0)
        attributes |= FILE_FLAG_SEQUENTIAL_SCAN;
    return attributes;
}

void Describe(CFileException* error, LONG osError, LPCTSTR name)
{
    if (error == nullptr)
        return;
    error->m_lOsError = osError;
    error->m_cause = CFileException::OsErrorToException(osError);
    error->m_strFileName = name;
}

CTime TimeOf(const FILETIME& time)
{
    return CTime::IsValidFILETIME(time) ? CTime(time) : CTime();
}

FILETIME FileTimeOf(CTime time)
{
    constexpr LONGLONG kUnixEpoch = 116444736000000000LL; // in FILETIME units of 100 ns
    const ULONGLONG ticks = static_cast<ULONGLONG>(time.GetTime() * 10000000LL + kUnixEpoch);
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

void SetName(CFileStatus& status, LPCTSTR path)
{
    lstrcpyn(status.m_szFullName, path, _countof(status.m_szFullName));
}

void RequireBuffer(const void* buffer, UINT count)
{
    if (buffer == nullptr && count > 0)
        AfxThrowInvalidArgException();
}

} // namespace

CFile::CFile() : m_hFile(hFileNull), m_bCloseOnDelete(FALSE) {}

CFile::CFile(HANDLE hFile) : m_hFile(hFile), m_bCloseOnDelete(FALSE) {}

CFile::CFile(LPCTSTR lpszFileName, UINT nOpenFlags) : CFile()
{
    if (lpszFileName == nullptr)
        AfxThrowInvalidArgException();
    CFileException error;
    if (!CFile::Open(lpszFileName, nOpenFlags, &error))
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
}

CFile::~CFile()
{
    if (m_bCloseOnDelete)
        CFile::Abort();
}

BOOL CFile::Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError)
{
    CFile::Abort();
    m_strFileName.Empty();
    if (lpszFileName == nullptr) {
        Describe(pError, ERROR_INVALID_NAME, nullptr);
        return FALSE;
    }
    SECURITY_ATTRIBUTES security = {sizeof(security), nullptr, (nOpenFlags & modeNoInherit) == 0};
    const HANDLE file = ::CreateFile(lpszFileName, AccessMode(nOpenFlags), ShareMode(nOpenFlags), &security,
                                     Creation(nOpenFlags), Caching(nOpenFlags), nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const LONG osError = static_cast<LONG>(::GetLastError());
        Describe(pError, osError, FullPath(lpszFileName));
        return FALSE;
    }
    m_hFile = file;
    m_bCloseOnDelete = TRUE;
    m_strFileName = FullPath(lpszFileName);
    return TRUE;
}

CFile* CFile::Duplicate() const
{
    HANDLE handle = nullptr;
    const HANDLE process = ::GetCurrentProcess();
    if (!::DuplicateHandle(process, m_hFile, process, &handle, 0, FALSE, DUPLICATE_SAME_ACCESS))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
    std::unique_ptr<CFile> copy;
    try {
        copy = std::make_unique<CFile>();
        copy->m_strFileName = m_strFileName;
    } catch (...) {
        ::CloseHandle(handle);
        throw;
    }
    copy->m_hFile = handle;
    copy->m_bCloseOnDelete = TRUE;
    return copy.release();
}

void CFile::Abort()
{
    if (m_hFile != hFileNull)
        ::CloseHandle(m_hFile);
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
}

void CFile::Close()
{
    if (m_hFile == hFileNull)
        return;
    const BOOL closed = ::CloseHandle(m_hFile);
    const LONG osError = static_cast<LONG>(::GetLastError());
    const CString path = m_strFileName;
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
    if (!closed)
        CFileException::ThrowOsError(osError, path);
}

void CFile::Flush()
{
    if (m_hFile != hFileNull && !::FlushFileBuffers(m_hFile))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
}

UINT CFile::Read(void* lpBuf, UINT nCount)
{
    RequireBuffer(lpBuf, nCount);
    DWORD read = 0;
    if (nCount > 0 && !::ReadFile(m_hFile, lpBuf, nCount, &read, nullptr))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
    return read;
}

void CFile::Write(const void* lpBuf, UINT nCount)
{
    RequireBuffer(lpBuf, nCount);
    DWORD written = 0;
    if (nCount > 0 && !::WriteFile(m_hFile, lpBuf, nCount, &written, nullptr))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
    if (written != nCount)
        AfxThrowFileException(CFileException::diskFull, -1, m_strFileName);
}

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom)
{
    if (nFrom > CFile::end)
        AfxThrowInvalidArgException();
    LARGE_INTEGER offset;
    LARGE_INTEGER position;
    offset.QuadPart = lOff;
    if (!::SetFilePointerEx(m_hFile, offset, &position, nFrom))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(position.QuadPart);
}

ULONGLONG CFile::GetPosition() const
{
    LARGE_INTEGER position;
    if (!::SetFilePointerEx(m_hFile, {}, &position, FILE_CURRENT))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(position.QuadPart);
}

ULONGLONG CFile::GetLength() const
{
    LARGE_INTEGER length;
    if (!::GetFileSizeEx(m_hFile, &length))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(length.QuadPart);
}

void CFile::SetLength(ULONGLONG dwNewLen)
{
    Seek(static_cast<LONGLONG>(dwNewLen), CFile::begin);
    if (!::SetEndOfFile(m_hFile))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
}

void CFile::LockRange(ULONGLONG dwPos, ULONGLONG dwCount)
{
    if (!::LockFile(m_hFile, static_cast<DWORD>(dwPos), static_cast<DWORD>(dwPos >> 32),
                    static_cast<DWORD>(dwCount), static_cast<DWORD>(dwCount >> 32)))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
}

void CFile::UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount)
{
    if (!::UnlockFile(m_hFile, static_cast<DWORD>(dwPos), static_cast<DWORD>(dwPos >> 32),
                      static_cast<DWORD>(dwCount), static_cast<DWORD>(dwCount >> 32)))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
}

BOOL CFile::GetStatus(CFileStatus& rStatus) const
{
    rStatus = CFileStatus();
    SetName(rStatus, m_strFileName);
    if (m_hFile == hFileNull)
        return TRUE;
    BY_HANDLE_FILE_INFORMATION info;
    if (!::GetFileInformationByHandle(m_hFile, &info))
        return FALSE;
    rStatus.m_size = static_cast<ULONGLONG>(info.nFileSizeHigh) << 32 | info.nFileSizeLow;
    rStatus.m_attribute = static_cast<BYTE>(info.dwFileAttributes & ~FILE_ATTRIBUTE_NORMAL);
    rStatus.m_mtime = TimeOf(info.ftLastWriteTime);
    rStatus.m_ctime = TimeOf(info.ftCreationTime);
    rStatus.m_atime = TimeOf(info.ftLastAccessTime);
    return TRUE;
}

BOOL PASCAL CFile::GetStatus(LPCTSTR lpszFileName, CFileStatus& rStatus)
{
    WIN32_FILE_ATTRIBUTE_DATA info;
    if (lpszFileName == nullptr || !::GetFileAttributesEx(lpszFileName, GetFileExInfoStandard, &info))
        return FALSE;
    rStatus = CFileStatus();
    SetName(rStatus, FullPath(lpszFileName));
    rStatus.m_size = static_cast<ULONGLONG>(info.nFileSizeHigh) << 32 | info.nFileSizeLow;
    rStatus.m_attribute = static_cast<BYTE>(info.dwFileAttributes & ~FILE_ATTRIBUTE_NORMAL);
    rStatus.m_mtime = TimeOf(info.ftLastWriteTime);
    rStatus.m_ctime = TimeOf(info.ftCreationTime);
    rStatus.m_atime = TimeOf(info.ftLastAccessTime);
    return TRUE;
}

namespace
{

void SetFileTimes(LPCTSTR path, const CFileStatus& status)
{
    const HANDLE file = ::CreateFile(path, FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), path);
    const FILETIME written = FileTimeOf(status.m_mtime);
    const FILETIME created = FileTimeOf(status.m_ctime);
    const FILETIME read = FileTimeOf(status.m_atime);
    const BOOL set = ::SetFileTime(file, status.m_ctime != CTime() ? &created : nullptr,
                                   status.m_atime != CTime() ? &read : nullptr, &written);
    const LONG osError = static_cast<LONG>(::GetLastError());
    ::CloseHandle(file);
    if (!set)
        CFileException::ThrowOsError(osError, path);
}

} // namespace

void PASCAL CFile::SetStatus(LPCTSTR lpszFileName, const CFileStatus& status)
{
    if (lpszFileName == nullptr)
        AfxThrowInvalidArgException();
    const DWORD present = ::GetFileAttributes(lpszFileName);
    if (present == INVALID_FILE_ATTRIBUTES)
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), lpszFileName);
    const bool unprotect = (present & FILE_ATTRIBUTE_READONLY) != 0 && (status.m_attribute & readOnly) == 0;
    if (unprotect && status.m_attribute != 0)
        ::SetFileAttributes(lpszFileName, status.m_attribute);
    if (status.m_mtime != CTime())
        SetFileTimes(lpszFileName, status);
    if (status.m_attribute != 0 && !::SetFileAttributes(lpszFileName, status.m_attribute))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), lpszFileName);
}

void PASCAL CFile::Rename(LPCTSTR lpszOldName, LPCTSTR lpszNewName)
{
    if (lpszOldName == nullptr || lpszNewName == nullptr)
        AfxThrowInvalidArgException();
    if (!::MoveFile(lpszOldName, lpszNewName))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), lpszOldName);
}

void PASCAL CFile::Remove(LPCTSTR lpszFileName)
{
    if (lpszFileName == nullptr)
        AfxThrowInvalidArgException();
    if (!::DeleteFile(lpszFileName))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), lpszFileName);
}

CString CFile::GetFileName() const
{
    const int separator = std::max(m_strFileName.ReverseFind(_T('\\')), m_strFileName.ReverseFind(_T('/')));
    return m_strFileName.Mid(std::max(separator, m_strFileName.ReverseFind(_T(':'))) + 1);
}

CString CFile::GetFileTitle() const
{
    CString title;
    const short room = ::GetFileTitle(m_strFileName, nullptr, 0);
    if (room <= 0)
        return GetFileName();
    const short failed = ::GetFileTitle(m_strFileName, title.GetBuffer(room), static_cast<WORD>(room));
    title.ReleaseBuffer(failed == 0 ? -1 : 0);
    return failed == 0 ? title : GetFileName();
}

CString CFile::GetFilePath() const
{
    return m_strFileName;
}

void CFile::SetFilePath(LPCTSTR lpszNewName)
{
    m_strFileName = lpszNewName;
}

UINT CFile::GetBufferPtr(UINT, UINT, void**, void**)
{
    return 0;
}

void CFile::AssertValid() const
{
    CObject::AssertValid();
    ASSERT(m_hFile != nullptr);
}

void CFile::Dump(CDumpContext& dc) const
{
    CObject::Dump(dc);
    dc << "with handle " << m_hFile << " and name \"" << m_strFileName.GetString() << "\"\n";
}
