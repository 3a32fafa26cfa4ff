#include "standin/Relay.h"

#include <utility>

#include "standin/Counted.h"

namespace tessarine::standin
{

namespace
{

constexpr DWORD lookAfterRootInMilliseconds = 2'000;

/// Replaces an object in a value by one whose calls go there.
void ForwardResult(VARIANT* result);

class ForwardedElements final : public Counted<IEnumVARIANT>
{
public:
    explicit ForwardedElements(Reference<IEnumVARIANT> destination) : destination_(std::move(destination)) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* elements, ULONG* fetched) override
    {
        ULONG given = 0;
        const HRESULT result = destination_->Next(count, elements, &given);
        for (ULONG at = 0; at < given; ++at)
            ForwardResult(&elements[at]);
        if (fetched)
            *fetched = given;
        return result;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

private:
    const Reference<IEnumVARIANT> destination_;
};

class Forwarded final : public Counted<IDispatch>
{
public:
    explicit Forwarded(Reference<IDispatch> destination) : destination_(std::move(destination)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override
    {
        return destination_->GetIDsOfNames(id, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argument) override
    {
        const HRESULT outcome =
            destination_->Invoke(member, id, locale, flags, parameters, result, exception, argument);
        if (SUCCEEDED(outcome) && result)
            ForwardResult(result);
        return outcome;
    }

private:
    const Reference<IDispatch> destination_;
};

void ForwardResult(VARIANT* result)
{
    if (result->vt == VT_DISPATCH && result->pdispVal)
        result->pdispVal = Forward(Reference<IDispatch>(result->pdispVal)).release();
    IEnumVARIANT* walk = nullptr;
    if (result->vt == VT_UNKNOWN && SUCCEEDED(result->punkVal->QueryInterface(IID_PPV_ARGS(&walk)))) {
        result->punkVal->Release();
        result->punkVal = new ForwardedElements(Reference<IEnumVARIANT>(walk));
    }
}

Reference<IDispatch> Root()
{
    IUnknown* running = nullptr;
    if (FAILED(GetActiveObject(RelayedRoot, nullptr, &running)))
        return {};
    const Reference<IUnknown> owner(running);
    IDispatch* root = nullptr;
    return Reference<IDispatch>(SUCCEEDED(running->QueryInterface(IID_PPV_ARGS(&root))) ? root : nullptr);
}

/// Gives what a member of the root gives.
class RelayFactory final : public Counted<IClassFactory>
{
public:
    explicit RelayFactory(std::wstring member) : member_(std::move(member)) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override
    {
        *object = nullptr;
        const Reference<IDispatch> root = Root();
        if (!root)
            return E_FAIL;
        LPOLESTR name = member_.data();
        DISPID member = DISPID_UNKNOWN;
        HRESULT result = root->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &member);
        DISPPARAMS none{};
        Variant given;
        EXCEPINFO exception{};
        if (SUCCEEDED(result))
            result = root->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, given.Receive(),
                                  &exception, nullptr);
        if (result == DISP_E_EXCEPTION)
            return exception.scode;
        const Reference<IDispatch> forwarded = Forward(Reference<IDispatch>(given.ToObject()));
        return FAILED(result) ? result : forwarded ? forwarded->QueryInterface(id, object) : E_POINTER;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    std::wstring member_;
};

DWORD RegisterFactory(const Program& program, const wchar_t* member)
{
    const Reference<IClassFactory> factory(new RelayFactory(member));
    DWORD cookie = 0;
    CoRegisterClassObject(program.id, factory.get(), CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &cookie);
    return cookie;
}

}  // namespace

Reference<IDispatch> Forward(Reference<IDispatch> destination)
{
    return Reference<IDispatch>(destination ? new Forwarded(std::move(destination)) : nullptr);
}

int ServeRelay()
{
    const DWORD application = RegisterFactory(PowerPointProgram, L"Create");
    const DWORD passed = RegisterFactory(RelayProgram, L"Pass");
    UINT members = 0;
    for (Reference<IDispatch> root = Root(); root && SUCCEEDED(root->GetTypeInfoCount(&members));)
        Sleep(lookAfterRootInMilliseconds);
    CoRevokeClassObject(application);
    CoRevokeClassObject(passed);
    return 0;
}

}  // namespace tessarine::standin
