#include "tests/imaging/guarded_library.h"

#include "tests/support/guard_pages.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

namespace support
{

namespace
{

constexpr size_t kPageBytes = 4096;

struct GuardedBlock {
    BYTE* pages;
    size_t length;
    int locks = 0;
};
// By the handle, which is the address.
std::map<void*, GuardedBlock> g_blocks;
size_t g_longest = 0;
int g_freedWhileLocked = 0;

// A block that ends before a guard page, up to its last byte; null when there is no memory.
HGLOBAL WINAPI GuardedAlloc(UINT, SIZE_T length)
{
    g_longest = std::max(g_longest, length);
    const size_t room = (length + kPageBytes - 1) / kPageBytes * kPageBytes;
    auto* const pages =
        static_cast<BYTE*>(::VirtualAlloc(nullptr, room + kPageBytes, MEM_RESERVE, PAGE_NOACCESS));
    if (pages == nullptr)
        return nullptr;
    if (room != 0 && ::VirtualAlloc(pages, room, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
        ::VirtualFree(pages, 0, MEM_RELEASE);
        return nullptr;
    }
    BYTE* const block = pages + room - length;
    g_blocks[block] = {pages, length};
    return block;
}

HGLOBAL WINAPI GuardedFree(HGLOBAL block)
{
    const auto found = g_blocks.find(block);
    if (found == g_blocks.end())
        return ::GlobalFree(block);
    if (found->second.locks > 0)
        ++g_freedWhileLocked;
    ::VirtualFree(found->second.pages, 0, MEM_RELEASE);
    g_blocks.erase(found);
    return nullptr;
}

LPVOID WINAPI GuardedLock(HGLOBAL block)
{
    const auto found = g_blocks.find(block);
    if (found == g_blocks.end())
        return ::GlobalLock(block);
    ++found->second.locks;
    return block;
}

BOOL WINAPI GuardedUnlock(HGLOBAL block)
{
    const auto found = g_blocks.find(block);
    return found != g_blocks.end() ? --found->second.locks > 0 : ::GlobalUnlock(block);
}

SIZE_T WINAPI GuardedSize(HGLOBAL block)
{
    const auto found = g_blocks.find(block);
    return found != g_blocks.end() ? found->second.length : ::GlobalSize(block);
}

// ---- Resources

HGLOBAL g_resource = nullptr;

HRSRC WINAPI FindGuarded(HMODULE, LPCWSTR, LPCWSTR)
{
    return static_cast<HRSRC>(g_resource);
}

HGLOBAL WINAPI LoadGuarded(HMODULE, HRSRC resource)
{
    return resource;
}

LPVOID WINAPI LockGuarded(HGLOBAL resource)
{
    return resource;
}

DWORD WINAPI SizeofGuarded(HMODULE, HRSRC resource)
{
    return static_cast<DWORD>(GuardedSize(resource));
}

struct Replacement {
    const char* name;
    void* function;
};

template <class Function>
Replacement Replace(const char* name, Function* function)
{
    return {name, reinterpret_cast<void*>(function)};
}

const Replacement kOfLibrary[] = {
    Replace("GlobalAlloc", GuardedAlloc),     Replace("GlobalFree", GuardedFree),
    Replace("GlobalLock", GuardedLock),       Replace("GlobalUnlock", GuardedUnlock),
    Replace("GlobalSize", GuardedSize),       Replace("FindResourceW", FindGuarded),
    Replace("LoadResource", LoadGuarded),     Replace("LockResource", LockGuarded),
    Replace("SizeofResource", SizeofGuarded),
};
} // namespace

GuardedLibrary::GuardedLibrary()
{
    InstallGuardPages(); // for objects, and to the end of the program
    for (const auto& [name, function] : kOfLibrary)
        m_imports.emplace_back(L"vgui.dll", name, function);
    m_isGuarded = std::ranges::all_of(m_imports, &ImportPatch::IsInPlace);
    g_longest = 0;
    g_freedWhileLocked = 0;
}

GuardedLibrary::~GuardedLibrary()
{
    m_imports.clear();
    while (!g_blocks.empty())
        GuardedFree(g_blocks.begin()->first);
}

HGLOBAL GuardedLibrary::Block(const std::vector<BYTE>& bytes)
{
    const HGLOBAL block = GuardedAlloc(0, bytes.size());
    std::memcpy(block, bytes.data(), bytes.size());
    return block;
}

void GuardedLibrary::Free(HGLOBAL block)
{
    GuardedFree(block);
}

std::vector<BYTE> GuardedLibrary::BytesOf(HGLOBAL block) const
{
    const auto* const first = static_cast<const BYTE*>(block);
    return {first, first + GuardedSize(block)};
}

int GuardedLibrary::Count() const
{
    return static_cast<int>(g_blocks.size());
}

int GuardedLibrary::FreedWhileLocked() const
{
    return g_freedWhileLocked;
}

size_t GuardedLibrary::TakeLongest()
{
    return std::exchange(g_longest, 0);
}

void GuardedLibrary::SetResource(HGLOBAL block)
{
    g_resource = block;
}

} // namespace support
