#include "standin/KeptInterfaces.h"

#include <stdexcept>

#include "standin/Counted.h"
#include "standin/ServedObject.h"

namespace tessarine::standin
{

namespace
{

class NoFactory final : public Counted<IClassFactory>
{
public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, void**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return E_NOTIMPL; }
};

class NoMembers final : public Counted<IDispatch>
{
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override
    {
        return E_NOTIMPL;
    }
};

class NoElements final : public Counted<IEnumVARIANT>
{
public:
    HRESULT STDMETHODCALLTYPE Next(ULONG, VARIANT*, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }
};

/// Exports an object as if it stood in a table in which others may look for it.
void Keep(REFIID interfaceOfIt, IUnknown* object)
{
    const Reference<IUnknown> owner(object);
    IStream* stream = nullptr;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream)))
        throw std::runtime_error("no memory for a stream");
    const Reference<IStream> target(stream);
    if (FAILED(CoMarshalInterface(stream, interfaceOfIt, object, MSHCTX_LOCAL, nullptr, MSHLFLAGS_TABLESTRONG)))
        throw std::runtime_error("an object can't be exported");
}

}  // namespace

void KeepInterfaces()
{
    Keep(IID_IUnknown, new NoMembers);
    Keep(IID_IDispatch, new NoMembers);
    Keep(IID_IEnumVARIANT, new NoElements);
    Keep(IID_IClassFactory, new NoFactory);
}

}  // namespace tessarine::standin
