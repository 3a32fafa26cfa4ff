#pragma once

#include <memory>
#include <optional>
#include <string>

#include "files/FileDescriptor.h"
#include "files/HeldFolder.h"

namespace tessarine
{

/// What a new file is to have of the file whose place it takes, beside its content: owner, group, mode, access list and
/// all other extended attributes. Left out are two that the system makes of the content (`security.ima` and
/// `security.evm`).
///
/// On Windows: attributes, time of creation and access list. The new file belongs to the user who saves it, as with any
/// program there; alternate streams come with its place (NewFile).
///
/// A new file is given all this while only its owner may read it, and in an order that never lets anybody in whom the
/// old one keeps out: the owner first, the access list next to last, the mode last.
class KeptAttributes
{
public:
    /// Those of an open file, be it open for its name alone. Nothing when they can't be read; errno says why.
    static std::optional<KeptAttributes> Of(NativeFile file);

    /// Those that a new file of this folder has by itself: the folder's default access list, or else the mode that the
    /// process gives to new files. The owner is the one that the file has.
    static KeptAttributes OfNewFileIn(const HeldFolder& folder);

    /// What could not be given.
    struct NotKept {
        int error;
        std::string what;  ///< "its owner and group", "its access list", "its attribute "user.x"".
    };

    /// Gives them to a new file that is its user's alone, or else tells the first that could not be given.
    std::optional<NotKept> GiveTo(NativeFile newFile) const;

    /// For a copy, which is welcome also without them: what can't be given is left out, and where owner, group or
    /// access list are among that, group and others get no access. Tells only of a mode that can't be set.
    std::optional<NotKept> GiveToCopy(NativeFile newFile) const;

    /// Takes over mode and access list from another file's. From one of another owner or group, to whose people they
    /// would mean something else, only whether the owner may write.
    void TakeAccessFrom(const KeptAttributes& other);

private:
    struct Parts;
    explicit KeptAttributes(Parts parts);

    std::shared_ptr<const Parts> parts_;  // copies share them
};

}  // namespace tessarine
