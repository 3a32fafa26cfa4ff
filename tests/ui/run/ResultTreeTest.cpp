#include "ui/run/ResultTree.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QClipboard>

#include "app/GlobalState.h"
#include "ui/run/ProcessingWindowTest.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

std::map<Location, std::int32_t> Everywhere(std::int32_t count)
{
    std::map<Location, std::int32_t> counts;
    for (std::size_t row = 0; row < SearchLocations.size(); ++row)
        counts[static_cast<Location>(row)] = count;
    return counts;
}

class ResultTreeTest : public ProcessingWindowTest
{
protected:
    ResultTree& Changed() { return *Window().trvChangedFiles; }

    void Trigger(const char* menuItem) { Changed().findChild<QAction*>(menuItem)->trigger(); }

    static std::string Clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }
};

// What a result adds.

TEST_F(ResultTreeTest, ShowsTheCountOfEachLocationInItsOwnSpelling)
{
    std::map<Location, std::int32_t> counts;
    for (int row = 0; row < static_cast<int>(SearchLocations.size()); ++row)
        counts[static_cast<Location>(row)] = row + 1;

    Add(Counted(u"/a.pptx", {{u"cat", counts}}));

    EXPECT_THAT(RowsOf(Changed()), ElementsAre("/a.pptx", "  cat", "    Slides (1)", "    Hyperlinks Addresses (2)",
                                               "    Shapes And Textboxes (3)", "    Header (4)", "    Footer (5)",
                                               "    Builtin Properties(6)", "    Custom Properties(7)", "    Notes(8)",
                                               "    OLE And DDE Links(9)", "    Slide Master Per Slide(10)",
                                               "    Slide Master Per Presentation (11)", "    Title Master(12)",
                                               "    Handout Master(13)", "    Notes Master(14)"));
    EXPECT_EQ(mTotalChanges, 105);
    EXPECT_EQ(mFilesChanged, 1);
}

TEST_F(ResultTreeTest, ShowsAWordForEachLocationWhenNothingIsCounted)
{
    std::map<Location, std::int32_t> counts = Everywhere(1);
    counts[Location::HyperlinkAddresses] = 2;

    Add(Counted(u"/a.pptx", {{u"cat", counts}}), false);

    EXPECT_THAT(RowsOf(Changed()),
                ElementsAre("/a.pptx", "  cat", "    Slides (Found)", "    Hyperlinks Addresses (FOund)",
                            "    Shapes And Textboxes (Found)", "    Header (Found)", "    Footer (Found)",
                            "    Builtin Properties(Found)", "    Custom Properties(Found)", "    Notes(Found)",
                            "    OLE And DDE Links(Found)", "    Slide Master Per Slide(Found)",
                            "    Slide Master Per Presentation (Found)", "    Title Master(Found)",
                            "    Handout Master(Found)", "    Notes Master(Found)"));
    EXPECT_EQ(mTotalChanges, 15);
}

TEST_F(ResultTreeTest, ShowsAWordForEachLocationWithoutAFind)
{
    Add(Counted(u"/a.pptx", {{u"cat", Everywhere(0)}}), false);

    EXPECT_THAT(
        RowsOf(Changed()),
        ElementsAre("/a.pptx", "  cat", "    Slides (Not Found)", "    Hyperlinks Addresses (Not FOund)",
                    "    Shapes And Textboxes (Not Found)", "    Header (Not Found)", "    Footer (Not Found)",
                    "    Builtin Properties(Not Found)", "    Custom Properties(Not Found)", "    Notes(Not Found)",
                    "    OLE And DDE Links(Not Found)", "    Slide Master Per Slide(Not Found)",
                    "    Slide Master Per Presentation (Not Found)", "    Title Master(Not Found)",
                    "    Handout Master(Not Found)", "    Notes Master(Not Found)"));
}

TEST_F(ResultTreeTest, ListsEveryItemAndTheLocationsItSearches)
{
    Add(Counted(u"/a.pptx", {{u"cat", {{Location::Slides, 1}}}, {u"dog", {{Location::Slides, 0}}}, {u"nowhere", {}}}),
        false);

    EXPECT_THAT(RowsOf(Changed()),
                ElementsAre("/a.pptx", "  cat", "    Slides (Found)", "  dog", "    Slides (Not Found)", "  nowhere"));
}

