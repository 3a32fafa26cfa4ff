#include "batch/Output.h"

#include <cerrno>
#include <cstdlib>

#include "batch/LineText.h"
#include "batch/Terminal.h"
#include "batch/WriteText.h"

namespace tessarine::batch
{

namespace
{

// To the first column, then erase to the end of the line.
constexpr std::string_view eraseLine = "\r\x1b[K";

bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

std::size_t CodePoints(std::string_view text)
{
    std::size_t count = 0;
    for (const char byte : text)
        count += IsContinuation(byte) ? 0 : 1;
    return count;
}

void Put(std::FILE* file, std::string_view text)
{
    // A failure is passed over: notes and progress are not the report, and a run needs no terminal.
    static_cast<void>(WriteText(file, text));
}

}  // namespace

Output::Output(std::FILE* report, std::FILE* progress, ColorUse colors, bool isQuiet)
    : report_(report),
      progress_(progress),
      colors_(UsesColors(report)),  // asked in any case: on Windows it makes the console take them
      showsProgress_(!isQuiet && CanRewriteLine(progress))
{
    if (colors != ColorUse::Auto)
        colors_ = colors == ColorUse::Always;
}

void Output::Write(std::string_view piece)
{
    if (piece.empty())
        return;
    // Report and progress may share a terminal; the line that is to be rewritten must be gone first.
    EndProgress();
    errno = 0;
    if (!WriteText(report_, piece)) {
        failed_ = true;
        readerIsGone_ = readerIsGone_ || errno == EPIPE;
    }
}

void Output::Note(std::string_view line)
{
    EndProgress();
    Put(progress_, Escaped(FromUtf8(line)) + "\n");
}

void Output::Progress(std::string_view text, std::string_view path)
{
    if (!showsProgress_)
        return;
    // One cell stays free: some terminals wrap a full line, and only its last row could be erased then.
    const std::size_t columns = TerminalColumns(progress_) - 1;
    const std::string start = std::string(text) + " ";
    const std::string shown = Escaped(FromUtf8(path));
    // On a very narrow terminal the path is worth more.
    constexpr std::size_t leastForPath = 12;
    const std::size_t taken = CodePoints(start);
    const std::string line =
        taken + leastForPath > columns ? FittedTo(start + shown, columns) : start + FittedTo(shown, columns - taken);
    Put(progress_, std::string(eraseLine) + line);
    progressShown_ = true;
}

void Output::EndProgress()
{
    if (!progressShown_)
        return;
    Put(progress_, eraseLine);
    progressShown_ = false;
}

std::string FittedTo(std::string_view text, std::size_t columns)
{
    // Three points of ASCII, as not every terminal has the one character for them.
    constexpr std::string_view mark = "...";
    std::size_t surplus = CodePoints(text);
    if (surplus <= columns)
        return std::string(text);
    if (columns <= mark.size())
        return std::string(mark.substr(0, columns));

    // Cut at the front, as the end of a path tells more, and never inside a character.
    surplus -= columns - mark.size();
    std::size_t at = 0;
    while (at < text.size() && (surplus > 0 || IsContinuation(text[at]))) {
        if (!IsContinuation(text[at]))
            --surplus;
        ++at;
    }
    return std::string(mark) + std::string(text.substr(at));
}

}  // namespace tessarine::batch
