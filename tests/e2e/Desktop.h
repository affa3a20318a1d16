// The programs as a user starts them, on a screen and a bus of their own, and everything that can be seen of
// them from outside: windows, files and the messages on the bus.
#pragma once

#include "platform/Literals.h"
#include "standin/mailhost/store/CalendarFile.h"
#include "standin/support/MessageLog.h"
#include "standin/support/PrivateBus.h"
#include "tests/e2e/Screen.h"
#include "tests/support/WaitFor.h"

#include <QPoint>
#include <gtest/gtest.h>

namespace e2e {

struct Programs {
    const char *hostVersion;
    bool answersLate; // the client is told to answer a second and a half later
};
std::ostream &operator<<(std::ostream &out, const Programs &programs);

// The calendar has the appointments "First" and "Second" of today, one below the other, nobody invited. The
// main window is active when a test begins.
class Desktop : public testing::TestWithParam<Programs> {
protected:
    ~Desktop() override;
    void SetUp() override;
    void TearDown() override;

    // What the user does. Each waits until it can be seen, and fails the test when that does not come.
    void goToCalendar();               // in the window manager
    void open(const QString &subject); // "First" or "Second"
    void addMeeting(const QString &subject);
    void typeSubject(const QString &subject); // over the former one
    void save(const QString &subject);
    void close();
    // Everything by keys: open, add, save, close.
    void giveMeeting(const QString &subject);

    // Ends the client; it stays installed.
    void endClient();
    [[nodiscard]] static bool isClientRunning();

    // Whether the window of that title gets active within the usual time.
    ::testing::AssertionResult becomesActive(const QString &title);
    static QString unchanged(const QString &subject) { return subject + u" — Appointment"_s; }
    static QString changed(const QString &subject) { return unchanged(subject) + u'*'; }
    inline static const QString settingsSheet = u"Meeting settings"_s;
    inline static const QString calendar = u"calendar.ics"_s;

    // A point of the appointment that is selected in the grid; a null one when none is seen.
    [[nodiscard]] QPoint selectedTile() const;
    // From the calendar file; by UID "first" or "second".
    [[nodiscard]] mailhost::Appointment inFile(const QString &uid) const;
    [[nodiscard]] QString meetingKeyInFile(const QString &uid) const;

    Screen &screen = Screen::instance();
    standin::MessageLog messages;

private:
    void writeCalendar() const;
    [[nodiscard]] QProcessEnvironment environment() const;
    bool startClient();
    bool startHost();
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString calendarPath() const { return path(calendar); }

    QTemporaryDir m_folder;
    standin::PrivateBus m_bus;
    standin::Child m_client;
    standin::Child m_host;
};

} // namespace e2e
