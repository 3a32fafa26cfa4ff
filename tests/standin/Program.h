#pragma once

#include <memory>
#include <string>

#include "office/windows/ComHeaders.h"

namespace tessarine::standin
{

/// A program that a stand-in stands for.
struct Program {
    const wchar_t* name;      ///< By which callers know it ("PowerPoint.Application").
    const wchar_t* argument;  ///< By which the stand-in's own program is told which one it is ("/powerpoint").
    CLSID id;                 ///< Our own, not that of the real program.
    const wchar_t* idText;
    bool hasOneInstance;  ///< Whoever asks for a new one gets the one that runs.
};

inline constexpr Program PowerPointProgram{
    L"PowerPoint.Application",
    L"/powerpoint",
    {0x6f6a2c51, 0x1b52, 0x4d63, {0x9a, 0x53, 0x54, 0x45, 0x53, 0x53, 0x41, 0x01}},
    L"{6F6A2C51-1B52-4D63-9A53-544553534101}",
    true};
inline constexpr Program ExcelProgram{L"Excel.Application",
                                      L"/excel",
                                      {0x6f6a2c51, 0x1b52, 0x4d63, {0x9a, 0x53, 0x54, 0x45, 0x53, 0x53, 0x41, 0x02}},
                                      L"{6F6A2C51-1B52-4D63-9A53-544553534102}",
                                      false};

/// Registers a stand-in for a program, or takes that away. `executable` is the stand-in's own, `folder` is where it
/// finds its orders and writes its log; `argument` is handed over in place of the program's own. For all users, because
/// that is where every system looks. False when the registry can't be written.
bool Register(const Program& program, const std::wstring& executable, const std::wstring& folder,
              const wchar_t* argument = nullptr);
void Unregister(const Program& program);

/// The full path of a file that is named from the folder of the running program.
std::wstring FileBesideThisProgram(const std::wstring& name);

}  // namespace tessarine::standin
