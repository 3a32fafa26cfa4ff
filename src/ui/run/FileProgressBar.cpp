#include "ui/run/FileProgressBar.h"

#include <algorithm>
#include <chrono>

#include <QStyleOptionProgressBar>
#include <QStylePainter>
#include <QTimerEvent>

namespace tessarine
{

namespace
{

constexpr std::chrono::milliseconds betweenSteps{100};

}  // namespace

FileProgressBar::FileProgressBar(QWidget* parent) : QProgressBar(parent)
{
    Begin(0);
}

void FileProgressBar::Begin(int files)
{
    // A range from 0 to 0 would make the bar run to and fro instead of standing empty.
    setRange(0, std::max(files, 1));
    stop_.reset();
    Show(0);
}

void FileProgressBar::AddStep()
{
    // Counted in any case, shown when its time has come.
    ++steps_;
    // While the timer runs, steps are only counted: painting each of many small files would slow the run.
    if (timer_ != 0)
        return;
    setValue(steps_);
    timer_ = startTimer(betweenSteps);
}

void FileProgressBar::Fill()
{
    Show(maximum());
}

void FileProgressBar::StopAt(int files)
{
    stop_ = std::clamp(files, 0, maximum());
    update();
}

QString FileProgressBar::text() const
{
    return stop_ ? locale().toString(100LL * *stop_ / maximum()) + locale().percent() : QProgressBar::text();
}

void FileProgressBar::paintEvent(QPaintEvent*)
{
    QStyleOptionProgressBar option;
    initStyleOption(&option);
    option.progress = stop_.value_or(option.progress);
    QStylePainter(this).drawControl(QStyle::CE_ProgressBar, option);
}

void FileProgressBar::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != timer_) {
        QProgressBar::timerEvent(event);
        return;
    }
    // The timer goes on while steps come and stops at the first tick without a new one.
    if (value() != steps_) {
        setValue(steps_);
        return;
    }
    killTimer(timer_);
    timer_ = 0;
}

void FileProgressBar::Show(int steps)
{
    steps_ = steps;
    setValue(steps);
}

}  // namespace tessarine
