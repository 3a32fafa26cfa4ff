#include <cstdio>
#include <variant>

#include "batch/BatchProgram.h"
#include "batch/Cancellation.h"
#include "batch/CommandLine.h"
#include "batch/LineText.h"
#include "batch/Output.h"
#include "batch/ProcessGuards.h"
#include "log/ErrorLog.h"
#include "model/Excel.h"
#include "office/sheets/ExcelProvider.h"
#include "platform/Locale.h"
#include "platform/Messages.h"
#include "saving/RunJournal.h"
#include "SystemEngines.h"

namespace
{

using namespace tessarine;

void ShowMessagesOn(batch::Output& output)
{
    SetMessageBox([&output](const Message& message) {
        output.Note("tessarine-batch: " + batch::OnOneLine(ToUtf8(message.text)));
        return MessageAnswer::Ok;
    });
}

int End(const batch::EarlyEnd& end)
{
    std::fwrite(end.output.data(), 1, end.output.size(), stdout);
    std::fwrite(end.error.data(), 1, end.error.size(), stderr);
    // Also of --help: what went to a full disk was not done.
    return std::fflush(stdout) == 0 ? end.exitStatus : batch::ExitStatus::FileFailed;
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    batch::GuardProcess();
    // A program may be started without even its own name.
    const auto read = batch::ReadCommandLine({arguments + (argumentCount > 0 ? 1 : 0), arguments + argumentCount});
    if (const auto* end = std::get_if<batch::EarlyEnd>(&read))
        return End(*end);

    UseSystemLocale();
    batch::Output output(stdout, stderr);
    ShowMessagesOn(output);
    GetFileStorageFolder();  // without the folder there is no error log; the report tells what matters all the same
    excel::SetProvider(sheets::CreateProvider());
    for (const RecoveredFile& file : RecoverFromKilledRuns())
        output.Note("tessarine-batch: " + batch::OnOneLine(ToUtf8(file.path + u": " + file.text)));
    batch::WatchForCancel();
    const auto& call = std::get<batch::BatchCall>(read);
    const int status = batch::Perform(call, batch::SystemEngines(batch::SaveTermsOf(call)), output);
    if (const auto& failure = ErrorLogFailure())
        output.Note("tessarine-batch: the error log lacks lines: " + batch::OnOneLine(ToUtf8(failure->Reason())));
    SetMessageBox({});  // it holds a reference to the output, which ends here
    return status;
}
