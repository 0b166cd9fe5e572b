// How the companion's texts are made of fields, and its history of lines. Plain work on strings: no window,
// no pipe, no file.
#pragma once

#include <afxwin.h>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace companion
{

inline constexpr int kMaxText = 259; // characters of a text field
inline constexpr int kMaxName = 258; // characters of a pipe's or a file's name

// The value of the first field with the key ("?Total"), cut to maxLength characters; nothing without one.
// The character after the key belongs to neither, whatever it is.
inline std::optional<CString> FindField(const CString& text, LPCWSTR key, int maxLength = kMaxText)
{
    const int found = text.Find(key);
    if (found < 0)
        return std::nullopt;
    const int begin = std::min(found + static_cast<int>(wcslen(key)) + 1, text.GetLength());
    const int next = text.Find(L'?', begin);
    const int end = next < 0 ? text.GetLength() : next;
    return text.Mid(begin, std::min(end - begin, maxLength));
}

// The same as a number: what the value begins with, 0 when that is none.
inline std::optional<int> FindNumber(const CString& text, LPCWSTR key)
{
    const std::optional<CString> value = FindField(text, key);
    if (!value)
        return std::nullopt;
    return wcstol(*value, nullptr, 10);
}

// A text of key lines, each ended by ";", in the form that WritePrivateProfileSection takes.
inline std::wstring ProfileBlock(const CString& text)
{
    std::wstring block(text.GetString(), text.GetLength());
    std::replace(block.begin(), block.end(), L';', L'\0');
    block.append(2, L'\0');
    return block;
}

// The whole number that each of the first lines of a text begins with; the other value for a line without
// one. A number that is too large counts as the largest.
template <size_t Lines>
std::array<int, Lines> LineNumbers(std::string_view text, int otherwise)
{
    std::array<int, Lines> numbers;
    for (int& number : numbers) {
        // A copy, since a number is looked for beyond the line's end otherwise.
        const std::string line(text.substr(0, text.find_first_of("\r\n")));
        char* end = nullptr;
        const long value = std::strtol(line.c_str(), &end, 10);
        number = end != line.c_str() ? static_cast<int>(value) : otherwise;
        text.remove_prefix(line.size());
        text.remove_prefix(std::min(text.find_first_not_of('\r'), text.size()));
        text.remove_prefix(text.starts_with('\n'));
    }
    return numbers;
}

// Makes messages of what is read from a pipe, which may cut them at any byte.
class Inbox
{
public:
    // Takes what one read gave and returns the messages in it. goesOn: the message was longer than the read,
    // and the rest of it is there; its last field may be incomplete and then waits for that rest.
    std::vector<CString> Take(const BYTE* bytes, size_t size, bool goesOn)
    {
        std::wstring text = std::move(m_held);
        m_held.clear();
        Append(text, bytes, size);
        if (goesOn)
            HoldLastField(text);
        return Split(text);
    }
    // What still waits for a rest that will not come.
    std::vector<CString> TakeRest() { return Take(nullptr, 0, false); }

private:
    // Of a longer field only the beginning would be used.
    static constexpr size_t kMaxHeld = 2 * kMaxText;

    void Append(std::wstring& text, const BYTE* bytes, size_t size)
    {
        for (size_t i = 0; i < size; ++i) {
            if (m_lowByte)
                text += static_cast<wchar_t>(*std::exchange(m_lowByte, std::nullopt) | bytes[i] << 8);
            else
                m_lowByte = bytes[i];
        }
    }
    void HoldLastField(std::wstring& text)
    {
        const size_t field = text.find_last_of(std::wstring_view(L"?\0", 2));
        if (field == std::wstring::npos || text[field] != L'?')
            return;
        m_held = text.substr(field, kMaxHeld);
        text.resize(field);
    }
    // Servers may send the zero that ends their strings.
    static std::vector<CString> Split(const std::wstring& text)
    {
        std::vector<CString> messages;
        for (size_t begin = 0; begin < text.size();) {
            const size_t end = std::min(text.find(L'\0', begin), text.size());
            if (end > begin)
                messages.emplace_back(text.data() + begin, static_cast<int>(end - begin));
            begin = end + 1;
        }
        return messages;
    }

    std::wstring m_held;           // the beginning of a field
    std::optional<BYTE> m_lowByte; // the first half of a character
};

} // namespace companion
