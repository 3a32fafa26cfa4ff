// Relationship parts and "[Content_Types].xml". The input is read as each of the two.
#include <algorithm>
#include <cstdint>
#include <string>

#include "office/builtin/package/ContentTypes.h"
#include "office/builtin/package/PartName.h"
#include "office/builtin/package/Relationships.h"
#include "office/builtin/xml/XmlDocument.h"
#include "platform/Failure.h"
#include "Require.h"
#include "UndeclaredPrefix.h"

namespace tessarine::fuzz
{

namespace
{

using builtin::Limits;
using builtin::Relationships;

bool HasRoot(std::string_view xml, builtin::Ns ns, std::string_view localName)
{
    const builtin::XmlDocument document(xml, "part", Limits::Small());
    return document.Is(document.Root(), ns, localName);
}

bool AreSame(const builtin::Relationship& left, const builtin::Relationship& right)
{
    return left.id == right.id && left.type == right.type && left.target == right.target &&
           left.external == right.external && left.offset == right.offset;
}

/// A comment at the end is all it takes to have a part read in the general way.
void ReadBothWays(const std::string& xml)
{
    const Relationships relationships(xml, "part", Limits::Small());
    try {
        const Relationships again(xml + "<!-- -->", "part", Limits::Small());
        Require(std::ranges::equal(relationships.All(), again.All(), AreSame), "both ways read the same");
    } catch (const Failure& failure) {
        Require(false, failure.what());
    }
}

void EditRelationships(const std::string& xml)
{
    const std::string target = "https://contoso.example/?a=1&b=\"2\"";
    Relationships relationships(xml, "part", Limits::Small());
    Require(relationships.Bytes() == xml, "relationships that were not edited keep their bytes");
    for (const auto& relationship : relationships.All())
        builtin::ResolveTarget("ppt/slides/slide1.xml", relationship.target);
    if (!HasRoot(xml, builtin::Ns::PackageRelationships, "Relationships"))
        return;
    if (relationships.All().empty())
        relationships.Add("http://schemas.openxmlformats.org/officeDocument/2006/relationships/hyperlink", "a");
    const std::string id(relationships.All().front().id);
    relationships.PutTarget(id, target);  // refused when it has no target to change
    const std::string added(relationships.AddLike(id, target));
    const std::string edited = relationships.Bytes();
    try {
        const Relationships again(edited, "part", Limits::Small());
        Require(again.All().size() == relationships.All().size(), "an added relationship is one more");
        Require(again.Find(added) != nullptr && again.Find(added)->target == target,
                "an added relationship reads back");
        Require(again.Find(id) != nullptr && again.Find(id)->target == target, "a new target reads back");
    } catch (const Failure& failure) {
        Require(false, failure.what());  // what was read and edited must stay readable
    }
}

void EditContentTypes(const std::string& xml)
{
    builtin::ContentTypes types(xml, Limits::Small());
    types.TypeOf("ppt/presentation.xml");
    if (!HasRoot(xml, builtin::Ns::ContentTypes, "Types"))
        return;
    const std::string partName = "docProps/none-of-that-name.xml";
    types.AddOverride(partName, "application/x-new");
    types.AddOverride("docProps/another.xml", "application/x-new");
    try {
        const builtin::ContentTypes again(types.Bytes(), Limits::Small());
        Require(again.TypeOf(partName) == "application/x-new", "an added override reads back");
    } catch (const Failure& failure) {
        RequireUndeclaredPrefix(xml, failure);
    }
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string input(reinterpret_cast<const char*>(data), size);
    for (const auto edit :
         {tessarine::fuzz::ReadBothWays, tessarine::fuzz::EditRelationships, tessarine::fuzz::EditContentTypes}) {
        try {
            edit(input);
        } catch (const tessarine::Failure&) {
        }  // refusing is a good answer; all else is a find
    }
    return 0;
}
