#include "vgui/imaging/gl.h"

#include "tests/support/census.h"
#include "tests/support/import_patch.h"
#include "tests/support/pixels.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/support/rounds.h"

#include <array>
#include <GL/gl.h>
#include <gtest/gtest.h>
#include <vector>

using namespace support;

namespace
{

constexpr DWORD kWindowFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
constexpr DWORD kBitmapFlags = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_OPENGL | PFD_SUPPORT_GDI;

// Fills the area with blue and its lower left quarter with red.
class TwoColors : public CGL
{
public:
    int OnCreate(CWnd* window, PIXELFORMATDESCRIPTOR* pfd) override
    {
        asked = *pfd;
        createdFor = window;
        return -1; // must not matter
    }
    int OnInit() override
    {
        ::glClearColor(0, 0, 1, 1);
        return 7;
    }
    int OnResize(int cx, int cy) override
    {
        ++resized;
        ::glViewport(0, 0, cx, cy);
        return 9;
    }
    int OnRender() override
    {
        current = ::wglGetCurrentContext();
        ::glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        ::glColor3f(1, 0, 0);
        ::glRectf(-1, -1, 0, 0);
        return 0;
    }

    int OnCreatePaletteCI(LOGPALETTE* palette) override
    {
        palette->palPalEntry[3] = {9, 8, 7, 0};
        palette->palNumEntries = 0xFFFF; // more than there are
        return 0;
    }

    using CGL::CreatePalette;
    using CGL::FillRgbPalette;
    using CGL::kPaletteSize;
    using CGL::m_bDoubleBuffer;
    using CGL::m_bUseDC;
    using CGL::m_hRC;
    using CGL::m_pDC;

    PIXELFORMATDESCRIPTOR asked{};
    CWnd* createdFor = nullptr;
    HGLRC current = nullptr;
    int resized = 0;
};

// Ends itself, or its window, when it is asked for something.
class Quitter : public TwoColors
{
public:
    int OnCreate(CWnd* window, PIXELFORMATDESCRIPTOR*) override
    {
        if (endsWindow)
            window->DestroyWindow();
        else
            Destroy();
        return 0;
    }
    int OnCreatePaletteCI(LOGPALETTE*) override
    {
        Destroy();
        return 0;
    }

    bool endsWindow = false;
};

using Entries = std::array<PALETTEENTRY, 256>;

struct Component {
    BYTE bits, shift;
};

PIXELFORMATDESCRIPTOR PaletteFormat(BYTE bits, Component red, Component green, Component blue)
{
    PIXELFORMATDESCRIPTOR pfd{};
    pfd.cColorBits = bits;
    pfd.cRedBits = red.bits;
    pfd.cRedShift = red.shift;
    pfd.cGreenBits = green.bits;
    pfd.cGreenShift = green.shift;
    pfd.cBlueBits = blue.bits;
    pfd.cBlueShift = blue.shift;
    return pfd;
}

std::vector<int> Color(const PALETTEENTRY& entry)
{
    return {entry.peRed, entry.peGreen, entry.peBlue, entry.peFlags};
}

// The nearest 8-bit value of k of n bits.
int Expanded(int k, int bits)
{
    const int most = (1 << bits) - 1;
    return bits == 0 ? 0 : (2 * (k & most) * 255 + most) / (2 * most);
}

class GlContext : public CensusTest
{
};

HDC WINAPI RefuseDC(HWND)
{
    return nullptr;
}

} // namespace

TEST(GlPalette, EntriesFollowTheFormat)
{
    const struct {
        PIXELFORMATDESCRIPTOR pfd;
        int values;
    } cases[] = {
        {PaletteFormat(8, {2, 6}, {3, 3}, {3, 0}), 256},
        {PaletteFormat(4, {1, 0}, {1, 1}, {1, 2}), 16},
        {PaletteFormat(8, {2, 0}, {2, 2}, {2, 4}), 256},
        {PaletteFormat(0, {0, 0}, {0, 0}, {0, 0}), 1},
    };
    for (const auto& c : cases) {
        Entries entries;
        entries.fill({1, 2, 3, 4});
        ASSERT_TRUE(TwoColors::FillRgbPalette(c.pfd, entries.data()));
        for (int i = 0; i < c.values; ++i) {
            const std::vector<int> wanted{Expanded(i >> c.pfd.cRedShift, c.pfd.cRedBits),
                                          Expanded(i >> c.pfd.cGreenShift, c.pfd.cGreenBits),
                                          Expanded(i >> c.pfd.cBlueShift, c.pfd.cBlueBits), 0};
            ASSERT_EQ(Color(entries[i]), wanted) << i;
        }
        for (size_t i = c.values; i < entries.size(); ++i)
            ASSERT_EQ(Color(entries[i]), (std::vector<int>{1, 2, 3, 4})) << i;
    }
}

