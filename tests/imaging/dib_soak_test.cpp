// Damaged images for every reader; see SoakInputs for how to have more of them.
#include "tests/imaging/dib_samples.h"
#include "tests/imaging/guarded_library.h"
#include "tests/support/census.h"
#include "tests/support/pixels.h"
#include "tests/support/soak.h"
#include "vgui/controls/bmp_static.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace
{

using samples::Bytes;
using samples::DibSpec;
using samples::PackedDib;
using support::GuardedLibrary;
using support::SoakInputs;

constexpr int kShortSoak = 3000;
constexpr int kThoroughEvery = 8;
// The size of the image that a reader may or may not replace. No seed has it.
constexpr SIZE kKept = {5, 2};

std::vector<Bytes> Seeds()
{
    std::vector<Bytes> seeds;
    for (const WORD bitCount : {1, 4, 8, 16, 24, 32}) {
        seeds.push_back(PackedDib({.bitCount = bitCount}));
        seeds.push_back(PackedDib({.bitCount = bitCount, .height = -7}));
        seeds.push_back(PackedDib({.bitCount = bitCount, .width = 3, .height = 2, .clrUsed = 5}));
    }
    seeds.push_back(PackedDib({.bitCount = 8, .compression = BI_RLE8}));
    seeds.push_back(PackedDib({.bitCount = 4, .compression = BI_RLE4}));
    seeds.push_back(PackedDib({.bitCount = 16, .compression = BI_BITFIELDS}));
    seeds.push_back(PackedDib({.bitCount = 32, .compression = BI_BITFIELDS}));
    seeds.push_back(PackedDib({.bitCount = 4, .hasCoreHeader = true}));
    seeds.push_back(PackedDib({.bitCount = 24, .hasCoreHeader = true}));
    return seeds;
}

// Damages images, the headers above all.
class Mutator
{
public:
    explicit Mutator(std::mt19937& random) : m_random(random) {}

    // An image and, when it becomes a file, its file header.
    Bytes Next(bool isFile)
    {
        static const std::vector<Bytes> seeds = Seeds();
        Bytes bytes = seeds[Below(seeds.size())];
        if (isFile)
            bytes = samples::BmpFile(bytes);
        for (size_t i = Below(4); i-- > 0;)
            Damage(bytes, isFile ? sizeof(BITMAPFILEHEADER) : 0);
        return bytes;
    }

    size_t Below(size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(m_random); }

private:
    void Damage(Bytes& bytes, size_t headerStart)
    {
        if (bytes.size() < headerStart + 44) {
            bytes.resize(bytes.size() + Below(60), BYTE{0x55});
            return;
        }
        // Fields of the header begin at even places.
        const size_t field = headerStart + Below(20) * 2;
        switch (Below(7)) {
        case 0:
            bytes[Below(bytes.size())] ^= static_cast<BYTE>(1 << Below(8));
            break;
        case 1:
            Put(bytes, field, Interesting());
            break;
        case 2:
            Put(bytes, field, static_cast<WORD>(Interesting()));
            break;
        case 3:
            Put(bytes, field, static_cast<WORD>(Below(40)));
            break;
        case 4:
            bytes.resize(Below(bytes.size() + 1));
            break;
        case 5:
            bytes.resize(bytes.size() + Below(8), BYTE{0xAA});
            break;
        default:
            bytes.resize(bytes.size() - Below(5));
            break;
        }
    }

    DWORD Interesting()
    {
        constexpr DWORD kValues[] = {0,          1,          2,          3,          4,          7,
                                     8,          12,         16,         24,         32,         40,
                                     64,         255,        256,        0x3FFF,     0x4000,     0x7FFF,
                                     0x8000,     0xFFFF,     0x10000,    0x10001,    0x1FFFFFFF, 0x20000000,
                                     0x3FFFFFFF, 0x40000000, 0x55555555, 0x7FFFFFE0, 0x7FFFFFFF, 0x80000000,
                                     0x80000001, 0xFFFFFFF9, 0xFFFFFFFE, 0xFFFFFFFF};
        return kValues[Below(std::size(kValues))];
    }

    template <class Value>
    static void Put(Bytes& bytes, size_t place, Value value)
    {
        std::memcpy(bytes.data() + place, &value, std::min(sizeof value, bytes.size() - place));
    }

    std::mt19937& m_random;
};

// Uses what a reader made, so that an image whose measures are wrong is found out.
void Use(CDib& dib, GuardedLibrary& library, bool isThorough)
{
    const CPoint last(dib.GetWidth() - 1, dib.GetHeight() - 1);
    for (const CPoint corner : {CPoint(0, 0), CPoint(last.x, 0), CPoint(0, last.y), last})
        dib.GetPixel(corner.x, corner.y);
    // Takes as much memory as the block itself tells. Its handle is its address here.
    CDib copy;
    copy.Create(static_cast<LPBYTE>(dib.GetHandle()));
    CMemFile file;
    dib.Write(&file);
    if (!isThorough)
        return;
    const support::DibSurface surface(8, 8);
    dib.DitherDisplay(&surface.DC(), surface.Bounds(), CRect(CPoint(), last + CSize(1, 1)), SRCCOPY);
    if (const HGLOBAL part = dib.CopyRect({-1, 0, 2, 2}))
        library.Free(part);
    dib.CutRect({1, 1, 3, 3});
    dib.MergeDib(dib.GetHandle(), {1, 1});
    dib.ConvertFormat(8);
}

// Damages images and feeds them to a reader. read gets an object with an image and the damaged bytes, and
// answers the reader's result.
template <class Read>
void Soak(bool isFile, Read read)
{
    GuardedLibrary library;
    ASSERT_TRUE(library.IsGuarded());
    int taken = 0;
    int refused = 0;
    CDib dib;
    SoakInputs inputs(kShortSoak);
    while (!testing::Test::HasFailure() && inputs.Next()) {
        SCOPED_TRACE(inputs.Name());
        if (dib.GetWidth() != kKept.cx) {
            ASSERT_TRUE(dib.Create(DWORD{kKept.cx}, DWORD{kKept.cy}, WORD{8}));
        }
        const Bytes bytes = Mutator(inputs.Random()).Next(isFile);
        const HGLOBAL block = dib.GetHandle();
        const CBitmap* const bitmap = dib.GetBitmap();
        const Bytes before = library.BytesOf(block);
        static_cast<void>(library.TakeLongest());
        const int result = read(dib, bytes, library);
        // The reader may hold as much as it was given, and the pixel that a 32-bit file lacks.
        EXPECT_LE(library.TakeLongest(), bytes.size() + 4);
        EXPECT_FALSE(dib.IsEmpty());
        if (dib.GetHandle() == block) {
            EXPECT_FALSE(result);
            EXPECT_EQ(dib.GetBitmap(), bitmap);
            EXPECT_EQ(library.BytesOf(block), before);
            ++refused;
        } else { // also, with FALSE, what GDI cannot show
            Use(dib, library, inputs.Index() % kThoroughEvery == 0);
            ++taken;
        }
    }
    dib.Destroy();
    // Damage that nothing survives, or that nothing minds, would show little.
    EXPECT_GE(taken, inputs.Count() / 20);
    EXPECT_GE(refused, inputs.Count() / 20);
    EXPECT_EQ(library.Count(), 0);
    EXPECT_EQ(library.FreedWhileLocked(), 0);
}

class DibSoakTest : public support::CensusTest
{
};

} // namespace

