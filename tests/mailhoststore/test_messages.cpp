#include "standin/mailhost/store/Messages.h"
#include "tests/mailhoststore/StoreFixture.h"

#include <QRegularExpression>

using namespace mailhost;

namespace {

class MessagesTest : public StoreTest {
protected:
    std::unique_ptr<CalendarFile> numbers() { return opened(fixture(u"windows_zones.ics"_s)); }
    const QString m_uid = u"numbers@example"_s;
};

} // namespace

TEST_F(MessagesTest, AnItipMessageIsACalendarOfItsOwn) {
    auto file = numbers();
    Appointment changed = *file->find(m_uid);
    changed.sequence = 4;
    changed.ucCapabilities = u"{}"_s;
    ASSERT_TRUE(file->update(changed));
    const QByteArray request = file->itipMessage(m_uid, {}, false);
    for (const char *has : {"\r\nMETHOD:REQUEST\r\n", "\r\nSEQUENCE:4\r\n",
                            "\r\nTZID:W. Europe Standard Time\r\n", "\r\nX-EXAMPLE-BUSYSTATUS:BUSY\r\n",
                            "\r\nORGANIZER;CN=\"Example, Ada\":mailto:ada@parlo.example\r\n"})
        EXPECT_TRUE(request.contains(has)) << has;
    for (const char *hasNot :
         {"VALARM", "X-PARLO-UC-CAPABILITIES", "Customized Time Zone", "STATUS:CANCELLED"})
        EXPECT_FALSE(request.contains(hasNot)) << hasNot;
    EXPECT_EQ(request.count("BEGIN:VEVENT"), 1);
    const QByteArray cancel = file->itipMessage(m_uid, {}, true);
    EXPECT_TRUE(cancel.contains("METHOD:CANCEL\r\n") && cancel.contains("\r\nSTATUS:CANCELLED\r\n"));
    EXPECT_TRUE(file->itipMessage(u"unknown"_s, {}, false).isEmpty());
    // A zone that the file does not explain is explained to the receivers.
    EXPECT_TRUE(
        file->itipMessage(u"no-zone-component"_s, {}, false).contains("TZID:Tokyo Standard Time\r\n"));

    write(request, u"received.ics"_s);
    auto received = CalendarFile::open(path(u"received.ics"_s), nullptr);
    ASSERT_TRUE(received);
    EXPECT_EQ(received->find(m_uid)->start.value, changed.start.value);
    EXPECT_EQ(received->find(m_uid)->attendees, changed.attendees);
}

TEST_F(MessagesTest, AMailMessageIsWrittenForMailPrograms) {
    auto file = numbers();
    Appointment appointment = *file->find(m_uid);
    const QByteArray text = file->itipMessage(m_uid, {}, false);
    const QString subject = u"März "_s + QString::fromUcs4(U"\u20AC\U0001F600").repeated(40);
    appointment.summary = subject + u"\r\nBcc: everybody@x.example"_s;
    appointment.attendees[1].name = u"Tomás \"T\" Muster"_s;
    QString error;
    const QString written = writeImipMessage(path(u"outbox"_s), appointment, text, false, &error);
    ASSERT_FALSE(written.isNull()) << qPrintable(error);
    const QByteArray mail = octets(written);
    EXPECT_EQ(mail.count('\n'), mail.count("\r\n"));
    EXPECT_EQ(mail.count('\r'), mail.count("\r\n"));
    const QByteArray head = mail.left(mail.indexOf("\r\n\r\n"));
    for (const QByteArray &line : head.split('\n')) {
        EXPECT_LE(line.size(), 77); // with the CR
        EXPECT_TRUE(std::all_of(line.begin(), line.end(), [](char c) { return uchar(c) < 0x80; }));
    }
    EXPECT_TRUE(head.contains("From: =?UTF-8?B?" + QByteArray("Example, Ada").toBase64() +
                              "?= <ada@parlo.example>\r\n"));
    EXPECT_TRUE(head.contains("<grace@parlo.example>") && head.contains("<room.sued@parlo.example>"));
    EXPECT_FALSE(head.contains("\nBcc"));
    for (const QString &line : {u"Message-ID: <[^@>]+@parlo\\.example>"_s,
                                u"Date: \\d+ [A-Z][a-z]{2} \\d{4} [\\d:]{8} [+-]\\d{4}"_s})
        EXPECT_TRUE(QString::fromLatin1(head).contains(QRegularExpression(u"\\r\\n%1\\r\\n"_s.arg(line))));
    QString decoded;
    static const QRegularExpression word(u"=\\?UTF-8\\?B\\?([^?]*)\\?="_s);
    for (auto found = word.globalMatch(QString::fromLatin1(head.mid(head.indexOf("Subject:"))));
         found.hasNext();) {
        const QByteArray part = QByteArray::fromBase64(found.next().captured(1).toLatin1());
        EXPECT_TRUE(part.isValidUtf8()) << "a word ends within a character";
        decoded += QString::fromUtf8(part);
    }
    EXPECT_TRUE(decoded.startsWith(subject));
    EXPECT_TRUE(mail.contains("Content-Type: text/calendar; method=REQUEST; charset=UTF-8;"));
    EXPECT_TRUE(mail.contains("Content-Type: text/plain; charset=UTF-8\r\n"));
    EXPECT_TRUE(mail.contains(text));
    EXPECT_NE(writeImipMessage(path(u"outbox"_s), appointment, text, true, &error), written);
    EXPECT_EQ(QDir(path(u"outbox"_s)).entryList(QDir::Files).size(), 2);
}

TEST_F(MessagesTest, WhatCannotBeSentIsExplained) {
    auto file = numbers();
    Appointment appointment = *file->find(m_uid);
    const QByteArray text = file->itipMessage(m_uid, {}, false);
    QString error;
    write("x", u"blocked"_s);
    EXPECT_TRUE(writeImipMessage(path(u"blocked"_s), appointment, text, false, &error).isNull());
    EXPECT_TRUE(error.contains(u"cannot be written"_s));
    appointment.attendees.clear();
    EXPECT_TRUE(writeImipMessage(path(u"outbox"_s), appointment, text, false, &error).isNull());
    EXPECT_TRUE(error.contains(u"nobody"_s));
    EXPECT_FALSE(QDir(path(u"outbox"_s)).exists());
}
