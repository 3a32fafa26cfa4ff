#include "batch/CommandLine.h"

#include <algorithm>
#include <optional>
#include <set>

#include <fmt/format.h>

#include "batch/EndlessPairs.h"
#include "batch/Help.h"
#include "batch/LineText.h"
#include "batch/ListFiles.h"
#include "batch/Locations.h"
#include "batch/OptionTable.h"
#include "batch/PairFiles.h"
#include "batch/Refusal.h"
#include "platform/Failure.h"
#include "run/JobInputs.h"

namespace tessarine::batch
{

namespace
{

constexpr int callNotValid = 2;
constexpr std::array<Command, 8> allCommands{Command::Find, Command::Replace, Command::Restore, Command::Clean,
                                             Command::Run,  Command::JobShow, Command::JobMake, Command::ListConvert};

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
    Refuse(fmt::format("there is no command \"{}\" (see tessarine-batch --help)", arguments.front()));
}

const OptionRow& RowOf(std::string_view name, Command command)
{
    const auto table = OptionTable();
    const auto row = std::ranges::find(table, name, &OptionRow::name);
    if (row == table.end())
        Refuse(fmt::format("there is no option {0} (see tessarine-batch {1} --help)", name, NameOf(command)));
    if (!(row->commands & Only(command)))
        Refuse(fmt::format("{} is not an option of {}", name, NameOf(command)));
    return *row;
}

/// Reads the arguments after the command. Every argument is taken literally: the one after an option that takes one is
/// its value whatever it looks like, and "--option=" gives the empty text.
class ArgumentReader
{
public:
    ArgumentReader(Command command, const std::vector<std::string>& arguments)
        : command_(command), arguments_(arguments), next_(WordsOf(command))
    {
        values_.call.command = command;
    }

    /// False when help is asked for.
    bool Read()
    {
        for (; next_ < arguments_.size(); ++next_) {
            const std::string& argument = arguments_[next_];
            if (optionsEnded_ || argument == "-" || !argument.starts_with('-'))
                TakePath(argument);
            else if (argument == "--")
                optionsEnded_ = true;
            else if (argument == "--help" || argument == "-h")
                return false;
            else
                TakeOption(argument);
        }
        return true;
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
        // Only long options take their value after an equals sign.
        const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string::npos;
        const std::string name = argument.substr(0, equals);
        const OptionRow& row = RowOf(name, command_);
        // A switch may be given twice, as it says the same again.
        if (!given_.insert(row.name).second && !row.repeatable && !row.argument.empty())
            Refuse(name + " is given twice");
        const std::string value = row.argument.empty() ? Variant(row, argument, equals) : Value(row, argument, equals);
        row.apply(values_, value);  // no function for --help, which gets here only with a value, and that was refused
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

    std::string Value(const OptionRow& row, const std::string& argument, std::size_t equals)
    {
        if (equals != std::string::npos)
            return argument.substr(equals + 1);
        if (next_ + 1 == arguments_.size())
            Refuse(fmt::format("{} needs a value: {} {}", row.name, row.name, row.argument));
        return arguments_[++next_];
    }

    Command command_;
    const std::vector<std::string>& arguments_;
    std::size_t next_;  // the first argument after the command
    bool optionsEnded_ = false;
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
    // Given here and not as the option's start value, because each --pattern adds to those before it.
    if (call.patterns.empty())
        call.patterns.push_back(u"*.ppt*");
    if (Only(call.command) & DescribesJob)
        CheckRun(values);
    if (call.command == Command::JobMake)
        CheckJobToMake(call);
    CheckHits(values);
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
    if (call.paths.empty() && !call.filesFrom)
        Refuse("no file or folder is named");
    return call;
}

}  // namespace

std::variant<BatchCall, EarlyEnd> ReadCommandLine(const std::vector<std::string>& arguments)
{
    try {
        const std::string first = arguments.empty() ? std::string() : arguments.front();
        // Ahead of the command, as a question for help need not name one.
        if (first == "--help" || first == "-h")
            return EarlyEnd{0, GeneralHelp(), {}};
        if (first == "--version")
            return EarlyEnd{0, VersionText(), {}};
        const auto command = CommandOf(arguments);
        if (!command)
            RefuseCommand(arguments);

        ArgumentReader reader(*command, arguments);
        if (!reader.Read())
            return EarlyEnd{0, HelpFor(*command), {}};
        return CheckedCall(reader.values());
    } catch (const Failure& failure) {
        return EarlyEnd{callNotValid, {}, OnOneLine("tessarine-batch: " + ToUtf8(failure.description)) + "\n"};
    }
}

}  // namespace tessarine::batch
