#include "standin/mailhost/store/ConferenceLink.h"

#include "platform/Literals.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QUrl>

namespace mailhost {

namespace {

const QByteArray property = QByteArrayLiteral("CONFERENCE");
const QByteArray ownMark = QByteArrayLiteral("X-PARLO-LINK"); // distinguishes our line from others
const QString fromLocation = u"LOCATION"_s;
constexpr qsizetype longestLink = 2000; // characters

// Punctuation after a link ends the sentence; a bracket belongs to the link only if it was opened in it.
QString withoutTrailingMarks(QString link) {
    while (!link.isEmpty() && u".,;:!?)]}>\"'"_s.contains(link.back())) {
        if (link.endsWith(u')') && link.count(u'(') >= link.count(u')'))
            break;
        link.chop(1);
    }
    return link;
}

QString firstLink(const QString &location) {
    static const QRegularExpression links(u"(?=(https://[^\\s<\"]*))"_s, // they may overlap
                                          QRegularExpression::CaseInsensitiveOption |
                                              QRegularExpression::UseUnicodePropertiesOption);
    for (auto found = links.globalMatch(location); found.hasNext();) {
        const QString link = withoutTrailingMarks(found.next().captured(1));
        if (link.size() <= longestLink && !QUrl(link, QUrl::StrictMode).host().isEmpty())
            return link;
    }
    return {};
}

bool isOwn(const ContentLine &line) {
    return line.parameter(ownMark) == fromLocation;
}

// Characters that a URI may not hold are percent-encoded, so they cannot end the line.
QByteArray uriOf(const QString &link) {
    return QUrl(link, QUrl::TolerantMode).toEncoded();
}

ContentLine newLine(const QByteArray &uri, const QByteArray &lineEnd) {
    const QByteArray text = property + ";VALUE=URI;FEATURE=AUDIO,VIDEO;LABEL=\"Join the meeting\";" +
                            ownMark + '=' + fromLocation.toLatin1() + ':' + uri;
    return ContentLine(text).refolded(lineEnd);
}

bool othersHave(const Component &component, const QByteArray &uri) {
    for (const ContentLine *line : component.lines(property)) {
        const QByteArray theirs = line->value().trimmed();
        if (!isOwn(*line) && (theirs == uri || uriOf(decodeOctets(theirs)) == uri))
            return true;
    }
    return false;
}

// The link of the record; empty when the location does not hold it.
QString recordedLink(const QString &location, const QString &record) {
    const QString known = QJsonDocument::fromJson(record.toUtf8()).object().value(u"joinUrl"_s).toString();
    const QUrl url(known, QUrl::StrictMode);
    const bool usable = known.size() <= longestLink && !url.scheme().isEmpty() && !url.host().isEmpty();
    return usable && location.contains(known) ? known : QString();
}

bool mayBeOpened(const QString &link) {
    const QUrl url(link, QUrl::StrictMode);
    return link.size() <= longestLink && url.scheme() == u"https" && !url.host().isEmpty() &&
           url.userInfo().isEmpty();
}

} // namespace

QString joinLink(const QString &location, const QString &record) {
    const QString known = recordedLink(location, record);
    return known.isEmpty() ? firstLink(location) : known;
}

QString conferenceLink(const Component &component) {
    for (const ContentLine *line : component.lines(property))
        if (const QString link = decodeOctets(line->value()).trimmed(); mayBeOpened(link))
            return link;
    return {};
}

QString linkToOpen(const QString &location, const QString &record, const QString &conference) {
    for (const QString &link : {recordedLink(location, record), conference, firstLink(location)})
        if (mayBeOpened(link))
            return link;
    return {};
}

void writeConferenceLink(Component &component, const QString &link) {
    const QByteArray uri = uriOf(link);
    if (uri.isEmpty() || othersHave(component, uri)) {
        std::erase_if(component.items, [](const ComponentItem &item) {
            return item.line.name() == property && isOwn(item.line);
        });
        return;
    }
    const auto lines = component.lines(property);
    const auto own =
        std::find_if(lines.begin(), lines.end(), [](const ContentLine *line) { return isOwn(*line); });
    if (own == lines.end())
        component.append(newLine(uri, component.lineEnd()));
    else if ((*own)->value() != uri)
        (*own)->setValue(uri);
}

} // namespace mailhost
