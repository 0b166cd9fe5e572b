// The DIB object in memory: creation, ownership, access, rectangles, conversion and captures.
#include "tests/imaging/dib_samples.h"
#include "tests/support/pixels.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/imaging/dib_pal.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <functional>

namespace
{

using samples::Bytes;
using samples::PackedDib;
using samples::ShownColor;
using samples::State;

constexpr WORD kDepths[] = {1, 4, 8, 16, 24, 32};
constexpr COLORREF kWhite = RGB(255, 255, 255);

using DibTest = samples::DibFixture;

int ScreenBits()
{
    return CClientDC(nullptr).GetDeviceCaps(BITSPIXEL);
}

// A DIB section of 5 x 3 pixels in which the pixel (x, y) has the colour SectionColor.
COLORREF SectionColor(int x, int y)
{
    return RGB(x * 50, y * 100, 255 - x * 20);
}

VOwnedBitmap SectionBitmap(LONG height)
{
    BITMAPINFO info = {{sizeof(BITMAPINFOHEADER), 5, height, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
    void* bits = nullptr;
    VOwnedBitmap bitmap(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const VOwnedMemoryDC dc(::CreateCompatibleDC(nullptr));
    const VSelectScope selected(dc.Get(), bitmap.Get());
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x)
            ::SetPixelV(dc.Get(), x, y, SectionColor(x, y));
    return bitmap;
}

} // namespace

TEST_F(DibTest, EmptyObjectAnswersNothing)
{
    EXPECT_TRUE(m_dib.IsEmpty());
    EXPECT_EQ(m_dib.GetBitCount(), 0);
    EXPECT_EQ(m_dib.GetWidth(), 0);
    EXPECT_EQ(m_dib.GetWidthBytes(), 0);
    EXPECT_EQ(m_dib.GetPixelOffset(1, 1), 0);
    EXPECT_EQ(m_dib.GetPixel(0, 0), 0U);
    EXPECT_EQ(m_dib.GetBitsPtr(), nullptr);
    EXPECT_EQ(m_dib.Detach(), nullptr);
    EXPECT_EQ(m_dib.CopyRect({0, 0, 1, 1}), nullptr);
    EXPECT_FALSE(m_dib.Crop({0, 0, 1, 1}));
    EXPECT_FALSE(m_dib.CutRect({0, 0, 1, 1}));
    EXPECT_FALSE(m_dib.ConvertFormat(8));
    EXPECT_FALSE(m_dib.BuildPalette());
    EXPECT_FALSE(m_dib.BuildBitmap());
    EXPECT_TRUE(samples::WrittenBytes(m_dib).empty());
}

TEST_F(DibTest, BlankImagesRoundTheDepthUpAndAbove24BitsTo4)
{
    constexpr struct {
        WORD asked;
        WORD made;
        WORD colors;
    } kCases[] = {{0, 1, 2},  {1, 1, 2},   {2, 4, 16},  {4, 4, 16},  {5, 8, 256}, {8, 8, 256},
                  {9, 24, 0}, {16, 24, 0}, {24, 24, 0}, {25, 4, 16}, {32, 4, 16}};
    for (const auto& item : kCases) {
        SCOPED_TRACE(item.asked);
        ASSERT_TRUE(m_dib.Create(DWORD{9}, DWORD{5}, item.asked));
        EXPECT_EQ(m_dib.GetBitCount(), item.made);
        EXPECT_EQ(m_dib.GetColorNumber(), item.colors);
        EXPECT_EQ(m_dib.GetPaletteSize(), item.colors * 4);
        EXPECT_EQ(m_dib.GetWidth(), 9);
        EXPECT_EQ(m_dib.GetHeight(), 5);
        EXPECT_EQ(m_dib.GetWidthBytes(), (9 * item.made + 31) / 32 * 4);
        EXPECT_EQ(m_dib.GetPalette() != nullptr, item.colors != 0);
        const Bytes bytes = samples::BlockBytes(m_dib.GetHandle());
        ASSERT_EQ(bytes.size(), 40U + item.colors * 4U + static_cast<size_t>(m_dib.GetWidthBytes()) * 5);
        EXPECT_EQ(std::count(bytes.begin() + 16, bytes.end(), BYTE{0}), std::ssize(bytes) - 16);
    }
}

TEST_F(DibTest, ScreenDepthImagesAreFilledWithOnes)
{
    const int bits = ScreenBits();
    ASSERT_TRUE(m_dib.Create(DWORD{9}, DWORD{5}));
    EXPECT_EQ(m_dib.GetBitCount(), bits > 24 ? 4 : bits > 8 ? 24 : bits);
    for (LONG i = 0; i < m_dib.GetWidthBytes() * 5; ++i)
        ASSERT_EQ(m_dib.GetBitsPtr()[i], 0xFF) << i;
    // The colours are the system palette's when the screen has one, else all zero.
    PALETTEENTRY entries[256] = {};
    if (bits <= 8)
        ::GetSystemPaletteEntries(CClientDC(nullptr).m_hDC, 0, 1U << bits, entries);
    const Bytes bytes = samples::BlockBytes(m_dib.GetHandle());
    for (size_t i = 0; i < m_dib.GetColorNumber(); ++i) {
        const BYTE wanted[] = {entries[i].peBlue, entries[i].peGreen, entries[i].peRed, 0};
        ASSERT_EQ(std::memcmp(bytes.data() + 40 + 4 * i, wanted, 4), 0) << i;
    }
}

TEST_F(DibTest, PackedDibsOfEveryDepthAreCopiedAndShown)
{
    for (const WORD bitCount : kDepths) {
        SCOPED_TRACE(bitCount);
        Bytes bytes = PackedDib({.bitCount = bitCount});
        ASSERT_TRUE(m_dib.Create(bytes.data()));
        // The copy knows the size of its image; the original is not written to.
        EXPECT_EQ(samples::HeaderOf(bytes).biSizeImage, 0U);
        samples::HeaderOf(bytes).biSizeImage = static_cast<DWORD>(m_dib.GetWidthBytes() * 7);
        EXPECT_EQ(samples::BlockBytes(m_dib.GetHandle()), bytes);

        support::DibSurface wanted(13, 7);
        ::SetDIBitsToDevice(wanted.DC().m_hDC, 0, 0, 13, 7, 0, 0, 0, 7, m_dib.GetBitsPtr(),
                            reinterpret_cast<const BITMAPINFO*>(bytes.data()), DIB_RGB_COLORS);
        support::ExpectPixels(wanted, [&](int x, int y) { return Shown(x, y); });
    }
}

TEST_F(DibTest, CoreHeadersAreTakenWithTheirOwnColorTable)
{
    Bytes bytes = PackedDib({.bitCount = 8, .hasCoreHeader = true});
    ASSERT_TRUE(m_dib.Create(bytes.data()));
    EXPECT_EQ(m_dib.GetWidth(), 13);
    EXPECT_EQ(m_dib.GetHeight(), 7);
    EXPECT_EQ(m_dib.GetBitCount(), 8);
    EXPECT_EQ(m_dib.GetPaletteSize(), 768);
    EXPECT_EQ(samples::BlockBytes(m_dib.GetHandle()), bytes);
    const BYTE* const entry = bytes.data() + 12 + 3 * m_dib.GetBitsPtr()[m_dib.GetPixelOffset(4, 2)];
    EXPECT_EQ(Shown(4, 2), RGB(entry[2], entry[1], entry[0]));
    EXPECT_EQ(m_dib.GetPixel(4, 2), Shown(4, 2));
    // What is made of it has the usual header.
    ASSERT_TRUE(m_dib.Crop({4, 2, 6, 3}));
    EXPECT_EQ(samples::BlockBytes(m_dib.GetHandle())[0], 40);
    EXPECT_EQ(Shown(0, 0), RGB(entry[2], entry[1], entry[0]));
}

TEST_F(DibTest, TopDownImagesAreTurnedOver)
{
    Bytes bytes = PackedDib({.height = -7});
    const Bytes first(bytes.begin() + 40, bytes.begin() + 43);
    const auto expect = [&] {
        EXPECT_EQ(m_dib.GetHeight(), 7);
        EXPECT_EQ(m_dib.GetPixel(0, 0), RGB(first[0], first[1], first[2]));
        EXPECT_EQ(Shown(0, 0), RGB(first[2], first[1], first[0]));
    };
    ASSERT_TRUE(m_dib.Create(bytes.data()));
    expect();
    ASSERT_TRUE(m_dib.Attach(samples::GlobalBlock(bytes)));
    expect();
    bytes = PackedDib({.bitCount = 8, .height = -7, .compression = BI_RLE8});
    EXPECT_FALSE(m_dib.Create(bytes.data()));
    expect();
}

TEST_F(DibTest, HeadersThatMakeNoSenseAreRefused)
{
    Fill({});
    const State before(m_dib);
    const std::function<void(BITMAPINFOHEADER&)> kChanges[] = {
        [](BITMAPINFOHEADER& header) { header.biSize = 108; },
        [](BITMAPINFOHEADER& header) { header.biSize = 0; },
        [](BITMAPINFOHEADER& header) { header.biWidth = 0; },
        [](BITMAPINFOHEADER& header) { header.biWidth = -13; },
        [](BITMAPINFOHEADER& header) { header.biHeight = 0; },
        [](BITMAPINFOHEADER& header) { header.biHeight = LONG_MIN; },
        [](BITMAPINFOHEADER& header) { header.biWidth = header.biHeight = LONG_MAX; },
        [](BITMAPINFOHEADER& header) { header.biPlanes = 3; },
        [](BITMAPINFOHEADER& header) { header.biBitCount = 0; },
        [](BITMAPINFOHEADER& header) { header.biBitCount = 2; },
        [](BITMAPINFOHEADER& header) { header.biCompression = BI_PNG; },
        [](BITMAPINFOHEADER& header) { header.biCompression = BI_RLE8; }, // at 24 bits
    };
    for (const auto& change : kChanges) {
        Bytes bytes = PackedDib({});
        change(samples::HeaderOf(bytes));
        EXPECT_FALSE(m_dib.Create(bytes.data()));
        EXPECT_FALSE(m_dib.Create(bytes.data(), WORD{8}));
        const HGLOBAL block = samples::GlobalBlock(bytes);
        EXPECT_FALSE(m_dib.Attach(block));
        EXPECT_FALSE(m_dib.MergeDib(block, {0, 0}));
        // A refused block stays the caller's.
        EXPECT_EQ(::GlobalFree(block), nullptr);
        EXPECT_EQ(State(m_dib), before);
    }
}

// A compressed image may claim any size. GDI would write beyond its memory where a count overflows 32 bits.
TEST_F(DibTest, SizesThatOverflowAtTheDevicesDepthAreRefused)
{
    constexpr LONG kMostWidth = 0x3FFFFFF;
    constexpr SIZE kLargest[] = {{kMostWidth, 1}, {0x8000, 0x3FFF}, {1, 0x1FFFFFFF}};
    constexpr SIZE kTooLarge[] = {{kMostWidth + 1, 1}, {134217741, 7},   {0x40000000, 1},
                                  {LONG_MAX, 1},       {0x8000, 0x4000}, {3, 0x1FFFFFFF}};
    Fill({});
    const State before(m_dib);
    for (const auto& [bitCount, compression] : {std::pair{8, BI_RLE8}, {4, BI_RLE4}}) {
        Bytes bytes = PackedDib(
            {.bitCount = static_cast<WORD>(bitCount), .compression = static_cast<DWORD>(compression)});
        const auto claim = [&bytes](SIZE size) {
            samples::HeaderOf(bytes).biWidth = size.cx;
            samples::HeaderOf(bytes).biHeight = size.cy;
        };
        for (const SIZE size : kTooLarge) {
            claim(size);
            EXPECT_FALSE(m_dib.Create(bytes.data()));
            EXPECT_EQ(State(m_dib), before) << size.cx << " x " << size.cy;
        }
        for (const SIZE size : kLargest) {
            claim(size);
            CDib dib;
            dib.Create(bytes.data());
            EXPECT_EQ(dib.GetWidth(), size.cx);
        }
    }
    EXPECT_FALSE(CDIB().Create(kMostWidth + 1, 1, 1));
}

TEST_F(DibTest, FailuresLeaveTheImageAlone)
{
    Fill({.bitCount = 8});
    const State before(m_dib);
    Bytes shortDib = PackedDib({});
    shortDib.pop_back();
    const HGLOBAL shortBlock = samples::GlobalBlock(shortDib);
    const VOwnedBitmap plain(::CreateBitmap(4, 4, 1, 1, nullptr));
    const struct {
        const char* name;
        std::function<int(CDib&)> run;
    } kOperations[] = {
        {"blank without size", [](CDib& dib) { return dib.Create(DWORD{0}, DWORD{5}, WORD{8}); }},
        {"blank too large", [](CDib& dib) { return dib.Create(DWORD{0xFFFFFFFF}, DWORD{5}, WORD{8}); }},
        {"blank above 2 GB", [](CDib& dib) { return dib.Create(DWORD{100000}, DWORD{100000}); }},
        {"null memory", [](CDib& dib) { return dib.Create(LPBYTE{nullptr}); }},
        {"null memory and depth", [](CDib& dib) { return dib.Create(LPBYTE{nullptr}, WORD{4}); }},
        {"null section", [](CDib& dib) { return dib.Create(HBITMAP{nullptr}); }},
        {"no section", [&](CDib& dib) { return dib.Create(plain.Get()); }},
        {"no section and depth", [&](CDib& dib) { return dib.Create(plain.Get(), WORD{24}); }},
        {"null bitmap", [](CDib& dib) { return dib.Create(HBITMAP{nullptr}, HPALETTE{nullptr}); }},
        {"null bitmap and depth",
         [](CDib& dib) { return dib.Create(HBITMAP{nullptr}, HPALETTE{nullptr}, WORD{8}); }},
        {"unknown depth", [](CDib& dib) { return dib.ConvertFormat(2); }},
        {"no screen", [](CDib& dib) { return dib.Create(CRect(5, 5, 5, 9)); }},
        {"off the screen", [](CDib& dib) { return dib.Create(CRect(-20, -20, -10, -10)); }},
        {"no window", [](CDib& dib) { return dib.Create(HWND{nullptr}, WORD{1}); }},
        {"no window's part", [](CDib& dib) { return dib.Create(HWND{nullptr}, CRect(0, 0, 5, 5)); }},
        {"capture mode", [](CDib& dib) { return dib.Create(::GetDesktopWindow(), WORD{3}); }},
        {"null block", [](CDib& dib) { return dib.Attach(nullptr); }},
        {"short block", [&](CDib& dib) { return dib.Attach(shortBlock); }},
        {"empty crop", [](CDib& dib) { return dib.Crop(CRect(3, 3, 3, 5)); }},
        {"crop turned round", [](CDib& dib) { return dib.Crop(CRect(5, 5, 3, 3)); }},
        {"endless crop", [](CDib& dib) { return dib.Crop(CRect(LONG_MIN, LONG_MIN, LONG_MAX, LONG_MAX)); }},
        {"nothing to merge", [](CDib& dib) { return dib.MergeDib(nullptr, CPoint()); }},
        {"short merge", [&](CDib& dib) { return dib.MergeDib(shortBlock, CPoint()); }},
    };
    for (const auto& operation : kOperations) {
        EXPECT_FALSE(operation.run(m_dib)) << operation.name;
        ASSERT_EQ(State(m_dib), before) << operation.name;
    }
    EXPECT_EQ(::GlobalFree(shortBlock), nullptr);
}

TEST_F(DibTest, OwnershipPassesWithAttachAndDetach)
{
    Fill({.bitCount = 8});
    const HGLOBAL block = m_dib.Detach();
    EXPECT_TRUE(m_dib.IsEmpty());
    EXPECT_EQ(m_dib.GetBitmap(), nullptr);
    EXPECT_EQ(m_dib.GetPalette(), nullptr);
    ASSERT_TRUE(m_dib.Attach(block));
    EXPECT_EQ(m_dib.GetHandle(), block);
    EXPECT_NE(m_dib.GetBitmap(), nullptr);
    EXPECT_NE(m_dib.GetPalette(), nullptr);
    // Attaching what is held already only rebuilds.
    ASSERT_TRUE(m_dib.Attach(block));
    EXPECT_EQ(m_dib.GetHandle(), block);

    m_dib.Destroy();
    EXPECT_TRUE(m_dib.IsEmpty());
    EXPECT_NE(m_dib.GetBitmap(), nullptr);
    EXPECT_NE(m_dib.GetPalette(), nullptr);
    EXPECT_EQ(m_dib.Detach(), nullptr);
    EXPECT_NE(m_dib.GetBitmap(), nullptr);
    // An image without colour table takes the palette away.
    Fill({.bitCount = 24});
    EXPECT_EQ(m_dib.GetPalette(), nullptr);
}

TEST_F(DibTest, CompressedBlocksAreKeptThoughGdiCannotShowThem)
{
    Bytes bytes = PackedDib({.bitCount = 8, .compression = BI_RLE8});
    EXPECT_FALSE(m_dib.Create(bytes.data()));
    EXPECT_EQ(samples::BlockBytes(m_dib.GetHandle()), bytes);
    EXPECT_EQ(m_dib.GetCompression(), DWORD{BI_RLE8});
    EXPECT_NE(m_dib.GetPalette(), nullptr);
    EXPECT_EQ(m_dib.GetBitmap(), nullptr);
    EXPECT_EQ(m_dib.GetPixel(0, 0), 0U);
    EXPECT_FALSE(m_dib.ConvertFormat(24));
    EXPECT_FALSE(m_dib.CutRect({0, 0, 1, 1}));
    Bytes file = samples::BmpFile(bytes);
    const DWORD offset = 14 + 40 + 1024;
    std::memcpy(file.data() + 10, &offset, sizeof offset);
    EXPECT_EQ(samples::WrittenBytes(m_dib), file);
}

TEST_F(DibTest, PixelsAreReadByTheRuleOfTheirDepth)
{
    Fill({.bitCount = 1});
    for (int x = 0; x < 13; ++x) {
        const BYTE bits = m_dib.GetBitsPtr()[6 * 4 + x / 8];
        // The colour table, which is neither black nor white here, does not count.
        EXPECT_EQ(m_dib.GetPixel(x, 0), (bits << x % 8 & 0x80) != 0 ? kWhite : 0U) << x;
    }
    for (const WORD bitCount : {WORD{4}, WORD{8}}) {
        Fill({.bitCount = bitCount});
        for (int y = 0; y < 7; ++y)
            for (int x = 0; x < 13; ++x)
                ASSERT_EQ(m_dib.GetPixel(x, y), Shown(x, y)) << bitCount << ": " << x << ", " << y;
        EXPECT_EQ(m_dib.GetPixelOffset(5, 1), 5 * m_dib.GetWidthBytes() + 5 * bitCount / 8);
    }
    // Above, the bytes in their order: red and blue change places.
    Fill({.bitCount = 24});
    const COLORREF color = Shown(3, 2);
    EXPECT_EQ(m_dib.GetPixel(3, 2), RGB(GetBValue(color), GetGValue(color), GetRValue(color)));
    EXPECT_EQ(m_dib.GetPixelOffset(3, 2), 4 * 40 + 9);
    for (const CPoint outside : {CPoint(-1, 0), CPoint(0, -1), CPoint(13, 0), CPoint(0, 7)})
        EXPECT_EQ(m_dib.GetPixel(outside.x, outside.y), 0U);

    // Entries that the palette lacks are black.
    Bytes bytes = PackedDib({.bitCount = 8, .clrUsed = 2});
    std::memset(bytes.data() + 48, 200, 16);
    ASSERT_TRUE(m_dib.Create(bytes.data()));
    EXPECT_EQ(m_dib.GetPixel(0, 6), 0U);
}

TEST_F(DibTest, BitmapsBecomeDibs)
{
    for (const LONG height : {3, -3}) {
        const VOwnedBitmap bitmap = SectionBitmap(height);
        const auto expectPixels = [&] {
            for (int y = 0; y < 3; ++y)
                for (int x = 0; x < 5; ++x)
                    ASSERT_EQ(Shown(x, y), SectionColor(x, y)) << height << ": " << x << ", " << y;
        };
        ASSERT_TRUE(m_dib.Create(bitmap.Get()));
        EXPECT_EQ(m_dib.GetBitCount(), 32);
        EXPECT_EQ(m_dib.GetHeight(), 3);
        expectPixels();
        ASSERT_TRUE(m_dib.Create(bitmap.Get(), WORD{24}));
        EXPECT_EQ(m_dib.GetBitCount(), 24);
        expectPixels();
        // Any bitmap above 8 bits becomes one of 24.
        ASSERT_TRUE(m_dib.Create(bitmap.Get(), HPALETTE{nullptr}));
        EXPECT_EQ(m_dib.GetBitCount(), 24);
        expectPixels();
        ASSERT_TRUE(m_dib.Create(bitmap.Get(), HPALETTE{nullptr}, WORD{32}));
        EXPECT_EQ(m_dib.GetBitCount(), 32);
        expectPixels();
    }
    constexpr WORD kMonoRows[] = {0x0080, 0x0040};
    const VOwnedBitmap mono(::CreateBitmap(3, 2, 1, 1, kMonoRows));
    ASSERT_TRUE(m_dib.Create(mono.Get(), HPALETTE{nullptr}));
    EXPECT_EQ(m_dib.GetBitCount(), 1);
    EXPECT_EQ(Shown(0, 0), kWhite);
    EXPECT_EQ(Shown(0, 1), 0U);
    EXPECT_EQ(Shown(1, 1), kWhite);

    // An 8-bit section brings its colours with it.
    Fill({.bitCount = 8});
    CDib other;
    ASSERT_TRUE(other.Create(static_cast<HBITMAP>(m_dib.GetBitmap()->m_hObject)));
    EXPECT_EQ(other.GetBitCount(), 8);
    for (int x = 0; x < 13; ++x)
        EXPECT_EQ(other.GetPixel(x, 3), m_dib.GetPixel(x, 3)) << x;
}

TEST_F(DibTest, PartsAreCopiedCutAndMerged)
{
    for (const WORD bitCount : kDepths) {
        SCOPED_TRACE(bitCount);
        Fill({.bitCount = bitCount});
        CDib original;
        const HGLOBAL whole = m_dib.CopyRect({0, 0, 13, 7});
        Bytes bytes = samples::BlockBytes(whole);
        EXPECT_EQ(samples::HeaderOf(bytes).biSizeImage, static_cast<DWORD>(m_dib.GetWidthBytes() * 7));
        ASSERT_TRUE(original.Attach(whole));
        const auto was = [&](int x, int y) { return ShownColor(original.GetBitmap(), x, y); };
        EXPECT_EQ(original.GetBitCount(), bitCount);
        EXPECT_EQ(was(12, 6), Shown(12, 6));

        ASSERT_TRUE(m_dib.Crop({2, 1, 7, 4}));
        EXPECT_EQ(m_dib.GetWidth(), 5);
        EXPECT_EQ(m_dib.GetHeight(), 3);
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 5; ++x)
                ASSERT_EQ(Shown(x, y), was(x + 2, y + 1)) << x << ", " << y;

        Fill({.bitCount = bitCount});
        ASSERT_TRUE(m_dib.MergeDib(original.GetHandle(), {4, 3}));
        EXPECT_EQ(Shown(3, 3), was(3, 3));
        EXPECT_EQ(Shown(4, 3), was(0, 0));
        EXPECT_EQ(Shown(12, 6), was(8, 3));
        // Also onto itself.
        ASSERT_TRUE(m_dib.Attach(original.Detach()));
        const COLORREF moved = Shown(2, 1);
        ASSERT_TRUE(m_dib.MergeDib(m_dib.GetHandle(), {4, 3}));
        EXPECT_EQ(Shown(6, 4), moved);
    }
    Fill({.bitCount = 24});
    const COLORREF corner = Shown(6, 4);
    ASSERT_TRUE(m_dib.CutRect({2, 1, 6, 4}));
    EXPECT_EQ(Shown(2, 1), kWhite);
    EXPECT_EQ(Shown(5, 3), kWhite);
    EXPECT_EQ(Shown(6, 4), corner);
    // What lies outside the image is zero.
    ASSERT_TRUE(m_dib.Crop({-1, -1, 20, 3}));
    EXPECT_EQ(m_dib.GetWidth(), 21);
    EXPECT_EQ(Shown(0, 0), 0U);
    EXPECT_EQ(Shown(3, 2), kWhite);
    EXPECT_EQ(Shown(20, 2), 0U);
    // The masks of such a block lie where the bottom left pixels do, and give all others their colours.
    Bytes fields = PackedDib({.bitCount = 32, .compression = BI_BITFIELDS});
    constexpr DWORD kMasks[] = {0x0000FF, 0x00FF00, 0xFF0000};
    std::memcpy(fields.data() + sizeof(BITMAPINFOHEADER), kMasks, sizeof kMasks);
    ASSERT_TRUE(m_dib.Create(fields.data()));
    const COLORREF masked = Shown(8, 2);
    ASSERT_TRUE(m_dib.CutRect({0, 6, 3, 7}));
    EXPECT_EQ(Shown(8, 2), masked);
}

TEST_F(DibTest, DepthsAreConverted)
{
    for (const WORD from : kDepths) {
        for (const WORD to : kDepths) {
            SCOPED_TRACE(testing::Message() << from << " to " << to);
            Fill({.bitCount = from});
            const State before(m_dib);
            std::vector<COLORREF> colors;
            for (int x = 0; x < 13; ++x)
                colors.push_back(Shown(x, 5));
            ASSERT_TRUE(m_dib.ConvertFormat(to));
            EXPECT_EQ(m_dib.GetBitCount(), to);
            EXPECT_EQ(m_dib.GetPalette() != nullptr, to <= 8);
            EXPECT_EQ(State(m_dib) == before, from == to);
            for (int x = 0; to >= 24 && x < 13; ++x)
                EXPECT_EQ(Shown(x, 5), colors[static_cast<size_t>(x)]) << x;
        }
    }
}

TEST_F(DibTest, SmallTablesAreChosenByDepth)
{
    const VOwnedScreenDC screen(::GetDC(nullptr));
    const VOwnedPalette halftone(::CreateHalftonePalette(screen.Get()));
    PALETTEENTRY bilevel[2] = {{}, {255, 255, 255, 0}};
    PALETTEENTRY standard[16] = {};
    PALETTEENTRY wide[256] = {};
    ::GetPaletteEntries(static_cast<HPALETTE>(::GetStockObject(DEFAULT_PALETTE)), 0, 16, standard);
    ::GetPaletteEntries(halftone.Get(), 0, 256, wide);
    const struct {
        WORD bitCount;
        const PALETTEENTRY* entries;
    } kTables[] = {{1, bilevel}, {4, standard}, {8, wide}};
    for (const auto& table : kTables) {
        Fill({.bitCount = 24});
        std::memset(m_dib.GetBitsPtr(), 0, 40);
        ASSERT_TRUE(m_dib.BuildBitmap());
        ASSERT_TRUE(m_dib.ConvertFormat(table.bitCount));
        const Bytes bytes = samples::BlockBytes(m_dib.GetHandle());
        for (int i = 0; i < 1 << table.bitCount; ++i) {
            const PALETTEENTRY& entry = table.entries[i];
            const BYTE wanted[] = {entry.peBlue, entry.peGreen, entry.peRed, entry.peFlags};
            ASSERT_EQ(std::memcmp(bytes.data() + 40 + 4 * i, wanted, 4), 0) << table.bitCount << ": " << i;
        }
        EXPECT_EQ(Shown(5, 6), 0U); // the black row
    }
}

TEST_F(DibTest, PaletteGivesTheColorsOfTheConversion)
{
    LOGPALETTE description = {0x300, 1, {{10, 20, 30, PC_NOCOLLAPSE}}};
    const VOwnedPalette palette(::CreatePalette(&description));
    const VOwnedBitmap bitmap = SectionBitmap(3);
    ASSERT_TRUE(m_dib.Create(bitmap.Get(), palette.Get(), WORD{8}));
    const Bytes bytes = samples::BlockBytes(m_dib.GetHandle());
    EXPECT_EQ(Bytes(bytes.begin() + 40, bytes.begin() + 48), (Bytes{30, 20, 10, 0, 0, 0, 0, 0}));
    EXPECT_EQ(m_dib.GetColorNumber(), 256);
}

TEST_F(DibTest, ScreenAndWindowsAreCaptured)
{
    CWnd window;
    ASSERT_TRUE(window.CreateEx(
        WS_EX_TOPMOST, AfxRegisterWndClass(0, nullptr, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH))),
        L"", WS_POPUP | WS_BORDER | WS_VISIBLE, CRect(100, 80, 160, 120), nullptr, 0));
    window.UpdateWindow();
    ASSERT_TRUE(support::WaitForPixel(window, {10, 10}, kWhite));
    const auto expectSize = [this](LONG width, LONG height) {
        EXPECT_EQ(m_dib.GetWidth(), width);
        EXPECT_EQ(m_dib.GetHeight(), height);
    };
    CRect client;
    window.GetClientRect(&client);

    ASSERT_TRUE(m_dib.Create(window.m_hWnd, WORD{1}));
    expectSize(60, 40);
    EXPECT_EQ(m_dib.GetBitCount(), std::min(ScreenBits(), 24));
    EXPECT_EQ(Shown(30, 20), kWhite);
    ASSERT_TRUE(m_dib.Create(window.m_hWnd, WORD{2}));
    expectSize(client.Width(), client.Height());
    EXPECT_EQ(Shown(0, 0), kWhite);
    ASSERT_TRUE(m_dib.Create(window.m_hWnd, CRect(3, 4, 13, 9)));
    expectSize(10, 5);
    EXPECT_EQ(Shown(9, 4), kWhite);

    const CClientDC screen(nullptr);
    const int right = screen.GetDeviceCaps(HORZRES);
    const int bottom = screen.GetDeviceCaps(VERTRES);
    ASSERT_TRUE(m_dib.Create(CRect(-10, -10, 5, 6)));
    expectSize(5, 6);
    ASSERT_TRUE(m_dib.Create(CRect(right - 7, bottom - 3, right + 50, bottom + 50)));
    expectSize(7, 3);
    window.DestroyWindow();
}
