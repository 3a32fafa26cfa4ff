#include "batch/PairFormats.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/Locations.h"
#include "platform/Failure.h"

namespace tessarine::batch
{
namespace
{

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A pair written down: "line 1: cat -> dog case in slides,notes"; "?" where there is no new text.
std::string Shown(const FilePair& pair)
{
    std::string text = pair.place + ": " + ToUtf8(pair.find) + " -> " + (pair.with ? ToUtf8(*pair.with) : "?");
    text += pair.setting.MatchCase ? " case" : "";
    text += pair.setting.MatchWholeWord ? " word" : "";
    std::string places;
    for (const std::string& name : LocationsOf(pair.setting))
        places += (places.empty() ? " in " : ",") + name;
    return text + places;
}

std::vector<std::string> Shown(const std::vector<FilePair>& pairs)
{
    std::vector<std::string> texts;
    for (const FilePair& pair : pairs)
        texts.push_back(Shown(pair));
    return texts;
}

std::vector<std::string> Csv(const std::string& bytes)
{
    return Shown(ReadSeparatedPairs(DecodePairFile(bytes), u','));
}

std::vector<std::string> Tsv(const std::string& bytes)
{
    return Shown(ReadSeparatedPairs(DecodePairFile(bytes), u'\t'));
}

std::vector<std::string> Json(const std::string& bytes)
{
    return Shown(ReadJsonPairs(DecodePairFile(bytes)));
}

using PairReader = std::vector<std::string> (*)(const std::string& bytes);

std::string PairRefusal(PairReader read, const std::string& bytes)
{
    try {
        read(bytes);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 5);
        return ToUtf8(failure.description);
    }
    return "taken";
}

}  // namespace

TEST(SeparatedPairs, AreTwoColumns)
{
    EXPECT_THAT(Csv("cat,dog\nold,\n"), ElementsAre("line 1: cat -> dog", "line 2: old -> "));
    EXPECT_THAT(Tsv("cat\tdog, or so\nold\t"), ElementsAre("line 1: cat -> dog, or so", "line 2: old -> "));
    EXPECT_THAT(Csv("cat\n"), ElementsAre("line 1: cat -> ?"));
    EXPECT_THAT(Csv(""), IsEmpty());
}

TEST(SeparatedPairs, AreTextsLetterByLetter)
{
    EXPECT_THAT(Csv("007,1e3\n TRUE ,=A1\na\"b,'\n"),
                ElementsAre("line 1: 007 -> 1e3", "line 2:  TRUE  -> =A1", "line 3: a\"b -> '"));
}

TEST(SeparatedPairs, MayHoldAnythingInQuotes)
{
    EXPECT_THAT(Csv("\"a,b\",\"c\"\"d\"\r\n\"two\r\nlines\",\"\"\r\nlast,x"),
                ElementsAre("line 1: a,b -> c\"d", "line 2: two\r\nlines -> ", "line 4: last -> x"));
}

TEST(SeparatedPairs, EndTheirLinesAnyWay)
{
    EXPECT_THAT(Csv("a,b\rc,d\n\r\n\ne,f\r\n"), ElementsAre("line 1: a -> b", "line 2: c -> d", "line 5: e -> f"));
}

TEST(SeparatedPairs, KeepRepeatedOnesInTheirOrder)
{
    EXPECT_THAT(Csv("a,b\nb,c\na,b\n"), ElementsAre("line 1: a -> b", "line 2: b -> c", "line 3: a -> b"));
}

TEST(SeparatedPairs, HaveOptionsWhereColumnsAreNamed)
{
    EXPECT_THAT(Csv("with,Find,CASE,word,in\ndog,cat,TRUE,no,\"slides,notes\"\nx,y,,1,all shapes\nx,z\n"),
                ElementsAre("line 2: cat -> dog case in slides,notes", HasSubstr("y -> x word in slides,hyperlinks"),
                            "line 4: z -> x"));
    EXPECT_THAT(Csv("Find What,Replace With,MatchCase,MatchWholeWord\na,b,x,yes\n"),
                ElementsAre("line 2: a -> b case word"));
    EXPECT_THAT(Tsv("find\treplace\na\tb\n"), ElementsAre("line 2: a -> b"));
    EXPECT_THAT(Csv("find\na\n"), ElementsAre("line 2: a -> ?"));
}

