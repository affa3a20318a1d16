#include "standin/mailhost/store/ConferenceLink.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace mailhost {

namespace {

const QByteArray property = QByteArrayLiteral("CONFERENCE");
const QByteArray ownMark = QByteArrayLiteral("X-PARLO-LINK"); // tells our line from those of others
const QString fromLocation = QStringLiteral("LOCATION");
const QString scheme = QStringLiteral("https://");
constexpr qsizetype longestLink = 2000; // characters; longer ones are no links that anyone would open

// Punctuation that ends a sentence or a list is not the link's.
QString withoutTrailingMarks(QString link) {
    while (!link.isEmpty() && QStringLiteral(".,;:!?)]}>\"'").contains(link.back()))
        link.chop(1);
    return link;
}

QString firstLink(const QString &location) {
    for (qsizetype at = location.indexOf(scheme, 0, Qt::CaseInsensitive); at >= 0;
         at = location.indexOf(scheme, at + 1, Qt::CaseInsensitive)) {
        qsizetype end = at;
        while (end < location.size() && !location[end].isSpace() && location[end] != u'<' &&
               location[end] != u'"')
            ++end;
        const QString link = withoutTrailingMarks(location.mid(at, end - at));
        if (link.size() <= longestLink && !QUrl(link, QUrl::StrictMode).host().isEmpty())
            return link;
    }
    return {};
}

bool isOwn(const ContentLine &line) {
    return line.parameter(ownMark) == fromLocation;
}

ContentLine *ownLine(Component &component) {
    for (ComponentItem &item : component.items) {
        auto *line = std::get_if<ContentLine>(&item);
        if (line && line->name() == property && isOwn(*line))
            return line;
    }
    return nullptr;
}

void removeOwnLine(Component &component) {
    std::erase_if(component.items, [](const ComponentItem &item) {
        const auto *line = std::get_if<ContentLine>(&item);
        return line && line->name() == property && isOwn(*line);
    });
}

bool othersHave(const Component &component, const QByteArray &uri) {
    for (const ContentLine *line : component.lines(property)) {
        if (!isOwn(*line) && line->value().trimmed() == uri)
            return true;
    }
    return false;
}

} // namespace

QString joinLink(const QString &location, const QString &record) {
    const QString known =
        QJsonDocument::fromJson(record.toUtf8()).object().value(QStringLiteral("joinUrl")).toString();
    const bool usable = known.size() <= longestLink && !QUrl(known, QUrl::StrictMode).scheme().isEmpty();
    if (usable && location.contains(known))
        return known;
    return firstLink(location);
}

void writeConferenceLink(Component &component, const QString &link) {
    // The value is a URI and not a text: what a URI may not hold is percent-encoded, so that it cannot end
    // the line either.
    const QByteArray uri = QUrl(link, QUrl::TolerantMode).toEncoded();
    if (link.isEmpty() || uri.isEmpty() || othersHave(component, uri))
        return removeOwnLine(component);
    if (ContentLine *existing = ownLine(component)) {
        if (existing->value() != uri)
            existing->setValue(uri);
        return;
    }
    ContentLine line = ContentLine::make(property, uri, component.lineEnd());
    line.setParameter("VALUE", QStringLiteral("URI"));
    line.setParameter("FEATURE", QStringLiteral("VIDEO"));
    line.setParameter("LABEL", QStringLiteral("Join the meeting"));
    line.setParameter(ownMark, fromLocation);
    component.append(line);
}

} // namespace mailhost
