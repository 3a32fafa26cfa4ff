#include "batch/CommandLine.h"

#include <algorithm>
#include <optional>
#include <set>

#include <fmt/format.h>

#include "batch/CommandTable.h"
#include "batch/EndlessPairs.h"
#include "batch/Help.h"
#include "batch/LineText.h"
#include "batch/ListFiles.h"
#include "batch/Locations.h"
#include "batch/OptionTable.h"
#include "batch/PairFiles.h"
#include "batch/Refusal.h"
#include "batch/Suggestion.h"
#include "platform/Failure.h"
#include "run/JobInputs.h"

namespace tessarine::batch
{

namespace
{

constexpr int callNotValid = 2;
constexpr std::array<Command, 9> allCommands{Command::Find,    Command::Replace,     Command::Restore,
                                             Command::Clean,   Command::Run,         Command::JobShow,
                                             Command::JobMake, Command::ListConvert, Command::ReportMerge};

std::size_t WordsOf(Command command)
{
    return static_cast<std::size_t>(std::ranges::count(NameOf(command), ' ')) + 1;
}

/// The first words of the arguments, with blanks between them.
std::string FirstWords(const std::vector<std::string>& arguments, std::size_t count)
{
    std::string words;
    for (std::size_t at = 0; at < std::min(count, arguments.size()); ++at)
        words += (at > 0 ? " " : "") + arguments[at];
    return words;
}

/// The command that the arguments begin with; its name may be several words.
std::optional<Command> CommandOf(const std::vector<std::string>& arguments)
{
    const auto found = std::ranges::find_if(allCommands, [&](Command command) {
        return arguments.size() >= WordsOf(command) && FirstWords(arguments, WordsOf(command)) == NameOf(command);
    });
    return found == allCommands.end() ? std::optional<Command>() : *found;
}

/// The commands whose first word of several this is: "job show or job make".
std::string CommandsBeginningWith(const std::string& word)
{
    std::string names;
    for (const Command command : allCommands)
        if (NameOf(command).starts_with(word + " "))
            names += (names.empty() ? "" : " or ") + std::string(NameOf(command));
    return names;
}

[[noreturn]] void RefuseCommand(const std::vector<std::string>& arguments)
{
    if (arguments.empty() || arguments.front().empty())
        Refuse(
            "a command is missing: find, replace, restore, clean, run, job show, job make or list convert (see "
            "tessarine-batch --help)");
    const std::string names = CommandsBeginningWith(arguments.front());
    if (!names.empty())
        Refuse(fmt::format("there is no command \"{}\": it is {} (see tessarine-batch --help)",
                           FirstWords(arguments, 2), names));
    std::vector<std::string_view> known{"help"};
    for (const CommandRow& row : CommandTable())
        known.push_back(row.name);
    // A name of two words is nearest when the first two are taken.
    std::string hint = DidYouMean(arguments.front(), known);
    if (hint.empty())
        hint = DidYouMean(FirstWords(arguments, 2), known);
    Refuse(fmt::format("there is no command \"{}\"{} (see tessarine-batch --help)", arguments.front(), hint));
}

const OptionRow& TakenBy(Command command, const OptionRow& row, std::string_view typed)
{
    if (!(row.commands & Only(command)))
        Refuse(fmt::format("{} is not an option of {}", typed, NameOf(command)));
    return row;
}

const OptionRow& RowOfName(std::string_view name, Command command)
{
    const auto table = OptionTable();
    const auto row = std::ranges::find(table, name, &OptionRow::name);
    if (row != table.end())
        return TakenBy(command, *row, name);
    std::vector<std::string_view> known;
    for (const OptionRow& option : table) {
        if (option.commands & Only(command))
            known.push_back(option.name);
    }
    Refuse(fmt::format("there is no option {}{} (see tessarine-batch {} --help)", name, DidYouMean(name, known),
                       NameOf(command)));
}

/// `argument` is the word of the command line that the letter stands in.
const OptionRow& RowOfLetter(char letter, std::string_view argument, Command command)
{
    const auto table = OptionTable();
    const auto row = letter ? std::ranges::find(table, letter, &OptionRow::letter) : table.end();
    const std::string typed = std::string("-") + letter;
    if (row != table.end())
        return TakenBy(command, *row, typed);
    Refuse(fmt::format("there is no option {}{} (see tessarine-batch {} --help)", typed,
                       typed == argument ? "" : fmt::format(" in {}", argument), NameOf(command)));
}

/// Refuses "-show", which is a long option with a dash too few and would be taken for short ones. So is "-in", though
/// it could be meant for "-i -n": that can be written as "-ni".
void CheckDashes(const std::string& argument, Command command)
{
    const std::string longForm = "-" + argument;
    if (std::ranges::find(OptionTable(), longForm, &OptionRow::name) != OptionTable().end())
        Refuse(fmt::format("there is no option {}; did you mean \"{}\"? (see tessarine-batch {} --help)", argument,
                           longForm, NameOf(command)));
}

/// The help that a call asks for.
enum class HelpKind { Long, Short };

/// Reads the arguments after the command. Every argument is taken literally: the one after an option that takes one is
/// its value whatever it looks like, and "--option=" gives the empty text. Short forms of switches may stand together
/// ("-rw"), and one with an argument at their end takes what follows of the word, or the next one.
class ArgumentReader
{
public:
    ArgumentReader(Command command, const std::vector<std::string>& arguments)
        : command_(command), arguments_(arguments), next_(WordsOf(command))
    {
        values_.call.command = command;
    }

