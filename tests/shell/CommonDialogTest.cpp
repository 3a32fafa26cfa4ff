#include "shell/CommonDialog.h"

#include <gmock/gmock.h>

#include "platform/Failure.h"
#include "shell/QtFileDialog.h"
#include "support/qt/ShellRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;

class CommonDialogTest : public testing::Test
{
protected:
    bool ExtensionDiffers() const { return (common_.Flags & FileDialogFlag::ExtensionDiffers) != 0; }

    ShellRecorder shell_;
    CommonDialog common_;
};

TEST_F(CommonDialogTest, HandsItsPropertiesToTheDialogAndTakesTheFile)
{
    common_.Filter = u"Text|*.txt";
    common_.FileName = u"/jobs/old.txt";
    common_.DialogTitle = u"Pick one";
    common_.Flags = FileDialogFlag::FileMustExist;
    shell_.NextFile(u"/jobs/new.txt");

    common_.ShowOpen();

    EXPECT_EQ(common_.FileName, u"/jobs/new.txt");
    ASSERT_EQ(shell_.FileDialogs().size(), 1u);
    const auto& dialog = shell_.FileDialogs().front();
    EXPECT_FALSE(dialog.isSave);
    EXPECT_EQ(dialog.properties.Filter, u"Text|*.txt");
    EXPECT_EQ(dialog.properties.FileName, u"/jobs/old.txt");
    EXPECT_EQ(dialog.properties.DialogTitle, u"Pick one");
    EXPECT_EQ(dialog.properties.Flags, FileDialogFlag::FileMustExist);
}

TEST_F(CommonDialogTest, SavesThroughTheDialogForSaving)
{
    shell_.NextFile(u"/jobs/new.txt");

    common_.ShowSave();

    EXPECT_TRUE(shell_.FileDialogs().front().isSave);
}

TEST_F(CommonDialogTest, RaisesWhenCancelledAndKeepsAllAsItWas)
{
    common_.FileName = u"/jobs/old.txt";
    common_.DefaultExt = u"tsq";
    common_.Flags = FileDialogFlag::FileMustExist | FileDialogFlag::ExtensionDiffers;
    shell_.NextFile(std::nullopt);

    try {
        common_.ShowOpen();
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 32755);
        EXPECT_EQ(failure.description, u"Cancel was selected.");
    }
    EXPECT_EQ(common_.FileName, u"/jobs/old.txt");
    EXPECT_EQ(common_.Flags, FileDialogFlag::FileMustExist | FileDialogFlag::ExtensionDiffers);
}

TEST_F(CommonDialogTest, KeepsPropertiesFromOneUseToTheNext)
{
    common_.Filter = u"Text|*.txt";
    common_.DefaultExt = u"tsq";
    common_.Flags = FileDialogFlag::FileMustExist;
    shell_.NextFile(u"/jobs/a.tsq");
    shell_.NextFile(u"/jobs/b.tsq");

    common_.ShowOpen();
    common_.ShowSave();

    const auto& second = shell_.FileDialogs().back().properties;
    EXPECT_EQ(second.Filter, u"Text|*.txt");
    EXPECT_EQ(second.FileName, u"/jobs/a.tsq");
    EXPECT_EQ(second.DefaultExt, u"tsq");
    EXPECT_EQ(second.Flags, FileDialogFlag::FileMustExist);
}

TEST_F(CommonDialogTest, TellsAnExtensionThatDiffers)
{
    common_.DefaultExt = u"tsq";
    shell_.NextFile(u"/jobs/list.csv");

    common_.ShowOpen();

    EXPECT_TRUE(ExtensionDiffers());
    EXPECT_EQ(common_.FileName, u"/jobs/list.csv");
}

TEST_F(CommonDialogTest, ClearsTheMarkForTheExtensionInAnyCase)
{
    common_.DefaultExt = u"tsq";
    common_.Flags = FileDialogFlag::ExtensionDiffers;
    shell_.NextFile(u"/jobs/job.TSQ");

    common_.ShowOpen();

    EXPECT_FALSE(ExtensionDiffers());
}

TEST_F(CommonDialogTest, LooksAtNoExtensionWithoutADefault)
{
    shell_.NextFile(u"/jobs/list.csv");
    shell_.NextFile(u"/jobs/list");

    common_.ShowOpen();
    EXPECT_FALSE(ExtensionDiffers());

    common_.ShowSave();
    EXPECT_EQ(common_.FileName, u"/jobs/list");
}

TEST_F(CommonDialogTest, AddsTheDefaultExtensionToANameWithoutOne)
{
    common_.DefaultExt = u"tsq";
    shell_.NextFile(u"/jobs.d/job");
    shell_.NextFile(u"/jobs.d/job.");

    common_.ShowSave();
    EXPECT_EQ(common_.FileName, u"/jobs.d/job.tsq");
    EXPECT_FALSE(ExtensionDiffers());

    common_.ShowSave();
    EXPECT_EQ(common_.FileName, u"/jobs.d/job.tsq");
}

TEST_F(CommonDialogTest, OpensAnExistingFileWithoutAnExtensionUnderItsOwnName)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"job");
    common_.DefaultExt = u"tsq";
    shell_.NextFile(path);

    common_.ShowOpen();

    EXPECT_EQ(common_.FileName, path);
    EXPECT_FALSE(ExtensionDiffers());
}

TEST_F(CommonDialogTest, AddsNoExtensionToABlankName)
{
    common_.DefaultExt = u"tsq";
    shell_.NextFile(u"");

    common_.ShowSave();

    EXPECT_EQ(common_.FileName, u"");
}

TEST(QtNameFilters, PairsTextsWithPatterns)
{
    EXPECT_THAT(QtNameFilters(u"CSV Files|*.csv|TAB Files|*.Tab|Pictures|*.png;*.jpg"),
                ElementsAre("CSV Files (*.csv)", "TAB Files (*.Tab)", "Pictures (*.png *.jpg)"));
}

TEST(QtNameFilters, TakesATextWithoutPatternsForAllFiles)
{
    EXPECT_THAT(QtNameFilters(u"Tessarine [*.tsq]"), ElementsAre("Tessarine [*.tsq] (*)"));
    EXPECT_THAT(QtNameFilters(u""), ElementsAre());
}

}  // namespace
}  // namespace tessarine
