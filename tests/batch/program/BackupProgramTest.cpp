#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/program/Program.h"
#include "support/Deck.h"

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;

class BackupProgramTest : public testing::Test
{
protected:
    BackupProgramTest()
    {
        program.folder.Write(u"decks/a.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());
        program.folder.Write(u"decks/b.pptx", Deck().Slide(Title(u"Litware")).Bytes());
    }

    std::string Content(StringView name) const { return ContentOf(program.folder.PathOf(name)); }

    Program program;
};

TEST_F(BackupProgramTest, RestoreUndoesAReplaceWithBackup)
{
    const std::string before = Content(u"decks/a.pptx");
    program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks/a.pptx"});
    ASSERT_NE(Content(u"decks/a.pptx"), before);

    const Outcome outcome = program.Run({"restore", "--verbose", "decks"});

    EXPECT_EQ(outcome.output, Native("decks/a.pptx: restored from decks/a..bak\n"
                                     "decks/b.pptx: no backup\n"
                                     "\n"
                                     "2 files: 1 restored, 1 without a backup, 0 failed\n"));
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(Content(u"decks/a.pptx"), before);
    EXPECT_EQ(Content(u"decks/a..bak"), before);
}

TEST_F(BackupProgramTest, CleanDeletesTheBackups)
{
    program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks"});

    const Outcome outcome = program.Run({"clean", "--format", "json", "decks", "gone.pptx"});

    constexpr auto nothingElse = R"("older":[],"warnings":[]})";
    EXPECT_EQ(
        outcome.output,
        NativeInJson(
            R"({"version":1,"file":"decks/a.pptx","backup":"decks/a..bak","status":1,"state":"removed","error":"",)") +
            nothingElse + "\n" +
            NativeInJson(R"({"file":"decks/b.pptx","backup":"decks/b..bak","status":1,"state":"removed","error":"",)") +
            nothingElse + "\n" +
            R"({"file":"gone.pptx","backup":"","status":0,"state":"failed","error":"File not found.",)" + nothingElse +
            "\n"
            R"({"version":1,"summary":{"files":3,"removed":2,"unchanged":0,"failed":1,"warnings":[]}})"
            "\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(Content(u"decks/a..bak"), "<missing>");
}

TEST_F(BackupProgramTest, ChangesNoFileWhoseBackupWouldOverwriteAnother)
{
    program.folder.Write(u"decks/a.pptm", Deck().Kind(DeckKind::Pptm).Slide(Title(u"Fabrikam")).Bytes());
    const std::string before = Content(u"decks/a.pptx");

    const Outcome outcome = program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks"});

    EXPECT_EQ(
        outcome.output,
        EngineLine +
            Native("decks/a.pptm: changed, 1 replaced\n"
                   "    \"Fabrikam\" -> \"Contoso\"  slides 1\n"
                   "decks/a.pptx: failed: Its backup would overwrite another file of this job, or that file's backup: "
                   "decks/a..bak\n"
                   "\n"
                   "3 files: 1 changed, 1 unchanged, 1 failed; 1 occurrence replaced\n"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(Content(u"decks/a.pptx"), before);
}

TEST_F(BackupProgramTest, KeepsTheOriginalOverSeveralRuns)
{
    const std::string original = Content(u"decks/a.pptx");
    program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks/a.pptx"});

    const Outcome second =
        program.Run({"replace", "--find", "Contoso", "--with", "Litware", "--backup", "decks/a.pptx"});

    EXPECT_EQ(
        second.output,
        EngineLine +
            "decks/a.pptx: changed, 1 replaced\n"
            "    \"Contoso\" -> \"Litware\"  slides 1\n"
            "    warning: keeps the backup of an earlier run, decks/a..bak; what it held before this run is in no "
            "backup\n"
            "\n"
            "1 file: 1 changed, 0 unchanged, 0 failed; 1 occurrence replaced\n");
    EXPECT_EQ(second.status, 0);
    EXPECT_EQ(Content(u"decks/a..bak"), original);
}

TEST_F(BackupProgramTest, NumberedBackupsKeepEveryState)
{
    const std::string first = Content(u"decks/a.pptx");
    program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup=numbered", "decks/a.pptx"});
    const std::string second = Content(u"decks/a.pptx");
    program.Run({"replace", "--find", "Contoso", "--with", "Litware", "--backup=numbered", "decks/a.pptx"});

    EXPECT_EQ(Content(u"decks/a..bak"), first);
    EXPECT_EQ(Content(u"decks/a..bak.2"), second);
    EXPECT_EQ(program.Run({"restore", "decks/a.pptx"}).output,
              "decks/a.pptx: restored from decks/a..bak.2\n"
              "\n"
              "1 file: 1 restored, 0 without a backup, 0 failed\n");
    EXPECT_EQ(Content(u"decks/a.pptx"), second);
    EXPECT_EQ(program.Run({"clean", "decks/a.pptx"}).output,
              "decks/a.pptx: removed decks/a..bak.2 and 1 older one\n"
              "\n"
              "1 file: 2 backups removed, 0 without a backup, 0 failed\n");
    EXPECT_EQ(Content(u"decks/a..bak"), "<missing>");
    EXPECT_EQ(Content(u"decks/.tessarine-backups"), "<missing>");
}

TEST_F(BackupProgramTest, APersonsFileIsNeitherOverwrittenNorRestoredNorCleaned)
{
    const std::string original = Content(u"decks/a.pptx");
    program.folder.Write(u"decks/a..bak", "mine");

    const Outcome replaced =
        program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks/a.pptx"});
    const Outcome restored = program.Run({"restore", "decks/a.pptx"});
    const Outcome cleaned = program.Run({"clean", "decks/a.pptx"});

    EXPECT_THAT(replaced.output,
                HasSubstr("decks/a.pptx: failed: The file decks/a..bak is in the way of its backup and "
                          "was not made by tessarine-batch"));
    EXPECT_EQ(replaced.status, 1);
    EXPECT_THAT(restored.output, HasSubstr("decks/a.pptx: failed: The file decks/a..bak was not made by this version"));
    EXPECT_EQ(restored.status, 1);
    EXPECT_THAT(cleaned.output, HasSubstr("decks/a.pptx: no backup\n    warning: decks/a..bak was not made by"));
    EXPECT_EQ(cleaned.status, 0);
    EXPECT_EQ(Content(u"decks/a..bak"), "mine");
    EXPECT_EQ(Content(u"decks/a.pptx"), original);
}

TEST_F(BackupProgramTest, BackupsOfAnOlderVersionAreTakenOnRequest)
{
    const std::string original = Content(u"decks/a.pptx");
    program.folder.Write(u"decks/a..bak", original);
    program.folder.Write(u"decks/a.pptx", "changed");

    EXPECT_EQ(program.Run({"restore", "--any-backup", "decks/a.pptx"}).status, 0);

    EXPECT_EQ(Content(u"decks/a.pptx"), original);
}

TEST_F(BackupProgramTest, AFileThatDoesNotOpenGetsNoBackup)
{
    program.folder.Write(u"decks/c.pptx", "not a presentation");

    program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks"});

    EXPECT_EQ(Content(u"decks/c..bak"), "<missing>");
    EXPECT_NE(Content(u"decks/a..bak"), "<missing>");
}

TEST_F(BackupProgramTest, ARunThatFindsMakesNoBackup)
{
    program.Run({"job", "make", "--find", "Fabrikam", "--with", "Contoso", "--backup", "-o", "job.tsq", "decks"});

    EXPECT_EQ(program.Run({"run", "job.tsq"}).status, 0);
    EXPECT_EQ(Content(u"decks/a..bak"), "<missing>");
    EXPECT_EQ(program.Run({"run", "job.tsq", "--replace"}).status, 0);
    EXPECT_NE(Content(u"decks/a..bak"), "<missing>");
}

TEST_F(BackupProgramTest, ARunThatFindsLeavesEarlierBackupsAlone)
{
    const std::string original = Content(u"decks/a.pptx");
    program.Run({"job", "make", "--find", "Fabrikam", "--with", "Contoso", "--backup", "-o", "job.tsq", "decks"});
    program.Run({"run", "job.tsq", "--replace"});
    ASSERT_EQ(Content(u"decks/a..bak"), original);
    const std::string record = Content(u"decks/.tessarine-backups");

    EXPECT_EQ(program.Run({"run", "job.tsq"}).status, 0);
    EXPECT_EQ(program.Run({"find", "--find", "Contoso", "decks"}).status, 0);

    EXPECT_NE(Content(u"decks/a.pptx"), original);
    EXPECT_EQ(Content(u"decks/a..bak"), original);
    EXPECT_EQ(Content(u"decks/.tessarine-backups"), record);
}

TEST_F(BackupProgramTest, RestoresTwoPresentationsOfOneName)
{
    program.folder.Write(u"decks/a.pptm", Deck().Kind(DeckKind::Pptm).Slide(Title(u"Fabrikam macros")).Bytes());
    const std::string pptm = Content(u"decks/a.pptm");
    const std::string pptx = Content(u"decks/a.pptx");
    program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup=numbered", "decks"});
    ASSERT_NE(Content(u"decks/a.pptm"), pptm);
    ASSERT_NE(Content(u"decks/a.pptx"), pptx);

    const Outcome restored = program.Run({"restore", "decks"});

    EXPECT_EQ(restored.status, 0) << restored.output << restored.error;
    EXPECT_EQ(Content(u"decks/a.pptm"), pptm);
    EXPECT_EQ(Content(u"decks/a.pptx"), pptx);
    EXPECT_EQ(program.Run({"clean", "decks"}).status, 0);
    EXPECT_EQ(Content(u"decks/a..bak"), "<missing>");
    EXPECT_EQ(Content(u"decks/a..bak.2"), "<missing>");
}

TEST_F(BackupProgramTest, RestoresTheOneOfTwoThatHasABackup)
{
    program.folder.Write(u"decks/a.pptm", Deck().Kind(DeckKind::Pptm).Slide(Title(u"Fabrikam macros")).Bytes());
    const std::string pptm = Content(u"decks/a.pptm");
    const std::string pptx = Content(u"decks/a.pptx");
    program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks/a.pptx"});

    const Outcome restored = program.Run({"restore", "--verbose", "decks"});

    EXPECT_THAT(restored.output, HasSubstr(Native("decks/a.pptm: no backup\n"
                                                  "decks/a.pptx: restored from decks/a..bak\n")));
    EXPECT_EQ(restored.status, 0);
    EXPECT_EQ(Content(u"decks/a.pptm"), pptm);
    EXPECT_EQ(Content(u"decks/a.pptx"), pptx);
}

TEST_F(BackupProgramTest, ARunTakesTheOptionOfItsCallBesidesTheJobs)
{
    program.Run({"job", "make", "--find", "Fabrikam", "--with", "Contoso", "-o", "job.tsq", "decks"});

    program.Run({"run", "job.tsq", "--replace", "--backup=numbered"});
    program.Run({"run", "job.tsq", "--replace", "--backup=numbered"});

    EXPECT_NE(Content(u"decks/a..bak.2"), "<missing>");
}

TEST_F(BackupProgramTest, RestoreGivesAReadOnlyFileBackAsItWas)
{
    const String deck = program.folder.PathOf(u"decks/a.pptx");
    const std::string original = ContentOf(deck);
    SetMode(deck, 0440);
    const mode_t mode = ModeOf(deck);
    program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "--read-only", "decks/a.pptx"});
    ASSERT_NE(ContentOf(deck), original);

    const Outcome refused = program.Run({"restore", "decks/a.pptx"});
    const Outcome restored = program.Run({"restore", "--read-only", "decks/a.pptx"});

    EXPECT_THAT(refused.output, HasSubstr("decks/a.pptx: failed: Read Only File.\n"));
    EXPECT_EQ(restored.status, 0);
    EXPECT_EQ(ContentOf(deck), original);
    EXPECT_EQ(ModeOf(deck), mode);
}

}  // namespace
}  // namespace tessarine::test
