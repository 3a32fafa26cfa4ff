#include "log/ErrorLog.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#endif

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>
#include <string>

#include "files/AppendToFile.h"
#include "files/FileDescriptor.h"
#include "files/Files.h"
#include "log/Treatments.h"
#include "support/ErrorLogRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

/// Not by testing::MatchesRegex, which knows no ranges of characters on Windows.
testing::AssertionResult Matches(const std::string& text, const char* pattern)
{
    if (std::regex_match(text, std::regex(pattern)))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << testing::PrintToString(text) << " doesn't match " << pattern;
}

/// Points the log at a folder of the test's own until the end of its scope.
class LogIn
{
public:
    explicit LogIn(const String& folder) : before_(ApplicationDataFolder) { ApplicationDataFolder = folder; }
    ~LogIn() { ApplicationDataFolder = before_; }
    LogIn(const LogIn&) = delete;
    LogIn& operator=(const LogIn&) = delete;

private:
    String before_;
};

}  // namespace

TEST(ErrorLog, EndsALineWithTheTimeAndCrLf)
{
    const ErrorLogRecorder log;

    WriteErrorLog(u"It went wrong");

    EXPECT_TRUE(Matches(log.Bytes(), "It went wrong- [0-9]+/[0-9]+/[0-9]+( [0-9]+:[0-9]+:[0-9]+)?\r\n"));
}

TEST(ErrorLog, KeepsEveryLineOfTheSameSecond)
{
    const ErrorLogRecorder log;

    WriteErrorLog(u"same");
    WriteErrorLog(u"same");

    EXPECT_THAT(log.Lines(), ElementsAre("same", "same"));
}

TEST(ErrorLog, LetsNoTextMakeLinesOfItsOwn)
{
    const ErrorLogRecorder log;

    const LoggedFile file(u"/a\u202Eb\n.pptx");
    WriteErrorLog(u"wrong\r\nforged \x1B[2J\u009B");

    EXPECT_THAT(log.LinesWithFiles(), ElementsAre("wrong\\r\\nforged \\x1B[2J\\u009B", "In file /a\\u202Eb\\n.pptx"));
}

TEST(ErrorLog, AppendsToWhatIsThere)
{
    const TemporaryFolder folder;
    const String log = folder.Write(u"Errors.Log", "an older line\r\n");
    const LogIn place(folder.Path());

    WriteErrorLog(u"new");

    EXPECT_TRUE(Matches(ContentOf(log), "an older line\r\nnew- [0-9/: ]+\r\n"));
}

TEST(ErrorLog, IsWrittenAsUtf8)
{
    const ErrorLogRecorder log;

    WriteErrorLog(u"schön 😀 שלום");

    EXPECT_THAT(log.Lines(), ElementsAre("schön 😀 שלום"));
}

TEST(ErrorLog, GivesBackTheBytesOfAForeignFileName)
{
    const ErrorLogRecorder log;

    WriteErrorLog(FromUtf8("caf\xE9"));

    EXPECT_THAT(log.Lines(), ElementsAre("caf\xE9"));
}

TEST(ErrorLog, LosesALineThatHasNoFolder)
{
    const TemporaryFolder folder;
    const LogIn place(folder.PathOf(u"missing"));

    WriteErrorLog(u"lost");

    EXPECT_FALSE(std::filesystem::exists(ToUtf8(folder.PathOf(u"missing"))));
}

TEST(ErrorLog, LosesALineToAFolderOfItsName)
{
    const TemporaryFolder folder;
    folder.MakeFolder(u"Errors.Log");
    const LogIn place(folder.Path());

    WriteErrorLog(u"lost");

    EXPECT_TRUE(std::filesystem::is_empty(ToUtf8(folder.PathOf(u"Errors.Log"))));
}

TEST(ErrorLog, WritesNothingBeforeItsFolderIsSettled)
{
    const LogIn place(u"");
    // What stands there may be anybody's; it only has to stay as it is.
    const std::string before = ContentOf(u"/Errors.Log");

    WriteErrorLog(u"lost");

    EXPECT_EQ(ContentOf(u"/Errors.Log"), before);
}

