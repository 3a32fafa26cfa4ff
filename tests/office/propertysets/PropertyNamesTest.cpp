#include "office/builtin/propertysets/PropertyNames.h"

#include <gmock/gmock.h>

#include "support/LittleEndian.h"

namespace tessarine::test
{
namespace
{

using builtin::ReadPropertyNames;
using little::Long;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// An entry of a dictionary in a code page of bytes.
std::string NameEntry(std::uint32_t id, const std::string& name)
{
    return Long(id) + Long(static_cast<std::uint32_t>(name.size() + 1)) + name + '\0';
}

TEST(PropertyNames, AreThoseOfTheDictionary)
{
    EXPECT_THAT(ReadPropertyNames(Long(2) + NameEntry(7, "Client") + NameEntry(2, "Gr\xF6\xDF"), 1252),
                ElementsAre(Pair(2, u"Größ"), Pair(7, u"Client")));
    EXPECT_THAT(ReadPropertyNames("", 1252), IsEmpty());
}

TEST(PropertyNames, OfAnIdWithTwoAreTheFirst)
{
    EXPECT_THAT(ReadPropertyNames(Long(2) + NameEntry(2, "first") + NameEntry(2, "second"), 1252),
                ElementsAre(Pair(2, u"first")));
}

TEST(PropertyNames, AreNotGivenToReservedIds)
{
    EXPECT_THAT(ReadPropertyNames(Long(4) + NameEntry(0, "dictionary") + NameEntry(1, "code page") +
                                      NameEntry(0x80000000, "language") + NameEntry(0x7FFFFFFF, "last"),
                                  1252),
                ElementsAre(Pair(0x7FFFFFFF, u"last")));
}

TEST(PropertyNames, EndWithTheBytes)
{
    const std::string whole = Long(2) + NameEntry(2, "first") + NameEntry(3, "second");
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_EQ(ReadPropertyNames(whole.substr(0, size), 1252).size(), size < 18 ? 0u : 1u) << size;
}

TEST(PropertyNames, AreNoMoreThanASectionHasProperties)
{
    std::string dictionary = Long(65537);
    for (std::uint32_t id = 2; id < 65539; ++id)
        dictionary += NameEntry(id, "");

    EXPECT_EQ(ReadPropertyNames(dictionary, 1252).size(), 65535u);
}

}  // namespace
}  // namespace tessarine::test
