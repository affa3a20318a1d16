#include "standin/mailhost/store/SampleCalendar.h"
#include "tests/mailhoststore/StoreFixture.h"

#include <unistd.h>

using namespace mailhost;

namespace {

class DiskTest : public StoreTest {
protected:
    std::unique_ptr<CalendarFile> changedSample() {
        auto file = opened(sampleCalendar(QDate(2025, 3, 12)));
        Appointment changed = file->appointments().first();
        changed.summary = u"Changed here"_s;
        EXPECT_TRUE(file->update(changed));
        return file;
    }
};

} // namespace

TEST_F(DiskTest, WhatIsNoCalendarIsRefusedWithItsReasonAndLeftAlone) {
    const QByteArray sample = sampleCalendar(QDate(2025, 3, 12));
    const struct {
        QByteArray text;
        const char *reason;
    } cases[] = {
        {"", "is empty"},
        {" \r\n\r\n", "is empty"},
        {"Dear all,\nplease find attached", "is not a calendar file"},
        {"BEGIN:VEVENT\nEND:VEVENT\n", "is not a calendar file"},
        {sample.left(sample.size() / 2), "ends in the middle"},
        {sample.left(sample.size() - 5), "ends in the middle"},
        {"BEGIN:VCALENDAR\nBEGIN:VEVENT\nEND:VTODO\nEND:VCALENDAR\n", "damaged at line 3"},
        {"BEGIN:VCALENDAR\nVERSION:1.0\nEND:VCALENDAR\n", "vCalendar 1.0"},
        {QByteArray("\xFF\xFE") + "B\0E\0", "UTF-16"},
        {"BEGIN:VCALENDAR\n" + QByteArray("BEGIN:X\n").repeated(100000), "nested too deeply"},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.reason);
        write(test.text);
        QString error;
        EXPECT_FALSE(CalendarFile::open(path(), &error));
        EXPECT_TRUE(error.contains(QString::fromLatin1(test.reason))) << qPrintable(error);
        EXPECT_TRUE(error.contains(u"my.ics"_s));
        EXPECT_EQ(octets(path()), test.text);
    }
}

TEST_F(DiskTest, WhatCannotBeReadIsNamed) {
    QString error;
    EXPECT_FALSE(CalendarFile::open(path(u"missing.ics"_s), &error));
    EXPECT_TRUE(error.contains(u"There is no file"_s));
    EXPECT_FALSE(CalendarFile::open(path(u"."_s), &error));
    EXPECT_TRUE(error.contains(u"folder"_s));
    EXPECT_FALSE(CalendarFile::open(u"/dev/zero"_s, &error));
    EXPECT_TRUE(error.contains(u"not a file"_s));
    QFile huge(path());
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize(257LL * 1024 * 1024)); // sparse
    EXPECT_FALSE(CalendarFile::open(path(), &error));
    EXPECT_TRUE(error.contains(u"256 MB"_s));
    if (geteuid() == 0)
        return; // every file is readable then
    write("BEGIN:VCALENDAR\nEND:VCALENDAR\n", u"closed.ics"_s);
    QFile::setPermissions(path(u"closed.ics"_s), {});
    EXPECT_FALSE(CalendarFile::open(path(u"closed.ics"_s), &error));
    EXPECT_TRUE(error.contains(u"permission"_s));
}

TEST_F(DiskTest, AFileThatAnotherProgramChangedIsNotOverwritten) {
    auto file = changedSample();
    (void)saved(*file); // not even by itself
    Appointment changed = file->appointments().last();
    changed.summary = u"And again"_s;
    ASSERT_TRUE(file->update(changed));
    EXPECT_TRUE(saved(*file).contains("And again"));
    changed.summary = u"Too late"_s;
    ASSERT_TRUE(file->update(changed));
    const QByteArray theirs = sampleCalendar(QDate(2025, 6, 12));
    write(theirs);
    QString error;
    EXPECT_FALSE(file->save(&error));
    EXPECT_TRUE(error.contains(u"Another program"_s)) << qPrintable(error);
    EXPECT_EQ(octets(path()), theirs);

    auto fresh = CalendarFile::create(path());
    EXPECT_FALSE(fresh->save(&error)) << "a new calendar must not replace a file that is there";
    EXPECT_EQ(octets(path()), theirs);
}

TEST_F(DiskTest, PermissionsAndLinksSurviveASave) {
    auto file = changedSample();
    const auto permissions = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup;
    ASSERT_TRUE(QFile::setPermissions(path(), permissions));
    ASSERT_TRUE(QFile::link(path(), path(u"link.ics"_s)));
    (void)saved(*file);
    EXPECT_EQ(QFile::permissions(path()) & QFileDevice::Permissions(0x7077),
              permissions & QFileDevice::Permissions(0x7077));
    auto linked = CalendarFile::open(path(u"link.ics"_s), nullptr);
    Appointment changed = linked->appointments().first();
    changed.summary = u"Through the link"_s;
    ASSERT_TRUE(linked->update(changed));
    (void)saved(*linked);
    EXPECT_TRUE(QFileInfo(path(u"link.ics"_s)).isSymLink());
    EXPECT_TRUE(octets(path()).contains("Through the link"));
    EXPECT_EQ(QDir(QFileInfo(path()).path()).entryList(QDir::Files).size(), 2) << "nothing temporary is left";
}

TEST_F(DiskTest, AFailedSaveSaysSoAndCanBeRepeated) {
    auto file = CalendarFile::create(path(u"later/my.ics"_s));
    QString error;
    EXPECT_FALSE(file->save(&error));
    EXPECT_TRUE(error.contains(u"cannot be saved"_s)) << qPrintable(error);
    ASSERT_TRUE(QDir(path(QString())).mkdir(u"later"_s));
    EXPECT_TRUE(file->save(&error));
    const QByteArray text = octets(file->path());
    EXPECT_TRUE(text.contains("PRODID:") && text.contains("VERSION:2.0\r\n"));
}
