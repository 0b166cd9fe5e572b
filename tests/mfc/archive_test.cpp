// Archives: values, objects, and input that lies.
#include <afxcoll.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace
{

// An item of a ring: refers to another one, perhaps to itself.
class Node : public CObject
{
    DECLARE_SERIAL(Node)

public:
    Node() { ++s_live; }
    ~Node() override { --s_live; }
    void Serialize(CArchive& ar) override
    {
        if (ar.IsStoring())
            ar << m_name << m_next;
        else
            ar >> m_name >> m_next;
    }
    CString m_name;
    Node* m_next = nullptr; // not owned
    static int s_live;
};
IMPLEMENT_SERIAL(Node, CObject, 1)
int Node::s_live = 0;

// Reads versions 1 and 2.
class Versioned : public CObject
{
    DECLARE_SERIAL(Versioned)

public:
    void Serialize(CArchive& ar) override
    {
        if (ar.IsLoading()) {
            m_schema = ar.GetObjectSchema();
            m_again = ar.GetObjectSchema();
        }
    }
    UINT m_schema = 0;
    UINT m_again = 0;
};
IMPLEMENT_SERIAL(Versioned, CObject, VERSIONABLE_SCHEMA | 2)

class Unserializable : public CObject
{
    DECLARE_DYNCREATE(Unserializable)
};
IMPLEMENT_DYNCREATE(Unserializable, CObject)

using Bytes = std::string;

Bytes Store(const std::function<void(CArchive&)>& store, int bufferSize = 4096)
{
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store, bufferSize);
        store(ar);
    }
    Bytes bytes(static_cast<size_t>(file.GetLength()), '\0');
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

// The cause of the archive exception, -1 for none, -2 for an exception of another class.
int Load(const Bytes& bytes, const std::function<void(CArchive&)>& load, int bufferSize = 4096)
{
    // A block of exactly this size, so that reading past it shows under a checking allocator.
    std::vector<BYTE> block(bytes.begin(), bytes.end());
    CMemFile file(block.data(), static_cast<UINT>(block.size()));
    try {
        CArchive ar(&file, CArchive::load, bufferSize);
        load(ar);
    } catch (CArchiveException* e) {
        const int cause = e->m_cause;
        e->Delete();
        return cause;
    } catch (CException* e) {
        e->Delete();
        return -2;
    }
    return -1;
}

template <typename T>
void RoundTrip(T value, size_t size)
{
    const Bytes bytes = Store([&](CArchive& ar) { ar << value; });
    EXPECT_EQ(bytes.size(), size);
    T loaded{};
    EXPECT_EQ(Load(bytes, [&](CArchive& ar) { ar >> loaded; }), -1);
    EXPECT_EQ(memcmp(&loaded, &value, sizeof(T)), 0);
    EXPECT_EQ(Load(bytes.substr(1), [&](CArchive& ar) { ar >> loaded; }), CArchiveException::endOfFile);
}

} // namespace

TEST(ArchiveValues, RoundTripInTheirSize)
{
    RoundTrip<BYTE>(0xAB, 1);
    RoundTrip<WORD>(0xABCD, 2);
    RoundTrip<short>(-2, 2);
    RoundTrip<int>(-3, 4);
    RoundTrip<LONG>(-4, 4);
    RoundTrip<DWORD>(0xFFFFFFFE, 4);
    RoundTrip<ULONGLONG>(0x0123456789ABCDEF, 8);
    RoundTrip<float>(1.5f, 4);
    RoundTrip<double>(-2.25, 8);
    RoundTrip<wchar_t>(L'\u4E2D', 2);
    RoundTrip<bool>(true, 1);
    RoundTrip<POINT>({-1, 2}, 8);
    RoundTrip<RECT>({1, 2, 3, 4}, 16);
    RoundTrip<CTime>(CTime(12345), 8);
    EXPECT_EQ(Store([](CArchive& ar) { ar << 0x01020304; }), Bytes("\4\3\2\1"));
}

