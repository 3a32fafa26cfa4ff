#include "ui/main/MainWindowTest.h"

#include <QToolBar>

#include "app/Main.h"

// Commands that are given while a cell editor is open, and that leave the focus in it.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class OpenEditTest : public MainWindowTest
{
protected:
    /// An open editor over "a", in which "az" stands.
    void TypeIntoAnOpenEditor()
    {
        EditPairs({{u"a", u"b"}});
        ClickCell(1, ItemColumn::FindWhat);
        ASSERT_NE(Editor(), nullptr);
        QTest::keyClick(Editor(), Qt::Key_End);
        QTest::keyClicks(Editor(), "z");
    }

    std::string FindIn(const String& path)
    {
        const ProjectOwner project(powerPoint.Provider());
        std::int32_t error = 0;
        if (!project->LoadProject(path, error))
            return "<not loaded>";
        return ToUtf8(project->FindAndReplaceList->Item(1)->FindWhat);
    }
};

TEST_F(OpenEditTest, ThePointerOverTheRowLeavesTheTypedTextAlone)
{
    TypeIntoAnOpenEditor();

    QTest::mouseMove(Grid().viewport(), Grid().visualRect(Grid().Items().index(0, ItemColumn::Options)).center());
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(Grid().viewport(), &leave);
    EndEdit();

    EXPECT_THAT(Finds(), ElementsAre("az"));
}

TEST_F(OpenEditTest, ADeletedPairTakesItsTypedTextAlong)
{
    EditPairs({{u"a", u"1"}, {u"b", u"2"}});
    ClickCell(1, ItemColumn::FindWhat);
    ASSERT_NE(Editor(), nullptr);
    QTest::keyClick(Editor(), Qt::Key_End);
    QTest::keyClicks(Editor(), "z");
    messages.Next(MessageAnswer::Yes);

    Window().cmdDelete_Click();
    QCoreApplication::processEvents();

    EXPECT_THAT(Finds(), ElementsAre("b"));
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(OpenEditTest, ASwapTakesTheTypedText)
{
    TypeIntoAnOpenEditor();

    Window().cmdSwap_Click();

    EXPECT_THAT(Finds(), ElementsAre("b"));
    EXPECT_EQ(CurrentProject->FindAndReplaceList->Item(1)->ReplaceWith, u"az");
}

TEST_F(OpenEditTest, SaveFromTheMenuWritesTheTypedText)
{
    TypeIntoAnOpenEditor();
    const String path = folder.PathOf(u"job.tsq");
    shell.NextFile(path);

    Choose("menuSave");

    EXPECT_EQ(FindIn(path), "az");
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(OpenEditTest, SaveFromTheToolBarWritesTheTypedText)
{
    TypeIntoAnOpenEditor();
    const String path = folder.PathOf(u"job.tsq");
    shell.NextFile(path);
    auto& bar = The<QToolBar>("Toolbar1");

    QTest::mouseClick(bar.widgetForAction(bar.actions().at(1)), Qt::LeftButton);

    EXPECT_EQ(FindIn(path), "az");
}

TEST_F(OpenEditTest, ExportWritesTheTypedText)
{
    TypeIntoAnOpenEditor();
    const String path = folder.PathOf(u"list.csv");
    shell.NextFile(path);

    Choose("mnuExportList");

    FindAndReplaceItems list;
    ASSERT_TRUE(list.ImportList(path));
    EXPECT_EQ(list.Item(1)->FindWhat, u"az");
}

TEST_F(OpenEditTest, AStartFromTheMenuTakesTheTypedText)
{
    TypeIntoAnOpenEditor();

    Choose("mnuStartSearching");  // ends at the folder, which is empty

    EXPECT_THAT(Finds(), ElementsAre("az"));
}

TEST_F(OpenEditTest, CloseAsksAboutTheTypedText)
{
    TypeIntoAnOpenEditor();
    messages.Next(MessageAnswer::No);

    Window().close();

    ASSERT_EQ(messages.Messages().size(), 1U);
    EXPECT_EQ(messages.Messages().front().text, GlobalMsg(u"1048"));
    EXPECT_EQ(FindIn(DefaultProjectPath()), "az");
}

TEST_F(OpenEditTest, AnUntouchedEditorDoesNotMarkTheJob)
{
    EditPairs({{u"a", u"b"}});
    ClickCell(1, ItemColumn::FindWhat);

    Window().close();

    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_FALSE(Window().isVisible());
    EXPECT_THAT(Log(), IsEmpty());
}

}  // namespace
}  // namespace tessarine
