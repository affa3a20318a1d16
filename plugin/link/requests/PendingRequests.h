// Finds the request to which an answer of the client belongs.
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
    QString meetingKey; // empty: the request has none. After the answer: the answer's key
    QPointer<QWidget> window;
    bool forPMI = false;
    bool isAnsweredWithKey = true; // an answer with another key is not for it
    bool showsProgress = false;
    bool timedOut = false;
    std::weak_ptr<quint64> timer; // id of its time-out; expires when the time-out fires
    State state = State::Waiting;
};

// An owner has one request for each meeting: a new request replaces the earlier one. Answered requests are
// kept for a while, so that a repeated answer is not taken for the answer to another request.
class PendingRequests {
public:
    // Valid until the next call.
    PendingRequest &add(PendingRequest request);
    // Returns the request to which an answer with these meeting keys belongs. `keys` has the likeliest key
    // first and is empty for an answer without a key. A request with a matching key comes first, else the
    // oldest request whose key is unknown; timed-out requests come last. Returns nullptr if no request waits
    // for the answer.
    [[nodiscard]] PendingRequest *requestFor(const QStringList &keys);
    // Whether another owner still waits and shows progress.
    [[nodiscard]] bool othersShowProgress(const std::shared_ptr<RequestOwner> &owner) const;
    [[nodiscard]] PendingRequest *requestWithTimer(const std::shared_ptr<quint64> &timer);
    // Gives each of the two the other's requests. REQUIRES: both have an owner.
    void exchangeOwners(const Requester &one, const Requester &other);

private:
    template<typename Matches>
    [[nodiscard]] PendingRequest *first(Matches matches);
    [[nodiscard]] PendingRequest *withKey(const QString &key);
    [[nodiscard]] bool isRepeated(const QString &key, const PendingRequest &next) const;
    void forgetOldOnes();

    std::list<PendingRequest> m_requests; // in the order in which they were made
};
