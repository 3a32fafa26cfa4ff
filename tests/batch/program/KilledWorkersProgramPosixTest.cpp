#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "batch/program/ProgramPosix.h"
#include "FindAndReplaceProgramTest.h"
#include "support/PackageReader.h"

namespace tessarine::test
{
namespace
{

using testing::AnyOf;
using Json = nlohmann::json;

constexpr int deckCount = 150;

/// A replace run with three workers over many presentations, which a test watches and disturbs.
class KilledWorkersProgramTest : public FindAndReplaceProgramTest
{
protected:
    KilledWorkersProgramTest()
    {
        const std::string deck = Deck().Slide(Title(u"Fabrikam"), TextBox(String(2000, u'x'))).Bytes();
        for (int number = 0; number < deckCount; ++number)
            program.folder.Write(FromUtf8("set/" + std::to_string(1000 + number) + ".pptx"), deck);
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        report_ = ends[0];
        const int none = open("/dev/null", O_RDWR | O_CLOEXEC);
        process_ = Start(program,
                         {"replace", "--find", "Fabrikam", "--with", "Litware", "--jobs", "3", "--backup", "--format",
                          "json", "set"},
                         none, ends[1], none);
        close(none);
        close(ends[1]);
    }
    ~KilledWorkersProgramTest() override { close(report_); }

    std::vector<pid_t> Workers() const
    {
        std::vector<pid_t> workers;
        const std::string own = "/proc/" + std::to_string(process_) + "/task";
        std::error_code gone;
        for (const auto& thread : std::filesystem::directory_iterator(own, gone)) {
            std::ifstream children(thread.path() / "children");
            for (pid_t child = 0; children >> child;)
                workers.push_back(child);
        }
        return workers;
    }

    /// The next line of the report, without its end; empty at its end.
    std::string NextLine()
    {
        std::string line;
        for (char byte = 0; read(report_, &byte, 1) == 1 && byte != '\n';)
            line += byte;
        return line;
    }

    /// The lines from here to the end of the program.
    std::vector<Json> Rest()
    {
        std::vector<Json> lines;
        for (std::string line = NextLine(); !line.empty(); line = NextLine())
            lines.push_back(Json::parse(line));
        status_ = WaitFor(process_);
        return lines;
    }

    bool IsReplaced(const Json& line)
    {
        const String path = PathOf(FromUtf8(line.at("file").get<std::string>()));
        return TextOf(PackageReader::FromFile(NativePath(path)), 1, 1) == u"Litware";
    }

    pid_t process_ = 0;
    int report_ = -1;
    int status_ = -1;
};

TEST_F(KilledWorkersProgramTest, AreReplacedAndFailTheirFilesAlone)
{
    std::vector<Json> lines{Json::parse(NextLine())};
    std::size_t killed = 0;
    for (int round = 0; round < 5; ++round) {
        const std::vector<pid_t> workers = Workers();
        if (!workers.empty() && kill(workers.front(), SIGKILL) == 0)
            ++killed;
        lines.push_back(Json::parse(NextLine()));
    }
    for (Json& line : Rest())
        lines.push_back(std::move(line));

    ASSERT_EQ(lines.size(), deckCount + 1u);
    std::size_t failed = 0;
    for (int number = 0; number < deckCount; ++number) {
        const Json& line = lines[static_cast<std::size_t>(number)];
        EXPECT_EQ(line.at("file"), "set/" + std::to_string(1000 + number) + ".pptx");
        if (line.at("state") == "changed") {
            EXPECT_TRUE(IsReplaced(line)) << line;
            continue;
        }
        ++failed;
        // The other text: kills came so fast that no worker got as far as the file.
        EXPECT_THAT(
            line.at("error").get<std::string>(),
            AnyOf("The worker that had the file in hand ended (signal 9, Killed); the file is as it was, or changed "
                  "completely.",
                  "No worker lived to begin the file (signal 9, Killed)."));
        IsReplaced(line);  // it is whole, or this fails
    }
    EXPECT_LE(failed, killed);
    EXPECT_EQ(lines.back().at("summary").at("failed"), failed);
    EXPECT_EQ(status_, failed > 0 ? 1 : 0);
    for (const auto& entry : std::filesystem::directory_iterator(NativePath(PathOf(u"set"))))
        EXPECT_FALSE(entry.path().filename().string().starts_with(".tessarine-") && entry.path().extension() != "" &&
                     entry.path().filename() != ".tessarine-backups")
            << entry.path();
}

TEST_F(KilledWorkersProgramTest, DoNotOutliveTheirRun)
{
    NextLine();
    const std::vector<pid_t> workers = Workers();
    kill(process_, SIGKILL);
    WaitFor(process_);

    // The end of the report: nobody who could write it lives, as a worker's own output is not the report.
    for (const pid_t worker : workers) {
        std::string state = "R";
        while (!state.empty() && state != "Z") {
            state.clear();
            std::ifstream("/proc/" + std::to_string(worker) + "/stat").ignore(1024, ')') >> state;
        }
    }
    EXPECT_THAT(workers, testing::SizeIs(testing::Ge(1u)));
}

TEST_F(KilledWorkersProgramTest, ACancelLetsWhatIsInHandComeToItsEnd)
{
    NextLine();
    kill(process_, SIGINT);
    for (const pid_t worker : Workers())
        kill(worker, SIGINT);  // as a terminal sends it to all
    const std::vector<Json> lines = Rest();

    ASSERT_FALSE(lines.empty());
    const Json& summary = lines.back().at("summary");
    const int notProcessed = summary.value("notProcessed", 0);
    EXPECT_EQ(summary.at("failed"), 0);
    EXPECT_EQ(summary.at("files"), deckCount - notProcessed);
    EXPECT_EQ(summary.at("changed"), deckCount - notProcessed);
    EXPECT_EQ(lines.size(), static_cast<std::size_t>(deckCount - notProcessed));
    EXPECT_EQ(status_, notProcessed > 0 ? 1 : 0);
    // What no report names was not begun.
    for (int number = deckCount - notProcessed; number < deckCount; ++number)
        EXPECT_FALSE(IsReplaced({{"file", "set/" + std::to_string(1000 + number) + ".pptx"}})) << number;
}

}  // namespace
}  // namespace tessarine::test
