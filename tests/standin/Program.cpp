#include "standin/Program.h"

#include <filesystem>

namespace tessarine::standin
{

namespace
{

std::wstring ClassesKey(const std::wstring& name)
{
    return L"Software\\Classes\\" + name;
}

bool PutDefault(const std::wstring& name, const std::wstring& value)
{
    return RegSetKeyValueW(HKEY_LOCAL_MACHINE, ClassesKey(name).c_str(), nullptr, REG_SZ, value.c_str(),
                           static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

std::wstring Quoted(const std::wstring& text)
{
    return L'"' + text + L'"';
}

}  // namespace

bool Register(const Program& program, const std::wstring& executable, const std::wstring& folder,
              const wchar_t* argument)
{
    const std::wstring name = program.name;
    const std::wstring id = std::wstring(L"CLSID\\") + program.idText;
    return PutDefault(name, L"Stand-in for tests") && PutDefault(name + L"\\CLSID", program.idText) &&
           PutDefault(id, L"Stand-in for tests") && PutDefault(id + L"\\ProgID", name) &&
           PutDefault(id + L"\\LocalServer32",
                      Quoted(executable) + L' ' + (argument ? argument : program.argument) + L' ' + Quoted(folder));
}

void Unregister(const Program& program)
{
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, ClassesKey(program.name).c_str());
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, ClassesKey(std::wstring(L"CLSID\\") + program.idText).c_str());
}

std::wstring FileBesideThisProgram(const std::wstring& name)
{
    wchar_t program[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, program, MAX_PATH);
    const std::filesystem::path path(std::wstring(program, length));
    return (path.parent_path() / name).lexically_normal().make_preferred().wstring();
}

}  // namespace tessarine::standin
