// Exceptions thrown by pointer, and the macros that catch them.
#include <afxwin.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

namespace
{

// Counts the live ones, to see what the macros delete.
class Probe : public CException
{
    DECLARE_DYNAMIC(Probe)

public:
    Probe() { ++s_live; }
    ~Probe() override { --s_live; }
    static int s_live;
};
IMPLEMENT_DYNAMIC(Probe, CException)
int Probe::s_live = 0;

std::wstring Message(const CException& exception, UINT size = 256)
{
    std::vector<TCHAR> buffer(size + 1, L'#');
    exception.GetErrorMessage(buffer.data(), size);
    EXPECT_EQ(buffer[size], L'#'); // nothing behind the buffer is touched
    return buffer.data();
}

int CatchNothing()
{
    TRY
    {
        THROW(new Probe);
    }
    CATCH(CFileException, e)
    {
        return 1;
    }
    END_CATCH
    return 0;
}

int ReturnFromHandler()
{
    TRY
    {
        THROW(new Probe);
    }
    CATCH(Probe, e)
    {
        return e->IsKindOf(RUNTIME_CLASS(Probe)) ? 1 : 2;
    }
    END_CATCH
    return 0;
}

void ThrowOn()
{
    TRY
    {
        THROW(new Probe);
    }
    CATCH_ALL(e)
    {
        EXPECT_EQ(Probe::s_live, 1);
        THROW_LAST();
    }
    END_CATCH_ALL
}

void ThrowAnother()
{
    TRY
    {
        THROW(new Probe);
    }
    CATCH(Probe, e)
    {
        AfxThrowUserException();
    }
    END_CATCH
}

} // namespace

TEST(ExceptionMacros, DeleteWhatWasCaught)
{
    EXPECT_EQ(ReturnFromHandler(), 1);
    EXPECT_EQ(Probe::s_live, 0);
    EXPECT_THROW(ThrowAnother(), CUserException*);
    EXPECT_EQ(Probe::s_live, 0);
}

TEST(ExceptionMacros, PassOnWhatTheyDoNotCatch)
{
    try {
        CatchNothing();
        ADD_FAILURE();
    } catch (Probe* e) {
        EXPECT_EQ(Probe::s_live, 1);
        e->Delete();
    }
    EXPECT_EQ(Probe::s_live, 0);

    try {
        ThrowOn();
        ADD_FAILURE();
    } catch (CException* e) { // caught by base class
        EXPECT_TRUE(e->IsKindOf(RUNTIME_CLASS(Probe)));
        EXPECT_EQ(Probe::s_live, 1);
        e->Delete();
    }
    EXPECT_EQ(Probe::s_live, 0);
}

TEST(ExceptionMacros, ChooseTheMatchingHandler)
{
    int handler = 0;
    TRY
    {
        AfxThrowFileException(CFileException::diskFull, ERROR_DISK_FULL, L"x.txt");
    }
    CATCH(CArchiveException, e)
    {
        handler = 1;
    }
    AND_CATCH(CFileException, e)
    {
        handler = e->m_cause == CFileException::diskFull && e->m_strFileName == L"x.txt" ? 2 : 3;
    }
    AND_CATCH_ALL(e)
    {
        handler = 4;
    }
    END_CATCH_ALL
    EXPECT_EQ(handler, 2);
}

TEST(ExceptionObjects, OnTheStackAreNotDeleted)
{
    CFileException onStack;
    onStack.m_bAutoDelete = FALSE;
    onStack.Delete();
    EXPECT_EQ(onStack.m_cause, CFileException::none);
    // Thrown without allocation: the same object each time, which Delete leaves alone.
    CException* thrown[2] = {};
    for (CException*& each : thrown) {
        try {
            AfxThrowMemoryException();
        } catch (CMemoryException* e) {
            each = e;
            e->Delete();
        }
    }
    EXPECT_EQ(thrown[0], thrown[1]);
}

TEST(ExceptionObjects, Messages)
{
    const CFileException missing(CFileException::fileNotFound, ERROR_FILE_NOT_FOUND, L"a.txt");
    EXPECT_NE(Message(missing).find(L"a.txt"), std::wstring::npos);
    EXPECT_EQ(Message(missing, 4), L"a.t");
    EXPECT_EQ(Message(missing, 1), L"");
    TCHAR untouched = L'#';
    EXPECT_FALSE(missing.GetErrorMessage(&untouched, 0));
    EXPECT_EQ(untouched, L'#');
    EXPECT_FALSE(missing.GetErrorMessage(nullptr, 10));
    // A cause that nobody knows still has a text; a name with a percent sign is no format.
    EXPECT_NE(Message(CFileException(99, -1, L"100%s.txt")).find(L"100%s.txt"), std::wstring::npos);
    EXPECT_NE(Message(CArchiveException(CArchiveException::badIndex, L"x.bin")).find(L"x.bin"),
              std::wstring::npos);
    EXPECT_FALSE(Message(CMemoryException()).empty());
    UINT help = 5;
    TCHAR text[8];
    EXPECT_FALSE(Probe().GetErrorMessage(text, _countof(text), &help));
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(help, 0u);
}

TEST(ExceptionObjects, CausesOfSystemErrors)
{
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_FILE_NOT_FOUND), CFileException::fileNotFound);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_PATH_NOT_FOUND), CFileException::badPath);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_SHARING_VIOLATION), CFileException::sharingViolation);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_HANDLE_EOF), CFileException::endOfFile);
    EXPECT_EQ(CFileException::OsErrorToException(987654), CFileException::genericException);
    EXPECT_EQ(CFileException::ErrnoToException(ENOENT), CFileException::fileNotFound);
    EXPECT_EQ(CFileException::ErrnoToException(EACCES), CFileException::accessDenied);
    try {
        CFileException::ThrowOsError(ERROR_ACCESS_DENIED, L"locked");
    } catch (CFileException* e) {
        EXPECT_EQ(e->m_cause, CFileException::accessDenied);
        EXPECT_EQ(e->m_lOsError, ERROR_ACCESS_DENIED);
        EXPECT_STREQ(e->m_strFileName, L"locked");
        e->Delete();
    }
}

TEST(ExceptionObjects, StringsThrowTheFrameworksClasses)
{
    EXPECT_THROW(AtlThrow(E_OUTOFMEMORY), CMemoryException*);
    EXPECT_THROW(AtlThrow(E_INVALIDARG), CInvalidArgException*);
}
