// Joining the meeting of an appointment in the desktop's browser.
#pragma once

#include <QString>

class QAction;
class QWidget;

namespace mailhost {

// Lets the action say which link it opens; an empty link grays it.
void offerJoin(QAction *action, const QString &link);
// Opens the link; when the desktop has nothing that opens it, a message in the window says so. Does nothing
// with an empty link.
void openJoinLink(QWidget *window, const QString &link);

} // namespace mailhost
