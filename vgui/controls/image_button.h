// The push button with pictures: the base of the library's buttons, check boxes and radio buttons.
#pragma once

#include "vgui/export.h"

#include <afxcmn.h>
#include <afxwin.h>

// What VButtonST's setters answer.
inline constexpr DWORD StResultOk = 0;
inline constexpr DWORD StResultBadResource = 1; // an icon, bitmap, menu or cursor cannot be loaded or read
inline constexpr DWORD StResultMaskFailed = 2;  // the transparency mask of a bitmap cannot be made
inline constexpr DWORD StResultBadIndex = 3;    // no such colour
inline constexpr DWORD StResultBadAlign = 4;    // no such alignment

// An owner-drawn push button with an icon or a bitmap beside, above or to the right of its caption. It can be
// flat until the mouse is over it, toggle, drop down a menu, open a link, and show a cursor and a tooltip of
// its own. Attach it to a dialog's button with SubclassDlgItem, or call Create.
//
// A button becomes a toggle when its style has bit 1 (value 2) set on being subclassed: that of check boxes,
// but of group boxes and owner-drawn buttons as well. A default push button becomes the dialog's default.
//
// bRepaint: non-zero invalidates the whole button. Coordinates are the button's client coordinates, in
// pixels. All setters may be called before the button has a window, unless said.
class VGUI_API VButtonST : public CButton
{
    DECLARE_DYNAMIC(VButtonST)

public:
    // Indices of SetColor and GetColor. "In" is while hovered or pressed.
    enum : BYTE {
        ColorBkIn = 0,
        ColorFgIn = 1,
        ColorBkOut = 2,
        ColorFgOut = 3,
        ColorBkFocus = 4, // background while focused and neither hovered nor pressed
        ColorFgFocus = 5, // kept and returned only; no drawing reads it
    };

    VButtonST();
    VButtonST(const VButtonST&) = delete;
    VButtonST& operator=(const VButtonST&) = delete;
    ~VButtonST() override;

    // The version of the class, times ten.
    static int GetVersionI() { return 34; }
    // The same as text.
    static LPCWSTR GetVersionC() { return L"3.4"; }

    // Shows a picture while hovered, pressed or checked (In), and another otherwise (Out; 0 or null: the same
    // one). The former pictures are released in any case. Without an In picture there is none afterwards.
    //
    // Of handles, the button is the owner from the call on: it destroys them when they are replaced, when the
    // call fails, and at its end. An Out handle without an In handle stays the caller's.
    DWORD SetIcon(int nIconIn, int nIconOut = 0);
    DWORD SetIcon(HICON hIconIn, HICON hIconOut = nullptr);
    // The same for bitmaps, whose pixels of the colour crTrans are not shown. The bitmaps' transparent pixels
    // are blackened; they must not be selected into a device context.
    DWORD SetBitmaps(int nBitmapIn, COLORREF crTransIn, int nBitmapOut = 0, COLORREF crTransOut = 0);
    DWORD SetBitmaps(HBITMAP hIn, COLORREF crTransIn, HBITMAP hOut = nullptr, COLORREF crTransOut = 0);

    // Flat: no 3D frame, and highlighted while the mouse is over it. Buttons are flat at first.
    DWORD SetFlat(BOOL bFlat = TRUE, BOOL bRepaint = TRUE);
    // 0, 1, 2: picture left of, above, right of the caption. 3, 4, 5: caption left, centred, right. Other
    // values change nothing.
    DWORD SetAlign(BYTE byAlign, BOOL bRepaint = TRUE);

    // Of toggle buttons: any non-zero nCheck checks. Nothing happens to other buttons.
    virtual DWORD SetCheck(int nCheck, BOOL bRepaint = TRUE);
    // 1 for a checked toggle button, 0 otherwise.
    int GetCheck() const { return checked; }
    // Whether the button is its dialog's default button.
    int GetDefault() { return isDefault; }

