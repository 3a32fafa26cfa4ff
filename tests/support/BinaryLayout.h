#pragma once

#include <string>
#include <vector>

#include "support/BinaryDeck.h"
#include "support/BinaryPage.h"

namespace tessarine::test::ppt
{

/// The persist objects of a binary deck: the document, masters, slides, notes pages, storages of OLE objects.
class BinaryLayout
{
public:
    explicit BinaryLayout(const BinaryDeck& deck);

    /// In the order of their persist ids.
    std::vector<std::string> Objects();
    std::string Pictures() const { return parts_.Pictures(); }

private:
    std::string Master(const MainMaster& master);
    std::string TitleMaster(const MainMaster& master, std::uint32_t masterId);
    std::string PageMaster(const std::vector<Shape>& shapes, bool notes);
    std::string Slide(std::size_t index);
    std::string Notes(std::size_t index);

    std::string Document();
    std::string DocumentAtom() const;
    std::string MasterList() const;
    std::string SlideList() const;
    std::string NotesList() const;

    const BinaryDeck& deck_;
    BinaryParts parts_;
    std::vector<std::vector<std::string>> outlines_;  ///< By slide.
    std::vector<std::uint32_t> masterIds_;            ///< Of main masters, by number.
    std::vector<std::uint32_t> titleMasterIds_;       ///< 0 where there is none.
};

}  // namespace tessarine::test::ppt
