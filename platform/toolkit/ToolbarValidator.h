// When the items of all tool-bars are validated.
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace platform {

// After a window was activated, and once a short while after a key or a mouse button was used: however many
// events come, there is one round. Nothing happens while nothing is done.
class ToolbarValidator : public QObject {
public:
    static constexpr int delay = 100; // milliseconds
    static ToolbarValidator &sharedInstance();
    void add(QWidget *toolbar, std::function<void()> revalidate); // until it dies; only while it is shown

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    ToolbarValidator();
    void validateAll();
    struct Entry {
        QPointer<QWidget> toolbar;
        std::function<void()> revalidate;
    };
    QTimer m_timer;
    QList<Entry> m_entries;
};

} // namespace platform
