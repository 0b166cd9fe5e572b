// A tab control with the shared look, and dialogs that are shown as its pages.
#pragma once

#include "vgui/dialogs/gui_dlg.h"
#include "vgui/export.h"

#include <afxcmn.h>
#include <array>
#include <memory>

// Values of VTabCtrl::SetDrawingStyle; others count as VGTabGradient.
inline constexpr int VGTabFlat = 0;     // tabs are filled with VGM.Tab.clrTo
inline constexpr int VGTabGradient = 1; // tabs run from VGM.Tab.clrFrom at the top to clrTo

// A tab control that paints itself: the tabs of all rows, the selected one as a part of the page below it,
// the one under the mouse with a stripe, captions too long for their tab with an ellipsis. For tabs along
// the top (no TCS_BOTTOM, TCS_VERTICAL or TCS_BUTTONS). Created or subclassed.
class VGUI_API VTabCtrl : public CTabCtrl
{
    DECLARE_DYNAMIC(VTabCtrl)

public:
    VTabCtrl() = default;

    // How the tabs are filled; repaints.
    void SetDrawingStyle(int Style);

protected:
    void PreSubclassWindow() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Paints the whole client area, on the screen or for WM_PRINTCLIENT.
    virtual void Draw(CDC& dc);
    // The tabs, the selection, the focus or the size have changed. Repaints.
    virtual void OnTabsChanged();
    // The frame around the page, in client coordinates.
    CRect GetBodyRect() const;

    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnMouseLeave();
    afx_msg LRESULT OnPrintClient(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    int m_nDrawingStyle = VGTabGradient; // a VGTab constant

private:
    // bodyTop: the upper edge of the page's frame.
    void DrawTab(CDC& dc, int item, bool selected, LONG bodyTop);
    void FillTab(CDC& dc, const CRect& tab, bool selected) const;
    void DrawCaption(CDC& dc, int item, const CRect& tab);
    [[nodiscard]] LONG DrawItemImage(CDC& dc, int image, const CRect& room) const;
    void SetHot(int item);

    int m_nHot = -1; // the tab under the mouse
};

// A dialog to be shown by a VTabDlgCtrl. Its template is a borderless child (WS_CHILD, not WS_VISIBLE).
// Enter and Escape act on the dialog that holds the tab control; the Tab key goes from the tab control
// through the page and on to the dialog's next control.
class VGUI_API VTabPage : public VGuiDlg
{
    DECLARE_DYNAMIC(VTabPage)

public:
    // nIDTemplate: a dialog template in the resource chain. The tab control that creates the page becomes its
    // parent, whatever pParent is.
    explicit VTabPage(UINT nIDTemplate, CWnd* pParent = nullptr);

    BOOL PreTranslateMessage(MSG* pMsg) override;

    // The page is about to be shown; its window exists. It may show another page instead.
    virtual void OnActivate() {}
    // The page is about to be left. 0 keeps it shown, and so does an attempt to show a page from here.
    virtual int OnDeactive() { return 1; }
    // The page's window is about to be destroyed by the tab control.
    virtual void OnDestroyP() {}

    // The dialog template the page was constructed with.
    [[nodiscard]] UINT GetTemplateId() const { return m_nTemplateId; }

protected:
    // Post IDOK and IDCANCEL to the dialog that holds the tab control; the page stays.
    void OnOK() override;
    void OnCancel() override;

    UINT m_nTemplateId; // of the dialog template
};

// What a VTabDlgCtrl keeps of a page.
struct VGUI_API PageStruct {
    PageStruct() = default;
    ~PageStruct();
    PageStruct(const PageStruct&) = delete;
    PageStruct& operator=(const PageStruct&) = delete;

    VTabPage* pPage = nullptr; // not owned
    CString strTitle;          // on its tab
    HBITMAP hBitmap = nullptr; // owned; null for none
    int bEnabled = 0;          // whether it has a tab
};

// Shows one of up to 20 pages at a time, chosen by its tabs. A disabled page has no tab.
//
// In out-driven mode the host switches the pages (as in a wizard): clicks on tabs have no effect, and a band
// with the active page's title and bitmap takes the place of the tabs. The keyboard gets to the page when the
// control has WS_TABSTOP.
//
// Pages are counted from 0 in the order in which they were added; functions that take a page do nothing for
// one that does not exist. The page objects are the host's and must outlive the control's window, which
// destroys their windows with itself; as members they are declared before the control. What a page does when
// it is told of something may close and free all of them.
class VGUI_API VTabDlgCtrl : public VTabCtrl
{
    DECLARE_DYNAMIC(VTabDlgCtrl)

public:
    static constexpr int MaxPages = 20; // the most that AddPage takes

