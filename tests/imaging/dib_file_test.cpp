// The DIB object's files: BMP as read and written, resources, GDI+ and archives.
#include "tests/imaging/dib_samples.h"
#include "tests/support/modal.h"
#include "tests/support/pixels.h"
#include "tests/support/temporary_file.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
// GDI+'s headers count on the names that NOMINMAX takes away.
using std::max;
using std::min;
#include <gdiplus.h>

namespace
{

using samples::Bytes;
using samples::DibSpec;
using samples::PackedDib;
using samples::Picture;
using samples::State;

constexpr size_t kFileHeaderBytes = 14;
constexpr size_t kBitsOffsetPlace = 10;

class DibFileTest : public samples::DibFixture
{
protected:
    support::TemporaryFile m_file;
};

// A file whose reading and writing fail with an exception.
class FailingFile : public CMemFile
{
public:
    UINT Read(void*, UINT) override { AfxThrowFileException(CFileException::hardIO); }
    void Write(const void*, UINT) override { AfxThrowFileException(CFileException::diskFull); }
};

// Notes how much is read at once, and the cursor that is shown meanwhile.
class WatchedFile : public CMemFile
{
public:
    UINT Read(void* lpBuf, UINT nCount) override
    {
        longest = std::max(longest, nCount);
        cursor = ::GetCursor();
        return CMemFile::Read(lpBuf, nCount);
    }

    UINT longest = 0;
    HCURSOR cursor = nullptr;
};

} // namespace

TEST_F(DibFileTest, FilesOfOtherProgramsAreRead)
{
    constexpr struct {
        LPCWSTR name;
        WORD bitCount;
        Picture picture;
    } kFiles[] = {
        {L"MAGICK_1", 1, Picture::Two},  {L"MAGICK_4", 4, Picture::Sixteen},
        {L"MAGICK_8", 8, Picture::Many}, {L"MAGICK_24", 24, Picture::Many},
        {L"NETPBM_1", 1, Picture::Two},  {L"NETPBM_4", 4, Picture::Sixteen},
        {L"NETPBM_8", 8, Picture::Many}, {L"NETPBM_24", 24, Picture::Many},
    };
    for (const auto& file : kFiles) {
        SCOPED_TRACE(CStringA(file.name).GetString());
        const Bytes bytes = samples::ResourceBytes(file.name, L"BMPFILE");
        ASSERT_TRUE(samples::ReadBytes(m_dib, bytes));
        EXPECT_EQ(m_dib.GetBitCount(), file.bitCount);
        EXPECT_TRUE(samples::Shows(m_dib.GetBitmap(), file.picture));
        CDib loaded;
        ASSERT_TRUE(loaded.Load(file.name, L"BMPFILE"));
        EXPECT_TRUE(samples::Shows(loaded.GetBitmap(), file.picture));

        // What is written is read by others: the system stands for them.
        ASSERT_TRUE(m_dib.Save(m_file));
        CBitmap read;
        ASSERT_TRUE(read.Attach(
            ::LoadImage(nullptr, m_file, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)));
        EXPECT_TRUE(samples::Shows(&read, file.picture));
        ASSERT_TRUE(loaded.Load(LPCWSTR{m_file}));
        EXPECT_EQ(samples::WrittenBytes(loaded), samples::WrittenBytes(m_dib));
    }
    ASSERT_TRUE(m_dib.Load(601, L"BMPFILE"));
    EXPECT_TRUE(samples::Shows(m_dib.GetBitmap(), Picture::Many));

    const State before(m_dib);
    for (const LPCWSTR name : {L"NETPBM_OS2", L"MAGICK_V5"})
        EXPECT_FALSE(samples::ReadBytes(m_dib, samples::ResourceBytes(name, L"BMPFILE")));
    EXPECT_FALSE(m_dib.Load(L"MAGICK_V5", L"BMPFILE"));
    EXPECT_FALSE(m_dib.Load(L"MAGICK_PNG", LPCWSTR{RT_RCDATA}));
    EXPECT_FALSE(m_dib.Load(L"MISSING", L"BMPFILE"));
    EXPECT_EQ(State(m_dib), before);
    // Unlike files, resources may have the old header.
    ASSERT_TRUE(m_dib.Load(L"NETPBM_OS2", L"BMPFILE"));
    EXPECT_TRUE(samples::Shows(m_dib.GetBitmap(), Picture::Many));
}

