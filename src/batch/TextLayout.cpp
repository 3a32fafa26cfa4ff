#include "batch/TextLayout.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>

namespace tessarine::batch
{

namespace
{

constexpr std::string_view red = "\x1b[31m";
constexpr std::string_view green = "\x1b[32m";
constexpr std::string_view bold = "\x1b[1m";

std::string Painted(std::string_view text, std::string_view color, const TextStyle& style)
{
    return style.colors ? fmt::format("{}{}\x1b[0m", color, text) : std::string(text);
}

std::string FileLine(const String& path, const std::string& state, const TextStyle& style)
{
    return fmt::format("{}: {}\n", Painted(ToUtf8(path), bold, style), state);
}

std::string FailedLine(const String& path, const String& error, const TextStyle& style)
{
    // The texts of the run begin with blanks now and then; people need not see them.
    const StringView text = StringView(error).substr(std::min(error.size(), error.find_first_not_of(u' ')));
    const std::string quoted = Quoted(text);
    return FileLine(path, Painted("failed", red, style) + ": " + quoted.substr(1, quoted.size() - 2), style);
}

std::size_t Cells(std::string_view text)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

std::string PairText(const PairReport& pair, const TextStyle& style)
{
    return style.command == Command::Replace ? Quoted(pair.find) + " -> " + Quoted(pair.replace) : Quoted(pair.find);
}

/// "slides 2, notes 1": the places where the pair occurs.
std::string Places(const PairReport& pair, const OptionSetting& setting)
{
    std::string places;
    for (std::size_t row = 0; row < SearchLocations.size(); ++row) {
        if (!(setting.*SearchLocations[row].isOn) || pair.counts[row] <= 0)
            continue;
        places += fmt::format("{}{} {}", places.empty() ? "" : ", ", SearchLocations[row].name, pair.counts[row]);
    }
    return places;
}

/// One line for each pair that occurs, the places under each other.
std::string PairLines(const FileReport& file, const OptionSetting& setting, const TextStyle& style)
{
    constexpr std::size_t widest = 60;
    std::size_t width = 0;
    for (const PairReport& pair : file.pairs) {
        if (pair.Occurrences() > 0)
            width = std::max(width, std::min(widest, Cells(PairText(pair, style))));
    }

    std::string lines;
    for (const PairReport& pair : file.pairs) {
        if (pair.Occurrences() == 0)
            continue;
        const std::string text = PairText(pair, style);
        const std::size_t cells = Cells(text);
        lines += fmt::format("    {}{}  {}\n", text, std::string(cells < width ? width - cells : 0, ' '),
                             Places(pair, setting));
    }
    return lines;
}

}  // namespace

std::string Counted(std::int64_t count, std::string_view noun)
{
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string OnOneLine(std::string text)
{
    std::ranges::replace_if(
        text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

std::string Quoted(StringView text)
{
    std::string quoted = "\"";
    for (const char character : ToUtf8(text)) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\n')
            quoted += "\\n";
        else if (character == '\r')
            quoted += "\\r";
        else if (character == '\t')
            quoted += "\\t";
        else if (byte < 0x20 || byte == 0x7F)
            quoted += fmt::format("\\x{:02X}", byte);
        else
            quoted += character;
    }
    return quoted + "\"";
}

std::string TextLines(const FileReport& file, const OptionSetting& setting, const TextStyle& style)
{
    const bool replaces = style.command == Command::Replace;
    if (file.status == FileStatus::NotProcessed)
        return FailedLine(file.path, file.error, style);
    if (file.status == FileStatus::NothingCounted)
        return style.verbose ? FileLine(file.path, replaces ? "unchanged" : "nothing found", style) : std::string();

    const auto state =
        fmt::format("{}{} {}", replaces ? "changed, " : "", file.Occurrences(), replaces ? "replaced" : "found");
    return FileLine(file.path, Painted(state, green, style), style) + PairLines(file, setting, style);
}

std::string TextLine(const RunSummary& summary, const TextStyle& style)
{
    const bool replaces = style.command == Command::Replace;
    return fmt::format("{}: {} {}, {} {}, {} failed; {} {}\n", Counted(summary.files, "file"), summary.changed,
                       replaces ? "changed" : "with hits", summary.unchanged, replaces ? "unchanged" : "without",
                       summary.failed, Counted(summary.occurrences, "occurrence"), replaces ? "replaced" : "found");
}

std::string TextLines(const BackupReport& file, const TextStyle& style)
{
    const bool restores = style.command == Command::Restore;
    if (file.status == FileStatus::NotProcessed)
        return FailedLine(file.file, file.error, style);
    if (file.status == FileStatus::NothingCounted)
        return style.verbose ? FileLine(file.file, "no backup", style) : std::string();
    const std::string backup = ToUtf8(file.backup);
    return FileLine(file.file, Painted(restores ? "restored from " + backup : "removed " + backup, green, style),
                    style);
}

std::string TextLine(const BackupSummary& summary, const TextStyle& style)
{
    return fmt::format("{}: {} {}, {} without a backup, {} failed\n", Counted(summary.files, "file"), summary.done,
                       style.command == Command::Restore ? "restored" : "backups removed", summary.unchanged,
                       summary.failed);
}

}  // namespace tessarine::batch
