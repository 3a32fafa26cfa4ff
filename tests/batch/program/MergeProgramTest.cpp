#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "FindAndReplaceProgramTest.h"

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// Eight presentations and a damaged one, and the reports of three shards of a replace over them.
class MergeProgramTest : public FindAndReplaceProgramTest
{
protected:
    MergeProgramTest()
    {
        WriteAll();
        whole =
            program.Run({"replace", "--find", "Fabrikam", "--with", "Litware", "--show", "--format", "json", "set"});
        WriteAll();
        for (int shard = 1; shard <= 3; ++shard)
            WriteShard(shard);
    }

    void WriteAll()
    {
        for (int number = 1; number <= 8; ++number)
            Write(u"set/" + FromUtf8(std::to_string(number)) + u".pptx",
                  Deck().Slide(Title(u"Fabrikam " + FromUtf8(std::to_string(number)))));
        program.folder.Write(u"set/4 damaged.pptx", "PK but no package");
    }

    static std::string NameOf(int shard) { return std::to_string(shard) + ".json"; }

    void WriteShard(int shard, const std::string& find = "Fabrikam")
    {
        Keep(NameOf(shard), program
                                .Run({"replace", "--find", find, "--with", "Litware", "--show", "--format", "json",
                                      "--shard", std::to_string(shard) + "/3", "set"})
                                .output);
    }

    void Keep(const std::string& name, const std::string& content) { program.folder.Write(FromUtf8(name), content); }

    std::string ContentOf(const std::string& name) const
    {
        std::ostringstream content;
        content << std::ifstream(std::filesystem::path(NativePath(PathOf(FromUtf8(name)))), std::ios::binary).rdbuf();
        return content.str();
    }

    Outcome Merge(const std::vector<std::string>& reports, const std::vector<std::string>& more = {"--format", "json"})
    {
        std::vector<std::string> call{"report", "merge", "--show"};
        call.insert(call.end(), more.begin(), more.end());
        call.insert(call.end(), reports.begin(), reports.end());
        return program.Run(call);
    }

    /// The error of a call that is refused.
    std::string Refused(const std::vector<std::string>& reports)
    {
        const Outcome outcome = Merge(reports);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.output, IsEmpty());
        return outcome.error;
    }

    Outcome whole;  ///< One run over all of them.
};

TEST_F(MergeProgramTest, ShardsMakeTheReportOfOneRun)
{
    const Outcome merged = Merge({"3.json", "1.json", "2.json"});

    EXPECT_EQ(merged.output, whole.output);
    EXPECT_EQ(merged.error, "");
    EXPECT_EQ(merged.status, 1) << "a file failed";
}

TEST_F(MergeProgramTest, WordsThemAsAnyReport)
{
    const Outcome merged = Merge({"1.json", "2.json", "3.json"}, {"--report", "all.csv"});

    EXPECT_THAT(merged.output, HasSubstr(Native("set/1.pptx: changed, 1 replaced\n")));
    EXPECT_THAT(merged.output, HasSubstr(Native("set/4 damaged.pptx: failed: ")));
    EXPECT_THAT(merged.output, HasSubstr("9 files: 8 changed, 0 unchanged, 1 failed; 8 occurrences replaced\n"));
    EXPECT_THAT(ContentOf("all.csv"), HasSubstr(Native("set/8.pptx")));
}

TEST_F(MergeProgramTest, TellsWhatShardIsMissing)
{
    const Outcome merged = Merge({"1.json", "3.json"});

    EXPECT_EQ(merged.status, 1);
    EXPECT_THAT(merged.error, StartsWith("tessarine-batch: shard 2 of 3 is missing, or its report ends early\n"));
    EXPECT_THAT(merged.error, HasSubstr(" of the job "));
    EXPECT_THAT(merged.output, HasSubstr(R"("notProcessed":)"));
}

TEST_F(MergeProgramTest, TellsWhatShardIsThereTwice)
{
    WriteAll();
    Keep("again.json", ContentOf("2.json"));

    const Outcome merged = Merge({"1.json", "2.json", "3.json", "again.json"});

    EXPECT_EQ(merged.status, 1);
    EXPECT_EQ(merged.error,
              "tessarine-batch: shard 2 of 3 is there twice, in \"2.json\" and \"again.json\"; the first is taken\n");
    EXPECT_EQ(merged.output, whole.output);
}

TEST_F(MergeProgramTest, TakesTheWholeReportOfAShardThatWasKilledOnce)
{
    const std::string whole1 = ContentOf("1.json");
    for (const std::size_t length : {std::size_t{0}, std::size_t{40}, whole1.find('\n') + 1, whole1.find('\n') + 30}) {
        Keep("killed.json", whole1.substr(0, length));

        const Outcome merged = Merge({"killed.json", "3.json", "1.json", "2.json"});

        EXPECT_EQ(merged.output, whole.output) << length;
        EXPECT_EQ(merged.error, "") << length;
    }
}

