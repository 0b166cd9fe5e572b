// A skinned dialog to put controls on.
#pragma once

#include "tests/support/dialog_template.h"
#include "tests/support/pump.h"
#include "vgui/dialogs/gui_dlg.h"

#include <gtest/gtest.h>

class SkinnedHost : public VGuiDlg
{
public:
    SkinnedHost() : VGuiDlg(0, nullptr) {}
    ~SkinnedHost() override
    {
        if (m_hWnd != nullptr)
            DestroyWindow();
    }

    // Shows the dialog wholly on the screen, active and painted.
    BOOL Open(const support::DialogTemplate& t)
    {
        if (!CreateIndirect(t.Get(), nullptr))
            return FALSE;
        SetWindowPos(nullptr, 200, 150, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        ShowWindow(SW_SHOW);
        SetForegroundWindow();
        UpdateWindow();
        support::PumpMessages();
        return TRUE;
    }
};
