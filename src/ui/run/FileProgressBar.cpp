#include "ui/run/FileProgressBar.h"

#include <algorithm>
#include <chrono>

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
    setRange(0, std::max(files, 1));
    Show(0);
}

void FileProgressBar::AddStep()
{
    ++steps_;
    if (timer_ != 0)
        return;
    setValue(steps_);
    timer_ = startTimer(betweenSteps);
}

void FileProgressBar::Fill()
{
    Show(maximum());
}

void FileProgressBar::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != timer_) {
        QProgressBar::timerEvent(event);
        return;
    }
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
