// Exchange and validation of a dialog's data.
#pragma once

class CListBox;
class CComboBox;

class AFX_SUBSET_API CDataExchange
{
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate);

    BOOL m_bSaveAndValidate;
    CWnd* m_pDlgWnd;

    // The control's handle; throws CNotSupportedException when there is no such control.
    HWND PrepareCtrl(int nIDC);
    HWND PrepareEditCtrl(int nIDC);
    // Restores the focus to the control prepared last and throws CUserException.
    void Fail();

    int m_idLastControl = 0;
    BOOL m_bEditLastControl = FALSE;
};

AFX_SUBSET_API void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);
AFX_SUBSET_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
AFX_SUBSET_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value);
AFX_SUBSET_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, short& value);
AFX_SUBSET_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value);
AFX_SUBSET_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value);
AFX_SUBSET_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, long& value);
AFX_SUBSET_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value);
AFX_SUBSET_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, float& value);
AFX_SUBSET_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, double& value);
AFX_SUBSET_API void AFXAPI DDX_Check(CDataExchange* pDX, int nIDC, int& value);
AFX_SUBSET_API void AFXAPI DDX_Radio(CDataExchange* pDX, int nIDC, int& value);
AFX_SUBSET_API void AFXAPI DDX_LBString(CDataExchange* pDX, int nIDC, CString& value);
AFX_SUBSET_API void AFXAPI DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index);
AFX_SUBSET_API void AFXAPI DDX_CBString(CDataExchange* pDX, int nIDC, CString& value);
AFX_SUBSET_API void AFXAPI DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);
AFX_SUBSET_API void AFXAPI DDV_MaxChars(CDataExchange* pDX, CString const& value, int nChars);
AFX_SUBSET_API void AFXAPI DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal);
AFX_SUBSET_API void AFXAPI DDV_MinMaxDouble(CDataExchange* pDX, double const& value, double minVal,
                                            double maxVal);
