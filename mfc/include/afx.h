// The framework's ground: objects with run-time class information, exceptions, diagnostics, files and
// archives.
#pragma once

#include "afxver_.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <tchar.h>
#include <windows.h>

#include "atltime.h"
#include "cstringt.h"

class CArchive;
class CDocument;
class CDumpContext;
class CFile;
class CFileException;
class CObject;
struct CRuntimeClass;

// A place in a collection, or an item of an enumeration.
struct __POSITION {
};
typedef __POSITION* POSITION;
#define BEFORE_START_POSITION (reinterpret_cast<POSITION>(static_cast<INT_PTR>(-1)))

#ifndef UNUSED_ALWAYS
#define UNUSED_ALWAYS(x) (static_cast<void>(x))
#endif
#ifdef _DEBUG
#define UNUSED(x)
#else
#define UNUSED(x) UNUSED_ALWAYS(x)
#endif

// ---- Diagnostics
// -------------------------------------------------------------------------------------------

// Reports a failed assertion on the debugger's output and stderr; TRUE asks the caller to break.
AFX_SUBSET_API BOOL AFXAPI AfxAssertFailedLine(LPCSTR lpszFileName, int nLine);
// Writes formatted text to the debugger's output and stderr. In the wide form %s stands for wide text.
AFX_SUBSET_API void AFX_CDECL AfxTrace(LPCWSTR lpszFormat, ...);
AFX_SUBSET_API void AFX_CDECL AfxTrace(LPCSTR lpszFormat, ...);
// Asserts that the object is there and asks it to check itself.
AFX_SUBSET_API void AFXAPI AfxAssertValidObject(const CObject* pOb, LPCSTR lpszFileName, int nLine);
// Whether memory of that many bytes can be read (and, with bReadWrite, written).
AFX_SUBSET_API BOOL AFXAPI AfxIsValidAddress(const void* lp, UINT_PTR nBytes, BOOL bReadWrite = TRUE);
AFX_SUBSET_API BOOL AFXAPI AfxIsValidString(LPCWSTR lpsz, int nLength = -1);
AFX_SUBSET_API BOOL AFXAPI AfxIsValidString(LPCSTR lpsz, int nLength = -1);
AFX_SUBSET_API void AFX_CDECL AfxDebugBreak();
// Ends the process after a fatal error.
[[noreturn]] AFX_SUBSET_API void AFXAPI AfxAbort();

#ifdef _DEBUG
#define ASSERT(f) static_cast<void>((f) || !AfxAssertFailedLine(__FILE__, __LINE__) || (AfxDebugBreak(), 0))
#define VERIFY(f) ASSERT(f)
#define TRACE ::AfxTrace
#define ASSERT_VALID(pOb) (::AfxAssertValidObject(pOb, __FILE__, __LINE__))
#else
#define ASSERT(f) static_cast<void>(0)
#define VERIFY(f) static_cast<void>(f)
#define TRACE(...) static_cast<void>(0)
#define ASSERT_VALID(pOb) static_cast<void>(0)
#endif
#define TRACE0(sz) TRACE(_T("%s"), _T(sz))
#define TRACE1(sz, p1) TRACE(_T(sz), p1)
#define TRACE2(sz, p1, p2) TRACE(_T(sz), p1, p2)
#define TRACE3(sz, p1, p2, p3) TRACE(_T(sz), p1, p2, p3)
#define ASSERT_POINTER(p, type) ASSERT((p) != nullptr && AfxIsValidAddress((p), sizeof(type), FALSE))
#define ASSERT_NULL_OR_POINTER(p, type) ASSERT((p) == nullptr || AfxIsValidAddress((p), sizeof(type), FALSE))
#define ASSERT_KINDOF(class_name, object) ASSERT((object)->IsKindOf(RUNTIME_CLASS(class_name)))
// Throws CInvalidArgException* when the condition fails, in every build.
#define ENSURE(cond) ENSURE_THROW(cond, ::AfxThrowInvalidArgException())
#define ENSURE_ARG(cond) ENSURE(cond)
#define ENSURE_VALID(pOb) ENSURE_THROW((pOb) != nullptr, ::AfxThrowInvalidArgException())
#define ENSURE_THROW(cond, exception)                                                                        \
    do {                                                                                                     \
        if (!(cond)) {                                                                                       \
            ASSERT(FALSE);                                                                                   \
            exception;                                                                                       \
        }                                                                                                    \
    } while (false)

