#include "ui/main/MainWindowTest.h"

#include <QAction>
#include <QLabel>

// What the window says of pairs that are not there yet, or are there and not used.

namespace tessarine
{
namespace
{

using testing::AllOf;
using testing::HasSubstr;

class ListNoticeTest : public MainWindowTest
{
protected:
    std::string Hint() { return Grid().accessibleDescription().toStdString(); }

    /// How much of the grid is not of its background.
    int InkInGrid()
    {
        const QImage image = Grid().viewport()->grab().toImage();
        const QRgb background = image.pixel(1, 1);
        int ink = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                ink += image.pixel(x, y) != background ? 1 : 0;
        return ink;
    }

    bool IsNoticeSeen() { return The("lblPairsNotice").isVisible(); }
    std::string Notice() { return The<QLabel>("lblPairsNotice").text().toStdString(); }

    String ListFile()
    {
        SetPairs({{u"one", u"1"}});
        String path = folder.PathOf(u"list.csv");
        Items().ExportsList(path);
        return path;
    }
};

TEST_F(ListNoticeTest, AnEmptyGridSaysHowToFillIt)
{
    EditPairs({});

    EXPECT_THAT(Hint(), AllOf(HasSubstr("Add"), HasSubstr("Ctrl+V"), HasSubstr("Import search/replace list")));
    EXPECT_GT(InkInGrid(), 100);
    EXPECT_FALSE(IsNoticeSeen());
}

TEST_F(ListNoticeTest, AnEmptyGridOfAListFromAFileSaysWhereItsPairsAre)
{
    Window();
    ASSERT_TRUE(IsChecked("optLoad(0)"));

    EXPECT_THAT(Hint(), AllOf(HasSubstr("file above"), HasSubstr("\"Using these values\"")));
    EXPECT_GT(InkInGrid(), 100);
    EXPECT_FALSE(IsNoticeSeen());
}

TEST_F(ListNoticeTest, TheHintGoesWithTheFirstPair)
{
    EditPairs({});

    Click("cmdAdd");
    EXPECT_EQ(Hint(), "");
    Grid().EndEdit();
    Window().UndoListStep();
    EXPECT_THAT(Hint(), HasSubstr("Ctrl+V"));
}

TEST_F(ListNoticeTest, PairsThatAreNotUsedAreSaidToBe)
{
    EditPairs({{u"a", u"b"}});
    EXPECT_FALSE(IsNoticeSeen());

    Click("optLoad(0)");
    EXPECT_TRUE(IsNoticeSeen());
    EXPECT_THAT(Notice(), AllOf(HasSubstr("not used"), HasSubstr("\"Using these values\"")));

    ClickBox("optLoad(1)");
    EXPECT_FALSE(IsNoticeSeen());
}

TEST_F(ListNoticeTest, AListImportedWhileTheFileIsChosenSaysSo)
{
    const String path = ListFile();
    SetPairs({});
    CurrentProject->CustomProperies->Item(2)->PropertyValue = u"EXTERNAL";
    Window();
    shell.NextFile(path);

    Choose("mnuImportList");

    EXPECT_TRUE(IsNoticeSeen());
    EXPECT_THAT(Notice(), HasSubstr("imported pairs stand below, but they are not used"));
    EXPECT_TRUE(IsChecked("optLoad(0)"));
    EXPECT_TRUE(messages.Messages().empty());

    ClickBox("optLoad(1)");
    Click("optLoad(0)");
    EXPECT_THAT(Notice(), HasSubstr("These pairs are not used"));
}

TEST_F(ListNoticeTest, TheNoticeFollowsTheLanguage)
{
    EditPairs({{u"a", u"b"}});
    Click("optLoad(0)");
    CurrentLanguageFile = u"German.lng";

    Window().LoadLng();

    EXPECT_THAT(Notice(), HasSubstr("nicht benutzt"));
    EXPECT_TRUE(IsNoticeSeen());
}

}  // namespace
}  // namespace tessarine
