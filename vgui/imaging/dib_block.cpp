// Measures of packed DIBs, checked access, and new blocks.
#include "vgui/imaging/dib_block.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <optional>
#include <utility>

namespace
{

constexpr size_t kInfoHeaderBytes = sizeof(BITMAPINFOHEADER);
constexpr size_t kCoreHeaderBytes = sizeof(BITMAPCOREHEADER);

// Block starts need not be aligned, so headers are copied out.
template <class Value>
Value ReadAt(const BYTE* memory)
{
    Value value;
    std::memcpy(&value, memory, sizeof value);
    return value;
}

BITMAPINFOHEADER InfoHeader(const BYTE* block)
{
    return ReadAt<BITMAPINFOHEADER>(block);
}

BITMAPCOREHEADER CoreHeader(const BYTE* block)
{
    return ReadAt<BITMAPCOREHEADER>(block);
}

// Any other header counts as the old one.
bool HasInfoHeader(const BYTE* block)
{
    return ReadAt<DWORD>(block) == kInfoHeaderBytes;
}

size_t ColorBytes(const BYTE* block)
{
    return HasInfoHeader(block) ? sizeof(RGBQUAD) : sizeof(RGBTRIPLE);
}

size_t HeaderBytes(const BYTE* block)
{
    return HasInfoHeader(block) ? kInfoHeaderBytes : kCoreHeaderBytes;
}

WORD BitCountOf(const BYTE* block)
{
    return HasInfoHeader(block) ? InfoHeader(block).biBitCount : CoreHeader(block).bcBitCount;
}

DWORD CompressionOf(const BYTE* block)
{
    return HasInfoHeader(block) ? InfoHeader(block).biCompression : DWORD{BI_RGB};
}

bool IsStreamCompression(DWORD compression)
{
    return compression != BI_RGB && compression != BI_BITFIELDS;
}

bool IsCompressionOfDepth(DWORD compression, WORD bitCount)
{
    switch (compression) {
    case BI_RGB:
        return true;
    case BI_RLE8:
        return bitCount == 8;
    case BI_RLE4:
        return bitCount == 4;
    case BI_BITFIELDS:
        return bitCount == 16 || bitCount == 32;
    default:
        return false;
    }
}

// Whether the memory begins with the header of an image with bottom-up rows.
bool IsSaneHeader(const BYTE* block, size_t length)
{
    if (block == nullptr || length < kCoreHeaderBytes)
        return false;
    WORD planes = 0;
    switch (ReadAt<DWORD>(block)) {
    case kInfoHeaderBytes:
        if (length < kInfoHeaderBytes)
            return false;
        planes = InfoHeader(block).biPlanes;
        break;
    case kCoreHeaderBytes:
        planes = CoreHeader(block).bcPlanes;
        break;
    default:
        return false;
    }
    const WORD bitCount = BitCountOf(block);
    return planes == 1 && IsKnownDepth(bitCount) && IsCompressionOfDepth(CompressionOf(block), bitCount) &&
           IsSaneDibSize(DIBWidth(block), DIBHeight(block));
}

// The bytes of the pixel rows; of the stream when there are no rows.
size_t ImageBytesOf(const BYTE* block)
{
    if (IsStreamCompression(CompressionOf(block)))
        return InfoHeader(block).biSizeImage;
    return BytesPerLine(block) * static_cast<size_t>(DIBHeight(block));
}

size_t BitsOffset(const BYTE* block)
{
    return HeaderBytes(block) + PaletteSize(block);
}

// Whether so many bytes hold header, colour table and all of the image.
bool IsWhole(const BYTE* header, size_t length)
{
    const size_t offset = BitsOffset(header);
    const size_t imageBytes = ImageBytesOf(header);
    return imageBytes > 0 && offset <= length && imageBytes <= length - offset;
}

// A checked copy of the header of a packed DIB that comes from elsewhere, its height positive.
struct IncomingHeader {
    BYTE bytes[kInfoHeaderBytes] = {};
    bool isTopDown = false;
};

void SetSizeImage(BYTE* header, size_t imageBytes)
{
    if (!HasInfoHeader(header))
        return;
    BITMAPINFOHEADER info = InfoHeader(header);
    info.biSizeImage = static_cast<DWORD>(imageBytes);
    std::memcpy(header, &info, sizeof info);
}

// Nothing when the header makes no sense. A biSizeImage that is less than the rows becomes theirs.
std::optional<IncomingHeader> CheckIncoming(const BYTE* memory, size_t length)
{
    if (memory == nullptr || length < kCoreHeaderBytes || length < HeaderBytes(memory))
        return std::nullopt;
    IncomingHeader incoming;
    std::memcpy(incoming.bytes, memory, HeaderBytes(memory));
    if (HasInfoHeader(memory)) {
        BITMAPINFOHEADER header = InfoHeader(memory);
        incoming.isTopDown = header.biHeight < 0 && header.biHeight != LONG_MIN;
        if (incoming.isTopDown)
            header.biHeight = -header.biHeight;
        if (incoming.isTopDown && IsStreamCompression(header.biCompression))
            return std::nullopt;
        std::memcpy(incoming.bytes, &header, sizeof header);
    }
    if (!IsSaneHeader(incoming.bytes, sizeof incoming.bytes))
        return std::nullopt;
    if (DIBBlockSize(incoming.bytes) < BitsOffset(incoming.bytes) + ImageBytesOf(incoming.bytes))
        SetSizeImage(incoming.bytes, ImageBytesOf(incoming.bytes));
    return incoming;
}

// Nothing either when the image is not all there. A biSizeImage that reaches beyond the memory becomes the
// image's.
std::optional<IncomingHeader> CheckWhole(const BYTE* memory, size_t length)
{
    std::optional<IncomingHeader> incoming = CheckIncoming(memory, length);
    if (!incoming || !IsWhole(incoming->bytes, length))
        return std::nullopt;
    if (DIBBlockSize(incoming->bytes) > length)
        SetSizeImage(incoming->bytes, ImageBytesOf(incoming->bytes));
    return incoming;
}

// Nothing happens for an empty view.
void TurnOver(const VDibView& dib)
{
    if (!dib)
        return;
    const size_t rowBytes = dib.RowBytes();
    for (LONG top = 0, bottom = dib.Height() - 1; top < bottom; ++top, --bottom)
        std::swap_ranges(dib.Row(top), dib.Row(top) + rowBytes, dib.Row(bottom));
}

} // namespace

