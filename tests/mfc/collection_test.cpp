// Arrays, lists and maps.
#include <afxcoll.h>
#include <gtest/gtest.h>

#include <list>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace
{

// Counts the live ones, to see that collections construct and destroy what they hold.
struct Counted {
    Counted() { ++s_live; }
    Counted(int n) : value(n) { ++s_live; }
    Counted(const Counted& other) : value(other.value) { ++s_live; }
    Counted& operator=(const Counted& other) = default;
    ~Counted() { --s_live; }
    bool operator==(const Counted& other) const { return value == other.value; }
    int value = 0;
    static int s_live;
};
int Counted::s_live = 0;

std::vector<int> Values(const CArray<Counted>& array)
{
    std::vector<int> values;
    for (INT_PTR i = 0; i < array.GetSize(); ++i)
        values.push_back(array[i].value);
    return values;
}

std::vector<int> Values(const CList<int, int>& list)
{
    std::vector<int> values;
    for (POSITION position = list.GetHeadPosition(); position != nullptr;)
        values.push_back(list.GetNext(position));
    std::vector<int> backward;
    for (POSITION position = list.GetTailPosition(); position != nullptr;)
        backward.push_back(list.GetPrev(position));
    EXPECT_EQ(values, std::vector<int>(backward.rbegin(), backward.rend()));
    return values;
}

} // namespace

TEST(CollectionArray, AgreesWithVectorUnderRandomEdits)
{
    std::mt19937 random(7);
    {
        CArray<Counted> array;
        std::vector<int> model;
        for (int step = 0; step < 3000; ++step) {
            const int value = step + 1;
            const auto size = static_cast<int>(model.size());
            const int at = static_cast<int>(random() % static_cast<unsigned>(size + 4));
            const int count = static_cast<int>(random() % 3) + 1;
            switch (random() % 6) {
            case 0:
                EXPECT_EQ(array.Add(value), size);
                model.push_back(value);
                break;
            case 1:
                array.SetAtGrow(at, value);
                model.resize(static_cast<size_t>(std::max(size, at + 1)));
                model[static_cast<size_t>(at)] = value;
                break;
            case 2:
                array.InsertAt(at, value, count);
                model.resize(static_cast<size_t>(std::max(size, at)));
                model.insert(model.begin() + at, static_cast<size_t>(count), value);
                break;
            case 3:
            case 4:
                if (at + count <= size) {
                    array.RemoveAt(at, count);
                    model.erase(model.begin() + at, model.begin() + at + count);
                } else {
                    EXPECT_THROW(array.RemoveAt(at, count), CInvalidArgException*);
                }
                break;
            default:
                if (size > 60) {
                    array.SetSize(20);
                    model.resize(20);
                }
                break;
            }
            ASSERT_EQ(Values(array), model) << step;
            ASSERT_EQ(Counted::s_live, static_cast<int>(model.size())) << step;
        }
    }
    EXPECT_EQ(Counted::s_live, 0);
}

TEST(CollectionArray, OwnElementsAsArguments)
{
    CStringArray array;
    array.Add(L"first");
    for (int i = 0; i < 40; ++i)
        array.Add(array[0]); // over several growths
    EXPECT_STREQ(array[40], L"first");
    array.InsertAt(0, array[40], 3);
    EXPECT_STREQ(array[2], L"first");
    array.SetSize(2);
    array.SetAt(1, L"second");
    array.Append(array);
    EXPECT_EQ(array.GetSize(), 4);
    EXPECT_STREQ(array[3], L"second");
    array.InsertAt(1, &array);
    EXPECT_EQ(array.GetSize(), 8);
    EXPECT_STREQ(array[2], L"second");
    array.Copy(array);
    EXPECT_EQ(array.GetSize(), 8);
}

