#include "tests/assist/assist_host.h"

#include "vgui/assist/host_paths.h"

#include <fstream>

namespace
{

namespace fs = std::filesystem;

constexpr wchar_t kKey[] = L"SOFTWARE\\Wow6432Node\\VGuiTests\\Assist 1";
constexpr wchar_t kKeyAbove[] = L"SOFTWARE\\Wow6432Node\\VGuiTests";
constexpr wchar_t kValue[] = L"AssistVideo";

// Another one each time, since the library keeps what it has read of a host.
fs::path NewRoot()
{
    static int number = 0;
    return fs::temp_directory_path() /
           (L"assist 测试 " + std::to_wstring(::GetCurrentProcessId()) + L" " + std::to_wstring(++number));
}

} // namespace

AssistHost::AssistHost() : m_root(NewRoot())
{
    fs::create_directories(Videos());
    VGSetHostRoot(m_root.c_str());
    WriteProduct(RegistryKey());
    HKEY key = nullptr;
    ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
    ::RegCloseKey(key);
    SetVideoRoot(Videos());
}

AssistHost::~AssistHost()
{
    ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKey);
    ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKeyAbove);
    VGSetHostRoot(nullptr);
    std::error_code ignored;
    fs::remove_all(m_root, ignored);
}

void AssistHost::WriteProduct(const std::wstring& registryKey, const std::wstring& productLine) const
{
    Write(Sys(L"product.ini"),
          L"[产品信息]\r\n注册表位置=" + registryKey + L"\r\n[Product]\r\n" + productLine + L"\r\n");
}

std::wstring AssistHost::RegistryKey()
{
    return L"Software\\VGuiTests\\Assist 1";
}

std::wstring AssistHost::VideoRoot()
{
    wchar_t value[300] = L"";
    DWORD size = sizeof value;
    ::RegGetValueW(HKEY_LOCAL_MACHINE, kKey, kValue, RRF_RT_REG_SZ, nullptr, value, &size);
    return value;
}

void AssistHost::SetVideoRoot(const std::wstring& folder)
{
    if (folder.empty())
        ::RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, kKey, kValue);
    else
        ::RegSetKeyValueW(HKEY_LOCAL_MACHINE, kKey, kValue, REG_SZ, folder.c_str(),
                          static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t)));
}

void AssistHost::Write(const fs::path& file, const std::wstring& text)
{
    fs::create_directories(file.parent_path());
    const std::wstring marked = L"\xFEFF" + text;
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(marked.data()),
               static_cast<std::streamsize>(marked.size() * sizeof(wchar_t)));
}
