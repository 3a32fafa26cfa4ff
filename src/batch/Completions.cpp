#include "batch/Completions.h"

#include <functional>
#include <vector>

#include <fmt/format.h>

#include "batch/CommandTable.h"
#include "batch/OptionTable.h"

namespace tessarine::batch
{

namespace
{

/// Commands by their first words: "job" has "show" and "make", "find" has none.
struct FirstWord {
    std::string_view word;
    std::string purpose;  ///< Of the command; of several, their names.
    std::vector<std::string_view> seconds;
};

std::vector<FirstWord> FirstWords()
{
    std::vector<FirstWord> words;
    for (const CommandRow& command : CommandTable()) {
        const std::size_t blank = command.name.find(' ');
        const std::string_view first = command.name.substr(0, blank);
        if (words.empty() || words.back().word != first)
            words.push_back({first, {}, {}});
        std::string& purpose = words.back().purpose;
        if (blank == std::string_view::npos) {
            purpose = command.purpose;
        } else {
            words.back().seconds.push_back(command.name.substr(blank + 1));
            purpose += (purpose.empty() ? "" : " or ") + std::string(command.name);
        }
    }
    return words;
}

std::vector<OptionRow> OptionsOf(Command command)
{
    std::vector<OptionRow> rows;
    for (const OptionRow& row : OptionTable()) {
        if (row.commands & Only(command))
            rows.push_back(row);
    }
    return rows;
}

/// "a b c" of what each row gives; empty texts are left out.
template <class Rows>
std::string Words(const Rows& rows, const std::function<std::string(const typename Rows::value_type&)>& wordOf,
                  std::string_view separator = " ")
{
    std::string words;
    for (const auto& row : rows) {
        const std::string word = wordOf(row);
        if (!word.empty())
            words += (words.empty() ? "" : std::string(separator)) + word;
    }
    return words;
}

/// What a call is told to complete: all forms of an option.
std::string Forms(const OptionRow& row)
{
    return (row.letter ? fmt::format("-{} ", row.letter) : "") + std::string(row.name);
}

/// The forms as a pattern of bash: "-o|--output".
std::string FormsPattern(const OptionRow& row)
{
    return (row.letter ? fmt::format("-{}|", row.letter) : "") + std::string(row.name);
}

/// A text in single quotes, for all three shells.
std::string InSingleQuotes(std::string_view text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? "'\\''" : std::string(1, c);
    return quoted + "'";
}

/// The brief help without its full stop, as shells show it beside the option.
std::string_view Description(const OptionRow& row)
{
    return row.brief.substr(0, row.brief.size() - 1);
}

std::string AllFirstWords()
{
    return Words(FirstWords(), std::function<std::string(const FirstWord&)>(
                                   [](const FirstWord& first) { return std::string(first.word); }));
}

std::string SecondWords(const FirstWord& first)
{
    return Words(first.seconds, [](std::string_view second) { return std::string(second); });
}

}  // namespace

std::string BashCompletion()
{
    std::string script =
        "# bash completion of tessarine-batch, made from its table of options\n\n"
        "_tessarine_batch()\n{\n"
        "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]} words=\n"
        "    COMPREPLY=()\n\n";
    script += "    if ((COMP_CWORD == 1)); then\n        COMPREPLY=($(compgen -W '" + AllFirstWords() +
              " help --help --version -h' -- \"$word\"))\n        return\n    fi\n\n"
              "    case $command in\n";
    for (const FirstWord& first : FirstWords()) {
        if (first.seconds.empty())
            continue;
        script += fmt::format(
            "        {0})\n            if ((COMP_CWORD == 2)); then\n"
            "                COMPREPLY=($(compgen -W '{1}' -- \"$word\"))\n                return\n            fi\n"
            "            command=\"{0} ${{COMP_WORDS[2]}}\" ;;\n",
            first.word, SecondWords(first));
    }
    script += "        help)\n            ((COMP_CWORD > 2)) || COMPREPLY=($(compgen -W '" + AllFirstWords() +
              "' -- \"$word\"))\n            return ;;\n    esac\n\n";

    // Readline cuts words at "=", so that "--color=al" arrives as three of them.
    script +=
        "    if [[ $word == = ]]; then\n        word=\n"
        "    elif [[ $before == = ]] && ((COMP_CWORD > 2)); then\n        before=${COMP_WORDS[COMP_CWORD-2]}\n    fi\n"
        "    case $before in\n";
    std::string freeForms;
    for (const OptionRow& row : OptionTable()) {
        if (row.argument.empty() || row.TakesFile())
            continue;
        if (row.choices.empty()) {
            freeForms += (freeForms.empty() ? "" : "|") + FormsPattern(row);
            continue;
        }
        // Names that go with commas between them: what stands before the last one stays.
        const bool isList = row.argument.ends_with(",...");
        script += isList ? fmt::format(
                               "        {})\n            local given=\n"
                               "            [[ $word != *,* ]] || given=${{word%,*}},\n"
                               "            COMPREPLY=($(compgen -P \"$given\" -W '{}' -- \"${{word##*,}}\"))\n"
                               "            return ;;\n",
                               FormsPattern(row), row.choices)
                         : fmt::format(
                               "        {})\n            COMPREPLY=($(compgen -W '{}' -- \"$word\"))\n"
                               "            return ;;\n",
                               FormsPattern(row), row.choices);
    }
    script += "        " + freeForms + ")\n            return ;;\n    esac\n\n";

    script += "    case $command in\n";
    for (std::size_t at = 0; at < CommandTable().size(); ++at)
        script += fmt::format("        {}) words='{}' ;;\n", InSingleQuotes(CommandTable()[at].name),
                              Words(OptionsOf(static_cast<Command>(at)), Forms));
    return script +
           "    esac\n"
           "    if [[ $word == -* ]]; then\n        COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n        return\n"
           "    fi\n"
           "    compopt -o filenames 2>/dev/null\n"
           "    local IFS=$'\\n'\n"
           "    COMPREPLY=($(compgen -f -- \"$word\"))\n}\n\n"
           "complete -F _tessarine_batch tessarine-batch\n";
}

namespace
{

/// A text inside the brackets or the message of one of zsh's specifications, in single quotes.
std::string ForZsh(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':' || c == '\\')
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

/// One option as _arguments takes it.
std::string ZshOption(const OptionRow& row)
{
    std::string action;
    if (!row.argument.empty()) {
        action = fmt::format(":{}:", ForZsh(row.argument));
        if (row.argument.ends_with(",..."))
            action += fmt::format("_values -s , place {}", row.choices);
        else if (!row.choices.empty())
            action += fmt::format("({})", row.choices);
        else if (row.TakesFile())
            action += "_files";
        else
            action += " ";
    }
    const std::string star = row.repeatable ? "*" : "";
    const std::string description = fmt::format("[{}]", ForZsh(Description(row)));
    // A long option takes its value after "=" as well.
    std::string specifications =
        InSingleQuotes(star + std::string(row.name) + (row.argument.empty() ? "" : "=") + description + action);
    if (row.letter)
        specifications += " " + InSingleQuotes(fmt::format("{}-{}{}{}{}", star, row.letter,
                                                           row.argument.empty() ? "" : "+", description, action));
    return specifications;
}

}  // namespace

std::string ZshCompletion()
{
    std::string script =
        "#compdef tessarine-batch\n"
        "# zsh completion of tessarine-batch, made from its table of options\n\n"
        "_tessarine-batch() {\n"
        "  local command=$words[2]\n"
        "  local -a commands\n"
        "  commands=(\n";
    for (const FirstWord& first : FirstWords())
        script += fmt::format("    {}\n", InSingleQuotes(fmt::format("{}:{}", first.word, ForZsh(first.purpose))));
    script +=
        "    'help:Show the help, or that of a command.'\n  )\n\n"
        "  if (( CURRENT == 2 )); then\n    _describe command commands\n    return\n  fi\n"
        "  case $command in\n";
    for (const FirstWord& first : FirstWords()) {
        if (!first.seconds.empty())
            script += fmt::format(
                "    {0})\n      if (( CURRENT == 3 )); then\n        compadd {1}\n        return\n      fi\n"
                "      command=\"{0} $words[3]\"\n      shift words\n      (( CURRENT-- )) ;;\n",
                first.word, SecondWords(first));
    }
    script +=
        "    help)\n      (( CURRENT > 3 )) || _describe command commands\n      return ;;\n  esac\n"
        "  shift words\n  (( CURRENT-- ))\n\n"
        "  case $command in\n";
    for (std::size_t at = 0; at < CommandTable().size(); ++at) {
        script += fmt::format("    {})\n      _arguments -s \\\n", InSingleQuotes(CommandTable()[at].name));
        for (const OptionRow& row : OptionsOf(static_cast<Command>(at)))
            script += "        " + ZshOption(row) + " \\\n";
        script += "        '*:path:_files' ;;\n";
    }
    return script + "  esac\n}\n\n_tessarine-batch \"$@\"\n";
}

std::string FishCompletion()
{
    std::string script =
        "# fish completion of tessarine-batch, made from its table of options\n\n"
        "function __tessarine_batch_command\n"
        "    set -l words (commandline -opc)\n"
        "    string match -q -- \"$argv[1]\" \"$words[2]\"; or return 1\n"
        "    test (count $argv) -lt 2; or string match -q -- \"$argv[2]\" \"$words[3]\"\n"
        "end\n\n"
        "function __tessarine_batch_words\n"
        "    test (count (commandline -opc)) -eq $argv[1]\n"
        "end\n\n"
        // What stands before the last comma stays; an option may stand before it in the same word.
        "function __tessarine_batch_list\n"
        "    set -l given (commandline -ct | string replace -r '^--[^=]*=' '' | string match -r '^.*,')\n"
        "    for name in $argv\n"
        "        echo \"$given$name\"\n"
        "    end\n"
        "end\n\n";
    const auto word = [&](std::string_view condition, std::string_view text, std::string_view description) {
        script += fmt::format("complete -c tessarine-batch -f -n {} -a {}{}\n", InSingleQuotes(condition), text,
                              description.empty() ? "" : " -d " + InSingleQuotes(description));
    };
    for (const FirstWord& first : FirstWords()) {
        word("__tessarine_batch_words 1", first.word, first.purpose);
        word("__tessarine_batch_command help; and __tessarine_batch_words 2", first.word, first.purpose);
        for (const std::string_view second : first.seconds)
            word(fmt::format("__tessarine_batch_command {}; and __tessarine_batch_words 2", first.word), second, {});
    }
    word("__tessarine_batch_words 1", "help", "Show the help, or that of a command.");

    for (std::size_t at = 0; at < CommandTable().size(); ++at) {
        for (const OptionRow& row : OptionsOf(static_cast<Command>(at))) {
            script += fmt::format("complete -c tessarine-batch -n '__tessarine_batch_command {}'{} -l {}",
                                  CommandTable()[at].name, row.letter ? fmt::format(" -s {}", row.letter) : "",
                                  row.name.substr(2));
            if (row.TakesFile())
                script += " -r -F";
            else if (row.argument.ends_with(",..."))
                script += fmt::format(" -x -a '(__tessarine_batch_list {})'", row.choices);
            else if (!row.choices.empty())
                script += fmt::format(" -x -a '{}'", row.choices);
            else if (!row.argument.empty())
                script += " -x";
            script += " -d " + InSingleQuotes(Description(row)) + "\n";
        }
    }
    return script;
}

}  // namespace tessarine::batch