    VTabDlgCtrl() = default;
    ~VTabDlgCtrl() override;

    BOOL PreTranslateMessage(MSG* pMsg) override;

    // Adds a page. bitmapId: a bitmap of the library's resources, 0 for none; createNow: creates the page's
    // window now and not when it is first shown. Null pages and the 21st one are refused.
    void AddPage(const wchar_t* title, VTabPage* page, int enabled, UINT bitmapId, int createNow);
    // The number of pages, disabled ones included.
    int GetPageNum() const { return m_nPageCount; }
    // The shown page, -1 for none.
    int GetActive() const { return m_nActive; }

    // Enables a page, shows it (unless the active page refuses to be left) and selects its tab.
    void SetActive(int page);
    void SetActive(const wchar_t* title); // the first page with exactly this title

    // Gives a page its tab (1) or takes it away (0). The active page gives way to *nextActive or, when that
    // is null or names no other enabled page, to the next enabled one after it, starting over at the first;
    // when no other page is enabled, no page is active afterwards.
    void EnablePage(int page, int enable, int* nextActive = nullptr);
    void EnablePage(const wchar_t* title, int enable, int* nextActive = nullptr);
    // Non-zero when the page has a tab; 0 when there is no such page.
    int IsPageEnabled(int page) const;

    // Called with the tab's index, not the page's, after a click on a tab. Null for none.
    void SetFunction(void (*callback)(int)) { m_pfnChanged = callback; }
    // Changes between tabs (0) and title band; the shown page takes its place below them. The tabs come back
    // with the active page's one selected.
    void SetOutDrivenMode(int outDriven);

    // The record of a page; an empty one when there is no such page. Valid until the control is destroyed.
    const PageStruct& GetInnerPageData(int page) const;

    // Creates a page's window, hidden, if it does not exist.
    void EnsureInitialized(int page);
    // Destroys and creates again the window of a page that has one. The active page is shown again.
    void ReInitPage(int page);
    // The same for all pages.
    void ReInitAllPages();

protected:
    // Shows a page in place of the active one; its window is created if need be. When that fails, no page is
    // active.
    void ActivePage(int page);
    // Hides the active page. 0 when it refuses, or has destroyed the control.
    int DeactivePage();
    // The page of a tab; GetPageNum() when there is no such tab.
    int MapTabItemToPage(int item) const;
    // The tab of an enabled page: the number of enabled pages before it.
    int MapPageToTabItem(int page) const;
    // The band of the out-driven mode, in client coordinates.
    CRect GetTitleRect() const;
    // Draws the band of the out-driven mode with the active page's bitmap and title. rect is GetTitleRect().
    virtual void DrawTitle(CDC* pDC, const CRect& rect);

    void PreSubclassWindow() override;
    void Draw(CDC& dc) override;
    void OnTabsChanged() override;
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg BOOL OnSelchange(NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    void (*m_pfnChanged)(int) = nullptr;                       // of SetFunction
    int m_nTitleHeight = 25;                                   // of the title band, pixels
    int m_bOutDriven = 0;                                      // there is a title band in place of the tabs
    int m_nActive = -1;                                        // the shown page
    int m_nPageCount = 0;                                      // the number of pages
    std::array<std::unique_ptr<PageStruct>, MaxPages> m_pages; // the first m_nPageCount are set

private:
    friend class VTabPage;

    [[nodiscard]] bool IsPage(int page) const { return page >= 0 && page < m_nPageCount; }
    [[nodiscard]] bool HasWindow(int page) const;
    [[nodiscard]] int FindPage(const wchar_t* title) const;
    [[nodiscard]] int FindNextEnabled(int page) const;
    [[nodiscard]] CRect GetPageRect() const;
    void InsertTabs();
    void ShowScrollArrows(bool show);
    [[nodiscard]] bool ShowPage(int page);
    void PlacePage();
    void ReplaceActivePage(int page, const int* nextActive);
    void DestroyPage(int page);
    void InvalidateTitle();
    bool TabIntoPage(bool backward);
    bool TabOutOfPage(const VTabPage& page, const MSG& msg);

    bool m_bLeaving = false;                    // the active page is being asked
    std::array<bool, MaxPages> m_bActivating{}; // the page's OnActivate is running
    std::array<bool, MaxPages> m_bDestroying{}; // the page's OnDestroyP is running
};
