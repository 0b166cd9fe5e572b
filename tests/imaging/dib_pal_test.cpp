#include "vgui/imaging/dib_pal.h"

#include "tests/imaging/guarded_library.h"
#include "tests/support/census.h"
#include "tests/support/modal.h"
#include "tests/support/pixels.h"
#include "tests/support/soak.h"

#include <afxdlgs.h>
#include <array>
#include <gtest/gtest.h>
#include <string_view>
#include <vector>

using namespace support;

namespace
{

using Bytes = std::vector<BYTE>;
using Entries = std::vector<std::array<BYTE, 4>>;

class DibPalTest : public CensusTest
{
};

Entries EntriesOf(CDIBPal& palette)
{
    Entries entries(static_cast<size_t>(palette.GetNumColors()));
    palette.GetPaletteEntries(0, static_cast<UINT>(entries.size()),
                              reinterpret_cast<PALETTEENTRY*>(entries.data()));
    return entries;
}

// A palette of n different colours.
void Make(CDIBPal& palette, int n)
{
    std::vector<RGBQUAD> colors;
    for (int i = 0; i < n; ++i)
        colors.push_back({static_cast<BYTE>(i), static_cast<BYTE>(3 * i), static_cast<BYTE>(255 - i), 77});
    ASSERT_TRUE(palette.Create(colors.data(), n));
}

void Append(Bytes& bytes, std::string_view text)
{
    for (const char c : text)
        bytes.push_back(static_cast<BYTE>(c));
}

void Append(Bytes& bytes, DWORD value, int count = 4)
{
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<BYTE>(value >> 8 * i));
}

// A palette file put together by hand; its entries count upwards.
struct PaletteFile {
    WORD version = 0x300;
    WORD count = 3;
    DWORD entries = 3;
    int extraDataBytes = 0; // what the data chunk says beyond its entries
    bool otherChunks = false;

    Bytes Make() const
    {
        Bytes bytes;
        if (otherChunks) {
            Append(bytes, "JUNK");
            Append(bytes, 3);
            Append(bytes, 0, 4);
        }
        const size_t start = bytes.size();
        Append(bytes, "RIFF");
        Append(bytes, 0);
        Append(bytes, "PAL ");
        if (otherChunks) {
            Append(bytes, "note");
            Append(bytes, 1);
            Append(bytes, 0, 2);
        }
        Append(bytes, "data");
        Append(bytes, static_cast<DWORD>(4 + 4 * static_cast<int>(entries) + extraDataBytes));
        Append(bytes, version, 2);
        Append(bytes, count, 2);
        for (DWORD i = 0; i < 4 * entries; ++i)
            bytes.push_back(static_cast<BYTE>(i));
        const auto size = static_cast<DWORD>(bytes.size() - start - 8);
        memcpy(bytes.data() + start + 4, &size, sizeof size);
        return bytes;
    }
};

const Entries kFileEntries{{0, 1, 2, 3}, {4, 5, 6, 7}, {8, 9, 10, 11}};

// A file with damage in its chunk headers above all.
Bytes Damaged(const Bytes& sound, std::mt19937& random)
{
    constexpr DWORD kSizes[] = {0, 1, 4, 12, 16, 0x7FFFFFFF, 0x80000000, 0xFFFFFFF0, 0xFFFFFFFF};
    Bytes bytes = sound;
    for (unsigned change = 0; change <= random() % 3; ++change) {
        const size_t at = random() % (bytes.size() - 3);
        if (random() % 2 == 0)
            bytes[at] = static_cast<BYTE>(random());
        else
            memcpy(bytes.data() + at / 2 * 2, &kSizes[random() % std::size(kSizes)], sizeof(DWORD));
    }
    if (random() % 4 == 0)
        bytes.resize(random() % bytes.size());
    return bytes;
}

int LoadFrom(CDIBPal& palette, BYTE* bytes, size_t length)
{
    MMIOINFO info{};
    info.fccIOProc = FOURCC_MEM;
    info.pchBuffer = reinterpret_cast<char*>(bytes);
    info.cchBuffer = static_cast<LONG>(length);
    const HMMIO file = ::mmioOpen(nullptr, &info, MMIO_READ);
    EXPECT_NE(file, nullptr);
    const int loaded = palette.Load(file);
    ::mmioClose(file, 0);
    return loaded;
}

int LoadFrom(CDIBPal& palette, Bytes bytes)
{
    return LoadFrom(palette, bytes.data(), bytes.size());
}

