#include "tests/support/guard_pages.h"

#include "tests/support/import_table.h"
#include "tests/support/system_heap.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <new>

namespace support
{

namespace
{

constexpr size_t kPage = 4096;
constexpr size_t kLargestAlignment = 16;
// A mapping of its own takes two of the 65,530 that a process has where pages are mapped one by one.
constexpr size_t kMostBlocks = 20000;
constexpr size_t kFreedKept = 2000;
constexpr BYTE kFresh = 0xCD;

struct Block {
    void* pages;
    size_t room; // bytes before the guard page
    size_t size;
};

struct Guard {
    std::mutex lock;
    std::map<void*, Block, std::less<>, SystemHeap<std::pair<void* const, Block>>> blocks;
    Block freed[kFreedKept] = {};
    size_t nextFreed = 0;
};

Guard& TheGuard()
{
    // Never destroyed: other modules free their last blocks after this one's end.
    alignas(Guard) static BYTE memory[sizeof(Guard)];
    static Guard* const guard = new (memory) Guard;
    return *guard;
}

void* Allocate(size_t size)
{
    Guard& guard = TheGuard();
    const std::lock_guard locked(guard.lock);
    if (guard.blocks.size() >= kMostBlocks || size > SIZE_MAX / 2)
        return nullptr;
    const size_t room = (std::max<size_t>(size, 1) + kPage - 1) / kPage * kPage;
    auto* const pages = static_cast<BYTE*>(::VirtualAlloc(nullptr, room + kPage, MEM_RESERVE, PAGE_NOACCESS));
    if (pages == nullptr)
        return nullptr;
    if (::VirtualAlloc(pages, room, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
        ::VirtualFree(pages, 0, MEM_RELEASE);
        return nullptr;
    }
    std::memset(pages, kFresh, room);
    // As near to the page as the types allow that a block of this size may hold.
    const size_t alignment = size == 0 ? 1 : std::min(size & (~size + 1), kLargestAlignment);
    BYTE* const block = pages + (room - size) / alignment * alignment;
    guard.blocks[block] = {pages, room, size};
    return block;
}

// False for a block that is not one of these.
bool Release(void* memory)
{
    Guard& guard = TheGuard();
    const std::lock_guard locked(guard.lock);
    const auto found = guard.blocks.find(memory);
    if (found == guard.blocks.end())
        return false;
    const Block block = found->second;
    guard.blocks.erase(found);
    ::VirtualFree(block.pages, block.room, MEM_DECOMMIT);
    Block& oldest = guard.freed[guard.nextFreed++ % kFreedKept];
    if (oldest.pages != nullptr)
        ::VirtualFree(oldest.pages, 0, MEM_RELEASE);
    oldest = block;
    return true;
}

bool FindSize(void* memory, size_t& size)
{
    Guard& guard = TheGuard();
    const std::lock_guard locked(guard.lock);
    const auto found = guard.blocks.find(memory);
    if (found != guard.blocks.end())
        size = found->second.size;
    return found != guard.blocks.end();
}

// The system's. Called through pointers: this module's own imports are replaced, too.
template <class Function>
Function* Original(LPCWSTR module, const char* name, Function*)
{
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandle(module), name)));
}
const auto g_malloc = Original(L"msvcrt.dll", "malloc", &malloc);
const auto g_calloc = Original(L"msvcrt.dll", "calloc", &calloc);
const auto g_realloc = Original(L"msvcrt.dll", "realloc", &realloc);
const auto g_free = Original(L"msvcrt.dll", "free", &free);
const auto g_msize = Original(L"msvcrt.dll", "_msize", &_msize);
const auto g_globalAlloc = Original(L"kernel32.dll", "GlobalAlloc", &::GlobalAlloc);
const auto g_globalFree = Original(L"kernel32.dll", "GlobalFree", &::GlobalFree);
const auto g_globalLock = Original(L"kernel32.dll", "GlobalLock", &::GlobalLock);
const auto g_globalUnlock = Original(L"kernel32.dll", "GlobalUnlock", &::GlobalUnlock);
const auto g_globalSize = Original(L"kernel32.dll", "GlobalSize", &::GlobalSize);

