#include "batch/Help.h"

#include <fmt/format.h>

#include "batch/CommandTable.h"
#include "batch/Commit.h"

namespace tessarine::batch
{

namespace
{

constexpr std::string_view limits =
    "Text in groups, tables, charts and SmartArt is not searched. Texts changed in a slide's\n"
    "footer are not counted; a file changed only there is reported as changed, nothing counted.\n";

constexpr std::string_view exitStatus =
    "Exit status: 0 done, 1 done but a file failed, 2 the call or the job is not valid,\n"
    "3 done but nothing was found (with --exit-code).\n";

/// "  -o, --option ARGUMENT  text", the text's lines under each other.
std::string OptionLines(const OptionRow& row, std::string_view text)
{
    constexpr std::size_t width = 27;
    std::string left = "  " + FormsOf(row);

    std::string lines;
    std::string_view rest = text;
    for (;;) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        lines += fmt::format("{:<{}} {}\n", left, width, line);
        left.clear();
        if (line.size() == rest.size())
            return lines;
        rest.remove_prefix(line.size() + 1);
    }
}

std::string CommandLines()
{
    std::string lines;
    for (const CommandRow& command : CommandTable())
        lines += fmt::format("  {:<12} {}\n", command.name, command.purpose);
    return lines;
}

}  // namespace

std::string FormsOf(const OptionRow& row)
{
    const std::string letter = row.letter ? fmt::format("-{}, ", row.letter) : "    ";
    return letter + std::string(row.name) + (row.argument.empty() ? "" : " ") + std::string(row.argument);
}

std::string_view LimitsText()
{
    return limits;
}

std::string_view ExitStatusText()
{
    return exitStatus;
}

std::string HelpFor(Command command)
{
    const CommandRow& texts = RowOf(command);
    std::string help = fmt::format("Usage: tessarine-batch {} {}\n\n{}", texts.name, texts.arguments, texts.text);
    if (Only(command) & Runs)
        help += limits;

    std::string_view group;
    for (const OptionRow& row : OptionTable()) {
        if (!(row.commands & Only(command)))
            continue;
        // The rows of a group stand together in the table.
        if (row.group != group)
            help += fmt::format("\n{}:\n", row.group);
        group = row.group;
        help += OptionLines(row, row.LongHelp());
    }
    return help + fmt::format("\nExamples:\n{}\n{}", texts.examples, exitStatus);
}

std::string ShortHelpFor(Command command)
{
    const CommandRow& texts = RowOf(command);
    std::string help = fmt::format("Usage: tessarine-batch {} {}\n{}\n\n", texts.name, texts.arguments, texts.purpose);
    for (const OptionRow& row : OptionTable()) {
        if (row.commands & Only(command))
            help += OptionLines(row, row.brief);
    }
    return help + fmt::format("\n\"tessarine-batch {} --help\" says more, with examples.\n", texts.name);
}

std::string GeneralHelp()
{
    std::string help =
        "Find and replace text in many presentations (.pptx .pptm .potx .potm .ppsx .ppsm), without a window.\n\n"
        "Usage: tessarine-batch COMMAND [options] PATH ...\n\n"
        "Commands:\n" +
        CommandLines() +
        "  help         Show this help, or with a command after it that of the command.\n"
        "\nPATH is a file or a folder. \"tessarine-batch COMMAND -h\" lists the options of a command;\n"
        "\"tessarine-batch COMMAND --help\" says more about them, with examples.\n\n"
        "Examples:\n"
        "  tessarine-batch find --find Fabrikam decks\n"
        "  tessarine-batch replace --find Fabrikam --with Contoso --backup decks\n"
        "  tessarine-batch restore decks\n\n";
    return help + std::string(limits) + "\n" + std::string(exitStatus);
}

std::string ShortHelp()
{
    return "Usage: tessarine-batch COMMAND [options] PATH ...\n\n" + CommandLines() +
           "\n\"tessarine-batch COMMAND -h\" lists the options of a command,\n"
           "\"tessarine-batch --help\" says more.\n";
}

std::string VersionText()
{
    const std::string commit = Commit().empty() ? "" : fmt::format(" (commit {})", Commit());
    return fmt::format("tessarine-batch {}{}\n", TESSARINE_VERSION, commit);
}

}  // namespace tessarine::batch