// ---- Measures

bool IsKnownDepth(WORD bitCount)
{
    constexpr WORD kDepths[] = {1, 4, 8, 16, 24, 32};
    return std::ranges::find(kDepths, bitCount) != std::end(kDepths);
}

bool IsSaneDibSize(LONG width, LONG height)
{
    constexpr LONG kMostBits = 32;
    constexpr LONG kMostWidth = (INT_MAX - (kMostBits - 1)) / kMostBits;
    return width > 0 && height > 0 && width <= kMostWidth &&
           DIBRowBytes(static_cast<size_t>(width), kMostBits) <=
               kMaxDibImageBytes / static_cast<size_t>(height);
}

DWORD DIBNumColors(const BYTE* block)
{
    if (HasInfoHeader(block) && InfoHeader(block).biClrUsed != 0)
        return InfoHeader(block).biClrUsed;
    const WORD bitCount = BitCountOf(block);
    return bitCount == 1 || bitCount == 4 || bitCount == 8 ? 1U << bitCount : 0;
}

WORD PaletteSize(const BYTE* block)
{
    return static_cast<WORD>(DIBNumColors(block) * ColorBytes(block));
}

BYTE* FindDIBBits(BYTE* block)
{
    return block + BitsOffset(block);
}

LONG DIBWidth(const BYTE* block)
{
    return HasInfoHeader(block) ? InfoHeader(block).biWidth : CoreHeader(block).bcWidth;
}

