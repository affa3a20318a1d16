// When the items of all tool-bars are validated.
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

namespace platform {

class Toolbar;

// After a window was activated, and once a short while after a key or a mouse button was used: however many
// events come, there is one round. Nothing happens while nothing is done.
class ToolbarValidator : public QObject {
public:
    static constexpr int delay = 100; // milliseconds
    static ToolbarValidator &sharedInstance();
    void add(Toolbar *toolbar); // until it dies

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    ToolbarValidator();
    void validateAll();
    QTimer m_timer;
    QList<QPointer<Toolbar>> m_toolbars;
};

} // namespace platform
