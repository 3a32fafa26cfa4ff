#pragma once

#include <span>
#include <string>
#include <string_view>

#include "batch/BatchCall.h"

namespace tessarine::batch
{

/// The commands that an option belongs to, as bits.
using CommandSet = unsigned;
constexpr CommandSet Only(Command command)
{
    return 1u << static_cast<unsigned>(command);
}
inline constexpr CommandSet Runs = Only(Command::Find) | Only(Command::Replace);
inline constexpr CommandSet JobCommands = Only(Command::Run) | Only(Command::JobShow) | Only(Command::JobMake);
inline constexpr CommandSet ListCommands = Only(Command::ListConvert);
inline constexpr CommandSet DescribesJob = Runs | Only(Command::JobMake);
inline constexpr CommandSet TakesFiles = Runs | Only(Command::Restore) | Only(Command::Clean);
inline constexpr CommandSet EveryCommand = TakesFiles | JobCommands | ListCommands;

/// What the options say before they are checked together.
struct OptionValues {
    BatchCall call;
    std::vector<String> finds;
    std::vector<String> withs;
    bool countGiven = false;
    bool noCountGiven = false;
    bool revisionByGiven = false;
};

/// One option: everything that parsing and help know about it stands here.
struct OptionRow {
    std::string_view name;      ///< With its two dashes.
    std::string_view argument;  ///< Name of its argument in the help; empty for a switch.
    bool repeatable;
    CommandSet commands;
    std::string_view group;  ///< Heading in the help.
    std::string_view help;   ///< Lines of at most 86 characters.
    /// Takes the argument as it was typed; refuses (Refusal.h) one that is not valid. Null for `--help`.
    void (*apply)(OptionValues& values, const std::string& argument);
};

/// All options in the order of the help.
std::span<const OptionRow> OptionTable();

}  // namespace tessarine::batch
