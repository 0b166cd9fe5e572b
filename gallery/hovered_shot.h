// Pictures of windows with the mouse over one of their controls.
#pragma once

#include "gallery/shot_writer.h"

// Takes the window's picture while the mouse rests on the control with this id, then puts the mouse back.
inline void TakeHovered(ShotWriter& shots, CWnd& window, int controlId, LPCWSTR name)
{
    CRect place;
    window.GetDlgItem(controlId)->GetWindowRect(place);
    CPoint before;
    ::GetCursorPos(&before);
    ::SetCursorPos(place.CenterPoint().x, place.CenterPoint().y);
    HandlePendingMessages();
    shots.TakeAsItIs(window, name);
    ::SetCursorPos(before.x, before.y);
    HandlePendingMessages();
}