// This framework keeps no allocation log, so the debugging form of new is the plain one.
#define DEBUG_NEW new

// ---- Run-time class information
// ----------------------------------------------------------------------------

// Combined with a schema number: Serialize reads several versions and asks GetObjectSchema for the stored
// one.
#define VERSIONABLE_SCHEMA (0x80000000)

// One per CObject class that uses the macros below. Lives in its class's module for as long as that is
// loaded.
struct AFX_SUBSET_API CRuntimeClass {
    LPCSTR m_lpszClassName;
    int m_nObjectSize;                           // bytes
    UINT m_wSchema;                              // 0xFFFF: not serializable
    CObject*(PASCAL* m_pfnCreateObject)();       // null: not creatable by name
    CRuntimeClass*(PASCAL* m_pfnGetBaseClass)(); // null: CObject itself
    CRuntimeClass* m_pNextClass;                 // next of the registered classes

    // A new object, owned by the caller; null when the class cannot be created or memory is short.
    CObject* CreateObject();
    static CObject* PASCAL CreateObject(LPCSTR lpszClassName);
    static CObject* PASCAL CreateObject(LPCWSTR lpszClassName);
    // The registered class of that name, null when there is none.
    static CRuntimeClass* PASCAL FromName(LPCSTR lpszClassName);
    static CRuntimeClass* PASCAL FromName(LPCWSTR lpszClassName);
    // TRUE for the class itself too.
    BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;

    // Writes the class's schema number and name to an archive, and reads them back. Load answers null when no
    // registered class has the name.
    void Store(CArchive& ar) const;
    static CRuntimeClass* PASCAL Load(CArchive& ar, UINT* pwSchemaNum);
};

// Makes a class known to FromName and to archives.
AFX_SUBSET_API void AFXAPI AfxClassInit(CRuntimeClass* pNewClass);
struct AFX_CLASSINIT {
    explicit AFX_CLASSINIT(CRuntimeClass* pNewClass) { AfxClassInit(pNewClass); }
};

namespace afx_subset
{

// Forgets the registered classes that lie in a module which is about to be unloaded.
AFX_SUBSET_API void RemoveClasses(HMODULE module);

} // namespace afx_subset

#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())

#define DECLARE_DYNAMIC(class_name)                                                                          \
public:                                                                                                      \
    static CRuntimeClass class##class_name;                                                                  \
    static CRuntimeClass* PASCAL GetThisClass();                                                             \
    virtual CRuntimeClass* GetRuntimeClass() const;

#define DECLARE_DYNCREATE(class_name)                                                                        \
    DECLARE_DYNAMIC(class_name)                                                                              \
    static CObject* PASCAL CreateObject();

#define DECLARE_SERIAL(class_name)                                                                           \
    DECLARE_DYNCREATE(class_name)                                                                            \
    friend AFX_API CArchive& AFXAPI operator>>(CArchive& ar, class_name*& pOb);

#define IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, pfnNew)                                 \
    CRuntimeClass class_name::class##class_name = {                                                          \
        #class_name,                                                                                         \
        static_cast<int>(sizeof(class class_name)),                                                          \
        static_cast<UINT>(wSchema),                                                                          \
        pfnNew,                                                                                              \
        []() -> CRuntimeClass* { return RUNTIME_CLASS(base_class_name); },                                   \
        nullptr};                                                                                            \
    CRuntimeClass* PASCAL class_name::GetThisClass()                                                         \
    {                                                                                                        \
        return &class_name::class##class_name;                                                               \
    }                                                                                                        \
    CRuntimeClass* class_name::GetRuntimeClass() const                                                       \
    {                                                                                                        \
        return &class_name::class##class_name;                                                               \
    }                                                                                                        \
    static const AFX_CLASSINIT _init_##class_name(RUNTIME_CLASS(class_name));

#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                                                       \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                                     \
    CObject* PASCAL class_name::CreateObject()                                                               \
    {                                                                                                        \
        return new class_name;                                                                               \
    }                                                                                                        \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, class_name::CreateObject)

