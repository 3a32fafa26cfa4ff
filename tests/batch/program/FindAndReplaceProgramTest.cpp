#include <fcntl.h>
#include <sys/stat.h>

#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/program/Program.h"
#include "files/FileLock.h"
#include "support/Deck.h"

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// "a.pptx" with hits in a title, a text box and the notes; "b.pptx" without any.
class FindAndReplaceProgramTest : public testing::Test
{
protected:
    FindAndReplaceProgramTest()
    {
        Write(u"decks/a.pptx",
              Deck()
                  .Slide(Title(u"Fabrikam in 2023"), TextBox(u"About Fabrikam"), NotesPage(u"Ask Fabrikam"))
                  .Slide(Title(Paragraph(TextRun(u"Fab").Bold(), TextRun(u"rikam again")))));
        Write(u"decks/b.pptx", Deck().Slide(Title(u"Nothing of the kind")));
    }

    void Write(StringView name, const Deck& deck) { program.folder.Write(name, deck.Bytes()); }

    String PathOf(StringView name) const { return program.folder.PathOf(name); }

    timespec ModifiedAt(StringView name) const
    {
        struct stat status {
        };
        EXPECT_EQ(stat(ToUtf8(PathOf(name)).c_str(), &status), 0);
        return status.st_mtim;
    }

    /// Puts a file's modification time back by a day, so that a change shows.
    timespec Age(StringView name) const
    {
        timespec times[2] = {ModifiedAt(name), ModifiedAt(name)};
        times[0].tv_sec -= 86400;
        times[1].tv_sec -= 86400;
        EXPECT_EQ(utimensat(AT_FDCWD, ToUtf8(PathOf(name)).c_str(), times, 0), 0);
        return times[1];
    }

    Program program;
};

