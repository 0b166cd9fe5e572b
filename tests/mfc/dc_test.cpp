#include "tests/support/census.h"
#include "tests/support/pixels.h"

#include <afxwin.h>
#include <gtest/gtest.h>

namespace
{

constexpr COLORREF kBack = support::DibSurface::kBackground;
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kGreen = RGB(0, 128, 0);

// A window of our own for device contexts of windows.
class DcWindow : public CWnd
{
public:
    DcWindow()
    {
        CreateEx(0, _T("STATIC"), _T(""), WS_POPUP | WS_BORDER | WS_VISIBLE, CRect(10, 10, 110, 60), nullptr,
                 0);
    }
    ~DcWindow() override { DestroyWindow(); }
};

class DcTest : public support::CensusTest
{
public:
    static void SetUpTestSuite()
    {
        // One halftone brush for good, and the system's own brush for window borders.
        CDC::GetHalftoneBrush();
        DcWindow().UpdateWindow();
        CensusTest::SetUpTestSuite();
    }
};

class DcPixelTest : public DcTest
{
protected:
    support::DibSurface m_surface{24, 20};
    CDC& m_dc{m_surface.DC()};
};

TEST_F(DcTest, AttachingSetsBothHandlesAndOwns)
{
    const HDC handle = ::CreateCompatibleDC(nullptr);
    {
        CDC dc;
        EXPECT_FALSE(dc.Attach(nullptr));
        ASSERT_TRUE(dc.Attach(handle));
        EXPECT_EQ(dc.m_hDC, handle);
        EXPECT_EQ(dc.m_hAttribDC, handle);
        EXPECT_EQ(CDC::FromHandle(handle), &dc);
        dc.ReleaseAttribDC();
        EXPECT_EQ(dc.m_hAttribDC, nullptr);
        EXPECT_EQ(dc.GetSafeHdc(), handle);
    }
    EXPECT_EQ(::GetObjectType(handle), 0u);
}

TEST_F(DcTest, AMerelySetOutputIsNotOwned)
{
    const HDC handle = ::CreateCompatibleDC(nullptr);
    {
        CDC dc;
        dc.SetOutputDC(handle);
        dc.SetAttribDC(handle);
        EXPECT_NE(CDC::FromHandle(handle), &dc);
        EXPECT_TRUE(dc.GetDeviceCaps(BITSPIXEL) > 0);
    }
    EXPECT_EQ(::GetObjectType(handle), static_cast<DWORD>(OBJ_MEMDC));
    CDC::DeleteTempMap();
    EXPECT_EQ(::GetObjectType(handle), static_cast<DWORD>(OBJ_MEMDC));

    CDC owner;
    ASSERT_TRUE(owner.Attach(handle));
    EXPECT_EQ(owner.Detach(), handle);
    EXPECT_EQ(owner.m_hAttribDC, nullptr);
    EXPECT_FALSE(owner.DeleteDC());
    ::DeleteDC(handle);
}

TEST_F(DcTest, StateGoesToBothAndAnswersComeFromTheAttributes)
{
    CDC output;
    CDC attributes;
    ASSERT_TRUE(output.CreateCompatibleDC(nullptr));
    ASSERT_TRUE(attributes.CreateCompatibleDC(nullptr));
    ::SetTextColor(output, kRed);
    ::SetTextColor(attributes, kBlue);

    CDC dc;
    dc.SetOutputDC(output);
    dc.SetAttribDC(attributes);
    EXPECT_EQ(dc.GetTextColor(), kBlue);
    EXPECT_EQ(dc.SetTextColor(kGreen), kBlue);
    EXPECT_EQ(::GetTextColor(output), kGreen);
    EXPECT_EQ(::GetTextColor(attributes), kGreen);

    dc.SetMapMode(MM_LOENGLISH);
    EXPECT_EQ(::GetMapMode(output), MM_LOENGLISH);
    dc.SetMapMode(MM_TEXT);
    dc.MoveTo(1, 1);
    dc.LineTo(6, 9);
    EXPECT_TRUE(dc.GetCurrentPosition() == CPoint(6, 9)) << "the attributes follow the drawing";

    CPen pen(PS_SOLID, 1, kRed);
    CPen* old = dc.SelectObject(&pen);
    EXPECT_EQ(::GetCurrentObject(output, OBJ_PEN), pen.m_hObject);
    EXPECT_EQ(dc.GetCurrentPen(), &pen);
    dc.SelectObject(old);

    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateBitmap(4, 4, 1, 1, nullptr));
    CBitmap* oldBitmap = dc.SelectObject(&bitmap);
    EXPECT_EQ(::GetCurrentObject(output, OBJ_BITMAP), bitmap.m_hObject);
    EXPECT_NE(::GetCurrentObject(attributes, OBJ_BITMAP), bitmap.m_hObject);
    dc.SelectObject(oldBitmap);
}

