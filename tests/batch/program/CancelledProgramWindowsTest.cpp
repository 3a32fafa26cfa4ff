#include <algorithm>
#include <filesystem>
#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/program/ProgramWindows.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"
#include "support/Deck.h"

namespace tessarine::test
{
namespace
{

using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using ControlEvent = RunningProgram::ControlEvent;
using Sending = RunningProgram::Sending;

constexpr unsigned long patience = 60'000;  // milliseconds

/// A replace whose report goes into a pipe that nobody reads yet, so that it stands still in the middle.
class CancelledProgramTest : public testing::TestWithParam<ControlEvent>
{
protected:
    CancelledProgramTest()
    {
        for (int number = 0; number < fileCount; ++number)
            program.folder.Write(Name(number), before);
        program.folder.Write(u".error", "");
        const FileDescriptor error = OpenStream(program.folder.PathOf(u".error"), GENERIC_WRITE);
        process.emplace(
            program,
            std::vector<std::string>{"replace", "--find", "Fabrikam", "--with", "Contoso", "--format", "json", "decks"},
            Streams{NoFile, pipe.writer(), error.get()}, RunningProgram::Console::Own);
        pipe.CloseWriter();
    }

    static String Name(int number) { return FromUtf8("decks/" + std::to_string(1000 + number) + ".pptx"); }

    std::string Error() const { return ContentOf(program.folder.PathOf(u".error")); }

    void WaitUntilThePipeIsFull() const
    {
        while (pipe.Held() < capacity - 200)  // less than a line's room
            Sleep(1);
    }

    std::vector<std::string> NewFiles() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(NativePath(program.folder.PathOf(u"decks"))))
            if (std::string name = ToUtf8(PathText(entry.path().filename().native())); !name.ends_with(".pptx"))
                names.push_back(std::move(name));
        return names;
    }

    static constexpr int fileCount = 300;
    static constexpr unsigned long capacity = 1024;
    const std::string before = Deck().Slide(Title(u"Fabrikam")).Bytes();
    Program program;
    NarrowPipe pipe{capacity};
    std::optional<RunningProgram> process;
};

TEST_P(CancelledProgramTest, TheFirstEventStopsBeforeTheNextFile)
{
    WaitUntilThePipeIsFull();
    const Sending sending = process->Send(GetParam());
    if (GetParam() == ControlEvent::CtrlBreak && sending == Sending::Refused)
        GTEST_SKIP() << "the system sends no Ctrl-Break";
    ASSERT_EQ(sending, Sending::Done);

    // The event arrives some time after it was sent. The run can't get far until then: it takes a file for each line
    // that is read here.
    std::string last;
    int lines = 0;
    for (std::string line; line = pipe.ReadLine(), !line.empty(); ++lines) {
        last = line;
        Sleep(10);
    }
    const int status = process->WaitFor();

    const int done = lines - 1;
    EXPECT_GT(done, 0);
    EXPECT_LT(done, fileCount);
    EXPECT_THAT(last, StartsWith(R"({"version":1,"summary":{"engine":"builtin","files":)" + std::to_string(done) +
                                 R"(,"changed":)" + std::to_string(done) + ","));
    EXPECT_EQ(Error(),
              "tessarine-batch: cancelled; " + std::to_string(fileCount - done) + " files were not processed\n");
    EXPECT_EQ(status, 1);
    for (int number = 0; number < fileCount; ++number)
        EXPECT_EQ(ContentOf(program.folder.PathOf(Name(number))) != before, number < done) << number;
    EXPECT_THAT(NewFiles(), IsEmpty());
}

TEST_P(CancelledProgramTest, TheSecondEventEndsAtOnce)
{
    WaitUntilThePipeIsFull();

    // Sent until the process has gone: of two that come at once one may get lost.
    while (!process->HasEnded()) {
        const Sending sending = process->Send(GetParam());
        if (GetParam() == ControlEvent::CtrlBreak && sending == Sending::Refused)
            GTEST_SKIP() << "the system sends no Ctrl-Break";
        // A process that is about to go may have no console any more.
        ASSERT_TRUE(sending == Sending::Done || process->HasEnded(patience));
    }

    EXPECT_EQ(process->WaitFor(), 130);
    EXPECT_EQ(Error(), "tessarine-batch: ended at once\n");
    EXPECT_THAT(pipe.ReadAll(), Not(HasSubstr("summary")));
    EXPECT_THAT(NewFiles(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Program, CancelledProgramTest, testing::Values(ControlEvent::CtrlC, ControlEvent::CtrlBreak),
                         [](const auto& test) { return test.param == ControlEvent::CtrlC ? "CtrlC" : "CtrlBreak"; });

/// The same while files are in work, rather than between two of them.
TEST(CancelledInAFile, LeavesEachFileOldOrNewAndNothingElse)
{
    Program program;
    const std::string before = Deck().Slide(Title(u"Fabrikam")).Media("x.bin", 3'000'000, 1).Bytes();
    constexpr int fileCount = 8;
    for (int number = 0; number < fileCount; ++number)
        program.folder.Write(FromUtf8("decks/" + std::to_string(number) + ".pptx"), before);
    program.folder.Write(u"whole/a.pptx", before);
    ASSERT_EQ(program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "whole"}).status, 0);
    const std::string after = ContentOf(program.folder.PathOf(u"whole/a.pptx"));
    ASSERT_NE(after, before);
    program.folder.Write(u".error", "");
    const FileDescriptor error = OpenStream(program.folder.PathOf(u".error"), GENERIC_WRITE);
    const RunningProgram process(program, {"replace", "--find", "Fabrikam", "--with", "Contoso", "decks"},
                                 {NoFile, error.get(), error.get()}, RunningProgram::Console::Own);

    while (!process.HasEnded()) {
        const Sending sending = process.Send(ControlEvent::CtrlC);
        ASSERT_TRUE(sending == Sending::Done || process.HasEnded(patience));
    }

    // Where the events come late, the run has got to its end.
    EXPECT_THAT(process.WaitFor(), AnyOf(0, 1, 130));
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(NativePath(program.folder.PathOf(u"decks")))) {
        const String path = PathText(entry.path().native());
        EXPECT_EQ(entry.path().extension(), ".pptx") << ToUtf8(path);
        const std::string content = ContentOf(path);
        EXPECT_TRUE(content == before || content == after) << ToUtf8(path);
        ++files;
    }
    EXPECT_EQ(files, fileCount);
}

}  // namespace
}  // namespace tessarine::test
