// Joining the meeting of an appointment in the desktop's browser.
#pragma once

#include <QString>

class QAction;
class QWidget;

namespace mailhost {

// Lets the action say which link it opens; an empty link grays it.
void offerJoin(QAction *action, const QString &link);
// Opens the link. If the desktop cannot open it, shows a message in the window. Does nothing with an empty
// link.
void openJoinLink(QWidget *window, const QString &link);

} // namespace mailhost
