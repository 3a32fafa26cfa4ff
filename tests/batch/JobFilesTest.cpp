#include "batch/JobFiles.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <algorithm>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/Failure.h"
#include "platform/PathSeparator.h"
#include "support/FailingFolders.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"

namespace tessarine::batch
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class JobFilesTest : public testing::Test
{
protected:
    BatchCall CallFor(const std::vector<String>& names)
    {
        BatchCall call;
        call.patterns = {u"*.ppt*"};
        for (const String& name : names)
            call.paths.push_back(name.empty() ? folder.Path() : folder.PathOf(name));
        return call;
    }

    static std::vector<JobFile> Collect(const BatchCall& call) { return CollectFiles(call).files; }

    void Link(const char* target, StringView name) const
    {
        std::filesystem::create_symlink(target, ToUtf8(folder.PathOf(name)));
    }

    /// Paths below the folder with "/" in them, refused ones with ": " and the reason.
    std::vector<std::string> Names(const std::vector<JobFile>& files)
    {
        std::vector<std::string> names;
        for (const JobFile& file : files) {
            std::string name = ToUtf8(file.path.substr(std::min(file.path.size(), folder.Path().size() + 1)));
            std::ranges::replace(name, static_cast<char>(PathSeparator), '/');
            names.push_back(file.refusal.empty() ? name : name + ": " + ToUtf8(file.refusal));
        }
        return names;
    }

    TemporaryFolder folder;
};

TEST_F(JobFilesTest, AFolderGivesItsFilesThatMatchInOrder)
{
    folder.Write(u"b.pptx");
    folder.Write(u"a.ppt");
    folder.Write(u"c.txt");
    folder.Write(u"sub/d.pptx");

    EXPECT_THAT(Names(Collect(CallFor({u""}))), ElementsAre("a.ppt", "b.pptx"));
}

TEST_F(JobFilesTest, RecurseGivesAFoldersFilesBeforeItsSubfolders)
{
    folder.Write(u"a/z.pptx");
    folder.Write(u"a/b/y.pptx");
    folder.Write(u"x.pptx");
    BatchCall call = CallFor({u""});
    call.recurse = true;

    EXPECT_THAT(Names(Collect(call)), ElementsAre("x.pptx", "a/z.pptx", "a/b/y.pptx"));
}

TEST_F(JobFilesTest, AFolderLeavesLockFilesAndResourceForksOut)
{
    folder.Write(u"~$a.pptx");
    folder.Write(u".~lock.a.pptx#");
    folder.Write(u"._a.pptx");
    folder.Write(u".a.pptx");
    BatchCall call = CallFor({u""});
    call.patterns = {u"*.ppt*", u"*#"};
    call.hidden = true;

    EXPECT_THAT(Names(Collect(call)), ElementsAre(".a.pptx"));
}

TEST_F(JobFilesTest, LeavesOutWhatIsHiddenUnlessItIsWanted)
{
    folder.Write(u".a.pptx");
    folder.Write(u"b.pptx");
    folder.Write(u".sub/c.pptx");
    folder.Write(u"sub/.d.pptx");
    BatchCall call = CallFor({u""});
    call.recurse = true;

    EXPECT_THAT(Names(Collect(call)), ElementsAre("b.pptx"));
    call.hidden = true;
    EXPECT_THAT(Names(Collect(call)), ElementsAre(".a.pptx", "b.pptx", ".sub/c.pptx", "sub/.d.pptx"));
}

TEST_F(JobFilesTest, TakesWhatIsHiddenOrExcludedWhenItIsNamed)
{
    folder.Write(u".a.pptx");
    folder.Write(u".sub/old.pptx");
    folder.Write(u".sub/new.pptx");
    BatchCall call = CallFor({u".a.pptx", u".sub"});
    call.excluded = {u".*", u"old*"};

    EXPECT_THAT(Names(Collect(call)), ElementsAre(".a.pptx", ".sub/new.pptx"));
}

TEST_F(JobFilesTest, LeavesOutFilesAndFoldersByTheirNames)
{
    folder.Write(u"Draft 1.pptx");
    folder.Write(u"final.pptx");
    folder.Write(u"archive/a.pptx");
    folder.Write(u"q1/archive/b.pptx");
    folder.Write(u"q1/final draft.pptx");
    BatchCall call = CallFor({u""});
    call.recurse = true;
    call.excluded = {u"draft*", u"ARCHIVE"};

    EXPECT_THAT(Names(Collect(call)), ElementsAre("final.pptx", "q1/final draft.pptx"));
}

TEST_F(JobFilesTest, AFileThatIsNamedIsTakenWhateverItsName)
{
    folder.Write(u"notes.bin");

    EXPECT_THAT(Names(Collect(CallFor({u"notes.bin"}))), ElementsAre("notes.bin"));
}

