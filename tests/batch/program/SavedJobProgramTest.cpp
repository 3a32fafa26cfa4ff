#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "batch/program/Program.h"
#include "model/Project.h"
#include "support/Deck.h"
#include "support/StoredBag.h"

namespace tessarine::test
{
namespace
{

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class SavedJobProgramTest : public testing::Test
{
protected:
    SavedJobProgramTest()
    {
        Write(u"decks/a.pptx", Deck().Slide(Title(u"Fabrikam in 2023"), NotesPage(u"Ask Fabrikam")));
        Write(u"decks/b.pptx", Deck().Slide(Title(u"Nothing of the kind")));
        Write(u"decks/inner/c.pptx", Deck().Slide(Title(u"fabrikam")));
    }

    void Write(StringView name, const Deck& deck) { program.folder.Write(name, deck.Bytes()); }
    String PathOf(StringView name) const { return program.folder.PathOf(name); }
    std::string FullPath(StringView name) const { return ToUtf8(PathOf(name)); }

    Outcome Make(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {"job", "make"});
        return program.Run(arguments);
    }

    /// Writes a job as the desktop saves it.
    void SaveFromDesktop(const std::function<void(const ProjectOwner&)>& fill, StringView name = u"job.tsq")
    {
        const ProjectOwner project;
        project->options->ComaSepAllowedExtensions = u"*.Ppt*";
        project->options->FileToProcessFolderPath = PathOf(u"decks");
        project->options->RequiredFindAndReplaceCount = true;
        fill(project);
        String path = PathOf(name);
        project->SaveAsProject(path, true);
        ASSERT_FALSE(project->FileFailure);
    }

    static void AddPair(const ProjectOwner& project, const String& find, const String& with,
                        bool OptionSetting::*place = &OptionSetting::InSlides)
    {
        const auto setting = std::make_shared<OptionSetting>();
        (*setting).*place = true;
        project->FindAndReplaceList->Add(find, with, setting, project.get());
    }

    static void AddSource(const ProjectOwner& project, const String& source, const String& list = {})
    {
        project->CustomProperies->Add(u"FindAndReplaceFilePath", list);
        project->CustomProperies->Add(u"FindAndReplaceListSource", source);
        project->CustomProperies->Add(u"LANG", u"English.lng");
    }

    void SavePairOfDesktop(const std::function<void(const ProjectOwner&)>& more = [](const ProjectOwner&) {})
    {
        SaveFromDesktop([&](const ProjectOwner& project) {
            AddPair(project, u"Fabrikam", u"Contoso");
            AddSource(project, u"INTERNAL");
            more(project);
        });
    }

    /// Runs a job that can't run: one line on standard error, which is returned without the program's name.
    std::string RefusalOf(const std::vector<std::string>& arguments)
    {
        const Outcome outcome = program.Run(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1) << outcome.error;
        const std::string start = "tessarine-batch: ";
        EXPECT_EQ(outcome.error.substr(0, start.size()), start);
        return outcome.error.substr(std::min(start.size(), outcome.error.size()));
    }