TEST_F(DcTest, SavedStatesOfBothComeBack)
{
    CDC output;
    CDC attributes;
    ASSERT_TRUE(output.CreateCompatibleDC(nullptr));
    ASSERT_TRUE(attributes.CreateCompatibleDC(nullptr));
    ::SaveDC(output); // the two now count differently
    CDC dc;
    dc.SetOutputDC(output);
    dc.SetAttribDC(attributes);
    dc.SetTextColor(kRed);
    const int saved = dc.SaveDC();
    ASSERT_NE(saved, 0);
    dc.SetTextColor(kBlue);
    EXPECT_TRUE(dc.RestoreDC(saved));
    EXPECT_EQ(::GetTextColor(output), kRed);
    EXPECT_EQ(::GetTextColor(attributes), kRed);

    EXPECT_EQ(CDC().SaveDC(), 0);
    EXPECT_FALSE(CDC().RestoreDC(-1));
}

TEST_F(DcTest, SelectingAnswersThePreviousObject)
{
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    CBrush first(kRed);
    CBrush second(kBlue);
    CBrush* stock = dc.SelectObject(&first);
    ASSERT_NE(stock, nullptr);
    EXPECT_TRUE(stock->IsKindOf(RUNTIME_CLASS(CBrush)));
    EXPECT_EQ(dc.SelectObject(&second), &first);
    CGdiObject* generic = &first;
    EXPECT_EQ(dc.SelectObject(generic), &second);
    EXPECT_EQ(dc.SelectStockObject(WHITE_BRUSH), &first);
    EXPECT_EQ(dc.SelectObject(static_cast<CBrush*>(nullptr)), nullptr);
    CBrush empty;
    EXPECT_EQ(dc.SelectObject(&empty), nullptr);

    CRgn region;
    ASSERT_TRUE(region.CreateRectRgn(0, 0, 1, 1));
    EXPECT_EQ(dc.SelectObject(&region), SIMPLEREGION);
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateBitmap(4, 4, 1, 1, nullptr));
    CDC other;
    ASSERT_TRUE(other.CreateCompatibleDC(nullptr));
    CBitmap* old = dc.SelectObject(&bitmap);
    ASSERT_NE(old, nullptr);
    EXPECT_EQ(other.SelectObject(&bitmap), nullptr) << "a bitmap is in one device context at a time";
    dc.SelectObject(old);
}

TEST_F(DcTest, DeviceContextsOfWindowsAreReleased)
{
    DcWindow window;
    ASSERT_NE(window.m_hWnd, nullptr);
    HDC handle = nullptr;
    {
        CClientDC dc(&window);
        handle = dc;
        EXPECT_EQ(dc.GetWindow(), &window);
        EXPECT_EQ(CDC::FromHandle(handle), &dc);
        CRect client;
        window.GetClientRect(&client);
        CRect clip;
        dc.GetClipBox(&clip);
        EXPECT_TRUE(clip == client);
    }
    EXPECT_EQ(::WindowFromDC(handle), nullptr);
    {
        CWindowDC dc(&window);
        CRect clip;
        dc.GetClipBox(&clip);
        EXPECT_TRUE(clip == CRect(0, 0, 100, 50));
    }
    window.Invalidate();
    {
        CPaintDC dc(&window);
        EXPECT_EQ(dc.m_ps.hdc, dc.m_hDC);
        EXPECT_FALSE(CRect(dc.m_ps.rcPaint).IsRectEmpty());
    }
    EXPECT_FALSE(::GetUpdateRect(window, nullptr, FALSE));

    CClientDC screen(nullptr);
    EXPECT_FALSE(screen.IsPrinting());
    CDC memory;
    ASSERT_TRUE(memory.CreateCompatibleDC(&screen));
    EXPECT_EQ(memory.GetWindow(), nullptr);
}

TEST_F(DcTest, AWindowThatIsGoneThrows)
{
    CWnd gone;
    gone.m_hWnd = reinterpret_cast<HWND>(static_cast<INT_PTR>(0xDEAD));
    EXPECT_THROW(CClientDC dc(&gone), CResourceException*);
    gone.m_hWnd = nullptr;
}

