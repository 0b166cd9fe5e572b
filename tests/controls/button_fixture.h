// What the tests of the buttons share: a host with standard buttons to subclass, and items to draw.
#pragma once

#include "tests/foundation/opened_links.h"
#include "tests/support/host_test.h"
#include "vgui/controls/buttons.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

#include <string>
#include <vector>

inline constexpr UINT kButtonId = 501;
inline const CRect kPlace(20, 20, 120, 50);

// Resources of the test program, in image_button_test.rc.
inline constexpr int kTestIcon = 5101;
inline constexpr int kTestMenu = 5102;
inline constexpr int kTestString = 5103;
inline constexpr UINT kFirstCommand = 5104;
inline constexpr UINT kSecondCommand = 5105;
inline constexpr int kNoResource = 5199;
inline constexpr int kFrameworkCursor = 30980;

// A button with its inside open.
template <class Button>
class Opened : public Button
{
public:
    using Button::bitmaps;
    using Button::bkDC;
    using Button::checked;
    using Button::colors;
    using Button::cursor;
    using Button::disabled;
    using Button::drawBorder;
    using Button::flat;
    using Button::focused;
    using Button::hovering;
    using Button::icons;
    using Button::imageAlign;
    using Button::isDefault;
    using Button::isToggle;
    using Button::menuShown;
    using Button::pressed;
    using Button::textAlign;
    using Button::toolTip;
    using Button::typeStyle;
    using Button::url;

    using Button::CreateBitmapMask;
    using Button::OnDrawBackground;
    using Button::OnDrawBorder;
    using Button::PrepareImageRect;
};

// A standard button as a dialog template would create it.
inline HWND MakeStandard(CWnd& parent, DWORD type, UINT id = kButtonId, LPCWSTR text = L"button",
                         CRect place = kPlace)
{
    return ::CreateWindowExW(0, L"BUTTON", text, WS_CHILD | WS_VISIBLE | type, place.left, place.top,
                             place.Width(), place.Height(), parent.m_hWnd,
                             reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
}

// Draws the button as an item in the given state (ODS_...) on a surface whose untouched pixels keep
// DibSurface::kBackground.
inline support::DibSurface DrawnItem(CButton& button, UINT state = 0)
{
    CRect client;
    button.GetClientRect(client);
    support::DibSurface surface(client.Width(), client.Height());
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_BUTTON;
    item.hwndItem = button.m_hWnd;
    item.itemState = state;
    item.hDC = surface.DC().m_hDC;
    item.rcItem = client;
    button.DrawItem(&item);
    return surface;
}

// The smallest rectangle around all pixels of a colour; inverted when there are none.
inline CRect InkBox(const support::DibSurface& drawn, COLORREF ink)
{
    CRect box(drawn.Width(), drawn.Height(), 0, 0);
    for (int y = 0; y < drawn.Height(); ++y)
        for (int x = 0; x < drawn.Width(); ++x)
            if (drawn.Pixel(x, y) == ink)
                box.SetRect(std::min<int>(box.left, x), std::min<int>(box.top, y),
                            std::max<int>(box.right, x + 1), std::max<int>(box.bottom, y + 1));
    return box;
}

// A host window with one button of the class, which has subclassed a standard one.
template <class Button>
class ButtonTest : public support::HostTest
{
protected:
    void Open(DWORD type = BS_PUSHBUTTON, LPCWSTR text = L"button")
    {
        if (this->host.m_hWnd == nullptr) {
            ASSERT_TRUE(host.Open({300, 200}, WS_POPUP));
        }
        ASSERT_TRUE(button.SubclassWindow(MakeStandard(host, type | WS_TABSTOP, kButtonId, text)));
        button.UpdateWindow();
        support::PumpMessages();
    }
    void Close() { button.DestroyWindow(); }
    [[nodiscard]] int Clicks() const
    {
        int reached = 0;
        for (const support::RecordedMessage& message : host.Messages(WM_COMMAND))
            reached += message.Id() == kButtonId && message.Code() == BN_CLICKED && message.reachedParent;
        return reached;
    }

    Opened<Button> button;
};
