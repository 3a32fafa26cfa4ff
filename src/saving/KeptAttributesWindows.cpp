#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "platform/WindowsHeaders.h"
#include "saving/KeptAttributes.h"

#include <aclapi.h>

namespace tessarine
{

namespace
{

/// A security descriptor with nothing but an access list.
using AccessList = std::vector<std::byte>;

/// Of an open file; empty on failure, with the reason in errno.
AccessList AccessListOf(NativeFile file)
{
    AccessList list(1024);
    DWORD needed = 0;
    while (!GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, list.data(), static_cast<DWORD>(list.size()),
                                    &needed)) {
        if (GetLastError() != ERROR_INSUFFICIENT_BUFFER || needed <= list.size()) {
            LeaveErrorInErrno();
            return {};
        }
        list.resize(needed);
    }
    list.resize(GetSecurityDescriptorLength(list.data()));
    return list;
}

bool PutAccessList(NativeFile file, AccessList list)
{
    // Without the request the system would no longer know which entries came from the folder.
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (GetSecurityDescriptorControl(list.data(), &control, &revision) && (control & SE_DACL_AUTO_INHERITED) != 0)
        SetSecurityDescriptorControl(list.data(), SE_DACL_AUTO_INHERIT_REQ, SE_DACL_AUTO_INHERIT_REQ);
    return SetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, list.data()) || LeaveErrorInErrno();
}

/// Gives a file the list that its folder has for new files.
bool InheritAccessList(NativeFile file)
{
    ACL none{};
    if (!InitializeAcl(&none, sizeof none, ACL_REVISION))
        return LeaveErrorInErrno();
    const DWORD error =
        SetSecurityInfo(file, SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | UNPROTECTED_DACL_SECURITY_INFORMATION,
                        nullptr, nullptr, &none, nullptr);
    errno = ErrnoOf(error);
    return error == ERROR_SUCCESS;
}

}  // namespace

struct KeptAttributes::Parts {
    DWORD attributes = FILE_ATTRIBUTE_NORMAL;
    LARGE_INTEGER creation{};  // 0 for that of the new file
    AccessList accessList;     // empty for the one that the folder gives

    std::optional<NotKept> GiveTo(NativeFile newFile, bool isCopy) const;
};

KeptAttributes::KeptAttributes(Parts parts) : parts_(std::make_shared<const Parts>(std::move(parts))) {}

std::optional<KeptAttributes> KeptAttributes::Of(NativeFile file)
{
    Parts kept;
    FILE_BASIC_INFO basic{};
    if (!GetFileInformationByHandleEx(file, FileBasicInfo, &basic, sizeof basic)) {
        LeaveErrorInErrno();
        return std::nullopt;
    }
    kept.attributes = SettableAttributes(basic.FileAttributes);
    kept.creation = basic.CreationTime;
    kept.accessList = AccessListOf(file);
    if (kept.accessList.empty())
        return std::nullopt;
    return KeptAttributes(std::move(kept));
}

KeptAttributes KeptAttributes::OfNewFileIn(const HeldFolder&)
{
    Parts kept;
    kept.attributes = FILE_ATTRIBUTE_ARCHIVE;  // as the system has it for new files
    return KeptAttributes(std::move(kept));
}

std::optional<KeptAttributes::NotKept> KeptAttributes::GiveTo(NativeFile newFile) const
{
    return parts_->GiveTo(newFile, false);
}

std::optional<KeptAttributes::NotKept> KeptAttributes::GiveToCopy(NativeFile newFile) const
{
    return parts_->GiveTo(newFile, true);
}

std::optional<KeptAttributes::NotKept> KeptAttributes::Parts::GiveTo(NativeFile newFile, bool isCopy) const
{
    // A copy that can't have the list stays its user's alone.
    if (accessList.empty()) {
        if (!InheritAccessList(newFile) && !isCopy)
            return NotKept{errno, "its folder's access list"};
    } else if (AccessListOf(newFile) != accessList && !PutAccessList(newFile, accessList) && !isCopy) {
        return NotKept{errno, "its access list"};
    }

    FILE_BASIC_INFO basic{};  // a time of 0 stays as it is
    basic.FileAttributes = attributes;
    if (!isCopy)
        basic.CreationTime = creation;
    if (!SetFileInformationByHandle(newFile, FileBasicInfo, &basic, sizeof basic)) {
        LeaveErrorInErrno();
        return NotKept{errno, "its attributes"};
    }
    return std::nullopt;
}

void KeptAttributes::TakeAccessFrom(const KeptAttributes& other)
{
    Parts parts = *parts_;
    parts.attributes = other.parts_->attributes;
    parts.accessList = other.parts_->accessList;
    *this = KeptAttributes(std::move(parts));
}

}  // namespace tessarine
