// CTime: conversions between universal and local time.
#include "afx.h"

#include <time.h>

namespace
{

constexpr LONGLONG kUnixEpoch = 116444736000000000LL; // 1970 in FILETIME units of 100 ns
constexpr LONGLONG kTicksPerSecond = 10000000LL;

LONGLONG TicksOf(const FILETIME& time)
{
    return static_cast<LONGLONG>(static_cast<ULONGLONG>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
}

__time64_t SecondsOf(const FILETIME& time)
{
    return (TicksOf(time) - kUnixEpoch) / kTicksPerSecond;
}

// Seconds of a local date and time; throws for one that does not exist.
__time64_t LocalSeconds(int year, int month, int day, int hour, int minute, int second, int dst)
{
    if (year < 1970 || month < 1 || month > 12 || day < 1 || day > 31 || hour < 0 || hour > 23 ||
        minute < 0 || minute > 59 || second < 0 || second > 59)
        AfxThrowInvalidArgException();
    struct tm parts = {};
    parts.tm_sec = second;
    parts.tm_min = minute;
    parts.tm_hour = hour;
    parts.tm_mday = day;
    parts.tm_mon = month - 1;
    parts.tm_year = year - 1900;
    parts.tm_isdst = dst;
    const __time64_t seconds = _mktime64(&parts);
    // The 31st of a shorter month comes out as another day.
    if (seconds == -1 || parts.tm_mday != day)
        AfxThrowInvalidArgException();
    return seconds;
}

} // namespace

CTime WINAPI CTime::GetCurrentTime() throw()
{
    return CTime(_time64(nullptr));
}

BOOL WINAPI CTime::IsValidFILETIME(const FILETIME& ft) throw()
{
    return TicksOf(ft) >= kUnixEpoch;
}

CTime::CTime(int nYear, int nMonth, int nDay, int nHour, int nMin, int nSec, int nDST)
    : m_time(LocalSeconds(nYear, nMonth, nDay, nHour, nMin, nSec, nDST))
{
}

CTime::CTime(const SYSTEMTIME& sysTime, int nDST)
    : m_time(sysTime.wYear < 1970 ? 0
                                  : LocalSeconds(sysTime.wYear, sysTime.wMonth, sysTime.wDay, sysTime.wHour,
                                                 sysTime.wMinute, sysTime.wSecond, nDST))
{
}

CTime::CTime(const FILETIME& fileTime, int) : m_time(SecondsOf(fileTime))
{
    if (!IsValidFILETIME(fileTime))
        AfxThrowInvalidArgException();
}

struct tm* CTime::GetLocalTm(struct tm* ptm) const
{
    if (ptm == nullptr || _localtime64_s(ptm, &m_time) != 0)
        return nullptr;
    return ptm;
}

bool CTime::GetAsSystemTime(SYSTEMTIME& st) const throw()
{
    struct tm parts;
    if (GetLocalTm(&parts) == nullptr)
        return false;
    st.wYear = static_cast<WORD>(parts.tm_year + 1900);
    st.wMonth = static_cast<WORD>(parts.tm_mon + 1);
    st.wDayOfWeek = static_cast<WORD>(parts.tm_wday);
    st.wDay = static_cast<WORD>(parts.tm_mday);
    st.wHour = static_cast<WORD>(parts.tm_hour);
    st.wMinute = static_cast<WORD>(parts.tm_min);
    st.wSecond = static_cast<WORD>(parts.tm_sec);
    st.wMilliseconds = 0;
    return true;
}

int CTime::GetYear() const throw()
{
    struct tm parts;
    return GetLocalTm(&parts) != nullptr ? parts.tm_year + 1900 : 0;
}

int CTime::GetMonth() const throw()
{
    struct tm parts;
    return GetLocalTm(&parts) != nullptr ? parts.tm_mon + 1 : 0;
}

int CTime::GetDay() const throw()
{
    struct tm parts;
    return GetLocalTm(&parts) != nullptr ? parts.tm_mday : 0;
}

int CTime::GetHour() const throw()
{
    struct tm parts;
    return GetLocalTm(&parts) != nullptr ? parts.tm_hour : -1;
}

int CTime::GetMinute() const throw()
{
    struct tm parts;
    return GetLocalTm(&parts) != nullptr ? parts.tm_min : -1;
}

int CTime::GetSecond() const throw()
{
    struct tm parts;
    return GetLocalTm(&parts) != nullptr ? parts.tm_sec : -1;
}

int CTime::GetDayOfWeek() const throw()
{
    struct tm parts;
    return GetLocalTm(&parts) != nullptr ? parts.tm_wday + 1 : 0;
}
