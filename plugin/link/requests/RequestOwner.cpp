#include "plugin/link/requests/RequestOwner.h"

#include <utility>

namespace {

std::shared_ptr<RequestOwner> &nobodysOwner() {
    static auto *owner = new std::shared_ptr<RequestOwner>(std::make_shared<RequestOwner>());
    return *owner;
}

// nullptr: nobody.
std::shared_ptr<RequestOwner> &ownerAtHand() {
    static auto *owner = new std::shared_ptr<RequestOwner>;
    return *owner;
}

} // namespace

const std::shared_ptr<RequestOwner> &RequestOwner::atHand() {
    return ownerAtHand() ? ownerAtHand() : nobodysOwner();
}

void RequestOwner::setNobody(std::shared_ptr<RequestOwner> nobody) {
    nobodysOwner() = std::move(nobody);
}

const std::shared_ptr<RequestOwner> &RequestOwner::nobody() {
    return nobodysOwner();
}

RequestOwner::Scope::Scope(std::shared_ptr<RequestOwner> owner)
    : m_former(std::exchange(ownerAtHand(), std::move(owner))) {}

RequestOwner::Scope::~Scope() {
    ownerAtHand() = std::move(m_former);
}
