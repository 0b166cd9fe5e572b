// A static control that shows a picture.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>
#include <memory>

class CDib;

// Shows a picture in its client area, on the dialog's background colour, and a fence around it when it is
// selected. The picture is a copy: what it was taken from stays its owner's and may go. It is set with or
// without a window, and stays until another one is set or FreeResources is called. A disabled control shows
// it faded.
//
// The control takes any static style; with SS_NOTIFY the parent is told of clicks. Its text is kept but not
// shown. Coordinates are client pixels.
class VGUI_API VBmpStatic : public CStatic
{
    DECLARE_DYNAMIC(VBmpStatic)

public:
    // How large the picture is shown.
    enum class Scaling {
        Fit,    // as large as the client area allows, with the picture's proportions
        Actual, // pixel by pixel; what does not fit is cut off on all sides alike
    };

    VBmpStatic();
    ~VBmpStatic() override;
    VBmpStatic(const VBmpStatic&) = delete;
    VBmpStatic& operator=(const VBmpStatic&) = delete;

    // Set the picture; FALSE, with the present one kept, when there is none to be had.

    // A bitmap resource, looked for along the chain of modules.
    BOOL SetBmp(UINT nResourceID);
    // A file: BMP, or anything else that GDI+ reads if the host has started GDI+. Nothing is shown to the
    // user when it cannot be read.
    BOOL SetBmp(LPCWSTR fileName);
    // Any bitmap that is not selected in a device context.
    BOOL SetBmp(HBITMAP hBitmap);
    // The object's image, or what it shows if it has a bitmap only. FALSE for null and an empty object.
    BOOL SetDib(const CDib* pDib);
    // A BMP file only.
    BOOL LoadBitmapFromBMPFile(LPCWSTR fileName);
    // Lets the picture go.
    void FreeResources();
    // The picture; it stays the control's and lasts until another one is set. Null for none.
    [[nodiscard]] const CDib* GetDib() const { return m_dib.get(); }

    // Whether the fence is drawn.
    void SetSelect(BOOL bSelect);
    // As set by SetSelect, FALSE at first.
    [[nodiscard]] BOOL GetSelect() const { return m_bSelect; }

    // Fit at first.
    void SetScaling(Scaling scaling);
    // As set by SetScaling.
    [[nodiscard]] Scaling GetScaling() const { return m_scaling; }

    // Where a picture of that size lies in a client area: centred. It reaches beyond the area if it does not
    // fit and is not scaled.
    [[nodiscard]] static CRect PictureRect(const CRect& client, CSize picture, Scaling scaling);

protected:
    // Draws the fence of a selected control, over the picture: two lines along the client area's edge, grey
    // when the control is disabled.
    virtual void DrawOutFence(CDC* pDC, const CRect& client);

    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg LRESULT OnPrintClient(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnSetText(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    BOOL Take(std::unique_ptr<CDib> dib);
    void Draw(CDC& dc);
    void DrawPicture(CDC& dc, const CRect& client);
    void Refresh();

    std::unique_ptr<CDib> m_dib; // null for no picture
    BOOL m_bSelect = FALSE;
    Scaling m_scaling = Scaling::Fit;
};
