#include "office/sheets/CellErrors.h"

#include <algorithm>
#include <array>

namespace tessarine::sheets
{

namespace
{

struct Named {
    std::uint8_t code;
    const char* name;
};

// The codes of MS-XLS 2.5.10 (BErr).
constexpr std::array<Named, 8> errors{{{0x00, "#NULL!"},
                                       {0x07, "#DIV/0!"},
                                       {0x0F, "#VALUE!"},
                                       {0x17, "#REF!"},
                                       {0x1D, "#NAME?"},
                                       {0x24, "#NUM!"},
                                       {0x2A, "#N/A"},
                                       {0x2B, "#GETTING_DATA"}}};

}  // namespace

const char* NameOfError(CellError error)
{
    const auto found = std::ranges::find(errors, error.code, &Named::code);
    return found == errors.end() ? "#UNKNOWN!" : found->name;
}

std::optional<CellError> ErrorNamed(std::string_view name)
{
    const auto found = std::ranges::find_if(errors, [&](const Named& error) { return name == error.name; });
    return found == errors.end() ? std::nullopt : std::optional(CellError{found->code});
}

}  // namespace tessarine::sheets
