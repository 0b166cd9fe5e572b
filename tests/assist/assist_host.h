// A host's folders, INI files and registry key to test the assist system with.
#pragma once

#include <afxwin.h>
#include <filesystem>
#include <string>

// Made in the temporary folder, with Chinese characters and spaces in every path; gone with the object.
//     sys\product.ini       with the registry key
//     sys\AssistSystem.ini  only when it is written
//     视频 库               the folder of the videos, which the registry key names
class AssistHost
{
public:
    AssistHost();
    ~AssistHost();
    AssistHost(const AssistHost&) = delete;
    AssistHost& operator=(const AssistHost&) = delete;

    [[nodiscard]] std::filesystem::path Sys(const wchar_t* file) const { return m_root / L"sys" / file; }
    [[nodiscard]] std::filesystem::path Videos() const { return m_root / L"视频 库"; }

    // Writes product.ini: the key's path, and a line of the section "Product".
    void WriteProduct(const std::wstring& registryKey, const std::wstring& productLine = {}) const;
    // The key's path as product.ini names it.
    [[nodiscard]] static std::wstring RegistryKey();

    // The value AssistVideo; empty when there is none. Setting an empty one removes it.
    [[nodiscard]] static std::wstring VideoRoot();
    static void SetVideoRoot(const std::wstring& folder);

    // Writes a text file as UTF-16, and the folders on the way.
    static void Write(const std::filesystem::path& file, const std::wstring& text);

private:
    std::filesystem::path m_root;
};
