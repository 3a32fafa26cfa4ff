#include <algorithm>
#include <fstream>
#include <map>
#include <set>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "FindAndReplaceProgramTest.h"
#include "support/PackageReader.h"

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;
using testing::IsEmpty;
using Json = nlohmann::json;

std::vector<Json> LinesOf(const std::string& output)
{
    std::vector<Json> lines;
    std::istringstream text(output);
    for (std::string line; std::getline(text, line);)
        lines.push_back(Json::parse(line));
    return lines;
}

/// Thirty presentations of different sizes in "set".
class ShardProgramTest : public FindAndReplaceProgramTest
{
protected:
    ShardProgramTest() { WriteAll(); }

    void WriteAll()
    {
        for (int number = 10; number < 40; ++number)
            Write(u"set/" + FromUtf8(std::to_string(number)) + u".pptx",
                  Deck().Slide(Title(u"Fabrikam"), TextBox(String(static_cast<std::size_t>(number) * 100, u'x'))));
    }

    /// The reports of all shards of a call, each after the one before it is through.
    std::vector<std::vector<Json>> Shards(int count, std::vector<std::string> call)
    {
        call.insert(call.end(), {"--format", "json", "set"});
        std::vector<std::vector<Json>> reports;
        for (int index = 1; index <= count; ++index) {
            auto shard = call;
            shard.insert(shard.end(), {"--shard", std::to_string(index) + "/" + std::to_string(count)});
            const Outcome outcome = program.Run(shard);
            EXPECT_THAT(outcome.error, IsEmpty());
            reports.push_back(LinesOf(outcome.output));
        }
        return reports;
    }

    /// Expects that the shards are one run over all files: its lines, but for the version in the first one.
    static void ExpectWhole(const std::vector<std::vector<Json>>& shards, std::vector<Json> whole)
    {
        std::map<int, Json> lines;
        const Json& first = shards.front().back().at("summary").at("shard");
        for (std::size_t index = 0; index < shards.size(); ++index) {
            const Json& shard = shards[index].back().at("summary").at("shard");
            EXPECT_EQ(shard.at("index"), index + 1);
            EXPECT_EQ(shard.at("of"), shards.size());
            EXPECT_EQ(shard.at("files"), whole.size() - 1);
            EXPECT_EQ(shard.at("division"), first.at("division"));
            for (std::size_t at = 0; at + 1 < shards[index].size(); ++at) {
                Json line = shards[index][at];
                const int number = line.at("number");
                line.erase("number");
                line.erase("version");
                EXPECT_TRUE(lines.emplace(number, line).second) << number;
            }
        }
        ASSERT_EQ(lines.size(), whole.size() - 1);
        for (auto& [number, line] : lines) {
            Json& expected = whole.at(static_cast<std::size_t>(number) - 1);
            expected.erase("version");
            EXPECT_EQ(line, expected);
        }
    }

    std::vector<Json> Whole(const std::vector<std::string>& call)
    {
        auto whole = call;
        whole.insert(whole.end(), {"--format", "json", "set"});
        const std::vector<Json> lines = LinesOf(program.Run(whole).output);
        WriteAll();
        return lines;
    }

    std::uint64_t BytesOf(const std::vector<Json>& report) const
    {
        std::uint64_t bytes = 0;
        for (std::size_t at = 0; at + 1 < report.size(); ++at)
            bytes += std::filesystem::file_size(NativePath(PathOf(FromUtf8(report[at].at("file").get<std::string>()))));
        return bytes;
    }
};

TEST_F(ShardProgramTest, AFindOfAllShardsIsTheFindOfAllFiles)
{
    const std::vector<std::string> call{"find", "--find", "Fabrikam", "--show"};
    for (const int count : {1, 2, 7, 40})
        ExpectWhole(Shards(count, call), Whole(call));
}

TEST_F(ShardProgramTest, AReplaceOfAllShardsIsTheReplaceOfAllFiles)
{
    // The shards change the sizes of their files before the next one divides them.
    const std::vector<std::string> call{"replace", "--find", "Fabrikam", "--with", "A rather long name: Litware"};
    const std::vector<Json> whole = Whole(call);
    ExpectWhole(Shards(3, call), whole);
    EXPECT_THAT(program.Run({"find", "--find", "Fabrikam", "set"}).output, HasSubstr("0 with hits"));

    WriteAll();
    auto withPlan = call;
    withPlan.insert(withPlan.end(), {"--plan", "plan"});
    ExpectWhole(Shards(3, withPlan), whole);
    EXPECT_THAT(program.Run({"find", "--find", "Fabrikam", "set"}).output, HasSubstr("0 with hits"));
}

