#include "platform/toolkit/ToolbarValidator.h"

#include <QCoreApplication>
#include <QEvent>
#include <utility>

namespace platform {

ToolbarValidator &ToolbarValidator::sharedInstance() {
    static auto *validator = new ToolbarValidator;
    return *validator;
}

ToolbarValidator::ToolbarValidator() {
    m_timer.setSingleShot(true);
    m_timer.setInterval(delay);
    connect(&m_timer, &QTimer::timeout, this, &ToolbarValidator::validateAll);
}

void ToolbarValidator::add(QWidget *toolbar, std::function<void()> revalidate) {
    m_entries.removeIf([](const Entry &known) { return known.toolbar.isNull(); });
    if (m_entries.isEmpty())
        QCoreApplication::instance()->installEventFilter(this);
    m_entries.append({toolbar, std::move(revalidate)});
}

bool ToolbarValidator::eventFilter(QObject *, QEvent *event) {
    switch (event->type()) {
    case QEvent::WindowActivate:
    case QEvent::MouseButtonRelease:
    case QEvent::KeyRelease:
        if (!m_timer.isActive())
            m_timer.start();
        break;
    default:
        break;
    }
    return false;
}

void ToolbarValidator::validateAll() {
    const QList<Entry> entries = m_entries; // validating may make and end windows
    for (const Entry &entry : entries)
        if (entry.toolbar && entry.toolbar->isVisible())
            entry.revalidate();
}

} // namespace platform
