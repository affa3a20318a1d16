// A notification to another process and back, and what the parts of the table start beside themselves.
#include "bench/table/Processes.h"
#include "bench/table/Rows.h"
#include "bench/table/Sections.h"
#include "bench/table/SideBySide.h"
#include "platform/services/Services.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <cstdio>

namespace bench {

namespace {

using platform::TextMap;

const char bareRequest[] = "BenchRequest";
const char bareAnswer[] = "BenchAnswer";
const QString request = u"NotificationRequest"_s;
const QString answer = u"NotificationAnswer"_s;
const QString actionKey = u"actionId"_s;
const QString contentKey = u"content"_s;

platform::Services desktop() {
    return platform::makeDesktopServices({});
}

class NotificationEcho {
public:
    NotificationEcho() {
        platform::setServices(desktop());
        static_cast<void>(
            centre().addObserver(answer, [this](const QString &, const TextMap &) { m_heard = true; }));
    }
    void roundTrip(const QString &content) {
        m_heard = false;
        centre().post(request, QString(), {{actionKey, u"3"_s}, {contentKey, content}}, true);
        while (!m_heard)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

private:
    static platform::DistributedNotificationCenter &centre() {
        return *platform::services().distributedNotifications;
    }
    Part m_other{u"echo-notifications"_s};
    bool m_heard = false;
};

} // namespace

PrivateDesktop::PrivateDesktop() {
    for (const char *name :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        const QString folder = path(QString::fromLatin1(name));
        QDir().mkpath(folder);
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv(name, folder.toUtf8());
    }
    qputenv("PARLO_ROOT",
            QDir(QCoreApplication::applicationDirPath()).absoluteFilePath(u"../root"_s).toUtf8());
    if (!m_bus.start())
        qFatal("there is no bus");
}

Part::Part(const QString &name) {
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(QCoreApplication::applicationFilePath(), {u"--section"_s, name});
    while (!m_process.canReadLine())
        if (!m_process.waitForReadyRead())
            qFatal("the other process has ended");
}

Part::~Part() {
    m_process.kill();
    m_process.waitForFinished();
}

void tellReady() {
    std::puts("ready");
    std::fflush(stdout);
}

void BareEcho::roundTrip(const QByteArray &content) {
    m_bus.send(bareRequest, content.constData());
    (void)m_bus.next();
}

void echoBare() {
    BareBus bus(bareRequest);
    tellReady();
    for (;;)
        bus.send(bareAnswer, bus.next().c_str());
}

void echoNotifications() {
    platform::setServices(desktop());
    auto &centre = *platform::services().distributedNotifications;
    (void)centre.addObserver(request, [&centre](const QString &, const TextMap &userInfo) {
        centre.post(answer, QString(), userInfo, true);
    });
    (void)platform::services().workspace->runningApplications(); // the bus has taken the observer in
    tellReady();
    QCoreApplication::exec();
}

void bus() {
    const PrivateDesktop desktop;
    BareEcho bare;
    NotificationEcho notifications;
    for (const int size : {200, 8000}) {
        const QByteArray content(size, 'x');
        const QString text = QString::fromLatin1(content);
        const Comparison times = sideBySide(
            {repeating([&] { notifications.roundTrip(text); }), repeating([&] { bare.roundTrip(content); })},
            {.seconds = 6, .sample = 0.01, .mostRounds = 301, .clock = Clock::Wall});
        addRatio(u"a notification of %1 there and back"_s.arg(sizeText(size)), times.seconds[0],
                 u"bare sd-bus echo"_s, times.seconds[1], times.ratios[1], 1.3);
    }
}

} // namespace bench