    /// Nothing when no help is asked for; else reads no further.
    std::optional<HelpKind> Read()
    {
        for (; next_ < arguments_.size() && !help_; ++next_) {
            const std::string& argument = arguments_[next_];
            if (optionsEnded_ || argument == "-" || !argument.starts_with('-'))
                TakePath(argument);
            else if (argument == "--")
                optionsEnded_ = true;
            else if (argument == "--help")
                help_ = HelpKind::Long;
            else if (argument.starts_with("--"))
                TakeOption(argument);
            else
                TakeLetters(argument);
        }
        return help_;
    }

    OptionValues& values() { return values_; }

private:
    void TakePath(const std::string& argument)
    {
        if (argument.empty())
            Refuse("a path is empty");
        values_.call.paths.push_back(FromUtf8(argument));
    }

    void TakeOption(const std::string& argument)
    {
        const std::size_t equals = argument.find('=');
        const OptionRow& row = RowOfName(argument.substr(0, equals), command_);
        NoteGiven(row);
        const std::string value = row.argument.empty()          ? Variant(row, argument, equals)
                                  : equals != std::string::npos ? argument.substr(equals + 1)
                                                                : NextArgument(row);
        row.apply(values_, value);  // no function for --help, which gets here only with a value, and that was refused
    }

    void TakeLetters(const std::string& argument)
    {
        CheckDashes(argument, command_);
        for (std::size_t at = 1; at < argument.size(); ++at) {
            const OptionRow& row = RowOfLetter(argument[at], argument, command_);
            // Only the row of the help has no function.
            if (!row.apply) {
                help_ = HelpKind::Short;
                return;
            }
            NoteGiven(row);
            if (row.argument.empty()) {
                row.apply(values_, {});
                continue;
            }
            row.apply(values_, at + 1 < argument.size() ? argument.substr(at + 1) : NextArgument(row));
            return;
        }
    }

    void NoteGiven(const OptionRow& row)
    {
        // A switch may be given twice, as it says the same again.
        if (!given_.insert(row.name).second && !row.repeatable && !row.argument.empty())
            Refuse(fmt::format("{} is given twice", row.name));
    }

    static std::string Variant(const OptionRow& row, const std::string& argument, std::size_t equals)
    {
        if (equals == std::string::npos)
            return {};
        if (row.variant.empty())
            Refuse(fmt::format("{} takes no value", row.name));
        const std::string value = argument.substr(equals + 1);
        if (value != row.variant)
            Refuse(fmt::format("{0} takes no value but {0}={1}", row.name, row.variant));
        return value;
    }

