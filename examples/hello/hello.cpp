// The smallest host of the library: a program that consists of one dialog. With /selftest on its command line
// it opens the dialog, closes it again, and its exit code says whether that went well.
#include <vgui/vgui.h>

namespace
{

// As in hello.rc.
constexpr UINT IDD_HELLO = 100;
constexpr UINT IDC_NAME = 1000;

// The template holds standard controls only; the base class paints the frame and puts the library's controls
// in the place of the standard ones.
class HelloDlg : public VGuiDlg
{
public:
    explicit HelloDlg(bool selfTest) : VGuiDlg(IDD_HELLO), m_selfTest(selfTest) {}

protected:
    BOOL OnInitDialog() override
    {
        VGuiDlg::OnInitDialog();
        AddToolTips(IDC_NAME, _T("Who is to be greeted"));
        if (m_selfTest)
            PostMessage(WM_COMMAND, IDCANCEL);
        return TRUE;
    }
    void DoDataExchange(CDataExchange* pDX) override
    {
        VGuiDlg::DoDataExchange(pDX);
        DDX_Text(pDX, IDC_NAME, m_name);
    }
    void OnOK() override
    {
        UpdateData(TRUE);
        AfxMessageBox(_T("Hello, ") + m_name);
    }

private:
    bool m_selfTest;
    CString m_name;
};

class HelloApp : public CWinApp
{
public:
    BOOL InitInstance() override
    {
        CWinApp::InitInstance();
        HelloDlg dialog(_tcscmp(m_lpCmdLine, _T("/selftest")) == 0);
        m_pMainWnd = &dialog;
        m_shown = dialog.DoModal() == IDCANCEL;
        m_pMainWnd = nullptr;
        return FALSE; // the dialog was all: no message loop is needed
    }
    int ExitInstance() override
    {
        CWinApp::ExitInstance();
        return m_shown ? 0 : 1;
    }

private:
    bool m_shown = false;
};

HelloApp theApp;

} // namespace
