#include "standin/LocalServer.h"

#include <utility>

#include "standin/Counted.h"

namespace tessarine::standin
{

namespace
{

constexpr UINT longestLifeInMilliseconds = 120'000;
constexpr UINT lifeAfterPassingOnInMilliseconds = 2'000;
constexpr int notRegistered = 2;

/// The process ends when the caller has its answer.
void EndSoon(UINT milliseconds)
{
    SetTimer(nullptr, 0, milliseconds, [](HWND, UINT, UINT_PTR, DWORD) { PostQuitMessage(0); });
}

/// Gives every caller the same application.
class Factory final : public Counted<IClassFactory>
{
public:
    Factory(IDispatch* application, std::shared_ptr<CallWatch> watch, bool passesOn)
        : application_(application), watch_(std::move(watch)), passesOn_(passesOn)
    {
    }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override
    {
        *object = nullptr;
        if (outer)
            return CLASS_E_NOAGGREGATION;
        try {
            watch_->Before("CreateInstance");
        } catch (const PlainResult& result) {
            EndSoon(1);
            return result.hresult;
        }
        if (passesOn_)
            EndSoon(lifeAfterPassingOnInMilliseconds);
        return application_->QueryInterface(id, object);
    }

    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    IDispatch* const application_;  // lives as long as the process serves
    const std::shared_ptr<CallWatch> watch_;
    const bool passesOn_;
};

Reference<IDispatch> RunningApplication(const Program& program)
{
    IUnknown* running = nullptr;
    if (FAILED(GetActiveObject(program.id, nullptr, &running)))
        return {};
    const Reference<IUnknown> owner(running);
    IDispatch* application = nullptr;
    // One that has just died may stand in the table still.
    UINT members = 0;
    if (FAILED(running->QueryInterface(IID_PPV_ARGS(&application))) || FAILED(application->GetTypeInfoCount(&members)))
        return {};
    return Reference<IDispatch>(application);
}

}  // namespace

int ServeUntilQuit(const Program& program, const std::shared_ptr<CallWatch>& watch, const MakeApplication& make)
{
    DWORD classCookie = 0;
    DWORD activeCookie = 0;
    const auto forget = [&] {
        if (activeCookie != 0)
            RevokeActiveObject(std::exchange(activeCookie, 0), nullptr);
        if (classCookie != 0)
            CoRevokeClassObject(std::exchange(classCookie, 0));
    };

    Reference<IDispatch> application = program.hasOneInstance ? RunningApplication(program) : Reference<IDispatch>();
    const bool passesOn = application != nullptr;
    if (!passesOn)
        application = make([&] {
            forget();
            EndSoon(1);
        });

    const Reference<IClassFactory> factory(new Factory(application.get(), watch, passesOn));
    // First where running ones are looked for, so that whoever gets it from the factory also finds it there.
    if (program.hasOneInstance && !passesOn &&
        FAILED(RegisterActiveObject(application.get(), program.id, ACTIVEOBJECT_STRONG, &activeCookie)))
        return notRegistered;
    if (FAILED(CoRegisterClassObject(program.id, factory.get(), CLSCTX_LOCAL_SERVER, REGCLS_SINGLEUSE, &classCookie)))
        return notRegistered;

    EndSoon(longestLifeInMilliseconds);
    for (MSG message; GetMessageW(&message, nullptr, 0, 0) > 0;)
        DispatchMessageW(&message);
    forget();
    if (!passesOn)
        CoDisconnectObject(application.get(), 0);
    return 0;
}

}  // namespace tessarine::standin
