#include "run/RunLoop.h"

namespace tessarine
{

void Project::UnloadPowerPoint()
{
    std::shared_ptr<powerpoint::Application> running;
    Skip([&] { running = NotNull(provider_)->AttachToRunning(); });
    if (!running)
        return;
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
    Statement([&] { CreateApplication(); });
    Statement([&] { SetDisplayAlerts(); });
}

}  // namespace tessarine
