#include "model/ProjectFileTest.h"

namespace tessarine
{
namespace
{

using namespace std::string_literals;

class ProjectText : public ProjectFileTest, public testing::WithParamInterface<std::pair<const char*, String>>
{
};

TEST_P(ProjectText, IsTheSameAfterASaveAndALoad)
{
    const String& text = GetParam().second;
    const ProjectOwner saved;
    AddItem(saved, text, text + text);
    saved->options->RevisionDocumentPropertyName = text;
    saved->CustomProperies->Add(text, text);
    Save(saved, path_);
    const ProjectOwner project;

    ASSERT_TRUE(Load(project, path_).succeeded);

    EXPECT_EQ(project->FindAndReplaceList->Item(1)->FindWhat, text);
    EXPECT_EQ(project->FindAndReplaceList->Item(1)->ReplaceWith, text + text);
    EXPECT_EQ(project->options->RevisionDocumentPropertyName, text);
    EXPECT_EQ(project->CustomProperies->Item(1)->ProperyName, text);
    EXPECT_EQ(project->CustomProperies->Item(1)->PropertyValue, text);
}

INSTANTIATE_TEST_SUITE_P(
    Unicode, ProjectText,
    testing::Values(std::pair("Empty", u""s), std::pair("Emoji", u"👩‍👩‍👧‍👦 👍🏽 🇩🇪"s),
                    std::pair("RightToLeft", u"שלום \u202Eعرض الشركة\u202C"s),
                    std::pair("Chinese", u"製品紹介 𠮷野家"s),
                    std::pair("CombiningMarks", u"e\u0301 Z\u0351\u0310\u0300 क्षि"s),
                    std::pair("LineBreaks", u"a\rb\nc\r\nd\ve\u2028f\u2029"s), std::pair("Tabs", u"\ta\t\tb\t"s),
                    std::pair("Quotes", u"\"a\" 'b' „c“ «d»"s), std::pair("Nul", u"a\0b\0"s),
                    std::pair("Noncharacters", u"\uFEFF\uFFFE\uFFFF"s), std::pair("LoneHigh", u"a\xD83D!"s),
                    std::pair("LoneLow", u"\xDE00"s), std::pair("WrongOrder", u"\xDE00\xD83D"s),
                    std::pair("ForeignFileName", FromUtf8("caf\xE9.pptx")), std::pair("Blanks", u"  a  "s),
                    std::pair("Of255", String(255, u'漢')), std::pair("Of32767", String(32767, u'é'))),
    [](const auto& text) { return std::string(text.param.first); });

}  // namespace
}  // namespace tessarine
