// The progress bar in the shared look.
#pragma once

#include "vgui/export.h"

#include <afxcmn.h>

// A progress bar of blocks, VGM.Progress.nStep pixels from one to the next, or of one piece (PBS_SMOOTH),
// shaded from VGM.Progress.clrFrom to clrTo; grey while it is disabled. It grows to the right, or upwards
// (PBS_VERTICAL). A colour of the host's own (SetBarColor, SetBkColor) takes the place of ours.
//
// A marquee (PBS_MARQUEE) shows no bar until SetMarquee starts it; stopped, it shows none again.
class VGUI_API VProgressCtrl : public CProgressCtrl
{
    DECLARE_DYNAMIC(VProgressCtrl)

public:
    VProgressCtrl() = default;

    // The length in pixels of a bar that shows pos, in a control of this length; what is out of the range
    // counts as its nearest end, and an empty range shows nothing.
    static int BarLength(int length, int lower, int upper, int pos);

protected:
    // Paints the whole client area.
    void Draw(CDC& dc);

    void PreSubclassWindow() override;
    afx_msg void OnNcPaint();
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg LRESULT OnPrintClient(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnSetMarquee(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    bool m_bMarquee = false;  // the marquee runs
    int m_nMarqueeOffset = 0; // how far its head has come, pixels

private:
    struct Span {
        int from;
        int to;
    };
    [[nodiscard]] Span GetSpan(int length);
    void DrawBar(CDC& dc, const CRect& client);
};
