#include <algorithm>
#include <ostream>

#include "DeckOnDisk.h"
#include "engine/SearchFunctions.h"
#include "model/Project.h"
#include "model/SearchLocations.h"
#include "support/ErrorLogRecorder.h"
#include "support/Fixtures.h"
#include "support/WarningRecorder.h"

namespace tessarine::test
{
namespace
{

/// What a run over one file gave.
struct Outcome {
    CounterStatus::LocationCounts counts{};
    std::vector<std::pair<String, std::string>> warnings;
    std::string failure;  ///< "" for a file that was processed.
};

Outcome RunOver(const DeckOnDisk& deck, const String& find, const String& with, bool isFindOnly)
{
    const ErrorLogRecorder log;
    const WarningRecorder warnings;
    const ProjectOwner project;
    project->options->IsFindOnly = isFindOnly;
    const auto options = std::make_shared<OptionSetting>();
    for (const auto& location : SearchLocations)
        (*options).*location.isOn = true;
    options->MatchCase = true;
    project->FindAndReplaceList->Add(find, with, options, project.get());
    SearchFunctions engine;
    engine.mItems = project->FindAndReplaceList;
    engine.mIsFindOnly = isFindOnly;
    engine.IsRequiredCount = true;
    Outcome outcome;
    outcome.failure = RaisedBy([&] {
                          engine.xPresentation = deck.Open();
                          outcome.counts = engine.ProcessFile(deck.Path(), u"", options)->Item(1)->Counts();
                      }).text;
    engine.xPresentation.reset();
    outcome.warnings = warnings.Warnings();
    return outcome;
}

/// Hits that are counted though nobody can change them: in properties that the program keeps itself.
std::int32_t HitsInFixedProperties(const DeckOnDisk& deck, const String& find)
{
    const auto presentation = deck.Open();
    const auto properties = presentation->BuiltInDocumentProperties();
    std::int32_t hits = 0;
    std::int32_t last = 0;
    for (std::int32_t index = 1; index <= properties->Count(); ++index) {
        const auto property = properties->Item(index);
        String text;
        const auto count = [&] {
            std::int32_t found = 0;
            for (std::size_t at = text.find(find); at != String::npos; at = text.find(find, at + find.size()))
                ++found;
            return found;
        };
        const bool isRead = RaisedBy([&] { text = powerpoint::TextOf(property->Value()); }).number == 0;
        const bool isFixed =
            RaisedBy([&] { property->PutValue(u"no such value"); }).number == FailureNumber::Unspecified;
        // One that has no value repeats the count of the one before.
        last = isRead ? count() : last;
        hits += isFixed ? last : 0;
    }
    return hits;
}

bool TellsOfLeftovers(const std::pair<String, std::string>& warning)
{
    const std::string& text = warning.second;
    return text.find("left as it is") != std::string::npos || text.find("keeps the old text") != std::string::npos ||
           text.find("could not be changed completely") != std::string::npos ||
           text.find("still holds the text") != std::string::npos;
}

struct LeftoverCase {
    fixtures::NamedDeck deck;
    String find;
    String with;
    std::string name;
};

void PrintTo(const LeftoverCase& tested, std::ostream* out)
{
    *out << tested.name;
}

class Leftovers : public testing::TestWithParam<LeftoverCase>
{
};

TEST_P(Leftovers, OfAReplaceAreToldOrNotThere)
{
    const LeftoverCase& tested = GetParam();
    const DeckOnDisk deck(tested.deck.deck);

    const Outcome replaced = RunOver(deck, tested.find, tested.with, false);
    const Outcome left = RunOver(deck, tested.find, tested.with, true);

    if (!replaced.failure.empty() || std::ranges::any_of(replaced.warnings, TellsOfLeftovers))
        return;
    for (std::size_t row = 0; row < SearchLocations.size(); ++row) {
        const bool isFixed = SearchLocations[row].location == Location::BuiltinProperies;
        EXPECT_LE(left.counts[row], isFixed ? HitsInFixedProperties(deck, tested.find) : 0)
            << SearchLocations[row].name;
    }
}

/// Decks whose texts, links and properties resist a replace in one way or another.
std::vector<fixtures::NamedDeck> DecksThatResist()
{
    const String longText(300, u'a');
    return {
        {"LinkThatGrowsTooLong", Deck().Slide(TextBox(Paragraph(TextRun(u"x").Click(LinkTo(u"http://" + longText)))))},
        {"SourceThatGrowsTooLong", Deck().Slide(LinkedOle(u"file:///C:\\" + longText + u".xlsx"))},
        {"PropertyThatGrowsTooLong", Deck().Slide(Title(u"x")).Core("dc:title", String(200, u'a'))},
        {"Fields", Deck().Slide(SlideNumber(u"a1"), DateTime(u"a 1"), TextBox(u"a 1"))},
        {"Neighbours", Deck().Slide(Title(u"aaa"), TextBox(u"baab"), NotesPage(Body(u"aa")))},
        {"NoTextBody", Deck().Slide(WithoutTextBody(), LineShape(), TextBox(u"a"))},
        {"OtherTextInTheFallback",
         Deck().Slide(Alternate("p14", "http://schemas.microsoft.com/office/powerpoint/2010/main", TextBox(u"a 1"),
                                TextBox(u"another a 1")))},
        {"ChartFallback", Deck().Slide(ChartEx())},
        {"Everything", Deck()
                           .Slide(Title(u"a1"), TextBox(u"a1"), Footer(u"a1"), NotesPage(Body(u"a1")), Table({{}}))
                           .NotesMaster(Body(u"a1"), Header(u"a1"))
                           .HandoutMaster(Header(u"a1"), Footer(u"a1"))
                           .Custom(u"Number", "i4", u"11")
                           .Custom(u"Date", "filetime", u"2011-11-11T11:11:11Z")
                           .Custom(u"Blob", "blob", u"YWFh")
                           .Custom(u"Truth", "bool", u"true")},
    };
}

std::vector<LeftoverCase> Cases()
{
    std::vector<fixtures::NamedDeck> decks = DecksThatResist();
    for (auto& deck : fixtures::ReadableDecks())
        if (deck.name != "ModifyPassword")
            decks.push_back(std::move(deck));
    std::vector<LeftoverCase> cases;
    const String one(u"\u2603");
    const String many(40, u'\u2603');
    for (const auto& deck : decks)
        for (const auto& [find, with, name] :
             {std::tuple{u"a", one, "_OneLetter"}, std::tuple{u"a", many, "_Growing"}, std::tuple{u"1", one, "_Digit"},
              std::tuple{u"Fabrikam", one, "_Word"}, std::tuple{u"a", String(), "_Deleted"}})
            cases.push_back({deck, find, with, deck.name + name});
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Of, Leftovers, testing::ValuesIn(Cases()),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace tessarine::test
