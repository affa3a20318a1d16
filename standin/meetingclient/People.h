// The users who can sign in, and their sample data: the choices of the client's window and of its orders.
#pragma once

#include "standin/meetingclient/MeetingStore.h"

#include <QStringList>

namespace meetingclient {

// The audio-conference accounts to choose from, by name:
//
//   none, one, two    accounts that can be used, with toll and toll-free numbers of several countries
//   disabled          two, of which the second has no invitation: it is switched off
//   odd               numbers without a country, an entry without a number, and a second account without any
//                     toll-free number
inline const QStringList accountChoices = {u"none"_s, u"one"_s, u"two"_s, u"disabled"_s, u"odd"_s};
[[nodiscard]] QJsonArray accountsNamed(const QString &choice); // empty for a name that is none of them

struct Person {
    QString userId;
    QString name;
    QString email;
    QString room; // number of the personal meeting
};
// The people who can sign in; the first is the one of a fresh installation.
[[nodiscard]] const QList<Person> &people();
// The people for whom anyone here may schedule, once they have granted it.
[[nodiscard]] const QList<Person> &principals();

// Orders to a running client, one line each. obey() returns false, with a sentence in `error`, and changes
// nothing if the line is not an order.
//
//   accounts <choice>              the user has those audio-conference accounts
//   user <userId>                  somebody else signs in; meetings stay, the personal meeting becomes theirs
//   bosses none | <email> ...      the people who have granted the right to schedule for them
[[nodiscard]] bool isOrder(const QString &line);
bool obey(MeetingStore &store, const QString &line, QString *error);

} // namespace meetingclient
