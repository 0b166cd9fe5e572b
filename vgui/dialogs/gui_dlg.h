// The skinned dialog: the base of every dialog with the library's look.
#pragma once

#include "vgui/export.h"
#include "vgui/foundation/skin_host.h"

#include <afxcmn.h>
#include <afxtempl.h>
#include <afxwin.h>
#include <map>
#include <memory>

namespace gui_dlg
{
struct CapBtns;
}

// Paints its own frame, caption and caption buttons, colours its controls, replaces standard controls by the
// library's, offers tooltips and limits its sizing.
//
// A template with WS_BORDER or WS_DLGFRAME gets the painted non-client area; one with neither keeps what the
// system draws. The system's caption style is taken off the window, so GetStyle() no longer shows WS_CAPTION.
//
// Works modal (DoModal, also after InitModalIndirect) and modeless (Create, CreateIndirect); an object may be
// opened again after it was closed. User-interface thread only.
class VGUI_API VGuiDlg : public CDialog, public VSkinHost
{
    DECLARE_DYNAMIC(VGuiDlg)

public:
    // nIDTemplate: a dialog template in the resource chain, 0 when the template is given later by
    // InitModalIndirect, Create or CreateIndirect. pParent: parent or owner, null for the main window.
    explicit VGuiDlg(UINT nIDTemplate, CWnd* pParent = nullptr);
    VGuiDlg(const VGuiDlg&) = delete;
    VGuiDlg& operator=(const VGuiDlg&) = delete;
    virtual ~VGuiDlg();

    // As CDialog::DoModal; from then on the object counts as modal for the editor-command protocol. The
    // host's main frame is enabled afterwards if it was before.
    INT_PTR DoModal() override;

    // Forwards to the window. Every showing and hiding done by this class goes through here.
    // Returns non-zero when the window was visible before; 0 as well when there is no window.
    virtual BOOL ShowWindow(int nCmdShow);

    BOOL PreTranslateMessage(MSG* pMsg) override;

    // Called when the help caption button is pressed. The base opens the assist system on the topic
    // GetAssistantDirName(), see EnterAssistSystem; a dialog with help of its own overrides it. It may
    // destroy the dialog.
    virtual void PromptHelp();

    // The name under which help for this dialog is filed: its run-time class name.
    virtual CString GetAssistantDirName();

    COLORREF GetBkClr() const override { return m_clrBk; }
    CToolTipCtrl& GetToolTipCtrl() override { return m_ToolTip; }

    // Adds a tooltip to a control and colours its text RGB(80, 80, 255). False when the control does not
    // exist or has no window, or before OnInitDialog has made the tooltip control.
    bool AddToolTips(UINT nID, const CString& text) override;
    bool AddToolTips(CWnd* pWnd, const CString& text) override;

    // Sets the text colour of a control; VGNoColor takes it away. Nothing happens when the control does
    // not exist. The last three arguments are accepted and not used.
    void SetStaticCtrlFormat(UINT nID, COLORREF clrText, UINT, const wchar_t*, int);
    // The colour set for a control. False, and clr untouched, when none is set.
    bool GetSetCtrlClr(UINT nID, COLORREF& clr) override;

    // Which dimensions the user may change by dragging the frame; both at first.
    void SetAllowResize(bool bHeight, bool bWidth);
    // The least window size the user can drag to, in pixels; 0 means no minimum. The window's top left
    // corner stays where it is while the limit holds, whichever edge is dragged.
    void SetMinimumSize(UINT cx, UINT cy);
    // Moves the window to a rectangle in screen coordinates (parent's client coordinates for a child) if
    // IsValideWndPos accepts it. False, and nothing moved, otherwise or without a window.
    bool MoveWindowAndCheck(const CRect& rect);

    // As CWnd's, extended to the library's self-drawn check boxes and radio buttons. 0 when the control
    // does not exist.
    int IsDlgButtonChecked(UINT nID) const;
    // Sets the state of such a control. Non-zero when the control exists.
    int CheckDlgButton(UINT nID, int nCheck);

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    // Replaces the standard controls and makes the tooltip control; an override calls it first. TRUE.
    BOOL OnInitDialog() override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    // Answers a tooltip's question for its text with the string resource of the tool's id. FALSE when a
    // frame window routed the question here, when the tool is a window other than a control bar, and for
    // the id 0.
    virtual BOOL OnToolTipText(UINT nID, NMHDR* pNMHDR, LRESULT* pResult);
    // Opens help for WM_HELP and says whether that settled it; when not, the framework's own processing of
    // WM_HELP follows, which sends it on to the dialog's owner: if that is a VGuiDlg, its help opens as well.
    // An override that returns 1 prevents that. It may destroy the dialog. With a key "HtmlFile" in the
    // section GetAssistantDirName() of the host's sys\AssistSystem.ini it calls PromptHelp and returns 0.
    // Otherwise it calls the function
    //     extern "C" int acedHelp(const wchar_t* file, const wchar_t* topic, int command)
    // that the host's program exports, with the key "帮助文件" of section "产品信息" in sys\product.ini, an
    // empty topic and 0, and returns 1. Without that function a message box says so and the result is 0.
    virtual int OnHtmlHelp();
    // The text for an id: the string resource of that id. False, and text empty, when there is none.
    virtual bool LoadStringW(CString& text, UINT_PTR nID) const;
    // The form in which a loaded text is shown: unchanged.
    virtual CString GetFormatString(const CString& text);

