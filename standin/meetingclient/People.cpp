#include "standin/meetingclient/People.h"

#include <algorithm>

namespace meetingclient {

namespace {

const QString orderAccounts = u"accounts"_s;
const QString orderUser = u"user"_s;
const QString orderBosses = u"bosses"_s;
const QString nobody = u"none"_s;

const Person *personCalled(const QString &userId) {
    const auto found = std::find_if(people().begin(), people().end(),
                                    [&userId](const Person &person) { return person.userId == userId; });
    return found == people().end() ? nullptr : &*found;
}

// The key of the personal meeting is the number of its room.
void signIn(MeetingStore &store, const Person &person) {
    QJsonObject profile = store.profile();
    if (auto personal = store.meeting(profile[u"roomMeetingId"].toString())) {
        (*personal)[u"subject"] = person.name + u"'s personal meeting"_s;
        (*personal)[u"meetingKey"] = person.room;
        (*personal)[u"originalMeetingNumber"] = person.room;
        store.replaceMeeting(person.room, *personal);
    }
    profile[u"userId"] = person.userId;
    profile[u"accountName"] = person.name;
    profile[u"email"] = person.email;
    profile[u"roomMeetingId"] = person.room;
    store.setProfile(profile);
}

QString nameOf(const QString &email) {
    for (const Person &person : principals())
        if (person.email.compare(email, Qt::CaseInsensitive) == 0)
            return person.name;
    return email.section(u'@', 0, 0);
}

void letScheduleFor(MeetingStore &store, const QStringList &emails) {
    QJsonArray bosses;
    for (const QString &email : emails)
        bosses.append(QJsonObject{{"displayName", nameOf(email)}, {"email", email}});
    QJsonObject profile = store.profile();
    profile[u"bosses"] = bosses;
    store.setProfile(profile);
}

} // namespace

QJsonArray accountsNamed(const QString &choice) {
    static const QJsonObject accounts = builtInData(u"accounts.json"_s);
    return accounts.value(choice).toArray();
}

const QList<Person> &people() {
    static const QList<Person> all{
        {u"u-1001"_s, u"Ada Example"_s, u"ada@parlo.example"_s, u"4155550142"_s},
        {u"u-1002"_s, u"Grace Example"_s, u"grace@parlo.example"_s, u"4155550143"_s}};
    return all;
}

const QList<Person> &principals() {
    static const QList<Person> all{
        {u"u-2001"_s, u"Kim Principal"_s, u"kim@parlo.example"_s, u"4155550151"_s},
        {u"u-2002"_s, u"Robin Director"_s, u"robin@parlo.example"_s, u"4155550152"_s}};
    return all;
}

bool isOrder(const QString &line) {
    const QString word = line.trimmed().section(u' ', 0, 0);
    return word == orderAccounts || word == orderUser || word == orderBosses;
}

bool obey(MeetingStore &store, const QString &line, QString *error) {
    const QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    const QString order = words.value(0), what = words.value(1);
    if (order == orderAccounts && accountChoices.contains(what)) {
        store.setAccounts(accountsNamed(what));
    } else if (order == orderUser && personCalled(what)) {
        signIn(store, *personCalled(what));
    } else if (order == orderBosses && !what.isEmpty()) {
        letScheduleFor(store, what == nobody ? QStringList() : words.mid(1));
    } else {
        QStringList userIds;
        for (const Person &person : people())
            userIds.append(person.userId);
        *error = u"\"%1\" is not an order. Orders: accounts %2; user %3; bosses none or "
                 "e-mail addresses."_s.arg(line, accountChoices.join(u'|'), userIds.join(u'|'));
        return false;
    }
    return true;
}

} // namespace meetingclient