TEST(ErrorLog, NamesTheFileOfALineThatDoesNot)
{
    const ErrorLogRecorder log;
    {
        const LoggedFile outer(u"/list.txt");
        {
            const LoggedFile inner(u"/folder/a.pptx");
            WriteErrorLog(u"damaged");
            WriteErrorLog(u"Can't open \"/folder/a.pptx\"");
        }
        WriteErrorLog(u"second");
    }
    WriteErrorLog(u"third");

    EXPECT_THAT(log.LinesWithFiles(), ElementsAre("damaged", "In file /folder/a.pptx", "Can't open \"/folder/a.pptx\"",
                                                  "second", "In file /list.txt", "third"));
    EXPECT_THAT(log.Lines(), ElementsAre("damaged", "Can't open \"/folder/a.pptx\"", "second", "third"));
}

TEST(ErrorLog, BeginsAnewWhenItIsFullAndKeepsTheOneBefore)
{
    const ErrorLogRecorder log;
    const String old = ErrorLogPath() + u".old";
    WriteErrorLog(u"first");
    std::filesystem::resize_file(ToUtf8(ErrorLogPath()), ErrorLogLimit - 1);
    WriteErrorLog(u"second");
    EXPECT_FALSE(FileExists(old));

    WriteErrorLog(u"third");

    EXPECT_THAT(log.Lines(), ElementsAre("third"));
    EXPECT_THAT(ContentOf(old), AllOf(testing::StartsWith("first- "), testing::HasSubstr("second- ")));

    std::filesystem::resize_file(ToUtf8(ErrorLogPath()), ErrorLogLimit);
    WriteErrorLog(u"fourth");

    EXPECT_THAT(ContentOf(old), testing::StartsWith("third- "));
    EXPECT_THAT(log.Lines(), ElementsAre("fourth"));
}

// Links, pipes, modes, other users and the files that a process has open are different things on Windows.
#ifndef _WIN32

TEST(ErrorLog, DoesNotKeepTheFileOpen)
{
    const ErrorLogRecorder log;
    const auto openFiles = [] {
        const std::filesystem::directory_iterator entries("/proc/self/fd");
        return std::distance(begin(entries), end(entries));
    };
    const auto before = openFiles();

    WriteErrorLog(u"line");

    EXPECT_EQ(openFiles(), before);
}

TEST(ErrorLog, LosesALineOnAFullDiskAndGoesOn)
{
    const TemporaryFolder folder;
    std::filesystem::create_symlink("/dev/full", ToUtf8(folder.PathOf(u"Errors.Log")));
    const LogIn place(folder.Path());

    WriteErrorLog(u"lost");

    const int after = LogAndReturn({u"P", u"Module M"}, []() -> int { throw Failure(5, u"bad"); });
    EXPECT_EQ(after, 0);
}

TEST(ErrorLog, IsNeverAPipeALinkOrADevice)
{
    const TemporaryFolder folder;
    const String victim = folder.Write(u"victim", "old");
    const std::string log = ToUtf8(folder.PathOf(u"Errors.Log"));
    const LogIn place(folder.Path());
    const auto append = [] { return Skip([] { AppendToFile(ErrorLogPath(), "line", ErrorLogLimit); }); };

    ASSERT_EQ(mkfifo(log.c_str(), 0600), 0);
    EXPECT_EQ(append(), FailureNumber::PermissionDenied) << "a pipe without a reader";
    {
        const FileDescriptor reader(open(log.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
        EXPECT_EQ(append(), FailureNumber::PermissionDenied) << "a pipe with a reader";
        char byte = 0;
        EXPECT_EQ(read(reader.get(), &byte, 1), 0) << "nothing was written";
    }
    std::filesystem::remove(log);
    std::filesystem::create_symlink(ToUtf8(victim), log);
    EXPECT_EQ(append(), FailureNumber::PermissionDenied) << "a link";
    EXPECT_EQ(ContentOf(victim), "old");

    WriteErrorLog(u"line");
    EXPECT_TRUE(ErrorLogFailure()) << "for the batch program, which says so";
}

#endif

}  // namespace tessarine
