#include "shell/OpenDoc.h"

#include <gmock/gmock.h>

#include "OpeningTest.h"
#include "support/ErrorLogRecorder.h"
#include "support/qt/ShellRecorder.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class OpenDocTest : public OpeningTest
{
protected:
    ShellRecorder shell_;
};

TEST_F(OpenDocTest, OpensAFileAndLeavesTheErrorText)
{
    const String path = folder_.Write(u"a b.txt");

    EXPECT_EQ(Open(path), ShellResult::Opened);

    EXPECT_THAT(shell_.Opened(), ElementsAre(path));
    EXPECT_EQ(errorText_, u"as before");
}

TEST_F(OpenDocTest, OpensAFolder)
{
    EXPECT_EQ(Open(folder_.Path()), ShellResult::Opened);
}

TEST_F(OpenDocTest, TellsThatNoProgramOpensTheType)
{
    shell_.OpenerAnswers(31);

    EXPECT_EQ(Open(folder_.Write(u"a.unheard-of")), 31);

    EXPECT_EQ(errorText_, u"No association for file extension");
}

TEST_F(OpenDocTest, GivesAFailureForAnEmptyText)
{
    EXPECT_LT(Open(u""), 33);

    EXPECT_EQ(errorText_, u"File not found");
    EXPECT_THAT(shell_.Opened(), IsEmpty());
}

TEST_F(OpenDocTest, LogsAFailureOfAnotherKind)
{
    const ErrorLogRecorder log;

    EXPECT_EQ(Open(String(u"/a\0b", 4)), 0);

    ASSERT_EQ(log.Lines().size(), 1u);
    EXPECT_THAT(log.Lines().front(), testing::HasSubstr("in procedure OpenDoc at Line No. 0 of Module modShell"));
}

struct ErrorTextCase {
    std::int32_t code;
    String text;
};

class OpenDocErrorTexts : public testing::TestWithParam<ErrorTextCase>
{
};

TEST_P(OpenDocErrorTexts, HaveAWordingEach)
{
    const TemporaryFolder folder;
    ShellRecorder shell;
    shell.OpenerAnswers(GetParam().code);
    String errorText;

    EXPECT_EQ(OpenDoc(folder.Path(), errorText), GetParam().code);

    EXPECT_EQ(errorText, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Codes, OpenDocErrorTexts,
                         testing::Values(ErrorTextCase{0, u"Unknown error"}, ErrorTextCase{1, u"Unknown error"},
                                         ErrorTextCase{2, u"File not found"}, ErrorTextCase{3, u"Path not found"},
                                         ErrorTextCase{5, u"Access denied"}, ErrorTextCase{8, u"Out of memory"},
                                         ErrorTextCase{11, u"Invalid EXE file or error in EXE image"},
                                         ErrorTextCase{26, u"A sharing violation occurred"},
                                         ErrorTextCase{27, u"Incomplete or invalid file association"},
                                         ErrorTextCase{28, u"DDE Time out"},
                                         ErrorTextCase{29, u"DDE transaction failed"}, ErrorTextCase{30, u"DDE busy"},
                                         ErrorTextCase{31, u"No association for file extension"},
                                         ErrorTextCase{32, u"DLL not found"}),
                         [](const auto& code) { return std::to_string(code.param.code); });

TEST_F(OpenDocTest, OpensAnAddressAsItIs)
{
    OpenAddress(u"https://example.org/");

    EXPECT_THAT(shell_.Opened(), ElementsAre(u"https://example.org/"));
}

TEST_F(OpenDocTest, LeavesAnAddressToABrowserThatShowsIt)
{
    std::vector<String> shown;
    SetBrowser([&shown](const String& address) {
        shown.push_back(address);
        return true;
    });

    OpenAddress(u"https://example.org/");

    EXPECT_THAT(shown, ElementsAre(u"https://example.org/"));
    EXPECT_THAT(shell_.Opened(), IsEmpty());
}

}  // namespace
}  // namespace tessarine
