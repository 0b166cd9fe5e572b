// CDialog, modal loops, translation of messages and data exchange.
#include "tests/support/census.h"
#include "tests/support/dialog_template.h"
#include "tests/support/input.h"
#include "tests/support/modal.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"

#include <afxwin.h>

#include <functional>
#include <gtest/gtest.h>

namespace
{

constexpr UINT kEdit = 101;
constexpr UINT kFirstRadio = 110;

class DataDlg : public CDialog
{
public:
    CString name = _T("Ada");
    int age = 36;
    int choice = 1;
    std::function<void(DataDlg&)> onInit;
    std::function<BOOL(DataDlg&, MSG*)> preTranslate;
    using CDialog::OnOK;

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        CDialog::DoDataExchange(pDX);
        DDX_Text(pDX, kEdit, name);
        DDV_MaxChars(pDX, name, 5);
        DDX_Text(pDX, kEdit + 1, age);
        DDV_MinMaxInt(pDX, age, 1, 150);
        DDX_Radio(pDX, kFirstRadio, choice);
    }
    BOOL OnInitDialog() override
    {
        const BOOL result = CDialog::OnInitDialog();
        if (onInit)
            onInit(*this);
        return result;
    }
    BOOL PreTranslateMessage(MSG* message) override
    {
        if (preTranslate && preTranslate(*this, message))
            return TRUE;
        return CDialog::PreTranslateMessage(message);
    }
};

support::DialogTemplate Template()
{
    support::DialogTemplate result(L"数据", 160, 90);
    result.Edit(kEdit, 5, 5, 100, 12).Edit(kEdit + 1, 5, 20, 100, 12);
    for (UINT i = 0; i < 3; ++i)
        result.Button(kFirstRadio + i, L"r", 5, 35 + static_cast<int>(i) * 12, 40, 10,
                      BS_AUTORADIOBUTTON | (i == 0 ? WS_GROUP | WS_TABSTOP : 0));
    result.Button(IDOK, L"OK", 5, 74, 40, 14, BS_DEFPUSHBUTTON | WS_TABSTOP | WS_GROUP);
    result.Button(IDCANCEL, L"Cancel", 50, 74, 40, 14);
    return result;
}

class Dialog : public support::CensusTest
{
protected:
    void SetUp() override { ASSERT_TRUE(owner.Open()); }
    INT_PTR Run(DataDlg& dialog)
    {
        const support::DialogTemplate source = Template();
        dialog.InitModalIndirect(source, &owner);
        return dialog.DoModal();
    }
    support::HostWnd owner;
};

} // namespace

TEST_F(Dialog, ModalDialogDisablesItsOwnerAndGivesItBack)
{
    DataDlg dialog;
    BOOL ownerEnabled = TRUE;
    const auto answer = support::WhenModal([&](HWND hWnd) {
        ownerEnabled = owner.IsWindowEnabled();
        support::PostButton(hWnd, IDOK);
    });
    EXPECT_EQ(Run(dialog), IDOK);
    EXPECT_FALSE(ownerEnabled);
    EXPECT_TRUE(owner.IsWindowEnabled());
    EXPECT_EQ(::GetActiveWindow(), owner.m_hWnd);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(answer.Caption(), L"数据");
}

TEST_F(Dialog, KeysReachOkAndCancel)
{
    for (const auto& [key, result] : {std::pair<WORD, INT_PTR>{VK_RETURN, IDOK}, {VK_ESCAPE, IDCANCEL}}) {
        DataDlg dialog;
        const auto answer = support::WhenModal([key = key](HWND) { support::Key(key); });
        EXPECT_EQ(Run(dialog), result);
    }
}

TEST_F(Dialog, EndingItDuringInitialisationShowsNothing)
{
    DataDlg dialog;
    dialog.onInit = [](DataDlg& self) { self.EndDialog(42); };
    EXPECT_EQ(Run(dialog), 42);
    EXPECT_TRUE(owner.IsWindowEnabled());
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST_F(Dialog, MissingTemplateIsMinusOne)
{
    CDialog byId(4711u, &owner);
    EXPECT_EQ(byId.DoModal(), -1);
    EXPECT_TRUE(owner.IsWindowEnabled());
    CDialog modeless;
    EXPECT_FALSE(modeless.Create(4711u, &owner));
}

TEST_F(Dialog, DataGoesInAndOut)
{
    DataDlg dialog;
    const auto answer = support::WhenModal([&](HWND hWnd) {
        EXPECT_EQ(support::WindowText(::GetDlgItem(hWnd, kEdit)), L"Ada");
        EXPECT_EQ(support::WindowText(::GetDlgItem(hWnd, kEdit + 1)), L"36");
        EXPECT_TRUE(dialog.IsDlgButtonChecked(kFirstRadio + 1));
        dialog.SetDlgItemText(kEdit, _T("张三"));
        dialog.CheckRadioButton(kFirstRadio, kFirstRadio + 2, kFirstRadio + 2);
        support::PostButton(hWnd, IDOK);
    });
    EXPECT_EQ(Run(dialog), IDOK);
    EXPECT_EQ(dialog.name, _T("张三"));
    EXPECT_EQ(dialog.choice, 2);
    EXPECT_EQ(dialog.age, 36);
}

TEST_F(Dialog, InvalidDataKeepsTheDialogOpenWithTheFocusThere)
{
    DataDlg dialog;
    const support::DialogTemplate source = Template();
    ASSERT_TRUE(dialog.CreateIndirect(source, &owner));
    dialog.ShowWindow(SW_SHOW);
    for (const LPCTSTR wrong : {_T("abc"), _T(""), _T("0"), _T("151"), _T("99999999999")}) {
        dialog.SetDlgItemText(kEdit + 1, wrong);
        dialog.GetDlgItem(IDOK)->SetFocus();
        const auto answer = support::AnswerMessageBox(IDOK);
        EXPECT_FALSE(dialog.UpdateData(TRUE));
        EXPECT_TRUE(answer.Shown());
        EXPECT_EQ(::GetFocus(), ::GetDlgItem(dialog.m_hWnd, kEdit + 1));
    }
    dialog.SetDlgItemText(kEdit + 1, _T(" 7 "));
    EXPECT_TRUE(dialog.UpdateData(TRUE));
    EXPECT_EQ(dialog.age, 7);
    dialog.DestroyWindow();
}

TEST_F(Dialog, MessagesAreOfferedFromTheTargetUpwards)
{
    DataDlg dialog;
    const support::DialogTemplate source = Template();
    ASSERT_TRUE(dialog.CreateIndirect(source, &owner));
    dialog.ShowWindow(SW_SHOW);
    class KeyEdit : public CEdit
    {
    public:
        int seen = 0;
        bool swallow = false;
        BOOL PreTranslateMessage(MSG* message) override
        {
            if (message->message != WM_KEYDOWN)
                return CEdit::PreTranslateMessage(message);
            ++seen;
            return swallow;
        }
    } edit;
    ASSERT_TRUE(edit.SubclassDlgItem(kEdit, &dialog));
    int atDialog = 0;
    dialog.preTranslate = [&](DataDlg&, MSG* message) {
        atDialog += message->message == WM_KEYDOWN;
        return FALSE;
    };
    edit.SetFocus();
    support::Key('A');
    EXPECT_EQ(edit.seen, 1);
    EXPECT_EQ(atDialog, 1);
    edit.swallow = true;
    support::Key('A');
    EXPECT_EQ(edit.seen, 2);
    EXPECT_EQ(atDialog, 1);
    dialog.DestroyWindow();
}
