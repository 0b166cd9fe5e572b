// Dialogs and the exchange of their data.
#pragma once

class AFX_SUBSET_API CDialog : public CWnd
{
    DECLARE_DYNAMIC(CDialog)

public:
    CDialog();
    explicit CDialog(LPCTSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    virtual ~CDialog();

    virtual BOOL Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    BOOL CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr,
                        void* lpDialogInit = nullptr);
    BOOL CreateIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd = nullptr);
    BOOL InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr,
                           void* lpDialogInit = nullptr);
    BOOL InitModalIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd = nullptr);

    // -1 when the dialog cannot be created, IDABORT for other failures, else what EndDialog was given.
    virtual INT_PTR DoModal();
    void EndDialog(int nResult);

    void MapDialogRect(LPRECT lpRect) const;
    void NextDlgCtrl() const;
    void PrevDlgCtrl() const;
    void GotoDlgCtrl(CWnd* pWndCtrl);
    void SetDefID(UINT nID);
    DWORD GetDefID() const;
    void SetHelpID(UINT nIDR);

    virtual BOOL PreTranslateMessage(MSG* pMsg) override;
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;
    // TRUE lets the system give the first control the focus.
    virtual BOOL OnInitDialog();
    virtual void OnSetFont(CFont* pFont);

protected:
    virtual void OnOK();
    virtual void OnCancel();
    virtual void PreInitDialog();
    virtual BOOL CheckAutoCenter();
    afx_msg LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT HandleSetFont(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    UINT m_nIDHelp = 0;
    LPCTSTR m_lpszTemplateName = nullptr;
    HGLOBAL m_hDialogTemplate = nullptr;
    LPCDLGTEMPLATE m_lpDialogTemplate = nullptr;
    CWnd* m_pParentWnd = nullptr;

private:
    BOOL CreateDlgIndirect(LPCDLGTEMPLATE pTemplate, CWnd* pParentWnd, HINSTANCE hInst);
    INT_PTR RunModal(LPCDLGTEMPLATE pTemplate, HINSTANCE hInst);
    HWND PreModal();
    void PostModal(HWND hWndOwner);

    // While the dialog is being created: where it comes from.
    LPCDLGTEMPLATE m_pCreatedFrom = nullptr;
    // While the dialog is modal: the windows that it has disabled.
    HWND m_hWndTop = nullptr;
    BOOL m_bOwnerDisabled = FALSE;
};
