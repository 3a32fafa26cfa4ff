
#include <limits>

#include "files/Files.h"
#include "files/FileState.h"
#include "log/ErrorLog.h"
#include "model/ProjectFileTest.h"
#include "support/OrdinaryUser.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace tessarine
{
namespace
{

using namespace std::string_literals;
using test::StoredRecord;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using ProjectSave = ProjectFileTest;

/// The 17 switches in the file's order, each name after a prefix.
std::vector<StoredRecord> Switches(const std::string& prefix, const std::vector<std::string>& on)
{
    std::vector<StoredRecord> records;
    for (const char* name :
         {"InBuiltinProperty", "InCustomProperties", "InFooter", "InHandoutMaster", "InHeader", "InHyperlinkAddresses",
          "InLinks", "InNotes", "InNotesMaster", "InShapesAndTextboxes", "InSlideMasterPerPresentation",
          "InSlideMasterPerSlide", "InSlides", "InTitleMaster", "MatchCase", "MatchWholeWord", "PromptOnReplace"})
        records.push_back({prefix + name, std::find(on.begin(), on.end(), name) != on.end()});
    return records;
}

std::vector<std::string> NamesOf(const std::vector<StoredRecord>& records)
{
    std::vector<std::string> names;
    for (const StoredRecord& record : records)
        names.push_back(record.name);
    return names;
}

TEST_F(ProjectSave, WritesEveryKeyInItsPlaceAndType)
{
    const ProjectOwner project;
    ProjectOptions& options = *project->options;
    options.AllowAlerts = options.KeepOriginalFileDate = options.ProcessReadonlyFiles = options.CPUUsage = true;
    options.ComaSepAllowedExtensions = u"*.Ppt*";
    options.ExeLocationIncaseOfFailure = u"exe";
    options.FileToProcessFilepath = u"list.txt";
    options.FileToProcessFolderPath = u"/décks";
    options.FileToProcessSourceType = 1;
    options.RestartApplicationAfterFiles = 20;
    options.RestartApplicationAfterSeconds = -1;
    options.RevisionDocumentPropertyIncrimentedBy = u"0.1";
    options.RevisionDocumentPropertyName = u"Rev";
    options.PowerpointVersion = 9;
    project->FindAndReplaceItemsOptionSetting->InLinks = true;
    AddItem(project, u"Fabrikam", u"Contoso")->OptionSetting->InSlides = true;
    AddItem(project, u"", u"")->OptionSetting->PromptOnReplace = true;
    project->CustomProperies->Add(u"FindAndReplaceFilePath", u"");
    project->CustomProperies->Add(u"LANG", u"English.lng");

    Save(project, path_);

    std::vector<StoredRecord> expected{{"FindReplaceItemsCount", 2},
                                       {"AllowAlerts", true},
                                       {"BackupMode", false},
                                       {"ComaSepAllowedExtensions", "*.Ppt*"s},
                                       {"ExeLocationIncaseOfFailure", "exe"s},
                                       {"FileToProcessFilepath", "list.txt"s},
                                       {"FileToProcessFolderPath",
                                        "/d\xC3\xA9"
                                        "cks"s},
                                       {"FileToProcessSourceType", 1},
                                       {"Include_Subfolders", false},
                                       {"KeepOriginalFileDate", true},
                                       {"ProcessLongestFindwhatFirst", false},
                                       {"ProcessReadonlyFiles", true},
                                       {"RestartApplicationAfterFiles", 20},
                                       {"RestartApplicationAfterSeconds", -1},
                                       {"RevisionDocumentPropertyIncrimentedBy", "0.1"s},
                                       {"RevisionDocumentPropertyName", "Rev"s},
                                       {"PowerpointVersion", 9},
                                       {"RequiredFindAndReplaceCount", false},
                                       {"CPUUsage", true}};
    const auto append = [&](const std::vector<StoredRecord>& records) {
        expected.insert(expected.end(), records.begin(), records.end());
    };
    append(Switches("", {"InLinks"}));
    append({{"Item0FindWhat", "Fabrikam"s}, {"Item0ReplaceWith", "Contoso"s}});
    append(Switches("Item0", {"InSlides"}));
    append({{"Item1FindWhat", ""s}, {"Item1ReplaceWith", ""s}});
    append(Switches("Item1", {"PromptOnReplace"}));
    append({{"Propery1", "FindAndReplaceFilePath|"s}, {"Propery2", "LANG|English.lng"s}, {"CustomPropertyCount", 2}});
    EXPECT_EQ(RecordsIn(path_), expected);
    EXPECT_THAT(log_.Lines(), IsEmpty());
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(ProjectSave, OfAnEmptyProjectHasBothCountsAtZero)
{
    const ProjectOwner project;

    Save(project, path_);

    const auto records = RecordsIn(path_);
    EXPECT_EQ(records.size(), 37u);
    EXPECT_EQ(records.front(), (StoredRecord{"FindReplaceItemsCount", 0}));
    EXPECT_EQ(records.back(), (StoredRecord{"CustomPropertyCount", 0}));
}

TEST_F(ProjectSave, OfTwoItemsHasNoThird)
{
    const ProjectOwner project;
    AddItem(project, u"a");
    AddItem(project, u"b");

    Save(project, path_);

    const auto names = NamesOf(RecordsIn(path_));
    EXPECT_THAT(names, Contains(StartsWith("Item0")).Times(19));
    EXPECT_THAT(names, Contains(StartsWith("Item1")).Times(19));
    EXPECT_THAT(names, Not(Contains(StartsWith("Item2"))));
}

TEST_F(ProjectSave, StoresNeitherPasswordNorStateOfARun)
{
    const ProjectOwner project;
    project->options->PasswordToOpen = u"secret";
    project->options->IsFindOnly = false;
    AddItem(project, u"a")->OptionSetting->SearchMethod = 5;

    Save(project, path_);

    EXPECT_EQ(ContentOf(path_).find("secret"), std::string::npos);
    EXPECT_THAT(NamesOf(RecordsIn(path_)),
                Each(testing::AllOf(Not(HasSubstr("SearchMethod")), Not(HasSubstr("Password")),
                                    Not(HasSubstr("IsFindOnly")), Not(HasSubstr("IsProcessCancel")))));
}

TEST_F(ProjectSave, AddsTheExtensionUnlessItIsThere)
{
    const ProjectOwner project;
    const auto saved = [&](StringView name) { return Save(project, folder_.PathOf(name)); };

    EXPECT_EQ(saved(u"a"), folder_.PathOf(u"a.tsq"));
    EXPECT_EQ(saved(u"b.old"), folder_.PathOf(u"b.old.tsq"));
    EXPECT_EQ(saved(u"c.TsQ"), folder_.PathOf(u"c.TsQ"));
    EXPECT_EQ(saved(u"d.tsq"), folder_.PathOf(u"d.tsq"));
    EXPECT_EQ(saved(u"e.tsqx"), folder_.PathOf(u"e.tsqx.tsq"));
    EXPECT_EQ(saved(u"tsq"), folder_.PathOf(u"tsq.tsq"));
    for (const StringView name : {u"a.tsq", u"b.old.tsq", u"c.TsQ", u"d.tsq", u"e.tsqx.tsq", u"tsq.tsq"})
        EXPECT_FALSE(RecordsIn(folder_.PathOf(name)).empty());
}

TEST_F(ProjectSave, TakesADotInAFoldersNameForTheExtension)
{
    const ProjectOwner project;
    folder_.MakeFolder(u"jobs.tsq");

    EXPECT_EQ(Save(project, folder_.PathOf(u"jobs.tsq/name")), folder_.PathOf(u"jobs.tsq/name.tsq"));
}

TEST_F(ProjectSave, OfAnEmptyPathDoesNothing)
{
    const ProjectOwner project;

    EXPECT_EQ(Save(project, u""), u"");

    EXPECT_THAT(log_.Lines(), IsEmpty());
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(ProjectSave, IntoAMissingFolderSaysSo)
{
    const ProjectOwner project;
    const String folder = folder_.PathOf(u"gone");

    EXPECT_EQ(Save(project, folder + u"/job"), folder + u"/job");

    EXPECT_THAT(messages_.Messages(),
                ElementsAre(MessageRecorder::Message{folder + u" directory is not present.", MessageIcon::Information,
                                                     MessageButtons::Ok}));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ProjectSave, WithoutAFolderIsLogged)
{
    const ProjectOwner project;

    EXPECT_EQ(Save(project, u"job.tsq"), u"job.tsq");

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 5 (Invalid procedure call or argument) in procedure SaveAsProject at "
                                          "Line No. 0 of Class Module Project"));
    EXPECT_EQ(ContentOf(u"job.tsq"), "<missing>");
    ASSERT_TRUE(project->FileFailure);
    EXPECT_EQ(project->FileFailure->number, 5);
}

TEST_F(ProjectSave, OfMoreThan32767ItemsLeavesTheOldFile)
{
    const ProjectOwner project;
    for (int i = 0; i < 32767; ++i)
        AddItem(project, FromUtf8(std::to_string(i)));
    Save(project, path_);
    EXPECT_THAT(log_.Lines(), IsEmpty());
    const std::string old = ContentOf(path_);
    EXPECT_NE(old.find("Item32766PromptOnReplace"), std::string::npos);

    AddItem(project, u"one more");
    Save(project, path_);

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 6 (Overflow) in procedure SaveAsProject at Line No. 0 of Class "
                                          "Module Project"));
    EXPECT_TRUE(ContentOf(path_) == old);
}

