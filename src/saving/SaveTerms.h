#pragma once

namespace tessarine
{

/// When a save may write into the old file itself, instead of putting a new file in its place. A crash amid such a
/// write leaves the file half written until the next start completes it (InPlaceWrite); everything else about the file
/// stays by itself.
struct SaveTerms {
    /// A file with more names (hard links) is written in place, so that all of them show the new content. Otherwise
    /// the others keep the old one, with a warning.
    bool inPlaceLinks = false;

    /// A file whose owner, group, access list or other attributes can't be given to a new file is written in place.
    /// Otherwise the save fails.
    bool inPlaceWhereNotKept = false;

    /// A file that may be written, in a folder that may not, is written in place. Otherwise the save fails.
    bool inPlaceWhereFolderIsClosed = false;

    /// A file with a digital signature, which a change makes worthless, is not saved but fails. Otherwise the signature
    /// is removed, with a warning.
    bool keepsSigned = false;
};

}  // namespace tessarine
