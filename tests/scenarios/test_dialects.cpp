#include "platform/services/Services.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/scenarios/CalendarText.h"
#include "tests/scenarios/Scenario.h"
#include "tests/support/ProcessZone.h"

#include <QAbstractButton>
#include <QDir>
#include <algorithm>
#include <gtest/gtest.h>

using namespace scenarios;

namespace {

// The lines that a meeting may change; each keeps its parameters.
const QByteArrayList changedByAMeeting{
    "LOCATION", "DESCRIPTION", "X-ALT-DESC", "STYLED-DESCRIPTION", "X-PARLO-UC-CAPABILITIES", "LAST-MODIFIED",
    "DTSTAMP",  "CONFERENCE",  "SEQUENCE", // raised by a sending
    "UID"};                                // where it was missing
constexpr qsizetype mostOfOneFile = 8;
// Parameters whose value follows from the line's.
const QByteArrayList derivedParameters{"ALTREP", "DERIVED"};

QByteArray octetsOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

QString plainText(const QString &html) {
    return platform::services().htmlImporter->plainText(html).simplified();
}

QByteArrayList parametersOf(const TextLine &line) {
    QByteArrayList parameters;
    bool quoted = false;
    for (const char c : line.parameters) {
        if (c == ';' && !quoted) {
            parameters.append(QByteArray());
            continue;
        }
        quoted ^= c == '"';
        parameters.last().append(c);
    }
    parameters.removeIf([](const QByteArray &parameter) {
        return derivedParameters.contains(parameter.left(parameter.indexOf('=')).toUpper());
    });
    return parameters;
}

bool mayChange(const TextLine &line) {
    return line.depth == 0 && changedByAMeeting.contains(line.name);
}

// Everything of the first that a meeting does not change is in the second, to the letter and in that order;
// what it changes has kept its parameters; and nothing else has come.
void expectSameButForTheMeeting(const EventText &before, const EventText &after) {
    QByteArrayList kept, keptAfter;
    QHash<QByteArray, QList<TextLine>> changeable, changeableAfter;
    for (const TextLine &line : before.lines)
        mayChange(line) ? changeable[line.name].append(line) : kept.append(line.octets);
    // Who sends a meeting that names nobody becomes its organizer.
    const auto organizes = [](const TextLine &line) { return line.depth == 0 && line.name == "ORGANIZER"; };
    const bool hadOrganizer = std::any_of(before.lines.begin(), before.lines.end(), organizes);
    for (const TextLine &line : after.lines)
        if (hadOrganizer || !organizes(line))
            mayChange(line) ? changeableAfter[line.name].append(line) : keptAfter.append(line.octets);
    EXPECT_EQ(kept.join().toStdString(), keptAfter.join().toStdString());
    for (auto it = changeable.cbegin(); it != changeable.cend(); ++it) {
        SCOPED_TRACE(it.key().constData());
        const QList<TextLine> &now = changeableAfter[it.key()];
        ASSERT_GE(now.size(), it->size()) << "a line is lost";
        for (qsizetype i = 0; i < it->size(); ++i)
            for (const QByteArray &parameter : parametersOf(it->at(i)))
                EXPECT_TRUE(parametersOf(now[i]).contains(parameter)) << parameter.constData();
    }
}

// A file of another program in the host of a generation.
class Dialects : public testing::TestWithParam<const char *> {
protected:
    [[nodiscard]] static QString hostVersion() { return QString::fromLatin1(GetParam()); }

    // By their place in the file: those that the user may give a meeting.
    struct Candidate {
        qsizetype index;
        mailhost::Appointment appointment;
    };
    static QList<Candidate> candidates(const OpenedCalendar &calendar) {
        Scenario scenario(hostVersion(), calendar);
        const QList<mailhost::Appointment> all = scenario.host().session()->file().appointments();
        QList<Candidate> found;
        for (qsizetype i = 0; i < all.size(); ++i)
            if (all[i].recurrenceId.isEmpty() && all[i].ucCapabilities.isEmpty() &&
                scenario.host().session()->isOwner(all[i]))
                found.append({i, all[i]});
        return found;
    }