TEST_F(ProjectSave, OfTooManyCustomPropertiesLeavesNoFile)
{
    const ProjectOwner project;
    for (int i = 0; i < 32768; ++i)
        project->CustomProperies->Add(u"n", u"v");

    Save(project, path_);

    EXPECT_THAT(log_.Lines(), ElementsAre(StartsWith("Error 6 (Overflow) in procedure SaveAsProject")));
    EXPECT_EQ(ContentOf(path_), "<missing>");
}

TEST_F(ProjectSave, LeavesAFolderOfThatNameAlone)
{
    const ProjectOwner project;
    folder_.MakeFolder(u"job.tsq");

    Save(project, path_);

    EXPECT_THAT(log_.Lines(), ElementsAre(HasSubstr("in procedure SaveAsProject")));
    EXPECT_TRUE(FolderExists(path_));
}

TEST_F(ProjectSave, LeavesTheTailOfALongerFile)
{
    const ProjectOwner project;
    const std::string block = ContentOf(Save(project, folder_.PathOf(u"alone.tsq")));
    const std::string old(block.size() + 100'000, 'o');
    folder_.Write(u"job.tsq", old);

    Save(project, path_);

    EXPECT_TRUE(ContentOf(path_) == block + old.substr(block.size()));
}

TEST_F(ProjectSave, ReplacesAShorterFileWhole)
{
    const ProjectOwner project;
    folder_.Write(u"job.tsq", "old");

    Save(project, path_);

    EXPECT_EQ(RecordsIn(path_).size(), 37u);
    EXPECT_EQ(ContentOf(path_), ContentOf(Save(project, folder_.PathOf(u"alone.tsq"))));
}

TEST_F(ProjectSave, OfTheProjectsOwnPathDoesNothing)
{
    const ProjectOwner project;
    Save(project, path_);
    const std::string before = ContentOf(path_);
    AddItem(project, u"a");

    project->SaveProject();

    EXPECT_EQ(ContentOf(path_), before);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ProjectSave, WritesNoOtherFileForAPathWithANul)
{
    const ProjectOwner project;
    const String path = path_ + u"\0.tsq"s;

    Save(project, path);

    EXPECT_EQ(ContentOf(path_), "<missing>");
    EXPECT_THAT(log_.Lines(), ElementsAre(HasSubstr("in procedure SaveAsProject")));
}

}  // namespace

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(ProjectSave, LeavesAFileThatCantBeWritten)
{
    const ProjectOwner project;
    folder_.Write(u"job.tsq", "old");
    SetMode(folder_.Path(), 0777);
    SetMode(path_, 0444);
    const OrdinaryUser user;

    Save(project, path_);

    EXPECT_THAT(log_.Lines(),
                ElementsAre(HasSubstr("in procedure SaveAsProject at Line No. 0 of Class Module Project")));
    EXPECT_EQ(ContentOf(path_), "old");
}

