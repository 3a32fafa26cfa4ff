#include "Program.h"

#include <cstdio>
#include <functional>
#include <variant>

#include "batch/BatchProgram.h"
#include "batch/Cancellation.h"
#include "batch/CommandLine.h"
#include "batch/LineText.h"
#include "batch/Output.h"
#include "batch/ProcessGuards.h"
#include "batch/Worker.h"
#include "batch/WorkerProcess.h"
#include "batch/WriteText.h"
#include "log/ErrorLog.h"
#include "model/Excel.h"
#include "office/sheets/ExcelProvider.h"
#include "office/system/SystemEngines.h"
#include "platform/Locale.h"
#include "platform/Messages.h"
#include "saving/RunJournal.h"

namespace tessarine::batch
{

namespace
{

/// Told of a line for the user, without its end.
using NoteReceiver = std::function<void(const std::string& text)>;

int End(const EarlyEnd& end)
{
    const bool isWritten = WriteText(stdout, end.output);
    static_cast<void>(WriteText(stderr, end.error));
    // Also of --help: what went to a full disk was not done.
    return isWritten ? end.exitStatus : ExitStatus::FileFailed;
}

/// What surrounds the work of both kinds of process: `work` does it and gives the exit status.
template <class Work>
int WorkInSurroundings(const NoteReceiver& note, const Work& work)
{
    UseSystemLocale();
    SetMessageBox([&note](const Message& message) {
        note(OnOneLine(ToUtf8(message.text)));
        return MessageAnswer::Ok;
    });
    GetFileStorageFolder();  // without the folder there is no error log; the report tells what matters all the same
    excel::SetProvider(sheets::CreateProvider());
    for (const RecoveredFile& file : RecoverFromKilledRuns())
        note(OnOneLine(ToUtf8(file.path + u": " + file.text)));
    const int status = work();
    if (const auto& failure = ErrorLogFailure())
        note("the error log lacks lines: " + OnOneLine(ToUtf8(failure->Reason())));
    SetMessageBox({});  // it holds a reference to the receiver, which ends with the work
    return status;
}

int RunCall(const BatchCall& call)
{
    Output output(stdout, stderr, call.color, call.quiet);
    return WorkInSurroundings([&output](const std::string& text) { output.Note("tessarine-batch: " + text); },
                              [&] {
                                  WatchForCancel();
                                  return Perform(call, SystemEngines(SaveTermsOf(call)), output);
                              });
}

int RunWorker(const BatchCall& call)
{
    EndWithStarter();
    RunOfWorker forRun;
    return WorkInSurroundings([&forRun](const std::string& text) { forRun.Say("note", text); },
                              [&] { return Work(call, SystemEngines(SaveTermsOf(call)), forRun); });
}

}  // namespace

int RunProgram(const std::vector<std::string>& arguments)
{
    GuardProcess();
    const bool isWorker = !arguments.empty() && arguments.front() == WorkerArgument;
    const auto read = ReadCommandLine({arguments.begin() + (isWorker ? 1 : 0), arguments.end()});
    if (const auto* end = std::get_if<EarlyEnd>(&read))
        return End(*end);
    const auto& call = std::get<BatchCall>(read);
    return isWorker ? RunWorker(call) : RunCall(call);
}

}  // namespace tessarine::batch
