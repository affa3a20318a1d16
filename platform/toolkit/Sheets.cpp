// Sheets and modal sessions.
#include "platform/Guarded.h"
#include "platform/toolkit/Windows.h"

#include <QDialog>
#include <QGuiApplication>
#include <QWindow>
#include <utility>

namespace platform {

namespace {

// Remembers which of the application's windows was active before the present one.
//
// A window manager activates a window some time after it was shown. If the window is hidden by then, the
// toolkit still treats it as active, while the desktop's keyboard focus has never left the window below:
// neither of them gets keys until the user activates one. So a hidden window passes the activation on.
class Activation : public QObject {
public:
    // Watches from the first call on.
    static Activation &ofApplication() {
        static QPointer<Activation> activation;
        if (!activation)
            activation = new Activation;
        return *activation;
    }
    // The last window that was active while it was shown; nullptr if there is none.
    [[nodiscard]] QWindow *lastShown() const { return m_lastShown; }
    // Call it after the window was hidden: activates `below`. Does nothing if another program is active.
    static void passOn(const QWindow *hidden, QWindow *below) {
        if (hidden && QGuiApplication::focusWindow() == hidden && below && below->isVisible())
            takerOf(below)->requestActivate();
    }

private:
    // A window behind a modal window gets no keys.
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

// The running modal session; at most one exists.
struct RunningSession {
    QPointer<QWidget> window;
    Qt::WindowModality formerModality = Qt::NonModal;
    QPointer<QWindow> below; // the active window at its beginning
};

RunningSession &runningSession() {
    static auto *session = new RunningSession;
    return *session;
}

// Attaches the sheet to its window without making it a child: the window would delete a child, but the caller
// owns the sheet.
void attach(QDialog *sheet, QWidget *window) {
    window->winId();
    sheet->winId();
    if (sheet->windowHandle() && window->windowHandle())
        sheet->windowHandle()->setTransientParent(window->windowHandle());
}

class SheetWatch : public QObject {
public:
    // Exists until the sheet ends or until the sheet or its parent is deleted.
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
        // Done before the handler, which may open the next sheet.
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
    // Set before the native window exists. Otherwise the window of a message box stays modal for the whole
    // application, although windowModality() says WindowModal.
    sheet->setWindowModality(Qt::WindowModal);
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
    // A change of the modality of a visible window takes effect only when it is shown again.
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
