#pragma once

#include <memory>
#include <string>

#include "model/PowerPoint.h"
#include "support/FakeScript.h"

namespace tessarine
{

/// A PowerPoint that works, with failures put in: calls go to the provider behind it, so that real presentations are
/// changed, after the script has been asked about them. It keeps instances as the system does: one that has been
/// started runs until somebody quits it or it dies, and AttachToRunning gives any that runs.
///
///     FailingPowerPoint powerPoint(builtin::CreateProvider());
///     powerPoint.script.FailOnce("Presentation.Save", FailureNumber::SystemDiskFull, u"The disk is full", 2);
///     powerPoint.DieAt("Shape.Type", 3);
///
/// Members that the script is asked about: CreateApplication, AttachToRunning, all of Application, Presentations,
/// Presentation, Shape and TextRange, "Slides.Next", "Slide.Shapes", "Shapes.Next". Those of other objects go through
/// unseen.
class FailingPowerPoint
{
public:
    explicit FailingPowerPoint(std::shared_ptr<powerpoint::Provider> behind);

    FakeScript script;

    /// The instance dies in one call of a member, the `nth` from now: that call raises -2147023170, every later one to
    /// this instance 462. Nothing of the call is carried out.
    void DieAt(const std::string& member, int nth = 1);

    void StartByUser();   ///< An instance that no run has started.
    int Running() const;  ///< Instances that have been started, not been quit and not died.

    std::shared_ptr<powerpoint::Provider> Provider() const;  ///< What a project is given.

    struct State;

private:
    std::shared_ptr<State> state_;
};

}  // namespace tessarine
