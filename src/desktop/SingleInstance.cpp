#include "desktop/SingleInstance.h"

#include <chrono>

#include <QLockFile>
#include <QStandardPaths>

#include "platform/ProgramInfo.h"

namespace tessarine
{

SingleInstance::SingleInstance()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    lock_ = std::make_unique<QLockFile>(folder + u'/' + QStringView(ExecutableName).toString() + ".lock");
    lock_->setStaleLockTime(std::chrono::milliseconds(0));  // held for as long as its process lives
    // Without a folder for locks nobody can tell, and the program starts.
    isPreviousRunning_ = !lock_->tryLock() && lock_->error() == QLockFile::LockFailedError;
}

SingleInstance::~SingleInstance() = default;

}  // namespace tessarine
