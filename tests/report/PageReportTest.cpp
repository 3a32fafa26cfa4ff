#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "report/PageParts.h"
#include "report/RunReport.h"
#include "SampleReport.h"

namespace tessarine
{
namespace
{

using namespace test;
using testing::HasSubstr;
using testing::Not;

std::string PageOf(const std::vector<FileReport>& files, const RunFacts& facts = {}, const RunEnd& end = {})
{
    return TextOf(*CreatePageReport(facts), files, end);
}

std::size_t CountOf(std::string_view part, std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

/// The page without its style and script.
std::string MarkupOf(const std::vector<FileReport>& files, const RunFacts& facts = {}, const RunEnd& end = {})
{
    std::string page = PageOf(files, facts, end);
    for (const std::string_view part : {PageStyle, PageScript})
        page.replace(page.find(part), part.size(), "");
    return page;
}

TEST(PageReport, ShowsAHitInItsContext)
{
    const auto file = FileWith(u"a.pptx", {Pair(u"cat", u"", 1)}, {HitOnSlide(1, 3, u"One ", u"Cat", u" & more")});

    EXPECT_THAT(MarkupOf({file}),
                HasSubstr("<details class=\"f h\" open><summary><h3><bdi class=\"q\">a.pptx</bdi></h3> <span "
                          "class=\"s\">Found: 1</span></summary><section class=\"p\"><h4><bdi class=\"q\">cat</bdi>"
                          "<span class=\"c\">slides 1</span></h4><ul><li><div class=\"w\" dir=\"auto\">slide 3 "
                          "&quot;Plan&quot;, shape 2 &quot;Text 1&quot;, paragraph 1</div><div class=\"t\" "
                          "dir=\"auto\">One <mark>Cat</mark> &amp; more</div></li></ul></section></details>"));
}

TEST(PageReport, ShowsOldAndNewTextOfAReplacement)
{
    Hit stays = HitOnSlide(1, 1, u"", u"cat", u"");
    stays.isCounted = false;
    const std::string page =
        MarkupOf({FileWith(u"a", {Pair(u"cat", u"dog", 1)}, {HitOnSlide(1, 1, u"a ", u"cat", u"s", u"dog"), stays})},
                 {.replaces = true});

    EXPECT_THAT(page, HasSubstr("<bdi class=\"q\">cat</bdi> → <bdi class=\"q\">dog</bdi>"));
    EXPECT_THAT(page, HasSubstr("a <del>cat</del><ins>dog</ins>s"));
    EXPECT_THAT(page, HasSubstr("<mark>cat</mark></div><div class=\"w\">(not counted, stays as it is)</div>"));
    EXPECT_THAT(page, HasSubstr("<h1>Replacement report</h1>"));
}

TEST(PageReport, PutsFailuresBeforePairsAndFiles)
{
    const std::string page =
        MarkupOf({FileWith(u"good.pptx", {Pair(u"cat", u"", 1)}), FailedFile(u"bad.pptx", u"The file is damaged")});

    EXPECT_THAT(page, HasSubstr("<h2>Failed files: 1</h2>"));
    EXPECT_THAT(page, HasSubstr("<tr class=\"f\"><th scope=\"row\"><bdi class=\"q\">bad.pptx</bdi></th><td "
                                "class=\"bad\">The file is damaged</td></tr>"));
    EXPECT_LT(page.find("bad.pptx"), page.find("<h2>Pairs</h2>"));
    EXPECT_LT(page.find("<h2>Pairs</h2>"), page.find("<h2>Files</h2>"));
    EXPECT_LT(page.find("<h2>Files</h2>"), page.find("good.pptx"));
    EXPECT_EQ(CountOf("bad.pptx", page), 1u);
}

TEST(PageReport, HasNoTableOfFailuresWithoutOne)
{
    EXPECT_THAT(MarkupOf({FileWith(u"a", {Pair(u"cat", u"", 1)})}), Not(HasSubstr("Failed files")));
}

TEST(PageReport, AddsUpEachPairAndGreysThoseThatOccurNowhere)
{
    const std::string page = MarkupOf({FileWith(u"a", {Pair(u"cat", u"", 2, 1), Pair(u"x", u"", 0)}),
                                       FileWith(u"b", {Pair(u"cat", u"", 3), Pair(u"x", u"", 0)})});

    EXPECT_THAT(page, HasSubstr("<tr><td class=\"n\">1</td><th scope=\"row\"><bdi class=\"q\">cat</bdi></th><td "
                                "class=\"n\">2</td><td class=\"n\">6</td><td>slides 5, notes 1</td></tr>"));
    EXPECT_THAT(page,
                HasSubstr("<tr class=\"none\"><td class=\"n\">2</td><th scope=\"row\"><bdi class=\"q\">x</bdi></th><td "
                          "class=\"n\">0</td><td class=\"n\">0</td><td>nowhere</td></tr>"));
}

TEST(PageReport, TellsTheFactsOfTheRun)
{
    const std::string page = MarkupOf({FileWith(u"a", {Pair(u"cat", u"", 2)}), FailedFile(u"b", u"damaged")},
                                      {.started = 1, .job = u"x.tsq"}, {.seconds = 3725, .engine = Engine::BuiltIn});

    for (const char* fact :
         {"<dt>Files</dt><dd>2</dd>", "<dt>Found</dt><dd>1</dd>", "<dt>Nothing found</dt><dd>0</dd>",
          "<dt>Failed</dt><dd>1</dd>", "<dt>Occurrences</dt><dd>2</dd>", "<dt>Started</dt><dd>1970-01-01 ",
          "<dt>Duration</dt><dd>1:02:05</dd>", "<dt>Engine</dt><dd>built-in</dd>",
          "<dt>Project</dt><dd><bdi class=\"q\">x.tsq</bdi></dd>"})
        EXPECT_THAT(page, HasSubstr(fact));
}

TEST(PageReport, SaysThatADryRunSavedNothing)
{
    const std::string page =
        MarkupOf({FileWith(u"a", {Pair(u"cat", u"dog", 1)})}, {.replaces = true, .isDryRun = true});

    EXPECT_THAT(page, HasSubstr("<h1>Dry run report</h1>"));
    EXPECT_THAT(page, HasSubstr("<p class=\"note\">Nothing was saved: this is what a replacement would do.</p>"));
    EXPECT_THAT(page, HasSubstr("Would change: 1"));
}

TEST(PageReport, SaysThatARunEndedEarly)
{
    EXPECT_THAT(MarkupOf({}, {}, {.way = RunEnd::Way::Cancelled, .notReached = 12}),
                HasSubstr("<p class=\"note\">The run was cancelled. Files that were not processed: 12</p>"));
    EXPECT_THAT(MarkupOf({}, {}, {.way = RunEnd::Way::BrokenOff, .notReached = 3}),
                HasSubstr("<p class=\"note\">A failure ended the run early. Files that were not processed: 3</p>"));
}

TEST(PageReport, ShowsWarningsAndWhatIsNotListed)
{
    FileReport file = FileWith(u"a", {Pair(u"cat", u"", 9), Pair(u"x", u"", 0)}, {HitOnSlide(1, 1, u"", u"cat", u"")});
    file.hitsLeftOut = 8;
    file.warnings = {u"has <other> names"};
    const std::string page = MarkupOf({file});

    EXPECT_THAT(page, HasSubstr("<p class=\"m\">Warning: has &lt;other&gt; names</p>"));
    EXPECT_THAT(page, HasSubstr("<p class=\"m\">Further hits, not listed: 8</p>"));
    EXPECT_THAT(page, HasSubstr("<p class=\"m w\">Pairs without a hit: 1</p>"));
}

TEST(PageReport, KeepsHitsOfOnePlaceTogether)
{
    const std::string page =
        MarkupOf({FileWith(u"a", {Pair(u"cat", u"", 3)},
                           {HitOnSlide(1, 1, u"", u"cat", u"1"), HitOnSlide(1, 1, u"", u"cat", u"2"),
                            HitOnSlide(1, 2, u"", u"cat", u"3")})});

    EXPECT_EQ(CountOf("<li>", page), 2u);
    EXPECT_EQ(CountOf("</li>", page), 2u);
    EXPECT_EQ(CountOf("<mark>", page), 3u);
}

TEST(PageReport, GivesTextsADirectionOfTheirOwn)
{
    const std::string page =
        MarkupOf({FileWith(u"שלום.pptx", {Pair(u"שלום", u"", 1)}, {HitOnSlide(1, 1, u"", u"שלום", u" עולם")})});

    EXPECT_THAT(page, HasSubstr("<html lang=\"en\">"));
    EXPECT_THAT(page, HasSubstr("<h3><bdi class=\"q\">שלום.pptx</bdi></h3>"));
    EXPECT_THAT(page, HasSubstr("<div class=\"t\" dir=\"auto\"><mark>שלום</mark> עולם</div>"));
}

/// A run in which every text that comes from outside is the given one.
std::string PageFullOf(const String& text)
{
    const auto place = std::make_shared<HitPlace>();
    place->pair = 1;
    place->slide = 1;
    place->slideTitle = place->design = place->property = place->shapeName = text;
    place->shape = 1;
    Hit hit;
    hit.place = place;
    hit.before = hit.text = hit.after = text;
    Hit found = hit;
    hit.becomes = text;
    FileReport file = FileWith(text, {Pair(text, text, 1)}, {hit, found});
    file.warnings = {text};
    FileReport failed = FailedFile(text, text);
    failed.error = text;
    failed.warnings = {text};
    return MarkupOf({file, FileWith(text, {Pair(text, text, 0)}), failed},
                    {.replaces = true, .started = 1, .job = text});
}

/// The tags and references of a page, which no text of a run may add to or change.
std::string TagsOf(const std::string& page)
{
    std::string tags;
    for (std::size_t at = page.find('<'); at != std::string::npos; at = page.find('<', at + 1))
        tags += page.substr(at, page.find('>', at) + 1 - at) + "\n";
    return tags;
}

TEST(PageReport, HasTheSameTagsWhateverTheTextsAre)
{
    const std::string tags = TagsOf(PageFullOf(u"harmless"));
    EXPECT_EQ(CountOf("<script>", tags), 1u);

    for (const char16_t* attack :
         {u"</script><script>alert(1)</script>", u"</style><img src=x onerror=alert(1)>", u"\"><svg onload=alert(1)>",
          u"' onmouseover='alert(1)", u"--><b>", u"<!--", u"]]>", u"<plaintext>", u"</title><b>", u"&lt;b&gt;",
          u"javascript:alert(1)", u"\xD800<b\xDC00>", u"<\v/script>", u"＜script＞"})
        EXPECT_EQ(TagsOf(PageFullOf(attack)), tags) << ToUtf8(attack);
}

TEST(PageReport, HoldsNoControlCharacters)
{
    String all;
    for (char16_t unit = 0; unit < 0x20; ++unit)
        all += unit;

    for (const char byte : PageFullOf(all + u"\x7F\x80\x9F\xFFFF\xD800"))
        EXPECT_TRUE(byte == '\n' || static_cast<unsigned char>(byte) >= 0x20) << static_cast<int>(byte);
}

TEST(PageReport, AllowsItsOwnStyleAndScriptAlone)
{
    const std::string page = PageOf({});
    const auto between = [&](const std::string& begin, const std::string& end) {
        const std::size_t at = page.find(begin) + begin.size();
        return page.substr(at, page.find(end, at) - at);
    };

    EXPECT_EQ(between("<style>", "</style>"), PageStyle);
    EXPECT_EQ(between("<script>", "</script>"), PageScript);
    EXPECT_THAT(page,
                HasSubstr("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src '" +
                          std::string(PageStyleDigest) + "'; script-src '" + std::string(PageScriptDigest) +
                          "'; base-uri 'none'; form-action 'none'\">"));
    EXPECT_EQ(CountOf(" style=", page), 0u);
    EXPECT_EQ(CountOf("http://", page) + CountOf("https://", page) + CountOf("url(", page), 0u);
}

TEST(PageReport, CountsTheHitsBeyondThoseThatItShows)
{
    FileReport file = FileWith(u"a", {Pair(u"cat", u"", 1000)});
    file.hits.assign(1000, HitOnSlide(1, 1, u"", u"cat", u""));
    const auto report = CreatePageReport({});
    std::size_t shown = 0;

    for (std::int64_t at = 0; at < MostHitsOfPage + 1000; at += 1000)
        shown += CountOf("<mark>", report->OfFile(file));

    EXPECT_EQ(shown, static_cast<std::size_t>(MostHitsOfPage));
    const std::string head = report->Head({});
    EXPECT_THAT(head, HasSubstr("This page lists the first 100000 hits."));
    EXPECT_THAT(head, HasSubstr("<dd>101000</dd>"));
}

TEST(PageReport, ClosesTheFilesOfALargePageAtFirst)
{
    FileReport file = FileWith(u"a", {Pair(u"cat", u"", 1000)});
    file.hits.assign(1000, HitOnSlide(1, 1, u"", u"cat", u""));
    const auto report = CreatePageReport({});

    EXPECT_EQ(CountOf("<details class=\"f h\" open>", report->OfFile(file)), 1u);
    EXPECT_EQ(CountOf("<details class=\"f h\" open>", report->OfFile(file)), 1u);
    EXPECT_EQ(CountOf("<details class=\"f h\">", report->OfFile(file)), 1u);
}

TEST(PageReport, TakesItsWordsFromOutside)
{
    ReportWords words;
    words.language = u"de";
    words.findTitle = u"Suchbericht";
    words.placeOf = [](const Hit&) { return String(u"Folie <3>"); };
    words.nameOf = [](Location) { return String(u"Folien"); };
    words.shown = u"%d von %i \"Dateien\"";

    const std::string page = TextOf(*CreatePageReport({}, words),
                                    {FileWith(u"a", {Pair(u"cat", u"", 1)}, {HitOnSlide(1, 1, u"", u"cat", u"")})});

    for (const char* text : {"<html lang=\"de\">", "<h1>Suchbericht</h1>", ">Folie &lt;3&gt;</div>", ">Folien 1</span>",
                             "data-text=\"%d von %i &quot;Dateien&quot;\""})
        EXPECT_THAT(page, HasSubstr(text));
}

}  // namespace
}  // namespace tessarine