TEST_F(DibFileTest, ImagesOfEveryDepthComeBackFromTheirFiles)
{
    for (const WORD bitCount : {1, 4, 8, 16, 24}) {
        SCOPED_TRACE(bitCount);
        Bytes bytes = PackedDib({.bitCount = bitCount, .clrUsed = bitCount == 8 ? 100U : 0U});
        ASSERT_TRUE(m_dib.Create(bytes.data()));
        const Bytes file = samples::WrittenBytes(m_dib);
        samples::HeaderOf(bytes).biSizeImage = static_cast<DWORD>(m_dib.GetWidthBytes() * 7);
        Bytes wanted = samples::BmpFile(bytes);
        const auto offset = static_cast<DWORD>(kFileHeaderBytes + 40 + m_dib.GetPaletteSize());
        std::memcpy(wanted.data() + kBitsOffsetPlace, &offset, sizeof offset);
        EXPECT_EQ(file, wanted);

        CDib copy;
        ASSERT_TRUE(samples::ReadBytes(copy, file));
        EXPECT_EQ(copy.GetBitCount(), bitCount);
        for (int y = 0; y < 7; ++y)
            for (int x = 0; x < 13; ++x)
                ASSERT_EQ(samples::ShownColor(copy.GetBitmap(), x, y),
                          samples::ShownColor(m_dib.GetBitmap(), x, y))
                    << x << ", " << y;
    }
}

TEST_F(DibFileTest, ColorsThatAFileDoesNotStateFollowFromItsDepth)
{
    constexpr struct {
        WORD bitCount;
        DWORD clrUsed;
        WORD paletteBytes;
    } kCases[] = {{1, 2, 8}, {4, 16, 64}, {8, 256, 1024}, {16, 65536, 0}, {24, 0, 0}, {32, 1, 4}};
    for (const auto& item : kCases) {
        SCOPED_TRACE(item.bitCount);
        const Bytes dib = PackedDib({.bitCount = item.bitCount});
        ASSERT_TRUE(samples::ReadBytes(m_dib, samples::BmpFile(dib)));
        Bytes block = samples::BlockBytes(m_dib.GetHandle());
        EXPECT_EQ(samples::HeaderOf(block).biClrUsed, item.clrUsed);
        EXPECT_EQ(samples::HeaderOf(block).biSizeImage, static_cast<DWORD>(m_dib.GetWidthBytes() * 7));
        EXPECT_EQ(m_dib.GetColorNumber(), static_cast<WORD>(item.clrUsed));
        EXPECT_EQ(m_dib.GetPaletteSize(), item.paletteBytes);
        // The pixels follow the table at once: at 32 bits the image moves by one pixel, and the four bytes
        // that are then missing are zero.
        Bytes wanted(dib.begin() + 40, dib.end());
        if (item.bitCount == 32)
            wanted.resize(wanted.size() + 4);
        EXPECT_EQ(Bytes(block.begin() + 40, block.end()), wanted);
    }
}

TEST_F(DibFileTest, StatedLengthAndPlaceOfThePixelsDoNotCount)
{
    const Bytes plain = samples::ResourceBytes(L"NETPBM_8", L"BMPFILE");
    Bytes file = plain;
    std::memset(file.data() + 2, 0xEE, 12);
    ASSERT_TRUE(samples::ReadBytes(m_dib, file));
    EXPECT_TRUE(samples::Shows(m_dib.GetBitmap(), Picture::Many));

    // A gap before the pixels is taken for pixels.
    file = plain;
    const auto bits = file.begin() + kFileHeaderBytes + 40 + 1024;
    const BYTE bottomLeft = *bits;
    file.insert(bits, 16, BYTE{0});
    ASSERT_TRUE(samples::ReadBytes(m_dib, file));
    EXPECT_EQ(m_dib.GetBitsPtr()[0], 0);
    EXPECT_EQ(m_dib.GetBitsPtr()[16], bottomLeft);

    // Reading begins where the file stands.
    file = plain;
    file.insert(file.begin(), 5, BYTE{0x77});
    ASSERT_TRUE(samples::ReadBytes(m_dib, file, 5));
    EXPECT_TRUE(samples::Shows(m_dib.GetBitmap(), Picture::Many));
}

TEST_F(DibFileTest, FilesThatAreNotWholeAreRefused)
{
    ASSERT_TRUE(m_dib.Load(L"NETPBM_8", L"BMPFILE"));
    const State before(m_dib);
    EXPECT_FALSE(m_dib.Read(nullptr));
    EXPECT_FALSE(m_dib.Write(nullptr));
    FailingFile failing;
    EXPECT_FALSE(m_dib.Read(&failing));
    EXPECT_FALSE(m_dib.Write(&failing));
    for (const WORD bitCount : {1, 4, 8, 16, 24, 32}) {
        Bytes file = samples::BmpFile(PackedDib({.bitCount = bitCount}));
        while (!file.empty()) {
            file.pop_back();
            ASSERT_FALSE(samples::ReadBytes(m_dib, file)) << bitCount << " bits, " << file.size() << " bytes";
        }
    }
    Bytes file = samples::BmpFile(PackedDib({}));
    file[1] = 'A';
    EXPECT_FALSE(samples::ReadBytes(m_dib, file));
    EXPECT_EQ(State(m_dib), before);
}

