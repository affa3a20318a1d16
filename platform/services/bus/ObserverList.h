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

// Identifies a registration; 0 identifies none.
using ObserverId = quint64;

// Handlers by name, called in the order of registration. A handler may add and remove observers, including
// itself, and may destroy the list. A delivery does not call observers that were added or removed during it.
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

    // Returns the name for which the observer was registered; null if it does not exist.
    QString remove(ObserverId id) {
        QList<Registration> &registrations = m_state->registrations;
        for (qsizetype i = 0; i < registrations.size(); ++i) {
            // Destroyed outside the list, because its handler may own objects that call the list.
            if (registrations[i].id == id)
                return registrations.takeAt(i).name;
        }
        return {};
    }

    void clear() {
        // Moved out first, because destroying a handler may call this list.
        const QList<Registration> removed = std::exchange(m_state->registrations, {});
    }

    [[nodiscard]] bool observes(const QString &name) const {
        return std::any_of(m_state->registrations.cbegin(), m_state->registrations.cend(),
                           [&name](const Registration &registration) { return registration.name == name; });
    }

    void deliver(const QString &name, const UserInfo &userInfo) const {
        // Copies: a handler may destroy the caller's values, and this list.
        const std::shared_ptr<const State> state = m_state;
        const std::pair posted(name, userInfo);
        const ObserverId last = state->lastId;
        for (ObserverId previous = 0;
             const Registration *next = state->after(previous, last, posted.first);) {
            previous = next->id;
            const std::shared_ptr<const Handler> handler = next->handler; // a handler may remove itself
            if (*handler)
                guarded("notification", [&] { (*handler)(posted.first, posted.second); });
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
            const auto next = std::find_if(
                registrations.cbegin(), registrations.cend(), [&](const Registration &registration) {
                    return registration.id > previous && registration.id <= last && registration.name == name;
                });
            return next == registrations.cend() ? nullptr : &*next;
        }
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace platform
