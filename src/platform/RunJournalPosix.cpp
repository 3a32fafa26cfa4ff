#include "platform/RunJournal.h"

namespace tessarine
{

class RunJournal::NotedFile
{
};

RunJournal::RunJournal() = default;
RunJournal::~RunJournal() = default;
void RunJournal::Begin(StringView, const FileAttributes&, const FileTimes&) {}
void RunJournal::End() noexcept {}

void NoteReplacement(const std::string&, int) noexcept {}

class InPlaceWrite::NotedWrite
{
};

InPlaceWrite::InPlaceWrite(const std::string&, int, const std::string&) {}
InPlaceWrite::~InPlaceWrite() = default;
void InPlaceWrite::End() noexcept {}

std::vector<RecoveredFile> RecoverFromKilledRuns()
{
    return {};
}

}  // namespace tessarine
