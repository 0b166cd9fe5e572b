// The glowing text, fonts, and the parent's background colour.
#include "tests/support/host_test.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"

#include <climits>
#include <cwchar>

namespace
{

using support::DibSurface;

constexpr COLORREF kBack = DibSurface::kBackground;

// A font without grey edges, so that a pixel is either letter or not.
HFONT SharpFont()
{
    LOGFONT description = {};
    description.lfHeight = -16;
    description.lfQuality = NONANTIALIASED_QUALITY;
    ::lstrcpyn(description.lfFaceName, L"Arial", LF_FACESIZE);
    return ::CreateFontIndirect(&description);
}

// What of the surface plain text covers at a shift.
DibSurface Letters(HFONT font, const CString& text, CRect rect, UINT format)
{
    DibSurface surface(80, 40, RGB(255, 255, 255));
    const VSelectScope selected(surface.DC().m_hDC, font);
    const VBkModeScope transparent(surface.DC().m_hDC, TRANSPARENT);
    ::DrawText(surface.DC().m_hDC, text, -1, &rect, format);
    return surface;
}

LOGFONT LogFont(const CFont& font)
{
    LOGFONT description = {};
    ::GetObject(font.m_hObject, sizeof description, &description);
    return description;
}

} // namespace

TEST(DrawTextGlow, HaloFadesAroundTheLetters)
{
    const CRect rect(12, 10, 70, 30);
    const CString text(L"Vg");
    const UINT format = DT_SINGLELINE | DT_NOCLIP;
    const VOwnedFont font(SharpFont());
    const DibSurface letters = Letters(font.Get(), text, rect, format);
    ASSERT_GT(letters.Count(RGB(0, 0, 0)), 20);

    const COLORREF clrText = RGB(10, 60, 200);
    const COLORREF clrGlow = RGB(250, 1, 2);
    const auto covers = [&](int x, int y) { return letters.Pixel(x, y) == RGB(0, 0, 0); };
    for (const int glow : {0, 1, 4}) {
        const DibSurface surface(80, 40);
        {
            const VSelectScope selected(surface.DC().m_hDC, font.Get());
            VGDrawFashionText(&surface.DC(), text, rect, format, clrText, clrGlow, glow);
        }
        // Nearer layers are drawn over farther ones, and the letters over all.
        support::ExpectPixels(surface, [&](int x, int y) {
            if (covers(x, y))
                return clrText;
            for (int d = 1; d <= glow; ++d)
                for (int dx = -1; dx <= 1; ++dx)
                    for (int dy = -1; dy <= 1; ++dy)
                        if (covers(x - dx * d, y - dy * d)) {
                            const int steps = glow + 1;
                            return RGB(10 + (250 - 10) / steps * d, 60 + (250 - 60) / steps * d,
                                       200 + (250 - 200) / steps * d);
                        }
            return kBack;
        });
        EXPECT_EQ(surface.DC().GetBkMode(), TRANSPARENT);
        EXPECT_EQ(surface.DC().GetTextColor(), clrText);
    }
}

TEST(DrawTextBounds, NegativeGlowDrawsTheTextAlone)
{
    const CRect rect(2, 2, 78, 38);
    const VOwnedFont font(SharpFont());
    for (const int glow : {-1, INT_MIN}) {
        const DibSurface surface(80, 40, RGB(255, 255, 255));
        const VSelectScope selected(surface.DC().m_hDC, font.Get());
        VGDrawFashionText(&surface.DC(), CString(L"Vg"), rect, DT_LEFT, RGB(0, 0, 0), RGB(255, 0, 0), glow);
        EXPECT_TRUE(support::AreasEqual(surface, surface.Bounds(),
                                        Letters(font.Get(), CString(L"Vg"), rect, DT_LEFT), CPoint(0, 0)));
    }
}

