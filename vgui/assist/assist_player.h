// What the assist dialog wants of something that plays videos.
#pragma once

#include <afxwin.h>
#include <memory>

// Lives as long as its window, which is a child of the dialog.
class VAssistPlayer
{
public:
    virtual ~VAssistPlayer() = default;
    VAssistPlayer(const VAssistPlayer&) = delete;
    VAssistPlayer& operator=(const VAssistPlayer&) = delete;

    // Creates the window, in client coordinates of the parent. False when the system has nothing to play
    // with.
    virtual bool Create(CWnd& parent, const CRect& place) = 0;
    // The window; null before Create and after the parent's end.
    virtual CWnd* Window() = 0;
    // Plays a file, given by its full path.
    virtual void Navigate(LPCWSTR url) = 0;
    virtual void SetFullScreen(BOOL fullScreen) = 0;

protected:
    VAssistPlayer() = default;
};

// The library's player, the web browser control; null where the system has no HTML engine for it.
std::unique_ptr<VAssistPlayer> VGCreateAssistPlayer();
