// Sheets and modal sessions.
#include "platform/Guarded.h"
#include "platform/toolkit/Windows.h"

#include <QDialog>
#include <QGuiApplication>
#include <QWindow>
#include <utility>

namespace platform {

namespace {

// Knows which of the application's windows the user had before the active one.
//
// A window manager makes a window active some time after it was shown. When it has been hidden by then, the
// toolkit takes it for the active one all the same, while the desktop's keyboard has never left the window
// below: no key reaches either of them until the user activates one. So a hidden window passes the activation
// on.
class Activation : public QObject {
public:
    // Watches from the first call on.
    static Activation &ofApplication() {
        static QPointer<Activation> activation;
        if (!activation)
            activation = new Activation;
        return *activation;
    }
    // The last window that was active while it was shown; nullptr when there is none.
    [[nodiscard]] QWindow *lastShown() const { return m_lastShown; }
    // To be called when the window has been hidden: `below` gets the activation that it leaves behind. When
    // another program has it, nothing happens.
    static void passOn(const QWindow *hidden, QWindow *below) {
        if (hidden && QGuiApplication::focusWindow() == hidden && below && below->isVisible())
            takerOf(below)->requestActivate();
    }

private:
    // A window behind a modal one takes no keys.
    static QWindow *takerOf(QWindow *window) {
        QWindow *modal = QGuiApplication::modalWindow();
        const bool blocks = modal && modal->isVisible() &&
                            (modal->modality() == Qt::ApplicationModal ||
                             window->isAncestorOf(modal, QWindow::IncludeTransients));
        return blocks ? modal : window;
    }
    Activation()
        : QObject(qApp) {
        connect(qApp, &QGuiApplication::focusWindowChanged, this,
                [this](QWindow *window) { changed(window); });
        changed(QGuiApplication::focusWindow());
    }
    void changed(QWindow *window) {
        if (window && window->isVisible())
            m_lastShown = window;
        else
            passOn(window, m_lastShown);
    }

    QPointer<QWindow> m_lastShown;
};

// What is known of the one modal session that may run.
struct RunningSession {
    QPointer<QWidget> window;
    Qt::WindowModality formerModality = Qt::NonModal;
    QPointer<QWindow> below; // was active when it began
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
        , m_window(window)
        , m_ended(std::move(ended)) {
        Activation::ofApplication();
        connect(sheet, &QDialog::finished, this, [this](int result) { finish(result); });
        if (window)
            connect(window, &QObject::destroyed, this, [this, sheet] { abandon(sheet); });
    }

private:
    void finish(int result) {
        const std::function<void(int)> ended = std::exchange(m_ended, nullptr);
        disconnectAndDie();
        // Before the handler, which may open the next sheet.
        if (m_window)
            Activation::passOn(static_cast<QDialog *>(parent())->windowHandle(), m_window->windowHandle());
        if (ended)
            guarded("a sheet's handler", [&] { ended(result); });
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

    QPointer<QWidget> m_window;
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
    running = {window, window->windowModality(), Activation::ofApplication().lastShown()};
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
    Activation::passOn(ended.window->windowHandle(), ended.below);
}

} // namespace platform
