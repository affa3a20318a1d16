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
#include <functional>

namespace simulation {

namespace controls = mailhost::controls;

namespace {

constexpr int secondsPerMinute = 60;

// The one in the window that was opened first: the toolkit's own list of widgets is in another order on every
// run.
template<typename T>
T *reachable(const std::function<bool(const T *)> &matches) {
    const QWindowList windows = QGuiApplication::topLevelWindows();
    T *first = nullptr;
    qsizetype place = windows.size();
    for (QWidget *widget : QApplication::allWidgets()) {
        auto *found = qobject_cast<T *>(widget);
        if (!found || !matches(found) || !isReachable(found))
            continue;
        const qsizetype at = windows.indexOf(found->window()->windowHandle());
        if (at < 0 || at >= place)
            continue;
        first = found;
        place = at;
    }
    return first;
}

QPushButton *reachableButton(const QString &objectName) {
    return reachable<QPushButton>(
        [&objectName](const QPushButton *button) { return button->objectName() == objectName; });
}

template<typename T>
T *fieldOf(mailhost::EditorWindow *editor, const QString &name) {
    auto *field = editor ? editor->findChild<T *>(name) : nullptr;
    return isReachable(field) ? field : nullptr;
}

} // namespace

QList<Desktop::Verb> Desktop::usersVerbs() {
    return {{"open", 1, &Desktop::open},
            {"new", 1, &Desktop::openNew},
            {"front", 1, &Desktop::front},
            {"strip", 2, &Desktop::clickStrip},
            {"audio", 2, &Desktop::audio},
            {"sheet", 1, &Desktop::sheet},
            {"subject", 1, &Desktop::subject},
            {"place", 2, &Desktop::place},
            {"body", 2, &Desktop::writeBody},
            {"later", 2, &Desktop::later},
            {"from", 2, &Desktop::from},
            {"save", 1, &Desktop::save},
            {"saveclose", 1, &Desktop::saveAndClose},
            {"send", 1, &Desktop::send},
            {"close", 1, &Desktop::close},
            {"delete", 1, &Desktop::remove},
            {"question", 1, &Desktop::answerQuestion},
            {"alert", 1, &Desktop::alert},
            {"move", 2, &Desktop::move},
            {"resize", 2, &Desktop::resize},
            {"rename", 2, &Desktop::rename},
            {"menu", 1, &Desktop::menu},
            {"start", 1, &Desktop::start},
            {"wait", 1, &Desktop::wait}};
}

// An editor that is open already comes to the front, as by a second double click.
bool Desktop::open(const Words &words) {
    const QString uid = uidOf(words[0]);
    if (uid.isEmpty() || !isReachable(mainWindow()))
        return false;
    return m_scenario.host().openEditorFor(uid) != nullptr;
}

// A plain appointment, or from the tool-bar with a video meeting or an audio conference.
bool Desktop::openNew(const Words &words) {
    if (!isReachable(mainWindow()) || m_editors.size() >= 4)
        return false;
    vlCommandItemMgr &toolBar = vlCommandItemMgr::sharedInstance();
    if (words[0] == u"video")
        toolBar.SendToolbarItemCommand(qint32(ToolbarCommand::ScheduleNewMeeting));
    else if (words[0] == u"audio")
        toolBar.SendToolbarItemCommand(qint32(ToolbarCommand::ScheduleNewPACMeeting),
                                       {{keyPACAccountNo, u"1"_s}});
    else
        m_scenario.host().openNewAppointment();
    return true;
}

bool Desktop::front(const Words &words) {
    mailhost::EditorWindow *editor = editorOf(words[0]);
    if (!isReachable(editor))
        return false;
    editor->activateWindow();
    editor->viewController()->attachBodyEditor();
    return true;
}

QString stripTitle(const QString &key) {
    QString title = scenarios::Scenario::text(key);
    return title.remove(u'&');
}

bool Desktop::clickIn(mailhost::EditorWindow *editor, const QString &title) {
    const vlActionAdditionView *strip = scenarios::Scenario::stripOf(editor);
    if (!strip)
        return false;
    for (auto *button : strip->findChildren<QAbstractButton *>()) {
        if (button->accessibleName() != title || !isReachable(button))
            continue;
        QTest::mouseClick(button, Qt::LeftButton);
        return true;
    }
    return false;
}

bool Desktop::clickStrip(const Words &words) {
    static const QMap<QString, QString> keys{{u"add"_s, u"AddVelaButton"_s},
                                             {u"remove"_s, u"CancelVelaButton"_s},
                                             {u"settings"_s, u"ChangeSettingButton"_s}};
    if (!clickIn(editorOf(words[0]), stripTitle(keys.value(words[1]))))
        return false;
    if (words[1] == u"add")
        m_wanted.insert(words[0]);
    return true;
}

bool Desktop::audio(const Words &words) {
    vlActionAdditionView *strip = scenarios::Scenario::stripOf(editorOf(words[0]));
    const auto *button = strip ? strip->findChild<vlPopupButton *>() : nullptr;
    if (!isReachable(button))
        return false;
    m_wanted.insert(words[0]);
    words[1] == u"2" ? strip->onClickAddPACAccount2() : strip->onClickAddPACAccount1();
    return true;
}

// "ok", "cancel", "escape", or the name of one of its boxes.
bool Desktop::sheet(const Words &words) {
    const QString name = words[0] == u"ok"       ? u"buttonContinue"_s
                         : words[0] == u"cancel" ? u"buttonCancel"_s
                                                 : words[0];
    QPushButton *confirm = reachableButton(u"buttonContinue"_s);
    if (!confirm && words[0] != u"cancel")
        return false;
    if (words[0] == u"escape") {
        QTest::keyClick(confirm->window(), Qt::Key_Escape);
        return true;
    }
    auto *button = reachable<QAbstractButton>(
        [&name](const QAbstractButton *candidate) { return candidate->objectName() == name; });
    if (!button)
        return false;
    QTest::mouseClick(button, Qt::LeftButton);
    return true;
}

// To the window, as the desktop does it: one that is blocked although no dialog is shown gets nothing.
void Desktop::type(QWidget *field, const QString &keys) {
    if (QApplication::activeModalWidget())
        return QTest::keyClicks(field, keys);
    field->setFocus();
    for (const QChar key : keys)
        QTest::keyClick(field->window()->windowHandle(), key.toLatin1());
}

bool Desktop::subject(const Words &words) {
    auto *field = fieldOf<QLineEdit>(editorOf(words[0]), controls::subjectField);
    if (!field || field->isReadOnly())
        return false;
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    type(field, words.value(1));
    m_last.keysLost = field->text() != words.value(1);
    return true;
}

// Before what is there, so that the user takes nothing out.
bool Desktop::place(const Words &words) {
    auto *field = fieldOf<QLineEdit>(editorOf(words[0]), controls::locationField);
    if (!field || field->isReadOnly())
        return false;
    field->home(false);
    type(field, words[1] + u' ');
    m_last.keysLost = !field->text().startsWith(words[1]);
    entryOf(words[0])->place.append(words[1]);
    return true;
}

bool Desktop::writeBody(const Words &words) {
    auto *body = fieldOf<QTextEdit>(editorOf(words[0]), controls::bodyEditor);
    if (!body || body->isReadOnly())
        return false;
    body->moveCursor(QTextCursor::Start);
    type(body, words[1] + u' ');
    m_last.keysLost = !body->toPlainText().startsWith(words[1]);
    entryOf(words[0])->body.append(words[1]);
    return true;
}

bool Desktop::later(const Words &words) {
    auto *field = fieldOf<QTimeEdit>(editorOf(words[0]), controls::startTimeField);
    if (!field || field->isReadOnly())
        return false;
    field->setTime(field->time().addSecs(words[1].toInt() * secondsPerMinute));
    return true;
}

bool Desktop::from(const Words &words) {
    auto *chooser = fieldOf<QComboBox>(editorOf(words[0]), controls::fromChooser);
    const int index = words[1].toInt();
    if (!chooser || index >= chooser->count() || index == chooser->currentIndex())
        return false;
    chooser->setCurrentIndex(index);
    return true;
}

bool Desktop::save(const Words &words) {
    mailhost::EditorWindow *editor = editorOf(words[0]);
    auto *action = editor ? editor->findChild<QAction *>(controls::saveAction) : nullptr;
    if (!isReachable(editor) || !action->isEnabled())
        return false;
    press(HostOperation::Save, editor);
    action->trigger();
    return true;
}

bool Desktop::pressIn(const QString &appointment, const QString &name) {
    auto *button = fieldOf<QPushButton>(editorOf(appointment), name);
    if (button)
        QTest::mouseClick(button, Qt::LeftButton);
    return button != nullptr;
}

bool Desktop::saveAndClose(const Words &words) {
    mailhost::EditorWindow *editor = editorOf(words[0]);
    press(HostOperation::SaveAndClose, editor);
    return pressIn(words[0], controls::saveAndCloseButton);
}

bool Desktop::send(const Words &words) {
    mailhost::EditorWindow *editor = editorOf(words[0]);
    if (!pressIn(words[0], controls::sendButton))
        return false;
    if (!reachableButton(controls::sendAnywayButton)) // else it is asked for there
        press(HostOperation::Send, editor);
    return true;
}

bool Desktop::close(const Words &words) {
    mailhost::EditorWindow *editor = editorOf(words[0]);
    if (!isReachable(editor))
        return false;
    m_last.userCloses = true;
    editor->close();
    return true;
}

// In the editor; on the calendar it is "menu delete".
bool Desktop::remove(const Words &words) {
    return pressIn(words[0], controls::deleteButton);
}

// Presses the button of that name in one of the host's questions.
bool Desktop::answerQuestion(const Words &words) {
    QPushButton *button = reachableButton(words[0]);
    auto *box = button ? qobject_cast<QMessageBox *>(button->window()) : nullptr;
    if (!box)
        return false;
    auto *editor = qobject_cast<mailhost::EditorWindow *>(box->parentWidget());
    m_last.userCloses = words[0] != controls::sendAnywayButton && words[0] != controls::saveChangesButton;
    if (words[0] == controls::saveChangesButton)
        press(HostOperation::SaveAndClose, editor);
    if (words[0] == controls::sendAnywayButton)
        press(HostOperation::Send, editor);
    QTest::mouseClick(button, Qt::LeftButton);
    return true;
}

// Any message: "default" or "escape".
bool Desktop::alert(const Words &words) {
    auto *box = reachable<QMessageBox>([](const QMessageBox *) { return true; });
    if (!box)
        return false;
    if (words[0] == u"default" && box->defaultButton() && box->objectName().isEmpty())
        QTest::mouseClick(box->defaultButton(), Qt::LeftButton);
    else
        QTest::keyClick(box, Qt::Key_Escape);
    return true;
}

bool Desktop::selectOnGrid(const QString &appointment) {
    const QString uid = uidOf(appointment);
    return !uid.isEmpty() && isReachable(mainWindow()) && mainWindow()->calendar()->select(uid);
}

bool Desktop::move(const Words &words) {
    if (!selectOnGrid(words[0]))
        return false;
    m_scenario.host().mainWindowController()->commands()->moveBy(words[1].toInt() * secondsPerMinute);
    return true;
}

bool Desktop::resize(const Words &words) {
    if (!selectOnGrid(words[0]))
        return false;
    m_scenario.host().mainWindowController()->commands()->moveEndBy(words[1].toInt() * secondsPerMinute);
    return true;
}

bool Desktop::rename(const Words &words) {
    if (!selectOnGrid(words[0]))
        return false;
    m_scenario.host().mainWindowController()->commands()->renameTo(words[1]);
    return true;
}

// "delete" and "cancel" of an appointment, "undo", "redo".
bool Desktop::menu(const Words &words) {
    static const QMap<QString, QString> names{{u"delete"_s, controls::deleteAction},
                                              {u"cancel"_s, controls::cancelMeetingAction},
                                              {u"undo"_s, controls::undoAction},
                                              {u"redo"_s, controls::redoAction}};
    if (!isReachable(mainWindow()) || (words.size() > 1 && !selectOnGrid(words[1])))
        return false;
    QAction *action = mainWindow()->command(names.value(words[0]));
    if (!action || !action->isEnabled())
        return false;
    action->trigger();
    return true;
}

bool Desktop::start(const Words &words) {
    if (!isReachable(mainWindow()))
        return false;
    vlCommandItemMgr::sharedInstance().SendToolbarItemCommand(
        qint32(ToolbarCommand::StartInstantMeeting),
        {{keyStartWithVideo, words[0] == u"video" ? u"1"_s : u"0"_s}});
    return true;
}

bool Desktop::wait(const Words &words) {
    m_scenario.wait(words[0].toDouble());
    return true;
}

} // namespace simulation
