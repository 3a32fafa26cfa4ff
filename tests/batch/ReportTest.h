#pragma once

#include "batch/BackupCommands.h"
#include "batch/Report.h"
#include "model/SearchLocations.h"
#include "report/FileReport.h"

namespace tessarine::batch
{

/// A style for pairs that are looked for in slides and notes.
inline ReportStyle StyleOf(Command command, bool verbose = false, bool colors = false)
{
    ReportStyle style{command, {}, verbose, colors};
    style.setting.InSlides = true;
    style.setting.InNotes = true;
    return style;
}

/// The same for a report that tells hits.
inline ReportStyle ShowingStyleOf(Command command, bool colors = false)
{
    ReportStyle style = StyleOf(command, false, colors);
    style.hits = true;
    return style;
}

/// A pair with its counts in slides and notes; -1 in all other places, where it was not looked for.
inline PairReport Pair(const String& find, const String& replace, std::int32_t slides, std::int32_t notes)
{
    PairReport pair{find, replace, {}};
    pair.counts.fill(-1);
    pair.counts[static_cast<std::size_t>(Location::Slides)] = slides;
    pair.counts[static_cast<std::size_t>(Location::Notes)] = notes;
    return pair;
}

/// A hit in a text box of slide 3: "ask FABRIKAM about".
inline Hit ShapeHit()
{
    return {.place = std::make_shared<const HitPlace>(HitPlace{.location = Location::ShapesAndTextboxes,
                                                               .pair = 1,
                                                               .slide = 3,
                                                               .slideTitle = u"Plan",
                                                               .shape = 2,
                                                               .shapeName = u"Text 1"}),
            .paragraph = 2,
            .position = 5,
            .length = 8,
            .before = u"ask ",
            .text = u"FABRIKAM",
            .after = u" about"};
}

/// A hit in a plain value.
inline Hit ValueHit(const HitPlace& place, const String& before, const String& text, const String& after = {})
{
    return {.place = std::make_shared<const HitPlace>(place),
            .position = static_cast<std::int32_t>(before.size()) + 1,
            .length = static_cast<std::int32_t>(text.size()),
            .before = before,
            .text = text,
            .after = after};
}

/// A counted file with "Fabrikam" in slides.
inline FileReport FileWithHits(std::vector<Hit> hits)
{
    FileReport file{u"a.pptx", FileStatus::Counted, {}, {Pair(u"Fabrikam", u"Contoso", 1, 0)}};
    file.hits = std::move(hits);
    return file;
}

}  // namespace tessarine::batch
