#include "Subject.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "engine/CounterStatuses.h"
#include "model/Project.h"
#include "office/builtin/Provider.h"
#include "SlideXml.h"

namespace tessarine::bench
{

namespace
{

/// What the last line of a report says, in text or JSON: "..., 0 failed; 640 occurrences found", "occurrences":640}}.
std::int64_t OccurrencesIn(const std::string& report)
{
    std::ifstream file(report, std::ios::ate | std::ios::binary);
    constexpr std::streamoff longestLine = 300;
    file.seekg(-std::min<std::streamoff>(longestLine, file.tellg()), std::ios::end);
    const std::string end((std::istreambuf_iterator<char>(file)), {});
    const std::size_t text = end.rfind("failed; ");
    const std::size_t json = end.rfind("\"occurrences\":");
    constexpr std::size_t textSize = std::string_view("failed; ").size();
    constexpr std::size_t jsonSize = std::string_view("\"occurrences\":").size();
    if (text != std::string::npos)
        return std::atoll(end.c_str() + text + textSize);
    return json == std::string::npos ? 0 : std::atoll(end.c_str() + json + jsonSize);
}

String PathText(const std::filesystem::path& path)
{
    return path.u16string();
}

void Count(Outcome& outcome, const std::shared_ptr<CounterStatuses>& result)
{
    ++outcome.files;
    if (!result || result->FileStausAfterProcess == FileStatus::NotProcessed) {
        ++outcome.failed;
        return;
    }
    for (const std::shared_ptr<CounterStatus>& pair : result->NewEnum()) {
        for (const std::int32_t count : pair->Counts())
            outcome.occurrences += count > 0 ? count : 0;
    }
}

Outcome Run(const Paths& decks, const std::vector<Pair>& pairs, bool replaces)
{
    Outcome outcome;
    const ProjectOwner project(builtin::CreateProvider());
    project->options->RequiredFindAndReplaceCount = true;
    for (const Pair& pair : pairs) {
        const auto places = std::make_shared<OptionSetting>();
        places->InSlides = places->InShapesAndTextboxes = places->InNotes = true;
        project->FindAndReplaceList->Add(pair.find, pair.replace, places, project.get());
    }
    for (const std::filesystem::path& deck : decks)
        project->FilesToProcess.push_back(PathText(deck));
    project->AfterFileProcess += [&outcome](const auto& result) { Count(outcome, result); };

    if (replaces)
        project->Replacement();
    else
        project->Search();
    return outcome;
}

}  // namespace

Outcome OpenAndClose(const Paths& decks)
{
    Outcome outcome;
    const auto application = builtin::CreateProvider()->CreateApplication();
    const auto presentations = application->Presentations();
    for (const std::filesystem::path& deck : decks) {
        presentations->Open(PathText(deck), powerpoint::msoFalse, powerpoint::msoFalse, powerpoint::msoFalse)->Close();
        ++outcome.files;
    }
    application->Quit();
    return outcome;
}

Outcome Find(const Paths& decks, const std::vector<Pair>& pairs)
{
    return Run(decks, pairs, false);
}

Outcome Replace(const Paths& decks, const std::vector<Pair>& pairs)
{
    return Run(decks, pairs, true);
}

Outcome CallBatchProgram(const std::vector<std::string>& options, const Paths& decks)
{
    std::vector<std::string> arguments{TESSARINE_BATCH_PROGRAM, "find"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    for (const std::filesystem::path& deck : decks)
        arguments.push_back(deck.string());
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const std::string report = std::string(TESSARINE_BENCH_DECKS) + "/report";
    posix_spawn_file_actions_addopen(&actions, 1, report.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t child = 0;
    const int error = posix_spawn(&child, pointers[0], &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw std::runtime_error("can't start the batch program");
    int status = 0;
    waitpid(child, &status, 0);

    Outcome outcome;
    outcome.files = static_cast<std::int64_t>(decks.size());
    outcome.failed = WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 0 : outcome.files;
    outcome.occurrences = OccurrencesIn(report);
    return outcome;
}

Pair SoughtPair()
{
    return {SoughtText, NewText};
}

std::vector<Pair> PairsThatDoNotOccur(int count)
{
    std::vector<Pair> pairs;
    for (int i = 0; i < count; ++i) {
        const String number = FromUtf8(std::to_string(i));
        pairs.push_back({u"Zebrawood" + number, u"Oak" + number});
    }
    return pairs;
}

}  // namespace tessarine::bench