TEST_F(MergeProgramTest, TakesWhatThereIsOfAShardThatWasKilled)
{
    const std::string whole2 = ContentOf("2.json");
    Keep("2.json", whole2.substr(0, whole2.find('\n') + 9));

    const Outcome merged = Merge({"1.json", "2.json", "3.json"});

    EXPECT_EQ(merged.status, 1);
    EXPECT_THAT(merged.error, StartsWith("tessarine-batch: shard 2 of 3 is missing, or its report ends early\n"));
    const auto first = nlohmann::json::parse(whole2.substr(0, whole2.find('\n')));
    EXPECT_THAT(merged.output, HasSubstr(first.at("file").dump()));
    EXPECT_EQ(Merge({"2.json"}).status, 1) << "nobody knows how many files there are";
}

TEST_F(MergeProgramTest, RunsOfTheirOwnFollowEachOther)
{
    WriteAll();
    const std::vector<std::string> find{"find", "--find", "Fabrikam", "--show", "--format", "json"};
    const auto run = [&](const std::vector<std::string>& paths) {
        auto call = find;
        call.insert(call.end(), paths.begin(), paths.end());
        return program.Run(call).output;
    };
    Keep("a.json", run({"set/1.pptx", "set/4 damaged.pptx"}));
    Keep("b.json", run({"decks", "set/2.pptx"}));

    EXPECT_EQ(Merge({"a.json", "b.json"}).output, run({"set/1.pptx", "set/4 damaged.pptx", "decks", "set/2.pptx"}));

    Keep("b.json", ContentOf("b.json").substr(0, 200));
    const Outcome cut = Merge({"a.json", "b.json"});
    EXPECT_EQ(cut.status, 1);
    EXPECT_EQ(cut.error, "tessarine-batch: \"b.json\" ends early\n");
}

TEST_F(MergeProgramTest, RefusesReportsOfDifferentJobs)
{
    Keep("plain.json", whole.output);
    EXPECT_THAT(Refused({"1.json", "plain.json"}), HasSubstr("\"plain.json\" is not the report of a shard"));

    Write(u"set/9.pptx", Deck().Slide(Title(u"Fabrikam")));
    WriteShard(2);
    EXPECT_THAT(Refused({"1.json", "2.json", "3.json"}), HasSubstr("its files were divided differently"));

    Keep("dry.json", program.Run({"replace", "--find", "a", "--with", "b", "-n", "--format", "json", "decks"}).output);
    EXPECT_THAT(Refused({"plain.json", "dry.json"}), HasSubstr("\"plain.json\" is not the report of a dry run"));
}

TEST_F(MergeProgramTest, RefusesWhatIsNoReport)
{
    EXPECT_EQ(Refused({}), "tessarine-batch: no report is named\n");
    EXPECT_THAT(Refused({"missing.json"}), HasSubstr("can't read the report \"missing.json\""));
    EXPECT_THAT(Refused({"set"}), HasSubstr("can't read the report \"set\""));
    EXPECT_THAT(Refused({"1.json", "set/1.pptx"}), HasSubstr("the report \"set/1.pptx\", line 1: it is no line"));

    const std::string report = ContentOf("1.json");
    const auto changed = [&](const std::string& from, const std::string& to) {
        std::string text = report;
        text.replace(text.find(from), from.size(), to);
        Keep("changed.json", text);
        return Refused({"changed.json"});
    };
    EXPECT_THAT(changed("\"version\":1", "\"version\":2"), HasSubstr("line 1: it is of a later version"));
    EXPECT_THAT(changed("\"status\":", "\"status\":\""), HasSubstr("line 1: "));
    EXPECT_THAT(changed("\"state\":\"", "\"state\":\"x"), HasSubstr("line 1: it has an unknown state"));
    EXPECT_THAT(changed("\"items\":[", "\"items\":[7,"), HasSubstr("line 1: "));
    EXPECT_THAT(changed("\"number\":", "\"number\":1000"), HasSubstr("line "));
    EXPECT_THAT(changed("\"number\":", "\"number\":-"), HasSubstr("line "));
    EXPECT_THAT(changed("\"index\":1", "\"index\":4"), HasSubstr("there is no such shard"));
    EXPECT_THAT(changed("\"summary\":{", "\"summary\":[{"), HasSubstr("line "));
    Keep("changed.json", report + report);
    EXPECT_THAT(Refused({"changed.json"}), HasSubstr("it stands after the summary"));
    Keep("changed.json", std::string(200000, '['));
    EXPECT_THAT(Refused({"changed.json"}), HasSubstr("line 1: it is no line of a JSON report"));
    Keep("changed.json", program.Run({"restore", "--format", "json", "set"}).output);
    EXPECT_THAT(Refused({"changed.json"}), HasSubstr("line 1: it is none of find, replace and run"));
}

TEST_F(MergeProgramTest, DoesNotWriteOverAReportThatItReads)
{
    Keep("in.csv", ContentOf("1.json"));

    EXPECT_EQ(Merge({"in.csv"}, {"--report", "in.csv"}).status, 2);
    EXPECT_EQ(ContentOf("in.csv"), ContentOf("1.json"));
}

}  // namespace
}  // namespace tessarine::test
