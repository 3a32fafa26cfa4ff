#include "batch/ManPage.h"

#include <fmt/format.h>

#include "batch/CommandTable.h"
#include "batch/Help.h"
#include "batch/OptionTable.h"

namespace tessarine::batch
{

namespace
{

/// A line of text as groff takes it for text: a dash stays one that can be copied to a shell, and a dot or an
/// apostrophe at the start makes no request of the line.
std::string Line(std::string_view text)
{
    std::string line;
    for (const char c : text) {
        if (c == '\\')
            line += "\\e";
        else if (c == '-')
            line += "\\-";
        else if (c == '\'')
            line += "\\(aq";
        else
            line += c;
    }
    return line.starts_with('.') ? "\\&" + line : line;
}

/// Lines of the help: indented ones stay apart from each other, the others flow.
std::string Lines(std::string_view text)
{
    std::string page;
    bool isVerbatim = false;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (line.empty())
            continue;
        if (line.starts_with("  ") != isVerbatim) {
            isVerbatim = !isVerbatim;
            page += isVerbatim ? ".nf\n" : ".fi\n";
        }
        page += Line(line) + "\n";
    }
    return page + (isVerbatim ? ".fi\n" : "");
}

/// "find, replace, run": the commands that take an option.
std::string CommandNames(CommandSet commands)
{
    std::string names;
    for (std::size_t at = 0; at < CommandTable().size(); ++at) {
        if (commands & Only(static_cast<Command>(at)))
            names += (names.empty() ? "" : ", ") + std::string(CommandTable()[at].name);
    }
    return names;
}

std::string CommandSection(const CommandRow& command)
{
    return fmt::format(".SS {}\n.B tessarine\\-batch {}\n{}\n.PP\n{}.PP\nExamples:\n.PP\n{}", Line(command.name),
                       Line(command.name), Line(command.arguments), Lines(command.text), Lines(command.examples));
}

std::string OptionParagraph(const OptionRow& row)
{
    const std::string letter = row.letter ? fmt::format("\\fB\\-{}\\fR, ", row.letter) : "";
    const std::string argument = row.argument.empty() ? "" : fmt::format(" \\fI{}\\fR", Line(row.argument));
    const std::string commands =
        row.commands == EveryCommand ? "" : fmt::format(".br\nOf {}.\n", Line(CommandNames(row.commands)));
    return fmt::format(".TP\n{}\\fB{}\\fR{}\n{}{}", letter, Line(row.name), argument, Lines(row.LongHelp()), commands);
}

}  // namespace

std::string ManPage()
{
    std::string page = fmt::format(
        ".\\\" Made from the tables of commands and options in src/batch.\n"
        ".TH TESSARINE\\-BATCH 1 \"\" \"Tessarine {0}\" \"User commands\"\n"
        ".SH NAME\ntessarine\\-batch \\- find and replace text in many presentations\n"
        ".SH SYNOPSIS\n.B tessarine\\-batch\n.I command\n[\\fIoptions\\fR] \\fIpath\\fR ...\n.br\n"
        ".B tessarine\\-batch help\n[\\fIcommand\\fR]\n.br\n.B tessarine\\-batch \\-\\-version\n"
        ".SH DESCRIPTION\n"
        "Finds and replaces text in presentations (.pptx .pptm .potx .potm .ppsx .ppsm) without a window: for\n"
        "servers, scripts and schedulers. A path is a file or a folder.\n.PP\n{1}"
        ".SH COMMANDS\n",
        TESSARINE_VERSION, Lines(LimitsText()));
    for (const CommandRow& command : CommandTable())
        page += CommandSection(command);

    page += ".SH OPTIONS\nSwitches with a short form may stand together: \\-rw is \\-r \\-w.\n";
    std::string_view group;
    for (const OptionRow& row : OptionTable()) {
        if (row.group != group)
            page += fmt::format(".SS {}\n", Line(row.group));
        group = row.group;
        page += OptionParagraph(row);
    }
    page += ".SH EXIT STATUS\n" + Lines(ExitStatusText()) +
            "A run without a hit is done. A second interrupt ends the program at once, with 130.\n"
            ".SH ENVIRONMENT\n"
            ".TP\nNO_COLOR\nWith any value but the empty one: no colors, unless \\-\\-color says always.\n"
            ".TP\nTERM\nWith the value dumb: no colors, and no progress.\n"
            ".SH FILES\n"
            ".TP\n\\(ti/.local/share/Tessarine/Tessarine/Errors.Log\nFailures, each with the name of its file.\n";
    return page;
}

}  // namespace tessarine::batch
