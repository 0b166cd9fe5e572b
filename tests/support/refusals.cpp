#include "tests/support/refusals.h"

#include "tests/support/census.h"
#include "tests/support/environment.h"
#include "tests/support/pump.h"
#include "tests/support/system_heap.h"

#include <afxcmn.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <new>
#include <set>
#include <unordered_set>
#include <utility>

namespace support
{

namespace
{

constexpr LPCWSTR kLibrary = L"vgui.dll";
constexpr LPCWSTR kFramework = L"mfcsubset.dll";
constexpr int kNever = std::numeric_limits<int>::max();
// So many of the functions that lead to a request tell it from others.
constexpr int kFrames = 14;

// Which of the requests are refused, counted from 1.
int g_first = kNever;
int g_last = kNever;
int g_requests = 0;
DWORD g_thread = 0;
// While it is not null: what has led to the requests, one by one.
std::vector<ULONG, SystemHeap<ULONG>>* g_origins = nullptr;

// Requests of other threads are the system's own.
bool Refuses()
{
    if (::GetCurrentThreadId() != g_thread)
        return false;
    ++g_requests;
    if (g_origins != nullptr) {
        void* frames[kFrames];
        ULONG sum = 0;
        ::RtlCaptureStackBackTrace(1, kFrames, frames, &sum);
        g_origins->push_back(sum);
    }
    return g_requests >= g_first && g_requests <= g_last;
}

// ---- Objects

// A stand-in for a function that answers null when it fails.
template <class Function, class Name>
struct Refusable;

template <class Result, class Name, class... Arguments>
struct Refusable<Result(WINAPI*)(Arguments...), Name> {
    static Result WINAPI Call(Arguments... arguments)
    {
        if (Refuses()) {
            ::SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return Result{};
        }
        return Name::Real()(arguments...);
    }
};

struct Replacement {
    const char* name;
    void* function;
};

#define VGUI_REFUSABLE(function)                                                                             \
    [] {                                                                                                     \
        struct Name {                                                                                        \
            static auto Real() { return &::function; }                                                       \
        };                                                                                                   \
        return Replacement{#function,                                                                        \
                           reinterpret_cast<void*>(&Refusable<decltype(Name::Real()), Name>::Call)};         \
    }()

std::vector<Replacement> ObjectReplacements()
{
    return {
        VGUI_REFUSABLE(CreateBitmap),
        VGUI_REFUSABLE(CreateBitmapIndirect),
        VGUI_REFUSABLE(CreateBrushIndirect),
        VGUI_REFUSABLE(CreateCompatibleBitmap),
        VGUI_REFUSABLE(CreateCompatibleDC),
        VGUI_REFUSABLE(CreateDCW),
        VGUI_REFUSABLE(CreateDIBSection),
        VGUI_REFUSABLE(CreateDialogIndirectParamW),
        VGUI_REFUSABLE(CreateEllipticRgn),
        VGUI_REFUSABLE(CreateFontIndirectW),
        VGUI_REFUSABLE(CreateHalftonePalette),
        VGUI_REFUSABLE(CreateHatchBrush),
        VGUI_REFUSABLE(CreateMenu),
        VGUI_REFUSABLE(CreatePalette),
        VGUI_REFUSABLE(CreatePatternBrush),
        VGUI_REFUSABLE(CreatePen),
        VGUI_REFUSABLE(CreatePolygonRgn),
        VGUI_REFUSABLE(CreatePopupMenu),
        VGUI_REFUSABLE(CreateRectRgn),
        VGUI_REFUSABLE(CreateRectRgnIndirect),
        VGUI_REFUSABLE(CreateRoundRectRgn),
        VGUI_REFUSABLE(CreateSolidBrush),
        VGUI_REFUSABLE(CreateWindowExW),
        VGUI_REFUSABLE(ExtCreatePen),
        VGUI_REFUSABLE(FindResourceW),
        VGUI_REFUSABLE(GetDC),
        VGUI_REFUSABLE(GetIconInfo),
        VGUI_REFUSABLE(GetWindowDC),
        VGUI_REFUSABLE(GlobalAlloc),
        VGUI_REFUSABLE(GlobalLock),
        VGUI_REFUSABLE(ImageList_Create),
        VGUI_REFUSABLE(ImageList_GetIcon),
        VGUI_REFUSABLE(LoadBitmapW),
        VGUI_REFUSABLE(LoadCursorW),
        VGUI_REFUSABLE(LoadIconW),
        VGUI_REFUSABLE(LoadImageW),
        VGUI_REFUSABLE(LoadMenuW),
        VGUI_REFUSABLE(SetTimer),
        VGUI_REFUSABLE(SetWindowsHookExW),
        VGUI_REFUSABLE(TrackMouseEvent),
    };
}

// ---- Memory

// The blocks that the library and the framework hold. The test's thread alone uses them.
std::unordered_set<void*, std::hash<void*>, std::equal_to<>, SystemHeap<void*>> g_blocks;

void* Counted(void* block)
{
    if (block != nullptr)
        g_blocks.insert(block);
    return block;
}

void* NewOrNull(size_t size, const std::nothrow_t&) noexcept
{
    return Refuses() ? nullptr : Counted(::operator new(size, std::nothrow));
}

void* New(size_t size)
{
    void* const block = NewOrNull(size, std::nothrow);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

// Also called by the test program, which destroys some of the library's objects itself.
void Delete(void* block) noexcept
{
    static const auto deleteBlock = reinterpret_cast<void (*)(void*)>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"libstdc++-6.dll"), "_ZdlPv")));
    g_blocks.erase(block);
    deleteBlock(block);
}