TEST_F(FindAndReplaceProgramTest, FindReportsForPeople)
{
    const Outcome outcome = program.Run({"find", "--find", "Fabrikam", "--find", "2023", "decks"});

    EXPECT_EQ(outcome.output,
              "decks/a.pptx: 5 found\n"
              "    \"Fabrikam\"  slides 2, shapes 1, notes 1\n"
              "    \"2023\"      slides 1\n"
              "\n"
              "2 files: 1 with hits, 1 without, 0 failed; 5 occurrences found\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(FindAndReplaceProgramTest, FindReportsForPrograms)
{
    const Outcome outcome =
        program.Run({"find", "--find", "Fabrikam", "--in", "slides,notes", "--format", "json", "decks"});

    EXPECT_EQ(outcome.output, R"({"file":"decks/a.pptx","status":1,"state":"found","error":"","items":[)"
                              R"({"find":"Fabrikam","replace":"","counts":{"slides":2,"notes":1}}],"warnings":[]})"
                              "\n"
                              R"({"file":"decks/b.pptx","status":2,"state":"nothing found","error":"","items":[)"
                              R"({"find":"Fabrikam","replace":"","counts":{"slides":0,"notes":0}}],"warnings":[]})"
                              "\n"
                              R"({"summary":{"files":2,"changed":1,"unchanged":1,"failed":0,"occurrences":3}})"
                              "\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(FindAndReplaceProgramTest, AFindLeavesFilesAndTheirDatesAlone)
{
    const std::string before = ContentOf(PathOf(u"decks/a.pptx"));
    const timespec modified = Age(u"decks/a.pptx");

    program.Run({"find", "--find", "Fabrikam", "--in", "all", "decks"});

    EXPECT_EQ(ContentOf(PathOf(u"decks/a.pptx")), before);
    EXPECT_EQ(ModifiedAt(u"decks/a.pptx").tv_sec, modified.tv_sec);
    EXPECT_EQ(ModifiedAt(u"decks/a.pptx").tv_nsec, modified.tv_nsec);
}

TEST_F(FindAndReplaceProgramTest, TellsCountedFromChanged)
{
    const std::string before = ContentOf(PathOf(u"decks/a.pptx"));

    // The number of slides, which can only be read.
    const Outcome people =
        program.Run({"replace", "--find", "2", "--with", "7777", "--in", "builtin-properties", "decks/a.pptx"});
    const Outcome json = program.Run(
        {"replace", "--find", "2", "--with", "7777", "--in", "builtin-properties", "--format", "json", "decks/a.pptx"});

    EXPECT_THAT(people.output, HasSubstr(" found, nothing could be changed\n"));
    EXPECT_THAT(people.output, HasSubstr("1 file: 0 changed, 1 with nothing to change, 0 unchanged, 0 failed; "
                                         "0 occurrences replaced\n"));
    EXPECT_THAT(json.output, HasSubstr(R"("status":1,"state":"counted, nothing could be changed")"));
    EXPECT_THAT(json.output, HasSubstr(R"("changed":0,"countedOnly":1,"unchanged":0)"));
    EXPECT_EQ(ContentOf(PathOf(u"decks/a.pptx")), before);
}

TEST_F(FindAndReplaceProgramTest, TellsOfSignaturesUnlessSignedFilesAreSkipped)
{
    Write(u"decks/b.pptx", Deck().Slide(Title(u"cat")).Signed());
    const std::string before = ContentOf(PathOf(u"decks/b.pptx"));

    const Outcome skipped = program.Run({"replace", "--find", "cat", "--with", "dog", "--skip-signed", "decks/b.pptx"});
    const std::string between = ContentOf(PathOf(u"decks/b.pptx"));
    const Outcome changed = program.Run({"replace", "--find", "cat", "--with", "dog", "decks/b.pptx"});

    EXPECT_EQ(between, before);
    EXPECT_EQ(skipped.status, 1);
    EXPECT_THAT(skipped.output, HasSubstr("decks/b.pptx: failed: The file has a digital signature"));
    EXPECT_EQ(changed.status, 0);
    EXPECT_THAT(changed.output, HasSubstr("    warning: its digital signatures were removed"));
}

TEST_F(FindAndReplaceProgramTest, NamesAFileOnceInItsFailure)
{
    program.folder.Write(u"decks/b.pptx", "no presentation");

    const Outcome outcome = program.Run({"find", "--find", "cat", "decks/b.pptx"});

    EXPECT_THAT(outcome.output, HasSubstr("decks/b.pptx: failed: The file is not a presentation\n"));
}

TEST_F(FindAndReplaceProgramTest, NoCountStopsAtTheFirstHitOfEachText)
{
    Write(u"decks/b.pptx", Deck().Slide(Title(u"cat cat cat"), TextBox(u"cat cat")));

    const Outcome outcome = program.Run({"find", "--find", "cat", "--no-count", "decks/b.pptx"});

    EXPECT_THAT(outcome.output, HasSubstr("\"cat\"  slides 1, shapes 1\n"));
}

TEST_F(FindAndReplaceProgramTest, ReplaceChangesTheFilesAndReportsWhatItDid)
{
    const Outcome outcome = program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--verbose", "decks"});

    EXPECT_EQ(outcome.output,
              "decks/a.pptx: changed, 4 replaced\n"
              "    \"Fabrikam\" -> \"Contoso\"  slides 2, shapes 1, notes 1\n"
              "decks/b.pptx: unchanged\n"
              "\n"
              "2 files: 1 changed, 1 unchanged, 0 failed; 4 occurrences replaced\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(program.Run({"find", "--find", "Fabrikam", "--find", "Contoso", "decks"}).output,
                HasSubstr("a.pptx: 4 found\n    \"Contoso\"  slides 2, shapes 1, notes 1\n"));
}

TEST_F(FindAndReplaceProgramTest, PairsRunOneAfterTheOther)
{
    const Outcome outcome = program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--find", "Contoso",
                                         "--with", "Litware", "--in", "slides", "--format", "json", "decks/a.pptx"});

    EXPECT_EQ(outcome.output, R"({"file":"decks/a.pptx","status":1,"state":"changed","error":"","items":[)"
                              R"({"find":"Fabrikam","replace":"Contoso","counts":{"slides":2}},)"
                              R"({"find":"Contoso","replace":"Litware","counts":{"slides":2}}],"warnings":[]})"
                              "\n"
                              R"({"summary":{"files":1,"changed":1,"unchanged":0,"failed":0,"occurrences":4}})"
                              "\n");
}

TEST_F(FindAndReplaceProgramTest, KeepDateGivesAChangedFileItsOldDate)
{
    const timespec modified = Age(u"decks/a.pptx");

    const Outcome outcome = program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--keep-date", "decks"});

    EXPECT_THAT(outcome.output, HasSubstr("4 replaced"));
    EXPECT_EQ(ModifiedAt(u"decks/a.pptx").tv_sec, modified.tv_sec);
    EXPECT_EQ(ModifiedAt(u"decks/a.pptx").tv_nsec, modified.tv_nsec);
}

TEST_F(FindAndReplaceProgramTest, AReadOnlyFileFailsWithoutReadOnly)
{
    SetMode(PathOf(u"decks/a.pptx"), 0444);

    const Outcome refused = program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "decks"});
    const Outcome processed =
        program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--read-only", "decks"});

    EXPECT_EQ(refused.output,
              "decks/a.pptx: failed: Read Only File.\n"
              "\n"
              "2 files: 0 changed, 1 unchanged, 1 failed; 0 occurrences replaced\n");
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(processed.output, HasSubstr("4 replaced"));
    EXPECT_EQ(processed.status, 0);
    EXPECT_EQ(ModeOf(PathOf(u"decks/a.pptx")), 0444u);
}

