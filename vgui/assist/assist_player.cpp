#include "vgui/assist/assist_player.h"

#include "vgui/assist/media.h"
#include "vgui/assist/ole_scope.h"

namespace
{

class PlayerView : public CMediaCtrl
{
public:
    // Escape is the dialog's; the browser would take it to stop what it loads.
    BOOL PreTranslateMessage(MSG* pMsg) override
    {
        const bool isEscape = pMsg->message == WM_KEYDOWN && pMsg->wParam == VK_ESCAPE;
        return !isEscape && CMediaCtrl::PreTranslateMessage(pMsg);
    }
};

class BrowserPlayer final : public VAssistPlayer
{
public:
    bool Create(CWnd& parent, const CRect& place) override
    {
        return m_view.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, place, &parent,
                             AFX_IDW_PANE_FIRST) != FALSE;
    }
    CWnd* Window() override { return &m_view; }
    void Navigate(LPCWSTR url) override { m_view.Navigate(url); }
    void SetFullScreen(BOOL fullScreen) override { m_view.SetFullScreen(fullScreen); }

private:
    const OleScope m_ole; // the host need not have COM
    PlayerView m_view;
};

} // namespace

std::unique_ptr<VAssistPlayer> VGCreateAssistPlayer()
{
    return VGHasHtmlEngine() ? std::make_unique<BrowserPlayer>() : nullptr;
}