void SizedDelete(void* block, size_t) noexcept
{
    Delete(block);
}

void* Malloc(size_t size)
{
    return Refuses() ? nullptr : Counted(std::malloc(size));
}

void* Calloc(size_t count, size_t size)
{
    return Refuses() ? nullptr : Counted(std::calloc(count, size));
}

void* Realloc(void* block, size_t size)
{
    if (Refuses())
        return nullptr;
    void* const moved = std::realloc(block, size);
    if (moved != nullptr) {
        g_blocks.erase(block);
        g_blocks.insert(moved);
    }
    return moved;
}

void Free(void* block)
{
    g_blocks.erase(block);
    std::free(block);
}

template <class Function>
Replacement Replace(const char* name, Function* function)
{
    return {name, reinterpret_cast<void*>(function)};
}

// The mangled names of operator new and delete.
std::vector<Replacement> Deletes()
{
    return {Replace("_ZdlPv", Delete), Replace("_ZdaPv", Delete), Replace("_ZdlPvy", SizedDelete),
            Replace("_ZdaPvy", SizedDelete)};
}

std::vector<Replacement> Allocations()
{
    return {
        Replace("_Znwy", New),
        Replace("_Znay", New),
        Replace("_ZnwyRKSt9nothrow_t", NewOrNull),
        Replace("_ZnayRKSt9nothrow_t", NewOrNull),
        Replace("malloc", Malloc),
        Replace("calloc", Calloc),
        Replace("realloc", Realloc),
        Replace("free", Free),
    };
}

// ---- Runs

int WINAPI AnswerBox(HWND, LPCWSTR, LPCWSTR, UINT)
{
    return IDOK;
}

class Refusals
{
public:
    explicit Refusals(Refused kind) : m_kind(kind)
    {
        g_thread = ::GetCurrentThreadId();
        m_patches.emplace_back(kFramework, "MessageBoxW", reinterpret_cast<void*>(AnswerBox));
        const std::vector<LPCWSTR> both = {kLibrary, kFramework};
        if (kind == Refused::Objects) {
            Patch(both, ObjectReplacements());
        } else {
            Patch(both, Allocations());
            Patch({kLibrary, kFramework, nullptr}, Deletes());
        }
    }