class TemporaryFile
{
public:
    explicit TemporaryFile(const Bytes& bytes = {})
    {
        char folder[MAX_PATH];
        ::GetTempPathA(MAX_PATH, folder);
        ::GetTempFileNameA(folder, "pal", 0, m_name);
        CFile file(CString(m_name), CFile::modeCreate | CFile::modeWrite);
        file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { ::DeleteFileA(m_name); }

    LPCSTR Name() const { return m_name; }
    Bytes Contents() const
    {
        CFile file(CString(m_name), CFile::modeRead | CFile::shareDenyNone);
        Bytes bytes(static_cast<size_t>(file.GetLength()));
        file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
        return bytes;
    }

private:
    char m_name[MAX_PATH];
};

struct Info {
    BITMAPINFOHEADER header{sizeof(BITMAPINFOHEADER), 1, 1, 1, 4, BI_RGB, 0, 0, 0, 0, 0};
    RGBQUAD colors[256]{};

    BITMAPINFO* Get() { return reinterpret_cast<BITMAPINFO*>(this); }
};

} // namespace

TEST_F(DibPalTest, TakesColorTables)
{
    RGBQUAD colors[] = {{1, 2, 3, 4}, {50, 60, 70, 80}};
    CDIBPal palette;
    EXPECT_EQ(palette.GetNumColors(), 0);
    ASSERT_TRUE(palette.Create(colors, 2));
    EXPECT_EQ(EntriesOf(palette), (Entries{{3, 2, 1, 0}, {70, 60, 50, 0}}));

    Info info;
    info.colors[15] = {9, 8, 7, 6};
    ASSERT_TRUE(palette.Create(info.Get()));
    EXPECT_EQ(palette.GetNumColors(), 16);
    EXPECT_EQ(EntriesOf(palette).back(), (std::array<BYTE, 4>{7, 8, 9, 0}));
    info.header.biClrUsed = 5;
    ASSERT_TRUE(palette.Create(info.Get()));
    EXPECT_EQ(palette.GetNumColors(), 5);
    info.header.biClrUsed = 17; // more than 4 bits can use
    ASSERT_TRUE(palette.Create(info.Get()));
    EXPECT_EQ(palette.GetNumColors(), 16);

    CDIB dib;
    ASSERT_TRUE(dib.Create(1, 1, 8));
    dib.GetColors()[255] = {11, 22, 33, 0};
    ASSERT_TRUE(palette.Create(&dib));
    EXPECT_EQ(palette.GetNumColors(), 256);
    EXPECT_EQ(EntriesOf(palette).back(), (std::array<BYTE, 4>{33, 22, 11, 0}));
}

TEST_F(DibPalTest, RefusesWhatHasNoColorsAndKeepsThePalette)
{
    CDIBPal palette;
    Make(palette, 7);
    const Entries before = EntriesOf(palette);
    RGBQUAD color{};
    Info deep;
    deep.header.biBitCount = 24;
    Info core;
    core.header.biSize = sizeof(BITMAPCOREHEADER);
    Info huge = deep;
    huge.header.biClrUsed = 0xFFFFFFFF;
    CDIB empty;
    CDIB dib24;
    ASSERT_TRUE(dib24.Create(2, 2, 24));

    EXPECT_FALSE(palette.Create(static_cast<RGBQUAD*>(nullptr), 3));
    for (const int n : {0, -1, 65536})
        EXPECT_FALSE(palette.Create(&color, n)) << n;
    EXPECT_FALSE(palette.Create(static_cast<BITMAPINFO*>(nullptr)));
    for (Info* info : {&deep, &core, &huge})
        EXPECT_FALSE(palette.Create(info->Get()));
    EXPECT_FALSE(palette.Create(static_cast<CDIB*>(nullptr)));
    EXPECT_FALSE(palette.Create(&empty));
    EXPECT_FALSE(palette.Create(&dib24));
    EXPECT_FALSE(palette.Load(static_cast<HMMIO>(nullptr)));
    EXPECT_FALSE(palette.Load(static_cast<CFile*>(nullptr)));
    CMemFile memory;
    EXPECT_FALSE(palette.Load(&memory));
    EXPECT_FALSE(palette.Save(&memory));
    EXPECT_EQ(EntriesOf(palette), before);
}

