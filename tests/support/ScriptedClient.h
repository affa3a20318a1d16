// A meeting client on the in-memory bus with answers from the test.
#pragma once

#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/util/vlOLUtils.h"
#include "tests/support/TestServices.h"

#include <QHash>
#include <QString>
#include <QTemporaryDir>
#include <QVariantMap>

// Installed and running by default; silent until it gets an answer. Answers go out when the request arrives
// and reach the plug-in on the same turn of the virtual run loop. The desktop must outlive it. The files of
// the desktop are in a temporary folder that the client owns.
class ScriptedClient {
public:
    // By the code of the answer; a start has none.
    enum class Asked {
        Start = -1,
        Schedule = 1,
        Update = 2,
        Delete = 3,
        GetMeeting = 4,
        Profile = 6,
        Accounts = 9
    };
    struct Request {
        Asked what;
        QString key;      // of GetMeeting and Delete
        QVariantMap json; // of Start, Schedule and Update
    };
    struct Account {
        QString number; // toll-free, in the US; empty: the account has none
        qint64 meetingID;
        QString invitation;
    };

    static constexpr auto supportedVersion = "3.6.40487";

    explicit ScriptedClient(const platform::TestDesktop &desktop, bool isThere = true);
    ~ScriptedClient();
    ScriptedClient(const ScriptedClient &) = delete;
    ScriptedClient &operator=(const ScriptedClient &) = delete;

    // Sets the answer to every later request of the kind.
    void answers(Asked what, const QString &content) { m_answers.insert(what, content); } // an error, too
    void keepsSilentOn(Asked what) { m_answers.remove(what); }
    void knowsTheUser(const QVariantMap &profile) {
        answers(Asked::Profile, vlOLUtils::toJSONString(profile));
    }
    // Members as the client sends them, "startTime" in seconds.
    void holdsTheMeeting(const QVariantMap &meeting) { answers(Asked::GetMeeting, meetingAnswer(meeting)); }
    void hasAccounts(const QList<Account> &accounts) { answers(Asked::Accounts, accountsAnswer(accounts)); }
    void isInstalled(const QString &version = supportedVersion, bool running = true);
    void quits() { m_desktop.workspace->running.removeAll(kVelausIdentify); } // no longer runs
    void isUninstalled();
    // Sends an answer to a request that it left unanswered, or without a request.
    void sendsNow(Asked what, const QString &content) { sendsNow(QString::number(int(what)), content); }
    void sendsNow(const QString &actionId, const QString &content); // null: a message without content
    // The answers that the operations above make, for sendsNow().
    [[nodiscard]] static QString meetingAnswer(const QVariantMap &meeting);
    [[nodiscard]] static QString accountsAnswer(const QList<Account> &accounts);

    // The requests since the last call of forget(), in order.
    [[nodiscard]] const QList<Request> &requests() const { return m_requests; }
    [[nodiscard]] QList<Asked> asked() const;
    [[nodiscard]] int timesAsked(Asked what) const { return int(asked().count(what)); }
    // The last request; a Start without members if there is none.
    [[nodiscard]] Request last() const {
        return m_requests.value(m_requests.size() - 1, {Asked::Start, {}, {}});
    }
    void forget() { m_requests.clear(); }
    [[nodiscard]] QString filePath(const QString &name) const { return m_root.filePath(name); }

private:
    void hear(const platform::TextMap &envelope);

    platform::TestDesktop m_desktop;
    QTemporaryDir m_root;
    platform::ObserverId m_observer = 0;
    QHash<Asked, QString> m_answers;
    QList<Request> m_requests;
};
