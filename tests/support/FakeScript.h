#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/String.h"

namespace tessarine
{

/// What the stand-in for PowerPoint is told to do, and what was done to it. Members go by the names of the surface:
/// "Slide.Shapes", "TextRange.Find", "HeaderFooter.Text" for reading, "HeaderFooter.Text =" for writing, "Slides.Next"
/// for a walk's step, "BuiltInDocumentProperties.Item". Copies share one script.
class FakeScript
{
public:
    FakeScript();

    /// Every call of a member fails from now on.
    void Fail(const std::string& member, std::int32_t number, const String& text = u"scripted");

    /// One call of a member fails: the `nth` from now, from 1.
    void FailOnce(const std::string& member, std::int32_t number, const String& text = u"scripted", int nth = 1);

    /// Every hint whether a text may be there says no from now on, whatever there is.
    void DenyText();
    bool DeniesText() const;

    /// Runs whenever the member is called, before it acts.
    void On(const std::string& member, std::function<void()> action);

    /// What changed something, in order: the methods with their argument and the writes with their value, such as
    /// "Presentation.Save a.pptx", "Hyperlink.Address = http://x". A call that failed by script stands there too.
    const std::vector<std::string>& Calls() const;

    /// How often a member was called, reads included.
    int Count(const std::string& member) const;

    /// For the stand-in's objects: counts a read and fails it if the script says so.
    void Read(const std::string& member) const;

    /// For the stand-in's objects: the same for a method or a write, which is also written down with its argument.
    void Act(const std::string& member, const String& argument = {}) const;

private:
    struct State;
    std::shared_ptr<State> state_;
};

}  // namespace tessarine
