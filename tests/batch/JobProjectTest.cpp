#include "batch/JobProject.h"

#include <gmock/gmock.h>

#include "batch/BatchCall.h"
#include "model/Project.h"
#include "model/ProjectKeys.h"

namespace tessarine::batch
{
namespace
{

TEST(JobProject, PairsShareOneSettingAndKeepTheirOrder)
{
    BatchCall call;
    call.pairs = {{u"a", u"1"}, {u"b", u"2"}};
    call.setting.InNotes = true;
    call.setting.MatchCase = true;
    const ProjectOwner project;

    FillProject(*project, call);

    const auto items = project->FindAndReplaceList->NewEnum();
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0]->FindWhat, u"a");
    EXPECT_EQ(items[1]->ReplaceWith, u"2");
    EXPECT_EQ(items[0]->OptionSetting, items[1]->OptionSetting);
    EXPECT_TRUE(items[0]->OptionSetting->InNotes && items[0]->OptionSetting->MatchCase);
    EXPECT_FALSE(items[0]->OptionSetting->InSlides);
    EXPECT_EQ(items[0]->Project, project.get());
}

TEST(JobProject, OptionsAreThoseOfTheCall)
{
    BatchCall call;
    call.count = call.backup = call.keepDate = call.readOnly = call.recurse = true;
    call.restartAfter = 7;
    call.revision = u"Rev";
    call.revisionBy = 0.5;
    const ProjectOwner project;

    FillProject(*project, call);

    const ProjectOptions& options = *project->options;
    EXPECT_TRUE(options.RequiredFindAndReplaceCount && options.BackupMode && options.KeepOriginalFileDate &&
                options.ProcessReadonlyFiles && options.Include_Subfolders && options.IsFindOnly);
    EXPECT_EQ(options.RestartApplicationAfterFiles, 7);
    EXPECT_EQ(options.RevisionDocumentPropertyName, u"Rev");
    EXPECT_EQ(options.RevisionDocumentPropertyIncrimentedBy, u"0.5");
}

/// The options that `find` and `replace` can't set: what they need of them goes another way, or has no use without a
/// window.
TEST(JobProject, OnlyTheseStoredOptionsHaveNoOptionOnTheCommandLine)
{
    BatchCall call;
    call.count = call.backup = call.keepDate = call.readOnly = call.recurse = true;
    call.restartAfter = 7;
    call.revision = u"Rev";
    const ProjectOwner project;

    FillProject(*project, call);

    std::vector<String> untouched;
    for (const StoredOption& option : StoredOptions)
        std::visit(
            [&](auto field) {
                if ((*project->options).*field == RunOptions().*field)
                    untouched.push_back(option.key);
            },
            option.field);
    EXPECT_THAT(untouched,
                testing::ElementsAre(u"AllowAlerts", u"ComaSepAllowedExtensions", u"ExeLocationIncaseOfFailure",
                                     u"FileToProcessFilepath", u"FileToProcessFolderPath", u"FileToProcessSourceType",
                                     u"ProcessLongestFindwhatFirst", u"RestartApplicationAfterSeconds",
                                     u"PowerpointVersion", u"CPUUsage"));
}

TEST(JobProject, WithoutARevisionNoStepIsHandedOver)
{
    const ProjectOwner project;

    FillProject(*project, BatchCall());

    EXPECT_EQ(project->options->RevisionDocumentPropertyIncrimentedBy, u"");
    EXPECT_FALSE(project->options->BackupMode || project->options->RequiredFindAndReplaceCount == false);
}

}  // namespace
}  // namespace tessarine::batch
