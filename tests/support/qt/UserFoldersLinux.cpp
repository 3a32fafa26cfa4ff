#include "support/qt/UserFolders.h"

#include <QFile>

#include "i18n/QtText.h"

namespace tessarine
{

UserFolders::UserFolders() : previousConfiguration_(qgetenv("XDG_CONFIG_HOME")), previousData_(qgetenv("XDG_DATA_HOME"))
{
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(ToQt(configuration.Path())));
    qputenv("XDG_DATA_HOME", QFile::encodeName(ToQt(data.Path())));
}

UserFolders::~UserFolders()
{
    qputenv("XDG_CONFIG_HOME", previousConfiguration_);
    qputenv("XDG_DATA_HOME", previousData_);
}

void UserFolders::BlockSettings() const
{
    configuration.Write(u"Tessarine", "a file in the way");
}

}  // namespace tessarine
