#include "batch/EngineOfRun.h"

#include <gmock/gmock.h>

#include "platform/Failure.h"
#include "support/FakePowerPoint.h"

namespace tessarine::batch
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Two stand-ins, told apart by what they are asked.
class EngineOfRunTest : public testing::Test
{
protected:
    Engines Both() const { return {builtIn.Provider(), powerPoint.Provider()}; }
    Engines BuiltInAlone() const { return {builtIn.Provider()}; }

    static BatchCall Naming(std::optional<Engine> engine)
    {
        BatchCall call;
        call.engine = engine;
        return call;
    }

    /// What the choice is refused with; empty when it is not.
    static std::string RefusalOf(const BatchCall& call, const Engines& engines)
    {
        try {
            EngineOfRun(call, engines).Choose();
        } catch (const Failure& failure) {
            return ToUtf8(failure.Reason());
        }
        return {};
    }

    FakePowerPoint builtIn;
    FakePowerPoint powerPoint;
};

using EngineWithoutPowerPoint = EngineOfRunTest;
using EngineWithPowerPoint = EngineOfRunTest;

TEST_F(EngineWithoutPowerPoint, IsTheBuiltInOneAndNotTold)
{
    EngineOfRun engine(Naming({}), BuiltInAlone());

    EXPECT_EQ(engine.Choose(), std::nullopt);
    EXPECT_TRUE(engine.CreateApplication());

    EXPECT_THAT(builtIn.script.Calls(), ElementsAre("CreateApplication"));
}

TEST_F(EngineWithoutPowerPoint, IsToldWhenItIsNamed)
{
    EXPECT_EQ(EngineOfRun(Naming(Engine::BuiltIn), BuiltInAlone()).Choose(), Engine::BuiltIn);
}

TEST_F(EngineWithoutPowerPoint, RefusesPowerPointBeforeTheRun)
{
    EXPECT_THROW(EngineOfRun(Naming(Engine::PowerPoint), BuiltInAlone()), Failure);
    EXPECT_THAT(RefusalOf(Naming(Engine::PowerPoint), BuiltInAlone()), HasSubstr("only the built-in engine"));
}

TEST_F(EngineWithPowerPoint, IsPowerPointAndStartsItOnce)
{
    EngineOfRun engine(Naming({}), Both());

    EXPECT_EQ(engine.Choose(), Engine::PowerPoint);
    EXPECT_TRUE(engine.CreateApplication());

    EXPECT_THAT(powerPoint.script.Calls(), ElementsAre("CreateApplication"));
    EXPECT_THAT(builtIn.script.Calls(), IsEmpty());
}

TEST_F(EngineWithPowerPoint, StartsANewOneForARestart)
{
    EngineOfRun engine(Naming(Engine::PowerPoint), Both());
    engine.Choose();
    engine.CreateApplication();

    EXPECT_TRUE(engine.AttachToRunning());
    EXPECT_TRUE(engine.CreateApplication());

    EXPECT_THAT(powerPoint.script.Calls(), ElementsAre("CreateApplication", "AttachToRunning", "CreateApplication"));
}

TEST_F(EngineWithPowerPoint, FallsBackWhenItDoesNotStart)
{
    powerPoint.script.Fail("CreateApplication", FailureNumber::CannotCreateObject, u"no licence");
    EngineOfRun engine(Naming({}), Both());

    EXPECT_EQ(engine.Choose(), Engine::BuiltIn);
    engine.AttachToRunning();

    EXPECT_THAT(builtIn.script.Calls(), ElementsAre("AttachToRunning"));
}

TEST_F(EngineWithPowerPoint, RefusesWhenItIsNamedAndDoesNotStart)
{
    powerPoint.script.Fail("CreateApplication", FailureNumber::CannotCreateObject, u"no licence");

    EXPECT_THAT(RefusalOf(Naming(Engine::PowerPoint), Both()), HasSubstr("can't be started: no licence"));
}

TEST_F(EngineWithPowerPoint, IsNotStartedWhenTheBuiltInOneIsNamed)
{
    EXPECT_EQ(EngineOfRun(Naming(Engine::BuiltIn), Both()).Choose(), Engine::BuiltIn);

    EXPECT_THAT(powerPoint.script.Calls(), IsEmpty());
}

TEST_F(EngineWithPowerPoint, GivesWayToOptionsOfTheBuiltInOne)
{
    for (bool BatchCall::*const option : {&BatchCall::inPlace, &BatchCall::inPlaceLinks, &BatchCall::skipSigned}) {
        BatchCall call;
        call.*option = true;
        EXPECT_EQ(EngineOfRun(call, Both()).Choose(), Engine::BuiltIn);

        call.engine = Engine::PowerPoint;
        EXPECT_THAT(RefusalOf(call, Both()), HasSubstr("options of the built-in engine"));
    }
    EXPECT_THAT(powerPoint.script.Calls(), IsEmpty());
}

TEST_F(EngineWithPowerPoint, IsQuitWhenNoRunTakesIt)
{
    {
        EngineOfRun engine(Naming({}), Both());
        engine.Choose();
    }

    EXPECT_EQ(powerPoint.Running(), 0);
    EXPECT_THAT(powerPoint.script.Calls(), ElementsAre("CreateApplication", "Application.Quit"));
}

}  // namespace
}  // namespace tessarine::batch
