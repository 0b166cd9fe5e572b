#include "vgui/assist/assist_topic.h"

#include "vgui/assist/assist_msg.h"
#include "vgui/assist/host_paths.h"
#include "vgui/foundation/gdi_scope.h"

#include <afxdlgs.h>
#include <algorithm>

namespace
{

constexpr int kMaxValue = 260; // characters of a registry value
constexpr int kDefaultCustomFlag = 72;
constexpr int kShowNotice = 0x1000;             // bit of the custom flag
constexpr ULONGLONG kMaxInstructions = 1 << 20; // bytes of a text that are shown
constexpr wchar_t kVideoValue[] = L"AssistVideo";

struct RegistryCloser {
    void operator()(HKEY key) const { ::RegCloseKey(key); }
};
using OwnedKey = VOwnedHandle<HKEY, RegistryCloser>;

struct FindCloser {
    void operator()(HANDLE find) const { ::FindClose(find); }
};

// The host's key, as it is told in product.ini.
class HostKey
{
public:
    // False, after a message box, when there is no such key.
    bool Open()
    {
        m_path = VGReadIniValue(VGHostSysFile(L"product.ini"), L"产品信息", L"注册表位置");
        if (m_path.IsEmpty()) {
            AfxMessageBox(L"无法读取 产品信息 的 注册表位置！");
            return false;
        }
        m_path.Replace(L"Software\\", L"SOFTWARE\\Wow6432Node\\");
        if (!OpenWith(KEY_READ)) {
            AfxMessageBox(L"注册表文件已损坏，请重新安装！");
            return false;
        }
        return true;
    }
    [[nodiscard]] CString VideoRoot() const
    {
        wchar_t value[kMaxValue + 1];
        DWORD size = sizeof value;
        const OwnedKey key = OpenWith(KEY_READ);
        const LSTATUS status =
            ::RegGetValueW(key.Get(), nullptr, kVideoValue, RRF_RT_REG_SZ, nullptr, value, &size);
        return status == ERROR_SUCCESS ? value : L"";
    }
    // Without the rights for it, the user will be asked again the next time.
    void SetVideoRoot(const CString& folder) const
    {
        const OwnedKey key = OpenWith(KEY_SET_VALUE);
        if (key)
            ::RegSetValueExW(key.Get(), kVideoValue, 0, REG_SZ,
                             reinterpret_cast<const BYTE*>(folder.GetString()),
                             (folder.GetLength() + 1) * sizeof(wchar_t));
    }

private:
    [[nodiscard]] OwnedKey OpenWith(REGSAM access) const
    {
        HKEY key = nullptr;
        return OwnedKey(
            ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, m_path, 0, access, &key) == ERROR_SUCCESS ? key : nullptr);
    }

    CString m_path; // below HKEY_LOCAL_MACHINE
};

// Asks for the topic file and keeps its folder as that of the videos. Empty when the user cancelled.
CString ChooseTopicFile(const HostKey& key)
{
    CFileDialog dialog(TRUE, L"ini", L"*.ini", OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST,
                       L" (*.ini) | *.ini ||");
    dialog.m_ofn.lpstrTitle = L"选择视频配置文件";
    if (dialog.DoModal() != IDOK)
        return CString();
    const CString file = dialog.GetPathName();
    key.SetVideoRoot(file.Left(std::max(file.ReverseFind(L'\\'), 0)));
    return file;
}

// Read anew until there is a number, then kept as long as the host's folder is the same.
int CustomFlag()
{
    static CString s_file;
    static int s_flag = 0;
    const CString file = VGHostSysFile(L"product.ini");
    if (s_flag < 1 || s_file != file)
        s_flag =
            static_cast<int>(::GetPrivateProfileIntW(L"Product", L"CustomFlag", kDefaultCustomFlag, file));
    s_file = file;
    return s_flag;
}

bool IsUtf16(const std::vector<char>& bytes)
{
    return bytes.size() >= 2 && bytes[0] == '\xFF' && bytes[1] == '\xFE';
}

// Takes off the line that the end of the bytes has cut, perhaps inside a character, which would make the
// whole look like no UTF-8. UTF-16 needs none of this: its characters end at even places.
void DropCutLine(std::vector<char>& bytes)
{
    const auto lineEnd = std::find(bytes.rbegin(), bytes.rend(), '\n').base();
    if (!IsUtf16(bytes) && lineEnd != bytes.begin())
        bytes.erase(lineEnd, bytes.end());
}