TEST(ArchiveValues, SmallBuffersAndLargeBlocks)
{
    // Crossing the buffer's end in every way gives the same bytes.
    const auto store = [](CArchive& ar) {
        for (int i = 0; i < 200; ++i) {
            ar << static_cast<BYTE>(i) << i;
            const std::string block(static_cast<size_t>(i), static_cast<char>(i));
            ar.Write(block.data(), static_cast<UINT>(i));
        }
    };
    const Bytes whole = Store(store, 1 << 20);
    EXPECT_EQ(Store(store, 1), whole);
    for (const int size : {1, 130, 1 << 20}) {
        EXPECT_EQ(Load(
                      whole,
                      [](CArchive& ar) {
                          for (int i = 0; i < 200; ++i) {
                              BYTE byte = 0;
                              int number = 0;
                              std::string block(static_cast<size_t>(i), '\0');
                              ar >> byte >> number;
                              EXPECT_EQ(number, i);
                              EXPECT_EQ(ar.Read(block.data(), static_cast<UINT>(i)), static_cast<UINT>(i));
                              EXPECT_EQ(block, std::string(static_cast<size_t>(i), static_cast<char>(i)));
                          }
                          char end = 0;
                          EXPECT_EQ(ar.Read(&end, 1), 0u); // no exception at the end
                      },
                      size),
                  -1);
    }
}

TEST(ArchiveValues, CallersBufferAndFilePosition)
{
    BYTE buffer[16];
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store, sizeof(buffer), buffer);
        ar << 1 << 2 << 3 << 4 << 5;
        EXPECT_EQ(file.GetLength(), 16u);
        ar.Flush();
        EXPECT_EQ(file.GetLength(), 20u);
    }
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load, sizeof(buffer), buffer);
    int value = 0;
    ar >> value >> value;
    ar.Flush(); // gives back what was read ahead
    EXPECT_EQ(file.GetPosition(), 8u);
    ar >> value;
    EXPECT_EQ(value, 3);
    ar.Close();
    EXPECT_EQ(ar.GetFile(), nullptr);
    try {
        ar >> value;
        ADD_FAILURE();
    } catch (CArchiveException* e) {
        e->Delete();
    }
}

TEST(ArchiveValues, DirectionIsChecked)
{
    EXPECT_EQ(Load(Bytes(8, 'x'), [](CArchive& ar) { ar << 1; }), CArchiveException::readOnly);
    int cause = -1;
    Store([&](CArchive& ar) {
        int value = 0;
        try {
            ar >> value;
        } catch (CArchiveException* e) {
            cause = e->m_cause;
            e->Delete();
        }
    });
    EXPECT_EQ(cause, CArchiveException::writeOnly);
    EXPECT_THROW(CArchive(nullptr, CArchive::load), CInvalidArgException*);
}

TEST(ArchiveValues, ClosingReportsAFullFile)
{
    BYTE tiny[2];
    CMemFile file(tiny, sizeof(tiny)); // cannot grow
    EXPECT_THROW(
        {
            CArchive ar(&file, CArchive::store);
            ar << 1;
        },
        CMemoryException*);
    // Not while another exception is under way, and not after Abort.
    EXPECT_THROW(
        {
            CArchive ar(&file, CArchive::store);
            ar << 1;
            AfxThrowUserException();
        },
        CUserException*);
    CArchive aborted(&file, CArchive::store);
    aborted << 1;
    aborted.Abort();
}

TEST(ArchiveStrings, LengthsOfEveryForm)
{
    for (const int length : {0, 1, 254, 255, 256, 65533, 65534, 65535, 65536, 100000}) {
        const CString wide(L'\u4E2D', length);
        const CStringA narrow('n', length);
        const Bytes bytes = Store([&](CArchive& ar) { ar << wide << narrow; });
        CString wideLoaded;
        CStringA narrowLoaded;
        EXPECT_EQ(Load(bytes, [&](CArchive& ar) { ar >> wideLoaded >> narrowLoaded; }), -1);
        EXPECT_TRUE(wideLoaded == wide) << length;
        EXPECT_TRUE(narrowLoaded == narrow) << length;
    }
    // One kind of string reads what the other stored.
    CString fromNarrow;
    const Bytes narrowBytes = Store([](CArchive& ar) { ar << CStringA("text"); });
    EXPECT_EQ(narrowBytes, Bytes("\4text"));
    EXPECT_EQ(Load(narrowBytes, [&](CArchive& ar) { ar >> fromNarrow; }), -1);
    EXPECT_STREQ(fromNarrow, L"text");
}

