#include "office/builtin/package/KeptParts.h"

#include <algorithm>
#include <map>
#include <optional>

#include "DeckOnDisk.h"
#include "files/RandomAccessFile.h"
#include "log/Warnings.h"
#include "office/builtin/presentation/PresentationFile.h"

/// What is kept of the parts that were read, and that a job doesn't see how much that is.
namespace tessarine::test
{
namespace
{

using builtin::KeptParts;
using builtin::Limits;
using builtin::PresentationFile;

class Part final : public KeptParts::Part
{
public:
    Part(KeptParts& all, std::size_t bytes) : KeptParts::Part(all), bytes_(bytes) {}

    /// As a walk does: it reads what it doesn't have.
    void Read()
    {
        Use();
        isKept = true;
    }
    void Grow(std::size_t bytes)
    {
        Use();
        bytes_ += bytes;
    }

    bool isKept = false;

private:
    std::size_t KeptBytes() const override { return isKept ? bytes_ : 0; }
    void LetGo() override { isKept = false; }

    std::size_t bytes_;
};

TEST(KeptParts, StayUpToTheLimit)
{
    KeptParts kept(30);
    Part first(kept, 10);
    Part second(kept, 20);
    Part third(kept, 1);

    for (Part* const part : {&first, &second, &third})
        part->Read();

    EXPECT_TRUE(first.isKept);
    EXPECT_TRUE(second.isKept);
    EXPECT_TRUE(third.isKept);
}

TEST(KeptParts, BeyondTheLimitStayUntilTheNextIsRead)
{
    KeptParts kept(30);
    Part first(kept, 10);
    Part large(kept, 21);
    Part last(kept, 20);

    first.Read();
    large.Read();
    EXPECT_TRUE(large.isKept);
    last.Read();

    EXPECT_TRUE(first.isKept);
    EXPECT_FALSE(large.isKept);
    // The place of the one that went is free.
    first.Read();
    EXPECT_TRUE(last.isKept);
}

TEST(KeptParts, GoWhenTheyHaveGrown)
{
    KeptParts kept(30);
    Part first(kept, 10);
    Part second(kept, 10);
    first.Read();
    second.Read();

    first.Grow(11);
    EXPECT_TRUE(first.isKept);
    second.Read();

    EXPECT_FALSE(first.isKept);
    EXPECT_TRUE(second.isKept);
}

TEST(KeptParts, ThatAreGoneMakePlaceForOthers)
{
    KeptParts kept(10);
    Part last(kept, 10);
    Part next(kept, 1);
    {
        Part gone(kept, 10);
        gone.Read();
        last.Read();
        ASSERT_TRUE(gone.isKept);
    }
    next.Read();
    EXPECT_TRUE(last.isKept);
    {
        Part gone(kept, 100);  // the last that was used
        gone.Read();
    }
    last.Read();
    EXPECT_FALSE(next.isKept);
}

/// A deck's bytes, which count how often each entry's content is read.
class CountedBytes final : public RandomAccessBytes
{
public:
    CountedBytes(const std::string& bytes, std::map<std::string, int>& reads) : bytes_(bytes), reads_(reads)
    {
        for (const EntryPlace& place : PlacesOf(bytes))
            headers_[place.localHeader] = place.name;
    }

