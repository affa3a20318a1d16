// What the user does at the host's windows.
#include "plugin/ui/controls/vlPopupButton.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/toolbar/vlCommandItemMgr.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/simulation/Desktop.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <QTimeEdit>
#include <QWindow>

namespace simulation {

namespace controls = mailhost::controls;
using scenarios::Scenario;

namespace {

using Words = QStringList;
constexpr int secondsPerMinute = 60;
constexpr int mostEditors = 4;

// The first one that can be reached and has that name, if one is given. It is the one in the window that was
// opened first: the toolkit's own list of widgets is in another order on every run.
template<typename T>
T *reachable(const QString &objectName = {}) {
    for (QWindow *window : QGuiApplication::topLevelWindows())
        for (QWidget *widget : QApplication::allWidgets())
            if (auto *found = qobject_cast<T *>(widget); found && found->window()->windowHandle() == window)
                if ((objectName.isEmpty() || found->objectName() == objectName) && isReachable(found))
                    return found;
    return nullptr;
}

// A control of that appointment's editor; nullptr when it cannot be used now.
template<typename T>
T *fieldOf(Desktop &desktop, const QString &appointment, const QString &name) {
    const Editor *editor = desktop.editorOf(appointment);
    auto *field = editor ? editor->window->findChild<T *>(name) : nullptr;
    return isReachable(field) ? field : nullptr;
}

bool click(QWidget *control) {
    if (!isReachable(control))
        return false;
    QTest::mouseClick(control, Qt::LeftButton);
    return true;
}

// The main window, when the user can get at it.
mailhost::MainWindow *calendarOf(Desktop &desktop) {
    mailhost::MainWindow *main = desktop.scenario().host().mainWindowController()->mainWindow();
    return isReachable(main) ? main : nullptr;
}

void press(Desktop &desktop, HostOperation operation, const mailhost::EditorWindow *editor) {
    desktop.step().pressed = operation;
    desktop.step().pressedIn = editor;
}

// An editor that is open already comes to the front, as by a second double click.
bool open(Desktop &desktop, const Words &words) {
    const QString uid = desktop.uidOf(words[0]);
    return !uid.isEmpty() && calendarOf(desktop) && desktop.scenario().host().openEditorFor(uid);
}

// A plain appointment, or from the tool-bar with a video meeting or an audio conference.
bool openNew(Desktop &desktop, const Words &words) {
    if (!calendarOf(desktop) || desktop.editors().size() >= mostEditors)
        return false;
    vlCommandItemMgr &toolBar = vlCommandItemMgr::sharedInstance();
    if (words[0] == u"video")
        toolBar.SendToolbarItemCommand(qint32(ToolbarCommand::ScheduleNewMeeting));
    else if (words[0] == u"audio")
        toolBar.SendToolbarItemCommand(qint32(ToolbarCommand::ScheduleNewPACMeeting),
                                       {{keyPACAccountNo, u"1"_s}});
    else
        desktop.scenario().host().openNewAppointment();
    return true;
}

bool front(Desktop &desktop, const Words &words) {
    const Editor *editor = desktop.editorOf(words[0]);
    if (!editor || !isReachable(editor->window))
        return false;
    editor->window->activateWindow();
    editor->window->viewController()->attachBodyEditor();
    return true;
}

bool strip(Desktop &desktop, const Words &words) {
    static const QMap<QString, QString> keys{{u"add"_s, u"AddVelaButton"_s},
                                             {u"remove"_s, u"CancelVelaButton"_s},
                                             {u"settings"_s, u"ChangeSettingButton"_s}};
    Editor *editor = desktop.editorOf(words[0]);
    if (!editor || !click(Scenario::stripButton(editor->window, keys.value(words[1]))))
        return false;
    editor->hasRemovedMeeting |= words[1] == u"remove";
    return true;
}

bool audio(Desktop &desktop, const Words &words) {
    const Editor *editor = desktop.editorOf(words[0]);
    vlActionAdditionView *strip = editor ? Scenario::stripOf(editor->window) : nullptr;
    if (!strip || !isReachable(strip->findChild<vlPopupButton *>()))
        return false;
    words[1] == u"2" ? strip->onClickAddPACAccount2() : strip->onClickAddPACAccount1();
    return true;
}

// "ok", "cancel", "escape", or the name of one of its boxes.
bool sheet(Desktop &, const Words &words) {
    static const QMap<QString, QString> names{{u"ok"_s, u"buttonContinue"_s},
                                              {u"cancel"_s, u"buttonCancel"_s}};
    auto *confirm = reachable<QPushButton>(u"buttonContinue"_s);
    if (words[0] != u"escape" || !confirm)
        return confirm && click(reachable<QAbstractButton>(names.value(words[0], words[0])));
    QTest::keyClick(confirm->window(), Qt::Key_Escape);
    return true;
}

bool subject(Desktop &desktop, const Words &words) {
    auto *field = fieldOf<QLineEdit>(desktop, words[0], controls::subjectField);
    if (!field || field->isReadOnly())
        return false;
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, words.value(1));
    return true;
}

// Before what is there, so that the user takes nothing out.
bool place(Desktop &desktop, const Words &words) {
    auto *field = fieldOf<QLineEdit>(desktop, words[0], controls::locationField);
    if (!field || field->isReadOnly())
        return false;
    field->home(false);
    QTest::keyClicks(field, words[1] + u' ');
    desktop.editorOf(words[0])->location.append(words[1]);
    return true;
}

bool body(Desktop &desktop, const Words &words) {
    auto *field = fieldOf<QTextEdit>(desktop, words[0], controls::bodyEditor);
    if (!field || field->isReadOnly())
        return false;
    field->moveCursor(QTextCursor::Start);
    QTest::keyClicks(field, words[1] + u' ');
    desktop.editorOf(words[0])->body.append(words[1]);
    return true;
}

bool later(Desktop &desktop, const Words &words) {
    auto *field = fieldOf<QTimeEdit>(desktop, words[0], controls::startTimeField);
    if (!field || !field->isEnabled()) // of a series with changed days
        return false;
    field->setTime(field->time().addSecs(words[1].toInt() * secondsPerMinute));
    return true;
}

bool from(Desktop &desktop, const Words &words) {
    auto *chooser = fieldOf<QComboBox>(desktop, words[0], controls::fromChooser);
    const int index = words[1].toInt();
    if (!chooser || index >= chooser->count() || index == chooser->currentIndex())
        return false;
    chooser->setCurrentIndex(index);
    return true;
}

bool save(Desktop &desktop, const Words &words) {
    const Editor *editor = desktop.editorOf(words[0]);
    auto *action = editor ? editor->window->findChild<QAction *>(controls::saveAction) : nullptr;
    if (!action || !isReachable(editor->window) || !action->isEnabled())
        return false;
    press(desktop, HostOperation::Save, editor->window);
    action->trigger();
    return true;
}

bool saveAndClose(Desktop &desktop, const Words &words) {
    auto *button = fieldOf<QPushButton>(desktop, words[0], controls::saveAndCloseButton);
    if (button)
        press(desktop, HostOperation::SaveAndClose, desktop.editorOf(words[0])->window);
    return click(button);
}

// What is missing in the message may be asked first; then that question's answer sends it.
bool send(Desktop &desktop, const Words &words) {
    auto *button = fieldOf<QPushButton>(desktop, words[0], controls::sendButton);
    if (!button)
        return false;
    const mailhost::EditorWindow *editor = desktop.editorOf(words[0])->window;
    QTest::mouseClick(button, Qt::LeftButton);
    if (!reachable<QPushButton>(controls::sendAnywayButton))
        press(desktop, HostOperation::Send, editor);
    return true;
}

bool close(Desktop &desktop, const Words &words) {
    const Editor *editor = desktop.editorOf(words[0]);
    if (!editor || !isReachable(editor->window))
        return false;
    desktop.step().userCloses = true;
    editor->window->close();
    return true;
}

// In the editor; on the calendar it is "menu delete".
bool remove(Desktop &desktop, const Words &words) {
    return click(fieldOf<QPushButton>(desktop, words[0], controls::deleteButton));
}

// Presses the button of that name in one of the host's questions.
bool question(Desktop &desktop, const Words &words) {
    auto *button = reachable<QPushButton>(words[0]);
    auto *box = button ? qobject_cast<QMessageBox *>(button->window()) : nullptr;
    if (!box)
        return false;
    const auto *editor = qobject_cast<mailhost::EditorWindow *>(box->parentWidget());
    if (words[0] == controls::saveChangesButton)
        press(desktop, HostOperation::SaveAndClose, editor);
    else if (words[0] == controls::sendAnywayButton)
        press(desktop, HostOperation::Send, editor);
    else
        desktop.step().userCloses = true;
    QTest::mouseClick(button, Qt::LeftButton);
    return true;
}

// Any message: "default" or "escape".
bool alert(Desktop &, const Words &words) {
    auto *box = reachable<QMessageBox>();
    if (box && words[0] == u"default" && box->defaultButton() && box->objectName().isEmpty())
        QTest::mouseClick(box->defaultButton(), Qt::LeftButton);
    else if (box)
        QTest::keyClick(box, Qt::Key_Escape);
    return box;
}

// On the calendar: something that is done to an appointment, or "undo" and "redo".
bool menu(Desktop &desktop, const Words &words) {
    static const QMap<QString, QString> names{
        {u"later"_s, controls::laterAction},   {u"earlier"_s, controls::earlierAction},
        {u"longer"_s, controls::longerAction}, {u"shorter"_s, controls::shorterAction},
        {u"delete"_s, controls::deleteAction}, {u"cancel"_s, controls::cancelMeetingAction},
        {u"undo"_s, controls::undoAction},     {u"redo"_s, controls::redoAction}};
    mailhost::MainWindow *main = calendarOf(desktop);
    if (!main || (words.size() > 1 && !main->calendar()->select(desktop.uidOf(words[1]))))
        return false;
    QAction *action = main->command(names.value(words[0]));
    const bool canBeDone = action && action->isEnabled();
    if (canBeDone)
        action->trigger();
    return canBeDone;
}

bool rename(Desktop &desktop, const Words &words) {
    mailhost::MainWindow *main = calendarOf(desktop);
    if (!main || !main->calendar()->select(desktop.uidOf(words[0])))
        return false;
    desktop.scenario().host().mainWindowController()->commands()->renameTo(words[1]);
    return true;
}

bool wait(Desktop &desktop, const Words &words) {
    desktop.scenario().wait(words[0].toDouble());
    return true;
}

} // namespace

QList<Command> usersCommands() {
    return {{"open", 1, open},
            {"new", 1, openNew},
            {"front", 1, front},
            {"strip", 2, strip},
            {"audio", 2, audio},
            {"sheet", 1, sheet},
            {"subject", 1, subject},
            {"place", 2, place},
            {"body", 2, body},
            {"later", 2, later},
            {"from", 2, from},
            {"save", 1, save},
            {"saveclose", 1, saveAndClose},
            {"send", 1, send},
            {"close", 1, close},
            {"delete", 1, remove},
            {"question", 1, question},
            {"alert", 1, alert},
            {"rename", 2, rename},
            {"menu", 1, menu},
            {"wait", 1, wait}};
}

} // namespace simulation
