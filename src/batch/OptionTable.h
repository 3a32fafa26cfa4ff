#pragma once

#include <span>
#include <string>
#include <string_view>

#include "batch/BatchCall.h"

namespace tessarine::batch
{

/// The commands that an option belongs to, as bits.
using CommandSet = unsigned;
/// The set of one command alone.
constexpr CommandSet Only(Command command)
{
    return 1u << static_cast<unsigned>(command);
}
/// They take files through a run by the options of the call.
inline constexpr CommandSet Runs = Only(Command::Find) | Only(Command::Replace);
/// They may change presentations.
inline constexpr CommandSet Saves = Only(Command::Replace) | Only(Command::Run) | Only(Command::Restore);
/// They work with project files.
inline constexpr CommandSet JobCommands = Only(Command::Run) | Only(Command::JobShow) | Only(Command::JobMake);
inline constexpr CommandSet ListCommands = Only(Command::ListConvert);     ///< They work with list files alone.
inline constexpr CommandSet DescribesJob = Runs | Only(Command::JobMake);  ///< Their options make up a job.
/// Their files come from the command line.
inline constexpr CommandSet TakesFiles = Runs | Only(Command::Restore) | Only(Command::Clean);
inline constexpr CommandSet Merges = Only(Command::ReportMerge);  ///< It makes reports of reports.
inline constexpr CommandSet EveryCommand = TakesFiles | JobCommands | ListCommands | Merges;

/// What the options say before they are checked together.
struct OptionValues {
    BatchCall call;                ///< As far as the options tell it.
    std::vector<String> finds;     ///< Of --find, in the order given.
    std::vector<String> withs;     ///< Of --with; each belongs to the one of `finds` at its place.
    bool ignoreCaseGiven = false;  ///< It is the default, and contradicts --match-case.
    bool countGiven = false;       ///< Given together with --no-count it is refused.
    bool noCountGiven = false;
    bool revisionByGiven = false;
    bool contextGiven = false;
    bool maxHitsGiven = false;
};

/// One option: everything that parsing, help, the man page and completions know about it stands here.
struct OptionRow {
    std::string_view name;      ///< With its two dashes.
    char letter;                ///< Of the short form, "-r" for 'r'; NUL where there is none.
    std::string_view argument;  ///< Name of its argument in the help; empty for a switch.
    bool repeatable;            ///< Several times, with a value each. A switch always may.
    CommandSet commands;        ///< Those that take it; others refuse it by name.
    std::string_view group;     ///< Heading in the help.
    std::string_view brief;     ///< One line of at most 52 characters, for the short help and for completions.
    std::string_view help;      ///< Lines of at most 82 characters; empty where `brief` says all.
    /// Takes the argument as it was typed; refuses (Refusal.h) one that is not valid. Null for `--help`.
    void (*apply)(OptionValues& values, const std::string& argument);
    /// The one value that a switch may be given after an equals sign; empty for a switch that takes none. Without it
    /// `apply` gets the empty text.
    std::string_view variant = {};
    /// The words that the argument can be, with a blank between them; empty where it can be anything.
    std::string_view choices = {};

    std::string_view LongHelp() const { return help.empty() ? brief : help; }
    /// The argument is the path of a file.
    bool TakesFile() const { return argument == "FILE" || argument == "JOB.tsq"; }
};

/// All options in the order of the help.
std::span<const OptionRow> OptionTable();

}  // namespace tessarine::batch
