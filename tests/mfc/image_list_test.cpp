#include "tests/support/census.h"
#include "tests/support/pixels.h"
#include "tests/support/pump.h"

#include <afxcmn.h>

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace
{

using support::DibSurface;

constexpr COLORREF kRed = RGB(200, 10, 20);
constexpr COLORREF kBlue = RGB(10, 20, 200);
constexpr COLORREF kMask = RGB(255, 0, 255);
constexpr int kSide = 8;

class ImageList : public support::CensusTest
{
};

// A bitmap of one image per colour; each image's right half is of the mask colour.
std::unique_ptr<CBitmap> Stripes(std::initializer_list<COLORREF> colors)
{
    CClientDC screen(nullptr);
    auto bitmap = std::make_unique<CBitmap>();
    bitmap->CreateCompatibleBitmap(&screen, kSide * static_cast<int>(colors.size()), kSide);
    CDC memory;
    memory.CreateCompatibleDC(&screen);
    CBitmap* const previous = memory.SelectObject(bitmap.get());
    int left = 0;
    for (const COLORREF color : colors) {
        memory.FillSolidRect(left, 0, kSide / 2, kSide, color);
        memory.FillSolidRect(left + kSide / 2, 0, kSide / 2, kSide, kMask);
        left += kSide;
    }
    memory.SelectObject(previous);
    return bitmap;
}

void MakeRedAndBlue(CImageList& list)
{
    ASSERT_TRUE(list.Create(kSide, kSide, ILC_COLOR32 | ILC_MASK, 0, 4));
    const auto bitmap = Stripes({kRed, kBlue});
    ASSERT_EQ(list.Add(bitmap.get(), kMask), 0);
    ASSERT_EQ(list.GetImageCount(), 2);
}

// The colours of an image's left and right half, drawn without a background.
std::pair<COLORREF, COLORREF> Halves(CImageList& list, int image)
{
    DibSurface surface(kSide, kSide);
    EXPECT_TRUE(list.Draw(&surface.DC(), image, CPoint(0, 0), ILD_TRANSPARENT));
    return {surface.Pixel(1, 4), surface.Pixel(kSide - 2, 4)};
}

std::pair<COLORREF, COLORREF> Clear(COLORREF left)
{
    return {left, DibSurface::kBackground};
}

TEST_F(ImageList, HandlesMapToTheirObjects)
{
    CImageList list;
    EXPECT_EQ(list.GetSafeHandle(), nullptr);
    EXPECT_FALSE(list.DeleteImageList());
    EXPECT_FALSE(list.Attach(nullptr));
    ASSERT_TRUE(list.Create(kSide, kSide, ILC_COLOR24, 1, 1));
    const HIMAGELIST handle = list;
    EXPECT_EQ(CImageList::FromHandle(handle), &list);
    EXPECT_EQ(CImageList::FromHandlePermanent(handle), &list);
    EXPECT_EQ(CImageList::FromHandle(nullptr), nullptr);

    // What holds a list refuses another one and keeps the first.
    EXPECT_FALSE(list.Create(16, 16, ILC_COLOR24, 1, 1));
    CImageList copy;
    ASSERT_TRUE(copy.Create(&list));
    EXPECT_FALSE(list.Attach(copy.m_hImageList));
    EXPECT_EQ(list.m_hImageList, handle);

    EXPECT_EQ(list.Detach(), handle);
    EXPECT_EQ(CImageList::FromHandlePermanent(handle), nullptr);
    CImageList* const temporary = CImageList::FromHandle(handle);
    ASSERT_NE(temporary, nullptr);
    EXPECT_EQ(CImageList::FromHandle(handle), temporary);
    EXPECT_EQ(CImageList::FromHandlePermanent(handle), nullptr);
    // A temporary object that lost its list is none for the next one of that handle.
    EXPECT_EQ(temporary->Detach(), handle);
    EXPECT_EQ(CImageList::FromHandle(handle)->m_hImageList, handle);
    // Dropping the temporary object leaves the list alone.
    support::RunIdle();
    int width = 0;
    int height = 0;
    EXPECT_TRUE(::ImageList_GetIconSize(handle, &width, &height));
    EXPECT_TRUE(list.Attach(handle));
    EXPECT_TRUE(list.DeleteImageList());
    EXPECT_EQ(list.m_hImageList, nullptr);
}

TEST_F(ImageList, ImagesAreMaskedReplacedCopiedAndRemoved)
{
    CImageList list;
    MakeRedAndBlue(list);
    EXPECT_EQ(Halves(list, 0), Clear(kRed));
    EXPECT_EQ(Halves(list, 1), Clear(kBlue));

    EXPECT_TRUE(list.Copy(0, 1, ILCF_SWAP));
    EXPECT_EQ(Halves(list, 0), Clear(kBlue));

    CImageList other;
    MakeRedAndBlue(other);
    const HICON icon = other.ExtractIcon(0);
    ASSERT_NE(icon, nullptr);
    EXPECT_EQ(list.Add(icon), 2);
    EXPECT_EQ(list.Replace(0, icon), 0);
    ::DestroyIcon(icon);
    EXPECT_EQ(Halves(list, 0), Clear(kRed));
    EXPECT_EQ(Halves(list, 2), Clear(kRed));

    IMAGEINFO info = {};
    EXPECT_TRUE(list.GetImageInfo(1, &info));
    EXPECT_EQ(info.rcImage.right - info.rcImage.left, kSide);
    EXPECT_FALSE(list.GetImageInfo(1, nullptr));
    EXPECT_FALSE(list.GetImageInfo(7, &info));

    EXPECT_TRUE(list.Remove(1));
    EXPECT_EQ(list.GetImageCount(), 2);
    EXPECT_FALSE(list.Remove(9));
    EXPECT_EQ(list.Add(static_cast<CBitmap*>(nullptr), kMask), -1);
}

TEST_F(ImageList, DrawingTakesSizeOriginAndBackground)
{
    CImageList list;
    MakeRedAndBlue(list);
    constexpr COLORREF kBack = RGB(1, 99, 3);
    DibSurface surface(20, 20);
    EXPECT_TRUE(list.DrawEx(&surface.DC(), 1, {3, 5}, {6, 2}, kBack, CLR_NONE, ILD_NORMAL));
    support::ExpectPixels(surface, [&](int x, int y) {
        if (!CRect(3, 5, 9, 7).PtInRect({x, y}))
            return DibSurface::kBackground;
        return x < 3 + kSide / 2 ? kBlue : kBack;
    });

    surface.Fill(DibSurface::kBackground);
    EXPECT_TRUE(list.DrawIndirect(&surface.DC(), 0, {2, 2}, {4, 8}, {2, 0}, ILD_TRANSPARENT));
    support::ExpectPixels(surface, [&](int x, int y) {
        return CRect(2, 2, 4, 10).PtInRect({x, y}) ? kRed : DibSurface::kBackground;
    });
    EXPECT_FALSE(list.DrawIndirect(nullptr));
    EXPECT_FALSE(list.Draw(nullptr, 0, {0, 0}, ILD_NORMAL));
}

TEST_F(ImageList, MergedListHoldsBothImages)
{
    CImageList list;
    MakeRedAndBlue(list);
    CImageList merged;
    ASSERT_TRUE(merged.Create(list, 0, list, 1, kSide, 0));
    DibSurface surface(2 * kSide, kSide);
    EXPECT_TRUE(merged.Draw(&surface.DC(), 0, {0, 0}, ILD_TRANSPARENT));
    EXPECT_EQ(surface.Pixel(1, 1), kRed);
    EXPECT_EQ(surface.Pixel(kSide + 1, 1), kBlue);
    CImageList empty;
    CImageList result;
    EXPECT_FALSE(result.Create(empty, 0, list, 1, 0, 0));
    EXPECT_FALSE(result.Create(static_cast<CImageList*>(nullptr)));
    EXPECT_EQ(result.m_hImageList, nullptr);
}

std::vector<BYTE> Stored(CImageList& list)
{
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store);
        EXPECT_TRUE(list.Write(&archive));
        archive << 0x1234567L; // what follows must be found again
    }
    std::vector<BYTE> bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    EXPECT_EQ(file.Read(bytes.data(), static_cast<UINT>(bytes.size())), bytes.size());
    return bytes;
}

