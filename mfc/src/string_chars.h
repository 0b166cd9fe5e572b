// What differs between narrow and wide strings: the C run-time and system functions behind the string
// classes.
#pragma once

#include "cstringt.h"

#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <cwctype>

namespace afx_subset
{

inline size_t Length(const wchar_t* s)
{
    return wcslen(s);
}
inline size_t Length(const char* s)
{
    return strlen(s);
}
inline int Compare(const wchar_t* a, const wchar_t* b)
{
    return wcscmp(a, b);
}
inline int Compare(const char* a, const char* b)
{
    return strcmp(a, b);
}
inline int CompareNoCase(const wchar_t* a, const wchar_t* b)
{
    return _wcsicmp(a, b);
}
inline int CompareNoCase(const char* a, const char* b)
{
    return _stricmp(a, b);
}
inline int Collate(const wchar_t* a, const wchar_t* b)
{
    return wcscoll(a, b);
}
inline int Collate(const char* a, const char* b)
{
    return strcoll(a, b);
}
inline int CollateNoCase(const wchar_t* a, const wchar_t* b)
{
    return _wcsicoll(a, b);
}
inline int CollateNoCase(const char* a, const char* b)
{
    return _stricoll(a, b);
}
inline bool IsSpace(wchar_t ch)
{
    return iswspace(ch) != 0;
}
inline bool IsSpace(char ch)
{
    return isspace(static_cast<unsigned char>(ch)) != 0;
}
inline void ToUpper(wchar_t* s, int n)
{
    CharUpperBuffW(s, static_cast<DWORD>(n));
}
inline void ToUpper(char* s, int n)
{
    CharUpperBuffA(s, static_cast<DWORD>(n));
}
inline void ToLower(wchar_t* s, int n)
{
    CharLowerBuffW(s, static_cast<DWORD>(n));
}
inline void ToLower(char* s, int n)
{
    CharLowerBuffA(s, static_cast<DWORD>(n));
}

// The length of the formatted text without terminator, below 0 for a bad format; and the text itself. These
// are the C run-time's own functions: the standard ones read %s in wide formats differently.
inline int FormattedLength(const wchar_t* format, va_list args)
{
    return _vscwprintf(format, args);
}
inline int FormattedLength(const char* format, va_list args)
{
    return _vscprintf(format, args);
}
inline int FormatInto(wchar_t* buffer, size_t count, const wchar_t* format, va_list args)
{
    return _vsnwprintf(buffer, count, format, args);
}
inline int FormatInto(char* buffer, size_t count, const char* format, va_list args)
{
    return _vsnprintf(buffer, count, format, args);
}

// FormatMessage into a block that LocalFree frees.
inline DWORD FormatSystem(const wchar_t* format, wchar_t** block, va_list* args)
{
    return FormatMessageW(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER, format, 0, 0,
                          reinterpret_cast<wchar_t*>(block), 0, args);
}
inline DWORD FormatSystem(const char* format, char** block, va_list* args)
{
    return FormatMessageA(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER, format, 0, 0,
                          reinterpret_cast<char*>(block), 0, args);
}

inline DWORD Environment(const wchar_t* name, wchar_t* buffer, DWORD count)
{
    return GetEnvironmentVariableW(name, buffer, count);
}
inline DWORD Environment(const char* name, char* buffer, DWORD count)
{
    return GetEnvironmentVariableA(name, buffer, count);
}

// Converts between the character types with the thread's ANSI code page. A null target asks for the count.
inline int Convert(const char* source, int length, wchar_t* target, int room)
{
    return MultiByteToWideChar(CP_THREAD_ACP, 0, source, length, target, room);
}
inline int Convert(const wchar_t* source, int length, char* target, int room)
{
    return WideCharToMultiByte(CP_THREAD_ACP, 0, source, length, target, room, nullptr, nullptr);
}

} // namespace afx_subset
