#include "batch/program/ProgramWindows.h"

#include <filesystem>
#include <stdexcept>
#include <utility>

#include "log/ErrorLog.h"
#include "platform/NativePath.h"
#include "platform/PathSeparator.h"
#include "platform/ProgramFolder.h"
#include "platform/SpecialFolders.h"
#include "platform/WindowsHeaders.h"

#include <objbase.h>

namespace tessarine::test
{

namespace
{

std::wstring Wide(const std::string& text)
{
    return std::filesystem::path(FromUtf8(text)).wstring();
}

/// One argument of a command line, so that the program's start reads it back as it is.
std::wstring Quoted(const std::wstring& argument)
{
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : argument) {
        // Backslashes stand for themselves, except in front of a quote.
        if (unit == L'"')
            quoted.append(backslashes + 1, L'\\');
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        quoted += unit;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L'"';
}

std::wstring CommandLine(const std::wstring& program, const std::vector<std::string>& arguments)
{
    std::wstring line = Quoted(program);
    for (const std::string& argument : arguments)
        line += L' ' + Quoted(Wide(argument));
    return line;
}

/// This process's variables and more, as a new process takes them.
std::wstring EnvironmentWith(const std::map<std::string, std::string>& more)
{
    std::map<std::wstring, std::wstring> variables;
    wchar_t* const own = GetEnvironmentStringsW();
    for (const wchar_t* at = own; *at != 0; at += std::wcslen(at) + 1) {
        const std::wstring variable = at;
        const std::size_t sign = variable.find(L'=', 1);  // names may begin with one
        variables[variable.substr(0, sign)] = variable.substr(sign + 1);
    }
    FreeEnvironmentStringsW(own);
    for (const auto& [name, value] : more)
        variables[Wide(name)] = Wide(value);

    std::wstring block;
    for (const auto& [name, value] : variables)
        block += name + L'=' + value + L'\0';
    return block + L'\0';
}

/// The path of a program of the build, which lies at the same place from here on every machine.
std::wstring ProgramPath(const char* relative)
{
    return NativePath(ProgramFolder() + PathSeparator + FromUtf8(relative));
}

FileDescriptor StartProcess(std::wstring line, const std::wstring* environment, const String& folder,
                            const Streams& streams, DWORD flags, unsigned long& id)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = streams.input;
    startup.hStdOutput = streams.output;
    startup.hStdError = streams.error;
    std::wstring block = environment ? *environment : std::wstring();
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, flags | CREATE_UNICODE_ENVIRONMENT,
                        environment ? block.data() : nullptr, NativePath(folder).c_str(), &startup, &process))
        throw std::runtime_error("can't start " + ToUtf8(PathText(line)));
    CloseHandle(process.hThread);
    id = process.dwProcessId;
    return FileDescriptor(process.hProcess);
}

int StatusAtTheEndOf(NativeFile process)
{
    DWORD status = 0;
    if (WaitForSingleObject(process, INFINITE) != WAIT_OBJECT_0 || !GetExitCodeProcess(process, &status))
        throw std::runtime_error("the process is lost");
    return static_cast<int>(status);
}

String PathOfLog()
{
    return GetSpecialFolderPath(ApplicationDataFolderNumber) + u"\\Tessarine\\Tessarine\\Errors.Log";
}

}  // namespace

Program::Program() : environment{{"TZ", "UTC0"}}
{
    CLSID id{};
    if (CLSIDFromProgID(L"PowerPoint.Application", &id) == S_OK)
        throw std::runtime_error("these tests would start the PowerPoint that is installed here");
    if (std::filesystem::exists(NativePath(PathOfLog())))
        earlierLog_ = ContentOf(PathOfLog()).size();
}

