// Showing an image: plainly, dithered, and a frame of a fade.
#include "bench/bench.h"
#include "bench/picture.h"

namespace
{

// A memory DC with a bitmap of the image's size to draw on.
class Canvas
{
public:
    explicit Canvas(const CDib& dib)
    {
        CClientDC screen(nullptr);
        m_dc.CreateCompatibleDC(&screen);
        m_bitmap.CreateCompatibleBitmap(&screen, dib.GetWidth(), dib.GetHeight());
        m_old = ::SelectObject(m_dc.m_hDC, m_bitmap.m_hObject);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas() { ::SelectObject(m_dc.m_hDC, m_old); }

    CDC* DC() { return &m_dc; }
    // The image's memory drawn by GDI alone.
    bench::Work Stretching(bench::PackedCopy& source)
    {
        return {[this, &source] {
            const auto* const info = reinterpret_cast<const BITMAPINFO*>(source.Data());
            const BITMAPINFOHEADER& header = info->bmiHeader;
            const DWORD colors = header.biBitCount <= 8 ? 1U << header.biBitCount : 0;
            ::StretchDIBits(m_dc.m_hDC, 0, 0, header.biWidth, header.biHeight, 0, 0, header.biWidth,
                            header.biHeight, source.Data() + header.biSize + colors * sizeof(RGBQUAD), info,
                            DIB_RGB_COLORS, SRCCOPY);
        }};
    }

private:
    CDC m_dc;
    CBitmap m_bitmap;
    HGDIOBJ m_old = nullptr;
};

void Measure(int pixels, WORD bitCount)
{
    CDib dib;
    bench::MakePicture(dib, bench::PictureWidth(pixels), bench::PictureHeight(pixels), bitCount);
    bench::PackedCopy source(dib);
    Canvas canvas(dib);
    CDC* const dc = canvas.DC();
    const CRect all(0, 0, dib.GetWidth(), dib.GetHeight());
    const bench::Yardstick stretch{"StretchDIBits from memory", canvas.Stretching(source)};
    const auto compare = [&](const char* what, const std::function<void()>& body) {
        bench::Compare((bitCount == 8 ? "8 bits: " : "24 bits: ") + std::string(what), pixels, "pixels",
                       {body}, stretch);
    };
    compare("Display", [&] { dib.Display(dc, 0, 0, SRCCOPY); });
    compare("DitherDisplay", [&] { dib.DitherDisplay(dc, all, all, SRCCOPY); });
    compare("fading in, one frame and the black", [&] { dib.Display(20, dc, 0, 0, 1, 0, SRCCOPY); });
    compare("fading out, one frame", [&] { dib.Clear(20, dc, 0, 0, 1, 0); });
}

void Run()
{
    for (const int pixels : bench::Sizes({10000, 100000, 1000000}))
        Measure(pixels, 24);
    Measure(bench::Sizes({10000, 100000}).back(), 8);
}

const bench::Subject g_subject("dib_display", &Run);

} // namespace