TEST(GlPalette, TheStandardLayoutHasTwelveStaticColors)
{
    Entries entries{};
    ASSERT_TRUE(TwoColors::FillRgbPalette(PaletteFormat(8, {3, 0}, {3, 3}, {2, 6}), entries.data()));
    EXPECT_EQ(Color(entries[0]), (std::vector<int>{0, 0, 0, 0}));
    EXPECT_EQ(Color(entries[3]), (std::vector<int>{128, 0, 0, 0}));
    EXPECT_EQ(Color(entries[91]), (std::vector<int>{128, 128, 128, 0}));
    EXPECT_EQ(Color(entries[173]), (std::vector<int>{192, 192, 192, 0}));
    int replaced = 0;
    for (int i = 0; i < 256; ++i)
        replaced += Color(entries[i]) !=
                    std::vector<int>{Expanded(i, 3), Expanded(i >> 3, 3), Expanded(i >> 6, 2), 0};
    EXPECT_EQ(replaced, 12);
}

TEST(GlPalette, DeepFormatsAndUnknownWidthsWriteNoColor)
{
    Entries entries;
    entries.fill({1, 2, 3, 4});
    EXPECT_FALSE(TwoColors::FillRgbPalette(PaletteFormat(16, {5, 0}, {6, 5}, {5, 11}), entries.data()));
    EXPECT_EQ(Color(entries[255]), (std::vector<int>{1, 2, 3, 4}));
    ASSERT_TRUE(TwoColors::FillRgbPalette(PaletteFormat(8, {4, 0}, {3, 4}, {1, 7}), entries.data()));
    EXPECT_EQ(Color(entries[255]), (std::vector<int>{0, 255, 255, 0}));
    ASSERT_TRUE(TwoColors::FillRgbPalette(PaletteFormat(8, {3, 33}, {3, 4}, {1, 7}), entries.data()));
    EXPECT_EQ(Color(entries[255]), (std::vector<int>{0, 255, 255, 0}));
}

// A true-colour system has no formats with a palette, so that the object is given its context by hand.
TEST_F(GlContext, APaletteIsSelectedAndPutBack)
{
    PIXELFORMATDESCRIPTOR rgb = PaletteFormat(8, {3, 0}, {3, 3}, {2, 6});
    PIXELFORMATDESCRIPTOR needed = rgb;
    needed.dwFlags = PFD_NEED_PALETTE;
    PIXELFORMATDESCRIPTOR index = rgb;
    index.iPixelType = PFD_TYPE_COLORINDEX;
    PIXELFORMATDESCRIPTOR deep = PaletteFormat(16, {5, 0}, {6, 5}, {5, 11});
    deep.dwFlags = PFD_NEED_PALETTE;
    const struct {
        const char* name;
        const PIXELFORMATDESCRIPTOR* pfd;
        BOOL callersDC;
        std::vector<int> entry3; // empty: no palette
    } cases[] = {
        {"RGB", &needed, FALSE, {128, 0, 0, 0}},
        {"colour index", &index, FALSE, {9, 8, 7, 0}},
        {"caller's DC", &rgb, TRUE, {128, 0, 0, 0}},
        {"none needed", &rgb, FALSE, {}},
        {"too deep", &deep, FALSE, {}},
    };
    CWnd window; // with a context of its own, which stays the same
    ASSERT_TRUE(
        window.CreateEx(0, AfxRegisterWndClass(CS_OWNDC), L"", WS_POPUP, CRect(0, 0, 40, 40), nullptr, 0));
    CClientDC own(&window);
    const HGDIOBJ before = ::GetCurrentObject(own.m_hDC, OBJ_PAL);
    for (const auto& item : cases) {
        SCOPED_TRACE(item.name);
        TwoColors gl;
        gl.m_bUseDC = item.callersDC;
        gl.m_pDC = item.callersDC ? &own : new CClientDC(&window);
        // Once more replaces the palette, not what the first one displaced.
        for (int time = 0; time < 2; ++time)
            EXPECT_EQ(gl.CreatePalette(*item.pfd), !item.entry3.empty());
        CPalette* const palette = gl.GetPalette();
        ASSERT_EQ(palette != nullptr, !item.entry3.empty());
        if (palette != nullptr) {
            PALETTEENTRY entry{};
            EXPECT_EQ(palette->GetEntryCount(), 256);
            palette->GetPaletteEntries(3, 1, &entry);
            EXPECT_EQ(Color(entry), item.entry3);
        }
        const bool selected = palette != nullptr && !item.callersDC;
        EXPECT_EQ(::GetCurrentObject(own.m_hDC, OBJ_PAL), selected ? palette->m_hObject : before);
        gl.Destroy();
        EXPECT_EQ(gl.GetPalette(), nullptr);
        EXPECT_EQ(::GetCurrentObject(own.m_hDC, OBJ_PAL), before);
    }
}

