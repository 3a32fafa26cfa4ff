// Relationship parts and "[Content_Types].xml". The input is read as each of the two.
#include <cstdint>
#include <string>

#include "office/builtin/ContentTypes.h"
#include "office/builtin/PartName.h"
#include "office/builtin/Relationships.h"
#include "platform/Failure.h"
#include "Require.h"

namespace tessarine::fuzz
{

namespace
{

using builtin::Limits;
using builtin::Relationships;

void EditRelationships(const std::string& xml)
{
    const std::string target = "https://contoso.example/?a=1&b=\"2\"";
    Relationships relationships(xml, "part", Limits::Small());
    Require(relationships.Bytes() == xml, "relationships that were not edited keep their bytes");
    for (const auto& relationship : relationships.All())
        builtin::ResolveTarget("ppt/slides/slide1.xml", relationship.target);
    if (relationships.All().empty())
        return;
    const std::string id = relationships.All().front().id;
    relationships.PutTarget(id, target);
    const std::string added = relationships.AddLike(id, target);
    const Relationships again(relationships.Bytes(), "part", Limits::Small());
    Require(again.All().size() == relationships.All().size(), "an added relationship is one more");
    Require(again.Find(added) != nullptr && again.Find(added)->target == target, "an added relationship reads back");
    Require(again.Find(id) != nullptr && again.Find(id)->target == target, "a new target reads back");
}

void EditContentTypes(const std::string& xml)
{
    builtin::ContentTypes types(xml, Limits::Small());
    types.TypeOf("ppt/presentation.xml");
    const std::string partName = "docProps/none-of-that-name.xml";
    types.AddOverride(partName, "application/x-new");
    const builtin::ContentTypes again(types.Bytes(), Limits::Small());
    Require(again.TypeOf(partName) == "application/x-new", "an added override reads back");
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string input(reinterpret_cast<const char*>(data), size);
    for (const auto edit : {tessarine::fuzz::EditRelationships, tessarine::fuzz::EditContentTypes}) {
        try {
            edit(input);
        } catch (const tessarine::Failure&) {
        }  // refusing is a good answer; all else is a find
    }
    return 0;
}
