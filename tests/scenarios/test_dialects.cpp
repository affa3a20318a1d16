// Meetings in the files of other programs: nothing changes in a file but the lines of the meeting.
#include "platform/services/Services.h"
#include "platform/services/html/HtmlImporter.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/scenarios/Scenario.h"
#include "tests/support/ProcessZone.h"

#include <QAbstractButton>
#include <QDir>
#include <QJsonObject>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace scenarios;

namespace {

// The lines that a meeting may change; each keeps its parameters.
const QByteArrayList changedByAMeeting{
    "LOCATION",   "DESCRIPTION",   "X-ALT-DESC", "STYLED-DESCRIPTION", "X-PARLO-UC-CAPABILITIES",
    "CONFERENCE", "LAST-MODIFIED", "DTSTAMP",    "SEQUENCE", // raised by a sending
    "UID",                                                   // where it was missing
    "ORGANIZER"}; // of a meeting that named nobody: the user who sends it
constexpr qsizetype mostOfOneFile = 8;

QByteArray octetsOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

QString plainText(const QString &html) {
    return platform::plainTextOfHtml(html).simplified();
}

// Without folds, line ends as they stand.
QByteArrayList linesOf(QByteArray file) {
    for (const char *fold : {"\r\n ", "\r\n\t", "\n ", "\n\t"})
        file.replace(fold, "");
    return file.split('\n');
}

// Name and parameters of a line. Some parameters follow from the value and may change with it.
QByteArray headOf(const QByteArray &line) {
    static const QRegularExpression head(u"^([^:\"]|\"[^\"]*\")*"_s);
    static const QRegularExpression derived(u";(ALTREP|DERIVED)=([^;:\"]|\"[^\"]*\")*"_s,
                                            QRegularExpression::CaseInsensitiveOption);
    return head.match(QString::fromUtf8(line)).captured().remove(derived).toUtf8();
}

QByteArray nameOf(const QByteArray &line) {
    return headOf(line).split(';').first().trimmed().toUpper();
}

void expectSameButForTheMeeting(const QByteArray &before, const QByteArray &after) {
    QByteArrayList gone = linesOf(before);
    QByteArrayList heads;
    for (const QByteArray &line : linesOf(after)) {
        if (gone.removeOne(line))
            continue;
        EXPECT_TRUE(changedByAMeeting.contains(nameOf(line))) << "has come: " << line.toStdString();
        heads.append(headOf(line));
    }
    for (const QByteArray &line : std::as_const(gone)) {
        EXPECT_TRUE(changedByAMeeting.contains(nameOf(line))) << "is gone: " << line.toStdString();
        EXPECT_TRUE(heads.contains(headOf(line))) << "has lost a parameter: " << line.toStdString();
    }
}

// A file of another program in the host of a generation.
class Dialects : public testing::TestWithParam<const char *> {
protected:
    [[nodiscard]] static QString hostVersion() { return QString::fromLatin1(GetParam()); }

    // Those that the user may give a meeting.
    static QList<mailhost::Appointment> candidates(const OpenedCalendar &calendar) {
        Scenario scenario(hostVersion(), calendar);
        const mailhost::CalendarSession &session = *scenario.host().session();
        QList<mailhost::Appointment> all = session.file().appointments();
        all.removeIf([&session](const mailhost::Appointment &one) {
            return !one.recurrenceId.isEmpty() || !one.ucCapabilities.isEmpty() || !session.isOwner(one);
        });
        return all.mid(0, mostOfOneFile);
    }
    // With attendees it is the sending that stores it. False when the host did not let it be sent.
    static bool addAMeeting(Scenario &scenario, const mailhost::Appointment &appointment) {
        const QPointer<mailhost::EditorWindow> editor = scenario.open(appointment.uid);
        scenario.addMeeting(editor);
        if (appointment.attendees.isEmpty()) {
            scenario.pressSave(editor);
            return true;
        }
        scenario.pressSend(editor);
        if (editor)
            if (auto *anyway = editor->findChild<QAbstractButton *>(mailhost::controls::sendAnywayButton))
                anyway->click();
        scenario.wait(1);
        return Scenario::openEditors().isEmpty();
    }
    // Whether the meeting could be added.
    static bool expectOnlyAMeetingMore(const OpenedCalendar &calendar, const mailhost::Appointment &before) {
        Scenario scenario(hostVersion(), calendar);
        if (!addAMeeting(scenario, before))
            return false;
        expectSameButForTheMeeting(calendar.text, scenario.fileBytes());
        const mailhost::Appointment saved = scenario.inFile(before.uid);
        const QJsonObject meeting = scenario.meeting(before.uid);
        EXPECT_TRUE(saved.location.contains(before.location)) << qPrintable(saved.location);
        EXPECT_TRUE(saved.location.contains(meeting["joinUrl"].toString()));
        EXPECT_TRUE(plainText(saved.bodyHtml).startsWith(plainText(before.bodyHtml)))
            << qPrintable(saved.bodyHtml);
        EXPECT_EQ(meeting["startTime"].toInteger(), saved.start.value.toSecsSinceEpoch());
        EXPECT_EQ(meeting["recurrence"].toBool(), !saved.recurrenceRule.isEmpty());
        return true;
    }

    const ProcessZone zone{"Europe/Berlin"};
};

INSTANTIATE_TEST_SUITE_P(Generations, Dialects, testing::Values("15.8", "16"), [](const auto &info) {
    return QString::fromLatin1(info.param).replace(u'.', u'_').toStdString();
});

} // namespace

TEST_P(Dialects, AMeetingChangesNothingButItsOwnLinesInTheFileOfAnyProgram) {
    const QDir folder(u"" PARLO_FIXTURES ""_s);
    int files = 0;
    int meetings = 0;
    for (const QString &name : folder.entryList({u"*.ics"_s}, QDir::Files)) {
        ++files;
        const OpenedCalendar calendar{octetsOf(folder.filePath(name)), QDate(2026, 11, 24), {}};
        for (const mailhost::Appointment &appointment : candidates(calendar)) {
            SCOPED_TRACE(qPrintable(name + u' ' + appointment.uid));
            meetings += expectOnlyAMeetingMore(calendar, appointment) ? 1 : 0;
        }
    }
    EXPECT_GE(meetings, files) << "too few could be tried";
}
