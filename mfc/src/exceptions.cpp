// Exceptions: their texts, the functions that throw them, and the causes of system errors.
#include "afx.h"

#include <cerrno>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CSimpleException, CException)
IMPLEMENT_DYNAMIC(CMemoryException, CSimpleException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CSimpleException)
IMPLEMENT_DYNAMIC(CResourceException, CSimpleException)
IMPLEMENT_DYNAMIC(CUserException, CSimpleException)
IMPLEMENT_DYNAMIC(CInvalidArgException, CSimpleException)
IMPLEMENT_DYNAMIC(CArchiveException, CException)
IMPLEMENT_DYNAMIC(CFileException, CException)

AFX_SUBSET_API int AFXAPI AfxMessageBox(LPCTSTR lpszText, UINT nType, UINT nIDHelp);

namespace
{

// Copies as much of a message as fits.
BOOL CopyMessage(LPCTSTR message, LPTSTR buffer, UINT size)
{
    if (buffer == nullptr || size == 0)
        return FALSE;
    const size_t length = message != nullptr ? wcsnlen(message, size - 1) : 0;
    wmemcpy(buffer, message != nullptr ? message : L"", length);
    buffer[length] = 0;
    return message != nullptr;
}

// The message with the file's name put for its %s.
BOOL FormatFileMessage(LPCTSTR pattern, const CString& name, LPTSTR buffer, UINT size)
{
    CString message;
    message.Format(pattern, name.IsEmpty() ? L"An unnamed file" : name.GetString());
    return CopyMessage(message, buffer, size);
}

constexpr LPCTSTR kArchiveMessages[] = {
    L"No error occurred.",
    L"An unknown error occurred while accessing %s.",
    L"An attempt was made to write to the reading %s.",
    L"An attempt was made to access %s past its end.",
    L"An attempt was made to read from the writing %s.",
    L"%s has a bad format.",
    L"%s contained an unexpected object.",
    L"%s contains an incorrect schema.",
};

constexpr LPCTSTR kFileMessages[] = {
    L"No error occurred.",
    L"An unknown error occurred while accessing %s.",
    L"%s was not found.",
    L"%s contains an incorrect path.",
    L"%s could not be opened because there are too many open files.",
    L"Access to %s was denied.",
    L"An incorrect file handle was associated with %s.",
    L"%s could not be removed because it is the current directory.",
    L"%s could not be created because the directory is full.",
    L"Seek failed on %s.",
    L"A hardware I/O error was reported while accessing %s.",
    L"A sharing violation occurred while accessing %s.",
    L"A locking violation occurred while accessing %s.",
    L"Disk full while accessing %s.",
    L"An attempt was made to access %s past its end.",
};

// Thrown without allocating, and so not deleted.
CMemoryException g_memoryException(FALSE);
CNotSupportedException g_notSupportedException(FALSE);
CResourceException g_resourceException(FALSE);
CUserException g_userException(FALSE);
CInvalidArgException g_invalidArgException(FALSE);

template <size_t count>
LPCTSTR MessageOf(const LPCTSTR (&messages)[count], int cause)
{
    return messages[cause >= 0 && cause < static_cast<int>(count) ? cause : 1];
}

} // namespace

CException::CException() : m_bAutoDelete(TRUE) {}

CException::CException(BOOL bAutoDelete) : m_bAutoDelete(bAutoDelete) {}

void CException::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

BOOL CException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    if (pnHelpContext != nullptr)
        *pnHelpContext = 0;
    return CopyMessage(nullptr, lpszError, nMaxError);
}

int CException::ReportError(UINT nType, UINT nMessageID)
{
    TCHAR message[512];
    UINT helpContext = 0;
    if (GetErrorMessage(message, _countof(message), &helpContext))
        return AfxMessageBox(message, nType, helpContext);
    CString text;
    if (nMessageID == 0 || !text.LoadString(nMessageID))
        text = L"No error message is available.";
    return AfxMessageBox(text, nType, helpContext);
}

CSimpleException::CSimpleException() = default;

CSimpleException::CSimpleException(BOOL bAutoDelete) : CException(bAutoDelete) {}

BOOL CSimpleException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    if (pnHelpContext != nullptr)
        *pnHelpContext = 0;
    return CopyMessage(MessageText(), lpszError, nMaxError);
}

LPCTSTR CSimpleException::MessageText() const
{
    return nullptr;
}

LPCTSTR CMemoryException::MessageText() const
{
    return L"Out of memory.";
}

LPCTSTR CNotSupportedException::MessageText() const
{
    return L"An unsupported operation was attempted.";
}

LPCTSTR CResourceException::MessageText() const
{
    return L"A required resource was unavailable.";
}

