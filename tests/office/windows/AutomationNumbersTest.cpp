#include "office/windows/AutomationNumbers.h"

#include <gmock/gmock.h>

#include "office/windows/ComHeaders.h"

namespace tessarine::windows
{
namespace
{

struct Code {
    const char* name;
    std::uint32_t code;
    std::int32_t number;
};

std::string NameOf(const testing::TestParamInfo<Code>& info)
{
    return info.param.name;
}

class NumberOfCode : public testing::TestWithParam<Code>
{
};

TEST_P(NumberOfCode, IsTheOneThatCallersSort)
{
    EXPECT_EQ(NumberOf(static_cast<HRESULT>(GetParam().code)), GetParam().number);
}

// The codes are literal here, as the system's documentation gives them.
INSTANTIATE_TEST_SUITE_P(
    ServerGone, NumberOfCode,
    testing::Values(Code{"ServerUnavailable", 0x800706BA, 462}, Code{"UnknownInterface", 0x800706B5, 462},
                    Code{"CallFailedUnexecuted", 0x800706BF, 462}, Code{"Disconnected", 0x80010108, 462},
                    Code{"ServerDied", 0x80010007, 462}, Code{"ServerDiedUnexecuted", 0x80010012, 462},
                    Code{"NotConnected", 0x800401FD, 462}, Code{"CallFailed", 0x800706BE, -2147023170}),
    NameOf);
INSTANTIATE_TEST_SUITE_P(VisualBasic, NumberOfCode,
                         testing::Values(Code{"Application", 0x800A03EC, 1004}, Code{"Overflow", 0x800A0006, 6},
                                         Code{"CannotCreate", 0x800A01AD, 429}),
                         NameOf);
INSTANTIATE_TEST_SUITE_P(Kept, NumberOfCode,
                         testing::Values(Code{"Unspecified", 0x80004005, -2147467259},
                                         Code{"InvalidRequest", 0x80048240, -2147188160},
                                         Code{"UnknownName", 0x80020006, -2147352570},
                                         Code{"AccessDenied", 0x80070005, -2147024891}, Code{"Plain", 7, 7},
                                         Code{"WarningOfThatFacility", 0x000A0006, 0x000A0006}),
                         NameOf);

TEST(AutomationNumbers, OnlyTwoCodesSayBusy)
{
    EXPECT_TRUE(IsBusy(static_cast<HRESULT>(0x80010001)));
    EXPECT_TRUE(IsBusy(static_cast<HRESULT>(0x8001010A)));
    EXPECT_FALSE(IsBusy(static_cast<HRESULT>(0x80010108)));
    EXPECT_FALSE(IsBusy(S_OK));
}

TEST(AutomationNumbers, ATextNamesTheCallAndTheCode)
{
    const Failure failure = FailureOfCall(static_cast<HRESULT>(0x800706BA), u"Shape.Type");

    EXPECT_EQ(ToUtf8(failure.description),
              "The remote server machine does not exist or is unavailable (Shape.Type, 0x800706BA)");
    EXPECT_EQ(failure.source, u"Shape.Type");
}

TEST(AutomationNumbers, AServersOwnTextStaysAsItIs)
{
    EXPECT_EQ(FailureOfServer(static_cast<HRESULT>(0x80048240), u"Invalid request.", u"HeaderFooter.Text").description,
              u"Invalid request.");
    EXPECT_THAT(ToUtf8(FailureOfServer(E_FAIL, u"", u"HeaderFooter.Text").description),
                testing::HasSubstr("(HeaderFooter.Text, 0x80004005)"));
}

TEST(AutomationNumbers, CreationIsAlways429)
{
    EXPECT_EQ(CannotCreate(REGDB_E_CLASSNOTREG).number, FailureNumber::CannotCreateObject);
    EXPECT_THAT(
        ToUtf8(CannotCreate(REGDB_E_CLASSNOTREG).description),
        testing::AllOf(testing::StartsWith("ActiveX component can't create object"), testing::HasSubstr("0x80040154")));
}

}  // namespace
}  // namespace tessarine::windows
