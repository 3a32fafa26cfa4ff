#pragma once

#include <QProgressBar>

namespace tessarine
{

/// A progress bar that takes a step per file and shows what has come about at most ten times a second: to draw it takes
/// longer than to search many a file.
class FileProgressBar : public QProgressBar
{
    Q_OBJECT

public:
    explicit FileProgressBar(QWidget* parent = nullptr);

    /// A run of so many files begins. Without files the bar is one step long; Qt would show one that never ends.
    void Begin(int files);

    void AddStep();

    /// To the end, at once.
    void Fill();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void Show(int steps);

    int steps_ = 0;
    int timer_ = 0;  // runs while a step would come too soon after the last that was shown
};

}  // namespace tessarine
