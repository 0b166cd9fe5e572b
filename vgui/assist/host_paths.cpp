#include "vgui/assist/host_paths.h"

#include <algorithm>

namespace
{

CString& OwnRoot()
{
    static CString root;
    return root;
}

CString ProgramPath()
{
    CString path;
    // The function cuts what does not fit, and does not say how much it needs.
    for (int size = MAX_PATH;; size *= 2) {
        const DWORD length = ::GetModuleFileNameW(nullptr, path.GetBuffer(size), size);
        const bool fits = length < static_cast<DWORD>(size);
        path.ReleaseBuffer(fits ? static_cast<int>(length) : 0);
        if (fits)
            return path;
    }
}

CString Parent(const CString& path)
{
    return path.Left(std::max(path.ReverseFind(L'\\'), 0));
}

} // namespace

CString VGHostRoot()
{
    return OwnRoot().IsEmpty() ? Parent(Parent(ProgramPath())) : OwnRoot();
}

void VGSetHostRoot(LPCWSTR root)
{
    OwnRoot() = root;
}

CString VGHostSysFile(LPCWSTR name)
{
    return VGHostRoot() + L"\\sys\\" + name;
}

CString VGReadIniValue(LPCWSTR file, LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue, int size)
{
    CString value;
    ::GetPrivateProfileStringW(section, key, defaultValue, value.GetBuffer(size), size, file);
    value.ReleaseBuffer();
    return value;
}
