#include "model/ProjectFileTest.h"

namespace tessarine
{
namespace
{

using namespace std::string_literals;
using test::StoredRecord;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using ProjectLoad = ProjectFileTest;

TEST_F(ProjectLoad, GivesBackWhatWasSaved)
{
    const ProjectOwner saved;
    ProjectOptions& options = *saved->options;
    options.AllowAlerts = options.BackupMode = options.Include_Subfolders = options.ProcessLongestFindwhatFirst = true;
    options.RequiredFindAndReplaceCount = options.KeepOriginalFileDate = options.ProcessReadonlyFiles = true;
    options.CPUUsage = true;
    options.ComaSepAllowedExtensions = u"*.Ppt*;*.pot*";
    options.ExeLocationIncaseOfFailure = u"exe";
    options.FileToProcessFilepath = u"/list.txt";
    options.FileToProcessFolderPath = u"/decks";
    options.FileToProcessSourceType = 7;
    options.RestartApplicationAfterFiles = 20;
    options.RestartApplicationAfterSeconds = 30;
    options.RevisionDocumentPropertyIncrimentedBy = u"0.1";
    options.RevisionDocumentPropertyName = u"Rev";
    options.PowerpointVersion = -9;
    saved->FindAndReplaceItemsOptionSetting->InTitleMaster = true;
    AddItem(saved, u"a", u"b")->OptionSetting->InNotes = true;
    AddItem(saved, u"c", u"d")->OptionSetting->MatchCase = true;
    saved->CustomProperies->Add(u"name", u"value");
    Save(saved, path_);
    const ProjectOwner project;

    EXPECT_TRUE(Load(project, path_).succeeded);

    const ProjectOptions& loaded = *project->options;
    EXPECT_TRUE(loaded.AllowAlerts && loaded.BackupMode && loaded.Include_Subfolders && loaded.CPUUsage &&
                loaded.ProcessLongestFindwhatFirst && loaded.RequiredFindAndReplaceCount &&
                loaded.KeepOriginalFileDate && loaded.ProcessReadonlyFiles && loaded.IsFindOnly);
    EXPECT_EQ(loaded.ComaSepAllowedExtensions, u"*.Ppt*;*.pot*");
    EXPECT_EQ(loaded.ExeLocationIncaseOfFailure, u"exe");
    EXPECT_EQ(loaded.FileToProcessFilepath, u"/list.txt");
    EXPECT_EQ(loaded.FileToProcessFolderPath, u"/decks");
    EXPECT_EQ(loaded.FileToProcessSourceType, 7);
    EXPECT_EQ(loaded.RestartApplicationAfterFiles, 20);
    EXPECT_EQ(loaded.RestartApplicationAfterSeconds, 30);
    EXPECT_EQ(loaded.RevisionDocumentPropertyIncrimentedBy, u"0.1");
    EXPECT_EQ(loaded.RevisionDocumentPropertyName, u"Rev");
    EXPECT_EQ(loaded.PowerpointVersion, -9);
    EXPECT_TRUE(project->FindAndReplaceItemsOptionSetting->InTitleMaster);
    EXPECT_FALSE(project->FindAndReplaceItemsOptionSetting->InNotes);
    ASSERT_EQ(project->FindAndReplaceList->Count(), 2);
    EXPECT_EQ(project->FindAndReplaceList->Item(1)->FindWhat, u"a");
    EXPECT_TRUE(project->FindAndReplaceList->Item(1)->OptionSetting->InNotes);
    EXPECT_EQ(project->FindAndReplaceList->Item(2)->ReplaceWith, u"d");
    EXPECT_TRUE(project->FindAndReplaceList->Item(2)->OptionSetting->MatchCase);
    EXPECT_FALSE(project->FindAndReplaceList->Item(2)->OptionSetting->InNotes);
    EXPECT_THAT(CustomPropertiesOf(project), ElementsAre("name=value"));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

/// Every switch for itself, so that none is stored under another's key.
TEST_F(ProjectLoad, GivesEachSwitchBackToItsOwnField)
{
    constexpr bool OptionSetting::*fields[] = {&OptionSetting::InBuiltinProperty,
                                               &OptionSetting::InCustomProperties,
                                               &OptionSetting::InFooter,
                                               &OptionSetting::InHandoutMaster,
                                               &OptionSetting::InHeader,
                                               &OptionSetting::InHyperlinkAddresses,
                                               &OptionSetting::InLinks,
                                               &OptionSetting::InNotes,
                                               &OptionSetting::InNotesMaster,
                                               &OptionSetting::InShapesAndTextboxes,
                                               &OptionSetting::InSlideMasterPerPresentation,
                                               &OptionSetting::InSlideMasterPerSlide,
                                               &OptionSetting::InSlides,
                                               &OptionSetting::InTitleMaster,
                                               &OptionSetting::MatchCase,
                                               &OptionSetting::MatchWholeWord,
                                               &OptionSetting::PromptOnReplace};
    const ProjectOwner saved;
    for (const auto field : fields)
        (*AddItem(saved, u"a")->OptionSetting).*field = true;
    Save(saved, path_);
    const ProjectOwner project;

    Load(project, path_);

    std::int32_t position = 0;
    for (const auto on : fields) {
        const auto item = project->FindAndReplaceList->Item(++position);
        for (const auto field : fields)
            EXPECT_EQ((*item->OptionSetting).*field, on == field) << position;
    }
}

TEST_F(ProjectLoad, MakesItemsOfThisProjectWithOptionsOfTheirOwn)
{
    const ProjectOwner saved;
    const auto shared = std::make_shared<OptionSetting>();
    saved->FindAndReplaceList->Add(u"a", u"", shared, saved.get());
    saved->FindAndReplaceList->Add(u"b", u"", shared, saved.get());
    Save(saved, path_);
    const ProjectOwner project;

    Load(project, path_);

    const auto items = project->FindAndReplaceList->NewEnum();
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0]->Project, project.get());
    EXPECT_EQ(items[1]->Project, project.get());
    EXPECT_NE(items[0]->OptionSetting, items[1]->OptionSetting);
    EXPECT_EQ(items[0]->OptionSetting->SearchMethod, 0);
}

TEST_F(ProjectLoad, OfAnEmptyProjectGivesAnEmptyList)
{
    Save(ProjectOwner(), path_);
    const ProjectOwner project;
    AddItem(project, u"old");
    project->FindAndReplaceList->KeepExistingItems = true;

    EXPECT_TRUE(Load(project, path_).succeeded);

    EXPECT_EQ(project->FindAndReplaceList->Count(), 0);
}

TEST_F(ProjectLoad, ReplacesOptionsAndListAndDropsTheOldObjects)
{
    Save(ProjectOwner(), path_);
    const ProjectOwner project;
    AddItem(project, u"old");
    project->options->PasswordToOpen = u"secret";
    project->options->IsFindOnly = false;
    const std::weak_ptr<FindAndReplaceItem> item = project->FindAndReplaceList->Item(1);
    const std::weak_ptr<ProjectOptions> options = project->options;
    const std::weak_ptr<OptionSetting> setting = project->FindAndReplaceItemsOptionSetting;

    Load(project, path_);

    EXPECT_TRUE(item.expired() && options.expired() && setting.expired());
    EXPECT_EQ(project->options->PasswordToOpen, u"");
    EXPECT_TRUE(project->options->IsFindOnly);
}

TEST_F(ProjectLoad, AppendsTheCustomPropertiesToThoseThatAreThere)
{
    const ProjectOwner saved;
    saved->CustomProperies->Add(u"FindAndReplaceListSource", u"INTERNAL");
    Save(saved, path_);
    const ProjectOwner project;
    project->CustomProperies->Add(u"FindAndReplaceListSource", u"EXTERNAL");

    Load(project, path_);
    Load(project, path_);

    EXPECT_THAT(CustomPropertiesOf(project),
                ElementsAre("FindAndReplaceListSource=EXTERNAL", "FindAndReplaceListSource=INTERNAL",
                            "FindAndReplaceListSource=INTERNAL"));
}

TEST_F(ProjectLoad, DoesNotReadTheListFileOfAnExternalList)
{
    const ProjectOwner saved;
    AddItem(saved, u"of the grid");
    saved->CustomProperies->Add(u"FindAndReplaceFilePath", folder_.PathOf(u"gone.csv"));
    saved->CustomProperies->Add(u"FindAndReplaceListSource", u"EXTERNAL");
    Save(saved, path_);
    const ProjectOwner project;

    EXPECT_TRUE(Load(project, path_).succeeded);

    EXPECT_EQ(project->FindAndReplaceList->Item(1)->FindWhat, u"of the grid");
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ProjectLoad, CutsACustomPropertyAtItsVerticalBars)
{
    const ProjectOwner saved;
    saved->CustomProperies->Add(u"two words", u"first|second|third");
    saved->CustomProperies->Add(u"empty", u"");
    saved->CustomProperies->Add(u"", u"nameless");
    saved->CustomProperies->Add(u"name|part", u"value");
    Save(saved, path_);
    const ProjectOwner project;

    Load(project, path_);

    EXPECT_THAT(CustomPropertiesOf(project), ElementsAre("two words=first", "empty=", "=nameless", "name=part"));
}

TEST_F(ProjectLoad, TakesTheExtensionInAnyCase)
{
    const ProjectOwner project;
    Save(project, folder_.PathOf(u"job.TsQ"));

    EXPECT_TRUE(Load(project, folder_.PathOf(u"job.TsQ")).succeeded);
}

TEST_F(ProjectLoad, IgnoresTheTailOfALongerOldFile)
{
    const ProjectOwner longer;
    for (int i = 0; i < 100; ++i)
        AddItem(longer, u"long", u"longer");
    Save(longer, path_);
    const auto length = ContentOf(path_).size();
    const ProjectOwner shorter;
    AddItem(shorter, u"short");
    Save(shorter, path_);
    const ProjectOwner project;

    EXPECT_TRUE(Load(project, path_).succeeded);

    EXPECT_EQ(project->FindAndReplaceList->Count(), 1);
    EXPECT_EQ(project->FindAndReplaceList->Item(1)->FindWhat, u"short");
    EXPECT_EQ(ContentOf(path_).size(), length);
}

TEST_F(ProjectLoad, ReadsNoMoreOfAHugeFileThanItsBlock)
{
    const ProjectOwner project;
    AddItem(project, u"a");
    Save(project, path_);
    SetSize(path_, std::uint64_t{1} << 40);

    EXPECT_TRUE(Load(project, path_).succeeded);
}

TEST_F(ProjectLoad, TakesAMissingKeyForAnEmptyValue)
{
    const ProjectOwner project;
    project->options->BackupMode = true;
    AddItem(project, u"old");

    EXPECT_TRUE(Load(project, WriteBag({})).succeeded);

    EXPECT_FALSE(project->options->BackupMode);
    EXPECT_EQ(project->options->FileToProcessFolderPath, u"");
    EXPECT_EQ(project->options->RestartApplicationAfterFiles, 0);
    EXPECT_EQ(project->FindAndReplaceList->Count(), 0);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ProjectLoad, TakesItemsWithoutKeysForEmptyOnes)
{
    const ProjectOwner project;

    EXPECT_TRUE(Load(project, WriteBag({{"FindReplaceItemsCount", 2}, {"Item1ReplaceWith", "b"s}})).succeeded);

    ASSERT_EQ(project->FindAndReplaceList->Count(), 2);
    EXPECT_EQ(project->FindAndReplaceList->Item(1)->FindWhat, u"");
    EXPECT_EQ(project->FindAndReplaceList->Item(2)->ReplaceWith, u"b");
    EXPECT_FALSE(project->FindAndReplaceList->Item(2)->OptionSetting->InSlides);
}

TEST_F(ProjectLoad, TakesKeysInAnyOrderAndLeavesUnknownOnesAside)
{
    const ProjectOwner project;

    EXPECT_TRUE(Load(project, WriteBag({{"Unknown", 1},
                                        {"CustomPropertyCount", 1},
                                        {"Propery1", "name|value"s},
                                        {"Property1", "other|value"s},
                                        {"Item0FindWhat", "a"s},
                                        {"FindReplaceItemsCount", 1}}))
                    .succeeded);

    EXPECT_EQ(project->FindAndReplaceList->Item(1)->FindWhat, u"a");
    EXPECT_THAT(CustomPropertiesOf(project), ElementsAre("name=value"));
}

TEST_F(ProjectLoad, TakesANegativeCountForAnEmptyList)
{
    const ProjectOwner project;

    EXPECT_TRUE(Load(project, WriteBag({{"FindReplaceItemsCount", -1}, {"CustomPropertyCount", -1}})).succeeded);

    EXPECT_EQ(project->FindAndReplaceList->Count(), 0);
}

TEST_F(ProjectLoad, ConvertsValuesOfAnotherTypeWhereThatIsPossible)
{
    const ProjectOwner project;

    EXPECT_TRUE(Load(project, WriteBag({{"AllowAlerts", 5},
                                        {"BackupMode", 0},
                                        {"PowerpointVersion", true},
                                        {"ComaSepAllowedExtensions", 12},
                                        {"RevisionDocumentPropertyName", true}}))
                    .succeeded);

    EXPECT_TRUE(project->options->AllowAlerts);
    EXPECT_FALSE(project->options->BackupMode);
    EXPECT_EQ(project->options->PowerpointVersion, -1);
    EXPECT_EQ(project->options->ComaSepAllowedExtensions, u"12");
    EXPECT_EQ(project->options->RevisionDocumentPropertyName, u"True");
}

TEST_F(ProjectLoad, KeepsThePowerPointVersionThroughAFurtherSave)
{
    const ProjectOwner first;
    first->options->PowerpointVersion = 9;
    Save(first, path_);
    const ProjectOwner second;
    Load(second, path_);

    Save(second, folder_.PathOf(u"again.tsq"));

    EXPECT_THAT(RecordsIn(folder_.PathOf(u"again.tsq")), testing::Contains(StoredRecord{"PowerpointVersion", 9}));
    EXPECT_EQ(ContentOf(folder_.PathOf(u"again.tsq")), ContentOf(path_));
}

}  // namespace
}  // namespace tessarine
