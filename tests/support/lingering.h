// Objects whose memory can be looked at after their end.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

namespace support
{

// An object to be made with new, one of each class at a time. Its memory stays when it is deleted, filled
// with a pattern, so that a test sees whether something still uses the object.
template <class Base>
class Lingering : public Base
{
public:
    static void* operator new(size_t) { return s_memory.data(); }
    static void operator delete(void*) { s_memory.fill(kFreed); }

    // Whether the last object was deleted and nothing has been written to it since.
    [[nodiscard]] static bool IsUntouched()
    {
        return std::all_of(s_memory.begin(), s_memory.end(), [](unsigned char c) { return c == kFreed; });
    }

private:
    static constexpr unsigned char kFreed = 0xEE;
    alignas(std::max_align_t) static inline std::array<unsigned char, sizeof(Base)> s_memory;
};

} // namespace support
