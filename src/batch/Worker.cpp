#include "batch/Worker.h"

#include <cstdio>
#include <memory>
#include <utility>

#include "batch/BatchProgram.h"
#include "batch/EngineOfRun.h"
#include "batch/OwnRun.h"
#include "batch/PreparedRun.h"
#include "batch/ReportStyleOfAll.h"
#include "batch/StandardInput.h"
#include "batch/WorkerMessages.h"

namespace tessarine::batch
{

namespace
{

/// Tells the run what became of a file, with all that a report may need.
void SayReport(const FileReport& file, const ReportStyle& style, RunOfWorker& forRun)
{
    // One by one: an object takes several times the room of what it holds, and there may be very many.
    for (const Hit& hit : file.hits)
        forRun.Say("hit", JsonOf(hit, style.command == Command::Replace));
    Json line = HeadOf(file, style);
    line.update(TailOf(file, style));
    forRun.Say("file", std::move(line));
}

}  // namespace

std::optional<std::string> RunOfWorker::NextMessage()
{
    return ReadMessage(
        [](std::span<char> bytes) { return std::fread(bytes.data(), 1, bytes.size(), stdin) == bytes.size(); });
}

void RunOfWorker::Say(const char* key, Json value)
{
    auto object = Json::object();
    object[key] = std::move(value);
    std::string packed;
    Json::to_cbor(object, packed);
    const std::string message = Framed(packed);
    std::fwrite(message.data(), 1, message.size(), stdout);
    std::fflush(stdout);
}

int Work(const BatchCall& call, const Engines& engines, RunOfWorker& forRun)
{
    try {
        auto input = forRun.NextMessage();
        if (!input)
            return ExitStatus::NotValid;
        GiveStandardInput(std::move(*input));
        BatchCall own = call;
        own.engine = Engine::BuiltIn;
        const auto engine = std::make_shared<EngineOfRun>(own, engines);
        engine->Choose();
        PreparedRun run(own, engine);
        const Json job = run.ToJson();

        const ReportStyle style = StyleOfAll(run.Replaces());
        OwnRun processing(run, [&](const FileReport& file) { SayReport(file, style, forRun); });
        processing.Started = [&](std::size_t) {
            forRun.Say("begun", true);
            return true;
        };
        forRun.Say("ready", job);
        while (const auto path = forRun.NextMessage())
            processing.Run({{.path = FromUtf8(*path), .refusal = {}}});
        return ExitStatus::Done;
    } catch (...) {
        forRun.Say("refused", ToUtf8(CurrentFailure().Reason()));
        return ExitStatus::NotValid;
    }
}

}  // namespace tessarine::batch
