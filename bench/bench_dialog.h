// Dialogs to measure on: the same template opened as a stock dialog and as a skinned one.
#pragma once

#include "bench/bench.h"
#include "tests/support/dialog_template.h"
#include "vgui/dialogs/gui_dlg.h"

namespace bench
{

class StockDlg : public CDialog
{
};

class SkinnedDlg : public VGuiDlg
{
public:
    SkinnedDlg() : VGuiDlg(0) {}
    ~SkinnedDlg() override { DestroyWindow(); }
};

// Paints a window, its frame and all in it, now and wholly.
inline void RepaintAll(HWND window)
{
    ::RedrawWindow(window, nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

// Opens the template modeless at a place of the screen, in pixels, and paints it.
template <class Dialog>
void Open(Dialog& dialog, const support::DialogTemplate& t, CPoint place)
{
    Require(dialog.CreateIndirect(t.Get(), nullptr), "opening a dialog");
    dialog.SetWindowPos(nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    dialog.ShowWindow(SW_SHOWNOACTIVATE);
    ::RedrawWindow(dialog.m_hWnd, nullptr, nullptr, RDW_ALLCHILDREN | RDW_UPDATENOW);
}

// A stock dialog and a skinned one, both empty, side by side on the screen.
struct DialogPair {
    DialogPair()
    {
        const support::DialogTemplate t(L"bench", 320, 300,
                                        WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN | DS_SETFONT);
        Open(stock, t, CPoint(20, 40));
        Open(ours, t, CPoint(640, 40));
    }
    DialogPair(const DialogPair&) = delete;
    DialogPair& operator=(const DialogPair&) = delete;
    ~DialogPair() { stock.DestroyWindow(); }

    StockDlg stock;
    SkinnedDlg ours;
};

} // namespace bench
