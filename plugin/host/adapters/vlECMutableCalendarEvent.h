// The editable copy of an appointment that the host is about to store.
#pragma once

#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlDelegateBase.h"

class vlECMutableCalendarEvent : public vlDelegateBase {
public:
    explicit vlECMutableCalendarEvent(rt::Object *record)
        : vlDelegateBase(key_vlECMutableCalendarEvent, record) {}

    // Null if there is none.
    [[nodiscard]] QString summary() const { return text(olItem_summary); }
    [[nodiscard]] QString location() const { return text(olItem_location); }
    [[nodiscard]] QString body() const { return text(olItem_body); }
    [[nodiscard]] QString olmUCCapabilities() const { return text(olItem_olmUCCapabilities); }
    void setSummary(const QString &summary) const { getOLItemID(olItem_setSummary, summary); }
    void setLocation(const QString &location) const { getOLItemID(olItem_setLocation, location); }
    void setBody(const QString &html) const { getOLItemID(olItem_setBody, html); }
    void setOlmUCCapabilities(const QString &data) const { getOLItemID(olItem_setOlmUCCapabilities, data); }
};
