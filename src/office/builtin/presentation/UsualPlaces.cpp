#include "office/builtin/presentation/UsualPlaces.h"

#include <algorithm>
#include <array>

namespace tessarine::builtin
{

namespace
{

struct Place {
    std::string_view name;  ///< How the names of such parts begin.
    std::string_view type;  ///< How the types end that they have; "" for parts of any type.
};

/// The most frequent ones first. Names in other letters are asked for by nobody, so that they are unusual.
constexpr std::array places{
    Place{"ppt/slideLayouts/", ".slideLayout+xml"},
    Place{"ppt/theme/", ".theme+xml"},
    Place{"ppt/tags/", ".tags+xml"},
    Place{"ppt/charts/", ".chart+xml"},
    Place{"ppt/charts/", ".chartstyle+xml"},
    Place{"ppt/charts/", ".chartcolorstyle+xml"},
    Place{"ppt/charts/", ".chartex+xml"},
    Place{"ppt/diagrams/", ".diagramData+xml"},
    Place{"ppt/diagrams/", ".diagramLayout+xml"},
    Place{"ppt/diagrams/", ".diagramStyle+xml"},
    Place{"ppt/diagrams/", ".diagramColors+xml"},
    Place{"ppt/diagrams/", ".diagramDrawing+xml"},
    Place{"ppt/presProps.xml", ".presProps+xml"},
    Place{"ppt/viewProps.xml", ".viewProps+xml"},
    Place{"ppt/tableStyles.xml", ".tableStyles+xml"},
    Place{"ppt/presentation", ".main+xml"},
    Place{"ppt/comments/", ".comments+xml"},
    Place{"ppt/commentAuthors.xml", ".commentAuthors+xml"},
    Place{"ppt/authors.xml", ".authors+xml"},
    Place{"ppt/revisionInfo.xml", ".revisioninfo+xml"},
    Place{"ppt/changesInfos/", ".changesinfo+xml"},
    Place{"ppt/theme/", ".themeOverride+xml"},
    Place{"ppt/activeX/", ".activeX+xml"},
    Place{"ppt/drawings/", ".chartshapes+xml"},
    Place{"ppt/media/", "image/svg+xml"},
    Place{"ppt/ink/", "/inkml+xml"},
    Place{"ppt/metadata", "application/binary"},
    // Data of other programs, properties, and what has no content of its own.
    Place{"customXml/", ""},
    Place{"docProps/", ""},
    Place{"docMetadata/", ""},
    Place{"_xmlsignatures/", ""},
    Place{"[Content_Types].xml", ""},
};

/// What a part that isn't XML says of itself: pictures and other media, embedded files, macros. Types that say nothing,
/// such as application/octet-stream, are not among them.
bool IsOtherThanXml(std::string_view name, std::string_view type)
{
    const auto isOf = [type](std::string_view kind) { return type.starts_with(kind); };
    const bool isOther = isOf("image/") || isOf("application/vnd.") || isOf("audio/") || isOf("video/") ||
                         isOf("application/x-") || isOf("application/ms") || isOf("application/pdf");
    return isOther && !type.ends_with("xml") && !name.ends_with(".xml") && !name.starts_with("ppt/notesSlides/");
}

}  // namespace

bool IsInUsualPlace(std::string_view name, std::string_view type)
{
    if (name.ends_with(".rels"))
        return type.ends_with(".relationships+xml");
    return IsOtherThanXml(name, type) || name.ends_with('/') || std::ranges::any_of(places, [&](const Place& place) {
               return name.starts_with(place.name) && type.ends_with(place.type);
           });
}

}  // namespace tessarine::builtin
