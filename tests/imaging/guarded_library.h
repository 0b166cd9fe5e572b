// Guard pages behind every block of global memory that the library allocates, and answers of our own for the
// resources it asks for.
#pragma once

#include <afxwin.h>
#include <vector>

namespace support
{

// Makes a module call another function in place of one that it imports; takes it back at the end.
class ImportPatch
{
public:
    // Nothing happens when the module does not import the function.
    ImportPatch(HMODULE module, const char* function, void* replacement);
    ~ImportPatch();
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

    [[nodiscard]] bool IsDone() const { return m_slot != nullptr; }

private:
    void** m_slot;
    void* m_original = nullptr;
};

// As long as this lives, the global blocks of vgui.dll end before a guard page, and so do those that the test
// makes here. Objects that hold such blocks end before this does. One at a time.
class GuardedGlobals
{
public:
    GuardedGlobals();
    ~GuardedGlobals();

    [[nodiscard]] bool IsDone() const;
    // A block as GlobalAlloc makes it, with these bytes.
    [[nodiscard]] static HGLOBAL Block(const std::vector<BYTE>& bytes);
    static void Free(HGLOBAL block);
    [[nodiscard]] static std::vector<BYTE> BytesOf(HGLOBAL block);
    // Blocks that exist.
    [[nodiscard]] static int Count();
    // The longest block since the last call, in bytes.
    [[nodiscard]] static size_t TakeLongest();

private:
    ImportPatch m_alloc;
    ImportPatch m_free;
    ImportPatch m_lock;
    ImportPatch m_unlock;
    ImportPatch m_size;
};

// As long as this lives, every resource that vgui.dll looks for has these bytes, which lie before a guard
// page.
class GuardedResource
{
public:
    explicit GuardedResource(const std::vector<BYTE>& bytes);
    ~GuardedResource();
    GuardedResource(const GuardedResource&) = delete;
    GuardedResource& operator=(const GuardedResource&) = delete;

    [[nodiscard]] bool IsDone() const;

private:
    ImportPatch m_find;
    ImportPatch m_load;
    ImportPatch m_lock;
    ImportPatch m_size;
};

} // namespace support
