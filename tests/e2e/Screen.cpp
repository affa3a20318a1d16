#include "tests/e2e/Screen.h"

#include "platform/Literals.h"
#include "tests/support/WaitFor.h"

#include <QFile>
#include <QPoint>

namespace e2e {

namespace {

constexpr int dragSteps = 6;
constexpr int width = 1280;
constexpr int height = 1024;

} // namespace

Screen &Screen::instance() {
    static Screen screen;
    return screen;
}

Screen::Screen() {
    m_isThere = startServer() && startWindowManager();
}

bool Screen::startServer() {
    if (!m_server.run(u"Xvfb"_s,
                      {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"%1x%2x24"_s.arg(width).arg(height),
                       u"-nolisten"_s, u"tcp"_s, u"-fbdir"_s, m_folder.path()}) ||
        !waitFor([this] { return m_server.canReadLine(); }))
        return false;
    m_display = u':' + QString::fromLatin1(m_server.readLine()).trimmed();
    return true;
}

bool Screen::startWindowManager() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, m_display);
    m_windowManager.setProcessEnvironment(environment);
    m_windowManager.setStandardErrorFile(QProcess::nullDevice());
    return m_windowManager.run(u"openbox"_s,
                               {u"--sm-disable"_s, u"--config-file"_s, u"/etc/xdg/openbox/rc.xml"_s}) &&
           waitFor([this] {
               int exitCode = -1;
               xdotool({u"get_desktop"_s}, &exitCode);
               return exitCode == 0;
           });
}

QString Screen::xdotool(const QStringList &arguments, int *exitCode) {
    standin::Child process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, m_display);
    process.setProcessEnvironment(environment);
    process.setStandardErrorFile(QProcess::nullDevice()); // "no such window" is an answer
    // The client of the test may live in this process: it answers meanwhile.
    if (!process.run(u"xdotool"_s, arguments) ||
        !waitFor([&process] { return process.state() == QProcess::NotRunning; }))
        return {};
    if (exitCode)
        *exitCode = process.exitCode();
    return process.exitCode() == 0 ? QString::fromUtf8(process.readAllStandardOutput()).trimmed() : QString();
}

void Screen::press(const QString &keys) {
    xdotool({u"key"_s, keys});
}

void Screen::type(const QString &text) {
    xdotool({u"type"_s, u"--delay"_s, u"1"_s, text});
}

void Screen::drag(const QPoint &from, const QPoint &to) {
    const auto moveTo = [](const QPoint &point) {
        return QStringList{u"mousemove"_s, u"--sync"_s, QString::number(point.x()),
                           QString::number(point.y())};
    };
    QStringList gesture = moveTo(from) + QStringList{u"mousedown"_s, u"1"_s};
    for (int i = 1; i <= dragSteps; ++i)
        gesture += moveTo(from + (to - from) * i / dragSteps);
    xdotool(gesture + QStringList{u"mouseup"_s, u"1"_s});
}

void Screen::activate(const QString &title) {
    xdotool({u"search"_s, u"--onlyvisible"_s, u"--name"_s, title, u"windowactivate"_s, u"--sync"_s});
}

QString Screen::activeWindow() {
    return xdotool({u"getactivewindow"_s, u"getwindowname"_s});
}

// The server's file ends with the pixels, 32 bits each.
QImage Screen::picture() const {
    QFile file(m_folder.filePath(u"Xvfb_screen0"_s));
    constexpr qint64 octets = qint64(width) * height * 4;
    if (!file.open(QIODevice::ReadOnly) || !file.seek(file.size() - octets))
        return {};
    const QByteArray pixels = file.read(octets);
    return QImage(reinterpret_cast<const uchar *>(pixels.constData()), width, height, QImage::Format_RGB32)
        .copy();
}

} // namespace e2e
