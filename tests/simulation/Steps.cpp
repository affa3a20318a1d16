// What each line of a script does: the steps of the user at the host's windows, of the meeting client, of
// other programs on its channel, and of the disk.
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/ui/controls/vlPopupButton.h"
#include "plugin/ui/toolbar/vlCommandItemMgr.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/meetingclient/People.h"
#include "tests/simulation/Desktop.h"

#include <QWindow>

namespace simulation {

namespace controls = mailhost::controls;
using scenarios::Scenario;

namespace {

using Names = QMap<QString, QString>;
constexpr int secondsPerMinute = 60;
constexpr int mostEditors = 4;
const QString oldVersion = u"3.6.40486"_s; // the newest one that is too old

// A line that is carried out.
struct Action {
    Desktop &desktop;
    QStringList words;
    Scenario &scenario = desktop.scenario();
    mailhost::MainWindow *calendar = scenario.host().mainWindowController()->mainWindow();
    Editor *editor = desktop.editorOf(words.value(1)); // nullptr for words that name no open one
    mailhost::EditorWindow *window = editor ? editor->window.data() : nullptr;

    [[nodiscard]] QString word(int index) const { return words.value(index); }
    [[nodiscard]] bool selects(const QString &appointment) const {
        return calendar->calendar()->select(desktop.uidOf(appointment));
    }
    // A control of the editor; nullptr when it cannot be used now.
    template<typename T>
    T *field(const QString &name) const {
        auto *field = window->findChild<T *>(name);
        return isReachable(field) && !field->property("readOnly").toBool() ? field : nullptr;
    }
    void asksFor(HostOperation operation, const mailhost::EditorWindow *in) const {
        desktop.step().pressed = {operation, in};
    }
};

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

bool click(QWidget *control) {
    const bool canBeDone = isReachable(control);
    if (canBeDone)
        QTest::mouseClick(control, Qt::LeftButton);
    return canBeDone;
}

bool trigger(QAction *action) {
    const bool canBeDone = action && action->isEnabled();
    if (canBeDone)
        action->trigger();
    return canBeDone;
}

// Before what is there, so that the user takes nothing out.
bool typeInFront(QWidget *field, Qt::KeyboardModifier ofHomeKey, const QString &word, QStringList &typed) {
    if (!field)
        return false;
    QTest::keyClick(field, Qt::Key_Home, ofHomeKey);
    QTest::keyClicks(field, word + u' ');
    typed.append(word);
    return true;
}

// On the calendar.

// An editor that is open already comes to the front, as by a second double click.
bool open(const Action &user) {
    const QString uid = user.desktop.uidOf(user.word(1));
    return !uid.isEmpty() && user.scenario.host().openEditorFor(uid);
}

// A plain appointment, or from the tool-bar with a video meeting or an audio conference.
bool openNew(const Action &user) {
    vlCommandItemMgr &toolBar = vlCommandItemMgr::sharedInstance();
    if (user.desktop.editors().size() >= mostEditors)
        return false;
    if (user.word(1) == u"video")
        toolBar.SendToolbarItemCommand(qint32(ToolbarCommand::ScheduleNewMeeting));
    else if (user.word(1) == u"audio")
        toolBar.SendToolbarItemCommand(qint32(ToolbarCommand::ScheduleNewPACMeeting),
                                       {{keyPACAccountNo, u"1"_s}});
    else
        user.scenario.host().openNewAppointment();
    return true;
}

// Something that is done to an appointment, or "undo" and "redo".
bool menu(const Action &user) {
    const QString &command = user.words[1];
    if (user.words.size() > 2 && !user.selects(user.word(2)))
        return false;
    return trigger(
        user.calendar->command(command == u"cancel" ? controls::cancelMeetingAction : command + u"Action"_s));
}

bool rename(const Action &user) {
    if (!user.selects(user.word(1)))
        return false;
    user.scenario.host().mainWindowController()->commands()->renameTo(user.word(2));
    return true;
}

// In an editor.

bool front(const Action &user) {
    user.window->activateWindow();
    user.window->viewController()->attachBodyEditor();
    return true;
}

bool strip(const Action &user) {
    static const Names keys{{u"add"_s, u"AddVelaButton"_s},
                            {u"remove"_s, u"CancelVelaButton"_s},
                            {u"settings"_s, u"ChangeSettingButton"_s}};
    const bool isDone = click(Scenario::stripButton(user.window, keys.value(user.word(2))));
    user.editor->hasRemovedMeeting |= isDone && user.word(2) == u"remove";
    return isDone;
}

bool audio(const Action &user) {
    vlActionAdditionView *strip = Scenario::stripOf(user.window);
    if (!strip || !isReachable(strip->findChild<vlPopupButton *>()))
        return false;
    user.word(2) == u"2" ? strip->onClickAddPACAccount2() : strip->onClickAddPACAccount1();
    return true;
}

bool subject(const Action &user) {
    auto *field = user.field<QLineEdit>(controls::subjectField);
    if (!field)
        return false;
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, user.word(2));
    return true;
}

bool place(const Action &user) {
    return typeInFront(user.field<QLineEdit>(controls::locationField), Qt::NoModifier, user.word(2),
                       user.editor->location);
}

bool body(const Action &user) {
    return typeInFront(user.field<QTextEdit>(controls::bodyEditor), Qt::ControlModifier, user.word(2),
                       user.editor->body);
}

bool later(const Action &user) {
    auto *field = user.field<QTimeEdit>(controls::startTimeField);
    if (field) // it cannot be used in a series with changed days
        field->setTime(field->time().addSecs(user.word(2).toInt() * secondsPerMinute));
    return field;
}

bool from(const Action &user) {
    auto *chooser = user.field<QComboBox>(controls::fromChooser);
    const int index = user.word(2).toInt();
    if (!chooser || index >= chooser->count() || index == chooser->currentIndex())
        return false;
    chooser->setCurrentIndex(index);
    return true;
}

bool save(const Action &user) {
    user.asksFor(HostOperation::Save, user.window);
    return trigger(user.window->findChild<QAction *>(controls::saveAction));
}

bool saveAndClose(const Action &user) {
    user.asksFor(HostOperation::SaveAndClose, user.window);
    return click(user.window->findChild<QPushButton *>(controls::saveAndCloseButton));
}

// What is missing in the message may be asked first; then that question's answer sends it.
bool send(const Action &user) {
    if (!click(user.window->findChild<QPushButton *>(controls::sendButton)))
        return false;
    if (!reachable<QPushButton>(controls::sendAnywayButton))
        user.asksFor(HostOperation::Send, user.window);
    return true;
}

bool close(const Action &user) {
    user.desktop.step().userCloses = true;
    user.window->close();
    return true;
}

// On the calendar it is "menu delete".
bool remove(const Action &user) {
    return click(user.window->findChild<QPushButton *>(controls::deleteButton));
}

// In dialogs.

// "ok", "cancel", "escape", or the name of one of its boxes.
bool sheet(const Action &user) {
    static const Names names{{u"ok"_s, u"buttonContinue"_s}, {u"cancel"_s, u"buttonCancel"_s}};
    auto *confirm = reachable<QPushButton>(u"buttonContinue"_s);
    if (!confirm || user.word(1) != u"escape")
        return confirm && click(reachable<QAbstractButton>(names.value(user.word(1), user.word(1))));
    QTest::keyClick(confirm->window(), Qt::Key_Escape);
    return true;
}

// Presses the button of that name in one of the host's questions.
bool question(const Action &user) {
    auto *button = reachable<QPushButton>(user.word(1));
    auto *box = button ? qobject_cast<QMessageBox *>(button->window()) : nullptr;
    if (!box)
        return false;
    const auto *editor = qobject_cast<mailhost::EditorWindow *>(box->parentWidget());
    if (user.word(1) == controls::saveChangesButton)
        user.asksFor(HostOperation::SaveAndClose, editor);
    else if (user.word(1) == controls::sendAnywayButton)
        user.asksFor(HostOperation::Send, editor);
    else
        user.desktop.step().userCloses = true;
    return click(button);
}

// Any message: "default" or "escape".
bool alert(const Action &user) {
    auto *box = reachable<QMessageBox>();
    if (isAlert(box) && user.word(1) == u"default" && box->defaultButton())
        return click(box->defaultButton());
    if (box)
        QTest::keyClick(box, Qt::Key_Escape);
    return box;
}

// Without the user.

bool wait(const Action &nobody) {
    nobody.scenario.wait(nobody.word(1).toDouble());
    return true;
}

bool rule(const Action &client) {
    client.scenario.given(client.words.mid(1).join(u' '));
    return true;
}

// "runs", "quits" (with all that it has not answered yet), "restarts", "uninstalled", "installed", "old".
bool client(const Action &client) {
    const QString &state = client.words[1];
    if (state == u"uninstalled")
        client.scenario.clientIsUninstalled();
    else if (state == u"installed")
        client.scenario.clientIsInstalled();
    else if (state == u"old")
        client.scenario.clientIsInstalled(oldVersion);
    else
        client.scenario.clientQuits();
    if (state != u"uninstalled" && state != u"quits")
        client.scenario.clientRuns();
    return true;
}

bool signedInOrOut(const Action &client) {
    client.scenario.client().setSignedIn(client.word(1) == u"in");
    return true;
}

// The meeting was deleted somewhere else.
bool forget(const Action &client) {
    return client.scenario.client().removeMeeting(client.desktop.keyInFile(client.word(1)));
}

// As in the client's own window: another user, other accounts, others who grant something.
bool order(const Action &client) {
    QString error;
    return meetingclient::obey(client.scenario.client(), client.words.mid(1).join(u' '), &error);
}

bool post(const Action &other, const QString &action, const QString &content) {
    other.scenario.desktop().bus->post(kIPCNotifyVelaClientToOutlookPlugin, QString(),
                                       {{VL_IPC_ACTION_ID, action}, {VL_IPC_CONTENT, content}}, true);
    return true;
}

// Sends this text as an answer without a request.
bool forge(const Action &other) {
    return post(other, other.word(1), other.words.mid(2).join(u' '));
}

// Sends the client's real answer about an appointment's meeting without a request.
bool forgeMeeting(const Action &other) {
    const QString request = u"4;"_s + other.desktop.keyInFile(other.word(1));
    return post(other, u"4"_s, meetingclient::carryOut(other.scenario.client(), 3, request)->content);
}

// "full" or "free", from the next step on.
bool disk(const Action &disk) {
    disk.desktop.setDiskFull(disk.word(1) == u"full");
    return true;
}

// What the user must be able to use.
enum class Needs { Nothing, Calendar, Editor };

struct Command {
    const char *word;
    int arguments; // at least
    Needs needs;
    bool (*run)(const Action &action);
};

const Command commands[] = {
    {"open", 1, Needs::Calendar, open},        {"new", 1, Needs::Calendar, openNew},
    {"menu", 1, Needs::Calendar, menu},        {"rename", 2, Needs::Calendar, rename},
    {"front", 1, Needs::Editor, front},        {"strip", 2, Needs::Editor, strip},
    {"audio", 2, Needs::Editor, audio},        {"subject", 1, Needs::Editor, subject},
    {"place", 2, Needs::Editor, place},        {"body", 2, Needs::Editor, body},
    {"later", 2, Needs::Editor, later},        {"from", 2, Needs::Editor, from},
    {"save", 1, Needs::Editor, save},          {"saveclose", 1, Needs::Editor, saveAndClose},
    {"send", 1, Needs::Editor, send},          {"close", 1, Needs::Editor, close},
    {"delete", 1, Needs::Editor, remove},      {"sheet", 1, Needs::Nothing, sheet},
    {"question", 1, Needs::Nothing, question}, {"alert", 1, Needs::Nothing, alert},
    {"wait", 1, Needs::Nothing, wait},         {"rule", 1, Needs::Nothing, rule},
    {"client", 1, Needs::Nothing, client},     {"signed", 1, Needs::Nothing, signedInOrOut},
    {"forget", 1, Needs::Nothing, forget},     {"order", 2, Needs::Nothing, order},
    {"forge", 1, Needs::Nothing, forge},       {"forge-meeting", 1, Needs::Nothing, forgeMeeting},
    {"disk", 1, Needs::Nothing, disk}};

} // namespace

bool carryOut(Desktop &desktop, const QString &line) {
    const Action action{desktop, line.split(u' ', Qt::SkipEmptyParts)};
    const auto command = std::ranges::find_if(commands, [&action](const Command &one) {
        return action.word(0) == QLatin1String(one.word) && action.words.size() > one.arguments;
    });
    if (command == std::end(commands) ||
        (command->needs == Needs::Calendar && !isReachable(action.calendar)) ||
        (command->needs == Needs::Editor && !isReachable(action.window)))
        return false;
    return command->run(action);
}

} // namespace simulation