TEST(SeparatedPairs, MayNameTheirSeparator)
{
    EXPECT_THAT(Csv("sep=;\r\nfind;with\r\na,b;c\r\n"), ElementsAre("line 3: a,b -> c"));
    EXPECT_THAT(Csv("sep=x\n"), IsEmpty());
    EXPECT_THAT(Csv("sep=,b\n"), ElementsAre("line 1: sep= -> b"));
}

TEST(SeparatedPairs, SayWhichLineIsWrong)
{
    EXPECT_EQ(PairRefusal(Csv, "a,b\nc,d,e\n"),
              "line 2: there are 3 fields for 2 columns (a text with a separator in it wants quotes around it)");
    EXPECT_EQ(PairRefusal(Csv, "a,b\n\"c\nd,e\n"), "line 2: a quote begins a field here that no other quote ends");
    EXPECT_EQ(PairRefusal(Csv, "\"a\nb\"c,d\n"),
              "line 2: there is text after the quote that ends a field (a quote in a field is doubled)");
    EXPECT_EQ(PairRefusal(Csv, "find,with,colour\n"),
              "line 1: there is no column \"colour\"; the columns are find, with, case, word and in");
    EXPECT_EQ(PairRefusal(Csv, "find,with,replace\n"), "line 1: the column \"replace\" is there twice");
    EXPECT_EQ(PairRefusal(Csv, "find;with\n"),
              "line 1: the separator is a comma; a first line \"sep=;\" names another one");
    EXPECT_EQ(PairRefusal(Csv, "find,with,case\na,b,vrai\n"),
              "line 2: \"vrai\" in the column case is neither TRUE nor FALSE");
    EXPECT_THAT(PairRefusal(Csv, "find,in\na,slides titles\n"),
                HasSubstr("line 2: there is no location \"titles\"; the names are slides, "));
    EXPECT_EQ(PairRefusal(Csv, "Find What,Replace With" + std::string(16, ',') + "\n"),
              "line 1: this is a list of 18 columns, which --list takes");
}

TEST(SeparatedPairs, AreNoMoreThanAListHas)
{
    std::string rows;
    for (std::size_t row = 0; row < mostFilePairs; ++row)
        rows += "a\n";

    EXPECT_EQ(Csv(rows).size(), mostFilePairs);
    EXPECT_EQ(PairRefusal(Csv, rows + "a\n"), "line 100001: there are more than 100000 pairs");
}

TEST(PairFile, IsUtf8OrUtf16WithAMark)
{
    EXPECT_THAT(Csv("caf\xC3\xA9,\xF0\x9F\x98\x80\n"), ElementsAre("line 1: café -> 😀"));
    EXPECT_THAT(Csv("\xEF\xBB\xBF\"a\",b\n"), ElementsAre("line 1: a -> b"));
    EXPECT_THAT(Csv("\xFF\xFE"s + "\xE9\0,\0\x3D\xD8\0\xDE\n\0"s), ElementsAre("line 1: é -> 😀"));
    EXPECT_THAT(Csv("\xFE\xFF"s + "\0a\0,\0b"s), ElementsAre("line 1: a -> b"));
    EXPECT_THAT(Json("\xFF\xFE[\0[\0\"\0a\0\"\0]\0]\0"s), ElementsAre("pair 1: a -> ?"));
}

TEST(PairFile, InAnyOtherEncodingIsRefusedWithItsLine)
{
    const std::string invalid = "the text is not valid UTF-8 (or UTF-16 with a byte order mark)";

    EXPECT_EQ(PairRefusal(Csv, "a,b\ncaf\xE9,x\n"), "line 2: " + invalid);
    EXPECT_EQ(PairRefusal(Csv, "a\0,\0b\0"s), "line 1: the text holds a NUL character");
    EXPECT_EQ(PairRefusal(Csv, "\xFF\xFE\n\0\0\xD8"s), "line 2: " + invalid);
    EXPECT_THAT(PairRefusal(Csv,
                            "\xFF\xFE"
                            "a"s),
                HasSubstr("half a character"));
    EXPECT_THAT(PairRefusal(Csv, "\n\n\xEF\xBF\xBE,b"), HasSubstr("line 3: the text holds U+FFFE"));
}

