#include "FindAndReplaceProgramTest.h"

#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>

#include "files/FileLock.h"
#include "platform/NativePath.h"

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;
using testing::Not;

TEST_F(FindAndReplaceProgramTest, FindReportsForPeople)
{
    const Outcome outcome = program.Run({"find", "--find", "Fabrikam", "--find", "2023", "decks"});

    EXPECT_EQ(outcome.output, EngineLine + Native("decks/a.pptx: 5 found\n"
                                                  "    \"Fabrikam\"  slides 2, shapes 1, notes 1\n"
                                                  "    \"2023\"      slides 1\n"
                                                  "\n"
                                                  "2 files: 1 with hits, 1 without, 0 failed; 5 occurrences found\n"));
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(FindAndReplaceProgramTest, FindReportsForPrograms)
{
    const Outcome outcome =
        program.Run({"find", "--find", "Fabrikam", "--in", "slides,notes", "--format", "json", "decks"});

    EXPECT_EQ(outcome.output,
              NativeInJson(R"({"version":1,"file":"decks/a.pptx","status":1,"state":"found","error":"","items":[)"
                           R"({"find":"Fabrikam","replace":"","counts":{"slides":2,"notes":1}}],"warnings":[]})"
                           "\n"
                           R"({"file":"decks/b.pptx","status":2,"state":"unchanged","error":"","items":[)"
                           R"({"find":"Fabrikam","replace":"","counts":{"slides":0,"notes":0}}],"warnings":[]})"
                           "\n"
                           R"({"version":1,"summary":{)") +
                  EngineEntry +
                  R"("files":2,"changed":1,"unchanged":1,"failed":0,"occurrences":3,"warnings":[]}})"
                  "\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(FindAndReplaceProgramTest, AFindLeavesFilesAndTheirDatesAlone)
{
    const std::string before = ContentOf(PathOf(u"decks/a.pptx"));
    const auto modified = Age(u"decks/a.pptx");

    program.Run({"find", "--find", "Fabrikam", "--in", "all", "decks"});

    EXPECT_EQ(ContentOf(PathOf(u"decks/a.pptx")), before);
    EXPECT_EQ(ModifiedAt(u"decks/a.pptx"), modified);
}

TEST_F(FindAndReplaceProgramTest, KeepDateGivesAChangedFileItsOldDate)
{
    const auto modified = Age(u"decks/a.pptx");

    const Outcome outcome = program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--keep-date", "decks"});

    EXPECT_THAT(outcome.output, HasSubstr("4 replaced"));
    EXPECT_EQ(ModifiedAt(u"decks/a.pptx"), modified);
}

TEST_F(FindAndReplaceProgramTest, FilesWithoutAChangeKeepTheirTimes)
{
    const auto changed = Age(u"decks/a.pptx");
    const auto unchanged = Age(u"decks/b.pptx");

    EXPECT_EQ(program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "decks"}).status, 0);

    EXPECT_GT(ModifiedAt(u"decks/a.pptx"), changed);
    EXPECT_EQ(ModifiedAt(u"decks/b.pptx"), unchanged);
}

TEST_F(FindAndReplaceProgramTest, EndsWith3WithoutAHitOnRequest)
{
    const auto status = [this](std::vector<std::string> arguments, const std::string& path) {
        arguments.push_back(path);
        return program.Run(arguments).status;
    };
    Write(u"none/c.pptx", Deck().Slide(Title(u"Nothing of the kind")));
    program.folder.Write(u"none/damaged.pptx", "not a presentation");
    const std::vector<std::string> find{"find", "--find", "Fabrikam", "--exit-code"};
    const std::vector<std::string> replace{"replace", "--find", "Fabrikam", "--with", "Contoso", "--exit-code"};

    EXPECT_EQ(status(find, "decks"), 0);
    EXPECT_EQ(status(find, "decks/b.pptx"), 3);
    EXPECT_EQ(status({"find", "--find", "Fabrikam"}, "decks/b.pptx"), 0);
    EXPECT_EQ(status(replace, "decks"), 0);
    EXPECT_EQ(status(replace, "decks"), 3);
    // A file that failed may hold what was looked for.
    EXPECT_EQ(status(find, "none"), 1);
}

TEST_F(FindAndReplaceProgramTest, WarningsOfTheWholeRunStandInTheSummary)
{
    const Outcome outcome =
        program.Run({"find", "--find", "Fabrikam", "--format", "json", "--pattern", "*.ppt", "decks"});

    EXPECT_THAT(outcome.output, HasSubstr(R"("warnings":["no file matches"]}})"));
    EXPECT_EQ(outcome.error, "tessarine-batch: no file matches\n");
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
    EXPECT_THAT(json.output, HasSubstr(R"("status":1,"state":"found")"));
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
              EngineLine + Native("decks/a.pptx: changed, 4 replaced\n"
                                  "    \"Fabrikam\" -> \"Contoso\"  slides 2, shapes 1, notes 1\n"
                                  "decks/b.pptx: unchanged\n"
                                  "\n"
                                  "2 files: 1 changed, 1 unchanged, 0 failed; 4 occurrences replaced\n"));
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(program.Run({"find", "--find", "Fabrikam", "--find", "Contoso", "decks"}).output,
                HasSubstr("a.pptx: 4 found\n    \"Contoso\"  slides 2, shapes 1, notes 1\n"));
}

