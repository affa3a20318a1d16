#include "standin/mailhost/store/ComponentTree.h"
#include "standin/mailhost/store/SampleCalendar.h"
#include "tests/mailhoststore/StoreFixture.h"

#include <QSet>

using namespace mailhost;

namespace {

class LosslessTest : public StoreTest {};

// What another program would notice if one appointment's subject changes: nothing but these lines.
const QSet<QString> linesOfAChangedSubject = {u"+SUMMARY"_s, u"-SUMMARY"_s,       u"+DTSTAMP"_s,
                                              u"-DTSTAMP"_s, u"+LAST-MODIFIED"_s, u"-LAST-MODIFIED"_s,
                                              u"+UID"_s /* for the appointment that had none */};

} // namespace

TEST_F(LosslessTest, EveryDialectIsWrittenAsItWasRead) {
    QList<QByteArray> texts = {
        sampleCalendar(QDate(2025, 3, 12)), QByteArray("BEGIN:VCALENDAR\rX:1\r 2\rEND:VCALENDAR\r"),
        "junk\r\n\r\n \r\nBEGIN:VCALENDAR\nX" + QByteArray(1, '\0') + "Y:1\n\n\nEND:VCALENDAR"};
    for (const QString &name : fixtures())
        texts.append(fixture(name));
    ASSERT_GE(texts.size(), 8);
    for (const QByteArray &text : std::as_const(texts)) {
        Document document;
        ASSERT_EQ(parseDocument(text, &document).failure, ParseFailure::None) << text.constData();
        EXPECT_EQ(document.text(), text);
    }
}

TEST_F(LosslessTest, AChangedSubjectLeavesAllOtherLinesOfEveryDialectAlone) {
    for (const QString &name : fixtures()) {
        const QByteArray before = fixture(name);
        auto file = opened(before);
        for (const Appointment &original : file->appointments()) {
            Appointment changed = original;
            changed.summary = u"Changed; a, b\\ and a text that is long enough to be folded: äöüäöüäöüäöü"_s;
            ASSERT_TRUE(file->update(changed));
            const QByteArray after = saved(*file);
            for (const QString &line : changedNames(before, after))
                EXPECT_TRUE(linesOfAChangedSubject.contains(line.toUpper()))
                    << qPrintable(name + u' ' + line);
            auto again = CalendarFile::open(path(), nullptr);
            ASSERT_TRUE(again);
            EXPECT_EQ(again->find(changed.uid, changed.recurrenceId)->summary, changed.summary);
            EXPECT_EQ(after.contains("\r\n"), before.contains("\r\n"));
            EXPECT_EQ(QByteArray(after).replace("\r\n", "").contains('\n'),
                      QByteArray(before).replace("\r\n", "").contains('\n'));
            file = opened(before);
        }
    }
}

TEST_F(LosslessTest, AnUpdateWithoutDifferenceDoesNotTouchTheFile) {
    for (const QString &name : fixtures()) {
        const QByteArray before = fixture(name);
        auto file = opened(before);
        const auto appointments = file->appointments();
        for (const Appointment &appointment : appointments)
            EXPECT_TRUE(file->update(appointment));
        EXPECT_EQ(saved(*file), before) << qPrintable(name);
    }
}

TEST_F(LosslessTest, AnAppointmentWithoutIdentifierKeepsTheOneItIsGiven) {
    const auto uidOf = [](const CalendarFile &file) {
        for (const Appointment &appointment : file.appointments()) {
            if (appointment.summary.startsWith(u"Floating"_s))
                return appointment.uid;
        }
        return QString();
    };
    auto file = opened(fixture(u"mixed.ics"_s));
    const QString uid = uidOf(*file);
    EXPECT_FALSE(uid.isEmpty());
    EXPECT_EQ(uidOf(*CalendarFile::open(path(), nullptr)), uid);
    Appointment changed = *file->find(uid);
    changed.location = u"Here"_s;
    ASSERT_TRUE(file->update(changed));
    (void)saved(*file);
    EXPECT_EQ(CalendarFile::open(path(), nullptr)->find(uid)->location, u"Here"_s);
}

TEST_F(LosslessTest, FoldingNeverCutsACharacterAndKeepsLinesShort) {
    auto file = CalendarFile::create(path());
    Appointment appointment;
    appointment.summary = u"a"_s + QString(40, QChar(0x20AC)) + QString::fromUcs4(U"\U0001F600").repeated(40);
    const QString uid = file->add(appointment);
    const auto lines = saved(*file).split('\n');
    for (const QByteArray &line : lines) {
        EXPECT_LE(line.size(), 76); // with the CR
        EXPECT_TRUE(line.isValidUtf8()) << line.constData();
    }
    EXPECT_EQ(CalendarFile::open(path(), nullptr)->find(uid)->summary, appointment.summary);
}
