#include <gmock/gmock.h>

#include <QApplication>
#include <QTemporaryDir>

#include "support/Surroundings.h"

/// Runs the tests of windows: without a screen unless one is asked for, and away from the user's own files.
int main(int argumentCount, char** arguments)
{
    tessarine::PinSurroundings();
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir home;
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, QFile::encodeName(home.path()));

    testing::InitGoogleMock(&argumentCount, arguments);
    const QApplication application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
