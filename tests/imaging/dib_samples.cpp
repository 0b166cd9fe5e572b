#include "tests/imaging/dib_samples.h"

#include "vgui/foundation/gdi_scope.h"

#include <cstdlib>
#include <cstring>

namespace samples
{

namespace
{

constexpr size_t kFileHeaderBytes = sizeof(BITMAPFILEHEADER);

// Differs from neighbour to neighbour and from row to row.
BYTE PatternByte(size_t i)
{
    return static_cast<BYTE>(i * 37 + i / 256 + 11);
}

template <class Value>
void Append(Bytes& bytes, const Value& value)
{
    const auto* const first = reinterpret_cast<const BYTE*>(&value);
    bytes.insert(bytes.end(), first, first + sizeof value);
}

} // namespace

COLORREF PictureColor(Picture picture, int x, int y)
{
    if (picture == Picture::Two)
        return (x + 2 * y) % 3 == 0 ? RGB(255, 255, 255) : RGB(0, 0, 0);
    if (picture == Picture::Sixteen) {
        const int i = (x + 3 * y) % 16;
        return RGB(i * 17, 255 - i * 17, i % 2 * 255);
    }
    const int i = x + 13 * y;
    return RGB(i * 2, 255 - i, i % 7 * 40);
}

Bytes ResourceBytes(LPCWSTR name, LPCWSTR type)
{
    const HMODULE module = ::GetModuleHandle(nullptr);
    const HRSRC resource = ::FindResourceW(module, name, type);
    const auto* const first = static_cast<const BYTE*>(::LockResource(::LoadResource(module, resource)));
    return {first, first + ::SizeofResource(module, resource)};
}

Bytes PackedDib(const DibSpec& spec)
{
    Bytes dib;
    if (spec.hasCoreHeader)
        Append(dib, BITMAPCOREHEADER{sizeof(BITMAPCOREHEADER), static_cast<WORD>(spec.width),
                                     static_cast<WORD>(spec.height), 1, spec.bitCount});
    else
        Append(dib, BITMAPINFOHEADER{sizeof(BITMAPINFOHEADER), spec.width, spec.height, 1, spec.bitCount,
                                     spec.compression, 0, 2835, 2835, spec.clrUsed, 0});
    const bool isStream = spec.compression == BI_RLE4 || spec.compression == BI_RLE8;
    const size_t colors = spec.clrUsed != 0 ? spec.clrUsed : spec.bitCount <= 8 ? 1U << spec.bitCount : 0;
    const auto width = static_cast<size_t>(spec.width);
    const auto height = static_cast<size_t>(std::abs(spec.height));
    const size_t image = isStream ? width * height : (width * spec.bitCount + 31) / 32 * 4 * height;
    if (isStream)
        HeaderOf(dib).biSizeImage = static_cast<DWORD>(image);
    const size_t table = colors * (spec.hasCoreHeader ? sizeof(RGBTRIPLE) : sizeof(RGBQUAD));
    for (size_t i = 0; i < table + image; ++i)
        dib.push_back(PatternByte(i));
    return dib;
}

BITMAPINFOHEADER& HeaderOf(Bytes& dib)
{
    return *reinterpret_cast<BITMAPINFOHEADER*>(dib.data());
}

Bytes BmpFile(const Bytes& dib)
{
    BITMAPFILEHEADER header = {};
    header.bfType = 0x4D42;
    header.bfSize = static_cast<DWORD>(kFileHeaderBytes + dib.size());
    header.bfOffBits = kFileHeaderBytes + sizeof(BITMAPINFOHEADER);
    Bytes file;
    Append(file, header);
    file.insert(file.end(), dib.begin(), dib.end());
    return file;
}

HGLOBAL GlobalBlock(const Bytes& bytes)
{
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    std::memcpy(::GlobalLock(block), bytes.data(), bytes.size());
    ::GlobalUnlock(block);
    return block;
}

Bytes BlockBytes(HGLOBAL hBlock)
{
    const auto* const first = static_cast<const BYTE*>(::GlobalLock(hBlock));
    if (first == nullptr)
        return {};
    Bytes bytes(first, first + ::GlobalSize(hBlock));
    ::GlobalUnlock(hBlock);
    return bytes;
}

int ReadBytes(CDib& dib, const Bytes& file, UINT from)
{
    CMemFile memory;
    memory.Write(file.data(), static_cast<UINT>(file.size()));
    memory.Seek(from, CFile::begin);
    return dib.Read(&memory);
}

Bytes WrittenBytes(CDib& dib)
{
    CMemFile memory;
    if (!dib.Write(&memory))
        return {};
    Bytes bytes(static_cast<size_t>(memory.GetLength()));
    memory.SeekToBegin();
    memory.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

COLORREF ShownColor(CBitmap* pBitmap, int x, int y)
{
    if (pBitmap == nullptr)
        return CLR_INVALID;
    const VOwnedMemoryDC dc(::CreateCompatibleDC(nullptr));
    const VSelectScope selected(dc.Get(), pBitmap->m_hObject);
    return ::GetPixel(dc.Get(), x, y);
}

testing::AssertionResult Shows(CBitmap* pBitmap, Picture picture)
{
    if (pBitmap == nullptr)
        return testing::AssertionFailure() << "there is no bitmap";
    for (int y = 0; y < kPictureSize.cy; ++y) {
        for (int x = 0; x < kPictureSize.cx; ++x) {
            const COLORREF shown = ShownColor(pBitmap, x, y);
            if (shown != PictureColor(picture, x, y))
                return testing::AssertionFailure() << "(" << x << ", " << y << ") is " << std::hex << shown
                                                   << " instead of " << PictureColor(picture, x, y);
        }
    }
    return testing::AssertionSuccess();
}

State::State(const CDib& dib)
    : block(dib.GetHandle()), bytes(BlockBytes(dib.GetHandle())),
      bitmap(dib.GetBitmap() != nullptr ? dib.GetBitmap()->m_hObject : nullptr),
      palette(dib.GetPalette() != nullptr ? dib.GetPalette()->m_hObject : nullptr)
{
}

} // namespace samples