TEST(ArchiveStrings, LyingLengths)
{
    CString text(L"kept");
    const auto load = [&](CArchive& ar) { ar >> text; };
    EXPECT_EQ(Load("", load), CArchiveException::endOfFile);
    EXPECT_EQ(Load("\x05"
                   "abc",
                   load),
              CArchiveException::endOfFile);
    EXPECT_EQ(Load("\xFF\xFE\xFF\x05"
                   "abc",
                   load),
              CArchiveException::endOfFile);
    // Two thousand million characters, of which three are there.
    EXPECT_EQ(Load("\xFF\xFF\xFF\xFF\xFF\xFF\x7F"
                   "abc",
                   load),
              CArchiveException::endOfFile);
    EXPECT_EQ(Load("\xFF\xFF\xFF\xFF\xFF\xFF\xFF"
                   "abc",
                   load),
              CArchiveException::badIndex);
    EXPECT_EQ(Load("\xFF\xFF\xFF\xFF\xFF\xFF\x80"
                   "abc",
                   load),
              CArchiveException::badIndex);
    EXPECT_STREQ(text, L"kept");
}

TEST(ArchiveStrings, Lines)
{
    const Bytes bytes = Store([](CArchive& ar) { ar.WriteString(L"one\r\ntwo\n\nfour"); });
    EXPECT_EQ(Load(bytes,
                   [](CArchive& ar) {
                       CString line;
                       TCHAR buffer[3];
                       EXPECT_TRUE(ar.ReadString(line));
                       EXPECT_STREQ(line, L"one");
                       EXPECT_STREQ(ar.ReadString(buffer, 3), L"tw");
                       EXPECT_STREQ(ar.ReadString(buffer, 3), L"o");
                       EXPECT_TRUE(ar.ReadString(line));
                       EXPECT_TRUE(line.IsEmpty());
                       EXPECT_TRUE(ar.ReadString(line));
                       EXPECT_STREQ(line, L"four");
                       EXPECT_FALSE(ar.ReadString(line));
                       EXPECT_EQ(ar.ReadString(buffer, 3), nullptr);
                   }),
              -1);
}

TEST(ArchiveObjects, StoredOnceWithTheirClass)
{
    Node first;
    Node second;
    first.m_name = L"first";
    second.m_name = L"second";
    first.m_next = &second;
    second.m_next = &first; // a ring
    const Bytes bytes =
        Store([&](CArchive& ar) { ar << &first << &second << static_cast<CObject*>(nullptr) << &first; });
    // A new class, its schema and its name; the second object refers to the class by number.
    EXPECT_EQ(bytes.substr(0, 10), Bytes("\xFF\xFF\x01\0\x04\0Node", 10));

    Node* a = nullptr;
    Node* b = nullptr;
    Node* none = &first;
    Node* again = nullptr;
    EXPECT_EQ(Load(bytes, [&](CArchive& ar) { ar >> a >> b >> none >> again; }), -1);
    ASSERT_NE(a, nullptr);
    EXPECT_STREQ(a->m_name, L"first");
    EXPECT_EQ(a->m_next, b);
    EXPECT_EQ(b->m_next, a);
    EXPECT_EQ(again, a);
    EXPECT_EQ(none, nullptr);
    delete a;
    delete b;
}

TEST(ArchiveObjects, ManyNeedWideNumbers)
{
    constexpr int kCount = 33000; // beyond 15 bits
    CObArray stored;
    for (int i = 0; i < kCount; ++i)
        stored.Add(new Node);
    for (int i = 0; i < kCount; ++i)
        stored.Add(stored[i]);
    const Bytes bytes = Store([&](CArchive& ar) { stored.Serialize(ar); });
    CObArray loaded;
    EXPECT_EQ(Load(bytes, [&](CArchive& ar) { loaded.Serialize(ar); }), -1);
    ASSERT_EQ(loaded.GetSize(), 2 * kCount);
    for (int i = 0; i < kCount; ++i) {
        ASSERT_EQ(loaded[i], loaded[kCount + i]);
        delete loaded[i];
        delete stored[i];
    }
}

