// VPen and VBrush, and the owners and scopes that the library uses inside.
#include "tests/support/census.h"
#include "tests/support/pixels.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"

#include <gtest/gtest.h>

namespace
{

using support::DibSurface;

class DrawHoldersTest : public testing::Test
{
protected:
    DibSurface m_surface{8, 8};
    HDC m_dc = m_surface.DC().m_hDC;
    HGDIOBJ m_pen = ::GetCurrentObject(m_dc, OBJ_PEN);
    HGDIOBJ m_brush = ::GetCurrentObject(m_dc, OBJ_BRUSH);
    support::Census m_census;
};

} // namespace

TEST_F(DrawHoldersTest, PenIsSelectedRecoloredAndTakenBack)
{
    {
        VPen pen(&m_surface.DC(), RGB(1, 2, 3));
        EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_PEN), pen.m_hObject);
        EXPECT_EQ(pen.Color(), RGB(1, 2, 3));
        {
            const VPen inner(m_dc, RGB(7, 8, 9));
            EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_PEN), inner.m_hObject);
        }
        EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_PEN), pen.m_hObject);
        for (int i = 0; i < 100; ++i)
            pen.Color(RGB(i, 0, 0));
        EXPECT_EQ(pen.Color(), RGB(99, 0, 0));
        EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_PEN), pen.m_hObject);
        LOGPEN description = {};
        ASSERT_EQ(::GetObject(pen.m_hObject, sizeof description, &description), int{sizeof description});
        EXPECT_EQ(description.lopnWidth.x, 1);
        EXPECT_EQ(description.lopnStyle, UINT{PS_SOLID});
    }
    EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_PEN), m_pen);
    m_census.ExpectUnchanged();
}

TEST_F(DrawHoldersTest, BrushChangesBetweenColorsAndNone)
{
    {
        VBrush brush(&m_surface.DC(), RGB(1, 2, 3));
        EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_BRUSH), brush.m_hObject);
        EXPECT_EQ(brush.Color(), RGB(1, 2, 3));
        brush.Color(VGNoColor);
        EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_BRUSH), ::GetStockObject(NULL_BRUSH));
        EXPECT_EQ(brush.Color(), VGNoColor);
        const VBrush second(m_dc, VGNoColor);
        EXPECT_EQ(second.Color(), VGNoColor);
        brush.Color(RGB(4, 5, 6));
        EXPECT_EQ(brush.Color(), RGB(4, 5, 6));
        brush.Color(VGNoColor);
    }
    EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_BRUSH), m_brush);
    EXPECT_EQ(::GetObjectType(::GetStockObject(NULL_BRUSH)), DWORD{OBJ_BRUSH});
    m_census.ExpectUnchanged();
}

TEST_F(DrawHoldersTest, WithoutAContextTheyOnlyHold)
{
    {
        VPen pen(static_cast<CDC*>(nullptr), RGB(1, 2, 3));
        VBrush brush(static_cast<HDC>(nullptr), RGB(4, 5, 6));
        EXPECT_EQ(pen.Color(), RGB(1, 2, 3));
        EXPECT_EQ(brush.Color(), RGB(4, 5, 6));
        pen.Color(RGB(7, 7, 7));
        brush.Color(VGNoColor);
        EXPECT_EQ(pen.Color(), RGB(7, 7, 7));
        EXPECT_EQ(brush.Color(), VGNoColor);
    }
    m_census.ExpectUnchanged();
}

TEST_F(DrawHoldersTest, OwnedHandlesAreClosedOnce)
{
    {
        VOwnedBrush first(::CreateSolidBrush(RGB(1, 1, 1)));
        VOwnedBrush second(std::move(first));
        EXPECT_FALSE(first);
        EXPECT_TRUE(second);
        first = std::move(second);
        second.Reset(::CreateSolidBrush(RGB(2, 2, 2)));
        second.Reset(::CreateSolidBrush(RGB(3, 3, 3)));
        const HBRUSH released = first.Release();
        EXPECT_EQ(::GetObjectType(released), DWORD{OBJ_BRUSH});
        ::DeleteObject(released);
    }
    m_census.ExpectUnchanged();
}

TEST_F(DrawHoldersTest, ScopesPutBackWhatWasThere)
{
    const int mode = ::GetBkMode(m_dc);
    const COLORREF color = ::GetTextColor(m_dc);
    {
        const VBkModeScope bkMode(m_dc, mode == OPAQUE ? TRANSPARENT : OPAQUE);
        const VTextColorScope textColor(m_dc, RGB(9, 8, 7));
        const VSelectScope pen(m_dc, ::GetStockObject(WHITE_PEN));
        const VSelectScope nothing(m_dc, nullptr);
        const VSelectScope nowhere(nullptr, ::GetStockObject(WHITE_PEN));
        const VBkModeScope noContext(nullptr, OPAQUE);
        EXPECT_NE(::GetBkMode(m_dc), mode);
        EXPECT_EQ(::GetTextColor(m_dc), RGB(9, 8, 7));
        EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_PEN), ::GetStockObject(WHITE_PEN));
    }
    EXPECT_EQ(::GetBkMode(m_dc), mode);
    EXPECT_EQ(::GetTextColor(m_dc), color);
    EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_PEN), m_pen);
}
