#include "vgui/controls/bmp_static.h"

#include "tests/support/host_test.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/gui_manager.h"
#include "vgui/imaging/dib.h"

#include <algorithm>
// GDI+'s headers count on the names that NOMINMAX takes away.
using std::max;
using std::min;
#include <gdiplus.h>

using namespace support;

namespace
{

using Scaling = VBmpStatic::Scaling;

// In bmp_static_test.rc.
constexpr UINT kPictureResource = 5301;

constexpr COLORREF kLeft = RGB(200, 0, 0);
constexpr COLORREF kRight = RGB(0, 0, 200);
const CSize kPicture(20, 10);
const CRect kPlace(10, 10, 74, 74); // 60 x 60 inside the fence

class BmpStatic : public HostTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.Open());
        ASSERT_TRUE(picture.Create(L"text", WS_CHILD | WS_VISIBLE, kPlace, &host));
        DibSurface surface(kPicture.cx, kPicture.cy, kLeft);
        surface.DC().FillSolidRect(CRect(10, 0, 20, 10), kRight);
        ASSERT_TRUE(dib.Create(surface.Bitmap(), static_cast<HPALETTE>(nullptr)));
    }

    // The colours of some points of the client area, after the control has painted itself.
    [[nodiscard]] std::vector<COLORREF> Colors(const std::vector<CPoint>& points)
    {
        PumpMessages();
        const DibSurface client = CaptureClient(picture.m_hWnd);
        std::vector<COLORREF> colors;
        for (const CPoint& point : points)
            colors.push_back(client.Pixel(point));
        return colors;
    }

    static void WriteBmp(const CString& name, const BITMAPINFOHEADER& header,
                         const std::vector<RGBQUAD>& colors, const void* pixels, size_t size)
    {
        BITMAPFILEHEADER fileHeader = {};
        fileHeader.bfType = 0x4D42;
        fileHeader.bfOffBits =
            static_cast<DWORD>(sizeof fileHeader + sizeof header + colors.size() * sizeof(RGBQUAD));
        fileHeader.bfSize = static_cast<DWORD>(fileHeader.bfOffBits + size);
        CFile file(name, CFile::modeCreate | CFile::modeWrite);
        file.Write(&fileHeader, sizeof fileHeader);
        file.Write(&header, sizeof header);
        file.Write(colors.data(), static_cast<UINT>(colors.size() * sizeof(RGBQUAD)));
        file.Write(pixels, static_cast<UINT>(size));
    }

    // A name for a file in the temporary folder, which goes with the test.
    [[nodiscard]] CString TemporaryFile()
    {
        wchar_t folder[MAX_PATH] = L"";
        wchar_t name[MAX_PATH] = L"";
        ::GetTempPath(MAX_PATH, folder);
        ::GetTempFileName(folder, L"bmp", 0, name);
        files.push_back(name);
        return name;
    }

    void TearDown() override
    {
        for (const CString& name : files)
            ::DeleteFile(name);
        files.clear();
    }

    std::vector<CString> files;
    VBmpStatic picture;
    CDib dib;
    const COLORREF background = ::GetSysColor(COLOR_BTNFACE);
};

} // namespace

TEST_F(BmpStatic, PictureKeepsItsProportionsInTheMiddle)
{
    constexpr struct {
        RECT client;
        SIZE picture;
        Scaling scaling;
        RECT wanted;
    } kCases[] = {
        {{0, 0, 60, 60}, {20, 10}, Scaling::Fit, {0, 15, 60, 45}},
        {{5, 5, 65, 65}, {10, 20}, Scaling::Fit, {20, 5, 50, 65}},
        {{0, 0, 60, 60}, {600, 1}, Scaling::Fit, {0, 29, 60, 30}},
        {{0, 0, 60, 60}, {20, 10}, Scaling::Actual, {20, 25, 40, 35}},
        {{0, 0, 60, 60}, {100, 80}, Scaling::Actual, {-20, -10, 80, 70}},
    };
    for (const auto& one : kCases)
        EXPECT_EQ(VBmpStatic::PictureRect(CRect(one.client), CSize(one.picture), one.scaling),
                  CRect(one.wanted));
}

