#include "office/windows/PowerPointProvider.h"

#include "office/windows/AutomationObject.h"
#include "office/windows/CollectionObject.h"
#include "office/windows/MasterObjects.h"
#include "office/windows/PropertyObjects.h"
#include "office/windows/SlideObjects.h"

namespace tessarine::windows
{

namespace
{

constexpr const wchar_t* program = L"PowerPoint.Application";

class PresentationObject final : public AutomatedObject<powerpoint::Presentation>
{
public:
    static constexpr const char16_t* Kind = u"Presentation";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<powerpoint::Slides> Slides() override { return Fetch<SlidesObject>(object_, u"Slides"); }
    std::shared_ptr<powerpoint::Designs> Designs() override { return Fetch<DesignsObject>(object_, u"Designs"); }
    std::shared_ptr<powerpoint::Master> NotesMaster() override { return Fetch<MasterObject>(object_, u"NotesMaster"); }
    std::shared_ptr<powerpoint::Master> HandoutMaster() override
    {
        return Fetch<MasterObject>(object_, u"HandoutMaster");
    }
    std::shared_ptr<powerpoint::DocumentProperties> BuiltInDocumentProperties() override
    {
        return Fetch<DocumentPropertiesObject>(object_, u"BuiltInDocumentProperties");
    }
    std::shared_ptr<powerpoint::DocumentProperties> CustomDocumentProperties() override
    {
        return Fetch<DocumentPropertiesObject>(object_, u"CustomDocumentProperties");
    }
    void UpdateLinks() override { object_.Call(u"UpdateLinks"); }
    void Save() override { object_.Call(u"Save"); }
    void Close() override { object_.Call(u"Close"); }
    void ExpectHits() override { object_.SessionOf().asksForNames = true; }
};

class PresentationsObject final : public AutomatedObject<powerpoint::Presentations>
{
public:
    static constexpr const char16_t* Kind = u"Presentations";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<powerpoint::Presentation> Open(const String& FileName, powerpoint::TriState ReadOnly,
                                                   powerpoint::TriState Untitled,
                                                   powerpoint::TriState WithWindow) override
    {
        return Fetch<PresentationObject>(object_, u"Open", FileName, ReadOnly, Untitled, WithWindow);
    }
};

class ApplicationObject final : public AutomatedObject<powerpoint::Application>
{
public:
    static constexpr const char16_t* Kind = u"Application";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<powerpoint::Presentations> Presentations() override
    {
        return Fetch<PresentationsObject>(object_, u"Presentations");
    }
    void PutDisplayAlerts(std::int32_t value) override { object_.Put(u"DisplayAlerts", Variant(value)); }
    void PutAutomationSecurity(std::int32_t value) override { object_.Put(u"AutomationSecurity", Variant(value)); }
    void Quit() override { object_.Call(u"Quit"); }
};

/// One that was found running, to be shut down. Its alerts are a boolean: what goes by name alone has always been told
/// so, and PowerPoint makes a number of it.
class RunningApplicationObject final : public powerpoint::Application
{
public:
    static constexpr const char16_t* Kind = ApplicationObject::Kind;

    explicit RunningApplicationObject(AutomationObject object) : object_(object), application_(std::move(object)) {}

    std::shared_ptr<powerpoint::Presentations> Presentations() override { return application_.Presentations(); }
    void PutDisplayAlerts(std::int32_t value) override { object_.Put(u"DisplayAlerts", Variant(value != 0)); }
    void PutAutomationSecurity(std::int32_t value) override { application_.PutAutomationSecurity(value); }
    void Quit() override { application_.Quit(); }

private:
    const AutomationObject object_;
    ApplicationObject application_;
};

class ProviderObject final : public powerpoint::Provider
{
public:
    std::shared_ptr<powerpoint::Application> CreateApplication() override
    {
        return Wrap<ApplicationObject>(AutomationObject::Create(session_, program, ApplicationObject::Kind));
    }

    std::shared_ptr<powerpoint::Application> AttachToRunning() override
    {
        return Wrap<RunningApplicationObject>(AutomationObject::Attach(session_, program, ApplicationObject::Kind));
    }

private:
    const std::shared_ptr<Session> session_ = std::make_shared<Session>();
};

}  // namespace

std::shared_ptr<powerpoint::Provider> CreatePowerPointProvider()
{
    return std::make_shared<ProviderObject>();
}

}  // namespace tessarine::windows
