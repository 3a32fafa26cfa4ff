#include "batch/WorkerProcess.h"

#include <array>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "batch/QuotedArguments.h"
#include "files/FileDescriptor.h"
#include "platform/Failure.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"

namespace tessarine::batch
{

namespace
{

/// The longest path that the system has at all.
constexpr std::size_t longestPath = 32768;

/// How a worker ends that is ended from here.
constexpr UINT endedFromHere = 1;

[[noreturn]] void RaiseNotStarted()
{
    throw Failure(FailureNumber::DeviceIO,
                  u"A worker could not be started: error " + FromUtf8(std::to_string(GetLastError())) + u".");
}

struct Pipe {
    FileDescriptor reading;
    FileDescriptor writing;
};

/// Neither end is handed on, but for the one that a worker gets by its list.
Pipe NewPipe()
{
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
    if (!CreatePipe(&reading, &writing, nullptr, 0))
        RaiseNotStarted();
    return {FileDescriptor(reading), FileDescriptor(writing)};
}

/// Ends the processes in it when this one ends, however that comes, because only this one has it open.
HANDLE WorkersJob()
{
    static const HANDLE job = [] {
        const HANDLE made = CreateJobObjectW(nullptr, nullptr);
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        SetInformationJobObject(made, JobObjectExtendedLimitInformation, &limits, sizeof limits);
        return made;
    }();
    return job;
}

/// The handles that a new process gets, and no others: a worker that held an end of another one's pipe would keep that
/// one waiting.
class HandedOn
{
public:
    explicit HandedOn(std::array<HANDLE, 3> handles) : handles_(handles)
    {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        bytes_.resize(size);
        if (!InitializeProcThreadAttributeList(List(), 1, 0, &size) ||
            !UpdateProcThreadAttribute(List(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles_.data(),
                                       sizeof(HANDLE) * handles_.size(), nullptr, nullptr))
            RaiseNotStarted();
    }
    ~HandedOn() { DeleteProcThreadAttributeList(List()); }
    HandedOn(const HandedOn&) = delete;
    HandedOn& operator=(const HandedOn&) = delete;

    LPPROC_THREAD_ATTRIBUTE_LIST List() { return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(bytes_.data()); }

private:
    std::array<HANDLE, 3> handles_;  // the list borrows them
    std::vector<char> bytes_;
};

std::wstring OwnExecutable()
{
    std::wstring path(longestPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

FileDescriptor Spawn(const std::vector<std::string>& arguments, HANDLE input, HANDLE output)
{
    const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    for (const HANDLE handle : {input, output, error})
        SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    HandedOn handedOn({input, output, error});
    STARTUPINFOEXW start{};
    start.StartupInfo.cb = sizeof start;
    start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    start.StartupInfo.hStdInput = input;
    start.StartupInfo.hStdOutput = output;
    start.StartupInfo.hStdError = error;
    start.lpAttributeList = handedOn.List();

    const std::wstring program = OwnExecutable();
    NativeString line = QuotedArguments(arguments);
    PROCESS_INFORMATION process{};
    // In a group of its own, which the keys that cancel don't reach, and suspended until it is in the job.
    const DWORD flags = EXTENDED_STARTUPINFO_PRESENT | CREATE_NEW_PROCESS_GROUP | CREATE_SUSPENDED;
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr,
                        &start.StartupInfo, &process))
        RaiseNotStarted();
    const FileDescriptor thread(process.hThread);
    FileDescriptor started(process.hProcess);
    AssignProcessToJobObject(WorkersJob(), started.get());
    ResumeThread(thread.get());
    return started;
}

/// What is for the starter, as Ctrl-Break is, which no group keeps away.
BOOL WINAPI OnConsoleEvent(DWORD event)
{
    // The others end the process when this returns; until then the starter lets the file in hand come to its end.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        Sleep(INFINITE);
    return TRUE;
}

}  // namespace

class WorkerProcess::System
{
public:
    explicit System(const std::vector<std::string>& arguments)
    {
        Pipe input = NewPipe();
        Pipe output = NewPipe();
        process_ = Spawn(arguments, input.reading.get(), output.writing.get());
        input_ = std::move(input.writing);
        output_ = std::move(output.reading);
    }
    ~System()
    {
        if (!process_.IsOpen())
            return;
        TerminateProcess(process_.get(), endedFromHere);
        Wait();
    }
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    bool Write(std::string_view bytes)
    {
        while (!bytes.empty()) {
            DWORD written = 0;
            if (!WriteFile(input_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr))
                return false;
            bytes.remove_prefix(written);
        }
        return true;
    }

    bool Read(std::span<char> bytes)
    {
        while (!bytes.empty()) {
            DWORD count = 0;
            if (!ReadFile(output_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) || count == 0)
                return false;
            bytes = bytes.subspan(count);
        }
        return true;
    }

    void CloseInput() { input_ = {}; }

    std::string End()
    {
        CloseInput();
        return fmt::format("exit status {}", Wait());
    }

private:
    DWORD Wait()
    {
        DWORD status = 0;
        WaitForSingleObject(process_.get(), INFINITE);
        GetExitCodeProcess(process_.get(), &status);
        process_ = {};
        return status;
    }

    FileDescriptor process_;  // not open once it has ended
    FileDescriptor input_;
    FileDescriptor output_;
};

WorkerProcess::WorkerProcess(const std::vector<std::string>& arguments) : system_(std::make_unique<System>(arguments))
{
}

WorkerProcess::~WorkerProcess() = default;

bool WorkerProcess::Write(std::string_view bytes)
{
    return system_->Write(bytes);
}

bool WorkerProcess::Read(std::span<char> bytes)
{
    return system_->Read(bytes);
}

void WorkerProcess::CloseInput()
{
    system_->CloseInput();
}

std::string WorkerProcess::End()
{
    return system_->End();
}

void EndWithStarter()
{
    // The job that the worker is in does it.
    SetConsoleCtrlHandler(&OnConsoleEvent, TRUE);
}

}  // namespace tessarine::batch
