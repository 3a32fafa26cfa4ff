#include <gmock/gmock.h>

#include "DeckOnDisk.h"
#include "office/builtin/xml/RootElement.h"

namespace tessarine::test
{
namespace
{

using builtin::AppendToRoot;
using builtin::ApplyEdits;
using builtin::RootElement;

std::string Appended(std::string_view xml, std::string elements)
{
    return ApplyEdits(xml, {AppendToRoot(xml, std::move(elements))});
}

TEST(AppendToRoot, PutsElementsAfterTheLastChild)
{
    EXPECT_EQ(Appended("<?xml version=\"1.0\"?><!-- <a> --><r><a/> </r><!-- end -->", "<b/>"),
              "<?xml version=\"1.0\"?><!-- <a> --><r><a/> <b/></r><!-- end -->");
}

TEST(AppendToRoot, OpensAnEmptyElementTag)
{
    EXPECT_EQ(Appended("<p:r xmlns:p=\"x>y\" />", "<b/>"), "<p:r xmlns:p=\"x>y\" ><b/></p:r>");
}

TEST(RootElement, FailsWithoutAnyElement)
{
    EXPECT_THAT(RaisedBy([] { RootElement("<!-- <r/> -->"); }), FailsWith(FailureNumber::FileCorrupt, ""));
}

}  // namespace
}  // namespace tessarine::test
