#pragma once

#ifdef _WIN32
#include <memory>
#else
#include <QByteArray>

#include "support/TemporaryFolder.h"
#endif

namespace tessarine
{

class TestKey;

/// While it lives a test meets a fresh account and touches nothing of the person who runs it: on Linux the user's
/// configuration and data lie in two new folders, on Windows HKEY_CURRENT_USER is a TestKey. One at a time.
class UserFolders
{
public:
    UserFolders();
    ~UserFolders();
    UserFolders(const UserFolders&) = delete;
    UserFolders& operator=(const UserFolders&) = delete;

    /// Puts something in the way of the settings, which must be empty, so that none can be written.
    void BlockSettings() const;

#ifdef _WIN32
private:
    const std::unique_ptr<TestKey> key_;
#else
    const TemporaryFolder configuration;
    const TemporaryFolder data;

private:
    QByteArray previousConfiguration_;
    QByteArray previousData_;
#endif
};

}  // namespace tessarine
