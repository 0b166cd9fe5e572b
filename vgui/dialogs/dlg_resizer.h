// Keeps a dialog's controls in place when the dialog changes size.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>
#include <vector>

// What both resizers share: the dialog, its size at the last layout, and the layout of all its controls.
//
//     BOOL CMyDlg::OnInitDialog()                      void CMyDlg::OnSize(UINT nType, int cx, int cy)
//     {                                                {
//         CDialog::OnInitDialog();                         CDialog::OnSize(nType, cx, cy);
//         m_resizer.Init(this);                            m_resizer.ResizeAll(nType, cx, cy);
//         m_resizer.AddControl(IDOK, 0x0F);            }
//         return TRUE;
//     }
//
// A resizer is a member of its dialog. It keeps window handles only, owns none of the windows, and skips
// those that are gone. All sizes and distances are pixels; control rectangles are in the dialog's client
// coordinates. A copy lays out the same controls with a state of its own. User-interface thread only.
class VGUI_API VDlgResizerBase
{
    // The order of the virtual functions is part of the binary interface.
private:
    // Lays out the control of one record for a change of the dialog's size by (dx, dy): adds its new place
    // to the batch hDwp, an HDWP. May throw.
    virtual void ResizeControl(int nIndex, void* hDwp, int dx, int dy) = 0;

public:
    // The number of records.
    [[nodiscard]] virtual INT_PTR GetSize() const = 0;

private:
    // The window of a record. Throws CInvalidArgException* outside 0 to GetSize() - 1.
    [[nodiscard]] virtual HWND GetAt(INT_PTR nIndex) const = 0;

public:
    virtual ~VDlgResizerBase() = default;
    VDlgResizerBase() = default;
    VDlgResizerBase(const VDlgResizerBase&) = default;
    VDlgResizerBase& operator=(const VDlgResizerBase&) = default;

    // Names the dialog, whose window must exist, and takes its client size as the reference for the next
    // layout. Ignored for null or a dialog without a window.
    void Init(CWnd* pDlg);

    // The client size that the controls are laid out for.
    [[nodiscard]] CSize GetClientSize() const { return m_szClient; }
    // Sets that size without a layout, for a dialog that has placed its controls itself.
    void SetClientSize(int cx, int cy) { m_szClient = CSize(cx, cy); }

    // The index of the first record of a control, -1 for null and for a control without one.
    [[nodiscard]] int SearchWnd(const CWnd* pCtrl) const;

    // Lays out all controls in one batch for the client size of a WM_SIZE, whose parameters these are, and
    // invalidates the dialog. Nothing happens for SIZE_MINIMIZED or without a dialog. An exception is
    // reported with a message box and goes no further; no control is moved then.
    void ResizeAll(UINT nType, int cx, int cy);

protected:
    // Takes the dialog's client size; 0 x 0 when it has no window.
    void SaveClientSize();

    // Whether the object has a window that exists; false for null.
    [[nodiscard]] static bool ISVALIDEWND(const CWnd* pWnd);

    // Whether the dialog's window exists.
    [[nodiscard]] bool HasDialog() const { return ::IsWindow(m_hWnd) != FALSE; }
    // The dialog's control with an id as a temporary object, null when there is none.
    [[nodiscard]] CWnd* FindControl(UINT nID) const;
    // Lays out the control of one record at once and invalidates it; nothing when a window is gone.
    void ResizeOne(int nIndex, int dx, int dy);

    HWND m_hWnd = nullptr;  // the dialog, not owned
    CSize m_szClient{0, 0}; // its client size at the last layout
};

// Four factors that can be registered with a control. They are kept with it and take no part in the layout.
struct SRESIZERSCALE {
    // A factor for each edge.
    // The first two arguments land in each other's field; this is intended, and copies keep the fields.
    SRESIZERSCALE(double fLeft_, double fRight_, double fTop_, double fBottom_)
        : fLeft(fRight_), fRight(fLeft_), fTop(fTop_), fBottom(fBottom_)
    {
    }

    double fLeft;   // of the left edge
    double fRight;  // of the right edge
    double fTop;    // of the upper edge
    double fBottom; // of the lower edge
};

// Anchors the edges of controls: an edge follows the whole change of the dialog's size or half of it. Halves
// are truncated toward zero at every layout and the lost pixel is not made good; where that drift matters,
// use VDlgResizerEx.
class VGUI_API VDlgResizer : public VDlgResizerBase
{
public:
    // Anchoring flags, to be combined. There are no halves vertically.
    enum : UINT {
        MoveLeft = 0x01,      // the left edge moves by dx
        MoveRight = 0x02,     // the right edge moves by dx
        MoveTop = 0x04,       // the top edge moves by dy
        MoveBottom = 0x08,    // the bottom edge moves by dy
        MoveRightHalf = 0x10, // the right edge moves by dx / 2
        MoveLeftHalf = 0x20,  // the left edge moves by dx / 2
        MoveAll = MoveLeft | MoveRight | MoveTop | MoveBottom
    };

