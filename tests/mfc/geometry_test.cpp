#include <atltypes.h>
#include <gtest/gtest.h>

namespace
{

TEST(GeometryTest, PackedWordsAreSigned)
{
    const CPoint point(MAKELPARAM(static_cast<WORD>(-3), 7));
    EXPECT_EQ(point.x, -3);
    EXPECT_EQ(point.y, 7);

    const CSize size(static_cast<DWORD>(MAKELONG(5, static_cast<WORD>(-1))));
    EXPECT_EQ(size.cx, 5);
    EXPECT_EQ(size.cy, -1);
}

TEST(GeometryTest, PointsSizesAndRectanglesMix)
{
    const CPoint point(25, -19);
    EXPECT_TRUE(point + CSize(15, 5) == CPoint(40, -14));
    EXPECT_TRUE(point - CPoint(15, 5) == CSize(10, -24));
    EXPECT_TRUE(-point == CPoint(-25, 19));

    const CRect rect(125, 219, 325, 419);
    EXPECT_TRUE(point + &rect == CRect(150, 200, 350, 400));
    EXPECT_TRUE(point - &rect == CRect(100, 238, 300, 438));
    EXPECT_TRUE(CSize(1, 2) + &rect == CRect(126, 221, 326, 421));
    // A size takes itself away from the point, not the point from itself.
    EXPECT_TRUE(CSize(1, 2) - CPoint(10, 10) == CPoint(9, 8));
}

TEST(GeometryTest, CornersAreTheRectanglesOwn)
{
    CRect rect(10, 20, 30, 40);
    rect.TopLeft() = CPoint(1, 2);
    rect.BottomRight().Offset(5, 6);
    rect.TopLeft().x += 3;
    EXPECT_TRUE(rect == CRect(4, 2, 35, 46)) << rect.left << ' ' << rect.top << ' ' << rect.right;
    EXPECT_EQ(rect.Width(), 31);
    EXPECT_TRUE(rect.Size() == CSize(31, 44));
}

TEST(GeometryTest, EdgesBelongToTheTopLeft)
{
    const CRect rect(5, 5, 100, 100);
    EXPECT_TRUE(rect.PtInRect(CPoint(5, 65)));
    EXPECT_TRUE(rect.PtInRect(CPoint(88, 5)));
    EXPECT_FALSE(rect.PtInRect(CPoint(35, 100)));
    EXPECT_FALSE(rect.PtInRect(CPoint(100, 98)));
}

TEST(GeometryTest, EmptyIsNotNull)
{
    EXPECT_TRUE(CRect().IsRectNull());
    const CRect thin(3, 3, 3, 9);
    EXPECT_TRUE(thin.IsRectEmpty());
    EXPECT_FALSE(thin.IsRectNull());
    EXPECT_TRUE(CRect(9, 0, 3, 5).IsRectEmpty());
}

TEST(GeometryTest, RectangleOperandsMoveSides)
{
    const CRect rect(10, 10, 50, 50);
    const CRect sides(1, 2, 3, 4);
    EXPECT_TRUE(rect + &sides == CRect(9, 8, 53, 54));
    EXPECT_TRUE(rect - &sides == CRect(11, 12, 47, 46));
    EXPECT_TRUE(rect + CPoint(1, 2) == CRect(11, 12, 51, 52));
    EXPECT_TRUE(rect - CSize(1, 2) == CRect(9, 8, 49, 48));

    CRect changed(rect);
    changed.DeflateRect(1, 2);
    EXPECT_TRUE(changed == CRect(11, 12, 49, 48));
    changed.InflateRect(1, 2, 3, 4);
    EXPECT_TRUE(changed == CRect(10, 10, 52, 52));
    changed.MoveToXY(0, -5);
    EXPECT_TRUE(changed == CRect(0, -5, 42, 37));
    changed.MoveToX(8);
    EXPECT_TRUE(changed == CRect(8, -5, 50, 37));
}

TEST(GeometryTest, NormalizingSwapsEachAxisAlone)
{
    CRect flipped(30, 5, 10, 25);
    flipped.NormalizeRect();
    EXPECT_TRUE(flipped == CRect(10, 5, 30, 25));
    CRect both(30, 25, 10, 5);
    both.NormalizeRect();
    EXPECT_TRUE(both == CRect(10, 5, 30, 25));
}

TEST(GeometryTest, CombiningRectangles)
{
    const CRect tall(100, 0, 200, 300);
    const CRect wide(0, 100, 300, 200);
    EXPECT_TRUE((tall & wide) == CRect(100, 100, 200, 200));
    EXPECT_TRUE((tall | wide) == CRect(0, 0, 300, 300));

    CRect apart(1, 1, 2, 2);
    EXPECT_FALSE(apart.IntersectRect(tall, CRect(500, 0, 600, 10)));
    EXPECT_TRUE(apart.IsRectNull());

    CRect rest;
    // An overlap in a corner only cannot be taken away.
    rest.SubtractRect(CRect(10, 10, 100, 100), CRect(50, 50, 150, 150));
    EXPECT_TRUE(rest == CRect(10, 10, 100, 100));
    rest.SubtractRect(CRect(10, 10, 100, 100), CRect(50, 10, 150, 150));
    EXPECT_TRUE(rest == CRect(10, 10, 50, 100));
}

} // namespace