    // With attendees it is the sending that stores it. False when the host did not let it be sent.
    static bool addAMeeting(Scenario &scenario, const mailhost::Appointment &appointment) {
        const QPointer<mailhost::EditorWindow> editor = scenario.open(appointment.uid);
        if (!editor)
            return false;
        scenario.addMeeting(editor);
        if (appointment.attendees.isEmpty()) {
            scenario.pressSave(editor);
            return true;
        }
        scenario.pressSend(editor);
        if (auto *anyway = !editor
                               ? nullptr
                               : editor->findChild<QAbstractButton *>(mailhost::controls::sendAnywayButton))
            anyway->click();
        scenario.wait(1);
        return mailhost::EditorWindowController::open().isEmpty();
    }

    static void walk(const OpenedCalendar &calendar, const Candidate &candidate, int &walked) {
        Scenario scenario(hostVersion(), calendar);
        if (!addAMeeting(scenario, candidate.appointment))
            return;
        ++walked;
        const QByteArray file = scenario.fileBytes();
        const QList<EventText> before = eventsIn(calendar.text), after = eventsIn(file);
        ASSERT_EQ(before.size(), after.size());
        const EventText &was = before[candidate.index], &is = after[candidate.index];
        EXPECT_EQ(calendar.text.left(was.begin).toStdString(), file.left(is.begin).toStdString());
        EXPECT_EQ(calendar.text.mid(was.end).toStdString(), file.mid(is.end).toStdString());
        expectSameButForTheMeeting(was, is);
        const mailhost::Appointment saved = scenario.inFile(candidate.appointment.uid);
        const auto meeting = scenario.client().meeting(scenario.meetingKey(candidate.appointment.uid));
        ASSERT_TRUE(meeting);
        EXPECT_TRUE(saved.location.contains(candidate.appointment.location)) << qPrintable(saved.location);
        EXPECT_TRUE(saved.location.contains((*meeting)["joinUrl"].toString()));
        EXPECT_TRUE(plainText(saved.bodyHtml).startsWith(plainText(candidate.appointment.bodyHtml)))
            << qPrintable(saved.bodyHtml);
        EXPECT_EQ((*meeting)["startTime"].toInteger(), saved.start.value.toSecsSinceEpoch());
        EXPECT_EQ((*meeting)["recurrence"].toBool(), !saved.recurrenceRule.isEmpty());
    }

    const ProcessZone zone{"Europe/Berlin"};
};

INSTANTIATE_TEST_SUITE_P(Generations, Dialects, testing::Values("15.8", "16"), [](const auto &info) {
    return QString::fromLatin1(info.param).replace(u'.', u'_').toStdString();
});

} // namespace

TEST_P(Dialects, AMeetingChangesNothingButItsOwnLinesInWhateverProgramsFile) {
    const QDir folder(u"" PARLO_FIXTURES ""_s);
    int opened = 0, walked = 0;
    for (const QString &name : folder.entryList({u"*.ics"_s}, QDir::Files)) {
        SCOPED_TRACE(qPrintable(name));
        QString whyNot;
        if (!mailhost::CalendarFile::open(folder.filePath(name), &whyNot))
            continue; // one that is there to be refused
        ++opened;
        const OpenedCalendar calendar{octetsOf(folder.filePath(name)), QDate(2026, 11, 24), {}};
        for (const Candidate &candidate : candidates(calendar).mid(0, mostOfOneFile)) {
            SCOPED_TRACE(qPrintable(candidate.appointment.uid));
            walk(calendar, candidate, walked);
        }
    }
    EXPECT_GT(opened, 0);
    EXPECT_GE(walked, opened) << "hardly any file could be walked";
    RecordProperty("walked", walked);
}
