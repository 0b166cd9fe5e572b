// The system's file dialogs: what they start from and what they answer.
#include "tests/support/modal.h"

#include <afxdlgs.h>
#include <gtest/gtest.h>

using namespace support;

namespace
{

// No census: Wine's file dialog keeps an accelerator table each time.
class FileDialogTest : public testing::Test
{
protected:
    void SetUp() override
    {
        TCHAR folder[MAX_PATH];
        ::GetTempPath(MAX_PATH, folder);
        m_path = CString(folder) + L"file dialog.test.dat";
        CFile(m_path, CFile::modeCreate | CFile::modeWrite).Close();
    }
    void TearDown() override { ::DeleteFile(m_path); }

    CString m_path;
};

} // namespace

TEST_F(FileDialogTest, OpenGivesTheNameAndItsParts)
{
    CFileDialog dialog(TRUE, nullptr, nullptr, OFN_FILEMUSTEXIST | OFN_HIDEREADONLY,
                       L"Data (*.dat)|*.dat|All files|*.*||");
    // Two pairs of strings and the end of the list.
    EXPECT_EQ(CString(dialog.m_ofn.lpstrFilter), L"Data (*.dat)");
    EXPECT_EQ(0, memcmp(dialog.m_ofn.lpstrFilter, L"Data (*.dat)\0*.dat\0All files\0*.*\0\0",
                        sizeof(L"Data (*.dat)\0*.dat\0All files\0*.*\0")));
    EXPECT_TRUE(dialog.GetPathName().IsEmpty());
    EXPECT_TRUE(dialog.GetFileTitle().IsEmpty());

    const auto answer = AnswerFileDialog(m_path.GetString());
    ASSERT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetPathName().CompareNoCase(m_path), 0);
    EXPECT_EQ(dialog.GetFileName(), L"file dialog.test.dat");
    EXPECT_EQ(dialog.GetFileTitle(), L"file dialog.test");
    EXPECT_EQ(dialog.GetFileExt(), L"dat");
}

TEST_F(FileDialogTest, SaveAddsTheDefaultExtension)
{
    CFileDialog dialog(FALSE, L"dat", L"start.dat");
    std::wstring before;
    const CString name = m_path.Left(m_path.ReverseFind(L'\\') + 1) + L"no such file";
    const auto answer = WhenModal([&](HWND window) {
        before = WindowText(FileNameField(window));
        ::SetWindowText(FileNameField(window), name);
        PostButton(window, IDOK);
    });
    ASSERT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(before, L"start.dat");
    EXPECT_EQ(dialog.GetFileName(), L"no such file.dat");
}

TEST_F(FileDialogTest, CancelLeavesNoName)
{
    CFileDialog dialog(TRUE);
    const auto answer = AnswerMessageBox(IDCANCEL);
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(::CommDlgExtendedError(), 0u);
    EXPECT_TRUE(dialog.GetPathName().IsEmpty());
}
