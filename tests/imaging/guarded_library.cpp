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
};
// By the handle, which is the address.
std::map<void*, GuardedBlock> g_blocks;
size_t g_longest = 0;

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
    ::VirtualFree(found->second.pages, 0, MEM_RELEASE);
    g_blocks.erase(found);
    return nullptr;
}

LPVOID WINAPI GuardedLock(HGLOBAL block)
{
    return g_blocks.contains(block) ? block : ::GlobalLock(block);
}

BOOL WINAPI GuardedUnlock(HGLOBAL block)
{
    return g_blocks.contains(block) ? FALSE : ::GlobalUnlock(block);
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

HMODULE Library()
{
    return ::GetModuleHandle(L"vgui.dll");
}

template <class Function>
void* Address(Function* function)
{
    return reinterpret_cast<void*>(function);
}

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

ImportPatch::ImportPatch(HMODULE module, const char* function, void* replacement)
    : m_slot(ImportSlot(module, function))
{
    if (m_slot == nullptr)
        return;
    m_original = *m_slot;
    WriteSlot(m_slot, replacement);
}

ImportPatch::~ImportPatch()
{
    if (m_slot != nullptr)
        WriteSlot(m_slot, m_original);
}

GuardedGlobals::GuardedGlobals()
    : m_alloc(Library(), "GlobalAlloc", Address(GuardedAlloc)),
      m_free(Library(), "GlobalFree", Address(GuardedFree)),
      m_lock(Library(), "GlobalLock", Address(GuardedLock)),
      m_unlock(Library(), "GlobalUnlock", Address(GuardedUnlock)),
      m_size(Library(), "GlobalSize", Address(GuardedSize))
{
    g_longest = 0;
}

GuardedGlobals::~GuardedGlobals()
{
    while (!g_blocks.empty())
        GuardedFree(g_blocks.begin()->first);
}

bool GuardedGlobals::IsDone() const
{
    return m_alloc.IsDone() && m_free.IsDone() && m_lock.IsDone() && m_unlock.IsDone() && m_size.IsDone();
}

HGLOBAL GuardedGlobals::Block(const std::vector<BYTE>& bytes)
{
    const HGLOBAL block = GuardedAlloc(0, bytes.size());
    std::memcpy(block, bytes.data(), bytes.size());
    return block;
}

void GuardedGlobals::Free(HGLOBAL block)
{
    GuardedFree(block);
}

std::vector<BYTE> GuardedGlobals::BytesOf(HGLOBAL block)
{
    const auto* const first = static_cast<const BYTE*>(block);
    return {first, first + GuardedSize(block)};
}

int GuardedGlobals::Count()
{
    return static_cast<int>(g_blocks.size());
}

size_t GuardedGlobals::TakeLongest()
{
    return std::exchange(g_longest, 0);
}

GuardedResource::GuardedResource(const std::vector<BYTE>& bytes)
    : m_find(Library(), "FindResourceW", Address(FindGuarded)),
      m_load(Library(), "LoadResource", Address(LoadGuarded)),
      m_lock(Library(), "LockResource", Address(LockGuarded)),
      m_size(Library(), "SizeofResource", Address(SizeofGuarded))
{
    g_resource = GuardedGlobals::Block(bytes);
    DWORD protection = 0;
    ::VirtualProtect(g_resource, bytes.size(), PAGE_READONLY, &protection);
}

GuardedResource::~GuardedResource()
{
    GuardedFree(std::exchange(g_resource, nullptr));
}

bool GuardedResource::IsDone() const
{
    return m_find.IsDone() && m_load.IsDone() && m_lock.IsDone() && m_size.IsDone();
}

} // namespace support
