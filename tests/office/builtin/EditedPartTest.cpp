#include "office/builtin/xml/EditedPart.h"

#include "DeckOnDisk.h"

/// The last look at an edited part: what it lets pass, and what it keeps from being saved.
namespace tessarine::test
{
namespace
{

using builtin::ByteEdit;

const std::string oldMarkup =
    R"(<p:sld xmlns:p="urn:p" xmlns:r="urn:r"><p:sp id="1"><p:t>one</p:t></p:sp><p:e/><p:l r:id="a">x</p:l></p:sld>)";

/// The part after `text` has taken the place of what is between the two quotes of `what`.
ByteEdit Edit(const std::string& what, std::string text)
{
    const std::size_t begin = oldMarkup.find(what);
    return {begin, begin + what.size(), std::move(text)};
}

std::string Edited(std::vector<ByteEdit> edits)
{
    const builtin::XmlDocument document(oldMarkup, "a part", builtin::Limits::Default());
    return builtin::EditedPart(document, std::move(edits), "a part", builtin::Limits::Default()).Bytes();
}

struct EditCase {
    const char* name;
    std::vector<ByteEdit> edits;
};

void PrintTo(const EditCase& tested, std::ostream* out)
{
    *out << tested.name;
}

class GoodEdit : public testing::TestWithParam<EditCase>
{
};

TEST_P(GoodEdit, IsMade)
{
    EXPECT_EQ(Edited(GetParam().edits), ApplyEdits(oldMarkup, GetParam().edits));
}

INSTANTIATE_TEST_SUITE_P(
    Every, GoodEdit,
    testing::Values(EditCase{"None", {}}, EditCase{"Text", {Edit("one", "1 &amp; 2 &#65;")}},
                    EditCase{"TextAway", {Edit("one", "")}},
                    EditCase{"TextInCData", {Edit("one", "<![CDATA[<p:x>]]>")}},
                    EditCase{"Element", {Edit("<p:t>one</p:t>", "<p:t/><p:u>2<p:v/></p:u>")}},
                    EditCase{"ElementAway", {Edit("<p:e/>", "")}},
                    EditCase{"FirstChild", {{oldMarkup.find("<p:t>"), oldMarkup.find("<p:t>"), "<p:a/>"}}},
                    EditCase{"LastChild", {{oldMarkup.find("</p:sld>"), oldMarkup.find("</p:sld>"), "<p:a/>"}}},
                    EditCase{"Opened", {{oldMarkup.find("/><p:l"), oldMarkup.find("<p:l"), "><p:a/></p:e>"}}},
                    EditCase{"StartTag", {Edit("<p:l r:id=\"a\">", "<p:l tip=\"b\" r:id=\"c\">")}},
                    EditCase{"EmptyTag", {Edit("<p:e/>", "<p:e a=\"b\"/>")}},
                    EditCase{"Several", {Edit("<p:e/>", ""), Edit("one", "1"), Edit("\"a\"", "'bc'")}},
                    EditCase{"OwnPrefix", {Edit("one", "<q:x xmlns:q='urn:q' q:y=''/>")}}),
    [](const auto& tested) { return tested.param.name; });

class BadEdit : public testing::TestWithParam<EditCase>
{
};

TEST_P(BadEdit, IsAFailureAndSaysThatNothingWasSaved)
{
    EXPECT_THAT(
        RaisedBy([&] { Edited(GetParam().edits); }),
        FailsWith(FailureNumber::FileCorrupt, "The file was not saved, because a change would have damaged a part"));
}

INSTANTIATE_TEST_SUITE_P(
    Every, BadEdit,
    testing::Values(EditCase{"OpenCData", {Edit("one", "<![CDATA[one")}},
                    EditCase{"OpenComment", {Edit("one", "<!--")}},
                    EditCase{"CDataUpToAnother", {Edit("one", "<![CDATA["), Edit(">x<", ">]]>x<")}},
                    EditCase{"CommentUpToAnother", {Edit("one", "<!--</p:t>"), Edit("<p:e/>", "<p:e/>--><p:e/>")}},
                    EditCase{"HalfAnElement", {Edit("<p:t>one", "one")}},
                    EditCase{"EarlyEnd", {Edit("one", "one</p:t></p:sp><p:sp><p:t>two")}},
                    EditCase{"ElementThatTakesOthersIn", {Edit("<p:e/>", "<p:e>"), Edit("</p:l>", "</p:l></p:e>")}},
                    EditCase{"ElementThatIsOpened", {Edit("<p:t>", "<p:u/><p:t>"), Edit("</p:t>", "</p:t><p:u/>")}},
                    EditCase{"TagThatBecomesTwo", {Edit("<p:l r:id=\"a\">", "<p:l r:id=\"a\"><p:m/>")}},
                    EditCase{"OtherTag", {Edit("<p:l r:id=\"a\">", "<p:m>"), Edit("</p:l>", "</p:m>")}},
                    EditCase{"UndeclaredPrefix", {Edit("one", "<q:x/>")}},
                    EditCase{"UndeclaredAttribute", {Edit("<p:e/>", "<p:e q:id=''/>")}},
                    EditCase{"DeclaredElsewhere", {Edit("one", "<q:x xmlns:q='urn:q'/>"), Edit("<p:e/>", "<q:e/>")}},
                    EditCase{"SameAttributeTwice", {Edit("<p:e/>", "<p:e xmlns:s='urn:r' r:id='1' s:id='2'/>")}}),
    [](const auto& tested) { return tested.param.name; });

TEST(EditedPart, SaysOfAPartWithAnUndeclaredPrefixThatTheFileIsDamaged)
{
    const std::string damaged = "<p:sld xmlns:p=\"urn:p\"><q:t>one</q:t></p:sld>";
    const builtin::XmlDocument document(damaged, "a part", builtin::Limits::Default());

    const auto edit = [&] {
        const std::size_t begin = damaged.find("one");
        builtin::EditedPart(document, {{begin, begin + 3, "two"}}, "a part", builtin::Limits::Default());
    };

    EXPECT_THAT(RaisedBy(edit), FailsWith(FailureNumber::FileCorrupt,
                                          "The file is damaged: a part: the prefix of \"q:t\" is not declared"));
}

}  // namespace
}  // namespace tessarine::test
