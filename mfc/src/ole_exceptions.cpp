// OLE's initialisation and its exceptions.
#include <afxdisp.h>

#include "ole_init.h"

IMPLEMENT_DYNAMIC(COleException, CException)
IMPLEMENT_DYNAMIC(COleDispatchException, CException)

namespace
{

thread_local bool oleInitialized = false;

BOOL CopyMessage(const CString& message, LPTSTR buffer, UINT size)
{
    if (buffer == nullptr || size == 0)
        return FALSE;
    ::lstrcpyn(buffer, message, static_cast<int>(size));
    return !message.IsEmpty();
}

} // namespace

BOOL AFXAPI AfxOleInit()
{
    if (!oleInitialized)
        oleInitialized = SUCCEEDED(::OleInitialize(nullptr));
    return oleInitialized;
}

void afx_subset::OleTerm()
{
    if (!oleInitialized)
        return;
    oleInitialized = false;
    ::OleUninitialize();
}

COleException::COleException() = default;

SCODE PASCAL COleException::Process(const CException* pAnyException)
{
    if (pAnyException->IsKindOf(RUNTIME_CLASS(COleException)))
        return static_cast<const COleException*>(pAnyException)->m_sc;
    if (pAnyException->IsKindOf(RUNTIME_CLASS(CMemoryException)))
        return E_OUTOFMEMORY;
    if (pAnyException->IsKindOf(RUNTIME_CLASS(CNotSupportedException)))
        return E_NOTIMPL;
    return E_UNEXPECTED;
}

BOOL COleException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    if (pnHelpContext != nullptr)
        *pnHelpContext = 0;
    LPTSTR text = nullptr;
    ::FormatMessage(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                        FORMAT_MESSAGE_IGNORE_INSERTS,
                    nullptr, static_cast<DWORD>(m_sc), 0, reinterpret_cast<LPTSTR>(&text), 0, nullptr);
    const CString message(text);
    ::LocalFree(text);
    return CopyMessage(message, lpszError, nMaxError);
}

COleDispatchException::COleDispatchException(LPCTSTR lpszDescription, UINT nHelpID, WORD wCode)
    : m_wCode(wCode), m_strDescription(lpszDescription), m_dwHelpContext(nHelpID)
{
}

BOOL COleDispatchException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    if (pnHelpContext != nullptr)
        *pnHelpContext = m_dwHelpContext;
    return CopyMessage(m_strDescription, lpszError, nMaxError);
}

void AFXAPI AfxThrowOleException(SCODE sc)
{
    auto* const e = new COleException;
    e->m_sc = sc;
    throw e;
}

void AFXAPI AfxThrowOleDispatchException(WORD wCode, LPCTSTR lpszDescription, UINT nHelpID)
{
    throw new COleDispatchException(lpszDescription, nHelpID, wCode);
}

void AFXAPI AfxThrowOleDispatchException(WORD wCode, UINT nDescriptionID, UINT nHelpID)
{
    CString description;
    if (!description.LoadString(nDescriptionID))
        TRACE(_T("AfxThrowOleDispatchException: there is no string %u.\n"), nDescriptionID);
    AfxThrowOleDispatchException(wCode, description,
                                 nHelpID == static_cast<UINT>(-1) ? nDescriptionID : nHelpID);
}
