#include "plugin/workflow/MeetingContext.h"

namespace {

std::vector<std::weak_ptr<MeetingContext>> &everyContext() {
    static auto *contexts = new std::vector<std::weak_ptr<MeetingContext>>;
    std::erase_if(*contexts, [](const auto &context) { return context.expired(); });
    return *contexts;
}

} // namespace

std::shared_ptr<MeetingContext> MeetingContext::make() {
    const std::shared_ptr<MeetingContext> context(new MeetingContext);
    everyContext().push_back(context);
    return context;
}

std::shared_ptr<MeetingContext> MeetingContext::sharedAtHand() {
    if (auto context = std::dynamic_pointer_cast<MeetingContext>(RequestOwner::atHand()))
        return context;
    RequestOwner::setNobody(make());
    return std::static_pointer_cast<MeetingContext>(RequestOwner::nobody());
}

MeetingContext &MeetingContext::atHand() {
    return *sharedAtHand();
}

std::vector<std::shared_ptr<MeetingContext>> MeetingContext::all() {
    std::vector<std::shared_ptr<MeetingContext>> contexts;
    for (const auto &context : everyContext())
        contexts.push_back(context.lock());
    return contexts;
}
