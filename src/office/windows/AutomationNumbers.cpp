#include "office/windows/AutomationNumbers.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "office/windows/ComHeaders.h"

namespace tessarine::windows
{

namespace
{

constexpr HRESULT callFailed = HRESULT_FROM_WIN32(RPC_S_CALL_FAILED);

/// The server, or the object that the call was made to, is no longer there. Which of them a call gives depends on the
/// system and on the moment.
constexpr std::array<HRESULT, 7> goneCodes{
    HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE),
    HRESULT_FROM_WIN32(RPC_S_UNKNOWN_IF),
    HRESULT_FROM_WIN32(RPC_S_CALL_FAILED_DNE),
    RPC_E_DISCONNECTED,
    RPC_E_SERVER_DIED,
    RPC_E_SERVER_DIED_DNE,
    CO_E_OBJNOTCONNECTED,
};

String Hexadecimal(HRESULT code)
{
    char digits[8];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), static_cast<std::uint32_t>(code), 16).ptr;
    std::string text(std::begin(digits), end);
    std::ranges::transform(text, text.begin(), [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
    return u"0x" + FromUtf8(text);
}

/// The system's sentence for a code, without the line end that it has.
String SystemText(HRESULT code)
{
    wchar_t buffer[512];
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, static_cast<DWORD>(code), 0,
                       buffer, static_cast<DWORD>(std::size(buffer)), nullptr);
    String text(buffer, buffer + length);
    text.erase(text.find_last_not_of(u"\r\n. ") + 1);
    return text.empty() ? String(u"Automation error") : text;
}

String TextOf(HRESULT code)
{
    switch (NumberOf(code)) {
        case FailureNumber::ServerGone:
            return u"The remote server machine does not exist or is unavailable";
        case FailureNumber::RemoteCallFailed:
            return u"The remote procedure call failed";
        default:
            return SystemText(code);
    }
}

}  // namespace

std::int32_t NumberOf(long hresult)
{
    if (hresult == callFailed)
        return FailureNumber::RemoteCallFailed;
    if (std::ranges::find(goneCodes, hresult) != goneCodes.end())
        return FailureNumber::ServerGone;
    // A warning has the facility, too; only an error is a failure's number.
    if (FAILED(hresult) && HRESULT_FACILITY(hresult) == FACILITY_CONTROL)
        return HRESULT_CODE(hresult);
    return hresult;
}

bool IsBusy(long hresult)
{
    return hresult == RPC_E_CALL_REJECTED || hresult == RPC_E_SERVERCALL_RETRYLATER;
}

Failure FailureOfCall(long hresult, const String& member)
{
    return {NumberOf(hresult), TextOf(hresult) + u" (" + member + u", " + Hexadecimal(hresult) + u")", member};
}

Failure FailureOfServer(long hresult, const String& text, const String& member)
{
    if (text.empty())
        return FailureOfCall(hresult, member);
    return {NumberOf(hresult), text, member};
}

Failure CannotCreate(long hresult)
{
    return {FailureNumber::CannotCreateObject,
            u"ActiveX component can't create object (" + SystemText(hresult) + u", " + Hexadecimal(hresult) + u")"};
}

}  // namespace tessarine::windows
