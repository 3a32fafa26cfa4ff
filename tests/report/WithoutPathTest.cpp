#include "report/WithoutPath.h"

#include <gtest/gtest.h>

namespace tessarine
{
namespace
{

struct ReasonCase {
    const char* name;
    StringView text;
    StringView expected;
};

class WithoutPathOf : public testing::TestWithParam<ReasonCase>
{
};

TEST_P(WithoutPathOf, AReasonReadsWellBesideIt)
{
    EXPECT_EQ(ToUtf8(WithoutPath(GetParam().text, u"/d/a.pptx")), ToUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, WithoutPathOf,
    testing::Values(
        ReasonCase{"InFront", u"/d/a.pptx: The file is damaged", u"The file is damaged"},
        ReasonCase{"AtTheEnd", u"The file ends too early: /d/a.pptx", u"The file ends too early"},
        ReasonCase{"AsSubject", u"The file /d/a.pptx is in the way", u"The file is in the way"},
        ReasonCase{"AsQuotedSubject", u"\"/d/a.pptx\" is in use by another run", u"The file is in use by another run"},
        ReasonCase{"AsQuotedObject", u"Can't save \"/d/a.pptx\": Permission denied",
                   u"Can't save it: Permission denied"},
        ReasonCase{"AfterANote", u"Can't open (it is locked) \"/d/a.pptx\": Text file busy",
                   u"Can't open (it is locked): Text file busy"},
        ReasonCase{"AsObject", u"Permission denied: could not open /d/a.pptx", u"Permission denied: could not open it"},
        ReasonCase{"AsObjectWithANote", u"Permission denied: could not write /d/a.pptx (it is read-only)",
                   u"Permission denied: could not write it (it is read-only)"},
        ReasonCase{"AtTheEndOfASentence", u"This may be that of /d/a.pptx. Look there.",
                   u"This may be that of it. Look there."},
        ReasonCase{"Twice", u"/d/a.pptx: Can't read \"/d/a.pptx\": Input/output error",
                   u"Can't read it: Input/output error"},
        ReasonCase{"Nowhere", u"File not found.", u"File not found."}),
    [](const auto& tested) { return tested.param.name; });

TEST(WithoutPathOfAFile, KeepsLongerPaths)
{
    for (const StringView text :
         {StringView(u"The file /d/a.pptx.bak is in the way"), StringView(u"could not open /other/d/a.pptx"),
          StringView(u"\"/d/a.pptx/b\" is no folder"),
          StringView(u"The backup /d/a.pptx.bak may be that of /d/a.pptm")})
        EXPECT_EQ(WithoutPath(text, u"/d/a.pptx"), String(text));
}

TEST(WithoutPathOfAFile, LeavesATextAloneWhenThereIsNoPath)
{
    EXPECT_EQ(WithoutPath(u": could not open  (it)", {}), u": could not open  (it)");
}

}  // namespace
}  // namespace tessarine
