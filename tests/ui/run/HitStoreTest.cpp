#include "ui/run/HitStore.h"

#include <gmock/gmock.h>

#include <QBuffer>

#include "platform/Failure.h"
#include "ui/run/SampleHits.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

/// A disk that takes so many bytes and then no more.
class SmallDisk : public QBuffer
{
public:
    explicit SmallDisk(qint64 room) : room_(room) { open(QIODevice::ReadWrite | QIODevice::Unbuffered); }

    void Break() { isBroken_ = true; }  ///< What is on it can't be read any more.

protected:
    qint64 writeData(const char* data, qint64 size) override
    {
        return pos() + size > room_ ? -1 : QBuffer::writeData(data, size);
    }
    qint64 readData(char* data, qint64 size) override { return isBroken_ ? -1 : QBuffer::readData(data, size); }

private:
    qint64 room_;
    bool isBroken_ = false;
};

FileReport Report(const String& path, std::int32_t status = FileStatus::Counted)
{
    FileReport report;
    report.path = path;
    report.status = status;
    return report;
}

PairReport PairOf(const String& find, const String& replace, Location location, std::int32_t count)
{
    PairReport pair{find, replace};
    pair.counts.fill(-1);
    pair.counts[static_cast<std::size_t>(Location::Notes)] = 0;
    pair.counts[static_cast<std::size_t>(location)] = count;
    return pair;
}

/// A hit that takes about as much room as any with its context.
Hit LongHit(std::int32_t pair = 1)
{
    return HitOnSlide(pair, String(60, u'a'), u"cat", String(60, u'b'));
}

void AddWithHits(HitStore& store, const String& path, int hits)
{
    for (int i = 0; i < hits; ++i)
        store.Take(LongHit());
    store.Add(Report(path));
}

