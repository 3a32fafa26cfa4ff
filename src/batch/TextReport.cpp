#include <algorithm>
#include <iterator>
#include <vector>

#include <fmt/format.h>

#include "batch/BackupCommands.h"
#include "batch/LineText.h"
#include "batch/Locations.h"
#include "batch/ReportFormats.h"
#include "batch/RunStory.h"
#include "batch/SavedJob.h"
#include "model/Project.h"
#include "model/SearchLocations.h"
#include "report/FileReport.h"
#include "report/HitText.h"
#include "report/RunTimes.h"

namespace tessarine::batch
{

namespace
{

constexpr std::string_view red = "\x1b[31m";
constexpr std::string_view green = "\x1b[32m";
constexpr std::string_view bold = "\x1b[1m";
constexpr std::string_view cyan = "\x1b[36m";
constexpr std::string_view boldRed = "\x1b[1;31m";
constexpr std::string_view struckRed = "\x1b[9;31m";
constexpr std::string_view boldGreen = "\x1b[1;32m";

/// Character cells of a UTF-8 text, counting a code point as one.
std::size_t Cells(std::string_view text)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

std::string PairLine(const FindAndReplaceItem& item)
{
    const OptionSetting& setting = *item.OptionSetting;
    const auto places = LocationsOf(setting);
    return fmt::format("    {} -> {}  in {}{}{}\n", Quoted(item.FindWhat), Quoted(item.ReplaceWith),
                       places.empty() ? "no place" : fmt::format("{}", fmt::join(places, ", ")),
                       setting.MatchCase ? "; match case" : "", setting.MatchWholeWord ? "; whole words" : "");
}

std::string PairLines(const Project& project)
{
    const SavedSource source = SourceOf(project);
    const std::int32_t count = project.FindAndReplaceList->Count();
    std::string lines = source.isExternal ? fmt::format("Pairs: those of the list {}; not the job's own ({}):\n",
                                                        Quoted(source.path), Counted(count, "pair"))
                                          : fmt::format("Pairs: {}\n", count);
    for (const auto& item : project.FindAndReplaceList->NewEnum())
        lines += PairLine(*item);
    return lines;
}

std::string FilesLine(const ProjectOptions& options)
{
    if (options.TakesListedFiles())
        return fmt::format("Files: those that {} lists, of the kind {}\n", Quoted(options.FileToProcessFilepath),
                           Escaped(options.ComaSepAllowedExtensions));
    return fmt::format("Files: {} in {}{}\n", Escaped(options.ComaSepAllowedExtensions),
                       Quoted(options.FileToProcessFolderPath),
                       options.Include_Subfolders ? " and its subfolders" : "");
}

std::string OptionLines(const ProjectOptions& options)
{
    std::vector<std::string> lines;
    if (options.BackupMode)
        lines.push_back("copies each file beside itself first");
    if (options.KeepOriginalFileDate)
        lines.push_back("gives files their old dates back");
    if (options.ProcessReadonlyFiles)
        lines.push_back("processes read-only files");
    lines.push_back(options.RequiredFindAndReplaceCount ? "counts every occurrence"
                                                        : "a find stops at the first occurrence in each text");
    if (!options.RevisionDocumentPropertyName.empty())
        lines.push_back(fmt::format("raises the number in the property {} by {}",
                                    Quoted(options.RevisionDocumentPropertyName),
                                    Quoted(options.RevisionDocumentPropertyIncrimentedBy)));
    if (options.RestartApplicationAfterFiles != 0)
        lines.push_back("starts the presentation program anew after every " +
                        Counted(options.RestartApplicationAfterFiles, "file"));
    if (options.AllowAlerts)
        lines.push_back("lets the presentation program show alerts");
    if (options.CPUUsage)
        lines.push_back("spares the processor");
    return fmt::format("Options:\n    {}\n", fmt::join(lines, "\n    "));
}

/// One line each, under the line of their file.
std::string WarningLines(const std::vector<String>& warnings)
{
    std::string lines;
    for (const String& warning : warnings)
        lines += fmt::format("    warning: {}\n", Escaped(warning));
    return lines;
}

bool TellsStory(const RunSummary& summary)
{
    return summary.files >= RunStory::fewestFiles;
}

std::string MoreLine(std::int64_t count)
{
    return count > 0 ? fmt::format("    and {} more\n", count) : std::string();
}

class TextReport : public Report
{
public:
    explicit TextReport(const ReportStyle& style) : style_(style) {}