    // Sets all colours to what the system's are now.
    DWORD SetDefaultColors(BOOL bRepaint = TRUE);
    // StResultBadIndex, with nothing changed, when there is no such colour.
    DWORD SetColor(BYTE byColorIndex, COLORREF crColor, BOOL bRepaint = TRUE);
    // The same; a null crpColor is not filled.
    DWORD GetColor(BYTE byColorIndex, COLORREF* crpColor);

    // Highlights a flat button also while no window of the application is active.
    DWORD SetAlwaysTrack(BOOL bAlwaysTrack = TRUE);
    // The cursor shown over the button, a resource; 0 for the usual one. StResultBadResource, with the usual
    // one afterwards, when it cannot be loaded.
    DWORD SetBtnCursor(int nCursorId = 0, BOOL bRepaint = TRUE);
    // Whether a flat button has a thin frame while hovered or pressed. It does at first.
    DWORD DrawBorder(BOOL bEnable, BOOL bRepaint = TRUE);
    // Whether a flat button shows the focus rectangle. It does not at first.
    DWORD DrawFlatFocus(BOOL bDrawFlatFocus, BOOL bRepaint = TRUE);
    // From now on the button shows its parent's picture as its background. The picture is taken once, from
    // what the parent shows there at the next painting, and kept; a further call has it taken anew.
    void DrawTransparent(BOOL bRepaint = FALSE);

    // The link that a click opens, cut to 260 characters; null or empty for none.
    DWORD SetURL(LPCWSTR lpszURL);
    // The menu resource whose first submenu a click drops down below the button; 0 for none. Its commands go
    // to hParentWnd, or to the button's parent when that is no window. StResultBadResource, with no menu
    // afterwards, when it cannot be loaded.
    DWORD SetMenu(UINT nMenu, HWND hParentWnd, BOOL bRepaint = TRUE);

    // Sets the tooltip's text; null, and a string resource that is missing or empty, do nothing. On a skinned
    // dialog the text goes to the dialog's tooltip, which is always active and colours the caption. Needs a
    // window.
    void SetTooltipText(LPCWSTR lpszText, BOOL bActivate = TRUE);
    void SetTooltipText(int nText, BOOL bActivate = TRUE);
    // Activates or deactivates the button's own tooltip, if it has a text.
    void ActivateTooltip(BOOL bEnable = TRUE);

    BOOL PreTranslateMessage(MSG* pMsg) override;
    // Paints the button on the item's device context: exactly the pixels that belong to it, nothing below.
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

protected:
    void PreSubclassWindow() override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

    // A step of DrawItem: fills the button's rectangle. Answers StResultOk.
    virtual DWORD OnDrawBackground(CDC* pDC, const RECT* pRect);
    // A step of DrawItem: draws the frame within the rectangle. Answers StResultOk.
    virtual DWORD OnDrawBorder(CDC* pDC, const RECT* pRect);

    // Lets go of icons, bitmaps and masks; with bCheckForNull they are destroyed, without only forgotten.
    void FreeResources(BOOL bCheckForNull = TRUE);
    // Makes the tooltip's window, unless the parent is a skinned dialog.
    void InitToolTip();
    // Ends the highlight of a flat button.
    void CancelHover();
    // Releases the mouse if this button has captured it.
    void ReleaseCapture();
    // Copies the parent's picture to the origin of pDC, taking it first if there is none yet.
    void PaintBk(CDC* pDC);
    // A monochrome bitmap, white where the source has the transparent colour, black elsewhere; those pixels
    // of the source become black. Width and height in pixels. The caller owns it; null on failure.
    HBITMAP CreateBitmapMask(HBITMAP hSource, DWORD dwWidth, DWORD dwHeight, COLORREF crTransparent);
    // Computes where a picture of the given size goes (its top left corner) and what is left for the caption.
    // A picture larger than the room to centre it in lands far outside; this is intended.
    void PrepareImageRect(BOOL bHasTitle, RECT* pItem, CRect* pCaption, BOOL bPressed, DWORD dwWidth,
                          DWORD dwHeight, CRect* pImage);
    // Draws the icon of the present state, beside the caption if there is one, and takes its room out of
    // *pCaption.
    void DrawTheIcon(CDC* pDC, BOOL bHasTitle, RECT* pItem, CRect* pCaption, BOOL bPressed, BOOL bDisabled);
    // The same for the bitmap. A disabled one looks like an enabled one.
    void DrawTheBitmap(CDC* pDC, BOOL bHasTitle, RECT* pItem, CRect* pCaption, BOOL bPressed, BOOL bDisabled);

