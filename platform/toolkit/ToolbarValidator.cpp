#include "platform/toolkit/ToolbarValidator.h"

#include "platform/toolkit/Toolbar.h"

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

void ToolbarValidator::add(Toolbar *toolbar) {
    m_toolbars.removeIf([](const QPointer<Toolbar> &known) { return known.isNull(); });
    if (m_toolbars.isEmpty())
        QCoreApplication::instance()->installEventFilter(this);
    m_toolbars.append(toolbar);
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
    const QList<QPointer<Toolbar>> toolbars = m_toolbars; // validating may make and end windows
    for (const QPointer<Toolbar> &toolbar : toolbars)
        if (toolbar && toolbar->isVisible())
            toolbar->revalidate();
}

} // namespace platform