    const std::string& NextArgument(const OptionRow& row)
    {
        if (next_ + 1 == arguments_.size())
            Refuse(fmt::format("{} needs a value: {} {}", row.name, row.name, row.argument));
        return arguments_[++next_];
    }

    Command command_;
    const std::vector<std::string>& arguments_;
    std::size_t next_;  // the first argument after the command
    bool optionsEnded_ = false;
    std::optional<HelpKind> help_;  // asked for
    std::set<std::string_view> given_;
    OptionValues values_;
};

/// The pairs that the options name.
void CheckPairs(OptionValues& values)
{
    BatchCall& call = values.call;
    if (values.finds.empty())
        Refuse("--find is missing: what should be looked for?");
    const bool hasNewTexts = call.command != Command::Find;
    if (hasNewTexts && values.finds.size() != values.withs.size())
        Refuse(fmt::format("every --find needs its --with: there are {} --find and {} --with", values.finds.size(),
                           values.withs.size()));
    if (!HasLocation(call.setting))
        SwitchOn(call.setting, defaultPlaces);

    for (std::size_t at = 0; at < values.finds.size(); ++at) {
        call.pairs.push_back({values.finds[at], hasNewTexts ? values.withs[at] : String()});
        CheckEnds(call.pairs.back().find, call.pairs.back().with, call.setting);
    }
}

/// What a find, a replace or a new job is about; checks what holds between options.
void CheckRun(OptionValues& values)
{
    BatchCall& call = values.call;
    if (values.countGiven && values.noCountGiven)
        Refuse("--count and --no-count contradict each other");
    if (values.ignoreCaseGiven && call.setting.MatchCase)
        Refuse("--ignore-case and --match-case contradict each other");
    if (values.revisionByGiven && call.revision.empty())
        Refuse("--revision-by needs --revision");
    // Counting is the default; --count is there for scripts that want to say so.
    call.count = !values.noCountGiven;
    if (!call.list && !call.pairFile) {
        CheckPairs(values);
        return;
    }
    const std::string option = call.list ? "--list" : "--pairs";
    if (call.list && call.pairFile)
        Refuse("--list and --pairs take the place of each other: give one of them");
    if (!values.finds.empty() || !values.withs.empty())
        Refuse(option + " takes the place of --find and --with: give one or the other");
    if (values.ignoreCaseGiven)
        Refuse("--ignore-case: the pairs of " + option + " say themselves whether case counts");
    if (call.pairFile == u"-" && call.filesFrom == u"-")
        Refuse("--pairs and --files-from can't both read standard input");
}

/// The two files of a conversion.
void CheckConversion(BatchCall& call)
{
    if (call.paths.size() != 2)
        Refuse("list convert takes two list files: the one to read and the one to write");
    for (const String& path : call.paths)
        if (!IsListName(path) && !IsPlainPairsName(path))
            Refuse("\"" + ToUtf8(path) +
                   "\" is not a list: its name must end in .xlsx, .xls, .csv, .tab, .tsv or .json");
    call.list = call.paths.front();
    call.newList = call.paths.back();
    call.paths.clear();
}

/// What a report tells of hits.
void CheckHits(const OptionValues& values)
{
    if (!values.call.show && values.call.reports.empty() && (values.contextGiven || values.maxHitsGiven))
        Refuse(std::string(values.contextGiven ? "--context" : "--max-hits") + " needs --show or --report");
}

/// What a run of a saved job takes besides the job's own options.
void CheckSavedRun(const BatchCall& call)
{
    if (call.paths.empty() && (call.hidden || !call.excluded.empty()))
        Refuse(std::string(call.hidden ? "--hidden" : "--exclude") +
               " needs a PATH: the files of a job's own are those that the desktop takes");
    if (call.replacesOfJob)
        return;
    if (call.dryRun)
        Refuse("--dry-run needs --replace: a run that only finds changes no file");
    if (call.backup)
        Refuse("--backup needs --replace: a run that only finds changes no file");
    if (call.skipSigned)
        Refuse("--skip-signed needs --replace: a run that only finds changes no file");
    if (call.inPlace || call.inPlaceLinks)
        Refuse(std::string(call.inPlace ? "--in-place" : "--in-place-links") +
               " needs --replace: a run that only finds changes no file");
}

/// The job that a command reads: the first path.
void CheckJob(BatchCall& call)
{
    if (call.paths.empty())
        Refuse("no job is named: which project file (.tsq)?");
    call.job = call.paths.front();
    call.paths.erase(call.paths.begin());
    if (call.command == Command::JobShow && !call.paths.empty())
        Refuse("job show takes one project file");
}

/// A project holds one folder or one list of files.
void CheckJobToMake(const BatchCall& call)
{
    if (call.job.empty())
        Refuse("-o is missing: which project file (.tsq) should the job be saved as?");
    if (call.paths.size() + (call.filesFrom ? 1 : 0) != 1)
        Refuse("a saved job takes its files from one folder, or from one list (--files-from)");
    if (call.filesFrom == u"-")
        Refuse("--files-from: a saved job can't read its list from standard input");
    if (call.filesFrom && !HasExtension(*call.filesFrom, FileListExtensions))
        Refuse("--files-from: the list of a saved job must be a .txt file");
}

BatchCall CheckedCall(OptionValues& values)
{
    BatchCall& call = values.call;
    if (call.quiet && (call.verbose || call.show))
        Refuse(std::string("--quiet and ") + (call.verbose ? "--verbose" : "--show") + " contradict each other");
    if (call.nullEndsPaths && !call.filesFrom)
        Refuse("--null needs --files-from");
    // Given here and not as the option's start value, because each --pattern adds to those before it.
    if (call.patterns.empty())
        call.patterns.push_back(u"*.ppt*");
    if (Only(call.command) & DescribesJob)
        CheckRun(values);
    if (call.command == Command::JobMake)
        CheckJobToMake(call);
    CheckHits(values);
    if (!call.plan.empty() && !call.shard)
        Refuse("--plan needs --shard");
    // Ahead of the check for paths: a saved job brings its files along.
    if (call.command == Command::Run || call.command == Command::JobShow) {
        CheckJob(call);
        if (call.command == Command::Run)
            CheckSavedRun(call);
        return call;
    }
    if (call.command == Command::ListConvert) {
        CheckConversion(call);
        return call;
    }
    if (call.command == Command::ReportMerge && call.paths.empty())
        Refuse("no report is named");
    if (call.paths.empty() && !call.filesFrom)
        Refuse("no file or folder is named");
    return call;
}

/// "help", "help find", "help job show", and the same after "--help".
std::string HelpOn(const std::vector<std::string>& words)
{
    if (words.empty())
        return GeneralHelp();
    const auto command = CommandOf(words);
    if (!command)
        RefuseCommand(words);
    return HelpFor(*command);
}

}  // namespace

std::variant<BatchCall, EarlyEnd> ReadCommandLine(const std::vector<std::string>& arguments)
{
    try {
        const std::string first = arguments.empty() ? std::string() : arguments.front();
        // Ahead of the command, as a question for help need not name one.
        if (first == "-h")
            return EarlyEnd{0, ShortHelp(), {}};
        if (first == "--version")
            return EarlyEnd{0, VersionText(), {}};
        if (first == "help" || first == "--help")
            return EarlyEnd{0, HelpOn({arguments.begin() + 1, arguments.end()}), {}};
        const auto command = CommandOf(arguments);
        if (!command)
            RefuseCommand(arguments);

        ArgumentReader reader(*command, arguments);
        if (const auto help = reader.Read())
            return EarlyEnd{0, *help == HelpKind::Long ? HelpFor(*command) : ShortHelpFor(*command), {}};
        BatchCall call = CheckedCall(reader.values());
        call.arguments = arguments;
        return call;
    } catch (const Failure& failure) {
        return EarlyEnd{callNotValid, {}, OnOneLine("tessarine-batch: " + ToUtf8(failure.description)) + "\n"};
    }
}

}  // namespace tessarine::batch
