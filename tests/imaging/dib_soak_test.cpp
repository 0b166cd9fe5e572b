// Damaged images for every reader. The environment variable VGUI_SOAK says how many for each; without it
// there are a few thousand.
#include "tests/imaging/dib_samples.h"
#include "tests/imaging/guarded_library.h"
#include "tests/support/census.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <random>

namespace
{

using samples::Bytes;
using samples::DibSpec;
using samples::PackedDib;
using support::GuardedGlobals;

constexpr int kShortRounds = 2500;

int Rounds()
{
    wchar_t text[16] = L"";
    ::GetEnvironmentVariable(L"VGUI_SOAK", text, 16);
    const int rounds = _wtoi(text);
    return rounds > 0 ? rounds : kShortRounds;
}

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

// Damages images, the headers above all. The same seed number makes the same images.
class Mutator
{
public:
    explicit Mutator(unsigned seed) : m_random(seed) {}

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

    std::mt19937 m_random;
};

// Uses what a reader made, so that an image whose measures are wrong is found out.
void Use(CDib& dib)
{
    const CPoint last(dib.GetWidth() - 1, dib.GetHeight() - 1);
    dib.GetPixel(0, 0);
    dib.GetPixel(last.x, 0);
    dib.GetPixel(0, last.y);
    dib.GetPixel(last.x, last.y);
    CMemFile file;
    dib.Write(&file);
    if (const HGLOBAL part = dib.CopyRect({-1, 0, 2, 2}))
        GuardedGlobals::Free(part);
    dib.CutRect({1, 1, 3, 3});
    dib.ConvertFormat(8);
}

// Damages images and feeds them to a reader. read gets a fresh object, the damaged bytes and the mutator, and
// answers the reader's result.
template <class Read>
void Soak(unsigned seed, bool isFile, Read read)
{
    const GuardedGlobals guarded;
    ASSERT_TRUE(guarded.IsDone());
    Mutator mutator(seed);
    int taken = 0;
    int refused = 0;
    for (int round = 0; round < Rounds() && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round);
        const Bytes bytes = mutator.Next(isFile);
        CDib dib;
        ASSERT_TRUE(dib.Create(DWORD{3}, DWORD{2}, WORD{8}));
        const HGLOBAL block = dib.GetHandle();
        const CBitmap* const bitmap = dib.GetBitmap();
        const Bytes before = GuardedGlobals::BytesOf(block);
        static_cast<void>(GuardedGlobals::TakeLongest());
        const int result = read(dib, bytes);
        // The reader may hold as much as it was given, and the pixel that a 32-bit file lacks.
        EXPECT_LE(GuardedGlobals::TakeLongest(), bytes.size() + 4);
        // A block that GDI cannot show is taken, too, though the result is FALSE.
        const bool isNew = dib.GetHandle() != block;
        EXPECT_TRUE(isNew || !result);
        if (!isNew) {
            EXPECT_EQ(dib.GetBitmap(), bitmap);
            EXPECT_EQ(GuardedGlobals::BytesOf(block), before);
        }
        EXPECT_FALSE(dib.IsEmpty());
        Use(dib);
        ++(isNew ? taken : refused);
    }
    // Damage that nothing survives, or that nothing minds, would show little.
    EXPECT_GT(taken, Rounds() / 20);
    EXPECT_GT(refused, Rounds() / 20);
    EXPECT_EQ(GuardedGlobals::Count(), 0);
}

class DibSoakTest : public support::CensusTest
{
};

} // namespace

TEST_F(DibSoakTest, File)
{
    Soak(1, true, [](CDib& dib, const Bytes& bytes) { return samples::ReadBytes(dib, bytes); });
}

TEST_F(DibSoakTest, Resource)
{
    Soak(2, true, [](CDib& dib, const Bytes& bytes) {
        const support::GuardedResource resource(bytes);
        EXPECT_TRUE(resource.IsDone());
        return dib.Load(L"NAME", L"TYPE");
    });
}

TEST_F(DibSoakTest, Block)
{
    Soak(3, false, [](CDib& dib, const Bytes& bytes) {
        const HGLOBAL block = GuardedGlobals::Block(bytes);
        const int result = dib.Attach(block);
        if (dib.GetHandle() != block)
            GuardedGlobals::Free(block);
        return result;
    });
}
