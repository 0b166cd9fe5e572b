// Containment of ActiveX controls: the windows that hold them and the sites that they live in.
#pragma once

#include <afxdisp.h>

#include <memory>
#include <vector>

namespace afx_subset
{
class SiteObject;
}

// The controls of one window, in the order of their creation. The window's object owns it.
class AFX_SUBSET_API COleControlContainer : public CCmdTarget
{
public:
    explicit COleControlContainer(CWnd* pWnd);
    // Destroys the controls.
    ~COleControlContainer() override;

    CWnd* m_pWnd;
    COleControlSite* m_pSiteUIActive = nullptr; // the control that has the user interface

    // Creates a site and a control in it for pWndCtrl, as CWnd::CreateControl.
    BOOL CreateControl(CWnd* pWndCtrl, REFCLSID clsid, LPCTSTR lpszWindowName, DWORD dwStyle,
                       const POINT* ppt, const SIZE* psize, UINT nID, CFile* pPersist, BOOL bStorage,
                       BSTR bstrLicKey);
    // Null when no control has the id.
    COleControlSite* FindItem(UINT nID) const;
    // Ends the site and its control.
    void Remove(COleControlSite* pSite);
    // Gives the user interface to a site, null for none, and takes it from the one that has it.
    void OnUIActivate(COleControlSite* pSite);
    // Takes the controls' windows away, whose parent is about to be destroyed; the controls stay.
    void DeactivateAll();
    // Gives a key to the control that has it as its mnemonic; TRUE when there is one.
    BOOL OnMnemonic(MSG* pMsg);

private:
    std::vector<std::unique_ptr<COleControlSite>> m_sites;
};

// The place that one control lives in. It is the control's client site, in-place site and control site, gives
// it its surroundings' properties, and passes its events to event sink maps.
class AFX_SUBSET_API COleControlSite : public CCmdTarget
{
public:
    explicit COleControlSite(COleControlContainer* pCtrlCont);
    // Destroys the control.
    ~COleControlSite() override;

    // Creates the control and activates it in place; see CWnd::CreateControl. On failure nothing is left.
    virtual HRESULT CreateControl(CWnd* pWndCtrl, REFCLSID clsid, LPCTSTR lpszWindowName, DWORD dwStyle,
                                  const POINT* ppt, const SIZE* psize, UINT nID, CFile* pPersist = nullptr,
                                  BOOL bStorage = FALSE, BSTR bstrLicKey = nullptr);
    // Ends the control, and this site with it: no pointer to the site is valid afterwards. FALSE, with
    // nothing done, when there is no control.
    virtual BOOL DestroyControl();
    virtual HRESULT DoVerb(LONG nVerb, LPMSG lpMsg = nullptr);
    virtual int GetDlgCtrlID() const;
    // The interface of the events that the control sends; FALSE when it names none.
    virtual BOOL GetEventIID(IID* piid);
    virtual void AFX_CDECL InvokeHelper(DISPID dwDispID, WORD wFlags, VARTYPE vtRet, void* pvRet,
                                        const BYTE* pbParamInfo, ...);
    virtual void InvokeHelperV(DISPID dwDispID, WORD wFlags, VARTYPE vtRet, void* pvRet,
                               const BYTE* pbParamInfo, va_list argList);
    virtual void GetProperty(DISPID dwDispID, VARTYPE vtProp, void* pvProp) const;
    virtual void SetPropertyV(DISPID dwDispID, VARTYPE vtProp, va_list argList);
    // The same without exceptions; FALSE when the control refuses.
    virtual BOOL AFX_CDECL SafeSetProperty(DISPID dwDispID, VARTYPE vtProp, ...);
    // Client coordinates of the parent, in pixels.
    virtual void MoveWindow(int x, int y, int nWidth, int nHeight);
    virtual BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags);
    virtual BOOL ShowWindow(int nCmdShow);
    // Sets the control's Caption or Text property.
    virtual void SetWindowText(LPCTSTR lpszString);
    // The control's Caption or Text property, empty when it has neither.
    virtual void GetWindowText(CString& str) const;
    virtual BOOL EnableWindow(BOOL bEnable);
    // Offers a key message to the control while it is active; TRUE when it was for it.
    BOOL TranslateAccelerator(MSG* pMsg);

    COleControlContainer* m_pCtrlCont;
    HWND m_hWnd = nullptr;      // the control's window while it is active in place
    CWnd* m_pWndCtrl = nullptr; // the object that stands for the control
    UINT m_nID = 0;
    CRect m_rect; // client coordinates of the parent
    DWORD m_dwStyle = 0;
    DWORD m_dwMiscStatus = 0; // OLEMISC_
    IID m_iidEvents{};
    DWORD m_dwEventSink = 0;
    CONTROLINFO m_ctlInfo{};
    LPOLEOBJECT m_pObject = nullptr;
    LPOLEINPLACEOBJECT m_pInPlaceObject = nullptr;
    LPOLEINPLACEACTIVEOBJECT m_pActiveObject = nullptr;

protected:
    // Reads m_ctlInfo anew.
    void GetControlInfo();

private:
    HRESULT ActivateAtFirst();
    HRESULT CreateObject(REFCLSID clsid, BSTR bstrLicKey);
    HRESULT LoadState(CFile* pPersist, BOOL bStorage);
    void ApplyStyle();
    void SetExtent();
    void TakeExtent();
    void ConnectEvents();
    void DisconnectEvents();
    BOOL OnMnemonic(MSG* pMsg);
    void AttachWindow();
    void DetachWindow();
    void Deactivate();
    // Closes the control and lets go of it and of its window object.
    void Close();
    HRESULT OnEvent(DISPID dispid, const DISPPARAMS& params);

    COleDispatchDriver m_dispDriver;
    LPOLECONTROL m_pControl = nullptr;
    afx_subset::SiteObject* const m_pSiteObject; // what the control holds; counted

    friend class COleControlContainer;
    friend class afx_subset::SiteObject;
};
