// The plug-in's items in the main window's tool-bar: the two that are there by themselves, and the two that
// the person puts there.
#include "platform/services/Services.h"
#include "platform/toolkit/ToolbarCustomization.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/walkthrough/Input.h"
#include "standin/walkthrough/Road.h"

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

const QString startItem = QStringLiteral("VLStartToolbarItem");
const QString scheduleItem = QStringLiteral("VLScheduleToolbarItem");
const QString audioItem = QStringLiteral("VLSchedulePACToolbarItem");
const QString logFolderItem = QStringLiteral("VLOpenLogFolder");

// Stands for the desktop's file browser.
class FileBrowser : public QObject {
    Q_OBJECT
public:
    FileBrowser() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~FileBrowser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    [[nodiscard]] const QUrl &opened() const { return m_opened; }
public Q_SLOTS:
    void open(const QUrl &url) { m_opened = url; }

private:
    QUrl m_opened;
};

class ToolBarWalk {
public:
    explicit ToolBarWalk(Road &road)
        : m_road(road)
        , m_walk(road.walk()) {}
    bool walk() {
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

    Road &m_road;
    Walk &m_walk;
};

bool ToolBarWalk::isThere() {
    const QWidget *schedule = shown(scheduleItem);
    const QWidget *start = shown(startItem);
    const bool inOrder =
        schedule && start && schedule->mapToGlobal(QPoint()).x() < start->mapToGlobal(QPoint()).x();
    m_walk.picture(m_road.mainWindow(), QStringLiteral("tool-bar"));
    return m_walk.step(inOrder && !shown(audioItem) && !shown(logFolderItem),
                       QStringLiteral("the window opened last has the plug-in's two items, in their order"));
}

bool ToolBarWalk::editorAsksByItself(const QString &picture) {
    const bool asked = Walk::waitFor([this] { return m_road.editor() && shownButton(continueButton()); });
    m_walk.picture(m_road.editor(), picture);
    press(QApplication::activeModalWidget(), Qt::Key_Escape);
    Walk::waitFor([] { return !shownButton(continueButton()); });
    return m_road.discardEditor() && asked;
}

bool ToolBarWalk::schedule() {
    click(shown(scheduleItem));
    return m_walk.step(
        editorAsksByItself(QStringLiteral("tool-bar-schedule")),
        QStringLiteral("\"Schedule meeting\" opens a new editor that adds the meeting by itself"));
}

bool ToolBarWalk::choose(const QString &item, int choice) {
    if (!click(shown(item)))
        return false;
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!Walk::waitFor([&] { return (menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())); }))
        return false;
    m_walk.picture(menu, item + QStringLiteral("-menu"));
    const QList<QAction *> choices = menu->actions();
    if (choice >= choices.size() || !choices[choice]->isEnabled())
        return false;
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(choices[choice]).center());
    Walk::settle();
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
        m_walk.mark();
        const bool chosen = choose(startItem, start.choice);
        const bool sent = Walk::waitFor([&] { return m_walk.sentSinceMark(startAction) == 1; });
        bool right = false;
        for (const Message &message : m_walk.sinceMark())
            right = right || message.content.contains(QLatin1String(start.type));
        good = m_walk.step(chosen && sent && right,
                           QStringLiteral("an instant meeting is started ") + QLatin1String(start.what)) &&
               good;
    }
    return good;
}

bool ToolBarWalk::putTheOthersThere() {
    m_road.host().mainWindowController()->mainWindow()->command(controls::customizeToolBarAction)->trigger();
    if (!Walk::waitFor([] { return shown(customization::sheet) != nullptr; }))
        return m_walk.step(false, QStringLiteral("the tool-bar can be customised"));
    auto *palette = qobject_cast<QListWidget *>(shown(customization::palette));
    for (const QString &item :
         {words(QStringLiteral("SchedulePACMeetingLabel")), words(QStringLiteral("OpenLogFolderLabel"))}) {
        const auto rows = palette->findItems(item, Qt::MatchContains);
        if (rows.isEmpty())
            continue; // the step fails below
        palette->setCurrentItem(rows.first());
        click(shown(customization::addButton));
        Walk::settle();
    }
    m_walk.picture(shown(customization::sheet), QStringLiteral("tool-bar-customise"));
    click(shown(customization::doneButton));
    Walk::waitFor([] { return shown(customization::sheet) == nullptr; });
    m_road.mainWindow()->resize(1280, m_road.mainWindow()->height());
    Walk::settle();
    m_walk.picture(m_road.mainWindow(), QStringLiteral("tool-bar-customised"));
    return m_walk.step(shown(audioItem) && shown(logFolderItem),
                       QStringLiteral("the person puts the other two items into the tool-bar"));
}

bool ToolBarWalk::scheduleAudio() {
    m_walk.mark();
    const bool chosen = choose(audioItem, 0);
    const bool opened = Walk::waitFor([this] { return m_road.editor() != nullptr; });
    const bool asked = Walk::waitFor([this] { return m_walk.sinceMark().size() > 1; });
    Walk::settle(1);
    m_walk.picture(m_road.editor(), QStringLiteral("tool-bar-audio"));
    if (QWidget *modal = QApplication::activeModalWidget())
        press(modal, Qt::Key_Escape);
    Walk::settle();
    const bool closed = m_road.discardEditor();
    return m_walk.step(chosen && opened && asked && closed,
                       QStringLiteral("the first audio-conference account is asked for in a new editor"));
}

bool ToolBarWalk::openLogFolder() {
    const FileBrowser browser;
    click(shown(logFolderItem));
    const QString folder =
        platform::services().workspace->documentsFolder() + QStringLiteral("/ParloMeetingsOutlookPlugin");
    return m_walk.step(
        Walk::waitFor([&] { return QDir(browser.opened().toLocalFile()) == QDir(folder); }, 3000),
        QStringLiteral("the log folder opens in the file browser"));
}

} // namespace

bool walkTheToolBar(Road &road) {
    return ToolBarWalk(road).walk();
}

} // namespace walkthrough

#include "ToolBarSteps.moc"
