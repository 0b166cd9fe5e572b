// INI files, registry values, texts and file names of any kind for the help; see SoakInputs for how to have
// more of them.
#include "tests/assist/assist_host.h"
#include "tests/robustness/random_text.h"
#include "tests/support/census.h"
#include "tests/support/import_patch.h"
#include "tests/support/modal.h"
#include "vgui/assist/assist_player.h"
#include "vgui/assist/assist_system_dlg.h"
#include "vgui/foundation/subclass_wnd.h"

#include <algorithm>
#include <cwctype>
#include <fstream>
#include <gtest/gtest.h>

using namespace support;

namespace
{

namespace fs = std::filesystem;

constexpr int kVideos = 1001;
constexpr int kInstructions = 1002;
constexpr size_t kMaxValue = 259; // characters of what INI files and file dialogs give
constexpr size_t kMaxRoot = 260;  // of the registry's value
constexpr size_t kMaxLine = 2047;

// What the system is asked to show is answered at once.
int g_boxes = 0;
int g_fileDialogs = 0;
std::wstring g_chosenFile; // empty: the user cancels

int WINAPI CloseBox(HWND, LPCWSTR, LPCWSTR, UINT)
{
    ++g_boxes;
    return IDOK;
}

BOOL WINAPI ChooseFile(OPENFILENAMEW* request)
{
    ++g_fileDialogs;
    if (g_chosenFile.empty() || g_chosenFile.size() >= request->nMaxFile)
        return FALSE;
    g_chosenFile.copy(request->lpstrFile, g_chosenFile.size());
    request->lpstrFile[g_chosenFile.size()] = L'\0';
    return TRUE;
}

// Help without a player.
class OpenDlg : public CAssistSystemDlg
{
public:
    using CAssistSystemDlg::m_strCaption;
    using CAssistSystemDlg::m_strFolder;

protected:
    std::unique_ptr<VAssistPlayer> CreatePlayer() override { return nullptr; }
};

// Takes the texts that a window is to show. An edit control of the system may not stand every one.
class TextTaker : public CSubclassWnd
{
public:
    std::wstring text;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != WM_SETTEXT)
            return CSubclassWnd::WindowProc(message, wParam, lParam);
        text = reinterpret_cast<LPCWSTR>(lParam);
        return TRUE;
    }
};

class AssistSoakTest : public CensusTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(box.IsInPlace() && file.IsInPlace());
        g_chosenFile.clear();
        // Numbers above 0 are kept for good: no notice will be shown.
        host.WriteProduct(AssistHost::RegistryKey(), L"CustomFlag=1");
        AssistHost::Write(host.Sys(L"AssistSystem.ini"), L"[topic]\r\nDirectory=folder\r\n");
        dialog = new OpenDlg;
        ASSERT_FALSE(dialog->LoadTopic(L"none"));
        ASSERT_TRUE(dialog->LoadTopic(L"topic"));
        fs::create_directories(Folder());
        ASSERT_TRUE(dialog->Open());
        ASSERT_TRUE(instructions.HookWindow(dialog->GetDlgItem(kInstructions)));
    }
    void TearDown() override { dialog->DestroyWindow(); }

    [[nodiscard]] fs::path Folder() const { return host.Videos() / L"folder"; }

    const ImportPatch box{L"mfcsubset.dll", "MessageBoxW", reinterpret_cast<void*>(CloseBox)};
    const ImportPatch file{L"mfcsubset.dll", "GetOpenFileNameW", reinterpret_cast<void*>(ChooseFile)};
    const AssistHost host;
    OpenDlg* dialog = nullptr; // deletes itself with its window
    TextTaker instructions;
};

void WriteBytes(const fs::path& file, std::string_view bytes)
{
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string Utf8(const std::wstring& text)
{
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                                       static_cast<int>(bytes.size()), nullptr, nullptr));
    return bytes;
}

// ---- Topics