std::vector<char> ReadBytes(const CString& path)
{
    std::vector<char> bytes;
    CFile file;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone))
        return bytes;
    try {
        bytes.resize(static_cast<size_t>(std::min(file.GetLength(), kMaxInstructions)));
        bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
        if (file.GetLength() > kMaxInstructions)
            DropCutLine(bytes);
    } catch (CFileException* e) {
        e->Delete();
        bytes.clear();
    }
    return bytes;
}

CString Decode(const char* bytes, int size, UINT codePage)
{
    const int length = ::MultiByteToWideChar(codePage, 0, bytes, size, nullptr, 0);
    CString text;
    ::MultiByteToWideChar(codePage, 0, bytes, size, text.GetBuffer(length), length);
    text.ReleaseBuffer(length);
    return text;
}

// UTF-16 with its mark, UTF-8 with or without it, or else the system's code page, which is rarely valid
// UTF-8.
CString DecodeText(const std::vector<char>& bytes)
{
    const int size = static_cast<int>(bytes.size());
    if (IsUtf16(bytes))
        return CString(reinterpret_cast<const wchar_t*>(bytes.data() + 2), (size - 2) / 2);
    if (size >= 3 && memcmp(bytes.data(), "\xEF\xBB\xBF", 3) == 0)
        return Decode(bytes.data() + 3, size - 3, CP_UTF8);
    const bool isUtf8 =
        ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), size, nullptr, 0) > 0;
    return Decode(bytes.data(), size, isUtf8 ? CP_UTF8 : CP_ACP);
}

} // namespace

std::optional<AssistTopic> LoadAssistTopic(const CString& topic, CString caption)
{
    HostKey key;
    if (!key.Open())
        return std::nullopt;
    const CString videoRoot = key.VideoRoot();
    CString topicFile;
    if (videoRoot.IsEmpty()) {
        // The folder chosen here counts from the next call on; this time there is none. Intended.
        topicFile = ChooseTopicFile(key);
        if (topicFile.IsEmpty())
            return std::nullopt;
    } else {
        topicFile = videoRoot + L"\\AssistSystem.ini";
        if (!AssistFileExists(topicFile))
            topicFile = VGHostSysFile(L"AssistSystem.ini");
    }
    if (topic.IsEmpty()) {
        AfxMessageBox(L"传入的目录为空，无法初始化视频列表！");
        return std::nullopt;
    }
    const CString directory = VGReadIniValue(topicFile, topic, L"Directory");
    if (directory.IsEmpty()) {
        if ((CustomFlag() & kShowNotice) != 0)
            CAssistMsg::ShowMissingEntry(topic);
        topicFile = ChooseTopicFile(key);
        if (topicFile.IsEmpty())
            return std::nullopt;
    }
    return AssistTopic{videoRoot + L"\\" + directory + L"\\",
                       VGReadIniValue(topicFile, topic, L"Caption", caption)};
}

bool AssistFileExists(const CString& path)
{
    const DWORD attributes = ::GetFileAttributesW(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::vector<CString> ListAssistVideos(const CString& folder)
{
    std::vector<CString> titles;
    WIN32_FIND_DATAW found;
    const HANDLE first = ::FindFirstFileW(folder + L"\\*.*", &found);
    if (first == INVALID_HANDLE_VALUE)
        return titles;
    const VOwnedHandle<HANDLE, FindCloser> find(first);
    do {
        const CString name = found.cFileName;
        const int extension = name.ReverseFind(L'.');
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && extension >= 0 &&
            name.Mid(extension).CompareNoCase(L".swf") == 0)
            titles.push_back(name.Left(extension));
    } while (::FindNextFileW(find.Get(), &found));
    return titles;
}

CString ReadAssistInstructions(const CString& path)
{
    constexpr int kMaxLine = 2047;
    const CString text = DecodeText(ReadBytes(path));
    CString lines;
    for (int begin = 0; begin < text.GetLength();) {
        const int end = text.Find(L'\n', begin);
        CString line = text.Mid(begin, std::min(end < 0 ? text.GetLength() - begin : end - begin, kMaxLine));
        begin += line.GetLength();
        if (begin == end)
            ++begin;
        lines += line.TrimRight(L'\r') + L"\r\n";
    }
    return lines.IsEmpty() ? CString(L"无") : lines;
}