#define IMPLEMENT_SERIAL(class_name, base_class_name, wSchema)                                               \
    CObject* PASCAL class_name::CreateObject()                                                               \
    {                                                                                                        \
        return new class_name;                                                                               \
    }                                                                                                        \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, class_name::CreateObject)                   \
    CArchive& AFXAPI operator>>(CArchive& ar, class_name*& pOb)                                              \
    {                                                                                                        \
        pOb = static_cast<class_name*>(ar.ReadObject(RUNTIME_CLASS(class_name)));                            \
        return ar;                                                                                           \
    }

#define DYNAMIC_DOWNCAST(class_name, object)                                                                 \
    (static_cast<class_name*>(::AfxDynamicDownCast(RUNTIME_CLASS(class_name), object)))
#define STATIC_DOWNCAST(class_name, object)                                                                  \
    (static_cast<class_name*>(::AfxStaticDownCast(RUNTIME_CLASS(class_name), object)))

// The object if it is of the class, else null.
AFX_SUBSET_API CObject* AFXAPI AfxDynamicDownCast(CRuntimeClass* pClass, CObject* pObject);
// The object, asserted to be null or of the class.
AFX_SUBSET_API CObject* AFXAPI AfxStaticDownCast(CRuntimeClass* pClass, CObject* pObject);

// The root of the class hierarchy. Objects cannot be copied.
class AFX_SUBSET_API CObject
{
public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject();

    void* PASCAL operator new(size_t nSize);
    void* PASCAL operator new(size_t, void* p) { return p; }
    void* PASCAL operator new(size_t nSize, LPCSTR lpszFileName, int nLine);
    void PASCAL operator delete(void* p);
    void PASCAL operator delete(void*, void*) {}
    void PASCAL operator delete(void* p, LPCSTR lpszFileName, int nLine);

    BOOL IsSerializable() const;
    BOOL IsKindOf(const CRuntimeClass* pClass) const;
    virtual void Serialize(CArchive& ar);
    virtual void AssertValid() const;
    virtual void Dump(CDumpContext& dc) const;

    CObject(const CObject& objectSrc) = delete;
    CObject& operator=(const CObject& objectSrc) = delete;

    static CRuntimeClass classCObject;
    static CRuntimeClass* PASCAL GetThisClass();

protected:
    CObject();
};

// Collects diagnostic text: on the debugger's output, or in a file.
class AFX_SUBSET_API CDumpContext
{
public:
    // Without a file the text goes to the debugger's output. The file stays the caller's.
    explicit CDumpContext(CFile* pFile = NULL);

    // Above 0, dumped collections dump their elements too.
    int GetDepth() const { return m_nDepth; }
    void SetDepth(int nNewDepth) { m_nDepth = nNewDepth; }

    CDumpContext& operator<<(LPCWSTR lpsz);
    CDumpContext& operator<<(LPCSTR lpsz);
    CDumpContext& operator<<(const void* lp);
    CDumpContext& operator<<(const CObject* pOb);
    CDumpContext& operator<<(const CObject& ob);
    CDumpContext& operator<<(BYTE by);
    CDumpContext& operator<<(WORD w);
    CDumpContext& operator<<(int n);
    CDumpContext& operator<<(UINT u);
    CDumpContext& operator<<(LONG l);
    CDumpContext& operator<<(DWORD dw);
    CDumpContext& operator<<(LONGLONG n);
    CDumpContext& operator<<(ULONGLONG n);
    CDumpContext& operator<<(double d);
    void Flush();

    CDumpContext(const CDumpContext&) = delete;
    CDumpContext& operator=(const CDumpContext&) = delete;

private:
    CFile* m_pFile;
    int m_nDepth = 0;
};
extern AFX_SUBSET_API CDumpContext afxDump;

// ---- Exceptions
// --------------------------------------------------------------------------------------------

// Thrown by pointer; whoever catches one calls Delete (the CATCH macros do it).
class AFX_SUBSET_API CException : public CObject
{
    DECLARE_DYNAMIC(CException)

public:
    CException();
    // bAutoDelete: the object lies on the heap and Delete frees it.
    explicit CException(BOOL bAutoDelete);