TEST_F(ProjectSave, WritesIntoTheFileWhereItsFolderIsClosed)
{
    const ProjectOwner project;
    const std::string block = ContentOf(Save(project, folder_.PathOf(u"alone.tsq")));
    folder_.Write(u"job.tsq", "old");
    SetMode(path_, 0666);
    const auto before = FileStateOf(path_);
    SetMode(folder_.Path(), 0555);
    {
        const OrdinaryUser user;
        Save(project, path_);
    }

    EXPECT_TRUE(ContentOf(path_) == block);
    EXPECT_EQ(FileStateOf(path_)->identity, before->identity);
    EXPECT_THAT(log_.Lines(), testing::IsEmpty());
    EXPECT_THAT(FilesOfFolder(ApplicationDataFolder), testing::IsEmpty());
}

TEST_F(ProjectSave, MakesNoFileInAClosedFolder)
{
    const ProjectOwner project;
    SetMode(folder_.Path(), 0555);
    {
        const OrdinaryUser user;
        Save(project, path_);
    }

    EXPECT_THAT(log_.Lines(), ElementsAre(HasSubstr("in procedure SaveAsProject")));
    EXPECT_EQ(ContentOf(path_), "<missing>");
}

TEST_F(ProjectSave, LeavesAFileThatMayBeWrittenButNotRead)
{
    const ProjectOwner project;
    folder_.Write(u"job.tsq", "old");
    SetMode(folder_.Path(), 0777);
    SetMode(path_, 0222);
    {
        const OrdinaryUser user;
        Save(project, path_);
    }
    SetMode(path_, 0644);

    EXPECT_THAT(log_.Lines(), ElementsAre(HasSubstr("in procedure SaveAsProject")));
    EXPECT_EQ(ContentOf(path_), "old");
}

TEST_F(ProjectSave, KeepsTheModeOfAnOldFile)
{
    const ProjectOwner project;
    const mode_t mask = umask(027);
    folder_.Write(u"old.tsq", "old");
    SetMode(folder_.PathOf(u"old.tsq"), 0604);

    Save(project, path_);
    Save(project, folder_.PathOf(u"old.tsq"));
    umask(mask);

    EXPECT_EQ(ModeOf(path_), 0640u);
    EXPECT_EQ(ModeOf(folder_.PathOf(u"old.tsq")), 0604u);
}

#endif

}  // namespace tessarine