TEST(ArchiveObjects, MappedObjectsAreOnlyReferredTo)
{
    CObject* const document = RUNTIME_CLASS(Unserializable)->CreateObject();
    Node node;
    const Bytes bytes = Store([&](CArchive& ar) {
        ar.MapObject(document);
        ar << document << &node << document;
    });
    CObject* first = nullptr;
    CObject* second = nullptr;
    Node* loaded = nullptr;
    EXPECT_EQ(Load(bytes,
                   [&](CArchive& ar) {
                       ar.MapObject(document);
                       ar >> first >> loaded >> second;
                   }),
              -1);
    EXPECT_EQ(first, document);
    EXPECT_EQ(second, document);
    delete loaded;
    EXPECT_THROW(Store([&](CArchive& ar) { ar << document; }), CNotSupportedException*);
    delete document;
}

TEST(ArchiveObjects, Schemas)
{
    Bytes bytes = Store([](CArchive& ar) {
        Versioned object;
        ar << &object;
    });
    EXPECT_EQ(bytes[2], 2);
    for (const char version : {'\1', '\2'}) {
        bytes[2] = version;
        Versioned* loaded = nullptr;
        EXPECT_EQ(Load(bytes, [&](CArchive& ar) { ar >> loaded; }), -1);
        ASSERT_NE(loaded, nullptr);
        EXPECT_EQ(loaded->m_schema, static_cast<UINT>(version));
        EXPECT_EQ(loaded->m_again, static_cast<UINT>(-1)); // told once
        delete loaded;
    }
    Node node;
    bytes = Store([&](CArchive& ar) { ar << &node; });
    bytes[2] = 9;
    Node* loaded = nullptr;
    EXPECT_EQ(Load(bytes, [&](CArchive& ar) { ar >> loaded; }), CArchiveException::badSchema);
}

TEST(ArchiveObjects, ClassReferences)
{
    const Bytes bytes = Store([](CArchive& ar) {
        ar.SerializeClass(RUNTIME_CLASS(Node));
        ar.WriteClass(RUNTIME_CLASS(Node));
    });
    EXPECT_EQ(Load(bytes,
                   [](CArchive& ar) {
                       ar.SerializeClass(RUNTIME_CLASS(Node));
                       EXPECT_EQ(ar.GetObjectSchema(), 1u);
                       UINT schema = 0;
                       EXPECT_EQ(ar.ReadClass(nullptr, &schema), RUNTIME_CLASS(Node));
                       EXPECT_EQ(schema, 1u);
                   }),
              -1);
    EXPECT_EQ(Load(bytes, [](CArchive& ar) { ar.ReadClass(RUNTIME_CLASS(Versioned)); }),
              CArchiveException::badClass);
    EXPECT_EQ(Load(bytes, [](CArchive& ar) { ar.ReadClass(RUNTIME_CLASS(Unserializable)); }), -2);
}

TEST(ArchiveObjects, LyingTags)
{
    CObject* object = nullptr;
    const auto load = [&](CArchive& ar) { ar >> object; };
    EXPECT_EQ(Load(Bytes("\x05\0", 2), load), CArchiveException::badIndex);   // no such object
    EXPECT_EQ(Load(Bytes("\x01\x80", 2), load), CArchiveException::badIndex); // no such class
    EXPECT_EQ(Load(Bytes("\x00\x80", 2), load), CArchiveException::badIndex); // nothing is class 0
    EXPECT_EQ(Load("\xFF\x7F\xFF\xFF\xFF\x7F", load), CArchiveException::badIndex);
    EXPECT_EQ(Load("\xFF\x7F\xFF\xFF\xFF\xFF", load), CArchiveException::badIndex);
    EXPECT_EQ(Load(Bytes("\xFF\xFF\x01\0\x04\0Nobo", 10), load), CArchiveException::badClass);
    EXPECT_EQ(Load(Bytes("\xFF\xFF\x01\0\xFF\xFFNode", 10), load), CArchiveException::badClass);
    // A class that is known but cannot be serialized; an object of another class than expected.
    EXPECT_EQ(Load(Bytes("\xFF\xFF\xFF\xFF\x0E\0Unserializable", 20), load), CArchiveException::badClass);
    Node node;
    const Bytes bytes = Store([&](CArchive& ar) { ar << &node; });
    EXPECT_EQ(Load(bytes,
                   [](CArchive& ar) {
                       Versioned* other = nullptr;
                       ar >> other;
                   }),
              CArchiveException::badClass);
    // An object where a class's number stands.
    EXPECT_EQ(Load(Bytes("\xFF\xFF\x02\0\x09\0Versioned\x01\0", 17),
                   [&](CArchive& ar) {
                       ar.ReadClass();
                       ar >> object;
                   }),
              CArchiveException::badIndex);
    EXPECT_EQ(object, nullptr);
}