TEST(HitStore, GivesBackEachFileAsItWasAdded)
{
    HitStore store;
    store.BeginRun({true, false});
    FileReport changed = Report(u"/a.pptx");
    changed.hasNewContent = true;
    changed.warnings = {u"is marked as final", u"has 1 more name"};
    changed.pairs = {PairOf(u"cat", u"dog", Location::Slides, 70'000), PairOf(u"hen", u"", Location::Footer, 0)};
    store.Take(Replaced(HitOnSlide(1, u"a ", u"cat", u" here"), u"dog"));
    store.Add(changed);
    FileReport failed = Report(u"/b.pptx", FileStatus::NotProcessed);
    failed.error = u"Read Only File.";
    store.Add(failed);

    const StoredFile first = store.File(0);
    EXPECT_EQ(first.report.path, u"/a.pptx");
    EXPECT_EQ(first.report.status, FileStatus::Counted);
    EXPECT_EQ(first.report.hasNewContent, true);
    EXPECT_THAT(first.report.warnings, ElementsAre(u"is marked as final", u"has 1 more name"));
    ASSERT_THAT(first.report.pairs, SizeIs(2));
    EXPECT_EQ(first.report.pairs[0].find, u"cat");
    EXPECT_EQ(first.report.pairs[0].replace, u"dog");
    EXPECT_EQ(first.report.pairs[0].counts, changed.pairs[0].counts);
    EXPECT_EQ(first.report.pairs[1].find, u"hen");
    EXPECT_EQ(first.report.pairs[1].replace, u"");
    EXPECT_EQ(first.report.pairs[1].counts, changed.pairs[1].counts);
    EXPECT_THAT(Described(first.report.hits),
                ElementsAre("slides pair 1 slide 3 'Plan' design '' property '' header/footer 0 link 0 shape 2 "
                            "'Text 1' paragraph 2 at 3+3: a [cat] here -> [dog]"));
    EXPECT_EQ(first.report.hitsLeftOut, 0);
    EXPECT_THAT(first.leftOut, IsEmpty());
    EXPECT_TRUE(first.run.replaces);
    EXPECT_FALSE(first.run.counts);
    const StoredFile second = store.File(1);
    EXPECT_EQ(second.report.path, u"/b.pptx");
    EXPECT_EQ(second.report.status, FileStatus::NotProcessed);
    EXPECT_EQ(second.report.error, u"Read Only File.");
    EXPECT_FALSE(second.report.hasNewContent);
    EXPECT_THAT(second.report.pairs, IsEmpty());
}

TEST(HitStore, KeepsEveryDetailOfAHit)
{
    HitStore store;
    HitPlace place;
    place.location = Location::NotesMaster;
    place.slide = 7;
    place.slideTitle = u"Ω";
    place.design = u"Office";
    place.property = u"Company";
    place.headerFooter = HitPlace::HeaderFooter::Footer;
    place.hyperlink = 4;
    place.shape = 5;
    place.shapeName = u"Box";
    Hit hit = At(HitOnSlide(9, u"before", u"text", u"after"), place, 6);
    hit.isCutBefore = true;
    hit.isCutAfter = true;
    hit.isCounted = false;
    hit.becomes = u"";
    store.Take(hit);
    store.Add(Report(u"/a.pptx"));

    EXPECT_THAT(store.File(0).report.hits, SizeIs(1));
    EXPECT_EQ(Described(store.File(0).report.hits[0]), Described(hit));
}

TEST(HitStore, KeepsTextsUnitByUnit)
{
    HitStore store;
    const String loneSurrogate{u'a', char16_t{0xD800}, u'\0', char16_t{0xFFFE}};
    store.Take(HitOnSlide(1, loneSurrogate, u"\U0001F600", u"שלום"));
    store.Add(Report(u"/a.pptx"));

    const Hit hit = store.File(0).report.hits.at(0);
    EXPECT_EQ(hit.before, loneSurrogate);
    EXPECT_EQ(hit.text, u"\U0001F600");
    EXPECT_EQ(hit.after, u"שלום");
}

TEST(HitStore, GivesHitsOfOneTextTheirPlaceInCommon)
{
    HitStore store;
    const Hit first = HitOnSlide(1, u"", u"cat", u" cat");
    Hit second = first;
    second.position = 5;
    store.Take(first);
    store.Take(second);
    store.Take(HitOnSlide(1, u"", u"cat", u""));
    store.Add(Report(u"/a.pptx"));

    const std::vector<Hit> hits = store.File(0).report.hits;
    EXPECT_EQ(hits.at(0).place, hits.at(1).place);
    EXPECT_NE(hits.at(1).place, hits.at(2).place);
}

TEST(HitStore, KeepsAThousandHitsOfAFileAndCountsTheRest)
{
    HitStore store;
    for (int i = 0; i < 998; ++i)
        store.Take(LongHit(1));
    for (int i = 0; i < 5; ++i)
        store.Take(LongHit(2));
    store.Add(Report(u"/a.pptx"));
    AddWithHits(store, u"/b.pptx", 1000);

    const StoredFile file = store.File(0);
    EXPECT_THAT(file.report.hits, SizeIs(1000));
    EXPECT_EQ(file.report.hitsLeftOut, 3);
    ASSERT_THAT(file.leftOut, SizeIs(1));
    EXPECT_EQ(file.leftOut[0].pair, 2);
    EXPECT_EQ(file.leftOut[0].location, Location::Slides);
    EXPECT_EQ(file.leftOut[0].count, 3);
    EXPECT_THAT(store.File(1).report.hits, SizeIs(1000));
    EXPECT_EQ(store.File(1).report.hitsLeftOut, 0);
}

TEST(HitStore, BoundsTheTextOfAFilesHits)
{
    HitStore store;
    const Hit half = HitOnSlide(1, {}, String(HitStore::MostUnits / 2, u'a'), {});
    store.Take(half);
    store.Take(half);
    store.Take(HitOnSlide(1, {}, u"a", {}));
    store.Add(Report(u"/a.pptx"));

    EXPECT_THAT(store.File(0).report.hits, SizeIs(2));
    EXPECT_EQ(store.File(0).report.hitsLeftOut, 1);
}

TEST(HitStore, DropsTheHitsOfAFileThatFailed)
{
    HitStore store;
    store.Take(LongHit());
    const StoredHits failed = store.Add(Report(u"/a.pptx", FileStatus::NotProcessed));
    store.Add(Report(u"/b.pptx"));

    EXPECT_THAT(failed.groups, IsEmpty());
    EXPECT_THAT(store.File(0).report.hits, IsEmpty());
    EXPECT_THAT(store.File(1).report.hits, IsEmpty());
    EXPECT_EQ(store.File(0).report.hitsLeftOut, 0);
}

TEST(HitStore, ForgetsTheHitsOfAFileWithoutAResult)
{
    HitStore store;
    for (int i = 0; i < 1001; ++i)
        store.Take(LongHit());
    store.Forget();
    const StoredHits next = store.Add(Report(u"/b.pptx"));

    EXPECT_THAT(next.groups, IsEmpty());
    EXPECT_THAT(store.File(0).report.hits, IsEmpty());
    EXPECT_EQ(store.File(0).report.hitsLeftOut, 0);
}

TEST(HitStore, TellsWhereAFilesHitsWere)
{
    HitStore store;
    HitPlace footer;
    footer.location = Location::Footer;
    store.Take(LongHit(2));
    store.Take(At(LongHit(4), footer));
    store.Take(LongHit(2));

    const StoredHits first = store.Add(Report(u"/a.pptx"));
    const StoredHits second = store.Add(Report(u"/b.pptx"));

    EXPECT_EQ(first.file, 0u);
    EXPECT_THAT(first.groups, ElementsAre(Pair(2, Location::Slides), Pair(4, Location::Footer)));
    EXPECT_EQ(second.file, 1u);
    EXPECT_THAT(second.groups, IsEmpty());
}

TEST(HitStore, LeavesHitsOutWhenTheDiskIsFull)
{
    HitStore store(std::make_unique<SmallDisk>(4000));
    AddWithHits(store, u"/a.pptx", 4);
    for (int i = 0; i < 400; ++i)
        store.Take(LongHit());
    FileReport full = Report(u"/b.pptx");
    full.pairs = {PairOf(u"cat", u"dog", Location::Slides, 400)};
    const StoredHits stored = store.Add(full);
    AddWithHits(store, u"/c.pptx", 4);

    EXPECT_THAT(store.File(0).report.hits, SizeIs(4));
    const StoredFile file = store.File(1);
    EXPECT_THAT(file.report.hits, IsEmpty());
    EXPECT_EQ(file.report.hitsLeftOut, 400);
    EXPECT_EQ(file.report.path, u"/b.pptx");
    EXPECT_EQ(file.report.Occurrences(), 400);
    EXPECT_THAT(stored.groups, ElementsAre(Pair(1, Location::Slides)));
    EXPECT_THAT(store.File(2).report.hits, IsEmpty());
    EXPECT_EQ(store.File(2).report.hitsLeftOut, 4);
    EXPECT_EQ(store.File(2).report.path, u"/c.pptx");
}

TEST(HitStore, LeavesHitsOutWithoutATemporaryFile)
{
    HitStore store(nullptr);
    AddWithHits(store, u"/a.pptx", 3);

    EXPECT_EQ(store.File(0).report.path, u"/a.pptx");
    EXPECT_THAT(store.File(0).report.hits, IsEmpty());
    EXPECT_EQ(store.File(0).report.hitsLeftOut, 3);
}

TEST(HitStore, KeepsNoHitsBeyondTheBoundOfItsFile)
{
    auto disk = std::make_unique<SmallDisk>(100'000);
    const SmallDisk& written = *disk;
    HitStore store(std::move(disk), 2000);
    AddWithHits(store, u"/a.pptx", 10);
    AddWithHits(store, u"/b.pptx", 10);

    EXPECT_THAT(store.File(0).report.hits, SizeIs(10));
    EXPECT_THAT(store.File(1).report.hits, IsEmpty());
    EXPECT_EQ(store.File(1).report.hitsLeftOut, 10);
    EXPECT_LT(written.size(), 8000);
}

TEST(HitStore, VisitsTheFilesOfTheLastRunInOrder)
{
    HitStore store;
    store.BeginRun({});
    AddWithHits(store, u"/old.pptx", 1);
    store.BeginRun({});
    AddWithHits(store, u"/b.pptx", 2);
    AddWithHits(store, u"/a.pptx", 0);

    std::vector<std::pair<String, std::size_t>> files;
    store.ForEachOfRun([&](const FileReport& file) { files.emplace_back(file.path, file.hits.size()); });

    EXPECT_THAT(files, ElementsAre(Pair(String(u"/b.pptx"), 2u), Pair(String(u"/a.pptx"), 0u)));
    EXPECT_EQ(store.FileCount(), 3u);
    EXPECT_EQ(store.File(0).report.path, u"/old.pptx");
}

TEST(HitStore, FailsWhenItsFileCannotBeRead)
{
    auto disk = std::make_unique<SmallDisk>(100'000);
    SmallDisk& broken = *disk;
    HitStore store(std::move(disk));
    AddWithHits(store, u"/a.pptx", 1);
    broken.Break();

    try {
        store.File(0);
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, FailureNumber::DeviceIO);
    }
}

}  // namespace
}  // namespace tessarine
