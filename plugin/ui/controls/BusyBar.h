// A progress bar for work of unknown duration.
#pragma once

#include <QProgressBar>
#include <QTimer>

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

private:
    QTimer m_frames{this};
    int m_frame = 0; // since it was shown
};
