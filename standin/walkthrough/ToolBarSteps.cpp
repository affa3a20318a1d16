// The plug-in's items in the main window's tool-bar: the two default ones and the two that the user adds.
#include "platform/services/Services.h"
#include "platform/toolkit/ToolbarCustomization.h"
#include "standin/mailhost/windows/ControlNames.h"
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

void useDefaultItems(Session &walk) {
    const QWidget *schedule = shown(scheduleItem);
    const QWidget *start = shown(startItem);
    const bool inOrder =
        schedule && start && schedule->mapToGlobal(QPoint()).x() < start->mapToGlobal(QPoint()).x();
    walk.picture(walk.mainWindow(), u"tool-bar"_s);
    walk.step(inOrder && !shown(audioItem) && !shown(logFolderItem),
              u"the window opened last has the plug-in's two items, in their order"_s);
    click(shown(scheduleItem));
    const bool asked = waitFor([] { return Session::editor() && shownButton(buttons::confirm); });
    walk.picture(walk.editor(), u"tool-bar-schedule"_s);
    dismissModal();
    walk.step(walk.discardEditor() && asked,
              u"\"Schedule meeting\" opens a new editor that adds the meeting by itself"_s);
}

void startInstantMeeting(Session &walk, int choice, const QString &type, const QString &how) {
    walk.mark();
    QMenu *menu = openMenu(shown(startItem));
    walk.picture(menu, startItem + u"-menu"_s);
    const bool sent = choose(menu, choice) && waitFor([&] { return walk.sent(requests::start) == 1; });
    walk.step(sent && walk.sentContents(requests::start).first().contains(type),
              u"an instant meeting is started "_s + how);
}

void customize(Session &walk) {
    walk.mainWindow()->command(controls::customizeToolBarAction)->trigger();
    waitFor([] { return shown(customization::sheet) != nullptr; });
    auto *palette = qobject_cast<QListWidget *>(shown(customization::palette));
    for (const QString &label : {u"SchedulePACMeetingLabel"_s, u"OpenLogFolderLabel"_s}) {
        if (palette) // otherwise the step below fails
            palette->setCurrentItem(palette->findItems(pluginText(label), Qt::MatchContains).value(0));
        click(shown(customization::addButton));
        settle();
    }
    walk.picture(shown(customization::sheet), u"tool-bar-customise"_s);
    click(shown(customization::doneButton));
    waitFor([] { return shown(customization::sheet) == nullptr; });
    walk.mainWindow()->resize(1280, walk.mainWindow()->height());
    settle();
    walk.picture(walk.mainWindow(), u"tool-bar-customised"_s);
    walk.step(shown(audioItem) && shown(logFolderItem),
              u"the user puts the other two items into the tool-bar"_s);
}

void useAddedItems(Session &walk) {
    walk.mark();
    QMenu *menu = openMenu(shown(audioItem));
    walk.picture(menu, audioItem + u"-menu"_s);
    const bool opened = choose(menu, 0) && waitFor([] { return Session::editor() != nullptr; });
    const bool asked = waitFor([&] { return walk.sent(requests::profile) > 0; });
    settle(1);
    walk.picture(walk.editor(), u"tool-bar-audio"_s);
    if (QApplication::activeModalWidget())
        dismissModal();
    settle();
    walk.step(walk.discardEditor() && opened && asked,
              u"the first audio-conference account is asked for in a new editor"_s);
    const FileBrowser browser;
    click(shown(logFolderItem));
    const QDir logs(platform::services().workspace->documentsFolder() + u"/ParloMeetingsOutlookPlugin"_s);
    walk.step(waitFor([&] { return QDir(browser.opened().toLocalFile()) == logs; }, 3000),
              u"the log folder opens in the file browser"_s);
}

} // namespace

void useToolBar(Session &walk) {
    useDefaultItems(walk);
    startInstantMeeting(walk, 0, u"groupVideo"_s, u"with video"_s);
    startInstantMeeting(walk, 1, u"groupShare"_s, u"without video"_s);
    customize(walk);
    useAddedItems(walk);
}

} // namespace walkthrough

#include "ToolBarSteps.moc"
