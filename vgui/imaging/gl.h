// One OpenGL rendering context on a window or on a device context.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>

// A rendering context with its pixel format, the palette that palette displays need, and a frame cycle that a
// derived class fills in:
//
//     Create once, Init once, Resize whenever the size changes, Render for each frame, Destroy.
//
// The derived class includes <GL/gl.h> (after this header) and draws with plain OpenGL calls; linking the
// library brings opengl32. All calls come from the thread that owns the window or device context: a rendering
// context is current on one thread at a time.
class VGUI_API CGL
{
public:
    CGL() = default;
    CGL(const CGL&) = delete;
    CGL& operator=(const CGL&) = delete;
    // Calls Destroy.
    virtual ~CGL();

    // Called by Create with the descriptor before a pixel format is chosen for it, to be adjusted. pWnd is
    // the window that is drawn on: for a caller's device context that context's window, null for a memory
    // context. The result is not looked at.
    virtual int OnCreate(CWnd* pWnd, PIXELFORMATDESCRIPTOR* pfd);
    // Called by Resize with the size in pixels, both at least 1; sets the viewport and the projection.
    virtual int OnResize(int cx, int cy) = 0;
    // Called by Init: lights, materials, lists, whatever is set once.
    virtual int OnInit() = 0;
    // Called by Render: draws one frame.
    virtual int OnRender() = 0;
    // Called for a colour-index format to fill pal->palPalEntry, 256 entries that are black before. The
    // result is not looked at.
    virtual int OnCreatePaletteCI(LOGPALETTE* pal);

    // Creates the context on the window's client area, which must stay as long as this object's context.
    // pixelType: PFD_TYPE_RGBA or PFD_TYPE_COLORINDEX; flags: PFD_ constants, for example
    // PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER. A context that this object has already is
    // destroyed before. FALSE for a null or missing window, when no pixel format can be chosen or set (a
    // window keeps its first one), and when there is no context to be had. A failed Create leaves nothing.
    int Create(CWnd* pWnd, int pixelType, DWORD flags);
    // The same on a device context of the caller, who keeps it and, for a memory context, keeps its bitmap
    // selected until Destroy. A bitmap needs PFD_DRAW_TO_BITMAP | PFD_SUPPORT_OPENGL. Neither double
    // buffering nor a palette is applied to it.
    int Create(CDC* pDC, int pixelType, DWORD flags);

    // Realises the palette in the window's context and makes the rendering context the thread's current one.
    void MakeCurrent();
    // Makes the context current and answers OnInit.
    int Init();
    // Makes the context current and answers OnResize. FALSE, with nothing done, for a size below 1.
    int Resize(int cx, int cy);
    // Makes the context current, draws one frame and shows it. Always TRUE.
    int Render();
    // Releases everything. The object can be created anew.
    void Destroy();

    // The palette of the context, null when the pixel format needs none. It stays this object's.
    CPalette* GetPalette();
    // Reads and so clears OpenGL's error state. The label is not used: nothing is reported.
    void OutputGlError(const char* label);

    // The expansion of components of 1 bit to 8.
    static const BYTE m_oneto8[2];
    // The same for 2 bits.
    static const BYTE m_twoto8[4];
    // The same for 3 bits.
    static const BYTE m_threeto8[8];
    // Where a 3-3-2 palette takes static colours over: entry m_defaultOverride[k] is m_defaultPalEntry[k], k
    // from 1; the first of them is not used.
    static const int m_defaultOverride[13];
    // The system's 20 static colours.
    static const PALETTEENTRY m_defaultPalEntry[20];

protected:
    static constexpr int kPaletteSize = 256; // entries
    // The colours that an RGBA format of at most 8 bits gives its pixel values, into a palette of
    // kPaletteSize entries; those beyond the format's values are left as they are. FALSE, with nothing
    // written, for a deeper format.
    static BOOL FillRgbPalette(const PIXELFORMATDESCRIPTOR& pfd, PALETTEENTRY* entries);
    // Makes the palette that a pixel format needs. Unless the device context is the caller's, it is selected
    // there as a foreground palette and realised, until Destroy puts back what it displaced. Create calls
    // this once, for the format it has set; another call replaces the palette. FALSE, with nothing done, when
    // the format needs no palette or is too deep for one.
    BOOL CreatePalette(const PIXELFORMATDESCRIPTOR& pfd);

    HGLRC m_hRC = nullptr;         // owned; null before Create and after Destroy
    CDC* m_pDC = nullptr;          // owned unless m_bUseDC
    CPalette* m_pPal = nullptr;    // owned
    CPalette* m_pOldPal = nullptr; // what m_pPal displaced; may be a temporary object, not for use
    BOOL m_bDoubleBuffer = FALSE;  // frames are shown by SwapBuffers; never on a caller's context
    BOOL m_bUseDC = FALSE;         // the device context is the caller's

private:
    void ReleasePalette();
    int CreateOn(CWnd* pWnd, BYTE colorBits, int pixelType, DWORD flags);
    static BYTE ComponentFromIndex(int i, UINT nbits, UINT shift);

    HPALETTE m_hOldPal = nullptr; // the handle of m_pOldPal
};