TEST_F(DibPalTest, WashHasCubeAndGraysBetweenTheSystemColors)
{
    CDIBPal wash;
    CDIBPal system;
    ASSERT_TRUE(wash.CreateWash());
    ASSERT_TRUE(system.CreateSystemColorPalette());
    const Entries colors = EntriesOf(wash);
    const Entries systemColors = EntriesOf(system);
    ASSERT_EQ(colors.size(), 256u);
    ASSERT_EQ(systemColors.size(), 256u);
    const BYTE levels[] = {0, 42, 85, 127, 170, 212};
    for (size_t i = 0; i < 256; ++i) {
        std::array<BYTE, 4> wanted = systemColors[i];
        if (i >= 226 && i < 246) {
            const auto gray = static_cast<BYTE>((i - 226) * 255 / 20);
            wanted = {gray, gray, gray, PC_NOCOLLAPSE};
        } else if (i >= 10 && i < 226) {
            wanted = {levels[(i - 10) / 36], levels[(i - 10) / 6 % 6], levels[(i - 10) % 6], PC_NOCOLLAPSE};
        }
        EXPECT_EQ(colors[i], wanted) << i;
        if (i >= 10 && i < 246) {
            EXPECT_EQ(systemColors[i], (std::array<BYTE, 4>{})) << i;
        }
    }
    // The display's static colours end in white and begin with black and dark red.
    EXPECT_EQ(systemColors[255][0], 255);
    EXPECT_EQ(systemColors[255][2], 255);
    EXPECT_EQ(systemColors[1], (std::array<BYTE, 4>{128, 0, 0, systemColors[1][3]}));
}

TEST_F(DibPalTest, IdentityPaletteNeedsAPaletteDevice)
{
    CDIBPal palette;
    EXPECT_FALSE(palette.SetSysPalColors());
    Make(palette, 9);
    const Entries before = EntriesOf(palette);
    const bool paletteDevice = (CClientDC(nullptr).GetDeviceCaps(RASTERCAPS) & RC_PALETTE) != 0;
    EXPECT_EQ(palette.SetSysPalColors() != FALSE, paletteDevice);
    if (paletteDevice)
        EXPECT_EQ(palette.GetNumColors(), 256);
    else
        EXPECT_EQ(EntriesOf(palette), before);
}

TEST_F(DibPalTest, DrawsSwatchesUpToTheLastColor)
{
    CDIBPal palette;
    Make(palette, 20);
    const Entries colors = EntriesOf(palette);
    DibSurface surface(60, 50);
    const CRect area(5, 3, 55, 40);
    CRect rect = area;
    surface.DC().SelectStockObject(BLACK_PEN);
    palette.Draw(&surface.DC(), &rect, FALSE);
    EXPECT_EQ(rect, area);

    // Every cell by itself, later ones over earlier ones.
    DibSurface expected(60, 50);
    for (int cell = 0; cell < 20; ++cell) {
        const int i = cell % 16;
        const int j = cell / 16;
        const int left = i == 0 ? 5 : 5 + i * 50 / 16;
        const int top = j == 0 ? 3 : 3 + j * 37 / 16;
        const int right = 5 + (i + 1) * 50 / 16 + 1;
        const int bottom = 3 + (j + 1) * 37 / 16 + 1;
        const auto& color = colors[static_cast<size_t>(cell)];
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x) {
                const bool frame = x == left || y == top || x == right - 1 || y == bottom - 1;
                expected.SetPixel(x, y, frame ? 0 : RGB(color[0], color[1], color[2]));
            }
    }
    EXPECT_TRUE(AreasEqual(surface, surface.Bounds(), expected, {0, 0}));

    // Nothing to draw with, on or in: nothing happens.
    palette.Draw(static_cast<HDC>(nullptr), &rect, TRUE);
    palette.Draw(&surface.DC(), nullptr, TRUE);
    palette.Draw(static_cast<CDC*>(nullptr), &rect, TRUE);
    CDIBPal().Draw(&surface.DC(), &rect, TRUE);
    EXPECT_TRUE(AreasEqual(surface, surface.Bounds(), expected, {0, 0}));
}

TEST_F(DibPalTest, SavesTheDocumentedBytesAndReadsThemBack)
{
    CDIBPal palette;
    ASSERT_TRUE(LoadFrom(palette, PaletteFile().Make()));
    const TemporaryFile file;
    ASSERT_TRUE(palette.Save(file.Name()));
    EXPECT_EQ(file.Contents(), PaletteFile().Make());
    CDIBPal again;
    ASSERT_TRUE(again.Load(file.Name()));
    EXPECT_EQ(EntriesOf(again), kFileEntries);

    // Through a file that stays open, and behind what it holds already.
    CFile open(CString(file.Name()), CFile::modeReadWrite);
    ASSERT_TRUE(again.Create(std::array<RGBQUAD, 1>{}.data(), 1));
    ASSERT_TRUE(again.Load(&open));
    EXPECT_EQ(EntriesOf(again), kFileEntries);
    open.SeekToBegin();
    ASSERT_TRUE(again.Create(std::array<RGBQUAD, 3>{}.data(), 3));
    ASSERT_TRUE(again.Save(&open));
    open.SeekToBegin();
    ASSERT_TRUE(palette.Load(&open));
    EXPECT_EQ(EntriesOf(palette), Entries(3));
    for (const UINT noFile : {0U, 0xFFFFFFFFU}) {
        EXPECT_FALSE(palette.Save(noFile)) << noFile;
        EXPECT_FALSE(palette.Load(noFile)) << noFile;
    }
}