TEST(DrawTextBounds, HugeGlowEndsAndKeepsTheLetters)
{
    const VOwnedFont font(SharpFont());
    const CRect rect(12, 10, 70, 30);
    const DibSurface surface(80, 40);
    const VSelectScope selected(surface.DC().m_hDC, font.Get());
    VGDrawFashionText(&surface.DC(), CString(L"Vg"), rect, DT_SINGLELINE | DT_NOCLIP, RGB(0, 0, 0),
                      RGB(255, 255, 255), INT_MAX);
    const DibSurface letters = Letters(font.Get(), CString(L"Vg"), rect, DT_SINGLELINE);
    EXPECT_GE(surface.Count(RGB(0, 0, 0)), letters.Count(RGB(0, 0, 0)));
}

TEST(DrawTextBounds, AnEllipsisIsNotWrittenIntoTheText)
{
    const DibSurface surface(80, 40);
    const CString text(L"A text much longer than its rectangle");
    const CString before(text);
    VGDrawFashionText(&surface.DC(), text, CRect(0, 0, 60, 20),
                      DT_SINGLELINE | DT_END_ELLIPSIS | DT_MODIFYSTRING, RGB(0, 0, 0), RGB(9, 9, 9), 1);
    EXPECT_TRUE(text == before);
    EXPECT_LT(surface.Count(kBack), 80 * 40);
}

TEST(DrawTextFont, SizeAndStyles)
{
    const DibSurface surface(8, 8);
    const int dpi = surface.DC().GetDeviceCaps(LOGPIXELSY);
    for (const DWORD style : {0, 1, 2, 4, 8, 15}) {
        CFont font;
        VGCreateFont(font, &surface.DC(), L"Arial", 12, style);
        const LOGFONT description = LogFont(font);
        EXPECT_EQ(description.lfHeight, -::MulDiv(12, dpi, 72));
        EXPECT_STREQ(description.lfFaceName, L"Arial");
        EXPECT_EQ(description.lfWeight, (style & VGFontBold) != 0 ? 700 : 0);
        EXPECT_EQ(description.lfItalic != 0, (style & VGFontItalic) != 0);
        EXPECT_EQ(description.lfUnderline != 0, (style & VGFontUnderline) != 0);
        EXPECT_EQ(description.lfStrikeOut != 0, (style & VGFontStrikeOut) != 0);
    }
}

TEST(DrawTextFont, NoFaceKeepsTheFontAndALongOneIsCut)
{
    CFont font;
    VGCreateFont(font, nullptr, nullptr, 12, 0);
    EXPECT_EQ(font.m_hObject, nullptr);
    VGCreateFont(font, nullptr, L"Arial", 12, 0);
    const HGDIOBJ kept = font.m_hObject;
    ASSERT_NE(kept, nullptr);
    VGCreateFont(font, nullptr, nullptr, 20, 0);
    EXPECT_EQ(font.m_hObject, kept);
    const std::wstring longName(100, L'x');
    VGCreateFont(font, nullptr, longName.c_str(), 12, 0);
    EXPECT_EQ(std::wcslen(LogFont(font).lfFaceName), size_t{LF_FACESIZE - 1});
}

TEST(DrawTextFont, ReplacesTheOldFontAndReleasesTheScreen)
{
    CFont font;
    VGCreateFont(font, nullptr, L"Arial", 9, 0);
    const support::Census census;
    for (int size = 10; size < 60; ++size)
        VGCreateFont(font, nullptr, L"Arial", size, 0);
    census.ExpectUnchanged();
}

TEST(DrawTextParentColor, IsTheButtonFaceWithoutASkinnedDialog)
{
    EXPECT_EQ(VGGetParentBkColor(nullptr), ::GetSysColor(COLOR_BTNFACE));
    CWnd closed;
    EXPECT_EQ(VGGetParentBkColor(&closed), ::GetSysColor(COLOR_BTNFACE));
    support::HostWnd host;
    ASSERT_TRUE(host.Open());
    CStatic child;
    ASSERT_TRUE(child.Create(L"", WS_CHILD, CRect(0, 0, 9, 9), &host));
    EXPECT_EQ(VGGetParentBkColor(&child), ::GetSysColor(COLOR_BTNFACE));
}