TEST_F(JobFilesTest, ALockFileIsNoPresentationEvenWhenItIsNamed)
{
    folder.Write(u"~$a.pptx");
    folder.Write(u".~lock.a.pptx#");

    EXPECT_THAT(
        Names(Collect(CallFor({u"~$a.pptx", u".~lock.a.pptx#"}))),
        ElementsAre("~$a.pptx: A lock file of another program.", ".~lock.a.pptx#: A lock file of another program."));
}

TEST_F(JobFilesTest, APathThatNamesNothingIsRefusedInItsPlace)
{
    folder.Write(u"a.pptx");

    EXPECT_THAT(Names(Collect(CallFor({u"gone.pptx", u"a.pptx"}))),
                ElementsAre("gone.pptx: File not found.", "a.pptx"));
}

TEST_F(JobFilesTest, ALostFileIsKeptWhereBackupsAreWanted)
{
    BatchCall call = CallFor({u"gone.pptx"});
    call.command = Command::Restore;

    EXPECT_THAT(Names(Collect(call)), ElementsAre("gone.pptx"));
}

TEST_F(JobFilesTest, TheListComesBehindThePathsOfTheCall)
{
    folder.Write(u"a.pptx");
    folder.Write(u"b.pptx");
    folder.Write(u"list.txt", ToUtf8(folder.PathOf(u"a.pptx")) + "\n" + ToUtf8(folder.PathOf(u"gone.pptx")) + "\r\n");
    BatchCall call = CallFor({u"b.pptx"});
    call.filesFrom = folder.PathOf(u"list.txt");

    EXPECT_THAT(Names(Collect(call)), ElementsAre("b.pptx", "a.pptx", "gone.pptx: File not found."));
}

TEST_F(JobFilesTest, AMissingListIsAFailureOfTheCall)
{
    BatchCall call = CallFor({});
    call.filesFrom = folder.PathOf(u"list.txt");

    EXPECT_THROW(Collect(call), Failure);
}

TEST_F(JobFilesTest, RefusesAFileWhoseBackupWouldOverwriteAnother)
{
    folder.Write(u"a.ppt");
    folder.Write(u"a.pptm");
    folder.Write(u"a.pptx");
    auto files = Collect(CallFor({u""}));

    RefuseSharedBackups(files);

    EXPECT_TRUE(files[0].refusal.empty());  // a.ppt has a.bak
    EXPECT_TRUE(files[1].refusal.empty());  // a.pptm has a..bak
    EXPECT_EQ(files[2].refusal, u"Its backup would overwrite another file of this job, or that file's backup: " +
                                    folder.PathOf(u"a..bak"));
}

TEST_F(JobFilesTest, RefusesAFileWhoseBackupBelongsToTheJob)
{
    folder.Write(u"a.ppt");
    folder.Write(u"a.bak");
    auto files = Collect(CallFor({u"a.ppt", u"a.bak"}));

    RefuseSharedBackups(files);

    EXPECT_FALSE(files[0].refusal.empty());
    EXPECT_FALSE(files[1].refusal.empty());
}

}  // namespace

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(JobFilesTest, LinksToSubfoldersAreCountedAndLeftOut)
{
    folder.Write(u"a.pptx");
    folder.Write(u"sub/b.pptx");
    folder.Write(u"elsewhere.txt");
    Link("sub", u"link");
    Link("..", u"sub/up");
    Link("elsewhere.txt", u"file");
    Link("gone", u"dangling");
    BatchCall call = CallFor({u""});
    call.recurse = true;

    const CollectedFiles collected = CollectFiles(call);

    EXPECT_THAT(Names(collected.files), ElementsAre("a.pptx", "sub/b.pptx"));
    EXPECT_EQ(collected.skippedLinks, 2);
}

TEST_F(JobFilesTest, AnExcludedLinkIsNotCountedAmongThoseLeftOut)
{
    folder.Write(u"sub/a.pptx");
    Link("sub", u"link");
    Link("sub", u".hidden");
    BatchCall call = CallFor({u""});
    call.recurse = true;
    call.excluded = {u"link"};

    EXPECT_EQ(CollectFiles(call).skippedLinks, 0);
    call.hidden = true;
    EXPECT_EQ(CollectFiles(call).skippedLinks, 1);
}

TEST_F(JobFilesTest, FollowedLinksAreWalkedOnce)
{
    const TemporaryFolder other;
    other.Write(u"c.pptx");
    folder.Write(u"a.pptx");
    folder.Write(u"sub/b.pptx");
    Link("..", u"sub/up");
    Link(".", u"self");
    Link(ToUtf8(other.Path()).c_str(), u"other");
    Link(ToUtf8(other.Path()).c_str(), u"zother");
    BatchCall call = CallFor({u""});
    call.recurse = call.follow = true;

    const CollectedFiles collected = CollectFiles(call);

    EXPECT_THAT(Names(collected.files), ElementsAre("a.pptx", "sub/b.pptx", "other/c.pptx"));
    EXPECT_EQ(collected.skippedLinks, 0);
}

