// What most tests of a control begin with: a host window, real input, and pictures of what is shown.
#pragma once

#include "tests/support/census.h"
#include "tests/support/input.h"
#include "tests/support/pixels.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"

#include <afxcmn.h>

namespace support
{

// A window's place in the client coordinates of its parent.
[[nodiscard]] inline CRect PlaceOf(const CWnd& window)
{
    CRect place;
    window.GetWindowRect(place);
    window.GetParent()->ScreenToClient(place);
    return place;
}

// The base of suites with a host window. The suite opens it; nothing is put into its top left corner.
class HostTest : public CensusTest
{
protected:
    // Moves the mouse off all controls.
    void MoveAside() const { MoveTo(ClientToScreen(host.m_hWnd, {2, 2})); }

    HostWnd host;
};

// The tool tip's text for a tool.
[[nodiscard]] inline CString TipText(const CToolTipCtrl& tip, CWnd* tool, UINT_PTR id = 0)
{
    CString text;
    tip.GetText(text, tool, id);
    return text;
}

// Adds one square picture of a colour to an image list.
inline void AddSquare(CImageList& images, int size, COLORREF color)
{
    DibSurface square(size, size, color);
    BITMAP bits{};
    ::GetObject(square.Bitmap(), sizeof bits, &bits);
    CBitmap picture;
    picture.CreateBitmap(size, size, 1, 32, bits.bmBits);
    images.Add(&picture, DibSurface::kBackground);
}

} // namespace support
