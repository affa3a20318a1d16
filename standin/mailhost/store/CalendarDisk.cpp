#include "standin/mailhost/store/CalendarFilePrivate.h"

#include "platform/services/WholeFile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace mailhost {

namespace {

constexpr qint64 largestFile = 256LL * 1024 * 1024;

QString shownName(const QString &path) {
    return QFileInfo(path).fileName().isEmpty() ? path : QFileInfo(path).fileName();
}

QString whyNotReadable(const QString &path) {
    const QFileInfo info(path);
    const QString name = shownName(path);
    if (info.isDir())
        return QStringLiteral("“%1” is a folder. Choose a calendar file in it.").arg(name);
    if (!info.exists())
        return QStringLiteral("There is no file “%1”. Check its name and folder.").arg(path);
    if (!info.isFile())
        return QStringLiteral("“%1” is not a file. Choose a calendar file.").arg(name);
    if (!info.isReadable())
        return QStringLiteral("You have no permission to read “%1”. Ask its owner for access.").arg(name);
    if (info.size() > largestFile)
        return QStringLiteral("“%1” is larger than 256 MB. Split it into smaller calendars.").arg(name);
    return {};
}

} // namespace

QByteArray digestOf(const QByteArray &text) {
    return QCryptographicHash::hash(text, QCryptographicHash::Sha1);
}

std::optional<QByteArray> readCalendarText(const QString &path, QString *error) {
    *error = whyNotReadable(path);
    if (!error->isEmpty())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("“%1” cannot be read: %2.").arg(shownName(path), file.errorString());
        return std::nullopt;
    }
    // Room for a little more: the file may be growing. Not for the largest: the memory is taken beforehand.
    QByteArray text = file.read(std::min(file.size(), largestFile) + 1);
    if (file.error() != QFileDevice::NoError) {
        *error = QStringLiteral("“%1” cannot be read: %2.").arg(shownName(path), file.errorString());
        return std::nullopt;
    }
    if (text.startsWith("\xFF\xFE") || text.startsWith("\xFE\xFF")) {
        *error = QStringLiteral("“%1” is written in UTF-16. Save it as UTF-8 and open it again.")
                     .arg(shownName(path));
        return std::nullopt;
    }
    if (text.trimmed().isEmpty()) {
        *error = QStringLiteral("“%1” is empty. Choose another file, or start a new calendar.")
                     .arg(shownName(path));
        return std::nullopt;
    }
    return text;
}

QString parseFailureText(const QString &path, const ParseResult &result) {
    const QString name = shownName(path);
    switch (result.failure) {
    case ParseFailure::None:
        break;
    case ParseFailure::NotACalendar:
        return QStringLiteral("“%1” is not a calendar file. Choose a file in the iCalendar format (.ics).")
            .arg(name);
    case ParseFailure::Truncated:
        return QStringLiteral("“%1” ends in the middle of an entry. Get a complete copy of it.").arg(name);
    case ParseFailure::Mismatched:
        return QStringLiteral("“%1” is damaged at line %2. Get another copy of it.")
            .arg(name)
            .arg(result.line);
    case ParseFailure::TooDeep:
        return QStringLiteral(
                   "“%1” is damaged at line %2: its entries are nested too deeply. Get another copy of it.")
            .arg(name)
            .arg(result.line);
    }
    return {};
}

bool replaceCalendarText(const QString &path, const QByteArray &text, const QByteArray &expected,
                         QString *error) {
    const QString name = shownName(path);
    const QFileInfo info(path);
    if (info.exists()) {
        QFile current(path);
        if (info.isDir() || !current.open(QIODevice::ReadOnly)) {
            *error =
                QStringLiteral("“%1” cannot be read any more, so it was not saved. Save under another name.")
                    .arg(name);
            return false;
        }
        if (digestOf(current.readAll()) != expected) {
            *error =
                QStringLiteral("Another program has changed “%1” since it was opened, so it was not saved. "
                               "Open it again and repeat your change.")
                    .arg(name);
            return false;
        }
    }
    QString reason;
    if (platform::writeWholeFile(path, text, &reason))
        return true;
    *error = QStringLiteral("“%1” cannot be saved: %2. The file is as it was.").arg(name, reason);
    return false;
}

} // namespace mailhost
