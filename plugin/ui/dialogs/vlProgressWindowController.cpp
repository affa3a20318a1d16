#include "plugin/ui/dialogs/vlProgressWindowController.h"

#include "platform/services/Services.h"
#include "platform/toolkit/Windows.h"
#include "plugin/ui/controls/BusyBar.h"
#include "plugin/ui/localizationKeys.h"
#include "plugin/util/localizedString.h"

#include <QEvent>
#include <QLabel>
#include <QLayout>

namespace {
const QString interfaceName = u"vlProgressWindowController"_s;
const QString outletAction = u"text_action"_s;
const QString outletMessage = u"text_communicationMsg"_s;

QString actionKey(ClientAnswer kind) {
    switch (kind) {
    case ClientAnswer::Schedule:
        return uiKeys::progressSchedule;
    case ClientAnswer::Update:
        return uiKeys::progressUpdate;
    case ClientAnswer::Delete:
        return uiKeys::progressDelete;
    case ClientAnswer::GetMeeting:
        return uiKeys::progressGetMeeting;
    case ClientAnswer::GetUserProfile:
        return uiKeys::progressGetUserProfile;
    case ClientAnswer::GetPAC:
        return uiKeys::progressGetPAC;
    }
    return {};
}

} // namespace

// Shows the window during its lifetime.
class ProgressWindow : public QObject {
public:
    static std::shared_ptr<ProgressWindow> shown() {
        static std::weak_ptr<ProgressWindow> current;
        std::shared_ptr<ProgressWindow> window = current.lock();
        if (!window)
            current = window = std::make_shared<ProgressWindow>();
        return window;
    }
    ProgressWindow()
        : m_window(platform::services().pluginBundle->loadInterface(interfaceName)) {
        if (!m_window)
            return;
        // No close button: only the answer or the time-out closes the window.
        m_window->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
        m_window->setAttribute(Qt::WA_QuitOnClose, false);
        m_window->installEventFilter(this);
        m_window->layout()->addWidget(new BusyBar);
        awakeFromNib();
    }
    [[nodiscard]] QWidget *window() const { return m_window.get(); }
    // Shows the text for the most recent waiting request.
    void show(std::optional<ClientAnswer> kind) {
        if (!m_window)
            return;
        if (auto *label = m_window->findChild<QLabel *>(outletAction)) {
            label->setText(kind ? vlLocalizedString(actionKey(*kind)) : QString());
            label->setVisible(kind.has_value());
        }
        m_modalSession.begin(m_window.get()); // no effect if it is already running
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        if (event->type() == QEvent::Close) {
            event->ignore();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void awakeFromNib() { initItemsWithLocalizedString(); }
    void initItemsWithLocalizedString() {
        const QString message = vlLocalizedString(uiKeys::communicationProgress);
        if (auto *label = m_window->findChild<QLabel *>(outletMessage))
            label->setText(message);
        m_window->setWindowTitle(vlLocalizedString(uiKeys::palletLabel));
        m_window->setAccessibleName(message);
    }

    std::unique_ptr<QWidget> m_window;
    platform::ModalSession m_modalSession; // destroyed before its window
};

vlProgressWindowController::vlProgressWindowController(std::optional<ClientAnswer> kind)
    : m_kind(kind) {}

vlProgressWindowController::~vlProgressWindowController() {
    abortDomodal();
}

void vlProgressWindowController::domodalSheet(QWidget *) {
    const auto delay = std::make_shared<platform::TimerId>();
    *delay = platform::services().runLoop->callAfter(delaySeconds, [this, delay] { show(); });
    m_delay = delay;
}

void vlProgressWindowController::abortDomodal() {
    // The pointer has expired if the delay has passed or if the run loop was replaced. The new loop may have
    // given the same id to another timer.
    if (const auto delay = m_delay.lock())
        platform::services().runLoop->cancel(*delay);
    m_window.reset();
}

QWidget *vlProgressWindowController::window() const {
    return m_window ? m_window->window() : nullptr;
}

void vlProgressWindowController::show() {
    m_window = ProgressWindow::shown();
    m_window->show(m_kind);
}