TEST_F(DcTest, SizesAreMappedWithoutOrigins)
{
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowExt(100, 100);
    dc.SetViewportExt(200, -50);
    dc.SetViewportOrg(7, 9);
    EXPECT_TRUE(dc.GetViewportOrg() == CPoint(7, 9));
    EXPECT_TRUE(dc.SetViewportOrg(CPoint(1, 1)) == CPoint(7, 9));
    CSize size(10, 20);
    dc.LPtoDP(&size);
    EXPECT_TRUE(size == CSize(20, 10)) << size.cx << ' ' << size.cy;
    dc.DPtoLP(&size);
    EXPECT_TRUE(size == CSize(10, 20));
    CRect rect(0, 0, 10, 20);
    dc.LPtoDP(&rect);
    EXPECT_TRUE(rect == CRect(1, 1, 21, -9));
}

TEST_F(DcTest, HimetricGoesByTheInch)
{
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    const int dpi = dc.GetDeviceCaps(LOGPIXELSX);
    CSize inch(2540, 2540);
    dc.HIMETRICtoDP(&inch);
    EXPECT_EQ(inch.cx, dpi);
    dc.DPtoHIMETRIC(&inch);
    EXPECT_EQ(inch.cx, 2540);
    dc.SetMapMode(MM_LOMETRIC);
    CSize centimetres(100, 100); // in tenths of a millimetre
    dc.LPtoHIMETRIC(&centimetres);
    EXPECT_NEAR(centimetres.cx, 1000, 30) << "whole pixels lie between";
    EXPECT_EQ(dc.GetMapMode(), MM_LOMETRIC) << "the mode in between does not stay";
}

TEST_F(DcTest, ClippingAnswersItsKind)
{
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateBitmap(20, 20, 1, 1, nullptr));
    CBitmap* old = dc.SelectObject(&bitmap);
    EXPECT_EQ(dc.IntersectClipRect(2, 2, 10, 10), SIMPLEREGION);
    EXPECT_EQ(dc.ExcludeClipRect(CRect(4, 4, 6, 6)), COMPLEXREGION);
    EXPECT_FALSE(dc.PtVisible(5, 5));
    EXPECT_TRUE(dc.PtVisible(CPoint(3, 3)));
    CRgn region;
    ASSERT_TRUE(region.CreateRectRgn(0, 0, 5, 5));
    EXPECT_EQ(dc.SelectClipRgn(&region), SIMPLEREGION);
    EXPECT_EQ(dc.SelectClipRgn(nullptr), SIMPLEREGION);
    CRect box;
    dc.GetClipBox(&box);
    EXPECT_TRUE(box == CRect(0, 0, 20, 20));
    dc.SelectObject(old);
    EXPECT_EQ(CDC().SelectClipRgn(nullptr), ERROR);
    EXPECT_FALSE(CDC().PtVisible(0, 0));
}

TEST_F(DcTest, TextIsMeasuredAndNamed)
{
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(120, _T("Arial"), &dc));
    CFont* old = dc.SelectObject(&font);
    const CString text(_T("Measured"));
    CString face;
    const int faceLength = dc.GetTextFace(face);
    EXPECT_EQ(faceLength, face.GetLength());
    EXPECT_FALSE(face.IsEmpty());
    TCHAR few[4]{};
    EXPECT_EQ(dc.GetTextFace(4, few), 3);

    CRect calculated(0, 0, 1, 1);
    const int height = dc.DrawText(text, &calculated, DT_CALCRECT | DT_SINGLELINE);
    EXPECT_EQ(height, calculated.Height());
    EXPECT_EQ(calculated.Width(), dc.GetTextExtent(text).cx);
    // The text itself stays as it is, however little room there is.
    CRect narrow(0, 0, 20, 20);
    dc.DrawText(text, &narrow, DT_END_ELLIPSIS | DT_MODIFYSTRING | DT_SINGLELINE);
    EXPECT_EQ(text, _T("Measured"));
    dc.SelectObject(old);
}

TEST_F(DcPixelTest, SolidRectanglesLeaveTheirColourAsBackground)
{
    m_dc.SetBkColor(kBlue);
    m_dc.FillSolidRect(CRect(3, 4, 9, 8), kRed);
    EXPECT_EQ(m_dc.GetBkColor(), kRed);
    const CRect filled(3, 4, 9, 8);
    support::ExpectPixels(m_surface, [&](int x, int y) { return filled.PtInRect({x, y}) ? kRed : kBack; });
}

