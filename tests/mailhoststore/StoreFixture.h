// Calendar files in a folder of the test's own, and what changed in them.
#pragma once

#include "standin/mailhost/store/CalendarFile.h"
#include "tests/support/TestServices.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace mailhost {

class StoreTest : public testing::Test {
protected:
    void SetUp() override { platform::installTestServices(); }

    [[nodiscard]] QString path(const QString &name = u"my.ics"_s) const { return m_folder.filePath(name); }
    static QByteArray octets(const QString &path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
        return file.readAll();
    }
    static QByteArray fixture(const QString &name) { return octets(u"" PARLO_FIXTURES "/"_s + name); }
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
    // A calendar of one appointment of these lines, and of more components.
    [[nodiscard]] std::unique_ptr<CalendarFile> openedEvent(const QByteArray &lines,
                                                            const QByteArray &more = {}) const {
        return opened("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:one\r\n" + lines +
                      "\r\nEND:VEVENT\r\n" + more + "END:VCALENDAR\r\n");
    }
    [[nodiscard]] QByteArray saved(CalendarFile &file) const {
        QString error;
        EXPECT_TRUE(file.save(&error)) << qPrintable(error);
        return octets(file.path());
    }
    [[nodiscard]] static QByteArray unfolded(QByteArray text) {
        return text.replace("\r\n ", "").replace("\n ", "").replace("\n\t", "");
    }
    // The properties whose lines are only in `after` ("+NAME") or only in `before` ("-NAME"), sorted.
    static QStringList changedNames(const QByteArray &before, const QByteArray &after) {
        const auto was = unfolded(before).split('\n');
        const auto is = unfolded(after).split('\n');
        QStringList names;
        const auto addMissing = [&](QChar sign, const QList<QByteArray> &lines, QList<QByteArray> others) {
            for (const QByteArray &line : lines) {
                if (!others.removeOne(line))
                    names.append(sign +
                                 QString::fromUtf8(line.split(':').first().split(';').first().trimmed()));
            }
        };
        addMissing(u'+', is, was);
        addMissing(u'-', was, is);
        names.sort();
        return names;
    }
    // Local starts, "MM-dd HH:mm", of [from, from + days).
    static QString starts(const CalendarFile &file, const QDate &from, int days) {
        QStringList list;
        for (const Occurrence &o : file.occurrences(from.startOfDay(), from.addDays(days).startOfDay()))
            list.append(o.start.toString(u"MM-dd HH:mm"_s));
        return list.join(u", "_s);
    }

private:
    QTemporaryDir m_folder;
};

} // namespace mailhost
