#pragma once

#include <cstdint>

#include "model/PowerPoint.h"

namespace tessarine
{

/// Which shapes a location reads, and what it does after every shape, read or not.
struct ShapeRule {
    /// The kinds of shapes that are read.
    enum class Types { Placeholder, AutoShapeAndTextBox, AutoShapeTextBoxAndPlaceholder };
    /// The answers of HasTextFrame that count as yes.
    enum class TextFrame { OneOrMinusOne, AnythingButZero };
    /// What follows each shape. Yield sleeps when the processor is to be spared, DeliverEvents never does.
    enum class Between { Yield, DeliverEvents };

    Types types;
    TextFrame textFrame;
    Between between;

    /// Groups, tables and all other kinds are never entered.
    bool AcceptsType(std::int32_t type) const
    {
        const bool drawn = type == powerpoint::msoTextBox || type == powerpoint::msoAutoShape;
        const bool placeholder = type == powerpoint::msoPlaceholder;
        switch (types) {
            case Types::Placeholder:
                return placeholder;
            case Types::AutoShapeAndTextBox:
                return drawn;
            case Types::AutoShapeTextBoxAndPlaceholder:
                return drawn || placeholder;
        }
        return false;
    }

    /// Whether a shape with this answer of HasTextFrame is read.
    bool AcceptsTextFrame(powerpoint::TriState hasTextFrame) const
    {
        if (textFrame == TextFrame::AnythingButZero)
            return hasTextFrame != powerpoint::msoFalse;
        return hasTextFrame == powerpoint::msoCTrue || hasTextFrame == powerpoint::msoTrue;
    }
};

}  // namespace tessarine
