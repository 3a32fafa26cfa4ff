#include "shell/FileAssociation.h"

#include "log/Treatments.h"
#include "platform/ProgramFolder.h"
#include "platform/ProgramInfo.h"
#include "shell/FileAssociationKeys.h"

namespace tessarine
{

void RegisterFileType(const String& ClassName, const String& Extension, const String& Description,
                      const String& IconPath)
{
    LogAndReturn({u"RegisterFileType", u"Module FileAssociation"}, [&] {
        const String command = ProgramFolder() + u"\\" + String(ExecutableName) + u".exe %1";
        const String extensionKey = u"." + Extension;
        const String commandKey = ClassName + u"\\shell\\open\\command";
        const String iconKey = ClassName + u"\\DefaultIcon";

        CreateNewKey(extensionKey, HKEY_CLASSES_ROOT);
        SetKeyValue(extensionKey, {}, ClassName, REG_SZ);
        CreateNewKey(commandKey, HKEY_CLASSES_ROOT);
        CreateNewKey(iconKey, HKEY_CLASSES_ROOT);
        SetKeyValue(ClassName, {}, Description, REG_SZ);
        SetKeyValue(commandKey, {}, command, REG_SZ);
        SetKeyValue(iconKey, {}, IconPath, REG_SZ);
    });
}

}  // namespace tessarine
