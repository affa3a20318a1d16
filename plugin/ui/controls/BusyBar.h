// A bar that shows that something is under way and that nobody knows how long it takes.
#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QProgressBar>

// A piece of the bar that moves to and fro. The styles fill the whole bar with faint stripes instead, which
// looks complete. It stands still where the desktop wants no animation.
class BusyBar : public QProgressBar {
    Q_OBJECT
public:
    explicit BusyBar(QWidget *parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    QBasicTimer m_frames;
    QElapsedTimer m_shown;
};
