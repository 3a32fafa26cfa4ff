#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "report/HtmlText.h"
#include "report/PageParts.h"
#include "report/RunReport.h"
#include "report/RunTimes.h"

namespace tessarine
{

namespace
{

/// Files after so many hits are closed at first.
constexpr std::int64_t mostHitsInSight = 2'000;

/// What a pair adds up to over all files.
struct PairTotal {
    PairReport pair;  ///< Its texts as they were first told, and the sum of its counts.
    std::array<std::int64_t, SearchLocations.size()> counts{};
    std::int64_t files = 0;
    std::int64_t occurrences = 0;
};

std::string Number(std::int64_t number)
{
    return std::to_string(number);
}

/// An element with a text in it.
std::string Element(std::string_view tag, const std::string& html, std::string_view attributes = {})
{
    std::string element = "<";
    element += tag;
    if (!attributes.empty()) {
        element += ' ';
        element += attributes;
    }
    element += '>';
    element += html;
    element += "</";
    element += tag;
    element += '>';
    return element;
}

/// A text of the run in a line with words of the page: it has a direction of its own.
std::string Quote(StringView text)
{
    return Element("bdi", HtmlName(text), "class=\"q\"");
}

/// The hits that belong to a pair of the file, in the order of the pairs. Those of one pair keep their order.
std::vector<const Hit*> HitsByPair(const FileReport& file)
{
    std::vector<const Hit*> hits;
    for (const Hit& hit : file.hits)
        if (hit.place->pair >= 1 && static_cast<std::size_t>(hit.place->pair) <= file.pairs.size())
            hits.push_back(&hit);
    std::ranges::stable_sort(hits, {}, [](const Hit* hit) { return hit->place->pair; });
    return hits;
}

class HtmlReport final : public RunReport
{
public:
    HtmlReport(const RunFacts& facts, const ReportWords& words) : facts_(facts), words_(words) {}

    std::string OfFile(const FileReport& file) override;
    std::string Head(const RunEnd& end) override;
    std::string Foot(const RunEnd& end) override;

private:
    void AddTotals(const FileReport& file);
    std::string FailureRow(const FileReport& file) const;
    std::string FileWithHits(const FileReport& file);
    std::string PairPart(const PairReport& pair, std::span<const Hit* const> hitsOfPair);
    std::string HitLine(const Hit& hit, const PairReport& pair) const;
    std::string NotesOf(const FileReport& file) const;
    std::string StateOf(const FileReport& file) const;
    template <class Counts>
    std::string Places(const Counts& counts) const;

    String Title() const;
    std::string Notes(const RunEnd& end) const;
    std::string Facts(const RunEnd& end) const;
    std::string Fact(const String& name, const std::string& value) const;
    std::string Tools() const;
    std::string FailuresPart() const;
    std::string PairsPart() const;
    std::string PairRow(std::size_t index) const;