TEST_F(DcPixelTest, ThreeDimensionalFramesAreOneUnitWide)
{
    m_dc.Draw3dRect(CRect(2, 3, 12, 9), kRed, kBlue);
    support::ExpectPixels(m_surface, [](int x, int y) {
        const CRect outer(2, 3, 12, 9);
        if (!outer.PtInRect({x, y}) || CRect(3, 4, 11, 8).PtInRect({x, y}))
            return kBack;
        return x == outer.right - 1 || y == outer.bottom - 1 ? kBlue : kRed;
    });
}

TEST_F(DcPixelTest, DragRectanglesDisappearWithoutATrace)
{
    CBrush solid(RGB(255, 255, 255));
    const CRect first(2, 2, 14, 12);
    const CRect second(5, 4, 20, 18);
    const CSize border(2, 3);
    m_dc.DrawDragRect(first, border, nullptr, CSize(0, 0), &solid);
    const COLORREF inverted = kBack ^ RGB(255, 255, 255);
    support::ExpectPixels(m_surface, [&](int x, int y) {
        const bool frame = first.PtInRect({x, y}) && !CRect(4, 5, 12, 9).PtInRect({x, y});
        return frame ? inverted : kBack;
    });
    m_dc.DrawDragRect(second, border, first, border, &solid, &solid);
    support::ExpectPixels(m_surface, [&](int x, int y) {
        const bool frame = second.PtInRect({x, y}) && !CRect(7, 7, 18, 15).PtInRect({x, y});
        return frame ? inverted : kBack;
    });
    // Erased and drawn with different brushes, and thicker than the rectangle is wide.
    m_dc.DrawDragRect(first, CSize(50, 50), second, border, nullptr, &solid);
    EXPECT_EQ(m_surface.Count(kBack), 24 * 20 - 12 * 10 / 2) << "every second pixel of all of it";
    m_dc.DrawDragRect(CRect(), CSize(0, 0), first, CSize(50, 50));
    EXPECT_EQ(m_surface.Count(kBack), 24 * 20);
    CRect clip;
    m_dc.GetClipBox(&clip);
    EXPECT_TRUE(clip == m_surface.Bounds());
}

TEST_F(DcPixelTest, TransfersBetweenSurfaces)
{
    support::DibSurface source(4, 4, kRed);
    source.SetPixel(1, 1, kGreen);
    EXPECT_TRUE(m_dc.BitBlt(0, 0, 4, 4, &source.DC(), 0, 0, SRCCOPY));
    EXPECT_TRUE(m_dc.TransparentBlt(8, 0, 4, 4, &source.DC(), 0, 0, 4, 4, kRed));
    EXPECT_TRUE(m_dc.StretchBlt(0, 8, 8, 8, &source.DC(), 0, 0, 4, 4, SRCCOPY));
    const BLENDFUNCTION opaque{AC_SRC_OVER, 0, 255, 0};
    EXPECT_TRUE(m_dc.AlphaBlend(12, 8, 4, 4, &source.DC(), 0, 0, 4, 4, opaque));
    support::ExpectPixels(m_surface, [](int x, int y) {
        if (x < 4 && y < 4)
            return x == 1 && y == 1 ? kGreen : kRed;
        if (x == 9 && y == 1)
            return kGreen;
        if (x < 8 && y >= 8 && y < 16)
            return x / 2 == 1 && (y - 8) / 2 == 1 ? kGreen : kRed;
        if (x >= 12 && x < 16 && y >= 8 && y < 12)
            return x == 13 && y == 9 ? kGreen : kRed;
        return kBack;
    });
    EXPECT_TRUE(m_dc.BitBlt(0, 0, 24, 20, nullptr, 0, 0, BLACKNESS)) << "no source is needed";
    EXPECT_EQ(m_surface.Count(RGB(0, 0, 0)), 24 * 20);
    EXPECT_FALSE(m_dc.TransparentBlt(0, 0, 4, 4, nullptr, 0, 0, 4, 4, kRed));
}

TEST_F(DcPixelTest, TheHalftoneBrushDithersColours)
{
    m_dc.SetTextColor(kRed);
    m_dc.SetBkColor(kBlue);
    m_dc.FillRect(CRect(0, 0, 8, 8), CDC::GetHalftoneBrush());
    EXPECT_EQ(m_surface.Count(kRed), 32);
    EXPECT_EQ(m_surface.Count(kBlue), 32);
    EXPECT_NE(m_surface.Pixel(0, 0), m_surface.Pixel(1, 0));
    EXPECT_NE(m_surface.Pixel(0, 0), m_surface.Pixel(0, 1));
}

} // namespace