// A line of an INI file, or something like it.
std::wstring AnyLine(RandomText& random, const std::wstring& topic)
{
    const std::wstring kParts[] = {L"[", topic,       L"]",          L"Directory", L"Caption",
                                   L"=", L"产品信息", L"注册表位置", L";",         L"\"",
                                   L" ", L"Product",  L"CustomFlag"};
    std::wstring line;
    for (size_t i = random.Below(8); i-- > 0;)
        line += random.Below(4) == 0 ? random.Next() : kParts[random.Below(std::size(kParts))];
    return line + L"\r\n";
}

std::wstring AnyLines(RandomText& random, const std::wstring& topic)
{
    std::wstring lines;
    for (size_t i = random.Below(8); i-- > 0;)
        lines += AnyLine(random, topic);
    return lines;
}

// What an INI file keeps as it is, be it a section's name or a value; at least one character.
std::wstring Plain(std::wstring text)
{
    std::erase_if(text, [](wchar_t c) {
        return c <= L' ' || std::iswspace(c) || std::iswcntrl(c) || c >= 0xFE00 ||
               std::wstring_view(L"\"'[]=;").find(c) != std::wstring_view::npos;
    });
    return text + L"x";
}

// As Write, or in bytes that are text by chance only.
void WriteAny(RandomText& random, const fs::path& file, const std::wstring& text)
{
    if (random.Rarely())
        WriteBytes(file, random.String(2000));
    else if (random.Rarely())
        WriteBytes(file, Utf8(text));
    else
        AssistHost::Write(file, text);
}

} // namespace

TEST_F(AssistSoakTest, TopicsAreThoseOfTheirSection)
{
    SoakWithText(600, [&](RandomText& random) {
        const std::wstring topic = Plain(random.Next()).substr(0, 200), caption = Plain(random.Next()),
                           folder = Plain(random.Next());
        AssistHost::Write(host.Sys(L"AssistSystem.ini"), L"[" + topic + L"]\r\n" + L"Caption=" + caption +
                                                             L"\r\nDirectory=" + folder + L"\r\n[]\r\n" +
                                                             AnyLines(random, topic));
        const std::wstring root = random.Next().substr(0, 1000);
        const bool hasRoot = !root.empty() && root.size() <= kMaxRoot;
        AssistHost::SetVideoRoot(root);
        g_chosenFile = host.Sys(L"AssistSystem.ini");
        const int asked = g_fileDialogs;
        ASSERT_TRUE(dialog->LoadTopic(topic.c_str()));
        EXPECT_EQ(g_fileDialogs - asked, hasRoot ? 0 : 1);
        EXPECT_EQ(std::wstring(dialog->m_strFolder),
                  (hasRoot ? root : L"") + L"\\" + folder.substr(0, kMaxValue) + L"\\");
        EXPECT_EQ(std::wstring(dialog->m_strCaption), caption.substr(0, kMaxValue));
    });
}

TEST_F(AssistSoakTest, TopicsOfAnyFilesAreShownOrRefused)
{
    int shown = 0;
    SoakWithText(600, [&](RandomText& random) {
        const std::wstring topic = random.Next().substr(0, 400);
        WriteAny(random, host.Sys(L"AssistSystem.ini"),
                 AnyLines(random, topic) + L"[" + topic + L"]\r\n" + AnyLines(random, topic));
        const std::wstring root = random.Next();
        AssistHost::SetVideoRoot(root);
        // A file is chosen with the sound product's key only, into which its folder is written.
        if (random.Below(3) == 0) {
            WriteAny(random, host.Sys(L"product.ini"), AnyLines(random, topic));
            g_chosenFile.clear();
        } else {
            host.WriteProduct(AssistHost::RegistryKey(), L"CustomFlag=1");
            g_chosenFile = random.Next();
        }
        const CString folder = dialog->m_strFolder, caption = dialog->m_strCaption;
        const int asked = g_boxes + g_fileDialogs;
        if (dialog->LoadTopic(topic.c_str())) {
            ++shown;
            EXPECT_EQ(dialog->m_strFolder.Right(1), L"\\");
            EXPECT_LE(static_cast<size_t>(dialog->m_strFolder.GetLength()), kMaxRoot + kMaxValue + 2);
            EXPECT_LE(static_cast<size_t>(dialog->m_strCaption.GetLength()), kMaxValue);
        } else {
            EXPECT_GT(g_boxes + g_fileDialogs, asked) << "refused without a word";
            EXPECT_EQ(dialog->m_strFolder, folder);
            EXPECT_EQ(dialog->m_strCaption, caption);
        }
    });
    EXPECT_GT(shown, 0);
}

