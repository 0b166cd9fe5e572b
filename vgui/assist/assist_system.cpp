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

    // The window itself, since what was its object may belong to another one by now.
    void SetOwner(HWND owner) { m_pParentWnd = CWnd::FromHandle(owner); }

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
    // What activates it tells the host, who may close it.
    const HWND window = dialog->m_hWnd;
    dialog->LeaveFullScreen();
    ::ShowWindow(window, SW_MAXIMIZE);
    ::SetForegroundWindow(window);
    if (OpenAssistDlg::s_open == dialog)
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
    made->SetOwner(owner);
    if (OpenAssistDlg::s_open != nullptr)
        OpenAssistDlg::s_open->DestroyWindow();
    OpenAssistDlg* const dialog = OpenAssistDlg::s_open = made.release();
    if (!dialog->Open())
        return false;
    dialog->isOpening = false;
    // By its window: whatever activates it tells the host, who may close it.
    const HWND window = dialog->m_hWnd;
    ::ShowWindow(window, SW_MAXIMIZE);
    ::BringWindowToTop(window);
    ::PostMessage(window, WM_SETFOCUS, 0, 0);
    ::SetForegroundWindow(window);
    return OpenAssistDlg::s_open == dialog;
}
