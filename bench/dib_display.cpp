// Dithering and fading an image, against a plain copy of the same image's memory.
#include "bench/bench.h"
#include "vgui/imaging/dib.h"

#include <cstring>
#include <vector>

namespace
{

constexpr DWORD kWidth = 1024;
constexpr DWORD kHeight = 768;

void FillPicture(BYTE* rows, size_t bytes)
{
    for (size_t i = 0; i < bytes; ++i)
        rows[i] = static_cast<BYTE>(i / 3 % kWidth / 8 + i / (3 * kWidth) / 8 + i % 3 * 16 + i * 7 % 5);
}

// Every frame of a fade ends with a new bitmap; what that costs is shown by itself, too.
void RunDepth(WORD bitCount)
{
    CDib dib;
    dib.Create(kWidth, kHeight, 24);
    FillPicture(dib.GetBitsPtr(), static_cast<size_t>(dib.GetWidthBytes()) * kHeight);
    dib.ConvertFormat(bitCount);
    const size_t bytes = ::GlobalSize(dib.GetHandle());
    std::vector<BYTE> source(bytes);
    std::vector<BYTE> copy(bytes);
    const double copying = bench::Fastest([&] { std::memcpy(copy.data(), source.data(), bytes); });

    char title[80];
    wsprintfA(title, "Dither and fades, %u x %u, %u bits", kWidth, kHeight, bitCount);
    bench::PrintHeading(title, "copying the memory", copying);

    // A bitmap of one pixel: the drawing itself costs nothing.
    CDC dc;
    CBitmap bitmap;
    dc.CreateCompatibleDC(nullptr);
    bitmap.CreateBitmap(1, 1, 1, 32, nullptr);
    CBitmap* const old = dc.SelectObject(&bitmap);
    const CRect pixel(0, 0, 1, 1);
    const auto row = [&](const char* name, auto body) {
        bench::PrintRow(name, bench::Fastest(body), copying);
    };
    row("Display", [&] { dib.Display(&dc, 0, 0, SRCCOPY); });
    row("(BuildBitmap)", [&] { dib.BuildBitmap(); });
    row("DitherDisplay", [&] { dib.DitherDisplay(&dc, pixel, pixel, SRCCOPY); });
    row("fade in, one frame and the black", [&] { dib.Display(20, &dc, 0, 0, 1, 0, SRCCOPY); });
    row("fade out, one frame", [&] { dib.Clear(20, &dc, 0, 0, 1, 0); });
    dc.SelectObject(old);
}

void Run()
{
    for (const WORD bitCount : {WORD{24}, WORD{32}, WORD{16}, WORD{8}})
        RunDepth(bitCount);
}

const bench::Subject g_subject("dib_display", &Run);

} // namespace
