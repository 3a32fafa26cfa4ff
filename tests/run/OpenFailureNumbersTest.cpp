#include <gmock/gmock.h>

#include "files/Files.h"
#include "RunTest.h"

// What a run makes of a file that fails to open, by the number of the failure.

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{

struct Number {
    const char* name;
    std::int32_t number;
};

std::string NameOf(const testing::TestParamInfo<Number>& parameter)
{
    return parameter.param.name;
}

std::string Passed(const std::string& file, std::int32_t number)
{
    return file + " " + std::to_string(number);
}

class NumberedOpenFailure : public RunTest, public testing::WithParamInterface<Number>
{
protected:
    /// The `nth` open of the run fails.
    void FailOpen(int nth) { powerPoint_.script.FailOnce("Presentations.Open", GetParam().number, u"scripted", nth); }
};

using ServerGoneAtOpen = NumberedOpenFailure;
using PasswordAtOpen = NumberedOpenFailure;
using UnknownOpenFailure = NumberedOpenFailure;

}  // namespace

TEST_P(ServerGoneAtOpen, OpensTheFileAgainOnANewPowerPoint)
{
    AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    FailOpen(2);

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2", "before b.ppt", "after b.ppt 2"));
    EXPECT_EQ(CallsOf("Presentations.Open b.ppt"), 2u);
    EXPECT_EQ(CallsOf("CreateApplication"), 2u);
    EXPECT_THAT(passedOver_, IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_P(ServerGoneAtOpen, GivesAReadOnlyFileItsModeBack)
{
    const String path = AddFile(u"a.ppt");
    SetMode(path, 0444);
    project_->options->ProcessReadonlyFiles = true;
    FailOpen(1);

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2"));
    EXPECT_EQ(GetAttributes(path).bits % 2, 1) << "read-only";
}

INSTANTIATE_TEST_SUITE_P(Numbers, ServerGoneAtOpen,
                         testing::Values(Number{"ServerGone", FailureNumber::ServerGone},
                                         Number{"RemoteCallFailed", FailureNumber::RemoteCallFailed}),
                         NameOf);

TEST_P(PasswordAtOpen, ReportsTheFileAsOneAndGoesOn)
{
    AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    AddFile(u"c.ppt");
    FailOpen(2);

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_,
                ElementsAre("before a.ppt", "after a.ppt 2", "before b.ppt",
                            "after b.ppt 0   Wrong Password has been supplied.", "before c.ppt", "after c.ppt 2"));
    EXPECT_THAT(passedOver_, ElementsAre(Passed("b.ppt", GetParam().number)));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Numbers, PasswordAtOpen,
                         testing::Values(Number{"ApplicationDefined", FailureNumber::ApplicationDefined},
                                         Number{"Unspecified", FailureNumber::Unspecified}),
                         NameOf);

TEST_P(UnknownOpenFailure, OfTheFirstFileReportsNothing)
{
    AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    FailOpen(1);

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after nothing", "before b.ppt", "after b.ppt 2"));
    EXPECT_THAT(passedOver_, ElementsAre(Passed("a.ppt", GetParam().number)));
    EXPECT_THAT(log_.Lines(), ElementsAre("scripted"));
}

TEST_P(UnknownOpenFailure, OfALaterFileReportsTheFileBeforeOnceMore)
{
    AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    AddFile(u"c.ppt");
    FailOpen(2);

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2", "before b.ppt", "after a.ppt 2", "before c.ppt",
                                     "after c.ppt 2"));
    ASSERT_THAT(results_, SizeIs(3));
    EXPECT_EQ(results_[0], results_[1]);
    EXPECT_THAT(passedOver_, ElementsAre(Passed("b.ppt", GetParam().number)));
    EXPECT_THAT(log_.Lines(), ElementsAre("scripted"));
}

INSTANTIATE_TEST_SUITE_P(Numbers, UnknownOpenFailure,
                         testing::Values(Number{"CallRejected", -2147418111}, Number{"Busy", -2147417846},
                                         Number{"FileCorrupt", FailureNumber::FileCorrupt},
                                         Number{"OutOfMemory", FailureNumber::SystemOutOfMemory},
                                         Number{"Overflow", FailureNumber::Overflow}),
                         NameOf);

}  // namespace tessarine
