#include "standin/mailhost/windows/JoinLink.h"

#include "platform/Literals.h"
#include "standin/mailhost/windows/MessageBoxes.h"

#include <QAction>
#include <QDesktopServices>
#include <QUrl>

namespace mailhost {

namespace {
constexpr qsizetype longestShown = 60; // characters; the host stands at the beginning
} // namespace

void offerJoin(QAction *action, const QString &link) {
    QString shown = link.size() > longestShown ? link.left(longestShown) + u'…' : link;
    action->setText(link.isEmpty() ? QObject::tr("&Join the meeting")
                                   : QObject::tr("&Join %1").arg(shown.replace(u"&"_s, u"&&"_s)));
    action->setEnabled(!link.isEmpty());
}

void openJoinLink(QWidget *window, const QString &link) {
    if (!link.isEmpty() && !QDesktopServices::openUrl(QUrl(link, QUrl::StrictMode)))
        showErrorMessage(window, QObject::tr("No program on this desktop opens %1. Copy the address into a "
                                             "browser, or choose a browser in the desktop's settings.")
                                     .arg(link));
}

} // namespace mailhost
