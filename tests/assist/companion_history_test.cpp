#include "tests/assist/companion_fixture.h"
#include "vgui/assist/host_paths.h"

#include <gtest/gtest.h>

using namespace support;

namespace
{

class CompanionHistory : public CompanionTest
{
protected:
    // Where the dialog comes up with this history file.
    CRect PlaceWith(const std::string& history)
    {
        if (!history.empty())
            files.WriteHistory(history);
        const NamedEvent seen;
        const CompanionServer server({L"wait", seen.Name()});
        CompanionCall call(server.Arguments());
        const HWND dialog = call.Dialog();
        CRect place;
        ::GetWindowRect(dialog, place);
        seen.Set();
        call.Result();
        return place;
    }
    // What the file must hold for a place.
    static std::string Record(const CRect& place)
    {
        std::string text;
        for (const long number : {place.left, place.top, long{place.Width()}, long{place.Height()}})
            text += std::to_string(number) + "\r\n";
        return text;
    }
};

} // namespace

TEST_F(CompanionHistory, KeepsThePlaceFromOneCallToTheNext)
{
    const CRect first = PlaceWith("");
    EXPECT_EQ(FileBytes(files.History()), Record(first));
    const CRect wanted(CPoint(40, 60), first.Size() + CSize(30, 20));
    EXPECT_EQ(PlaceWith(Record(wanted)), wanted);
    EXPECT_EQ(PlaceWith(""), wanted);
    EXPECT_EQ(FileBytes(files.History()), Record(wanted));
}

TEST_F(CompanionHistory, UsesWhatMakesSense)
{
    const CRect usual = PlaceWith("");
    const CRect moved(CPoint(40, 60), usual.Size());
    struct Case {
        std::string history;
        CRect place;
    };
    for (const Case& c : {
             Case{"40\n60\n5\n5", moved}, // it does not shrink
             Case{"40\r\n60\r\n\r\nwide", moved},
             Case{"40\r\n", usual},
             Case{"forty\r\n60\r\n500\r\n300\r\n", usual},
             Case{"\r\n40\r\n60\r\n500\r\n", usual},
             Case{"40\r\n60\r\n50000\r\n300\r\n", usual},
             Case{"-300\r\n60\r\n500\r\n300\r\n", usual},
             Case{"99999999999999999999\r\n60\r\n500\r\n300\r\n", usual},
             Case{std::string(100000, '7'), usual},
         })
        EXPECT_EQ(Record(PlaceWith(c.history)), Record(c.place)) << c.history.substr(0, 40);
}

TEST_F(CompanionHistory, LiesInTheFolderAboveTheProgramsUnlessTheHostHasAnother)
{
    EXPECT_EQ(VGHostRoot().GetString(), files.History().parent_path().parent_path());
    VGSetHostRoot(nullptr);
    wchar_t program[MAX_PATH];
    ::GetModuleFileNameW(nullptr, program, MAX_PATH);
    EXPECT_EQ(VGHostRoot().GetString(), std::filesystem::path(program).parent_path().parent_path());
}
