#include <chrono>
#include <ctime>

#include "DeckOnDisk.h"
#include "engine/SearchFunctions.h"
#include "office/builtin/properties/PropertyDate.h"
#include "support/Fixtures.h"

namespace tessarine::test
{
namespace
{

using testing::ElementsAre;

const std::string customPart = "docProps/custom.xml";

std::shared_ptr<powerpoint::DocumentProperty> Property(powerpoint::Presentation& presentation, StringView name)
{
    return PropertyOf(*presentation.CustomDocumentProperties(), name);
}

Deck With(const std::string& kind, StringView text)
{
    return Deck().Slide(Title(u"x")).Custom(u"P", kind, text);
}

struct KindCase {
    const char* kind;
    const char* text;
    const char* reads;
};

void PrintTo(const KindCase& item, std::ostream* out)
{
    *out << item.kind << " " << item.text;
}

class CustomPropertyKind : public testing::TestWithParam<KindCase>
{
};

TEST_P(CustomPropertyKind, ReadsAsItsText)
{
    const DeckOnDisk deck(With(GetParam().kind, FromUtf8(GetParam().text)));

    EXPECT_EQ(ToUtf8(powerpoint::TextOf(Property(*deck.Open(), u"P")->Value())), GetParam().reads);
}

TEST_P(CustomPropertyKind, PutBackUnchangedChangesNoByte)
{
    const Deck with = With(GetParam().kind, FromUtf8(GetParam().text));
    const DeckOnDisk deck(with);

    deck.Change([](auto& presentation) {
        const auto property = Property(presentation, u"P");
        property->PutValue(property->Value());
        property->PutValue(powerpoint::TextOf(property->Value()));
    });

    EXPECT_EQ(deck.Bytes(), with.Bytes());
}

INSTANTIATE_TEST_SUITE_P(
    Every, CustomPropertyKind,
    testing::Values(KindCase{"lpwstr", "Fabrikam & S\xC3\xB6hne", "Fabrikam & S\xC3\xB6hne"},
                    KindCase{"lpstr", "3", "3"}, KindCase{"bstr", " blank ", " blank "}, KindCase{"i1", "-1", "-1"},
                    KindCase{"i2", "-300", "-300"}, KindCase{"i4", "3", "3"}, KindCase{"int", "3", "3"},
                    KindCase{"i8", "9007199254740993", "9007199254740993"}, KindCase{"ui1", "255", "255"},
                    KindCase{"ui2", "65535", "65535"}, KindCase{"ui4", "4294967295", "4294967295"},
                    KindCase{"uint", "3", "3"}, KindCase{"ui8", "18446744073709551615", "18446744073709551615"},
                    KindCase{"r4", "1.5", "1.5"}, KindCase{"r8", "4", "4"}, KindCase{"decimal", "2.50", "2.5"},
                    KindCase{"cy", "19.99", "19.99"}, KindCase{"bool", "true", "True"}, KindCase{"bool", "1", "True"},
                    KindCase{"bool", "false", "False"}, KindCase{"bool", "0", "False"}, KindCase{"empty", "", ""},
                    KindCase{"null", "", ""}, KindCase{"clsid", "{B6F15528-21DE-4FAA-801E-634DDDAF4B2B}", ""},
                    KindCase{"blob", "RmFicmlrYW0=", ""}, KindCase{"i4", "none", "none"}),
    [](const auto& tested) { return std::string(tested.param.kind) + "Case" + std::to_string(tested.index); });

TEST(CustomProperties, ListAllInTheOrderOfTheFileDuplicatesToo)
{
    const DeckOnDisk deck(fixtures::CustomProperties());
    const auto properties = deck.Open()->CustomDocumentProperties();

    EXPECT_EQ(properties->Count(), 30);
    EXPECT_EQ(properties->Item(1)->Name(), u"Text");
    EXPECT_EQ(properties->Item(28)->Name(), u"Gr\u00F6\u00DFe");
    EXPECT_EQ(properties->Item(29)->Name(), u"text");
    EXPECT_EQ(properties->Item(30)->Name(), u"_MarkAsFinal");
    EXPECT_THAT(RaisedBy([&] { properties->Item(31); }), FailsWith(FailureNumber::BadArgument, "index"));
}

TEST(CustomProperties, OfADeckWithoutAnyAreNone)
{
    const DeckOnDisk deck(fixtures::NoProperties());

    EXPECT_EQ(deck.Open()->CustomDocumentProperties()->Count(), 0);
}

TEST(CustomProperties, GiveDatesInLocalTime)
{
    const DeckOnDisk deck(With("filetime", u"2024-05-06T07:08:09Z"));

    auto local = std::get<powerpoint::Date>(Property(*deck.Open(), u"P")->Value()).local;

    EXPECT_EQ(mktime(&local), 1714979289);
}

struct PutCase {
    const char* name;
    const char* kind;
    const char16_t* before;
    powerpoint::Value put;
    CustomValue after;
};

void PrintTo(const PutCase& item, std::ostream* out)
{
    *out << item.name;
}

class CustomPropertyPut : public testing::TestWithParam<PutCase>
{
};

TEST_P(CustomPropertyPut, WritesTheKindThatFits)
{
    const DeckOnDisk deck(With(GetParam().kind, GetParam().before));
    const PackageReader before = deck.Package();

    deck.Change([&](auto& presentation) { Property(presentation, u"P")->PutValue(GetParam().put); });

    EXPECT_EQ(CustomProperty(deck.Package(), u"P"), GetParam().after);
    EXPECT_THAT(EntriesThatDiffer(before, deck.Package()), ElementsAre(customPart));
    EXPECT_THAT(ValidityFaults(deck.Package()), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Every, CustomPropertyPut,
    testing::Values(PutCase{"TextOverText", "lpwstr", u"a", String(u"b & c"), {"lpwstr", u"b & c"}},
                    PutCase{"TextOverOldText", "lpstr", u"a", String(u"b"), {"lpstr", u"b"}},
                    PutCase{"TextOverNumber", "i4", u"3", String(u"three"), {"lpwstr", u"three"}},
                    PutCase{"NumericTextOverNumber", "i4", u"3", String(u"4"), {"lpwstr", u"4"}},
                    PutCase{"TextOverBool", "bool", u"true", String(u"No"), {"lpwstr", u"No"}},
                    PutCase{
                        "TextOverDate", "filetime", u"2024-05-06T07:08:09Z", String(u"today"), {"lpwstr", u"today"}},
                    PutCase{"TextOverEmpty", "empty", u"", String(u"x"), {"lpwstr", u"x"}},
                    PutCase{"NumberOverInteger", "i4", u"3", 4.0, {"i4", u"4"}},
                    PutCase{"NumberOverTheLargestInteger", "i4", u"3", 2147483647.0, {"i4", u"2147483647"}},
                    PutCase{"NumberBeyondAnInteger", "i4", u"3", 2147483648.0, {"r8", u"2147483648"}},
                    PutCase{"NumberBelowAnUnsigned", "ui2", u"3", -1.0, {"r8", u"-1"}},
                    PutCase{"NumberOverAByte", "ui1", u"3", 255.0, {"ui1", u"255"}},
                    PutCase{"NumberBeyondAByte", "i1", u"3", 128.0, {"r8", u"128"}},
                    PutCase{"FractionOverInteger", "i4", u"3", 3.5, {"r8", u"3.5"}},
                    PutCase{"NumberOverFloat", "r8", u"1.5", 2.5, {"r8", u"2.5"}},
                    PutCase{"NumberOverDecimal", "decimal", u"1.5", 2.0, {"decimal", u"2"}},
                    PutCase{"NumberOverText", "lpwstr", u"3", 4.0, {"lpwstr", u"4"}},
                    PutCase{"NumberOverBool", "bool", u"true", 4.0, {"r8", u"4"}},
                    PutCase{"WholeNumberOverInteger", "int", u"3", std::int64_t{4}, {"int", u"4"}}),
    [](const auto& tested) { return tested.param.name; });

TEST(CustomPropertyPutRefused, OfWhatHasNoText)
{
    const DeckOnDisk deck(fixtures::CustomProperties());

    deck.Change([](auto& presentation) {
        for (const char16_t* name : {u"clsid", u"blob", u"vector"}) {
            EXPECT_EQ(powerpoint::TextOf(Property(presentation, name)->Value()), u"");
            EXPECT_THAT(RaisedBy([&] { Property(presentation, name)->PutValue(String(u"x")); }),
                        FailsWith(FailureNumber::Unspecified, "\" can't be changed"));
        }
    });

    EXPECT_EQ(deck.Bytes(), fixtures::CustomProperties().Bytes());
}

TEST(CustomPropertyPutAlone, KeepsLinkTargetNamesAndTheBytesAround)
{
    const DeckOnDisk deck(fixtures::CustomProperties());
    std::string expected = deck.Package().Entry(customPart).bytes;

    deck.Change([](auto& presentation) {
        Property(presentation, u"Linked")->PutValue(String(u"Contoso"));
        Property(presentation, u"Gr\u00F6\u00DFe")->PutValue(String(u"Contoso & S\u00F6hne"));
        Property(presentation, u"Revision")->PutValue(4.0);
    });

    const auto splice = [&](const std::string& name, const std::string& from, const std::string& to) {
        expected.replace(expected.find(from, expected.find("name=\"" + name + "\"")), from.size(), to);
    };
    splice("Linked", "Fabrikam", "Contoso");
    splice(
        "Gr\xC3\xB6\xC3\x9F"
        "e",
        "Fabrikam", "Contoso");
    splice("Revision", ">3<", ">4<");
    EXPECT_EQ(deck.Package().Entry(customPart).bytes, expected);
}

TEST(CustomPropertyPutAlone, ChangesOneOfTwoWithTheSameName)
{
    const DeckOnDisk deck(fixtures::CustomProperties());

    deck.Change(
        [](auto& presentation) { presentation.CustomDocumentProperties()->Item(29)->PutValue(String(u"second")); });

    EXPECT_EQ(CustomProperty(deck.Package(), u"Text").text, u"Fabrikam");
    EXPECT_EQ(CustomProperty(deck.Package(), u"text").text, u"second");
}

TEST(CustomPropertyPutAlone, KeepsADeclarationOnTheValueItself)
{
    const std::string vt = "http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes";
    for (const std::string& value : {"<v:i4 xmlns:v=\"" + vt + "\">3</v:i4>", "<v:lpwstr xmlns:v=\"" + vt + "\"/>"}) {
        const DeckOnDisk deck(Deck().Slide(Title(u"x")).CustomXml(u"P", value));

        deck.Change([](auto& presentation) { Property(presentation, u"P")->PutValue(String(u"new")); });

        EXPECT_EQ(CustomProperty(deck.Package(), u"P"), (CustomValue{"lpwstr", u"new"})) << value;
        EXPECT_THAT(ValidityFaults(deck.Package()), testing::IsEmpty()) << value;
        EXPECT_NE(deck.Package().Entry(customPart).bytes.find("<v:lpwstr xmlns:v=\"" + vt + "\">new</v:lpwstr>"),
                  std::string::npos);
    }
}

void Update(const DeckOnDisk& deck, const String& name, const String& by)
{
    deck.Change([&](auto& presentation) {
        SearchFunctions engine;
        engine.xPresentation = {&presentation, [](auto*) {}};
        engine.UpdateISO9001Version(name, by);
    });
}

TEST(CustomPropertyRevision, CountsUpNumbersAndNumericTextsInTheirKind)
{
    for (const auto& [kind, after] :
         {std::pair{"i4", CustomValue{"i4", u"4"}}, std::pair{"lpwstr", CustomValue{"lpwstr", u"4"}},
          std::pair{"r8", CustomValue{"r8", u"4"}}, std::pair{"ui1", CustomValue{"ui1", u"4"}}}) {
        const DeckOnDisk deck(With(kind, u"3"));

        Update(deck, u"p", u"1");

        EXPECT_EQ(CustomProperty(deck.Package(), u"P"), after);
    }
}

TEST(CustomPropertyRevision, KeepsFourDecimalsOfMoney)
{
    const DeckOnDisk deck(With("cy", u"19.9900"));

    Update(deck, u"P", u"0.01");

    EXPECT_EQ(CustomProperty(deck.Package(), u"P"), (CustomValue{"cy", u"20.0000"}));
}

TEST(CustomPropertyRevision, KeepsAllDigitsOfLargeIntegers)
{
    const DeckOnDisk deck(With("i8", u"9007199254740993"));

    Update(deck, u"P", u"2");

    EXPECT_EQ(CustomProperty(deck.Package(), u"P"), (CustomValue{"i8", u"9007199254740995"}));
}

TEST(CustomPropertyRevision, OutOfRangeChangesNoByte)
{
    for (const auto& [kind, value, by] :
         {std::tuple{"i8", u"9223372036854775807", u"1"}, std::tuple{"ui8", u"18446744073709551614", u"1"},
          std::tuple{"r8", u"1.7976931348623157e308", u"1e308"}, std::tuple{"lpwstr", u"1e308", u"1.7e308"},
          std::tuple{"cy", u"922337203685477.5807", u"1"}}) {
        const DeckOnDisk deck(With(kind, value));

        Update(deck, u"P", by);

        EXPECT_EQ(deck.Bytes(), With(kind, value).Bytes()) << kind;
    }
}

TEST(CustomPropertyRevision, OfATextHasTheDigitsThatAPersonWouldWrite)
{
    const DeckOnDisk deck(With("lpwstr", u"1.1"));

    Update(deck, u"P", u"0.1");

    EXPECT_EQ(CustomProperty(deck.Package(), u"P"), (CustomValue{"lpwstr", u"1.2"}));
}

TEST(CustomPropertyRevision, OfATextThatIsNoNumberChangesNoByte)
{
    const DeckOnDisk deck(With("lpwstr", u"A"));

    Update(deck, u"P", u"1");

    EXPECT_EQ(deck.Bytes(), With("lpwstr", u"A").Bytes());
}

/// Seconds since 1970; the tests' time zone is that of Greenwich.
std::int64_t Read(const char16_t* text)
{
    const auto date = builtin::ReadPropertyDate(text);
    if (!date)
        return -1;
    const std::tm& local = date->local;
    const std::chrono::year_month_day day(std::chrono::year(local.tm_year + 1900),
                                          std::chrono::month(static_cast<unsigned>(local.tm_mon) + 1),
                                          std::chrono::day(static_cast<unsigned>(local.tm_mday)));
    const std::chrono::seconds whole = std::chrono::sys_days(day).time_since_epoch();
    return whole.count() + local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec;
}

TEST(PropertyDate, UnderstandsTheFormsThatFilesHold)
{
    for (const char16_t* text : {u"2024-05-06T07:08:09Z", u"2024-05-06T07:08:09", u"2024-05-06T07:08:09.1234567Z",
                                 u"2024-05-06T09:08:09+02:00", u"2024-05-06T04:38:09-02:30", u"2024-05-06 07:08:09"})
        EXPECT_EQ(Read(text), 1714979289) << ToUtf8(text);
    EXPECT_EQ(Read(u"2024-05-06T07:08Z"), 1714979280);
    EXPECT_EQ(Read(u"1601-01-02T00:00:00Z"), -11644387200);
}

TEST(PropertyDate, TellsOtherTextApart)
{
    for (const char16_t* text : {u"", u"today", u"2024", u"2024-13-01", u"2024-00-01", u"2024-01-32", u"2024-1-1",
                                 u"24-05-06", u"2024-05-06T7:08", u"2024-05-06T07:08+2", u"-024-05-06"})
        EXPECT_FALSE(builtin::ReadPropertyDate(text)) << ToUtf8(text);
}

}  // namespace
}  // namespace tessarine::test