TEST(CollectionArray, RefusesIndexesOutside)
{
    CPtrArray array;
    void* const none = nullptr;
    EXPECT_EQ(array.GetUpperBound(), -1);
    EXPECT_EQ(array.GetData(), nullptr);
    EXPECT_THROW(array.GetAt(0), CInvalidArgException*);
    array.SetSize(2);
    EXPECT_EQ(array[1], nullptr);
    EXPECT_THROW(array.SetAt(2, nullptr), CInvalidArgException*);
    EXPECT_THROW(array[-1] = nullptr, CInvalidArgException*);
    EXPECT_THROW(array.SetAtGrow(-1, nullptr), CInvalidArgException*);
    EXPECT_THROW(array.InsertAt(-1, none), CInvalidArgException*);
    EXPECT_THROW(array.InsertAt(0, none, 0), CInvalidArgException*);
    EXPECT_THROW(array.InsertAt(0, none, MAXINT_PTR), CInvalidArgException*);
    EXPECT_THROW(array.SetSize(-1), CInvalidArgException*);
    EXPECT_THROW(array.RemoveAt(1, MAXINT_PTR), CInvalidArgException*);
    EXPECT_EQ(array.GetSize(), 2);
    EXPECT_THROW(array.SetSize(MAXINT_PTR / 2), CMemoryException*);
    EXPECT_EQ(array.GetSize(), 2);
}

TEST(CollectionList, AgreesWithStdListUnderRandomEdits)
{
    std::mt19937 random(11);
    CList<int, int> list;
    std::vector<int> model;
    for (int step = 0; step < 3000; ++step) {
        const auto size = static_cast<INT_PTR>(model.size());
        const INT_PTR at = size > 0 ? static_cast<INT_PTR>(random() % static_cast<unsigned>(size)) : 0;
        const POSITION position = list.FindIndex(at);
        ASSERT_EQ(position == nullptr, size == 0);
        switch (random() % 7) {
        case 0:
            list.AddHead(step);
            model.insert(model.begin(), step);
            break;
        case 1:
            list.AddTail(step);
            model.push_back(step);
            break;
        case 2:
            list.InsertBefore(position, step);
            model.insert(model.begin() + at, step);
            break;
        case 3:
            list.InsertAfter(position, step);
            model.insert(model.begin() + at + (size > 0 ? 1 : 0), step);
            break;
        case 4:
            if (size > 0) {
                EXPECT_EQ(list.RemoveTail(), model.back());
                model.pop_back();
            }
            break;
        default:
            if (size > 0) {
                list.RemoveAt(position);
                model.erase(model.begin() + at);
            }
            break;
        }
        ASSERT_EQ(Values(list), model) << step;
        ASSERT_EQ(list.GetCount(), static_cast<INT_PTR>(model.size()));
    }
}

TEST(CollectionList, EdgesAndSearch)
{
    CStringList list;
    EXPECT_THROW(list.GetHead(), CInvalidArgException*);
    EXPECT_THROW(list.RemoveHead(), CInvalidArgException*);
    EXPECT_THROW(list.RemoveAt(nullptr), CInvalidArgException*);
    EXPECT_EQ(list.FindIndex(0), nullptr);
    list.AddTail(L"a");
    list.AddTail(L"b");
    list.AddTail(L"a");
    const POSITION first = list.Find(L"a");
    EXPECT_EQ(first, list.GetHeadPosition());
    EXPECT_EQ(list.Find(L"a", first), list.GetTailPosition());
    EXPECT_EQ(list.Find(L"a", list.GetTailPosition()), nullptr);
    EXPECT_EQ(list.FindIndex(-1), nullptr);
    EXPECT_EQ(list.FindIndex(3), nullptr);
    list.AddTail(&list); // itself
    list.AddHead(&list);
    EXPECT_EQ(list.GetCount(), 12);
    EXPECT_STREQ(list.GetHead(), L"a");
    EXPECT_EQ(list.RemoveTail(), L"a");
}