Outcome Program::Run(const std::vector<std::string>& arguments, const std::string& input)
{
    const String output = folder.Write(u".output", "");
    const String error = folder.Write(u".error", "");
    int status = -1;
    {
        const FileDescriptor in = OpenStream(folder.Write(u".input", input), GENERIC_READ);
        const FileDescriptor out = OpenStream(output, GENERIC_WRITE);
        const FileDescriptor err = OpenStream(error, GENERIC_WRITE);
        status = RunningProgram(*this, arguments, {in.get(), out.get(), err.get()}).WaitFor();
    }
    return {status, ContentOf(output), ContentOf(error)};
}

std::string Program::Log() const
{
    return ContentOf(PathOfLog()).substr(earlierLog_);
}

FileDescriptor OpenStream(const String& path, unsigned long access)
{
    SECURITY_ATTRIBUTES inherited{};
    inherited.nLength = sizeof inherited;
    inherited.bInheritHandle = TRUE;
    FileDescriptor file(CreateFileW(NativePath(path).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen())
        throw std::runtime_error("can't open " + ToUtf8(path));
    return file;
}

RunningProgram::RunningProgram(const Program& program, const std::vector<std::string>& arguments,
                               const Streams& streams, Console console)
{
    const std::wstring environment = EnvironmentWith(program.environment);
    process_ = StartProcess(CommandLine(ProgramPath(TESSARINE_BATCH), arguments), &environment, program.folder.Path(),
                            streams, console == Console::Own ? CREATE_NO_WINDOW : 0, id_);
}

RunningProgram::~RunningProgram()
{
    if (!HasEnded())
        Kill();
}

bool RunningProgram::HasEnded(unsigned long milliseconds) const
{
    return WaitForSingleObject(process_.get(), milliseconds) == WAIT_OBJECT_0;
}

void RunningProgram::Kill()
{
    TerminateProcess(process_.get(), 99);
    WaitForSingleObject(process_.get(), INFINITE);
}

int RunningProgram::WaitFor() const
{
    return StatusAtTheEndOf(process_.get());
}

RunningProgram::Sending RunningProgram::Send(ControlEvent event) const
{
    // By another process, because a process that joins a console has to leave its own.
    unsigned long sender = 0;
    const std::string kind = event == ControlEvent::CtrlC ? "ctrl-c" : "ctrl-break";
    const FileDescriptor process =
        StartProcess(CommandLine(ProgramPath(TESSARINE_SEND_CONTROL_EVENT), {std::to_string(id_), kind}), nullptr,
                     ProgramFolder(), {}, CREATE_NO_WINDOW, sender);
    switch (StatusAtTheEndOf(process.get())) {
        case 0:
            return Sending::Done;
        case 1:
            return Sending::NoConsole;
        default:
            return Sending::Refused;
    }
}

NarrowPipe::NarrowPipe(unsigned long capacity)
{
    HANDLE reader = nullptr;
    HANDLE writer = nullptr;
    if (!CreatePipe(&reader, &writer, nullptr, capacity))
        throw std::runtime_error("no pipe");
    reader_ = FileDescriptor(reader);
    writer_ = FileDescriptor(writer);
    if (!SetHandleInformation(writer, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT))
        throw std::runtime_error("the pipe can't be inherited");
}

std::string NarrowPipe::ReadLine()
{
    std::string line;
    char byte = 0;
    for (DWORD count = 0; ReadFile(reader_.get(), &byte, 1, &count, nullptr) && count == 1;) {
        line += byte;
        if (byte == '\n')
            break;
    }
    return line;
}

std::string NarrowPipe::ReadAll()
{
    std::string content;
    char piece[4096];
    for (DWORD count = 0; ReadFile(reader_.get(), piece, sizeof piece, &count, nullptr) && count > 0;)
        content.append(piece, count);
    return content;
}

unsigned long NarrowPipe::Held() const
{
    DWORD held = 0;
    if (!PeekNamedPipe(reader_.get(), nullptr, 0, nullptr, &held, nullptr))
        throw std::runtime_error("the pipe has ended");
    return held;
}

}  // namespace tessarine::test
