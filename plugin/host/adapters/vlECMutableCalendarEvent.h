// The editable copy of an appointment that the host is about to store.
#pragma once

#include "plugin/host/adapters/vlDelegateBase.h"

class vlECMutableCalendarEvent : public vlDelegateBase {
public:
    explicit vlECMutableCalendarEvent(rt::Object *record);

    // Null when there is none.
    [[nodiscard]] QString summary() const;
    [[nodiscard]] QString location() const;
    [[nodiscard]] QString body() const;
    [[nodiscard]] QString olmUCCapabilities() const;
    void setSummary(const QString &summary) const;
    void setLocation(const QString &location) const;
    void setBody(const QString &html) const;
    void setOlmUCCapabilities(const QString &text) const;
};
