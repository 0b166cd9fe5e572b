#include "vgui/imaging/gl.h"

#include "vgui/imaging/log_palette.h"

#include <algorithm>
#include <GL/gl.h>
#include <iterator>
#include <utility>

namespace
{

constexpr BYTE kWindowColorBits = 24;
constexpr BYTE kDepthBits = 32;
constexpr int kPaletteFormatBits = 8;
constexpr UINT kMaxShift = 31; // by more is undefined
// There is one error flag per part of a distributed OpenGL. The bound also ends the loop where there is no
// context, which some systems answer with an error each time.
constexpr int kMaxErrorFlags = 8;

BYTE BitsOfSelectedBitmap(CDC& dc)
{
    BITMAP bitmap{};
    if (::GetObject(::GetCurrentObject(dc.m_hDC, OBJ_BITMAP), sizeof(bitmap), &bitmap) != 0)
        return static_cast<BYTE>(bitmap.bmBitsPixel);
    return static_cast<BYTE>(dc.GetDeviceCaps(BITSPIXEL));
}

// The layout in which the static colours' nearest entries are those of CGL::m_defaultOverride.
bool IsRgb332(const PIXELFORMATDESCRIPTOR& pfd)
{
    return pfd.cColorBits == 8 && pfd.cRedBits == 3 && pfd.cRedShift == 0 && pfd.cGreenBits == 3 &&
           pfd.cGreenShift == 3 && pfd.cBlueBits == 2 && pfd.cBlueShift == 6;
}

} // namespace

const BYTE CGL::m_oneto8[2] = {0, 255};
const BYTE CGL::m_twoto8[4] = {0, 85, 170, 255};
const BYTE CGL::m_threeto8[8] = {0, 36, 73, 109, 146, 182, 219, 255};
const int CGL::m_defaultOverride[13] = {0, 3, 24, 27, 64, 67, 88, 173, 181, 236, 247, 164, 91};
const PALETTEENTRY CGL::m_defaultPalEntry[20] = {
    {0, 0, 0, 0},       {128, 0, 0, 0},     {0, 128, 0, 0},     {128, 128, 0, 0},   {0, 0, 128, 0},
    {128, 0, 128, 0},   {0, 128, 128, 0},   {192, 192, 192, 0}, {192, 220, 192, 0}, {166, 202, 240, 0},
    {255, 251, 240, 0}, {160, 160, 164, 0}, {128, 128, 128, 0}, {255, 0, 0, 0},     {0, 255, 0, 0},
    {255, 255, 0, 0},   {0, 0, 255, 0},     {255, 0, 255, 0},   {0, 255, 255, 0},   {255, 255, 255, 0}};

CGL::~CGL()
{
    Destroy();
}

int CGL::OnCreate(CWnd*, PIXELFORMATDESCRIPTOR*)
{
    return 0;
}

int CGL::OnCreatePaletteCI(LOGPALETTE*)
{
    return 0;
}

// ---- Creation

int CGL::Create(CWnd* pWnd, int pixelType, DWORD flags)
{
    Destroy();
    if (pWnd == nullptr || !::IsWindow(pWnd->m_hWnd))
        return FALSE;
    m_bUseDC = FALSE;
    m_bDoubleBuffer = static_cast<BOOL>(flags & PFD_DOUBLEBUFFER);
    try {
        m_pDC = new CClientDC(pWnd);
    } catch (CResourceException* e) {
        e->Delete();
        return FALSE;
    }
    return CreateOn(pWnd, kWindowColorBits, pixelType, flags);
}

int CGL::Create(CDC* pDC, int pixelType, DWORD flags)
{
    Destroy();
    if (pDC == nullptr || pDC->m_hDC == nullptr)
        return FALSE;
    m_bUseDC = TRUE;
    m_bDoubleBuffer = FALSE;
    m_pDC = pDC;
    return CreateOn(pDC->GetWindow(), BitsOfSelectedBitmap(*pDC), pixelType, flags);
}

int CGL::CreateOn(CWnd* pWnd, BYTE colorBits, int pixelType, DWORD flags)
{
    PIXELFORMATDESCRIPTOR pfd{};
    pfd.nSize = sizeof(pfd);
    pfd.nVersion = 1;
    pfd.dwFlags = flags;
    pfd.iPixelType = static_cast<BYTE>(pixelType);
    pfd.cColorBits = colorBits;
    pfd.cDepthBits = kDepthBits;
    pfd.iLayerType = PFD_MAIN_PLANE;
    OnCreate(pWnd, &pfd);
    // Its override may have ended this object, as that for the palette below may.
    if (m_pDC == nullptr)
        return FALSE;

    const int format = ::ChoosePixelFormat(m_pDC->m_hDC, &pfd);
    if (format != 0 && ::SetPixelFormat(m_pDC->m_hDC, format, &pfd)) {
        // What was chosen, not what was asked for.
        ::DescribePixelFormat(m_pDC->m_hDC, ::GetPixelFormat(m_pDC->m_hDC), sizeof(pfd), &pfd);
        CreatePalette(pfd);
        if (m_pDC != nullptr)
            m_hRC = ::wglCreateContext(m_pDC->m_hDC);
    }
    if (m_hRC != nullptr)
        return TRUE;
    Destroy();
    return FALSE;
}