TEST_F(ResultTreeTest, KeepsAFileWithoutACountAsASingleRow)
{
    Add(NothingCounted(u"/a.pptx"));

    EXPECT_THAT(RowsOf(*Window().trvNotChangedFiles), ElementsAre("/a.pptx"));
    EXPECT_THAT(RowsOf(Changed()), IsEmpty());
    EXPECT_THAT(RowsOf(*Window().trvErrors), IsEmpty());
    EXPECT_EQ(mFilesChanged, 0);
    EXPECT_EQ(mTotalChanges, 0);
}

TEST_F(ResultTreeTest, SaysWhyAFileWasNotProcessed)
{
    Add(NotProcessed(u"/a.pptx", u"Read Only File."));
    Add(NotProcessed(u"/b.pptx", u"  Wrong Password has been supplied."));

    EXPECT_THAT(RowsOf(*Window().trvErrors),
                ElementsAre("/a.pptx", "  Read Only File.", "/b.pptx", "    Wrong Password has been supplied."));
    EXPECT_EQ(mFilesChanged, 0);
}

TEST_F(ResultTreeTest, SaysThatNothingCountedCouldBeChanged)
{
    const auto counted = Counted(u"/a.pptx", {{u"cat", {{Location::BuiltinProperies, 1}}}});
    counted->HasNewContent = false;
    const auto changed = Counted(u"/b.pptx", {{u"cat", {{Location::Notes, 1}}}});
    changed->HasNewContent = true;

    Add(counted);
    Add(changed);

    EXPECT_THAT(RowsOf(Changed()), ElementsAre("/a.pptx", "  Counted, nothing could be changed", "  cat", testing::_,
                                               "/b.pptx", "  cat", "    Notes(1)"));
}

TEST_F(ResultTreeTest, HasALineForEachWarning)
{
    const auto status = NothingCounted(u"/a.pptx");

    AddResult(Window().TreeOf(status), *status, true, {mFilesChanged, mTotalChanges},
              {u"is marked as final", u"has 1 more name"});

    EXPECT_THAT(RowsOf(*Window().trvNotChangedFiles),
                ElementsAre("/a.pptx", "  Warning: is marked as final", "  Warning: has 1 more name"));
}

TEST_F(ResultTreeTest, AddsItemsOfAFileReportedTwiceToItsRow)
{
    Add(Counted(u"/a.pptx", {{u"cat", {{Location::Notes, 1}}}}));
    Add(Counted(u"/b.pptx", {{u"cat", {{Location::Notes, 2}}}}));
    Add(Counted(u"/a.pptx", {{u"cat", {{Location::Notes, 4}}}}));

    EXPECT_THAT(RowsOf(Changed()), ElementsAre("/a.pptx", "  cat", "    Notes(1)", "  cat", "    Notes(4)", "/b.pptx",
                                               "  cat", "    Notes(2)"));
    EXPECT_EQ(mFilesChanged, 2);
    EXPECT_EQ(mTotalChanges, 7);
}

TEST_F(ResultTreeTest, KeepsAFileOncePerTree)
{
    Add(Counted(u"/a.pptx", {{u"cat", {{Location::Notes, 1}}}}));
    Add(NothingCounted(u"/a.pptx"));
    Add(NothingCounted(u"/a.pptx"));

    EXPECT_EQ(Changed().Nodes().FileCount(), 1u);
    EXPECT_THAT(RowsOf(*Window().trvNotChangedFiles), ElementsAre("/a.pptx"));
}

TEST_F(ResultTreeTest, HasNoTreeForAnUnknownStatus)
{
    const auto status = NothingCounted(u"/a.pptx");
    status->FileStausAfterProcess = 7;

    EXPECT_EQ(Window().TreeOf(status), nullptr);
    Add(status);

    EXPECT_THAT(RowsOf(Changed()), IsEmpty());
    EXPECT_THAT(RowsOf(*Window().trvNotChangedFiles), IsEmpty());
    EXPECT_THAT(RowsOf(*Window().trvErrors), IsEmpty());
}

