#pragma once

#include <QByteArray>
#include <QFile>

#include "i18n/QtText.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

/// While it lives the user's configuration and data lie in two new folders, so that a test meets a fresh account and
/// touches nothing of the person who runs it.
class UserFolders
{
public:
    UserFolders()
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(ToQt(configuration.Path())));
        qputenv("XDG_DATA_HOME", QFile::encodeName(ToQt(data.Path())));
    }
    ~UserFolders()
    {
        qputenv("XDG_CONFIG_HOME", previousConfiguration_);
        qputenv("XDG_DATA_HOME", previousData_);
    }
    UserFolders(const UserFolders&) = delete;
    UserFolders& operator=(const UserFolders&) = delete;

    const TemporaryFolder configuration;
    const TemporaryFolder data;

private:
    QByteArray previousConfiguration_ = qgetenv("XDG_CONFIG_HOME");
    QByteArray previousData_ = qgetenv("XDG_DATA_HOME");
};

}  // namespace tessarine
