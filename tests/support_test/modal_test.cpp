#include "tests/support/modal.h"

#include "tests/support/dialog_template.h"
#include "tests/support/input.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"

#include <gtest/gtest-spi.h>

namespace
{

using support::HostWnd;

enum Command : UINT { kFirst = 101, kSecond, kThird, kNested };

class ModalTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_host.Open()); }

    HostWnd m_host;
};

class ModalMenuTest : public ModalTest
{
protected:
    void SetUp() override
    {
        ModalTest::SetUp();
        const HMENU submenu = ::CreatePopupMenu();
        ::AppendMenu(submenu, MF_STRING, kThird, L"third");
        ::AppendMenu(submenu, MF_STRING, kNested, L"nested");
        m_menu = ::CreatePopupMenu();
        ::AppendMenu(m_menu, MF_STRING, kFirst, L"first");
        ::AppendMenu(m_menu, MF_SEPARATOR, 0, nullptr);
        ::AppendMenu(m_menu, MF_STRING | MF_CHECKED, kSecond, L"second");
        ::AppendMenu(m_menu, MF_POPUP, reinterpret_cast<UINT_PTR>(submenu), L"more");
    }
    void TearDown() override { ::DestroyMenu(m_menu); }

    UINT Track() const
    {
        return static_cast<UINT>(
            ::TrackPopupMenu(m_menu, TPM_RETURNCMD | TPM_NONOTIFY, 100, 100, 0, m_host.m_hWnd, nullptr));
    }

    HMENU m_menu = nullptr;
};

INT_PTR CALLBACK CloseOnButton(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED)
        ::EndDialog(dialog, LOWORD(wParam));
    return message == WM_INITDIALOG || message == WM_COMMAND;
}

// Keeps itself open, whatever it is told.
INT_PTR CALLBACK StayOpen(HWND, UINT message, WPARAM, LPARAM)
{
    return message == WM_INITDIALOG || message == WM_COMMAND || message == WM_CLOSE;
}

TEST_F(ModalTest, MessageBoxIsReadAndAnswered)
{
    const auto answer = support::AnswerMessageBox(IDNO);
    EXPECT_EQ(
        ::MessageBox(m_host.m_hWnd, L"问题?", L"标题", MB_YESNOCANCEL | MB_ICONQUESTION | MB_DEFBUTTON2),
        IDNO);
    EXPECT_TRUE(answer.Shown());
    EXPECT_EQ(answer.Caption(), L"标题");
    EXPECT_EQ(answer.Text(), L"问题?");
    EXPECT_EQ(answer.Buttons(), (std::vector<int>{IDYES, IDNO, IDCANCEL}));
    EXPECT_EQ(answer.FocusedButton(), IDNO);
}

TEST_F(ModalTest, AnswersGoToNestedDialogsInOrder)
{
    support::DialogTemplate dialog(L"outer", 120, 60);
    dialog.Static(0xFFFF, L"line", 5, 5, 60, 10).Edit(7, 5, 20, 60, 14).Button(IDOK, L"OK", 5, 40, 40, 14);
    CString typed;
    const auto outer = support::WhenModal([&](HWND modal) {
        support::Type(L"in");
        ::GetDlgItemText(modal, 7, typed.GetBuffer(16), 16);
        typed.ReleaseBuffer();
        EXPECT_EQ(::MessageBox(modal, L"inner text", L"inner", MB_OK), IDOK);
        support::Click(::GetDlgItem(modal, IDOK));
    });
    const auto inner = support::AnswerMessageBox(IDOK);
    EXPECT_EQ(::DialogBoxIndirect(nullptr, dialog, m_host.m_hWnd, CloseOnButton), IDOK);
    EXPECT_EQ(typed, L"in");
    EXPECT_EQ(outer.Text(), L"line");
    EXPECT_EQ(inner.Text(), L"inner text");
}

TEST_F(ModalTest, FrameworkDialogIsBuiltFromATemplate)
{
    support::DialogTemplate dialogTemplate(L"framework", 120, 60);
    dialogTemplate.Font(12, L"Arial", FW_BOLD)
        .Edit(7, 5, 20, 60, 14)
        .HiddenItem(L"Button", L"no", 8, 0, 0, 9, 9, 0);
    CDialog dialog;
    ASSERT_TRUE(dialog.InitModalIndirect(dialogTemplate, &m_host));
    const auto answer = support::WhenModal([&](HWND modal) {
        EXPECT_EQ(dialog.m_hWnd, modal);
        EXPECT_FALSE(m_host.IsWindowEnabled());
        EXPECT_EQ(::GetFocus(), ::GetDlgItem(modal, 7));
        EXPECT_FALSE(::IsWindowVisible(::GetDlgItem(modal, 8)));
        LOGFONT font{};
        dialog.GetFont()->GetLogFont(&font);
        EXPECT_STREQ(font.lfFaceName, L"Arial");
        EXPECT_EQ(font.lfWeight, FW_BOLD);
        support::Key(VK_ESCAPE);
    });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(answer.Caption(), L"framework");
    EXPECT_TRUE(m_host.IsWindowEnabled());
}

TEST_F(ModalTest, AnswerThatIsNotNeededFailsUnlessWithdrawn)
{
    EXPECT_NONFATAL_FAILURE({ const auto answer = support::AnswerMessageBox(IDOK); },
                            "no modal window came up");
    auto withdrawn = support::AnswerMessageBox(IDOK);
    withdrawn.Withdraw();
    EXPECT_FALSE(withdrawn.Shown());
}

TEST_F(ModalTest, DialogThatStaysUpIsClosedByForce)
{
    constexpr DWORD kSoon = 100;
    support::DialogTemplate dialog(L"stays", 100, 40);
    const auto answer = support::WhenModal([](HWND) {}, kSoon);
    INT_PTR result = 0;
    EXPECT_NONFATAL_FAILURE(result = ::DialogBoxIndirect(nullptr, dialog, m_host.m_hWnd, StayOpen),
                            "did not close");
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_TRUE(::IsWindowEnabled(m_host.m_hWnd));
}

TEST_F(ModalMenuTest, MenuIsReadAndChosenFromByKeyboardAndMouse)
{
    {
        const auto answer = support::ChooseMenuItem(kSecond);
        EXPECT_EQ(Track(), kSecond);
        ASSERT_EQ(answer.Items().size(), 4U);
        EXPECT_EQ(answer.Items()[0].text, L"first");
        EXPECT_TRUE(answer.Items()[1].type & MFT_SEPARATOR);
        EXPECT_TRUE(answer.Items()[2].state & MFS_CHECKED);
    }
    {
        const auto answer = support::ChooseMenuItem(kNested);
        EXPECT_EQ(Track(), kNested);
    }
    {
        const auto answer = support::ClickMenuItem(kFirst);
        EXPECT_EQ(Track(), kFirst);
    }
    const auto answer = support::CancelMenu();
    EXPECT_EQ(Track(), 0U);
}

} // namespace
