// The whole way on a real bus: from the click on the plug-in's button to the saved appointment, with the
// meeting client in a process of its own.
#include "bench/table/Processes.h"
#include "bench/table/Rows.h"
#include "bench/table/Sections.h"
#include "bench/table/SideBySide.h"
#include "platform/services/Services.h"
#include "plugin/load/pluginLoad.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/util/localizedString.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/HostApplication.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace bench {

namespace {

constexpr int rounds = 21;
constexpr int appointments = 2 * rounds;
constexpr int patience = 20'000; // milliseconds
constexpr double allowance = 0.010;
const QDate today(2026, 11, 24);

struct Cost {
    double wall = 0;
    double processor = 0;
};

// The process sleeps until something happens, and not longer: neither a loop nor a pause is measured.
template<typename Condition>
void waitFor(const char *what, Condition condition) {
    QElapsedTimer elapsed;
    elapsed.start();
    QTimer alarm; // wakes the loop when nothing else does
    alarm.start(patience);
    for (;;) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (condition())
            return;
        if (elapsed.elapsed() > patience)
            qFatal("in vain waited for %s", what);
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

QByteArray calendarText() {
    QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Somebody//Else//EN\r\n";
    for (int i = 0; i < appointments; ++i)
        text += "BEGIN:VEVENT\r\nUID:" + QByteArray::number(i) +
                "@bench\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261124T090000Z\r\nDTEND:20261124T093000Z\r\n"
                "SUMMARY:Quarterly review\r\nLOCATION:Room 7\r\nDESCRIPTION:Agenda first.\r\n"
                "X-ALT-DESC;FMTTYPE=text/html:<html><body><p>Agenda <b>first</b>.</p></body></html>\r\n"
                "END:VEVENT\r\n";
    return text + "END:VCALENDAR\r\n";
}

class Program {
public:
    Program(const QString &name, const QString &identifier, const QStringList &arguments) {
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QCoreApplication::applicationDirPath() + u'/' + name, arguments);
        waitFor("a program", [&identifier] {
            return platform::services().workspace->runningApplications().contains(identifier);
        });
    }
    ~Program() {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
};

// Counts what goes over the bus from its making on: questions to it, and notifications, of which one there
// and one back are a round trip.
class Traffic {
public:
    Traffic() {
        m_monitor.setStandardErrorFile(QProcess::nullDevice());
        m_monitor.start(u"dbus-monitor"_s, {u"--session"_s, u"--profile"_s});
        m_monitor.waitForReadyRead(patience); // its first line says that it listens
        std::ignore = untilMark();
    }
    [[nodiscard]] int roundTrips() {
        int questions = 0;
        int notifications = 0;
        for (const QByteArray &line : untilMark().split('\n')) {
            notifications += line.startsWith("sig") && line.endsWith("DistributedNotifications\tPosted");
            questions += line.startsWith("mc") && !line.contains("AddMatch");
        }
        return questions + (notifications + 1) / 2;
    }
    ~Traffic() {
        m_monitor.kill();
        m_monitor.waitForFinished();
    }

private:
    // All that was seen before a signal that is sent now.
    [[nodiscard]] QByteArray untilMark() {
        m_marker.send("BenchMark", "");
        QByteArray seen;
        while (!seen.contains("com.parlo.Bench\tPosted\n")) {
            if (!m_monitor.waitForReadyRead(patience))
                qFatal("the monitor of the bus is silent");
            seen += m_monitor.readAllStandardOutput();
        }
        return seen;
    }

    QProcess m_monitor;
    BareBus m_marker{"BenchMark"};
};

class Host {
public:
    explicit Host(const PrivateDesktop &desktop)
        : m_host(options(desktop)) {
        QFile file(desktop.path(u"my.ics"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(calendarText()) < 0)
            qFatal("the calendar cannot be written");
        file.close();
        QString error;
        m_host.installDesktopServices();
        if (!m_host.installBundle(&error))
            qFatal("%s", qPrintable(error));
        m_host.start();
        if (!m_host.openCalendar(&error))
            qFatal("%s", qPrintable(error));
        m_host.show();
        loadPlugin();
    }

    Cost addAndSave() {
        mailhost::EditorWindow *editor = openNext();
        const auto *strip = dynamic_cast<vlActionAdditionView *>(
            vlActionAdditionViewMonitor::sharedInstance().getVlActionAdditionViewByWindow(editor));
        waitFor("the buttons", [strip] { return strip->uiStatus() == StripState::NoMeeting; });
        QString add = vlLocalizedString(u"AddVelaButton"_s);
        add.remove(u'&');
        const Cost cost = spent([&] {
            for (auto *button : strip->findChildren<QAbstractButton *>())
                if (button->isVisible() && button->accessibleName() == add)
                    QTest::mouseClick(button, Qt::LeftButton);
            QPushButton *confirm = nullptr;
            waitFor("the sheet", [&confirm] { return (confirm = confirmButton()) != nullptr; });
            QTest::mouseClick(confirm, Qt::LeftButton);
            waitFor("the meeting", [strip] { return strip->uiStatus() == StripState::MeetingAttached; });
            save(editor);
        });
        close(editor);
        return cost;
    }

private:
    static mailhost::HostOptions options(const PrivateDesktop &desktop) {
        mailhost::HostOptions options;
        options.calendarPath = desktop.path(u"my.ics"_s);
        options.documentsFolder = desktop.path(u"Documents"_s);
        options.defaultsFolder = desktop.path(u"defaults"_s);
        options.outbox = desktop.path(u"outbox"_s);
        options.accounts = {{u"Ada Example"_s, u"ada@parlo.example"_s}};
        options.today = today;
        return options;
    }
    template<typename Action>
    static Cost spent(Action action) {
        const double before = secondsNow(Clock::Processor);
        QElapsedTimer timer;
        timer.start();
        action();
        return {double(timer.nsecsElapsed()) * 1e-9, secondsNow(Clock::Processor) - before};
    }
    static QPushButton *confirmButton() {
        for (QWidget *window : QApplication::topLevelWidgets())
            if (auto *button = window->findChild<QPushButton *>(u"buttonContinue"_s);
                button && button->isVisible())
                return button;
        return nullptr;
    }
    static void save(mailhost::EditorWindow *editor) {
        editor->viewController()->requestSave();
        waitFor("the save", [editor] { return !editor->viewController()->isDirty(); });
    }
    mailhost::EditorWindow *openNext() {
        mailhost::EditorWindow *editor = m_host.openEditorFor(u"%1@bench"_s.arg(m_next++))->editorWindow();
        while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents))
            continue; // all that follows an opening is not measured
        return editor;
    }
    static void close(mailhost::EditorWindow *editor) {
        const QPointer<QWidget> closing = editor;
        editor->close();
        waitFor("the editor's end", [&closing] { return !closing; });
    }

    mailhost::HostApplication m_host;
    int m_next = 0;
};

void addCostRow(const QString &what, double ours, int trips, double echo) {
    const double others = trips * echo;
    addRow(what, timeText(ours), u"%1 bare echoes: "_s.arg(trips) + timeText(others),
           u"+ "_s + timeText(qMax(ours - others, 0.0)), u"at most + 10 ms"_s, ours - others <= allowance);
}

void walk(const QString &files) {
    const PrivateDesktop desktop;
    Host host(desktop);
    const Program client(u"parlo-client"_s, u"com.parlo.meetings"_s,
                         {u"--background"_s, u"--data"_s, desktop.path(u"meetings.json"_s)});
    BareEcho echo;
    host.addAndSave(); // the first one of a program loads and asks what later ones know
    int trips = 0;
    {
        Traffic traffic;
        host.addAndSave();
        trips = traffic.roundTrips();
    }
    const QByteArray content(200, 'x');
    std::vector<double> walls, processors, echoes;
    for (int round = 0; round < rounds; ++round) {
        const Cost added = host.addAndSave();
        walls.push_back(added.wall);
        processors.push_back(added.processor);
        for (int i = 0; i < 20; ++i) {
            QElapsedTimer timer;
            timer.start();
            echo.roundTrip(content);
            echoes.push_back(double(timer.nsecsElapsed()) * 1e-9);
        }
    }
    addCostRow(u"add a meeting and save: processor time of the host"_s + files, median(processors), trips,
               median(echoes));
    addCostRow(u"add a meeting and save: from click to saved"_s + files, median(walls), trips,
               median(echoes));
}

} // namespace

void addMeeting() {
    walk(QString());
}

// Without the disk, which the host, the client and the settings wait for with each file that they write.
void addMeetingInMemory() {
    qputenv("TMPDIR", "/dev/shm");
    walk(u", files in memory"_s);
}

} // namespace bench
