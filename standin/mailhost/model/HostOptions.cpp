#include "standin/mailhost/model/HostOptions.h"

#include <QRegularExpression>
#include <QVersionNumber>

namespace mailhost {

bool isNewerGeneration(const QString &hostVersion) {
    return QVersionNumber::fromString(hostVersion) >= QVersionNumber(15, 9);
}

QString mangled(const QString &html, BookmarkMangling mangling) {
    static const QRegularExpression bookmark(u"<a\\s+name=\"([^\"<>]*)\"\\s*></a>"_s);
    static const QStringList forms{{},
                                   u"<a name=\\1></a>"_s,
                                   u"<font size=\"2\"><a name=\"\\1\"></a></font>"_s,
                                   u"\r\n<a name=\"\\1\"></a>\r\n"_s};
    return mangling == BookmarkMangling::None ? html : QString(html).replace(bookmark, forms[int(mangling)]);
}

} // namespace mailhost
