#pragma once

#include <span>
#include <string_view>

#include "batch/BatchCall.h"

namespace tessarine::batch
{

/// One command: what help and the man page say about it. Texts that end in a line end are whole lines.
struct CommandRow {
    std::string_view name;  ///< As it is typed, in one word or two.
    std::string_view arguments;
    std::string_view purpose;   ///< One line, for the list of commands.
    std::string_view text;      ///< What one should know before using it.
    std::string_view examples;  ///< Calls, each with an indented line or none that explains it.
};

/// All commands, in the order of Command.
std::span<const CommandRow> CommandTable();

const CommandRow& RowOf(Command command);
std::string_view NameOf(Command command);  ///< As it is typed, in one word or two.

}  // namespace tessarine::batch
