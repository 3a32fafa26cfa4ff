#include "run/RunLoop.h"

namespace tessarine
{

void Project::UnloadPowerPoint()
{
    std::shared_ptr<powerpoint::Application> running;
    Skip([&] { running = NotNull(provider_)->AttachToRunning(); });
    // Nothing running is the usual case after a clean end.
    if (!running)
        return;
    // One by one: an application that refuses the first may still follow the second.
    Skip([&] { running->PutDisplayAlerts(0); });
    Skip([&] { running->Quit(); });
}

void Project::RaiseManualInterventionRequired()
{
    ManualInterventionRequired.Raise();
}

void RunLoop::CreateApplication()
{
    if (!project_.provider_)
        throw Failure(FailureNumber::CannotCreateObject, u"ActiveX component can't create object");
    project_.application_ = project_.provider_->CreateApplication();
}

void RunLoop::SetDisplayAlerts()
{
    Application().PutDisplayAlerts(Options().AllowAlerts ? -1 : 0);
}

void RunLoop::RestartAsPlanned()
{
    Statement([&] { Application().Quit(); });
    project_.application_.reset();
    // After the reference is gone: what answers now is an application that did not follow Quit.
    project_.UnloadPowerPoint();
    StartAgain();
}

void RunLoop::RestartAfterLoss()
{
    // No Quit goes to the reference: what it stood for is gone.
    project_.UnloadPowerPoint();
    project_.application_.reset();
    StartAgain();
}

void RunLoop::StartAgain()
{
    // AutomationSecurity is left out, see SetUp.
    Statement([&] { CreateApplication(); });
    Statement([&] { SetDisplayAlerts(); });
}

}  // namespace tessarine
