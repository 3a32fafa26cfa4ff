#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "report/FileReport.h"
#include "report/RunReport.h"

namespace tessarine::test
{

/// A pair with its counts in slides and notes; -1 in all other places, where it was not looked for.
inline PairReport Pair(const String& find, const String& replace, std::int32_t slides, std::int32_t notes = 0)
{
    PairReport pair{find, replace, {}};
    pair.counts.fill(-1);
    pair.counts[static_cast<std::size_t>(Location::Slides)] = slides;
    pair.counts[static_cast<std::size_t>(Location::Notes)] = notes;
    return pair;
}

/// A hit of a pair in the first paragraph of a shape on a slide.
inline Hit HitOnSlide(std::int32_t pair, std::int32_t slide, const String& before, const String& text,
                      const String& after, std::optional<String> becomes = {})
{
    const auto place = std::make_shared<HitPlace>();
    place->pair = pair;
    place->slide = slide;
    place->slideTitle = u"Plan";
    place->shape = 2;
    place->shapeName = u"Text 1";
    Hit hit;
    hit.place = place;
    hit.paragraph = 1;
    hit.position = static_cast<std::int32_t>(before.size()) + 1;
    hit.length = static_cast<std::int32_t>(text.size());
    hit.before = before;
    hit.text = text;
    hit.after = after;
    hit.becomes = std::move(becomes);
    return hit;
}

inline FileReport FileWith(const String& path, std::vector<PairReport> pairs, std::vector<Hit> hits = {})
{
    FileReport file{path, FileStatus::NothingCounted, {}, std::move(pairs)};
    file.hits = std::move(hits);
    if (file.Occurrences() > 0)
        file.status = FileStatus::Counted;
    return file;
}

/// The whole report, as a writer puts it together.
inline std::string TextOf(RunReport& report, const std::vector<FileReport>& files, const RunEnd& end = {})
{
    std::string body;
    for (const FileReport& file : files)
        body += report.OfFile(file);
    return report.Head(end) + body + report.Foot(end);
}

}  // namespace tessarine::test
