#include "StandIn.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "office/windows/ComHeaders.h"
#include "platform/String.h"
#include "standin/OrderedWatch.h"
#include "SystemHandle.h"

namespace tessarine::test
{

namespace
{

std::filesystem::path PathOf(const String& path)
{
    return {path};
}

SystemHandle ProcessOf(const std::string& number, DWORD rights)
{
    return SystemHandle(OpenProcess(rights, FALSE, static_cast<DWORD>(std::stoul(number))));
}

bool Runs(const std::string& number)
{
    const SystemHandle process = ProcessOf(number, SYNCHRONIZE);
    return process && WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT;
}

}  // namespace

StandIn::StandIn(const standin::Program& program) : program_(program)
{
    const std::wstring executable = standin::FileBesideThisProgram(TESSARINE_STAND_IN);
    if (!Register(program_, executable, PathOf(folder_.Path()).wstring()))
        throw std::runtime_error("the stand-in can't be registered");
}

StandIn::~StandIn()
{
    Unregister(program_);
    for (const std::string& number : LinesWith('#')) {
        const SystemHandle process = ProcessOf(number, PROCESS_TERMINATE | SYNCHRONIZE);
        if (process && TerminateProcess(process.get(), 0))
            WaitForSingleObject(process.get(), INFINITE);
    }
}

void StandIn::Give(const std::vector<standin::Order>& orders) const
{
    std::ofstream(PathOf(folder_.PathOf(FromUtf8(standin::OrdersFile))), std::ios::binary | std::ios::trunc)
        << standin::ToLines(orders);
}

void StandIn::StartByUser() const
{
    std::wstring command = L'"' + standin::FileBesideThisProgram(TESSARINE_STAND_IN) + L"\" " + program_.argument +
                           L" \"" + PathOf(folder_.Path()).wstring() + L'"';
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        throw std::runtime_error("the stand-in can't be started");
    const SystemHandle owner(process.hProcess);
    CloseHandle(process.hThread);

    // The table of running objects tells nobody of a newcomer.
    IUnknown* running = nullptr;
    while (FAILED(GetActiveObject(program_.id, nullptr, &running))) {
        if (WaitForSingleObject(owner.get(), 20) != WAIT_TIMEOUT)
            throw std::runtime_error("the stand-in has ended");
    }
    running->Release();
}

void StandIn::RegisterMissingProgram() const
{
    Register(program_, L"C:\\missing.exe", PathOf(folder_.Path()).wstring());
}

std::vector<std::string> StandIn::Calls() const
{
    return LinesWith(' ');
}

std::vector<std::string> StandIn::Lookups() const
{
    return LinesWith('?');
}

std::size_t StandIn::Started() const
{
    return LinesWith('#').size();
}

std::size_t StandIn::Running() const
{
    std::size_t count = 0;
    for (const std::string& number : LinesWith('#'))
        count += Runs(number) ? 1 : 0;
    return count;
}

std::vector<std::string> StandIn::LinesWith(char mark) const
{
    std::istringstream log(ContentOf(folder_.PathOf(FromUtf8(standin::LogFile))));
    std::vector<std::string> lines;
    for (std::string line; std::getline(log, line);) {
        if (line.front() == mark)
            lines.push_back(line.substr(1));
    }
    return lines;
}

}  // namespace tessarine::test