    std::uint64_t Size() const override { return bytes_.size(); }
    void Read(std::uint64_t offset, std::span<std::byte> buffer) const override
    {
        // Header and data are read together.
        if (const auto entry = headers_.find(offset); entry != headers_.end())
            ++reads_[entry->second];
        std::ranges::copy(std::as_bytes(std::span(bytes_)).subspan(offset, buffer.size()), buffer.begin());
    }

private:
    const std::string& bytes_;
    std::map<std::string, int>& reads_;
    std::map<std::uint64_t, std::string> headers_;
};

Limits Keeping(std::size_t bytes)
{
    Limits limits;
    limits.keptBytes = bytes;
    return limits;
}

constexpr std::size_t nothing = 0;
constexpr std::size_t everything = 1u << 30;

/// How often slides are read by three walks that each look for a text of its own.
std::vector<int> ReadsOfSlides(const Deck& deck, std::size_t keptBytes, const std::vector<String>& texts)
{
    const std::string bytes = deck.Bytes();
    std::map<std::string, int> reads;
    PresentationFile file(std::make_unique<CountedBytes>(bytes, reads), Keeping(keptBytes));
    for (const String& text : texts) {
        const builtin::SoughtText sought(text);
        if (!file.SlidesMayHold(sought))
            continue;
        for (std::size_t slide = 0; slide < file.SlideCount(); ++slide)
            if (file.Slide(slide).MayHold(sought))
                for (std::size_t shape = 0; shape < file.Slide(slide).ShapeCount(); ++shape)
                    file.Slide(slide).FindText(shape, builtin::TextPattern(sought, false, false), 0);
    }
    std::vector<int> counts;
    for (std::size_t slide = 1; slide <= file.SlideCount(); ++slide)
        counts.push_back(reads["ppt/slides/slide" + std::to_string(slide) + ".xml"]);
    return counts;
}

TEST(SlidesThatFit, AreReadOnceForAllTexts)
{
    const Deck deck = Deck().Slide(TextBox(u"abc")).Slide(TextBox(u"abd"));

    EXPECT_THAT(ReadsOfSlides(deck, everything, {u"abc", u"ab", u"b", u"d"}), testing::ElementsAre(1, 1));
    EXPECT_THAT(ReadsOfSlides(deck, Limits::Default().keptBytes, {u"abc", u"ab", u"b", u"d"}),
                testing::ElementsAre(1, 1));
}

TEST(SlidesThatDoNotFit, AreReadAgainForEachTextThatTheyMayHold)
{
    const Deck deck = Deck().Slide(TextBox(u"abc")).Slide(TextBox(u"abd"));

    EXPECT_THAT(ReadsOfSlides(deck, nothing, {u"abc"}), testing::ElementsAre(1, 1));
    // For the third text a table of all slides is made, which denies those after it.
    const std::vector<int> three = ReadsOfSlides(deck, nothing, {u"abc", u"ab", u"in vain"});
    EXPECT_GT(three.at(0), 1);
    EXPECT_THAT(ReadsOfSlides(deck, nothing, {u"abc", u"ab", u"in vain", u"once more"}), testing::Eq(three));
}

TEST(SlidesThatDoNotFit, CountOnceForTheLimitOfWork)
{
    const Deck deck = Deck().Slide(TextBox(u"abc")).Slide(TextBox(u"abd"));
    const std::string bytes = deck.Bytes();
    const PackageReader package(bytes);
    std::uint64_t total = 0;
    for (const PackageEntry& entry : package.Entries())
        total += entry.bytes.size();
    Limits limits = Keeping(nothing);
    limits.packageXmlBytes = total;
    PresentationFile file(BytesInMemory(std::as_bytes(std::span(bytes))), limits);

    for (int walk = 0; walk < 100; ++walk)
        for (std::size_t slide = 0; slide < 2; ++slide)
            EXPECT_EQ(file.Slide(slide).ShapeCount(), 1u);
}

/// A deck with all that a job can edit, opened with what it may keep.
class EditedDeck
{
public:
    EditedDeck(const Deck& deck, std::size_t keptBytes)
        : disk_(deck), file_(std::make_unique<RandomAccessFile>(disk_.Path()), Keeping(keptBytes))
    {
    }

    PresentationFile& File() { return file_; }
    builtin::PageReader& Slide(std::size_t slide) { return file_.Slide(slide); }

    /// Replaces the first hit in each shape of all slides.
    void Replace(const String& find, const String& with)
    {
        const builtin::SoughtText sought(find);
        for (std::size_t slide = 0; slide < file_.SlideCount(); ++slide)
            for (std::size_t shape = 0; shape < Slide(slide).ShapeCount(); ++shape)
                if (const auto hit = Slide(slide).FindText(shape, builtin::TextPattern(sought, true, false), 0))
                    Slide(slide).ReplaceText(shape, *hit, find.size(), with);
    }

    /// Leads each link of all slides elsewhere whose address begins so.
    void Lead(const String& from, const String& to)
    {
        for (std::size_t slide = 0; slide < file_.SlideCount(); ++slide)
            for (const std::size_t link : Slide(slide).HyperlinkIndices())
                if (const String address = Slide(slide).HyperlinkAddress(link); address.starts_with(from))
                    Slide(slide).PutHyperlinkAddress(link, to + address.substr(from.size()));
    }

