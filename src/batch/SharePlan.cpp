#include "batch/SharePlan.h"

#include <cerrno>
#include <utility>

#include "batch/BatchCall.h"
#include "batch/Digest.h"
#include "batch/NumberField.h"
#include "batch/Refusal.h"
#include "batch/Shares.h"
#include "files/FileFailure.h"
#include "files/Files.h"
#include "files/HeldFolder.h"
#include "files/RandomAccessFile.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"
#include "saving/JournalText.h"
#include "saving/NewFile.h"

namespace tessarine::batch
{

namespace
{

constexpr const char* planWord = "tessarine plan 1";
constexpr const char* planFileWord = "file";
constexpr const char* endWord = "end";

std::string TextOf(const SharePlan& plan, const std::string& named)
{
    const std::vector<JobFile>& files = plan.collected.files;
    std::string text = JournalLine({planWord, named});
    for (std::size_t file = 0; file < files.size(); ++file)
        text += JournalLine(
            {planFileWord, std::to_string(plan.sizes[file]), ToUtf8(files[file].path), ToUtf8(files[file].refusal)});
    return text + JournalLine({endWord, std::to_string(files.size()), std::to_string(plan.collected.skippedLinks)});
}

/// False when there is a file of that name by now.
bool MakePlan(const String& path, const std::string& text)
{
    const NativeString name = NativePath(String(FileNameOf(StringView(path))));
    const HeldFolder folder(NativePath(String(FolderOf(StringView(path)))));
    if (!folder.IsOpen())
        throw ClassicFileFailure(errno, "open the folder of", NativePath(path));
    NewFile file(folder);
    if (!file.IsOpen() || !file.Write(text) || !file.FlushToDisk())
        throw ClassicFileFailure(errno, "write", NativePath(path));
    if (file.TakeFreePlace(name))
        return true;
    if (errno != EEXIST)
        throw ClassicFileFailure(errno, "write", NativePath(path));
    return false;
}

std::string TextAt(const String& path)
{
    const RandomAccessFile file(path);
    std::string text(file.Size(), '\0');
    file.Read(0, std::as_writable_bytes(std::span(text)));
    return text;
}

SharePlan PlanIn(const std::string& text, const String& path, const std::string& named)
{
    const std::vector<JournalFields> lines = ReadJournal(text);
    if (lines.empty() || lines[0].size() != 2 || lines[0][0] != planWord)
        Refuse(u"--plan: \"" + path + u"\" is not a plan");
    if (lines[0][1] != named)
        Refuse(u"--plan: \"" + path + u"\" is the plan of other files; name another one, or remove it");
    SharePlan plan;
    for (const JournalFields& line : lines) {
        if (line[0] != planFileWord || line.size() != 4)
            continue;
        plan.sizes.push_back(NumberIn<std::uint64_t>(line[1]));
        plan.collected.files.push_back({.path = FromUtf8(line[2]), .refusal = FromUtf8(line[3])});
    }
    const JournalFields& last = lines.back();
    if (last[0] != endWord || last.size() != 3 || NumberIn<std::size_t>(last[1]) != plan.sizes.size())
        Refuse(u"--plan: \"" + path + u"\" is damaged");
    plan.collected.skippedLinks = NumberIn<std::int64_t>(last[2]);
    return plan;
}

}  // namespace

std::string FilesNamed(const BatchCall& call)
{
    Digest digest;
    const auto addAll = [&](const std::vector<String>& texts) {
        for (const String& text : texts)
            digest.Add(ToUtf8(text));
        digest.Add(std::to_string(texts.size()));
    };
    addAll(call.paths);
    addAll(call.patterns);
    addAll(call.excluded);
    addAll({call.job, call.filesFrom.value_or(String())});
    for (const bool flag : {call.hidden, call.recurse, call.follow, call.nullEndsPaths})
        digest.Add(flag ? "1" : "0");
    return digest.Text();
}

SharePlan PlanOf(const BatchCall& call, const std::function<CollectedFiles()>& collect)
{
    const std::string named = FilesNamed(call);
    if (!FileExists(call.plan)) {
        SharePlan plan{collect(), {}};
        plan.sizes = SizesOf(plan.collected.files);
        if (MakePlan(call.plan, TextOf(plan, named)))
            return plan;
    }
    return PlanIn(TextAt(call.plan), call.plan, named);
}

}  // namespace tessarine::batch