TEST_F(DibSoakTest, File)
{
    Soak(true, [](CDib& dib, const Bytes& bytes, GuardedLibrary&) { return samples::ReadBytes(dib, bytes); });
}

TEST_F(DibSoakTest, Resource)
{
    Soak(true, [](CDib& dib, const Bytes& bytes, GuardedLibrary& library) {
        const HGLOBAL resource = library.Block(bytes);
        library.SetResource(resource);
        const int result = dib.Load(L"NAME", L"TYPE");
        EXPECT_EQ(library.BytesOf(resource), bytes);
        library.Free(resource);
        return result;
    });
}

TEST_F(DibSoakTest, Block)
{
    Soak(false, [](CDib& dib, const Bytes& bytes, GuardedLibrary& library) {
        const HGLOBAL block = library.Block(bytes);
        const int result = dib.Attach(block);
        if (dib.GetHandle() != block)
            library.Free(block);
        return result;
    });
}

TEST_F(DibSoakTest, Archive)
{
    Soak(true, [](CDib& dib, const Bytes& bytes, GuardedLibrary&) {
        CMemFile file;
        file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
        file.SeekToBegin();
        CArchive archive(&file, CArchive::load);
        const HGLOBAL block = dib.GetHandle();
        dib.Serialize(archive);
        return dib.GetHandle() != block;
    });
}

// The system decodes these, which may take more memory than the file has.
TEST_F(DibSoakTest, FileOfAControl)
{
    const std::filesystem::path path = std::filesystem::temp_directory_path() /
                                       (L"soak " + std::to_wstring(::GetCurrentProcessId()) + L".bmp");
    constexpr size_t kSizeInFile = sizeof(BITMAPFILEHEADER) + offsetof(BITMAPINFOHEADER, biWidth);
    GuardedLibrary library;
    ASSERT_TRUE(library.IsGuarded());
    CDib kept;
    ASSERT_TRUE(kept.Create(DWORD{kKept.cx}, DWORD{kKept.cy}, WORD{8}));
    VBmpStatic control;
    int taken = 0;
    SoakInputs inputs(kShortSoak / 2);
    while (!HasFailure() && inputs.Next()) {
        SCOPED_TRACE(inputs.Name());
        ASSERT_TRUE(control.SetDib(&kept));
        const CDib* const before = control.GetDib();
        const Bytes bytes = Mutator(inputs.Random()).Next(true);
        {
            CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
            file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
        }
        if (!control.LoadBitmapFromBMPFile(path.c_str())) {
            EXPECT_EQ(control.GetDib(), before);
            continue;
        }
        ++taken;
        const CDib& dib = *control.GetDib();
        LONG size[2];
        std::memcpy(size, bytes.data() + kSizeInFile, sizeof size);
        EXPECT_EQ(CSize(dib.GetWidth(), dib.GetHeight()), CSize(size[0], std::abs(size[1])));
        for (const LONG x : {LONG{0}, size[0] - 1})
            dib.GetPixel(x, std::abs(size[1]) - 1);
    }
    EXPECT_GE(taken, inputs.Count() / 20);
    EXPECT_LE(taken, inputs.Count() * 19 / 20);
    std::filesystem::remove(path);
}
