#include "standin/route/ComRoute.h"

#include <utility>

#include <gtest/gtest.h>

#include "office/windows/PowerPointProvider.h"
#include "platform/Failure.h"
#include "standin/KeptInterfaces.h"
#include "standin/Relay.h"
#include "standin/ServedPowerPoint.h"
#include "support/SurfaceRoute.h"

// Linked into a test program, it leads all calls to the stand-ins of its tests through automation and another process.

namespace tessarine::standin
{

namespace
{

class NoWatch final : public CallWatch
{
public:
    void Before(const std::string&) override {}
    void After(const std::string&) override {}
    void LookedUp(const std::string&) override {}
};

std::shared_ptr<CallWatch> watch = std::make_shared<NoWatch>();

/// Where the calls arrive: what the relay asks the test for.
struct Destination {
    std::shared_ptr<powerpoint::Provider> provider;      ///< Of the test that asks for an application.
    std::shared_ptr<powerpoint::Application> running{};  ///< What is to be passed on.
};

Variant ServedApplication(std::shared_ptr<powerpoint::Application> application)
{
    return ObjectValue(application ? ServePowerPoint(watch, std::move(application), [] {}) : Reference<IDispatch>());
}

/// One application that runs stands in the table of running objects for as long as it is looked for.
class StandsInTable
{
public:
    StandsInTable()
    {
        IDispatch* passed = nullptr;
        if (SUCCEEDED(CoCreateInstance(RelayProgram.id, nullptr, CLSCTX_LOCAL_SERVER, IID_PPV_ARGS(&passed)))) {
            const Reference<IDispatch> owner(passed);
            RegisterActiveObject(passed, PowerPointProgram.id, ACTIVEOBJECT_STRONG, &cookie_);
        }
    }
    ~StandsInTable() { RevokeActiveObject(cookie_, nullptr); }
    StandsInTable(const StandsInTable&) = delete;
    StandsInTable& operator=(const StandsInTable&) = delete;

private:
    DWORD cookie_ = 0;
};

/// PowerPoint as code under test gets it, over the destination's provider.
class RoutedProvider final : public powerpoint::Provider
{
public:
    RoutedProvider(std::shared_ptr<Destination> destination, std::shared_ptr<powerpoint::Provider> powerPoint,
                   std::shared_ptr<powerpoint::Provider> standIn)
        : destination_(std::move(destination)), powerPoint_(std::move(powerPoint)), standIn_(std::move(standIn))
    {
    }

    std::shared_ptr<powerpoint::Application> CreateApplication() override
    {
        destination_->provider = standIn_;
        return powerPoint_->CreateApplication();
    }

    std::shared_ptr<powerpoint::Application> AttachToRunning() override
    {
        destination_->running = standIn_->AttachToRunning();
        if (!destination_->running)
            return powerPoint_->AttachToRunning();
        const StandsInTable running;
        return powerPoint_->AttachToRunning();
    }

private:
    const std::shared_ptr<Destination> destination_;
    const std::shared_ptr<powerpoint::Provider> powerPoint_;
    const std::shared_ptr<powerpoint::Provider> standIn_;
};

/// Lives as long as the test program.
class ComRoute final : public testing::Environment
{
public:
    void SetUp() override
    {
        ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)));
        KeepInterfaces();
        const std::wstring program = FileBesideThisProgram(TESSARINE_STAND_IN);
        ASSERT_TRUE(Register(PowerPointProgram, program, L".", RelayProgram.argument));
        ASSERT_TRUE(Register(RelayProgram, program, L"."));
        root_ = Serve(
            std::make_shared<NoWatch>(), "Root",
            {{u"Create",
              [this](const Arguments&) { return ServedApplication(destination_->provider->CreateApplication()); }},
             {u"Pass", [this](const Arguments&) { return ServedApplication(destination_->running); }}});
        ASSERT_TRUE(SUCCEEDED(RegisterActiveObject(root_.get(), RelayedRoot, ACTIVEOBJECT_STRONG, &cookie_)));
        SetSurfaceRoute([this](std::shared_ptr<powerpoint::Provider> standIn) {
            return std::make_shared<RoutedProvider>(destination_, powerPoint_, std::move(standIn));
        });
    }

    void TearDown() override
    {
        SetSurfaceRoute({});
        powerPoint_.reset();
        RevokeActiveObject(cookie_, nullptr);
        Unregister(PowerPointProgram);
        Unregister(RelayProgram);
        root_.reset();
        CoUninitialize();
    }

private:
    const std::shared_ptr<Destination> destination_ = std::make_shared<Destination>();
    std::shared_ptr<powerpoint::Provider> powerPoint_ = windows::CreatePowerPointProvider();
    Reference<IDispatch> root_;
    DWORD cookie_ = 0;
};

// The test framework owns and ends it.
testing::Environment* const route = testing::AddGlobalTestEnvironment(new ComRoute);

}  // namespace

void WatchRoute(std::shared_ptr<CallWatch> newWatch)
{
    watch = newWatch ? std::move(newWatch) : std::make_shared<NoWatch>();
}

}  // namespace tessarine::standin