    Program program;
};

TEST_F(SavedJobProgramTest, AMadeJobHoldsTheOptionsOfTheCall)
{
    const Outcome outcome = Make(
        {"--find",    "Fabrikam",   "--with",      "Contoso",      "--find",        "2023",        "--with",
         "",          "--in",       "notes,links", "--match-case", "--backup",      "--keep-date", "--read-only",
         "--recurse", "--no-count", "--revision",  "Rev",          "--revision-by", "0.5",         "--restart-after",
         "20",        "-o",         "rename.tsq",  "decks/"});

    EXPECT_EQ(outcome.output, "saved rename.tsq\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
    const auto records = ReadStoredBag(ContentOf(PathOf(u"rename.tsq")));
    using namespace std::string_literals;
    for (const StoredRecord& expected : {StoredRecord{"FindReplaceItemsCount", 2},
                                         {"Item0FindWhat", "Fabrikam"s},
                                         {"Item0ReplaceWith", "Contoso"s},
                                         {"Item1FindWhat", "2023"s},
                                         {"Item1ReplaceWith", ""s},
                                         {"Item1InNotes", true},
                                         {"Item1InLinks", true},
                                         {"Item1InSlides", false},
                                         {"Item0MatchCase", true},
                                         {"Item0MatchWholeWord", false},
                                         {"BackupMode", true},
                                         {"KeepOriginalFileDate", true},
                                         {"ProcessReadonlyFiles", true},
                                         {"Include_Subfolders", true},
                                         {"RequiredFindAndReplaceCount", false},
                                         {"RevisionDocumentPropertyName", "Rev"s},
                                         {"RevisionDocumentPropertyIncrimentedBy", "0.5"s},
                                         {"RestartApplicationAfterFiles", 20},
                                         {"ComaSepAllowedExtensions", "*.Ppt*"s},
                                         {"FileToProcessSourceType", 0},
                                         {"FileToProcessFolderPath", FullPath(u"decks")},
                                         {"FileToProcessFilepath", ""s},
                                         {"Propery1", "FindAndReplaceFilePath|"s},
                                         {"Propery2", "FindAndReplaceListSource|INTERNAL"s},
                                         {"Propery3", "LANG|English.lng"s},
                                         {"CustomPropertyCount", 3}})
        EXPECT_THAT(records, Contains(expected)) << expected.name;
}

TEST_F(SavedJobProgramTest, AJobMayTakeItsFilesFromAList)
{
    using namespace std::string_literals;
    Make({"--find", "a", "--with", "b", "--files-from", "list.txt", "-o", "sub.old"});

    const auto records = ReadStoredBag(ContentOf(PathOf(u"sub.old.tsq")));
    EXPECT_THAT(records, Contains(StoredRecord{"FileToProcessSourceType", 1}));
    EXPECT_THAT(records, Contains(StoredRecord{"FileToProcessFilepath", FullPath(u"list.txt")}));
}

TEST_F(SavedJobProgramTest, AFolderOfADesktopStaysAsItIs)
{
    using namespace std::string_literals;
    Make({"--find", "a", "--with", "b", "-o", "drive.tsq", "C:\\decks"});
    Make({"--find", "a", "--with", "b", "-o", "share.tsq", "\\\\server\\decks"});

    EXPECT_THAT(ReadStoredBag(ContentOf(PathOf(u"drive.tsq"))),
                Contains(StoredRecord{"FileToProcessFolderPath", "C:\\decks"s}));
    EXPECT_THAT(ReadStoredBag(ContentOf(PathOf(u"share.tsq"))),
                Contains(StoredRecord{"FileToProcessFolderPath", "\\\\server\\decks"s}));
}

TEST_F(SavedJobProgramTest, MakingAJobNeedsWhatAJobCanHold)
{
    const std::vector<std::string> pair{"job", "make", "--find", "a", "--with", "b"};
    const auto with = [&](std::vector<std::string> more) {
        more.insert(more.begin(), pair.begin(), pair.end());
        return more;
    };

    EXPECT_THAT(RefusalOf(with({"decks"})), HasSubstr("-o is missing"));
    EXPECT_THAT(RefusalOf(with({"-o", "x.tsq"})), HasSubstr("one folder, or from one list"));
    EXPECT_THAT(RefusalOf(with({"-o", "x.tsq", "decks", "more"})), HasSubstr("one folder, or from one list"));
    EXPECT_THAT(RefusalOf(with({"-o", "x.tsq", "decks/a.pptx"})), HasSubstr("is a file"));
    EXPECT_THAT(RefusalOf(with({"-o", "x.tsq", "--files-from", "-"})), HasSubstr("standard input"));
    EXPECT_THAT(RefusalOf(with({"-o", "x.tsq", "--files-from", "list.csv"})), HasSubstr("must be a .txt file"));
    EXPECT_THAT(RefusalOf(with({"-o", "gone/x.tsq", "decks"})), HasSubstr("there is no folder"));
    EXPECT_THAT(RefusalOf(with({"-o", "", "decks"})), HasSubstr("-o: the name of the job is empty"));
    EXPECT_THAT(RefusalOf(with({"-o", "decks/", "decks"})), HasSubstr("is a folder"));
    EXPECT_THAT(RefusalOf(with({"-o", "x.tsq", "--pattern", "*.pptx", "decks"})),
                HasSubstr("--pattern is not an option of job make"));
    EXPECT_THAT(RefusalOf({"job", "make", "--find", "a", "-o", "x.tsq", "decks"}), HasSubstr("its --with"));
    EXPECT_THAT(RefusalOf({"job", "make", "--find", "a", "--with", "ba", "-o", "x.tsq", "decks"}),
                HasSubstr("never ends"));
    EXPECT_EQ(ContentOf(PathOf(u"x.tsq")), "<missing>");
}

TEST_F(SavedJobProgramTest, AJobOnlyFindsWithoutReplace)
{
    SavePairOfDesktop();
    const std::string before = ContentOf(PathOf(u"decks/a.pptx"));

    const Outcome found = program.Run({"run", "job.tsq"});
    EXPECT_EQ(found.output, EngineLine + FullPath(u"decks/a.pptx") +
                                ": 1 found\n"
                                "    \"Fabrikam\"  slides 1\n"
                                "\n"
                                "2 files: 1 with hits, 1 without, 0 failed; 1 occurrence found\n");
    EXPECT_EQ(found.error, "");
    EXPECT_EQ(found.status, 0);
    EXPECT_EQ(ContentOf(PathOf(u"decks/a.pptx")), before);

    const Outcome replaced = program.Run({"run", "job.tsq", "--replace", "--verbose"});
    EXPECT_EQ(replaced.output, EngineLine + FullPath(u"decks/a.pptx") +
                                   ": changed, 1 replaced\n"
                                   "    \"Fabrikam\" -> \"Contoso\"  slides 1\n" +
                                   FullPath(u"decks/b.pptx") +
                                   ": unchanged\n"
                                   "\n"
                                   "2 files: 1 changed, 1 unchanged, 0 failed; 1 occurrence replaced\n");
    EXPECT_EQ(replaced.status, 0);
    EXPECT_NE(ContentOf(PathOf(u"decks/a.pptx")), before);
}

TEST_F(SavedJobProgramTest, ARunTakesEachPairWithItsOwnPlaces)
{
    SavePairOfDesktop([](const ProjectOwner& project) {
        AddPair(project, u"Ask", u"Tell", &OptionSetting::InNotes);
        project->FindAndReplaceList->Item(2)->OptionSetting->InFooter = true;
    });

    const Outcome outcome = program.Run({"run", "job.tsq", "--format", "json"});

    EXPECT_THAT(outcome.output,
                HasSubstr(R"("items":[{"find":"Fabrikam","replace":"Contoso","counts":{"slides":1}},)"
                          R"({"find":"Ask","replace":"Tell","counts":{"footer":0,"notes":1}}],"warnings":[]})"));
}

TEST_F(SavedJobProgramTest, ARunFollowsTheOptionsOfTheJob)
{
    SavePairOfDesktop([](const ProjectOwner& project) {
        project->options->BackupMode = true;
        project->options->Include_Subfolders = true;
    });
    const std::string before = ContentOf(PathOf(u"decks/inner/c.pptx"));
    SetMode(PathOf(u"decks/b.pptx"), 0444);

    const Outcome outcome = program.Run({"run", "job.tsq", "--replace"});

    EXPECT_THAT(outcome.output, HasSubstr("3 files: 2 changed, 0 unchanged, 1 failed"));
    EXPECT_THAT(outcome.output, HasSubstr("b.pptx: failed: Read Only File."));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(ContentOf(PathOf(u"decks/inner/c..bak")), before);
}

TEST_F(SavedJobProgramTest, ReadsAListOfFilesAsTheDesktopDoes)
{
    // Lines end in CR LF, a file that is not there is left out without a word.
    program.folder.Write(u"list.TXT", FullPath(u"decks/inner/c.pptx") + "\r\n" + FullPath(u"decks/gone.pptx") + "\r\n" +
                                          FullPath(u"decks/a.pptx") + "\r\n");
    SavePairOfDesktop([&](const ProjectOwner& project) {
        project->options->FileToProcessSourceType = 7;
        project->options->FileToProcessFilepath = PathOf(u"list.TXT");
    });

    const Outcome outcome = program.Run({"run", "job.tsq", "--verbose"});

    EXPECT_LT(outcome.output.find("c.pptx: 1 found"), outcome.output.find("a.pptx: 1 found"));
    EXPECT_THAT(outcome.output, HasSubstr("2 files: 2 with hits"));
}

TEST_F(SavedJobProgramTest, PathsTakeThePlaceOfTheJobsOwn)
{
    SavePairOfDesktop([](const ProjectOwner& project) { project->options->FileToProcessFolderPath = u"C:\\decks"; });

    const Outcome outcome = program.Run({"run", "job.tsq", "decks/inner", "decks/a.pptx"});

    EXPECT_THAT(outcome.output, HasSubstr("decks/inner" + Native("/c.pptx: 1 found\n")));
    EXPECT_THAT(outcome.output, HasSubstr("2 files: 2 with hits"));
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(SavedJobProgramTest, ReplacesAPatternThatTheWindowDoesNotOffer)
{
    SavePairOfDesktop([](const ProjectOwner& project) { project->options->ComaSepAllowedExtensions = u"*.pot*"; });

    const Outcome outcome = program.Run({"run", "job.tsq"});

    EXPECT_EQ(outcome.error,
              "tessarine-batch: the job's file pattern \"*.pot*\" is not one that the window offers; as there, the run "
              "takes \"*.Ppt*\"\n");
    EXPECT_THAT(outcome.output, HasSubstr("2 files: 1 with hits"));
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(SavedJobProgramTest, AJobWithoutAMatchingFileSaysSo)
{
    program.folder.MakeFolder(u"empty");
    SavePairOfDesktop(
        [&](const ProjectOwner& project) { project->options->FileToProcessFolderPath = PathOf(u"empty"); });

    const Outcome outcome = program.Run({"run", "job.tsq", "--replace"});

    EXPECT_EQ(outcome.error, "tessarine-batch: no file matches\n");
    EXPECT_EQ(outcome.output, "0 files: 0 changed, 0 unchanged, 0 failed; 0 occurrences replaced\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(SavedJobProgramTest, RefusesAFileThatIsNoJobInOneLine)
{
    program.folder.Write(u"text.tsq", "a\ntext");
    SavePairOfDesktop();
    const std::string job = ContentOf(PathOf(u"job.tsq"));
    program.folder.Write(u"cut.tsq", job.substr(0, job.size() / 2));
    program.folder.Write(u"job.txt", job);
    std::string flipped = job;
    flipped[job.size() / 2] = static_cast<char>(flipped[job.size() / 2] ^ 1);
    program.folder.Write(u"flipped.tsq", flipped);

    for (const std::vector<std::string>& command : {std::vector<std::string>{"run"}, {"job", "show"}}) {
        const auto refusal = [&](const std::string& file) {
            auto arguments = command;
            arguments.push_back(file);
            return RefusalOf(arguments);
        };
        EXPECT_EQ(refusal("gone.tsq"), "there is no job \"gone.tsq\"\n");
        EXPECT_EQ(refusal("decks"), "there is no job \"decks\"\n");
        EXPECT_EQ(refusal("job.txt"), "\"job.txt\" is not a job: the name of a project file ends in .tsq\n");
        EXPECT_THAT(refusal("text.tsq"),
                    HasSubstr("can't load the job \"text.tsq\": Invalid file format: this is not a "
                              "project file"));
        EXPECT_THAT(refusal("cut.tsq"), HasSubstr("the file ends at byte"));
        EXPECT_THAT(refusal("flipped.tsq"), HasSubstr("the checksum does not match, so the file is damaged"));
    }
}

TEST_F(SavedJobProgramTest, RefusesAJobThatCantRunInOneLine)
{
    const auto refusal = [&](const std::function<void(const ProjectOwner&)>& change) {
        SavePairOfDesktop(change);
        return RefusalOf({"run", "job.tsq", "--replace"});
    };

    EXPECT_EQ(refusal([](const ProjectOwner& project) { project->FindAndReplaceList->Remove(1); }),
              "the job has no pair to look for\n");
    EXPECT_EQ(refusal([](const ProjectOwner& project) { project->options->FileToProcessFolderPath = u""; }),
              "the job does not name its folder\n");
    EXPECT_EQ(refusal([](const ProjectOwner& project) { project->options->FileToProcessFolderPath = u"C:\\decks"; }),
              "there is no folder \"C:\\decks\"\n");
    EXPECT_EQ(refusal([](const ProjectOwner& project) { project->options->FileToProcessSourceType = 1; }),
              "the job does not name its list of files\n");
    EXPECT_EQ(refusal([&](const ProjectOwner& project) {
                  project->options->FileToProcessSourceType = 1;
                  project->options->FileToProcessFilepath = u"gone.txt";
              }),
              "there is no list of files \"gone.txt\"\n");
    EXPECT_THAT(refusal([&](const ProjectOwner& project) {
                    project->options->FileToProcessSourceType = 1;
                    project->options->FileToProcessFilepath = program.folder.Write(u"list.csv", "");
                }),
                HasSubstr("has an extension that such a file can't have"));
    EXPECT_THAT(refusal([](const ProjectOwner& project) { AddPair(project, u"a", u"ba"); }), HasSubstr("never ends"));
    EXPECT_THAT(refusal([](const ProjectOwner& project) {
                    project->CustomProperies->Remove(1);
                    project->CustomProperies->Remove(1);
                }),
                HasSubstr("lacks its first two custom properties"));
}

/// The header row of a list file and rows of two texts with InSlides on.
std::string ListOf(const std::vector<std::pair<std::string, std::string>>& pairs)
{
    std::string list =
        "Find What,Replace With,InBuiltinProperty,InCustomProperties,InFooter,InHandoutMaster,InHeader,"
        "InHyperlinkAddresses,InLinks,InNotes,InNotesMaster,InShapesAndTextboxes,InSlideMasterPerPresentation,"
        "InSlideMasterPerSlide,InSlides,InTitleMaster,MatchCase,MatchWholeWord\r\n";
    for (const auto& [find, with] : pairs)
        list += find + "," + with + ",FALSE,FALSE,FALSE,FALSE,FALSE,FALSE,FALSE,FALSE,FALSE,FALSE,FALSE,FALSE,TRUE," +
                "FALSE,FALSE,FALSE\r\n";
    return list;
}

TEST_F(SavedJobProgramTest, AJobMayTakeItsPairsFromAListFile)
{
    program.folder.Write(u"pairs.Csv", ListOf({{"Fabrikam", "Contoso"}, {"2023", "2024"}}));
    SaveFromDesktop([&](const ProjectOwner& project) {
        AddPair(project, u"Nothing", u"of the grid");
        AddSource(project, u" external ", u"  " + PathOf(u"pairs.Csv") + u" ");
    });

    const Outcome outcome = program.Run({"run", "job.tsq", "--replace"});

    EXPECT_EQ(outcome.output, EngineLine + FullPath(u"decks/a.pptx") +
                                  ": changed, 2 replaced\n"
                                  "    \"Fabrikam\" -> \"Contoso\"  slides 1\n"
                                  "    \"2023\" -> \"2024\"         slides 1\n"
                                  "\n"
                                  "2 files: 1 changed, 1 unchanged, 0 failed; 2 occurrences replaced\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(
        program.Run({"job", "show", "job.tsq"}).output,
        HasSubstr("Pairs: those of the list \"" + FullPath(u"pairs.Csv") + "\"; not the job's own (1 pair):\n"));
}

TEST_F(SavedJobProgramTest, RefusesAUselessListFileInOneLine)
{
    const auto refusal = [&](const String& list) {
        SaveFromDesktop([&](const ProjectOwner& project) {
            AddPair(project, u"Fabrikam", u"of the grid");
            AddSource(project, u"EXTERNAL", list);
        });
        return RefusalOf({"run", "job.tsq", "--replace"});
    };

    EXPECT_EQ(refusal(u""), "the job does not name its list of pairs\n");
    EXPECT_EQ(refusal(u"gone.csv"), "there is no list of pairs \"gone.csv\"\n");
    EXPECT_THAT(refusal(program.folder.Write(u"pairs.txt", ListOf({{"a", "b"}}))),
                HasSubstr("has an extension that such a file can't have"));
    EXPECT_EQ(refusal(program.folder.Write(u"none.csv", ListOf({}))), "the job has no pair to look for\n");
    EXPECT_THAT(refusal(program.folder.Write(u"endless.csv", ListOf({{"a", "ba"}}))), HasSubstr("never ends"));
    EXPECT_THAT(refusal(program.folder.Write(u"other.csv", "a,b\r\n")), HasSubstr("it has 2 columns"));
    std::string otherHeaders = ListOf({{"a", "b"}});
    otherHeaders.replace(0, 9, "Find text");
    EXPECT_THAT(refusal(program.folder.Write(u"headers.csv", otherHeaders)),
                HasSubstr("its column 1 is headed \"Find text\""));
}

TEST_F(SavedJobProgramTest, APairThatNeverEndsMayBeLookedFor)
{
    SavePairOfDesktop([](const ProjectOwner& project) { AddPair(project, u"Fabrikam", u"the Fabrikam"); });

    EXPECT_EQ(program.Run({"run", "job.tsq"}).status, 0);
}

TEST_F(SavedJobProgramTest, AJobIsShownForPeople)
{
    SavePairOfDesktop([&](const ProjectOwner& project) {
        AddPair(project, u"a\tb", u"", &OptionSetting::InNotes);
        project->FindAndReplaceList->Item(2)->OptionSetting->InLinks = true;
        project->FindAndReplaceList->Item(2)->OptionSetting->MatchCase = true;
        project->FindAndReplaceList->Item(2)->OptionSetting->MatchWholeWord = true;
        project->FindAndReplaceList->Item(1)->OptionSetting->InSlides = false;
        project->options->BackupMode = project->options->Include_Subfolders = true;
        project->options->FileToProcessFolderPath = u"C:\\decks";
        project->options->RestartApplicationAfterFiles = 20;
    });

    const Outcome outcome = program.Run({"job", "show", "job.tsq"});

    EXPECT_EQ(outcome.output,
              "job.tsq\n"
              "Pairs: 2\n"
              "    \"Fabrikam\" -> \"Contoso\"  in no place\n"
              "    \"a\\tb\" -> \"\"  in notes, links; match case; whole words\n"
              "Files: *.Ppt* in \"C:\\decks\" and its subfolders\n"
              "Options:\n"
              "    copies each file beside itself first\n"
              "    counts every occurrence\n"
              "    starts the presentation program anew after every 20 files\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(SavedJobProgramTest, AJobIsShownForPrograms)
{
    SavePairOfDesktop([&](const ProjectOwner& project) {
        project->options->FileToProcessSourceType = 1;
        project->options->FileToProcessFilepath = FromUtf8("caf\xE9.txt");
        project->options->RevisionDocumentPropertyName = u"Rev";
        project->options->RevisionDocumentPropertyIncrimentedBy = u"0.1";
    });

    const auto job = nlohmann::json::parse(program.Run({"job", "show", "--format", "json", "job.tsq"}).output);

    EXPECT_EQ(job["job"], "job.tsq");
    EXPECT_EQ(job["list"], nlohmann::json::parse(R"({"external":false,"file":""})"));
    EXPECT_EQ(job["items"], nlohmann::json::parse(R"([{"find":"Fabrikam","replace":"Contoso","in":["slides"],)"
                                                  R"("matchCase":false,"wholeWord":false,"prompt":false}])"));
    EXPECT_EQ(job["files"]["listed"], true);
    EXPECT_EQ(job["files"]["list"], "caf\xEF\xBF\xBD.txt");
    EXPECT_EQ(job["files"]["folder"], FullPath(u"decks"));
    EXPECT_EQ(job["files"]["patterns"], "*.Ppt*");
    EXPECT_EQ(job["options"]["revisionBy"], "0.1");
    EXPECT_EQ(job["options"]["count"], true);
    EXPECT_EQ(job["customProperties"][1],
              nlohmann::json::parse(R"({"name":"FindAndReplaceListSource","value":"INTERNAL"})"));
}

TEST_F(SavedJobProgramTest, WhatIsMadeRunsAndUndoesItself)
{
    const std::string before = ContentOf(PathOf(u"decks/a.pptx"));
    Make({"--find", "Fabrikam", "--with", "Contoso", "--match-case", "-o", "there.tsq", "decks"});
    Make({"--find", "Contoso", "--with", "Fabrikam", "--match-case", "-o", "back.tsq", "decks"});

    EXPECT_THAT(program.Run({"run", "there.tsq", "--replace"}).output, HasSubstr("2 replaced\n"));
    EXPECT_NE(ContentOf(PathOf(u"decks/a.pptx")), before);
    EXPECT_THAT(program.Run({"run", "back.tsq", "--replace"}).output, HasSubstr("2 replaced\n"));

    EXPECT_THAT(program.Run({"find", "--find", "Fabrikam", "decks/a.pptx"}).output, HasSubstr("2 found\n"));
}

}  // namespace
}  // namespace tessarine::test
