// Guard pages behind the memory that the library and the framework allocate, and resources of our own making.
#pragma once

#include "tests/support/import_patch.h"

#include <afxwin.h>
#include <vector>

namespace support
{

// As long as this lives:
// - The global blocks of vgui.dll end before a guard page, and so do those that the test makes here. Objects
//   that hold such blocks end before this does.
// - So does what is made with new, see InstallGuardPages.
// - Every resource that vgui.dll looks for is the one that SetResource names.
// One at a time.
class GuardedLibrary
{
public:
    GuardedLibrary();
    ~GuardedLibrary();
    GuardedLibrary(const GuardedLibrary&) = delete;
    GuardedLibrary& operator=(const GuardedLibrary&) = delete;

    // Whether all functions could be replaced.
    [[nodiscard]] bool IsGuarded() const { return m_isGuarded; }

    // A block as GlobalAlloc makes it, with these bytes. Whoever takes it frees it; else Free does.
    [[nodiscard]] HGLOBAL Block(const std::vector<BYTE>& bytes);
    void Free(HGLOBAL block);
    [[nodiscard]] std::vector<BYTE> BytesOf(HGLOBAL block) const;
    // Blocks that exist.
    [[nodiscard]] int Count() const;
    // Blocks that were freed while they were locked.
    [[nodiscard]] int FreedWhileLocked() const;
    // The longest block since the last call, in bytes.
    [[nodiscard]] size_t TakeLongest();

    // The bytes of every resource; null for none. The block stays the caller's.
    void SetResource(HGLOBAL block);

private:
    std::vector<ImportPatch> m_imports;
    bool m_isGuarded = false;
};

} // namespace support
