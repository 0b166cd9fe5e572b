// The web browser control as a player in a dialog, and as a view that keeps keys from its page.
#pragma once

#include "vgui/export.h"

#include <afxdhtml.h>
#include <afxhtml.h>

// Whether the system has the HTML engine, without which the browser control takes addresses but shows
// nothing.
VGUI_API bool VGHasHtmlEngine();

// A browser that plays films and shows pages in a dialog. It is a member of the dialog: the object outlives
// its window, which Create makes, or which is a control of the dialog that the object subclasses (by
// SubclassDlgItem or DDX_Control); the browser covers it either way. Where the browser cannot be created,
// Create fails, and a subclassed control stays as it is and everything below does nothing.
//
// What the browser refuses (a file that is not there, a step back from the first page) does nothing; the
// events of CHtmlView tell of it. Pages need the HTML engine, films its plug-in.
class VGUI_API CMediaCtrl : public CHtmlView
{
    DECLARE_DYNCREATE(CMediaCtrl)

public:
    CMediaCtrl();
    ~CMediaCtrl() override;

    // Shows an address or the full path of a file. flags: BrowserNavConstants. Texts and data may be null and
    // are copied; postLen counts bytes. A null address does nothing.
    void Navigate(LPCWSTR url, DWORD flags = 0, LPCWSTR target = nullptr, LPCWSTR headers = nullptr,
                  LPVOID postData = nullptr, DWORD postLen = 0);
    // The same for a place of the shell, which stays the caller's, and for addresses that the browser
    // completes as if they were typed.
    void Navigate2(LPITEMIDLIST idList, DWORD flags = 0, LPCWSTR target = nullptr);
    void Navigate2(LPCWSTR url, DWORD flags, CByteArray& postData, LPCWSTR target = nullptr,
                   LPCWSTR headers = nullptr);
    void Navigate2(LPCWSTR url, DWORD flags = 0, LPCWSTR target = nullptr, LPCWSTR headers = nullptr,
                   LPVOID postData = nullptr, DWORD postLen = 0);

    // Plays what is shown from its beginning; 0 stops what moves or sounds and whatever is still being
    // loaded.
    void Play(int play);

    // The browser's full-screen property, 0 or not. It only marks the state: the dialog places this window,
    // and the browser follows it.
    BOOL GetFullScreen();
    // Sets that property.
    void SetFullScreen(int fullScreen);

protected:
    // Makes the window, which exists, ready for a browser, and puts one in it unless Create is about to.
    // FALSE when there is none.
    BOOL InitComent();
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    void PreSubclassWindow() override;
    // The object is its owner's.
    void PostNcDestroy() override;
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg int OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message);
    DECLARE_MESSAGE_MAP()

private:
    [[nodiscard]] bool HasBrowser() const;

    bool m_creating = false; // a window of its own is on its way, not a subclassed one
};

// The event sinks of the page that a browser shows now, one page after the other. What they are for is in the
// DHTML event map of the derived class.
class VGUI_API CDHtmlSpecEventSink : public CDHtmlEventSink
{
public:
    CDHtmlSpecEventSink();
    ~CDHtmlSpecEventSink() override;

    // Connects the sinks to this document and to the elements and controls in it that the map names, in place
    // of the former one. Null only ends the former one.
    void SetDocument(LPDISPATCH document);
    // The document that the sinks are connected to; not counted for the caller, null for none.
    LPDISPATCH GetSinkDocument() const { return m_document; }

private:
    LPDISPATCH m_document = nullptr; // counted
};

// A browser view for a page that is part of a program: its keys for help, printing, new windows, favourites
// and the history do nothing, function keys and Escape are the program's, and there is no browser menu under
// the right mouse button. Deletes itself with its window, as views do.
//
// Hosts any page. It handles none of the page's events itself: a derived class lists those it wants in a
// DHTML event map, and a class that overrides OnNavigateComplete2 or OnDocumentComplete calls the base class.
class VGUI_API CMediaView : public CHtmlView, public CDHtmlSpecEventSink
{
    DECLARE_DYNCREATE(CMediaView)

public:
    ~CMediaView() override;

    // Keeps keys and right clicks from the page; see the class. F1 to F12, VK_HELP and Escape go to the
    // parent of the view's parent, as a message of that window's own; without such a window to nobody.
    BOOL PreTranslateMessage(MSG* pMsg) override;
    // Connects the sinks, also when a frame of the page is complete: it may have brought new elements.
    void OnDocumentComplete(LPCTSTR lpszURL) override;
    // Disconnects the sinks when another document has taken the place of theirs.
    void OnNavigateComplete2(LPCTSTR strURL) override;

protected:
    CMediaView();
    // The view's own background must not show through while the browser paints.
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()
};
