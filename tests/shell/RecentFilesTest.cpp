#include "shell/RecentFiles.h"

#include <gmock/gmock.h>

#include <QMenu>

#include "i18n/QtText.h"
#include "platform/Messages.h"
#include "settings/SettingsStore.h"
#include "support/ErrorLogRecorder.h"
#include "support/qt/UserFolders.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class RecentFilesTest : public testing::Test
{
protected:
    static String PathOf(int number) { return FromQt(QStringLiteral("/jobs/%1.tsq").arg(number)); }

    static String Stored(int number) { return GetSetting(u"Tessarine", u"MRUFiles", FromQt(QString::number(number))); }

    static void Store(int number, const String& value)
    {
        SaveSetting(u"Tessarine", u"MRUFiles", FromQt(QString::number(number)), value);
    }

    void SavePaths(int first, int last)
    {
        for (int number = first; number <= last; ++number)
            recent_.SaveMRUFileList(PathOf(number));
    }

    std::vector<String> VisibleCaptions() const
    {
        std::vector<String> captions;
        for (const QAction* item : menu_.actions())
            if (item->isVisible())
                captions.push_back(FromQt(item->text()));
        return captions;
    }

    QAction& Item(int index) const
    {
        auto* const item = menu_.findChild<QAction*>(QStringLiteral("mnuDefRF(%1)").arg(index));
        if (!item)
            throw std::runtime_error("no such menu item");
        return *item;
    }

    UserFolders user_;
    ErrorLogRecorder log_;
    QMenu menu_;
    std::vector<std::int32_t> clicks_;
    RecentFiles recent_{menu_, [this](std::int32_t index) { clicks_.push_back(index); }};
};

TEST_F(RecentFilesTest, ShowsEmptyForAnEmptyStore)
{
    recent_.GetMRUFileList();

    EXPECT_THAT(VisibleCaptions(), ElementsAre(u"(Empty)"));
    EXPECT_EQ(recent_.Tag(0), u"");
    EXPECT_EQ(recent_.HighestIndex(), 0);
    EXPECT_EQ(recent_.MRUStoreCount, 1);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(RecentFilesTest, NumbersOnePathAndHidesEmptyAfterIt)
{
    recent_.SaveMRUFileList(u"C:\\Jobs\\report.tsq");

    EXPECT_THAT(VisibleCaptions(), ElementsAre(u"&1    C:\\Jobs\\report.tsq"));
    EXPECT_EQ(recent_.Tag(0), u"C:\\Jobs\\report.tsq");
    EXPECT_EQ(recent_.Caption(1), u"(Empty)");
    EXPECT_EQ(recent_.Tag(1), u"");
    EXPECT_FALSE(Item(1).isVisible());
    EXPECT_EQ(recent_.MRUCount, 1);
    EXPECT_EQ(recent_.MRUStoreCount, 2);
}

TEST_F(RecentFilesTest, PutsTheLatestUseOnTop)
{
    SavePaths(1, 3);

    EXPECT_THAT(VisibleCaptions(), ElementsAre(u"&1    /jobs/3.tsq", u"&2    /jobs/2.tsq", u"&3    /jobs/1.tsq"));
}

TEST_F(RecentFilesTest, TakesPathsThatDifferInCaseForOne)
{
    recent_.SaveMRUFileList(u"/jobs/Übung.tsq");
    recent_.SaveMRUFileList(u"/jobs/other.tsq");

    recent_.SaveMRUFileList(u"/JOBS/übung.tsq");

    EXPECT_THAT(VisibleCaptions(), ElementsAre(u"&1    /JOBS/übung.tsq", u"&2    /jobs/other.tsq"));
    EXPECT_EQ(recent_.Tag(0), u"/JOBS/übung.tsq");
}

TEST_F(RecentFilesTest, MovesAPathUsedAgainToTheTop)
{
    SavePaths(1, 3);

    recent_.SaveMRUFileList(PathOf(1));

    EXPECT_THAT(VisibleCaptions(), ElementsAre(u"&1    /jobs/1.tsq", u"&2    /jobs/3.tsq", u"&3    /jobs/2.tsq"));
    EXPECT_EQ(Stored(0), PathOf(1));
    EXPECT_EQ(Stored(3), PathOf(1));
    EXPECT_EQ(Stored(4), u"");
    EXPECT_EQ(recent_.MRUStoreCount, 5);
}

TEST_F(RecentFilesTest, ShowsTenPathsWithEmptyHiddenAfterThem)
{
    SavePaths(1, 10);

    EXPECT_EQ(recent_.HighestIndex(), 10);
    EXPECT_EQ(VisibleCaptions().size(), 10u);
    EXPECT_EQ(VisibleCaptions().back(), u"&10    /jobs/1.tsq");
    EXPECT_EQ(recent_.Caption(10), u"(Empty)");
}

TEST_F(RecentFilesTest, HidesTheOldestOfElevenPaths)
{
    SavePaths(1, 11);

    EXPECT_EQ(recent_.HighestIndex(), 10);
    EXPECT_EQ(recent_.MRUCount, 10);
    EXPECT_EQ(VisibleCaptions().size(), 10u);
    EXPECT_EQ(VisibleCaptions().front(), u"&1    /jobs/11.tsq");
    EXPECT_EQ(VisibleCaptions().back(), u"&10    /jobs/2.tsq");
    EXPECT_FALSE(Item(10).isVisible());
    EXPECT_EQ(recent_.Caption(10), u"/jobs/1.tsq");
    EXPECT_EQ(recent_.Tag(10), u"/jobs/1.tsq");
}

TEST_F(RecentFilesTest, DropsTheOldestWithTheTwelfthPath)
{
    SavePaths(1, 12);

    EXPECT_EQ(recent_.HighestIndex(), 10);
    EXPECT_EQ(VisibleCaptions().back(), u"&10    /jobs/3.tsq");
    EXPECT_EQ(recent_.Tag(10), PathOf(2));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(RecentFilesTest, PassesOverEmptyInAnyCase)
{
    Store(0, PathOf(1));
    Store(1, u"(EMPTY)");
    Store(2, PathOf(2));

    recent_.GetMRUFileList();

    EXPECT_THAT(VisibleCaptions(), ElementsAre(u"&1    /jobs/2.tsq", u"&2    /jobs/1.tsq"));
    EXPECT_EQ(recent_.MRUStoreCount, 4);
}

TEST_F(RecentFilesTest, ReadsPastTheLastPathWhenItPassedOverOne)
{
    for (int number = 0; number < 11; ++number)
        Store(number, PathOf(number));
    Store(11, u"(Empty)");

    recent_.GetMRUFileList();

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 9 (Subscript out of range) in procedure GetMRUFileList at Line No. 0 "
                                          "of Module modMRU"));
    EXPECT_EQ(recent_.Caption(0), u"/jobs/10.tsq");
}