void* GuardedMalloc(size_t size)
{
    void* const block = Allocate(size);
    return block != nullptr ? block : g_malloc(size);
}

void* GuardedCalloc(size_t count, size_t size)
{
    if (size != 0 && count > SIZE_MAX / size)
        return nullptr;
    void* const block = Allocate(count * size);
    return block != nullptr ? std::memset(block, 0, count * size) : g_calloc(count, size);
}

void GuardedFree(void* block)
{
    if (block != nullptr && !Release(block))
        g_free(block);
}

void* GuardedRealloc(void* block, size_t size)
{
    size_t old = 0;
    if (block != nullptr && !FindSize(block, old))
        return g_realloc(block, size);
    if (block != nullptr && size == 0) {
        Release(block);
        return nullptr;
    }
    void* const larger = GuardedMalloc(size);
    if (larger != nullptr && block != nullptr) {
        std::memcpy(larger, block, std::min(old, size));
        Release(block);
    }
    return larger;
}

size_t GuardedMsize(void* block)
{
    size_t size = 0;
    return FindSize(block, size) ? size : g_msize(block);
}

HGLOBAL WINAPI GuardedGlobalAlloc(UINT flags, SIZE_T size)
{
    void* const block = Allocate(size);
    if (block == nullptr)
        return g_globalAlloc(flags, size);
    if (flags & GMEM_ZEROINIT)
        std::memset(block, 0, size);
    return block;
}

HGLOBAL WINAPI GuardedGlobalFree(HGLOBAL block)
{
    return block != nullptr && Release(block) ? nullptr : g_globalFree(block);
}

LPVOID WINAPI GuardedGlobalLock(HGLOBAL block)
{
    size_t size = 0;
    return FindSize(block, size) ? block : g_globalLock(block);
}

BOOL WINAPI GuardedGlobalUnlock(HGLOBAL block)
{
    size_t size = 0;
    if (!FindSize(block, size))
        return g_globalUnlock(block);
    ::SetLastError(NO_ERROR);
    return FALSE;
}

SIZE_T WINAPI GuardedGlobalSize(HGLOBAL block)
{
    size_t size = 0;
    return FindSize(block, size) ? size : g_globalSize(block);
}

template <class Function>
void Replace(HMODULE module, const char* name, Function* replacement)
{
    if (void** const slot = ImportSlot(module, name))
        WriteSlot(slot, reinterpret_cast<void*>(replacement));
}

void ReplaceHeap(HMODULE module)
{
    Replace(module, "malloc", GuardedMalloc);
    Replace(module, "calloc", GuardedCalloc);
    Replace(module, "realloc", GuardedRealloc);
    Replace(module, "free", GuardedFree);
    Replace(module, "_msize", GuardedMsize);
}

void ReplaceGlobal(HMODULE module)
{
    Replace(module, "GlobalFree", GuardedGlobalFree);
    Replace(module, "GlobalLock", GuardedGlobalLock);
    Replace(module, "GlobalUnlock", GuardedGlobalUnlock);
    Replace(module, "GlobalSize", GuardedGlobalSize);
}

} // namespace

void InstallGuardPages()
{
    static_cast<void>(TheGuard());
    const HMODULE program = ::GetModuleHandle(nullptr);
    const HMODULE library = ::GetModuleHandle(L"vgui.dll");
    for (const HMODULE module :
         {program, library, ::GetModuleHandle(L"mfcsubset.dll"), ::GetModuleHandle(L"libstdc++-6.dll")}) {
        if (module != nullptr)
            ReplaceHeap(module);
    }
    if (library != nullptr) {
        // What the tests make themselves may go to the system; they look at the library's blocks, too.
        ReplaceGlobal(program);
        ReplaceGlobal(library);
        Replace(library, "GlobalAlloc", GuardedGlobalAlloc);
    }
}

} // namespace support
