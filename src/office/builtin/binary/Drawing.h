#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "office/builtin/binary/TextAtoms.h"
#include "office/builtin/limits/Limits.h"
#include "office/builtin/reader/PageReader.h"
#include "office/builtin/records/Record.h"

namespace tessarine::builtin
{

/// What a shape is a placeholder for, as far as it matters here.
enum class PlaceholderKind : std::uint8_t { None, Title, SlideImage, Header, Footer, Other };

/// A click on something, or a pointer over it: InteractiveInfo, in a shape's data or, with a range, in its text.
struct Interaction {
    Record info;
    std::optional<TextLink> textLink;
    std::optional<std::size_t> text;  ///< Index of the text that the link is on, for that of a text on the page.
};

/// A shape that lies on the page itself ([MS-ODRAW] 2.2.14).
struct DrawnShape {
    std::uint32_t id = 0;    ///< By which animations name it.
    std::uint16_t form = 0;  ///< MSOSPT: the preset that its outline is.
    bool isGroup = false;
    bool isTable = false;
    bool isLinkedPicture = false;
    bool hasVertices = false;
    PlaceholderKind placeholder = PlaceholderKind::None;
    std::optional<std::uint32_t> externalObject;  ///< What it shows of the list of external objects.
    std::optional<std::size_t> text;              ///< Index among the page's texts.
    std::size_t name = 0;                         ///< Where its name begins in the stream.
    std::size_t nameSize = 0;                     ///< In bytes; 0 without one.
};

/// What a page's drawing holds.
struct Drawing {
    std::vector<DrawnShape> shapes;         ///< From back to front.
    std::vector<TextPlace> texts;           ///< Of those shapes, and none else.
    std::vector<Interaction> interactions;  ///< Of all shapes, also of those in groups, in the page's order.
};

/// Reads the drawing of a page, which is a container in its record. `outline` are the texts of the page that stand in
/// the document's list of slides. Raises `FileCorrupt` for more shapes, links or groups in groups than the limits
/// allow.
Drawing ReadDrawing(std::string_view bytes, const Record& page, const std::vector<TextPlace>& outline,
                    const Limits& limits);

}  // namespace tessarine::builtin
