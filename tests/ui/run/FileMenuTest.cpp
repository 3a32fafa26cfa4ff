#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>

#include "app/GlobalState.h"
#include "files/Files.h"
#include "platform/PathSeparator.h"
#include "ui/run/ProcessingWindowTest.h"

// The context menus of the result trees, by the right button and the keys.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class FileMenuTest : public ProcessingWindowTest
{
protected:
    /// A changed file with a backup that a run of this window has made.
    String Changed(StringView name)
    {
        String path = folder_.Write(name, "changed");
        const String backup = folder_.Write(String(name) + u".kept", "as before");
        Window().Backups().Add(path, backup, ContentOfFile(backup));
        Add(Counted(path, {{u"cat", {{Location::Slides, 1}}}}));
        return path;
    }

    /// Opens the menu on a row of the changed files.
    QMenu& MenuOn(int row)
    {
        ShowTab(1);
        ResultTree& tree = *Window().trvChangedFiles;
        return MenuOn(tree, tree.model()->index(row, 0));
    }

    static QMenu& MenuOn(ResultTree& tree, const QModelIndex& index)
    {
        const QPoint point = PointOf(tree, index);
        QTest::mousePress(tree.viewport(), Qt::RightButton, {}, point);
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, tree.viewport()->mapToGlobal(point));
        QApplication::sendEvent(tree.viewport(), &event);
        QTest::mouseRelease(tree.viewport(), Qt::RightButton, {}, point);
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr)
            throw std::runtime_error("no context menu");
        return *menu;
    }

    static QAction& ItemOf(const QMenu& menu, const char* name)
    {
        for (QAction* item : menu.actions())
            if (item->objectName() == QLatin1String(name))
                return *item;
        throw std::runtime_error(std::string("no item ") + name);
    }

    /// Clicks an item of an open menu, which closes it.
    static void Choose(QMenu& menu, const char* name)
    {
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(&ItemOf(menu, name)).center());
    }

    std::vector<std::string> MessageTexts() const
    {
        std::vector<std::string> texts;
        for (const Message& message : messages_.Messages())
            texts.push_back(ToUtf8(message.text));
        return texts;
    }
};

TEST_F(FileMenuTest, OpensTheFileAndItsFolder)
{
    const String path = Changed(u"a.pptx");

    Choose(MenuOn(0), "mnuOpenFile");
    Choose(MenuOn(0), "mnuOpenFolder");

    EXPECT_THAT(shell_.Opened(), ElementsAre(path, folder_.Path() + PathSeparator));
}

TEST_F(FileMenuTest, CopiesTheFullPath)
{
    const String path = Changed(u"my 😀.pptx");

    Choose(MenuOn(0), "mnuCopyPath");

    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdU16String(), path);
}

TEST_F(FileMenuTest, ActsOnTheFileOfAPairAndOfALocation)
{
    const String path = Changed(u"a.pptx");
    ResultTree& tree = *Window().trvChangedFiles;
    ShowTab(1);
    tree.expandAll();
    const QModelIndex pair = tree.model()->index(0, 0, tree.model()->index(0, 0));

    Choose(MenuOn(tree, pair), "mnuOpenFile");
    Choose(MenuOn(tree, tree.model()->index(0, 0, pair)), "mnuOpenFile");

    EXPECT_THAT(shell_.Opened(), ElementsAre(path, path));
}

TEST_F(FileMenuTest, OpensByTheKeyboardToo)
{
    const String path = Changed(u"a.pptx");
    ShowTab(1);
    ResultTree& tree = *Window().trvChangedFiles;
    tree.setCurrentIndex(tree.model()->index(0, 0));
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(&tree, &event);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);

    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);

    EXPECT_THAT(shell_.Opened(), ElementsAre(path));
}

TEST_F(FileMenuTest, OffersTheBackupWhereThereIsOne)
{
    Changed(u"a.pptx");
    Add(Counted(folder_.Write(u"b.pptx"), {}));

    QMenu& withBackup = MenuOn(0);
    EXPECT_TRUE(ItemOf(withBackup, "mnuRestoreFile").isEnabled());
    EXPECT_TRUE(ItemOf(withBackup, "mnuRemoveBackup").isEnabled());
    withBackup.close();
    QMenu& without = MenuOn(1);
    EXPECT_FALSE(ItemOf(without, "mnuRestoreFile").isEnabled());
    EXPECT_FALSE(ItemOf(without, "mnuRemoveBackup").isEnabled());
    EXPECT_TRUE(ItemOf(without, "mnuRestoreAll").isEnabled());
    EXPECT_TRUE(ItemOf(without, "mnuOpenFile").isEnabled());
    without.close();
}

