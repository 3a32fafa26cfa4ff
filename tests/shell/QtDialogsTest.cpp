#include <gmock/gmock.h>

#include <functional>

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "i18n/QtText.h"
#include "shell/BrowseFolder.h"
#include "shell/QtFileDialog.h"
#include "support/TemporaryFolder.h"

// The dialogs for files and folders as Qt shows them.

namespace tessarine
{
namespace
{

using testing::ElementsAre;

/// Acts on the dialog that comes up next, which must then be closed.
void WhenShown(std::function<void(QFileDialog&)> act)
{
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            WhenShown(act);  // not up yet
        else
            act(*dialog);
    });
}

/// Presses the button that takes the choice; a dialog that stays open then is cancelled.
void Confirm(QFileDialog& dialog)
{
    const auto& buttons = *dialog.findChild<QDialogButtonBox*>();
    for (QAbstractButton* button : buttons.buttons())
        if (buttons.buttonRole(button) == QDialogButtonBox::AcceptRole)
            QTest::mouseClick(button, Qt::LeftButton);
    if (dialog.isVisible())
        dialog.reject();
}

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
                    dialog.directory().absolutePath().toStdString(),
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
    EXPECT_THAT(look.selected, ElementsAre(ToQt(common.FileName)));
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

class QtFolderDialogTest : public testing::Test
{
protected:
    QtFolderDialogTest() { folder.MakeFolder(u"inner"); }

    const TemporaryFolder folder;
};

TEST_F(QtFolderDialogTest, ShowsFoldersAloneUnlessFilesAreIncluded)
{
    for (const bool includeFiles : {false, true}) {
        bool showsFoldersAlone = includeFiles;
        WhenShown([&](QFileDialog& dialog) {
            showsFoldersAlone = dialog.testOption(QFileDialog::ShowDirsOnly);
            dialog.reject();
        });
        String chosen = folder.Path();

        EXPECT_FALSE(BrowseFolder(nullptr, chosen, u"Pick", includeFiles, true));

        EXPECT_EQ(showsFoldersAlone, !includeFiles);
        EXPECT_EQ(chosen, folder.Path());
    }
}

TEST_F(QtFolderDialogTest, BeginsAtTheFolderUnderItsTitle)
{
    std::string title;
    std::string start;
    QFileDialog::FileMode mode{};
    WhenShown([&](QFileDialog& dialog) {
        title = dialog.windowTitle().toStdString();
        start = dialog.directory().absolutePath().toStdString();
        mode = dialog.fileMode();
        dialog.reject();
    });
    String chosen = folder.PathOf(u"inner");

    BrowseFolder(nullptr, chosen, u"Please select a folder:", false, true);

    EXPECT_EQ(title, "Please select a folder:");
    EXPECT_EQ(start, ToUtf8(folder.PathOf(u"inner")));
    EXPECT_EQ(mode, QFileDialog::Directory);
}

TEST_F(QtFolderDialogTest, GivesTheFolderWithASeparator)
{
    WhenShown([this](QFileDialog& dialog) {
        dialog.selectFile(ToQt(folder.PathOf(u"inner")));
        Confirm(dialog);
    });
    String chosen = folder.Path();

    EXPECT_TRUE(BrowseFolder(nullptr, chosen, u"Pick", false, true));

    EXPECT_EQ(chosen, folder.PathOf(u"inner") + u"/");
}

}  // namespace
}  // namespace tessarine
