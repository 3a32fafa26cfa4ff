#include "settings/SettingsStore.h"

#include <QSettings>
#include <QStandardPaths>

#include "platform/Failure.h"
#include "platform/ProgramInfo.h"

namespace tessarine
{

namespace
{

QString PathOf(const String& application)
{
    // Asked anew at every call: QSettings by itself would keep the configuration home that it saw first.
    const QString home = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return home + u'/' + QStringView(CompanyName).toString() + u'/' + QStringView(application).toString() + ".ini";
}

QString NameOf(const String& section, const String& key)
{
    // QSettings takes what stands before the slash for a section of the file.
    return QStringView(section).toString() + u'/' + QStringView(key).toString();
}

}  // namespace

String GetSetting(const String& application, const String& section, const String& key)
{
    const QSettings store(PathOf(application), QSettings::IniFormat);
    return store.value(NameOf(section, key)).toString().toStdU16String();
}

void SaveSetting(const String& application, const String& section, const String& key, const String& value)
{
    QSettings store(PathOf(application), QSettings::IniFormat);
    store.setValue(NameOf(section, key), QStringView(value).toString());
    // At once: QSettings otherwise writes when it likes, and a failure would go unnoticed.
    store.sync();
    if (store.status() != QSettings::NoError)
        throw Failure(FailureNumber::PermissionDenied,
                      u"Permission denied: could not write the settings to " + store.fileName().toStdU16String());
}

}  // namespace tessarine
