#include "tests/support/import_patch.h"
#include "tests/support/import_table.h"

#include <utility>

namespace support
{

ImportPatch::ImportPatch(LPCWSTR module, const char* function, void* replacement)
    : m_slot(ImportSlot(::GetModuleHandle(module), function))
{
    if (m_slot == nullptr)
        return;
    m_original = *m_slot;
    WriteSlot(m_slot, replacement);
}

ImportPatch::ImportPatch(ImportPatch&& other) noexcept
    : m_slot(std::exchange(other.m_slot, nullptr)), m_original(other.m_original)
{
}

ImportPatch::~ImportPatch()
{
    if (m_slot != nullptr)
        WriteSlot(m_slot, m_original);
}

} // namespace support
