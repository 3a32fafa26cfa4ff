#include <QTabWidget>

#include "ui/main/RunFromWindowTest.h"
#include "ui/run/HitStore.h"
#include "ui/run/HitsView.h"
#include "ui/run/ResultTree.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class HitsInRunTest : public RunFromWindowTest
{
protected:
    StoredFile Stored(HitStore::FileNumber file) { return Processing().Hits().File(file); }

    /// What stands in the list of hits.
    std::vector<std::string> Rows()
    {
        const QAbstractItemModel& hits = *InProcessing<HitsView>("lstHits").model();
        std::vector<std::string> rows;
        for (int row = 0; row < hits.rowCount(); ++row)
            rows.push_back(hits.index(row, 0).data().toString().toStdString());
        return rows;
    }

    /// What is kept of the files of the last run: the path, or the reason of a file that failed, and the hits.
    std::vector<std::string> Kept()
    {
        std::vector<std::string> lines;
        Processing().Hits().ForEachOfRun([&](const FileReport& file) {
            lines.push_back(WithoutFolder(ToUtf8(file.path)) + (file.error.empty() ? "" : ": " + ToUtf8(file.error)));
            for (const Hit& hit : file.hits)
                lines.push_back(ToUtf8(hit.before + u'[' + hit.text + u']' + hit.becomes.value_or(u"") + hit.after));
        });
        return lines;
    }
};

TEST_F(HitsInRunTest, KeepsTheHitsOfEachFileThatIsSearched)
{
    Presentation(u"a.pptx", {u"a Fabrikam plan", u"none", u"Fabrikam"});
    Presentation(u"b.pptx", {u"none"});
    SetJob({{u"Fabrikam", u"Contoso"}});

    Find();

    EXPECT_THAT(Kept(), ElementsAre("a.pptx", "a [Fabrikam] plan", "[Fabrikam]", "b.pptx"));
    const StoredFile file = Stored(0);
    EXPECT_EQ(file.report.hits.at(1).place->slide, 3);
    EXPECT_FALSE(file.report.hits.at(1).becomes);
    EXPECT_FALSE(file.run.replaces);
    EXPECT_TRUE(file.run.counts);
    EXPECT_EQ(file.report.Occurrences(), 2);
}

TEST_F(HitsInRunTest, KeepsOldAndNewTextOfAReplacement)
{
    Presentation(u"a.pptx", {u"a Fabrikam plan"});
    SetJob({{u"Fabrikam", u"Contoso"}});

    Replace();

    EXPECT_THAT(Kept(), ElementsAre("a.pptx", "a [Fabrikam]Contoso plan"));
    EXPECT_TRUE(Stored(0).run.replaces);
}

TEST_F(HitsInRunTest, KeepsAFileThatCannotBeOpenedWithItsReason)
{
    Presentation(u"a.pptx", {u"Fabrikam"});
    File(u"b.pptx", "no presentation");
    Presentation(u"c.pptx", {u"Fabrikam"});
    SetJob({{u"Fabrikam", u"Contoso"}});

    Find();

    const std::vector<std::string> kept = Kept();
    ASSERT_EQ(kept.size(), 5u) << testing::PrintToString(kept);
    EXPECT_THAT(kept[2], testing::StartsWith("b.pptx: "));
    EXPECT_EQ(kept[4], "[Fabrikam]");
}

TEST_F(HitsInRunTest, DropsTheHitsOfAFileThatFailsAfterThem)
{
    Presentation(u"a.pptx", {u"Fabrikam"});
    Presentation(u"b.pptx", {u"Fabrikam"});
    SetJob({{u"Fabrikam", u"Contoso"}});
    // Hits of a file that never gets a result: the next file begins.
    CurrentProject->BeforFileProcess += [this](const String& path) {
        if (path != PathOf(u"a.pptx"))
            return;
        Hit hit;
        hit.place = std::make_shared<const HitPlace>();
        CurrentProject->HitFound(hit);
        throw Failure(FailureNumber::InternalError, u"stopped");
    };

    Find();

    EXPECT_THAT(Kept(), testing::Not(testing::Contains("[]")));
    EXPECT_THAT(Kept(), testing::Contains("[Fabrikam]"));
}

TEST_F(HitsInRunTest, ShowsTheHitsOfTheFileThatIsSelectedAfterTheRun)
{
    Presentation(u"a.pptx", {u"a Fabrikam plan", u"none", u"Fabrikam"});
    SetJob({{u"none", u"nothing"}, {u"Fabrikam", u"Contoso"}});
    Replace();
    ResultTree& tree = *Processing().trvChangedFiles;
    InProcessing<QTabWidget>("SSTab1").setCurrentIndex(1);

    const QModelIndex file = tree.model()->index(0, 0);
    tree.setCurrentIndex(tree.model()->index(1, 0, file));

    EXPECT_THAT(Rows(), ElementsAre("Slide 1 “a Fabrikam plan”, shape “Title 1”, paragraph 1: a [Fabrikam → Contoso] "
                                    "plan",
                                    "Slide 3 “Fabrikam”, shape “Title 1”, paragraph 1: [Fabrikam → Contoso]"));
    EXPECT_EQ(Label("lblTotals"), "Files: 1 · Pairs with hits: 2 · Hits: 3");

    auto& list = InProcessing<HitsView>("lstHits");
    list.setCurrentIndex(list.model()->index(1, 0));
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_THAT(shell.Opened(), ElementsAre(PathOf(u"a.pptx")));
}

TEST_F(HitsInRunTest, GoOnWhenTheWindowIsClosedDuringTheRun)
{
    SetJobOver({u"a.pptx", u"b.pptx"});
    Before(u"b.pptx", [] {
        frmProcessingDocuments::Loaded()->IsRunGoing = false;
        frmProcessingDocuments::Loaded()->close();
    });

    Replace();

    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
    EXPECT_THAT(TextsOf(u"b.pptx"), ElementsAre("Contoso"));
}

TEST_F(HitsInRunTest, KeepsEarlierRunsForTheirTreesBesideTheLast)
{
    SetJobOver({u"a.pptx"});
    Find();
    Find();

    EXPECT_EQ(Processing().Hits().FileCount(), 2u);
    EXPECT_THAT(Kept(), ElementsAre("a.pptx", "[Fabrikam]"));
}

}  // namespace
}  // namespace tessarine
