#pragma once

#include <optional>

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

    int Steps() const { return steps_; }  ///< Those taken, shown already or not.

    /// To the end, shown at once.
    void Fill();

    /// The run has ended after so many files: the bar is drawn there from now on, whatever its value. A run that ends
    /// early puts the value to the end as any other does, and people want to see how far it has come.
    void StopAt(int files);

    QString text() const override;  ///< The percentage that is drawn.

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void Show(int steps);  // at once, without a wait for the timer

    int steps_ = 0;            // those taken; the bar may show fewer
    std::optional<int> stop_;  // where a run that has ended is drawn
    int timer_ = 0;            // runs while a step would come too soon after the last that was shown
};

}  // namespace tessarine
