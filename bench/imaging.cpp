// Image processing, against a copy of the image's memory to a new block, or against GDI where it can do the
// same.
#include "bench/bench.h"
#include "bench/picture.h"

#include <string>

namespace
{

constexpr int kFewPixels = 10000; // of a quick run
constexpr int kManyPixels = 1000000;

struct Operation {
    const char* name;
    int (*run)(CDib& dib);
};

const Operation kOperations[] = {
    {"Rotate90", [](CDib& dib) { return dib.Rotate90(); }},
    {"Rotate270", [](CDib& dib) { return dib.Rotate270(); }},
    {"ChangeCanvasSize, 10 more",
     [](CDib& dib) { return dib.ChangeCanvasSize(dib.GetWidth() + 10, dib.GetHeight() + 10, 4); }},
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

// What StretchBlt does as well.
struct Stretch {
    const char* name;
    int (*run)(CDib& dib);
    double width; // the result's size and direction, in those of the source
    double height;
};

const Stretch kStretches[] = {
    {"Rotate180", [](CDib& dib) { return dib.Rotate180(); }, -1, -1},
    {"FlipHorz", [](CDib& dib) { return dib.FlipHorz(); }, -1, 1},
    {"FlipVert", [](CDib& dib) { return dib.FlipVert(); }, 1, -1},
    {"ChangeImageSize to the half",
     [](CDib& dib) { return dib.ChangeImageSize(dib.GetWidth() / 2, dib.GetHeight() / 2); }, 0.5, 0.5},
    {"ChangeImageSize to 4/3",
     [](CDib& dib) { return dib.ChangeImageSize(dib.GetWidth() * 4 / 3, dib.GetHeight() * 4 / 3); }, 4.0 / 3,
     4.0 / 3},
};

// The image made anew from memory each time, and then changed.
bench::Work Changing(CDib& dib, bench::PackedCopy& source, int (*run)(CDib&))
{
    return {[&dib, run] { run(dib); }, [&dib, &source] { dib.Create(source.Data()); }};
}

// StretchBlt to a new DIB section.
bench::Work Stretching(const CDib& picture, const Stretch& stretch)
{
    return {[&picture, &stretch] {
        const auto width = static_cast<int>(picture.GetWidth() * stretch.width);
        const auto height = static_cast<int>(picture.GetHeight() * stretch.height);
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader,
                          std::abs(width),
                          std::abs(height),
                          1,
                          picture.GetBitCount(),
                          BI_RGB,
                          0,
                          0,
                          0,
                          0,
                          0};
        void* bits = nullptr;
        const HBITMAP result = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        CDC from;
        CDC to;
        from.CreateCompatibleDC(nullptr);
        to.CreateCompatibleDC(nullptr);
        const HGDIOBJ oldFrom = ::SelectObject(from.m_hDC, picture.GetBitmap()->m_hObject);
        const HGDIOBJ oldTo = ::SelectObject(to.m_hDC, result);
        // Like the operations: mixing pixels where the picture shrinks, or interpolating where it grows.
        to.SetStretchBltMode(HALFTONE);
        to.StretchBlt(width < 0 ? -width - 1 : 0, height < 0 ? -height - 1 : 0, width, height, &from, 0, 0,
                      picture.GetWidth(), picture.GetHeight(), SRCCOPY);
        ::SelectObject(from.m_hDC, oldFrom);
        ::SelectObject(to.m_hDC, oldTo);
        ::DeleteObject(result);
    }};
}

// Every operation on images of 24 bits; how the cost grows is shown by the sum of all.
void MeasureEach()
{
    const int pixels = bench::Sizes({kFewPixels, kManyPixels}).back();
    CDib picture;
    bench::MakePicture(picture, bench::PictureWidth(pixels), bench::PictureHeight(pixels), 24);
    bench::PackedCopy source(picture);
    CDib dib;
    const bench::Yardstick copy{"memory copied to a new block", source.Copying()};
    bench::Compare("(the image made, as every operation's result is)", pixels, "pixels",
                   {[&] { dib.Create(source.Data()); }}, copy);
    for (const Operation& operation : kOperations)
        bench::Compare(operation.name, pixels, "pixels", Changing(dib, source, operation.run), copy);
    for (const Stretch& stretch : kStretches)
        bench::Compare(stretch.name, pixels, "pixels", Changing(dib, source, stretch.run),
                       {"StretchBlt to a new DIB section", Stretching(picture, stretch)});
}

// Operations that mix pixels make 24 bits of an indexed image, so that is what is copied for all depths.
void MeasureAll(int pixels, WORD bitCount)
{
    CDib picture;
    bench::MakePicture(picture, bench::PictureWidth(pixels), bench::PictureHeight(pixels), 24);
    const bench::PackedCopy colors(picture);
    picture.ConvertFormat(bitCount);
    bench::PackedCopy source(picture);
    CDib dib;
    const auto runAll = [&] {
        for (const Operation& operation : kOperations) {
            dib.Create(source.Data());
            operation.run(dib);
        }
    };
    const bench::Work copy = colors.Copying();
    const auto copyAll = [&] {
        for (size_t i = 0; i < std::size(kOperations); ++i)
            copy.body();
    };
    bench::Compare("16 operations at " + std::to_string(bitCount) + " bits", pixels, "pixels", {runAll},
                   {"24 bits copied to a new block 16 times", {copyAll}});
}

void Run()
{
    MeasureEach();
    // Smaller blocks come from memory that was in use before or from fresh pages, as the heap pleases.
    for (const int pixels : {kManyPixels, 10 * kManyPixels})
        MeasureAll(bench::Sizes({kFewPixels, pixels}).back(), 24);
    for (const WORD bitCount : {WORD{32}, WORD{16}, WORD{8}, WORD{1}})
        MeasureAll(bench::Sizes({kFewPixels, kManyPixels}).back(), bitCount);
}

const bench::Subject g_subject("imaging", &Run);

} // namespace