// ---- Instructions and file names

namespace
{

std::wstring ModelInstructions(const std::wstring& text)
{
    std::wstring lines;
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = std::min(text.find(L'\n', begin), text.size());
        const std::wstring whole = text.substr(begin, end - begin);
        for (size_t i = 0; i < std::max<size_t>(whole.size(), 1); i += kMaxLine) {
            std::wstring line = whole.substr(i, kMaxLine);
            line.erase(line.find_last_not_of(L'\r') + 1);
            lines += line + L"\r\n";
        }
        begin = end + 1;
    }
    return lines.empty() ? L"无" : lines;
}

} // namespace

TEST_F(AssistSoakTest, InstructionsAreTheLinesOfTheFile)
{
    WriteBytes(Folder() / L"one.swf", "");
    SoakWithText(600, [&](RandomText& random) {
        std::wstring text = random.Next(L"\r\n", 200);
        // A text without its mark must not look like another one, nor one that is no text.
        std::ranges::replace_if(
            text, [](wchar_t c) { return (c >= 0xD800 && c < 0xE000) || c >= 0xFE00; }, L'x');
        const std::string marks[] = {"", "\xEF\xBB\xBF"};
        const size_t kind = random.Below(4);
        const fs::path path = Folder() / L"one.txt";
        if (kind < 2)
            WriteBytes(path, marks[kind] + Utf8(text));
        else if (kind == 2)
            AssistHost::Write(path, text);
        else
            WriteBytes(path, (random.Below(3) == 0 ? "\xFF\xFE" : marks[random.Below(2)]) +
                                 random.String(random.Rarely() ? 5000 : 300));
        dialog->FillVideoList();
        if (kind < 3) {
            EXPECT_EQ(instructions.text, ModelInstructions(text));
        }
    });
}

TEST_F(AssistSoakTest, VideosAreTheFilesWithTheirExtension)
{
    SoakWithText(600, [&](RandomText& random) {
        constexpr const wchar_t* kExtensions[] = {L".swf", L".SWF", L".sWf", L".swf.txt", L"swf", L".swf2"};
        constexpr size_t kExtension = 4; // characters, with the dot
        std::wstring name =
            random.Next(L".中").substr(0, 240) + kExtensions[random.Below(std::size(kExtensions))];
        // Elsewhere than in the folder, or in none.
        std::erase_if(name,
                      [](wchar_t c) { return std::wstring_view(L"/\\:").find(c) != std::wstring::npos; });
        const std::wstring title = name.substr(0, name.size() - kExtension);
        const bool isVideo = ::_wcsicmp(name.c_str() + title.size(), L".swf") == 0;
        const HANDLE made =
            ::CreateFileW((Folder() / name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
        if (made == INVALID_HANDLE_VALUE)
            return; // no name for a file
        ::CloseHandle(made);
        const int boxes = g_boxes;
        dialog->FillVideoList();
        const auto& list = static_cast<const CListCtrl&>(*dialog->GetDlgItem(kVideos));
        ASSERT_EQ(list.GetItemCount(), isVideo ? 1 : 0);
        EXPECT_EQ(instructions.text, isVideo ? L"无" : L"");
        if (isVideo) {
            EXPECT_EQ(std::wstring(list.GetItemText(0, 0)), title);
        }
        EXPECT_EQ(g_boxes, boxes);
        fs::remove(Folder() / name);
    });
}