LPCTSTR CUserException::MessageText() const
{
    return nullptr; // the user has been told already
}

LPCTSTR CInvalidArgException::MessageText() const
{
    return L"An invalid argument was encountered.";
}

CArchiveException::CArchiveException(int cause, LPCTSTR lpszArchiveName)
    : m_cause(cause), m_strFileName(lpszArchiveName)
{
}

BOOL CArchiveException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    if (pnHelpContext != nullptr)
        *pnHelpContext = 0;
    return FormatFileMessage(MessageOf(kArchiveMessages, m_cause), m_strFileName, lpszError, nMaxError);
}

CFileException::CFileException(int cause, LONG lOsError, LPCTSTR lpszArchiveName)
    : m_cause(cause), m_lOsError(lOsError), m_strFileName(lpszArchiveName)
{
}

BOOL CFileException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    if (pnHelpContext != nullptr)
        *pnHelpContext = 0;
    return FormatFileMessage(MessageOf(kFileMessages, m_cause), m_strFileName, lpszError, nMaxError);
}

int PASCAL CFileException::OsErrorToException(LONG lOsError)
{
    switch (lOsError) {
    case ERROR_SUCCESS:
        return none;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_NO_MORE_FILES:
        return fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_DIRECTORY:
        return badPath;
    case ERROR_TOO_MANY_OPEN_FILES:
    case ERROR_SHARING_BUFFER_EXCEEDED:
        return tooManyOpenFiles;
    case ERROR_ACCESS_DENIED:
    case ERROR_INVALID_ACCESS:
    case ERROR_WRITE_PROTECT:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_CANNOT_MAKE:
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
    case ERROR_PRIVILEGE_NOT_HELD:
        return accessDenied;
    case ERROR_INVALID_HANDLE:
    case ERROR_INVALID_TARGET_HANDLE:
        return invalidFile;
    case ERROR_CURRENT_DIRECTORY:
        return removeCurrentDir;
    case ERROR_SEEK:
    case ERROR_NEGATIVE_SEEK:
    case ERROR_SEEK_ON_DEVICE:
        return badSeek;
    case ERROR_NOT_READY:
    case ERROR_CRC:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_WRITE_FAULT:
    case ERROR_READ_FAULT:
    case ERROR_GEN_FAILURE:
    case ERROR_IO_DEVICE:
        return hardIO;
    case ERROR_SHARING_VIOLATION:
        return sharingViolation;
    case ERROR_LOCK_VIOLATION:
    case ERROR_NOT_LOCKED:
    case ERROR_LOCK_FAILED:
        return lockViolation;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return diskFull;
    case ERROR_HANDLE_EOF:
        return endOfFile;
    default:
        return genericException;
    }
}

int PASCAL CFileException::ErrnoToException(int nErrno)
{
    switch (nErrno) {
    case 0:
        return none;
    case EPERM:
    case EACCES:
    case EEXIST:
        return accessDenied;
    case EBADF:
        return invalidFile;
    case EDEADLOCK:
        return sharingViolation;
    case EMFILE:
    case ENFILE:
        return tooManyOpenFiles;
    case ENOENT:
        return fileNotFound;
    case ENOTDIR:
        return badPath;
    case ENOSPC:
        return diskFull;
    case EINVAL:
    case ESPIPE:
        return badSeek;
    case EIO:
        return hardIO;
    default:
        return genericException;
    }
}

void PASCAL CFileException::ThrowOsError(LONG lOsError, LPCTSTR lpszFileName)
{
    AfxThrowFileException(OsErrorToException(lOsError), lOsError, lpszFileName);
}

void PASCAL CFileException::ThrowErrno(int nErrno, LPCTSTR lpszFileName)
{
    AfxThrowFileException(ErrnoToException(nErrno), static_cast<LONG>(_doserrno), lpszFileName);
}

void AFXAPI AfxThrowMemoryException()
{
    THROW(&g_memoryException);
}

void AFXAPI AfxThrowNotSupportedException()
{
    THROW(&g_notSupportedException);
}

void AFXAPI AfxThrowResourceException()
{
    THROW(&g_resourceException);
}

void AFXAPI AfxThrowUserException()
{
    THROW(&g_userException);
}

void AFXAPI AfxThrowInvalidArgException()
{
    THROW(&g_invalidArgException);
}

void AFXAPI AfxThrowArchiveException(int cause, LPCTSTR lpszArchiveName)
{
    THROW(new CArchiveException(cause, lpszArchiveName));
}

void AFXAPI AfxThrowFileException(int cause, LONG lOsError, LPCTSTR lpszFileName)
{
    THROW(new CFileException(cause, lOsError, lpszFileName));
}