    const RunFacts facts_;
    const ReportWords words_;
    RunSummary summary_;
    std::vector<PairTotal> totals_;
    std::string failures_;         // rows of the table
    std::int64_t hitsOnPage_ = 0;  // in context
    bool isFull_ = false;          // some hits are left out of the page because of MostHitsOfPage
};

std::string HtmlReport::OfFile(const FileReport& file)
{
    summary_.Add(file);
    if (file.State() == ReportedState::Failed) {
        failures_ += FailureRow(file);
        return {};
    }
    AddTotals(file);
    if (file.Occurrences() > 0 || !file.hits.empty() || !file.warnings.empty())
        return FileWithHits(file);
    return Element("div", Element("h3", Quote(file.path)) + StateOf(file), "class=\"f\"") + "\n";
}

void HtmlReport::AddTotals(const FileReport& file)
{
    totals_.resize(std::max(totals_.size(), file.pairs.size()));
    for (std::size_t at = 0; at < file.pairs.size(); ++at) {
        PairTotal& total = totals_[at];
        const PairReport& pair = file.pairs[at];
        total.pair.find = pair.find;
        total.pair.replace = pair.replace;
        const std::int64_t occurrences = pair.Occurrences();
        total.files += occurrences > 0 ? 1 : 0;
        total.occurrences += occurrences;
        for (std::size_t row = 0; row < pair.counts.size(); ++row)
            // -1 stands for a place that was not searched.
            total.counts[row] += std::max(pair.counts[row], 0);
    }
}

std::string HtmlReport::FailureRow(const FileReport& file) const
{
    std::string reason = HtmlName(file.error);
    for (const String& warning : file.warnings)
        reason += Element("div", HtmlText(words_.warning) + ": " + HtmlName(warning));
    return Element("tr", Element("th", Quote(file.path), "scope=\"row\"") + Element("td", reason, "class=\"bad\""),
                   "class=\"f\"") +
           "\n";
}

/// A file that can be opened and closed.
std::string HtmlReport::FileWithHits(const FileReport& file)
{
    // Browsers lay out what is open, which takes long for all of a large page.
    const std::string open = hitsOnPage_ < mostHitsInSight ? " open" : "";
    std::string html;
    std::int64_t without = 0;
    const auto hits = HitsByPair(file);
    auto rest = std::span(hits);
    for (std::size_t at = 0; at < file.pairs.size(); ++at) {
        const auto number = static_cast<std::int32_t>(at) + 1;
        const auto next = std::ranges::find_if(rest, [&](const Hit* hit) { return hit->place->pair != number; });
        const auto count = static_cast<std::size_t>(next - rest.begin());
        const std::string part = PairPart(file.pairs[at], rest.first(count));
        rest = rest.subspan(count);
        without += part.empty() ? 1 : 0;
        html += part;
    }
    if (file.hitsLeftOut > 0)
        html += Element("p", HtmlText(WithNumbers(words_.furtherHits, file.hitsLeftOut)), "class=\"m\"");
    if (without > 0 && file.pairs.size() > 1)
        html += Element("p", HtmlText(WithNumbers(words_.otherPairs, without)), "class=\"m w\"");
    const std::string summary = Element("summary", Element("h3", Quote(file.path)) + StateOf(file));
    const bool hasHits = file.Occurrences() > 0 || !file.hits.empty();
    return Element("details", summary + NotesOf(file) + html, (hasHits ? "class=\"f h\"" : "class=\"f\"") + open) +
           "\n";
}

std::string HtmlReport::NotesOf(const FileReport& file) const
{
    std::string html;
    for (const String& warning : file.warnings)
        html += Element("p", HtmlText(words_.warning) + ": " + HtmlName(warning), "class=\"m\"");
    return html;
}

/// A pair with its counts and its hits; empty when it has neither. Hits of one place stand together.
std::string HtmlReport::PairPart(const PairReport& pair, std::span<const Hit* const> hitsOfPair)
{
    std::string hits;
    std::string place;  // that the list stands at
    for (const Hit* hit : hitsOfPair) {
        if (hitsOnPage_ == MostHitsOfPage) {
            isFull_ = true;
            break;
        }
        ++hitsOnPage_;
        const std::string now = HtmlName(words_.placeOf(*hit));
        if (hits.empty() || now != place)
            hits += (hits.empty() ? "<li>" : "</li><li>") + Element("div", now, "class=\"w\" dir=\"auto\"");
        place = now;
        hits += HitLine(*hit, pair);
    }
    if (hits.empty() && pair.Occurrences() == 0)
        return {};

    std::string heading = Quote(pair.find);
    if (facts_.replaces)
        heading += " \xE2\x86\x92 " + Quote(pair.replace);
    heading += Element("span", Places(pair.counts), "class=\"c\"");
    const std::string list = hits.empty() ? std::string() : "<ul>" + hits + "</li></ul>";
    return Element("section", Element("h4", heading) + list, "class=\"p\"");
}

std::string HtmlReport::HitLine(const Hit& hit, const PairReport& pair) const
{
    std::string html = hit.isCutBefore ? "\xE2\x80\xA6" : "";
    html += HtmlText(hit.before);
    const std::string text = HtmlText(hit.text.empty() ? pair.find : hit.text);
    // Texts that stay are marked as found.
    if (hit.becomes)
        html += Element("del", text) + Element("ins", HtmlText(*hit.becomes));
    else
        html += Element("mark", text);
    html += HtmlText(hit.after);
    html += hit.isCutAfter ? "\xE2\x80\xA6" : "";

    std::string remark;
    if (!hit.isCounted)
        remark = HtmlText(words_.notCounted);
    if (facts_.replaces && !hit.becomes)
        remark += (remark.empty() ? "" : ", ") + HtmlText(words_.notChanged);
    html = Element("div", html, "class=\"t\" dir=\"auto\"");
    return remark.empty() ? html : html + Element("div", "(" + remark + ")", "class=\"w\"");
}

std::string HtmlReport::StateOf(const FileReport& file) const
{
    const std::int64_t occurrences = file.Occurrences();
    std::string html = HtmlText(StateWord(file, facts_, words_));
    if (occurrences > 0)
        html += ": " + Number(occurrences);
    return " " + Element("span", html, "class=\"s\"");
}

/// "slides 2, notes 1"
template <class Counts>
std::string HtmlReport::Places(const Counts& counts) const
{
    std::string html;
    for (const SearchLocation& row : SearchLocations) {
        const auto count = counts[static_cast<std::size_t>(row.location)];
        if (count > 0)
            html += (html.empty() ? "" : ", ") + HtmlText(words_.nameOf(row.location)) + " " + Number(count);
    }
    return html;
}

String HtmlReport::Title() const
{
    return !facts_.replaces ? words_.findTitle : facts_.isDryRun ? words_.dryRunTitle : words_.replaceTitle;
}

/// The two parts of the page that may take effect, by their digests.
std::string Policy()
{
    return "default-src 'none'; style-src '" + std::string(PageStyleDigest) + "'; script-src '" +
           std::string(PageScriptDigest) + "'; base-uri 'none'; form-action 'none'";
}

std::string HtmlReport::Head(const RunEnd& end)
{
    const std::string title = HtmlText(Title());
    const std::string when = HtmlText(DateTimeText(facts_.started));
    std::string html = "<!DOCTYPE html>\n<html lang=\"" + HtmlText(words_.language) + "\">\n<head>\n";
    html += "<meta charset=\"utf-8\">\n<meta http-equiv=\"Content-Security-Policy\" content=\"" + Policy() + "\">\n";
    html += "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
    html += "<meta name=\"generator\" content=\"Tessarine\">\n";
    html += Element("title", title + (when.empty() ? "" : ", " + when)) + "\n";
    html += Element("style", std::string(PageStyle)) + "\n</head>\n<body>\n";
    html += Element("header", "\n" + Element("h1", title) + "\n" + Notes(end) + Facts(end)) + "\n<main>\n" + Tools();
    html += FailuresPart() + PairsPart();
    html += "<section id=\"list\">\n" + Element("h2", HtmlText(words_.files)) + "\n";
    return html;
}

/// What a reader must know before anything else.
std::string HtmlReport::Notes(const RunEnd& end) const
{
    std::vector<String> notes;
    if (end.way != RunEnd::Way::Complete)
        notes.push_back(EarlyEndNote(end, words_));
    if (facts_.isDryRun)
        notes.push_back(words_.dryRun);
    if (isFull_)
        notes.push_back(WithNumbers(words_.pageIsFull, MostHitsOfPage));
    std::string html;
    for (const String& note : notes)
        html += Element("p", HtmlText(note), "class=\"note\"") + "\n";
    return html;
}

std::string HtmlReport::Fact(const String& name, const std::string& value) const
{
    return Element("div", Element("dt", HtmlText(name)) + Element("dd", value)) + "\n";
}

std::string HtmlReport::Facts(const RunEnd& end) const
{
    const auto change = !facts_.replaces ? words_.found : facts_.isDryRun ? words_.wouldChange : words_.changed;
    std::string html = Fact(words_.files, Number(summary_.files)) + Fact(change, Number(summary_.changed));
    if (summary_.countedOnly > 0)
        html += Fact(words_.countedOnly, Number(summary_.countedOnly));
    html += Fact(facts_.replaces ? words_.unchanged : words_.nothingFound, Number(summary_.unchanged));
    html += Fact(words_.failed, Number(summary_.failed));
    if (end.notReached > 0)
        html += Fact(words_.notProcessed, Number(end.notReached));
    html += Fact(words_.occurrences, Number(summary_.occurrences));
    if (const String started = DateTimeText(facts_.started); !started.empty())
        html += Fact(words_.started, HtmlText(started));
    if (end.seconds)
        html += Fact(words_.duration, HtmlText(DurationText(*end.seconds)));
    if (end.engine)
        html += Fact(words_.engine, *end.engine == Engine::PowerPoint ? "PowerPoint" : HtmlText(words_.builtIn));
    if (!facts_.job.empty())
        html += Fact(words_.project, Quote(facts_.job));
    return Element("dl", "\n" + html) + "\n";
}

/// The controls, which only the script can serve and so shows.
std::string HtmlReport::Tools() const
{
    const std::string tip = HtmlText(words_.filterTip);
    std::string html = "<form id=\"tools\" role=\"search\" hidden>\n";
    html +=
        Element("label", HtmlText(words_.filter), "for=\"filter\"") +
        " <input id=\"filter\" type=\"search\" dir=\"auto\" autocomplete=\"off\" spellcheck=\"false\" placeholder=\"" +
        tip + "\">\n";
    html += Element("label", "<input id=\"only\" type=\"checkbox\"> " + HtmlText(words_.onlyWithHits)) + "\n";
    html += Element("button", HtmlText(words_.expand), "id=\"expand\" type=\"button\"") + "\n";
    html += Element("button", HtmlText(words_.collapse), "id=\"collapse\" type=\"button\"") + "\n";
    html += "<output id=\"shown\" aria-live=\"polite\" data-text=\"" + HtmlText(words_.shown) + "\"></output>\n";
    return html + "</form>\n";
}

std::string TableHead(const std::vector<std::pair<String, bool>>& columns)
{
    std::string cells;
    for (const auto& [name, isNumber] : columns)
        cells += Element("th", HtmlText(name), isNumber ? "scope=\"col\" class=\"n\"" : "scope=\"col\"");
    return Element("thead", Element("tr", cells)) + "\n";
}

std::string Table(const std::string& head, const std::string& rows)
{
    return Element("div", Element("table", "\n" + head + Element("tbody", "\n" + rows) + "\n"), "class=\"wide\"") +
           "\n";
}

std::string HtmlReport::FailuresPart() const
{
    if (failures_.empty())
        return {};
    return Element("section", "\n" + Element("h2", HtmlText(words_.failures) + ": " + Number(summary_.failed)) + "\n" +
                                  Table(TableHead({{words_.file, false}, {words_.reason, false}}), failures_)) +
           "\n";
}

std::string HtmlReport::PairsPart() const
{
    if (totals_.empty())
        return {};
    std::vector<std::pair<String, bool>> columns{{words_.number, true}, {words_.find, false}};
    if (facts_.replaces)
        columns.emplace_back(words_.replaceWith, false);
    columns.insert(columns.end(), {{words_.files, true}, {words_.occurrences, true}, {words_.places, false}});
    std::string rows;
    for (std::size_t at = 0; at < totals_.size(); ++at)
        rows += PairRow(at);
    return Element("section", "\n" + Element("h2", HtmlText(words_.pairs)) + "\n" + Table(TableHead(columns), rows)) +
           "\n";
}

std::string HtmlReport::PairRow(std::size_t index) const
{
    const PairTotal& total = totals_[index];
    std::string cells = Element("td", Number(static_cast<std::int64_t>(index) + 1), "class=\"n\"") +
                        Element("th", Quote(total.pair.find), "scope=\"row\"");
    if (facts_.replaces)
        cells += Element("td", Quote(total.pair.replace));
    cells += Element("td", Number(total.files), "class=\"n\"") +
             Element("td", Number(total.occurrences), "class=\"n\"") +
             Element("td", total.occurrences > 0 ? Places(total.counts) : HtmlText(words_.nowhere));
    return Element("tr", cells, total.occurrences > 0 ? "" : "class=\"none\"") + "\n";
}

std::string HtmlReport::Foot(const RunEnd&)
{
    return "</section>\n</main>\n" + Element("script", std::string(PageScript)) + "\n</body>\n</html>\n";
}

}  // namespace

std::unique_ptr<RunReport> CreatePageReport(const RunFacts& facts, const ReportWords& words)
{
    return std::make_unique<HtmlReport>(facts, words);
}

}  // namespace tessarine
