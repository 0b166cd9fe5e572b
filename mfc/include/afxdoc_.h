// Views. Part of afxhtml.h: of the document/view classes only what a browser view stands on is there, without
// documents, printing and drag and drop.
#pragma once

// The id of the first pane of a frame, and of the browser in its view.
#define AFX_IDW_PANE_FIRST 0xE900

// A child window that shows something. Deletes itself when its window is gone; a class whose objects are
// members of others overrides PostNcDestroy.
class AFX_SUBSET_API CView : public CWnd
{
    DECLARE_DYNAMIC(CView)

public:
    ~CView() override;
    // Called by who creates the view, once it stands; updates the view.
    virtual void OnInitialUpdate();

protected:
    CView();
    virtual void OnDraw(CDC* pDC) = 0;
    // What the view shows has changed: paints it anew.
    virtual void OnUpdate(CView* pSender, LPARAM lHint, CObject* pHint);
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    void PostNcDestroy() override;
    afx_msg void OnPaint();
    DECLARE_MESSAGE_MAP()
};
