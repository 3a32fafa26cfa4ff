#include "batch/RunRecord.h"

#include <array>
#include <cerrno>
#include <span>
#include <utility>

#include <fmt/format.h>

#include "batch/CommandTable.h"
#include "batch/Digest.h"
#include "batch/NumberField.h"
#include "batch/PreparedRun.h"
#include "batch/Refusal.h"
#include "batch/ReportJson.h"
#include "batch/ReportStyleOfAll.h"
#include "batch/SharePlan.h"
#include "files/FileFailure.h"
#include "files/ReadAt.h"
#include "files/WriteAll.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"
#include "run/RecordFile.h"
#include "saving/JournalText.h"

namespace tessarine::batch
{

namespace
{

constexpr const char* recordWord = "tessarine run 1";
constexpr const char* fileWord = "file";
constexpr const char* allWord = "all";
constexpr const char* begunWord = "begun";
constexpr const char* doneWord = "done";

/// What shows whether a file has other content; "none" for one that isn't there. A save puts another file into its
/// place as a rule, so that the time of the last change, which a run moves for files that it leaves alone, too, matters
/// only where a save may write into the file itself or gives it its old date back. The number of the device doesn't, as
/// each machine has its own for a file system on the network.
std::string StateOf(const String& path, bool withLastChange)
{
    const auto state = FileStateOf(StringView(path));
    if (!state)
        return "none";
    return fmt::format("{} {} {} {}", state->identity.file, state->size, state->lastWrite,
                       withLastChange ? state->lastChange : 0);
}

/// What tells the run from others: all that decides what becomes of a file, and which files it takes.
std::string NameOfRun(const PreparedRun& run)
{
    const BatchCall& call = run.call;
    const Shard shard = call.shard.value_or(Shard());
    return Digest()
        .Add(run.ToJson().dump(-1, ' ', false, Json::error_handler_t::replace))
        .Add(fmt::format("{} {} {} {} {} {}", NameOf(call.command), call.dryRun, call.TakesHits(), shard.index,
                         shard.count, FilesNamed(call)))
        .Text();
}

std::string PackedReport(const FileReport& report, bool replaces)
{
    const ReportStyle style = StyleOfAll(replaces);
    Json line = HeadOf(report, style);
    line.update(TailOf(report, style));
    Json hits = Json::array();
    for (const Hit& hit : report.hits)
        hits.push_back(JsonOf(hit, replaces));
    line["hits"] = std::move(hits);
    std::string packed;
    Json::to_cbor(line, packed);
    return packed;
}

}  // namespace

RunRecord::RunRecord(const PreparedRun& run)
    : path_(run.call.record),
      run_(NameOfRun(run)),
      replaces_(run.Replaces()),
      changesFiles_(run.ChangesFiles()),
      needsLastChange_(run.call.inPlace || run.call.inPlaceLinks || run.project->options->KeepOriginalFileDate)
{
    const StringView path = path_;
    folder_ = HeldFolder(NativePath(String(FolderOf(path))));
    if (folder_.IsOpen())
        file_ = OpenRecordForAppending(folder_, NativePath(String(FileNameOf(path))));
    if (!file_.IsOpen())
        throw ClassicFileFailure(errno, "open", NativePath(path_));
    if (TryToLockRecord(file_.get()) == RecordLocking::HeldByAnother)
        Refuse(u"--record: another run is at \"" + path_ + u"\"");
    Load();
}

RunRecord::~RunRecord() = default;

const FilesOfRun& RunRecord::Files(const std::function<FilesOfRun()>& collect)
{
    if (!hasFiles_) {
        files_ = collect();
        std::string text = JournalLine({recordWord, run_});
        const std::vector<JobFile>& files = files_.collected.files;
        for (const JobFile& file : files)
            text += JournalLine({fileWord, std::to_string(file.number), ToUtf8(file.path), ToUtf8(file.refusal)});
        const ShardFacts shard = files_.shard.value_or(ShardFacts());
        text += JournalLine({allWord, std::to_string(files.size()), std::to_string(files_.collected.skippedLinks),
                             std::to_string(shard.shard.index), std::to_string(shard.shard.count),
                             std::to_string(shard.files), shard.division});
        Write(text);
        Flush();
        hasFiles_ = true;
    }
    for (const auto& [index, state] : begun_) {
        JobFile& file = files_.collected.files[index];
        if (changesFiles_ && StateOf(file.path, needsLastChange_) != state)
            file.refusal =
                u"A run that was killed had the file in hand, and it is not as it was before: it may have been "
                u"changed.";
    }
    return files_;
}

FileReport RunRecord::ReportOf(std::size_t file) const
{
    const Line line = done_.at(file);
    std::string text(line.size, '\0');
    const auto count = ReadAt(file_.get(), line.offset, std::as_writable_bytes(std::span(text)));
    const auto fields = count == line.size ? JournalFieldsIn(text) : std::nullopt;
    if (!fields)
        throw ClassicFileFailure(EIO, "read", NativePath(path_));
    FileReport report = FileReportFrom(Json::from_cbor(fields->at(2), true, false), replaces_);
    report.path = files_.collected.files[file].path;
    report.number = files_.collected.files[file].number;
    return report;
}

void RunRecord::Begun(std::size_t file, const String& path)
{
    const std::string line = JournalLine({begunWord, std::to_string(file), StateOf(path, needsLastChange_)});
    const std::scoped_lock guard(mutex_);
    Write(line);
    // On the disk before the file is touched. Of a run that changes nothing a line that is lost does no harm.
    if (changesFiles_)
        Flush();
}

void RunRecord::Done(std::size_t file, const FileReport& report)
{
    const std::string line = JournalLine({doneWord, std::to_string(file), PackedReport(report, replaces_)});
    const std::scoped_lock guard(mutex_);
    Write(line);
}

void RunRecord::Load()
{
    std::array<std::byte, 65536> block{};
    std::string line;
    std::uint64_t lineBegin = 0;
    std::uint64_t offset = 0;
    while (true) {
        const auto count = ReadAt(file_.get(), offset, block);
        if (!count)
            throw ClassicFileFailure(errno, "read", NativePath(path_));
        if (*count == 0)
            break;
        for (std::size_t at = 0; at < *count; ++at) {
            const char byte = static_cast<char>(block[at]);
            if (byte != '\n') {
                line += byte;
                continue;
            }
            TakeLine(line, lineBegin);
            line.clear();
            lineBegin = offset + at + 1;
        }
        offset += *count;
    }
    // The end of one that a crash has cut short becomes a line of its own, which is none.
    if (!line.empty())
        Write("\n");
    if (offset > 0 && lineBegin == 0)
        Refuse(u"--record: \"" + path_ + u"\" is not the record of a run");
}

void RunRecord::TakeLine(const std::string& line, std::uint64_t offset)
{
    const auto fields = JournalFieldsIn(line);
    const bool isHeader = fields && fields->size() == 2 && fields->front() == recordWord;
    if (offset == 0 && !isHeader)
        Refuse(u"--record: \"" + path_ + u"\" is not the record of a run");
    if (!fields || fields->size() < 2)
        return;
    const std::string& word = fields->front();
    const auto number = [&](std::size_t field) { return NumberIn<std::int64_t>(fields->at(field)); };
    const auto file = static_cast<std::size_t>(number(1));
    const bool isOfAFile = file < files_.collected.files.size() && hasFiles_;
    if (isHeader) {
        if (fields->at(1) != run_)
            Refuse(u"--record: \"" + path_ + u"\" is the record of another run");
        files_ = {};  // of a run that was killed while it wrote them
    } else if (word == fileWord && fields->size() == 4) {
        files_.collected.files.push_back(
            {.path = FromUtf8(fields->at(2)), .refusal = FromUtf8(fields->at(3)), .number = number(1)});
    } else if (word == allWord && fields->size() == 7 && number(1) == std::ssize(files_.collected.files)) {
        hasFiles_ = true;
        files_.collected.skippedLinks = number(2);
        if (number(5) > 0)
            files_.shard = {
                {static_cast<std::int32_t>(number(3)), static_cast<std::int32_t>(number(4))}, number(5), fields->at(6)};
    } else if (word == begunWord && fields->size() == 3 && isOfAFile) {
        begun_[file] = fields->at(2);
    } else if (word == doneWord && fields->size() == 3 && isOfAFile) {
        begun_.erase(file);
        done_[file] = {offset, line.size()};
    }
}

void RunRecord::Write(const std::string& line)
{
    if (!WriteAll(file_.get(), line))
        throw ClassicFileFailure(errno, "write", NativePath(path_));
}

void RunRecord::Flush()
{
    if (!FlushContent(file_.get()))
        throw ClassicFileFailure(errno, "write", NativePath(path_));
}

}  // namespace tessarine::batch
