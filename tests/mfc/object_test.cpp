// Run-time class information and diagnostics.
#include <afxcoll.h>
#include <afxwin.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

// Named, for the extraction operators that the macros define need not be used.
namespace object_test
{

class Shape : public CObject
{
    DECLARE_DYNAMIC(Shape)
};

class Circle : public Shape
{
    DECLARE_DYNCREATE(Circle)

public:
    int m_radius = 7;

protected:
    Circle() = default;
};

class Disc : public Circle
{
    DECLARE_SERIAL(Disc)
};

class Costly : public CObject
{
    DECLARE_DYNCREATE(Costly)

public:
    Costly() { AfxThrowMemoryException(); }
};

IMPLEMENT_DYNAMIC(Shape, CObject)
IMPLEMENT_DYNCREATE(Circle, Shape)
IMPLEMENT_SERIAL(Disc, Circle, 3)
IMPLEMENT_DYNCREATE(Costly, CObject)

} // namespace object_test

using namespace object_test;

TEST(ObjectClass, DescribesItself)
{
    const CRuntimeClass* const disc = RUNTIME_CLASS(Disc);
    EXPECT_STREQ(disc->m_lpszClassName, "Disc");
    EXPECT_EQ(disc->m_nObjectSize, static_cast<int>(sizeof(Disc)));
    EXPECT_EQ(disc->m_wSchema, 3u);
    EXPECT_EQ(RUNTIME_CLASS(Circle)->m_wSchema, 0xFFFFu);
    EXPECT_EQ(RUNTIME_CLASS(Shape)->m_pfnCreateObject, nullptr);
    EXPECT_EQ(disc->m_pfnGetBaseClass(), RUNTIME_CLASS(Circle));
    EXPECT_TRUE(disc->IsDerivedFrom(RUNTIME_CLASS(CObject)));
    EXPECT_TRUE(disc->IsDerivedFrom(disc));
    EXPECT_FALSE(RUNTIME_CLASS(Shape)->IsDerivedFrom(disc));
    EXPECT_FALSE(disc->IsDerivedFrom(nullptr));
    // The base class lies in another module.
    EXPECT_TRUE(RUNTIME_CLASS(CStringArray)->IsDerivedFrom(RUNTIME_CLASS(CObject)));
}

TEST(ObjectClass, CreatesObjects)
{
    const std::unique_ptr<CObject> byClass(RUNTIME_CLASS(Circle)->CreateObject());
    ASSERT_NE(byClass, nullptr);
    EXPECT_EQ(byClass->GetRuntimeClass(), RUNTIME_CLASS(Circle));
    const std::unique_ptr<CObject> byName(CRuntimeClass::CreateObject(L"Disc"));
    ASSERT_NE(byName, nullptr);
    EXPECT_TRUE(byName->IsKindOf(RUNTIME_CLASS(Circle)));
    EXPECT_TRUE(byName->IsSerializable());
    EXPECT_FALSE(byClass->IsSerializable());

    EXPECT_EQ(RUNTIME_CLASS(Shape)->CreateObject(), nullptr);
    EXPECT_EQ(CRuntimeClass::CreateObject("no such class"), nullptr);
    EXPECT_EQ(RUNTIME_CLASS(Costly)->CreateObject(), nullptr); // memory is short
    EXPECT_EQ(CRuntimeClass::FromName("Disc"), RUNTIME_CLASS(Disc));
    EXPECT_EQ(CRuntimeClass::FromName(static_cast<LPCSTR>(nullptr)), nullptr);
}

TEST(ObjectClass, DownCasts)
{
    Disc disc;
    Shape* const shape = &disc;
    EXPECT_EQ(DYNAMIC_DOWNCAST(Circle, shape), &disc);
    EXPECT_EQ(DYNAMIC_DOWNCAST(CStringArray, shape), nullptr);
    EXPECT_EQ(DYNAMIC_DOWNCAST(Circle, static_cast<CObject*>(nullptr)), nullptr);
    EXPECT_EQ(STATIC_DOWNCAST(Disc, shape), &disc);
}

TEST(ObjectClass, RegistrationEndsWithTheModule)
{
    const HMODULE self = ::GetModuleHandle(nullptr);
    CRuntimeClass* const disc = RUNTIME_CLASS(Disc);
    ASSERT_EQ(CRuntimeClass::FromName("Disc"), disc);

    // A newcomer stands at the head of the list and so leads to every other class.
    static CRuntimeClass newcomer = {"Newcomer", 1, 0xFFFF, nullptr, nullptr, nullptr};
    AfxClassInit(&newcomer);
    std::vector<CRuntimeClass*> before;
    for (CRuntimeClass* each = newcomer.m_pNextClass; each != nullptr; each = each->m_pNextClass)
        before.push_back(each);
    afx_subset::RemoveClasses(self);
    EXPECT_EQ(CRuntimeClass::FromName("Disc"), nullptr);
    EXPECT_NE(CRuntimeClass::FromName("CStringArray"), nullptr); // the framework's stay
    AfxClassInit(disc);
    AfxClassInit(disc); // twice does no harm
    EXPECT_EQ(CRuntimeClass::FromName("Disc"), disc);

    // For the tests after this one; those that are still on the list stay as they are.
    std::for_each(before.rbegin(), before.rend(), AfxClassInit);
}

TEST(ObjectDiagnostics, AddressesAndStrings)
{
    int value = 0;
    static const wchar_t text[] = L"text";
    EXPECT_TRUE(AfxIsValidAddress(&value, sizeof(value)));
    EXPECT_FALSE(AfxIsValidAddress(nullptr, 1));
    EXPECT_FALSE(AfxIsValidAddress(reinterpret_cast<void*>(0x10), 4, FALSE));
    EXPECT_TRUE(AfxIsValidString(text));
    EXPECT_FALSE(AfxIsValidString(reinterpret_cast<LPCWSTR>(0x10)));

    // Text that runs into a page which cannot be read.
    auto* const pages = static_cast<char*>(::VirtualAlloc(nullptr, 8192, MEM_RESERVE, PAGE_NOACCESS));
    ASSERT_NE(::VirtualAlloc(pages, 4096, MEM_COMMIT, PAGE_READWRITE), nullptr);
    memset(pages, 'x', 4096);
    EXPECT_FALSE(AfxIsValidString(pages + 4000));
    pages[4095] = '\0';
    EXPECT_TRUE(AfxIsValidString(pages + 4000));
    EXPECT_FALSE(AfxIsValidAddress(pages, 8192));
    ::VirtualFree(pages, 0, MEM_RELEASE);
}

TEST(ObjectDiagnostics, DumpContextWritesToItsFile)
{
    CMemFile file;
    CDumpContext dump(&file);
    Disc disc;
    dump << "n=" << 3 << L" " << static_cast<const CObject*>(nullptr) << " ";
    dump << &disc;
    std::string text(static_cast<size_t>(file.GetLength()), '\0');
    file.SeekToBegin();
    file.Read(text.data(), static_cast<UINT>(text.size()));
    EXPECT_EQ(text.substr(0, 9), "n=3 NULL ");
    EXPECT_NE(text.find("Disc"), std::string::npos);
}
