#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/CommandTable.h"
#include "batch/Completions.h"
#include "batch/ManPage.h"
#include "batch/OptionTable.h"

namespace tessarine::batch
{
namespace
{

using testing::HasSubstr;
using testing::Not;

/// As groff wants it: a plain dash could be set as a hyphen.
std::string WithDashes(std::string_view text)
{
    std::string escaped;
    for (const char c : text)
        escaped += c == '-' ? "\\-" : std::string(1, c);
    return escaped;
}

TEST(ManPage, HasEachCommandAndOptionOnce)
{
    const std::string page = ManPage();

    for (const CommandRow& command : CommandTable())
        EXPECT_THAT(page, HasSubstr("\n.SS " + std::string(command.name) + "\n"));
    for (const OptionRow& row : OptionTable()) {
        const std::string letter = row.letter ? std::string("\\fB\\-") + row.letter + "\\fR, " : "";
        const std::string entry = "\n.TP\n" + letter + "\\fB" + WithDashes(row.name) + "\\fR";
        const std::size_t at = page.find(entry);
        EXPECT_NE(at, std::string::npos) << row.name;
        EXPECT_EQ(page.find(entry + "\n", at + 1), std::string::npos) << row.name;
    }
}

TEST(ManPage, TellsTheCommandsOfAnOption)
{
    EXPECT_THAT(ManPage(), HasSubstr("\n.TP\n\\fB\\-n\\fR, \\fB\\-\\-dry\\-run\\fR\n"
                                     "Report what a replace would do, and write nothing: no file, no backup, no date.\n"
                                     ".br\nOf replace, run.\n"));
}

TEST(ManPage, KeepsIndentedLinesApartAndDotsAsText)
{
    const std::string page = ManPage();

    EXPECT_THAT(page, HasSubstr("\n.nf\n  slides                   titles and other placeholders\n"));
    EXPECT_THAT(page, Not(HasSubstr("\n.csv")));
    EXPECT_THAT(page, HasSubstr("\n\\&.csv"));
}

TEST(Completions, OfferTheWordsOfAnArgument)
{
    EXPECT_THAT(BashCompletion(), HasSubstr("        --format)\n"
                                            "            COMPREPLY=($(compgen -W 'text json' -- \"$word\"))\n"));
    EXPECT_THAT(ZshCompletion(), HasSubstr("'--color=[Use colors\\: auto (the default), always or never]:WHEN:"
                                           "(auto always never)'"));
    EXPECT_THAT(FishCompletion(),
                HasSubstr("-n '__tessarine_batch_command find' -l engine -x -a 'powerpoint builtin' -d "));
}

TEST(Completions, OfferFilesForPathsAlone)
{
    EXPECT_THAT(FishCompletion(), HasSubstr(" -l report -r -F -d "));
    EXPECT_THAT(FishCompletion(), HasSubstr(" -l find -x -d "));
    EXPECT_THAT(ZshCompletion(),
                HasSubstr("'*--report=[Keep the report in FILE, .html or .csv; repeatable]:FILE:_files'"));
    EXPECT_THAT(BashCompletion(), Not(HasSubstr("|--report|")));
}

}  // namespace
}  // namespace tessarine::batch
