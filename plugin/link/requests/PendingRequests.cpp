#include "plugin/link/requests/PendingRequests.h"

#include <algorithm>
#include <cstddef>
#include <tuple>
#include <utility>

namespace {

using State = PendingRequest::State;

constexpr std::ptrdiff_t remembered = 32; // finished requests

bool isWaiting(const PendingRequest &request) {
    return request.state == State::Waiting;
}

} // namespace

template<typename Matches>
PendingRequest *PendingRequests::first(Matches matches) {
    const auto found = std::find_if(m_requests.begin(), m_requests.end(), matches);
    return found == m_requests.end() ? nullptr : &*found;
}

PendingRequest &PendingRequests::add(PendingRequest request) {
    const auto owner = request.owner.lock();
    const auto former = std::find_if(m_requests.begin(), m_requests.end(), [&](const PendingRequest &other) {
        return other.owner.lock() == owner && other.meetingKey == request.meetingKey &&
               other.state != State::Answered;
    });
    // A request that still waits keeps its place in the order, because the client answers it first.
    if (former != m_requests.end() && isWaiting(*former) && !former->timedOut)
        return *former = std::move(request);
    if (former != m_requests.end())
        m_requests.erase(former);
    forgetOldOnes();
    return m_requests.emplace_back(std::move(request));
}

PendingRequest *PendingRequests::requestFor(const QStringList &keys) {
    for (const QString &key : keys)
        if (PendingRequest *request = withKey(key))
            return request;
    // The key of a new meeting is not known yet, and the personal meeting has two keys.
    const auto mayBe = [&keys](const PendingRequest &request) {
        return isWaiting(request) && (keys.isEmpty() || request.meetingKey.isEmpty() || request.forPMI ||
                                      !request.isAnsweredWithKey);
    };
    PendingRequest *next = first([&](const auto &r) { return mayBe(r) && !r.timedOut; });
    if (!next)
        next = first(mayBe);
    const auto isRepeatedKey = [&](const QString &key) { return isRepeated(key, *next); };
    return next && std::any_of(keys.begin(), keys.end(), isRepeatedKey) ? nullptr : next;
}

// Among several requests for one meeting, the order is: waiting, timed out, refused, and last those whose
// owner no longer exists. A refused request stays a candidate, because a refusal has no key and may have been
// meant for another request.
PendingRequest *PendingRequests::withKey(const QString &key) {
    PendingRequest *best = nullptr;
    const auto rank = [](const PendingRequest &request) {
        return std::tuple(request.owner.expired(), !isWaiting(request), request.timedOut);
    };
    for (PendingRequest &request : m_requests) {
        const bool fits = request.state != State::Answered && !key.isEmpty() && request.meetingKey == key;
        if (fits && (!best || rank(request) < rank(*best)))
            best = &request;
    }
    return best;
}

// Whether an earlier answer gave that key to an owner that still has the meeting. A new meeting may get the
// key of a deleted one, and several appointments may share the personal meeting.
bool PendingRequests::isRepeated(const QString &key, const PendingRequest &next) const {
    return !next.forPMI && std::any_of(m_requests.begin(), m_requests.end(), [&](const auto &earlier) {
        const auto owner = earlier.owner.lock();
        return earlier.state == State::Answered && earlier.meetingKey == key && owner &&
               owner->hasMeeting(key);
    });
}

bool PendingRequests::othersShowProgress(const std::shared_ptr<RequestOwner> &owner) const {
    return std::any_of(m_requests.begin(), m_requests.end(), [&owner](const auto &request) {
        const auto other = request.owner.lock();
        return isWaiting(request) && request.showsProgress && !request.timedOut && other && other != owner;
    });
}

PendingRequest *PendingRequests::requestWithTimer(const std::shared_ptr<quint64> &timer) {
    return first([&timer](const PendingRequest &request) { return request.timer.lock() == timer; });
}

void PendingRequests::exchangeOwners(const Requester &one, const Requester &other) {
    for (PendingRequest &request : m_requests) {
        const auto owner = request.owner.lock();
        if (owner != one.owner && owner != other.owner)
            continue;
        const Requester &next = owner == one.owner ? other : one;
        request.owner = next.owner;
        request.window = next.window;
    }
}

void PendingRequests::forgetOldOnes() {
    const auto isOld = [](const auto &r) { return !isWaiting(r) || r.owner.expired(); };
    while (std::count_if(m_requests.begin(), m_requests.end(), isOld) > remembered)
        m_requests.erase(std::find_if(m_requests.begin(), m_requests.end(), isOld));
}
