// The web browser control in a view.
#pragma once

#include <afxdisp.h>
#include <afxdoc_.h>
#include <exdisp.h>
#include <exdispid.h>
#include <shtypes.h>

namespace afx_subset
{

// The browser's window. Keys are the view's to hand out: see CHtmlView::PreTranslateMessage.
class BrowserWnd : public CWnd
{
public:
    BOOL PreTranslateMessage(MSG*) override { return FALSE; }
    BOOL TranslateKey(MSG* pMsg) { return CWnd::PreTranslateMessage(pMsg); }
};

} // namespace afx_subset

// A view that is filled by a web browser control. It offers the control's members for navigation and for the
// state of the page, and passes its events to its On functions. It stands on CView itself, without the
// scrolling and the dialog template of a form. Left out are the members for Internet Explorer's own windows,
// commands, and OnShowContextMenu and its kin, by which a host takes part in the page's user interface.
//
// What the browser refuses does nothing; a property that it has not, or without a browser, is FALSE, 0, empty
// or null.
class AFX_SUBSET_API CHtmlView : public CView
{
    DECLARE_DYNCREATE(CHtmlView)

public:
    ~CHtmlView() override;
    // Creates the view's window and the browser in it, after enabling the containment of controls. Without a
    // class name the view has a class of its own. FALSE when the window or the browser cannot be created; the
    // window, and with it the object unless PostNcDestroy is overridden, is gone then.
    BOOL Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                CWnd* pParentWnd, UINT nID, CCreateContext* pContext = nullptr) override;

    // Null for none of the texts and of the data, which is copied. flags: BrowserNavConstants. An item list
    // stays the caller's. A null address does nothing.
    void Navigate(LPCTSTR URL, DWORD dwFlags = 0, LPCTSTR lpszTargetFrameName = nullptr,
                  LPCTSTR lpszHeaders = nullptr, LPVOID lpvPostData = nullptr, DWORD dwPostDataLen = 0);
    void Navigate2(LPITEMIDLIST pIDL, DWORD dwFlags = 0, LPCTSTR lpszTargetFrameName = nullptr);
    void Navigate2(LPCTSTR lpszURL, DWORD dwFlags = 0, LPCTSTR lpszTargetFrameName = nullptr,
                   LPCTSTR lpszHeaders = nullptr, LPVOID lpvPostData = nullptr, DWORD dwPostDataLen = 0);
    void Navigate2(LPCTSTR lpszURL, DWORD dwFlags, CByteArray& baPostedData,
                   LPCTSTR lpszTargetFrameName = nullptr, LPCTSTR lpszHeader = nullptr);
    void GoBack();
    void GoForward();
    void GoHome();
    void Refresh();
    // Also ends what moves or sounds on the page.
    void Stop();

    CString GetLocationName() const;
    CString GetLocationURL() const;
    // The caller releases the document; null while there is none.
    LPDISPATCH GetHtmlDocument() const;
    BOOL GetBusy() const;
    READYSTATE GetReadyState() const;
    BOOL GetFullScreen() const;
    void SetFullScreen(BOOL bNewValue);
    BOOL GetSilent() const;
    void SetSilent(BOOL bNewValue);

    // Events, of the page and of its frames alike. *pbCancel and *Cancel are FALSE at first.
    virtual void OnBeforeNavigate2(LPCTSTR lpszURL, DWORD nFlags, LPCTSTR lpszTargetFrameName,
                                   CByteArray& baPostedData, LPCTSTR lpszHeaders, BOOL* pbCancel);
    virtual void OnNavigateComplete2(LPCTSTR strURL);
    virtual void OnDocumentComplete(LPCTSTR lpszURL);
    virtual void OnNavigateError(LPCTSTR lpszURL, LPCTSTR lpszFrame, DWORD dwError, BOOL* pbCancel);
    virtual void OnNewWindow2(LPDISPATCH* ppDisp, BOOL* Cancel);
    virtual void OnDownloadBegin();
    virtual void OnDownloadComplete();
    virtual void OnProgressChange(long nProgress, long nProgressMax);
    virtual void OnCommandStateChange(long nCommand, BOOL bEnable);
    virtual void OnPropertyChange(LPCTSTR lpszProperty);
    virtual void OnStatusTextChange(LPCTSTR lpszText);
    virtual void OnTitleChange(LPCTSTR lpszText);
    virtual void OnFullScreen(BOOL bFullScreen);
    virtual void OnTheaterMode(BOOL bTheaterMode);
    virtual void OnVisible(BOOL bVisible);
    virtual void OnToolBar(BOOL bToolBar);
    virtual void OnMenuBar(BOOL bMenuBar);
    virtual void OnStatusBar(BOOL bStatusBar);
    virtual void OnQuit();

    // Offers keys to the browser, whichever of its windows they are for.
    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    CHtmlView();
    void OnDraw(CDC* pDC) override;
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnPaint();
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()
    DECLARE_EVENTSINK_MAP()

    afx_subset::BrowserWnd m_wndBrowser;
    IWebBrowser2* m_pBrowserApp = nullptr; // counted; null for a browser that is called by IDispatch only

private:
    // The events as they come in.
    void BeforeNavigate2(LPDISPATCH pDisp, VARIANT* URL, VARIANT* Flags, VARIANT* TargetFrameName,
                         VARIANT* PostData, VARIANT* Headers, VARIANT_BOOL* Cancel);
    void NavigateComplete2(LPDISPATCH pDisp, VARIANT* URL);
    void DocumentComplete(LPDISPATCH pDisp, VARIANT* URL);
    void NavigateError(LPDISPATCH pDisp, VARIANT* URL, VARIANT* Frame, VARIANT* StatusCode,
                       VARIANT_BOOL* Cancel);
    void NewWindow2(LPDISPATCH* ppDisp, VARIANT_BOOL* Cancel);
};
