// A point in time by which something must have happened.
#pragma once

#include <afxwin.h>

namespace support
{

// What every wait of the test support allows unless it is told otherwise, in milliseconds. It is long
// because it is spent only when a test fails.
inline constexpr DWORD kDefaultTimeout = 5000;

class Deadline
{
public:
    explicit Deadline(DWORD timeoutMs) : m_end(::GetTickCount64() + timeoutMs) {}

    [[nodiscard]] bool Passed() const { return ::GetTickCount64() >= m_end; }

    // Milliseconds left, 0 once the time is up.
    [[nodiscard]] DWORD Left() const
    {
        const ULONGLONG now = ::GetTickCount64();
        return now >= m_end ? 0 : static_cast<DWORD>(m_end - now);
    }

private:
    ULONGLONG m_end;
};

} // namespace support
