// Files on disk, in memory, and on C run-time streams.
#include "tests/support/temporary_file.h"

#include <afxwin.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using support::FillFile;
using support::TemporaryFile;

namespace
{

// The cause of the file exception that the call throws, -1 for none.
template <typename Call>
int CauseOf(Call call)
{
    try {
        call();
    } catch (CFileException* e) {
        const int cause = e->m_cause;
        e->Delete();
        return cause;
    }
    return -1;
}

std::string Contents(LPCTSTR path)
{
    return support::FileContents<std::string>(path);
}

} // namespace

TEST(FileDisk, ReadsWritesSeeks)
{
    const TemporaryFile path;
    CFile file;
    ASSERT_TRUE(file.Open(path, CFile::modeCreate | CFile::modeReadWrite));
    file.Write("hello world", 11);
    EXPECT_EQ(file.Seek(-5, CFile::end), 6u);
    char buffer[16] = {};
    EXPECT_EQ(file.Read(buffer, sizeof(buffer)), 5u);
    EXPECT_STREQ(buffer, "world");
    EXPECT_EQ(file.Read(buffer, sizeof(buffer)), 0u);
    EXPECT_EQ(file.GetPosition(), 11u);

    // Beyond the end, the file grows at the next write only.
    EXPECT_EQ(file.Seek(20, CFile::begin), 20u);
    EXPECT_EQ(file.GetLength(), 11u);
    file.Write("!", 1);
    EXPECT_EQ(file.GetLength(), 21u);
    file.SetLength(3);
    EXPECT_EQ(file.SeekToEnd(), 3u);
    EXPECT_EQ(CauseOf([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
    EXPECT_THROW(file.Seek(0, 77), CInvalidArgException*);
    EXPECT_THROW(file.Write(nullptr, 1), CInvalidArgException*);
    file.Close();
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
    file.Close(); // nothing left to close
    EXPECT_EQ(Contents(path), "hel");
}

TEST(FileDisk, OpenReportsInsteadOfThrowing)
{
    const TemporaryFile path;
    const CString absent = CString(path) + L".absent";
    CFileException error;
    CFile file;
    EXPECT_FALSE(file.Open(absent, CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
    EXPECT_EQ(error.m_lOsError, ERROR_FILE_NOT_FOUND);
    EXPECT_STREQ(error.m_strFileName, absent);
    EXPECT_FALSE(file.Open(nullptr, CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::badPath);
    EXPECT_FALSE(file.Open(absent, CFile::modeRead));
    EXPECT_EQ(CauseOf([&] { CFile opened(absent, CFile::modeRead); }), CFileException::fileNotFound);
    EXPECT_THROW(CFile(nullptr, CFile::modeRead), CInvalidArgException*);
    EXPECT_NE(CauseOf([&] { file.Write("x", 1); }), -1); // never opened

    // Neither sharing nor a mode that does not fit is let through.
    ASSERT_TRUE(file.Open(path, CFile::modeRead | CFile::shareExclusive));
    CFile second;
    EXPECT_FALSE(second.Open(path, CFile::modeRead | CFile::shareDenyNone, &error));
    EXPECT_EQ(error.m_cause, CFileException::sharingViolation);
    EXPECT_EQ(CauseOf([&] { file.Write("x", 1); }), CFileException::accessDenied);
}

TEST(FileDisk, CreationModes)
{
    const TemporaryFile path;
    FillFile(path, std::string("old"));
    {
        CFile file(path, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite);
        EXPECT_EQ(file.GetLength(), 3u);
    }
    {
        CFile file(path, CFile::modeCreate | CFile::modeWrite);
        EXPECT_EQ(file.GetLength(), 0u);
    }
    CFile::Remove(path);
    CFile file;
    EXPECT_FALSE(file.Open(path, CFile::modeNoTruncate | CFile::modeWrite));
    EXPECT_TRUE(file.Open(path, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite));
}

TEST(FileDisk, DuplicateAndAttach)
{
    const TemporaryFile path;
    CFile file(path, CFile::modeCreate | CFile::modeReadWrite);
    const std::unique_ptr<CFile> copy(file.Duplicate());
    EXPECT_NE(copy->m_hFile, file.m_hFile);
    EXPECT_STREQ(copy->GetFilePath(), file.GetFilePath());
    copy->Write("x", 1);
    EXPECT_EQ(file.GetPosition(), 1u); // one file pointer for both
    {
        CFile attached(file.m_hFile);
        attached.Write("y", 1);
    } // leaves the handle alone
    file.Write("z", 1);
    EXPECT_EQ(file.GetLength(), 3u);
}

TEST(FileDisk, NamesAndStatus)
{
    const TemporaryFile path;
    FillFile(path, std::string("12345"));
    CFile file(path, CFile::modeRead);
    EXPECT_STREQ(file.GetFilePath(), path);
    EXPECT_EQ(file.GetFilePath().Right(file.GetFileName().GetLength()), file.GetFileName());
    EXPECT_EQ(file.GetFileName().FindOneOf(L"\\/:"), -1);
    CFileStatus status;
    ASSERT_TRUE(file.GetStatus(status));
    EXPECT_EQ(status.m_size, 5u);
    EXPECT_STREQ(status.m_szFullName, path);
    file.SetFilePath(L"c:\\windows\\write\\myfile.wri");
    EXPECT_STREQ(file.GetFileName(), L"myfile.wri");
    file.Close();

    ASSERT_TRUE(CFile::GetStatus(path, status));
    EXPECT_LE((CTime::GetCurrentTime() - status.m_mtime).GetTotalSeconds(), 60);
    status.m_mtime = CTime(2001, 2, 3, 4, 5, 6);
    status.m_attribute = CFile::readOnly;
    CFile::SetStatus(path, status);
    CFileStatus changed;
    ASSERT_TRUE(CFile::GetStatus(path, changed));
    EXPECT_EQ(changed.m_mtime, CTime(2001, 2, 3, 4, 5, 6));
    EXPECT_EQ(changed.m_attribute & CFile::readOnly, CFile::readOnly);
    EXPECT_FALSE(CFile::GetStatus(L"c:\\no such folder\\x", changed));
    EXPECT_FALSE(CFile::GetStatus(nullptr, changed));
}

TEST(FileDisk, RenameRemoveLock)
{
    const TemporaryFile path;
    const CString moved = CString(path) + L".moved";
    FillFile(path, std::string("data"));
    CFile::Rename(path, moved);
    EXPECT_EQ(Contents(moved), "data");
    EXPECT_EQ(CauseOf([&] { CFile::Rename(path, moved); }), CFileException::fileNotFound);
    {
        CFile first(moved, CFile::modeReadWrite | CFile::shareDenyNone);
        CFile second(moved, CFile::modeReadWrite | CFile::shareDenyNone);
        first.LockRange(0, 2);
        EXPECT_EQ(CauseOf([&] { second.LockRange(1, 2); }), CFileException::lockViolation);
        first.UnlockRange(0, 2);
        second.LockRange(1, 2);
        second.UnlockRange(1, 2);
    }
    CFile::Remove(moved);
    EXPECT_EQ(CauseOf([&] { CFile::Remove(moved); }), CFileException::fileNotFound);
}

TEST(FileMemory, GrowsAndSeeks)
{
    CMemFile file(16);
    const std::string text(100, 'm');
    file.Write(text.data(), 100);
    EXPECT_EQ(file.GetLength(), 100u);
    EXPECT_EQ(file.Seek(-3, CFile::current), 97u);
    char buffer[8] = {};
    EXPECT_EQ(file.Read(buffer, 8), 3u);
    EXPECT_EQ(file.Read(buffer, 8), 0u);
    EXPECT_EQ(CauseOf([&] { file.Seek(-101, CFile::end); }), CFileException::badSeek);
    EXPECT_EQ(CauseOf([&] { file.Seek(_I64_MIN, CFile::current); }), CFileException::badSeek);

    // What lies between the old end and a later write reads as zero.
    file.Seek(110, CFile::begin);
    EXPECT_EQ(file.Read(buffer, 8), 0u);
    file.Write("x", 1);
    file.Seek(100, CFile::begin);
    EXPECT_EQ(file.Read(buffer, 8), 8u);
    EXPECT_EQ(std::string(buffer, 8), std::string(8, '\0'));
    file.SetLength(5);
    EXPECT_EQ(file.GetPosition(), 5u);

    EXPECT_THROW(file.Duplicate(), CNotSupportedException*);
    EXPECT_THROW(file.LockRange(0, 1), CNotSupportedException*);
    BYTE* const memory = file.Detach();
    EXPECT_EQ(memory[4], 'm');
    EXPECT_EQ(file.GetLength(), 0u);
    free(memory);
}

TEST(FileMemory, AttachedMemoryThatCannotGrow)
{
    BYTE memory[8] = "1234567";
    CMemFile file(memory, 7);
    char buffer[16] = {};
    EXPECT_EQ(file.Read(buffer, sizeof(buffer)), 7u);
    EXPECT_STREQ(buffer, "1234567");
    EXPECT_THROW(file.Write("x", 1), CMemoryException*);
    EXPECT_THROW(file.SetLength(8), CMemoryException*);
    EXPECT_EQ(memory[7], 0);
    file.SeekToBegin();
    file.Write("AB", 2);
    EXPECT_EQ(memory[1], 'B');
    EXPECT_THROW(file.Attach(nullptr, 4), CInvalidArgException*);
}

TEST(FileMemory, DirectBuffer)
{
    CMemFile file;
    EXPECT_EQ(file.GetBufferPtr(CFile::bufferCheck), static_cast<UINT>(CFile::bufferDirect));
    void* start = nullptr;
    void* end = nullptr;
    EXPECT_EQ(file.GetBufferPtr(CFile::bufferWrite, 10, &start, &end), 10u);
    memcpy(start, "0123456789", 10);
    EXPECT_EQ(file.GetPosition(), 0u);
    EXPECT_EQ(file.GetBufferPtr(CFile::bufferCommit, 10), 0u);
    EXPECT_EQ(file.GetLength(), 10u);
    EXPECT_THROW(file.GetBufferPtr(CFile::bufferCommit, 1u << 31), CInvalidArgException*);
    file.Seek(4, CFile::begin);
    EXPECT_EQ(file.GetBufferPtr(CFile::bufferRead, static_cast<UINT>(-1), &start, &end), 6u);
    EXPECT_EQ(*static_cast<char*>(start), '4');
    EXPECT_EQ(static_cast<char*>(end) - static_cast<char*>(start), 6);
    EXPECT_EQ(file.GetPosition(), 10u);
}

TEST(FileStdio, TextLines)
{
    const TemporaryFile path;
    {
        CStdioFile file(path, CFile::modeCreate | CFile::modeWrite | CFile::typeText);
        file.WriteString(L"first\nsecond\n\nlast");
    }
    EXPECT_EQ(Contents(path), "first\r\nsecond\r\n\r\nlast");
    CStdioFile file(path, CFile::modeRead | CFile::typeText);
    CString line;
    std::vector<std::wstring> lines;
    while (file.ReadString(line))
        lines.emplace_back(line.GetString());
    EXPECT_EQ(lines, (std::vector<std::wstring>{L"first", L"second", L"", L"last"}));
    EXPECT_FALSE(file.ReadString(line));

    file.SeekToBegin();
    TCHAR buffer[5] = {0, 0, 0, 0, L'#'};
    EXPECT_STREQ(file.ReadString(buffer, 4), L"fir");
    EXPECT_EQ(buffer[4], L'#');
    EXPECT_STREQ(file.ReadString(buffer, 4), L"st\n"); // the line end counts
    EXPECT_THROW(file.ReadString(buffer, 0), CInvalidArgException*);
    file.SeekToEnd();
    EXPECT_EQ(file.ReadString(buffer, 4), nullptr);
    EXPECT_THROW(file.Duplicate(), CNotSupportedException*);
}

TEST(FileStdio, TextOfTheAnsiCodePage)
{
    const TemporaryFile path;
    const CString chinese(L"\u4E2D\u6587\u5B57");
    if (CString(CStringA(chinese)) != chinese)
        GTEST_SKIP() << "the code page has no Chinese";
    {
        CStdioFile file(path, CFile::modeCreate | CFile::modeWrite);
        file.WriteString(chinese + L"\n");
    }
    EXPECT_EQ(Contents(path), std::string(CStringA(chinese)) + "\r\n");
    CStdioFile file(path, CFile::modeRead);
    CString line;
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, chinese);
    // Cut within a character.
    file.Close();
    FillFile(path, std::string(CStringA(chinese)).substr(0, 5) + "\r\nnext");
    ASSERT_TRUE(file.Open(path, CFile::modeRead));
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(line.Left(1), chinese.Left(1));
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_STREQ(line, L"next");
}

TEST(FileStdio, WideModes)
{
    const TemporaryFile path;
    {
        CStdioFile file(path, CFile::modeCreate | CFile::modeWrite | CFile::typeUnicode);
        file.WriteString(L"\u4E2D\n\r");
    }
    EXPECT_EQ(Contents(path), std::string("\x2D\x4E\r\0\n\0\r\0", 8)); // no mark before the text
    {
        CStdioFile file(path, CFile::modeRead | CFile::typeUnicode);
        TCHAR buffer[8];
        EXPECT_STREQ(file.ReadString(buffer, 8), L"\u4E2D\n");
        EXPECT_STREQ(file.ReadString(buffer, 8), L"\r");
    }
    CStdioFile file(path, CFile::modeRead | CFile::typeBinary);
    CString line;
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_STREQ(line, L"\u4E2D\r");
}

TEST(FileStdio, Failures)
{
    const TemporaryFile path;
    EXPECT_THROW(CStdioFile(static_cast<FILE*>(nullptr)), CInvalidArgException*);
    CStdioFile file;
    CFileException error;
    EXPECT_FALSE(file.Open(CString(path) + L".absent", CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
    EXPECT_EQ(file.m_pStream, nullptr);
    CString line;
    EXPECT_EQ(CauseOf([&] { file.ReadString(line); }), CFileException::invalidFile);
    ASSERT_TRUE(file.Open(path, CFile::modeRead));
    EXPECT_NE(CauseOf([&] { file.WriteString(L"x"); }), -1); // for reading only
    EXPECT_THROW(file.WriteString(nullptr), CInvalidArgException*);
    file.Close();
    EXPECT_EQ(file.m_pStream, nullptr);
    EXPECT_EQ(Contents(path), "");
}
