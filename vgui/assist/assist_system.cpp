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

    bool isOpening = true;
};

bool Retarget(OpenAssistDlg* dialog, LPCWSTR topic)
{
    if (dialog->isOpening)
        return false;
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
    return OpenAssistDlg::s_open == dialog;
}

} // namespace

bool EnterAssistSystem(const wchar_t* topic, CWnd* parent, const CWnd*)
{
    if (OpenAssistDlg::s_open != nullptr)
        return Retarget(OpenAssistDlg::s_open, topic);

    const HWND owner = parent != nullptr ? parent->m_hWnd : nullptr;
    auto made = std::make_unique<OpenAssistDlg>(parent);
    if (!made->LoadTopic(topic))
        return false;
    // Loading runs message boxes. What they let happen may have ended the owner, of which only the window is
    // asked since its object may be a temporary one, or opened another help dialog.
    if (owner != nullptr && !::IsWindow(owner))
        return false;
    if (OpenAssistDlg::s_open != nullptr)
        OpenAssistDlg::s_open->DestroyWindow();
    OpenAssistDlg* const dialog = OpenAssistDlg::s_open = made.release();
    const bool opened = dialog->Open();
    // It deletes itself with its window, which may have failed late or been closed by code of the host's.
    if (OpenAssistDlg::s_open != dialog)
        return false;
    if (!opened) {
        delete dialog;
        return false;
    }
    dialog->isOpening = false;
    dialog->ShowWindow(SW_MAXIMIZE);
    dialog->BringWindowToTop();
    dialog->PostMessage(WM_SETFOCUS);
    dialog->SetForegroundWindow();
    return true;
}