    void Delete();
    // Writes a terminated message of at most nMaxError characters, terminator included; FALSE, with an empty
    // text, when there is none.
    virtual BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const;
    // Shows the message (else the string resource nMessageID, else a general text) and answers as
    // AfxMessageBox.
    virtual int ReportError(UINT nType = MB_OK, UINT nMessageID = 0);

    BOOL m_bAutoDelete;
};

// Exceptions with a fixed text, thrown without allocating.
class AFX_SUBSET_API CSimpleException : public CException
{
    DECLARE_DYNAMIC(CSimpleException)

public:
    CSimpleException();
    explicit CSimpleException(BOOL bAutoDelete);
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;

protected:
    // The text of GetErrorMessage.
    virtual LPCTSTR MessageText() const;
};

#define AFX_SUBSET_SIMPLE_EXCEPTION(class_name)                                                              \
    class AFX_SUBSET_API class_name : public CSimpleException                                                \
    {                                                                                                        \
        DECLARE_DYNAMIC(class_name)                                                                          \
    public:                                                                                                  \
        class_name() {}                                                                                      \
        explicit class_name(BOOL bAutoDelete) : CSimpleException(bAutoDelete) {}                             \
                                                                                                             \
    protected:                                                                                               \
        LPCTSTR MessageText() const override;                                                                \
    };
AFX_SUBSET_SIMPLE_EXCEPTION(CMemoryException)
AFX_SUBSET_SIMPLE_EXCEPTION(CNotSupportedException)
AFX_SUBSET_SIMPLE_EXCEPTION(CResourceException)
AFX_SUBSET_SIMPLE_EXCEPTION(CUserException)
AFX_SUBSET_SIMPLE_EXCEPTION(CInvalidArgException)
#undef AFX_SUBSET_SIMPLE_EXCEPTION

class AFX_SUBSET_API CArchiveException : public CException
{
    DECLARE_DYNAMIC(CArchiveException)

public:
    enum { none, genericException, readOnly, endOfFile, writeOnly, badIndex, badClass, badSchema };

    explicit CArchiveException(int cause = CArchiveException::none, LPCTSTR lpszArchiveName = NULL);
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;

    int m_cause;
    CString m_strFileName;
};

class AFX_SUBSET_API CFileException : public CException
{
    DECLARE_DYNAMIC(CFileException)

public:
    enum {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    explicit CFileException(int cause = CFileException::none, LONG lOsError = -1,
                            LPCTSTR lpszArchiveName = NULL);
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;

    // The cause for a system error number, or for an errno value.
    static int PASCAL OsErrorToException(LONG lOsError);
    static int PASCAL ErrnoToException(int nErrno);
    // Both throw, also for 0.
    [[noreturn]] static void PASCAL ThrowOsError(LONG lOsError, LPCTSTR lpszFileName = NULL);
    [[noreturn]] static void PASCAL ThrowErrno(int nErrno, LPCTSTR lpszFileName = NULL);

    int m_cause;
    LONG m_lOsError;
    CString m_strFileName;
};

[[noreturn]] AFX_SUBSET_API void AFXAPI AfxThrowMemoryException();
[[noreturn]] AFX_SUBSET_API void AFXAPI AfxThrowNotSupportedException();
[[noreturn]] AFX_SUBSET_API void AFXAPI AfxThrowResourceException();
[[noreturn]] AFX_SUBSET_API void AFXAPI AfxThrowUserException();
[[noreturn]] AFX_SUBSET_API void AFXAPI AfxThrowInvalidArgException();
[[noreturn]] AFX_SUBSET_API void AFXAPI AfxThrowArchiveException(int cause, LPCTSTR lpszArchiveName = NULL);
[[noreturn]] AFX_SUBSET_API void AFXAPI AfxThrowFileException(int cause, LONG lOsError = -1,
                                                              LPCTSTR lpszFileName = NULL);

namespace afx_subset
{

// Deletes a caught exception when its CATCH block ends, unless it is thrown on.
class CaughtException
{
public:
    CaughtException() = default;
    CaughtException(const CaughtException&) = delete;
    CaughtException& operator=(const CaughtException&) = delete;
    ~CaughtException()
    {
        if (m_held != nullptr)
            m_held->Delete();
    }

