#include <gmock/gmock.h>

#include "i18n/QtText.h"
#include "shell/QtFileDialog.h"
#include "shell/ShownDialog.h"
#include "support/TemporaryFolder.h"

// The dialog for files as Qt shows it.

namespace tessarine
{
namespace
{

using testing::ElementsAre;

class QtFileDialogTest : public testing::Test
{
protected:
    /// What the dialog for these properties is like; it is cancelled.
    struct Look {
        QFileDialog::AcceptMode acceptMode{};
        QFileDialog::FileMode fileMode{};
        bool asksBeforeOverwriting = false;
        bool hidesPatterns = false;
        std::string title;
        std::string suffix;
        std::string folder;
        QStringList filters;
        QStringList selected;
    };

    Look Show(bool isSave)
    {
        Look look;
        WhenShown([&look](QFileDialog& dialog) {
            look = {dialog.acceptMode(),
                    dialog.fileMode(),
                    !dialog.testOption(QFileDialog::DontConfirmOverwrite),
                    dialog.testOption(QFileDialog::HideNameFilterDetails),
                    dialog.windowTitle().toStdString(),
                    dialog.defaultSuffix().toStdString(),
                    QDir::toNativeSeparators(dialog.directory().absolutePath()).toStdString(),
                    dialog.nameFilters(),
                    dialog.selectedFiles()};
            dialog.reject();
        });
        EXPECT_EQ(ShowQtFileDialog(common, isSave), std::nullopt) << "cancelled";
        return look;
    }

    const TemporaryFolder folder;
    CommonDialog common;
};

TEST_F(QtFileDialogTest, OpensAnyNameUnlessTheFileMustExist)
{
    EXPECT_EQ(Show(false).acceptMode, QFileDialog::AcceptOpen);
    EXPECT_EQ(Show(false).fileMode, QFileDialog::AnyFile);

    common.Flags = FileDialogFlag::FileMustExist;
    EXPECT_EQ(Show(false).fileMode, QFileDialog::ExistingFile);
}

TEST_F(QtFileDialogTest, SavesToAnyName)
{
    EXPECT_EQ(Show(true).acceptMode, QFileDialog::AcceptSave);
    common.Flags = FileDialogFlag::FileMustExist;
    EXPECT_EQ(Show(true).fileMode, QFileDialog::AnyFile);
}

TEST_F(QtFileDialogTest, AsksBeforeOverwritingOnlyWhenTold)
{
    EXPECT_FALSE(Show(true).asksBeforeOverwriting);

    common.Flags = FileDialogFlag::AskBeforeOverwriting;
    EXPECT_TRUE(Show(true).asksBeforeOverwriting);
}

TEST_F(QtFileDialogTest, ShowsTitleFiltersAndProposedFile)
{
    common.DialogTitle = u"Save the list";
    common.Filter = u"CSV Files|*.csv|TAB Files|*.Tab";
    common.DefaultExt = u"csv";
    common.FileName = folder.Write(u"old.csv");

    const Look look = Show(false);

    EXPECT_EQ(look.title, "Save the list");
    EXPECT_THAT(look.filters, ElementsAre("CSV Files (*.csv)", "TAB Files (*.Tab)"));
    EXPECT_TRUE(look.hidesPatterns);
    EXPECT_EQ(look.suffix, "csv");
    EXPECT_EQ(look.folder, ToUtf8(folder.Path()));
    EXPECT_THAT(look.selected, ElementsAre(QDir::fromNativeSeparators(ToQt(common.FileName))));
}

TEST_F(QtFileDialogTest, GivesTheFileWithTheDefaultExtension)
{
    common.DefaultExt = u"tsq";
    common.FileName = folder.PathOf(u"old.tsq");
    WhenShown([this](QFileDialog& dialog) {
        dialog.selectFile(ToQt(folder.PathOf(u"new")));
        Confirm(dialog);
    });

    EXPECT_EQ(ShowQtFileDialog(common, true), ToQt(folder.PathOf(u"new.tsq")));
}

}  // namespace
}  // namespace tessarine
