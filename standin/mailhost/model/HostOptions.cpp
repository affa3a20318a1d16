#include "standin/mailhost/model/HostOptions.h"

#include <QRegularExpression>
#include <QVersionNumber>

namespace mailhost {

bool isNewerGeneration(const QString &hostVersion) {
    return QVersionNumber::fromString(hostVersion) >= QVersionNumber(15, 9);
}

QString mangled(const QString &html, BookmarkMangling mangling) {
    static const QRegularExpression bookmark(u"<a\\s+name=\"([^\"<>]*)\"\\s*></a>"_s);
    QString result = html;
    switch (mangling) {
    case BookmarkMangling::None:
        return result;
    case BookmarkMangling::QuotesStripped:
        return result.replace(bookmark, u"<a name=\\1></a>"_s);
    case BookmarkMangling::FontTags:
        return result.replace(bookmark, u"<font size=\"2\"><a name=\"\\1\"></a></font>"_s);
    case BookmarkMangling::LineBreaks:
        return result.replace(bookmark, u"\r\n<a name=\"\\1\"></a>\r\n"_s);
    }
    return result;
}

} // namespace mailhost
