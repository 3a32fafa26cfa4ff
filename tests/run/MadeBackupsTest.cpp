#include "run/MadeBackups.h"

#include "BackupsTest.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class MadeBackupsTest : public Backups
{
protected:
    MadeBackupsTest()
    {
        project_->BackupMade = [this](const String& path, const String& backup, const CopiedContent& content) {
            made_.Add(path, backup, content);
        };
    }

    String PathOf(StringView name) const { return folder_.PathOf(name); }

    /// What a treatment of a backup failed with, without the folder; empty when it didn't.
    template <class Treat>
    std::string Failing(Treat&& treat) const
    {
        const auto failure = FailureOf(treat);
        return failure ? Short(ToUtf8(failure->Reason())) : std::string();
    }

    MadeBackups made_;
};

TEST_F(MadeBackupsTest, PutBackAFileWhateverItsExtension)
{
    RunOver({u"a.ppt", u"my 😀/שלום.pptx"});

    made_.Restore(PathOf(u"a.ppt"), false);
    made_.Restore(PathOf(u"my 😀/שלום.pptx"), false);

    EXPECT_EQ(Content(u"a.ppt"), "bytes of a.ppt");
    EXPECT_EQ(Content(u"my 😀/שלום.pptx"), "bytes of my 😀/שלום.pptx");
    EXPECT_EQ(Content(u"my 😀/שלום..bak"), "bytes of my 😀/שלום.pptx");
    EXPECT_TRUE(made_.Has(PathOf(u"a.ppt")));
}

TEST_F(MadeBackupsTest, PutBackAFileThatHasGone)
{
    RunOver({u"a.pptx"});
    DeleteFile(PathOf(u"a.pptx"));

    made_.Restore(PathOf(u"a.pptx"), false);

    EXPECT_EQ(Content(u"a.pptx"), "bytes of a.pptx");
}

TEST_F(MadeBackupsTest, GoAwayOneByOne)
{
    RunOver({u"a.ppt", u"b.pptx"});

    made_.Remove(PathOf(u"b.pptx"));

    EXPECT_FALSE(FileExists(PathOf(u"b..bak")));
    EXPECT_EQ(Content(u"b.pptx"), "changed");
    EXPECT_THAT(made_.Files(), ElementsAre(PathOf(u"a.ppt")));
}

TEST_F(MadeBackupsTest, ForgetABackupThatHasGone)
{
    RunOver({u"a.pptx"});
    DeleteFile(PathOf(u"a..bak"));

    made_.Remove(PathOf(u"a.pptx"));

    EXPECT_TRUE(made_.IsEmpty());
}

TEST_F(MadeBackupsTest, LeaveOneAloneThatWasChangedMeanwhile)
{
    RunOver({u"a.pptx"});
    folder_.Write(u"a..bak", "somebody else's");
    const std::string reason = "The backup a..bak was changed after the run made it.";

    EXPECT_EQ(Failing([&] { made_.Restore(PathOf(u"a.pptx"), false); }), reason);
    EXPECT_EQ(Failing([&] { made_.Remove(PathOf(u"a.pptx")); }), reason);

    EXPECT_EQ(Content(u"a.pptx"), "changed");
    EXPECT_EQ(Content(u"a..bak"), "somebody else's");
}

TEST_F(MadeBackupsTest, FailClearlyWithoutTheBackup)
{
    RunOver({u"a.pptx"});
    DeleteFile(PathOf(u"a..bak"));

    EXPECT_THAT(Failing([&] { made_.Restore(PathOf(u"a.pptx"), false); }), HasSubstr("a..bak"));
    EXPECT_EQ(Content(u"a.pptx"), "changed");
}

TEST_F(MadeBackupsTest, LeaveAReadOnlyFileAloneUnlessAsked)
{
    RunOver({u"a.pptx"});
    SetMode(PathOf(u"a.pptx"), 0444);

    EXPECT_THAT(Failing([&] { made_.Restore(PathOf(u"a.pptx"), false); }), HasSubstr("it is read-only"));
    EXPECT_EQ(Content(u"a.pptx"), "changed");

    made_.Restore(PathOf(u"a.pptx"), true);
    EXPECT_EQ(Content(u"a.pptx"), "bytes of a.pptx");
}

// "a.pptm" and "a.pptx" of one folder have the same name for their backups.
TEST_F(MadeBackupsTest, BelongToTheFileThatWasCopiedLast)
{
    const String older = AddFile(u"a.pptm");
    const String newer = AddFile(u"a.pptx");
    project_->options->BackupMode = true;
    project_->Search();

    EXPECT_THAT(made_.Files(), ElementsAre(newer));
    made_.Restore(newer, false);

    EXPECT_EQ(ContentOf(older), "bytes of a.pptm");
    EXPECT_EQ(ContentOf(newer), "bytes of a.pptx");
}

TEST_F(MadeBackupsTest, AreThoseOfTheLastRunOverAFile)
{
    RunOver({u"a.pptx"});
    project_->Search();
    folder_.Write(u"a.pptx", "changed again");

    made_.Restore(PathOf(u"a.pptx"), false);

    EXPECT_EQ(Content(u"a.pptx"), "changed");
}

TEST_F(MadeBackupsTest, AreNotToldOfByARunWithoutThem)
{
    AddFile(u"a.pptx");

    project_->Search();

    EXPECT_TRUE(made_.IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

}  // namespace
}  // namespace tessarine
