#include "vgui/assist/companion.h"

#include "vgui/assist/ole_assist.h"

namespace
{

class OleScope
{
public:
    OleScope() : m_initialized(SUCCEEDED(::OleInitialize(nullptr))) {}
    OleScope(const OleScope&) = delete;
    OleScope& operator=(const OleScope&) = delete;
    ~OleScope()
    {
        if (m_initialized)
            ::OleUninitialize();
    }

private:
    bool m_initialized;
};

} // namespace

UINT CompanionInfomation(HWND owner, UINT, const wchar_t* arguments, UINT mode)
{
    const OleScope ole;
    COleAssist assist(owner, arguments, mode);
    return assist.Run() ? 1 : 0;
}
