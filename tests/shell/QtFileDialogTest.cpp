#include <gmock/gmock.h>

#include <QComboBox>
#include <QLineEdit>

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

/// Chooses a filter with the keyboard.
void ChooseFilter(QFileDialog& dialog, int index)
{
    auto* const filters = dialog.findChild<QComboBox*>("fileTypeCombo");
    ASSERT_NE(filters, nullptr);
    for (int steps = 0; steps < index; ++steps)
        QTest::keyClick(filters, Qt::Key_Down);
    ASSERT_EQ(filters->currentIndex(), index);
}

class FilteredFileDialogTest : public QtFileDialogTest
{
protected:
    FilteredFileDialogTest()
    {
        common.Filter = u"Web page|*.html|Table|*.csv";
        common.DefaultExt = u"html";
        common.FileName = folder.PathOf(u"report 1.5.html");
    }

    /// The name that a file typed as "figures" is saved under, after a filter was chosen.
    std::string SavedWith(int filter)
    {
        WhenShown([filter](QFileDialog& dialog) {
            ChooseFilter(dialog, filter);
            dialog.findChild<QLineEdit*>("fileNameEdit")->setText("figures");
            Confirm(dialog);
        });
        const std::optional<QString> chosen = ShowQtFileDialog(common, true);
        return chosen ? QFileInfo(*chosen).fileName().toStdString() : std::string();
    }
};

TEST_F(FilteredFileDialogTest, GivesATypedNameTheExtensionOfTheChosenFilter)
{
    common.FollowsFilter = true;

    EXPECT_EQ(SavedWith(0), "figures.html");
    EXPECT_EQ(SavedWith(1), "figures.csv");
}

TEST_F(FilteredFileDialogTest, TakesTheExtensionOfNoFilterThatHasSeveral)
{
    common.Filter = u"Web page|*.html|Pictures|*.png;*.jpg";
    common.FollowsFilter = true;

    EXPECT_EQ(SavedWith(1), "figures.html");
}

TEST_F(FilteredFileDialogTest, KeepsTheExtensionUnlessItFollowsTheFilter)
{
    EXPECT_EQ(SavedWith(1), "figures.html");
}

}  // namespace
}  // namespace tessarine