TEST_F(FindAndReplaceProgramTest, RevisionRaisesTheNumberInTheProperty)
{
    program.environment["LC_ALL"] = "C.UTF-8";
    Write(u"decks/b.pptx", Deck().Slide(Title(u"x")).Custom(u"Revision", "lpwstr", u"3"));

    program.Run(
        {"replace", "--find", "none", "--with", "x", "--revision", "revision", "--revision-by", "0.5", "decks/b.pptx"});

    EXPECT_THAT(program.Run({"find", "--find", "3.5", "--in", "custom-properties", "decks/b.pptx"}).output,
                HasSubstr("\"3.5\"  custom-properties 1\n"));
}

TEST_F(FindAndReplaceProgramTest, EveryFileHasItsLineWhateverBecomesOfIt)
{
    program.folder.Write(u"mixed/1.pptx", "not a presentation");
    Write(u"mixed/2.pptx", Deck().Slide(Title(u"Fabrikam")));
    program.folder.Write(u"mixed/3.pptx", "PK\x03\x04 neither");
    Write(u"mixed/4.pptx", Deck().Slide(Title(u"Fabrikam")));
    program.folder.Write(u"mixed/5.pptx", "");

    const Outcome outcome =
        program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--format", "json", "mixed", "gone.pptx"});

    std::vector<std::string> files;
    std::istringstream lines(outcome.output);
    for (std::string line; std::getline(lines, line);)
        files.push_back(line.substr(0, line.find(",\"error\"")));
    EXPECT_THAT(
        files, testing::ElementsAre(R"({"file":"mixed/1.pptx","status":0,"state":"failed")",
                                    R"({"file":"mixed/2.pptx","status":1,"state":"changed")",
                                    R"({"file":"mixed/3.pptx","status":0,"state":"failed")",
                                    R"({"file":"mixed/4.pptx","status":1,"state":"changed")",
                                    R"({"file":"mixed/5.pptx","status":0,"state":"failed")",
                                    R"({"file":"gone.pptx","status":0,"state":"failed")",
                                    R"({"summary":{"files":6,"changed":2,"unchanged":0,"failed":4,"occurrences":2}})"));
    EXPECT_THAT(
        outcome.output,
        HasSubstr(
            R"({"file":"gone.pptx","status":0,"state":"failed","error":"File not found.","items":[],"warnings":[]})"));
    EXPECT_THAT(outcome.output, Not(HasSubstr(R"("status":0,"state":"failed","error":"","items")")));
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(FindAndReplaceProgramTest, AnInvalidCallTouchesNoFile)
{
    const std::string before = ContentOf(PathOf(u"decks/a.pptx"));

    const Outcome outcome =
        program.Run({"replace", "--find", "Fabrikam", "--with", "New Fabrikam", "--backup", "decks"});

    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(
        outcome.error,
        "tessarine-batch: replacing \"Fabrikam\" by \"New Fabrikam\" never ends: the new text holds the old one behind "
        "its start, so every replacement makes a further one\n");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(ContentOf(PathOf(u"decks/a.pptx")), before);
    EXPECT_EQ(ContentOf(PathOf(u"decks/a..bak")), "<missing>");
}

TEST_F(FindAndReplaceProgramTest, TheSameTextsInLinkAddressesEnd)
{
    Write(u"decks/b.pptx", Deck().Slide(TextBox(Paragraph(TextRun(u"site").Click(LinkTo(u"http://example.org/"))))));

    const Outcome outcome = program.Run(
        {"replace", "--find", "example.org", "--with", "www.example.org", "--in", "hyperlinks", "decks/b.pptx"});

    EXPECT_THAT(outcome.output, HasSubstr("hyperlinks 1\n"));
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(FindAndReplaceProgramTest, AListNamesFurtherFiles)
{
    program.folder.Write(u"list.txt", "decks/a.pptx\r\ngone.pptx\r\n");

    const Outcome fromFile = program.Run({"find", "--find", "Fabrikam", "--files-from", "list.txt"});
    const Outcome fromInput =
        program.Run({"find", "--find", "Fabrikam", "--files-from", "-"}, "decks/a.pptx\ngone.pptx\n");

    EXPECT_EQ(fromFile.output,
              "decks/a.pptx: 4 found\n"
              "    \"Fabrikam\"  slides 2, shapes 1, notes 1\n"
              "gone.pptx: failed: File not found.\n"
              "\n"
              "2 files: 1 with hits, 0 without, 1 failed; 4 occurrences found\n");
    EXPECT_EQ(fromFile.status, 1);
    EXPECT_EQ(fromInput.output, fromFile.output);
}

TEST_F(FindAndReplaceProgramTest, AMissingListIsAnInvalidCall)
{
    const Outcome outcome = program.Run({"find", "--find", "x", "--files-from", "gone.txt", "decks"});

    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(outcome.error, HasSubstr("gone.txt"));
}

TEST_F(FindAndReplaceProgramTest, NoFileIsNoFailure)
{
    program.folder.MakeFolder(u"empty");

    const Outcome outcome = program.Run({"find", "--find", "x", "empty"});

    EXPECT_EQ(outcome.output, "0 files: 0 with hits, 0 without, 0 failed; 0 occurrences found\n");
    EXPECT_EQ(outcome.error, "tessarine-batch: no file matches\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(FindAndReplaceProgramTest, NamesAndTextsMayBeOfAnyScript)
{
    Write(u"Zürich 報告.pptx", Deck().Slide(Title(u"Привет 😀 Welt")));

    const Outcome outcome = program.Run({"replace", "--find", "привет 😀", "--with", "שלום", "Zürich 報告.pptx"});

    EXPECT_EQ(outcome.output,
              "Zürich 報告.pptx: changed, 1 replaced\n"
              "    \"привет 😀\" -> \"שלום\"  slides 1\n"
              "\n"
              "1 file: 1 changed, 0 unchanged, 0 failed; 1 occurrence replaced\n");
}

TEST_F(FindAndReplaceProgramTest, NamesAFileThatIsNotUtf8ByItsBytes)
{
    const std::string name = "caf\xE9.pptx";
    program.folder.Write(FromUtf8(name), Deck().Slide(Title(u"Fabrikam")).Bytes());

    const Outcome text = program.Run({"find", "--find", "Fabrikam", name});
    const Outcome json = program.Run({"find", "--find", "Fabrikam", "--format", "json", name});

    EXPECT_THAT(text.output, testing::StartsWith(name + ": 1 found\n"));
    EXPECT_THAT(json.output, testing::StartsWith("{\"file\":\"caf\uFFFD.pptx\",\"status\":1"));
}

TEST_F(FindAndReplaceProgramTest, SaysHowManyLinkedFoldersItLeftOut)
{
    program.folder.Write(u"more/c.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());
    std::filesystem::create_directory_symlink("../more", ToUtf8(program.folder.PathOf(u"decks/link")));

    const Outcome without = program.Run({"find", "--find", "Fabrikam", "--recurse", "--format", "json", "decks"});
    const Outcome with = program.Run({"find", "--find", "Fabrikam", "--recurse", "--follow", "decks"});

    EXPECT_THAT(without.output, HasSubstr("\"skippedLinks\":1}}\n"));
    EXPECT_EQ(without.error, "tessarine-batch: 1 linked folder was left out; --follow takes it\n");
    EXPECT_EQ(without.status, 0);
    EXPECT_THAT(with.output, HasSubstr("decks/link/c.pptx: 1 found\n"));
    EXPECT_EQ(with.error, "");
}

TEST_F(FindAndReplaceProgramTest, LeavesAFileAloneThatAnotherRunHas)
{
    const String deck = program.folder.PathOf(u"decks/a.pptx");
    const std::string before = ContentOf(deck);
    const FileLock otherRun(deck);

    const Outcome replaced =
        program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks/a.pptx"});
    const Outcome found = program.Run({"find", "--find", "Fabrikam", "decks/a.pptx"});

    EXPECT_THAT(replaced.output, HasSubstr("is in use by another run"));
    EXPECT_EQ(replaced.status, 1);
    EXPECT_EQ(ContentOf(deck), before);
    EXPECT_EQ(ContentOf(program.folder.PathOf(u"decks/a..bak")), "<missing>");
    EXPECT_THAT(found.output, HasSubstr("1 file: "));
}

TEST_F(FindAndReplaceProgramTest, TellsOfOtherNamesThatKeepTheOldText)
{
    std::filesystem::create_hard_link(ToUtf8(program.folder.PathOf(u"decks/a.pptx")),
                                      ToUtf8(program.folder.PathOf(u"other name")));

    const Outcome outcome =
        program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--format", "json", "decks/a.pptx"});

    EXPECT_THAT(outcome.output, HasSubstr("\"warnings\":[\"has 1 more name"));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(ContentOf(program.folder.PathOf(u"other name")), ContentOf(program.folder.PathOf(u"decks/a.pptx")));
}

TEST_F(FindAndReplaceProgramTest, ChangesAllNamesInPlaceWhenItIsTold)
{
    std::filesystem::create_hard_link(ToUtf8(program.folder.PathOf(u"decks/a.pptx")),
                                      ToUtf8(program.folder.PathOf(u"other name")));
    const std::string before = ContentOf(program.folder.PathOf(u"decks/a.pptx"));

    const Outcome outcome = program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup",
                                         "--in-place-links", "--format", "json", "decks/a.pptx"});

    EXPECT_THAT(outcome.output, HasSubstr("\"warnings\":[]"));
    EXPECT_NE(ContentOf(program.folder.PathOf(u"decks/a.pptx")), before);
    EXPECT_EQ(ContentOf(program.folder.PathOf(u"other name")), ContentOf(program.folder.PathOf(u"decks/a.pptx")));
    EXPECT_EQ(ContentOf(program.folder.PathOf(u"decks/a..bak")), before);
}

TEST_F(FindAndReplaceProgramTest, NamedEngineIsTheFirstLineOfTheReport)
{
    const Outcome text = program.Run({"find", "--find", "2023", "--engine", "builtin", "decks"});
    const Outcome json =
        program.Run({"find", "--find", "2023", "--engine=builtin", "--format", "json", "decks/b.pptx"});

    EXPECT_EQ(text.output,
              "Engine: built-in\n"
              "decks/a.pptx: 1 found\n"
              "    \"2023\"  slides 1\n"
              "\n"
              "2 files: 1 with hits, 1 without, 0 failed; 1 occurrence found\n");
    EXPECT_THAT(json.output, HasSubstr(R"({"summary":{"engine":"builtin","files":1,)"));
    EXPECT_EQ(text.status, 0);
}

TEST_F(FindAndReplaceProgramTest, NamedEngineOfARunWithoutFilesIsNotTold)
{
    const Outcome outcome = program.Run({"find", "--find", "a", "--engine", "builtin", "--pattern", "*.none", "decks"});

    EXPECT_EQ(outcome.output, "0 files: 0 with hits, 0 without, 0 failed; 0 occurrences found\n");
}

TEST_F(FindAndReplaceProgramTest, PowerPointIsRefusedWhereThereIsNone)
{
    const std::string before = ContentOf(PathOf(u"decks/a.pptx"));

    const Outcome outcome =
        program.Run({"replace", "--find", "2023", "--with", "2024", "--engine", "powerpoint", "decks"});

    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.error,
              "tessarine-batch: --engine powerpoint: there is only the built-in engine on this system\n");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(ContentOf(PathOf(u"decks/a.pptx")), before);
}

}  // namespace
}  // namespace tessarine::test
