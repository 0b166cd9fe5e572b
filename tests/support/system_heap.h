// An allocator for the bookkeeping of tests that watch or replace the C++ heap.
#pragma once

#include "tests/support/wait.h"

#include <new>

namespace support
{

// Takes memory from the system itself, past new and malloc: what is watched must not be in the books.
template <class Value>
struct SystemHeap {
    using value_type = Value;
    SystemHeap() = default;
    template <class Other>
    SystemHeap(const SystemHeap<Other>&)
    {
    }
    Value* allocate(size_t count)
    {
        void* const memory = ::HeapAlloc(::GetProcessHeap(), 0, count * sizeof(Value));
        if (memory == nullptr)
            throw std::bad_alloc();
        return static_cast<Value*>(memory);
    }
    void deallocate(Value* memory, size_t) { ::HeapFree(::GetProcessHeap(), 0, memory); }
    bool operator==(const SystemHeap&) const = default;
};

} // namespace support
