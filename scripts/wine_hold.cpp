// Keeps a Wine desktop alive: as long as one window program runs, the desktop process and the Wine server
// stay, and programs that are started meanwhile find both ready. Ends with the desktop, at the latest after
// six hours.
#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int)
{
    constexpr UINT sixHours = 6 * 60 * 60 * 1000;
    if (CreateWindowW(L"Static", L"hold", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, instance, nullptr) ==
        nullptr)
        return 1;
    if (SetTimer(nullptr, 0, sixHours, nullptr) == 0)
        return 1;
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.message == WM_TIMER && message.hwnd == nullptr)
            break;
        DispatchMessageW(&message);
    }
    return 0;
}
