#include "tests/support/modal.h"

#include "tests/support/input_feeder.h"
#include "tests/support/modal_watch.h"
#include "tests/support/pump.h"

#include <algorithm>
#include <dlgs.h>
#include <gtest/gtest.h>
#include <optional>

namespace support
{

namespace
{

// Not in every system header.
constexpr UINT kGetMenuHandle = 0x01E1; // MN_GETHMENU
constexpr UINT kSubmenu = 0xFFFFFFFF;

bool IsOfClass(HWND window, const wchar_t* name)
{
    wchar_t buffer[16];
    return ::GetClassName(window, buffer, static_cast<int>(std::size(buffer))) > 0 && !_wcsicmp(buffer, name);
}

bool IsPushButton(HWND window)
{
    const LONG_PTR type = ::GetWindowLongPtr(window, GWL_STYLE) & BS_TYPEMASK;
    return IsOfClass(window, L"Button") && (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON);
}

MenuItem ItemAt(HMENU menu, int position)
{
    wchar_t text[256] = L"";
    MENUITEMINFO info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_ID | MIIM_FTYPE | MIIM_STATE | MIIM_STRING | MIIM_SUBMENU;
    info.dwTypeData = text;
    info.cch = static_cast<UINT>(std::size(text));
    ::GetMenuItemInfo(menu, position, TRUE, &info);
    MenuItem item{info.hSubMenu != nullptr ? kSubmenu : info.wID, info.fType, info.fState, {}, {}};
    if (!(info.fType & (MFT_OWNERDRAW | MFT_SEPARATOR | MFT_BITMAP)))
        item.text = text;
    ::GetMenuItemRect(nullptr, menu, position, &item.rect);
    return item;
}

std::vector<MenuItem> ItemsOf(HMENU menu)
{
    std::vector<MenuItem> items;
    for (int position = 0; position < ::GetMenuItemCount(menu); ++position)
        items.push_back(ItemAt(menu, position));
    return items;
}

void AddStroke(std::vector<INPUT>& records, UINT key)
{
    records.push_back(KeyInput(key, true));
    records.push_back(KeyInput(key, false));
}

// Appends the key strokes from the selected item to the one at position; separators are jumped over.
void AddWay(std::vector<INPUT>& records, const std::vector<MenuItem>& items, size_t position,
            bool firstIsSelected)
{
    int target = -1;
    int selected = firstIsSelected ? 0 : -1;
    int stop = 0;
    for (size_t i = 0; i < items.size(); ++i) {
        if (items[i].type & MFT_SEPARATOR)
            continue;
        if (items[i].state & MFS_HILITE)
            selected = stop;
        if (i == position)
            target = stop;
        ++stop;
    }
    // The selection runs round at the end; with nothing selected the first stroke selects the first item.
    const int steps = target >= selected ? target - selected : target - selected + stop;
    for (int step = 0; step < steps; ++step)
        AddStroke(records, VK_DOWN);
}

// The strokes that choose a command, also inside submenus; empty when the menu does not have it.
std::vector<INPUT> WayTo(HMENU menu, UINT command, bool isSubmenu = false)
{
    const std::vector<MenuItem> items = ItemsOf(menu);
    for (size_t i = 0; i < items.size(); ++i) {
        std::vector<INPUT> records;
        if (HMENU submenu = ::GetSubMenu(menu, static_cast<int>(i))) {
            const std::vector<INPUT> rest = WayTo(submenu, command, true);
            if (rest.empty())
                continue;
            AddWay(records, items, i, isSubmenu);
            AddStroke(records, VK_RIGHT);
            records.insert(records.end(), rest.begin(), rest.end());
            return records;
        }
        if (items[i].id == command && !(items[i].type & MFT_SEPARATOR)) {
            AddWay(records, items, i, isSubmenu);
            AddStroke(records, VK_RETURN);
            return records;
        }
    }
    return {};
}

std::vector<INPUT> Escape()
{
    std::vector<INPUT> records;
    AddStroke(records, VK_ESCAPE);
    return records;
}

} // namespace

std::wstring WindowText(HWND window)
{
    std::wstring text(static_cast<size_t>(::GetWindowTextLength(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(::GetWindowText(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

struct ModalAnswer::State : PendingAnswer {
    std::wstring caption, text;
    std::vector<int> buttons;
    int focused = 0;

    void Record(HWND modal);
};

void ModalAnswer::State::Record(HWND modal)
{
    caption = WindowText(modal);
    for (HWND child = ::GetWindow(modal, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (IsPushButton(child) && ::IsWindowVisible(child))
            buttons.push_back(::GetDlgCtrlID(child));
        const LONG_PTR type = ::GetWindowLongPtr(child, GWL_STYLE) & SS_TYPEMASK;
        if (!IsOfClass(child, L"Static") || type == SS_ICON || type == SS_BITMAP)
            continue;
        const std::wstring line = WindowText(child);
        if (!line.empty())
            text += (text.empty() ? L"" : L"\n") + line;
    }
    const HWND focus = ::GetFocus();
    if (focus != nullptr && IsPushButton(focus))
        focused = ::GetDlgCtrlID(focus);
}

ModalAnswer::ModalAnswer(Action action, DWORD timeoutMs) : m_state(std::make_shared<State>())
{
    m_state->kind = ModalKind::Window;
    m_state->timeoutMs = timeoutMs;
    // The watch keeps the state alive while it serves, so a plain pointer does.
    m_state->serve = [state = m_state.get(), action = std::move(action)](HWND modal) {
        state->Record(modal);
        action(modal);
    };
    AddPendingAnswer(m_state);
}

ModalAnswer::~ModalAnswer()
{
    if (m_state == nullptr)
        return;
    EXPECT_TRUE(m_state->served) << "no modal window came up";
    RemovePendingAnswer(m_state);
}

bool ModalAnswer::Shown() const
{
    return m_state != nullptr && m_state->served;
}

std::wstring ModalAnswer::Caption() const
{
    return m_state != nullptr ? m_state->caption : std::wstring();
}

std::wstring ModalAnswer::Text() const
{
    return m_state != nullptr ? m_state->text : std::wstring();
}

std::vector<int> ModalAnswer::Buttons() const
{
    return m_state != nullptr ? m_state->buttons : std::vector<int>();
}

int ModalAnswer::FocusedButton() const
{
    return m_state != nullptr ? m_state->focused : 0;
}

void ModalAnswer::Withdraw()
{
    if (m_state != nullptr)
        RemovePendingAnswer(m_state);
    m_state.reset();
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

struct MenuAnswer::State : PendingAnswer {
    std::vector<MenuItem> items;
    std::vector<std::unique_ptr<InputFeeder>> feeders;
};

MenuAnswer::MenuAnswer(Action action, DWORD timeoutMs) : m_state(std::make_shared<State>())
{
    m_state->kind = ModalKind::Menu;
    m_state->timeoutMs = timeoutMs;
    m_state->serve = [state = m_state.get(), action = std::move(action)](HWND popup) {
        const auto menu = reinterpret_cast<HMENU>(::SendMessage(popup, kGetMenuHandle, 0, 0));
        state->items = ItemsOf(menu);
        action(popup, menu, [state](std::vector<INPUT> records) {
            state->feeders.push_back(std::make_unique<InputFeeder>(std::move(records)));
        });
    };
    AddPendingAnswer(m_state);
}

MenuAnswer::~MenuAnswer()
{
    if (m_state == nullptr)
        return;
    EXPECT_TRUE(m_state->served) << "no menu came up";
    RemovePendingAnswer(m_state);
}

bool MenuAnswer::Shown() const
{
    return m_state != nullptr && m_state->served;
}

const std::vector<MenuItem>& MenuAnswer::Items() const
{
    static const std::vector<MenuItem> none;
    return m_state != nullptr ? m_state->items : none;
}

void MenuAnswer::Withdraw()
{
    if (m_state != nullptr)
        RemovePendingAnswer(m_state);
    m_state.reset();
}

MenuAnswer ChooseMenuItem(UINT command)
{
    return MenuAnswer([=](HWND, HMENU menu, const MenuAnswer::Feed& feed) {
        std::vector<INPUT> way = WayTo(menu, command);
        EXPECT_FALSE(way.empty()) << "the menu has no command " << command;
        feed(way.empty() ? Escape() : std::move(way));
    });
}

MenuAnswer ClickMenuItem(UINT command)
{
    return MenuAnswer([=](HWND, HMENU menu, const MenuAnswer::Feed& feed) {
        for (const MenuItem& item : ItemsOf(menu)) {
            if (item.id == command && !(item.type & MFT_SEPARATOR))
                return feed({MouseMoveInput(item.rect.CenterPoint()), MouseButtonInput(MOUSEEVENTF_LEFTDOWN),
                             MouseButtonInput(MOUSEEVENTF_LEFTUP)});
        }
        ADD_FAILURE() << "the menu has no command " << command;
        feed(Escape());
    });
}

MenuAnswer CancelMenu()
{
    return MenuAnswer([](HWND, HMENU, const MenuAnswer::Feed& feed) { feed(Escape()); });
}

} // namespace support