TEST_F(RecentFilesTest, LosesWhatFollowsAGap)
{
    Store(0, PathOf(1));
    Store(2, PathOf(2));

    recent_.GetMRUFileList();
    EXPECT_THAT(VisibleCaptions(), ElementsAre(u"&1    /jobs/1.tsq"));

    recent_.SaveMRUFileList(PathOf(3));
    EXPECT_EQ(Stored(1), PathOf(3));
    EXPECT_THAT(VisibleCaptions(), ElementsAre(u"&1    /jobs/2.tsq", u"&2    /jobs/3.tsq", u"&3    /jobs/1.tsq"));
}

TEST_F(RecentFilesTest, ReadsTheStoreOfAnEarlierSession)
{
    SavePaths(1, 2);
    QMenu laterMenu;
    RecentFiles later(laterMenu, [](std::int32_t) {});

    later.GetMRUFileList();

    EXPECT_EQ(later.Caption(0), u"&1    /jobs/2.tsq");
    EXPECT_EQ(later.Caption(1), u"&2    /jobs/1.tsq");
}

TEST_F(RecentFilesTest, ClicksWithTheIndexOfTheItem)
{
    SavePaths(1, 3);

    Item(2).trigger();
    Item(0).trigger();

    EXPECT_THAT(clicks_, ElementsAre(2, 0));
}

TEST_F(RecentFilesTest, MayBeBuiltAnewFromWithinAClick)
{
    QMenu menu;
    RecentFiles* list = nullptr;
    RecentFiles recent(menu, [&](std::int32_t index) { list->SaveMRUFileList(list->Tag(index)); });
    list = &recent;
    recent.SaveMRUFileList(PathOf(1));
    recent.SaveMRUFileList(PathOf(2));

    menu.findChild<QAction*>("mnuDefRF(1)")->trigger();

    EXPECT_EQ(recent.Caption(0), u"&1    /jobs/1.tsq");
    EXPECT_EQ(recent.Caption(1), u"&2    /jobs/2.tsq");
    EXPECT_EQ(menu.actions().size(), 3);
}

TEST_F(RecentFilesTest, DeliversEventsAfterEachReadOfASave)
{
    SavePaths(1, 4);
    int deliveries = 0;
    const PendingEventsPort previous = SetDeliverPendingEvents([&] { ++deliveries; });

    recent_.SaveMRUFileList(PathOf(5));

    SetDeliverPendingEvents(previous);
    EXPECT_EQ(deliveries, 5);
}

TEST_F(RecentFilesTest, RecordsItsFileWhateverBecomesOfTheCallersTextMeanwhile)
{
    String path = PathOf(1);
    const PendingEventsPort previous = SetDeliverPendingEvents([&] { path = PathOf(2); });

    recent_.SaveMRUFileList(path);

    SetDeliverPendingEvents(previous);
    EXPECT_EQ(Stored(0), PathOf(1));
}

TEST_F(RecentFilesTest, LogsAStoreThatCannotBeWrittenAndLeavesTheMenu)
{
    user_.BlockSettings();

    recent_.SaveMRUFileList(PathOf(1));

    ASSERT_EQ(log_.Lines().size(), 1u);
    EXPECT_THAT(log_.Lines().front(), testing::AllOf(testing::StartsWith("Error 70 "),
                                                     testing::HasSubstr("in procedure SaveMRUFileList at Line No. 0 of "
                                                                        "Module modMRU")));
    EXPECT_THAT(VisibleCaptions(), ElementsAre(u"(Empty)"));
}

}  // namespace
}  // namespace tessarine
