// The meeting client's data: its user, the user's meetings, and the audio-conference accounts.
#pragma once

#include "platform/Literals.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <optional>

namespace meetingclient {

// One JSON file: {"signedIn", "profile", "meetings": {key: meeting}, "accounts": [...], "nextNumber"}.
// Written atomically after every change. A file that cannot be read as such is moved aside
// ("<name>.broken-<n>") and never overwritten.
class MeetingStore {
public:
    // Reads the file; one that does not exist gives the defaults of a fresh installation. An empty path keeps
    // everything in memory.
    explicit MeetingStore(QString path);

    [[nodiscard]] bool signedIn() const { return m_root[signedInKey].toBool(); }
    void setSignedIn(bool signedIn) { set(signedInKey, signedIn); }
    [[nodiscard]] QJsonObject profile() const { return m_root[profileKey].toObject(); }
    void setProfile(const QJsonObject &profile) { set(profileKey, profile); }
    [[nodiscard]] QJsonArray accounts() const { return m_root[accountsKey].toArray(); }
    void setAccounts(const QJsonArray &accounts) { set(accountsKey, accounts); }

    [[nodiscard]] QJsonObject meetings() const { return m_root[meetingsKey].toObject(); }
    [[nodiscard]] std::optional<QJsonObject> meeting(const QString &key) const;
    // Stores the meeting under a new key, which is also its "meetingKey", and returns the key.
    QString addMeeting(QJsonObject meeting);
    void replaceMeeting(const QString &key, const QJsonObject &meeting);
    bool removeMeeting(const QString &key);

    // The last failure to write, a sentence for the user; null when the file is up to date.
    [[nodiscard]] const QString &lastError() const { return m_lastError; }

private:
    inline static const QString signedInKey = u"signedIn"_s;
    inline static const QString profileKey = u"profile"_s;
    inline static const QString meetingsKey = u"meetings"_s;
    inline static const QString accountsKey = u"accounts"_s;
    void load();
    void set(const QString &key, const QJsonValue &value); // and saves
    QString m_path;
    QJsonObject m_root;
    QString m_lastError;
};

// The data file of a fresh installation (fresh.json), and the accounts to choose from (accounts.json).
[[nodiscard]] QJsonObject builtInData(const QString &name);

} // namespace meetingclient