    void Hold(CException* caught) { m_held = caught; }
    void Release() { m_held = nullptr; }

private:
    CException* m_held = nullptr;
};

} // namespace afx_subset

#define TRY                                                                                                  \
    {                                                                                                        \
        ::afx_subset::CaughtException afxCaughtException;                                                    \
        try {
#define CATCH(exception_class, e)                                                                            \
    }                                                                                                        \
    catch (exception_class * e)                                                                              \
    {                                                                                                        \
        ASSERT_KINDOF(exception_class, e);                                                                   \
        afxCaughtException.Hold(e);
#define AND_CATCH(exception_class, e) CATCH(exception_class, e)
#define CATCH_ALL(e)                                                                                         \
    }                                                                                                        \
    catch (CException * e)                                                                                   \
    {                                                                                                        \
        afxCaughtException.Hold(e);
#define AND_CATCH_ALL(e) CATCH_ALL(e)
#define END_CATCH                                                                                            \
    }                                                                                                        \
    }
#define END_CATCH_ALL END_CATCH
#define THROW(e) throw e
#define THROW_LAST() (afxCaughtException.Release(), throw)

// ---- Files
// -------------------------------------------------------------------------------------------------

struct CFileStatus {
    CTime m_ctime;                 // created; 0 where the file system does not say
    CTime m_mtime;                 // last written
    CTime m_atime;                 // last read
    ULONGLONG m_size;              // bytes
    BYTE m_attribute;              // CFile::Attribute bits
    TCHAR m_szFullName[_MAX_PATH]; // absolute; cut to what fits
};

// An unbuffered binary file. Failures throw CFileException* unless said otherwise.
class AFX_SUBSET_API CFile : public CObject
{
    DECLARE_DYNAMIC(CFile)

public:
    enum OpenFlags {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        typeUnicode = 0x0400,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeText = 0x4000,
        typeBinary = 0x8000,
        osNoBuffer = 0x10000,
        osWriteThrough = 0x20000,
        osRandomAccess = 0x40000,
        osSequentialScan = 0x80000
    };
    enum Attribute {
        normal = 0x00,
        readOnly = 0x01,
        hidden = 0x02,
        system = 0x04,
        volume = 0x08,
        directory = 0x10,
        archive = 0x20
    };
    enum SeekPosition { begin = 0, current = 1, end = 2 };
    enum BufferCommand { bufferRead, bufferWrite, bufferCommit, bufferCheck };
    enum BufferFlags { bufferDirect = 0x01, bufferBlocking = 0x02 };

    static const HANDLE hFileNull;

    CFile();
    // Attaches a handle, which Close closes and the destructor leaves alone.
    explicit CFile(HANDLE hFile);
    // Opens the file; throws CFileException* when it cannot, CInvalidArgException* for a null name.
    CFile(LPCTSTR lpszFileName, UINT nOpenFlags);
    // Closes a file that Open or the opening constructor opened.
    ~CFile() override;

    operator HANDLE() const { return m_hFile; }

    // FALSE, with *pError filled in when it is not null, if the file cannot be opened. An object that is open
    // already is closed first.
    virtual BOOL Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError = NULL);
    // A new object, owned by the caller, on a duplicate of the handle.
    virtual CFile* Duplicate() const;
    // Closes, ignoring every error.
    virtual void Abort();
    virtual void Close();
    virtual void Flush();