// ---- The palette

BOOL CGL::CreatePalette(const PIXELFORMATDESCRIPTOR& pfd)
{
    const bool colorIndex = pfd.iPixelType == PFD_TYPE_COLORINDEX;
    const bool needed = (pfd.dwFlags & PFD_NEED_PALETTE) != 0 || colorIndex ||
                        (m_bUseDC && pfd.cColorBits == kPaletteFormatBits);
    if (!needed)
        return FALSE;

    VLogPalette palette(kPaletteSize);
    if (colorIndex) {
        OnCreatePaletteCI(palette.Get());
        palette.Get()->palNumEntries = kPaletteSize;
        if (m_pDC == nullptr)
            return FALSE;
    } else if (!FillRgbPalette(pfd, palette.Entries())) {
        return FALSE;
    }

    ReleasePalette();
    m_pPal = new CPalette;
    m_pPal->CreatePalette(palette.Get());
    if (!m_bUseDC) {
        m_pOldPal = m_pDC->SelectPalette(m_pPal, FALSE);
        m_hOldPal = m_pOldPal != nullptr ? static_cast<HPALETTE>(m_pOldPal->m_hObject) : nullptr;
        m_pDC->RealizePalette();
    }
    return TRUE;
}

BOOL CGL::FillRgbPalette(const PIXELFORMATDESCRIPTOR& pfd, PALETTEENTRY* entries)
{
    if (pfd.cColorBits > kPaletteFormatBits)
        return FALSE;
    for (int i = 0; i < 1 << pfd.cColorBits; ++i) {
        entries[i].peRed = ComponentFromIndex(i, pfd.cRedBits, pfd.cRedShift);
        entries[i].peGreen = ComponentFromIndex(i, pfd.cGreenBits, pfd.cGreenShift);
        entries[i].peBlue = ComponentFromIndex(i, pfd.cBlueBits, pfd.cBlueShift);
        entries[i].peFlags = 0;
    }
    if (IsRgb332(pfd)) {
        for (size_t k = 1; k < std::size(m_defaultOverride); ++k)
            entries[m_defaultOverride[k]] = m_defaultPalEntry[k];
    }
    return TRUE;
}

BYTE CGL::ComponentFromIndex(int i, UINT nbits, UINT shift)
{
    const int value = i >> std::min<UINT>(shift, kMaxShift);
    switch (nbits) {
    case 1:
        return m_oneto8[value & 1];
    case 2:
        return m_twoto8[value & 3];
    case 3:
        return m_threeto8[value & 7];
    default:
        return 0;
    }
}

void CGL::ReleasePalette()
{
    if (m_pOldPal != nullptr) {
        ::SelectPalette(m_pDC->m_hDC, m_hOldPal, FALSE);
        m_pOldPal = nullptr;
        m_hOldPal = nullptr;
    }
    delete std::exchange(m_pPal, nullptr);
}

CPalette* CGL::GetPalette()
{
    return m_pPal;
}

// ---- Frames

void CGL::MakeCurrent()
{
    if (m_pPal != nullptr && !m_bUseDC) {
        m_pDC->SelectPalette(m_pPal, FALSE);
        m_pDC->RealizePalette();
    }
    // Without a context of its own this object must not draw on another one's either.
    if (::wglGetCurrentContext() != m_hRC)
        ::wglMakeCurrent(m_pDC != nullptr ? m_pDC->m_hDC : nullptr, m_hRC);
}

int CGL::Init()
{
    MakeCurrent();
    return OnInit();
}

int CGL::Resize(int cx, int cy)
{
    if (cx < 1 || cy < 1)
        return FALSE;
    MakeCurrent();
    return OnResize(cx, cy);
}

int CGL::Render()
{
    MakeCurrent();
    OnRender();
    ::glFlush();
    ::GdiFlush();
    if (m_bDoubleBuffer && m_pDC != nullptr) {
        ::SwapBuffers(m_pDC->m_hDC);
        ::GdiFlush();
    }
    return TRUE;
}

void CGL::OutputGlError(const char*)
{
    for (int flag = 0; flag < kMaxErrorFlags && ::glGetError() != GL_NO_ERROR; ++flag) {
    }
}

void CGL::Destroy()
{
    ReleasePalette();
    if (m_hRC != nullptr) {
        if (::wglGetCurrentContext() == m_hRC)
            ::wglMakeCurrent(nullptr, nullptr);
        ::wglDeleteContext(m_hRC);
        m_hRC = nullptr;
    }
    if (!m_bUseDC)
        delete m_pDC;
    m_pDC = nullptr;
}
