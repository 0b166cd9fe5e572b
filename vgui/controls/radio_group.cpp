#include "vgui/controls/radio_group.h"

namespace
{

bool EndsGroup(HWND window)
{
    return window == nullptr || (::GetWindowLongW(window, GWL_STYLE) & WS_GROUP) != 0;
}

void ExchangeRadio(bool save, HWND window, int index, int& value)
{
    VRadioBtn* const radio = LibraryRadio(window);
    if (save) {
        const bool checked = radio != nullptr ? radio->GetCheck() != 0
                                              : ::SendMessageW(window, BM_GETCHECK, 0, 0) != BST_UNCHECKED;
        if (checked)
            value = index;
    } else if (radio != nullptr) {
        radio->SetCheck(index == value, FALSE); // after which a host's radio button may be gone
        ::InvalidateRect(window, nullptr, TRUE);
    } else {
        ::SendMessageW(window, BM_SETCHECK, index == value, 0);
    }
}

} // namespace

VRadioBtn* LibraryRadio(HWND window)
{
    return DYNAMIC_DOWNCAST(VRadioBtn, CWnd::FromHandlePermanent(window));
}

bool IsRadio(HWND window)
{
    return LibraryRadio(window) != nullptr ||
           (::SendMessageW(window, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0;
}

RadioPlace PlaceInGroup(HWND radio)
{
    RadioPlace place{radio, 0};
    HWND window = radio;
    while ((::GetWindowLongW(window, GWL_STYLE) & WS_GROUP) == 0) {
        window = ::GetWindow(window, GW_HWNDPREV);
        if (window == nullptr)
            break;
        if (IsRadio(window)) {
            place.first = window;
            ++place.index;
        }
    }
    return place;
}

void ExchangeRadioGroup(bool save, HWND first, int& value)
{
    if (save)
        value = -1;
    int index = 0;
    HWND window = first;
    do {
        if (IsRadio(window))
            ExchangeRadio(save, window, index++, value);
        window = ::GetWindow(window, GW_HWNDNEXT);
    } while (!EndsGroup(window));
}