LONG DIBHeight(const BYTE* block)
{
    return HasInfoHeader(block) ? InfoHeader(block).biHeight : CoreHeader(block).bcHeight;
}

size_t BytesPerLine(const BYTE* block)
{
    return DIBRowBytes(static_cast<size_t>(DIBWidth(block)), BitCountOf(block));
}

size_t DIBBlockSize(BYTE* block)
{
    if (!HasInfoHeader(block))
        return BitsOffset(block) + ImageBytesOf(block);
    if (InfoHeader(block).biSizeImage == 0)
        SetSizeImage(block, ImageBytesOf(block));
    return BitsOffset(block) + InfoHeader(block).biSizeImage;
}

// ---- VDibView

VDibView::VDibView(BYTE* block, size_t length)
{
    if (!IsSaneHeader(block, length) || !IsWhole(block, length))
        return;
    m_block = block;
    m_length = length;
}

WORD VDibView::BitCount() const
{
    return BitCountOf(m_block);
}

DWORD VDibView::Compression() const
{
    return CompressionOf(m_block);
}

bool VDibView::HasCoreHeader() const
{
    return !HasInfoHeader(m_block);
}

BITMAPINFOHEADER VDibView::Header() const
{
    return HasCoreHeader() ? DIBHeader(Width(), Height(), BitCount()) : InfoHeader(m_block);
}

bool VDibView::HasRows() const
{
    return !IsStreamCompression(Compression());
}

size_t VDibView::ImageBytes() const
{
    return ImageBytesOf(m_block);
}

RGBQUAD VDibView::Color(DWORD i) const
{
    const size_t offset = HeaderBytes(m_block) + size_t{i} * ColorBytes(m_block);
    RGBQUAD color = {};
    if (offset + ColorBytes(m_block) <= m_length)
        std::memcpy(&color, m_block + offset, ColorBytes(m_block));
    return color;
}

void VDibView::SetColor(DWORD i, RGBQUAD color) const
{
    const size_t offset = size_t{i} * ColorBytes(m_block);
    if (offset + ColorBytes(m_block) <= PaletteSize(m_block))
        std::memcpy(m_block + HeaderBytes(m_block) + offset, &color, ColorBytes(m_block));
}

void VDibView::RestoreMasks(const VDibView& original) const
{
    if (original.Compression() == BI_BITFIELDS)
        std::memcpy(m_block + kInfoHeaderBytes, original.m_block + kInfoHeaderBytes,
                    std::min(kMaskBytes, m_length - kInfoHeaderBytes));
}

void VDibView::UpdateSizeImage() const
{
    SetSizeImage(m_block, ImageBytes());
}

// ---- VLockedDib

VLockedDib::VLockedDib(HGLOBAL hDib) : m_hDib(hDib)
{
    BYTE* const memory = hDib != nullptr ? static_cast<BYTE*>(::GlobalLock(hDib)) : nullptr;
    if (memory == nullptr)
        m_hDib = nullptr;
    else
        VDibView::operator=(VDibView(memory, ::GlobalSize(hDib)));
}

VLockedDib::~VLockedDib()
{
    if (m_hDib != nullptr)
        ::GlobalUnlock(m_hDib);
}

// ---- New blocks

VOwnedGlobal NewGlobalBlock(size_t bytes)
{
    return VOwnedGlobal(::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes));
}

VOwnedGlobal NewDib(const BITMAPINFOHEADER& header, size_t spare)
{
    if (header.biSize != kInfoHeaderBytes || header.biPlanes != 1 || !IsKnownDepth(header.biBitCount) ||
        !IsSaneDibSize(header.biWidth, header.biHeight))
        return {};
    const auto* const bytes = reinterpret_cast<const BYTE*>(&header);
    const size_t rows = BytesPerLine(bytes) * static_cast<size_t>(header.biHeight);
    VOwnedGlobal block = NewGlobalBlock(BitsOffset(bytes) + rows + spare);
    if (void* const memory = block ? ::GlobalLock(block.Get()) : nullptr) {
        std::memcpy(memory, &header, sizeof header);
        SetSizeImage(static_cast<BYTE*>(memory), 0);
        ::GlobalUnlock(block.Get());
    }
    return block;
}