TEST_F(JobFilesTest, ALinkToAFolderThatIsNamedIsWalked)
{
    folder.Write(u"sub/b.pptx");
    Link("sub", u"link");

    EXPECT_THAT(Names(Collect(CallFor({u"link"}))), ElementsAre("link/b.pptx"));
}

TEST_F(JobFilesTest, WithoutRecurseNoLinkIsLeftOut)
{
    folder.MakeFolder(u"sub");
    Link("sub", u"link");

    EXPECT_EQ(CollectFiles(CallFor({u""})).skippedLinks, 0);
}

TEST_F(JobFilesTest, RefusesALinksPathWithANulAfterIt)
{
    const String file = folder.Write(u"a.pptx");
    std::filesystem::create_symlink("a.pptx", ToUtf8(folder.PathOf(u"link.pptx")));
    const String cut = String(u"link.pptx") + u'\0';

    const auto files = Collect(CallFor({u"link.pptx", cut}));

    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[0].refusal, u"");
    EXPECT_EQ(files[1].refusal, u"File not found.");
}

TEST_F(JobFilesTest, APipeIsRefusedAndNotOpened)
{
    ASSERT_EQ(mkfifo(ToUtf8(folder.PathOf(u"pipe.pptx")).c_str(), 0600), 0);

    EXPECT_THAT(Names(Collect(CallFor({u"pipe.pptx"}))), ElementsAre("pipe.pptx: Not a regular file."));
    EXPECT_THAT(Collect(CallFor({u""})), IsEmpty());
}

TEST_F(JobFilesTest, TakesAFileOnceHoweverItIsNamed)
{
    folder.Write(u"a.pptx");
    folder.Write(u"b.pptx");
    folder.MakeFolder(u"sub");
    std::filesystem::create_symlink("a.pptx", ToUtf8(folder.PathOf(u"link.pptx")));

    const auto files = Collect(CallFor({u"b.pptx", u"", u"sub/../a.pptx", u"b.pptx", u"link.pptx"}));

    EXPECT_THAT(Names(files), ElementsAre("b.pptx", "a.pptx"));
}

TEST_F(JobFilesTest, HardLinksAreTwoFiles)
{
    folder.Write(u"a.pptx");
    std::filesystem::create_hard_link(ToUtf8(folder.PathOf(u"a.pptx")), ToUtf8(folder.PathOf(u"b.pptx")));

    EXPECT_THAT(Names(Collect(CallFor({u""}))), ElementsAre("a.pptx", "b.pptx"));
}

TEST_F(JobFilesTest, AFolderThatCannotBeReadIsRefusedItself)
{
    folder.Write(u"a.pptx");
    folder.Write(u"shut/b.pptx");
    SetMode(folder.Path(), 0755);
    SetMode(folder.PathOf(u"shut"), 0);
    BatchCall call = CallFor({u""});
    call.recurse = true;
    std::vector<JobFile> files;

    {
        const OrdinaryUser user;
        files = Collect(call);
    }

    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[1].path, folder.PathOf(u"shut"));
    EXPECT_EQ(files[1].refusal.substr(0, 14), u"Path not found");
}

TEST_F(JobFilesTest, AFolderThatIsReadInPartIsRefusedItself)
{
    for (const auto* name : {u"a.pptx", u"b.pptx", u"c.pptx"})
        folder.Write(name);
    const String other = folder.PathOf(u"b.pptx");
    BatchCall call = CallFor({u""});
    call.paths.push_back(other);
    std::vector<JobFile> files;

    {
        const FailingFolders failing(2);
        files = Collect(call);
    }

    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[0].path, folder.Path());
    EXPECT_NE(files[0].refusal, u"");
    EXPECT_EQ(files[1].path, other);
    EXPECT_EQ(files[1].refusal, u"");
}

TEST_F(JobFilesTest, APipeOrAFolderAsListIsRefusedAtOnce)
{
    ASSERT_EQ(mkfifo(ToUtf8(folder.PathOf(u"list.txt")).c_str(), 0600), 0);
    BatchCall call = CallFor({});

    for (const String& list : {folder.PathOf(u"list.txt"), folder.Path()}) {
        call.filesFrom = list;
        try {
            CollectFiles(call);
            ADD_FAILURE() << "taken";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.description,
                      u"the list of files \"" + list + u"\" is no regular file (- reads standard input)");
        }
    }
}

#else

TEST_F(JobFilesTest, TakesAFileOnceHoweverItIsNamed)
{
    folder.Write(u"a.pptx");
    folder.Write(u"b.pptx");
    folder.MakeFolder(u"sub");
    BatchCall call = CallFor({u"b.pptx", u"", u"sub/../a.pptx", u"B.PPTX"});
    call.paths.push_back(folder.Path() + u"/a.pptx");

    EXPECT_THAT(Names(Collect(call)), ElementsAre("b.pptx", "a.pptx"));
}

#endif

}  // namespace tessarine::batch
