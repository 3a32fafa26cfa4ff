#include "office/builtin/shapes/HyperlinkAddress.h"

#include "DeckOnDisk.h"

namespace tessarine::builtin
{
namespace
{

using test::FailsWith;
using test::RaisedBy;

struct GetCase {
    const char* name;
    const char* target;
    const char16_t* address;
    const char* fragment;
};

void PrintTo(const GetCase& item, std::ostream* out)
{
    *out << item.name;
}

class AddressOfATarget : public testing::TestWithParam<GetCase>
{
};

TEST_P(AddressOfATarget, IsAsTheObjectModelGivesIt)
{
    const TargetText text = ReadTarget(GetParam().target, true);

    EXPECT_EQ(ToUtf8(text.address), ToUtf8(GetParam().address));
    EXPECT_EQ(text.fragment, GetParam().fragment);
}

/// An unchanged address gives the target back with every byte.
TEST_P(AddressOfATarget, PutBackUnchangedGivesTheSameBytes)
{
    EXPECT_EQ(WriteTarget(GetParam().target, GetParam().address, true), GetParam().target);
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, AddressOfATarget,
    testing::Values(GetCase{"Web", "https://host/path?query", u"https://host/path?query", ""},
                    GetCase{"WebWithFragment", "http://host/path?q#frag#more", u"http://host/path?q", "frag#more"},
                    GetCase{"WebWithEscapes", "http://host/a%20b?c=%26%2F", u"http://host/a%20b?c=%26%2F", ""},
                    GetCase{"WebOfOtherLetters",
                            "http://host/Gr\xC3\xB6\xC3\x9F"
                            "e",
                            u"http://host/Gr\u00F6\u00DFe", ""},
                    GetCase{"Mail", "mailto:x@y?subject=a%20b#c", u"mailto:x@y?subject=a%20b#c", ""},
                    GetCase{"OtherScheme", "onenote:https://host/a", u"onenote:https://host/a", ""},
                    GetCase{"Drive", "file:///C:\\dir\\a.docx", u"C:\\dir\\a.docx", ""},
                    GetCase{"DriveWithSlashes", "file:///C:/dir/a%20b.docx", u"C:\\dir\\a b.docx", ""},
                    GetCase{"DriveInCapitals", "FILE:///C:/a.docx", u"C:\\a.docx", ""},
                    GetCase{"DriveWithFragment", "file:///C:\\a.docx#Bookmark", u"C:\\a.docx", "Bookmark"},
                    GetCase{"DriveWithEscapedNumberSign", "file:///C:\\a%23b.docx", u"C:\\a#b.docx", ""},
                    GetCase{"Share", "file:///\\\\server\\share\\a.xlsx", u"\\\\server\\share\\a.xlsx", ""},
                    GetCase{"ShareAsHost", "file://server/share/a", u"\\\\server\\share\\a", ""},
                    GetCase{"Relative", "a.docx", u"a.docx", ""},
                    GetCase{"RelativeUp", "../x/a%20b.docx", u"..\\x\\a b.docx", ""},
                    GetCase{"RelativeWithBackslashes", "sub\\a.docx", u"sub\\a.docx", ""},
                    GetCase{"RelativeWithOtherLetters",
                            "Gr%C3%B6%C3%9F"
                            "e.docx",
                            u"Gr\u00F6\u00DFe.docx", ""},
                    GetCase{"RelativeBeyondTheBasicPlane", "%F0%9F%98%80.docx", u"\U0001F600.docx", ""},
                    GetCase{"DriveWithoutScheme", "C:\\dir\\run.exe", u"C:\\dir\\run.exe", ""},
                    GetCase{"FragmentAlone", "#Slide 3", u"", "Slide 3"},
                    GetCase{"PercentThatIsNone", "100%.docx", u"100%.docx", ""}, GetCase{"Nothing", "", u"", ""}),
    [](const auto& tested) { return tested.param.name; });

/// Older programs escaped the bytes of a code page.
TEST(TargetWithEscapesOfACodePage, KeepsThemWhereverTheAddressChanges)
{
    const String address = ReadTarget("Gr%F6%DFe/old.docx", true).address;

    EXPECT_EQ(WriteTarget("Gr%F6%DFe/old.docx", address.substr(0, 6) + u"new.docx", true), "Gr%F6%DFe/new.docx");
    EXPECT_EQ(WriteTarget("Gr%F6%DFe/old.docx", u"B" + address.substr(1), true), "Br%F6%DFe/old.docx");
    EXPECT_EQ(WriteTarget("x.docx", address, true), "Gr%F6%DFe/old.docx");
}

struct PutCase {
    const char* name;
    const char* before;
    const char16_t* address;
    const char* after;
};

void PrintTo(const PutCase& item, std::ostream* out)
{
    *out << item.name;
}

class TargetOfANewAddress : public testing::TestWithParam<PutCase>
{
};

TEST_P(TargetOfANewAddress, KeepsTheBytesOfWhatStays)
{
    EXPECT_EQ(WriteTarget(GetParam().before, GetParam().address, true), GetParam().after);
}

/// What is written reads back as what was put.
TEST_P(TargetOfANewAddress, ReadsBackAsItWasPut)
{
    EXPECT_EQ(ToUtf8(ReadTarget(GetParam().after, true).address), ToUtf8(GetParam().address));
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, TargetOfANewAddress,
    testing::Values(
        PutCase{"WebKeepsEscapesAndFragment", "http://fabrikam.com/a?b=%26%2F#top", u"http://contoso.com/a?b=%26%2F",
                "http://contoso.com/a?b=%26%2F#top"},
        PutCase{"MailKeepsEscapes", "mailto:a@fabrikam.com?subject=x%20y", u"mailto:a@contoso.com?subject=x%20y",
                "mailto:a@contoso.com?subject=x%20y"},
        PutCase{"DriveKeepsEscapes", "file:///C:\\Fabrikam\\A%20B.docx", u"C:\\Contoso\\A B.docx",
                "file:///C:\\Contoso\\A%20B.docx"},
        PutCase{"DriveKeepsSlashes", "file:///C:/Fabrikam/A%20B.docx", u"C:\\Con toso\\A B.docx",
                "file:///C:/Con%20toso/A%20B.docx"},
        PutCase{"ShareKeepsItsForm", "file://fabrikam/share/a", u"\\\\contoso\\share\\a", "file://contoso/share/a"},
        PutCase{"RelativeKeepsSlashes", "../fabrikam/a%20b.docx", u"..\\con\\toso\\a b.docx", "../con/toso/a%20b.docx"},
        PutCase{"RelativeKeepsBackslashes", "..\\fabrikam\\a.docx", u"..\\con toso\\a.docx", "..\\con%20toso\\a.docx"},
        PutCase{"PercentInAPathIsEscaped", "a.docx", u"50%.docx", "50%25.docx"},
        PutCase{"NumberSignInAPathIsEscaped", "a.docx", u"a#1.docx", "a%231.docx"},
        PutCase{"WebBecomesADrive", "http://fabrikam.com/a#top", u"C:\\a b\\c%.docx",
                "file:///C:\\a%20b\\c%25.docx#top"},
        PutCase{"WebBecomesAShare", "http://fabrikam.com/a", u"\\\\server\\a b", "file:///\\\\server\\a%20b"},
        PutCase{"WebBecomesRelative", "http://fabrikam.com/a", u"sub\\a b.docx", "sub/a%20b.docx"},
        PutCase{"DriveBecomesWeb", "file:///C:\\a%20b.docx", u"http://contoso.com/a", "http://contoso.com/a"},
        PutCase{"DriveBecomesAShare", "file:///C:/a.docx", u"\\\\server\\share\\a.docx",
                "file:///\\\\server\\share\\a.docx"},
        PutCase{"ShareBecomesADrive", "file://server/share/a.docx", u"C:\\share\\a.docx", "file:///C:\\share\\a.docx"},
        PutCase{"DriveBecomesRelative", "file:///C:\\a.docx", u"a.docx", "a.docx"},
        PutCase{"RelativeBecomesADrive", "a%20b.docx", u"C:\\a b.docx", "file:///C:\\a%20b.docx"},
        PutCase{"FragmentAloneGetsAnAddress", "#Slide 3", u"http://contoso.com/", "http://contoso.com/#Slide 3"},
        PutCase{"NothingLeftButTheFragment", "http://fabrikam.com/#top", u"", "#top"},
        PutCase{"OtherHalfOfAPair", "%F0%9F%98%80.docx", u"\U0001F601.docx", "\xF0\x9F\x98\x81.docx"}),
    [](const auto& tested) { return tested.param.name; });

TEST(TargetOfANewAddress, HasNoBlanksAndNoControls)
{
    EXPECT_EQ(WriteTarget("http://a", u"http://b c\td", true), "http://b%20c%09d");
}

TEST(TargetOfANewAddress, MayBeAsLongAsTheLimitAndNoLonger)
{
    const String longest = u"http://" + String(2083 - 7, u'a');

    EXPECT_EQ(WriteTarget("http://b", longest, true), ToUtf8(longest));
    EXPECT_THAT(RaisedBy([&] { WriteTarget("http://b", longest + u"a", true); }),
                FailsWith(FailureNumber::BadArgument, "The new address is too long"));
}

TEST(TargetOfANewAddress, IsCalledASourceWhereItIsOne)
{
    EXPECT_THAT(RaisedBy([&] { WriteTarget("file:///C:/a", String(2084, u'a'), false); }),
                FailsWith(FailureNumber::BadArgument, "The new source is too long"));
}

TEST(TargetOfANewAddress, OfALinkedObjectKeepsANumberSign)
{
    EXPECT_EQ(ToUtf8(ReadTarget("file:///C:\\a#1.xlsx!S#1", false).address), "C:\\a#1.xlsx!S#1");
    EXPECT_EQ(WriteTarget("file:///C:\\a#1.xlsx!S", u"C:\\b#2.xlsx!S", false), "file:///C:\\b#2.xlsx!S");
}

TEST(FileAddress, IsWhatHasNoScheme)
{
    for (const char16_t* address : {u"C:\\a", u"\\\\server\\a", u"a.docx", u"..\\a", u"", u"a b:c"})
        EXPECT_TRUE(IsFileAddress(address)) << ToUtf8(address);
    for (const char16_t* address : {u"http://a", u"mailto:a@b", u"ms-word:x", u"A1+-.:x"})
        EXPECT_FALSE(IsFileAddress(address)) << ToUtf8(address);
}

}  // namespace
}  // namespace tessarine::builtin
