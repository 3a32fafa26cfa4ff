#include "Program.h"

#include <cstdio>
#include <variant>

#include "batch/BatchProgram.h"
#include "batch/Cancellation.h"
#include "batch/CommandLine.h"
#include "batch/LineText.h"
#include "batch/Output.h"
#include "batch/ProcessGuards.h"
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

void ShowMessagesOn(Output& output)
{
    SetMessageBox([&output](const Message& message) {
        output.Note("tessarine-batch: " + OnOneLine(ToUtf8(message.text)));
        return MessageAnswer::Ok;
    });
}

int End(const EarlyEnd& end)
{
    const bool isWritten = WriteText(stdout, end.output);
    static_cast<void>(WriteText(stderr, end.error));
    // Also of --help: what went to a full disk was not done.
    return isWritten ? end.exitStatus : ExitStatus::FileFailed;
}

}  // namespace

int RunProgram(const std::vector<std::string>& arguments)
{
    GuardProcess();
    const auto read = ReadCommandLine(arguments);
    if (const auto* end = std::get_if<EarlyEnd>(&read))
        return End(*end);

    UseSystemLocale();
    const auto& call = std::get<BatchCall>(read);
    Output output(stdout, stderr, call.color, call.quiet);
    ShowMessagesOn(output);
    GetFileStorageFolder();  // without the folder there is no error log; the report tells what matters all the same
    excel::SetProvider(sheets::CreateProvider());
    for (const RecoveredFile& file : RecoverFromKilledRuns())
        output.Note("tessarine-batch: " + OnOneLine(ToUtf8(file.path + u": " + file.text)));
    WatchForCancel();
    const int status = Perform(call, SystemEngines(SaveTermsOf(call)), output);
    if (const auto& failure = ErrorLogFailure())
        output.Note("tessarine-batch: the error log lacks lines: " + OnOneLine(ToUtf8(failure->Reason())));
    SetMessageBox({});  // it holds a reference to the output, which ends here
    return status;
}

}  // namespace tessarine::batch
