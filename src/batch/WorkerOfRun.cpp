#include "batch/WorkerOfRun.h"

#include <utility>

#include "batch/Worker.h"
#include "batch/WorkerMessages.h"
#include "platform/Failure.h"

namespace tessarine::batch
{

namespace
{

std::vector<std::string> ArgumentsOfWorker(const WorkerTerms& terms)
{
    std::vector<std::string> arguments{std::string(WorkerArgument)};
    arguments.insert(arguments.end(), terms.arguments.begin(), terms.arguments.end());
    return arguments;
}

}  // namespace

WorkerOfRun::WorkerOfRun(const WorkerTerms& terms, Note note)
    : terms_(terms), note_(std::move(note)), process_(ArgumentsOfWorker(terms))
{
    process_.Write(Framed(terms_.standardInput));  // a worker that has ended says so below
    WaitUntilReady();
}

void WorkerOfRun::WaitUntilReady()
{
    std::size_t bytes = 0;
    while (const auto object = NextObject(bytes)) {
        if (object->contains("refused"))
            throw Failure(FailureNumber::InvalidProcedureCall, FromUtf8(object->value("refused", std::string())));
        const auto job = object->find("ready");
        if (job == object->end())
            continue;
        // A worker reads the job, the lists and all else that the call names itself.
        if (*job != terms_.job)
            throw Failure(FailureNumber::InvalidProcedureCall,
                          u"the job was changed while the workers of the run were started");
        return;
    }
    throw Failure(FailureNumber::DeviceIO, u"a worker ended at its start: " + FromUtf8(process_.End()));
}

std::optional<WorkerOfRun::Answer> WorkerOfRun::Process(const String& path)
{
    hasBegun_ = false;
    if (!process_.Write(Framed(ToUtf8(path))))
        return {};
    Answer answer;
    std::vector<Hit> hits;
    while (const auto object = NextObject(answer.bytes)) {
        hasBegun_ = hasBegun_ || object->contains("begun");
        if (const auto hit = object->find("hit"); hit != object->end()) {
            hits.push_back(HitFrom(*hit));
            // Hits of one text share what is said of its place.
            if (hits.size() > 1 && *hits[hits.size() - 2].place == *hits.back().place)
                hits.back().place = hits[hits.size() - 2].place;
        }
        if (const auto file = object->find("file"); file != object->end()) {
            answer.report = FileReportFrom(*file, terms_.replaces);
            answer.report.path = path;
            answer.report.hits = std::move(hits);
            return answer;
        }
    }
    return {};
}

std::string WorkerOfRun::End()
{
    // What it has to say at its end comes after the last file.
    process_.CloseInput();
    std::size_t bytes = 0;
    while (NextObject(bytes)) {
    }
    return process_.End();
}

/// The next object that is not for the user. Nothing at the end of the worker.
std::optional<Json> WorkerOfRun::NextObject(std::size_t& bytes)
{
    const ReadBytes read = [this](std::span<char> target) { return process_.Read(target); };
    while (const auto message = ReadMessage(read)) {
        bytes += message->size();
        const Json object = Json::from_cbor(*message, true, false);
        if (!object.is_object())
            return {};
        const auto note = object.find("note");
        if (note == object.end())
            return object;
        if (note->is_string())
            note_(note->get<std::string>());
    }
    return {};
}

}  // namespace tessarine::batch
