#include "tests/imaging/guarded_library.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <limits>
#include <map>
#include <mutex>
#include <new>
#include <span>
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

// The pages of a block that ends before a guard page; null when there is no memory.
BYTE* NewPages(size_t length, BYTE*& pages)
{
    const size_t room = (length + kPageBytes - 1) / kPageBytes * kPageBytes;
    pages = static_cast<BYTE*>(::VirtualAlloc(nullptr, room + kPageBytes, MEM_RESERVE, PAGE_NOACCESS));
    if (pages == nullptr)
        return nullptr;
    if (room != 0 && ::VirtualAlloc(pages, room, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
        ::VirtualFree(pages, 0, MEM_RELEASE);
        return nullptr;
    }
    return pages + room - length;
}

HGLOBAL WINAPI GuardedAlloc(UINT, SIZE_T length)
{
    g_longest = std::max(g_longest, length);
    BYTE* pages = nullptr;
    BYTE* const block = NewPages(length, pages);
    if (block != nullptr)
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

// ---- new and delete

constexpr size_t kNewAlignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__;
// So many deleted blocks stay out of reach before their places are used again.
constexpr size_t kMostDeleted = 64;
constexpr size_t kNothingRefused = std::numeric_limits<size_t>::max();

struct GuardedObject {
    BYTE* pages;
    size_t length;
};
// By the address. Objects may outlive every GuardedLibrary and the variables of this file.
std::map<void*, GuardedObject>& g_objects = *new std::map<void*, GuardedObject>;
std::deque<BYTE*>& g_deleted = *new std::deque<BYTE*>;
std::mutex& g_objectsLock = *new std::mutex;
size_t g_refusedFrom = kNothingRefused;

void* GuardedNewOrNull(size_t length) noexcept
{
    if (length >= g_refusedFrom)
        return nullptr;
    const size_t aligned = (std::max(length, size_t{1}) + kNewAlignment - 1) / kNewAlignment * kNewAlignment;
    BYTE* pages = nullptr;
    BYTE* const object = NewPages(aligned, pages);
    if (object != nullptr) {
        const std::lock_guard locked(g_objectsLock);
        g_objects[object] = {pages, aligned};
    }
    return object;
}

void* GuardedNew(size_t length)
{
    void* const object = GuardedNewOrNull(length);
    if (object == nullptr)
        throw std::bad_alloc();
    return object;
}

void* GuardedNewNoThrow(size_t length, const std::nothrow_t&) noexcept
{
    return GuardedNewOrNull(length);
}

void GuardedDelete(void* object) noexcept
{
    const std::lock_guard locked(g_objectsLock);
    const auto found = g_objects.find(object);
    if (found == g_objects.end()) {
        ::operator delete(object);
        return;
    }
    const auto [pages, length] = found->second;
    ::VirtualFree(pages, length, MEM_DECOMMIT);
    g_deleted.push_back(pages);
    g_objects.erase(found);
    if (g_deleted.size() > kMostDeleted) {
        ::VirtualFree(g_deleted.front(), 0, MEM_RELEASE);
        g_deleted.pop_front();
    }
}

void GuardedSizedDelete(void* object, size_t) noexcept
{
    GuardedDelete(object);
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
// The mangled names of operator new and delete.
const Replacement kNews[] = {
    Replace("_Znwy", GuardedNew),
    Replace("_ZnwyRKSt9nothrow_t", GuardedNewNoThrow),
};
const Replacement kDeletes[] = {
    Replace("_ZdlPv", GuardedDelete),
    Replace("_ZdlPvy", GuardedSizedDelete),
};

void ReplaceAll(LPCWSTR module, std::span<const Replacement> replacements, std::vector<ImportPatch>& done)
{
    for (const auto& [name, function] : replacements)
        done.emplace_back(module, name, function);
}

} // namespace

GuardedLibrary::GuardedLibrary()
{
    constexpr LPCWSTR library = L"vgui.dll";
    constexpr LPCWSTR framework = L"mfcsubset.dll";
    ReplaceAll(library, kOfLibrary, m_imports);
    // What the one makes the other may delete. The deletes stay replaced to the end: objects may outlive
    // this.
    static auto* const deletes = new std::vector<ImportPatch>;
    if (deletes->empty())
        for (const LPCWSTR module : {library, framework})
            ReplaceAll(module, kDeletes, *deletes);
    for (const LPCWSTR module : {library, framework})
        ReplaceAll(module, kNews, m_imports);
    m_isGuarded = std::ranges::all_of(m_imports, &ImportPatch::IsInPlace) &&
                  std::ranges::all_of(*deletes, &ImportPatch::IsInPlace);
    g_longest = 0;
    g_freedWhileLocked = 0;
}

GuardedLibrary::~GuardedLibrary()
{
    m_imports.clear();
    while (!g_blocks.empty())
        GuardedFree(g_blocks.begin()->first);
    g_refusedFrom = kNothingRefused;
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

void GuardedLibrary::RefuseObjectsFrom(size_t length)
{
    g_refusedFrom = length;
}

void GuardedLibrary::SetResource(HGLOBAL block)
{
    g_resource = block;
}

} // namespace support