    // Steps aside while the host's editor takes input: hides the dialog and gives its parent the focus
    // (modal: also enables it and the main frame). Nothing happens without a window. What the host is told of
    // on the way may close and free the dialog.
    void BeginEditorCommand();
    // Undoes BeginEditorCommand; the same holds. Nothing happens without one before it, or without a window.
    void CompleteEditorCommand();

    // Gives the window a rectangular region of its own size; only with a painted non-client area.
    void CalWndRgn();
    // Paints the whole non-client area now; nothing when it is the system's or the window is hidden.
    void DrawNcArea();
    // The steps of DrawNcArea, in window coordinates (origin at the window's top left corner).

    // Draws the rings of the frame along the window rectangle.
    void DrawFrame(CDC* pDC, const CRect& rcWnd);
    // Draws the caption's gradient, bottom line, text and buttons.
    void DrawCaption(CDC* pDC, const CRect& rcCap);
    // Draws the caption buttons that the window's style asks for.
    void DrawCapBtns(CDC* pDC);
    // The caption's rectangle in window coordinates for a window rectangle.
    CRect GetCapRect(const CRect& rcWnd);
    // The close button's rectangle, in the coordinates of the window rectangle.
    CRect GetCloseBtnRect(const CRect& rcWnd);
    // The caption button at a point in screen coordinates: HTCLOSE, HTMAXBUTTON, HTMINBUTTON or HTHELP;
    // HTERROR when there is none.
    LRESULT NcHitTest(CPoint point);

    afx_msg void OnNcCalcSize(BOOL bCalcValidRects, NCCALCSIZE_PARAMS* lpncsp);
    afx_msg HBRUSH OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor);
    afx_msg void OnNcLButtonUp(UINT nHitTest, CPoint point);
    afx_msg void OnNcLButtonDown(UINT nHitTest, CPoint point);
    afx_msg BOOL OnNcActivate(BOOL bActive);
    afx_msg void OnDestroy();
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg LRESULT OnNcHitTest(CPoint point);
    afx_msg void OnNcLButtonDblClk(UINT nHitTest, CPoint point);
    afx_msg void OnNcMouseMove(UINT nHitTest, CPoint point);
    afx_msg void OnSizing(UINT nSide, LPRECT lpRect);
    afx_msg BOOL OnHelpInfo(HELPINFO* pHelpInfo);
    afx_msg void OnNcMouseLeave();
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* lpMMI);
    DECLARE_MESSAGE_MAP()

    // How a control is drawn that is not drawn like the others.
    struct CtrlFormat {
        std::unique_ptr<CFont> pFont;  // null: the dialog's font
        COLORREF clrText = 0xFFFFFFFF; // 0xFFFFFFFF: no colour set
    };

    COLORREF m_clrText;            // text colour of static controls
    COLORREF m_clrBk;              // background colour
    CBrush m_brBk;                 // brush of m_clrBk, from OnInitDialog on
    int m_nEditorState = 0;        // 0 idle, 1 hidden while invisible, 3 hidden while visible
    bool m_bModeless = true;       // not opened by DoModal
    CToolTipCtrl m_ToolTip;        // of the controls and the caption buttons
    CFont m_Font;                  // unused; for derived classes
    int m_bActive = 1;             // the last WM_NCACTIVATE
    int m_bSkinNc = 0;             // 1: this class paints the non-client area
    bool m_bAllowResizeY = true;   // the height may be changed by dragging
    bool m_bAllowResizeX = true;   // the width may be changed by dragging
    UINT m_nMinWidth = 0;          // pixels, 0 for none
    UINT m_nMinHeight = 0;         // pixels, 0 for none
    CArray<CWnd*> m_arrSubclassed; // the replaced children, owned; destroyed and deleted in OnDestroy
    std::map<UINT, CtrlFormat> m_mapCtrlFormat; // by control id
    CBitmap m_bmpHelp;                          // glyph of the help caption button
    bool m_bHelpBtn = true; // whether there is a help caption button; set before OnInitDialog
    int m_bNcBtnDown = 0;   // a caption button was pressed and not yet released

private:
    friend class VEditorCommand;

    [[nodiscard]] gui_dlg::CapBtns GetCapBtns() const;
    [[nodiscard]] CString GetCapBtnTip(LRESULT nHit) const;
    void PressCapBtn(LRESULT nHit);
    [[nodiscard]] CString GetCaptionState(int width) const;
    [[nodiscard]] bool CreateCaptionBitmap(CDC& dc, int width);
    void DrawCaptionText(CDC* pDC, const CRect& rcCap);
    void DrawCapBtn(CDC* pDC, LRESULT nHit, const CRect& rcBtn);
    void DropReplacedControls();
    void CreateToolTips();
    void ShowCapBtnTip(CPoint point);

    CBitmap m_bmpCaption;      // the caption as it was last drawn, one bitmap as wide as the window
    CString m_strCaptionState; // what it shows; empty when it shows nothing
};

// Lets a dialog step aside for the lifetime of the object, so that the host's editor can take input.
class VGUI_API VEditorCommand
{
public:
    // pDlg may be null, then nothing happens. It is not owned; should its window be gone before the command
    // completes, completing does nothing.
    explicit VEditorCommand(VGuiDlg* pDlg);
    VEditorCommand(const VEditorCommand&) = delete;
    VEditorCommand& operator=(const VEditorCommand&) = delete;
    virtual ~VEditorCommand();

    // Brings the dialog back before the object's end.
    void CompleteEditorCommand();

protected:
    VGuiDlg* m_pDlg;           // not owned
    bool m_bCompleted = false; // the dialog is back

private:
    HWND m_hDlg = nullptr; // the window that stepped aside, to notice that the dialog is gone
};
