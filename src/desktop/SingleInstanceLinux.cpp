#include "desktop/SingleInstance.h"

#include <chrono>

#include <QLockFile>
#include <QStandardPaths>

#include "platform/ProgramInfo.h"

namespace tessarine
{

struct SingleInstance::Lock {
    QLockFile file;
};

SingleInstance::SingleInstance()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    lock_.reset(new Lock{QLockFile(folder + u'/' + QStringView(ExecutableName).toString() + ".lock")});
    QLockFile& file = lock_->file;
    file.setStaleLockTime(std::chrono::milliseconds(0));  // held for as long as its process lives
    // Without a folder for locks nobody can tell, and the program starts.
    isPreviousRunning_ = !file.tryLock() && file.error() == QLockFile::LockFailedError;
}

SingleInstance::~SingleInstance() = default;

}  // namespace tessarine
