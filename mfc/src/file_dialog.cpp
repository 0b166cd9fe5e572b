#include <afxdlgs.h>
#include <shlwapi.h>

IMPLEMENT_DYNAMIC(CCommonDialog, CDialog)
IMPLEMENT_DYNAMIC(CFileDialog, CCommonDialog)

CCommonDialog::CCommonDialog(CWnd* pParentWnd) : CDialog(0U, pParentWnd) {}

HWND CCommonDialog::OwnerWindow() const
{
    CWnd* const parent = m_pParentWnd != nullptr ? m_pParentWnd : AfxGetMainWnd();
    const HWND window = parent->GetSafeHwnd();
    return window != nullptr ? ::GetAncestor(window, GA_ROOT) : nullptr;
}

CFileDialog::CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt, LPCTSTR lpszFileName, DWORD dwFlags,
                         LPCTSTR lpszFilter, CWnd* pParentWnd, DWORD, BOOL)
    : CCommonDialog(pParentWnd), m_ofn{}, m_bOpenFileDialog(bOpenFileDialog), m_strFilter(lpszFilter),
      m_strDefExt(lpszDefExt), m_szFileName{}
{
    if (lpszFileName != nullptr)
        ::lstrcpyn(m_szFileName, lpszFileName, MAX_PATH);
    // The string's own end makes the second of the two characters that end the list.
    m_strFilter.Replace(L'|', L'\0');

    m_ofn.lStructSize = sizeof(m_ofn);
    m_ofn.lpstrFile = m_szFileName;
    m_ofn.nMaxFile = MAX_PATH;
    m_ofn.lpstrDefExt = lpszDefExt != nullptr ? m_strDefExt.GetString() : nullptr;
    m_ofn.lpstrFilter = m_strFilter.IsEmpty() ? nullptr : m_strFilter.GetString();
    m_ofn.Flags = dwFlags | OFN_EXPLORER;
}

INT_PTR CFileDialog::DoModal()
{
    m_ofn.hwndOwner = OwnerWindow();
    const HWND focus = ::GetFocus();
    const BOOL chosen = m_bOpenFileDialog ? ::GetOpenFileName(&m_ofn) : ::GetSaveFileName(&m_ofn);
    if (::IsWindow(focus))
        ::SetFocus(focus);
    return chosen ? IDOK : IDCANCEL;
}

CString CFileDialog::GetPathName() const
{
    return m_ofn.lpstrFile;
}

CString CFileDialog::GetFileName() const
{
    return ::PathFindFileName(m_ofn.lpstrFile);
}

CString CFileDialog::GetFileExt() const
{
    const LPCTSTR extension = ::PathFindExtension(m_ofn.lpstrFile);
    return *extension == L'.' ? extension + 1 : extension;
}

CString CFileDialog::GetFileTitle() const
{
    CString title = GetFileName();
    ::PathRemoveExtension(title.GetBuffer());
    title.ReleaseBuffer();
    return title;
}

BOOL CFileDialog::GetReadOnlyPref() const
{
    return (m_ofn.Flags & OFN_READONLY) != 0;
}
