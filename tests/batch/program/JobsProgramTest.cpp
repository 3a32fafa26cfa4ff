#include <fstream>
#include <sstream>

#include <gmock/gmock.h>

#include "FindAndReplaceProgramTest.h"
#include "support/PackageReader.h"

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;

/// Twenty presentations in two folders, one of which can't be read, and all else that a report tells.
class JobsProgramTest : public FindAndReplaceProgramTest
{
protected:
    JobsProgramTest() { WriteAll(); }

    void WriteAll()
    {
        for (int number = 1; number <= 20; ++number) {
            const String name = FromUtf8((number % 2 == 0 ? "set/even/" : "set/odd/") + std::to_string(number));
            Write(name + u".pptx",
                  Deck()
                      .Slide(Title(u"Fabrikam " + FromUtf8(std::to_string(number))), TextBox(u"About Fabrikam \u05D0"))
                      .Slide(Title(u"Contoso"), NotesPage(u"Fabrikam and Fabrikam")));
        }
        program.folder.Write(u"set/even/9 damaged.pptx", "PK but no package");
    }

    Outcome Run(std::vector<std::string> arguments, const std::string& jobs, const std::string& input = {})
    {
        arguments.insert(arguments.end(), {"--jobs", jobs});
        return program.Run(arguments, input);
    }

    /// What a call says of the set, with one worker; with several it must say the same.
    std::string SameWithAnyNumber(const std::vector<std::string>& arguments, const std::string& input = {})
    {
        const Outcome one = Run(arguments, "1", input);
        for (const std::string jobs : {"2", "5", "0"}) {
            WriteAll();
            const Outcome several = Run(arguments, jobs, input);
            EXPECT_EQ(WithoutTime(several.output), WithoutTime(one.output)) << jobs;
            EXPECT_EQ(several.error, one.error) << jobs;
            EXPECT_EQ(several.status, one.status) << jobs;
        }
        return one.output;
    }

    std::string Kept() const
    {
        std::ostringstream content;
        content << std::ifstream(std::filesystem::path(NativePath(PathOf(u"kept.csv"))), std::ios::binary).rdbuf();
        return content.str();
    }

    /// The last line of a text report ends in how long the run took.
    static std::string WithoutTime(const std::string& output) { return output.substr(0, output.rfind(", in ")); }
};

TEST_F(JobsProgramTest, ReportAsOneDoes)
{
    EXPECT_THAT(SameWithAnyNumber({"find", "--find", "Fabrikam", "--find", "contoso", "-r", "--verbose", "set"}),
                HasSubstr("100 occurrences found"));
    EXPECT_THAT(SameWithAnyNumber({"find", "--find", "Fabrikam", "--show", "-r", "--format", "json", "set"}),
                HasSubstr(R"("occurrences":80)"));
    EXPECT_THAT(SameWithAnyNumber({"find", "--find", "Fabrikam", "--show", "--max-hits", "1", "-r", "set"}),
                HasSubstr("more"));
    EXPECT_THAT(SameWithAnyNumber({"find", "--find", "nowhere", "-r", "--exit-code", "set/odd"}), HasSubstr("0 occ"));
}

TEST_F(JobsProgramTest, ReplaceAsOneDoes)
{
    EXPECT_THAT(SameWithAnyNumber(
                    {"replace", "--find", "Fabrikam", "--with", "Litware", "-r", "--show", "--format", "json", "set"}),
                HasSubstr(R"("changed":20)"));

    const auto deck = PackageReader::FromFile(NativePath(PathOf(u"set/even/20.pptx")));
    EXPECT_EQ(TextOf(deck, 1, 2), u"About Litware \u05D0");
}

TEST_F(JobsProgramTest, MakeTheBackupsOfAll)
{
    const Outcome outcome = Run({"replace", "--find", "Fabrikam", "--with", "Litware", "-r", "--backup", "set"}, "3");

    EXPECT_THAT(outcome.output, HasSubstr("20 changed"));
    EXPECT_THAT(program.Run({"restore", "-r", "set"}).output, HasSubstr("20 restored"));
    EXPECT_THAT(program.Run({"find", "--find", "Litware", "-r", "set"}).output, HasSubstr("0 with hits"));
}

TEST_F(JobsProgramTest, TakePairsOfStandardInputAndOfAList)
{
    EXPECT_THAT(
        SameWithAnyNumber({"find", "--pairs", "-", "-r", "--format", "json", "set"}, "Fabrikam\tx\nContoso\ty\n"),
        HasSubstr(R"("occurrences":100)"));

    program.folder.Write(u"pairs.csv", "find,replace\nFabrikam,Litware\n");
    EXPECT_THAT(SameWithAnyNumber({"replace", "--pairs", "pairs.csv", "-r", "set"}), HasSubstr("20 changed"));
}

TEST_F(JobsProgramTest, RunSavedJobs)
{
    program.Run({"job", "make", "--find", "Fabrikam", "--with", "Litware", "-r", "-o", "job.tsq", "set"});

    EXPECT_THAT(SameWithAnyNumber({"run", "job.tsq", "--format", "json"}), HasSubstr(R"("occurrences":80)"));
    EXPECT_THAT(SameWithAnyNumber({"run", "job.tsq", "--replace", "--dry-run"}), HasSubstr("20 "));
}

TEST_F(JobsProgramTest, KeepReports)
{
    const Outcome outcome = Run({"find", "--find", "Fabrikam", "-r", "--report", "kept.csv", "set"}, "2");
    const std::string kept = Kept();
    Run({"find", "--find", "Fabrikam", "-r", "--report", "kept.csv", "set"}, "1");

    EXPECT_THAT(outcome.output, HasSubstr("20 with hits"));
    EXPECT_EQ(kept, Kept());
}

TEST_F(JobsProgramTest, RefuseACallAsOneDoes)
{
    const Outcome outcome = Run({"find", "--list", "missing.csv", "-r", "set"}, "2");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.error, Run({"find", "--list", "missing.csv", "-r", "set"}, "1").error);

    EXPECT_EQ(Run({"find", "--find", "a", "set"}, "many").error,
              "tessarine-batch: --jobs: \"many\" is not a whole number from 0 to 256\n");
    EXPECT_EQ(Run({"find", "--find", "a", "set"}, "257").status, 2);
    EXPECT_EQ(program.Run({"restore", "--jobs", "2", "set"}).status, 2);
}

TEST_F(JobsProgramTest, AWorkerWithoutARunEndsAtOnce)
{
    EXPECT_EQ(program.Run({"--worker", "find", "--find", "Fabrikam", "set"}).status, 2);
    EXPECT_EQ(program.Run({"--worker", "nonsense"}).status, 2);
}

}  // namespace
}  // namespace tessarine::test
