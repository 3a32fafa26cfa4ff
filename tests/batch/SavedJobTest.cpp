#include "batch/SavedJob.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/BatchCall.h"
#include "batch/JobProject.h"
#include "model/Project.h"
#include "support/ErrorLogRecorder.h"
#include "support/FailingFolders.h"
#include "support/TemporaryFolder.h"

namespace tessarine::batch
{
namespace
{

using testing::ElementsAre;

/// A job over a folder with a presentation and a subfolder with one; there is another folder with one.
class FolderJobTest : public testing::Test
{
protected:
    FolderJobTest()
    {
        folder.Write(u"a.pptx");
        folder.Write(u"sub/b.pptx");
        other.Write(u"c.pptx");

        BatchCall made;
        made.command = Command::JobMake;
        made.pairs = {{u"cat", u"dog"}};
        made.recurse = true;
        made.paths = {folder.Path()};
        FillProject(*project, made);
        FillSavedJob(*project, made);
        call.command = Command::Run;
    }

    /// The files of the job, made ready as a run takes it.
    CollectedFiles Collected()
    {
        std::vector<std::string> notes;
        PrepareSavedRun(*project, call, notes);
        return FilesOfSavedRun(*project, call);
    }

    void LinkToTheOther() const
    {
        std::filesystem::create_directory_symlink(ToUtf8(other.Path()), ToUtf8(folder.PathOf(u"link")));
    }

    ErrorLogRecorder log;
    TemporaryFolder folder;
    TemporaryFolder other;
    ProjectOwner project;
    BatchCall call;
};

std::vector<String> PathsOf(const CollectedFiles& collected)
{
    std::vector<String> paths;
    for (const JobFile& file : collected.files)
        paths.push_back(file.path);
    return paths;
}

TEST_F(FolderJobTest, TakesTheFilesOfTheFolderAndItsSubfolders)
{
    const CollectedFiles collected = Collected();

    EXPECT_THAT(PathsOf(collected), ElementsAre(folder.PathOf(u"a.pptx"), folder.PathOf(u"sub/b.pptx")));
    EXPECT_EQ(collected.skippedLinks, 0);
}

}  // namespace

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(FolderJobTest, CountsTheLinksThatItLeavesOut)
{
    LinkToTheOther();

    const CollectedFiles collected = Collected();

    EXPECT_THAT(PathsOf(collected), ElementsAre(folder.PathOf(u"a.pptx"), folder.PathOf(u"sub/b.pptx")));
    EXPECT_EQ(collected.skippedLinks, 1);
}

TEST_F(FolderJobTest, FollowsLinksWhenItIsTold)
{
    LinkToTheOther();
    call.follow = true;

    const CollectedFiles collected = Collected();

    EXPECT_THAT(PathsOf(collected),
                ElementsAre(folder.PathOf(u"a.pptx"), folder.PathOf(u"sub/b.pptx"), folder.PathOf(u"link/c.pptx")));
    EXPECT_EQ(collected.skippedLinks, 0);
}

TEST_F(FolderJobTest, ReportsAFolderThatCannotBeReadToItsEnd)
{
    LinkToTheOther();
    CollectedFiles collected;
    {
        const FailingFolders failing(1);
        collected = Collected();
    }

    ASSERT_THAT(PathsOf(collected), ElementsAre(folder.Path()));
    EXPECT_NE(collected.files[0].refusal, u"");
}

#endif

}  // namespace tessarine::batch