TEST_F(GlContext, DrawsOnAWindow)
{
    for (const DWORD extra : {DWORD{0}, DWORD{PFD_DOUBLEBUFFER}}) {
        HostWnd host;
        ASSERT_TRUE(host.Open({80, 60}));
        TwoColors gl;
        ASSERT_TRUE(gl.Create(&host, PFD_TYPE_RGBA, kWindowFlags | extra));
        EXPECT_EQ(gl.createdFor, &host);
        EXPECT_EQ(gl.asked.nSize, 40);
        EXPECT_EQ(gl.asked.cColorBits, 24);
        EXPECT_EQ(gl.asked.cDepthBits, 32);
        EXPECT_EQ(gl.asked.dwFlags, kWindowFlags | extra);
        EXPECT_EQ(gl.m_bDoubleBuffer != 0, extra != 0);
        EXPECT_FALSE(gl.m_bUseDC);
        EXPECT_EQ(gl.GetPalette(), nullptr); // true colour
        EXPECT_EQ(gl.Init(), 7);
        EXPECT_EQ(gl.Resize(80, 60), 9);
        EXPECT_TRUE(gl.Render());
        EXPECT_TRUE(WaitForPixel(host.m_hWnd, {20, 45}, RGB(255, 0, 0))) << extra;
        EXPECT_EQ(WindowPixel(host.m_hWnd, {60, 45}), RGB(0, 0, 255));
        EXPECT_EQ(WindowPixel(host.m_hWnd, {20, 15}), RGB(0, 0, 255));

        ::glEnable(0xFFFF);
        gl.OutputGlError("after a wrong enable");
        EXPECT_EQ(::glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        gl.Destroy();
        EXPECT_EQ(::wglGetCurrentContext(), nullptr);
        gl.Destroy();
    }
}

TEST_F(GlContext, DrawsOnAMemoryContext)
{
    // OpenGL's rows run upwards, as do those of an ordinary bitmap; not every system turns them for one that
    // begins at the top.
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), 80, 60, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    CDC memory;
    ASSERT_TRUE(memory.CreateCompatibleDC(nullptr));
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.Attach(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0)));
    CBitmap* const oldBitmap = memory.SelectObject(&bitmap);

    TwoColors gl;
    ASSERT_TRUE(gl.Create(&memory, PFD_TYPE_RGBA, kBitmapFlags | PFD_DOUBLEBUFFER));
    EXPECT_EQ(gl.createdFor, nullptr);
    EXPECT_EQ(gl.asked.cColorBits, 32);
    EXPECT_FALSE(gl.m_bDoubleBuffer);
    EXPECT_TRUE(gl.m_bUseDC);
    EXPECT_EQ(gl.m_pDC, &memory);
    gl.Init();
    gl.Resize(80, 60);
    gl.Render();
    DibSurface shown(80, 60);
    shown.DC().BitBlt(0, 0, 80, 60, &memory, 0, 0, SRCCOPY);
    ExpectPixels(shown, [](int x, int y) { return x < 40 && y >= 30 ? RGB(255, 0, 0) : RGB(0, 0, 255); });
    gl.Destroy();
    EXPECT_NE(memory.m_hDC, nullptr);
    memory.SelectObject(oldBitmap);
}

TEST_F(GlContext, EachObjectDrawsOnItsOwn)
{
    DibSurface first(20, 20);
    DibSurface second(20, 20);
    TwoColors a;
    TwoColors b;
    ASSERT_TRUE(a.Create(&first.DC(), PFD_TYPE_RGBA, kBitmapFlags));
    ASSERT_TRUE(b.Create(&second.DC(), PFD_TYPE_RGBA, kBitmapFlags));
    for (TwoColors* gl : {&a, &b})
        gl->Init();
    a.Resize(20, 20);
    a.Render();
    EXPECT_EQ(a.current, a.m_hRC);
    EXPECT_EQ(first.Pixel(15, 15), RGB(0, 0, 255));
    EXPECT_EQ(second.Pixel(15, 15), DibSurface::kBackground);

    // A size of nothing changes no context; one that was destroyed draws nowhere.
    EXPECT_FALSE(b.Resize(0, 10));
    EXPECT_FALSE(b.Resize(10, 0));
    EXPECT_FALSE(b.Resize(-1, 10));
    EXPECT_EQ(b.resized, 0);
    EXPECT_EQ(::wglGetCurrentContext(), a.m_hRC);
    b.Destroy();
    EXPECT_EQ(::wglGetCurrentContext(), a.m_hRC);
    EXPECT_TRUE(b.Render());
    EXPECT_EQ(b.current, nullptr);
    b.OutputGlError("no context");
}

