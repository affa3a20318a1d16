// The window of one appointment editor and its controller.
#pragma once

#include "standin/mailhost/windows/MessageBoxes.h"
#include "standin/mailhost/windows/editor/EditorViewController.h"

#include <QMainWindow>

class QAction;
class QLabel;
class QPushButton;

namespace mailhost {

class EditorWindowController;

class EditorWindow : public QMainWindow {
    Q_OBJECT
public:
    EditorWindow(EditorWindowController *controller, std::unique_ptr<CalendarEvent> event);

    [[nodiscard]] EditorViewController *viewController() const { return m_controller.get(); }
    // Closes without asking.
    void closeNow();
    void closeLater(); // the caller may still be running in this window

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void build(const CalendarSession &session);
    QWidget *buildToolBar();
    void buildMenu();
    void connectController();
    void showState(); // title, buttons, notice
    void openSeries();
    // `answered` is not called if the user continues to edit.
    void askToSave(const QString &question, const std::function<void(bool save)> &answered);
    void deleteAppointment();
    QPushButton *addButton(const QString &name, const QString &text, const std::function<void()> &operation);
    void ask(const QString &text, const QString &detail, const QList<MessageChoice> &choices);
    void showOnly(QMessageBox *message);

    EditorWindowController *m_windowController;
    EditorForm *m_form = nullptr;
    BodyEdit *m_body = nullptr;
    QWidget *m_toolBar = nullptr;
    QLabel *m_notice = nullptr;
    QPushButton *m_send = nullptr;
    QPushButton *m_saveAndClose = nullptr;
    QPushButton *m_delete = nullptr;
    QPushButton *m_repeat = nullptr;
    QPushButton *m_timeZone = nullptr;
    QPushButton *m_openSeries = nullptr;
    QAction *m_save = nullptr;
    QAction *m_join = nullptr;
    QPointer<QMessageBox> m_message;
    std::unique_ptr<rt::Object> m_seriesResponder;
    std::unique_ptr<EditorViewController> m_controller;
    bool m_closed = false;
};

// Exists until its window has closed.
class EditorWindowController : public QObject, public rt::Object {
    Q_OBJECT
public:
    // Takes ownership of the event and shows the window. If the appointment is already open, shows its window
    // instead.
    static EditorWindowController *showFor(rt::Object *event, bool cancelMode);
    // The open editors, in order of opening.
    static QList<EditorWindowController *> open();
    ~EditorWindowController() override;

    [[nodiscard]] rt::Object *editorViewController() const {
        return m_window ? m_window->viewController() : nullptr;
    }
    [[nodiscard]] QWidget *window() const { return m_window; }
    [[nodiscard]] EditorWindow *editorWindow() const { return m_window; }
    void close() {
        if (m_window)
            m_window->closeNow();
    }

private:
    explicit EditorWindowController(std::unique_ptr<CalendarEvent> event);
    friend class EditorWindow;
    void windowClosed();

    QPointer<EditorWindow> m_window;
    std::vector<std::unique_ptr<CalendarEvent>> m_otherEvents; // given for the same appointment
};

void defineEditorWindowClasses();
[[nodiscard]] rt::Class *editorWindowClass();
// Opens the editor as the user does, through the class's own methods. Returns its controller, or nullptr.
rt::Object *showEditorFor(std::unique_ptr<CalendarEvent> event);

} // namespace mailhost
