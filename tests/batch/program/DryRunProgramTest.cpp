#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "files/FileLock.h"
#include "FindAndReplaceProgramTest.h"
#include "platform/NativePath.h"
#include "support/Fixtures.h"
#include "support/PackageReader.h"
#include "support/SampleDecks.h"

namespace tessarine::test
{
namespace
{

using testing::Contains;
using testing::HasSubstr;
using Json = nlohmann::json;

/// Where the harness lets the program write.
bool IsOfTheHarness(const std::filesystem::path& name)
{
    return name == ".input" || name == ".output" || name == ".error";
}

/// What a change of any file or folder below the program's folder would show in.
std::map<std::filesystem::path, std::string> StatesIn(const Program& program)
{
    std::map<std::filesystem::path, std::string> states;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(NativePath(program.folder.Path()))) {
        if (IsOfTheHarness(entry.path().filename()))
            continue;
        std::ostringstream state;
        state << entry.last_write_time().time_since_epoch().count() << ' '
              << static_cast<unsigned>(entry.status().permissions());
        if (entry.is_regular_file())
            state << ' ' << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        states[entry.path()] = state.str();
    }
    return states;
}

std::vector<std::string> LinesOf(const std::string& output)
{
    std::vector<std::string> lines;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> With(std::vector<std::string> arguments, const std::vector<std::string>& more)
{
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

class DryRunProgramTest : public FindAndReplaceProgramTest
{
protected:
    Outcome Replace(const std::vector<std::string>& options)
    {
        return program.Run(With({"replace", "--find", "Fabrikam", "--with", "Contoso"}, options));
    }
};

TEST_F(DryRunProgramTest, SaysThatNothingWasWritten)
{
    EXPECT_EQ(Replace({"--dry-run", "--verbose", "decks"}).output,
              EngineLine + Native("decks/a.pptx: would be changed, 4 would be replaced\n"
                                  "    \"Fabrikam\" -> \"Contoso\"  slides 2, shapes 1, notes 1\n"
                                  "decks/b.pptx: unchanged\n"
                                  "\n"
                                  "2 files: 1 would be changed, 1 unchanged, 0 failed; 4 occurrences would be "
                                  "replaced\n"
                                  "Dry run: nothing was written\n"));
}

TEST_F(DryRunProgramTest, TouchesNothing)
{
    Write(u"decks/read only.pptx", Deck().Slide(Title(u"Fabrikam")).Custom(u"Revision", "lpwstr", u"3"));
    // It makes the folder for the program's own files.
    program.Run({"find", "--find", "Fabrikam", "decks"});
    for (const auto* name : {u"decks/a.pptx", u"decks/b.pptx", u"decks/read only.pptx"})
        Age(name);
    SetMode(PathOf(u"decks/read only.pptx"), 0444);
    const auto before = StatesIn(program);

    const Outcome outcome = Replace({"--dry-run", "--in", "all", "--backup", "--keep-date", "--read-only", "--in-place",
                                     "--revision", "Revision", "--show", "decks"});

    EXPECT_THAT(outcome.output, HasSubstr("3 files: 2 would be changed, 1 unchanged, 0 failed; "));
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(StatesIn(program) == before);
}

TEST_F(DryRunProgramTest, TellsABackupThatIsInTheWay)
{
    program.folder.Write(u"decks/a..bak", "somebody's own");

    const Outcome dry = Replace({"--dry-run", "--backup", "decks/a.pptx"});
    const Outcome real = Replace({"--backup", "decks/a.pptx"});

    EXPECT_THAT(dry.output, HasSubstr("is in the way of its backup"));
    EXPECT_EQ(LinesOf(dry.output).at(EngineLine.empty() ? 0 : 1), LinesOf(real.output).at(EngineLine.empty() ? 0 : 1));
    EXPECT_EQ(dry.status, 1);
}

TEST_F(DryRunProgramTest, TellsFilesThatTwoBackupsWouldBeOf)
{
    Write(u"decks/a.pptm", Deck().Slide(Title(u"Fabrikam")).Kind(DeckKind::Pptm));

    const Outcome dry = Replace({"--dry-run", "--backup", "decks"});

    EXPECT_THAT(dry.output, HasSubstr(Native("decks/a.pptx: failed: Its backup would overwrite another file")));
    EXPECT_THAT(dry.output, HasSubstr("3 files: 1 would be changed, 1 unchanged, 1 failed; "));
    EXPECT_EQ(dry.status, 1);
}

TEST_F(DryRunProgramTest, FailsWhereTheRunItselfWouldFail)
{
    Write(u"decks/c.pptx", Deck().Slide(Title(u"Fabrikam")));
    Write(u"decks/d.pptx", Deck().Slide(Title(u"Fabrikam")).Signed());
    SetMode(PathOf(u"decks/a.pptx"), 0444);
    const FileLock otherRun(PathOf(u"decks/c.pptx"));

    const Outcome outcome = Replace({"--dry-run", "--skip-signed", "decks"});

    EXPECT_THAT(outcome.output, HasSubstr(Native("decks/a.pptx: failed: Read Only File.\n")));
    EXPECT_THAT(outcome.output, HasSubstr(Native("decks/c.pptx: failed: ")));
    EXPECT_THAT(outcome.output, HasSubstr("is in use by another run"));
    EXPECT_THAT(outcome.output, HasSubstr(Native("decks/d.pptx: failed: The file has a digital signature")));
    EXPECT_THAT(outcome.output, HasSubstr("4 files: 0 would be changed, 1 unchanged, 3 failed; "));
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(DryRunProgramTest, OfASavedJobTouchesNothingEither)
{
    program.Run({"job", "make", "--find", "Fabrikam", "--with", "Contoso", "--backup", "-o", "j.tsq", "decks"});
    const auto before = StatesIn(program);

    const Outcome outcome = program.Run({"run", "j.tsq", "--replace", "--dry-run", "--format", "json"});

    EXPECT_THAT(outcome.output, HasSubstr(R"("dryRun":true,"status":1,"state":"changed")"));
    EXPECT_THAT(outcome.output, HasSubstr(R"("dryRun":true,"files":2,"changed":1,)"));
    EXPECT_TRUE(StatesIn(program) == before);
}

/// The texts that a hit may stand in, as a reader that is not the engine sees them; none for what it can't tell.
std::vector<String> TextsAround(const PackageReader& package, const Json& hit)
{
    const std::string location = hit["location"];
    if (location == "slides" || location == "shapes")
        return {TextOf(package, hit["slide"], hit["shape"])};
    if (location == "notes")
        return NotesOf(package, hit["slide"]);
    if (location == "custom-properties")
        return {CustomProperty(package, FromUtf8(hit["property"].get<std::string>())).text};
    return {};
}

/// Paragraph of a text, from 1; the whole text for 0.
String ParagraphOf(const String& text, int paragraph)
{
    std::size_t begin = 0;
    for (int number = 1; number < paragraph && begin != String::npos; ++number)
        begin = text.find(u'\r', begin) == String::npos ? String::npos : text.find(u'\r', begin) + 1;
    if (paragraph == 0 || begin == String::npos)
        return paragraph == 0 ? text : String();
    return text.substr(begin, text.find(u'\r', begin) - begin);
}

/// Whether one of the texts has what the hit becomes at its place.
bool IsSeen(const std::vector<String>& texts, const Json& hit)
{
    const String becomes = FromUtf8(hit["becomes"].get<std::string>());
    const std::size_t position = hit["position"].get<std::size_t>() - 1;
    return std::ranges::any_of(texts, [&](const String& text) {
        const String paragraph = ParagraphOf(text, hit.value("paragraph", 0));
        return position <= paragraph.size() && paragraph.compare(position, becomes.size(), becomes) == 0;
    });
}

/// Many decks, good ones and damaged ones, that a dry run and the run itself go through.
class DryAndRealRun : public testing::TestWithParam<std::vector<std::string>>
{
protected:
    DryAndRealRun()
    {
        int number = 0;
        for (const auto& [name, deck] : fixtures::ReadableDecks())
            program.folder.Write(FromUtf8("decks/" + name + ".pptx"), deck.Bytes());
        for (const auto& [name, bytes] : fixtures::UnreadableFiles())
            program.folder.Write(FromUtf8("decks/" + name + ".pptx"), bytes);
        for (const SampleDeck& sample : SampleDecks())
            program.folder.Write(FromUtf8("decks/sample " + std::to_string(++number) + ".pptx"), sample.deck.Bytes());
    }

    /// The lines of a report in JSON over all decks.
    std::vector<std::string> Report(const std::vector<std::string>& options)
    {
        const std::vector<std::string> command{"replace", "--show", "--max-hits", "0", "--format", "json", "decks"};
        return LinesOf(program.Run(With(With(command, GetParam()), options)).output);
    }

    Program program;
};

TEST_P(DryAndRealRun, ReportTheSame)
{
    std::vector<std::string> dry = Report({"--dry-run"});
    const std::vector<std::string> real = Report({});

    for (std::string& line : dry) {
        const std::string mark = "\"dryRun\":true,";
        ASSERT_THAT(line, HasSubstr(mark));
        line.erase(line.find(mark), mark.size());
    }
    EXPECT_EQ(dry, real);
    // The decks make the runs worth comparing.
    EXPECT_GT(real.size(), 50u);
    EXPECT_THAT(real, Contains(HasSubstr("\"status\":0")));
    EXPECT_THAT(real, Contains(HasSubstr("\"state\":\"changed\"")));
    EXPECT_THAT(real, Contains(HasSubstr("\"becomes\":\"")));
}

TEST_F(DryRunProgramTest, TellsWhatTheRunItselfPutsThere)
{
    for (const auto& [name, deck] : fixtures::ReadableDecks()) {
        // The reader takes another one of this deck's alternative shapes than a person sees.
        if (name != "Shapes")
            program.folder.Write(FromUtf8("fixtures/" + name + ".pptx"), deck.Bytes());
    }
    const std::vector<std::string> options{"--in", "all", "--show", "--format", "json", "fixtures"};
    const std::vector<std::string> dry = LinesOf(Replace(With(options, {"--dry-run"})).output);

    Replace(options);

    int seen = 0;
    for (const std::string& line : dry) {
        const Json file = Json::parse(line);
        if (!file.contains("hits"))
            continue;
        const std::string path = file["file"];
        const PackageReader package(ContentOf(PathOf(FromUtf8(path))));
        for (const Json& hit : file["hits"]) {
            const auto texts = TextsAround(package, hit);
            if (texts.empty() || hit["becomes"].is_null())
                continue;
            EXPECT_TRUE(IsSeen(texts, hit)) << path << ' ' << hit.dump() << testing::PrintToString(texts);
            ++seen;
        }
    }
    EXPECT_GT(seen, 100);
}

const std::vector<std::string> fabrikamByContoso{"--find", "Fabrikam", "--with", "Contoso"};

INSTANTIATE_TEST_SUITE_P(
    Jobs, DryAndRealRun,
    testing::Values(With(fabrikamByContoso, {"--in", "all"}),
                    With(fabrikamByContoso, {"--find", "Contoso", "--with", "Tailspin Toys", "--in", "all"}),
                    With(fabrikamByContoso, {"--whole-word", "--match-case", "--in", "all"}),
                    With(fabrikamByContoso, {"--backup", "--keep-date", "--revision", "Version", "--skip-signed"}),
                    std::vector<std::string>{"--find", "fabrikam", "--with", "", "--in", "all"},
                    std::vector<std::string>{"--find", "rikam", "--with", "\t<😀>", "--in", "all", "--no-count"}));

}  // namespace
}  // namespace tessarine::test
