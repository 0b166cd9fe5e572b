// Images when memory or the system's objects run out: an operation that fails leaves its image as it was.
#include "tests/support/pixels.h"
#include "tests/support/refusals.h"
#include "vgui/imaging/dib.h"
#include "vgui/imaging/dib_pal.h"

#include <cstring>

using namespace support;

namespace
{

using Bytes = std::vector<BYTE>;

constexpr SIZE kSize{6, 5};

Bytes BytesOf(HGLOBAL block)
{
    const auto* const first = static_cast<const BYTE*>(::GlobalLock(block));
    Bytes bytes(first, first + ::GlobalSize(block));
    ::GlobalUnlock(block);
    return bytes;
}

// A packed image of many colours.
Bytes PackedDib(WORD bitCount)
{
    const size_t colors = bitCount <= 8 ? size_t{1} << bitCount : 0;
    const size_t rowBytes = (static_cast<size_t>(kSize.cx) * bitCount + 31) / 32 * 4;
    Bytes bytes(sizeof(BITMAPINFOHEADER) + colors * sizeof(RGBQUAD) + rowBytes * kSize.cy);
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<BYTE>(i * 37);
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = kSize.cx;
    header.biHeight = kSize.cy;
    header.biPlanes = 1;
    header.biBitCount = bitCount;
    std::memcpy(bytes.data(), &header, sizeof header);
    return bytes;
}

// Holds an image that was made without refusals.
bool Fill(CDib& dib, WORD bitCount)
{
    return dib.Create(PackedDib(bitCount).data());
}

// change answers TRUE when it has changed the image.
RefusedOperation Change(const char* name, WORD bitCount, const std::function<int(CDib&)>& change)
{
    return {name, [=] {
                CDib dib;
                if (!Fill(dib, bitCount))
                    return;
                const HGLOBAL block = dib.GetHandle();
                const CBitmap* const bitmap = dib.GetBitmap();
                const Bytes bytes = BytesOf(block);
                if (!change(dib) && dib.GetHandle() == block) {
                    EXPECT_EQ(BytesOf(block), bytes);
                    EXPECT_EQ(dib.GetBitmap(), bitmap);
                }
                EXPECT_NE(dib.GetHandle(), nullptr);
            }};
}

std::vector<RefusedOperation> Changes()
{
    const CRect part(1, 1, 4, 3);
    return {
        Change("colours from 8 to 24 bits", 8, [](CDib& dib) { return dib.ConvertFormat(24); }),
        Change("colours from 24 to 8 bits", 24, [](CDib& dib) { return dib.ConvertFormat(8); }),
        Change("colours from 32 to 4 bits", 32, [](CDib& dib) { return dib.ConvertFormat(4); }),
        Change("colours from 24 to 1 bit", 24, [](CDib& dib) { return dib.ConvertFormat(1); }),
        Change("quarter turn", 24, [](CDib& dib) { return dib.Rotate90(); }),
        Change("mirror", 8, [](CDib& dib) { return dib.FlipHorz(); }),
        Change("zoom", 24, [](CDib& dib) { return dib.Zoom(2.0, 1.5); }),
        Change("canvas", 24, [](CDib& dib) { return dib.ChangeCanvasSize(9, 9, 0); }),
        Change("brightness", 24, [](CDib& dib) { return dib.AdjustBrightness(30); }),
        Change("grey", 24, [](CDib& dib) { return dib.ChangeToGrayscale(0, 0.3, 0.6, 0.1); }),
        Change("fewer colours", 24, [](CDib& dib) { return dib.ColorQuantize(16); }),
        Change("edges", 24, [](CDib& dib) { return dib.EdgeEnhance(2, 1); }),
        Change("median", 24, [](CDib& dib) { return dib.MedianFilter(3); }),
        Change("crop", 24, [=](CDib& dib) { return dib.Crop(part); }),
        Change("cut", 8, [=](CDib& dib) { return dib.CutRect(part); }),
        Change("another size", 24, [](CDib& dib) { return dib.Create(DWORD{3}, DWORD{3}, WORD{24}); }),
        Change("the screen", 24, [](CDib& dib) { return dib.Create(CRect(0, 0, 4, 4)); }),
        Change("another block", 24,
               [=](CDib& dib) {
                   const HGLOBAL block = dib.CopyRect(part);
                   const int attached = dib.Attach(block);
                   if (dib.GetHandle() != block)
                       ::GlobalFree(block);
                   return attached;
               }),
        Change("merge", 24,
               [](CDib& dib) {
                   CDib other;
                   return Fill(other, 8) && dib.MergeDib(other.GetHandle(), {1, 1});
               }),
        Change("file", 24,
               [](CDib& dib) {
                   CMemFile file;
                   if (!dib.Write(&file))
                       return FALSE;
                   file.SeekToBegin();
                   return dib.Read(&file);
               }),
    };
}

// Shows an image of so many bits on a surface.
RefusedOperation Show(const std::string& name, WORD bitCount, const std::function<void(CDib&, CDC&)>& show)
{
    return {name, [=] {
                const DibSurface surface(20, 20);
                CDib dib;
                if (Fill(dib, bitCount))
                    show(dib, surface.DC());
            }};
}

std::vector<RefusedOperation> Shows()
{
    const CRect whole(0, 0, kSize.cx, kSize.cy);
    std::vector<RefusedOperation> operations = {
        Show("stretched", 8,
             [=](CDib& dib, CDC& dc) { dib.Display(&dc, CRect(0, 0, 20, 20), whole, SRCCOPY); }),
        Show("transparent", 24, [](CDib& dib, CDC& dc) { dib.DisplayTransparent(&dc, 1, 1, 0); }),
        Show("dithered", 24, [=](CDib& dib, CDC& dc) { dib.DitherDisplay(&dc, whole, whole, SRCCOPY); }),
        Show("its palette", 8, [](CDib& dib, CDC& dc) { dib.DisplayPalette(&dc, CRect(0, 0, 20, 20)); }),
        Show("palette and bitmap made anew", 8,
             [](CDib& dib, CDC&) {
                 dib.BuildPalette();
                 dib.BuildBitmap();
             }),
        Show("painted on", 24,
             [](CDib& dib, CDC&) {
                 if (CDC* const dc = dib.BeginPaint(nullptr)) {
                     dc->FillSolidRect(0, 0, 2, 2, RGB(1, 2, 3));
                     dib.EndPaint();
                 }
             }),
    };
    for (int effect = 1; effect <= 20; ++effect)
        operations.push_back(Show("effect " + std::to_string(effect), 24, [=](CDib& dib, CDC& dc) {
            dib.Display(effect, &dc, 0, 0, 3, 0, SRCCOPY);
            dib.Clear(effect, &dc, 0, 0, 3, 0);
        }));
    return operations;
}

void UsePalette()
{
    CDIB image;
    if (!image.Create(8, 8, 8))
        return;
    CDIBSurface surface;
    surface.Create(image);
    for (const auto create : {&CDIBPal::CreateWash, &CDIBPal::CreateSystemColorPalette}) {
        CDIBPal palette;
        if (!(palette.*create)())
            continue;
        const DibSurface shown(20, 20);
        CRect area(0, 0, 20, 20);
        palette.Draw(&shown.DC(), &area, FALSE);
        palette.SetSysPalColors();
        CMemFile file;
        if (!palette.Save(&file))
            continue;
        file.SeekToBegin();
        CDIBPal other;
        other.Load(&file);
    }
}

} // namespace

TEST(RefusedImages, ObjectsWhileTheyChange)
{
    ExpectRefusalsSurvived(Refused::Objects, Changes());
}

TEST(RefusedImages, MemoryWhileTheyChange)
{
    ExpectRefusalsSurvived(Refused::Memory, Changes());
}

TEST(RefusedImages, ObjectsWhileTheyAreShown)
{
    ExpectRefusalsSurvived(Refused::Objects, Shows());
}

TEST(RefusedImages, MemoryWhileTheyAreShown)
{
    ExpectRefusalsSurvived(Refused::Memory, Shows());
}

TEST(RefusedImages, ObjectsForPalettes)
{
    ExpectRefusalsSurvived(Refused::Objects, {{"palettes", UsePalette}});
}

TEST(RefusedImages, MemoryForPalettes)
{
    ExpectRefusalsSurvived(Refused::Memory, {{"palettes", UsePalette}});
}
