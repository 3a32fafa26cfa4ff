#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/program/ProgramPosix.h"
#include "support/Deck.h"

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;
using testing::Not;

/// Runs the program on a terminal of its own and gives all that the terminal was sent.
std::string OnATerminal(Program& program, const std::vector<std::string>& arguments)
{
    int master = -1;
    int slave = -1;
    const winsize size{24, 40, 0, 0};
    if (openpty(&master, &slave, nullptr, nullptr, &size) != 0)
        throw std::runtime_error("no terminal to be had");
    fcntl(master, F_SETFD, FD_CLOEXEC);
    const pid_t process = Start(program, arguments, slave, slave, slave);
    close(slave);
    const std::string shown = ReadAll(master);
    WaitFor(process);
    close(master);
    return shown;
}

TEST(TerminalProgramTest, ATerminalShowsProgressInOneLineAndColors)
{
    Program program;
    program.folder.Write(u"a.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());

    EXPECT_EQ(OnATerminal(program, {"find", "--find", "Fabrikam", "a.pptx"}),
              "\r\x1b[K[1/1] 0% a.pptx"
              "\r\x1b[K\x1b[1ma.pptx\x1b[0m: \x1b[32m1 found\x1b[0m\r\n"
              "    \"Fabrikam\"  slides 1\r\n"
              "\r\n"
              "1 file: 1 with hits, 0 without, 0 failed; 1 occurrence found\r\n");
}

TEST(TerminalProgramTest, ProgressIsCutToTheWidthOfTheTerminal)
{
    Program program;
    const std::string name = "a folder with quite a long name/a file with a long name too.pptx";
    program.folder.Write(FromUtf8(name), Deck().Slide(Title(u"x")).Bytes());

    EXPECT_THAT(OnATerminal(program, {"find", "--find", "y", name}),
                HasSubstr("\x1b[K[1/1] 0% ...e with a long name too.pptx\r"));
}

TEST(TerminalProgramTest, ATerminalShowsHitsInColors)
{
    Program program;
    program.folder.Write(u"a.pptx", Deck().Slide(TextBox(u"ask Fabrikam")).Bytes());
    const std::string place = "    \x1b[36mslide 1, shape 1 \"TextBox 1\", paragraph 1\x1b[0m: ask ";

    EXPECT_THAT(OnATerminal(program, {"find", "--find", "Fabrikam", "--show", "a.pptx"}),
                HasSubstr(place + "\x1b[1;31mFabrikam\x1b[0m\r\n"));
    EXPECT_THAT(OnATerminal(program, {"replace", "--find", "Fabrikam", "--with", "Contoso", "--show", "a.pptx"}),
                HasSubstr(place + "\x1b[9;31mFabrikam\x1b[0m\x1b[1;32mContoso\x1b[0m\r\n"));
}

TEST(TerminalProgramTest, NoColorAndDumbTerminalsAreRespected)
{
    Program program;
    program.folder.Write(u"a.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());

    program.environment["NO_COLOR"] = "1";
    EXPECT_THAT(OnATerminal(program, {"find", "--find", "Fabrikam", "a.pptx"}), Not(HasSubstr("\x1b[1m")));

    program.environment.erase("NO_COLOR");
    program.environment["TERM"] = "dumb";
    EXPECT_THAT(OnATerminal(program, {"find", "--find", "Fabrikam", "a.pptx"}), Not(HasSubstr("\x1b")));
}

TEST(TerminalProgramTest, TheCallDecidesAboutColorsBeforeTheEnvironment)
{
    Program program;
    program.folder.Write(u"a.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());
    const std::vector<std::string> find{"find", "--find", "Fabrikam", "a.pptx", "--color"};
    const auto with = [&](const std::string& when) {
        auto arguments = find;
        arguments.push_back(when);
        return arguments;
    };

    EXPECT_THAT(OnATerminal(program, with("never")), Not(HasSubstr("\x1b[1m")));
    EXPECT_THAT(program.Run(with("auto")).output, Not(HasSubstr("\x1b")));
    program.environment["NO_COLOR"] = "1";
    EXPECT_THAT(program.Run(with("always")).output, HasSubstr("\x1b[1ma.pptx\x1b[0m: "));
}

TEST(TerminalProgramTest, AQuietRunLeavesTheTerminalAlone)
{
    Program program;
    program.folder.Write(u"a.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());

    EXPECT_EQ(OnATerminal(program, {"find", "-q", "--find", "Fabrikam", "a.pptx"}), "");
    EXPECT_EQ(OnATerminal(program, {"find", "-q", "--find", "Fabrikam", "a.pptx", "b.pptx"}),
              "\x1b[1mb.pptx\x1b[0m: \x1b[31mfailed\x1b[0m: File not found.\r\n");
}

TEST(TerminalProgramTest, NamesCanNotDriveTheTerminal)
{
    Program program;
    program.environment["NO_COLOR"] = "1";
    const std::string name = "a\x1b[2J\r\n.pptx";
    program.folder.Write(FromUtf8(name), Deck().Slide(Title(u"Fabrikam")).Bytes());
    program.folder.Write(u"list", name + '\0' + "lost\a.pptx" + '\0');

    const std::string shown = OnATerminal(program, {"find", "--find", "Fabrikam", "-0", "--files-from", "list"});

    EXPECT_THAT(shown, HasSubstr("a\\x1B[2J\\r\\n.pptx: 1 found\r\n"));
    EXPECT_THAT(shown, HasSubstr("lost\\x07.pptx: failed: File not found.\r\n"));
    EXPECT_THAT(shown, Not(HasSubstr("\x1b[2J")));
    EXPECT_THAT(shown, Not(HasSubstr("\a")));
}

/// A run whose report goes into a pipe that nobody reads yet, so that it stands still in the middle.
class StoppedRunTest : public testing::Test
{
protected:
    StoppedRunTest()
    {
        for (int number = 0; number < fileCount; ++number)
            program.folder.Write(FromUtf8("decks/" + std::to_string(number) + ".pptx"),
                                 Deck().Slide(Title(u"Fabrikam")).Bytes());
        EXPECT_EQ(pipe2(pipe_, O_CLOEXEC), 0);
        EXPECT_GE(fcntl(pipe_[1], F_SETPIPE_SZ, 4096), 4096);
        error_ = open(ToUtf8(program.folder.Write(u".error", "")).c_str(), O_RDWR | O_CLOEXEC);
        process_ = Start(program, {"find", "--find", "Fabrikam", "--format", "json", "--report", "kept.csv", "decks"},
                         error_, pipe_[1], error_);
        close(pipe_[1]);
        WaitUntilThePipeIsFull();
    }

    ~StoppedRunTest() override
    {
        close(pipe_[0]);
        close(error_);
    }

    void WaitUntilThePipeIsFull() const
    {
        constexpr int nearlyFull = 4096 - 200;  // less than a line's room
        for (int held = 0; held < nearlyFull; poll(nullptr, 0, 1))
            ASSERT_EQ(ioctl(pipe_[0], FIONREAD, &held), 0);
    }

    static constexpr int fileCount = 200;
    Program program;
    int pipe_[2] = {-1, -1};
    int error_ = -1;
    pid_t process_ = -1;
};

TEST_F(StoppedRunTest, TheFirstInterruptStopsBeforeTheNextFile)
{
    kill(process_, SIGINT);
    const std::string output = ReadAll(pipe_[0]);
    const int status = WaitFor(process_);

    const auto lines = std::count(output.begin(), output.end(), '\n');
    EXPECT_LT(lines, fileCount);
    EXPECT_THAT(output, HasSubstr("{\"version\":1,\"summary\":{\"files\":" + std::to_string(lines - 1) +
                                  ",\"changed\":" + std::to_string(lines - 1) + ","));
    EXPECT_EQ(ContentOf(program.folder.PathOf(u".error")),
              "tessarine-batch: cancelled; " + std::to_string(fileCount - lines + 1) + " files were not processed\n");
    EXPECT_EQ(status, 1);
}

TEST_F(StoppedRunTest, KeepsAReportOfTheFilesThatItReached)
{
    kill(process_, SIGINT);
    const std::string output = ReadAll(pipe_[0]);
    WaitFor(process_);

    const auto reached = std::count(output.begin(), output.end(), '\n') - 1;
    const std::string table = ContentOf(program.folder.PathOf(u"kept.csv"));
    // A head, a row for the one hit of each file, and the note.
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), reached + 2);
    EXPECT_THAT(table, HasSubstr("\"The run was cancelled. Files that were not processed: " +
                                 std::to_string(fileCount - reached) + "\"\r\n"));
}

TEST_F(StoppedRunTest, TerminationStopsInTheSameWay)
{
    kill(process_, SIGTERM);
    const std::string output = ReadAll(pipe_[0]);

    const auto lines = std::count(output.begin(), output.end(), '\n');
    EXPECT_THAT(output, HasSubstr("\"summary\":{\"files\":" + std::to_string(lines - 1) + ","));
    EXPECT_THAT(output, HasSubstr(",\"notProcessed\":" + std::to_string(fileCount - lines + 1) + ","));
    EXPECT_EQ(WaitFor(process_), 1);
    EXPECT_EQ(ContentOf(program.folder.PathOf(u".error")),
              "tessarine-batch: cancelled; " + std::to_string(fileCount - lines + 1) + " files were not processed\n");
}

TEST_F(StoppedRunTest, TheSecondInterruptEndsAtOnce)
{
    // Two signals sent at once may become one, so they are sent until the process has gone.
    int status = 0;
    while (waitpid(process_, &status, WNOHANG) == 0) {
        kill(process_, SIGINT);
        poll(nullptr, 0, 1);
    }

    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 130);
    EXPECT_EQ(ContentOf(program.folder.PathOf(u".error")), "tessarine-batch: ended at once\n");
    EXPECT_THAT(ReadAll(pipe_[0]), Not(HasSubstr("summary")));
    for (const auto& entry : std::filesystem::directory_iterator(ToUtf8(program.folder.Path())))
        EXPECT_THAT(entry.path().filename().string(), testing::AnyOf("decks", ".data", ".error"));
}

}  // namespace
}  // namespace tessarine::test
