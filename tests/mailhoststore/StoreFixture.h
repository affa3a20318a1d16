// Calendar files in a folder of the test's own, and what changed in them.
#pragma once

#include "standin/mailhost/store/CalendarFile.h"
#include "tests/support/TestServices.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace mailhost {

inline void PrintTo(const Attendee &attendee, std::ostream *out) {
    *out << qPrintable(attendee.name) << " <" << qPrintable(attendee.email) << "> " << int(attendee.type);
}

class StoreTest : public testing::Test {
protected:
    void SetUp() override {
        qputenv("TZ", "Europe/Berlin");
        tzset();
        platform::installTestServices();
        ASSERT_TRUE(m_folder.isValid());
    }

    [[nodiscard]] QString path(const QString &name = u"my.ics"_s) const { return m_folder.filePath(name); }
    static QByteArray octets(const QString &path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
        return file.readAll();
    }
    static QByteArray fixture(const QString &name) { return octets(u"" PARLO_FIXTURES "/"_s + name); }
    static QStringList fixtures() {
        return QDir(u"" PARLO_FIXTURES ""_s).entryList({u"*.ics"_s}, QDir::Files, QDir::Name);
    }
    void write(const QByteArray &text, const QString &name = u"my.ics"_s) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(text), text.size());
    }
    [[nodiscard]] std::unique_ptr<CalendarFile> opened(const QByteArray &text) const {
        write(text);
        QString error;
        auto file = CalendarFile::open(path(), &error);
        EXPECT_TRUE(file) << qPrintable(error);
        return file;
    }
    // A calendar of one appointment of these lines.
    [[nodiscard]] std::unique_ptr<CalendarFile> openedEvent(const QByteArray &lines) const {
        return opened("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:one\r\n" + lines +
                      "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
    }
    [[nodiscard]] QByteArray saved(CalendarFile &file) const {
        QString error;
        EXPECT_TRUE(file.save(&error)) << qPrintable(error);
        return octets(file.path());
    }
    // Lines of `after` that `before` has not ("+") and the other way round ("-"), by the name of their
    // property, sorted.
    static QStringList changedNames(const QByteArray &before, const QByteArray &after);

private:
    QTemporaryDir m_folder;
};

inline QStringList StoreTest::changedNames(const QByteArray &before, const QByteArray &after) {
    const auto unfolded = [](QByteArray text) {
        return text.replace("\r\n ", "").replace("\n ", "").replace("\n\t", "").split('\n');
    };
    QList<QByteArray> gone = unfolded(before);
    QStringList names;
    const auto nameOf = [](const QByteArray &line) {
        const auto pieces = line.split(':').first().split(';').first();
        return QString::fromUtf8(pieces.trimmed());
    };
    for (const QByteArray &line : unfolded(after)) {
        if (!gone.removeOne(line))
            names.append(u'+' + nameOf(line));
    }
    for (const QByteArray &line : std::as_const(gone))
        names.append(u'-' + nameOf(line));
    names.sort();
    return names;
}

} // namespace mailhost
