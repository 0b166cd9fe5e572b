// Image processing, against a plain copy of the same image's memory.
#include "bench/bench.h"
#include "vgui/imaging/dib.h"

#include <cstring>
#include <vector>

namespace
{

constexpr DWORD kWidth = 1024;
constexpr DWORD kHeight = 768;

struct Operation {
    const char* name;
    int (*run)(CDib& dib);
};

const Operation kOperations[] = {
    {"Rotate90", [](CDib& dib) { return dib.Rotate90(); }},
    {"Rotate180", [](CDib& dib) { return dib.Rotate180(); }},
    {"Rotate270", [](CDib& dib) { return dib.Rotate270(); }},
    {"FlipHorz", [](CDib& dib) { return dib.FlipHorz(); }},
    {"FlipVert", [](CDib& dib) { return dib.FlipVert(); }},
    {"ChangeImageSize to the half", [](CDib& dib) { return dib.ChangeImageSize(kWidth / 2, kHeight / 2); }},
    {"ChangeImageSize to 4/3",
     [](CDib& dib) { return dib.ChangeImageSize(kWidth * 4 / 3, kHeight * 4 / 3); }},
    {"ChangeCanvasSize", [](CDib& dib) { return dib.ChangeCanvasSize(kWidth + 10, kHeight + 10, 4); }},
    {"AdjustBrightness", [](CDib& dib) { return dib.AdjustBrightness(20); }},
    {"AdjustContrast", [](CDib& dib) { return dib.AdjustContrast(20); }},
    {"AdjustColor", [](CDib& dib) { return dib.AdjustColor(10, -10, 5, 0); }},
    {"ChangeToGrayscale", [](CDib& dib) { return dib.ChangeToGrayscale(CDib::GrayBT601, 0, 0, 0); }},
    {"FilteRGB", [](CDib& dib) { return dib.FilteRGB(CDib::ChannelRed); }},
    {"SeparateRGB", [](CDib& dib) { return dib.SeparateRGB(CDib::ChannelRed); }},
    {"EdgeEnhance", [](CDib& dib) { return dib.EdgeEnhance(50, CDib::EdgeBoth); }},
    {"HighPass", [](CDib& dib) { return dib.HighPass(50, CDib::HighPassLaplace8); }},
    {"LowPass", [](CDib& dib) { return dib.LowPass(50, CDib::LowPassGauss); }},
    {"MedianFilter 3", [](CDib& dib) { return dib.MedianFilter(3); }},
    {"MedianFilter 9", [](CDib& dib) { return dib.MedianFilter(9); }},
    {"ColorQuantize 16", [](CDib& dib) { return dib.ColorQuantize(16); }},
    {"ColorQuantize 256", [](CDib& dib) { return dib.ColorQuantize(256); }},
};

// A smooth picture with some noise, as photographs are.
void FillPicture(BYTE* rows, size_t bytes)
{
    unsigned noise = 1;
    for (size_t i = 0; i < bytes; ++i) {
        noise = noise * 1664525U + 1013904223U;
        rows[i] = static_cast<BYTE>(i / 3 % kWidth / 8 + i / (3 * kWidth) / 8 + i % 3 * 16 + (noise >> 29U));
    }
}

void RunDepth(WORD bitCount)
{
    CDib picture;
    picture.Create(kWidth, kHeight, 24);
    FillPicture(picture.GetBitsPtr(), static_cast<size_t>(picture.GetWidthBytes()) * kHeight);
    picture.ConvertFormat(bitCount);
    const size_t bytes = ::GlobalSize(picture.GetHandle());
    std::vector<BYTE> source(bytes);
    std::memcpy(source.data(), ::GlobalLock(picture.GetHandle()), bytes);
    ::GlobalUnlock(picture.GetHandle());

    std::vector<BYTE> copy(bytes);
    const double copying = bench::Fastest([&] { std::memcpy(copy.data(), source.data(), bytes); });
    char title[80];
    wsprintfA(title, "Image processing, %u x %u, %u bits", kWidth, kHeight, bitCount);
    bench::PrintHeading(title, "copying the memory", copying);
    // What every operation ends with: a new block, palette and bitmap.
    CDib dib;
    bench::PrintRow("(Create from memory)", bench::Fastest([&] { dib.Create(source.data()); }), copying);
    for (const Operation& operation : kOperations) {
        const double time = bench::Fastest([&] { dib.Create(source.data()); }, [&] { operation.run(dib); });
        bench::PrintRow(operation.name, time, copying);
    }
}

void Run()
{
    for (const WORD bitCount : {WORD{24}, WORD{32}, WORD{16}, WORD{8}, WORD{1}})
        RunDepth(bitCount);
}

const bench::Subject g_subject("imaging", &Run);

} // namespace
