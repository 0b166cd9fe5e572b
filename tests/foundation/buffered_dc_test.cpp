#include "vgui/foundation/buffered_dc.h"

#include "tests/support/census.h"
#include "tests/support/pixels.h"

namespace
{

constexpr COLORREF kOld = RGB(1, 2, 3);
constexpr COLORREF kNew = RGB(200, 100, 50);

class BufferedDc : public support::CensusTest
{
protected:
    BufferedDc() : m_surface(20, 10, kOld), m_target(m_surface.DC()) {}

    support::DibSurface m_surface;
    CDC& m_target;
};

TEST_F(BufferedDc, ShowsThePictureWhenTheBlockEndsAndOnlyInsideTheRectangle)
{
    const CRect rect(4, 3, 14, 8);
    {
        VBufferedDC dc(m_target, rect);
        dc.FillSolidRect(CRect(0, 0, 20, 10), kNew);
        EXPECT_EQ(m_surface.Pixel(5, 5), kOld) << "painted before the end";
    }
    support::ExpectPixels(m_surface, [&](int x, int y) { return rect.PtInRect({x, y}) ? kNew : kOld; });
}

TEST_F(BufferedDc, KeepsWhatTheTargetShowsWhenAskedTo)
{
    {
        VBufferedDC dc(m_target, CRect(4, 3, 14, 8), VBufferedDC::Start::Target);
        dc.FillSolidRect(CRect(6, 5, 8, 6), kNew);
    }
    const CRect painted(6, 5, 8, 6);
    support::ExpectPixels(m_surface, [&](int x, int y) { return painted.PtInRect({x, y}) ? kNew : kOld; });
}

TEST_F(BufferedDc, TakesTheTargetsTextSettings)
{
    m_target.SetTextColor(kNew);
    m_target.SetBkMode(TRANSPARENT);
    VBufferedDC dc(m_target, CRect(0, 0, 5, 5));
    EXPECT_EQ(dc.GetTextColor(), kNew);
    EXPECT_EQ(dc.GetBkMode(), TRANSPARENT);
    EXPECT_EQ(::GetCurrentObject(dc.m_hDC, OBJ_FONT), ::GetCurrentObject(m_target.m_hDC, OBJ_FONT));
}

TEST_F(BufferedDc, PaintsNothingForAnEmptyRectangle)
{
    {
        VBufferedDC dc(m_target, CRect(5, 5, 5, 9));
        dc.FillSolidRect(CRect(0, 0, 20, 10), kNew);
    }
    EXPECT_EQ(m_surface.Count(kOld), 200);
}

} // namespace
