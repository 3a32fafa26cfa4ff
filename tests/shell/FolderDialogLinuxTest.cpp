#include <gmock/gmock.h>

#include "i18n/QtText.h"
#include "shell/BrowseFolder.h"
#include "shell/ShownDialog.h"
#include "support/TemporaryFolder.h"

// The dialog for folders as Qt shows it.

namespace tessarine
{
namespace
{

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