TEST_F(DibFileTest, WaitCursorIsShownMeanwhile)
{
    const HCURSOR cross = ::LoadCursor(nullptr, IDC_CROSS);
    const HCURSOR before = ::SetCursor(cross);
    WatchedFile file;
    EXPECT_FALSE(m_dib.Read(&file));
    EXPECT_EQ(file.cursor, ::LoadCursor(nullptr, IDC_WAIT));
    EXPECT_EQ(::GetCursor(), cross);
    EXPECT_FALSE(m_dib.Write(&file));
    EXPECT_FALSE(m_dib.Crop({0, 0, 1, 1}));
    EXPECT_EQ(::GetCursor(), cross);
    ::SetCursor(before);
}

TEST_F(DibFileTest, CompressedFilesKeepTheirStream)
{
    const Bytes file = samples::ResourceBytes(L"MAGICK_RLE8", L"BMPFILE");
    EXPECT_FALSE(samples::ReadBytes(m_dib, file)); // GDI makes no DIB section of it
    EXPECT_EQ(m_dib.GetCompression(), DWORD{BI_RLE8});
    EXPECT_EQ(samples::WrittenBytes(m_dib), file);
}

TEST_F(DibFileTest, OldHeadersAreNotWritten)
{
    Bytes bytes = PackedDib({.bitCount = 8, .hasCoreHeader = true});
    ASSERT_TRUE(m_dib.Create(bytes.data()));
    CMemFile file;
    EXPECT_FALSE(m_dib.Write(&file));
    EXPECT_EQ(file.GetLength(), 0U);

    // A file that is there already stays.
    support::FillFile(m_file, bytes);
    EXPECT_FALSE(m_dib.Save(m_file));
    EXPECT_FALSE(CDib().Save(m_file));
    EXPECT_EQ(CFile(m_file, CFile::modeRead).GetLength(), bytes.size());
}

TEST_F(DibFileTest, WhatKeepsAFileFromOpeningIsReported)
{
    const CString& name = m_file.Path();
    ::DeleteFile(name);
    {
        auto answer = support::AnswerMessageBox(IDOK);
        EXPECT_FALSE(m_dib.Load(LPCWSTR{name}));
        EXPECT_TRUE(answer.Shown());
        EXPECT_NE(answer.Text().find(name), std::wstring::npos);
    }
    // Saving fails in silence.
    EXPECT_FALSE(m_dib.Save(name + L"\\no folder"));
    EXPECT_FALSE(m_dib.Save(nullptr));
    EXPECT_FALSE(m_dib.Load(LPCWSTR{nullptr}));
    // So does reading what opens but is no BMP file.
    support::FillFile(name, std::string("not BMP"));
    EXPECT_FALSE(m_dib.Load(LPCWSTR{name}));
}

TEST_F(DibFileTest, ArchivesHoldImagesAmongOtherThings)
{
    constexpr DWORD kBehind = 0x12345678;
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store);
        archive << CString(L"before");
        CDib dibs[2];
        ASSERT_TRUE(dibs[0].Load(L"MAGICK_4", L"BMPFILE"));
        ASSERT_TRUE(dibs[1].Load(L"NETPBM_24", L"BMPFILE"));
        for (const CDib& dib : dibs) {
            archive << &dib;
            archive << kBehind;
        }
        CDib().Serialize(archive); // nothing
        archive << kBehind;
    }
    file.SeekToBegin();
    CArchive archive(&file, CArchive::load);
    CString before;
    archive >> before;
    EXPECT_EQ(before, L"before");
    for (const Picture picture : {Picture::Sixteen, Picture::Many}) {
        CDib* dib = nullptr;
        archive >> dib;
        const std::unique_ptr<CDib> owner(dib);
        EXPECT_TRUE(samples::Shows(dib->GetBitmap(), picture));
        DWORD behind = 0;
        archive >> behind;
        EXPECT_EQ(behind, kBehind);
    }
    ASSERT_TRUE(m_dib.Load(L"NETPBM_8", L"BMPFILE"));
    m_dib.Serialize(archive);
    EXPECT_TRUE(samples::Shows(m_dib.GetBitmap(), Picture::Many));
    DWORD behind = 0;
    archive >> behind;
    EXPECT_EQ(behind, kBehind);
    EXPECT_EQ(RUNTIME_CLASS(CDib)->m_wSchema, 0U);
}

