#include "gallery/help_sample.h"

#include <vgui/vgui.h>

#include <utility>

namespace
{

constexpr wchar_t kKey[] = L"Software\\VGui Gallery";
constexpr wchar_t kKeyOfAll[] = L"SOFTWARE\\Wow6432Node\\VGui Gallery";

// Writes key and value pairs into one section.
void WriteSection(LPCWSTR section, std::initializer_list<std::pair<LPCWSTR, LPCWSTR>> values, LPCWSTR file)
{
    for (const auto& [key, value] : values)
        ::WritePrivateProfileStringW(section, key, value, file);
}

// An empty file with the mark of UTF-16: the system then writes the Chinese texts as such.
void StartFile(LPCWSTR path)
{
    CFile file;
    if (!file.Open(path, CFile::modeCreate | CFile::modeWrite))
        return;
    constexpr wchar_t mark = 0xFEFF;
    file.Write(&mark, sizeof mark);
}

} // namespace

void PrepareHelpSample()
{
    ::CreateDirectoryW(VGHostRoot() + L"\\sys", nullptr);
    const CString product = VGHostSysFile(L"product.ini");
    StartFile(product);
    WriteSection(L"产品信息", {{L"注册表位置", kKey}}, product);
    WriteSection(L"Product", {{L"CustomFlag", L"4096"}}, product);

    const CString topics = VGHostSysFile(L"AssistSystem.ini");
    StartFile(topics);
    const auto write = [&](LPCWSTR topic, LPCWSTR caption, LPCWSTR directory) {
        WriteSection(topic, {{L"Caption", caption}, {L"Directory", directory}, {L"HtmlFile", L"1"}}, topics);
    };
    write(L"MainDlg", L"示例程序 Gallery", L"示例程序");
    write(L"PageDlg", L"示例页 Pages", L"示例页");
    write(L"VGuiDlg", L"示例页 Pages", L"示例页");

    const CString videos = VGHostRoot() + L"\\help\\videos";
    ::RegSetKeyValueW(HKEY_LOCAL_MACHINE, kKeyOfAll, L"AssistVideo", REG_SZ, videos.GetString(),
                      (videos.GetLength() + 1) * sizeof(wchar_t));
}