TEST_F(FindAndReplaceProgramTest, PairsRunOneAfterTheOther)
{
    const Outcome outcome = program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--find", "Contoso",
                                         "--with", "Litware", "--in", "slides", "--format", "json", "decks/a.pptx"});

    EXPECT_EQ(outcome.output, R"({"version":1,"file":"decks/a.pptx","status":1,"state":"changed","error":"","items":[)"
                              R"({"find":"Fabrikam","replace":"Contoso","counts":{"slides":2}},)"
                              R"({"find":"Contoso","replace":"Litware","counts":{"slides":2}}],"warnings":[]})"
                              "\n"
                              R"({"version":1,"summary":{)" +
                                  EngineEntry +
                                  R"("files":1,"changed":1,"unchanged":0,"failed":0,"occurrences":4,"warnings":[]}})"
                                  "\n");
}

TEST_F(FindAndReplaceProgramTest, AReadOnlyFileFailsWithoutReadOnly)
{
    SetMode(PathOf(u"decks/a.pptx"), 0444);

    const Outcome refused = program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "decks"});
    const Outcome processed =
        program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--read-only", "decks"});

    EXPECT_EQ(refused.output,
              EngineLine + Native("decks/a.pptx: failed: Read Only File.\n"
                                  "\n"
                                  "2 files: 0 changed, 1 unchanged, 1 failed; 0 occurrences replaced\n"));
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(processed.output, HasSubstr("4 replaced"));
    EXPECT_EQ(processed.status, 0);
    EXPECT_EQ(ModeOf(PathOf(u"decks/a.pptx")), 0444u);
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
    EXPECT_THAT(files, testing::ElementsAre(
                           NativeInJson(R"({"version":1,"file":"mixed/1.pptx","status":0,"state":"failed")"),
                           NativeInJson(R"({"file":"mixed/2.pptx","status":1,"state":"changed")"),
                           NativeInJson(R"({"file":"mixed/3.pptx","status":0,"state":"failed")"),
                           NativeInJson(R"({"file":"mixed/4.pptx","status":1,"state":"changed")"),
                           NativeInJson(R"({"file":"mixed/5.pptx","status":0,"state":"failed")"),
                           R"({"file":"gone.pptx","status":0,"state":"failed")",
                           R"({"version":1,"summary":{)" + EngineEntry +
                               R"("files":6,"changed":2,"unchanged":0,"failed":4,"occurrences":2,"warnings":[]}})"));
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

    EXPECT_EQ(fromFile.output, EngineLine +
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

    EXPECT_EQ(outcome.output, EngineLine +
                                  "Zürich 報告.pptx: changed, 1 replaced\n"
                                  "    \"привет 😀\" -> \"שלום\"  slides 1\n"
                                  "\n"
                                  "1 file: 1 changed, 0 unchanged, 0 failed; 1 occurrence replaced\n");
}