    std::string Saved()
    {
        file_.Save(disk_.Path());
        return disk_.Bytes();
    }

private:
    DeckOnDisk disk_;
    PresentationFile file_;
};

const Deck fullDeck =
    Deck()
        .App("Company", u"Fabrikam")
        .Slide(Title(u"About Fabrikam"), TextBox(Paragraph(u"see ", TextRun(u"Fabrikam").Click(LinkTo(u"http://a/1")))))
        .Slide(Title(u"Fabrikam again"), LinkedOle(u"file:///C:\\a.xlsx!A1"),
               TextBox(Paragraph(TextRun(u"Fabrikam").Click(LinkTo(u"http://a/2")),
                                 TextRun(u" and ").Click(LinkTo(u"http://a/3")))))
        .Slide(TextBox(u"Fabrikam\rFabrikam"), Footer(u"Fabrikam"));

TEST(EditsOfPagesThatAreLetGo, AreSavedLikeThoseThatAreKept)
{
    const auto edited = [](std::size_t keptBytes) {
        EditedDeck deck(fullDeck, keptBytes);
        deck.Replace(u"Fabrikam", u"Contoso");
        deck.Lead(u"http://a/", u"http://bcd/");
        deck.Replace(u"Contoso", u"x\ry");
        deck.Slide(1).PutLinkSource(1, u"C:\\b.xlsx!A1");
        deck.Replace(u"y", u"");
        deck.Lead(u"http://bcd/2", u"");
        deck.Replace(u"x", u"Woodgrove");
        return deck.Saved();
    };
    const PackageReader kept(edited(everything));
    const PackageReader letGo(edited(nothing));

    EXPECT_NE(kept.Entry(slide1).bytes.find("Woodgrove"), std::string::npos);
    for (const PackageEntry& entry : kept.Entries())
        EXPECT_EQ(letGo.Entry(entry.name).bytes, entry.bytes) << entry.name;
}

TEST(EditsOfPagesThatAreLetGo, ShowAtOnce)
{
    EditedDeck deck(fullDeck, nothing);

    deck.Replace(u"Fabrikam", u"Contoso");
    deck.Lead(u"http://a/1", u"");

    const builtin::SoughtText sought(u"Contoso");
    EXPECT_TRUE(deck.Slide(0).FindText(1, builtin::TextPattern(sought, true, false), 0));
    EXPECT_EQ(deck.Slide(2).HeaderFooter(builtin::HeaderFooterKind::Footer), u"Contoso");
    EXPECT_TRUE(deck.Slide(0).HyperlinkIndices().empty());
    EXPECT_TRUE(deck.Slide(0).MayHold(sought));
}

TEST(EditsOfPagesThatAreLetGo, KeepTheIndexOfALinkThatIsGone)
{
    EditedDeck deck(fullDeck, nothing);

    deck.Slide(1).PutHyperlinkAddress(0, u"");
    deck.Slide(0).ShapeCount();

    EXPECT_THAT(deck.Slide(1).HyperlinkIndices(), testing::ElementsAre(1));
    EXPECT_EQ(deck.Slide(1).HyperlinkAddress(1), u"http://a/3");
    deck.Slide(0).ShapeCount();
    EXPECT_THAT(deck.Slide(1).HyperlinkIndices(), testing::ElementsAre(1));
}

TEST(EditsOfPagesThatAreLetGo, AreWarnedOfOnceWhenOldTextStays)
{
    const std::string alternate = "<mc:AlternateContent xmlns:mc=\"" + std::string(Uri::Compatibility) + "\">";
    const auto shape = [](const std::string& text) {
        return "<p:sp><p:nvSpPr><p:cNvPr id=\"9\" name=\"x\"/><p:cNvSpPr txBox=\"1\"/><p:nvPr/></p:nvSpPr><p:spPr/>"
               "<p:txBody><a:bodyPr/><a:p><a:r><a:t>" +
               text + "</a:t></a:r></a:p></p:txBody></p:sp>";
    };
    const Deck plain = Deck().Slide(TextBox(u"Fabrikam")).Slide(TextBox(u"Fabrikam"));
    const Deck before = Deck(plain).Edit(
        slide1, "</p:spTree>",
        alternate +
            "<mc:Choice xmlns:p14=\"http://schemas.microsoft.com/office/powerpoint/2010/main\" Requires=\"p14\">" +
            shape("Fabrikam") + "</mc:Choice><mc:Fallback>" + shape("old Fabrikam") +
            "</mc:Fallback></mc:AlternateContent></p:spTree>");
    EditedDeck deck(before, nothing);
    std::vector<String> warnings;
    const WarningPort port =
        SetWarningReceiver([&](const String&, const String& warning) { warnings.push_back(warning); });

    deck.Replace(u"Fabrikam", u"Contoso");
    deck.Replace(u"Contoso", u"Woodgrove");
    deck.Saved();
    SetWarningReceiver(port);

    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_NE(warnings.front().find(u"slide 1: "), String::npos);
}

TEST(ATitleThatChangesTwice, IsFollowedFromTheFirstTextToTheLast)
{
    const std::string app = "docProps/app.xml";
    const auto list = [](const std::string& title) {
        return "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/extended-properties\" "
               "xmlns:vt=\"http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes\"><TitlesOfParts>"
               "<vt:vector size=\"1\" baseType=\"lpstr\"><vt:lpstr>" +
               title + "</vt:lpstr></vt:vector></TitlesOfParts></Properties>";
    };
    const Deck before =
        Deck().App("Company", u"x").Slide(Title(u"Fabrikam")).Slide(TextBox(u"a")).Entry(app, list("Fabrikam"));
    EditedDeck deck(before, nothing);

    deck.Replace(u"Fabrikam", u"Contoso");
    deck.Replace(u"Contoso", u"Woodgrove");

    EXPECT_EQ(PackageReader(deck.Saved()).Entry(app).bytes, list("Woodgrove"));
}

TEST(TitleMasters, AreFoundWhenNothingIsKept)
{
    SlideMaster master(u"Theme");
    for (const char* const type : {"obj", "blank", "title"})
        master.Add(Layout(type, TextBox(FromUtf8(type))));
    const std::string bytes = Deck().Master(master).Bytes();
    PresentationFile file(BytesInMemory(std::as_bytes(std::span(bytes))), Keeping(nothing));

    const builtin::SoughtText sought(u"title");

    for (int walk = 0; walk < 2; ++walk) {
        builtin::PageReader* const page = file.TitleMaster(0);
        ASSERT_NE(page, nullptr);
        EXPECT_TRUE(page->FindText(0, builtin::TextPattern(sought, true, false), 0));
    }
}

}  // namespace
}  // namespace tessarine::test
