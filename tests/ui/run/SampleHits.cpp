#include "ui/run/SampleHits.h"

#include <sstream>
#include <utility>

namespace tessarine
{

Hit HitOnSlide(std::int32_t pair, String before, String text, String after)
{
    HitPlace place;
    place.pair = pair;
    place.slide = 3;
    place.slideTitle = u"Plan";
    place.shape = 2;
    place.shapeName = u"Text 1";
    Hit hit;
    hit.place = std::make_shared<const HitPlace>(place);
    hit.paragraph = 2;
    hit.position = static_cast<std::int32_t>(before.size()) + 1;
    hit.length = static_cast<std::int32_t>(text.size());
    hit.before = std::move(before);
    hit.text = std::move(text);
    hit.after = std::move(after);
    return hit;
}

Hit Replaced(Hit hit, String becomes)
{
    hit.becomes = std::move(becomes);
    return hit;
}

Hit At(Hit hit, HitPlace place, std::int32_t paragraph)
{
    place.pair = hit.place->pair;
    hit.place = std::make_shared<const HitPlace>(std::move(place));
    hit.paragraph = paragraph;
    return hit;
}

std::string Described(const Hit& hit)
{
    const HitPlace& place = *hit.place;
    std::ostringstream line;
    line << RowOf(place.location).name << " pair " << place.pair << " slide " << place.slide << " '"
         << ToUtf8(place.slideTitle) << "' design '" << ToUtf8(place.design) << "' property '" << ToUtf8(place.property)
         << "' header/footer " << static_cast<int>(place.headerFooter) << " link " << place.hyperlink << " shape "
         << place.shape << " '" << ToUtf8(place.shapeName) << "' paragraph " << hit.paragraph << " at " << hit.position
         << '+' << hit.length << ": " << (hit.isCutBefore ? "..." : "") << ToUtf8(hit.before) << '[' << ToUtf8(hit.text)
         << ']' << ToUtf8(hit.after) << (hit.isCutAfter ? "..." : "");
    if (hit.becomes)
        line << " -> [" << ToUtf8(*hit.becomes) << ']';
    if (!hit.isCounted)
        line << " not counted";
    return line.str();
}

std::vector<std::string> Described(const std::vector<Hit>& hits)
{
    std::vector<std::string> lines;
    for (const Hit& hit : hits)
        lines.push_back(Described(hit));
    return lines;
}

}  // namespace tessarine