TEST(CollectionMap, AgreesWithStdMapUnderRandomEdits)
{
    std::mt19937 random(13);
    CMap<int, int, CString, LPCTSTR> map;
    std::map<int, std::wstring> model;
    for (int step = 0; step < 4000; ++step) {
        const int key = static_cast<int>(random() % 200) - 100;
        if (random() % 3 == 0) {
            EXPECT_EQ(map.RemoveKey(key) != FALSE, model.erase(key) == 1);
        } else {
            const std::wstring value = std::to_wstring(step);
            map.SetAt(key, value.c_str());
            model[key] = value;
        }
        ASSERT_EQ(map.GetCount(), static_cast<INT_PTR>(model.size()));
    }
    std::map<int, std::wstring> seen;
    for (POSITION position = map.GetStartPosition(); position != nullptr;) {
        int key = 0;
        CString value;
        map.GetNextAssoc(position, key, value);
        EXPECT_TRUE(seen.emplace(key, value.GetString()).second);
    }
    EXPECT_EQ(seen, model);
    CString value(L"kept");
    EXPECT_FALSE(map.Lookup(1000, value));
    EXPECT_STREQ(value, L"kept");
}

TEST(CollectionMap, RemovingWhileIterating)
{
    CMapStringToPtr map;
    for (int i = 0; i < 100; ++i) {
        CString key;
        key.Format(L"%d", i);
        map[key] = &map;
    }
    int visited = 0;
    for (POSITION position = map.GetStartPosition(); position != nullptr; ++visited) {
        CString key;
        void* value = nullptr;
        map.GetNextAssoc(position, key, value);
        EXPECT_TRUE(map.RemoveKey(key));
    }
    EXPECT_EQ(visited, 100);
    EXPECT_TRUE(map.IsEmpty());
    EXPECT_EQ(map.GetStartPosition(), nullptr);
    EXPECT_EQ(map.PGetFirstAssoc(), nullptr);
}

TEST(CollectionMap, LookupByPairAndHashTable)
{
    CMapStringToString map;
    EXPECT_EQ(map.PLookup(L"a"), nullptr);
    map.InitHashTable(3);
    map[L"a"] = L"1";
    map[L"b"] = L"2";
    CMapStringToString::CPair* const pair = map.PLookup(L"a");
    ASSERT_NE(pair, nullptr);
    pair->value = L"3";
    EXPECT_STREQ(map[L"a"], L"3");
    EXPECT_EQ(map.GetHashTableSize(), 3u);
    EXPECT_THROW(map.InitHashTable(5), CInvalidArgException*); // not while it holds something
    int pairs = 0;
    for (auto* each = map.PGetFirstAssoc(); each != nullptr; each = map.PGetNextAssoc(each))
        ++pairs;
    EXPECT_EQ(pairs, 2);
    map.RemoveAll();
    map.InitHashTable(101, FALSE);
    EXPECT_STREQ(map[L"new"], L"");
    POSITION none = nullptr;
    CString key;
    CString value;
    EXPECT_THROW(map.GetNextAssoc(none, key, value), CInvalidArgException*);
}

TEST(CollectionTyped, PointersKeepTheirType)
{
    int one = 1;
    int two = 2;
    CTypedPtrArray<CPtrArray, int*> array;
    array.Add(&one);
    array[0] = &two;
    EXPECT_EQ(*array[0], 2);
    CTypedPtrList<CPtrList, int*> list;
    list.AddTail(&one);
    list.AddTail(&two);
    int sum = 0;
    for (POSITION position = list.GetHeadPosition(); position != nullptr;)
        sum += *list.GetNext(position);
    EXPECT_EQ(sum, 3);
    CTypedPtrMap<CMapStringToPtr, CString, int*> map;
    map[L"two"] = &two;
    int* found = nullptr;
    EXPECT_TRUE(map.Lookup(L"two", found));
    EXPECT_EQ(found, &two);
    EXPECT_FALSE(map.Lookup(L"one", found));
}
