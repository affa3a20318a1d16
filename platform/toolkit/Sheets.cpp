// Sheets and modal sessions.
#include "platform/toolkit/Windows.h"

#include <QDebug>
#include <QDialog>
#include <QWindow>
#include <utility>

namespace platform {

namespace {

// What is known of the one modal session that may run.
struct RunningSession {
    QPointer<QWidget> window;
    Qt::WindowModality formerModality = Qt::NonModal;
};

RunningSession &runningSession() {
    static auto *session = new RunningSession;
    return *session;
}

// Ties the sheet to its window without making it the window's child: a child would die with the window, and
// the sheet belongs to the caller.
void attach(QDialog *sheet, QWidget *window) {
    window->winId();
    sheet->winId();
    if (sheet->windowHandle() && window->windowHandle())
        sheet->windowHandle()->setTransientParent(window->windowHandle());
}

class SheetWatch : public QObject {
public:
    // Lives until the sheet has ended, its parent has died, or the sheet itself has.
    SheetWatch(QDialog *sheet, QWidget *window, std::function<void(int)> ended)
        : QObject(sheet)
        , m_ended(std::move(ended)) {
        connect(sheet, &QDialog::finished, this, [this](int result) { finish(result); });
        if (window)
            connect(window, &QObject::destroyed, this, [this, sheet] { abandon(sheet); });
    }

private:
    void finish(int result) {
        const std::function<void(int)> ended = std::exchange(m_ended, nullptr);
        disconnectAndDie();
        try {
            if (ended)
                ended(result);
        } catch (...) {
            qWarning("A sheet's handler failed");
        }
    }

    void abandon(QDialog *sheet) {
        m_ended = nullptr;
        disconnectAndDie();
        sheet->hide();
    }

    void disconnectAndDie() {
        if (auto *sheet = qobject_cast<QDialog *>(parent()))
            sheet->disconnect(this);
        deleteLater();
    }

    std::function<void(int)> m_ended;
};

} // namespace

void beginSheet(QDialog *sheet, QWidget *parent, std::function<void(int result)> ended) {
    if (!sheet)
        return;
    QWidget *window = parent ? parent->window() : nullptr;
    new SheetWatch(sheet, window, std::move(ended));
    if (!window) {
        sheet->setWindowModality(Qt::NonModal);
        sheet->setResult(QDialog::Rejected);
        sheet->show();
        return;
    }
    attach(sheet, window);
    sheet->open();
}

ModalSession::~ModalSession() {
    end();
}

bool ModalSession::isRunning() const {
    return m_window && runningSession().window == m_window;
}

bool ModalSession::begin(QWidget *window) {
    RunningSession &running = runningSession();
    if (!window || running.window)
        return false;
    m_window = window;
    running = {window, window->windowModality()};
    // The modality of a window that is shown already takes effect only when it is shown again.
    window->hide();
    window->setWindowModality(Qt::ApplicationModal);
    window->show();
    return true;
}

void ModalSession::end() {
    if (!isRunning())
        return;
    const RunningSession ended = std::exchange(runningSession(), {});
    m_window = nullptr;
    ended.window->hide();
    ended.window->setWindowModality(ended.formerModality);
}

} // namespace platform
