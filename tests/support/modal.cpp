#include "tests/support/modal.h"

#include "tests/support/input_feeder.h"
#include "tests/support/modal_watch.h"
#include "tests/support/pump.h"

#include <dlgs.h>
#include <gtest/gtest.h>

namespace support
{

namespace
{

bool IsOfClass(HWND window, const wchar_t* name)
{
    wchar_t buffer[16];
    return ::GetClassName(window, buffer, static_cast<int>(std::size(buffer))) > 0 && !_wcsicmp(buffer, name);
}

} // namespace

std::wstring WindowText(HWND window)
{
    std::wstring text(static_cast<size_t>(::GetWindowTextLength(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(::GetWindowText(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

void Answer::Await(std::shared_ptr<PendingAnswer> pending, DWORD timeoutMs)
{
    pending->timeoutMs = timeoutMs;
    m_pending = std::move(pending);
    AddPendingAnswer(m_pending);
}

Answer::~Answer()
{
    if (m_pending == nullptr)
        return;
    EXPECT_TRUE(m_pending->served) << (m_pending->kind == ModalKind::Menu ? "no menu came up"
                                                                          : "no modal window came up");
    RemovePendingAnswer(m_pending);
}

bool Answer::Shown() const
{
    return m_pending != nullptr && m_pending->served;
}

void Answer::Withdraw()
{
    if (m_pending != nullptr)
        RemovePendingAnswer(m_pending);
    m_pending.reset();
}

struct ModalAnswer::State : PendingAnswer {
    std::wstring caption, text;

    void Record(HWND modal);
};

void ModalAnswer::State::Record(HWND modal)
{
    caption = WindowText(modal);
    for (HWND child = ::GetWindow(modal, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        const LONG_PTR type = ::GetWindowLongPtr(child, GWL_STYLE) & SS_TYPEMASK;
        if (!IsOfClass(child, L"Static") || type == SS_ICON || type == SS_BITMAP)
            continue;
        const std::wstring line = WindowText(child);
        if (!line.empty())
            text += (text.empty() ? L"" : L"\n") + line;
    }
}

ModalAnswer::ModalAnswer(Action action, DWORD timeoutMs) : m_state(std::make_shared<State>())
{
    // The watch keeps the state alive while it serves, so a plain pointer does.
    m_state->serve = [state = m_state.get(), action = std::move(action)](HWND modal) {
        state->Record(modal);
        action(modal);
    };
    Await(m_state, timeoutMs);
}

std::wstring ModalAnswer::Caption() const
{
    return m_state->caption;
}

std::wstring ModalAnswer::Text() const
{
    return m_state->text;
}

ModalAnswer WhenModal(ModalAnswer::Action action, DWORD timeoutMs)
{
    return ModalAnswer(std::move(action), timeoutMs);
}

ModalAnswer AnswerMessageBox(int button)
{
    return ModalAnswer([=](HWND modal) { PostButton(modal, button); });
}

HWND FileNameField(HWND dialog)
{
    // A combo box or an edit field, depending on the dialog's flags.
    const HWND combo = ::GetDlgItem(dialog, cmb13);
    return combo != nullptr ? combo : ::GetDlgItem(dialog, edt1);
}

ModalAnswer AnswerFileDialog(const std::wstring& path)
{
    return ModalAnswer([path](HWND modal) {
        ::SetWindowText(FileNameField(modal), path.c_str());
        PostButton(modal, IDOK);
    });
}

void PostButton(HWND dialog, int button)
{
    const HWND control = ::GetDlgItem(dialog, button);
    EXPECT_NE(control, nullptr) << "the dialog has no button " << button;
    ::PostMessage(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(control));
}

MenuAnswer::MenuAnswer(Action action, DWORD timeoutMs)
{
    struct State : PendingAnswer {
        std::vector<std::unique_ptr<InputFeeder>> feeders;
    };
    const auto state = std::make_shared<State>();
    state->kind = ModalKind::Menu;
    state->serve = [state = state.get(), action = std::move(action)](HWND popup) {
        action(popup, [state](std::vector<INPUT> records) {
            state->feeders.push_back(std::make_unique<InputFeeder>(std::move(records)));
        });
    };
    Await(state, timeoutMs);
}

MenuAnswer CancelMenu()
{
    return MenuAnswer([](HWND, const MenuAnswer::Feed& feed) {
        feed({KeyInput(VK_ESCAPE, true), KeyInput(VK_ESCAPE, false)});
    });
}

} // namespace support