    // Runs the operation with requests of it refused.
    void Run(const RefusedOperation& operation, int first, int last)
    {
        const std::string note = operation.name + ", requests " + std::to_string(first) + " to " +
                                 std::to_string(last) + " refused";
        SetCrashNote(note.c_str());
        SCOPED_TRACE(note);
        g_requests = 0;
        g_first = first;
        g_last = last;
        try {
            operation.run();
        } catch (CException* e) {
            e->Delete();
        } catch (const std::bad_alloc& e) {
            EXPECT_EQ(m_kind, Refused::Memory) << e.what();
        }
        g_first = g_last = kNever;
        PumpMessages();
        SetCrashNote("");
    }

    // Runs it without refusals and answers its requests, counted from 1, without those whose like was
    // answered before.
    std::vector<int> NewRequests(const RefusedOperation& operation)
    {
        static const bool isThorough = std::getenv("VGUI_SOAK") != nullptr;
        static std::set<std::pair<Refused, ULONG>> s_known;
        std::vector<ULONG, SystemHeap<ULONG>> origins;
        g_origins = &origins;
        Run(operation, kNever, kNever);
        g_origins = nullptr;
        std::vector<int> requests;
        for (size_t i = 0; i < origins.size(); ++i)
            if (s_known.insert({m_kind, origins[i]}).second || isThorough)
                requests.push_back(static_cast<int>(i) + 1);
        std::printf("[ REFUSED  ] %s: %zu of %zu requests\n", operation.name.c_str(), requests.size(),
                    origins.size());
        return requests;
    }

private:
    void Patch(const std::vector<LPCWSTR>& modules, const std::vector<Replacement>& replacements)
    {
        for (const LPCWSTR module : modules)
            for (const auto& [name, function] : replacements)
                m_patches.emplace_back(module, name, function);
    }

    Refused m_kind;
    std::vector<ImportPatch> m_patches;
};

int Failures()
{
    return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
}

void Walk(Refusals& refusals, const RefusedOperation& operation, const std::vector<int>& requests)
{
    const int failures = Failures();
    for (const bool goesOn : {false, true})
        for (const int n : requests)
            if (Failures() == failures)
                refusals.Run(operation, n, goesOn ? kNever : n);
}

bool HasGrown(const ObjectCounts& before, const ObjectCounts& now)
{
    return std::ranges::any_of(now, [&](const auto& kind) {
        const auto found = before.find(kind.first);
        return kind.second > (found != before.end() ? found->second : 0);
    });
}

// counts: before, and then after the walk. The system keeps some device contexts for later, now more and now
// fewer: a leak grows every time.
void ExpectWalkLeavesNothing(Refusals& refusals, const RefusedOperation& operation,
                             const std::vector<int>& requests, ObjectCounts& counts)
{
    for (const bool isLast : {false, true}) {
        const size_t blocks = g_blocks.size();
        Walk(refusals, operation, requests);
        const ObjectCounts before = std::exchange(counts, CountObjects());
        const bool keepsObjects = operation.countsObjects && HasGrown(before, counts);
        if (!keepsObjects && g_blocks.size() <= blocks)
            return;
        if (isLast) {
            if (keepsObjects) {
                EXPECT_EQ(counts, before);
            }
            EXPECT_LE(g_blocks.size(), blocks) << "blocks of memory";
        }
    }
}

} // namespace

void ExpectRefusalsSurvived(Refused kind, const std::vector<RefusedOperation>& operations)
{
    // Each test runs twice. What the system makes at the first use is made in the first run.
    static std::set<const testing::TestInfo*> s_warmedUp;
    const bool isWarmUp = s_warmedUp.insert(testing::UnitTest::GetInstance()->current_test_info()).second;
    ObjectCounts counts = CountObjects();
    Refusals refusals(kind);
    for (const RefusedOperation& operation : operations) {
        SCOPED_TRACE(operation.name);
        if (isWarmUp) {
            refusals.Run(operation, kNever, kNever);
            continue;
        }
        const std::vector<int> requests = refusals.NewRequests(operation);
        if (!requests.empty())
            ExpectWalkLeavesNothing(refusals, operation, requests, counts);
    }
    g_blocks.clear();
}

} // namespace support