    // What is kept of a registered control.
    struct RESIZEREC {
        HWND hWnd = nullptr;             // the control, not owned
        UINT nFlags = 0;                 // its anchoring flags
        int cx = 0;                      // width after the last layout, 0 before the first one
        int cy = 0;                      // height, likewise
        SRESIZERSCALE scale{0, 0, 0, 0}; // its factors
    };

    // Registers a control under a rule; the form with factors makes it follow the dialog's right bottom
    // corner. Nothing happens unless the dialog's and the control's windows exist. A control registered
    // again gets a second record, whose layout replaces the first one's; SearchWnd, SetControl and
    // GetCtrlSize know the first only.
    void AddControl(UINT nID, UINT nFlags);
    void AddControl(const CWnd* pCtrl, UINT nFlags);
    void AddControl(UINT nID, SRESIZERSCALE scale);
    void AddControl(const CWnd* pCtrl, SRESIZERSCALE scale);

    // Replaces the flags of a registered control. Nothing happens for any other.
    void SetControl(UINT nID, UINT nFlags);
    void SetControl(const CWnd* pCtrl, UINT nFlags);

    // Gives a registered control new flags and lays it out at once for a change by (dx, dy). Nothing
    // happens for any other control. The dialog's reference size stays.
    void Resize(UINT nID, int dx, int dy, UINT nFlags);
    void Resize(CWnd* pCtrl, int dx, int dy, UINT nFlags);

    // The size that the last layout gave a control; 0 x 0 before the first one, and below 0 when the dialog
    // was made too small for it. False, and size untouched, when it is not registered.
    bool GetCtrlSize(const CWnd* pCtrl, CSize& size) const;

    [[nodiscard]] INT_PTR GetSize() const override { return static_cast<INT_PTR>(m_arrRec.size()); }

private:
    void ResizeControl(int nIndex, void* hDwp, int dx, int dy) override;
    [[nodiscard]] HWND GetAt(INT_PTR nIndex) const override;

    void Add(const CWnd* pCtrl, UINT nFlags, const SRESIZERSCALE& scale);

    std::vector<RESIZEREC> m_arrRec;
};

// Moves each edge of a control by a share of the change of the dialog's size: 0 leaves it, 1 lets it follow
// wholly, other values do what arithmetic says. What is less than a pixel is carried to the next layout, so
// that no edge strays more than a pixel from its exact place, however often the dialog is resized.
class VGUI_API VDlgResizerEx : public VDlgResizerBase
{
public:
    // The fractions of pixels, above -1 and below 1, that a control's edges have not moved yet.
    struct MEASUREERROR {
        HWND hWnd = nullptr; // the control, not owned
        float eLeft = 0;     // of the left edge
        float eRight = 0;    // of the right edge
        float eTop = 0;      // of the upper edge
        float eBottom = 0;   // of the lower edge
    };

    // What is kept of a registered control.
    struct RESIZEREC {
        HWND hWnd = nullptr; // the control, not owned
        float fLeft = 0;     // share of dx that the left edge moves by
        float fRight = 0;    // share of dx, right edge
        float fTop = 0;      // share of dy, upper edge
        float fBottom = 0;   // share of dy, lower edge
        int cx = 0;          // width after the last layout, 0 before the first one
        int cy = 0;          // height, likewise
    };

    // Registers a control, as VDlgResizer does, with a share for each edge as the rule. A share that is not a
    // number moves nothing.
    void AddControl(UINT nID, double fLeft, double fRight, double fTop, double fBottom);
    void AddControl(const CWnd* pCtrl, double fLeft, double fRight, double fTop, double fBottom);
    // Replaces the shares of a registered control. Nothing happens for any other.
    void SetControl(UINT nID, float fLeft, float fRight, float fTop, float fBottom);
    void SetControl(const CWnd* pCtrl, float fLeft, float fRight, float fTop, float fBottom);
    // Gives a registered control new shares and lays it out at once for a change by (dx, dy). Nothing happens
    // for any other control. The dialog's reference size stays.
    void Resize(UINT nID, int dx, int dy, float fLeft, float fRight, float fTop, float fBottom);
    void Resize(CWnd* pCtrl, int dx, int dy, float fLeft, float fRight, float fTop, float fBottom);

    [[nodiscard]] INT_PTR GetSize() const override { return static_cast<INT_PTR>(m_arrRec.size()); }

private:
    void ResizeControl(int nIndex, void* hDwp, int dx, int dy) override;
    [[nodiscard]] HWND GetAt(INT_PTR nIndex) const override;

    // The same index stands for the same control in both.
    std::vector<MEASUREERROR> m_arrError;
    std::vector<RESIZEREC> m_arrRec;
};
