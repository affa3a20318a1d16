// The plug-in's items in the main window's tool-bar: the two that are there by themselves, and the two that
// the person puts there.
#include "platform/services/Services.h"
#include "platform/toolkit/ToolbarCustomization.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Parts.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QListWidget>
#include <QMenu>
#include <QTest>
#include <QUrl>

namespace walkthrough {

namespace controls = mailhost::controls;
namespace customization = platform::customization;

namespace {

const QString startItem = u"VLStartToolbarItem"_s;
const QString scheduleItem = u"VLScheduleToolbarItem"_s;
const QString audioItem = u"VLSchedulePACToolbarItem"_s;
const QString logFolderItem = u"VLOpenLogFolder"_s;

// Stands for the desktop's file browser.
class FileBrowser : public QObject {
    Q_OBJECT
public:
    FileBrowser() { QDesktopServices::setUrlHandler(u"file"_s, this, "open"); }
    ~FileBrowser() override { QDesktopServices::unsetUrlHandler(u"file"_s); }
    [[nodiscard]] const QUrl &opened() const { return m_opened; }
public Q_SLOTS:
    void open(const QUrl &url) { m_opened = url; }

private:
    QUrl m_opened;
};

class ToolBarWalk {
public:
    explicit ToolBarWalk(Session &session)
        : m_session(session)
        , m_report(session.report()) {}
    bool report() {
        return isThere() && schedule() && startInstantMeetings() && putTheOthersThere() && scheduleAudio() &&
               openLogFolder();
    }

private:
    bool isThere();
    bool schedule();
    bool startInstantMeetings();
    bool putTheOthersThere();
    bool scheduleAudio();
    bool openLogFolder();
    // Presses the item's control and chooses from the menu that opens.
    bool choose(const QString &item, int choice);
    // A new editor in which the settings sheet has opened by itself; it is closed again.
    bool editorAsksByItself(const QString &picture);

    Session &m_session;
    Report &m_report;
};

bool ToolBarWalk::isThere() {
    const QWidget *schedule = shown(scheduleItem);
    const QWidget *start = shown(startItem);
    const bool inOrder =
        schedule && start && schedule->mapToGlobal(QPoint()).x() < start->mapToGlobal(QPoint()).x();
    m_report.picture(m_session.mainWindow(), u"tool-bar"_s);
    return m_report.step(inOrder && !shown(audioItem) && !shown(logFolderItem),
                         u"the window opened last has the plug-in's two items, in their order"_s);
}

bool ToolBarWalk::editorAsksByItself(const QString &picture) {
    const bool asked =
        Report::waitFor([this] { return m_session.editor() && shownButton(continueButton()); });
    m_report.picture(m_session.editor(), picture);
    press(QApplication::activeModalWidget(), Qt::Key_Escape);
    Report::waitFor([] { return !shownButton(continueButton()); });
    return m_session.discardEditor() && asked;
}

bool ToolBarWalk::schedule() {
    click(shown(scheduleItem));
    return m_report.step(editorAsksByItself(u"tool-bar-schedule"_s),
                         u"\"Schedule meeting\" opens a new editor that adds the meeting by itself"_s);
}

bool ToolBarWalk::choose(const QString &item, int choice) {
    if (!click(shown(item)))
        return false;
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!Report::waitFor([&] { return (menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())); }))
        return false;
    m_report.picture(menu, item + u"-menu"_s);
    const QList<QAction *> choices = menu->actions();
    if (choice >= choices.size() || !choices[choice]->isEnabled())
        return false;
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(choices[choice]).center());
    Report::settle();
    return true;
}

bool ToolBarWalk::startInstantMeetings() {
    const struct {
        int choice;
        const char *type;
        const char *what;
    } starts[] = {{0, "groupVideo", "with video"}, {1, "groupShare", "without video"}};
    bool good = true;
    for (const auto &start : starts) {
        m_report.mark();
        const bool chosen = choose(startItem, start.choice);
        const bool sent = Report::waitFor([&] { return m_report.sentSinceMark(startAction) == 1; });
        bool right = false;
        for (const Message &message : m_report.sinceMark())
            right = right || message.content.contains(QLatin1String(start.type));
        good = m_report.step(chosen && sent && right,
                             u"an instant meeting is started "_s + QLatin1String(start.what)) &&
               good;
    }
    return good;
}

bool ToolBarWalk::putTheOthersThere() {
    m_session.host()
        .mainWindowController()
        ->mainWindow()
        ->command(controls::customizeToolBarAction)
        ->trigger();
    if (!Report::waitFor([] { return shown(customization::sheet) != nullptr; }))
        return m_report.step(false, u"the tool-bar can be customised"_s);
    auto *palette = qobject_cast<QListWidget *>(shown(customization::palette));
    for (const QString &item : {words(u"SchedulePACMeetingLabel"_s), words(u"OpenLogFolderLabel"_s)}) {
        const auto rows = palette->findItems(item, Qt::MatchContains);
        if (rows.isEmpty())
            continue; // the step fails below
        palette->setCurrentItem(rows.first());
        click(shown(customization::addButton));
        Report::settle();
    }
    m_report.picture(shown(customization::sheet), u"tool-bar-customise"_s);
    click(shown(customization::doneButton));
    Report::waitFor([] { return shown(customization::sheet) == nullptr; });
    m_session.mainWindow()->resize(1280, m_session.mainWindow()->height());
    Report::settle();
    m_report.picture(m_session.mainWindow(), u"tool-bar-customised"_s);
    return m_report.step(shown(audioItem) && shown(logFolderItem),
                         u"the person puts the other two items into the tool-bar"_s);
}

bool ToolBarWalk::scheduleAudio() {
    m_report.mark();
    const bool chosen = choose(audioItem, 0);
    const bool opened = Report::waitFor([this] { return m_session.editor() != nullptr; });
    const bool asked = Report::waitFor([this] { return m_report.sinceMark().size() > 1; });
    Report::settle(1);
    m_report.picture(m_session.editor(), u"tool-bar-audio"_s);
    if (QWidget *modal = QApplication::activeModalWidget())
        press(modal, Qt::Key_Escape);
    Report::settle();
    const bool closed = m_session.discardEditor();
    return m_report.step(chosen && opened && asked && closed,
                         u"the first audio-conference account is asked for in a new editor"_s);
}

bool ToolBarWalk::openLogFolder() {
    const FileBrowser browser;
    click(shown(logFolderItem));
    const QString folder =
        platform::services().workspace->documentsFolder() + u"/ParloMeetingsOutlookPlugin"_s;
    return m_report.step(
        Report::waitFor([&] { return QDir(browser.opened().toLocalFile()) == QDir(folder); }, 3000),
        u"the log folder opens in the file browser"_s);
}

} // namespace

bool runToolBar(Session &session) {
    return ToolBarWalk(session).report();
}

} // namespace walkthrough

#include "ToolBarSteps.moc"
