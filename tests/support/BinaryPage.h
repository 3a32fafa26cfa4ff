#pragma once

#include <string>
#include <vector>

#include "support/BinaryParts.h"
#include "support/BinaryShapes.h"

namespace tessarine::test::ppt
{

/// One drawing while it is written: the page's shapes, and the texts that its outline is to hold.
class BinaryPage
{
public:
    BinaryPage(BinaryParts& parts, bool hasOutline) : parts_(parts), hasOutline_(hasOutline) {}

    /// The drawing container of the page.
    std::string Drawing(const std::vector<Shape>& shapes);

    BinaryParts& Parts() { return parts_; }
    bool HasOutline() const { return hasOutline_; }

    /// Gives a text to the outline, and its number there.
    std::uint32_t AddToOutline(const Text& text, int textType);
    std::uint32_t NextPosition() { return positions_++; }
    std::vector<int> NextPlace();

    const std::vector<std::string>& Outline() const { return outline_; }

private:
    BinaryParts& parts_;
    bool hasOutline_;
    std::vector<std::string> outline_;
    std::uint32_t positions_ = 0;
    int places_ = 0;
};

}  // namespace tessarine::test::ppt
