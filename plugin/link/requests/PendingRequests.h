// The requests of one kind that the client has not answered, and whose answer is whose.
#pragma once

#include "plugin/link/requests/RequestOwner.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <list>
#include <memory>

// An owner and the window to which its progress and alerts belong.
struct Requester {
    std::shared_ptr<RequestOwner> owner;
    QWidget *window = nullptr;
};

struct PendingRequest {
    enum class State { Waiting, Refused, Answered };

    std::weak_ptr<RequestOwner> owner;
    QString meetingKey; // empty: the request has none. Once answered, also that of the answer
    QPointer<QWidget> window;
    bool forPMI = false;
    bool isAnsweredWithKey = true; // an answer that tells another key is not for it
    bool showsProgress = false;
    bool timedOut = false;
    std::weak_ptr<quint64> timer; // id of its time-out; expires when that has come
    State state = State::Waiting;
};

// An owner has one request for one meeting: asking again takes the place of the earlier one. Answered
// requests are remembered for a while, so that a repeated answer is not taken for another request's.
class PendingRequests {
public:
    // Valid until the next call.
    PendingRequest &add(PendingRequest request);
    // The request that an answer with these meeting keys (the likeliest first; none: an answer that tells no
    // key) belongs to. By the key where one fits, else the one that has waited longest among those whose key
    // cannot be known, those whose time is over last. nullptr when nobody waits for it.
    [[nodiscard]] PendingRequest *requestFor(const QStringList &keys);
    // Whether another owner still waits with a progress window.
    [[nodiscard]] bool othersShowProgress(const std::shared_ptr<RequestOwner> &owner) const;
    [[nodiscard]] PendingRequest *requestWithTimer(const std::shared_ptr<quint64> &timer);
    // Each of the two gets the other's requests.
    void exchangeOwners(const Requester &one, const Requester &other);

private:
    template<typename Matches>
    [[nodiscard]] PendingRequest *first(Matches matches);
    [[nodiscard]] PendingRequest *withKey(const QString &key);
    [[nodiscard]] bool isRepeated(const QString &key, const PendingRequest &next) const;
    void forgetOldOnes();

    std::list<PendingRequest> m_requests; // in order of asking
};
