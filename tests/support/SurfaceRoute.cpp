#include "support/SurfaceRoute.h"

#include <utility>

namespace tessarine
{

namespace
{

SurfaceRoute processRoute;

/// The way to one presentation: whatever is opened is it.
class OnePresentation final : public powerpoint::Presentations
{
public:
    explicit OnePresentation(std::shared_ptr<powerpoint::Presentation> presentation)
        : presentation_(std::move(presentation))
    {
    }

    std::shared_ptr<powerpoint::Presentation> Open(const String&, powerpoint::TriState, powerpoint::TriState,
                                                   powerpoint::TriState) override
    {
        return presentation_;
    }

private:
    std::shared_ptr<powerpoint::Presentation> presentation_;
};

class ApplicationOfOne final : public powerpoint::Application
{
public:
    explicit ApplicationOfOne(std::shared_ptr<powerpoint::Presentation> presentation)
        : presentations_(std::make_shared<OnePresentation>(std::move(presentation)))
    {
    }

    std::shared_ptr<powerpoint::Presentations> Presentations() override { return presentations_; }
    void PutDisplayAlerts(std::int32_t) override {}
    void PutAutomationSecurity(std::int32_t) override {}
    void Quit() override {}

private:
    std::shared_ptr<powerpoint::Presentations> presentations_;
};

class ProviderOfOne final : public powerpoint::Provider
{
public:
    explicit ProviderOfOne(std::shared_ptr<powerpoint::Presentation> presentation)
        : presentation_(std::move(presentation))
    {
    }

    std::shared_ptr<powerpoint::Application> CreateApplication() override
    {
        return std::make_shared<ApplicationOfOne>(presentation_);
    }
    std::shared_ptr<powerpoint::Application> AttachToRunning() override { return nullptr; }

private:
    std::shared_ptr<powerpoint::Presentation> presentation_;
};

}  // namespace

void SetSurfaceRoute(SurfaceRoute route)
{
    processRoute = std::move(route);
}

std::shared_ptr<powerpoint::Provider> Routed(std::shared_ptr<powerpoint::Provider> standIn)
{
    return processRoute ? processRoute(std::move(standIn)) : standIn;
}

std::shared_ptr<powerpoint::Presentation> Routed(std::shared_ptr<powerpoint::Presentation> standIn)
{
    if (!processRoute)
        return standIn;
    return processRoute(std::make_shared<ProviderOfOne>(std::move(standIn)))
        ->CreateApplication()
        ->Presentations()
        ->Open({}, powerpoint::msoFalse, powerpoint::msoFalse, powerpoint::msoFalse);
}

}  // namespace tessarine