TEST_F(BmpStatic, ShowsWhatItIsGiven)
{
    const std::vector<CPoint> points{{32, 10}, {5, 32}, {58, 32}, {32, 55}};
    const std::vector<COLORREF> empty(4, background);
    const std::vector<COLORREF> shown{background, kLeft, kRight, background};
    EXPECT_EQ(Colors(points), empty);

    const CString name = TemporaryFile();
    ASSERT_TRUE(dib.Save(name));

    EXPECT_TRUE(picture.SetDib(&dib));
    EXPECT_EQ(Colors(points), shown);
    picture.FreeResources();
    EXPECT_EQ(Colors(points), empty);
    EXPECT_TRUE(picture.SetBmp(static_cast<HBITMAP>(dib.GetBitmap()->m_hObject)));
    EXPECT_EQ(Colors(points), shown);
    picture.FreeResources();
    EXPECT_TRUE(picture.SetBmp(name));
    EXPECT_EQ(Colors(points), shown);
    picture.FreeResources();
    EXPECT_TRUE(picture.LoadBitmapFromBMPFile(name));
    // The picture is the control's own.
    dib.CutRect(CRect(0, 0, 20, 10));
    EXPECT_EQ(Colors(points), shown);
}

TEST_F(BmpStatic, ReadsFilesAndResourcesOfOtherPrograms)
{
    ASSERT_TRUE(picture.SetBmp(kPictureResource));
    EXPECT_EQ(picture.GetDib()->GetWidth(), 13);

    // 32 bits with a red left column: no pixel is lost.
    std::vector<DWORD> rows(20 * 10, RGB(200, 0, 0)); // which is blue: red and blue change places
    for (size_t i = 0; i < rows.size(); i += 20)
        std::fill_n(rows.begin() + static_cast<std::ptrdiff_t>(i), 10, RGB(0, 0, 200));
    BITMAPINFOHEADER header = {sizeof header, 20, 10, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const CString name = TemporaryFile();
    WriteBmp(name, header, {}, rows.data(), rows.size() * sizeof(DWORD));
    for (const bool isBmpOnly : {true, false}) {
        picture.FreeResources();
        ASSERT_TRUE(isBmpOnly ? picture.LoadBitmapFromBMPFile(name) : picture.SetBmp(name));
        for (int x = 0; x < 20; ++x)
            EXPECT_EQ(picture.GetDib()->GetPixel(x, 0), x < 10 ? RGB(0, 0, 200) : RGB(200, 0, 0)) << x;
    }
    // With all but one of millions of pixels missing.
    header.biWidth = header.biHeight = 4000;
    WriteBmp(name, header, {}, rows.data(), sizeof(DWORD));
    EXPECT_FALSE(picture.LoadBitmapFromBMPFile(name));
    EXPECT_EQ(picture.GetDib()->GetWidth(), 20);
}

TEST_F(BmpStatic, ReadsCompressedFilesThatAreWhole)
{
    // Ten rows of ten pixels of each colour, and the image's end.
    std::vector<BYTE> stream;
    for (int y = 0; y < kPicture.cy; ++y)
        stream.insert(stream.end(), {10, 0, 10, 1, 0, static_cast<BYTE>(y + 1 == kPicture.cy)});
    BITMAPINFOHEADER header = {sizeof header, kPicture.cx, kPicture.cy, 1, 8, BI_RLE8, 0, 0, 0, 2, 0};
    header.biSizeImage = static_cast<DWORD>(stream.size());
    const CString name = TemporaryFile();
    WriteBmp(name, header, {{0, 0, 200, 0}, {200, 0, 0, 0}}, stream.data(), stream.size());
    ASSERT_TRUE(picture.LoadBitmapFromBMPFile(name));
    EXPECT_EQ(Colors({{5, 32}, {58, 32}}), (std::vector<COLORREF>{kLeft, kRight}));

    picture.FreeResources();
    WriteBmp(name, header, {{0, 0, 200, 0}, {200, 0, 0, 0}}, stream.data(), stream.size() - 1);
    EXPECT_FALSE(picture.LoadBitmapFromBMPFile(name));
}

TEST_F(BmpStatic, ShowsNothingWhereThereIsNoRoom)
{
    ASSERT_TRUE(picture.SetDib(&dib));
    picture.SetWindowPos(nullptr, 0, 0, 4, 4, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(Colors({{0, 0}, {2, 2}}), (std::vector<COLORREF>(2, background)));
}

TEST_F(BmpStatic, OtherFormatsNeedGdiPlus)
{
    HRSRC resource = ::FindResource(nullptr, L"PICTURE_PNG", RT_RCDATA);
    const CString name = TemporaryFile();
    CFile(name, CFile::modeCreate | CFile::modeWrite)
        .Write(::LockResource(::LoadResource(nullptr, resource)), ::SizeofResource(nullptr, resource));
    const Gdiplus::GdiplusStartupInput input;
    ULONG_PTR token = 0;
    ASSERT_EQ(Gdiplus::GdiplusStartup(&token, &input, nullptr), Gdiplus::Ok);
    EXPECT_TRUE(picture.SetBmp(name));
    EXPECT_EQ(picture.GetDib()->GetWidth(), 13);
    EXPECT_FALSE(picture.LoadBitmapFromBMPFile(name));
    Gdiplus::GdiplusShutdown(token);
}

TEST_F(BmpStatic, TakesWhatAnObjectShowsAtPresent)
{
    // Operations that make the block smaller.
    ASSERT_TRUE(dib.ColorQuantize(16));
    ASSERT_TRUE(picture.SetDib(&dib));
    EXPECT_EQ(picture.GetDib()->GetBitCount(), 4);
    EXPECT_EQ(picture.GetDib()->GetPixel(0, 0), kLeft);
    // A bitmap only.
    picture.FreeResources();
    dib.Destroy();
    ASSERT_TRUE(picture.SetDib(&dib));
    EXPECT_EQ(picture.GetDib()->GetPixel(15, 0), kRight);
}

TEST_F(BmpStatic, KeepsItsPictureWhenThereIsNoOther)
{
    ASSERT_TRUE(picture.SetDib(&dib));
    const CDib* const kept = picture.GetDib();
    const CDib empty;
    EXPECT_FALSE(picture.SetBmp(9999U));
    EXPECT_FALSE(picture.SetBmp(static_cast<LPCWSTR>(nullptr)));
    EXPECT_FALSE(picture.SetBmp(L"C:\\no such file.bmp"));
    EXPECT_FALSE(picture.SetBmp(static_cast<HBITMAP>(nullptr)));
    EXPECT_FALSE(picture.SetDib(nullptr));
    EXPECT_FALSE(picture.SetDib(&empty));
    EXPECT_FALSE(picture.LoadBitmapFromBMPFile(L""));
    EXPECT_EQ(picture.GetDib(), kept);
}

TEST_F(BmpStatic, SelectionDrawsTheFence)
{
    ASSERT_TRUE(picture.SetDib(&dib));
    const std::vector<CPoint> edge{{0, 0}, {1, 32}, {63, 63}, {62, 5}};
    EXPECT_FALSE(picture.GetSelect());
    EXPECT_EQ(Colors(edge), std::vector<COLORREF>(4, background));
    picture.SetSelect(5);
    EXPECT_EQ(picture.GetSelect(), TRUE);
    EXPECT_EQ(Colors(edge), std::vector<COLORREF>(4, VGM.Common.clrHot));
    EXPECT_EQ(Colors({{2, 32}, {61, 32}}), (std::vector<COLORREF>{kLeft, kRight}));
    picture.EnableWindow(FALSE);
    EXPECT_EQ(Colors(edge), std::vector<COLORREF>(4, VGM.Common.clrGray));
    picture.SetSelect(FALSE);
    EXPECT_EQ(Colors(edge), std::vector<COLORREF>(4, background));
}

TEST_F(BmpStatic, DisabledPictureFadesAndTextStaysHidden)
{
    ASSERT_TRUE(picture.SetDib(&dib));
    picture.SetScaling(Scaling::Actual);
    const std::vector<CPoint> points{{25, 32}, {38, 32}, {5, 32}};
    EXPECT_EQ(Colors(points), (std::vector<COLORREF>{kLeft, kRight, background}));
    picture.SetWindowText(L"WWWWWWWWWWWWWWWWWWWWW");
    const std::vector<CPoint> all = [] {
        std::vector<CPoint> places;
        for (int i = 0; i < 64 * 20; ++i)
            places.emplace_back(i % 64, i / 64);
        return places;
    }();
    EXPECT_EQ(Colors(all), std::vector<COLORREF>(all.size(), background));

    picture.EnableWindow(FALSE);
    const COLORREF faded = Colors(points)[0];
    EXPECT_GT(GetGValue(faded), 100);
    EXPECT_LT(GetGValue(faded), GetGValue(background));
    picture.EnableWindow();
    EXPECT_EQ(Colors(points)[0], kLeft);

    // Printing draws the same picture.
    DibSurface surface(64, 64);
    picture.SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(surface.DC().m_hDC), PRF_CLIENT);
    EXPECT_TRUE(AreasEqual(surface, surface.Bounds(), CaptureClient(picture.m_hWnd), {0, 0}));
}
