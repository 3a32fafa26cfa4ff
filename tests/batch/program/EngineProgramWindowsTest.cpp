#include <gmock/gmock.h>

#include "FindAndReplaceProgramTest.h"

// The engines where there could be a PowerPoint, and none is installed.

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;

using EngineProgramTest = FindAndReplaceProgramTest;

TEST_F(EngineProgramTest, FallsBackToTheBuiltInEngineAndSaysSo)
{
    const Outcome text = program.Run({"find", "--find", "2023", "decks"});
    const Outcome json = program.Run({"find", "--find", "2023", "--format", "json", "decks"});

    EXPECT_EQ(text.output,
              "Engine: built-in\n"
              "decks\\a.pptx: 1 found\n"
              "    \"2023\"  slides 1\n"
              "\n"
              "2 files: 1 with hits, 1 without, 0 failed; 1 occurrence found\n");
    EXPECT_EQ(text.error, "");
    EXPECT_EQ(text.status, 0);
    EXPECT_THAT(json.output, HasSubstr("\n{\"version\":1,\"summary\":{\"engine\":\"builtin\",\"files\":2,"));
    EXPECT_EQ(json.status, 0);
}

TEST_F(EngineProgramTest, PowerPointThatIsNotInstalledIsRefused)
{
    const std::string before = ContentOf(PathOf(u"decks/a.pptx"));

    for (const char* format : {"text", "json"}) {
        const Outcome outcome = program.Run({"replace", "--find", "2023", "--with", "2024", "--backup", "--engine",
                                             "powerpoint", "--format", format, "decks"});

        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.error,
                  "tessarine-batch: --engine powerpoint: PowerPoint can't be started: ActiveX component can't create "
                  "object (Automation error, 0x800401F3)\n");
        EXPECT_EQ(outcome.status, 2);
    }
    EXPECT_EQ(ContentOf(PathOf(u"decks/a.pptx")), before);
    EXPECT_EQ(ContentOf(PathOf(u"decks/a..bak")), "<missing>");
}

}  // namespace
}  // namespace tessarine::test
