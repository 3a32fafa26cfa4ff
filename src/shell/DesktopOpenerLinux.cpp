#include "shell/DesktopOpener.h"

#include <QProcess>

#include "i18n/QtText.h"
#include "shell/OpenDoc.h"

namespace tessarine
{

namespace
{

/// The exit statuses of xdg-open as codes of the shell.
std::int32_t ResultOf(int exitStatus)
{
    constexpr int fileDoesNotExist = 2;
    switch (exitStatus) {
        case 0:
            return ShellResult::Opened;
        case fileDoesNotExist:
            return ShellResult::FileNotFound;
        default:  // no tool for the type, or the one there is failed
            return ShellResult::NoAssociation;
    }
}

}  // namespace

std::int32_t OpenWithDesktop(const String& target, std::chrono::milliseconds patience)
{
    // Without a parent: the viewer outlives this call, and killing it with its QProcess would close the document.
    auto* opener = new QProcess;
    QObject::connect(opener, &QProcess::finished, opener, &QObject::deleteLater);
    opener->setStandardInputFile(QProcess::nullDevice());
    opener->setStandardOutputFile(QProcess::nullDevice());
    opener->setStandardErrorFile(QProcess::nullDevice());
    // A viewer that stays open must not keep the folder, and the disk it is on, in use.
    opener->setWorkingDirectory(QStringLiteral("/"));
    opener->start(QStringLiteral("xdg-open"), {ToQt(target)});
    if (!opener->waitForStarted()) {
        opener->deleteLater();
        return ShellResult::NoAssociation;
    }
    if (!opener->waitForFinished(static_cast<int>(patience.count())))
        // Still running is a success: some openers stay for as long as the document is open.
        return ShellResult::Opened;
    return opener->exitStatus() == QProcess::NormalExit ? ResultOf(opener->exitCode()) : ShellResult::NoAssociation;
}

}  // namespace tessarine