TEST_F(ImageList, ArchiveKeepsTheImages)
{
    CImageList list;
    MakeRedAndBlue(list);
    std::vector<BYTE> bytes = Stored(list);
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load, 64); // a small buffer, so that reads cross its end
    CImageList loaded;
    ASSERT_TRUE(loaded.Read(&archive));
    LONG after = 0;
    archive >> after;
    EXPECT_EQ(after, 0x1234567L);
    ASSERT_EQ(loaded.GetImageCount(), 2);
    EXPECT_EQ(Halves(loaded, 0), Clear(kRed));
    EXPECT_EQ(Halves(loaded, 1), Clear(kBlue));
    EXPECT_FALSE(loaded.Read(&archive)); // it holds a list
    EXPECT_FALSE(CImageList().Write(&archive));
    EXPECT_FALSE(list.Read(nullptr));
}

TEST_F(ImageList, ForeignArchiveGivesNoList)
{
    for (const size_t length : {size_t{0}, size_t{400}}) {
        std::vector<BYTE> bytes(400, 0x5a);
        CMemFile file(bytes.data(), static_cast<UINT>(length));
        CArchive archive(&file, CArchive::load);
        CImageList loaded;
        EXPECT_FALSE(loaded.Read(&archive));
        EXPECT_EQ(loaded.m_hImageList, nullptr);
    }
}

// A file on which nothing can be written.
class FullFile : public CMemFile
{
public:
    void Write(const void*, UINT) override { AfxThrowFileException(CFileException::diskFull); }
};

TEST_F(ImageList, FailingArchiveIsReportedWithoutAnException)
{
    CImageList list;
    MakeRedAndBlue(list);
    FullFile file;
    CArchive archive(&file, CArchive::store, 16);
    EXPECT_NO_THROW(EXPECT_FALSE(list.Write(&archive)));
    archive.Abort();
}

TEST_F(ImageList, DragImageExistsWhileDragging)
{
    CImageList list;
    MakeRedAndBlue(list);
    ASSERT_TRUE(list.BeginDrag(0, {3, 4}));
    EXPECT_TRUE(CImageList::DragEnter(nullptr, {50, 60}));
    EXPECT_TRUE(CImageList::DragMove({70, 80}));
    CPoint at;
    CPoint hotSpot;
    CImageList* const image = CImageList::GetDragImage(&at, &hotSpot);
    ASSERT_NE(image, nullptr);
    EXPECT_GT(image->GetImageCount(), 0);
    EXPECT_EQ(hotSpot, CPoint(3, 4));
    EXPECT_TRUE(CImageList::DragLeave(nullptr));
    CImageList::EndDrag();
}

} // namespace