    std::string AtStart(Engine engine) override
    {
        return Noted(fmt::format("Engine: {}\n", engine == Engine::PowerPoint ? "PowerPoint" : "built-in"));
    }
    std::string OfFile(const FileReport& file) override
    {
        story_.Add(file);
        return Noted(LinesOf(file) + HitLines(file) + WarningLines(file.warnings));
    }
    std::string AtEnd(const RunSummary& summary) override;
    std::string OfFile(const BackupReport& file) override { return Noted(LinesOf(file) + WarningLines(file.warnings)); }
    std::string AtEnd(const BackupSummary& summary) override;
    std::string OfJob(const String& path, const Project& project) override;

private:
    std::string LinesOf(const FileReport& file) const;
    std::string LinesOf(const BackupReport& file) const;
    std::string FileLine(const String& path, const std::string& state) const;
    std::string FailedLine(const String& path, const String& error) const;
    std::string FoundLines(const FileReport& file) const;
    std::string PairText(const PairReport& pair) const;
    std::string Places(const PairReport& pair) const;
    std::string HitLines(const FileReport& file) const;
    std::string MarkedText(const HitLine& line) const;
    std::string Painted(std::string_view text, std::string_view color) const;
    std::string Gap() const { return hasLines_ ? "\n" : ""; }

    bool Replaces() const { return style_.command == Command::Replace; }
    bool TellsHits(const FileReport& file) const { return style_.hits && !file.hits.empty(); }
    /// "changed", or of a dry run "would be changed".
    std::string Done(const std::string& word) const { return style_.dryRun ? "would be " + word : word; }
    bool Restores() const { return style_.command == Command::Restore; }

    std::string Noted(std::string lines)
    {
        // A summary with lines above it is set off from them.
        hasLines_ = hasLines_ || !lines.empty();
        return lines;
    }

    std::string Story(const RunSummary& summary) const;
    std::string TotalLine(const RunStory::Total& total) const;