TEST(ArchiveObjects, EndlessNestingEndsWithAnException)
{
    // Each object's first member is another new object.
    Bytes bytes("\xFF\xFF\x01\0\x04\0Node\0", 11);
    for (int i = 0; i < 300000; ++i)
        bytes += Bytes("\x01\x80\0", 3);
    const int live = Node::s_live;
    Node* loaded = nullptr;
    EXPECT_NE(Load(bytes, [&](CArchive& ar) { ar >> loaded; }), -1);
    EXPECT_EQ(loaded, nullptr);
    EXPECT_EQ(Node::s_live, live); // the half-read ones are gone
}

TEST(ArchiveCollections, RoundTrip)
{
    CStringArray strings;
    CDWordArray numbers;
    CStringList list;
    CMapStringToString map;
    CByteArray bytesArray;
    for (int i = 0; i < 70000; ++i) // a count of more than 2 bytes
        bytesArray.Add(static_cast<BYTE>(i));
    strings.Add(L"a");
    strings.Add(L"\u4E2D");
    numbers.Add(0xDEADBEEF);
    list.AddTail(L"x");
    list.AddTail(L"y");
    map[L"k"] = L"v";
    const Bytes bytes = Store([&](CArchive& ar) {
        for (CObject* each :
             {static_cast<CObject*>(&strings), static_cast<CObject*>(&numbers), static_cast<CObject*>(&list),
              static_cast<CObject*>(&map), static_cast<CObject*>(&bytesArray)})
            each->Serialize(ar);
    });
    CStringArray strings2;
    CDWordArray numbers2;
    CStringList list2;
    CMapStringToString map2;
    CByteArray bytes2;
    EXPECT_EQ(Load(bytes,
                   [&](CArchive& ar) {
                       strings2.Serialize(ar);
                       numbers2.Serialize(ar);
                       list2.Serialize(ar);
                       map2.Serialize(ar);
                       bytes2.Serialize(ar);
                   }),
              -1);
    EXPECT_STREQ(strings2[1], L"\u4E2D");
    EXPECT_EQ(numbers2[0], 0xDEADBEEF);
    EXPECT_STREQ(list2.GetTail(), L"y");
    EXPECT_STREQ(map2[L"k"], L"v");
    ASSERT_EQ(bytes2.GetSize(), 70000);
    EXPECT_EQ(bytes2[69999], static_cast<BYTE>(69999));
}

TEST(ArchiveCollections, LyingCounts)
{
    CDWordArray numbers;
    CStringList list;
    const Bytes lie("\xFF\xFF\xFE\xFF\xFF\xFF"
                    "12345678",
                    14);
    EXPECT_EQ(Load(lie, [&](CArchive& ar) { numbers.Serialize(ar); }), CArchiveException::endOfFile);
    EXPECT_EQ(Load(lie, [&](CArchive& ar) { list.Serialize(ar); }), CArchiveException::endOfFile);
    EXPECT_LT(numbers.GetSize(), 10000);
    const Bytes huge("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 14);
    EXPECT_EQ(Load(huge, [&](CArchive& ar) { numbers.Serialize(ar); }), CArchiveException::badIndex);
}