    afx_msg void OnDestroy();
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnSysColorChange();
    // Toggles, drops down the menu or opens the link. FALSE: the parent is notified, too, unless it has gone
    // meanwhile.
    afx_msg BOOL OnClicked();
    // A disabled button hands the focus on, whoever had it.
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized);
    afx_msg void OnCancelMode();
    afx_msg UINT OnGetDlgCode();
    afx_msg HBRUSH CtlColor(CDC* pDC, UINT nCtlColor);
    afx_msg LRESULT OnSetStyle(WPARAM wParam, LPARAM lParam);
    afx_msg void OnMouseLeave();
    // Nothing: the background is part of each painting.
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    // The check messages, so that code that knows only standard buttons sees the toggle's state.
    afx_msg LRESULT OnGetCheckMessage(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnSetCheckMessage(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    // An icon of the button.
    struct Icon {
        HICON handle; // owned, null for none
        DWORD width;  // pixels
        DWORD height; // pixels
    };
    // A bitmap of the button.
    struct Bitmap {
        HBITMAP handle;       // owned, null for none
        DWORD width;          // pixels
        DWORD height;         // pixels
        HBITMAP mask;         // owned; white where the bitmap is not shown
        COLORREF transparent; // of the pixels that are not shown
    };
    static constexpr int kColors = 6;     // of SetColor
    static constexpr int kMaxUrl = 260;   // characters
    static constexpr UINT kTypeMask = 31; // the part of a button's style that tells its type

    BOOL flat = TRUE;               // see SetFlat
    BOOL hovering = FALSE;          // highlighted: the mouse is over the button
    BOOL transparent = FALSE;       // see DrawTransparent
    BOOL pressed = FALSE;           // as of the last painting
    BOOL focused = FALSE;           // as of the last painting
    BOOL disabled = FALSE;          // as of the last painting
    BOOL isDefault = FALSE;         // the dialog's default button
    BOOL isToggle = FALSE;          // clicks check and uncheck it
    BYTE imageAlign = 0;            // 0 left of the caption, 1 above it, 2 right of it
    BOOL drawBorder = TRUE;         // see DrawBorder
    BOOL drawFlatFocus = FALSE;     // see DrawFlatFocus
    COLORREF colors[kColors];       // by colour index
    HMENU menu = nullptr;           // owned
    HWND menuOwner = nullptr;       // gets the menu's commands
    BOOL menuShown = FALSE;         // the menu is down
    BYTE textAlign = 1;             // 0 left, 1 centred, 2 right
    HCURSOR cursor = nullptr;       // owned
    CToolTipCtrl toolTip;           // without a window on a skinned dialog
    CDC bkDC;                       // holds the parent's picture
    CBitmap bkBitmap;               // the picture
    CBitmap* oldBkBitmap = nullptr; // what bkDC held before; only good until the thread is idle
    BOOL alwaysTrack = FALSE;       // see SetAlwaysTrack
    int checked = 0;                // 1 for a checked toggle button
    UINT typeStyle = kTypeMask; // the type found when the button was subclassed; 0 for a default push button
    wchar_t url[kMaxUrl];       // not terminated when it is full
    Icon icons[2];              // [0] hovered, pressed or checked; [1] otherwise. Either icons or bitmaps.
    Bitmap bitmaps[2];          // likewise

private:
    void Repaint(BOOL bRepaint);
    void DropBackground();
    [[nodiscard]] int ImageIndex(bool hasNormalImage, BOOL bPressed) const;
    void DropDownMenu();
    void DrawButtonBorder(CDC& dc, const CRect& rect);
    void DrawRaisedFrame(CDC& dc, const CRect& rect);
    void DrawCaption(CDC& dc, const CString& text, CRect caption);
    [[nodiscard]] CPoint CaptionOffset(CSize area, CSize text) const;
};