TEST_F(FindAndReplaceProgramTest, AListOfAnyScriptMayComeThroughStandardInput)
{
    const std::vector<std::string> names{"Łódź Ärger.pptx", "報告書 한국어.pptx", "😀 family 👩‍👩‍👧.pptx",
                                         "עברית العربية.pptx"};
    std::string list;
    std::string expected = EngineLine;
    std::string expectedJson;
    for (const std::string& name : names) {
        Write(FromUtf8(name), Deck().Slide(Title(u"cat")));
        list += name + "\n";
        expected += name + ": changed, 1 replaced\n    \"cat\" -> \"dog\"  slides 1\n";
        expectedJson += std::string(expectedJson.empty() ? R"({"version":1,"file":")" : R"({"file":")") + name +
                        R"(","status":1,"state":"found","error":"","items":[)" +
                        R"({"find":"dog","replace":"","counts":{"slides":1}}],"warnings":[]})" + "\n";
    }

    const Outcome replaced = program.Run({"replace", "--find", "cat", "--with", "dog", "--files-from", "-"}, list);
    const Outcome found =
        program.Run({"find", "--find", "dog", "--in", "slides", "--format", "json", "--files-from", "-"}, list);

    EXPECT_EQ(replaced.output, expected + "\n4 files: 4 changed, 0 unchanged, 0 failed; 4 occurrences replaced\n");
    EXPECT_EQ(replaced.error, "");
    EXPECT_EQ(replaced.status, 0);
    EXPECT_EQ(found.output, expectedJson + R"({"version":1,"summary":{)" + EngineEntry +
                                R"("files":4,"changed":4,"unchanged":0,"failed":0,"occurrences":4,"warnings":[]}})" +
                                "\n");
    EXPECT_EQ(found.error, "");
    EXPECT_EQ(found.status, 0);
}

TEST_F(FindAndReplaceProgramTest, FilesOfAnyScriptAreFoundInAFolder)
{
    const std::vector<std::string> names{"Zürich.pptx", "日本語.pptx", "😀.pptx"};
    std::string expected = EngineLine;
    for (const std::string& name : names) {
        Write(FromUtf8("Øl/" + name), Deck().Slide(Title(u"cat")));
        expected += Native("Øl/" + name) + ": 1 found\n    \"cat\"  slides 1\n";
    }

    const Outcome outcome = program.Run({"find", "--find", "cat", "Øl"});

    EXPECT_EQ(outcome.output, expected + "\n3 files: 3 with hits, 0 without, 0 failed; 3 occurrences found\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(FindAndReplaceProgramTest, TextsMayHoldWhatCommandLinesGiveAMeaning)
{
    Write(u"decks/b.pptx", Deck().Slide(Title(u"a \"quoted\" C:\\dir\\ %PATH% ^& 100\\\"")));

    const Outcome outcome =
        program.Run({"replace", "--find", "\"quoted\" C:\\dir\\", "--with", "", "--find", "%PATH% ^&", "--with", "*\\",
                     "--find", "100\\\"", "--with", " ? ", "decks/b.pptx"});

    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(program.Run({"find", "--find", "a  *\\  ? ", "--match-case", "decks/b.pptx"}).output,
                HasSubstr("1 occurrence found\n"));
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
    std::filesystem::create_hard_link(NativePath(PathOf(u"decks/a.pptx")), NativePath(PathOf(u"other name")));

    const Outcome outcome =
        program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--format", "json", "decks/a.pptx"});

    EXPECT_THAT(outcome.output, HasSubstr("\"warnings\":[\"has 1 more name"));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(ContentOf(program.folder.PathOf(u"other name")), ContentOf(program.folder.PathOf(u"decks/a.pptx")));
}

TEST_F(FindAndReplaceProgramTest, ChangesAllNamesInPlaceWhenItIsTold)
{
    std::filesystem::create_hard_link(NativePath(PathOf(u"decks/a.pptx")), NativePath(PathOf(u"other name")));
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

    EXPECT_EQ(text.output, Native("Engine: built-in\n"
                                  "decks/a.pptx: 1 found\n"
                                  "    \"2023\"  slides 1\n"
                                  "\n"
                                  "2 files: 1 with hits, 1 without, 0 failed; 1 occurrence found\n"));
    EXPECT_THAT(json.output, HasSubstr(R"({"version":1,"summary":{"engine":"builtin","files":1,)"));
    EXPECT_EQ(text.status, 0);
}

TEST_F(FindAndReplaceProgramTest, NamedEngineOfARunWithoutFilesIsNotTold)
{
    const Outcome outcome = program.Run({"find", "--find", "a", "--engine", "builtin", "--pattern", "*.none", "decks"});

    EXPECT_EQ(outcome.output, "0 files: 0 with hits, 0 without, 0 failed; 0 occurrences found\n");
}

}  // namespace
}  // namespace tessarine::test
