#include "vgui/assist/assist_system.h"

#include <memory>

namespace
{

// The one help dialog of the process.
class OpenAssistDlg : public CAssistSystemDlg
{
public:
    explicit OpenAssistDlg(CWnd* parent) : CAssistSystemDlg(parent) {}
    OpenAssistDlg(const OpenAssistDlg&) = delete;
    OpenAssistDlg& operator=(const OpenAssistDlg&) = delete;
    ~OpenAssistDlg() override
    {
        if (s_open == this)
            s_open = nullptr;
    }

    static inline OpenAssistDlg* s_open = nullptr; // null when there is none; owns itself
};

bool Retarget(OpenAssistDlg* dialog, LPCWSTR topic)
{
    if (!dialog->LoadTopic(topic)) {
        // The user may have closed it meanwhile.
        if (OpenAssistDlg::s_open == dialog)
            dialog->DestroyWindow();
        return false;
    }
    dialog->LeaveFullScreen();
    dialog->ShowWindow(SW_MAXIMIZE);
    dialog->SetForegroundWindow();
    dialog->FillVideoList();
    return true;
}

} // namespace

bool EnterAssistSystem(const wchar_t* topic, CWnd* parent, const CWnd*)
{
    if (OpenAssistDlg::s_open != nullptr)
        return Retarget(OpenAssistDlg::s_open, topic);

    auto made = std::make_unique<OpenAssistDlg>(parent);
    if (!made->LoadTopic(topic))
        return false;
    // Loading runs message boxes, and what they let happen may have opened another help dialog.
    if (OpenAssistDlg::s_open != nullptr)
        OpenAssistDlg::s_open->DestroyWindow();
    OpenAssistDlg* const dialog = OpenAssistDlg::s_open = made.release();
    if (!dialog->Open()) {
        // Depending on how far it came, it has deleted itself.
        delete OpenAssistDlg::s_open;
        return false;
    }
    dialog->ShowWindow(SW_MAXIMIZE);
    dialog->BringWindowToTop();
    dialog->PostMessage(WM_SETFOCUS);
    dialog->SetForegroundWindow();
    return true;
}
