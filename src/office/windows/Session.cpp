#include "office/windows/Session.h"

#include "office/windows/AutomationNumbers.h"
#include "office/windows/Patience.h"

namespace tessarine::windows
{

DISPID Session::IdOf(IDispatch& object, const String& kind, const String& member)
{
    const auto key = std::make_pair(kind, member);
    if (const auto known = ids_.find(key); known != ids_.end())
        return known->second;

    auto name = reinterpret_cast<LPOLESTR>(const_cast<char16_t*>(member.c_str()));
    DISPID id = DISPID_UNKNOWN;
    const HRESULT result =
        WhenNotBusy([&] { return object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id); });
    if (FAILED(result))
        throw FailureOfCall(result, kind + u'.' + member);
    ids_.emplace(key, id);
    return id;
}

}  // namespace tessarine::windows
