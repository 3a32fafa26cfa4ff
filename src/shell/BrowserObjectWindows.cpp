#include "shell/BrowserObject.h"

#include <memory>
#include <string>

#include "platform/WindowsHeaders.h"

// After the system's own, which they build on.
#include <objbase.h>
#include <oleauto.h>

namespace tessarine
{

namespace
{

/// Automation in this scope's thread. In most threads with windows Qt has begun it already; then this changes nothing.
class Automation
{
public:
    Automation() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~Automation()
    {
        if (SUCCEEDED(result_))
            CoUninitialize();
    }
    Automation(const Automation&) = delete;
    Automation& operator=(const Automation&) = delete;

private:
    HRESULT result_;
};

struct Release {
    void operator()(IUnknown* object) const { object->Release(); }
};

using Object = std::unique_ptr<IDispatch, Release>;

/// Null when the program is not registered or gives no object.
Object Create(StringView program)
{
    CLSID id;
    void* object = nullptr;
    if (FAILED(CLSIDFromString(std::wstring(program.begin(), program.end()).c_str(), &id)) ||
        FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch, &object)))
        return nullptr;
    return Object(static_cast<IDispatch*>(object));
}

/// Calls a member by its name, with one argument, and tells whether it succeeded.
bool Call(const Object& object, std::wstring member, WORD kind, VARIANT argument)
{
    wchar_t* name = member.data();
    DISPID id = 0;
    if (FAILED(object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id)))
        return false;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS arguments{&argument, nullptr, 1, 0};
    if (kind == DISPATCH_PROPERTYPUT) {
        arguments.rgdispidNamedArgs = &put;
        arguments.cNamedArgs = 1;
    }
    return SUCCEEDED(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &arguments, nullptr, nullptr, nullptr));
}

VARIANT True()
{
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BOOL;
    value.boolVal = VARIANT_TRUE;
    return value;
}

}  // namespace

bool ShowInBrowserObject(StringView program, const String& address)
{
    const Automation automation;
    const Object browser = Create(program);
    if (!browser || !Call(browser, L"Visible", DISPATCH_PROPERTYPUT, True()))
        return false;

    const std::wstring text(address.begin(), address.end());
    const std::unique_ptr<OLECHAR, decltype(&SysFreeString)> url(
        SysAllocStringLen(text.data(), static_cast<UINT>(text.size())), &SysFreeString);
    VARIANT argument;
    VariantInit(&argument);
    argument.vt = VT_BSTR;
    argument.bstrVal = url.get();
    return Call(browser, L"navigate", DISPATCH_METHOD, argument);
}

}  // namespace tessarine
