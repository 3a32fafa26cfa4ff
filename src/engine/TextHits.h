#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "engine/Hit.h"
#include "model/PowerPoint.h"

namespace tessarine
{

/// Tells the hits of one shape's text while a walk finds or replaces them, from front to back. What the presentation
/// program can't tell of a hit is left out; a failure of its answers is no failure of the walk.
class TextHits
{
public:
    /// Who is told, and what is asked for it. None of them may fail.
    struct Port {
        HitReceiver found;
        std::function<bool()> wantsWhole;     ///< Before each hit; no: it tells `pairPlace` alone.
        std::function<HitPlace()> place;      ///< Once, at the first whole hit.
        std::function<HitPlace()> pairPlace;  ///< Once, at the first other one.
        std::int32_t context = 0;             ///< Of the paragraph, on either side; UTF-16 units.
    };
    explicit TextHits(Port port);

    /// A hit of a find: `length` units from position `start` of the text on (from 1).
    void Found(powerpoint::TextRange& text, std::int32_t start, std::int32_t length);

    /// Looks at what Replace is about to replace, with the arguments that it will get: afterwards nobody knows how it
    /// was written.
    void BeforeReplace(powerpoint::TextRange& text, const String& find, std::int32_t after,
                       powerpoint::TriState matchCase, powerpoint::TriState wholeWords);

    /// What was looked at was replaced; `start` is where the new text begins.
    void Replaced(powerpoint::TextRange& text, std::int32_t start, const String& with);

private:
    void LookAt(powerpoint::TextRange& text, std::int32_t start, std::int32_t length);
    void ReadAround(powerpoint::TextRange& text, std::int32_t start, std::int32_t length);
    bool GoTo(powerpoint::TextRange& text, std::int32_t unit);
    void LookAtNothing();

    const Port port_;
    const std::int32_t context_;
    std::shared_ptr<const HitPlace> place_;  // null before it is needed
    std::shared_ptr<const HitPlace> pairPlace_;

    Hit hit_;  // the one that is told, or about to be replaced; a position of 0 for one that was not seen before

    // How far the paragraphs were counted, in units from 0, so that a text is read once however many hits it holds.
    std::int32_t seen_ = 0;
    std::int32_t paragraph_ = 1;
    std::int32_t paragraphStart_ = 0;
};

/// The parts of a text around the units [begin, begin + length), which must lie in it, go into the hit: at most
/// `context` units in front and after, and never half a surrogate pair. Positions count from 0.
void PutContext(Hit& hit, StringView text, std::size_t begin, std::size_t length, std::size_t context);

/// A name or title as it is told of a hit: on one line, without blanks at its ends, at most 200 units of it.
String HitLabel(StringView text);

}  // namespace tessarine
