// Handlers registered by notification name.
#pragma once

#include "platform/Guarded.h"

#include <QList>
#include <QString>
#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

namespace platform {

// Names one registration; 0 names none.
using ObserverId = quint64;

// Handlers by name, called in the order of registration. A handler may add and remove observers, itself
// included, and may destroy the list: what was added during a delivery is not called by it, what was removed
// is not called any more.
template<typename UserInfo>
class ObserverList {
public:
    using Handler = std::function<void(const QString &name, const UserInfo &userInfo)>;

    ObserverList() = default;
    ~ObserverList() { clear(); }
    Q_DISABLE_COPY_MOVE(ObserverList)

    ObserverId add(const QString &name, Handler handler) {
        const ObserverId id = ++m_state->lastId;
        m_state->registrations.append({id, name, std::make_shared<const Handler>(std::move(handler))});
        return id;
    }

    // The name that the observer was registered for; a null text when there is no such observer.
    QString remove(ObserverId id) {
        QList<Registration> &registrations = m_state->registrations;
        const auto found =
            std::find_if(registrations.cbegin(), registrations.cend(),
                         [id](const Registration &registration) { return registration.id == id; });
        if (found == registrations.cend())
            return {};
        const Registration removed =
            *found; // its handler may own what calls back into this list when it dies
        registrations.erase(found);
        return removed.name;
    }

    void clear() {
        // Taken out first: what the handlers own may call back into this list when it dies.
        const QList<Registration> removed = std::exchange(m_state->registrations, {});
    }

    [[nodiscard]] bool observes(const QString &name) const {
        return std::any_of(m_state->registrations.cbegin(), m_state->registrations.cend(),
                           [&name](const Registration &registration) { return registration.name == name; });
    }

    void deliver(const QString &name, const UserInfo &userInfo) const {
        const std::shared_ptr<const State> state = m_state; // a handler may destroy this list
        const ObserverId last = state->lastId;
        for (ObserverId previous = 0; const Registration *next = state->after(previous, last, name);) {
            previous = next->id;
            const std::shared_ptr<const Handler> handler = next->handler; // a handler may remove itself
            if (*handler)
                guarded("notification", [&] { (*handler)(name, userInfo); });
        }
    }

private:
    struct Registration {
        ObserverId id;
        QString name;
        std::shared_ptr<const Handler> handler;
    };
    struct State {
        QList<Registration> registrations; // sorted by id
        ObserverId lastId = 0;

        const Registration *after(ObserverId previous, ObserverId last, const QString &name) const {
            auto next = std::upper_bound(
                registrations.cbegin(), registrations.cend(), previous,
                [](ObserverId id, const Registration &registration) { return id < registration.id; });
            for (; next != registrations.cend() && next->id <= last; ++next) {
                if (next->name == name)
                    return &*next;
            }
            return nullptr;
        }
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace platform
