#pragma once

#include "office/windows/ComHeaders.h"

namespace tessarine::standin
{

/// What all objects of the system have in common: the counting of references, from one on, and the question for an
/// interface, of which there is one besides IUnknown.
template <class Interface>
class Counted : public Interface
{
public:
    virtual ~Counted() = default;

    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&count_)); }

    ULONG STDMETHODCALLTYPE Release() override
    {
        const LONG left = InterlockedDecrement(&count_);
        if (left == 0)
            delete this;
        return static_cast<ULONG>(left);
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        const bool isKnown = id == IID_IUnknown || id == __uuidof(Interface);
        *object = isKnown ? static_cast<Interface*>(this) : nullptr;
        if (isKnown)
            AddRef();
        return isKnown ? S_OK : E_NOINTERFACE;
    }

private:
    LONG count_ = 1;
};

}  // namespace tessarine::standin