TEST_F(DibFileTest, ArchivesGoOnBehindAnImageOfImpossibleLength)
{
    for (const DWORD stated : {DWORD{0}, DWORD{5}, DWORD{0x7FFFFFFF}}) {
        SCOPED_TRACE(stated);
        Bytes bytes = samples::BmpFile(PackedDib({}));
        std::memcpy(bytes.data() + offsetof(BITMAPFILEHEADER, bfSize), &stated, sizeof stated);
        CMemFile file;
        file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
        file.SeekToBegin();
        CArchive archive(&file, CArchive::load);
        m_dib.Destroy();
        m_dib.Serialize(archive);
        EXPECT_EQ(m_dib.GetWidth(), 13);
        EXPECT_EQ(file.GetPosition(), file.GetLength()) << "the image is not read again as what follows it";
    }
}

TEST_F(DibFileTest, ArchivesAreNotReadBeyondTheImage)
{
    constexpr int kImages = 4;
    WatchedFile file;
    {
        CArchive archive(&file, CArchive::store);
        ASSERT_TRUE(m_dib.Create(DWORD{100}, DWORD{100}, WORD{24}));
        for (int i = 0; i < kImages; ++i)
            m_dib.Serialize(archive);
    }
    file.SeekToBegin();
    CArchive archive(&file, CArchive::load);
    for (int i = 0; i < kImages; ++i) {
        m_dib.Destroy();
        m_dib.Serialize(archive);
        EXPECT_EQ(m_dib.GetWidth(), 100) << i;
    }
    EXPECT_LE(file.longest, file.GetLength() / kImages);
}

namespace
{

class DibFileGdiPlusTest : public DibFileTest
{
protected:
    static void SetUpTestSuite()
    {
        const Gdiplus::GdiplusStartupInput input;
        ASSERT_EQ(Gdiplus::GdiplusStartup(&s_token, &input, nullptr), Gdiplus::Ok);
        DibFileTest::SetUpTestSuite();
    }
    static void TearDownTestSuite()
    {
        DibFileTest::TearDownTestSuite();
        Gdiplus::GdiplusShutdown(s_token);
    }

private:
    inline static ULONG_PTR s_token = 0;
};

} // namespace

TEST_F(DibFileGdiPlusTest, OtherFormatsGoIntoTheBitmapOnly)
{
    ASSERT_TRUE(m_dib.Load(L"NETPBM_1", L"BMPFILE"));
    const State before(m_dib);
    const CString& name = m_file.Path();
    for (const Bytes& file : {samples::ResourceBytes(L"MAGICK_PNG", LPCWSTR{RT_RCDATA}),
                              samples::ResourceBytes(L"MAGICK_V5", L"BMPFILE")}) {
        support::FillFile(name, file);
        ASSERT_TRUE(m_dib.Load(name));
        EXPECT_TRUE(samples::Shows(m_dib.GetBitmap(), Picture::Many));
    }
    support::DibSurface surface(20, 20);
    ASSERT_TRUE(m_dib.Display(&surface.DC(), CRect({0, 0}, CSize(samples::kPictureSize))));
    EXPECT_EQ(surface.Pixel(3, 4), samples::PictureColor(Picture::Many, 3, 4));
    // What is transparent becomes black.
    support::FillFile(name, samples::ResourceBytes(L"MAGICK_HOLE", LPCWSTR{RT_RCDATA}));
    ASSERT_TRUE(m_dib.Load(name));
    EXPECT_EQ(samples::ShownColor(m_dib.GetBitmap(), 0, 6), 0U);
    EXPECT_EQ(samples::ShownColor(m_dib.GetBitmap(), 1, 6), samples::PictureColor(Picture::Many, 1, 6));
    ASSERT_TRUE(m_dib.Load(602));
    EXPECT_TRUE(samples::Shows(m_dib.GetBitmap(), Picture::Many));
    const State after(m_dib);
    EXPECT_EQ(after.block, before.block);
    EXPECT_EQ(after.bytes, before.bytes);
    EXPECT_EQ(after.palette, before.palette);

    // What cannot be opened leaves the bitmap; what is no picture takes it away.
    EXPECT_FALSE(m_dib.Load(CString()));
    EXPECT_FALSE(m_dib.Load(CString(name + L".missing")));
    EXPECT_EQ(State(m_dib), after);
    support::FillFile(name, std::string("none"));
    EXPECT_FALSE(m_dib.Load(name));
    EXPECT_EQ(m_dib.GetBitmap(), nullptr);
    EXPECT_FALSE(m_dib.Load(603));
    // The image itself is still there.
    EXPECT_TRUE(m_dib.BuildBitmap());
    EXPECT_TRUE(samples::Shows(m_dib.GetBitmap(), Picture::Two));
}
