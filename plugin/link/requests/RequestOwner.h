// For whom the link works: each appointment that is being worked on is one owner of requests.
#pragma once

#include <QString>
#include <QVariantMap>
#include <memory>

// The meeting that was read last for one owner.
struct LoadedMeeting {
    QVariantMap data;
    QString binary; // base64; empty: none
};

// The layer above derives what it knows of an appointment from this. The link keeps owners weakly: an answer
// for one that is gone changes nothing. Main thread only.
class RequestOwner {
public:
    virtual ~RequestOwner() = default;

    // Whether the owner's appointment has that meeting now.
    [[nodiscard]] virtual bool hasMeeting(const QString &) const { return false; }

    // For whom is being worked now; never nullptr. Nobody's, as long as no scope is open.
    [[nodiscard]] static const std::shared_ptr<RequestOwner> &atHand();
    // Who stands for nobody from now on. The layer above fills it with an owner of its own kind.
    static void setNobody(std::shared_ptr<RequestOwner> nobody);
    [[nodiscard]] static const std::shared_ptr<RequestOwner> &nobody();

    // Brings an owner to hand, and puts the former one back at its end. nullptr: nobody.
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
