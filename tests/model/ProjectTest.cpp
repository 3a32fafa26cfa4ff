#include "model/Project.h"

#include <gmock/gmock.h>

#include "support/ErrorLogRecorder.h"

namespace tessarine
{

TEST(NewProject, OnlyFindsAndHasNoPairsAndNoNamedStrings)
{
    const ProjectOwner project;

    EXPECT_TRUE(project->options->IsFindOnly);
    EXPECT_EQ(project->FindAndReplaceList->Count(), 0);
    EXPECT_EQ(project->CustomProperies->Count(), 0);
    EXPECT_NE(project->FindAndReplaceItemsOptionSetting, nullptr);
    EXPECT_FALSE(project->IsProcessCancel);
    EXPECT_FALSE(project->IsReqCount);
    EXPECT_TRUE(project->FilesToProcess.empty());
}

TEST(NewProject, HasEveryOtherOptionAtItsZeroValue)
{
    const ProjectOwner project;
    const ProjectOptions& options = *project->options;

    EXPECT_FALSE(options.CPUUsage || options.RequiredFindAndReplaceCount || options.ProcessReadonlyFiles ||
                 options.ProcessLongestFindwhatFirst || options.AllowAlerts || options.KeepOriginalFileDate ||
                 options.BackupMode || options.Include_Subfolders);
    EXPECT_EQ(options.PowerpointVersion, 0);
    EXPECT_EQ(options.RestartApplicationAfterSeconds, 0);
    EXPECT_EQ(options.RestartApplicationAfterFiles, 0);
    EXPECT_EQ(options.FileToProcessSourceType, 0);
    for (const String& text :
         {options.ComaSepAllowedExtensions, options.FileToProcessFolderPath, options.FileToProcessFilepath,
          options.ExeLocationIncaseOfFailure, options.RevisionDocumentPropertyIncrimentedBy,
          options.RevisionDocumentPropertyName, options.PasswordToOpen})
        EXPECT_EQ(text, u"");
}

TEST(Options, OfAProjectAloneStartAtZeroThroughout)
{
    EXPECT_FALSE(ProjectOptions().IsFindOnly);
}

TEST(Options, MakeTheirOwnOptionBlockOnFirstRead)
{
    ProjectOptions options;

    const auto first = options.OptionSetting();

    ASSERT_NE(first, nullptr);
    EXPECT_EQ(options.OptionSetting(), first);
}

TEST(Options, TakeAnotherOptionBlock)
{
    ProjectOptions options;
    const auto block = std::make_shared<OptionSetting>();

    options.PutOptionSetting(block);
    EXPECT_EQ(options.OptionSetting(), block);

    options.PutOptionSetting({});
    EXPECT_NE(options.OptionSetting(), block);
    EXPECT_NE(options.OptionSetting(), nullptr);
}

TEST(Project, LetsGoOfAReferenceThatIsReplaced)
{
    const ProjectOwner project;
    const std::weak_ptr<FindAndReplaceItems> old = project->FindAndReplaceList;

    project->FindAndReplaceList = std::make_shared<FindAndReplaceItems>();

    EXPECT_TRUE(old.expired());
}

TEST(Project, DoesNotHandItsOptionBlockToItems)
{
    const ProjectOwner project;
    project->FindAndReplaceItemsOptionSetting->MatchCase = true;

    const auto item = project->FindAndReplaceList->Add(u"a", u"b", std::make_shared<OptionSetting>(), project.get());

    EXPECT_FALSE(item->OptionSetting->MatchCase);
}

TEST(Project, GoesAwayWithItsOwnerInSpiteOfTheCircle)
{
    std::weak_ptr<Project> gone;

    {
        const ProjectOwner project;
        project->FindAndReplaceList->Add(u"a", u"b", std::make_shared<OptionSetting>(), project.get());
        gone = project.get();
    }

    EXPECT_TRUE(gone.expired());
}

TEST(Project, StaysAliveThroughAnItemThatAnotherListHolds)
{
    FindAndReplaceItems imported;

    {
        const ProjectOwner temporary;
        imported.Add(u"a", u"b", std::make_shared<OptionSetting>(), temporary.get());
        temporary->options->IsFindOnly = false;
    }

    EXPECT_FALSE(imported.Item(1)->Project->options->IsFindOnly);
}

TEST(ProjectEvents, ReachEveryReceiverInOrder)
{
    const ProjectOwner project;
    std::vector<std::string> seen;
    project->BeforFileProcess += [&](const String& path) { seen.push_back("first " + ToUtf8(path)); };
    project->BeforFileProcess += [&](const String& path) { seen.push_back("second " + ToUtf8(path)); };

    project->BeforFileProcess.Raise(u"a.ppt");

    EXPECT_THAT(seen, testing::ElementsAre("first a.ppt", "second a.ppt"));
}

}  // namespace tessarine
