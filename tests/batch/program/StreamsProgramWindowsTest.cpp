#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/program/ProgramWindows.h"
#include "platform/WindowsHeaders.h"
#include "support/Deck.h"

// Reports that can't be written, and a program that is started without its standard streams.

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;

class StreamsProgramTest : public testing::Test
{
protected:
    StreamsProgramTest()
    {
        for (const char16_t* name : {u"a.pptx", u"b.pptx", u"c.pptx"})
            program.folder.Write(name, before);
        error = OpenStream(program.folder.Write(u".error", ""), GENERIC_WRITE);
    }

    int Replace(NativeFile output) const
    {
        return RunningProgram(program, {"replace", "--find", "Fabrikam", "--with", "Contoso", "."},
                              {NoFile, output, error.get()})
            .WaitFor();
    }

    std::string Content(StringView name) const { return ContentOf(program.folder.PathOf(name)); }

    const std::string before = Deck().Slide(Title(u"Fabrikam")).Bytes();
    Program program;
    FileDescriptor error;
};

TEST_F(StreamsProgramTest, AnUnwritableReportShowsInTheExitStatus)
{
    const FileDescriptor readable = OpenStream(program.folder.Write(u".output", "as it was"), GENERIC_READ);

    EXPECT_EQ(Replace(readable.get()), 1);

    EXPECT_EQ(Content(u".error"), "tessarine-batch: the report could not be written completely\n");
    EXPECT_EQ(Content(u".output"), "as it was");
    EXPECT_NE(Content(u"c.pptx"), before);
}

TEST_F(StreamsProgramTest, AReportThatNobodyReadsDoesNotEndTheRun)
{
    NarrowPipe pipe(64);
    pipe.CloseReader();

    EXPECT_EQ(Replace(pipe.writer()), 1);

    EXPECT_EQ(Content(u".error"), "tessarine-batch: the report could not be written completely\n");
    EXPECT_NE(Content(u"c.pptx"), before);
}

TEST_F(StreamsProgramTest, WithoutStandardStreamsTheFilesAreChangedAllTheSame)
{
    const int status =
        RunningProgram(program, {"replace", "--find", "Fabrikam", "--with", "Contoso", "."}, {}).WaitFor();

    EXPECT_EQ(status, 1) << "its report went nowhere";
    for (const char16_t* name : {u"a.pptx", u"b.pptx", u"c.pptx"})
        EXPECT_THAT(program.Run({"find", "--find", "Contoso", ToUtf8(name)}).output, HasSubstr("1 with hits"));
}

}  // namespace
}  // namespace tessarine::test
