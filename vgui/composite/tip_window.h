// A tip with a title and a body of several lines.
#pragma once

#include "vgui/export.h"

#include <afxcoll.h>
#include <afxwin.h>

// Styles of CXTTipWindow, to be added up.
inline constexpr DWORD VGTipDoubleBorder = 1;
inline constexpr DWORD VGTipShadow = 2;
inline constexpr DWORD VGTipGradedShadow = 4; // how the shadow looks; otherwise it is dithered

// A popup that its host shows at a point, for a time or while the mouse stays in a "hot" rectangle. It goes
// when the mouse leaves that, when its time is over, when it loses the focus and when it is clicked; the
// click is passed on to the window below. It never takes the focus by itself, and captures the mouse while it
// is shown. Sizes are pixels, times milliseconds.
class VGUI_API CXTTipWindow : public CWnd
{
    DECLARE_DYNAMIC(CXTTipWindow)

public:
    // A tip without window and text, in the system's colours for tips.
    CXTTipWindow();
    ~CXTTipWindow() override;

    // Creates the hidden window, owned by parent, with parent's typeface. FALSE without a parent window, when
    // there is a window already or when it cannot be created.
    virtual BOOL Create(CWnd* parent);

    // Title and body, null for none. Lines of the body end with "\n"; every "\r" is taken out. A tip that
    // is shown keeps its size; redraw: it shows the texts at once and not when it is painted next.
    void SetTipText(LPCWSTR title, LPCWSTR body, BOOL redraw = FALSE);
    // Sets background and text; redraw: at once.
    void SetTipColors(COLORREF back, COLORREF text, BOOL redraw = FALSE);
    // The room left and right of, above and below the texts. Negative values count as 0.
    void SetMargins(CSize margins);
    // The room between title and body. Negative values count as 0.
    void SetLineSpace(int space);
    // What is added to the point in the rectangle form of ShowTipWindow; (0, 20) at first.
    void SetTipOffsetPos(CPoint offset) { m_ptOffset = offset; }
    // Tab stops of title and body, in pixels from the text's left edge. The array stays the caller's and must
    // live as long as the tip may be shown; null or 0 for the system's own stops.
    void SetTextTabStopPositions(int* positions, int count);

    // Shows the tip with its upper left corner, or (centre) the middle of its upper edge, at a point in
    // screen coordinates, moved onto the work area of the parent's monitor where it would reach over the
    // left, right or lower edge. It appears after delay (0: at once) and goes duration later (0: it stays).
    // FALSE without a window or a text, when the tip is shown already or waits for its delay.
    virtual BOOL ShowTipWindow(const CPoint& point, DWORD style = 0, UINT delay = 0, UINT duration = 0,
                               BOOL centre = FALSE);
    // The same for a hot rectangle and a point in the parent's client coordinates, after hiding what is
    // shown. The place is the point with the tip's offset (offsetFromPoint), or the rectangle's upper left
    // corner. A delayed tip whose rectangle the mouse has left when the delay is over does not appear, and
    // all shows in the point form are refused until HideTipWindow; this is intended. An empty rectangle makes
    // this the point form.
    virtual BOOL ShowTipWindow(const CRect& hot, const CPoint& point, DWORD style = 0, UINT delay = 0,
                               UINT duration = 0, BOOL centre = FALSE, BOOL offsetFromPoint = TRUE);
    // Hides the tip, gives up a delayed show and forgets the hot rectangle.
    void HideTipWindow();

protected:
    // Measures the texts and computes the rectangles for a tip at a screen point.
    void InitializeSize(const CPoint& point, BOOL centre);
    // Hides the tip and sends a button message, with a point in the tip's client coordinates, to the window
    // that is there then.
    void ForwardMessage(UINT message, UINT flags, CPoint point);
    // Darkens what the context shows there.
    void DrawShadowRect(CDC* pDC, const CRect& rect);

    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnPaint();
    afx_msg LRESULT OnPrintClient(WPARAM wParam, LPARAM lParam);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMButtonDown(UINT nFlags, CPoint point);
    DECLARE_MESSAGE_MAP()

    CString m_strTitle;           // empty for none
    CString m_strBody;            // lines separated by "\n"
    CStringArray m_lines;         // of the body; none of an empty one
    CFont m_fontNormal;           // of the body
    CFont m_fontBold;             // of the title
    HWND m_hParent = nullptr;     // the owner
    CSize m_margins{0, 0};        // around the texts
    CSize m_titleExtent{0, 0};    // of the title as measured
    int m_nLineSpace = 0;         // between title and body
    int m_nTabStops = 0;          // entries of m_pTabStops
    int* m_pTabStops = nullptr;   // not owned
    UINT_PTR m_nHideTimer = 1;    // timer id
    UINT_PTR m_nShowTimer = 2;    // timer id
    int m_bShowPending = 0;       // a delayed show waits
    int m_bCentre = 0;            // the point is the middle of the upper edge
    DWORD m_dwStyle = 0;          // VGTip constants
    COLORREF m_clrBack;           // background
    COLORREF m_clrText;           // text
    CRect m_rcClient{0, 0, 0, 0}; // client coordinates, without the shadow
    CRect m_rcWindow{0, 0, 0, 0}; // screen coordinates, without the shadow
    CRect m_rcShadow{0, 0, 0, 0}; // client coordinates
    CRect m_rcHot{0, 0, 0, 0};    // screen coordinates; empty for none
    CPoint m_ptOffset{0, 20};     // see SetTipOffsetPos
    CPoint m_ptShow{0, 0};        // screen coordinates

private:
    BOOL Create(LPCWSTR lpszClassName, LPCWSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                CWnd* pParentWnd, UINT nID, CCreateContext* pContext = nullptr) override;
    [[nodiscard]] CRect GetWorkArea(const CPoint& point) const;
    [[nodiscard]] static COLORREF AlphaPixel(COLORREF color, int amount);
    [[nodiscard]] static int CheckValue(int value);
    static void DrawGradedShadow(CDC& dc, const CRect& rect);
    static void DrawDitheredShadow(CDC& dc, const CRect& rect);

    void CreateFonts();
    void SplitBody();
    [[nodiscard]] CSize MeasureText(CDC& dc, const CString& text) const;
    [[nodiscard]] CSize MeasureBody(CDC& dc) const;
    void Appear();
    void KeepPictureBelow(const CRect& window);
    void Draw(CDC& dc);
    void DrawTexts(CDC& dc);
    void PassOn(UINT message, UINT flags, CPoint point);
    void Redraw(BOOL redraw);

    CBitmap m_below; // what the screen showed there, for the shadow to fall on; none without a shadow
};
