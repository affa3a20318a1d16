// Headers and bodies of mail messages (RFC 5322, RFC 2045, RFC 2047), as octets with CRLF.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

namespace mailhost {

struct MailAddress {
    QString name;
    QString email;
};

// Each answers whole header lines, folded, with their line end. Line breaks and other control characters in
// what is given never get into them.
[[nodiscard]] QByteArray textHeader(const QByteArray &name, const QString &text);
[[nodiscard]] QByteArray addressHeader(const QByteArray &name, const QList<MailAddress> &addresses);
[[nodiscard]] QByteArray dateHeader(const QDateTime &time);
// A new one every time; in the domain of the sender.
[[nodiscard]] QByteArray messageIdHeader(const QString &senderEmail);

// A body of that transfer encoding.
[[nodiscard]] QByteArray base64Lines(const QString &text);

} // namespace mailhost
