#pragma once

#include <atomic>
#include <cstdio>
#include <string>
#include <string_view>

#include "batch/BatchCall.h"
#include "platform/String.h"

namespace tessarine::batch
{

/// Standard output and standard error together: whole pieces of the report, flushed one by one, and a progress line
/// that never mixes with them.
class Output
{
public:
    /// Borrows both streams. A quiet one shows no progress.
    Output(std::FILE* report, std::FILE* progress, ColorUse colors = ColorUse::Auto, bool isQuiet = false);

    /// Writes a piece of the report and flushes it. An empty piece leaves the progress on the screen.
    void Write(std::string_view piece);

    /// Writes a line for the user to standard error. Control characters in it, line ends included, are escaped here.
    void Note(std::string_view line);

    /// Shows what is being done, in place of the progress shown before. Only on a terminal; what doesn't fit is cut
    /// from the start of `path`. Control characters are escaped.
    void Progress(std::string_view text, std::string_view path);
    void EndProgress();  ///< Erases the line; Write and Note do so by themselves.

    /// By ColorUse: as a rule, standard output is a terminal, and the user has not switched colors off.
    bool colors() const { return colors_; }

    /// A piece of the report could not be written.
    bool failed() const { return failed_; }

    /// A piece of the report could not be written because whoever read it has gone, as "head" does after some lines.
    /// May be asked from any thread.
    bool readerIsGone() const { return readerIsGone_; }

private:
    std::FILE* report_;
    std::FILE* progress_;
    bool colors_ = false;
    bool showsProgress_ = false;
    bool progressShown_ = false;  // there is a line to erase
    bool failed_ = false;         // stays once a write of the report has failed
    std::atomic<bool> readerIsGone_ = false;
};

/// The part of a UTF-8 text that fits into `columns` character cells, counting a code point as one. Of a longer text
/// the start is cut away, and "..." stands there.
std::string FittedTo(std::string_view text, std::size_t columns);

}  // namespace tessarine::batch
