#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include <QObject>
#include <QTimer>

#include "run/FileCount.h"

namespace tessarine
{

/// Counts the files of a choice on a thread of its own, as a folder may be large or far away. One count counts: a new
/// choice drops the one before, which may take a while to notice that.
class FileCounter : public QObject
{
    Q_OBJECT

public:
    explicit FileCounter(QObject* parent);
    ~FileCounter() override;

    /// Counts. Waits a moment before, so that a path that is typed is not counted letter by letter.
    void Count(FileChoice choice);

    /// Drops the count that goes on.
    void Cancel();

Q_SIGNALS:
    void Begun();  ///< After the moment.
    void Counted(const tessarine::FileTotals& totals);

private:
    /// What a count and its thread share. The thread outlives its counter when a folder keeps it waiting.
    struct Task {
        std::atomic<bool> isToStop = false;
        std::mutex mutex;
        FileCounter* counter = nullptr;  // null when nobody wants to know any more
    };

    void Begin();
    void Take(const std::shared_ptr<Task>& task, const FileTotals& totals);

    QTimer pause_;
    FileChoice choice_;  // that waits, or was counted last
    std::shared_ptr<Task> task_;
};

}  // namespace tessarine