TEST_F(GlContext, RefusesWhatCannotBeDrawnOn)
{
    TwoColors gl;
    CWnd noWindow;
    CDC noContext;
    EXPECT_FALSE(gl.Create(static_cast<CWnd*>(nullptr), PFD_TYPE_RGBA, kWindowFlags));
    EXPECT_FALSE(gl.Create(&noWindow, PFD_TYPE_RGBA, kWindowFlags));
    EXPECT_FALSE(gl.Create(static_cast<CDC*>(nullptr), PFD_TYPE_RGBA, kBitmapFlags));
    EXPECT_FALSE(gl.Create(&noContext, PFD_TYPE_RGBA, kBitmapFlags));
    EXPECT_EQ(gl.m_pDC, nullptr);
    // A metafile has no pixel formats; the object does not keep what cannot be drawn on.
    CDC metafile;
    ASSERT_TRUE(metafile.Attach(::CreateEnhMetaFile(nullptr, nullptr, nullptr, nullptr)));
    EXPECT_FALSE(gl.Create(&metafile, PFD_TYPE_RGBA, kBitmapFlags));
    EXPECT_EQ(gl.m_pDC, nullptr);
    ::DeleteEnhMetaFile(::CloseEnhMetaFile(metafile.Detach()));

    // Created again, the object lets go of what it had, and may change sides.
    HostWnd host;
    ASSERT_TRUE(host.Open({40, 40}));
    DibSurface surface(8, 8);
    ASSERT_TRUE(gl.Create(&surface.DC(), PFD_TYPE_RGBA, kBitmapFlags));
    ASSERT_TRUE(gl.Create(&host, PFD_TYPE_RGBA, kWindowFlags));
    EXPECT_FALSE(gl.m_bUseDC);
    {
        const ImportPatch refusal(L"mfcsubset.dll", "GetDC", reinterpret_cast<void*>(RefuseDC));
        EXPECT_FALSE(gl.Create(&host, PFD_TYPE_RGBA, kWindowFlags));
        EXPECT_EQ(gl.m_pDC, nullptr);
    }
    ASSERT_TRUE(gl.Create(&surface.DC(), PFD_TYPE_RGBA, kBitmapFlags));
    EXPECT_TRUE(gl.m_bUseDC);
}

TEST_F(GlContext, MayEndWhileItIsMade)
{
    for (const bool endsWindow : {false, true}) {
        HostWnd host;
        ASSERT_TRUE(host.Open({40, 40}));
        Quitter gl;
        gl.endsWindow = endsWindow;
        EXPECT_FALSE(gl.Create(&host, PFD_TYPE_RGBA, kWindowFlags));
        EXPECT_EQ(gl.m_pDC, nullptr);
    }
    DibSurface surface(8, 8);
    Quitter gl;
    EXPECT_FALSE(gl.Create(&surface.DC(), PFD_TYPE_RGBA, kBitmapFlags));

    PIXELFORMATDESCRIPTOR index{};
    index.iPixelType = PFD_TYPE_COLORINDEX;
    gl.m_bUseDC = TRUE;
    gl.m_pDC = &surface.DC();
    EXPECT_FALSE(gl.CreatePalette(index));
    EXPECT_EQ(gl.GetPalette(), nullptr);
}

TEST_F(GlContext, RoundsLeaveNothing)
{
    HostWnd host;
    ASSERT_TRUE(host.Open({40, 40}));
    ExpectRoundsLeaveNothing([&host] {
        DibSurface surface(8, 8);
        TwoColors onWindow;
        TwoColors inMemory;
        ASSERT_TRUE(onWindow.Create(&host, PFD_TYPE_RGBA, kWindowFlags | PFD_DOUBLEBUFFER));
        ASSERT_TRUE(inMemory.Create(&surface.DC(), PFD_TYPE_RGBA, kBitmapFlags));
        for (TwoColors* gl : {&onWindow, &inMemory}) {
            gl->Init();
            gl->Resize(8, 8);
            gl->Render();
        }
    });
}