    const ReportStyle style_;
    RunStory story_;
    bool hasLines_ = false;
};

std::string TextReport::AtEnd(const RunSummary& summary)
{
    // Most runs have none of them.
    const std::string countedOnly =
        summary.countedOnly > 0 ? fmt::format("{} with nothing to change, ", summary.countedOnly) : std::string();
    return Gap() + Story(summary) +
           fmt::format("{}: {} {}, {}{} {}, {} failed; {} {}{}\n", Counted(summary.files, "file"), summary.changed,
                       Replaces() ? Done("changed") : "with hits", countedOnly, summary.unchanged,
                       Replaces() ? "unchanged" : "without", summary.failed, Counted(summary.occurrences, "occurrence"),
                       Replaces() ? Done("replaced") : "found",
                       TellsStory(summary) && summary.seconds ? ", in " + ToUtf8(DurationText(*summary.seconds)) : "") +
           (style_.dryRun ? "Dry run: nothing was written\n" : "");
}

/// What a person wants to know of a run whose lines have gone off the screen, in no more lines than one screen has.
std::string TextReport::Story(const RunSummary& summary) const
{
    if (!TellsStory(summary))
        return {};
    std::string lines;
    if (summary.failed > 0) {
        lines += Painted(fmt::format("Failed: {}", Counted(summary.failed, "file")), red) + "\n";
        for (const RunStory::Failed& failed : story_.failures())
            lines += "    " + FailedLine(failed.path, failed.error);
        lines += MoreLine(summary.failed - std::ssize(story_.failures()));
        lines += "\n";
    }

    const std::vector<RunStory::Total> found = story_.FoundPairs();
    const std::size_t shown = std::min(found.size(), RunStory::mostOfAKind);
    if (shown > 0)
        lines += "Totals:\n";
    for (std::size_t at = 0; at < shown; ++at)
        lines += TotalLine(found[at]);
    lines += MoreLine(std::ssize(found) - static_cast<std::int64_t>(shown));
    const std::vector<String> nowhere = story_.TextsFoundNowhere();
    if (!nowhere.empty()) {
        std::vector<std::string> named;
        for (std::size_t at = 0; at < std::min(nowhere.size(), RunStory::mostOfAKind); ++at)
            named.push_back(Quoted(nowhere[at]));
        lines += fmt::format(
            "Found nowhere: {}{}\n", fmt::join(named, ", "),
            named.size() < nowhere.size() ? fmt::format(" and {} more", nowhere.size() - named.size()) : std::string());
    }
    return lines.empty() || lines.ends_with("\n\n") ? lines : lines + "\n";
}

std::string TextReport::TotalLine(const RunStory::Total& total) const
{
    const std::string pair = Replaces() ? Quoted(total.find) + " -> " + Quoted(total.replace) : Quoted(total.find);
    return fmt::format("    {}  {} in {}\n", pair, total.occurrences, Counted(total.files, "file"));
}

std::string TextReport::AtEnd(const BackupSummary& summary)
{
    return Gap() + fmt::format("{}: {}, {} without a backup, {} failed\n", Counted(summary.files, "file"),
                               Restores() ? fmt::format("{} restored", summary.done)
                                          : Counted(summary.backups, "backup") + " removed",
                               summary.unchanged, summary.failed);
}

std::string TextReport::OfJob(const String& path, const Project& project)
{
    return fmt::format("{}\n", Escaped(path)) + PairLines(project) + FilesLine(*project.options) +
           OptionLines(*project.options);
}

std::string TextReport::LinesOf(const FileReport& file) const
{
    if (file.status == FileStatus::NotProcessed)
        return FailedLine(file.path, file.error);
    const std::string state(StateText(file, Replaces()));
    if (file.State() == ReportedState::Unchanged) {
        // Hits that are not counted, in a find.
        if (TellsHits(file))
            return FileLine(file.path, "nothing counted");
        // Not named as a rule: most files of a large folder have no hit.
        return style_.verbose || !file.warnings.empty() ? FileLine(file.path, state) : std::string();
    }
    if (file.State() == ReportedState::CountedOnly)
        return FileLine(file.path, fmt::format("{} found, nothing could be changed", file.Occurrences())) +
               FoundLines(file);
    // A footer and a revision number are changed without a count.
    if (file.status == FileStatus::NothingCounted)
        return FileLine(file.path, Painted(Done(state) + ", nothing counted", green));

    const std::string count = fmt::format("{} {}", file.Occurrences(), Replaces() ? Done("replaced") : "found");
    return FileLine(file.path, Painted(Replaces() ? Done(state) + ", " + count : count, green)) + FoundLines(file);
}

std::string TextReport::LinesOf(const BackupReport& file) const
{
    if (file.status == FileStatus::NotProcessed)
        return FailedLine(file.file, file.error);
    if (file.status == FileStatus::NothingCounted)
        return style_.verbose || !file.warnings.empty() ? FileLine(file.file, "no backup") : std::string();
    std::string done = (Restores() ? "restored from " : "removed ") + Escaped(file.backup);
    if (!file.older.empty())
        done += " and " + Counted(std::ssize(file.older), "older one");
    return FileLine(file.file, Painted(done, green));
}

std::string TextReport::FileLine(const String& path, const std::string& state) const
{
    return fmt::format("{}: {}\n", Painted(Escaped(path), bold), state);
}

std::string TextReport::FailedLine(const String& path, const String& error) const
{
    // The texts of the run begin with blanks now and then; people need not see them.
    // A text of blanks alone is found nowhere; the length then bounds the position.
    const StringView text = StringView(error).substr(std::min(error.size(), error.find_first_not_of(u' ')));
    return FileLine(path, Painted("failed", red) + ": " + Escaped(text));
}

/// One line for each pair that occurs, the places under each other.
std::string TextReport::FoundLines(const FileReport& file) const
{
    constexpr std::size_t widest = 60;  // a longer pair would push all places off the screen
    std::size_t width = 0;
    for (const PairReport& pair : file.pairs) {
        if (pair.Occurrences() > 0)
            width = std::max(width, std::min(widest, Cells(PairText(pair))));
    }

    std::string lines;
    for (const PairReport& pair : file.pairs) {
        // A list may have hundreds of pairs; those without a hit would hide the others.
        if (pair.Occurrences() == 0)
            continue;
        const std::string text = PairText(pair);
        const std::size_t cells = Cells(text);
        lines += fmt::format("    {}{}  {}\n", text, std::string(cells < width ? width - cells : 0, ' '), Places(pair));
    }
    return lines;
}

std::string TextReport::PairText(const PairReport& pair) const
{
    return Replaces() ? Quoted(pair.find) + " -> " + Quoted(pair.replace) : Quoted(pair.find);
}

/// "slides 2, notes 1": the places where the pair occurs.
std::string TextReport::Places(const PairReport& pair) const
{
    std::string places;
    for (std::size_t row = 0; row < SearchLocations.size(); ++row) {
        if (!(style_.setting.*SearchLocations[row].isOn) || pair.counts[row] <= 0)
            continue;
        places += fmt::format("{}{} {}", places.empty() ? "" : ", ", SearchLocations[row].name, pair.counts[row]);
    }
    return places;
}

/// One line for each hit, in the order of the run, and one for those that were left out.
std::string TextReport::HitLines(const FileReport& file) const
{
    if (!TellsHits(file))
        return {};
    std::string lines;
    std::string place;  // of the hits of one text, which are many at times
    const HitPlace* placeNow = nullptr;
    for (const Hit& hit : file.hits) {
        if (hit.place.get() != placeNow) {
            placeNow = hit.place.get();
            place = ToUtf8(TextPlaceText(*placeNow));
        }
        const auto pair = static_cast<std::size_t>(hit.place->pair) - 1;
        const StringView find = pair < file.pairs.size() ? StringView(file.pairs[pair].find) : StringView();
        const std::string remark = ToUtf8(RemarkText(hit, Replaces()));
        lines += fmt::format("    {}{}: {}\n", Painted(place + ToUtf8(ParagraphText(hit)), cyan),
                             remark.empty() ? remark : " (" + remark + ")", MarkedText(LineOf(hit, find)));
    }
    return lines + (file.hitsLeftOut > 0 ? fmt::format("    and {} more\n", file.hitsLeftOut) : std::string());
}

/// A hit in the text around it: marked by colors, or "[old -> new]" without any.
std::string TextReport::MarkedText(const HitLine& line) const
{
    const std::string found = ToUtf8(line.found);
    const std::string becomes = ToUtf8(line.becomes.value_or(String()));
    std::string hit;
    if (!style_.colors)
        hit = line.becomes ? fmt::format("[{} -> {}]", found, becomes) : fmt::format("[{}]", found);
    else if (!line.becomes)
        hit = Painted(found, boldRed);
    else
        hit = Painted(found, struckRed) + (becomes.empty() ? becomes : Painted(becomes, boldGreen));
    return ToUtf8(line.before) + hit + ToUtf8(line.after);
}

std::string TextReport::Painted(std::string_view text, std::string_view color) const
{
    // The last sequence ends every colour, so that what follows has the terminal's own.
    return style_.colors ? fmt::format("{}{}\x1b[0m", color, text) : std::string(text);
}

}  // namespace

std::unique_ptr<Report> CreateTextReport(const ReportStyle& style)
{
    return std::make_unique<TextReport>(style);
}

}  // namespace tessarine::batch
