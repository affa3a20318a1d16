#include "tests/e2e/Desktop.h"

#include "platform/services/Services.h"
#include "standin/support/BusNames.h"
#include "standin/support/OwnRoot.h"
#include "tests/support/CalendarBuilder.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

namespace e2e {

namespace {

const QString slowly = u"delay any 1500"_s;
const QString programName = u" — Parlo Host"_s;
const QStringList subjects{u"First"_s, u"Second"_s};
constexpr int strongSaturation = 140; // of 255
constexpr int plainWidth = 60;
constexpr int plainHeight = 10;

QString program(const char *name) {
    return QDir(qEnvironmentVariable("PARLO_BIN")).filePath(QString::fromLatin1(name));
}

// Installed programs find everything by themselves.
bool isInstallation() {
    return !qEnvironmentVariableIsSet("PARLO_ROOT");
}

} // namespace

std::ostream &operator<<(std::ostream &out, const Programs &programs) {
    return out << "host " << programs.hostVersion << (programs.answersLate ? ", late answers" : "");
}

Desktop::~Desktop() {
    platform::setServices({});
}

void Desktop::SetUp() {
    ASSERT_TRUE(screen.isThere());
    ASSERT_TRUE(m_bus.start());
    platform::DesktopOptions options;
    options.rootFolder = path(u"root"_s);
    options.defaultsFolder = path(u"test-defaults"_s);
    options.documentsFolder = path(u"test-documents"_s);
    platform::setServices(platform::makeDesktopServices(options));
    messages.observe();
    if (!isInstallation())
        standin::makeRoot(path(u"root"_s), qEnvironmentVariable("PARLO_ROOT"));
    writeCalendar();
    ASSERT_TRUE(startClient());
    ASSERT_TRUE(startHost());
    // The first key selects what is nearest to the present time. It is lost while the window is coming up.
    ASSERT_TRUE(waitFor([this] {
        screen.press(u"Home"_s);
        return !selectedTile().isNull();
    }));
}

void Desktop::TearDown() {
    if (!HasFailure())
        return;
    std::cerr << "active window: " << qPrintable(screen.activeWindow()) << '\n';
    for (const standin::Message &message : messages.messages())
        std::cerr << qPrintable(message.text()) << '\n';
}

void Desktop::writeCalendar() const {
    CalendarBuilder builder;
    int hour = 9;
    for (const QString &subject : subjects) {
        const QString start =
            QDateTime(QDate::currentDate(), QTime(hour, 0)).toString(u"yyyyMMdd'T'HHmmss"_s);
        builder.event(subject.toLower(), subject.toUtf8(),
                      "DTSTART:" + start.toLatin1() + "\nDURATION:PT1H\n");
        hour += 2;
    }
    QFile file(calendarPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(builder.text());
}

QProcessEnvironment Desktop::environment() const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, screen.display());
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    if (!isInstallation())
        environment.insert(u"PARLO_ROOT"_s, path(u"root"_s));
    environment.insert(standin::userFolders(m_folder.path()));
    return environment;
}

bool Desktop::startClient() {
    QStringList arguments{u"--background"_s, u"--data"_s, path(u"meetings.json"_s)};
    if (GetParam().answersLate)
        arguments += {u"--rule"_s, slowly};
    m_client.setProcessEnvironment(environment());
    return m_client.run(program("parlo-client"), arguments) && waitFor(isClientRunning);
}

void Desktop::endClient() {
    standin::Child order;
    order.setProcessEnvironment(environment());
    ASSERT_TRUE(order.run(program("parlo-client"), {u"--tell"_s, u"exit"_s}));
    ASSERT_TRUE(waitFor([] { return !isClientRunning(); }));
}

bool Desktop::isClientRunning() {
    return standin::isRunning(standin::names::client);
}

bool Desktop::startHost() {
    m_host.setProcessEnvironment(environment());
    m_host.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    return m_host.run(program("parlo-host"),
                      {u"--host-version"_s, QString::fromLatin1(GetParam().hostVersion), u"--documents"_s,
                       path(u"Documents"_s), u"--defaults"_s, path(u"defaults"_s), u"--outbox"_s,
                       path(u"outbox"_s), calendarPath()}) &&
           becomesActive(calendar);
}

::testing::AssertionResult Desktop::becomesActive(const QString &title) {
    if (waitFor([this, &title] { return screen.activeWindow() == title + programName; }))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << qPrintable(title) << " does not become active, but " << qPrintable(screen.activeWindow());
}

void Desktop::goToCalendar() {
    screen.activate(calendar + programName);
    ASSERT_TRUE(becomesActive(calendar));
}

void Desktop::open(const QString &subject) {
    screen.press(u"Home"_s);
    for (qsizetype i = subjects.indexOf(subject); i > 0; --i)
        screen.press(u"Down"_s);
    screen.press(u"Return"_s);
    ASSERT_TRUE(becomesActive(unchanged(subject)));
}

void Desktop::addMeeting(const QString &subject) {
    screen.press(u"alt+i"_s);
    ASSERT_TRUE(becomesActive(settingsSheet));
    screen.press(u"Return"_s);
    ASSERT_TRUE(becomesActive(changed(subject)));
}

void Desktop::typeSubject(const QString &subject) {
    screen.press(u"alt+u"_s);
    screen.press(u"ctrl+a"_s);
    screen.type(subject);
}

void Desktop::save(const QString &subject) {
    screen.press(u"ctrl+s"_s);
    ASSERT_TRUE(becomesActive(unchanged(subject)));
}

void Desktop::close() {
    screen.press(u"ctrl+w"_s);
    ASSERT_TRUE(becomesActive(calendar));
}

void Desktop::giveMeeting(const QString &subject) {
    ASSERT_NO_FATAL_FAILURE(open(subject));
    ASSERT_NO_FATAL_FAILURE(addMeeting(subject));
    ASSERT_NO_FATAL_FAILURE(save(subject));
    ASSERT_NO_FATAL_FAILURE(close());
}

// A selected tile is the only thing that has a wide plain area of a strong colour.
QPoint Desktop::selectedTile() const {
    const QImage picture = screen.picture();
    const auto isStrong = [&picture](int x, int y) {
        return picture.pixelColor(x, y).saturation() > strongSaturation;
    };
    const auto isPlain = [&picture](int x, int y, int width, int height) {
        for (int i = 0; i < width; ++i)
            for (int j = 0; j < height; ++j)
                if (picture.pixel(x + i, y + j) != picture.pixel(x, y))
                    return false;
        return true;
    };
    for (int y = 0; y + plainHeight < picture.height(); ++y)
        for (int x = 0; x + plainWidth < picture.width(); x += plainWidth / 4)
            if (isStrong(x, y) && isPlain(x, y, plainWidth, plainHeight))
                return {x + plainWidth / 2, y + plainHeight / 2};
    return {};
}

mailhost::Appointment Desktop::inFile(const QString &uid) const {
    QString error;
    const auto file = mailhost::CalendarFile::open(calendarPath(), &error);
    return file ? file->find(uid).value_or(mailhost::Appointment()) : mailhost::Appointment();
}

QString Desktop::meetingKeyInFile(const QString &uid) const {
    return QJsonDocument::fromJson(inFile(uid).ucCapabilities.toUtf8())["meetingKey"].toString();
}

} // namespace e2e
