#pragma once

#include <cstddef>
#include <cstdio>

/// What a stream can do when a terminal stands behind it. For pipes and files all answers are no.
namespace tessarine::batch
{

/// A terminal, unless the environment says NO_COLOR (with any value but the empty one) or TERM=dumb.
bool UsesColors(std::FILE* stream);

/// A terminal on which a line can be rewritten in place; on Windows a console that follows the usual sequences.
bool CanRewriteLine(std::FILE* stream);

/// Width of the terminal in character cells; 80 when it does not tell.
std::size_t TerminalColumns(std::FILE* stream);

}  // namespace tessarine::batch
