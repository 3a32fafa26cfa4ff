#pragma once

#include <QProgressBar>

namespace tessarine
{

/// A progress bar that takes a step per file. It shows the steps at most ten times a second, because drawing it takes
/// longer than searching a small file: the first step at once, those that follow soon after together a moment later.
class FileProgressBar : public QProgressBar
{
    Q_OBJECT

public:
    explicit FileProgressBar(QWidget* parent = nullptr);  ///< As after Begin(0).

    /// A run of so many files begins: back to the start, at once. Without files the bar is one step long, because Qt
    /// shows a bar of no steps as work without an end.
    void Begin(int files);

    void AddStep();  ///< A step on, shown as told above.

    /// To the end, shown at once.
    void Fill();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void Show(int steps);  // at once, without a wait for the timer

    int steps_ = 0;  // those taken; the bar may show fewer
    int timer_ = 0;  // runs while a step would come too soon after the last that was shown
};

}  // namespace tessarine
