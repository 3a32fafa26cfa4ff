#include "batch/Output.h"

#include <memory>

#include <gtest/gtest.h>

namespace tessarine::batch
{
namespace
{

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File TemporaryFile()
{
    return {std::tmpfile(), &std::fclose};
}

std::string ContentOf(std::FILE* file)
{
    std::rewind(file);
    std::string content(1024, '\0');
    content.resize(std::fread(content.data(), 1, content.size(), file));
    return content;
}

TEST(Output, KeepsProgressAndColorsOutOfFiles)
{
    const File report = TemporaryFile();
    const File notes = TemporaryFile();
    Output output(report.get(), notes.get());

    output.Progress("[1/2] 0%", "a.pptx");
    output.Write("a line\n");
    output.EndProgress();
    output.Note("a note");

    EXPECT_FALSE(output.colors());
    EXPECT_EQ(ContentOf(report.get()), "a line\n");
    EXPECT_EQ(ContentOf(notes.get()), "a note\n");
}

TEST(Output, TakesColorsAsTheCallSays)
{
    const File file = TemporaryFile();

    EXPECT_TRUE(Output(file.get(), file.get(), ColorUse::Always).colors());
    EXPECT_FALSE(Output(file.get(), file.get(), ColorUse::Never).colors());
}

TEST(Output, EscapesControlsInNotesOnly)
{
    const File report = TemporaryFile();
    const File notes = TemporaryFile();
    Output output(report.get(), notes.get());

    output.Write("\x1B[1mbold\x1B[0m\n");
    output.Note("\x1B[2J two\nlines \u202E");

    EXPECT_EQ(ContentOf(report.get()), "\x1B[1mbold\x1B[0m\n");
    EXPECT_EQ(ContentOf(notes.get()), "\\x1B[2J two\\nlines \\u202E\n");
}

TEST(Output, RemembersThatAPieceCouldNotBeWritten)
{
    const File full(std::fopen("/dev/full", "w"), &std::fclose);
    const File notes = TemporaryFile();
    Output output(full.get(), notes.get());

    EXPECT_FALSE(output.failed());
    output.Write("a line\n");
    EXPECT_TRUE(output.failed());
}

TEST(FittedTo, CutsTheStartOfALongLine)
{
    EXPECT_EQ(FittedTo("short", 5), "short");
    EXPECT_EQ(FittedTo("folder/file.pptx", 12), "...file.pptx");
    EXPECT_EQ(FittedTo("folder/Zürich.pptx", 14), "...Zürich.pptx");
    EXPECT_EQ(FittedTo("long", 3), "...");
    EXPECT_EQ(FittedTo("long", 0), "");
}

}  // namespace
}  // namespace tessarine::batch
