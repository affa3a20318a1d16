// A progress bar for work of unknown duration.
#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QProgressBar>

// A segment moves from side to side. The styles would fill the whole bar with faint stripes, which looks
// complete. The segment does not move if the desktop disables animations.
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
