#include "plugin/ui/dialogs/vlProgressWindowController.h"

#include "platform/services/Services.h"
#include "plugin/link/localizedString.h"
#include "plugin/ui/localizationKeys.h"

#include <QEvent>
#include <QLabel>

namespace {
const QString interfaceName = QStringLiteral("vlProgressWindowController");
const QString outletMessage = QStringLiteral("text_communicationMsg");
} // namespace

vlProgressWindowController::vlProgressWindowController() = default;

vlProgressWindowController::~vlProgressWindowController() {
    abortDomodal();
}

void vlProgressWindowController::domodalSheet(QWidget *) {
    if (!m_window)
        loadWindow();
    m_modalSession.begin(m_window.get());
}

void vlProgressWindowController::abortDomodal() {
    m_modalSession.end();
}

void vlProgressWindowController::loadWindow() {
    m_window = platform::services().pluginBundle->loadInterface(interfaceName);
    if (!m_window)
        return;
    // Only the answer or the time-out ends it: there is nothing to close it with.
    m_window->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    m_window->setAttribute(Qt::WA_QuitOnClose, false);
    m_window->installEventFilter(this);
    awakeFromNib();
}

void vlProgressWindowController::awakeFromNib() {
    initItemsWithLocalizedString();
}

void vlProgressWindowController::initItemsWithLocalizedString() {
    const QString message = vlLocalizedString(uiKeys::communicationProgress);
    if (auto *label = m_window->findChild<QLabel *>(outletMessage))
        label->setText(message);
    m_window->setAccessibleName(message);
}

bool vlProgressWindowController::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Close) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}