BITMAPINFOHEADER DIBHeader(LONG width, LONG height, WORD bitCount)
{
    BITMAPINFOHEADER header = {};
    header.biSize = kInfoHeaderBytes;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = bitCount;
    return header;
}

VOwnedGlobal NewDibLike(const VDibView& dib, LONG width, LONG height)
{
    BITMAPINFOHEADER header = dib.Header();
    header.biWidth = width;
    header.biHeight = height;
    header.biCompression = BI_RGB;
    VOwnedGlobal block = NewDib(header);
    const VLockedDib made(block.Get());
    if (!made)
        return {};
    const DWORD colors = PaletteSize(made.Block()) / sizeof(RGBQUAD);
    for (DWORD i = 0; i < colors; ++i)
        made.SetColor(i, dib.Color(i));
    return block;
}

VOwnedGlobal DuplicateDib(HGLOBAL hDib)
{
    const VLockedDib dib(hDib);
    if (!dib)
        return {};
    VOwnedGlobal copy = NewGlobalBlock(dib.Length());
    if (void* const memory = copy ? ::GlobalLock(copy.Get()) : nullptr) {
        std::memcpy(memory, dib.Block(), dib.Length());
        ::GlobalUnlock(copy.Get());
    }
    return copy;
}

size_t PackedDibBytes(const BYTE* memory)
{
    if (memory == nullptr)
        return 0;
    std::optional<IncomingHeader> incoming = CheckIncoming(memory, HeaderBytes(memory));
    return incoming ? DIBBlockSize(incoming->bytes) : 0;
}

VOwnedGlobal CopyPackedDib(const BYTE* memory, size_t length)
{
    std::optional<IncomingHeader> incoming = CheckWhole(memory, length);
    if (!incoming)
        return {};
    const size_t bytes = DIBBlockSize(incoming->bytes);
    VOwnedGlobal block = NewGlobalBlock(bytes);
    if (void* const target = block ? ::GlobalLock(block.Get()) : nullptr) {
        std::memcpy(target, memory, bytes);
        std::memcpy(target, incoming->bytes, HeaderBytes(incoming->bytes));
        ::GlobalUnlock(block.Get());
    }
    if (incoming->isTopDown)
        TurnOver(VLockedDib(block.Get()));
    return block;
}

VOwnedGlobal TakePackedDib(VOwnedGlobal block, size_t length)
{
    const BYTE* const memory = block ? static_cast<const BYTE*>(::GlobalLock(block.Get())) : nullptr;
    if (memory == nullptr)
        return {};
    const bool isExact = PackedDibBytes(memory) == length;
    VOwnedGlobal copy = isExact ? VOwnedGlobal() : CopyPackedDib(memory, length);
    ::GlobalUnlock(block.Get());
    return isExact && AcceptDib(block.Get()) ? std::move(block) : std::move(copy);
}

bool AcceptDib(HGLOBAL hDib)
{
    BYTE* const memory = hDib != nullptr ? static_cast<BYTE*>(::GlobalLock(hDib)) : nullptr;
    if (memory == nullptr)
        return false;
    const size_t length = ::GlobalSize(hDib);
    const std::optional<IncomingHeader> incoming = CheckWhole(memory, length);
    if (incoming) {
        std::memcpy(memory, incoming->bytes, HeaderBytes(incoming->bytes));
        if (incoming->isTopDown)
            TurnOver(VDibView(memory, length));
    }
    ::GlobalUnlock(hDib);
    return incoming.has_value();
}
