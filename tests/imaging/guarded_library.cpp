#include "tests/imaging/guarded_library.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <string_view>
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

const Replacement kReplacements[] = {
    Replace("GlobalAlloc", GuardedAlloc),     Replace("GlobalFree", GuardedFree),
    Replace("GlobalLock", GuardedLock),       Replace("GlobalUnlock", GuardedUnlock),
    Replace("GlobalSize", GuardedSize),       Replace("FindResourceW", FindGuarded),
    Replace("LoadResource", LoadGuarded),     Replace("LockResource", LockGuarded),
    Replace("SizeofResource", SizeofGuarded),
};

// The place in a module's import tables that holds the address of a function.
void** ImportSlot(HMODULE module, std::string_view function)
{
    BYTE* const base = reinterpret_cast<BYTE*>(module);
    const auto* const dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    const auto* import = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports);
    for (; import->Name != 0; ++import) {
        const auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + import->OriginalFirstThunk);
        auto* slot = reinterpret_cast<void**>(base + import->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
                continue;
            const auto* const entry = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (function == reinterpret_cast<const char*>(entry->Name))
                return slot;
        }
    }
    return nullptr;
}

void WriteSlot(void** slot, void* value)
{
    DWORD protection = 0;
    ::VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    *slot = value;
    ::VirtualProtect(slot, sizeof *slot, protection, &protection);
}

} // namespace

GuardedLibrary::GuardedLibrary()
{
    const HMODULE library = ::GetModuleHandle(L"vgui.dll");
    for (const auto& [name, function] : kReplacements) {
        void** const slot = ImportSlot(library, name);
        m_imports.push_back({slot, slot != nullptr ? *slot : nullptr});
        if (slot != nullptr)
            WriteSlot(slot, function);
    }
    g_longest = 0;
    g_freedWhileLocked = 0;
}

GuardedLibrary::~GuardedLibrary()
{
    for (const auto& [slot, original] : m_imports)
        if (slot != nullptr)
            WriteSlot(slot, original);
    while (!g_blocks.empty())
        GuardedFree(g_blocks.begin()->first);
}

bool GuardedLibrary::IsGuarded() const
{
    return std::ranges::all_of(m_imports, [](const Import& import) { return import.slot != nullptr; });
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
