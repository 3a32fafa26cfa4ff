#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>

#include "platform/String.h"

namespace tessarine
{

/// The numbers that the system tells apart or raises itself. Numbers are the contract between the layers: the run
/// sorts open failures by them, the locations test for one of them.
///
/// Trouble with files has two families. The classic file numbers (53 to 76) come from what the run does to files, as
/// Visual Basic numbers it; the system's numbers (0x8007....) come from opening and saving presentations and jobs, as
/// an application reports them. `FileTrouble` in files/FileFailure.h says which numbers of the two mean the same.
namespace FailureNumber
{
/// An argument that can't be used, or a key that no element has.
inline constexpr std::int32_t InvalidProcedureCall = 5;
inline constexpr std::int32_t Overflow = 6;  ///< A number does not fit where it is to go.
inline constexpr std::int32_t OutOfMemory = 7;
inline constexpr std::int32_t SubscriptOutOfRange = 9;    ///< No element at that position.
inline constexpr std::int32_t TypeMismatch = 13;          ///< A value can't be taken as the type that is wanted.
inline constexpr std::int32_t InternalError = 51;         ///< An exception of none of the kinds known here.
inline constexpr std::int32_t FileNotFound = 53;          ///< Also for a path that can't be one.
inline constexpr std::int32_t DeviceIO = 57;              ///< Any trouble with a file that has no number of its own.
inline constexpr std::int32_t DiskFull = 61;              ///< In the classic family.
inline constexpr std::int32_t PermissionDenied = 70;      ///< Also for a file that is in use, as in Visual Basic.
inline constexpr std::int32_t PathNotFound = 76;          ///< The folder is missing.
inline constexpr std::int32_t ObjectNotSet = 91;          ///< A null reference was used.
inline constexpr std::int32_t InvalidFileFormat = 321;    ///< Not a property bag.
inline constexpr std::int32_t CannotCreateObject = 429;   ///< There is no application to start.
inline constexpr std::int32_t KeyAlreadyUsed = 457;       ///< A second element under the same key.
inline constexpr std::int32_t ServerGone = 462;           ///< The application went away before the call.
inline constexpr std::int32_t ApplicationDefined = 1004;  ///< Read by the run as a wrong password, too.
inline constexpr std::int32_t GivenUp = -2147467260;      ///< 0x80004004, a person has given the file up.
inline constexpr std::int32_t RemoteCallFailed = -2147023170;    ///< 0x800706BE, the server died during the call.
inline constexpr std::int32_t Unspecified = -2147467259;         ///< 0x80004005, read by the run as a wrong password.
inline constexpr std::int32_t InvalidRequest = -2147188160;      ///< 0x80048240, among others "shows no footer".
inline constexpr std::int32_t SystemFileNotFound = -2147024894;  ///< 0x80070002
inline constexpr std::int32_t SystemPathNotFound = -2147024893;  ///< 0x80070003, the folder is missing.
inline constexpr std::int32_t AccessDenied = -2147024891;        ///< 0x80070005
inline constexpr std::int32_t BadFormat = -2147024885;           ///< 0x8007000B, not a presentation.
inline constexpr std::int32_t SystemOutOfMemory = -2147024882;   ///< 0x8007000E
inline constexpr std::int32_t WriteFault = -2147024867;          ///< 0x8007001D, any trouble without its own number.
inline constexpr std::int32_t SharingViolation = -2147024864;    ///< 0x80070020, in use by another program.
inline constexpr std::int32_t BadArgument = -2147024809;         ///< 0x80070057
inline constexpr std::int32_t SystemDiskFull = -2147024784;      ///< 0x80070070
inline constexpr std::int32_t FileCorrupt = -2147023504;         ///< 0x80070570, damaged package or part.
}  // namespace FailureNumber

/// The one exception of the system. `number` is for programs, `description` for people, `source` names the procedure
/// that raised it last.
struct Failure : std::exception {
    Failure(std::int32_t number, String description, String source = {});

    const char* what() const noexcept override { return what_.c_str(); }  ///< "Error number (description)", UTF-8.

    /// What went wrong, for people: the description that the failure was first raised with, before procedures that
    /// raised it on put their texts around it. A failure raised without a description gives "Error " and its number.
    String Reason() const;

    /// The same failure as the procedure `source` raises it on: number and reason stay.
    Failure RaisedOn(String description, String source) const;

    std::int32_t number;  ///< A FailureNumber, or any number that an application gives.
    String description;
    String source;

private:
    String reason_;     // of the first raising
    std::string what_;  // made at once, as what() must not fail
};

/// The failure of a use of a null reference: `FailureNumber::ObjectNotSet`, "Object variable or With block variable not
/// set".
Failure ObjectNotSet();

/// The reference itself. Raises `ObjectNotSet` when it is null.
template <class Reference>
const Reference& NotNull(const Reference& reference)
{
    if (!reference)
        throw ObjectNotSet();
    return reference;
}

/// The Failure for whatever is being handled: a Failure as it is, another exception translated (running out of memory
/// to `OutOfMemory`, anything else to `InternalError` with its own text). Call inside a catch block only.
Failure CurrentFailure();

/// Runs something and gives what it failed with; nothing when it didn't.
template <class Body>
std::optional<Failure> FailureOf(Body&& body)
{
    try {
        body();
        return std::nullopt;
    } catch (...) {
        return CurrentFailure();
    }
}

}  // namespace tessarine
