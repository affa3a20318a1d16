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

// Each returns whole header lines, folded, with their line end. Control characters in the arguments never get
// into them.
[[nodiscard]] QByteArray textHeader(const QByteArray &name, const QString &text);
[[nodiscard]] QByteArray addressHeader(const QByteArray &name, const QList<MailAddress> &addresses);
[[nodiscard]] QByteArray dateHeader(const QDateTime &time);
// A new identifier in the domain of the sender.
[[nodiscard]] QByteArray messageIdHeader(const QString &senderEmail);

// A body in the transfer encoding base64.
[[nodiscard]] QByteArray base64Lines(const QString &text);

} // namespace mailhost
