#include "standin/mailhost/store/CalendarDisk.h"

#include "platform/Literals.h"
#include "platform/services/storage/WholeFile.h"

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

// The older format has the same shape, but other rules for folding and encoding: rewriting would damage it.
bool isOldFormat(const Document &document) {
    const auto calendars = document.calendars();
    return std::any_of(calendars.begin(), calendars.end(), [](const Component *calendar) {
        const ContentLine *version = calendar->line("VERSION");
        return version && version->value().trimmed() == "1.0";
    });
}

} // namespace

QByteArray digestOf(const QByteArray &text) {
    return QCryptographicHash::hash(text, QCryptographicHash::Sha1);
}

std::optional<QByteArray> readCalendarText(const QString &path, QString *error) {
    const QFileInfo info(path);
    const QString name = shownName(path);
    QFile file(path);
    QByteArray text;
    // One octet more shows that the file grows meanwhile. Not always the maximum: read() allocates it at
    // once.
    const auto read = [&] {
        if (file.open(QIODevice::ReadOnly))
            text = file.read(std::min(file.size(), largestFile) + 1);
        return file.error() == QFileDevice::NoError;
    };
    if (info.isDir())
        *error = u"“%1” is a folder. Choose a calendar file in it."_s.arg(name);
    else if (!info.exists())
        *error = u"There is no file “%1”. Check its name and folder."_s.arg(path);
    else if (!info.isFile())
        *error = u"“%1” is not a file. Choose a calendar file."_s.arg(name);
    else if (!info.isReadable())
        *error = u"You have no permission to read “%1”. Ask its owner for access."_s.arg(name);
    else if (info.size() > largestFile)
        *error = u"“%1” is larger than 256 MB. Split it into smaller calendars."_s.arg(name);
    else if (!read())
        *error = u"“%1” cannot be read: %2."_s.arg(name, file.errorString());
    else if (text.startsWith("\xFF\xFE") || text.startsWith("\xFE\xFF"))
        *error = u"“%1” is written in UTF-16. Save it as UTF-8 and open it again."_s.arg(name);
    else if (text.trimmed().isEmpty())
        *error = u"“%1” is empty. Choose another file, or start a new calendar."_s.arg(name);
    else
        return text;
    return std::nullopt;
}

std::optional<Document> readDocument(const QString &path, const QByteArray &text, QString *error) {
    Document document;
    const auto [failure, line] = parseDocument(text, &document);
    const QString name = shownName(path);
    if (failure == ParseFailure::NotACalendar)
        *error = u"“%1” is not a calendar file. Choose a file in the iCalendar format (.ics)."_s.arg(name);
    else if (failure == ParseFailure::Truncated)
        *error = u"“%1” ends in the middle of an entry. Get a complete copy of it."_s.arg(name);
    else if (failure == ParseFailure::Mismatched)
        *error = u"“%1” is damaged at line %2. Get another copy of it."_s.arg(name).arg(line);
    else if (failure == ParseFailure::TooDeep)
        *error = u"“%1” is damaged at line %2: its entries are nested too deeply. Get another copy of it."_s
                     .arg(name)
                     .arg(line);
    else if (isOldFormat(document))
        *error =
            u"“%1” is in the old vCalendar 1.0 format. Export it as iCalendar 2.0 and open that."_s.arg(name);
    else
        return document;
    return std::nullopt;
}

bool replaceCalendarText(const QString &path, const QByteArray &text, const QByteArray &expected,
                         QString *error) {
    const QString name = shownName(path);
    const QFileInfo info(path);
    QFile current(path);
    QString reason;
    if (info.exists() && (info.isDir() || !current.open(QIODevice::ReadOnly)))
        *error = u"“%1” cannot be read any more, so it was not saved. Save under another name."_s.arg(name);
    else if (info.exists() && digestOf(current.readAll()) != expected)
        *error = u"Another program has changed “%1” since it was opened, so it was not saved. "
                 "Open it again and repeat your change."_s.arg(name);
    else if (!platform::writeWholeFile(path, text, &reason))
        *error = u"“%1” cannot be saved: %2. The file is as it was."_s.arg(name, reason);
    else
        return true;
    return false;
}

} // namespace mailhost
