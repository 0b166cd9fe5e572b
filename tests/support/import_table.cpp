#include "tests/support/import_table.h"

namespace support
{

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

} // namespace support
