#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "files/FileState.h"
#include "FindAndReplaceProgramTest.h"
#include "support/PackageReader.h"

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;
using Json = nlohmann::json;

/// Six presentations in "set", a run over them with a record, and what a kill leaves of that record.
class RecordProgramTest : public FindAndReplaceProgramTest
{
protected:
    RecordProgramTest()
    {
        for (int number = 1; number <= 6; ++number)
            WriteDeck(number);
        program.folder.Write(u"set/4 damaged.pptx", "PK but no package");
    }

    void WriteDeck(int number)
    {
        Write(u"set/" + FromUtf8(std::to_string(number)) + u".pptx",
              Deck().Slide(Title(u"cat"), TextBox(u"A cat " + FromUtf8(std::to_string(number)))));
    }

    Outcome Run(const std::vector<std::string>& more = {})
    {
        std::vector<std::string> call{"replace",  "--find", "cat",      "--with", "cats", "--show",
                                      "--format", "json",   "--record", "record", "set"};
        call.insert(call.end(), more.begin(), more.end());
        return program.Run(call);
    }

    std::string Record() const
    {
        std::ostringstream content;
        content << std::ifstream(std::filesystem::path(NativePath(PathOf(u"record"))), std::ios::binary).rdbuf();
        return content.str();
    }

    /// Leaves of the record what is before the first line that begins with these fields, which a tab ends each.
    void CutRecordBefore(const std::string& line, std::size_t and_ = 0)
    {
        const std::string record = Record();
        const std::size_t at = record.find("\n" + line);
        ASSERT_NE(at, std::string::npos) << line;
        program.folder.Write(u"record", record.substr(0, at + 1 + and_));
    }

    String TextOfDeck(int number)
    {
        const auto path = NativePath(PathOf(u"set/" + FromUtf8(std::to_string(number)) + u".pptx"));
        return TextOf(PackageReader::FromFile(path), 1, 1);
    }
};

TEST_F(RecordProgramTest, OfARunThatIsThroughIsReportedAgainAndNoFileIsTouched)
{
    const Outcome once = Run();
    const Outcome again = Run();

    EXPECT_THAT(once.output, HasSubstr(R"("changed":6)"));
    EXPECT_EQ(again.output, once.output);
    EXPECT_EQ(again.status, once.status);
    EXPECT_EQ(TextOfDeck(1), u"cats");  // and not "catss"
}

TEST_F(RecordProgramTest, HasAKilledRunGoOnWhereItEnds)
{
    const Outcome once = Run();
    // As if it had been killed before the third file: what came after is as before.
    for (int number = 3; number <= 6; ++number)
        WriteDeck(number);
    CutRecordBefore("begun\t2\t");

    for (const std::string jobs : {"1", "3"}) {
        EXPECT_EQ(Run({"--jobs", jobs}).output, once.output);
        EXPECT_EQ(TextOfDeck(1), u"cats");
        EXPECT_EQ(TextOfDeck(6), u"cats");
    }
}

TEST_F(RecordProgramTest, BeginsAFileAnewThatIsAsItWas)
{
    // A dry run leaves the file of its record as it was, as a kill before the save does.
    Run({"--dry-run"});
    CutRecordBefore("done\t2\t");

    const Outcome again = Run({"--dry-run"});

    EXPECT_THAT(again.output, HasSubstr(R"("changed":6)"));
    EXPECT_THAT(again.output, HasSubstr(R"("failed":1)"));
}

TEST_F(RecordProgramTest, TellsAFileByWhatAllMachinesSeeOfIt)
{
    Run({"--dry-run"});

    const auto state = FileStateOf(PathOf(u"set/3.pptx"));
    ASSERT_TRUE(state);
    std::ostringstream expected;
    expected << "\nbegun\t2\t" << state->identity.file << ' ' << state->size << ' ' << state->lastWrite << " 0\t";
    EXPECT_THAT(Record(), HasSubstr(expected.str()));
}

TEST_F(RecordProgramTest, FailsAFileInHandThatIsNotAsItWas)
{
    Run();
    CutRecordBefore("done\t2\t");

    const Outcome again = Run();

    EXPECT_THAT(
        again.output,
        HasSubstr(NativeInJson(R"("file":"set/3.pptx",)") +
                  R"("status":0,"state":"failed","error":"A run that was killed had the file in hand, and it is not )"
                  R"(as it was before: it may have been changed.")"));
    EXPECT_EQ(TextOfDeck(3), u"cats");
    EXPECT_EQ(TextOfDeck(4), u"catss") << "what came after the cut is done by this record's run";
    EXPECT_EQ(again.status, 1);
    EXPECT_EQ(Run().output, again.output);
}

TEST_F(RecordProgramTest, SurvivesALineThatWasCut)
{
    const Outcome once = Run();
    for (int number = 3; number <= 6; ++number)
        WriteDeck(number);
    CutRecordBefore("begun\t2\t", 9);

    EXPECT_EQ(Run().output, once.output);
    EXPECT_EQ(Run().output, once.output);
}

TEST_F(RecordProgramTest, BeginsAnewWhereTheListOfFilesWasCut)
{
    const Outcome once = Run();
    for (int number = 1; number <= 6; ++number)
        WriteDeck(number);
    CutRecordBefore("all\t", 3);

    EXPECT_EQ(Run().output, once.output);
    EXPECT_EQ(Run().output, once.output);
}

TEST_F(RecordProgramTest, KeepsTheFilesOfItsRun)
{
    Run();
    CutRecordBefore("begun\t2\t");
    WriteDeck(7);
    std::filesystem::remove(NativePath(PathOf(u"set/6.pptx")));

    const std::string output = Run().output;

    EXPECT_THAT(output, testing::Not(HasSubstr(NativeInJson("set/7.pptx"))));
    EXPECT_THAT(output, HasSubstr(NativeInJson(R"("file":"set/6.pptx",)") + R"("status":0)"));
}

TEST_F(RecordProgramTest, IsThatOfItsRunAlone)
{
    Run();
    const std::string expected = "tessarine-batch: --record: \"record\" is the record of another run\n";
    EXPECT_EQ(Run({"--in", "all"}).error, expected);
    EXPECT_EQ(Run({"--dry-run"}).error, expected);
    EXPECT_EQ(Run({"--shard", "1/2"}).error, expected);
    EXPECT_EQ(Run({"set/1.pptx"}).error, expected);
    EXPECT_EQ(Run({"--color", "never", "--jobs", "2"}).error, "") << "these change nothing of what a file becomes";

    const Outcome ofADeck = program.Run({"find", "--find", "x", "--record", "set/1.pptx", "set"});
    EXPECT_EQ(ofADeck.error, "tessarine-batch: --record: \"set/1.pptx\" is not the record of a run\n");
    EXPECT_EQ(ofADeck.status, 2);
    EXPECT_EQ(TextOfDeck(1), u"cats");
    EXPECT_EQ(program.Run({"find", "--find", "x", "--record", "no folder/record", "set"}).status, 2);
}

TEST_F(RecordProgramTest, OfAShardHoldsItsFilesAndNumbers)
{
    const Outcome once = Run({"--shard", "2/2"});
    EXPECT_THAT(once.output, HasSubstr(R"("shard":{"index":2,"of":2,"files":7)"));

    WriteDeck(8);

    EXPECT_EQ(Run({"--shard", "2/2"}).output, once.output);
}

}  // namespace
}  // namespace tessarine::test
