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
// itself. A call of post() does not reach observers that were added or removed during it. Exceptions of a
// handler are caught.
template<typename UserInfo>
class ObserverList {
public:
    using Handler = std::function<void(const QString &name, const UserInfo &userInfo)>;

    ObserverList() = default;
    ~ObserverList() {
        // Moved out first, because destroying a handler may call this list.
        const QList<Registration> removed = std::exchange(m_registrations, {});
    }
    Q_DISABLE_COPY_MOVE(ObserverList)

    [[nodiscard]] ObserverId addObserver(const QString &name, Handler handler) {
        m_registrations.append({++m_lastId, name, std::make_shared<const Handler>(std::move(handler))});
        return m_lastId;
    }

    // Returns the name for which the observer was registered; null if it does not exist.
    QString removeObserver(ObserverId id) {
        for (qsizetype i = 0; i < m_registrations.size(); ++i) {
            // Destroyed outside the list, because its handler may own objects that call the list.
            if (m_registrations.at(i).id == id)
                return m_registrations.takeAt(i).name;
        }
        return {};
    }

    [[nodiscard]] bool observes(const QString &name) const {
        return std::any_of(m_registrations.cbegin(), m_registrations.cend(),
                           [&name](const Registration &one) { return one.name == name; });
    }

    void post(const QString &name, const UserInfo &userInfo) const {
        const std::pair posted(name, userInfo); // a handler may destroy the caller's values
        const QList<Registration> atStart = m_registrations;
        for (const Registration &next : atStart) {
            if (next.name == posted.first && exists(next.id) && *next.handler)
                guarded("notification", [&] { (*next.handler)(posted.first, posted.second); });
        }
    }

private:
    struct Registration {
        ObserverId id;
        QString name;
        std::shared_ptr<const Handler> handler;
    };

    [[nodiscard]] bool exists(ObserverId id) const {
        return std::any_of(m_registrations.cbegin(), m_registrations.cend(),
                           [id](const Registration &one) { return one.id == id; });
    }

    QList<Registration> m_registrations;
    ObserverId m_lastId = 0;
};

} // namespace platform
