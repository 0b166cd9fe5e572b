// The permanent and temporary handle maps: which framework object stands for a Windows handle.
#pragma once

#include <unordered_map>
#include <utility>

class CDC;
class CGdiObject;
class CImageList;
class CMenu;
class CWnd;

namespace afx_subset
{

// How a map makes and drops its temporary objects. Each handle family specialises it in its own source:
//   static Object* Make(Handle h);        a new object of the fitting class, holding h
//   static void    Drop(Object* object);  forget the handle (it is not ours to close), then delete the object
template <class Object>
struct HandleTraits;

// One map per handle family, module state and thread. Permanent objects belong to whoever attached them;
// temporary ones belong to the map and live until the thread is idle.
template <class Object, class Handle>
class HandleMap
{
public:
    HandleMap() = default;
    HandleMap(const HandleMap&) = delete;
    HandleMap& operator=(const HandleMap&) = delete;
    ~HandleMap() { DropTemporaries(); }

    // The object that was attached to the handle, null when there is none.
    Object* Permanent(Handle handle) const
    {
        const auto found = m_permanent.find(handle);
        return found == m_permanent.end() ? nullptr : found->second;
    }

    // The permanent object, else the temporary one, made now if need be. Null only for a null handle.
    Object* FromHandle(Handle handle)
    {
        if (handle == nullptr)
            return nullptr;
        if (Object* object = Permanent(handle))
            return object;
        Object*& temporary = m_temporary[handle];
        if (temporary == nullptr)
            temporary = HandleTraits<Object>::Make(handle);
        return temporary;
    }

    void SetPermanent(Handle handle, Object* object) { m_permanent[handle] = object; }

    // Forgets the permanent object of a handle; a temporary one stays until idle time, because a caller up
    // the stack may still hold it.
    void RemoveHandle(Handle handle) { m_permanent.erase(handle); }

    void DropTemporaries()
    {
        // Dropping can run destructors that look handles up again, so the map is emptied first.
        auto doomed = std::move(m_temporary);
        m_temporary.clear();
        for (auto& [handle, object] : doomed) {
            if (object != nullptr) // there was no memory for it
                HandleTraits<Object>::Drop(object);
        }
    }

private:
    std::unordered_map<Handle, Object*> m_permanent;
    std::unordered_map<Handle, Object*> m_temporary;
};

// The current module state's maps for the calling thread.
HandleMap<CWnd, HWND>& WndMap();
HandleMap<CMenu, HMENU>& MenuMap();
HandleMap<CDC, HDC>& DCMap();
HandleMap<CGdiObject, HGDIOBJ>& GdiMap();
// HIMAGELIST is declared by commctrl.h, which this header does not need.
HandleMap<CImageList, struct _IMAGELIST*>& ImageListMap();

} // namespace afx_subset