TEST(JsonPairs, AreArraysOrObjects)
{
    EXPECT_THAT(Json(R"([["cat", "dog"], ["old", ""], ["one"],
                         {"find": "a", "with": "b", "case": true, "word": true, "in": ["slides", "notes"]},
                         {"with": "d", "find": "c", "case": false, "in": "links, footer"}])"),
                ElementsAre("pair 1: cat -> dog", "pair 2: old -> ", "pair 3: one -> ?",
                            "pair 4: a -> b case word in slides,notes", "pair 5: c -> d in footer,links"));
    EXPECT_THAT(Json("[]"), IsEmpty());
    EXPECT_THAT(Json(R"([["a\r\n\"\u00e9", "\ud83d\ude00"]])"), ElementsAre("pair 1: a\r\n\"é -> 😀"));
}

TEST(JsonPairs, SayWhichLineOrPairIsWrong)
{
    EXPECT_EQ(PairRefusal(Json, "[[\"a\", \"b\"],\n[\"c\" \"d\"]]"), "line 2: this is not valid JSON");
    EXPECT_EQ(PairRefusal(Json, "[\n[\"a\""), "line 2: this is not valid JSON");
    EXPECT_EQ(PairRefusal(Json, "{\"a\": \"b\"}"), "the pairs are not an array, such as [[\"find\", \"with\"]]");
    EXPECT_EQ(PairRefusal(Json, "[[\"a\"], \"b\"]"),
              "pair 2: it is neither an array of one or two texts nor an object");
    EXPECT_THAT(PairRefusal(Json, "[[]]"), HasSubstr("pair 1: it is neither"));
    EXPECT_THAT(PairRefusal(Json, R"([["a", "b", "c"]])"), HasSubstr("pair 1: it is neither"));
    EXPECT_EQ(PairRefusal(Json, "[[2023, \"b\"]]"), "pair 1: the text to look for is not a text");
    EXPECT_EQ(PairRefusal(Json, "[[1e999, \"b\"]]"), "it holds a number that is too large to be one");
    EXPECT_EQ(PairRefusal(Json, "[{\"find\": null}]"), "pair 1: \"find\" is not a text");
    EXPECT_EQ(PairRefusal(Json, "[{\"with\": \"b\"}]"), "pair 1: \"find\" is missing");
    EXPECT_EQ(PairRefusal(Json, R"([{"find": "a", "case": "true"}])"), "pair 1: \"case\" is neither true nor false");
    EXPECT_EQ(PairRefusal(Json, R"([{"find": "a", "Word": true}])"),
              "pair 1: there is no option \"Word\"; the keys are find, with, case, word and in");
    EXPECT_THAT(PairRefusal(Json, R"([{"find": "a", "in": ["titles"]}])"), HasSubstr("no location \"titles\""));
    EXPECT_THAT(PairRefusal(Json, R"([{"find": "a", "in": 1}])"), HasSubstr("\"in\" is neither a text nor"));
    EXPECT_EQ(PairRefusal(Json, R"([["a\u0000b"]])"), "pair 1: the text holds a NUL character");
    EXPECT_EQ(PairRefusal(Json, std::string(100000, '[')), "it is nested more deeply than pairs are");
}

TEST(WrittenPairs, ReadBackAsTheSame)
{
    std::vector<FilePair> pairs;
    for (const StringView text :
         {u"plain", u"a\tb", u"a\r\nb\n", u"\"quoted\"", u"a\"b", u"\\", u"😀é", u"", u"007", u"find"}) {
        FilePair pair{String(text), String(text), {}, true, {}};
        pair.setting.MatchCase = text == u"plain";
        pair.setting.MatchWholeWord = text != u"plain";
        SwitchOn(pair.setting, text == u"plain" ? "slides,notes" : "links");
        pairs.push_back(pair);
    }
    const auto withoutPlace = [](std::vector<std::string> texts) {
        for (std::string& text : texts)
            text.erase(0, text.find(':'));
        return texts;
    };

    EXPECT_EQ(withoutPlace(Tsv(WriteTabSeparatedPairs(pairs))), withoutPlace(Shown(pairs)));
    EXPECT_EQ(withoutPlace(Json(WriteJsonPairs(pairs))), withoutPlace(Shown(pairs)));
    EXPECT_EQ(WriteJsonPairs({pairs.front()}),
              "[\n{\"find\": \"plain\", \"with\": \"plain\", \"case\": true, \"word\": false, \"in\": "
              "[\"slides\",\"notes\"]}\n]\n");
    EXPECT_EQ(WriteTabSeparatedPairs({pairs.front()}),
              "find\twith\tcase\tword\tin\nplain\tplain\tTRUE\tFALSE\tslides,notes\n");
}

}  // namespace tessarine::batch