TEST_F(FileMenuTest, LeavesBackupsAloneDuringARun)
{
    Changed(u"a.pptx");
    Window().IsRunGoing = true;

    QMenu& menu = MenuOn(0);
    for (const char* item : {"mnuRestoreFile", "mnuRemoveBackup", "mnuRestoreAll", "mnuRemoveAllBackups"})
        EXPECT_FALSE(ItemOf(menu, item).isEnabled()) << item;
    menu.close();
    Window().IsRunGoing = false;
}

TEST_F(FileMenuTest, RestoresAFileWhenTheUserAgrees)
{
    const String path = Changed(u"a.pptx");
    messages_.Next(MessageAnswer::No);
    Choose(MenuOn(0), "mnuRestoreFile");
    EXPECT_EQ(ContentOf(path), "changed");

    messages_.Next(MessageAnswer::Yes);
    Choose(MenuOn(0), "mnuRestoreFile");

    EXPECT_EQ(ContentOf(path), "as before");
    EXPECT_THAT(MessageTexts(), ElementsAre(HasSubstr("a.pptx"), HasSubstr("a.pptx"), "Files restored: 1"));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileMenuTest, RemovesABackupWhenTheUserAgrees)
{
    const String path = Changed(u"a.pptx");
    messages_.Next(MessageAnswer::Yes);

    Choose(MenuOn(0), "mnuRemoveBackup");

    EXPECT_EQ(ContentOf(path), "changed");
    EXPECT_EQ(ContentOf(path + u".kept"), "<missing>");
    QMenu& menu = MenuOn(0);
    EXPECT_FALSE(ItemOf(menu, "mnuRestoreFile").isEnabled());
    EXPECT_FALSE(ItemOf(menu, "mnuRestoreAll").isEnabled());
    menu.close();
}

TEST_F(FileMenuTest, RestoresAllFilesOfItsRuns)
{
    const String first = Changed(u"a.pptx");
    const String second = Changed(u"b.ppt");
    messages_.Next(MessageAnswer::Yes);

    Choose(MenuOn(0), "mnuRestoreAll");

    EXPECT_EQ(ContentOf(first), "as before");
    EXPECT_EQ(ContentOf(second), "as before");
    EXPECT_THAT(MessageTexts(), ElementsAre(HasSubstr("Files: 2"), "Files restored: 2"));
}

TEST_F(FileMenuTest, RemovesAllBackupsOfItsRuns)
{
    const String first = Changed(u"a.pptx");
    const String second = Changed(u"b.ppt");
    messages_.Next(MessageAnswer::Yes);

    Choose(MenuOn(0), "mnuRemoveAllBackups");

    EXPECT_FALSE(FileExists(first + u".kept"));
    EXPECT_FALSE(FileExists(second + u".kept"));
    EXPECT_THAT(MessageTexts(), ElementsAre(HasSubstr("Files: 2"), "Backups removed: 2"));
}

TEST_F(FileMenuTest, SaysWhyAFileIsNotRestored)
{
    const String path = Changed(u"a.pptx");
    folder_.Write(u"a.pptx.kept", "somebody else's");
    messages_.Next(MessageAnswer::Yes);

    Choose(MenuOn(0), "mnuRestoreFile");

    EXPECT_EQ(ContentOf(path), "changed");
    ASSERT_THAT(MessageTexts(), SizeIs(2));
    EXPECT_THAT(MessageTexts().back(), HasSubstr("Files restored: 0\n\nThe backup "));
    EXPECT_THAT(log_.Lines(), ElementsAre(HasSubstr("was changed after the run made it")));
}

TEST_F(FileMenuTest, GoesOnAfterFilesThatFailAndCountsThem)
{
    const std::vector<String> paths{Changed(u"a.pptx"), Changed(u"b.pptx"), Changed(u"c.pptx")};
    folder_.Write(u"a.pptx.kept", "somebody else's");
    DeleteFile(paths[1] + u".kept");
    messages_.Next(MessageAnswer::Yes);

    Choose(MenuOn(0), "mnuRestoreAll");

    EXPECT_EQ(ContentOf(paths[0]), "changed");
    EXPECT_EQ(ContentOf(paths[1]), "changed");
    EXPECT_EQ(ContentOf(paths[2]), "as before");
    EXPECT_EQ(MessageTexts().back(), "Files restored: 1\n\nFiles that failed: 2. The error log tells why.");
    EXPECT_THAT(log_.Lines(), SizeIs(2));
}

}  // namespace
}  // namespace tessarine
