#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "model/SearchLocations.h"
#include "platform/String.h"

namespace tessarine
{

/// Where the hits of one text stand. What doesn't apply to a location, or can't be told, is 0 or empty. All numbers
/// count from 1.
struct HitPlace {
    Location location = Location::Slides;  ///< The place of the presentation that was searched.
    std::int32_t pair = 0;                 ///< Position of the pair in the run's list.

    /// Number of the slide in the presentation's order; for a notes page that of its slide.
    std::int32_t slide = 0;
    /// The text of that slide's title on one line, as it was when the first of these hits was found.
    String slideTitle{};
    String design{};    ///< Name of the design whose slide master or title master this is.
    String property{};  ///< Name of the document property.

    enum class HeaderFooter : std::uint8_t { None, Header, Footer };
    HeaderFooter headerFooter = HeaderFooter::None;  ///< Of a slide's or the notes master's texts.

    std::int32_t hyperlink = 0;  ///< Number among the slide's hyperlinks.
    std::int32_t shape = 0;      ///< Number among the page's shapes, from back to front.
    String shapeName{};          ///< What people read in the list of a page's shapes ("Title 1").

    bool operator==(const HitPlace&) const = default;
};

/// One occurrence of a pair, as it is found or replaced. Positions and lengths are UTF-16 units.
///
/// Hits come in the order of the run: pair by pair, location by location, from the front of a text to its end. Later
/// pairs see what earlier ones have put in, and so do their hits.
struct Hit {
    std::shared_ptr<const HitPlace> place{};  ///< Never null.

    /// Number of the paragraph in the shape's text, from 1. 0 for a plain value (an address, a property, a header or
    /// footer, a link's source), which has no paragraphs, and where it can't be told.
    std::int32_t paragraph = 0;
    /// Of the first unit, from 1: in the paragraph; in the whole text where there is no paragraph.
    std::int32_t position = 0;
    std::int32_t length = 0;

    /// The paragraph around the hit as it stood then, up to the number of units that was asked for on either side and
    /// never half a surrogate pair.
    String before{};
    String text{};  ///< What was found. Empty where it can't be told; then it is the pair's text, but for the case.
    String after{};
    bool isCutBefore = false;  ///< The paragraph begins before `before`.
    bool isCutAfter = false;   ///< The paragraph goes on after `after`.

    /// What stands in the place of `text` now, in a replace run; it may differ from what the pair says where the file
    /// has a form of its own for it. Nothing in a find, and where a value could not be changed, as some properties
    /// can't.
    std::optional<String> becomes{};

    /// Whether the counts hold this hit. A footer is searched and replaced, but never counted.
    bool isCounted = true;
};

/// Told of each hit.
using HitReceiver = std::function<void(const Hit& hit)>;

}  // namespace tessarine