    // Bytes read; fewer than asked for at the end of the file.
    virtual UINT Read(void* lpBuf, UINT nCount);
    virtual void Write(const void* lpBuf, UINT nCount);
    // The new position in bytes from the beginning.
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
    void SeekToBegin() { Seek(0, CFile::begin); }
    ULONGLONG SeekToEnd() { return Seek(0, CFile::end); }
    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    virtual void SetLength(ULONGLONG dwNewLen);
    virtual void LockRange(ULONGLONG dwPos, ULONGLONG dwCount);
    virtual void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount);

    // FALSE when the status cannot be had.
    BOOL GetStatus(CFileStatus& rStatus) const;
    static BOOL PASCAL GetStatus(LPCTSTR lpszFileName, CFileStatus& rStatus);
    // Sets times and attributes; a zero m_mtime leaves the times alone.
    static void PASCAL SetStatus(LPCTSTR lpszFileName, const CFileStatus& status);
    static void PASCAL Rename(LPCTSTR lpszOldName, LPCTSTR lpszNewName);
    static void PASCAL Remove(LPCTSTR lpszFileName);

    virtual CString GetFileName() const;
    virtual CString GetFileTitle() const;
    virtual CString GetFilePath() const;
    virtual void SetFilePath(LPCTSTR lpszNewName);

    // Access to a memory file's own buffer; 0 for a file that has none.
    virtual UINT GetBufferPtr(UINT nCommand, UINT nCount = 0, void** ppBufStart = NULL,
                              void** ppBufMax = NULL);

    void AssertValid() const override;
    void Dump(CDumpContext& dc) const override;

    HANDLE m_hFile;

protected:
    BOOL m_bCloseOnDelete;
    CString m_strFileName; // full path
};

// A C run-time stream. Text mode is the default: a line ends with "\n" in memory and "\r\n" in the file, and
// the file holds text of the ANSI code page, or UTF-16 without a mark when opened with typeUnicode. In binary
// mode characters are stored as they are.
class AFX_SUBSET_API CStdioFile : public CFile
{
    DECLARE_DYNAMIC(CStdioFile)

public:
    CStdioFile();
    // Attaches a stream, which Close closes. Throws CInvalidArgException* for null.
    explicit CStdioFile(FILE* pOpenStream);
    CStdioFile(LPCTSTR lpszFileName, UINT nOpenFlags);
    ~CStdioFile() override;

    BOOL Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError = NULL) override;
    // Writes the text without its terminator. Throws CInvalidArgException* for null.
    virtual void WriteString(LPCTSTR lpsz);
    // Reads a line of at most nMax - 1 characters, its "\n" included; null at the end of the file.
    virtual LPTSTR ReadString(LPTSTR lpsz, UINT nMax);
    // Reads a line and drops its "\n"; FALSE at the end of the file.
    virtual BOOL ReadString(CString& rString);

    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(const void* lpBuf, UINT nCount) override;
    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    ULONGLONG GetPosition() const override;
    ULONGLONG GetLength() const override;
    void SetLength(ULONGLONG dwNewLen) override;
    void Flush() override;
    void Close() override;
    void Abort() override;
    // These three throw CNotSupportedException*.
    CFile* Duplicate() const override;
    void LockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;

    FILE* m_pStream;

private:
    enum class Text { Ansi, Wide, WideTranslated };

    bool ReadChar(TCHAR& ch);
    bool ReadAnsiChar(TCHAR& ch);
    bool ReadWideChar(TCHAR& ch);
    [[noreturn]] void ThrowErrno() const;

    Text m_text = Text::Ansi;
    TCHAR m_chPending = 0; // second half of a character that needs two units
};

// A file in memory, open from construction on.
class AFX_SUBSET_API CMemFile : public CFile
{
    DECLARE_DYNAMIC(CMemFile)

public:
    // An empty file that grows in steps of nGrowBytes.
    explicit CMemFile(UINT nGrowBytes = 1024);
    CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    // Frees the memory if the file allocated it.
    ~CMemFile() override;

    // Uses the caller's memory. With nGrowBytes 0 its contents are the file, which cannot grow; otherwise the
    // file is empty and the memory, which must come from malloc, is reallocated as it grows.
    void Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    // Closes the file and hands the memory, allocated with malloc, to the caller.
    BYTE* Detach();

    BOOL GetStatus(CFileStatus& rStatus) const;
    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(const void* lpBuf, UINT nCount) override;
    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    ULONGLONG GetPosition() const override;
    ULONGLONG GetLength() const override;
    void SetLength(ULONGLONG dwNewLen) override;
    void Flush() override;
    void Close() override;
    void Abort() override;
    // These three throw CNotSupportedException*.
    CFile* Duplicate() const override;
    void LockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    UINT GetBufferPtr(UINT nCommand, UINT nCount = 0, void** ppBufStart = NULL,
                      void** ppBufMax = NULL) override;

protected:
    virtual BYTE* Alloc(SIZE_T nBytes);
    virtual BYTE* Realloc(BYTE* lpMem, SIZE_T nBytes);
    virtual BYTE* Memcpy(BYTE* lpMemTarget, const BYTE* lpMemSource, SIZE_T nBytes);
    virtual void Free(BYTE* lpMem);
    // Makes room for that many bytes; throws CMemoryException* when the memory is the caller's and fixed.
    virtual void GrowFile(SIZE_T dwNewLen);

