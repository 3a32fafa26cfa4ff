#include <algorithm>
#include <array>

#include <nlohmann/json.hpp>

#include "batch/LineText.h"
#include "batch/Locations.h"
#include "batch/PairFormats.h"
#include "batch/Refusal.h"

namespace tessarine::batch
{

namespace
{

using nlohmann::json;

/// The line, from 1, of a byte of a text.
std::int64_t LineOf(std::string_view text, std::size_t byte)
{
    return 1 + std::ranges::count(text.substr(0, std::min(byte, text.size())), '\n');
}

json Parsed(const std::string& text)
{
    // Deeper than any pair goes; a hostile file would take memory for each bracket.
    constexpr int deepest = 4;
    const auto check = [](int depth, json::parse_event_t, json&) {
        if (depth > deepest)
            Refuse("it is nested more deeply than pairs are");
        return true;
    };
    try {
        return json::parse(text, check);
    } catch (const json::parse_error& error) {
        // The byte is the last one that was read, and counts from 1.
        const std::size_t byte = error.byte > 0 ? error.byte - 1 : 0;
        Refuse("line " + std::to_string(LineOf(text, byte)) + ": this is not valid JSON");
    } catch (const json::out_of_range&) {
        // The parser raises it without a place. Pairs have no numbers at all.
        Refuse("it holds a number that is too large to be one");
    }
}

String TextOf(const json& value, const std::string& what, const std::string& place)
{
    if (!value.is_string())
        Refuse(place + ": " + what + " is not a text");
    const String text = FromUtf8(value.get_ref<const std::string&>());
    CheckPairText(text, place);
    return text;
}

bool SwitchOf(const json& value, const std::string& what, const std::string& place)
{
    if (!value.is_boolean())
        Refuse(place + ": \"" + what + "\" is neither true nor false");
    return value.get<bool>();
}

void TakePlaces(FilePair& pair, const json& value)
{
    pair.hasPlaces = true;
    if (value.is_string()) {
        SwitchOnPlaces(pair.setting, value.get_ref<const std::string&>(), pair.place);
        return;
    }
    if (!value.is_array())
        Refuse(pair.place + ": \"in\" is neither a text nor an array of texts");
    for (const json& name : value)
        SwitchOnPlaces(pair.setting, ToUtf8(TextOf(name, "a name of \"in\"", pair.place)), pair.place);
}

void TakeMember(FilePair& pair, const std::string& key, const json& value)
{
    if (key == "find")
        pair.find = TextOf(value, "\"find\"", pair.place);
    else if (key == "with")
        pair.with = TextOf(value, "\"with\"", pair.place);
    else if (key == "case")
        pair.setting.MatchCase = SwitchOf(value, key, pair.place);
    else if (key == "word")
        pair.setting.MatchWholeWord = SwitchOf(value, key, pair.place);
    else if (key == "in")
        TakePlaces(pair, value);
    else
        Refuse(pair.place + ": there is no option " + Quoted(FromUtf8(key)) +
               "; the keys are find, with, case, word and in");
}

FilePair PairOf(const json& value, std::string place)
{
    FilePair pair;
    pair.place = std::move(place);
    if (value.is_object()) {
        if (!value.contains("find"))
            Refuse(pair.place + ": \"find\" is missing");
        for (const auto& [key, member] : value.items())
            TakeMember(pair, key, member);
    } else if (value.is_array() && (value.size() == 1 || value.size() == 2)) {
        pair.find = TextOf(value[0], "the text to look for", pair.place);
        if (value.size() == 2)
            pair.with = TextOf(value[1], "the text to put in its place", pair.place);
    } else {
        Refuse(pair.place + ": it is neither an array of one or two texts nor an object");
    }
    return pair;
}

std::string Quote(StringView text)
{
    return json(ToUtf8(text)).dump(-1, ' ', false, json::error_handler_t::replace);
}

}  // namespace

std::vector<FilePair> ReadJsonPairs(StringView text)
{
    const json value = Parsed(ToUtf8(text));
    if (!value.is_array())
        Refuse("the pairs are not an array, such as [[\"find\", \"with\"]]");
    if (value.size() > mostFilePairs)
        Refuse("there are more than " + std::to_string(mostFilePairs) + " pairs");
    std::vector<FilePair> pairs;
    pairs.reserve(value.size());
    for (const json& pair : value)
        pairs.push_back(PairOf(pair, "pair " + std::to_string(pairs.size() + 1)));
    return pairs;
}

std::string WriteJsonPairs(const std::vector<FilePair>& pairs)
{
    std::string text = "[";
    for (const FilePair& pair : pairs) {
        text += &pair == &pairs.front() ? "\n" : ",\n";
        text += "{\"find\": " + Quote(pair.find) + ", \"with\": " + Quote(pair.with.value_or(String()));
        text += std::string(", \"case\": ") + (pair.setting.MatchCase ? "true" : "false");
        text += std::string(", \"word\": ") + (pair.setting.MatchWholeWord ? "true" : "false");
        text += ", \"in\": " + json(LocationsOf(pair.setting)).dump() + "}";
    }
    return text + "\n]\n";
}

}  // namespace tessarine::batch
