// The common dialogs: the one for files. Folders, multiple selection, templates and the parts that Windows
// Vista added are left out.
#pragma once

#include <afxwin.h>
#include <commdlg.h>

class AFX_SUBSET_API CCommonDialog : public CDialog
{
    DECLARE_DYNAMIC(CCommonDialog)

public:
    // Null stands for the application's main window.
    explicit CCommonDialog(CWnd* pParentWnd);

protected:
    // The window that is disabled while the dialog is up: the parent's top-level window; null without one.
    HWND OwnerWindow() const;
};

// The system's dialog for opening or saving a file. The object has no window of its own: the dialog is the
// system's.
class AFX_SUBSET_API CFileDialog : public CCommonDialog
{
    DECLARE_DYNAMIC(CFileDialog)

public:
    // What the dialog starts from and, afterwards, what the user has chosen. May be changed between
    // construction and DoModal; what it points to then stays the caller's. Flags are added with a bitwise or.
    OPENFILENAME m_ofn;

    // lpszDefExt: added to a name without extension. lpszFilter: pairs of description and patterns, each
    // followed by '|', with another '|' at the end. dwSize and bVistaStyle are there for compatibility.
    explicit CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt = nullptr, LPCTSTR lpszFileName = nullptr,
                         DWORD dwFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCTSTR lpszFilter = nullptr,
                         CWnd* pParentWnd = nullptr, DWORD dwSize = 0, BOOL bVistaStyle = TRUE);

    // IDOK or IDCANCEL; for IDCANCEL, CommDlgExtendedError tells whether there was an error.
    INT_PTR DoModal() override;

    const OPENFILENAME& GetOFN() const { return m_ofn; }
    OPENFILENAME& GetOFN() { return m_ofn; }

    // Parts of the chosen name: "C:\FILES\TEXT.DAT", "TEXT.DAT", "DAT" and "TEXT". Empty when there is none.
    CString GetPathName() const;
    CString GetFileName() const;
    CString GetFileExt() const;
    CString GetFileTitle() const;
    BOOL GetReadOnlyPref() const;

private:
    BOOL m_bOpenFileDialog;
    CString m_strFilter; // its parts end with null characters
    CString m_strDefExt;
    TCHAR m_szFileName[MAX_PATH];
};
