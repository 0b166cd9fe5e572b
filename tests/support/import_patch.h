// Replaces functions that a module imports.
#pragma once

#include <afxwin.h>

namespace support
{

// As long as this lives, the module's calls of a function by its name go to another one of the same kind.
class ImportPatch
{
public:
    ImportPatch(LPCWSTR module, const char* function, void* replacement);
    ~ImportPatch();
    ImportPatch(ImportPatch&& other) noexcept;
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

    // False when the module does not import the function.
    [[nodiscard]] bool IsInPlace() const { return m_slot != nullptr; }

private:
    void** m_slot;
    void* m_original = nullptr;
};

} // namespace support
