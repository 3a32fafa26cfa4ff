#include "office/windows/AutomationObject.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "office/windows/AutomationNumbers.h"
#include "office/windows/Patience.h"
#include "platform/Failure.h"

namespace tessarine::windows
{

namespace
{

/// What a server says of a failure in its own words.
class Exception
{
public:
    Exception() = default;
    ~Exception() { Clear(); }
    Exception(const Exception&) = delete;
    Exception& operator=(const Exception&) = delete;

    EXCEPINFO* Receive()
    {
        Clear();
        return &info_;
    }

    Failure ToFailure(const String& member)
    {
        if (info_.pfnDeferredFillIn)
            info_.pfnDeferredFillIn(&info_);
        // One of the two is set; `wCode` holds a number of Visual Basic's own.
        HRESULT number = info_.scode != 0 ? info_.scode : info_.wCode;
        if (number == 0)
            number = DISP_E_EXCEPTION;
        const BSTR text = info_.bstrDescription;
        return FailureOfServer(
            number, text ? String(reinterpret_cast<const char16_t*>(text), SysStringLen(text)) : String(), member);
    }

private:
    void Clear()
    {
        SysFreeString(info_.bstrSource);
        SysFreeString(info_.bstrDescription);
        SysFreeString(info_.bstrHelpFile);
        info_ = {};
    }

    EXCEPINFO info_{};
};

/// One call of a member by its number. On the session's thread alone.
Variant InvokeById(IDispatch& object, DISPID id, WORD flags, std::span<const VARIANT> reversed, const String& member)
{
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{};
    parameters.rgvarg = const_cast<VARIANT*>(reversed.data());
    parameters.cArgs = static_cast<UINT>(reversed.size());
    const bool isPut = (flags & DISPATCH_PROPERTYPUT) != 0;
    if (isPut) {
        // The value that is put counts as an argument under this name.
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }

    Variant result;
    Exception exception;
    const HRESULT outcome = WhenNotBusy([&] {
        return object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, isPut ? nullptr : result.Receive(),
                             exception.Receive(), nullptr);
    });
    if (outcome == DISP_E_EXCEPTION)
        throw exception.ToFailure(member);
    if (FAILED(outcome))
        throw FailureOfCall(outcome, member);
    return result;
}

/// The same object as one whose members have names. Takes over the reference.
IDispatch* DispatchOf(IUnknown* object)
{
    IDispatch* dispatch = nullptr;
    const HRESULT result = WhenNotBusy([&] { return object->QueryInterface(IID_PPV_ARGS(&dispatch)); });
    object->Release();
    if (FAILED(result))
        throw FailureOfCall(result, u"QueryInterface");
    return dispatch;
}

}  // namespace

AutomationObject::AutomationObject(std::shared_ptr<Session> session, IDispatch* object, String kind)
    : session_(std::move(session)), kind_(std::move(kind))
{
    if (object)
        object_ = session_->Hold(object);
}

AutomationObject AutomationObject::Create(const std::shared_ptr<Session>& session, const wchar_t* program, String kind)
{
    IDispatch* const object = session->Thread().Ask([&] {
        CLSID id{};
        HRESULT result = CLSIDFromProgID(program, &id);
        IDispatch* created = nullptr;
        if (SUCCEEDED(result))
            result =
                WhenNotBusy([&] { return CoCreateInstance(id, nullptr, CLSCTX_LOCAL_SERVER, IID_PPV_ARGS(&created)); });
        if (FAILED(result))
            throw CannotCreate(result);
        return created;
    });
    return {session, object, std::move(kind)};
}

AutomationObject AutomationObject::Attach(const std::shared_ptr<Session>& session, const wchar_t* program, String kind)
{
    IDispatch* const object = session->Thread().Ask([&]() -> IDispatch* {
        CLSID id{};
        IUnknown* running = nullptr;
        // None runs, or there is no such program: which of the two makes no difference.
        if (FAILED(CLSIDFromProgID(program, &id)) || FAILED(GetActiveObject(id, nullptr, &running)))
            return nullptr;
        return DispatchOf(running);
    });
    return {session, object, std::move(kind)};
}

void AutomationObject::Put(const char16_t* member, Variant value) const
{
    Invoke(member, DISPATCH_PROPERTYPUT, std::span(&value, 1), {});
}

AutomationEnumerator AutomationObject::NewEnum(const char16_t* kind) const
{
    NotNull(object_);
    IEnumVARIANT* const walk = session_->Thread().Ask([&] {
        // By its number, which is the same for all collections.
        const Variant given =
            InvokeById(*object_, DISPID_NEWENUM, DISPATCH_PROPERTYGET | DISPATCH_METHOD, {}, NameOf(u"_NewEnum"));
        IUnknown* const object = given.Type() == VT_UNKNOWN    ? given.Raw().punkVal
                                 : given.Type() == VT_DISPATCH ? given.Raw().pdispVal
                                                               : nullptr;
        IEnumVARIANT* made = nullptr;
        const HRESULT result = WhenNotBusy([&] { return NotNull(object)->QueryInterface(IID_PPV_ARGS(&made)); });
        if (FAILED(result))
            throw FailureOfCall(result, NameOf(u"_NewEnum"));
        return made;
    });
    return {session_, walk, kind};
}

void AutomationObject::Invoke(const char16_t* member, WORD flags, std::span<Variant> arguments, const Take& take) const
{
    NotNull(object_);
    // The system wants them from the last to the first. The copies borrow what the arguments hold.
    std::vector<VARIANT> reversed;
    for (const Variant& argument : arguments)
        reversed.push_back(argument.Raw());
    std::ranges::reverse(reversed);

    session_->Thread().Run([&] {
        const DISPID id = session_->IdOf(*object_, kind_, member);
        const Variant result = InvokeById(*object_, id, flags, reversed, NameOf(member));
        if (take)
            take(result);
    });
}

AutomationEnumerator::AutomationEnumerator(std::shared_ptr<Session> session, IEnumVARIANT* walk, String kind)
    : session_(std::move(session)), walk_(session_->Hold(walk)), kind_(std::move(kind))
{
}

AutomationObject AutomationEnumerator::Next() const
{
    IDispatch* const object = session_->Thread().Ask([&]() -> IDispatch* {
        Variant element;
        ULONG count = 0;
        const HRESULT result = WhenNotBusy([&] { return walk_->Next(1, element.Receive(), &count); });
        if (FAILED(result))
            throw FailureOfCall(result, u"IEnumVARIANT.Next");
        return result == S_OK ? element.ToObject() : nullptr;
    });
    return {session_, object, kind_};
}

}  // namespace tessarine::windows
