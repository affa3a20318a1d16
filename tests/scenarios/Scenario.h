// A desktop in one process: the real plug-in in the real host's windows, the client's real service on an
// in-memory bus, a calendar file on disk, and a clock that only the test advances.
#pragma once

#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/util/localizedString.h"
#include "standin/mailhost/store/CalendarFile.h"
#include "standin/mailhost/windows/HostApplication.h"
#include "standin/mailhost/windows/editor/EditorWindow.h"
#include "standin/meetingclient/ClientLink.h"
#include "tests/support/CalendarBuilder.h"
#include "tests/support/FreshPlugin.h"

#include <QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets>
#include <gtest/gtest.h>
#include <memory>

namespace scenarios {

// The calendar that the host of a scenario opens.
struct OpenedCalendar {
    QByteArray text;
    QDate today{2026, 11, 24};
    // The user's accounts; if empty, the host derives the owner from the calendar.
    QList<mailhost::Mailbox> accounts{{u"Ada Example"_s, u"ada@parlo.example"_s}};
};

// The appointments Scenario::plain, invited and other.
[[nodiscard]] CalendarBuilder usualCalendar();

// The key of the stored meeting; an empty text without one.
[[nodiscard]] QString meetingKeyIn(const mailhost::Appointment &appointment);

class Scenario {
public:
    // Starts the host of that version, with an installed and running client and an open calendar.
    explicit Scenario(const QString &hostVersion, const OpenedCalendar &calendar = {usualCalendar().text()},
                      mailhost::BookmarkMangling mangling = mailhost::BookmarkMangling::None);
    ~Scenario();

    // Appointments of the usual calendar, by UID.
    inline static const QString plain = u"plain@scenario"_s;     // has a location and a body, nobody invited
    inline static const QString invited = u"invited@scenario"_s; // one attendee and two meeting rooms
    inline static const QString other = u"other@scenario"_s;     // nobody invited, no body

    mailhost::EditorWindow *open(const QString &uid);
    // Closes it without a question.
    void close(mailhost::EditorWindow *window);
    [[nodiscard]] static vlActionAdditionView *stripOf(mailhost::EditorWindow *window);
    // The visible button with that text, or nullptr.
    [[nodiscard]] static QAbstractButton *stripButton(mailhost::EditorWindow *window, const QString &textKey);

    // The user's clicks and keys. Each call also handles the immediate results, but no timers.
    void click(QWidget *control);
    void clickAdd(mailhost::EditorWindow *window) { click(stripButton(window, u"AddVelaButton"_s)); }
    void clickRemove(mailhost::EditorWindow *window) { click(stripButton(window, u"CancelVelaButton"_s)); }
    void clickSettings(mailhost::EditorWindow *window) {
        click(stripButton(window, u"ChangeSettingButton"_s));
    }
    void confirmSheet();
    void cancelSheet();
    void pressSave(mailhost::EditorWindow *window);
    void pressSend(mailhost::EditorWindow *window);
    void typeSubject(mailhost::EditorWindow *window, const QString &subject);
    // All the steps of an add that succeeds.
    void addMeeting(mailhost::EditorWindow *window);
    void addMeetingAndSave(mailhost::EditorWindow *window);

    void settle();
    void wait(double seconds);

    [[nodiscard]] static bool sheetIsUp();
    [[nodiscard]] static bool progressIsUp();
    [[nodiscard]] static QString alertText(); // text of the open alert; null without an alert
    void dismissAlert();                      // presses Escape; nothing when no alert is up

    // The appointment in the file on disk.
    [[nodiscard]] mailhost::Appointment inFile(const QString &uid) const;
    [[nodiscard]] QByteArray fileBytes() const;
    void writeFile(const QByteArray &calendar) const;
    // The number of mails in the outbox with names of that pattern.
    [[nodiscard]] int mailsSent(const QString &pattern) const;
    [[nodiscard]] QString meetingKey(const QString &uid) const;
    // The client's meeting of an appointment; an empty object if it has none.
    [[nodiscard]] QJsonObject meeting(const QString &uid) const;
    // The number of messages with action 3 and this sub-command that the plug-in sent since the last
    // forget().
    [[nodiscard]] int sent(const QString &subCommand) const { return int(sentContents(subCommand).size()); }
    // The contents of those, as they went over the bus.
    [[nodiscard]] QStringList sentContents(const QString &subCommand) const;
    void forget() { m_desktop.bus->clearPosted(); }

    void given(const QString &rule); // gives the client a rule for its answers
    void clientQuits();
    void clientRuns();
    void clientIsUninstalled();
    void clientIsInstalled(const QString &version = u"3.6.40500"_s);
    void hostQuits() { m_host.reset(); }

    platform::TestDesktop &desktop() { return m_desktop; }
    meetingclient::MeetingStore &client() { return m_store; }
    mailhost::HostApplication &host() { return *m_host; }
    [[nodiscard]] QString calendarPath() const { return m_folder.filePath(u"my.ics"_s); }
    [[nodiscard]] static QString text(const QString &key) { return vlLocalizedString(key); }

private:
    QTemporaryDir m_folder;
    FreshPlugin m_fresh;
    platform::TestDesktop &m_desktop = m_fresh.desktop;
    meetingclient::MeetingStore m_store{QString()};
    meetingclient::AnswerRules m_rules;
    std::unique_ptr<meetingclient::ClientLink> m_client;
    std::unique_ptr<mailhost::HostApplication> m_host;
};

// A scenario on a host of the version that is the test's parameter.
class OnHosts : public testing::TestWithParam<const char *> {
protected:
    Scenario scenario{QString::fromLatin1(GetParam())};
};
// One with each kind of body editor.
inline const auto bothHosts = testing::Values("15.8", "16");

} // namespace scenarios
