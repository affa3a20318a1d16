// A warning with one button.
#pragma once

#include "platform/Literals.h"
#include "plugin/ui/dialogs/alertSheet.h"
#include "plugin/util/sharedObject.h"

class vlAlertHelper : public SharedObject<vlAlertHelper> {
public:
    // On its own when there is no window. Does not wait. The button's text is the same in every language.
    void showAlertMessage(QWidget *window, const QString &message) {
        showAlertSheet(window, message, {u"OK"_s}, nullptr);
    }
};