TEST_F(ResultTreeTest, FailsWithoutAResult)
{
    try {
        Window().TreeOf(nullptr);
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, FailureNumber::ObjectNotSet);
    }
}

TEST_F(ResultTreeTest, ShowsWhatItHasWhenTheTotalOverflows)
{
    mTotalChanges = 2147483646;
    const auto status = Counted(u"/a.pptx", {{u"cat", {{Location::Slides, 1}, {Location::Notes, 1}}}, {u"dog", {}}});

    try {
        Add(status);
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, FailureNumber::Overflow);
    }

    EXPECT_EQ(mTotalChanges, 2147483647);
    EXPECT_THAT(RowsOf(Changed()), ElementsAre("/a.pptx", "  cat", "    Slides (1)", "    Notes(1)"));
}

TEST_F(ResultTreeTest, TellsItsViewsOfEachAdditionByTheBook)
{
    const QAbstractItemModelTester tester(Changed().model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    Changed().expandAll();

    for (const char16_t* path : {u"/a.pptx", u"/b.pptx", u"/a.pptx"}) {
        Add(Counted(path, {{u"cat", {{Location::Notes, 1}}}, {u"dog", {}}}));
        QCoreApplication::processEvents();
    }

    EXPECT_EQ(RowsOf(Changed()).size(), 11u);
}

TEST_F(ResultTreeTest, ShowsItemsThatComeToAnOpenFile)
{
    Add(Counted(u"/a.pptx", {{u"cat", {}}}));
    Changed().expandAll();

    Add(Counted(u"/a.pptx", {{u"dog", {}}}));
    QCoreApplication::processEvents();

    const QModelIndex dog = Changed().model()->index(1, 0, Changed().model()->index(0, 0));
    EXPECT_EQ(dog.data().toString(), "dog");
    EXPECT_FALSE(Changed().visualRect(dog).isEmpty());
}

TEST_F(ResultTreeTest, KeepsThousandsOfEqualRowsOnce)
{
    SharedTexts texts;
    SharedLists lists;
    const SharedTexts::Number one = texts.Add(u"Slides (1)");
    const SharedTexts::Number two = texts.Add(u"Notes(0)");
    const SharedLists::Number list = lists.Append(lists.Append(SharedLists::Empty, one), two);

    EXPECT_EQ(texts.Add(u"Slides (1)"), one);
    EXPECT_EQ(lists.Append(lists.Append(SharedLists::Empty, one), two), list);
    EXPECT_NE(lists.Append(lists.Append(SharedLists::Empty, two), one), list);
    EXPECT_EQ(lists.Count(list), 2u);
    EXPECT_EQ(texts[lists.At(list, 0)], u"Slides (1)");
    EXPECT_EQ(texts[lists.At(list, 1)], u"Notes(0)");
}

class LongResultTreeTest : public ResultTreeTest
{
protected:
    static constexpr int files = 600;

    void AddFiles(const String& prefix)
    {
        for (int i = 0; i < files; ++i)
            Add(Counted(prefix + FromUtf8(std::to_string(i)), {{u"cat", {{Location::Notes, 1}}}}));
    }

    int ShownFiles() { return Changed().model()->rowCount(); }
};

TEST_F(LongResultTreeTest, ShowsAdditionsWhenItComesIntoSight)
{
    BeginRun();
    AddFiles(u"/a");
    EXPECT_LT(ShownFiles(), files);

    ShowTab(1);

    EXPECT_EQ(ShownFiles(), files);
    EXPECT_EQ(RowsOf(Changed()).size(), std::size_t{files} * 3);
}

TEST_F(LongResultTreeTest, ShowsWhatIsAddedInSightALittleLater)
{
    AddFiles(u"/a");
    EXPECT_TRUE(QTest::qWaitFor([this] { return ShownFiles() == files; }));

    AddFiles(u"/b");
    Add(Counted(u"/a0", {{u"dog", {}}}));

    EXPECT_TRUE(QTest::qWaitFor([this] { return ShownFiles() == 2 * files; }));
    EXPECT_EQ(Changed().model()->rowCount(Changed().model()->index(0, 0)), 2);
    EXPECT_EQ(mFilesChanged, 2 * files);
}

// What a person does with a tree.

TEST_F(ResultTreeTest, CopiesTheCurrentRowByTheKeyboard)
{
    Add(Counted(u"/a.pptx", {{u"cat", {{Location::Slides, 3}}}}));
    Changed().setCurrentIndex(Changed().model()->index(0, 0));

    QTest::keyClick(&Changed(), Qt::Key_Right);
    QTest::keyClick(&Changed(), Qt::Key_Down);
    QTest::keyClick(&Changed(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), "cat");

    QTest::keyClick(&Changed(), Qt::Key_Right);
    QTest::keyClick(&Changed(), Qt::Key_Down);
    Trigger("mnuCopyNode");
    EXPECT_EQ(Clipboard(), "Slides (3)");
}

TEST_F(ResultTreeTest, LeavesTheClipboardWithoutACurrentRow)
{
    QGuiApplication::clipboard()->setText("before");

    Window();
    Trigger("mnuCopyNode");

    EXPECT_EQ(Clipboard(), "before");
}

TEST_F(ResultTreeTest, ExpandsAndCollapsesAll)
{
    Add(Counted(u"/a.pptx", {{u"cat", {{Location::Slides, 3}}}}));
    const QModelIndex file = Changed().model()->index(0, 0);
    const QModelIndex item = Changed().model()->index(0, 0, file);

    Trigger("mnuExpandAll");
    EXPECT_TRUE(Changed().isExpanded(file));
    EXPECT_TRUE(Changed().isExpanded(item));

    Trigger("mnuCollapseAll");
    EXPECT_FALSE(Changed().isExpanded(file));
}

TEST_F(ResultTreeTest, ExpandsOnlyTheFilesOfAVeryLargeTree)
{
    ResultModel& results = Changed().Results();
    const ResultModel::Position file = results.AddFile(u"/a.pptx");
    for (int i = 0; i < 200'000; ++i)
        results.AddItem(file, u"cat", ItemKind::PairWithHits);
    results.AddLocation(file, 0, u"Slides (1)", Location::Slides, true);
    results.ShowAdditions();
    const QModelIndex index = Changed().model()->index(0, 0);

    Trigger("mnuExpandAll");

    EXPECT_TRUE(Changed().isExpanded(index));
    EXPECT_FALSE(Changed().isExpanded(Changed().model()->index(0, 0, index)));
}

TEST_F(ResultTreeTest, NamesItsMenuInTheLanguageInForce)
{
    CurrentLanguageFile = u"German.lng";

    EXPECT_EQ(Changed().findChild<QAction*>("mnuCopyNode")->text(), "Kopieren");
    EXPECT_EQ(Changed().findChild<QAction*>("mnuExpandAll")->text(), "Alle aufklappen");
    EXPECT_EQ(Changed().findChild<QAction*>("mnuCollapseAll")->text(), "Alle zuklappen");
}

TEST_F(ResultTreeTest, FindsTheNodeAtAPoint)
{
    Add(Counted(u"/a.pptx", {{u"cat", {}}}));
    Changed().expandAll();
    const QModelIndex file = Changed().model()->index(0, 0);
    const auto nodeAt = [this](QPoint point) {
        return Changed().HitTest(static_cast<float>(point.x()), static_cast<float>(point.y()));
    };

    const auto fileNode = nodeAt(PointOf(Changed(), file));
    ASSERT_TRUE(fileNode);
    EXPECT_EQ(fileNode->Text, u"/a.pptx");
    EXPECT_EQ(fileNode->Key, u"/a.pptx");
    const auto itemNode = nodeAt(PointOf(Changed(), Changed().model()->index(0, 0, file)));
    ASSERT_TRUE(itemNode);
    EXPECT_EQ(itemNode->Text, u"cat");
    EXPECT_EQ(itemNode->Key, u"");
    EXPECT_FALSE(nodeAt({5, Changed().viewport()->height() - 5}));
}

}  // namespace
}  // namespace tessarine