    UINT m_nGrowBytes;
    SIZE_T m_nPosition;
    SIZE_T m_nBufferSize; // bytes allocated
    SIZE_T m_nFileSize;   // bytes that count
    BYTE* m_lpBuffer;
    BOOL m_bAutoDelete;
};

// ---- Archives
// ----------------------------------------------------------------------------------------------

// A buffered binary stream on a file, for loading or for storing. Objects are stored once each, with their
// class. Whatever the file holds, loading throws CArchiveException* instead of reading past what is there.
class AFX_SUBSET_API CArchive
{
public:
    enum Mode { store = 0, load = 1, bNoFlushOnDelete = 2, bNoByteSwap = 4 };

    // The file stays the caller's and must outlive the archive. lpBuf, when given, is a buffer of nBufSize
    // bytes that stays the caller's.
    CArchive(CFile* pFile, UINT nMode, int nBufSize = 4096, void* lpBuf = NULL);
    // Closes the archive, unless bNoFlushOnDelete was given.
    ~CArchive() noexcept(false);
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    BOOL IsLoading() const { return (m_nMode & load) != 0; }
    BOOL IsStoring() const { return (m_nMode & load) == 0; }
    BOOL IsBufferEmpty() const { return m_lpBufCur >= m_lpBufMax; }
    CFile* GetFile() const { return m_pFile; }
    // The schema of the object that is being loaded, once; afterwards, and while storing, (UINT)-1.
    UINT GetObjectSchema();
    void SetObjectSchema(UINT nSchema) { m_nObjectSchema = nSchema; }
    void SetLoadParams(UINT nGrowBy = 1024);
    void SetStoreParams(UINT nHashSize = 2053, UINT nBlockSize = 128);

    // Bytes read; fewer than asked for at the end of the file.
    UINT Read(void* lpBuf, UINT nMax);
    void Write(const void* lpBuf, UINT nMax);
    // Storing: writes the buffer out. Loading: gives what was read ahead back to the file's position.
    void Flush();
    void Close();
    // Closes without writing what is left and without throwing.
    void Abort();

    void WriteString(LPCTSTR lpsz);
    // Reads a line of at most nMax - 1 characters without its end mark; null at the end of the file.
    LPTSTR ReadString(LPTSTR lpsz, UINT nMax);
    BOOL ReadString(CString& rString);

    CObject* ReadObject(const CRuntimeClass* pClass);
    void WriteObject(const CObject* pOb);
    // Gives an object a number of its own without storing or loading it.
    void MapObject(const CObject* pOb);
    void WriteClass(const CRuntimeClass* pClassRef);
    CRuntimeClass* ReadClass(const CRuntimeClass* pClassRefRequested = NULL, UINT* pSchema = NULL,
                             DWORD* pObTag = NULL);
    void SerializeClass(const CRuntimeClass* pClassRef);
    // A number of elements, in 2 bytes when it fits.
    void WriteCount(DWORD_PTR dwCount);
    DWORD_PTR ReadCount();

    CArchive& operator<<(BYTE by) { return Put(by); }
    CArchive& operator<<(WORD w) { return Put(w); }
    CArchive& operator<<(LONG l) { return Put(l); }
    CArchive& operator<<(DWORD dw) { return Put(dw); }
    CArchive& operator<<(float f) { return Put(f); }
    CArchive& operator<<(double d) { return Put(d); }
    CArchive& operator<<(int i) { return Put(i); }
    CArchive& operator<<(short w) { return Put(w); }
    CArchive& operator<<(char ch) { return Put(ch); }
    CArchive& operator<<(wchar_t ch) { return Put(ch); }
    CArchive& operator<<(unsigned u) { return Put(u); }
    CArchive& operator<<(bool b) { return Put(static_cast<BYTE>(b)); }
    CArchive& operator<<(ULONGLONG dwdw) { return Put(dwdw); }
    CArchive& operator<<(LONGLONG dwdw) { return Put(dwdw); }

