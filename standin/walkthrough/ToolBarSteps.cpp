// The plug-in's items in the main window's tool-bar: the two default ones and the two that the user adds.
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
#include <QUrl>

namespace walkthrough {

namespace controls = mailhost::controls;
namespace customization = platform::customization;

namespace {

const QString startItem = u"VLStartToolbarItem"_s;
const QString scheduleItem = u"VLScheduleToolbarItem"_s;
const QString logFolderItem = u"VLOpenLogFolder"_s;

// Replaces the desktop's file browser.
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

bool itemsAreThere(Session &session) {
    const QWidget *schedule = shown(scheduleItem);
    const QWidget *start = shown(startItem);
    const bool inOrder =
        schedule && start && schedule->mapToGlobal(QPoint()).x() < start->mapToGlobal(QPoint()).x();
    session.picture(session.mainWindow(), u"tool-bar"_s);
    return session.step(inOrder && !shown(audioItem) && !shown(logFolderItem),
                        u"the window opened last has the plug-in's two items, in their order"_s);
}

bool schedule(Session &session) {
    click(shown(scheduleItem));
    const bool asked =
        Report::waitFor([&] { return session.editor() && shownButton(ButtonText::confirm()) != nullptr; });
    session.picture(session.editor(), u"tool-bar-schedule"_s);
    dismissModal();
    return session.step(session.discardEditor() && asked,
                        u"\"Schedule meeting\" opens a new editor that adds the meeting by itself"_s);
}

bool startInstantMeetings(Session &session) {
    const struct {
        int choice;
        QString type;
        QString what;
    } starts[] = {{0, u"groupVideo"_s, u"with video"_s}, {1, u"groupShare"_s, u"without video"_s}};
    bool good = true;
    for (const auto &start : starts) {
        session.report().mark();
        QMenu *menu = openMenu(shown(startItem));
        session.picture(menu, startItem + u"-menu"_s);
        const bool sent =
            choose(menu, start.choice) && Report::waitFor([&] { return session.sent(startAction) == 1; });
        const QList<Message> messages = session.report().sinceMark();
        const bool right = std::any_of(messages.begin(), messages.end(), [&](const Message &message) {
            return message.content.contains(start.type);
        });
        good = session.step(sent && right, u"an instant meeting is started "_s + start.what) && good;
    }
    return good;
}

bool customize(Session &session) {
    session.host().mainWindowController()->mainWindow()->command(controls::customizeToolBarAction)->trigger();
    if (!Report::waitFor([] { return shown(customization::sheet) != nullptr; }))
        return session.step(false, u"the tool-bar can be customised"_s);
    auto *palette = qobject_cast<QListWidget *>(shown(customization::palette));
    for (const char *label : {"SchedulePACMeetingLabel", "OpenLogFolderLabel"}) {
        const auto rows = palette->findItems(pluginText(QLatin1String(label)), Qt::MatchContains);
        if (rows.isEmpty())
            continue; // the step fails below
        palette->setCurrentItem(rows.first());
        click(shown(customization::addButton));
        Report::settle();
    }
    session.picture(shown(customization::sheet), u"tool-bar-customise"_s);
    click(shown(customization::doneButton));
    Report::waitFor([] { return shown(customization::sheet) == nullptr; });
    session.mainWindow()->resize(1280, session.mainWindow()->height());
    Report::settle();
    session.picture(session.mainWindow(), u"tool-bar-customised"_s);
    return session.step(shown(audioItem) && shown(logFolderItem),
                        u"the user puts the other two items into the tool-bar"_s);
}

bool scheduleAudio(Session &session) {
    session.report().mark();
    QMenu *menu = openMenu(shown(audioItem));
    session.picture(menu, audioItem + u"-menu"_s);
    const bool opened = choose(menu, 0) && Report::waitFor([&] { return session.editor() != nullptr; });
    const bool asked = Report::waitFor([&] { return session.report().sinceMark().size() > 1; });
    Report::settle(1);
    session.picture(session.editor(), u"tool-bar-audio"_s);
    if (QApplication::activeModalWidget())
        dismissModal();
    Report::settle();
    return session.step(session.discardEditor() && opened && asked,
                        u"the first audio-conference account is asked for in a new editor"_s);
}

bool openLogFolder(Session &session) {
    const FileBrowser browser;
    click(shown(logFolderItem));
    const QString folder =
        platform::services().workspace->documentsFolder() + u"/ParloMeetingsOutlookPlugin"_s;
    return session.step(
        Report::waitFor([&] { return QDir(browser.opened().toLocalFile()) == QDir(folder); }, 3000),
        u"the log folder opens in the file browser"_s);
}

} // namespace

Part toolBarPart() {
    return {"tool-bar",
            {itemsAreThere, schedule, startInstantMeetings, customize, scheduleAudio, openLogFolder}};
}

} // namespace walkthrough

#include "ToolBarSteps.moc"
