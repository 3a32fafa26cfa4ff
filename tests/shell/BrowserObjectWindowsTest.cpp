#include "shell/BrowserObject.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "platform/WindowsHeaders.h"

// After the system's own, which they build on.
#include <objbase.h>
#include <oleauto.h>

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr CLSID browserClass = {0x6f1c2a50, 0x3d0e, 0x4b7e, {0x9a, 0x41, 0x58, 0x0d, 0x6b, 0x7e, 0x21, 0x93}};
constexpr StringView browserProgram = u"{6F1C2A50-3D0E-4B7E-9A41-580D6B7E2193}";

/// A browser in this process, and the maker of it. Both live as long as the test, whoever holds references.
class Browser : public IDispatch, public IClassFactory
{
public:
    std::vector<std::wstring> calls;
    std::wstring failing;  ///< The member that fails.

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        if (id == IID_IUnknown || id == IID_IDispatch)
            *object = static_cast<IDispatch*>(this);
        else if (id == IID_IClassFactory)
            *object = static_cast<IClassFactory*>(this);
        else
            return *object = nullptr, E_NOINTERFACE;
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override
    {
        return QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, wchar_t** names, UINT, LCID, DISPID* ids) override
    {
        names_.push_back(names[0]);
        *ids = static_cast<DISPID>(names_.size());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                                     UINT*) override
    {
        const std::wstring& name = names_.at(static_cast<std::size_t>(id - 1));
        if (name == failing || arguments->cArgs != 1)
            return DISP_E_EXCEPTION;
        const VARIANT& value = arguments->rgvarg[0];
        const bool isPut = kind == DISPATCH_PROPERTYPUT && arguments->cNamedArgs == 1 &&
                           arguments->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
        if (isPut && value.vt == VT_BOOL)
            calls.push_back(name + (value.boolVal == VARIANT_TRUE ? L" = True" : L" = False"));
        else if (kind == DISPATCH_METHOD && value.vt == VT_BSTR)
            calls.push_back(name + L" " + value.bstrVal);
        return S_OK;
    }

private:
    std::vector<std::wstring> names_;
};

class BrowserObjectTest : public testing::Test
{
protected:
    BrowserObjectTest()
    {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        CoRegisterClassObject(browserClass, static_cast<IClassFactory*>(&browser_), CLSCTX_INPROC_SERVER,
                              REGCLS_MULTIPLEUSE, &registration_);
    }
    ~BrowserObjectTest() override
    {
        CoRevokeClassObject(registration_);
        CoUninitialize();
    }

    Browser browser_;
    DWORD registration_ = 0;
};

TEST_F(BrowserObjectTest, IsMadeVisibleAndNavigates)
{
    EXPECT_TRUE(ShowInBrowserObject(browserProgram, u"https://example.org/ü"));

    EXPECT_THAT(browser_.calls, ElementsAre(L"Visible = True", L"navigate https://example.org/ü"));
}

TEST_F(BrowserObjectTest, CannotShowWithoutAMember)
{
    browser_.failing = L"navigate";
    EXPECT_FALSE(ShowInBrowserObject(browserProgram, u"https://example.org/"));
    EXPECT_THAT(browser_.calls, ElementsAre(L"Visible = True"));

    browser_.failing = L"Visible";
    browser_.calls.clear();
    EXPECT_FALSE(ShowInBrowserObject(browserProgram, u"https://example.org/"));
    EXPECT_THAT(browser_.calls, IsEmpty());
}

TEST_F(BrowserObjectTest, IsNotThereForAProgramThatIsNotRegistered)
{
    EXPECT_FALSE(ShowInBrowserObject(u"Tessarine.NoSuchBrowser", u"https://example.org/"));
    EXPECT_FALSE(ShowInBrowserObject(u"{6F1C2A50-3D0E-4B7E-9A41-000000000000}", u"https://example.org/"));
}

}  // namespace
}  // namespace tessarine