TEST_F(DibPalTest, ReadsPastOtherChunks)
{
    PaletteFile file;
    file.otherChunks = true;
    CDIBPal palette;
    ASSERT_TRUE(LoadFrom(palette, file.Make()));
    EXPECT_EQ(EntriesOf(palette), kFileEntries);
}

TEST_F(DibPalTest, RefusesDamagedFiles)
{
    const struct {
        const char* name;
        Bytes bytes;
    } cases[] = {
        {"empty", {}},
        {"version", PaletteFile{.version = 0x301}.Make()},
        {"no entries", PaletteFile{.count = 0, .entries = 0}.Make()},
        {"count above the chunk's size", PaletteFile{.count = 4}.Make()},
        {"largest count", PaletteFile{.count = 0xFFFF}.Make()},
        {"chunk beyond the file", PaletteFile{.extraDataBytes = 4}.Make()},
        {"chunk too short for a header", PaletteFile{.entries = 0, .extraDataBytes = -2}.Make()},
    };
    CDIBPal palette;
    Make(palette, 2);
    for (const auto& [name, bytes] : cases) {
        EXPECT_FALSE(LoadFrom(palette, bytes)) << name;
        EXPECT_EQ(palette.GetNumColors(), 2) << name;
    }
    // Every size of a chunk that is skipped, above all those that lead back to its own start.
    for (const DWORD size : {0x80000000U, 0xFFFFFFFFU, 0xFFFFFFF8U, 0xFFFFFFF7U, 0xFFFFFFF0U}) {
        PaletteFile file;
        file.otherChunks = true;
        Bytes bytes = file.Make();
        memcpy(bytes.data() + 4, &size, sizeof size);
        EXPECT_FALSE(LoadFrom(palette, bytes)) << size;
        bytes = file.Make();
        memcpy(bytes.data() + 28, &size, sizeof size);
        EXPECT_FALSE(LoadFrom(palette, bytes)) << size;
    }
}

TEST_F(DibPalTest, EndsWithAnyInput)
{
    PaletteFile file;
    file.otherChunks = true;
    const Bytes sound = file.Make();
    GuardedLibrary library;
    ASSERT_TRUE(library.IsGuarded());
    int taken = 0;
    SoakInputs inputs(2000);
    while (!HasFailure() && inputs.Next()) {
        SCOPED_TRACE(inputs.Name());
        const Bytes bytes = Damaged(sound, inputs.Random());
        const HGLOBAL block = library.Block(bytes);
        CDIBPal palette;
        Make(palette, 1);
        if (LoadFrom(palette, static_cast<BYTE*>(block), bytes.size())) {
            EXPECT_LE(static_cast<size_t>(palette.GetNumColors()) * 4 + 24, bytes.size());
            ++taken;
        } else {
            EXPECT_EQ(palette.GetNumColors(), 1);
        }
        EXPECT_EQ(library.BytesOf(block), bytes);
        library.Free(block);
    }
    EXPECT_GE(taken, inputs.Count() / 20);
}

TEST_F(DibPalTest, TellsTheUserWhatFailed)
{
    CDIBPal palette;
    Make(palette, 2);
    {
        const auto answer = AnswerMessageBox(IDOK);
        EXPECT_FALSE(palette.Load("C:\\no such folder\\a.pal"));
        EXPECT_EQ(answer.Text(), L"Failed to open file");
    }
    {
        const auto answer = AnswerMessageBox(IDOK);
        EXPECT_FALSE(palette.Save("C:\\no such folder\\a.pal"));
        EXPECT_EQ(answer.Text(), L"Failed to open file");
    }
    const TemporaryFile file({1, 2, 3});
    {
        // The user may do something about it at once: the file is closed.
        bool isFree = false;
        const auto answer = WhenModal([&](HWND box) {
            CFile other;
            isFree = other.Open(CString(file.Name()), CFile::modeReadWrite | CFile::shareExclusive) != FALSE;
            PostButton(box, IDOK);
        });
        EXPECT_FALSE(palette.Load(file.Name()));
        EXPECT_EQ(answer.Text(), L"Failed to load file");
        EXPECT_TRUE(isFree);
    }
    EXPECT_EQ(palette.GetNumColors(), 2);
    {
        // The file keeps its contents.
        const auto answer = AnswerMessageBox(IDOK);
        EXPECT_FALSE(CDIBPal().Save(file.Name()));
        EXPECT_EQ(answer.Text(), L"Failed to save file");
        EXPECT_EQ(file.Contents().size(), 3u);
    }
}