    CArchive& operator>>(BYTE& by) { return Get(by); }
    CArchive& operator>>(WORD& w) { return Get(w); }
    CArchive& operator>>(LONG& l) { return Get(l); }
    CArchive& operator>>(DWORD& dw) { return Get(dw); }
    CArchive& operator>>(float& f) { return Get(f); }
    CArchive& operator>>(double& d) { return Get(d); }
    CArchive& operator>>(int& i) { return Get(i); }
    CArchive& operator>>(short& w) { return Get(w); }
    CArchive& operator>>(char& ch) { return Get(ch); }
    CArchive& operator>>(wchar_t& ch) { return Get(ch); }
    CArchive& operator>>(unsigned& u) { return Get(u); }
    CArchive& operator>>(bool& b);
    CArchive& operator>>(ULONGLONG& dwdw) { return Get(dwdw); }
    CArchive& operator>>(LONGLONG& dwdw) { return Get(dwdw); }

    CDocument* m_pDocument;
    BOOL m_bForceFlat;
    CString m_strFileName; // the file's path, for exceptions

private:
    struct ObjectMaps;

    template <typename T>
    CArchive& Put(const T& value)
    {
        Write(&value, sizeof(value));
        return *this;
    }
    template <typename T>
    CArchive& Get(T& value)
    {
        ReadExactly(&value, sizeof(value));
        return *this;
    }
    void ReadExactly(void* lpBuf, UINT nMax);
    void RequireLoading() const;
    void RequireStoring() const;
    void FillBuffer();
    UINT ReadFromFile(BYTE* target, UINT count);
    bool ReadLineChar(TCHAR& ch);
    ObjectMaps& Maps();
    void WriteTag(DWORD tag, bool isClass);
    DWORD StoreIndexOf(const void* object) const;
    CRuntimeClass* ReadNewClass(UINT* pSchema);
    CObject* LoadNewObject(CRuntimeClass* stored, UINT schema);

    UINT m_nMode;
    CFile* m_pFile;
    BYTE* m_lpBufStart;
    BYTE* m_lpBufCur; // next byte to read or write
    BYTE* m_lpBufMax; // end of what was read, or of the room for writing
    int m_nBufSize;
    bool m_bOwnBuffer;
    UINT m_nObjectSchema;
    ObjectMaps* m_pMaps;
};

AFX_SUBSET_API CArchive& AFXAPI operator<<(CArchive& ar, const CObject* pOb);
AFX_SUBSET_API CArchive& AFXAPI operator>>(CArchive& ar, CObject*& pOb);
AFX_SUBSET_API CArchive& AFXAPI operator>>(CArchive& ar, const CObject*& pOb);
AFX_SUBSET_API CArchive& AFXAPI operator<<(CArchive& ar, const CStringW& str);
AFX_SUBSET_API CArchive& AFXAPI operator<<(CArchive& ar, const CStringA& str);
AFX_SUBSET_API CArchive& AFXAPI operator>>(CArchive& ar, CStringW& str);
AFX_SUBSET_API CArchive& AFXAPI operator>>(CArchive& ar, CStringA& str);
AFX_SUBSET_API CArchive& AFXAPI operator<<(CArchive& ar, const RECT& rect);
AFX_SUBSET_API CArchive& AFXAPI operator<<(CArchive& ar, POINT point);
AFX_SUBSET_API CArchive& AFXAPI operator<<(CArchive& ar, SIZE size);
AFX_SUBSET_API CArchive& AFXAPI operator>>(CArchive& ar, RECT& rect);
AFX_SUBSET_API CArchive& AFXAPI operator>>(CArchive& ar, POINT& point);
AFX_SUBSET_API CArchive& AFXAPI operator>>(CArchive& ar, SIZE& size);
AFX_SUBSET_API CArchive& AFXAPI operator<<(CArchive& ar, CTime time);
AFX_SUBSET_API CArchive& AFXAPI operator>>(CArchive& ar, CTime& time);