TEST_F(ShardProgramTest, SharesHoldAboutAsManyBytes)
{
    for (const std::vector<std::string>& call :
         {std::vector<std::string>{"find", "--find", "a"},
          std::vector<std::string>{"replace", "--find", "a", "--with", "b", "--dry-run"},
          std::vector<std::string>{"replace", "--find", "Fabrikam", "--with", "b", "--plan", "plan"}}) {
        std::vector<std::uint64_t> bytes;
        for (const std::vector<Json>& report : Shards(3, call))
            bytes.push_back(BytesOf(report));
        EXPECT_LT(*std::ranges::max_element(bytes) - *std::ranges::min_element(bytes), bytes[0] / 10);
    }
}

TEST_F(ShardProgramTest, APlanHoldsWhateverBecomesOfTheFolder)
{
    const std::vector<std::string> call{"find", "--find", "Fabrikam", "--plan", "plan", "--format", "json", "set"};
    auto first = call;
    first.insert(first.end(), {"--shard", "1/2"});
    auto second = call;
    second.insert(second.end(), {"--shard", "2/2"});
    const std::vector<Json> before = LinesOf(program.Run(second).output);

    Write(u"set/1 new.pptx", Deck().Slide(Title(u"Fabrikam")));
    const std::string gone = before[0].at("file");
    std::filesystem::remove(NativePath(PathOf(FromUtf8(gone))));
    const std::vector<Json> again = LinesOf(program.Run(second).output);

    ASSERT_EQ(again.size(), before.size());
    EXPECT_EQ(again[0].at("file"), gone);
    EXPECT_EQ(again[0].at("state"), "failed");
    for (std::size_t at = 1; at + 1 < before.size(); ++at)
        EXPECT_EQ(again[at], before[at]);
    EXPECT_EQ(again.back().at("summary").at("shard"), before.back().at("summary").at("shard"));
    EXPECT_EQ(LinesOf(program.Run(first).output).size() + before.size(), 32u);
}

TEST_F(ShardProgramTest, ASavedJobIsSharedToo)
{
    program.Run({"job", "make", "--find", "Fabrikam", "--with", "Litware", "-o", "job.tsq", "set"});

    const Outcome one =
        program.Run({"run", "job.tsq", "--replace", "--shard", "1/2", "--plan", "plan", "--format", "json"});
    const Outcome two =
        program.Run({"run", "job.tsq", "--replace", "--shard", "2/2", "--plan", "plan", "--format", "json"});

    EXPECT_EQ(LinesOf(one.output).size() + LinesOf(two.output).size(), 32u);
    EXPECT_THAT(program.Run({"find", "--find", "Fabrikam", "set"}).output, HasSubstr("0 with hits"));
}

TEST_F(ShardProgramTest, RefusesWhatIsNoShareAndNoPlan)
{
    const auto errorOf = [this](const std::vector<std::string>& more) {
        std::vector<std::string> call{"find", "--find", "a", "set"};
        call.insert(call.end(), more.begin(), more.end());
        const Outcome outcome = program.Run(call);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.output, "");
        return outcome.error;
    };
    for (const std::string share : {"", "1", "0/2", "3/2", "a/2", "1/b", "1/2/3", "-1/2", "1/0", "1 /2"})
        EXPECT_EQ(errorOf({"--shard", share}),
                  "tessarine-batch: --shard: \"" + share + "\" is not a share such as 2/8, the second of eight\n");
    EXPECT_EQ(errorOf({"--plan", "plan"}), "tessarine-batch: --plan needs --shard\n");
    EXPECT_EQ(errorOf({"--shard", "1/2", "--plan", ""}), "tessarine-batch: --plan: the name of the file is empty\n");
    EXPECT_EQ(errorOf({"--shard", "1/2", "--plan", "set/10.pptx"}),
              "tessarine-batch: --plan: \"set/10.pptx\" is not a plan\n");
    EXPECT_THAT(errorOf({"--shard", "1/2", "--plan", "no folder/plan"}), HasSubstr("no folder"));

    program.Run({"find", "--find", "a", "--shard", "1/2", "--plan", "plan", "set/10.pptx"});
    EXPECT_EQ(errorOf({"--shard", "1/2", "--plan", "plan"}),
              "tessarine-batch: --plan: \"plan\" is the plan of other files; name another one, or remove it\n");
}

TEST_F(ShardProgramTest, RefusesAPlanThatIsCut)
{
    program.Run({"find", "--find", "a", "--shard", "1/2", "--plan", "plan", "set"});
    const auto path = NativePath(PathOf(u"plan"));
    std::filesystem::resize_file(path, std::filesystem::file_size(path) - 5);

    EXPECT_EQ(program.Run({"find", "--find", "a", "--shard", "1/2", "--plan", "plan", "set"}).error,
              "tessarine-batch: --plan: \"plan\" is damaged\n");
}

}  // namespace
}  // namespace tessarine::test
