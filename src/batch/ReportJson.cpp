#include "batch/ReportJson.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "batch/Report.h"
#include "model/SearchLocations.h"
#include "platform/Failure.h"

namespace tessarine::batch
{

namespace
{

/// What became of a file, in one of few words that never change.
constexpr std::string_view changedWord = "changed";
constexpr std::string_view foundWord = "found";
constexpr std::string_view unchangedWord = "unchanged";
constexpr std::string_view failedWord = "failed";

std::string_view StateWord(const FileReport& file, bool replaces)
{
    switch (file.State()) {
        case ReportedState::Changed:
            return replaces ? changedWord : foundWord;
        case ReportedState::CountedOnly:
            return foundWord;
        case ReportedState::Unchanged:
            return unchangedWord;
        case ReportedState::Failed:
            break;
    }
    return failedWord;
}

/// The searched places alone: -1 stands for a place that the pair was not looked for in.
Json CountsOf(const PairReport& pair, const OptionSetting& setting)
{
    auto counts = Json::object();
    for (std::size_t row = 0; row < SearchLocations.size(); ++row) {
        if (setting.*SearchLocations[row].isOn && pair.counts[row] >= 0)
            counts[SearchLocations[row].name] = pair.counts[row];
    }
    return counts;
}

[[noreturn]] void RaiseUnknown(const std::string& what)
{
    throw Failure(FailureNumber::InvalidProcedureCall, u"it has " + FromUtf8(what));
}

std::size_t RowNamed(const std::string& location)
{
    const auto row = std::ranges::find(SearchLocations, location, &SearchLocation::name);
    if (row == SearchLocations.end())
        RaiseUnknown("an unknown location, \"" + location + "\"");
    return static_cast<std::size_t>(row - SearchLocations.begin());
}

String StringAt(const Json& object, const char* key)
{
    return FromUtf8(object.value(key, std::string()));
}

PairReport PairFrom(const Json& item)
{
    PairReport pair{StringAt(item, "find"), StringAt(item, "replace"), {}};
    pair.counts.fill(-1);
    for (const auto& [name, count] : item.at("counts").items())
        pair.counts[RowNamed(name)] = count.get<std::int32_t>();
    return pair;
}

HitPlace::HeaderFooter HeaderFooterFrom(const Json& hit)
{
    const std::string word = hit.value("headerFooter", std::string());
    if (word.empty())
        return HitPlace::HeaderFooter::None;
    if (word != "header" && word != "footer")
        RaiseUnknown("an unknown kind of text, \"" + word + "\"");
    return word == "header" ? HitPlace::HeaderFooter::Header : HitPlace::HeaderFooter::Footer;
}

/// Whether the file has other content, as the word for its state tells it. Of a find nothing does.
std::optional<bool> NewContentFrom(const std::string& state, bool replaces)
{
    constexpr std::array words{changedWord, foundWord, unchangedWord, failedWord};
    if (std::ranges::find(words, state) == words.end())
        RaiseUnknown("an unknown state, \"" + state + "\"");
    return replaces && state != failedWord ? std::optional(state == changedWord) : std::nullopt;
}

/// Runs what reads an object. What the library finds wrong with it becomes a failure of ours.
template <class Read>
auto Reading(const Read& read)
{
    try {
        return read();
    } catch (const nlohmann::json::exception&) {
        RaiseUnknown("a line that is none of a report");
    }
}

}  // namespace

Json ArrayOf(const std::vector<String>& texts)
{
    auto array = Json::array();
    for (const String& text : texts)
        array.push_back(ToUtf8(text));
    return array;
}

Json HeadOf(const FileReport& file, const ReportStyle& style)
{
    auto items = Json::array();
    for (const PairReport& pair : file.pairs)
        items.push_back({{"find", ToUtf8(pair.find)},
                         {"replace", ToUtf8(pair.replace)},
                         {"counts", CountsOf(pair, style.setting)}});
    Json head{{"file", ToUtf8(file.path)}};
    PutUnless(head, "number", file.number, std::int64_t{0});
    PutUnless(head, "dryRun", style.dryRun, false);
    head.update({{"status", file.status},
                 {"state", StateWord(file, style.command == Command::Replace)},
                 {"error", ToUtf8(file.error)},
                 {"items", std::move(items)}});
    return head;
}

Json TailOf(const FileReport& file, const ReportStyle& style)
{
    Json tail;
    if (style.hits)
        PutUnless(tail, "hitsLeftOut", file.hitsLeftOut, std::int64_t{0});
    tail["warnings"] = ArrayOf(file.warnings);
    return tail;
}

Json JsonOf(const Hit& hit, bool replaces)
{
    const HitPlace& place = *hit.place;
    const std::string absent;
    Json json{{"pair", place.pair}, {"location", RowOf(place.location).name}};
    PutUnless(json, "slide", place.slide, 0);
    PutUnless(json, "slideTitle", ToUtf8(place.slideTitle), absent);
    PutUnless(json, "design", ToUtf8(place.design), absent);
    PutUnless(json, "property", ToUtf8(place.property), absent);
    if (place.headerFooter != HitPlace::HeaderFooter::None)
        json["headerFooter"] = place.headerFooter == HitPlace::HeaderFooter::Header ? "header" : "footer";
    PutUnless(json, "hyperlink", place.hyperlink, 0);
    PutUnless(json, "shape", place.shape, 0);
    PutUnless(json, "shapeName", ToUtf8(place.shapeName), absent);
    PutUnless(json, "paragraph", hit.paragraph, 0);
    json["position"] = hit.position;
    json["length"] = hit.length;
    json["before"] = ToUtf8(hit.before);
    json["text"] = ToUtf8(hit.text);
    json["after"] = ToUtf8(hit.after);
    PutUnless(json, "cutBefore", hit.isCutBefore, false);
    PutUnless(json, "cutAfter", hit.isCutAfter, false);
    if (hit.becomes)
        json["becomes"] = ToUtf8(*hit.becomes);
    else if (replaces)
        json["becomes"] = nullptr;
    PutUnless(json, "counted", hit.isCounted, true);
    return json;
}

FileReport FileReportFrom(const Json& line, bool replaces)
{
    return Reading([&] {
        FileReport file{.path = FromUtf8(line.at("file").get<std::string>()),
                        .status = line.at("status").get<std::int32_t>(),
                        .error = StringAt(line, "error"),
                        .pairs = {}};
        file.hasNewContent = NewContentFrom(line.at("state").get<std::string>(), replaces);
        for (const Json& item : line.at("items"))
            file.pairs.push_back(PairFrom(item));
        for (const Json& warning : line.at("warnings"))
            file.warnings.push_back(FromUtf8(warning.get<std::string>()));
        file.hitsLeftOut = line.value("hitsLeftOut", std::int64_t{0});
        file.number = line.value("number", std::int64_t{0});
        if (const auto hits = line.find("hits"); hits != line.end()) {
            for (const Json& hit : *hits)
                file.hits.push_back(HitFrom(hit));
        }
        return file;
    });
}

Hit HitFrom(const Json& json)
{
    return Reading([&] {
        auto place = std::make_shared<HitPlace>();
        place->location = SearchLocations[RowNamed(json.at("location").get<std::string>())].location;
        place->pair = json.at("pair").get<std::int32_t>();
        place->slide = json.value("slide", 0);
        place->slideTitle = StringAt(json, "slideTitle");
        place->design = StringAt(json, "design");
        place->property = StringAt(json, "property");
        place->headerFooter = HeaderFooterFrom(json);
        place->hyperlink = json.value("hyperlink", 0);
        place->shape = json.value("shape", 0);
        place->shapeName = StringAt(json, "shapeName");
        Hit hit{.place = std::move(place)};
        hit.paragraph = json.value("paragraph", 0);
        hit.position = json.at("position").get<std::int32_t>();
        hit.length = json.at("length").get<std::int32_t>();
        hit.before = StringAt(json, "before");
        hit.text = StringAt(json, "text");
        hit.after = StringAt(json, "after");
        hit.isCutBefore = json.value("cutBefore", false);
        hit.isCutAfter = json.value("cutAfter", false);
        if (const auto becomes = json.find("becomes"); becomes != json.end() && !becomes->is_null())
            hit.becomes = FromUtf8(becomes->get<std::string>());
        hit.isCounted = json.value("counted", true);
        return hit;
    });
}

}  // namespace tessarine::batch
