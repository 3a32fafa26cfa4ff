#include "FindAndReplaceProgramTest.h"

#include <filesystem>

#include <gmock/gmock.h>

// What files, links and languages have on Linux alone, or are set by there.

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;

using FindAndReplaceProgramPosixTest = FindAndReplaceProgramTest;

TEST_F(FindAndReplaceProgramPosixTest, RevisionRaisesTheNumberInTheProperty)
{
    program.environment["LC_ALL"] = "C.UTF-8";
    Write(u"decks/b.pptx", Deck().Slide(Title(u"x")).Custom(u"Revision", "lpwstr", u"3"));

    program.Run(
        {"replace", "--find", "none", "--with", "x", "--revision", "revision", "--revision-by", "0.5", "decks/b.pptx"});

    EXPECT_THAT(program.Run({"find", "--find", "3.5", "--in", "custom-properties", "decks/b.pptx"}).output,
                HasSubstr("\"3.5\"  custom-properties 1\n"));
}

TEST_F(FindAndReplaceProgramPosixTest, NamesAFileThatIsNotUtf8ByItsBytes)
{
    const std::string name = "caf\xE9.pptx";
    program.folder.Write(FromUtf8(name), Deck().Slide(Title(u"Fabrikam")).Bytes());

    const Outcome text = program.Run({"find", "--find", "Fabrikam", name});
    const Outcome json = program.Run({"find", "--find", "Fabrikam", "--format", "json", name});

    EXPECT_THAT(text.output, testing::StartsWith(name + ": 1 found\n"));
    EXPECT_THAT(json.output, testing::StartsWith("{\"version\":1,\"file\":\"caf\uFFFD.pptx\",\"status\":1"));
}

TEST_F(FindAndReplaceProgramPosixTest, SaysHowManyLinkedFoldersItLeftOut)
{
    program.folder.Write(u"more/c.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());
    std::filesystem::create_directory_symlink("../more", ToUtf8(program.folder.PathOf(u"decks/link")));

    const Outcome without = program.Run({"find", "--find", "Fabrikam", "--recurse", "--format", "json", "decks"});
    const Outcome with = program.Run({"find", "--find", "Fabrikam", "--recurse", "--follow", "decks"});

    EXPECT_THAT(without.output,
                HasSubstr("\"skippedLinks\":1,\"warnings\":[\"1 linked folder was left out; --follow takes it\"]}}\n"));
    EXPECT_EQ(without.error, "tessarine-batch: 1 linked folder was left out; --follow takes it\n");
    EXPECT_EQ(without.status, 0);
    EXPECT_THAT(with.output, HasSubstr("decks/link/c.pptx: 1 found\n"));
    EXPECT_EQ(with.error, "");
}

TEST_F(FindAndReplaceProgramPosixTest, PowerPointIsRefusedWhereThereIsNone)
{
    const std::string before = ContentOf(PathOf(u"decks/a.pptx"));

    const Outcome outcome =
        program.Run({"replace", "--find", "2023", "--with", "2024", "--engine", "powerpoint", "decks"});

    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.error,
              "tessarine-batch: --engine powerpoint: there is only the built-in engine on this system\n");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(ContentOf(PathOf(u"decks/a.pptx")), before);
}

}  // namespace
}  // namespace tessarine::test