// No census: Wine's file dialog keeps an accelerator table each time.
TEST(DibPalFileDialogTest, AsksForTheName)
{
    const TemporaryFile file(PaletteFile().Make());
    CDIBPal palette;
    {
        const auto answer = AnswerMessageBox(IDCANCEL);
        EXPECT_FALSE(palette.Load(""));
    }
    {
        const auto answer = AnswerFileDialog(CString(file.Name()).GetString());
        EXPECT_TRUE(palette.Load(static_cast<LPCSTR>(nullptr)));
    }
    EXPECT_EQ(EntriesOf(palette), kFileEntries);
    {
        const auto answer = AnswerMessageBox(IDCANCEL);
        EXPECT_FALSE(palette.Save(static_cast<LPCSTR>(nullptr)));
    }
}

TEST_F(DibPalTest, PlainImageTakesInfoAndRows)
{
    CDIB dib;
    EXPECT_EQ(dib.GetBits(), nullptr);
    EXPECT_EQ(dib.GetWidthBytes(), 0);
    Info info;
    info.header.biWidth = 3;
    info.header.biHeight = -2;
    info.header.biBitCount = 8;
    info.header.biClrUsed = 2;
    info.colors[1] = {1, 2, 3, 0};
    const BYTE rows[] = {1, 2, 3, 4, 5, 6, 7, 8};
    info.colors[2] = {9, 9, 9, 9}; // beyond biClrUsed
    ASSERT_TRUE(dib.Create(info.Get(), rows));
    EXPECT_EQ(dib.GetWidth(), 3);
    EXPECT_EQ(dib.GetHeight(), 2);
    EXPECT_EQ(dib.GetWidthBytes(), 4);
    EXPECT_EQ(dib.GetColorCount(), 256);
    EXPECT_EQ(dib.GetColors()[1].rgbRed, 3);
    EXPECT_EQ(dib.GetColors()[2].rgbRed, 0);
    EXPECT_EQ(Bytes(dib.GetBits(), dib.GetBits() + 8), (Bytes{5, 6, 7, 8, 1, 2, 3, 4}));

    for (const auto& [width, height, bits] :
         {std::tuple{0, 1, 8}, {1, -1, 8}, {1, 1, 2}, {0x7FFFFFFF, 2, 32}})
        EXPECT_FALSE(dib.Create(width, height, static_cast<WORD>(bits)));
    info.header.biHeight = LONG_MIN;
    EXPECT_FALSE(dib.Create(info.Get(), rows));
    EXPECT_FALSE(dib.Create(nullptr, rows));
    EXPECT_TRUE(dib.Create(dib.GetInfo(), dib.GetBits())); // from itself
    EXPECT_EQ(dib.GetColors()[1].rgbRed, 3);
    EXPECT_EQ(dib.GetBits()[0], 5);
    EXPECT_EQ(dib.GetWidth(), 3);
}

TEST_F(DibPalTest, SurfaceDrawsOnACopyOfTheImage)
{
    CDIBSurface surface;
    EXPECT_EQ(surface.GetHDC(), nullptr);
    EXPECT_NE(surface.GetDC(), nullptr);
    CDIB dib;
    EXPECT_FALSE(surface.Create(dib));
    for (const WORD bits : {WORD{1}, WORD{4}, WORD{8}, WORD{16}, WORD{24}, WORD{32}}) {
        ASSERT_TRUE(dib.Create(3, 2, bits));
        if (dib.GetColors() != nullptr)
            dib.GetColors()[0] = {0, 0, 255, 0};
        ASSERT_TRUE(surface.Create(dib)) << bits;
        EXPECT_EQ(surface.GetDC()->m_hDC, surface.GetHDC());
        EXPECT_EQ(surface.GetDC()->GetPixel(2, 1), bits <= 8 ? RGB(255, 0, 0) : RGB(0, 0, 0)) << bits;
    }
    surface.GetDC()->SetPixel(0, 0, RGB(1, 2, 3));
    ::GdiFlush();
    EXPECT_EQ(surface.GetBits()[3 * 4], 3);
    EXPECT_EQ(dib.GetBits()[3 * 4], 0);
    surface.Destroy();
    EXPECT_EQ(surface.GetHDC(), nullptr);
    EXPECT_EQ(surface.GetBits(), nullptr);
}
