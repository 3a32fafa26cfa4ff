#pragma once

#include <array>
#include <cstdint>

#include "model/SearchLocations.h"
#include "platform/String.h"

namespace tessarine
{

/// What became of a pair in a file, or of a whole file.
namespace FileStatus
{
inline constexpr std::int32_t NotProcessed = 0;    ///< mError of the file's result says why.
inline constexpr std::int32_t Counted = 1;         ///< At least one occurrence.
inline constexpr std::int32_t NothingCounted = 2;  ///< No occurrence, also where nothing was searched.
}  // namespace FileStatus

/// The result of one pair in one file. A count of -1 means that the location was not searched for this pair; 0 and up
/// is the number of occurrences. A new result holds zeros.
class CounterStatus
{
public:
    String ReplaceWith;
    String FindWhat;
    std::int32_t FileStausAfterProcess = FileStatus::NotProcessed;  ///< A FileStatus.

    /// The counts by row of SearchLocations.
    using LocationCounts = std::array<std::int32_t, SearchLocations.size()>;
    const LocationCounts& Counts() const { return counts_; }

    std::int32_t Count(Location location) const { return counts_[static_cast<std::size_t>(location)]; }

    /// Stores a count. One above 0 sets FileStausAfterProcess to 1; no count ever lowers it again.
    void PutCount(Location location, std::int32_t value);

    // The same counts by the names that receivers of a result know, one pair of members for each location. Each Put
    // goes through PutCount.
    std::int32_t NotesMaster_Replaced() const { return Count(Location::NotesMaster); }
    void PutNotesMaster_Replaced(std::int32_t value) { PutCount(Location::NotesMaster, value); }
    std::int32_t HandoutMaster_Replaced() const { return Count(Location::HandoutMaster); }
    void PutHandoutMaster_Replaced(std::int32_t value) { PutCount(Location::HandoutMaster, value); }
    std::int32_t TitleMaster_Replaced() const { return Count(Location::TitleMaster); }
    void PutTitleMaster_Replaced(std::int32_t value) { PutCount(Location::TitleMaster, value); }
    std::int32_t SlideMasterPerPresentation_Replaced() const { return Count(Location::SlideMasterPerPresentation); }
    void PutSlideMasterPerPresentation_Replaced(std::int32_t value)
    {
        PutCount(Location::SlideMasterPerPresentation, value);
    }
    std::int32_t SlideMasterPerSlide_Replaced() const { return Count(Location::SlideMasterPerSlide); }
    void PutSlideMasterPerSlide_Replaced(std::int32_t value) { PutCount(Location::SlideMasterPerSlide, value); }
    std::int32_t Links_Replaced() const { return Count(Location::Links); }
    void PutLinks_Replaced(std::int32_t value) { PutCount(Location::Links, value); }
    std::int32_t Notes_Replaced() const { return Count(Location::Notes); }
    void PutNotes_Replaced(std::int32_t value) { PutCount(Location::Notes, value); }
    std::int32_t CustomProperties_Replaced() const { return Count(Location::CustomProperties); }
    void PutCustomProperties_Replaced(std::int32_t value) { PutCount(Location::CustomProperties, value); }
    std::int32_t BuiltinProperies_Replaced() const { return Count(Location::BuiltinProperies); }
    void PutBuiltinProperies_Replaced(std::int32_t value) { PutCount(Location::BuiltinProperies, value); }
    std::int32_t Footer_Replaced() const { return Count(Location::Footer); }
    void PutFooter_Replaced(std::int32_t value) { PutCount(Location::Footer, value); }
    std::int32_t Header_Replaced() const { return Count(Location::Header); }
    void PutHeader_Replaced(std::int32_t value) { PutCount(Location::Header, value); }
    std::int32_t ShapesAndTextboxes_Replaced() const { return Count(Location::ShapesAndTextboxes); }
    void PutShapesAndTextboxes_Replaced(std::int32_t value) { PutCount(Location::ShapesAndTextboxes, value); }
    std::int32_t HyperlinkAddresses_Replaced() const { return Count(Location::HyperlinkAddresses); }
    void PutHyperlinkAddresses_Replaced(std::int32_t value) { PutCount(Location::HyperlinkAddresses, value); }
    std::int32_t Slides_Replaced() const { return Count(Location::Slides); }
    void PutSlides_Replaced(std::int32_t value) { PutCount(Location::Slides, value); }

private:
    LocationCounts counts_{};
};

}  // namespace tessarine
