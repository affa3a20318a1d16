// The owner of requests: each appointment with meeting work is one owner.
#pragma once

#include <QString>
#include <QVariantMap>
#include <memory>

// The meeting last read for one owner.
struct LoadedMeeting {
    QVariantMap data;
    QString binary; // base64; empty: none
};

// The layer above derives its context of an appointment from this class. The link holds owners weakly: an
// answer for an owner that no longer exists changes nothing. Main thread only.
class RequestOwner {
public:
    virtual ~RequestOwner() = default;

    // Whether the owner's appointment now has that meeting.
    [[nodiscard]] virtual bool hasMeeting(const QString &) const { return false; }

    // The current owner; never nullptr. Outside of every scope it is nobody().
    [[nodiscard]] static const std::shared_ptr<RequestOwner> &atHand();
    // Replaces the owner that stands for nobody. The layer above passes an owner of its own type.
    static void setNobody(std::shared_ptr<RequestOwner> nobody);
    [[nodiscard]] static const std::shared_ptr<RequestOwner> &nobody();

    // Makes an owner the current one and restores the former owner at its end. nullptr stands for nobody.
    class Scope {
    public:
        explicit Scope(std::shared_ptr<RequestOwner> owner);
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        std::shared_ptr<RequestOwner> m_former;
    };

    LoadedMeeting loadedMeeting;
};
