// Files for tests to read and write.
#pragma once

#include <afxwin.h>

namespace support
{

// Makes a file of these bytes, a container of them, or empties and fills the one that is there.
template <class Bytes>
void FillFile(LPCTSTR path, const Bytes& bytes)
{
    CFile file(path, CFile::modeCreate | CFile::modeWrite);
    file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
}

// What a file holds, also while it is open elsewhere.
template <class Bytes>
[[nodiscard]] Bytes FileContents(LPCTSTR path)
{
    CFile file(path, CFile::modeRead | CFile::shareDenyNone);
    Bytes bytes(static_cast<size_t>(file.GetLength()), 0);
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

// An empty file in the temporary folder, which goes with the object.
class TemporaryFile
{
public:
    TemporaryFile()
    {
        TCHAR folder[MAX_PATH] = {};
        TCHAR path[MAX_PATH] = {};
        ::GetTempPath(MAX_PATH, folder);
        ::GetTempFileName(folder, L"tst", 0, path);
        m_path = path;
    }
    ~TemporaryFile()
    {
        ::SetFileAttributes(m_path, FILE_ATTRIBUTE_NORMAL);
        ::DeleteFile(m_path);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] const CString& Path() const { return m_path; }
    operator LPCTSTR() const { return m_path; }

private:
    CString m_path;
};

} // namespace support
