// The notice of the assist system.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>

// A modal dialog with a headline and a longer text. Its template is the library's: DoModal finds it as long
// as the host has none with the id 5013.
class VGUI_API CAssistMsg : public CDialog
{
    DECLARE_DYNAMIC(CAssistMsg)

public:
    // What the notice is about.
    enum Mode : int {
        MissingEntry = 0, // text is a topic without an entry in AssistSystem.ini: shows the record to add
        Incomplete = 1    // any other number does, too: text is what is to be said
    };

    // parent: the owner, null for the main window.
    explicit CAssistMsg(CWnd* parent = nullptr);

    // What to show, before DoModal.
    void SetMsg(LPCWSTR text, int mode);

    // Shows the notice about a topic, with the library's template in any case.
    static void ShowMissingEntry(LPCWSTR topic);

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;

    CStatic m_stcHeadline;      // the headline
    CEdit m_edtBody;            // the longer text
    int m_nMode = MissingEntry; // a Mode
    CString m_strText;          // of SetMsg
};
