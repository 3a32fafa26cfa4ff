#pragma once

#include <cstdint>
#include <type_traits>

#include "platform/Failure.h"

/// The three treatments of a failure: `LogAndReturn`, `RaiseOn` and `Skip`. A procedure follows one of them and says
/// which in its first line.
namespace tessarine
{

/// Where a failure happened, for the log line: the procedure's name and the unit it belongs to, such as
/// {u"Search", u"Class Module Project"}.
struct Procedure {
    StringView name;
    StringView place;
};

/// "Error " number " (" description ") in procedure " name " at Line No. 0 of " place: the common text of a failure.
/// The line is always 0: logs keep the form that code with numbered lines gave them.
String FailureText(const Failure& failure, StringView procedureName, StringView place);

/// Writes the common line to the error log. Never raises.
void LogFailure(const Procedure& procedure, const Failure& failure) noexcept;

/// Trap and log: runs `body`; a failure writes one line to the error log and gives the empty result.
template <class Body>
auto LogAndReturn(const Procedure& procedure, Body&& body) -> std::invoke_result_t<Body>
{
    try {
        return body();
    } catch (...) {
        LogFailure(procedure, CurrentFailure());
    }
    if constexpr (!std::is_void_v<std::invoke_result_t<Body>>)
        return {};
}

/// Raise on: runs `body`; a failure is raised again with the same number and reason, `source` as its source, and the
/// common text as description, so that texts nest. `procedureText` is the procedure's name as the text shows it, blanks
/// included.
template <class Body>
auto RaiseOn(StringView source, StringView procedureText, StringView place, Body&& body) -> std::invoke_result_t<Body>
{
    try {
        return body();
    } catch (...) {
        const Failure failure = CurrentFailure();
        throw failure.RaisedOn(FailureText(failure, procedureText, place), String(source));
    }
}

/// Skip: runs one statement and hands back the number it failed with, 0 if it did not fail.
template <class Statement>
std::int32_t Skip(Statement&& statement)
{
    try {
        statement();
        return 0;
    } catch (...) {
        return CurrentFailure().number;
    }
}

}  // namespace tessarine
