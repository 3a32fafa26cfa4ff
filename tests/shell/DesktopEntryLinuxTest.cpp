#include "shell/DesktopEntry.h"

#include <gmock/gmock.h>

#include <pugixml.hpp>

namespace tessarine
{
namespace
{

using testing::HasSubstr;

TEST(DesktopEntry, IsWrittenInFull)
{
    EXPECT_EQ(DesktopEntry({.path = "/opt/bin/tool",
                            .name = "tool",
                            .title = "The Tool",
                            .description = "Does it",
                            .keywords = "one;two;",
                            .mimeType = "application/x-it"}),
              "[Desktop Entry]\n"
              "Type=Application\n"
              "Version=1.0\n"
              "Name=The Tool\n"
              "Comment=Does it\n"
              "Exec=\"/opt/bin/tool\" %f\n"
              "TryExec=/opt/bin/tool\n"
              "Icon=tool\n"
              "StartupWMClass=tool\n"
              "Terminal=false\n"
              "Categories=Office;Presentation;\n"
              "Keywords=one;two;\n"
              "MimeType=application/x-it;\n");
}

TEST(DesktopEntry, EscapesWhatAReaderOfValuesWouldTakeForAnEscape)
{
    const std::string entry = DesktopEntry({"/a\\b/tool", "tool", " two\nlines", "a\tb\rc", "it;", "application/x-it"});

    EXPECT_THAT(entry, HasSubstr("\nName=\\stwo\\nlines\n"));
    EXPECT_THAT(entry, HasSubstr("\nComment=a\\tb\\rc\n"));
    EXPECT_THAT(entry, HasSubstr("\nTryExec=/a\\\\b/tool\n"));
}

struct ExecCase {
    const char* name;
    std::string path;
    std::string command;
};

class ExecCommands : public testing::TestWithParam<ExecCase>
{
};

TEST_P(ExecCommands, MeanThePathItself)
{
    EXPECT_EQ(ExecCommand(GetParam().path), GetParam().command);
}

INSTANTIATE_TEST_SUITE_P(Paths, ExecCommands,
                         testing::Values(ExecCase{"Plain", "/opt/tool", R"("/opt/tool")"},
                                         ExecCase{"Blanks", "/my programs/tool", R"("/my programs/tool")"},
                                         ExecCase{"Percent", "/100%f/tool", R"("/100%%f/tool")"},
                                         ExecCase{"Dollar", "/$HOME/tool", R"("/\\$HOME/tool")"},
                                         ExecCase{"DoubleQuote", "/a\"b/tool", R"("/a\\"b/tool")"},
                                         ExecCase{"SingleQuote", "/it's/tool", R"("/it's/tool")"},
                                         ExecCase{"Backtick", "/a`b/tool", R"("/a\\`b/tool")"},
                                         ExecCase{"Backslash", R"(/a\b/tool)", R"("/a\\\\b/tool")"},
                                         ExecCase{"LineBreak", "/a\nb/tool", R"("/a\nb/tool")"},
                                         ExecCase{"Letters", "/Präsentationen/tool", R"("/Präsentationen/tool")"}),
                         [](const auto& testCase) { return testCase.param.name; });

TEST(MimePackage, NamesTheTypeItsDescriptionAndItsFiles)
{
    const std::string text = MimePackage({"application/x-it", "It & <\"more\">", "it"});

    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(text.c_str()));
    const auto type = document.child("mime-info").child("mime-type");
    EXPECT_STREQ(document.child("mime-info").attribute("xmlns").value(),
                 "http://www.freedesktop.org/standards/shared-mime-info");
    EXPECT_STREQ(type.attribute("type").value(), "application/x-it");
    EXPECT_STREQ(type.child_value("comment"), "It & <\"more\">");
    EXPECT_STREQ(type.child("glob").attribute("pattern").value(), "*.it");
}

}  // namespace
}  // namespace tessarine
