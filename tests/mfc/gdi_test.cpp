#include "tests/support/census.h"

#include <afxwin.h>
#include <gtest/gtest.h>
#include <vector>

namespace
{

class GdiObjectTest : public support::CensusTest
{
};

class GdiRegionTest : public support::CensusTest
{
};

TEST_F(GdiObjectTest, AnObjectOwnsWhatItMade)
{
    HGDIOBJ handle = nullptr;
    {
        CPen pen(PS_SOLID, 3, RGB(1, 2, 3));
        handle = pen.GetSafeHandle();
        EXPECT_EQ(pen.GetObjectType(), static_cast<UINT>(OBJ_PEN));
        EXPECT_EQ(CPen::FromHandle(pen), &pen);
    }
    EXPECT_EQ(::GetObjectType(handle), 0u);
}

TEST_F(GdiObjectTest, DetachingPassesTheHandleOn)
{
    HGDIOBJ handle = nullptr;
    {
        CBrush brush(RGB(1, 2, 3));
        handle = brush.Detach();
        EXPECT_EQ(brush.GetSafeHandle(), nullptr);
        EXPECT_EQ(brush.Detach(), nullptr);
        EXPECT_FALSE(brush.DeleteObject());
        EXPECT_NE(CGdiObject::FromHandle(handle), &brush);
    }
    EXPECT_EQ(::GetObjectType(handle), static_cast<DWORD>(OBJ_BRUSH));

    CBrush owner;
    EXPECT_FALSE(owner.Attach(nullptr));
    EXPECT_TRUE(owner.Attach(handle));
    EXPECT_EQ(CGdiObject::FromHandle(handle), &owner);
    EXPECT_TRUE(owner.DeleteObject());
    EXPECT_EQ(owner.m_hObject, nullptr);
}

TEST_F(GdiObjectTest, TemporaryObjectsHaveTheFittingClassAndOwnNothing)
{
    struct Case {
        HGDIOBJ handle;
        CRuntimeClass* expected;
    };
    const LOGBRUSH solid{BS_SOLID, RGB(9, 9, 9), 0};
    const Case cases[] = {
        {::CreatePen(PS_DOT, 1, 0), RUNTIME_CLASS(CPen)},
        {::ExtCreatePen(PS_GEOMETRIC, 2, &solid, 0, nullptr), RUNTIME_CLASS(CPen)},
        {::CreateSolidBrush(0), RUNTIME_CLASS(CBrush)},
        {::CreateBitmap(2, 2, 1, 1, nullptr), RUNTIME_CLASS(CBitmap)},
        {::CreateRectRgn(0, 0, 1, 1), RUNTIME_CLASS(CRgn)},
        {::CreateFont(10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, nullptr), RUNTIME_CLASS(CFont)},
        {::CreateHalftonePalette(nullptr), RUNTIME_CLASS(CPalette)},
    };
    for (const Case& c : cases) {
        ASSERT_NE(c.handle, nullptr) << c.expected->m_lpszClassName;
        CGdiObject* object = CGdiObject::FromHandle(c.handle);
        EXPECT_EQ(object->GetRuntimeClass(), c.expected) << c.expected->m_lpszClassName;
        EXPECT_EQ(object->m_hObject, c.handle);
        EXPECT_EQ(CGdiObject::FromHandle(c.handle), object) << "one object per handle";
    }
    CGdiObject::DeleteTempMap();
    for (const Case& c : cases) {
        EXPECT_NE(::GetObjectType(c.handle), 0u) << c.expected->m_lpszClassName;
        ::DeleteObject(c.handle);
    }
    EXPECT_EQ(CGdiObject::FromHandle(nullptr), nullptr);
}

TEST_F(GdiObjectTest, ATemporaryObjectServesAReusedHandle)
{
    const HBRUSH brush = ::CreateSolidBrush(RGB(1, 1, 1));
    CGdiObject* temporary = CGdiObject::FromHandle(brush);
    EXPECT_TRUE(temporary->DeleteObject());
    EXPECT_EQ(temporary->m_hObject, nullptr);
    // As if the system gave the value to a new object.
    EXPECT_EQ(CGdiObject::FromHandle(brush)->m_hObject, brush);
    CGdiObject::DeleteTempMap();
}

TEST_F(GdiObjectTest, ConstructorsThrowWhereCreatorsAnswerFalse)
{
    CBrush brush;
    EXPECT_FALSE(brush.CreatePatternBrush(nullptr));
    EXPECT_FALSE(brush.CreateBrushIndirect(nullptr));
    EXPECT_FALSE(brush.CreateDIBPatternBrush(static_cast<const void*>(nullptr), DIB_RGB_COLORS));
    CBitmap empty;
    EXPECT_THROW(CBrush pattern(&empty), CResourceException*);
}

TEST_F(GdiObjectTest, StockObjectsSurviveTheirWrapper)
{
    {
        CBrush brush;
        ASSERT_TRUE(brush.CreateStockObject(WHITE_BRUSH));
        LOGBRUSH info{};
        EXPECT_NE(brush.GetLogBrush(&info), 0);
        EXPECT_EQ(info.lbColor, RGB(255, 255, 255));
    }
    EXPECT_EQ(::GetObjectType(::GetStockObject(WHITE_BRUSH)), static_cast<DWORD>(OBJ_BRUSH));
}

TEST_F(GdiObjectTest, PointFontsAreConvertedForTheirDevice)
{
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    const int dpi = dc.GetDeviceCaps(LOGPIXELSY);
    LOGFONT info{};

    CFont text;
    ASSERT_TRUE(text.CreatePointFont(120, _T("Arial"), &dc));
    ASSERT_NE(text.GetLogFont(&info), 0);
    EXPECT_EQ(info.lfHeight, -::MulDiv(dpi, 120, 720));
    EXPECT_STREQ(info.lfFaceName, _T("Arial"));

    // 12 points are 1/6 inch: 167 units of 0.001 inch, give or take a rounded pixel.
    dc.SetMapMode(MM_HIENGLISH);
    CFont scaled;
    ASSERT_TRUE(scaled.CreatePointFont(120, _T("Arial"), &dc));
    ASSERT_NE(scaled.GetLogFont(&info), 0);
    EXPECT_LT(info.lfHeight, 0);
    CSize height(0, -info.lfHeight);
    dc.LPtoDP(&height);
    CSize wanted(0, 167);
    dc.LPtoDP(&wanted);
    EXPECT_NEAR(height.cy, wanted.cy, 1);

    CFont cut;
    const CString longName(_T('x'), 200);
    EXPECT_TRUE(cut.CreatePointFont(90, longName));
    EXPECT_FALSE(cut.CreateFontIndirect(nullptr));
}

TEST_F(GdiObjectTest, BitmapBitsGoInAndOut)
{
    CBitmap bitmap;
    const WORD rows[2] = {0x00FF, 0x0F0F};
    ASSERT_TRUE(bitmap.CreateBitmap(16, 2, 1, 1, rows));
    BITMAP info{};
    EXPECT_NE(bitmap.GetBitmap(&info), 0);
    EXPECT_EQ(info.bmWidth, 16);
    WORD read[2]{};
    EXPECT_EQ(bitmap.GetBitmapBits(sizeof(read), read), sizeof(read));
    EXPECT_EQ(read[1], rows[1]);
    EXPECT_TRUE(bitmap.SetBitmapDimension(30, 40) == CSize(0, 0));
    EXPECT_TRUE(bitmap.GetBitmapDimension() == CSize(30, 40));

    CBitmap missing;
    EXPECT_FALSE(missing.LoadBitmap(_T("THERE IS NO SUCH BITMAP")));
    EXPECT_FALSE(missing.CreateCompatibleBitmap(nullptr, 1, 1));
    EXPECT_EQ(missing.GetSafeHandle(), nullptr);
}

TEST_F(GdiObjectTest, PaletteEntriesAreCountedAndRead)
{
    std::vector<BYTE> memory(sizeof(LOGPALETTE) + 3 * sizeof(PALETTEENTRY));
    auto* log = static_cast<LOGPALETTE*>(static_cast<void*>(memory.data()));
    log->palVersion = 0x300;
    log->palNumEntries = 4;
    for (BYTE i = 0; i < 4; ++i)
        log->palPalEntry[i] = {static_cast<BYTE>(i * 80), 0, 0, 0};
    CPalette palette;
    ASSERT_TRUE(palette.CreatePalette(log));
    EXPECT_EQ(palette.GetEntryCount(), 4);
    EXPECT_EQ(palette.GetNearestPaletteIndex(RGB(150, 0, 0)), 2u);
    PALETTEENTRY entries[2]{};
    EXPECT_EQ(palette.GetPaletteEntries(2, 2, entries), 2u);
    EXPECT_EQ(entries[1].peRed, 240);
    EXPECT_TRUE(palette.ResizePalette(6));
    EXPECT_EQ(palette.GetEntryCount(), 6);
    EXPECT_EQ(CPalette().GetEntryCount(), 0);
}

TEST_F(GdiRegionTest, CombiningTellsTheKind)
{
    CRgn left;
    CRgn right;
    CRgn result;
    ASSERT_TRUE(left.CreateRectRgn(0, 0, 10, 10));
    ASSERT_TRUE(right.CreateRectRgn(5, 5, 15, 15));
    EXPECT_EQ(result.CombineRgn(&left, &right, RGN_AND), ERROR) << "the result has to exist";
    ASSERT_TRUE(result.CreateRectRgn(0, 0, 1, 1));

    EXPECT_EQ(result.CombineRgn(&left, &right, RGN_AND), SIMPLEREGION);
    CRect box;
    result.GetRgnBox(&box);
    EXPECT_TRUE(box == CRect(5, 5, 10, 10));
    EXPECT_EQ(result.CombineRgn(&left, &right, RGN_XOR), COMPLEXREGION);
    EXPECT_FALSE(result.PtInRegion(7, 7));
    EXPECT_TRUE(result.PtInRegion(CPoint(2, 2)));
    EXPECT_EQ(right.OffsetRgn(100, 0), SIMPLEREGION);
    EXPECT_EQ(result.CombineRgn(&left, &right, RGN_AND), NULLREGION);

    EXPECT_EQ(result.CopyRgn(&left), SIMPLEREGION);
    EXPECT_TRUE(result.EqualRgn(&left));
    EXPECT_FALSE(result.EqualRgn(&right));
    EXPECT_FALSE(result.EqualRgn(nullptr));
    EXPECT_EQ(result.CopyRgn(nullptr), ERROR);
}

} // namespace
